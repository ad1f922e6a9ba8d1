// The configuration dialog driven as a user would: what it shows, the check when each field is
// left, the voucher fields, confirming, cancelling and the first-run layout; the checks
// themselves belong to the settings editor's tests.
#include "config/configuracio_dialog.h"
#include "core/ini.h"
#include "support/entorn_proves.h"
#include "support/guio_usuari.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

QStringList elements(QComboBox *c)
{
    QStringList r;
    for (int i = 0; i < c->count(); ++i)
        r << c->itemText(i);
    return r;
}

QByteArray contingut(const QString &fitxer)
{
    QFile f(fitxer);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class TestConfiguracioDialog : public QObject {
    Q_OBJECT

    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioGuio m_ui;

    std::unique_ptr<frmConfiguracio> obre(const QMap<QString, QString> &parametres = {}, bool primera = false)
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre("PrimeraExecucio", primera ? "1" : "0");
        for (auto it = parametres.begin(); it != parametres.end(); ++it)
            m_dir->posaParametre(it.key(), it.value());
        m_sessio = m_dir->obreSessio();
        dades_prova::servei(m_sessio->db(), "Neteja", 60, false);
        dades_prova::servei(m_sessio->db(), "Desplaçaments", 3, true);
        m_ui = InteraccioGuio();
        auto d = std::make_unique<frmConfiguracio>(*m_sessio, m_ui);
        d->show();
        d->activateWindow();
        [&] { QVERIFY(QTest::qWaitForWindowActive(d.get())); }();
        return d;
    }

    // Types into a field and leaves it with Tab, as a user does.
    void escriuISurt(frmConfiguracio &d, QLineEdit *camp, const QString &text)
    {
        camp->setFocus();
        QTRY_VERIFY(camp->hasFocus());
        camp->selectAll();
        QTest::keyClicks(camp, text);
        QTest::keyClick(camp, Qt::Key_Tab);
        QTest::qWait(30);
        Q_UNUSED(d);
    }

private slots:
    void opensWithTheSettingsInEffect()
    {
        auto d = obre({{"MinutsCella", "15"}, {"HoraInici", "07:00"}, {"HoraFinal", "21:00"}, {"HoresDia", "7,5"},
                       {"DissabtesExtra", "0"}, {"ServeiXecs", "Neteja"}, {"ValorXec", "12"}, {"CostHoraXec", "-1,5"},
                       {"MaxXecsMes", "4"}, {"Idioma", "EN"}, {"PermetSolaparLlocs", "0"}});
        QCOMPARE(d->txtBD->text(), m_sessio->cfg().BaseDades);
        QCOMPARE(d->txtMinutsCella->text(), QString("15"));
        QCOMPARE(d->ComboHoraInici->count(), 96);
        QCOMPARE(d->ComboHoraInici->currentText(), QString("07:00"));
        QCOMPARE(d->ComboHoraFinal->currentText(), QString("21:00"));
        QCOMPARE(d->txtHoresDia->text(), QString("7,50"));
        QVERIFY(!d->chkDissabtesExtra->isChecked());
        QVERIFY(!d->chkPermetSolaparLlocs->isChecked());
        QCOMPARE(elements(d->ComboServeiXecs), QStringList({"", "Desplaçaments", "Neteja"}));
        QCOMPARE(d->ComboServeiXecs->currentText(), QString("Neteja"));
        QCOMPARE(d->txtValorDftXec->text(), QString("12,00"));
        QCOMPARE(d->txtCostHoraXec->text(), QString("-1,50"));
        QCOMPARE(d->txtNMaxXecsMes->text(), QString("4"));
        QCOMPARE(d->ComboSelIdioma->currentText(), QString("(EN) English"));
        // The language of the settings: English captions, in capitals.
        QCOMPARE(d->fraPlanificacio->title(), QString("PLANNING"));
        QVERIFY(d->CancelButton->isEnabled());
        QVERIFY(d->btnPurgarBD->isVisible() && d->fraLocalitzacio->isVisible() && d->txtUltDiaGenerat->isVisible());
    }

    void theVoucherServiceEnablesItsThreeFields()
    {
        auto d = obre({{"ValorXec", "10"}, {"MaxXecsMes", "3"}});
        QCOMPARE(d->ComboServeiXecs->currentIndex(), 0);
        for (QLineEdit *c : {d->txtNMaxXecsMes, d->txtValorDftXec, d->txtCostHoraXec}) {
            QVERIFY(!c->isEnabled());
            QVERIFY(c->text().isEmpty());
        }
        d->ComboServeiXecs->setCurrentIndex(2);
        QCOMPARE(d->txtValorDftXec->text(), QString("10,00"));
        QCOMPARE(d->txtNMaxXecsMes->text(), QString("3"));
        d->txtValorDftXec->setText("99");
        d->ComboServeiXecs->setCurrentIndex(0);
        QVERIFY(d->txtValorDftXec->text().isEmpty());
        QVERIFY(!d->txtCostHoraXec->isEnabled());
        QVERIFY(d->valors().ServeiXecs.isEmpty());
    }

    void leavingAnInvalidFieldKeepsTheFocusThere_data()
    {
        QTest::addColumn<QString>("camp");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("missatge");
        QTest::newRow("cell length") << "txtMinutsCella" << "5" << "El valor no pot ser inferior a 10 minuts";
        QTest::newRow("hour cost") << "txtCostHoraXec" << "2" << "Cal introduir un valor no positiu";
        QTest::newRow("last planned day") << "txtUltDiaGenerat" << "32/01/2009" << "Data incorrecta";
    }

    void leavingAnInvalidFieldKeepsTheFocusThere()
    {
        QFETCH(QString, camp);
        QFETCH(QString, text);
        QFETCH(QString, missatge);
        auto d = obre({{"ServeiXecs", "Neteja"}});
        auto *c = d->findChild<QLineEdit *>(camp);
        QVERIFY(c);
        escriuISurt(*d, c, text);
        QTRY_COMPARE(m_ui.crides.size(), 1);
        QCOMPARE(m_ui.crides[0].tipus, QString("informa"));
        QCOMPARE(m_ui.crides[0].text, missatge);
        QTRY_VERIFY(c->hasFocus());
        QCOMPARE(c->text(), text);
        QCOMPARE(c->selectedText(), text);
    }

    void enterInAnInvalidFieldDoesNotConfirm()
    {
        auto d = obre();
        QSignalSpy acceptat(d.get(), &QDialog::accepted);
        d->txtMinutsCella->setFocus();
        QTRY_VERIFY(d->txtMinutsCella->hasFocus());
        d->txtMinutsCella->selectAll();
        QTest::keyClicks(d->txtMinutsCella, "7");
        QTest::keyClick(d->txtMinutsCella, Qt::Key_Return);
        QCOMPARE(acceptat.count(), 0);
        QCOMPARE(m_ui.crides.size(), 1);
        QCOMPARE(m_ui.crides[0].text, QString("El valor no pot ser inferior a 10 minuts"));
        QVERIFY(d->isVisible());
    }

    void confirmingWritesTheChosenValuesAndAsksForARestart()
    {
        auto d = obre();
        m_ui.respostes = {true};
        d->ComboSelIdioma->setCurrentIndex(1);
        d->ComboServeiXecs->setCurrentText("Desplaçaments");
        d->txtValorDftXec->setText("15,00");
        d->ComboHoraFinal->setCurrentText("20:00");
        QTest::mouseClick(d->OKButton, Qt::LeftButton);
        QCOMPARE(d->result(), int(QDialog::Accepted));
        QVERIFY(m_sessio->ReiniciarAplicacio);
        const Configuracio c = Configuracio::carrega(m_dir->path());
        QCOMPARE(c.Idioma, QString("ES"));
        QCOMPARE(c.ServeiXecs, QString("Desplaçaments"));
        QCOMPARE(c.ValorXec, 15.0);
        QCOMPARE(c.HoraFinal, QString("20:00"));
    }

    void cancelWritesNothingAndClearsTheRestart()
    {
        auto d = obre();
        const QByteArray ini = contingut(m_dir->fitxerIni());
        m_sessio->ReiniciarAplicacio = true;
        d->txtHoresDia->setText("-3");
        d->txtHoresDia->setFocus();
        // Going to Cancel throws the value away without a complaint.
        QTest::mouseClick(d->CancelButton, Qt::LeftButton);
        QTest::qWait(30);
        QCOMPARE(d->result(), int(QDialog::Rejected));
        QVERIFY(!d->isVisible());
        QVERIFY(m_ui.crides.isEmpty());
        QVERIFY(!m_sessio->ReiniciarAplicacio);
        QCOMPARE(contingut(m_dir->fitxerIni()), ini);
    }

    void theFirstRunCannotBeCancelled()
    {
        auto d = obre({}, true);
        QVERIFY(!d->CancelButton->isEnabled());
        QVERIFY(!d->btnPurgarBD->isVisible());
        QVERIFY(!d->fraLocalitzacio->isVisible());
        QVERIFY(d->txtMinutsCella->isVisible());
        QTest::keyClick(d.get(), Qt::Key_Escape);
        d->close();
        QVERIFY(d->isVisible());
        m_ui.respostes = {true};
        QTest::mouseClick(d->OKButton, Qt::LeftButton);
        QVERIFY(!d->isVisible());
        QVERIFY(m_sessio->ReiniciarAplicacio);
    }

    void choosingTheDatabaseFile()
    {
        auto d = obre();
        const QString abans = d->txtBD->text();
        d->triaFitxer = [](QWidget *, const QString &) { return QString(); };
        QTest::mouseClick(d->btnSeleccionaBD, Qt::LeftButton);
        QCOMPARE(d->txtBD->text(), abans);
        const QString nou = "/srv/dades/empresa/un/cami/molt/llarg/QuadrellaAltra.db";
        QString actualVist;
        d->triaFitxer = [&](QWidget *, const QString &actual) {
            actualVist = actual;
            return nou;
        };
        QTest::mouseClick(d->btnSeleccionaBD, Qt::LeftButton);
        QCOMPARE(actualVist, abans);
        QCOMPARE(d->txtBD->text(), nou);
        QCOMPARE(d->txtBD->cursorPosition(), nou.size());
        QCOMPARE(d->valors().BaseDades, nou);
    }

    void aFailingPurgeIsReportedAsAnError()
    {
        auto d = obre();
        m_sessio->db().close();
        m_ui.respostes = {true};
        QTest::mouseClick(d->btnPurgarBD, Qt::LeftButton);
        QCOMPARE(m_ui.crides.last().titol, QString("ERROR"));
        QVERIFY(m_ui.crides.last().text.startsWith("Error:"));
        QVERIFY(d->isVisible());
    }
};

QTEST_MAIN(TestConfiguracioDialog)
#include "tst_configuracio_dialog.moc"
