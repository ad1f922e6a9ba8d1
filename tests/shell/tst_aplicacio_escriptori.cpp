// Start-up and shut-down of the desktop program: the ordinary run, the first run driven through
// its dialogs by a scripted user, and the start-up failures.
#include "config/configuracio_dialog.h"
#include "core/directori_dades.h"
#include "core/ini.h"
#include "support/entorn_proves.h"
#include "shell/aplicacio_escriptori.h"
#include "shell/frm_main.h"
#include "shell/frm_sel_idioma.h"
#include "shell/frm_splash.h"
#include "support/guio_usuari.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

class TestAplicacioEscriptori : public QObject {
    Q_OBJECT

    QTemporaryDir m_settings;
    int m_reinicis = 0;

    AplicacioEscriptori::Opcions opcions()
    {
        AplicacioEscriptori::Opcions o;
        o.msSplash = 40;
        o.reinicia = [this] { ++m_reinicis; };
        o.traduccionsQt = false;
        return o;
    }

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("QuadrellaProves");
        QCoreApplication::setApplicationName("Quadrella");
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QVERIFY(QFileInfo::exists(":/resources/manual/Quadrella.html"));
    }

    void init() { m_reinicis = 0; }

    // The first run goes through the language, then the configuration (in the language just
    // chosen), then offers the sample data (added sized on the chosen cell length, unless the
    // office answers No), and asks to start again with the main window never shown.
    void firstRun_data()
    {
        QTest::addColumn<bool>("resposta");
        QTest::newRow("sample data") << true;
        QTest::newRow("answered No") << false;
    }
    void firstRun()
    {
        QFETCH(bool, resposta);
        QTemporaryDir dir;
        InteraccioGuio ui;
        ui.respostes = {true, resposta}; // "Es reiniciarà l'aplicació. Continuar?", then the sample data
        AplicacioEscriptori app(dir.path(), ui, opcions());
        QSignalSpy acabada(&app, &AplicacioEscriptori::acabada);
        GuioUsuari guio;
        guio.quanAparegui([](QWidget *d) {
            auto *idioma = qobject_cast<frmSelIdioma *>(d);
            idioma->ComboSelIdioma->setCurrentIndex(1);
            QTest::mouseClick(idioma->OKButton, Qt::LeftButton);
        });
        guio.quanAparegui([](QWidget *d) {
            auto *c = qobject_cast<frmConfiguracio *>(d);
            QCOMPARE(c->fraPlanificacio->title(), QString("PLANIFICACIÓN"));
            c->txtMinutsCella->setText("15");
            QTest::mouseClick(c->OKButton, Qt::LeftButton);
        });
        QVERIFY(app.inicia());
        QTRY_COMPARE_WITH_TIMEOUT(acabada.count(), 1, 10000);
        QCOMPARE(guio.vistos(), QStringList({"frmSelIdioma", "frmConfiguracio"}));
        QVERIFY(!app.finestra()->testAttribute(Qt::WA_WState_ExplicitShowHide) && m_reinicis == 1);
        const QString ini = directori_dades::fitxerIni(dir.path());
        QCOMPARE(LlegirIni(ini, "Parametres", "PrimeraExecucio", "") + LlegirIni(ini, "Parametres", "Idioma", "")
                     + LlegirIni(ini, "Parametres", "MinutsCella", ""), QString("0ES15"));
        Db bd;
        bd.open(QDir(dir.path()).filePath("QuadrellaV01.db"));
        QCOMPARE(dades_prova::valor(bd, "SELECT ifnull(max(llocs_minuts_previst), 0) FROM Llocs"), resposta ? 60 : 0);
        QCOMPARE(ui.crides.size(), 2);
    }

    void ordinaryRunShowsTheSplashThenTheAgenda()
    {
        DirectoriProva dir;
        dir.posaParametre("PrimeraExecucio", "0");
        InteraccioGuio ui;
        AplicacioEscriptori app(dir.path(), ui, opcions());
        QSignalSpy acabada(&app, &AplicacioEscriptori::acabada);
        QVERIFY(app.inicia());
        QVERIFY(app.splash()->isVisible() && !app.finestra()->isVisible());
        QTRY_VERIFY(app.finestra()->isVisible() && !app.splash());
        frmMain *w = app.finestra();
        QVERIFY(w->Pestanyes->currentIndex() == int(frmMain::Agenda) && ui.crides.isEmpty());
        w->close();
        QVERIFY(acabada.count() == 1 && m_reinicis == 0);
    }

    void aBrokenSettingStopsTheStartUpWithItsMessage()
    {
        DirectoriProva dir;
        dir.posaParametre("MinutsCella", "mitja hora");
        InteraccioGuio ui;
        AplicacioEscriptori app(dir.path(), ui, opcions());
        QVERIFY(!app.inicia());
        QVERIFY(ui.crides.size() == 1 && ui.crides[0].text.startsWith("Error:"));
        QVERIFY(!app.finestra() && !app.splash() && !app.sessio());
    }

};

QTEST_MAIN(TestAplicacioEscriptori)
#include "tst_aplicacio_escriptori.moc"
