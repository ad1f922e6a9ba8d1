// The command line as a user runs it: options anywhere, exit codes (0 done, 1 refused or failed,
// 2 usage) with the message on stderr, and the shape of each command's output. The rules behind
// the commands are the engine tests' business.
#include "core/db.h"
#include "core/ini.h"
#include "support/entorn_proves.h"
#include "support/execucio_cli.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using Sortida = SortidaCli;

class TestCli : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString m_dir;

    Sortida run(const QStringList &args) { return executaCli(args, m_dir); }

private slots:
    // Sample data whose last planned day is 28 February 2009, two jobs and an overtime entry on
    // Wednesday 5 March 2031, a data directory with a bad setting and a path that cannot be one.
    void initTestCase()
    {
        m_dir = m_tmp.filePath(QStringLiteral("dades"));
        QCOMPARE(run({"init"}).codi, 0);
        QVERIFY(EscriureIni(m_dir + QStringLiteral("/Quadrella.ini"), "Estat", "UltimDiaGen", "28/02/2009"));
        QCOMPARE(run({"init", "--sample"}).codi, 0);
        QCOMPARE(run({"job", "add", "--place", "Exemple escala", "--date", "2031-03-05", "--start", "09:00"}).codi, 0);
        QCOMPARE(run({"job", "add", "--place", "Exemple oficina", "--date", "2031-03-05", "--start", "12:00"}).codi, 0);
        QCOMPARE(run({"overtime", "--resource", "Oriol", "--date", "2031-03-05", "--set", "1,5"}).codi, 0);
        QVERIFY(QDir(m_tmp.path()).mkdir(QStringLiteral("malament")));
        QVERIFY(EscriureIni(m_tmp.filePath(QStringLiteral("malament/Quadrella.ini")), "Parametres", "MinutsCella", "trenta"));
        QFile bloc(m_tmp.filePath(QStringLiteral("fitxer")));
        QVERIFY(bloc.open(QIODevice::WriteOnly));
    }

    void exitCodes_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("codi");
        QTest::addColumn<QString>("err"); // what stderr says, pieces separated by '|'
        QTest::newRow("unknown command") << QStringList{"frobnicate"} << 2 << "frobnicate";
        QTest::newRow("unknown option") << QStringList{"config", "--bogus"} << 2 << "--bogus";
        QTest::newRow("option without value") << QStringList{"init", "--data-dir"} << 2 << "";
        QTest::newRow("job without action") << QStringList{"job"} << 2 << "job";
        QTest::newRow("job add without place") << QStringList{"job", "add", "--date", "2031-03-05", "--start", "08:00"} << 2 << "job";
        QTest::newRow("impossible date") << QStringList{"job", "add", "--place", "X", "--date", "31/02/2031", "--start", "08:00"} << 2 << "job";
        QTest::newRow("time without two digits") << QStringList{"job", "add", "--place", "X", "--date", "2031-03-05", "--start", "8:0"} << 2 << "job";
        QTest::newRow("id not a number") << QStringList{"job", "show", "--id", "deu"} << 2 << "job";
        QTest::newRow("done and not done") << QStringList{"job", "modify", "--id", "1", "--done", "--not-done"} << 2 << "job";
        QTest::newRow("end past 24:00") << QStringList{"job", "modify", "--id", "1", "--end", "25:00"} << 2 << "job";
        QTest::newRow("find without minute") << QStringList{"job", "find", "--place", "X", "--date", "2031-03-05"} << 2 << "job";
        QTest::newRow("place refused") << QStringList{"job", "add", "--place", "Golf", "--date", "2031-03-05", "--start", "08:00"} << 1
                                       << "Lloc 'Golf' inexistent";
        QTest::newRow("job not found") << QStringList{"job", "show", "--id", "99999"} << 1 << "Feina no trobada";
        QTest::newRow("plan without period") << QStringList{"plan"} << 2 << "plan";
        QTest::newRow("plan bad date") << QStringList{"plan", "--until", "32/13/2009"} << 2 << "plan";
        QTest::newRow("plan from without to") << QStringList{"plan", "--from", "01/03/2009"} << 2 << "plan";
        QTest::newRow("plan both forms") << QStringList{"plan", "--until", "01/03/2009", "--from", "01/03/2009", "--to", "02/03/2009"} << 2 << "plan";
        QTest::newRow("plan backwards") << QStringList{"plan", "--from", "10/03/2009", "--to", "01/03/2009"} << 2 << "plan";
        QTest::newRow("agenda unknown view") << QStringList{"agenda", "--view", "setmanes"} << 2 << "agenda [--view dia|setmana|mes]";
        QTest::newRow("overtime without date") << QStringList{"overtime", "--resource", "Marta"} << 2 << "--date";
        QTest::newRow("bad setting names key and value") << QStringList{"config", "--data-dir", "%T/malament"} << 1 << "MinutsCella|trenta";
        QTest::newRow("directory that cannot be made") << QStringList{"init", "--data-dir", "%T/fitxer/sub"} << 1 << "";
        QTest::newRow("compact without database") << QStringList{"compact", "--data-dir", "%T/buit"} << 1 << "Error:";
    }

    void exitCodes()
    {
        QFETCH(QStringList, args);
        QFETCH(int, codi);
        QFETCH(QString, err);
        args.replaceInStrings(QStringLiteral("%T"), m_tmp.path());
        const Sortida s = run(args);
        QCOMPARE(s.codi, codi);
        QVERIFY(!s.err.trimmed().isEmpty());
        for (const QString &tros : err.split(QLatin1Char('|'), Qt::SkipEmptyParts))
            QVERIFY2(s.err.contains(tros), qPrintable(s.err));
        QCOMPARE(s.out, QString());
    }

    void helpVersionAndWhereTheDirectoryComesFrom()
    {
        Sortida s = run({"--help"});
        QCOMPARE(s.codi, 0);
        QVERIFY(s.out.contains("init") && s.out.contains("config") && s.out.contains("job"));
        QVERIFY(run({"--version"}).out.startsWith("Quadrella 1."));
        // --json and --data-dir stand anywhere; QUADRELLA_DIR chooses the directory too.
        QCOMPARE(run({"--json", "config"}).json().value("data_dir").toString(), m_dir);
        QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
        QProcess p;
        e.insert(QStringLiteral("QUADRELLA_DIR"), m_dir);
        p.setProcessEnvironment(e);
        p.start(QStringLiteral(QUADRELLA_EXECUTABLE), {"config", "--json"});
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(QJsonDocument::fromJson(p.readAllStandardOutput()).object().value("data_dir").toString(), m_dir);
        // A second init creates nothing.
        s = run({"init"});
        QCOMPARE(s.codi, 0);
        QCOMPARE(s.out.count("Creat:"), 0);
    }

    void jsonShapes_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QStringList>("claus");
        QTest::newRow("job") << QStringList{"job", "add", "--place", "Exemple escala", "--date", "04/03/2031", "--start", "08:00"}
                             << QStringList{"feines_data", "feines_data_factura", "feines_feta", "feines_hora_fi", "feines_hora_inici",
                                            "feines_id", "feines_observacions", "llocs_nom", "missatge", "recursos_nom"};
        QTest::newRow("agenda") << QStringList{"agenda", "--view", "dia", "--date", "05/03/2031"}
                                << QStringList{"DiaActual", "cells", "hores", "vista"};
        QTest::newRow("overtime") << QStringList{"overtime", "--resource", "oriol", "--date", "05/03/2031"}
                                  << QStringList{"data", "hores", "proposta", "recursos_nom"};
        QTest::newRow("plan") << QStringList{"plan", "--from", "01/01/2009", "--to", "02/01/2009"}
                              << QStringList{"UltimDiaGen", "executada", "feines", "log", "resultat"};
        QTest::newRow("compact") << QStringList{"compact"} << QStringList{"database", "size_after", "size_before"};
    }

    void jsonShapes()
    {
        QFETCH(QStringList, args);
        QFETCH(QStringList, claus);
        const Sortida s = run(args << QStringLiteral("--json"));
        QVERIFY2(s.codi == 0, qPrintable(s.err));
        const QJsonObject o = s.json();
        for (const QString &clau : claus)
            QVERIFY2(o.contains(clau), qPrintable(clau + QStringLiteral(" in ") + s.out));
        QCOMPARE(o.size(), claus.size());
    }

    // Dates, times and numbers travel in ISO form and as JSON types; the agenda's cells carry
    // their four fields, one row per slot (one per week in the month view).
    void jsonValues()
    {
        const QJsonObject j = run({"job", "add", "--place", "Exemple escala", "--date", "04/03/2031", "--start", "10:00", "--json"}).json();
        QVERIFY(j.value("feines_id").isDouble());
        QCOMPARE(j.value("feines_data").toString(), QStringLiteral("2031-03-04"));
        QCOMPARE(j.value("feines_feta"), QJsonValue(false));
        QCOMPARE(j.value("feines_data_factura"), QJsonValue(QString()));
        QCOMPARE(run({"job", "show", "--id", QString::number(j.value("feines_id").toInt()), "--json"}).json(), j);

        const QJsonObject o = run({"overtime", "--resource", "oriol", "--date", "05/03/2031", "--json"}).json();
        QCOMPARE(o.value("recursos_nom").toString(), QStringLiteral("Oriol"));
        QCOMPARE(o.value("hores").toDouble(), 1.5);
        QCOMPARE(o.value("data").toString(), QStringLiteral("2031-03-05"));

        const QJsonObject c = run({"config", "--json"}).json();
        QCOMPARE(c.value("settings").toObject().size(), 26);
        QCOMPARE(c.value("settings").toObject().value("UltimDiaGen").toString(), QStringLiteral("2009-02-28"));
        QCOMPARE(c.value("CellesDia").toInt(), 48);

        for (const auto &[vista, files] : {std::pair{"dia", 49}, std::pair{"setmana", 49}, std::pair{"mes", 7}}) {
            const QJsonObject a = run({"agenda", "--view", vista, "--date", "05/03/2031", "--json"}).json();
            QCOMPARE(a.value("vista").toString(), QString::fromLatin1(vista));
            const QJsonArray cells = a.value("cells").toArray();
            QCOMPARE(cells.size(), files);
            const QJsonObject cella = cells.at(1).toArray().at(1).toObject();
            QCOMPARE(QStringList(cella.keys()), QStringList({"bg", "bold", "text", "underline"}));
            QVERIFY(cella.value("bold").isBool() && cella.value("underline").isBool());
        }
        const QJsonObject dia = run({"agenda", "--view", "dia", "--date", "05/03/2031", "--json"}).json();
        QCOMPARE(dia.value("hores").toArray().toVariantList(), QVariantList({"0,00", "1,50", "", "", "", "", ""}));
        QCOMPARE(dia.value("cells").toArray().at(19).toArray().at(1).toObject().value("bg"), QJsonValue(65535)); // Marta's colour
    }

    // The terminal forms: the agenda as a table with its overtime row, a job on one line, the
    // planning log with plain line ends, its question on stderr, the last planned day moved.
    void textOutput()
    {
        Sortida s = run({"agenda", "--view", "dia", "--date", "2031-03-05"});
        QCOMPARE(s.codi, 0);
        QVERIFY(s.out.contains("| 09:00 ") && s.out.contains("Exemple escala"));
        QVERIFY(s.out.contains("Hores extra") && s.out.contains("1,50"));

        s = run({"plan", "--until", "31/03/2009"});
        QCOMPARE(s.codi, 0);
        QVERIFY(s.out.startsWith(QStringLiteral("\nIniciant planificació periode: 01/03/2009 - 31/03/2009 ...\n")));
        QVERIFY(s.out.endsWith(QStringLiteral("feines planificades.\n\n\nFINALITZACIO CORRECTA!!!\n")));
        QVERIFY(!s.out.contains(QLatin1Char('\r')));
        QVERIFY(s.err.contains(QStringLiteral("Vols generar les feines des del 01/03/2009 fins al 31/03/2009 ?")));
        QCOMPARE(LlegirIni(m_dir + QStringLiteral("/Quadrella.ini"), "Estat", "UltimDiaGen", ""), QStringLiteral("31/03/2009"));
        s = run({"plan", "--until", "2009-03-31"});
        QCOMPARE(s.out, QStringLiteral("No hi ha res a planificar: l'últim dia planificat és el 31/03/2009\n"));
    }

    // A planning run stopped by a database error exits with 1, its message on stderr.
    void planFailure()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath(QStringLiteral("d"));
        QCOMPARE(executaCli({"init"}, dir).codi, 0);
        Db db;
        db.open(dir + QStringLiteral("/QuadrellaV01.db"));
        db.exec(QStringLiteral("ALTER TABLE Llocs RENAME TO Llocs_fora"));
        db.close();
        const Sortida s = executaCli({"plan", "--from", "01/05/2009", "--to", "31/05/2009"}, dir);
        QCOMPARE(s.codi, 1);
        QVERIFY(s.out.endsWith(QStringLiteral("\n\n\nFINALITZACIO AMB ERRORS!!!\n")));
        QVERIFY(s.err.contains(QStringLiteral("Error en Planificar_Feines:")));
    }

    // The purge deletes only with --yes (no terminal to ask), names its backup and compacts.
    void purge()
    {
        DirectoriProva dir;
        {
            auto s = dir.obreSessio();
            dades_prova::lloc(s->db(), "Lloc", 30);
            dades_prova::feina(s->db(), "Lloc", QDate(2008, 12, 31), "08:00", "08:30");
        }
        Sortida s = executaCli({"purge", "--until", "2008-12-31"}, dir.path());
        QCOMPARE(s.codi, 1);
        QVERIFY(s.err.contains("Purga cancel·lada"));
        QVERIFY(QDir(dir.path()).entryList({"QuadrellaV01[0-9]*.db"}).isEmpty());
        s = executaCli({"purge", "--until", "31/12/2008", "--yes"}, dir.path());
        QVERIFY2(s.codi == 0, qPrintable(s.err));
        QVERIFY(s.err.contains("1 feines esborrades."));
        const QStringList copies = QDir(dir.path()).entryList({"QuadrellaV01[0-9]*.db"});
        QCOMPARE(copies.size(), 1);
        QVERIFY(s.out.contains(copies.first()) && s.out.contains("Base de dades compactada:"));
    }

    // Messages in the configured language; the desktop program refuses to start without a display.
    void languageAndDisplay()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath(QStringLiteral("es"));
        QCOMPARE(executaCli({"init"}, dir).codi, 0);
        QVERIFY(EscriureIni(dir + QStringLiteral("/Quadrella.ini"), QStringLiteral("Parametres"), QStringLiteral("Idioma"), QStringLiteral("ES")));
        QCOMPARE(executaCli({"job", "show", "--id", "9"}, dir).err.trimmed(), QStringLiteral("Trabajo no encontrado"));

        const QProcessEnvironment e = entornSensePantalla();
        const Sortida s = executaCli({}, dir, e);
        QCOMPARE(s.codi, 1);
        QVERIFY2(s.err.contains("quadrella purge --until D [--yes]"), qPrintable(s.err));
        QCOMPARE(executaCli({"compact"}, dir, e).codi, 0);
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
