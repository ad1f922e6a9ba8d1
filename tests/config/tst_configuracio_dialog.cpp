// The configuration dialog driven as a user would: what it shows, the check when a field is left,
// the voucher fields, the times kept across cell lengths, confirming, cancelling, the first-run
// layout, the file chooser and the purge button; the rules belong to the settings editor's tests.
#include "config/configuracio_dialog.h"
#include "support/entorn_proves.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

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
        m_ui = InteraccioGuio();
        auto d = std::make_unique<frmConfiguracio>(*m_sessio, m_ui);
        d->show();
        d->activateWindow();
        [&] { QVERIFY(QTest::qWaitForWindowActive(d.get())); }();
        return d;
    }

    // Types into a field and leaves it with `tecla`, as a user does.
    void escriuISurt(QLineEdit *camp, const QString &text, Qt::Key tecla = Qt::Key_Tab)
    {
        camp->setFocus();
        QTRY_VERIFY(camp->hasFocus());
        camp->selectAll();
        QTest::keyClicks(camp, text);
        QTest::keyClick(camp, tecla);
        QTest::qWait(30);
    }

private slots:
    void opensWithTheSettingsInEffect()
    {
        auto d = obre({{"MinutsCella", "15"}, {"HoraInici", "07:00"}, {"HoresDia", "7,5"}, {"DissabtesExtra", "0"},
                       {"ServeiXecs", "Neteja"}, {"CostHoraXec", "-1,5"}, {"Idioma", "EN"}});
        QCOMPARE(QStringList({d->txtBD->text(), d->txtMinutsCella->text(), d->ComboHoraInici->currentText(), d->txtHoresDia->text(),
                              d->ComboServeiXecs->currentText(), d->txtCostHoraXec->text(), d->ComboSelIdioma->currentText()}),
                 QStringList({m_sessio->cfg().BaseDades, "15", "07:00", "7,50", "Neteja", "-1,50", "(EN) English"}));
        QCOMPARE(d->ComboHoraInici->count(), 96);
        QVERIFY(!d->chkDissabtesExtra->isChecked());
        // The language of the settings: English captions, in capitals.
        QCOMPARE(d->fraPlanificacio->title(), QString("PLANNING"));
        QVERIFY(d->CancelButton->isEnabled());
        QVERIFY(d->btnPurgarBD->isVisible() && d->fraLocalitzacio->isVisible() && d->txtUltDiaGenerat->isVisible());
    }

    void theVoucherServiceEnablesItsThreeFields()
    {
        auto d = obre({{"ValorXec", "10"}, {"MaxXecsMes", "3"}});
        QCOMPARE(d->ComboServeiXecs->currentIndex(), 0);
        for (QLineEdit *c : {d->txtNMaxXecsMes, d->txtValorDftXec, d->txtCostHoraXec})
            QVERIFY(!c->isEnabled() && c->text().isEmpty());
        d->ComboServeiXecs->setCurrentIndex(1);
        QCOMPARE(d->txtValorDftXec->text(), QString("10,00"));
        QCOMPARE(d->txtNMaxXecsMes->text(), QString("3"));
        d->ComboServeiXecs->setCurrentIndex(0);
        QVERIFY(d->txtValorDftXec->text().isEmpty() && !d->txtCostHoraXec->isEnabled());
        QVERIFY(d->valors().ServeiXecs.isEmpty());
    }

    // Leaving an invalid field, or Enter in it, shows the check's message, keeps the focus and
    // the text there (selected), and does not confirm.
    void anInvalidFieldKeepsTheFocus_data()
    {
        QTest::addColumn<QString>("camp");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("tecla");
        QTest::newRow("cell length, Tab") << "txtMinutsCella" << "5" << int(Qt::Key_Tab);
        QTest::newRow("cell length, Enter") << "txtMinutsCella" << "7" << int(Qt::Key_Return);
        QTest::newRow("last planned day") << "txtUltDiaGenerat" << "32/01/2009" << int(Qt::Key_Tab);
    }
    void anInvalidFieldKeepsTheFocus()
    {
        QFETCH(QString, camp);
        QFETCH(QString, text);
        QFETCH(int, tecla);
        auto d = obre();
        QSignalSpy acceptat(d.get(), &QDialog::accepted);
        auto *c = d->findChild<QLineEdit *>(camp);
        escriuISurt(c, text, Qt::Key(tecla));
        QTRY_COMPARE(m_ui.crides.size(), 1);
        QCOMPARE(m_ui.crides[0].tipus, QString("informa"));
        QTRY_VERIFY(c->hasFocus());
        QCOMPARE(c->selectedText(), text);
        QCOMPARE(acceptat.count(), 0);
    }

    // A cell length refused, or tried and changed back, leaves the times as the user had them.
    void cellLengthKeepsTheChosenTimes()
    {
        auto d = obre({{"HoraInici", "08:00"}});
        auto hores = [&] { return QStringList{d->ComboHoraInici->currentText(), d->ComboHoraFinalDinar->currentText()}; };
        for (const char *minuts : {"5", "45", "30"}) {
            d->txtMinutsCella->setFocus();
            d->txtMinutsCella->setText(minuts);
            d->txtHoresDia->setFocus();
            QTest::qWait(30);
            QCOMPARE(hores(), (QByteArray(minuts) == "45" ? QStringList{"07:30", "15:00"} : QStringList{"08:00", "15:00"}));
        }
        QCOMPARE(m_ui.crides.size(), 1); // the refused 5
    }

    // Going to Cancel throws an invalid value away without a complaint.
    void cancelWritesNothingAndClearsTheRestart()
    {
        auto d = obre();
        const QByteArray ini = contingut(m_dir->fitxerIni());
        m_sessio->ReiniciarAplicacio = true;
        d->txtHoresDia->setText("-3");
        d->txtHoresDia->setFocus();
        QTest::mouseClick(d->CancelButton, Qt::LeftButton);
        QTest::qWait(30);
        QCOMPARE(d->result(), int(QDialog::Rejected));
        QVERIFY(!d->isVisible() && m_ui.crides.isEmpty() && !m_sessio->ReiniciarAplicacio);
        QCOMPARE(contingut(m_dir->fitxerIni()), ini);
    }

    // The first run cannot be cancelled; confirming writes the values chosen and asks for a restart.
    void theFirstRunCannotBeCancelled()
    {
        auto d = obre({}, true);
        QVERIFY(!d->CancelButton->isEnabled() && !d->btnPurgarBD->isVisible() && !d->fraLocalitzacio->isVisible());
        QTest::keyClick(d.get(), Qt::Key_Escape);
        d->close();
        QVERIFY(d->isVisible());
        d->ComboSelIdioma->setCurrentIndex(1);
        d->ComboServeiXecs->setCurrentText("Neteja");
        d->txtValorDftXec->setText("15,00");
        d->ComboHoraFinal->setCurrentText("20:00");
        m_ui.respostes = {true};
        QTest::mouseClick(d->OKButton, Qt::LeftButton);
        QVERIFY(!d->isVisible() && m_sessio->ReiniciarAplicacio);
        const Configuracio c = Configuracio::carrega(m_dir->path());
        QCOMPARE(QStringList({c.Idioma, c.ServeiXecs, c.HoraFinal}), QStringList({"ES", "Neteja", "20:00"}));
        QCOMPARE(c.ValorXec, 15.0);
    }

    // The chooser starts at the file shown; cancelling it keeps the file; the purge button
    // reaches the purge and shows its failure.
    void theFileChooserAndThePurgeButton()
    {
        auto d = obre();
        const QString abans = d->txtBD->text();
        const QString nou = "/srv/dades/empresa/un/cami/molt/llarg/QuadrellaAltra.db";
        QString resposta, actualVist;
        d->triaFitxer = [&](QWidget *, const QString &actual) { return actualVist = actual, resposta; };
        QTest::mouseClick(d->btnSeleccionaBD, Qt::LeftButton);
        QCOMPARE(d->txtBD->text(), abans);
        resposta = nou;
        QTest::mouseClick(d->btnSeleccionaBD, Qt::LeftButton);
        QCOMPARE(actualVist, abans);
        QCOMPARE(d->txtBD->cursorPosition(), nou.size());
        QCOMPARE(d->valors().BaseDades, nou);

        m_sessio->db().close();
        m_ui.respostes = {true};
        QTest::mouseClick(d->btnPurgarBD, Qt::LeftButton);
        QCOMPARE(m_ui.crides.last().titol, QString("ERROR"));
        QVERIFY(m_ui.crides.last().text.startsWith("Error:") && d->isVisible());
    }
};

QTEST_MAIN(TestConfiguracioDialog)
#include "tst_configuracio_dialog.moc"
