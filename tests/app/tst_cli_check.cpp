// `quadrella check` as a user runs it: sound after the sample data and after a planning run
// (exit 0), a broken reference (exit 1, its JSON shape), a usage error (exit 2).
#include "core/db.h"

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
            QVERIFY2(text.code == 0 && text.out.endsWith(QStringLiteral("La base de dades és correcta.\n")), qPrintable(text.out));
            const Result j = run({"check", "--json", "--data-dir", m_dir});
            const QJsonObject o = json(j);
            QCOMPARE(j.code, 0);
            QCOMPARE(o.value("sound").toBool(), true);
            QCOMPARE(o.value("integrity").toArray(), QJsonArray{"ok"});
            QCOMPARE(o.value("problems").toArray(), QJsonArray());
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
        QCOMPARE(QStringList(p.keys()), QStringList({"check", "description", "row", "value"}));
        QCOMPARE(p.value("check").toString(), QStringLiteral("Feines.llocs_nom"));
        QCOMPARE(run({"check", "--data-dir", m_dir}).code, 1);
        QCOMPARE(run({"check", "--repair", "--data-dir", m_dir}).code, 2);
    }
};

QTEST_GUILESS_MAIN(TestCliCheck)
#include "tst_cli_check.moc"
