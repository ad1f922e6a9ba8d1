// The command line as a user runs it: options anywhere, exit codes (0 done, 1 refused or failed,
// 2 usage) with the message on stderr, and the shape of each command's output. The rules behind
// the commands are the engine tests' business.
#include "core/ini.h"
#include "support/entorn_proves.h"
#include "support/execucio_cli.h"

#include <QDir>
#include <QJsonArray>
#include <QtTest>

using Sortida = SortidaCli;

class TestCli : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString m_dir;
    DirectoriProva m_factures; // billing: a client with vouchers, two done jobs in March 2009

    Sortida run(const QStringList &args) { return executaCli(args, m_dir); }
    Sortida factura(const QStringList &args) { return executaCli(args, m_factures.path()); }

    QStringList taula(const QString &sql)
    {
        auto s = m_factures.obreSessio();
        return dades_prova::files(s->db(), sql);
    }

    // Runs `sql` on the main data directory's database; answers how many jobs it then holds.
    qint64 totalFeines(const QString &sql = QString())
    {
        Db db;
        db.open(QDir(m_dir).filePath(Configuracio::nomFitxerBaseDades()));
        if (!sql.isEmpty())
            db.exec(sql);
        return dades_prova::valor(db, QStringLiteral("SELECT COUNT(*) FROM Feines"));
    }

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

        m_factures.posaParametre(QStringLiteral("ServeiXecs"), QStringLiteral("Neteja"));
        auto s = m_factures.obreSessio();
        Db &db = s->db();
        dades_prova::client(db, QStringLiteral("L'Estel"));
        db.exec(QStringLiteral("UPDATE Clients SET clients_xecs = 1"));
        dades_prova::lloc(db, QStringLiteral("Casa"), 60, QString(), QStringLiteral("L'Estel"));
        dades_prova::feina(db, QStringLiteral("Casa"), QDate(2009, 3, 2), QStringLiteral("09:00"), QStringLiteral("10:00"), {}, true);
        dades_prova::xec(db, 7, QStringLiteral("L'Estel"), 0, QDate());
        dades_prova::xec(db, 8, QStringLiteral("L'Estel"), 1, QDate(2009, 3, 31));
    }

    void exitCodes_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("codi");
        QTest::addColumn<QString>("err"); // what stderr says, pieces separated by '|'
        const auto row = [](const char *nom, QStringList args, int codi, const char *err) { QTest::newRow(nom) << args << codi << err; };
        row("unknown command", {"frobnicate"}, 2, "frobnicate");
        row("impossible date", {"job", "add", "--place", "X", "--date", "31/02/2031", "--start", "08:00"}, 2, "job");
        row("plan backwards", {"plan", "--from", "10/03/2009", "--to", "01/03/2009"}, 2, "plan");
        row("agenda unknown view", {"agenda", "--view", "setmanes"}, 2, "agenda [--view dia|setmana|mes]");
        row("overtime without date", {"overtime", "--resource", "Marta"}, 2, "--date");
        row("bad setting names key and value", {"config", "--data-dir", "%T/malament"}, 1, "MinutsCella|trenta");
        row("holiday import missing file", {"holiday", "import", "/no/such.ics"}, 1, "/no/such.ics");
        row("report neither pdf nor json", {"report", "overtime", "--month", "03/2031"}, 2, "--pdf");
        // Billing (%B: its data directory): usage errors show the usage; nothing is written.
        row("billing without month", {"billing", "--client", "L'Estel", "--data-dir", "%B"}, 2, "Ús:");
        row("settled voucher kept without --yes", {"voucher", "delete", "--id", "8", "--data-dir", "%B"}, 1, "");
    }

    void exitCodes()
    {
        QFETCH(QStringList, args);
        QFETCH(int, codi);
        QFETCH(QString, err);
        args.replaceInStrings(QStringLiteral("%T"), m_tmp.path());
        args.replaceInStrings(QStringLiteral("%B"), m_factures.path());
        const QStringList abans = taula(QStringLiteral("SELECT * FROM Xecs ORDER BY 1")) + taula(QStringLiteral("SELECT * FROM Pagaments"));
        const Sortida s = run(args);
        QCOMPARE(taula(QStringLiteral("SELECT * FROM Xecs ORDER BY 1")) + taula(QStringLiteral("SELECT * FROM Pagaments")), abans);
        QVERIFY2(s.codi == codi && !s.err.trimmed().isEmpty() && s.out.isEmpty(), qPrintable(QString::number(s.codi) + QLatin1Char(' ') + s.err));
        for (const QString &tros : err.split(QLatin1Char('|'), Qt::SkipEmptyParts))
            QVERIFY2(s.err.contains(tros), qPrintable(s.err));
    }

    // --json stands anywhere.
    void helpVersionAndOptionsAnywhere()
    {
        const Sortida s = run({"--help"});
        QVERIFY(s.codi == 0 && s.out.contains("init") && s.out.contains("config") && s.out.contains("job"));
        QVERIFY(run({"--version"}).out.startsWith("Quadrella 1.") && run({"--json", "config"}).json().value("data_dir") == m_dir);
    }

    // The keys of each command's JSON object; a report is {"pages": [{"number", "items"}]},
    // numbered from 1, each item a known drawing operation.
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
        const QStringList pages{"pages"};
        QTest::newRow("report overtime") << QStringList{"report", "overtime", "--month", "02/2009"} << pages;
        QTest::newRow("billing sheet") << QStringList{"billing", "--month", "03/2009", "--client", "L'ESTEL", "--data-dir", "%B"}
                                       << QStringList{"client", "factura", "mes", "pendents", "totals", "xecs"};
    }

    void jsonShapes()
    {
        QFETCH(QStringList, args);
        QFETCH(QStringList, claus);
        args.replaceInStrings(QStringLiteral("%B"), m_factures.path());
        const Sortida s = run(args << QStringLiteral("--json"));
        QVERIFY2(s.codi == 0, qPrintable(s.err));
        const QJsonObject o = s.json();
        for (const QString &clau : claus)
            QVERIFY2(o.contains(clau), qPrintable(clau + QStringLiteral(" in ") + s.out));
        QCOMPARE(o.size(), claus.size());
        const QJsonArray pagines = o.value("pages").toArray();
        for (int i = 0; i < pagines.size(); ++i) {
            QCOMPARE(pagines.at(i).toObject().value("number").toInt(), i + 1);
            const QJsonArray items = pagines.at(i).toObject().value("items").toArray();
            for (const QJsonValue &v : items)
                QVERIFY(QStringList({"text", "line", "box", "picture"}).contains(v.toObject().value("op").toString()));
        }
        QCOMPARE(pagines.isEmpty(), claus != QStringList{"pages"});
    }

    // Dates travel in ISO form, numbers and flags as JSON types; the agenda's cells carry their
    // four fields, one row per slot (one per week in the month view).
    void jsonValues()
    {
        const QJsonObject j = run({"job", "add", "--place", "Exemple escala", "--date", "04/03/2031", "--start", "10:00", "--json"}).json();
        QVERIFY(j.value("feines_id").isDouble() && j.value("feines_feta") == QJsonValue(false) && j.value("feines_data") == "2031-03-04");
        QCOMPARE(run({"job", "show", "--id", QString::number(j.value("feines_id").toInt()), "--json"}).json(), j);
        for (const auto &[vista, files] : {std::pair{"dia", 49}, std::pair{"mes", 7}}) {
            const QJsonArray cells = run({"agenda", "--view", vista, "--date", "05/03/2031", "--json"}).json().value("cells").toArray();
            QCOMPARE(cells.size(), files);
            QCOMPARE(QStringList(cells.at(1).toArray().at(1).toObject().keys()), QStringList({"bg", "bold", "text", "underline"}));
        }
    }

    // The terminal forms: the agenda as a table with its overtime row, the planning log with
    // plain line ends, its question on stderr, the last planned day moved; a dry run's shape,
    // which stores nothing and leaves the last planned day where the run before moved it.
    void textOutputAndDryRun()
    {
        Sortida s = run({"agenda", "--view", "dia", "--date", "2031-03-05"});
        QVERIFY(s.codi == 0 && s.out.contains("| 09:00 ") && s.out.contains("Exemple escala") && s.out.contains("Hores extra") && s.out.contains("1,50"));

        s = run({"plan", "--until", "31/03/2009"});
        QVERIFY(s.codi == 0 && s.out.startsWith(QStringLiteral("\nIniciant planificació periode: 01/03/2009 - 31/03/2009 ...\n")));
        QVERIFY(!s.out.contains(QLatin1Char('\r')) && s.err.contains(QStringLiteral("Vols generar les feines des del 01/03/2009 fins al 31/03/2009 ?")));

        const qint64 abans = totalFeines(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = 7, llocs_hora = '09:00'"));
        s = run({"plan", "--from", "2031-03-03", "--to", "2031-03-09", "--dry-run", "--json"});
        QVERIFY(s.codi == 0 && s.json().keys() == QStringList({"desde", "feines", "fins"}));
        QCOMPARE(s.json().value("feines").toArray().first().toObject().keys(),
                 QStringList({"feines_data", "feines_hora_inici", "llocs_nom", "missatge", "recursos_nom", "resultat"}));
        QCOMPARE(totalFeines(), abans);
        QCOMPARE(LlegirIni(m_dir + QStringLiteral("/Quadrella.ini"), "Estat", "UltimDiaGen", ""), QStringLiteral("31/03/2009"));
    }

    // A closed day typed in, then a year's list as JSON.
    void holidays()
    {
        QCOMPARE(run({"holiday", "add", "--date", "25/12/2027", "--text", "Nadal"}).codi, 0);
        QCOMPARE(run({"holiday", "list", "--year", "2027", "--json"}).document().array(),
                 QJsonArray({QJsonObject{{"data", "2027-12-25"}, {"descripcio", "Nadal"}}}));
    }

    // A PDF that cannot be written is a failure and leaves nothing behind, for a report drawn
    // with no display and for a billing commit, which then bills nothing.
    void pdfFiles()
    {
        const QString mal = m_tmp.filePath(QStringLiteral("no/hi/es/feina.pdf"));
        const Sortida e = executaCli({"report", "job", "--id", "1", "--pdf", mal}, m_dir, entornSensePantalla());
        QVERIFY2(e.codi == 1 && e.err.contains(QStringLiteral("Error:")) && !QFile::exists(mal), qPrintable(e.err));
        const QString pdf = m_tmp.filePath(QStringLiteral("feina.pdf"));
        QVERIFY(executaCli({"report", "job", "--id", "1", "--pdf", pdf}, m_dir, entornSensePantalla()).out.isEmpty());
        QVERIFY(QFileInfo(pdf).size() > 0);

        QCOMPARE(factura({"billing", "commit", "--month", "03/2009", "--client", "L'Estel", "--pdf", mal}).codi, 1);
        QCOMPARE(taula(QStringLiteral("SELECT COUNT(*) FROM Feines WHERE feines_data_factura IS NOT NULL")), QStringList{"0"});
    }

    // The billing sheet's rows, the vouchers' list and the commit's answer; a settled voucher
    // goes with --yes.
    void billing()
    {
        const QJsonArray files = factura({"--json", "billing", "--month", "03/2009", "--client", "L'ESTEL"}).json().value("factura").toArray();
        QCOMPARE(QStringList(files[0].toObject().keys()), (QStringList{"bg", "bold", "cells", "hidden"}));
        QCOMPARE(QStringList(factura({"voucher", "list", "--client", "L'Estel", "--json"}).document().array()[1].toObject().keys()),
                 (QStringList{"clients_nom", "feines_id", "xecs_data_entrega", "xecs_data_liquidat", "xecs_id", "xecs_valor"}));
        const QJsonObject o = factura({"billing", "commit", "--month", "03/2009", "--client", "L'Estel", "--json"}).json();
        QVERIFY2(o.value("feines_facturades").isDouble() && o.value("xecs_liquidats").isDouble(), qPrintable(QJsonDocument(o).toJson()));
        QCOMPARE(factura({"voucher", "delete", "--id", "8", "--yes"}).codi, 0);
        QCOMPARE(taula(QStringLiteral("SELECT xecs_id FROM Xecs")), QStringList{"7"});
    }


    // The purge deletes only with --yes (no terminal to ask), names its backup and compacts.
    void purge()
    {
        DirectoriProva dir;
        Sortida s = executaCli({"purge", "--until", "2008-12-31"}, dir.path());
        QVERIFY(s.codi == 1 && s.err.contains("Purga cancel·lada") && QDir(dir.path()).entryList({"QuadrellaV01[0-9]*.db"}).isEmpty());
        s = executaCli({"purge", "--until", "31/12/2008", "--yes"}, dir.path());
        const QStringList copies = QDir(dir.path()).entryList({"QuadrellaV01[0-9]*.db"});
        QVERIFY2(s.codi == 0 && copies.size() == 1 && s.out.contains(copies.first()) && s.out.contains("Base de dades compactada:"),
                 qPrintable(s.err));
    }

    // Messages in the configured language; the desktop program refuses to start without a display.
    void languageAndDisplay()
    {
        DirectoriProva dir;
        dir.posaParametre(QStringLiteral("Idioma"), QStringLiteral("ES"));
        QCOMPARE(executaCli({"job", "show", "--id", "9"}, dir.path()).err.trimmed(), QStringLiteral("Trabajo no encontrado"));
        const Sortida s = executaCli({}, dir.path(), entornSensePantalla());
        QVERIFY2(s.codi == 1 && s.err.contains("quadrella purge --until D [--yes]"), qPrintable(s.err));
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
