// Re-planning a place whose rhythm changed: its jobs after today that are not done give way to
// the new rhythm up to the last planned day, continuing from the jobs that stay; the preview
// writes nothing; confirming is all or nothing; other places are left alone.
#include "jobs/motor_feines.h"
#include "jobs/replanificacio.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

QDate d(int day)
{
    return QDate(2026, 6, day);
}

QStringList feines(Db &db)
{
    return dades_prova::files(db, QStringLiteral("SELECT llocs_nom, feines_data, feines_hora_inici, feines_feta FROM Feines "
                                                 "ORDER BY llocs_nom, feines_data"));
}

} // namespace

class TestReplanificacio : public QObject {
    Q_OBJECT

private slots:
    void replansAChangedPlace()
    {
        BaseProva b;
        b.cfg.UltimDiaGen = d(10);
        dades_prova::recurs(b.db, QStringLiteral("Anna"), 0x0000FF);
        dades_prova::lloc(b.db, QStringLiteral("Bar"), 60, QStringLiteral("Anna"));
        dades_prova::lloc(b.db, QStringLiteral("Forn"), 60, QStringLiteral("Anna"));
        dades_prova::feina(b.db, QStringLiteral("Bar"), d(4), "08:00", "09:00", "Anna");
        dades_prova::feina(b.db, QStringLiteral("Bar"), d(5), "08:00", "09:00", "Anna");
        dades_prova::feina(b.db, QStringLiteral("Bar"), d(6), "08:00", "09:00", "Anna", true); // done: stays
        for (int dia : {7, 8, 9, 10})
            dades_prova::feina(b.db, QStringLiteral("Bar"), d(dia), "08:00", "09:00", "Anna");
        dades_prova::feina(b.db, QStringLiteral("Forn"), d(8), "12:00", "13:00", "Anna");
        // Every 2 days, now at 10:00, weekends allowed.
        b.db.exec(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = 2, llocs_hora = '10:00', llocs_dissabte = 1, "
                                 "llocs_diumenge = 1 WHERE llocs_nom = 'Bar'"));
        MotorFeines motor(b.db, b.cfg);
        RegistreMemoria log;
        Replanificador r(b.db, b.cfg, motor, log);
        const QStringList abans = feines(b.db);

        const PrevisioReplanificacio p = r.Previsualitza(QStringLiteral("Bar"), d(5));
        QCOMPARE(p.error, QString());
        QCOMPARE(feines(b.db), abans);
        QList<QDate> esborrades;
        for (const Feina &f : p.esborrades)
            esborrades << f.feines_data;
        QCOMPARE(esborrades, QList<QDate>({d(7), d(8), d(9), d(10)}));
        QList<QDate> noves;
        for (const FeinaPlanificada &f : p.noves.feines)
            noves << f.feines_data;
        QCOMPARE(noves, QList<QDate>({d(8), d(10)})); // 2 days after the done job of the 6th

        // A job done meanwhile: nothing changes at all.
        b.db.exec(QStringLiteral("UPDATE Feines SET feines_feta = 1 WHERE llocs_nom = 'Bar' AND feines_data = '2026-06-09'"));
        const QStringList ambFeta = feines(b.db);
        QVERIFY(!r.Replanifica_Lloc(p).isEmpty());
        QCOMPARE(feines(b.db), ambFeta);

        b.db.exec(QStringLiteral("UPDATE Feines SET feines_feta = 0 WHERE llocs_nom = 'Bar' AND feines_data = '2026-06-09'"));
        QCOMPARE(r.Replanifica_Lloc(p), QString());
        QCOMPARE(feines(b.db), QStringList({"Bar|2026-06-04|08:00|0", "Bar|2026-06-05|08:00|0", "Bar|2026-06-06|08:00|1",
                                            "Bar|2026-06-08|10:00|0", "Bar|2026-06-10|10:00|0", "Forn|2026-06-08|12:00|0"}));
    }
};

QTEST_GUILESS_MAIN(TestReplanificacio)
#include "tst_replanificacio.moc"
