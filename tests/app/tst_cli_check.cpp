// `quadrella check` as a user runs it: sound after the sample data and after a planning run
// (exit 0), a broken reference reported in text and JSON (exit 1), usage errors (exit 2), and a
// missing database reported with its path instead of being created.
#include "core/db.h"
#include "core/ini.h"

#include <QJsonArray>
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

Result run(const QStringList &args)
{
    QProcess p;
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.remove(QStringLiteral("QUADRELLA_DIR"));
    p.setProcessEnvironment(e);
    p.start(QStringLiteral(QUADRELLA_EXECUTABLE), args);
    p.waitForFinished(120000);
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

QJsonObject json(const Result &r)
{
    return QJsonDocument::fromJson(r.out.toUtf8()).object();
}

} // namespace

class TestCliCheck : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString m_dir;

private slots:
    void initTestCase()
    {
        m_dir = m_tmp.filePath(QStringLiteral("dades"));
        QCOMPARE(run({"init", "--sample", "--data-dir", m_dir}).code, 0);
    }

    void soundAfterSampleDataAndPlanning()
    {
        for (const QStringList &abans : QList<QStringList>{{}, {"plan", "--from", "01/03/2009", "--to", "30/04/2009"}}) {
            if (!abans.isEmpty())
                QCOMPARE(run(abans + QStringList{"--data-dir", m_dir}).code, 0);
            const Result text = run({"check", "--data-dir", m_dir});
            QCOMPARE(text.code, 0);
            QVERIFY2(text.out.endsWith(QStringLiteral("La base de dades és correcta.\n")), qPrintable(text.out));
            const Result j = run({"check", "--json", "--data-dir", m_dir});
            QCOMPARE(j.code, 0);
            const QJsonObject o = json(j);
            QCOMPARE(o.value("sound").toBool(), true);
            QCOMPARE(o.value("integrity").toArray(), QJsonArray{"ok"});
            QCOMPARE(o.value("reindexed").toBool(), true);
            QCOMPARE(o.value("problems").toArray().size(), 0);
            QCOMPARE(o.value("database").toString(), m_dir + QStringLiteral("/QuadrellaV01.db"));
        }
    }

    void aBrokenReferenceExitsOne()
    {
        {
            Db db;
            db.open(m_dir + QStringLiteral("/QuadrellaV01.db"));
            db.exec(QStringLiteral("UPDATE Feines SET llocs_nom = 'Zona' WHERE feines_id = (SELECT min(feines_id) FROM Feines)"));
        }
        const Result j = run({"--json", "check", "--data-dir", m_dir});
        QCOMPARE(j.code, 1);
        const QJsonArray problemes = json(j).value("problems").toArray();
        QCOMPARE(problemes.size(), 1);
        const QJsonObject p = problemes[0].toObject();
        QCOMPARE(p.value("check").toString(), QStringLiteral("Feines.llocs_nom"));
        QCOMPARE(p.value("value").toString(), QStringLiteral("Zona"));
        QVERIFY(p.value("row").toString().startsWith(QStringLiteral("feines_id=")));
        QCOMPARE(p.value("description").toString(), QStringLiteral("Feines d'un lloc que no existeix"));
        const Result text = run({"check", "--data-dir", m_dir});
        QCOMPARE(text.code, 1);
        QVERIFY2(text.out.contains(QStringLiteral("Feines d'un lloc que no existeix (Feines.llocs_nom): 1")), qPrintable(text.out));
    }

    void usageAndMissingDatabase()
    {
        QCOMPARE(run({"check", "--repair", "--data-dir", m_dir}).code, 2);
        QTemporaryDir buit;
        const QString dir = buit.filePath(QStringLiteral("sense"));
        QVERIFY(QDir().mkpath(dir));
        QVERIFY(EscriureIni(dir + QStringLiteral("/Quadrella.ini"), "General", "BaseDades", dir + QStringLiteral("/Quadrela.db")));
        const Result r = run({"check", "--data-dir", dir});
        QCOMPARE(r.code, 1);
        QVERIFY2(r.err.startsWith(QStringLiteral("Error: ")) && r.err.contains(dir + QStringLiteral("/Quadrela.db")), qPrintable(r.err));
        QVERIFY(!QFileInfo::exists(dir + QStringLiteral("/Quadrela.db")));
    }
};

QTEST_GUILESS_MAIN(TestCliCheck)
#include "tst_cli_check.moc"
