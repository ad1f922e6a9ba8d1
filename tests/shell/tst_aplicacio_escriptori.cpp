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

    void firstRunWithNoFilesGoesThroughLanguageConfigurationAndSampleData()
    {
        QTemporaryDir dir;
        InteraccioGuio ui;
        ui.respostes = {true, true}; // "Es reiniciarà l'aplicació. Continuar?", then the sample data
        AplicacioEscriptori app(dir.path(), ui, opcions());
        QSignalSpy acabada(&app, &AplicacioEscriptori::acabada);

        GuioUsuari guio;
        QStringList idiomes;
        guio.quanAparegui([&](QWidget *d) {
            auto *idioma = qobject_cast<frmSelIdioma *>(d);
            QVERIFY(idioma);
            for (int i = 0; i < idioma->ComboSelIdioma->count(); ++i)
                idiomes << idioma->ComboSelIdioma->itemText(i);
            idioma->ComboSelIdioma->setCurrentIndex(1);
            QTest::mouseClick(idioma->OKButton, Qt::LeftButton);
        });
        bool configuracioSenseCancel = false;
        guio.quanAparegui([&](QWidget *d) {
            auto *c = qobject_cast<frmConfiguracio *>(d);
            QVERIFY(c);
            // Already in the language just chosen, and it cannot be cancelled.
            configuracioSenseCancel = !c->CancelButton->isEnabled() && !c->fraLocalitzacio->isVisible();
            QCOMPARE(c->fraPlanificacio->title(), QString("PLANIFICACIÓN"));
            c->txtMinutsCella->setText("15");
            QTest::mouseClick(c->OKButton, Qt::LeftButton);
        });

        QVERIFY(app.inicia());
        // No settings file: it is written with every default and the language list.
        QVERIFY(QFileInfo::exists(directori_dades::fitxerIni(dir.path())));
        QCOMPARE(idiomes, QStringList({"(CT) Català", "(ES) Castellano", "(EN) English"}));
        QVERIFY(app.splash() && app.splash()->isVisible());
        ComptaMostres mostres;
        app.finestra()->installEventFilter(&mostres);
        QCOMPARE(app.fitxerAjuda(), QDir(dir.path()).filePath("manual/QuadrellaV01ES.html"));

        QTRY_COMPARE_WITH_TIMEOUT(acabada.count(), 1, 10000);
        QCOMPARE(guio.pendents(), 0);
        QVERIFY(configuracioSenseCancel);
        // The main window closed unseen, and the program asked to start again.
        QCOMPARE(mostres.mostres, 0);
        QCOMPARE(m_reinicis, 1);

        const QString ini = directori_dades::fitxerIni(dir.path());
        QCOMPARE(LlegirIni(ini, "Parametres", "PrimeraExecucio", ""), QString("0"));
        QCOMPARE(LlegirIni(ini, "Parametres", "Idioma", ""), QString("ES"));
        QCOMPARE(LlegirIni(ini, "Parametres", "MinutsCella", ""), QString("15"));
        const QString bd = QDir(dir.path()).filePath("QuadrellaV01.db");
        // The sample data was added after the configuration, sized on its cell length.
        QCOMPARE(compta(bd, "SELECT max(llocs_minuts_previst) FROM Llocs"), qint64(60));
        QCOMPARE(ui.crides.size(), 2);
        QCOMPARE(ui.crides[0].titol, QString("Aviso"));
        QCOMPARE(ui.crides[1].titol, QString("Confirmación"));
    }

    // Without the sample data: the office answered No, or already has master data (not asked).
    void firstRunWithoutSampleData_data()
    {
        QTest::addColumn<bool>("ambDades");
        QTest::newRow("answered No") << false;
        QTest::newRow("database with data") << true;
    }

    void firstRunWithoutSampleData()
    {
        QFETCH(bool, ambDades);
        DirectoriProva dir;
        if (ambDades) {
            auto s = dir.obreSessio();
            dades_prova::recurs(s->db(), "Pere", 255);
        }
        InteraccioGuio ui;
        ui.respostes = {true, false};
        AplicacioEscriptori app(dir.path(), ui, opcions());
        QSignalSpy acabada(&app, &AplicacioEscriptori::acabada);
        GuioUsuari guio;
        guio.quanAparegui([](QWidget *d) { QTest::mouseClick(qobject_cast<frmSelIdioma *>(d)->OKButton, Qt::LeftButton); });
        guio.quanAparegui([](QWidget *d) { QTest::mouseClick(qobject_cast<frmConfiguracio *>(d)->OKButton, Qt::LeftButton); });
        QVERIFY(app.inicia());
        QTRY_COMPARE_WITH_TIMEOUT(acabada.count(), 1, 10000);
        QCOMPARE(guio.vistos(), QStringList({"frmSelIdioma", "frmConfiguracio"}));
        const QString bd = QDir(dir.path()).filePath("QuadrellaV01.db");
        QCOMPARE(compta(bd, "SELECT count(*) FROM Recursos"), qint64(ambDades ? 1 : 0));
        QCOMPARE(compta(bd, "SELECT count(*) FROM Clients"), qint64(0));
        QCOMPARE(ui.crides.size(), ambDades ? 1 : 2);
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Parametres", "Idioma", ""), QString("CT"));
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

        app.sessio()->cfg().UltimDiaGen = QDate(2009, 6, 30);
        w->close();
        QCOMPARE(acabada.count(), 1);
        QCOMPARE(m_reinicis, 0);
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("30/06/2009"));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Parametres", "PrimeraExecucio", ""), QString("0"));
    }

    void aBrokenSettingStopsTheStartUpWithItsMessage()
    {
        DirectoriProva dir;
        dir.posaParametre("MinutsCella", "mitja hora");
        InteraccioGuio ui;
        AplicacioEscriptori app(dir.path(), ui, opcions());
        QVERIFY(!app.inicia());
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides[0].tipus, QString("error"));
        QCOMPARE(ui.crides[0].titol, QString("ERROR"));
        QVERIFY2(ui.crides[0].text.startsWith("Error:") && ui.crides[0].text.contains("MinutsCella"),
                 qPrintable(ui.crides[0].text));
        QVERIFY(!app.finestra());
        QVERIFY(!app.splash());
        QVERIFY(!app.sessio());
    }

};

QTEST_MAIN(TestAplicacioEscriptori)
#include "tst_aplicacio_escriptori.moc"
