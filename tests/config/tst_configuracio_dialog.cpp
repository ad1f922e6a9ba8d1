// The configuration dialog driven as a user would: what it shows, the check when a field is left,
// the voucher fields, confirming, cancelling, the first-run
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

private slots:
    void opensWithTheSettingsInEffect()
    {
        auto d = obre({{"MinutsCella", "15"}, {"HoraInici", "07:00"}, {"HoresDia", "7,5"}, {"DissabtesExtra", "0"},
                       {"ServeiXecs", "Neteja"}, {"CostHoraXec", "-1,5"}, {"Idioma", "EN"}});
        QCOMPARE(QStringList({d->txtBD->text(), d->txtMinutsCella->text(), d->ComboHoraInici->currentText(), d->txtHoresDia->text(),
                              d->ComboServeiXecs->currentText(), d->txtCostHoraXec->text(), d->ComboSelIdioma->currentText()}),
                 QStringList({m_sessio->cfg().BaseDades, "15", "07:00", "7,50", "Neteja", "-1,50", "(EN) English"}));
        QVERIFY(!d->chkDissabtesExtra->isChecked() && d->CancelButton->isEnabled() && d->btnPurgarBD->isVisible());
    }

    // The voucher service enables its three fields, filled from the settings.
    void theVoucherServiceEnablesItsThreeFields()
    {
        auto d = obre({{"ValorXec", "10"}, {"MaxXecsMes", "3"}});
        for (QLineEdit *c : {d->txtNMaxXecsMes, d->txtValorDftXec, d->txtCostHoraXec})
            QVERIFY(!c->isEnabled() && c->text().isEmpty());
        d->ComboServeiXecs->setCurrentIndex(1);
        QCOMPARE(d->txtValorDftXec->text() + " " + d->txtNMaxXecsMes->text(), QString("10,00 3"));
        d->ComboServeiXecs->setCurrentIndex(0);
        QVERIFY(d->txtValorDftXec->text().isEmpty() && !d->txtCostHoraXec->isEnabled() && d->valors().ServeiXecs.isEmpty());
    }

    // Enter in an invalid field shows the check's message, keeps the focus and the text there
    // (selected), and does not confirm.
    void anInvalidFieldKeepsTheFocus()
    {
        auto d = obre();
        QSignalSpy acceptat(d.get(), &QDialog::accepted);
        d->txtMinutsCella->setFocus();
        QTRY_VERIFY(d->txtMinutsCella->hasFocus());
        d->txtMinutsCella->selectAll();
        QTest::keyClicks(d->txtMinutsCella, "7");
        QTest::keyClick(d->txtMinutsCella, Qt::Key_Return);
        QTRY_COMPARE(m_ui.crides.size(), 1);
        QTRY_VERIFY(d->txtMinutsCella->hasFocus());
        QVERIFY(d->txtMinutsCella->selectedText() == "7" && acceptat.count() == 0);
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
        QVERIFY(!d->isVisible() && m_ui.crides.isEmpty() && !m_sessio->ReiniciarAplicacio);
        QCOMPARE(contingut(m_dir->fitxerIni()), ini);
    }

    // The first run cannot be cancelled; confirming writes the values chosen and asks for a restart.
    void theFirstRunCannotBeCancelled()
    {
        auto d = obre({}, true);
        QVERIFY(!d->CancelButton->isEnabled() && !d->btnPurgarBD->isVisible() && !d->fraLocalitzacio->isVisible());
        d->close();
        QVERIFY(d->isVisible());
        d->ComboSelIdioma->setCurrentIndex(1);
        d->ComboHoraFinal->setCurrentText("20:00");
        m_ui.respostes = {true};
        QTest::mouseClick(d->OKButton, Qt::LeftButton);
        QVERIFY(!d->isVisible() && m_sessio->ReiniciarAplicacio);
        const Configuracio c = Configuracio::carrega(m_dir->path());
        QCOMPARE(c.Idioma + " " + c.HoraFinal, QString("ES 20:00"));
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
        QVERIFY(actualVist == abans && d->valors().BaseDades == nou);

        m_sessio->db().close();
        m_ui.respostes = {true};
        QTest::mouseClick(d->btnPurgarBD, Qt::LeftButton);
        QVERIFY(m_ui.crides.last().text.startsWith("Error:") && d->isVisible());
    }
};

QTEST_MAIN(TestConfiguracioDialog)
#include "tst_configuracio_dialog.moc"
