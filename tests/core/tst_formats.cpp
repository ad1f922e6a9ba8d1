// The fixed locale: numbers, dates, months, day names, times and rounding.
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
        QTest::newRow("zero") << 0.0 << "0,00" << "0";
        QTest::newRow("thousands") << 1234.56 << "1.234,56" << "1.235";
        QTest::newRow("millions") << 1234567.891 << "1.234.567,89" << "1.234.568";
        QTest::newRow("negative") << -1234.5 << "-1.234,50" << "-1.234";
        QTest::newRow("half cent to even down") << 0.125 << "0,12" << "0";
        QTest::newRow("half cent to even up") << 0.135 << "0,14" << "0";
        QTest::newRow("half unit to even") << 2.5 << "2,50" << "2";
        QTest::newRow("tiny negative") << -0.001 << "0,00" << "0";
    }

    void numbers()
    {
        QFETCH(double, value);
        QFETCH(QString, money);
        QFETCH(QString, count);
        QCOMPARE(format::import(value), money);
        QCOMPARE(format::enter(value), count);
    }

    void rounding()
    {
        QCOMPARE(arrodoneix::enter(12.5), 12);
        QCOMPARE(arrodoneix::enter(24.5), 24);
        QCOMPARE(arrodoneix::enter(3.5), 4);
        QCOMPARE(arrodoneix::enter(-2.5), -2);
        QCOMPARE(arrodoneix::enter(2.6), 3);
        QCOMPARE(arrodoneix::centims(1.005), 1.0);
        QCOMPARE(arrodoneix::centims(0.185), 0.18);
        QCOMPARE(arrodoneix::centims(2.999), 3.0);
        QCOMPARE(arrodoneix::centims(9.995), 10.0);
    }

    void numberInput_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<double>("value");
        QTest::newRow("comma") << "7,5" << true << 7.5;
        QTest::newRow("dot without comma") << "7.5" << true << 7.5;
        QTest::newRow("thousands and comma") << "1.234,56" << true << 1234.56;
        QTest::newRow("integer") << " 42 " << true << 42.0;
        QTest::newRow("negative") << "-3,25" << true << -3.25;
        QTest::newRow("letters") << "8h" << false << 0.0;
        QTest::newRow("two commas") << "1,2,3" << false << 0.0;
        QTest::newRow("empty") << "" << false << 0.0;
        QTest::newRow("lonely comma") << "," << false << 0.0;
    }

    void numberInput()
    {
        QFETCH(QString, text);
        QFETCH(bool, ok);
        QFETCH(double, value);
        double v = 0;
        QCOMPARE(format::llegeixReal(text, &v), ok);
        if (ok)
            QCOMPARE(v, value);
    }

    void dates()
    {
        QCOMPARE(format::dataCurta(QDate(2009, 3, 4)), QString("04/03/2009"));
        QCOMPARE(format::mesAny(QDate(2009, 3, 4)), QString("03/2009"));
        QCOMPARE(format::mesAny(12, 2026), QString("12/2026"));
        QCOMPARE(format::llegeixData("4/3/2009"), QDate(2009, 3, 4));
        QCOMPARE(format::llegeixData("2009-03-04"), QDate(2009, 3, 4));
        QVERIFY(!format::llegeixData("31/04/2009").isValid());
        QVERIFY(!format::llegeixData("04-03-2009").isValid());
        QCOMPARE(format::diaSetmana(QDate(2009, 3, 1)), 1); // Sunday
        QCOMPARE(format::diaSetmana(QDate(2009, 3, 7)), 7); // Saturday
    }

    void names()
    {
        QCOMPARE(format::nomDia(1), QString("diumenge"));
        QCOMPARE(format::nomDia(2), QString("dilluns"));
        QCOMPARE(format::nomDia(7), QString("dissabte"));
        QCOMPARE(format::nomDiaCurt(4), QString("dc."));
        QCOMPARE(format::nomMes(3), QString("març"));
        QCOMPARE(format::nomMes(12), QString("desembre"));
        QCOMPARE(format::nomMesCurt(1), QString("gen."));
    }

    void times()
    {
        QCOMPARE(hora::minuts("00:00"), 0);
        QCOMPARE(hora::minuts("09:30"), 570);
        QCOMPARE(hora::minuts("24:00"), 1440);
        QCOMPARE(hora::minuts("24:30"), -1);
        QCOMPARE(hora::minuts("9:30"), -1);
        QCOMPARE(hora::minuts("09:60"), -1);
        QCOMPARE(hora::minuts("ab:cd"), -1);
        QCOMPARE(hora::text(0), QString("00:00"));
        QCOMPARE(hora::text(1440), QString("24:00"));
        QCOMPARE(hora::suma("09:00", 90), QString("10:30"));
        QCOMPARE(hora::suma("23:30", 60), QString("00:30"));  // wraps at midnight
        QCOMPARE(hora::suma("23:30", 30), QString("00:00"));
        // Texts order as times because of the fixed width.
        QVERIFY(QString("24:00") > QString("23:59"));
        QVERIFY(QString("09:30") < QString("10:00"));
    }
};

QTEST_GUILESS_MAIN(TestFormats)
#include "tst_formats.moc"
