// `quadrella check` as a user runs it: its exit codes and output shapes.
#include "core/db.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class TestCliCheck : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;

    int run(const QStringList &args, QString *out = nullptr)
    {
        QProcess p;
        p.start(QStringLiteral(QUADRELLA_EXECUTABLE), args + QStringList{"--data-dir", m_tmp.path()});
        p.waitForFinished(120000);
        if (out)
            *out = QString::fromUtf8(p.readAllStandardOutput());
        return p.exitCode();
    }

private slots:
    void exitCodesAndShapes()
    {
        QCOMPARE(run({"init", "--sample"}), 0);
        QString out;
        QCOMPARE(run({"check"}, &out), 0);
        QVERIFY2(out.endsWith(QStringLiteral("La base de dades és correcta.\n")), qPrintable(out));
        QCOMPARE(run({"check", "--repair"}), 2);
        {
            Db db;
            db.open(m_tmp.filePath(QStringLiteral("QuadrellaV01.db")));
            db.exec(QStringLiteral("UPDATE Feines SET llocs_nom = 'Zona' WHERE feines_id = (SELECT min(feines_id) FROM Feines)"));
        }
        QCOMPARE(run({"--json", "check"}, &out), 1);
        const QJsonObject o = QJsonDocument::fromJson(out.toUtf8()).object();
        QCOMPARE(QStringList(o.keys()),
                 QStringList({"database", "integrity", "integrity_after_repair", "problems", "reindexed", "sound"}));
        QCOMPARE(o.value("sound").toBool(true), false);
        const QJsonArray problemes = o.value("problems").toArray();
        QCOMPARE(problemes.size(), 1);
        QCOMPARE(QStringList(problemes[0].toObject().keys()), QStringList({"check", "description", "row", "value"}));
        QCOMPARE(problemes[0].toObject().value("check").toString(), QStringLiteral("Feines.llocs_nom"));
    }
};

QTEST_GUILESS_MAIN(TestCliCheck)
#include "tst_cli_check.moc"
