// The billing reports on a small seeded month, through the recorder. The golden cases compare the
// whole drawing with tests/billing/dibuixos/<case>.txt (regenerate after a deliberate change of
// layout with QUADRELLA_REGENERA_DIBUIXOS=1 and review the diff); beside them, where the invoice
// and the vouchers' report break their pages.
#include "billing/facturacio.h"
#include "billing/informe_factura.h"
#include "billing/resum_facturacio.h"
#include "reports/impressora_registre.h"
#include "support/dibuix_esperat.h"
#include "support/entorn_proves.h"

#include <QtTest>
#include <functional>

namespace {

const QString kMes = QStringLiteral("03/2031");
const QString kEstel = QStringLiteral("L'Estel");

void exec(Db &db, const QString &sql, const QVariantList &valors)
{
    Query q = db.query(sql);
    for (const QVariant &v : valors)
        q.bind(v);
    q.exec();
}

int feina(Db &db, const QString &lloc, int dia, bool feta, const QList<std::tuple<const char *, double, const char *, double>> &linies)
{
    const int id = dades_prova::feina(db, lloc, QDate(2031, 3, dia), "09:00", "10:00", QStringLiteral("Anna"), feta);
    for (const auto &[servei, quantitat, unitat, preu] : linies)
        dades_prova::linia(db, id, QString::fromUtf8(servei), quantitat, preu, QString::fromUtf8(unitat));
    return id;
}

void xec(Db &db, int id, const QString &client, int feina = 0)
{
    exec(db, QStringLiteral("INSERT INTO Xecs (xecs_id, clients_nom, feines_id, xecs_data_entrega, xecs_data_liquidat, xecs_valor)"
                            " VALUES (?, ?, ?, '2031-02-01', ?, 10)"),
         {id, client, feina ? QVariant(feina) : QVariant(), feina ? QVariant(QStringLiteral("2031-03-31")) : QVariant()});
}

// L'Estel: an office without a fee (two done jobs, one not done, two free vouchers) and a
// warehouse with a fee of 50; Bar Nou: one done job at a bar with a fee of 80; Zeta: nothing.
struct Mes {
    int feina1 = 0, feina2 = 0, feinaBar = 0;
    explicit Mes(BaseProva &b)
    {
        Db &db = b.db;
        b.cfg.ServeiXecs = QStringLiteral("Neteja");
        b.cfg.ValorXec = 10;
        b.cfg.CostHoraXec = 2;
        b.cfg.MaxXecsMes = 4;
        dades_prova::recurs(db, QStringLiteral("Anna"), 0x00ffff);
        dades_prova::servei(db, QStringLiteral("Neteja"), 60, false, 15, QStringLiteral("Hores"));
        dades_prova::servei(db, QStringLiteral("Vidres"), 30, false, 2.5, QStringLiteral("m2"));
        dades_prova::servei(db, QStringLiteral("Jardí"), 60, false, 20, QStringLiteral("Hores"));
        for (const QString &c : {kEstel, QStringLiteral("Bar Nou"), QStringLiteral("Zeta")})
            dades_prova::client(db, c);
        exec(db, QStringLiteral("UPDATE Clients SET clients_NIF = 'B12345678', \"clients_adreça\" = 'C. Major, 1',"
                                " clients_codi_postal = '08001', clients_poblacio = 'Barcelona', clients_telefons = '930 000 000',"
                                " clients_ccc = '2100 0001 11 0123456789' WHERE clients_nom = ?"), {kEstel});
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60, QString(), kEstel);
        dades_prova::lloc(db, QStringLiteral("Magatzem"), 60, QString(), kEstel);
        dades_prova::lloc(db, QStringLiteral("Bar"), 60, QString(), QStringLiteral("Bar Nou"));
        db.exec(QStringLiteral("UPDATE Llocs SET llocs_quota = CASE llocs_nom WHEN 'Magatzem' THEN 50 WHEN 'Bar' THEN 80 ELSE 0 END"));
        feina1 = feina(db, QStringLiteral("Oficina"), 3, true, {{"Neteja", 2, "Hores", 15}, {"Vidres", 10, "m2", 2.5}});
        feina2 = feina(db, QStringLiteral("Oficina"), 10, true, {{"Neteja", 3, "Hores", 15}});
        feina(db, QStringLiteral("Oficina"), 17, false, {{"Neteja", 1, "Hores", 15}});
        feina(db, QStringLiteral("Magatzem"), 5, true, {{"Neteja", 4, "Hores", 15}});
        feinaBar = feina(db, QStringLiteral("Bar"), 6, true, {{"Neteja", 1, "Hores", 15}});
        xec(db, 101, kEstel);
        xec(db, 102, kEstel);
        // In April: never in March's reports.
        dades_prova::feina(db, QStringLiteral("Oficina"), QDate(2031, 4, 1), "09:00", "10:00", QStringLiteral("Anna"), true);
    }
    // Vouchers already settled: two for L'Estel (the second job with a second line of the voucher
    // service), one for Bar Nou.
    void liquidats(Db &db)
    {
        dades_prova::linia(db, feina2, "Neteja", 0.5, 15, "Hores");
        xec(db, 201, kEstel, feina1);
        xec(db, 202, kEstel, feina2);
        xec(db, 301, QStringLiteral("Bar Nou"), feinaBar);
    }
};

void factura(BaseProva &b, Impressora &imp, const QString &pagament)
{
    Facturacio f(b.db, b.cfg);
    f.Carrega_Facturacio(ParametresFacturacio{kMes, kEstel, false, pagament});
    Imprimeix_Dades_Factura(imp, b.db, f);
}

using Dibuix = std::function<void(BaseProva &, Mes &, Impressora &)>;

} // namespace

class TestInformesFacturacio : public QObject {
    Q_OBJECT

private slots:
    void reports_data()
    {
        QTest::addColumn<Dibuix>("dibuix");
        QTest::newRow("factura_pagament") << Dibuix([](BaseProva &b, Mes &, Impressora &imp) { factura(b, imp, QStringLiteral("100")); });
        // The summary also leaves its log as the tab shows it.
        QTest::newRow("resum_mes") << Dibuix([](BaseProva &b, Mes &, Impressora &imp) {
            Facturacio f(b.db, b.cfg);
            RegistreMemoria log;
            QCOMPARE(Imprimeix_Resum_Facturacio(imp, f, kMes, log, QDate(2031, 3, 20)), 3);
            QCOMPARE(log.ocupacions, (QList<bool>{true, false}));
            QCOMPARE(log.text.count(QStringLiteral("Calculant client:")), 3);
            QVERIFY(log.text.endsWith(QStringLiteral("\r\n3 clients processats.\r\n\r\nFINALITZACIO CORRECTA!!!\r\n")));
        });
        QTest::newRow("xecs_mes") << Dibuix([](BaseProva &b, Mes &m, Impressora &imp) {
            m.liquidats(b.db);
            Imprimeix_Xecs_Liquidats(imp, b.db, b.cfg, kMes);
        });
    }

    void reports()
    {
        QFETCH(Dibuix, dibuix);
        BaseProva b;
        Mes mes(b);
        ImpressoraRegistre imp;
        dibuix(b, mes, imp);
        QVERIFY(imp.acabat());
        comparaAmbDibuix(QStringLiteral("billing"), QString::fromUtf8(QTest::currentDataTag()), imp.text());
    }

    // Every entry and the totals start above the break line, and on the invoice a job that goes
    // on after a break shows its date again.
    void entriesStartAboveTheBreak_data()
    {
        QTest::addColumn<bool>("factura");
        QTest::addColumn<int>("feines"); // of two lines each, each with a settled voucher
        QTest::addColumn<int>("salt");
        QTest::addColumn<double>("quota"); // the place's fee: its row ends the invoice's list
        // Lowered a little more each time, so that a break falls inside a job and before the totals.
        for (int salt = 8000; salt < 9000; salt += 100) {
            QTest::addRow("invoice, break at %d", salt) << true << 9 << salt << 0.0;
            QTest::addRow("invoice with a fee, break at %d", salt) << true << 7 << salt << 50.0;
        }
        QTest::newRow("22 vouchers: the last on a page's last line") << false << 22 << 8000 << 0.0;
    }

    void entriesStartAboveTheBreak()
    {
        QFETCH(bool, factura);
        QFETCH(int, feines);
        QFETCH(int, salt);
        QFETCH(double, quota);
        BaseProva b;
        b.cfg.ServeiXecs = QStringLiteral("Neteja");
        b.cfg.PosicioSaltPagina = salt;
        dades_prova::client(b.db, kEstel);
        dades_prova::servei(b.db, QStringLiteral("Neteja"), 60, false, 15, QStringLiteral("Hores"));
        dades_prova::lloc(b.db, QStringLiteral("Oficina"), 60, QString(), kEstel);
        exec(b.db, QStringLiteral("UPDATE Llocs SET llocs_quota = ?"), {quota});
        for (int i = 0; i < feines; ++i)
            xec(b.db, 100 + i, kEstel, feina(b.db, QStringLiteral("Oficina"), 1 + i % 28, true, {{"Neteja", 1, "Hores", 15}, {"Neteja", 2, "Hores", 15}}));
        ImpressoraRegistre imp;
        factura ? ::factura(b, imp, QString()) : Imprimeix_Xecs_Liquidats(imp, b.db, b.cfg, kMes);
        QVERIFY(imp.pagines().size() > 1);
        imp.setMida(10);
        imp.setNegreta(true);
        int entrades = 0;
        for (const PaginaDibuix &p : imp.pagines()) {
            bool primera = true;
            for (const ElementDibuix &e : p.elements) {
                // Where each entry starts, and how far below the break line that may be.
                const bool gris = e.color != 0;
                const double marge = gris && e.x1 == 6400 ? 200 // a job's line
                    : gris && e.x1 == 8400                 ? 50  // the fee
                    : e.text.startsWith(QStringLiteral("Xec ")) ? 200
                    : e.text == QStringLiteral("TOTALS:")      ? 2 * imp.altLinia()
                    : e.text.startsWith(QStringLiteral("Total ")) ? 0 : -1;
                if (marge < 0)
                    continue;
                ++entrades;
                QVERIFY2(e.y1 <= salt + marge + 1, qPrintable(QStringLiteral("page %1: %2 at %3").arg(p.numero).arg(e.text).arg(e.y1)));
                if (gris && e.x1 == 6400 && std::exchange(primera, false))
                    QVERIFY2(std::any_of(p.elements.begin(), p.elements.end(),
                                         [&](const ElementDibuix &d) { return d.x1 == 500 && d.y1 == e.y1 && d.color != 0; }),
                             "a job goes on after a break without its date");
            }
        }
        QCOMPARE(entrades, 2 * feines + 1 + (quota > 0));
    }
};

QTEST_MAIN(TestInformesFacturacio)
#include "tst_informes_facturacio.moc"
