// The calendar of periodic planning: which days each rhythm gives, over month, year and weekend
// boundaries. The dates are worked out by hand from a 2009/2010 calendar.
#include "jobs/planificacio_regles.h"

#include <QtTest>

namespace {

QDate d(int y, int m, int day)
{
    return QDate(y, m, day);
}

RitmeLloc mensual(bool primer, bool ultim, int diaSetmana, bool dissabte, bool diumenge)
{
    RitmeLloc r;
    r.periodicitat_dies = 30;
    r.primer_dia_mes = primer;
    r.ultim_dia_mes = ultim;
    r.dia_setmana = diaSetmana;
    r.dissabte = dissabte;
    r.diumenge = diumenge;
    return r;
}

RitmeLloc cadaN(int n, int diaSetmana, bool dissabte, bool diumenge)
{
    RitmeLloc r;
    r.periodicitat_dies = n;
    r.dia_setmana = diaSetmana;
    r.dissabte = dissabte;
    r.diumenge = diumenge;
    return r;
}

constexpr int kDiumengePrimer = 1;
constexpr int kDillunsPrimer = 2;

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
        QTest::newRow("first across new year") << d(2009, 12, 15) << 0 << true << false << d(2010, 1, 1);
        QTest::newRow("last of May") << d(2009, 5, 10) << 0 << false << true << d(2009, 5, 31);
        QTest::newRow("last stays") << d(2009, 5, 31) << 0 << false << true << d(2009, 5, 31);
        QTest::newRow("last of February") << d(2009, 2, 1) << 0 << false << true << d(2009, 2, 28);
        // A weekday: the first such day on or after D, then the month's first or last of them.
        QTest::newRow("weekday only") << d(2009, 3, 4) << 2 << false << false << d(2009, 3, 9);
        QTest::newRow("weekday is D itself") << d(2009, 3, 4) << 4 << false << false << d(2009, 3, 4);
        QTest::newRow("first Wednesday of January") << d(2009, 1, 1) << 4 << true << false << d(2009, 1, 7);
        QTest::newRow("past it goes to February's") << d(2009, 1, 8) << 4 << true << false << d(2009, 2, 4);
        QTest::newRow("first Wednesday is the 1st") << d(2009, 3, 30) << 4 << true << false << d(2009, 4, 1);
        QTest::newRow("last Friday of January") << d(2009, 1, 1) << 6 << false << true << d(2009, 1, 30);
        QTest::newRow("after it, February's") << d(2009, 1, 31) << 6 << false << true << d(2009, 2, 27);
        QTest::newRow("past the year's last Friday, January's") << d(2009, 12, 26) << 6 << false << true << d(2010, 1, 29);
        QTest::newRow("both flags: first, then its month's last") << d(2009, 3, 2) << 0 << true << true
                                                                    << d(2009, 4, 30);
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

    void numeroSetmana_data()
    {
        QTest::addColumn<QDate>("dia");
        QTest::addColumn<int>("primerDia");
        QTest::addColumn<int>("setmana");
        // 1 January 2009 is a Thursday: with Sunday weeks week 2 starts on Sunday 4 January, with
        // Monday weeks on Monday 5 January.
        QTest::newRow("1 January") << d(2009, 1, 1) << kDiumengePrimer << 1;
        QTest::newRow("Saturday of week 1 (Sunday weeks)") << d(2009, 1, 3) << kDiumengePrimer << 1;
        QTest::newRow("Sunday opens week 2") << d(2009, 1, 4) << kDiumengePrimer << 2;
        QTest::newRow("Sunday still week 1 (Monday weeks)") << d(2009, 1, 4) << kDillunsPrimer << 1;
        QTest::newRow("Monday opens week 2") << d(2009, 1, 5) << kDillunsPrimer << 2;
        QTest::newRow("Sunday 8 March, Sunday weeks") << d(2009, 3, 8) << kDiumengePrimer << 11;
        QTest::newRow("Sunday 8 March, Monday weeks") << d(2009, 3, 8) << kDillunsPrimer << 10;
        QTest::newRow("31 December 2009") << d(2009, 12, 31) << kDillunsPrimer << 53;
        QTest::newRow("restart on 1 January 2010") << d(2010, 1, 1) << kDillunsPrimer << 1;
        QTest::newRow("Saturday-first weeks") << d(2009, 1, 3) << 7 << 2;
    }

    void numeroSetmana()
    {
        QFETCH(QDate, dia);
        QFETCH(int, primerDia);
        QFETCH(int, setmana);
        QCOMPARE(::numeroSetmana(dia, primerDia), setmana);
    }

    void monthly_data()
    {
        QTest::addColumn<RitmeLloc>("ritme");
        QTest::addColumn<QDate>("F");
        QTest::addColumn<QDate>("L");
        QTest::addColumn<Dies>("dies");
        // 1 February and 1 March 2009 are Sundays: moved forward to the Mondays.
        QTest::newRow("first day on a Sunday") << mensual(true, false, 0, false, false) << d(2009, 2, 1)
                                               << d(2009, 3, 31) << Dies{d(2009, 2, 2), d(2009, 3, 2)};
        QTest::newRow("first day, Sunday allowed") << mensual(true, false, 0, false, true) << d(2009, 2, 1)
                                                   << d(2009, 3, 31) << Dies{d(2009, 2, 1), d(2009, 3, 1)};
        // 1 August 2009 is a Saturday: Saturday to Sunday to Monday unless allowed.
        QTest::newRow("first day on a Saturday") << mensual(true, false, 0, false, false) << d(2009, 7, 15)
                                                 << d(2009, 8, 31) << Dies{d(2009, 8, 3)};
        QTest::newRow("first Saturday allowed") << mensual(true, false, 0, true, false) << d(2009, 7, 15)
                                                << d(2009, 8, 31) << Dies{d(2009, 8, 1)};
        QTest::newRow("first, only Sunday allowed") << mensual(true, false, 0, false, true) << d(2009, 7, 15)
                                                    << d(2009, 8, 31) << Dies{d(2009, 8, 2)};
        // 31 May 2009 is a Sunday.
        QTest::newRow("last day Sunday, Saturday allowed") << mensual(false, true, 0, true, false) << d(2009, 5, 1)
                                                           << d(2009, 5, 31) << Dies{d(2009, 5, 30)};
        QTest::newRow("last day Sunday, no weekends") << mensual(false, true, 0, false, false) << d(2009, 5, 1)
                                                      << d(2009, 5, 31) << Dies{d(2009, 5, 29)};
        QTest::newRow("last day Sunday allowed") << mensual(false, true, 0, false, true) << d(2009, 5, 1)
                                                 << d(2009, 5, 31) << Dies{d(2009, 5, 31)};
        // 31 October 2009 is a Saturday.
        QTest::newRow("last day Saturday allowed") << mensual(false, true, 0, true, false) << d(2009, 10, 1)
                                                   << d(2009, 10, 31) << Dies{d(2009, 10, 31)};
        QTest::newRow("first Wednesday") << mensual(true, false, 4, false, false) << d(2009, 1, 1) << d(2009, 6, 30)
                                         << Dies{d(2009, 1, 7), d(2009, 2, 4), d(2009, 3, 4), d(2009, 4, 1),
                                                 d(2009, 5, 6), d(2009, 6, 3)};
        QTest::newRow("last Friday") << mensual(false, true, 6, false, false) << d(2009, 1, 1) << d(2009, 6, 30)
                                     << Dies{d(2009, 1, 30), d(2009, 2, 27), d(2009, 3, 27), d(2009, 4, 24),
                                             d(2009, 5, 29), d(2009, 6, 26)};
        // A weekday of Saturday is kept even though Saturdays are not otherwise allowed.
        QTest::newRow("first Saturday as weekday") << mensual(true, false, 7, false, false) << d(2009, 7, 15)
                                                   << d(2009, 8, 31) << Dies{d(2009, 8, 1)};
        // 31 January 2010 is a Sunday.
        QTest::newRow("last day across new year") << mensual(false, true, 0, false, false) << d(2009, 12, 15)
                                                  << d(2010, 1, 31) << Dies{d(2009, 12, 31), d(2010, 1, 29)};
        QTest::newRow("period starts after the first") << mensual(true, false, 0, false, false) << d(2009, 3, 3)
                                                       << d(2009, 4, 30) << Dies{d(2009, 4, 1)};
        // Moves that leave the period drop the job.
        QTest::newRow("moved back before F") << mensual(false, true, 0, false, false) << d(2009, 5, 30)
                                             << d(2009, 6, 10) << Dies{};
        QTest::newRow("moved forward past L") << mensual(true, false, 0, false, false) << d(2009, 2, 20)
                                              << d(2009, 3, 1) << Dies{};
        QTest::newRow("rule day after L though a move would fit")
            << mensual(false, true, 0, false, false) << d(2009, 5, 1) << d(2009, 5, 30) << Dies{};
    }

    void monthly()
    {
        QFETCH(RitmeLloc, ritme);
        QFETCH(QDate, F);
        QFETCH(QDate, L);
        QFETCH(Dies, dies);
        QCOMPARE(diesPlanificats(ritme, F, L, QDate(), kDillunsPrimer), dies);
    }

    void everyN_data()
    {
        QTest::addColumn<RitmeLloc>("ritme");
        QTest::addColumn<QDate>("darrera");
        QTest::addColumn<QDate>("F");
        QTest::addColumn<QDate>("L");
        QTest::addColumn<int>("primerDia");
        QTest::addColumn<Dies>("dies");
        QTest::newRow("weekly Monday after a Wednesday")
            << cadaN(7, 2, false, false) << d(2009, 3, 4) << d(2009, 3, 5) << d(2009, 3, 31) << kDillunsPrimer
            << Dies{d(2009, 3, 9), d(2009, 3, 16), d(2009, 3, 23), d(2009, 3, 30)};
        QTest::newRow("aligned Monday before F steps on")
            << cadaN(7, 2, false, false) << d(2009, 3, 4) << d(2009, 3, 10) << d(2009, 3, 31) << kDillunsPrimer
            << Dies{d(2009, 3, 16), d(2009, 3, 23), d(2009, 3, 30)};
        QTest::newRow("daily, no weekends, from a Friday")
            << cadaN(1, 0, false, false) << QDate() << d(2009, 3, 6) << d(2009, 3, 10) << kDillunsPrimer
            << Dies{d(2009, 3, 6), d(2009, 3, 9), d(2009, 3, 10)};
        QTest::newRow("daily, Saturday allowed")
            << cadaN(1, 0, true, false) << QDate() << d(2009, 3, 6) << d(2009, 3, 10) << kDillunsPrimer
            << Dies{d(2009, 3, 6), d(2009, 3, 7), d(2009, 3, 9), d(2009, 3, 10)};
        QTest::newRow("daily, weekends allowed")
            << cadaN(1, 0, true, true) << QDate() << d(2009, 3, 6) << d(2009, 3, 9) << kDillunsPrimer
            << Dies{d(2009, 3, 6), d(2009, 3, 7), d(2009, 3, 8), d(2009, 3, 9)};
        // Every 4 days from Monday 2 March: Saturday 14 and 28 go to the Mondays, and the rhythm
        // continues from the moved day.
        QTest::newRow("every 4 days over weekends")
            << cadaN(4, 0, false, false) << QDate() << d(2009, 3, 2) << d(2009, 3, 31) << kDillunsPrimer
            << Dies{d(2009, 3, 2), d(2009, 3, 6), d(2009, 3, 10), d(2009, 3, 16), d(2009, 3, 20), d(2009, 3, 24),
                    d(2009, 3, 30)};
        QTest::newRow("continues from an old job")
            << cadaN(10, 0, true, true) << d(2009, 1, 2) << d(2009, 3, 2) << d(2009, 3, 20) << kDillunsPrimer
            << Dies{d(2009, 3, 2), d(2009, 3, 12)};
        QTest::newRow("continues from a recent job")
            << cadaN(10, 0, true, true) << d(2009, 2, 25) << d(2009, 3, 2) << d(2009, 3, 20) << kDillunsPrimer
            << Dies{d(2009, 3, 7), d(2009, 3, 17)};
        QTest::newRow("latest job after L") << cadaN(3, 0, true, true) << d(2009, 4, 10) << d(2009, 3, 1)
                                            << d(2009, 3, 31) << kDillunsPrimer << Dies{};
        // Every 10 days on Monday: each new week pulls the day back to its Monday, until the week
        // numbers restart in January; from then on the days fall where the rhythm puts them.
        QTest::newRow("alignment stops at the new year")
            << cadaN(10, 2, false, false) << QDate() << d(2009, 12, 14) << d(2010, 2, 15) << kDillunsPrimer
            << Dies{d(2009, 12, 14), d(2009, 12, 21), d(2009, 12, 28), d(2010, 1, 7), d(2010, 1, 18),
                    d(2010, 1, 28), d(2010, 2, 8)};
        // Within one year every new week aligns; a day past L (Thursday 18 February) ends the
        // place before it could be pulled back to Monday 15 February.
        QTest::newRow("alignment within one year")
            << cadaN(10, 2, false, false) << QDate() << d(2010, 1, 4) << d(2010, 2, 15) << kDillunsPrimer
            << Dies{d(2010, 1, 4), d(2010, 1, 11), d(2010, 1, 18), d(2010, 1, 25), d(2010, 2, 1), d(2010, 2, 8)};
        // The first day of the week decides when a Sunday opens a new week to align.
        QTest::newRow("Monday weeks keep the Sundays")
            << cadaN(6, 2, true, true) << QDate() << d(2009, 3, 2) << d(2009, 3, 31) << kDillunsPrimer
            << Dies{d(2009, 3, 2), d(2009, 3, 8), d(2009, 3, 9), d(2009, 3, 15), d(2009, 3, 16), d(2009, 3, 22),
                    d(2009, 3, 23), d(2009, 3, 29)};
        QTest::newRow("Sunday weeks align the Sundays")
            << cadaN(6, 2, true, true) << QDate() << d(2009, 3, 2) << d(2009, 3, 31) << kDiumengePrimer
            << Dies{d(2009, 3, 2), d(2009, 3, 9), d(2009, 3, 16), d(2009, 3, 23), d(2009, 3, 30)};
        // A Sunday weekday is never moved off its Sunday.
        QTest::newRow("weekly on Sunday") << cadaN(7, 1, false, false) << QDate() << d(2009, 3, 2) << d(2009, 3, 22)
                                          << kDillunsPrimer << Dies{d(2009, 3, 8), d(2009, 3, 15), d(2009, 3, 22)};
    }

    void everyN()
    {
        QFETCH(RitmeLloc, ritme);
        QFETCH(QDate, darrera);
        QFETCH(QDate, F);
        QFETCH(QDate, L);
        QFETCH(int, primerDia);
        QFETCH(Dies, dies);
        QCOMPARE(diesPlanificats(ritme, F, L, darrera, primerDia), dies);
    }

    // Neither rule plans a place without a period, whatever its flags, nor anything for an
    // empty period.
    void nothingToPlan()
    {
        RitmeLloc r = mensual(true, false, 0, true, true);
        r.periodicitat_dies = 0;
        QVERIFY(diesPlanificats(r, d(2009, 1, 1), d(2009, 12, 31), QDate(), kDillunsPrimer).isEmpty());
        QVERIFY(diesPlanificats(cadaN(0, 0, true, true), d(2009, 1, 1), d(2009, 12, 31), QDate(), kDillunsPrimer)
                    .isEmpty());
        QVERIFY(diesPlanificats(cadaN(1, 0, true, true), d(2009, 3, 2), d(2009, 3, 1), QDate(), kDillunsPrimer)
                    .isEmpty());
        QVERIFY(diesPlanificats(mensual(false, true, 0, true, true), d(2009, 3, 2), d(2009, 3, 1), QDate(),
                                kDillunsPrimer)
                    .isEmpty());
    }

    // A long period with every kind of rhythm ends, stays inside the period and never goes back.
    void longPeriodsStayOrdered()
    {
        const QDate F = d(2009, 1, 1), L = d(2011, 12, 31);
        for (int n : {1, 2, 3, 5, 7, 10, 14, 30}) {
            for (int w = 0; w <= 7; ++w) {
                for (int primerDia : {1, 2, 7}) {
                    const Dies dies = diesPlanificats(cadaN(n, w, false, false), F, L, QDate(), primerDia);
                    QVERIFY(!dies.isEmpty());
                    for (const QDate &dia : dies) {
                        QVERIFY(dia >= F && dia <= L);
                        const int wd = dia.dayOfWeek();
                        // Weekends only where the weekday itself asks for one.
                        QVERIFY2(wd < 6 || (wd == 6 && w == 7) || (wd == 7 && w == 1),
                                 qPrintable(QStringLiteral("n=%1 w=%2 %3").arg(n).arg(w).arg(dia.toString(Qt::ISODate))));
                    }
                }
            }
        }
        for (bool primer : {true, false}) {
            for (int w = 0; w <= 7; ++w) {
                const Dies dies = diesPlanificats(mensual(primer, !primer, w, false, false), F, L, QDate(), 2);
                QCOMPARE(dies.size(), 36); // one a month
                for (int i = 1; i < dies.size(); ++i)
                    QVERIFY(dies[i] > dies[i - 1]);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestPlanificacioRegles)
#include "tst_planificacio_regles.moc"
