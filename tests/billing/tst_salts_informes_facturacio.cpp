// Page breaks of the invoice data and the settled-vouchers report, on lists a little longer than
// a page: every entry starts above the break line, the totals start above it too, and on the
// invoice a job that goes on after a break shows its date again.
#include "billing/facturacio.h"
#include "billing/informe_factura.h"
#include "billing/resum_facturacio.h"
#include "reports/impressora_registre.h"
#include "support/entorn_proves.h"

#include <QtTest>

class TestSaltsInformesFacturacio : public QObject {
    Q_OBJECT

private slots:
    void entriesStartAboveTheBreak_data()
    {
        QTest::addColumn<bool>("factura");
        QTest::addColumn<int>("feines");
        QTest::addColumn<int>("salt");
        QTest::addColumn<double>("quota"); // the place's monthly fee: its row ends the invoice's list
        QTest::newRow("invoice just over a page") << true << 15 << 14500 << 0.0;
        QTest::newRow("vouchers just over a page") << false << 45 << 14500 << 0.0;
        // Lowered a little more each time, so that a break falls inside a job and before the totals.
        for (int salt = 8000; salt < 9000; salt += 100) {
            QTest::addRow("invoice, break at %d", salt) << true << 9 << salt << 0.0;
            QTest::addRow("invoice with a fee, break at %d", salt) << true << 7 << salt << 50.0;
        }
        // Each count ends the list at a different height of its last page (22: on its last line).
        for (int xecs : {12, 22, 33})
            QTest::addRow("%d vouchers, break at 8000", xecs) << false << xecs << 8000 << 0.0;
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
        const QString client = QStringLiteral("L'Estel"), mes = QStringLiteral("03/2031");
        dades_prova::client(b.db, client);
        dades_prova::servei(b.db, QStringLiteral("Neteja"), 60, false, 15, QStringLiteral("Hores"));
        dades_prova::lloc(b.db, QStringLiteral("Oficina"), 60, QString(), client);
        b.db.query(QStringLiteral("UPDATE Llocs SET llocs_quota = ?")).bind(quota).exec();
        for (int i = 0; i < feines; ++i) {
            const int id = dades_prova::feina(b.db, QStringLiteral("Oficina"), QDate(2031, 3, 1 + i % 28), "09:00", "10:00",
                                              QStringLiteral("Anna"), true);
            Query q = b.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat,"
                                                " feines_detall_unitat, feines_detall_preu_un) VALUES (?, 'Neteja', ?, 'Hores', 15)"));
            for (int l = 1; l <= 2; ++l)
                q.bind(id).bind(l).exec();
            dades_prova::xec(b.db, 100 + i, client, id, QDate(2031, 3, 31));
        }
        ImpressoraRegistre imp;
        if (factura) {
            Facturacio f(b.db, b.cfg);
            f.Carrega_Facturacio(ParametresFacturacio{mes, client, false, QString()});
            Imprimeix_Dades_Factura(imp, b.db, f);
        } else {
            Imprimeix_Xecs_Liquidats(imp, b.db, b.cfg, mes);
        }
        QVERIFY(imp.pagines().size() > 1);
        imp.setMida(10);
        imp.setNegreta(true);
        const double linia = imp.altLinia();
        int entrades = 0;
        for (const PaginaDibuix &p : imp.pagines()) {
            bool primera = true;
            for (const ElementDibuix &e : p.elements) {
                if (e.tipus != ElementDibuix::Text)
                    continue;
                // Where each entry starts, and how far below the break line its first text may be.
                double marge = -1;
                if (e.color != 0 && e.x1 == 6400) { // a job's line on the invoice
                    marge = 200;
                    if (primera)
                        QVERIFY2(std::any_of(p.elements.begin(), p.elements.end(),
                                             [&](const ElementDibuix &d) { return d.x1 == 500 && d.y1 == e.y1 && d.color != 0; }),
                                 "a job goes on after a break without its date");
                    primera = false;
                } else if (e.color != 0 && e.x1 == 8400) { // the fee
                    marge = 50;
                } else if (e.text.startsWith(QStringLiteral("Xec "))) {
                    marge = 200;
                } else if (e.text == QStringLiteral("TOTALS:")) {
                    marge = 2 * linia;
                } else if (e.text.startsWith(QStringLiteral("Total ")) && e.text.endsWith(QStringLiteral("xecs:"))) {
                    marge = 0;
                }
                if (marge < 0)
                    continue;
                ++entrades;
                QVERIFY2(e.y1 <= salt + marge + 1, qPrintable(QStringLiteral("page %1: %2 at %3").arg(p.numero).arg(e.text).arg(e.y1)));
            }
        }
        QCOMPARE(entrades, 2 * feines + 1 + (quota > 0));
        QVERIFY(imp.textos().contains(QStringLiteral("(Continuació)")));
    }
};

QTEST_MAIN(TestSaltsInformesFacturacio)
#include "tst_salts_informes_facturacio.moc"
