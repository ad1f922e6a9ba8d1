// The main window's frame: lazy rebuilds on tab changes, F2, the status bar, the voucher rule,
// the credits, the message window and the shut-down order.
#include "config/configuracio_dialog.h"
#include "core/formats.h"
#include "core/ini.h"
#include "support/entorn_proves.h"
#include "shell/ajuda_window.h"
#include "shell/frm_main.h"
#include "shell/frm_missatges.h"
#include "support/guio_usuari.h"
#include "shell/logo_quadrella.h"
#include "shell/producte.h"
#include "widgets/pagina_principal.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTest>

namespace {

class PaginaComptadora : public QWidget, public PaginaPrincipal {
public:
    int reconstruccions = 0;
    int configuracions = 0;
    bool xecs = true;
    QString servei;
    bool falla = false;

    void reconstrueix() override
    {
        ++reconstruccions;
        if (falla)
            throw DbError("disc ple");
    }
    void configuraXecs(bool actius, const QString &s) override
    {
        ++configuracions;
        xecs = actius;
        servei = s;
    }
};

class Navegador : public QObject {
    Q_OBJECT
public:
    QList<QUrl> obertes;
public slots:
    void obre(const QUrl &url) { obertes << url; }
};

// Records the order in which windows get their close event.
class OrdreTancament : public QObject {
public:
    QStringList ordre;
    bool eventFilter(QObject *o, QEvent *e) override
    {
        if (e->type() == QEvent::Close)
            ordre << o->objectName();
        return false;
    }
};

void clicaPestanya(frmMain &w, int i)
{
    QTabBar *barra = w.Pestanyes->tabBar();
    QTest::mouseClick(barra, Qt::LeftButton, {}, barra->tabRect(i).center());
}

} // namespace

class TestFrmMain : public QObject {
    Q_OBJECT

    QTemporaryDir m_settings;
    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioGuio m_ui;

    std::unique_ptr<frmMain> obre(const QMap<QString, QString> &parametres = {})
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre("PrimeraExecucio", "0");
        m_dir->posaParametre("UltimDiaGen", "28/02/2009", "Estat");
        for (auto it = parametres.begin(); it != parametres.end(); ++it)
            m_dir->posaParametre(it.key(), it.value());
        m_sessio = m_dir->obreSessio();
        m_ui = InteraccioGuio();
        auto w = std::make_unique<frmMain>(*m_sessio, m_ui);
        w->carrega();
        return w;
    }

    void mostraActiva(frmMain &w)
    {
        w.show();
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
    }

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("QuadrellaProves");
        QCoreApplication::setApplicationName("Quadrella");
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    }

    void cleanup()
    {
        QSettings().clear();
    }

    // A change elsewhere flags a page; it is rebuilt once, when its tab is shown again; a failed
    // rebuild is reported and tried again on the next visit.
    void switchingTabsRebuildsAFlaggedPageOnce()
    {
        auto w = obre();
        auto *agenda = new PaginaComptadora;
        auto *factura = new PaginaComptadora;
        w->posaPagina(frmMain::Agenda, agenda);
        int clients = 0;
        w->posaPagina(frmMain::Clients, new QWidget, [&] { ++clients; });
        w->posaPagina(frmMain::Facturacio, factura);
        mostraActiva(*w);
        QCOMPARE(w->pestanyaActual(), int(frmMain::Agenda));
        m_sessio->RefrescarAgenda = true;
        clicaPestanya(*w, frmMain::Facturacio);
        QCOMPARE(w->pestanyaActual(), int(frmMain::Facturacio));
        QCOMPARE(factura->reconstruccions + agenda->reconstruccions, 0);
        clicaPestanya(*w, frmMain::Agenda);
        clicaPestanya(*w, frmMain::Clients);
        clicaPestanya(*w, frmMain::Agenda);
        QCOMPARE(agenda->reconstruccions, 1);
        QVERIFY(!m_sessio->RefrescarAgenda);
        m_sessio->RefrescarFacturacio = true;
        m_sessio->RefrescarAgenda = true;
        clicaPestanya(*w, frmMain::Facturacio);
        QCOMPARE(factura->reconstruccions, 1);
        QVERIFY(!m_sessio->RefrescarFacturacio && m_sessio->RefrescarAgenda);
        // Tabs without a refresh flag never rebuild on a switch.
        clicaPestanya(*w, frmMain::Clients);
        QCOMPARE(clients, 0);

        agenda->falla = true;
        clicaPestanya(*w, frmMain::Agenda);
        QCOMPARE(m_ui.crides.size(), 1);
        QCOMPARE(m_ui.crides[0].titol + ": " + m_ui.crides[0].text, QString("ERROR: Error:disc ple"));
        QVERIFY(m_sessio->RefrescarAgenda && QApplication::overrideCursor() == nullptr);
        agenda->falla = false;
        clicaPestanya(*w, frmMain::Clients);
        clicaPestanya(*w, frmMain::Agenda);
        QCOMPARE(agenda->reconstruccions, 3);
        QVERIFY(!m_sessio->RefrescarAgenda);
    }

    // F2 opens the configuration; confirming it writes and closes the window for the restart.
    void f2OpensTheConfiguration()
    {
        auto w = obre();
        mostraActiva(*w);
        QSignalSpy tancada(w.get(), &frmMain::tancada);
        m_ui.respostes = {true};
        GuioUsuari guio;
        guio.quanAparegui([](QWidget *d) {
            auto *c = qobject_cast<frmConfiguracio *>(d);
            QVERIFY(c);
            c->chkPermetSolaparLlocs->setChecked(false);
            QTest::mouseClick(c->OKButton, Qt::LeftButton);
        });
        QTest::keyClick(w.get(), Qt::Key_F2);
        QCOMPARE(tancada.count(), 1);
        QVERIFY(!w->isVisible() && m_sessio->ReiniciarAplicacio && !m_sessio->db().isOpen());
        QCOMPARE(LlegirIni(m_dir->fitxerIni(), "Parametres", "PermetSolaparLlocs", ""), QString("0"));
    }

    void statusBarShowsTheLastPlannedDayAndTheClock()
    {
        auto w = obre();
        QCOMPARE(w->panellUltimDia->text(), QString("Últim dia planificat 28/02/2009"));
        w->actualitzaUltimDiaPlanificat(QDate(2009, 3, 15));
        QCOMPARE(w->panellUltimDia->text(), QString("Últim dia planificat 15/03/2009"));
        QCOMPARE(w->panellData->text(), format::dataCurta(QDate::currentDate()));
    }

    void voucherControlsFollowTheVoucherService()
    {
        auto w = obre();
        auto *p = new PaginaComptadora;
        w->posaPagina(frmMain::Facturacio, p);
        QCOMPARE(p->configuracions, 1);
        QVERIFY(!p->xecs && !w->xecsActius());
        w.reset();
        w = obre({{"ServeiXecs", "Neteja"}});
        p = new PaginaComptadora;
        w->posaPagina(frmMain::Clients, p);
        QVERIFY(w->xecsActius() && p->xecs);
        QCOMPARE(p->servei, QString("Neteja"));
    }

    // Restored and saved unless minimised; a position off the screen comes back onto it, title
    // bar and status bar included; a maximised window comes back maximised.
    void positionIsRestoredAndSavedUnlessMinimised()
    {
        QCOMPARE(obre()->pos(), QPoint(67, 67)); // nothing saved yet
        {
            auto w = obre();
            w->show();
            w->move(120, 80);
            w->close();
        }
        QCOMPARE(frmMain::posicioDesada(), QPoint(120, 80));
        {
            auto w = obre();
            QCOMPARE(w->pos(), QPoint(120, 80));
            w->showMinimized();
            QTRY_VERIFY(w->isMinimized());
            w->move(300, 300);
            w->close();
        }
        QCOMPARE(frmMain::posicioDesada(), QPoint(120, 80));
        const QRect lliure = QGuiApplication::primaryScreen()->availableGeometry();
        QSettings().setValue("Settings/MainLeft", lliure.right() - 50);
        QSettings().setValue("Settings/MainTop", lliure.bottom() - 50);
        auto w = obre();
        QVERIFY(lliure.contains(QRect(w->pos(), w->size() + QSize(0, 32))));
        w->mostra();
        w->showMaximized();
        QTRY_VERIFY(w->isMaximized());
        w->close();
        w.reset();
        w = obre();
        w->mostra();
        QTRY_VERIFY(w->isMaximized());
    }

    // The logo goes to the web in the desktop's browser; F1 opens the manual in the program's own
    // help window, where its links stay.
    void logoOpensTheWebAndHelpKeyTheManual()
    {
        Navegador navegador;
        QDesktopServices::setUrlHandler("https", &navegador, "obre");
        QDesktopServices::setUrlHandler("file", &navegador, "obre");
        auto w = obre();
        QTemporaryDir manual;
        const QString ajuda = manual.filePath("QuadrellaV01CT.html");
        QFile pagina(ajuda);
        QVERIFY(pagina.open(QIODevice::WriteOnly));
        pagina.write("<html><head><title>Manual</title></head><body><a href=\"altra.html\">altra</a></body></html>");
        pagina.close();
        w->setFitxerAjuda(ajuda);
        mostraActiva(*w);
        w->seleccionaPestanya(frmMain::Credits);
        QTest::mouseClick(w->picLogoQuadrella, Qt::LeftButton);
        QTest::keyClick(w.get(), Qt::Key_F1);
        QVERIFY(w->ajuda() && w->ajuda()->isVisible());
        QCOMPARE(w->ajuda()->windowTitle(), QString("Manual"));
        emit w->ajuda()->Navegador->anchorClicked(QUrl("altra.html"));
        QCOMPARE(w->ajuda()->pagina(), QUrl::fromLocalFile(manual.filePath("altra.html")));
        QDesktopServices::unsetUrlHandler("https");
        QDesktopServices::unsetUrlHandler("file");
        QCOMPARE(navegador.obertes, QList<QUrl>({QUrl(producte::web())}));
    }

    // The message window logs a long operation: it cannot be closed while busy, and each append
    // lets the window repaint (work posted meanwhile gets done).
    void messageWindowLogsALongOperation()
    {
        auto w = obre();
        mostraActiva(*w);
        frmMissatges *m = w->missatges();
        m->titol("PLANIFICACIO DE FEINES");
        m->ocupat(true);
        QVERIFY(m->isVisible() && !m->Tancar->isEnabled());
        QVERIFY(QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor);
        int atesos = 0;
        QTimer::singleShot(0, m, [&] { ++atesos; });
        m->afegeix("Feina 1 planificada el 01/03/2009\r\n");
        QCOMPARE(atesos, 1);
        m->afegeix("FINALITZACIO CORRECTA!!!\r\n");
        QCOMPARE(m->text(), QString("Feina 1 planificada el 01/03/2009\nFINALITZACIO CORRECTA!!!\n"));
        m->close();
        QTest::keyClick(m, Qt::Key_Escape);
        QVERIFY(m->isVisible());
        m->ocupat(false);
        QVERIFY(m->Tancar->isEnabled() && QApplication::overrideCursor() == nullptr);
        QTest::mouseClick(m->Tancar, Qt::LeftButton);
        QVERIFY(!m->isVisible() && m->text().isEmpty());
    }

    void shutDownClosesTheOtherWindowsNewestFirst()
    {
        auto w = obre();
        mostraActiva(*w);
        OrdreTancament ordre;
        QWidget antiga, nova;
        antiga.setObjectName("antiga");
        nova.setObjectName("nova");
        antiga.installEventFilter(&ordre);
        nova.installEventFilter(&ordre);
        frmMissatges *m = w->missatges();
        m->installEventFilter(&ordre);
        antiga.show();
        m->show();
        nova.show();
        w->close();
        QCOMPARE(ordre.ordre, QStringList({"nova", "frmMissatges", "antiga"}));
        QVERIFY(!antiga.isVisible() && !nova.isVisible() && !m->isVisible());
        QVERIFY(!m_sessio->db().isOpen());
    }
};

QTEST_MAIN(TestFrmMain)
#include "tst_frm_main.moc"
