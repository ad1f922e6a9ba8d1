// The billing reports on a small seeded month, through the recorder. The golden cases compare the
// whole drawing with tests/billing/dibuixos/<case>.txt (regenerate after a deliberate change of
// layout with QUADRELLA_REGENERA_DIBUIXOS=1 and review the diff); beside them, the figures each
// report must reach worked out by hand, every amount ending on its column's edge, a summary longer
// than a page, and what the summary leaves in the log and the sheets.
#include "billing/facturacio.h"
#include "billing/informe_factura.h"
#include "billing/resum_facturacio.h"
#include "reports/impressora_registre.h"
#include "support/dibuix_esperat.h"
#include "support/entorn_proves.h"

#include <QtTest>
#include <cmath>
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
        exec(db, QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_unitat,"
                                " feines_detall_preu_un) VALUES (?, ?, ?, ?, ?)"),
             {id, QString::fromUtf8(servei), quantitat, QString::fromUtf8(unitat), preu});
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
        exec(db, QStringLiteral("UPDATE Llocs SET llocs_quota = 50 WHERE llocs_nom = 'Magatzem'"), {});
        exec(db, QStringLiteral("UPDATE Llocs SET llocs_quota = 80 WHERE llocs_nom = 'Bar'"), {});
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
        exec(db, QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_unitat,"
                                " feines_detall_preu_un) VALUES (?, 'Neteja', 0.5, 'Hores', 15)"), {feina2});
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
    // `figures`: texts the drawing must hold, worked out by hand from the seeded month.
    void reports_data()
    {
        QTest::addColumn<Dibuix>("dibuix");
        QTest::addColumn<QStringList>("figures");
        // Neteja 2 h (30 + 2 x 2 for the vouchers) and 3 h (45); Vidres 25; the warehouse's fee 50;
        // two vouchers -20: 134. The job not done and the fee place's lines add no amount.
        QTest::newRow("factura_pagament") << Dibuix([](BaseProva &b, Mes &, Impressora &imp) { factura(b, imp, QStringLiteral("100")); })
                                          << QStringList{"IMPORT FACTURA: 134,00 €", "Pagaments a compte:", "100,00 €"};
        // L'Estel 134 (the summary leaves payments out); Bar Nou only its fee 80; Zeta nothing.
        QTest::newRow("resum_mes") << Dibuix([](BaseProva &b, Mes &, Impressora &imp) {
            Facturacio f(b.db, b.cfg);
            RegistreMemoria log;
            QCOMPARE(Imprimeix_Resum_Facturacio(imp, f, kMes, log, QDate(2031, 3, 20)), 3);
        }) << QStringList{" ( 01/03/2031 - 20/03/2031 )", "TOTAL MES: 214,00 €"};
        QTest::newRow("xecs_mes") << Dibuix([](BaseProva &b, Mes &m, Impressora &imp) {
            m.liquidats(b.db);
            Imprimeix_Xecs_Liquidats(imp, b.db, b.cfg, kMes);
        }) << QStringList{"Oficina [10/03/2031 09:00] (0,5 hores)", "Total 3 xecs:", "30,00 €"};
    }

    void reports()
    {
        QFETCH(Dibuix, dibuix);
        QFETCH(QStringList, figures);
        BaseProva b;
        Mes mes(b);
        ImpressoraRegistre imp;
        dibuix(b, mes, imp);
        QVERIFY(imp.acabat());
        comparaAmbDibuix(QStringLiteral("billing"), QString::fromUtf8(QTest::currentDataTag()), imp.text());
        const QStringList textos = imp.textos();
        for (const QString &t : figures)
            QVERIFY2(textos.contains(t), qPrintable(t));
        // Every amount ends on its column's edge.
        for (const PaginaDibuix &p : imp.pagines())
            for (const ElementDibuix &e : p.elements)
                if (e.tipus == ElementDibuix::Text && (e.text.endsWith(QStringLiteral("€")) || e.text.endsWith(QStringLiteral("€ )"))))
                    QVERIFY2(QList<long>({11000, 10900}).contains(std::lround(e.x1 + e.ample)), qPrintable(e.text));
    }

    // Forty clients do not fit a lowered page: each block stays whole on one page, every client
    // once and in order, and the log and the sheets end as the tab expects them.
    void summaryOverSeveralPages()
    {
        BaseProva b;
        Mes mes(b);
        b.cfg.PosicioSaltPagina = 8000;
        QStringList esperats{QStringLiteral("Bar Nou"), kEstel};
        for (int i = 0; i < 40; ++i) {
            const QString c = QStringLiteral("Client %1").arg(i, 2, 10, QLatin1Char('0'));
            const QString lloc = QStringLiteral("Lloc %1").arg(i, 2, 10, QLatin1Char('0'));
            dades_prova::client(b.db, c);
            dades_prova::lloc(b.db, lloc, 60, QString(), c);
            feina(b.db, lloc, 12, true, {{"Neteja", 1, "Hores", 15}, {"Vidres", 2, "m2", 2.5}});
            esperats << c;
        }
        std::sort(esperats.begin(), esperats.end(), [](const QString &x, const QString &y) { return x.compare(y, Qt::CaseInsensitive) < 0; });
        Facturacio f(b.db, b.cfg);
        RegistreMemoria log;
        ImpressoraRegistre imp;
        QCOMPARE(Imprimeix_Resum_Facturacio(imp, f, kMes, log, QDate(2031, 4, 2)), 43);
        QVERIFY(imp.pagines().size() > 2);

        QStringList vistos;
        for (const PaginaDibuix &p : imp.pagines()) {
            QString obert;
            for (const ElementDibuix &e : p.elements) {
                if (e.tipus != ElementDibuix::Text || e.mida != 10)
                    continue;
                if (e.negreta && e.x1 == 500 && e.text != QStringLiteral("Client")) {
                    QVERIFY2(obert.isEmpty(), qPrintable(obert + QStringLiteral(" split over a page")));
                    obert = e.text;
                    vistos << e.text;
                    QVERIFY(e.y1 <= 8000 + 200);
                } else if (e.text == QStringLiteral("Total:")) {
                    QVERIFY2(!obert.isEmpty(), "a total without its client on the page");
                    obert.clear();
                }
            }
            QVERIFY2(obert.isEmpty(), qPrintable(obert + QStringLiteral(" split over a page")));
        }
        QCOMPARE(vistos, esperats);
        QVERIFY(imp.textos().contains(QStringLiteral("TOTAL MES: 1.014,00 €"))); // 214 + 40 x (15 + 5)

        QCOMPARE(log.ocupacions, (QList<bool>{true, false}));
        QCOMPARE(log.text.count(QStringLiteral("Calculant client:")), 43);
        QVERIFY(log.text.endsWith(QStringLiteral("\r\n43 clients processats.\r\n\r\nFINALITZACIO CORRECTA!!!\r\n")));
        QVERIFY(!f.ambClient());
        QCOMPARE(f.parametres().mes, kMes);
    }
};

QTEST_MAIN(TestInformesFacturacio)
#include "tst_informes_facturacio.moc"
