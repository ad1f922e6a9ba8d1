// The billing tab on a small month, offscreen: its two modes, the month and payment fields, what
// the sheets draw after a build, the keys on job and voucher rows and the commit. The billing rules
// themselves (and which months are valid) are the engine's tests.

#include "billing/facturacio_page.h"
#include "billing/graella_facturacio_widget.h"
#include "support/entorn_proves.h"
#include "support/guio_usuari.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

const QDate kAvui(2026, 3, 15);
const QString kEstel = QStringLiteral("L'Estel");

QString net(const QString &caption)
{
    return QString(caption).remove(QLatin1Char('&'));
}

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
            db().query("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_unitat,"
                       " feines_detall_preu_un) VALUES (?, 'Neteja', 2, 'h', 12)").bind(id).exec();
        db().query("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_unitat,"
                   " feines_detall_preu_un) VALUES (?, 'Vidres', 1, 'u', 8)").bind(m_feta).exec();
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

    // One client or every client: captions, enabled and hidden controls; Delete on the client
    // selector goes back to every client; without a voucher service no voucher control shows.
    void modes_data()
    {
        QTest::addColumn<QString>("client");
        QTest::addColumn<bool>("xecs");
        QTest::addColumn<QString>("etiqueta");
        QTest::addColumn<QString>("boto");
        QTest::addColumn<int>("filesXecs");
        QTest::newRow("tots") << QString() << true << "Total xecs liquidats:" << "Imprimir dades facturació" << 1;
        QTest::newRow("client") << kEstel << true << "Total xecs assignats:" << "Facturar client" << 2;
        QTest::newRow("client sense xecs") << kEstel << false << "Total xecs assignats:" << "Facturar client" << 2;
    }
    void modes()
    {
        QFETCH(QString, client);
        QFETCH(bool, xecs);
        QFETCH(QString, etiqueta);
        QFETCH(QString, boto);
        QFETCH(int, filesXecs);
        FacturacioPage &p = *m_page;
        QCOMPARE(p.mesFactura->text(), QString("03/2026"));
        if (!client.isEmpty())
            triaClient(client);
        p.configuraXecs(xecs, "Neteja");
        const bool ambClient = !client.isEmpty();

        QCOMPARE(p.lblTotalXecs->text(), etiqueta);
        QCOMPARE(net(p.ImprimirFacturacio->text()), boto);
        QCOMPARE(p.ImprimirFacturacio->isEnabled(), ambClient); // the monthly summary is not there yet
        QCOMPARE(p.PdtFacturar->isEnabled(), ambClient);
        QCOMPARE(p.TotalPagaments->isEnabled(), ambClient);
        for (QWidget *w : {(QWidget *)p.TotalServeis, (QWidget *)p.TotalPagaments, (QWidget *)p.TotalFacturar,
                           (QWidget *)p.lblTotalFacturar})
            QCOMPARE(w->isVisible(), ambClient);
        for (QWidget *w : {(QWidget *)p.TramaXecs, (QWidget *)p.TotalXecs, (QWidget *)p.TotalNXecs,
                           (QWidget *)p.lblTotalXecs, (QWidget *)p.ImprimirXecs})
            QCOMPARE(w->isVisible(), xecs);
        QVERIFY(!p.ImprimirHores->isEnabled());
        QCOMPARE(p.XecsGrid->model()->rowCount(), filesXecs);
        QCOMPARE(p.TotalNXecs->text(), ctl().facturacio().totals().TotalNXecs);
        const int abans = ctl().construccions();
        if (ambClient) {
            p.PdtFacturar->click();
            QVERIFY(ctl().facturacio().parametres().pendents);
        }
        QCOMPARE(ctl().construccions() - abans, ambClient ? 1 : 0);

        // Delete on the selector: every client again.
        p.ClientsCombo->setFocus();
        QTest::keyClick(p.ClientsCombo, Qt::Key_Delete);
        QCOMPARE(p.ClientsCombo->currentIndex(), -1);
        QVERIFY(!ctl().ambClient());
        QCOMPARE(p.lblTotalXecs->text(), QString("Total xecs liquidats:"));
        QVERIFY(!p.TotalFacturar->isVisible());
    }

    // The month is checked on leaving; a bad one keeps the focus and builds nothing, an unchanged
    // one builds nothing, an empty one becomes the current month.
    void mes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("erroni");
        QTest::addColumn<QString>("queda");
        QTest::addColumn<int>("construccions");
        QTest::newRow("curt") << "3/2026" << true << "3/2026" << 0;
        QTest::newRow("igual") << "03/2026" << false << "03/2026" << 0;
        QTest::newRow("buit") << "" << false << "03/2026" << 0;
        QTest::newRow("un altre") << " 04/2026 " << false << "04/2026" << 1;
    }
    void mes()
    {
        QFETCH(QString, text);
        QFETCH(bool, erroni);
        QFETCH(QString, queda);
        QFETCH(int, construccions);
        FacturacioPage &p = *m_page;
        p.mesFactura->setFocus();
        QCOMPARE(p.mesFactura->selectedText(), p.mesFactura->text());
        const int abans = ctl().construccions();
        p.mesFactura->setText(text);
        QTest::keyClick(p.mesFactura, Qt::Key_Tab);
        QCOMPARE(m_ui.crides.size(), erroni ? 1 : 0);
        if (erroni)
            QCOMPARE(m_ui.crides.first().text, QString("Mes erroni (format: 'mm/aaaa')"));
        QCOMPARE(p.mesFactura->hasFocus(), erroni);
        QCOMPARE(p.mesFactura->text(), queda);
        QCOMPARE(ctl().construccions() - abans, construccions);
        QCOMPARE(ctl().facturacio().parametres().mes, erroni ? QString("03/2026") : queda);
    }

    // The job sheet is a view over the engine's item model (whose roles are the engine's test):
    // the view merges the blocks the sheet says, hides the code column and shows the totals.
    void dibuixaElFull()
    {
        triaClient(kEstel);
        const GraellaFacturacio &g = full();
        GraellaFacturacioWidget *v = m_page->FacturaGrid;
        QCOMPARE(v->model()->rowCount(), g.files());
        QVERIFY(v->isColumnHidden(0));
        int filesFusionades = 0, columnesFusionades = 0;
        for (int r = 0; r < g.files(); ++r) {
            for (int c = 1; c < GraellaFacturacio::Columnes; ++c) {
                const GraellaFacturacio::Bloc b = g.bloc(r, c);
                if (!b.cobert()) {
                    QCOMPARE(v->rowSpan(r, c), b.files);
                    QCOMPARE(v->columnSpan(r, c), b.columnes);
                    filesFusionades += b.files > 1;
                    columnesFusionades += b.columnes > 1;
                }
            }
        }
        QVERIFY(filesFusionades > 0);    // a job's date and place once for its lines
        QVERIFY(columnesFusionades > 0); // "Total feina:" over several columns
        QCOMPARE(v->model()->headerData(9, Qt::Horizontal).toString(), g.capcalera(9));
        const TotalsFacturacio &t = ctl().facturacio().totals();
        QCOMPARE(m_page->TotalServeis->text(), t.TotalServeis);
        QCOMPARE(m_page->TotalXecs->text(), t.TotalXecs);
        QCOMPARE(m_page->TotalFacturar->text(), t.TotalFacturar);
        QVERIFY(!t.TotalServeis.isEmpty());
    }

    // Keys and double clicks on the job sheet's rows: what reaches the database, the editor, the
    // rebuild, the flags and the clients tab's voucher list. Other rows ignore them.
    void accionsDeFeina_data()
    {
        QTest::addColumn<QString>("accio");
        QTest::addColumn<bool>("liniaPendent"); // the row: a line of the pending job, else its total row
        QTest::addColumn<bool>("resposta");
        QTest::addColumn<QString>("feina");      // the pending job afterwards: "" gone, else its done flag
        QTest::addColumn<int>("editors");
        QTest::addColumn<int>("construccions");
        QTest::addColumn<bool>("refrescarAgenda");
        QTest::addColumn<bool>("desfasat"); // RefrescarFacturacio: changed without a rebuild
        QTest::addColumn<int>("recarregues");
        QTest::newRow("supr sí") << "supr" << true << true << "" << 0 << 1 << true << false << 1;
        QTest::newRow("supr no") << "supr" << true << false << "0" << 0 << 0 << false << false << 0;
        QTest::newRow("espai") << "espai" << true << false << "1" << 0 << 0 << true << true << 0;
        QTest::newRow("intro") << "intro" << true << false << "0" << 1 << 0 << true << true << 1;
        QTest::newRow("doble clic") << "doble" << true << false << "0" << 1 << 1 << true << false << 1;
        QTest::newRow("fila total") << "supr" << false << true << "0" << 0 << 0 << false << false << 0;
    }
    void accionsDeFeina()
    {
        QFETCH(QString, accio);
        QFETCH(bool, liniaPendent);
        QFETCH(bool, resposta);
        QFETCH(QString, feina);
        QFETCH(int, editors);
        QFETCH(int, construccions);
        QFETCH(bool, refrescarAgenda);
        QFETCH(bool, desfasat);
        QFETCH(int, recarregues);
        triaClient(kEstel);
        int obertes = 0;
        ctl().obreEditor = [&](Feina &f) {
            ++obertes;
            QCOMPARE(f.feines_id, m_pendent);
            f.missatge = "OK";
        };
        m_ui.respostes = {resposta};
        m_sessio->RefrescarAgenda = false;
        const int fila = liniaPendent ? filaDe(full(), QString::number(m_pendent))
                                      : filaDe(full(), QString::number(m_pendent), ColIdFeina);
        QVERIFY(fila >= 0);
        const int abans = ctl().construccions();
        GraellaFacturacioWidget *g = m_page->FacturaGrid;
        if (accio == "doble") {
            const QRect r = g->visualRect(g->model()->index(fila, ColServei));
            QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, r.center());
        } else {
            tecla(g, fila, accio == "supr" ? Qt::Key_Delete : accio == "espai" ? Qt::Key_Space : Qt::Key_Return);
        }
        const QStringList fet = dades_prova::files(db(), "SELECT feines_feta FROM Feines WHERE feines_id = ?", {m_pendent});
        QCOMPARE(fet.value(0), feina);
        QCOMPARE(obertes, editors);
        QCOMPARE(ctl().construccions() - abans, construccions);
        QCOMPARE(m_sessio->RefrescarAgenda, refrescarAgenda);
        QCOMPARE(m_sessio->RefrescarFacturacio, desfasat);
        QCOMPARE(m_recarregaXecs, recarregues);
        QCOMPARE(m_ui.crides.size(), liniaPendent && accio == "supr" ? 1 : 0); // the question, once
        QCOMPARE(g->model()->rowCount(), full().files());
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, 0);
    }

    // Delete on a settled voucher asks, deletes it and refills the voucher list; the commit
    // stamps the month as the database holds it (a job marked done from the sheet since the
    // last build included), prints through its hook and puts the focus on the client selector.
    void xecIFactura()
    {
        triaClient(kEstel);
        int impressions = 0;
        ctl().imprimeixFactura = [&](const Facturacio &f) {
            ++impressions;
            QCOMPARE(f.parametres().client, kEstel);
        };
        m_ui.respostes = {true};
        const int fila = filaDe(ctl().facturacio().XecsGrid(), "5", ColXecNumero);
        tecla(m_page->XecsGrid, fila, Qt::Key_Delete);
        QCOMPARE(m_ui.crides.value(0).text, QString("El xec està liquidat. Eliminar igualment?"));
        QCOMPARE(dades_prova::valor(db(), "SELECT COUNT(*) FROM Xecs WHERE xecs_id = 5"), 0);
        QCOMPARE(m_recarregaXecs, 1);
        QCOMPARE(m_page->XecsGrid->model()->rowCount(), 1);

        tecla(m_page->FacturaGrid, filaDe(full(), QString::number(m_pendent)), Qt::Key_Space);
        m_page->ImprimirFacturacio->click();
        QCOMPARE(impressions, 1);
        QCOMPARE(m_recarregaXecs, 2);
        QVERIFY(m_page->ClientsCombo->hasFocus());
        QCOMPARE(dades_prova::files(db(), "SELECT feines_data_factura FROM Feines ORDER BY feines_id"),
                 (QStringList{"2026-03-15", "2026-03-15"}));
        QCOMPARE(dades_prova::files(db(), "SELECT feines_id, xecs_data_liquidat FROM Xecs WHERE xecs_id = 7"),
                 QStringList{QString::number(m_feta) + "|2026-03-15"});
        QCOMPARE(m_page->FacturaGrid->model()->index(filaDe(full(), QString::number(m_feta)), ColDataFactura)
                     .data().toString(), QString("15/03/2026"));
    }

    // The payment is stored on leaving its field and the total follows; text that is not an
    // amount is refused and kept.
    void pagament_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("mostra");
        QTest::addColumn<QString>("desat");
        QTest::newRow("arrodonit") << "150,456" << "150,46" << "150.46";
        QTest::newRow("buit") << "" << "" << "";
        QTest::newRow("no és import") << "abc" << "abc" << "";
    }
    void pagament()
    {
        QFETCH(QString, text);
        QFETCH(QString, mostra);
        QFETCH(QString, desat);
        triaClient(kEstel);
        FacturacioPage &p = *m_page;
        p.TotalPagaments->setFocus();
        p.TotalPagaments->setText(text);
        const int abans = ctl().construccions();
        QTest::keyClick(p.TotalPagaments, Qt::Key_Tab);
        QCOMPARE(p.TotalPagaments->text(), mostra);
        QCOMPARE(p.TotalPagaments->hasFocus(), text == "abc");
        QCOMPARE(m_ui.crides.size(), text == "abc" ? 1 : 0);
        QCOMPARE(dades_prova::files(db(), "SELECT pagaments_import FROM Pagaments").join(""), desat);
        QCOMPARE(ctl().construccions(), abans);
        QCOMPARE(p.TotalFacturar->text(), ctl().facturacio().totals().TotalFacturar);
    }

};

QTEST_MAIN(TestFacturacioPage)
#include "tst_facturacio_page.moc"
