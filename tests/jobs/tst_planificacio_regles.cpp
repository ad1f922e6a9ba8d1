// The calendar of periodic planning: which days each rhythm gives, over month, year and weekend
// boundaries and at the period's edges. The dates are worked out by hand from a 2009/2010 calendar.
#include "jobs/planificacio_regles.h"
#include "support/ritme_proves.h"

#include <QtTest>

namespace {

QDate d(int y, int m, int day)
{
    return QDate(y, m, day);
}

// Monthly when primer or ultim is set (period 30), every n days otherwise.
RitmeLloc mensual(bool primer, bool ultim, int diaSetmana, bool dissabte, bool diumenge)
{
    return ritme(30, primer, ultim, diaSetmana, dissabte, diumenge);
}

} // namespace

using Dies = QList<QDate>;
Q_DECLARE_METATYPE(RitmeLloc)

class TestPlanificacioRegles : public QObject {
    Q_OBJECT

private slots:
    void dataPlanificacio_data()
    {
        QTest::addColumn<QDate>("D");
        QTest::addColumn<int>("W");
        QTest::addColumn<bool>("primer");
        QTest::addColumn<bool>("ultim");
        QTest::addColumn<QDate>("esperada");
        // No weekday: a first stays, any other day goes to the next month's first.
        QTest::newRow("first of month stays") << d(2009, 3, 1) << 0 << true << false << d(2009, 3, 1);
        QTest::newRow("second goes to next first") << d(2009, 3, 2) << 0 << true << false << d(2009, 4, 1);
        QTest::newRow("last stays") << d(2009, 5, 31) << 0 << false << true << d(2009, 5, 31);
        QTest::newRow("last of February") << d(2009, 2, 1) << 0 << false << true << d(2009, 2, 28);
        // A weekday: the first such day on or after D, then the month's first or last of them.
        QTest::newRow("weekday only") << d(2009, 3, 4) << 2 << false << false << d(2009, 3, 9);
        QTest::newRow("weekday is D itself") << d(2009, 3, 4) << 4 << false << false << d(2009, 3, 4);
        QTest::newRow("past it goes to February's") << d(2009, 1, 8) << 4 << true << false << d(2009, 2, 4);
    }

    void dataPlanificacio()
    {
        QFETCH(QDate, D);
        QFETCH(int, W);
        QFETCH(bool, primer);
        QFETCH(bool, ultim);
        QFETCH(QDate, esperada);
        QCOMPARE(Data_Planificacio(D, W, primer, ultim), esperada);
    }

    // Both rules through diesPlanificats: the monthly rows first, then every N days.
    void dies_data()
    {
        QTest::addColumn<RitmeLloc>("ritme");
        QTest::addColumn<QDate>("darrera");
        QTest::addColumn<QDate>("F");
        QTest::addColumn<QDate>("L");
        QTest::addColumn<int>("primerDia");
        QTest::addColumn<Dies>("dies");
        const auto row = [](const char *nom, RitmeLloc r, QDate darrera, QDate F, QDate L, int primerDia, Dies dies) {
            QTest::newRow(nom) << r << darrera << F << L << primerDia << dies;
        };
        const int dl = 2; // weeks start on Monday
        // 1 February and 1 March 2009 are Sundays: moved forward to the Mondays; allowed, the
        // first day of the period is planned (the day at F itself).
        row("first day on a Sunday", mensual(true, false, 0, false, false), {}, d(2009, 2, 1), d(2009, 3, 31), dl,
            {d(2009, 2, 2), d(2009, 3, 2)});
        row("first day, Sunday allowed", mensual(true, false, 0, false, true), {}, d(2009, 2, 1), d(2009, 3, 31), dl,
            {d(2009, 2, 1), d(2009, 3, 1)});
        // 31 May 2009 is a Sunday; allowed, it is the period's last day L itself.
        row("last day Sunday, no weekends", mensual(false, true, 0, false, false), {}, d(2009, 5, 1), d(2009, 5, 31), dl, {d(2009, 5, 29)});
        row("last day Sunday allowed", mensual(false, true, 0, false, true), {}, d(2009, 5, 1), d(2009, 5, 31), dl, {d(2009, 5, 31)});
        // A weekday of Saturday is kept even though Saturdays are not otherwise allowed.
        row("first Saturday as weekday", mensual(true, false, 7, false, false), {}, d(2009, 7, 15), d(2009, 8, 31), dl, {d(2009, 8, 1)});
        // Moves that leave the period drop the job.
        row("moved back before F", mensual(false, true, 0, false, false), {}, d(2009, 5, 30), d(2009, 6, 10), dl, {});
        row("moved forward past L", mensual(true, false, 0, false, false), {}, d(2009, 2, 20), d(2009, 3, 1), dl, {});
        row("rule day after L though a move would fit", mensual(false, true, 0, false, false), {}, d(2009, 5, 1), d(2009, 5, 30), dl, {});

        row("aligned Monday before F steps on", ritme(7, false, false, 2, false, false), d(2009, 3, 4), d(2009, 3, 10), d(2009, 3, 31), dl,
            {d(2009, 3, 16), d(2009, 3, 23), d(2009, 3, 30)});
        // Every 4 days from Monday 2 March: Saturday 14 and 28 go to the Mondays, and the rhythm
        // continues from the moved day.
        row("every 4 days over weekends", ritme(4, false, false, 0, false, false), {}, d(2009, 3, 2), d(2009, 3, 31), dl,
            {d(2009, 3, 2), d(2009, 3, 6), d(2009, 3, 10), d(2009, 3, 16), d(2009, 3, 20), d(2009, 3, 24), d(2009, 3, 30)});
        row("continues from a recent job", ritme(10, false, false, 0, true, true), d(2009, 2, 25), d(2009, 3, 2), d(2009, 3, 20), dl,
            {d(2009, 3, 7), d(2009, 3, 17)});
        row("latest job after L", ritme(3, false, false, 0, true, true), d(2009, 4, 10), d(2009, 3, 1), d(2009, 3, 31), dl, {});
        // Every 10 days on Monday: each new week pulls the day back to its Monday, until the week
        // numbers restart in January; from then on the days fall where the rhythm puts them.
        row("alignment stops at the new year", ritme(10, false, false, 2, false, false), {}, d(2009, 12, 14), d(2010, 2, 15), dl,
            {d(2009, 12, 14), d(2009, 12, 21), d(2009, 12, 28), d(2010, 1, 7), d(2010, 1, 18), d(2010, 1, 28), d(2010, 2, 8)});
        // The first day of the week decides when a Sunday opens a new week to align.
        row("Monday weeks keep the Sundays", ritme(6, false, false, 2, true, true), {}, d(2009, 3, 2), d(2009, 3, 31), dl,
            {d(2009, 3, 2), d(2009, 3, 8), d(2009, 3, 9), d(2009, 3, 15), d(2009, 3, 16), d(2009, 3, 22), d(2009, 3, 23), d(2009, 3, 29)});
        row("Sunday weeks align the Sundays", ritme(6, false, false, 2, true, true), {}, d(2009, 3, 2), d(2009, 3, 31), 1,
            {d(2009, 3, 2), d(2009, 3, 9), d(2009, 3, 16), d(2009, 3, 23), d(2009, 3, 30)});
        row("every N, empty period", ritme(1, false, false, 0, true, true), {}, d(2009, 3, 2), d(2009, 3, 1), dl, {});
    }

    void dies()
    {
        QFETCH(RitmeLloc, ritme);
        QFETCH(QDate, darrera);
        QFETCH(QDate, F);
        QFETCH(QDate, L);
        QFETCH(int, primerDia);
        QFETCH(Dies, dies);
        QCOMPARE(diesPlanificats(ritme, F, L, darrera, primerDia), dies);
    }
};

QTEST_GUILESS_MAIN(TestPlanificacioRegles)
#include "tst_planificacio_regles.moc"
