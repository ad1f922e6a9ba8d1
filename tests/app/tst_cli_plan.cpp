// `quadrella plan` as a user runs it, on a data directory made by `init --sample`: the log on
// stdout, the last planned day in the settings file, refusals in the log, failures and usage
// errors in the exit code.
#include "core/db.h"
#include "core/ini.h"

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

QString ini(const QString &dir)
{
    return dir + QStringLiteral("/Quadrella.ini");
}

// Runs statements on the data directory's business database (closed again before returning, so
// the program finds it as a user would leave it).
void sql(const QString &dir, const QStringList &statements)
{
    Db db;
    db.open(dir + QStringLiteral("/QuadrellaV01.db"));
    for (const QString &s : statements)
        db.exec(s);
    db.close();
}

qint64 valor(const QString &dir, const QString &query)
{
    Db db;
    db.open(dir + QStringLiteral("/QuadrellaV01.db"));
    Query q = db.query(query);
    q.exec();
    const qint64 v = q.next() ? q.integer(0) : -1;
    return v;
}

} // namespace

class TestCliPlan : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString m_dir;

private slots:
    // A sample data directory whose last planned day is Saturday 28 February 2009 (the sample
    // jobs lie in the week before it), with two of its places put on a rhythm.
    void initTestCase()
    {
        m_dir = m_tmp.filePath(QStringLiteral("dades"));
        QCOMPARE(run({"init", "--data-dir", m_dir}).code, 0);
        QVERIFY(EscriureIni(ini(m_dir), "Estat", "UltimDiaGen", "28/02/2009"));
        QVERIFY(EscriureIni(ini(m_dir), "Parametres", "PermetSolaparLlocs", "0"));
        const Result r = run({"init", "--sample", "--data-dir", m_dir});
        QCOMPARE(r.code, 0);
        QVERIFY(valor(m_dir, "SELECT COUNT(*) FROM Feines") > 0);
        QCOMPARE(valor(m_dir, "SELECT COUNT(*) FROM Feines WHERE feines_data > '2009-02-28'"), qint64(0));
        sql(m_dir, {"UPDATE Llocs SET llocs_periodicitat_dies = 2 WHERE llocs_nom = 'Exemple escala'",
                    "UPDATE Llocs SET llocs_periodicitat_dies = 30, llocs_primer_dia_mes = 1, llocs_hora = '10:00' "
                    "WHERE llocs_nom = 'Particular casa'"});
    }

    void usageErrors()
    {
        for (const QStringList &args : QList<QStringList>{{"plan"},
                                                          {"plan", "--until", "32/13/2009"},
                                                          {"plan", "--from", "01/03/2009"},
                                                          {"plan", "--to", "01/03/2009"},
                                                          {"plan", "--until", "01/03/2009", "--from", "01/03/2009", "--to", "02/03/2009"},
                                                          {"plan", "--from", "10/03/2009", "--to", "01/03/2009"},
                                                          {"plan", "--until", "01/03/2009", "extra"}}) {
            const Result r = run(args + QStringList{"--data-dir", m_dir});
            QVERIFY2(r.code == 2, qPrintable(args.join(' ')));
            QVERIFY(!r.err.isEmpty());
        }
        QCOMPARE(LlegirIni(ini(m_dir), "Estat", "UltimDiaGen", ""), QStringLiteral("28/02/2009"));
    }

    // --until plans from the day after the last planned day, shows the log, and moves the day on;
    // asking again for the same day has nothing to do.
    void untilAdvancesTheLastPlannedDay()
    {
        Result r = run({"plan", "--until", "31/03/2009", "--data-dir", m_dir});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.startsWith(QStringLiteral("\nIniciant planificació periode: 01/03/2009 - 31/03/2009 ...\n")));
        // The latest sample job of 'Exemple escala' is on 28 February: every 2 days, no weekends.
        const qint64 primera = valor(m_dir, "SELECT feines_id FROM Feines WHERE llocs_nom = 'Exemple escala' "
                                            "AND feines_data = '2009-03-02'");
        QVERIFY(primera > 0);
        QVERIFY(r.out.contains(QStringLiteral("\nFeina %1: MARTA  -  'Exemple escala' planificada el dilluns "
                                              "02/03/2009 a les 00:00. \n").arg(primera)));
        const qint64 casa = valor(m_dir, "SELECT feines_id FROM Feines WHERE llocs_nom = 'Particular casa' "
                                         "AND feines_data = '2009-03-02'");
        QVERIFY(r.out.contains(QStringLiteral("\nFeina %1: ORIOL  -  'Particular casa' planificada el dilluns "
                                              "02/03/2009 a les 10:00. ").arg(casa)));
        const qint64 noves = valor(m_dir, "SELECT COUNT(*) FROM Feines WHERE feines_data > '2009-02-28'");
        QCOMPARE(noves, qint64(14));
        QCOMPARE(r.out.count(QStringLiteral("\nFeina ")), 14);
        QVERIFY(r.out.endsWith(QStringLiteral("\n\n14 feines planificades.\n\n\nFINALITZACIO CORRECTA!!!\n")));
        QVERIFY(!r.out.contains(QLatin1Char('\r')));
        QVERIFY(r.err.contains(QStringLiteral("Vols generar les feines des del 01/03/2009 fins al 31/03/2009 ?")));
        QCOMPARE(LlegirIni(ini(m_dir), "Estat", "UltimDiaGen", ""), QStringLiteral("31/03/2009"));

        r = run({"plan", "--until", "2009-03-31", "--data-dir", m_dir});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("No hi ha res a planificar: l'últim dia planificat és el 31/03/2009\n"));
        QVERIFY(r.err.isEmpty());
        QCOMPARE(valor(m_dir, "SELECT COUNT(*) FROM Feines WHERE feines_data > '2009-02-28'"), noves);
    }

    // --from/--to runs the period alone: the every-N place has nothing new, the monthly place is
    // refused by the place-collision check (logged, not a failure), the last planned day stays.
    void periodAgain()
    {
        const qint64 abans = valor(m_dir, "SELECT COUNT(*) FROM Feines");
        const Result r = run({"plan", "--from", "01/03/2009", "--to", "31/03/2009", "--data-dir", m_dir});
        QCOMPARE(r.code, 0);
        QCOMPARE(valor(m_dir, "SELECT COUNT(*) FROM Feines"), abans);
        QVERIFY(r.out.contains(QStringLiteral("\nERROR en planificació de feina: 'Particular casa' el dilluns "
                                              "02/03/2009 a les 10:00.\nSolapament de llocs a PARTICULAR CASA")));
        QVERIFY(r.out.contains(QStringLiteral("\n\n0 feines planificades.\n")));
        QVERIFY(r.err.isEmpty());
        QCOMPARE(LlegirIni(ini(m_dir), "Estat", "UltimDiaGen", ""), QStringLiteral("31/03/2009"));
    }

    void jsonOutput()
    {
        const Result r = run({"--json", "plan", "--from", "01/04/2009", "--to", "30/04/2009", "--data-dir", m_dir});
        QCOMPARE(r.code, 0);
        const QJsonObject o = QJsonDocument::fromJson(r.out.toUtf8()).object();
        QCOMPARE(o["resultat"].toString(), QString());
        QCOMPARE(o["feines"].toInt(), 14); // 13 for the every-other-day place, 1 for the monthly one
        QCOMPARE(o["UltimDiaGen"].toString(), QStringLiteral("2009-03-31"));
        QVERIFY(o["log"].toString().endsWith(QStringLiteral("FINALITZACIO CORRECTA!!!\n")));
    }

    // A run that stops on a database error exits with 1 and its message on stderr; with --until
    // the last planned day still moves on.
    void failures()
    {
        sql(m_dir, {"ALTER TABLE Llocs RENAME TO Llocs_fora"});
        Result r = run({"plan", "--from", "01/05/2009", "--to", "31/05/2009", "--data-dir", m_dir});
        QCOMPARE(r.code, 1);
        QVERIFY(r.out.endsWith(QStringLiteral("\n\n\nFINALITZACIO AMB ERRORS!!!\n")));
        QVERIFY(r.err.contains(QStringLiteral("Error en Planificar_Feines:")));

        r = run({"plan", "--until", "15/04/2009", "--data-dir", m_dir});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Error en Planificar_Feines:")));
        QCOMPARE(LlegirIni(ini(m_dir), "Estat", "UltimDiaGen", ""), QStringLiteral("15/04/2009"));
        sql(m_dir, {"ALTER TABLE Llocs_fora RENAME TO Llocs"});
    }
};

QTEST_GUILESS_MAIN(TestCliPlan)
#include "tst_cli_plan.moc"
