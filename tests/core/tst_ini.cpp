// The settings-file primitives against files written by the program and edited by hand.
#include "core/ini.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestIni : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString path(const QString &name) const { return m_dir.filePath(name); }
    void write(const QString &file, const QByteArray &content)
    {
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    QByteArray read(const QString &file)
    {
        QFile f(file);
        if (!f.open(QIODevice::ReadOnly))
            return {};
        return f.readAll();
    }

private slots:
    void missingFileGivesDefaults()
    {
        const QString f = path("nothing.ini");
        QCOMPARE(LlegirIni(f, "Parametres", "MinutsCella", "30"), QString("30"));
        QCOMPARE(LlegirSeccioIni(f, "Idiomes"), QString());
    }

    void readingFollowsTheClassicRules()
    {
        const QString f = path("hand.ini");
        write(f, "; edited by hand\r\n"
                 "  [ parametres ]  \r\n"
                 "MinutsCella=\r\n"
                 "  HoresDia =  7,5  \r\n"
                 "# a comment=with equals\r\n"
                 "ServeiXecs=\"  Neteja  \"\r\n"
                 "Long=" + QByteArray(250, 'x') + "\r\n"
                 "[Estat]\r\n"
                 "UltimDiaGen=31/12/2009\r\n");
        // An empty value reads as the default; names compare without regard to case.
        QCOMPARE(LlegirIni(f, "Parametres", "MinutsCella", "30"), QString("30"));
        QCOMPARE(LlegirIni(f, "PARAMETRES", "horesdia", "8,00"), QString("7,5"));
        // Quotes keep blanks that would otherwise be trimmed.
        QCOMPARE(LlegirIni(f, "Parametres", "ServeiXecs", ""), QString("  Neteja  "));
        // The value buffer holds 199 characters.
        QCOMPARE(LlegirIni(f, "Parametres", "Long", "").size(), 199);
        // A key of another section, or a commented one, is not found.
        QCOMPARE(LlegirIni(f, "Parametres", "UltimDiaGen", "def"), QString("def"));
        QCOMPARE(LlegirIni(f, "Parametres", "# a comment", "def"), QString("def"));
        QCOMPARE(LlegirIni(f, "Estat", "UltimDiaGen", ""), QString("31/12/2009"));
    }

    void sectionListsLinesSeparatedByNul()
    {
        const QString f = path("lang.ini");
        write(f, "[Idiomes]\n  (CT) Català  \n\n(ES) Castellà\n; not a language\n[Other]\nx=1\n");
        const QString s = LlegirSeccioIni(f, "idiomes");
        QStringList pieces = s.split(QChar(0));
        QCOMPARE(pieces.size(), 3);
        QCOMPARE(pieces.last(), QString());
        QCOMPARE(pieces[0], QString("(CT) Català"));
        QCOMPARE(pieces[1], QString("(ES) Castellà"));
        QCOMPARE(LlegirSeccioIni(f, "Missing"), QString());
    }

    void sectionIsCutAtItsBuffer()
    {
        const QString f = path("big.ini");
        QByteArray content = "[Idiomes]\n";
        for (int i = 0; i < 100; ++i)
            content += "(X" + QByteArray::number(i % 10) + ") Language number " + QByteArray::number(i) + "\n";
        write(f, content);
        const QString s = LlegirSeccioIni(f, "Idiomes");
        QVERIFY(s.size() <= 999);
        QVERIFY(s.endsWith(QChar(0)));
    }

    void writingKeepsEverythingElse()
    {
        const QString f = path("keep.ini");
        write(f, "; my notes\n[General]\nBaseDades = /data/a.db\n\n[Parametres]\n  MinutsCella = 30 ; old\nHoraInici=08:00\n\n[Estat]\nUltimDiaGen=01/01/2009\n");
        QVERIFY(EscriureIni(f, "parametres", "minutscella", "15"));
        QVERIFY(EscriureIni(f, "Parametres", "ServeiXecs", "Neteja"));
        QVERIFY(EscriureIni(f, "Nova", "Clau", "valor"));
        const QByteArray text = read(f);
        QVERIFY(text.startsWith("; my notes\n[General]\nBaseDades = /data/a.db\n"));
        QCOMPARE(LlegirIni(f, "Parametres", "MinutsCella", ""), QString("15"));
        QCOMPARE(LlegirIni(f, "Parametres", "HoraInici", ""), QString("08:00"));
        QCOMPARE(LlegirIni(f, "Parametres", "ServeiXecs", ""), QString("Neteja"));
        QCOMPARE(LlegirIni(f, "Nova", "Clau", ""), QString("valor"));
        QCOMPARE(LlegirIni(f, "Estat", "UltimDiaGen", ""), QString("01/01/2009"));
        // The new key sits inside its section, before the blank line that closes it.
        QVERIFY(text.indexOf("ServeiXecs=Neteja") < text.indexOf("[Estat]"));
        QCOMPARE(text.count("[Parametres]"), 1);
    }

    void writingCreatesAMissingFile()
    {
        const QString f = path("new.ini");
        QVERIFY(EscriureIni(f, "Estat", "UltimDiaGen", "05/03/2009"));
        QCOMPARE(LlegirIni(f, "Estat", "UltimDiaGen", ""), QString("05/03/2009"));
    }

    void failedWriteIsReportedAndLeavesTheFile()
    {
        const QString f = path("nodir/sub/file.ini");
        QVERIFY(!EscriureIni(f, "A", "B", "C"));
        QVERIFY(!QFile::exists(f));
    }
};

QTEST_GUILESS_MAIN(TestIni)
#include "tst_ini.moc"
