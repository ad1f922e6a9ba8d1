// The command line as a user runs it: global options anywhere, init and config, exit codes.
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {
struct Result {
    int code;
    QString out;
    QString err;
};

Result run(const QStringList &args, const QStringList &env = {})
{
    QProcess p;
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.remove("QUADRELLA_DIR");
    for (const QString &kv : env)
        e.insert(kv.section('=', 0, 0), kv.section('=', 1));
    p.setProcessEnvironment(e);
    p.start(QStringLiteral(QUADRELLA_EXECUTABLE), args);
    p.waitForFinished(60000);
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}
} // namespace

class TestCliBasic : public QObject {
    Q_OBJECT

private slots:
    void helpAndVersion()
    {
        Result r = run({"--help"});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.contains("init"));
        QVERIFY(r.out.contains("config"));
        r = run({"--version"});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.startsWith("Quadrella 1."));
    }

    void usageErrors()
    {
        QTemporaryDir dir;
        Result r = run({"frobnicate", "--data-dir", dir.path()});
        QCOMPARE(r.code, 2);
        QVERIFY(r.err.contains("frobnicate"));
        r = run({"config", "--bogus", "--data-dir", dir.path()});
        QCOMPARE(r.code, 2);
        QVERIFY(r.err.contains("--bogus"));
        r = run({"init", "--data-dir"});
        QCOMPARE(r.code, 2);
    }

    void initThenConfig()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath("d");
        Result r = run({"init", "--data-dir", dir});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out.count("Creat:"), 3);
        r = run({"init", "--data-dir", dir});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out.count("Creat:"), 0);

        // --json and --data-dir may stand anywhere.
        r = run({"--json", "config", "--data-dir", dir});
        QCOMPARE(r.code, 0);
        const QJsonObject o = QJsonDocument::fromJson(r.out.toUtf8()).object();
        QCOMPARE(o["data_dir"].toString(), dir);
        QCOMPARE(o["CellesDia"].toInt(), 48);
        QVERIFY(o["PrimerDiaSetmana"].toInt() >= 1 && o["PrimerDiaSetmana"].toInt() <= 7);
        const QJsonObject s = o["settings"].toObject();
        QCOMPARE(s.size(), 26);
        QCOMPARE(s["MinutsCella"].toInt(), 30);
        QCOMPARE(s["HoresDia"].toDouble(), 8.0);
        QCOMPARE(s["PermetSolaparLlocs"].toBool(), true);
        QCOMPARE(s["MarcaSeleccio"].toString(), QString("-> "));
        QVERIFY(QDate::fromString(s["UltimDiaGen"].toString(), Qt::ISODate).isValid());

        // The environment variable chooses the directory too.
        r = run({"config", "--json"}, {"QUADRELLA_DIR=" + dir});
        QCOMPARE(QJsonDocument::fromJson(r.out.toUtf8()).object()["data_dir"].toString(), dir);
    }

    void badSettingIsAClearError()
    {
        QTemporaryDir tmp;
        QFile ini(tmp.filePath("Quadrella.ini"));
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write("[Parametres]\nMinutsCella=trenta\n");
        ini.close();
        const Result r = run({"config", "--data-dir", tmp.path()});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains("MinutsCella"));
        QVERIFY(r.err.contains("trenta"));
    }

    void uncreatableDirectory()
    {
        QTemporaryDir tmp;
        QFile blocker(tmp.filePath("file"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        const Result r = run({"init", "--data-dir", tmp.filePath("file/sub")});
        QCOMPARE(r.code, 1);
        QVERIFY(!r.err.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCliBasic)
#include "tst_cli_basic.moc"
