// The billing tab on a small month, offscreen: its two modes, the month and payment fields, what
// the sheets draw after a build, the keys on job and voucher rows and the commit. The billing rules
// themselves (and which months are valid) are the engine's tests.

#include "billing/facturacio_page.h"
#include "billing/graella_facturacio_widget.h"
#include "support/entorn_proves.h"
#include "support/guio_usuari.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

const QDate kAvui(2026, 3, 15);
const QString kEstel = QStringLiteral("L'Estel");

} // namespace

class TestFacturacioPage : public QObject {
    Q_OBJECT

    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioGuio m_ui;
    std::unique_ptr<FacturacioPage> m_page;
    int m_feta = 0, m_pendent = 0; // job ids of L'Estel's month
    int m_recarregaXecs = 0;

    ControladorFacturacio &ctl() { return m_page->controlador(); }
    const GraellaFacturacio &full() { return ctl().facturacio().FacturaGrid(); }
    Db &db() { return m_sessio->db(); }

    int filaDe(const GraellaFacturacio &g, const QString &codi, int col = 0)
    {
        for (int r = 0; r < g.files(); ++r)
            if (g.text(r, col) == codi)
                return r;
        return -1;
    }

    void triaClient(const QString &nom)
    {
        m_page->ClientsCombo->setCurrentIndex(m_page->ClientsCombo->findText(nom));
        QCOMPARE(ctl().client(), nom);
    }

    // A key on a row of a sheet, as the user presses it with that row current.
    void tecla(GraellaFacturacioWidget *g, int fila, Qt::Key key)
    {
        g->setFocus();
        g->setCurrentIndex(g->model()->index(fila, 1));
        QTest::keyClick(g, key);
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre("ServeiXecs", "Neteja");
        m_dir->posaParametre("ValorXec", "10");
        m_dir->posaParametre("CostHoraXec", "2");
        m_dir->posaParametre("MaxXecsMes", "4");
        m_sessio = m_dir->obreSessio();
        dades_prova::client(db(), kEstel);
        dades_prova::client(db(), "Bloc Nou");
        dades_prova::recurs(db(), "Anna", 0x00F5D7A8);
        dades_prova::lloc(db(), "Escala A", 60, "Anna", kEstel);
        m_feta = dades_prova::feina(db(), "Escala A", QDate(2026, 3, 3), "09:00", "11:00", "Anna", true);
        m_pendent = dades_prova::feina(db(), "Escala A", QDate(2026, 3, 10), "09:00", "10:00", "Anna", false);
        for (int id : {m_feta, m_pendent})
            dades_prova::linia(db(), id, "Neteja", 2, 12, "h");
        dades_prova::linia(db(), m_feta, "Vidres", 1, 8, "u");
        dades_prova::xec(db(), 5, kEstel, m_feta, QDate(2026, 3, 20)); // settled this month
        dades_prova::xec(db(), 7, kEstel, 0, QDate());                 // free
        m_ui = InteraccioGuio();
        m_recarregaXecs = 0;
        m_page = std::make_unique<FacturacioPage>(*m_sessio, m_ui, nullptr, kAvui);
        ctl().recarregaXecs = [this] { ++m_recarregaXecs; };
        m_page->resize(1200, 760);
        m_page->show();
        m_page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        m_sessio.reset();
        m_dir.reset();
    }

    // One client or every client: enabled and hidden controls; Delete on the client selector goes
    // back to every client; without a voucher service no voucher control shows.
    void modes_data()
    {
        QTest::addColumn<QString>("client");
        QTest::addColumn<bool>("xecs");
        QTest::newRow("tots") << QString() << true;
        QTest::newRow("client") << kEstel << true;
        QTest::newRow("client sense xecs") << kEstel << false;
    }
    void modes()
    {
        QFETCH(QString, client);
        QFETCH(bool, xecs);
        FacturacioPage &p = *m_page;
        QCOMPARE(p.mesFactura->text(), QString("03/2026"));
        const bool ambClient = !client.isEmpty();
        if (ambClient)
            triaClient(client);
        p.configuraXecs(xecs, "Neteja");
        for (QWidget *w : {(QWidget *)p.ImprimirFacturacio, (QWidget *)p.PdtFacturar, (QWidget *)p.TotalPagaments})
            QCOMPARE(w->isEnabled(), ambClient); // the monthly summary is not there yet
        for (QWidget *w : {(QWidget *)p.TotalServeis, (QWidget *)p.TotalFacturar, (QWidget *)p.lblTotalFacturar})
            QCOMPARE(w->isVisible(), ambClient);
        for (QWidget *w : {(QWidget *)p.TramaXecs, (QWidget *)p.TotalXecs, (QWidget *)p.TotalNXecs, (QWidget *)p.ImprimirXecs})
            QCOMPARE(w->isVisible(), xecs);
        const int abans = ctl().construccions();
        if (ambClient)
            p.PdtFacturar->click();
        QCOMPARE(ctl().facturacio().parametres().pendents, ambClient);
        QCOMPARE(ctl().construccions() - abans, ambClient ? 1 : 0);
        // Delete on the selector: every client again.
        p.ClientsCombo->setFocus();
        QTest::keyClick(p.ClientsCombo, Qt::Key_Delete);
        QCOMPARE(p.ClientsCombo->currentIndex(), -1);
        QVERIFY(!ctl().ambClient() && !p.TotalFacturar->isVisible());
    }

    // The month is checked on leaving: a bad one builds nothing, another one builds once.
    void mes()
    {
        QLineEdit *mes = m_page->mesFactura;
        const int abans = ctl().construccions();
        for (const char *text : {"3/2026", " 04/2026 "}) {
            mes->setFocus();
            mes->setText(text);
            QTest::keyClick(mes, Qt::Key_Tab);
        }
        QCOMPARE(QStringList({mes->text(), QString::number(m_ui.crides.size()), QString::number(ctl().construccions() - abans),
                              ctl().facturacio().parametres().mes}).join('|'),
                 "04/2026|1|1|04/2026");
    }

    // The job sheet is a view over the engine's item model (whose roles are the engine's test):
    // the view merges the blocks the sheet says, hides the code column and shows the totals.
    void dibuixaElFull()
    {
        triaClient(kEstel);
        const GraellaFacturacio &g = full();
        GraellaFacturacioWidget *v = m_page->FacturaGrid;
        QVERIFY(v->isColumnHidden(0));
        int fusions = 0;
        for (int r = 0; r < g.files(); ++r)
            for (int c = 1; c < GraellaFacturacio::Columnes; ++c)
                if (!g.bloc(r, c).cobert()) {
                    QCOMPARE(QSize(v->columnSpan(r, c), v->rowSpan(r, c)), QSize(g.bloc(r, c).columnes, g.bloc(r, c).files));
                    fusions += (g.bloc(r, c).files > 1) * 100 + (g.bloc(r, c).columnes > 1);
                }
        QVERIFY(fusions > 100 && fusions % 100 > 0); // a job's date once for its lines; "Total feina:" over columns
        const TotalsFacturacio &t = ctl().facturacio().totals();
        QCOMPARE(m_page->TotalFacturar->text() + m_page->TotalXecs->text(), t.TotalFacturar + t.TotalXecs);
    }

    // Keys and double clicks on the job sheet's rows: what reaches the database, the editor, the
    // rebuild, the flags, the clients tab's voucher list and the user.
    void accionsDeFeina_data()
    {
        QTest::addColumn<QString>("accio");
        // The pending job's done flag ("" gone) | editors opened | rebuilds | RefrescarAgenda |
        // RefrescarFacturacio (changed without a rebuild) | voucher list refills | questions.
        QTest::addColumn<QString>("esperat");
        QTest::newRow("supr") << "supr" << "|0|1|1|0|1|1";
        QTest::newRow("espai") << "espai" << "1|0|0|1|1|0|0";
        QTest::newRow("doble clic") << "doble" << "0|1|1|1|0|1|0";
    }
    void accionsDeFeina()
    {
        QFETCH(QString, accio);
        QFETCH(QString, esperat);
        triaClient(kEstel);
        int obertes = 0;
        ctl().obreEditor = [&](Feina &f) {
            ++obertes;
            QCOMPARE(f.feines_id, m_pendent);
            f.missatge = "OK";
        };
        m_ui.respostes = {true};
        m_sessio->RefrescarAgenda = false;
        const int fila = filaDe(full(), QString::number(m_pendent));
        QVERIFY(fila >= 0);
        const int abans = ctl().construccions();
        GraellaFacturacioWidget *g = m_page->FacturaGrid;
        if (accio == "doble")
            QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(g->model()->index(fila, ColServei)).center());
        else
            tecla(g, fila, accio == "espai" ? Qt::Key_Space : Qt::Key_Delete);
        const QStringList fet = dades_prova::files(db(), "SELECT feines_feta FROM Feines WHERE feines_id = ?", {m_pendent});
        QCOMPARE(QStringList({fet.value(0), QString::number(obertes), QString::number(ctl().construccions() - abans),
                              QString::number(m_sessio->RefrescarAgenda), QString::number(m_sessio->RefrescarFacturacio),
                              QString::number(m_recarregaXecs), QString::number(m_ui.crides.size())}).join('|'),
                 esperat);
        QCOMPARE(g->model()->rowCount(), full().files());
    }

    // Delete on a settled voucher asks, deletes it and refills the voucher list; the commit
    // stamps the month as the database holds it (a job marked done from the sheet since the
    // last build included), prints through its hook and puts the focus on the client selector.
    void xecIFactura()
    {
        triaClient(kEstel);
        int impressions = 0;
        ctl().imprimeixFactura = [&](const Facturacio &f) { impressions += f.parametres().client == kEstel; };
        m_ui.respostes = {true};
        tecla(m_page->XecsGrid, filaDe(ctl().facturacio().XecsGrid(), "5", ColXecNumero), Qt::Key_Delete);
        QCOMPARE(m_ui.crides.value(0).text, QString("El xec està liquidat. Eliminar igualment?"));
        QCOMPARE(dades_prova::valor(db(), "SELECT COUNT(*) FROM Xecs WHERE xecs_id = 5"), 0);
        QCOMPARE(m_recarregaXecs, 1);
        tecla(m_page->FacturaGrid, filaDe(full(), QString::number(m_pendent)), Qt::Key_Space);
        m_page->ImprimirFacturacio->click();
        QCOMPARE(impressions * 10 + m_recarregaXecs, 12);
        QVERIFY(m_page->ClientsCombo->hasFocus());
        QCOMPARE(dades_prova::files(db(), "SELECT feines_data_factura FROM Feines"), (QStringList{"2026-03-15", "2026-03-15"}));
    }

    // The payment is stored on leaving its field and the total follows without a rebuild.
    void pagament()
    {
        triaClient(kEstel);
        QLineEdit *camp = m_page->TotalPagaments;
        const int abans = ctl().construccions();
        camp->setFocus();
        camp->setText("150,456");
        QTest::keyClick(camp, Qt::Key_Tab);
        QCOMPARE(camp->text() + '|' + dades_prova::files(db(), "SELECT pagaments_import FROM Pagaments").join(""), QString("150,46|150.46"));
        QCOMPARE(ctl().construccions(), abans);
        QCOMPARE(m_page->TotalFacturar->text(), ctl().facturacio().totals().TotalFacturar);
    }
};

QTEST_MAIN(TestFacturacioPage)
#include "tst_facturacio_page.moc"
