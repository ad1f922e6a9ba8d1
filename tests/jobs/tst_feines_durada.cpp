// The job engine's lookups and its two duration rules: how long a place's services take and where
// a job ends, with groups sharing the work and the total rounded after every line.
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QtTest>

using namespace dades_prova;

class TestFeinesDurada : public QObject {
    Q_OBJECT

private slots:
    void placeMinutes_data()
    {
        QTest::addColumn<int>("cella");
        QTest::addColumn<int>("n");
        // Each line: quantity, minutes per unit, common (1) or shared (0).
        QTest::addColumn<QList<QList<double>>>("linies");
        QTest::addColumn<int>("minuts");

        QTest::newRow("no services: one cell") << 30 << 1 << QList<QList<double>>{} << 30;
        QTest::newRow("31 rounds up to 60") << 30 << 1 << QList<QList<double>>{{31, 1, 0}} << 60;
        QTest::newRow("60 stays 60") << 30 << 1 << QList<QList<double>>{{2, 30, 0}} << 60;
        QTest::newRow("group halves shared, keeps common") << 30 << 2 << QList<QList<double>>{{2, 30, 0}, {1, 15, 1}} << 60;
        // 12.5 three times: the running total rounds to 12, 24 (24.5), 36 (36.5). Rounding
        // only at the end would give 38 (37.5), which needs two cells of 36.
        QTest::newRow("running total rounds after each line") << 36 << 2
                                                               << QList<QList<double>>{{1, 25, 0}, {1, 25, 0}, {1, 25, 0}} << 36;
        QTest::newRow("2.5 rounds to 2") << 1 << 2 << QList<QList<double>>{{5, 1, 0}} << 2;
        QTest::newRow("3.5 rounds to 4") << 1 << 2 << QList<QList<double>>{{7, 1, 0}} << 4;
    }

    void placeMinutes()
    {
        QFETCH(int, cella);
        QFETCH(int, n);
        QFETCH(QList<QList<double>>, linies);
        QFETCH(int, minuts);
        BaseProva b;
        b.cfg.MinutsCella = cella;
        for (int i = 0; i < linies.size(); ++i) {
            const QString nom = QStringLiteral("S%1").arg(i);
            servei(b.db, nom, static_cast<int>(linies[i][1]), linies[i][2] != 0);
            llocServei(b.db, QStringLiteral("Oficina"), nom, linies[i][0]);
        }
        // Another place's lines must not count.
        servei(b.db, QStringLiteral("Altre"), 600, true);
        llocServei(b.db, QStringLiteral("Magatzem"), QStringLiteral("Altre"), 3);
        MotorFeines m(b.db, b.cfg);
        QCOMPARE(m.Minuts_Serveis_Lloc(QStringLiteral("OFICINA"), n), minuts);
    }

    void jobEnd_data()
    {
        QTest::addColumn<QString>("recurs");
        QTest::addColumn<QString>("inici");
        QTest::addColumn<QString>("horaFinal");
        QTest::addColumn<bool>("ambLinies");
        QTest::addColumn<QString>("fi");

        // Lines: 2 x 30 min shared + 1 x 15 min common.
        QTest::newRow("worker: 75 -> 90") << "Marta" << "08:00" << "24:00" << true << "09:30";
        QTest::newRow("group of two: 45 -> 60") << "Marta i Oriol" << "08:00" << "24:00" << true << "09:00";
        QTest::newRow("past midnight, earlier day end") << "Marta" << "23:30" << "22:00" << true << "22:00";
        QTest::newRow("one cell to midnight") << "Marta" << "23:30" << "24:00" << false << "24:00";
    }

    void jobEnd()
    {
        QFETCH(QString, recurs);
        QFETCH(QString, inici);
        QFETCH(QString, horaFinal);
        QFETCH(bool, ambLinies);
        QFETCH(QString, fi);
        BaseProva b;
        b.cfg.HoraFinal = horaFinal;
        dades_prova::recurs(b.db, QStringLiteral("Marta"), 1, true);
        dades_prova::recurs(b.db, QStringLiteral("Oriol"), 2, true);
        grup(b.db, QStringLiteral("Marta i Oriol"), 3, {QStringLiteral("Marta"), QStringLiteral("Oriol")});
        servei(b.db, QStringLiteral("Neteja"), 30, false);
        servei(b.db, QStringLiteral("Desplaçament"), 15, true);
        const int id = feina(b.db, QStringLiteral("Oficina"), QDate(2024, 3, 4), inici, QStringLiteral("23:59"));
        const int altra = feina(b.db, QStringLiteral("Oficina"), QDate(2024, 3, 5), inici, QStringLiteral("23:59"));
        if (ambLinies) {
            linia(b.db, id, QStringLiteral("Neteja"), 2);
            linia(b.db, id, QStringLiteral("Desplaçament"), 1);
        }
        linia(b.db, altra, QStringLiteral("Neteja"), 10); // another job's lines never count
        MotorFeines m(b.db, b.cfg);
        Feina f;
        f.feines_id = id;
        f.feines_hora_inici = inici;
        f.recursos_nom = recurs;
        QCOMPARE(m.Hora_Fi_Feina(f), fi);
    }
};

QTEST_GUILESS_MAIN(TestFeinesDurada)
#include "tst_feines_durada.moc"
