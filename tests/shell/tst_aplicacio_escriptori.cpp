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
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Counts the times a window is shown.
class ComptaMostres : public QObject {
public:
    int mostres = 0;
    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() == QEvent::Show)
            ++mostres;
        return false;
    }
};

qint64 compta(const QString &fitxer, const QString &sql)
{
    Db db;
    db.open(fitxer);
    return dades_prova::valor(db, sql);
}

} // namespace

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
    // office answers No or already has master data), and asks to start again with the main window
    // never shown.
    void firstRun_data()
    {
        QTest::addColumn<bool>("ambDades");
        QTest::addColumn<bool>("resposta");
        QTest::newRow("sample data") << false << true;
        QTest::newRow("answered No") << false << false;
        QTest::newRow("database with data") << true << true;
    }
    void firstRun()
    {
        QFETCH(bool, ambDades);
        QFETCH(bool, resposta);
        QTemporaryDir dir;
        if (ambDades) {
            directori_dades::inicialitza(dir.path());
            auto s = std::make_unique<Sessio>(dir.path());
            dades_prova::recurs(s->db(), "Pere", 255);
        }
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
        QVERIFY(app.splash() && app.splash()->isVisible());
        ComptaMostres mostres;
        app.finestra()->installEventFilter(&mostres);
        QCOMPARE(app.fitxerAjuda(), QDir(dir.path()).filePath("manual/QuadrellaV01ES.html"));
        QTRY_COMPARE_WITH_TIMEOUT(acabada.count(), 1, 10000);
        QCOMPARE(guio.vistos(), QStringList({"frmSelIdioma", "frmConfiguracio"}));
        QCOMPARE(mostres.mostres, 0);
        QCOMPARE(m_reinicis, 1);
        const QString ini = directori_dades::fitxerIni(dir.path());
        QCOMPARE(LlegirIni(ini, "Parametres", "PrimeraExecucio", "") + LlegirIni(ini, "Parametres", "Idioma", "")
                     + LlegirIni(ini, "Parametres", "MinutsCella", ""), QString("0ES15"));
        const QString bd = QDir(dir.path()).filePath("QuadrellaV01.db");
        QCOMPARE(compta(bd, "SELECT ifnull(max(llocs_minuts_previst), 0) FROM Llocs"), resposta && !ambDades ? 60 : 0);
        QCOMPARE(ui.crides.size(), ambDades ? 1 : 2);
        QCOMPARE(ui.crides.last().titol, QString(ambDades ? "Aviso" : "Confirmación"));
    }

    void ordinaryRunShowsTheSplashThenTheAgenda()
    {
        DirectoriProva dir;
        dir.posaParametre("PrimeraExecucio", "0");
        InteraccioGuio ui;
        AplicacioEscriptori app(dir.path(), ui, opcions());
        QSignalSpy acabada(&app, &AplicacioEscriptori::acabada);
        QVERIFY(app.inicia());
        frmSplash *splash = app.splash();
        QVERIFY(splash->isVisible());
        QVERIFY(!app.finestra()->isVisible());
        QCOMPARE(splash->lblVersion->text(), QString("v%1.%2").arg(QUADRELLA_VERSION_MAJOR).arg(QUADRELLA_VERSION_MINOR));

        QTRY_VERIFY(app.finestra()->isVisible());
        QVERIFY(!app.splash());
        frmMain *w = app.finestra();
        QCOMPARE(w->Pestanyes->currentIndex(), int(frmMain::Agenda));
        QVERIFY(ui.crides.isEmpty());

        w->close();
        QCOMPARE(acabada.count(), 1);
        QCOMPARE(m_reinicis, 0);
    }

    void aBrokenSettingStopsTheStartUpWithItsMessage()
    {
        DirectoriProva dir;
        dir.posaParametre("MinutsCella", "mitja hora");
        InteraccioGuio ui;
        AplicacioEscriptori app(dir.path(), ui, opcions());
        QVERIFY(!app.inicia());
        QCOMPARE(ui.crides.size(), 1);
        QVERIFY2(ui.crides[0].titol == "ERROR" && ui.crides[0].text.startsWith("Error:"), qPrintable(ui.crides[0].text));
        QVERIFY(!app.finestra() && !app.splash() && !app.sessio());
    }

};

QTEST_MAIN(TestAplicacioEscriptori)
#include "tst_aplicacio_escriptori.moc"
