// Page breaks of the invoice data and the settled-vouchers report on lists a little longer than a
// page: every entry and the totals start above the break line, and on the invoice a job that goes
// on after a break shows its date again.
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
        QTest::addColumn<int>("feines"); // of two lines each, each with a settled voucher
        QTest::addColumn<int>("salt");
        QTest::addColumn<double>("quota"); // the place's fee: its row ends the invoice's list
        QTest::newRow("invoice just over a page") << true << 15 << 14500 << 0.0;
        QTest::newRow("vouchers just over a page") << false << 45 << 14500 << 0.0;
        // Lowered a little more each time, so that a break falls inside a job and before the totals.
        for (int salt = 8000; salt < 9000; salt += 100) {
            QTest::addRow("invoice, break at %d", salt) << true << 9 << salt << 0.0;
            QTest::addRow("invoice with a fee, break at %d", salt) << true << 7 << salt << 50.0;
        }
        for (int xecs : {12, 22, 33}) // 22 ends on the last line of a page
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
        dades_prova::client(b.db, "Estel");
        dades_prova::servei(b.db, "Neteja", 60, false, 15, "Hores");
        dades_prova::lloc(b.db, "Oficina", 60, QString(), "Estel");
        b.db.query(QStringLiteral("UPDATE Llocs SET llocs_quota = ?")).bind(quota).exec();
        Query linia = b.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat,"
                                                " feines_detall_unitat, feines_detall_preu_un) VALUES (?, 'Neteja', ?, 'Hores', 15)"));
        for (int i = 0; i < feines; ++i) {
            const int id = dades_prova::feina(b.db, "Oficina", QDate(2031, 3, 1 + i % 28), "09:00", "10:00", "Anna", true);
            linia.bind(id).bind(1).exec();
            linia.bind(id).bind(2).exec();
            dades_prova::xec(b.db, 100 + i, "Estel", id, QDate(2031, 3, 31));
        }
        ImpressoraRegistre imp;
        Facturacio f(b.db, b.cfg);
        f.Carrega_Facturacio(ParametresFacturacio{QStringLiteral("03/2031"), QStringLiteral("Estel"), false, QString()});
        factura ? Imprimeix_Dades_Factura(imp, b.db, f) : Imprimeix_Xecs_Liquidats(imp, b.db, b.cfg, QStringLiteral("03/2031"));
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

QTEST_MAIN(TestSaltsInformesFacturacio)
#include "tst_salts_informes_facturacio.moc"
