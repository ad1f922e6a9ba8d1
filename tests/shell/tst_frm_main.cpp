// The main window's frame: lazy rebuilds on tab changes, F2, the status bar, the voucher rule,
// the help key, the message window and the shut-down order.
#include "config/configuracio_dialog.h"
#include "core/ini.h"
#include "support/entorn_proves.h"
#include "shell/ajuda_window.h"
#include "shell/frm_main.h"
#include "shell/frm_missatges.h"
#include "support/guio_usuari.h"
#include "widgets/pagina_principal.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>

namespace {

class PaginaComptadora : public QWidget, public PaginaPrincipal {
public:
    int reconstruccions = 0;
    int configuracions = 0;
    bool xecs = true;
    bool falla = false;

    void reconstrueix() override
    {
        ++reconstruccions;
        if (falla)
            throw DbError("disc ple");
    }
    void configuraXecs(bool actius, const QString &) override
    {
        ++configuracions;
        xecs = actius;
    }
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

    std::unique_ptr<frmMain> obre()
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre("PrimeraExecucio", "0");
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
    // rebuild is reported and the page stays flagged.
    void switchingTabsRebuildsAFlaggedPageOnce()
    {
        auto w = obre();
        auto *agenda = new PaginaComptadora;
        auto *factura = new PaginaComptadora;
        w->posaPagina(frmMain::Agenda, agenda);
        w->posaPagina(frmMain::Clients, new QWidget);
        w->posaPagina(frmMain::Facturacio, factura);
        mostraActiva(*w);
        m_sessio->RefrescarAgenda = true;
        clicaPestanya(*w, frmMain::Facturacio);
        QCOMPARE(factura->reconstruccions + agenda->reconstruccions, 0);
        clicaPestanya(*w, frmMain::Agenda);
        clicaPestanya(*w, frmMain::Clients);
        clicaPestanya(*w, frmMain::Agenda);
        QCOMPARE(agenda->reconstruccions, 1);
        QVERIFY(!m_sessio->RefrescarAgenda);

        m_sessio->RefrescarAgenda = true;
        agenda->falla = true;
        clicaPestanya(*w, frmMain::Clients);
        clicaPestanya(*w, frmMain::Agenda);
        QCOMPARE(m_ui.crides.size(), 1);
        QCOMPARE(m_ui.crides[0].titol + ": " + m_ui.crides[0].text, QString("ERROR: Error:disc ple"));
        QVERIFY(m_sessio->RefrescarAgenda && QApplication::overrideCursor() == nullptr);
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
            c->chkPermetSolaparLlocs->setChecked(false);
            QTest::mouseClick(c->OKButton, Qt::LeftButton);
        });
        QTest::keyClick(w.get(), Qt::Key_F2);
        QVERIFY(tancada.count() == 1 && !w->isVisible() && m_sessio->ReiniciarAplicacio && !m_sessio->db().isOpen());
        QCOMPARE(LlegirIni(m_dir->fitxerIni(), "Parametres", "PermetSolaparLlocs", ""), QString("0"));
    }

    // The status bar shows the last planned day; a page added learns whether vouchers are in use.
    void statusBarAndVoucherControls()
    {
        auto w = obre();
        w->actualitzaUltimDiaPlanificat(QDate(2009, 3, 15));
        QCOMPARE(w->panellUltimDia->text(), QString("Últim dia planificat 15/03/2009"));
        auto *p = new PaginaComptadora;
        w->posaPagina(frmMain::Facturacio, p);
        QVERIFY(p->configuracions == 1 && !p->xecs && !w->xecsActius());
    }

    // Saved on closing and restored on the next opening, but not from a minimised window.
    void positionIsRestoredAndSavedUnlessMinimised()
    {
        {
            auto w = obre();
            w->show();
            w->move(120, 80);
            w->close();
        }
        auto w = obre();
        QCOMPARE(w->pos(), QPoint(120, 80));
        w->showMinimized();
        QTRY_VERIFY(w->isMinimized());
        w->move(300, 300);
        w->close();
        QCOMPARE(frmMain::posicioDesada(), QPoint(120, 80));
    }

    // F1 opens the manual in the program's own help window.
    void helpKeyOpensTheManual()
    {
        auto w = obre();
        QTemporaryDir manual;
        QFile pagina(manual.filePath("QuadrellaV01CT.html"));
        QVERIFY(pagina.open(QIODevice::WriteOnly) && pagina.write("<html><head><title>Manual</title></head></html>") > 0);
        pagina.close();
        w->setFitxerAjuda(pagina.fileName());
        mostraActiva(*w);
        QTest::keyClick(w.get(), Qt::Key_F1);
        QVERIFY(w->ajuda() && w->ajuda()->isVisible() && w->ajuda()->windowTitle() == "Manual");
    }

    // The message window logs a long operation and cannot be closed while busy.
    void messageWindowLogsALongOperation()
    {
        auto w = obre();
        mostraActiva(*w);
        frmMissatges *m = w->missatges();
        m->ocupat(true);
        QVERIFY(m->isVisible() && !m->Tancar->isEnabled());
        m->afegeix("Feina 1 planificada el 01/03/2009\r\n");
        QCOMPARE(m->text(), QString("Feina 1 planificada el 01/03/2009\n"));
        m->close();
        QVERIFY(m->isVisible());
        m->ocupat(false);
        QVERIFY(QApplication::overrideCursor() == nullptr);
        QTest::mouseClick(m->Tancar, Qt::LeftButton);
        QVERIFY(!m->isVisible() && m->text().isEmpty());
    }

    void shutDownClosesTheOtherWindowsNewestFirst()
    {
        auto w = obre();
        mostraActiva(*w);
        OrdreTancament ordre;
        QWidget antiga, nova;
        frmMissatges *m = w->missatges();
        for (QWidget *f : {static_cast<QWidget *>(&antiga), static_cast<QWidget *>(m), &nova}) {
            f->installEventFilter(&ordre);
            f->show();
        }
        antiga.setObjectName("antiga");
        nova.setObjectName("nova");
        w->close();
        QCOMPARE(ordre.ordre, QStringList({"nova", "frmMissatges", "antiga"}));
    }
};

QTEST_MAIN(TestFrmMain)
#include "tst_frm_main.moc"
