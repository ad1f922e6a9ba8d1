// Values as people type them (dates with two-digit years, "8:00"), and settings files saved by
// other editors (Windows-1252, CRLF, a byte-order mark), of which a write changes one line only.
#include "core/formats.h"
#include "core/ini.h"

#include <QTemporaryDir>
#include <QtTest>

class TestEntrada : public QObject {
    Q_OBJECT

private slots:
    // What each reader makes of a text: an ISO date, a month's first day or "hh:mm"; "" = refused.
    void valorsTeclejats_data()
    {
        QTest::addColumn<QString>("tipus");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("llegit");
        QTest::newRow("two-digit year") << "data" << "30/11/26" << "2026-11-30";
        QTest::newRow("window's last year") << "data" << "31.12.45" << "2045-12-31";
        QTest::newRow("window's first year") << "data" << " 1/1/46 " << "1946-01-01";
        QTest::newRow("mixed separators") << "data" << "30/11.26" << "";
        QTest::newRow("no such day") << "data" << "29/02/27" << "";
        QTest::newRow("month, two-digit year") << "mes" << "1/27" << "2027-01-01";
        QTest::newRow("month 13") << "mes" << "13/2026" << "";
        QTest::newRow("one-digit hour") << "hora" << " 8:00 " << "08:00";
        QTest::newRow("one-digit minutes") << "hora" << "8:5" << "";
    }

    void valorsTeclejats()
    {
        QFETCH(QString, tipus);
        QFETCH(QString, text);
        const QDate avui(2026, 11, 23);
        const QDate d = tipus == QLatin1String("data") ? format::llegeixData(text, avui) : format::llegeixMes(text, avui);
        QTEST(tipus == QLatin1String("hora") ? hora::llegeix(text) : d.toString(Qt::ISODate), "llegit");
    }

    // The file before, its ServeiXecs as read, the key written to section P and the file after.
    void escriuUnaClau_data()
    {
        QTest::addColumn<QByteArray>("abans");
        QTest::addColumn<QString>("serveiXecs");
        QTest::addColumn<QString>("clau");
        QTest::addColumn<QString>("valor");
        QTest::addColumn<QByteArray>("despres");
        QTest::newRow("ANSI, CRLF") << QByteArray("[P]\r\nServeiXecs=Xec c\xE0rrec \x80\r\nX=\x81\x8D\r\n\r\n[Q]\r\n") << "Xec càrrec €"
                                    << "ServeiXecs" << "Xec pàgina" << QByteArray("[P]\r\nServeiXecs=Xec p\xE0gina\r\nX=\x81\x8D\r\n\r\n[Q]\r\n");
        QTest::newRow("UTF-8 with a mark, no last line end") << QByteArray("\xEF\xBB\xBF[P]\r\nServeiXecs=\xC3\xA0") << "à"
                                    << "A" << "à" << QByteArray("\xEF\xBB\xBF[P]\r\nServeiXecs=\xC3\xA0\r\nA=\xC3\xA0\r\n");
        QTest::newRow("beyond ANSI") << QByteArray("[P]\r\nServeiXecs=\xE0\r\n") << "à"
                                    << "B" << "Łódź" << QByteArray("[P]\r\nServeiXecs=\xC3\xA0\r\nB=\xC5\x81\xC3\xB3" "d\xC5\xBA\r\n");
    }

    void escriuUnaClau()
    {
        QFETCH(QByteArray, abans);
        QTemporaryDir dir;
        QFile f(dir.filePath(QStringLiteral("Quadrella.ini")));
        QVERIFY(f.open(QIODevice::WriteOnly) && f.write(abans) == abans.size());
        f.close();
        QTEST(LlegirIni(f.fileName(), QStringLiteral("P"), QStringLiteral("ServeiXecs"), QString()), "serveiXecs");
        QFETCH(QString, clau);
        QFETCH(QString, valor);
        QVERIFY(EscriureIni(f.fileName(), QStringLiteral("P"), clau, valor));
        QVERIFY(f.open(QIODevice::ReadOnly));
        QTEST(f.readAll(), "despres");
    }
};

QTEST_GUILESS_MAIN(TestEntrada)
#include "tst_entrada.moc"
