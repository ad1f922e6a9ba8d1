// The holiday command and the planning's dry run as a user types them: exit codes, what goes to
// stdout and stderr, and the JSON shapes. The rules behind them are the engine tests' business.
#include "support/entorn_proves.h"

#include <QDir>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

namespace {

struct Sortida {
    int codi = -1;
    QString out;
    QString err;
    QJsonDocument json() const { return QJsonDocument::fromJson(out.toUtf8()); }
};

} // namespace

class TestCliFestius : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString m_dir;

    Sortida run(QStringList args)
    {
        args << QStringLiteral("--data-dir") << m_dir;
        QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
        e.remove(QStringLiteral("QUADRELLA_DIR"));
        QProcess p;
        p.setProcessEnvironment(e);
        p.setStandardInputFile(QProcess::nullDevice());
        p.start(QStringLiteral(QUADRELLA_EXECUTABLE), args);
        if (!p.waitForFinished(120000))
            qFatal("quadrella did not finish");
        return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
    }

private slots:
    void initTestCase()
    {
        m_dir = m_tmp.filePath(QStringLiteral("dades"));
        QCOMPARE(run({"init", "--sample"}).codi, 0);
    }

    void exitCodes_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("codi");
        QTest::addColumn<QString>("err");
        QTest::newRow("no action") << QStringList{"holiday"} << 2 << "holiday";
        QTest::newRow("add without text") << QStringList{"holiday", "add", "--date", "2026-12-25"} << 2 << "--text";
        QTest::newRow("list bad year") << QStringList{"holiday", "list", "--year", "dos"} << 2 << "--year";
        QTest::newRow("import missing file") << QStringList{"holiday", "import", "/no/such.ics"} << 1 << "/no/such.ics";
        QTest::newRow("delete a day not closed") << QStringList{"holiday", "delete", "--date", "01/01/2031"} << 1 << "01/01/2031";
    }

    void exitCodes()
    {
        QFETCH(QStringList, args);
        QFETCH(int, codi);
        QFETCH(QString, err);
        const Sortida s = run(args);
        QCOMPARE(s.codi, codi);
        QVERIFY2(s.err.contains(err), qPrintable(s.err));
    }

    // Import with a skipped event on stderr; list as text and JSON, by year; add and delete.
    void holidays()
    {
        QFile ics(m_tmp.filePath(QStringLiteral("f.ics")));
        QVERIFY(ics.open(QIODevice::WriteOnly));
        ics.write("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//x//y//CA\r\n"
                  "BEGIN:VEVENT\r\nUID:a\r\nDTSTART;VALUE=DATE:20271225\r\nSUMMARY:Nadal\r\nEND:VEVENT\r\n"
                  "BEGIN:VEVENT\r\nUID:b\r\nDTSTART:20271226T100000\r\nSUMMARY:Dinar\r\nEND:VEVENT\r\n"
                  "END:VCALENDAR\r\n");
        ics.close();
        Sortida s = run({"holiday", "import", ics.fileName()});
        QCOMPARE(s.codi, 0);
        QVERIFY2(s.out.startsWith(QStringLiteral("1 ")), qPrintable(s.out));
        QVERIFY2(s.err.contains(QStringLiteral("Dinar")), qPrintable(s.err));
        QCOMPARE(run({"holiday", "add", "--date", "01/01/2028", "--text", "Cap d'any"}).codi, 0);

        s = run({"holiday", "list", "--json"});
        QCOMPARE(s.codi, 0);
        QCOMPARE(s.json().array(), QJsonArray({QJsonObject{{"data", "2027-12-25"}, {"descripcio", "Nadal"}},
                                               QJsonObject{{"data", "2028-01-01"}, {"descripcio", "Cap d'any"}}}));
        QCOMPARE(run({"holiday", "delete", "--date", "2028-01-01"}).codi, 0);
        QCOMPARE(run({"holiday", "list", "--year", "2028", "--json"}).json().array().size(), 0);
    }

    // The dry run's shape (one row per job, in the order of storing), and that it leaves the
    // jobs and the last planned day alone.
    void dryRun()
    {
        {
            Db db;
            db.open(QDir(m_dir).filePath(Configuracio::nomFitxerBaseDades()));
            db.exec(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = 7, llocs_hora = '09:00'"));
        }
        const QJsonValue ultimAbans = run({"config", "--json"}).json().object().value("settings").toObject().value("UltimDiaGen");
        Sortida s = run({"plan", "--from", "2031-03-03", "--to", "2031-03-09", "--dry-run", "--json"});
        QCOMPARE(s.codi, 0);
        const QJsonObject o = s.json().object();
        QCOMPARE(o.keys(), QStringList({"desde", "feines", "fins"}));
        QCOMPARE(o.value("desde").toString() + o.value("fins").toString(), QStringLiteral("2031-03-032031-03-09"));
        const QJsonArray feines = o.value("feines").toArray();
        QCOMPARE(feines.size(), 3); // one a place: every sample place now goes weekly
        const QJsonObject f = feines.first().toObject();
        QCOMPARE(f.keys(), QStringList({"feines_data", "feines_hora_inici", "llocs_nom", "missatge", "recursos_nom", "resultat"}));
        QCOMPARE(f.value("feines_data").toString(), QStringLiteral("2031-03-03"));
        QCOMPARE(f.value("feines_hora_inici").toString(), QStringLiteral("09:00"));
        QVERIFY(QStringList({"ok", "sense_recurs", "refusada"}).contains(f.value("resultat").toString()));

        QCOMPARE(run({"job", "find", "--place", "Exemple escala", "--date", "2031-03-03", "--minute", "09:00"}).codi, 1);
        QCOMPARE(run({"config", "--json"}).json().object().value("settings").toObject().value("UltimDiaGen"), ultimAbans);
    }
};

QTEST_GUILESS_MAIN(TestCliFestius)
#include "tst_cli_festius.moc"
