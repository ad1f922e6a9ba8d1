// Settings: the settings-file primitives against files written by the program, edited by hand or
// saved by other editors (Windows-1252, CRLF, a byte-order mark), of which a write changes one line
// only; then the settings read from it: defaults, conversions, run state and errors that name the key.
#include "core/configuracio.h"
#include "core/ini.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestConfiguracio : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString write(const QString &name, const QByteArray &content)
    {
        QFile f(QDir(m_dir.path()).filePath(name));
        [&] { QVERIFY(f.open(QIODevice::WriteOnly) && f.write(content) == content.size()); }();
        return f.fileName();
    }
    QByteArray read(const QString &file)
    {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

private slots:
    void readingFollowsTheClassicRules()
    {
        const QString f = write("hand.ini", "; edited by hand\r\n"
                                            "  [ parametres ]  \r\n"
                                            "MinutsCella=\r\n"
                                            "  HoresDia =  7,5  \r\n"
                                            "# a comment=with equals\r\n"
                                            "ServeiXecs=\"  Neteja  \"\r\n"
                                            "Long=" + QByteArray(250, 'x') + "\r\n"
                                            "[Estat]\r\n"
                                            "UltimDiaGen=31/12/2009");
        // An empty value reads as the default; names compare without regard to case.
        QCOMPARE(LlegirIni(f, "Parametres", "MinutsCella", "30"), QString("30"));
        QCOMPARE(LlegirIni(f, "PARAMETRES", "horesdia", "8,00"), QString("7,5"));
        // Quotes keep blanks that would otherwise be trimmed.
        QCOMPARE(LlegirIni(f, "Parametres", "ServeiXecs", ""), QString("  Neteja  "));
        // The value buffer holds 199 characters.
        QCOMPARE(LlegirIni(f, "Parametres", "Long", "").size(), 199);
        // A key of another section is not found.
        QCOMPARE(LlegirIni(f, "Parametres", "UltimDiaGen", "def"), QString("def"));
        QCOMPARE(LlegirIni(f, "Estat", "UltimDiaGen", ""), QString("31/12/2009"));
    }

    // A section's lines separated by NUL, cut at its 999-character buffer.
    void sections()
    {
        const QString f = write("lang.ini", "[Idiomes]\n  (CT) Català  \n\n(ES) Castellà\n; not a language\n[Other]\nx=1\n");
        QCOMPARE(LlegirSeccioIni(f, "idiomes"), QString("(CT) Català") + QChar(0) + "(ES) Castellà" + QChar(0));
        QCOMPARE(LlegirSeccioIni(f, "Missing"), QString());
        QByteArray content = "[Idiomes]\n";
        for (int i = 0; i < 100; ++i)
            content += "(X" + QByteArray::number(i % 10) + ") Language number " + QByteArray::number(i) + "\n";
        const QString s = LlegirSeccioIni(write("big.ini", content), "Idiomes");
        QVERIFY(s.size() <= 999 && s.size() > 950 && s.endsWith(QChar(0)));
    }

    void writingKeepsEverythingElse()
    {
        const QString f = write("keep.ini", "; my notes\n[General]\nBaseDades = /data/a.db\n\n[Parametres]\n  MinutsCella = 30 ; old\nHoraInici=08:00\n\n[Estat]\nUltimDiaGen=01/01/2009\n");
        QVERIFY(EscriureIni(f, "parametres", "minutscella", "15"));
        QVERIFY(EscriureIni(f, "Parametres", "ServeiXecs", "Neteja"));
        QVERIFY(EscriureIni(f, "Nova", "Clau", "valor"));
        // The new key sits inside its section, before the blank line that closes it.
        QCOMPARE(read(f), QByteArray("; my notes\n[General]\nBaseDades = /data/a.db\n\n[Parametres]\nminutscella=15\nHoraInici=08:00\n"
                                     "ServeiXecs=Neteja\n\n[Estat]\nUltimDiaGen=01/01/2009\n\n[Nova]\nClau=valor\n"));
        // A missing file is created; one that cannot be is reported and not made.
        QVERIFY(EscriureIni(m_dir.filePath("new.ini"), "Estat", "UltimDiaGen", "05/03/2009"));
        QCOMPARE(LlegirIni(m_dir.filePath("new.ini"), "Estat", "UltimDiaGen", ""), QString("05/03/2009"));
        QVERIFY(!EscriureIni(m_dir.filePath("nodir/sub/file.ini"), "A", "B", "C"));
        QVERIFY(!QFile::exists(m_dir.filePath("nodir/sub/file.ini")));
    }

    // The file before, its ServeiXecs as read, the key written to section P and the file after.
    void otherEditorsFiles_data()
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
    void otherEditorsFiles()
    {
        QFETCH(QByteArray, abans);
        QFETCH(QString, clau);
        QFETCH(QString, valor);
        const QString f = write(QStringLiteral("Quadrella.ini"), abans);
        QTEST(LlegirIni(f, QStringLiteral("P"), QStringLiteral("ServeiXecs"), QString()), "serveiXecs");
        QVERIFY(EscriureIni(f, QStringLiteral("P"), clau, valor));
        QTEST(read(f), "despres");
    }
    void defaultsWithoutFile()
    {
        QTemporaryDir dir;
        const QDate wednesday(2009, 3, 4);
        const Configuracio c = Configuracio::carrega(dir.path(), 2, wednesday);
        QVERIFY(c.MinutsCella == 30 && c.CellesDia == 48 && c.PrimeraExecucio);
        QCOMPARE(c.BaseDades, dir.filePath("QuadrellaV01.db"));
        // The last planned day: the end of this week, whichever day the week starts on and
        // whether today is its first or its last day.
        QCOMPARE(c.UltimDiaGen, QDate(2009, 3, 8));
        QCOMPARE(Configuracio::carrega(dir.path(), 1, wednesday).UltimDiaGen, QDate(2009, 3, 7));
        QCOMPARE(Configuracio::carrega(dir.path(), 2, QDate(2009, 3, 8)).UltimDiaGen, QDate(2009, 3, 8));
    }

    void conversions()
    {
        QTemporaryDir dir;
        write(dir.filePath("Quadrella.ini"), "[General]\nBaseDades=altra.db\n"
                      "[Parametres]\nMinutsCella=\nHoresDia=7,5\nValorXec=12.25\nCostHoraXec=1.234,5\n"
                      "PermetSolaparLlocs=0\nCalculxHores=True\nDissabtesExtra=false\nColorDiumenge=&HFF00&\n"
                      "MaxXecsMes=4\nIdioma=ES\nHoraInici=08:00\nHoraFinal=20:00\n"
                      "[Estat]\nUltimDiaGen=05/03/2009\n");
        const Configuracio c = Configuracio::carrega(dir.path(), 2);
        QVERIFY(c.MinutsCella == 30 && c.HoresDia == 7.5 && c.ValorXec == 12.25 && c.CostHoraXec == 1234.5);
        QVERIFY(!c.PermetSolaparLlocs && c.CalculxHores && !c.DissabtesExtra);
        QVERIFY(c.ColorDiumenge == 0xFF00 && c.UltimDiaGen == QDate(2009, 3, 5) && c.CellesDia == 24);
        // A relative database path lies in the data directory.
        QCOMPARE(c.BaseDades, dir.filePath("altra.db"));
        QCOMPARE(Configuracio::cellesDia("08:00", "20:00", 45), 16);
        QCOMPARE(Configuracio::cellesDia("10:00", "09:00", 30), 0);
        QCOMPARE(Configuracio::diaSetmana(QDate(2009, 3, 1), 2), 7); // Sunday, weeks from Monday
    }

    void badValuesNameTheKey_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("key");
        QTest::newRow("letter in cells") << QByteArray("[Parametres]\nMinutsCella=3O\n") << "MinutsCella";
        QTest::newRow("boolean") << QByteArray("[Parametres]\nPermetSolaparLlocs=potser\n") << "PermetSolaparLlocs";
        QTest::newRow("date") << QByteArray("[Estat]\nUltimDiaGen=31/02/2009\n") << "UltimDiaGen";
    }
    void badValuesNameTheKey()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, key);
        QTemporaryDir dir;
        write(dir.filePath("Quadrella.ini"), line);
        try {
            Configuracio::carrega(dir.path(), 2);
            QFAIL("a bad value was accepted");
        } catch (const ConfigError &e) {
            const QString value = QString::fromUtf8(line.mid(line.indexOf('=') + 1)).trimmed();
            QVERIFY2(e.text().contains(key) && e.text().contains(value), qPrintable(e.text()));
        }
    }
};

QTEST_GUILESS_MAIN(TestConfiguracio)
#include "tst_configuracio.moc"
