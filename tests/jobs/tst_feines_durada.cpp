// The job engine's lookups and its two duration rules: how long a place's services take and where
// a job ends, with groups sharing the work and the total rounded after every line.
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QtTest>

using namespace dades_prova;

class TestFeinesDurada : public QObject {
    Q_OBJECT

private slots:
    void resourceLookups()
    {
        BaseProva b;
        recurs(b.db, QStringLiteral("Àngels"), 255, true);
        recurs(b.db, QStringLiteral("L'Estel"), 65280, false);
        grup(b.db, QStringLiteral("Equip"), 16711680, {QStringLiteral("Àngels")});
        MotorFeines m(b.db, b.cfg);

        // Names are matched whatever their case, accented capitals included, and a quote is just
        // a character of the name.
        QCOMPARE(m.Color_Recurs(QStringLiteral("ÀNGELS")), 255);
        QCOMPARE(m.Color_Recurs(QStringLiteral("Ningú")), ColorFinestra);

        QVERIFY(m.Assigna_Temps_Recurs(QStringLiteral("àngels")));
        QVERIFY(!m.Assigna_Temps_Recurs(QStringLiteral("l'estel")));

        QCOMPARE(m.Recurs_Per_Color(16711680), QStringLiteral("Equip"));
        QCOMPARE(m.Recurs_Per_Color(12345), QString());
    }

    void serviceLookups()
    {
        BaseProva b;
        servei(b.db, QStringLiteral("Neteja"), 60, false, 6.25, QStringLiteral("Hores"), QStringLiteral("Servei de neteja"));
        servei(b.db, QStringLiteral("Vidres"), 30, false, 12.5); // no unit, no description (Null)
        llocServei(b.db, QStringLiteral("Oficina"), QStringLiteral("Neteja"), 2, 7, QStringLiteral("Neteja d'oficina"));
        llocServei(b.db, QStringLiteral("Escala"), QStringLiteral("Vidres"), 1, 12);
        // A row with an empty place name: only a lookup that wrongly consults the place's lines
        // when no place is given would ever find it.
        llocServei(b.db, QString(""), QStringLiteral("Neteja"), 1, 1, QStringLiteral("Parany"));
        MotorFeines m(b.db, b.cfg);

        QCOMPARE(m.Preu_Servei(QStringLiteral("NETEJA")), 6.25);
        QCOMPARE(m.Preu_Servei(QStringLiteral("Res")), 0.0);
        QCOMPARE(m.Unitat_Servei(QStringLiteral("neteja")), QStringLiteral("Hores"));
        QCOMPARE(m.Unitat_Servei(QStringLiteral("Vidres")), QString());

        QCOMPARE(m.Descripcio_Servei(QStringLiteral("Neteja"), QString()), QStringLiteral("Servei de neteja"));
        QCOMPARE(m.Descripcio_Servei(QStringLiteral("Neteja"), QStringLiteral("oficina")), QStringLiteral("Neteja d'oficina"));
        // The place has no line for this service: the service's own wording stands.
        QCOMPARE(m.Descripcio_Servei(QStringLiteral("Neteja"), QStringLiteral("Escala")), QStringLiteral("Servei de neteja"));
        // The place's line exists but has no wording: its (empty) wording still wins.
        QCOMPARE(m.Descripcio_Servei(QStringLiteral("Vidres"), QStringLiteral("Escala")), QString());
    }

    void membersThatTakeTime()
    {
        BaseProva b;
        recurs(b.db, QStringLiteral("Marta"), 1, true);
        recurs(b.db, QStringLiteral("Oriol"), 2, true);
        recurs(b.db, QStringLiteral("Pau"), 3, false);
        recurs(b.db, QStringLiteral("Laia"), 4, false);
        grup(b.db, QStringLiteral("Tots"), 10, {QStringLiteral("Marta"), QStringLiteral("Oriol"), QStringLiteral("Pau")});
        grup(b.db, QStringLiteral("Aprenents"), 11, {QStringLiteral("Pau"), QStringLiteral("Laia")});
        MotorFeines m(b.db, b.cfg);

        QCOMPARE(m.Components_Assigna_Temps(QStringLiteral("tots")), 2);
        // Nobody in the group takes a share: counted as one, so nothing gets divided.
        QCOMPARE(m.Components_Assigna_Temps(QStringLiteral("Aprenents")), 1);
        // A single worker has no members.
        QCOMPARE(m.Components_Assigna_Temps(QStringLiteral("Marta")), 1);
    }

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
        QTest::newRow("fractional quantity, three sharing") << 10 << 3 << QList<QList<double>>{{0.5, 120, 0}, {2, 5, 1}} << 30;
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
        QTest::newRow("unassigned counts as one") << "" << "08:00" << "24:00" << true << "09:30";
        QTest::newRow("no lines: one cell") << "Marta" << "08:00" << "24:00" << false << "08:30";
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
        auto linia = [&](int feinaId, const QString &servei, double quantitat) {
            b.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat) VALUES (?, ?, ?)"))
                .bind(feinaId).bind(servei).bind(quantitat).exec();
        };
        if (ambLinies) {
            linia(id, QStringLiteral("Neteja"), 2);
            linia(id, QStringLiteral("Desplaçament"), 1);
        }
        linia(altra, QStringLiteral("Neteja"), 10); // another job's lines never count
        MotorFeines m(b.db, b.cfg);
        Feina f;
        f.feines_id = id;
        f.feines_hora_inici = inici;
        f.recursos_nom = recurs;
        QCOMPARE(m.Hora_Fi_Feina(f), fi);
    }

    void lookupsLetDatabaseErrorsThrough()
    {
        BaseProva b;
        MotorFeines m(b.db, b.cfg);
        b.db.exec(QStringLiteral("DROP TABLE Serveis"));
        QVERIFY_THROWS_EXCEPTION(DbError, m.Preu_Servei(QStringLiteral("Neteja")));
        QVERIFY_THROWS_EXCEPTION(DbError, m.Minuts_Serveis_Lloc(QStringLiteral("Oficina"), 1));
    }
};

QTEST_GUILESS_MAIN(TestFeinesDurada)
#include "tst_feines_durada.moc"
