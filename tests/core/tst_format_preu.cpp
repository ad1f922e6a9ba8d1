// Prices and amounts in editable fields: two decimals at least, never a digit the value has lost.
#include "core/formats.h"

#include <QtTest>

class TestFormatPreu : public QObject {
    Q_OBJECT

private slots:
    void twoDecimalsAtLeast_data()
    {
        QTest::addColumn<double>("valor");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 12.0 << "12,00";
        QTest::newRow("one decimal") << 2.5 << "2,50";
        QTest::newRow("cents") << 6.25 << "6,25";
        QTest::newRow("more than cents kept") << 0.355 << "0,355";
        QTest::newRow("no thousands") << 1234.5 << "1234,50";
        QTest::newRow("negative") << -5.0 << "-5,00";
        QTest::newRow("zero") << 0.0 << "0,00";
        QTest::newRow("negative zero") << -0.0 << "0,00";
    }
    void twoDecimalsAtLeast()
    {
        QFETCH(double, valor);
        QFETCH(QString, text);
        QCOMPARE(format::preu(valor), text);
        double llegit = 0;
        QVERIFY(format::llegeixReal(text, &llegit));
        QCOMPARE(llegit, valor);
    }
};

QTEST_GUILESS_MAIN(TestFormatPreu)
#include "tst_format_preu.moc"
