// The fixed locale: numbers, rounding, dates, months, day names and times, as shown and as people
// type them (dates with two-digit years, "8:00").
#include "core/formats.h"

#include <QtTest>

class TestFormats : public QObject {
    Q_OBJECT

private slots:
    void numbers_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("money");
        QTest::addColumn<QString>("count");
        QTest::newRow("negative") << -1234.5 << "-1.234,50" << "-1.234";
        QTest::newRow("half cent to even down") << 0.125 << "0,12" << "0";
        QTest::newRow("half cent to even up") << 0.135 << "0,14" << "0";
        QTest::newRow("tiny negative") << -0.001 << "0,00" << "0";
    }
    void numbers()
    {
        QFETCH(double, value);
        QTEST(format::import(value), "money");
        QTEST(format::enter(value), "count");
    }

    void rounding()
    {
        QCOMPARE(arrodoneix::enter(12.5), 12);
        QCOMPARE(arrodoneix::enter(3.5), 4);
        QCOMPARE(arrodoneix::centims(1.005), 1.0);
        QCOMPARE(arrodoneix::centims(9.995), 10.0);
    }

    void numberInput_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<double>("value");
        QTest::newRow("comma") << "7,5" << true << 7.5;
        QTest::newRow("thousands and comma") << "1.234,56" << true << 1234.56;
        QTest::newRow("letters") << "8h" << false << 0.0;
    }
    void numberInput()
    {
        QFETCH(QString, text);
        QFETCH(bool, ok);
        double v = 0;
        QCOMPARE(format::llegeixReal(text, &v), ok);
        if (ok)
            QTEST(v, "value");
    }

    // What each reader makes of a text: an ISO date, a month's first day or "hh:mm"; "" = refused.
    void typedValues_data()
    {
        QTest::addColumn<QString>("tipus");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("llegit");
        QTest::newRow("short date") << "data" << "4/3/2009" << "2009-03-04";
        QTest::newRow("window's last year") << "data" << "31.12.45" << "2045-12-31";
        QTest::newRow("window's first year") << "data" << " 1/1/46 " << "1946-01-01";
        QTest::newRow("no such day") << "data" << "29/02/27" << "";
        QTest::newRow("month, two-digit year") << "mes" << "1/27" << "2027-01-01";
        QTest::newRow("one-digit hour") << "hora" << " 8:00 " << "08:00";
        QTest::newRow("one-digit minutes") << "hora" << "8:5" << "";
    }
    void typedValues()
    {
        QFETCH(QString, tipus);
        QFETCH(QString, text);
        const QDate avui(2026, 11, 23);
        const QDate d = tipus == QLatin1String("data") ? format::llegeixData(text, avui) : format::llegeixMes(text, avui);
        QTEST(tipus == QLatin1String("hora") ? hora::llegeix(text) : d.toString(Qt::ISODate), "llegit");
    }

    void datesNamesAndTimes()
    {
        QCOMPARE(format::dataCurta(QDate(2009, 3, 4)), QString("04/03/2009"));
        QCOMPARE(format::diaSetmana(QDate(2009, 3, 1)), 1); // Sunday
        QCOMPARE(format::nomDiaCurt(4) + format::nomMes(12), QString("dc.desembre"));
        QCOMPARE(hora::minuts("24:00"), 1440);
        for (const char *mala : {"24:30", "9:30", "09:60", "ab:cd"})
            QVERIFY2(hora::minuts(mala) == -1, mala);
        QCOMPARE(hora::suma("09:00", 90), QString("10:30"));
        QCOMPARE(hora::suma("23:30", 30), QString("00:00")); // wraps at midnight
    }
};

QTEST_GUILESS_MAIN(TestFormats)
#include "tst_formats.moc"
