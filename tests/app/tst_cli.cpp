// The command line as a user runs it: options anywhere, exit codes (0 done, 1 refused or failed,
// 2 usage) with the message on stderr, and the shape of each command's output. The rules behind
// the commands are the engine tests' business.
#include "core/ini.h"
#include "support/entorn_proves.h"
#include "support/execucio_cli.h"

#include <QDir>
#include <QJsonArray>
#include <QStandardPaths>
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
        QFile bloc(m_tmp.filePath(QStringLiteral("fitxer")));
        QVERIFY(bloc.open(QIODevice::WriteOnly));

        m_factures.posaParametre(QStringLiteral("ServeiXecs"), QStringLiteral("Neteja"));
        m_factures.posaParametre(QStringLiteral("MaxXecsMes"), QStringLiteral("4"));
        auto s = m_factures.obreSessio();
        Db &db = s->db();
        dades_prova::client(db, QStringLiteral("L'Estel"));
        db.exec(QStringLiteral("UPDATE Clients SET clients_xecs = 1"));
        dades_prova::lloc(db, QStringLiteral("Casa"), 60, QString(), QStringLiteral("L'Estel"));
        dades_prova::lloc(db, QStringLiteral("Bloc"), 60, QString(), QStringLiteral("L'Estel"));
        db.exec(QStringLiteral("UPDATE Llocs SET llocs_quota = 45 WHERE llocs_nom = 'Bloc'"));
        dades_prova::feina(db, QStringLiteral("Casa"), QDate(2009, 3, 2), QStringLiteral("09:00"), QStringLiteral("10:00"), {}, true);
        dades_prova::feina(db, QStringLiteral("Bloc"), QDate(2009, 3, 3), QStringLiteral("09:00"), QStringLiteral("10:00"), {}, true);
        db.exec(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_preu_un)"
                               " VALUES (1, 'Neteja', 2, 12)"));
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
        row("unknown option", {"config", "--bogus"}, 2, "--bogus");
        row("job without action", {"job"}, 2, "job");
        row("impossible date", {"job", "add", "--place", "X", "--date", "31/02/2031", "--start", "08:00"}, 2, "job");
        row("end past 24:00", {"job", "modify", "--id", "1", "--end", "25:00"}, 2, "job");
        row("find without minute", {"job", "find", "--place", "X", "--date", "2031-03-05"}, 2, "job");
        row("place refused", {"job", "add", "--place", "Golf", "--date", "2031-03-05", "--start", "08:00"}, 1, "Lloc 'Golf' inexistent");
        row("job not found", {"job", "show", "--id", "99999"}, 1, "Feina no trobada");
        row("plan both forms", {"plan", "--until", "01/03/2009", "--from", "01/03/2009", "--to", "02/03/2009"}, 2, "plan");
        row("plan backwards", {"plan", "--from", "10/03/2009", "--to", "01/03/2009"}, 2, "plan");
        row("agenda unknown view", {"agenda", "--view", "setmanes"}, 2, "agenda [--view dia|setmana|mes]");
        row("overtime without date", {"overtime", "--resource", "Marta"}, 2, "--date");
        row("bad setting names key and value", {"config", "--data-dir", "%T/malament"}, 1, "MinutsCella|trenta");
        row("holiday without action", {"holiday"}, 2, "holiday");
        row("holiday import missing file", {"holiday", "import", "/no/such.ics"}, 1, "/no/such.ics");
        row("holiday delete a day not closed", {"holiday", "delete", "--date", "01/01/2031"}, 1, "01/01/2031");
        row("report neither pdf nor json", {"report", "overtime", "--month", "03/2031"}, 2, "--pdf");
        row("report unknown kind", {"report", "invoices", "--json"}, 2, "invoices");
        row("report unknown resource", {"report", "jobs", "--resource", "Ningú", "--json"}, 1, "Ningú");
        // Billing (%B: its data directory): usage errors show the usage; nothing is written.
        row("billing without month", {"billing", "--client", "L'Estel", "--data-dir", "%B"}, 2, "Ús:");
        row("billing PDF without a commit", {"billing", "--month", "03/2009", "--pdf", "x.pdf", "--data-dir", "%B"}, 2, "Ús:");
        row("billing commit without a client", {"billing", "commit", "--month", "03/2009", "--data-dir", "%B"}, 2, "Ús:");
        row("billing unknown client", {"billing", "--month", "03/2009", "--client", "Ningú", "--data-dir", "%B"}, 1, "");
        row("payment not a number", {"payment", "--client", "L'Estel", "--month", "03/2009", "--set", "abc", "--data-dir", "%B"}, 2, "Ús:");
        row("voucher number taken", {"voucher", "add", "--client", "L'Estel", "--id", "7", "--value", "10", "--data-dir", "%B"}, 1, "");
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
        QVERIFY2(s.codi == codi && !s.err.trimmed().isEmpty(), qPrintable(QString::number(s.codi) + QLatin1Char(' ') + s.err));
        for (const QString &tros : err.split(QLatin1Char('|'), Qt::SkipEmptyParts))
            QVERIFY2(s.err.contains(tros), qPrintable(s.err));
        QCOMPARE(s.out, QString());
    }

    void helpVersionAndWhereTheDirectoryComesFrom()
    {
        const Sortida s = run({"--help"});
        QVERIFY(s.codi == 0 && s.out.contains("init") && s.out.contains("config") && s.out.contains("job"));
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
        const Sortida init = run({"init"});
        QVERIFY(init.codi == 0 && !init.out.contains("Creat:"));
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
        QTest::newRow("report job") << QStringList{"report", "job", "--id", "1"} << pages;
        QTest::newRow("report invoice") << QStringList{"report", "invoice", "--client", "Client Particular", "--month", "02/2009"} << pages;
        QTest::newRow("report vouchers") << QStringList{"report", "vouchers", "--month", "02/2009"} << pages;
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
        const QJsonArray pagines = o.value("pages").toArray();
        for (int i = 0; i < pagines.size(); ++i) {
            QCOMPARE(pagines.at(i).toObject().value("number").toInt(), i + 1);
            const QJsonArray items = pagines.at(i).toObject().value("items").toArray();
            QVERIFY(!items.isEmpty());
            for (const QJsonValue &v : items)
                QVERIFY(QStringList({"text", "line", "box", "picture"}).contains(v.toObject().value("op").toString()));
        }
        QCOMPARE(pagines.isEmpty(), claus != QStringList{"pages"});
    }

    // Dates, times and numbers travel in ISO form and as JSON types; the agenda's cells carry
    // their four fields, one row per slot (one per week in the month view).
    void jsonValues()
    {
        const QJsonObject j = run({"job", "add", "--place", "Exemple escala", "--date", "04/03/2031", "--start", "10:00", "--json"}).json();
        QVERIFY(j.value("feines_id").isDouble() && j.value("feines_feta") == QJsonValue(false));
        QCOMPARE(j.value("feines_data").toString() + j.value("feines_data_factura").toString(), QStringLiteral("2031-03-04"));
        QCOMPARE(run({"job", "show", "--id", QString::number(j.value("feines_id").toInt()), "--json"}).json(), j);

        QCOMPARE(run({"config", "--json"}).json().value("settings").toObject().value("UltimDiaGen").toString(), QStringLiteral("2009-02-28"));

        for (const auto &[vista, files] : {std::pair{"dia", 49}, std::pair{"setmana", 49}, std::pair{"mes", 7}}) {
            const QJsonArray cells = run({"agenda", "--view", vista, "--date", "05/03/2031", "--json"}).json().value("cells").toArray();
            QCOMPARE(cells.size(), files);
            const QJsonObject cella = cells.at(1).toArray().at(1).toObject();
            QCOMPARE(QStringList(cella.keys()), QStringList({"bg", "bold", "text", "underline"}));
            QVERIFY(cella.value("bold").isBool() && cella.value("underline").isBool());
        }
        const QJsonObject dia = run({"agenda", "--view", "dia", "--date", "05/03/2031", "--json"}).json();
        QCOMPARE(dia.value("hores").toArray().toVariantList(), QVariantList({"0,00", "1,50", "", "", "", "", ""}));
        QCOMPARE(dia.value("cells").toArray().at(19).toArray().at(1).toObject().value("bg"), QJsonValue(65535)); // Marta's colour
    }

    // The terminal forms: the agenda as a table with its overtime row, the planning log with
    // plain line ends, its question on stderr, the last planned day moved; a dry run's shape,
    // which stores nothing and leaves the last planned day alone.
    void textOutputAndDryRun()
    {
        Sortida s = run({"agenda", "--view", "dia", "--date", "2031-03-05"});
        QVERIFY(s.codi == 0 && s.out.contains("| 09:00 ") && s.out.contains("Exemple escala"));
        QVERIFY(s.out.contains("Hores extra") && s.out.contains("1,50"));

        s = run({"plan", "--until", "31/03/2009"});
        QVERIFY(s.codi == 0 && s.out.startsWith(QStringLiteral("\nIniciant planificació periode: 01/03/2009 - 31/03/2009 ...\n")));
        QVERIFY(s.out.endsWith(QStringLiteral("feines planificades.\n\n\nFINALITZACIO CORRECTA!!!\n")));
        QVERIFY(!s.out.contains(QLatin1Char('\r')));
        QVERIFY(s.err.contains(QStringLiteral("Vols generar les feines des del 01/03/2009 fins al 31/03/2009 ?")));
        QCOMPARE(LlegirIni(m_dir + QStringLiteral("/Quadrella.ini"), "Estat", "UltimDiaGen", ""), QStringLiteral("31/03/2009"));
        s = run({"plan", "--until", "2009-03-31"});
        QCOMPARE(s.out, QStringLiteral("No hi ha res a planificar: l'últim dia planificat és el 31/03/2009\n"));

        const qint64 abans = totalFeines(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = 7, llocs_hora = '09:00'"));
        s = run({"plan", "--from", "2031-03-03", "--to", "2031-03-09", "--dry-run", "--json"});
        QCOMPARE(s.codi, 0);
        QCOMPARE(s.json().keys(), QStringList({"desde", "feines", "fins"}));
        QCOMPARE(s.json().value("desde").toString() + s.json().value("fins").toString(), QStringLiteral("2031-03-032031-03-09"));
        QCOMPARE(s.json().value("feines").toArray().first().toObject().keys(),
                 QStringList({"feines_data", "feines_hora_inici", "llocs_nom", "missatge", "recursos_nom", "resultat"}));
        QCOMPARE(totalFeines(), abans);
        QCOMPARE(LlegirIni(m_dir + QStringLiteral("/Quadrella.ini"), "Estat", "UltimDiaGen", ""), QStringLiteral("31/03/2009"));
    }

    // Import with a skipped event on stderr; add; a year's list as JSON.
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
        QCOMPARE(run({"holiday", "list", "--year", "2027", "--json"}).document().array(),
                 QJsonArray({QJsonObject{{"data", "2027-12-25"}, {"descripcio", "Nadal"}}}));
    }

    // A report's PDF reads back with pdftotext; a file that cannot be written is a failure and
    // nothing is left behind. Reports draw with no display at all.
    void reportPdf()
    {
        const QString mal = m_tmp.filePath(QStringLiteral("no/hi/es/feina.pdf"));
        const Sortida e = executaCli({"report", "job", "--id", "1", "--pdf", mal}, m_dir, entornSensePantalla());
        QCOMPARE(e.codi, 1);
        QVERIFY(e.err.contains(QStringLiteral("Error:")));
        QVERIFY(!QFile::exists(mal));
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        const QString pdf = m_tmp.filePath(QStringLiteral("feina.pdf"));
        const Sortida r = executaCli({"report", "job", "--id", "1", "--pdf", pdf}, m_dir, entornSensePantalla());
        QVERIFY(r.codi == 0 && r.out.isEmpty());
        QProcess text;
        text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
        QVERIFY(text.waitForFinished(30000));
        const QString llegit = QString::fromUtf8(text.readAllStandardOutput());
        for (const char *esperat : {"Detall de la feina nro.: 1", "Lloc:", "IMPORT FEINA:", "€", "pàg. 1"})
            QVERIFY2(llegit.contains(QString::fromUtf8(esperat)), esperat);
    }

    // The billing sheet's, the payment's and the vouchers' JSON; the commit answers with the
    // rebuilt sheets; a PDF that cannot be written bills nothing, one that can is written.
    void billing()
    {
        QJsonObject o = factura({"--json", "billing", "--month", "03/2009", "--client", "L'ESTEL"}).json();
        QCOMPARE(QStringList(o.keys()), (QStringList{"client", "factura", "mes", "pendents", "totals", "xecs"}));
        QCOMPARE(o.value("client").toString() + o.value("mes").toString(), QStringLiteral("L'Estel03/2009"));
        const QJsonArray files = o.value("factura").toArray();
        QCOMPARE(files.size(), 5); // a line and a total for each job, the fee row
        QCOMPARE(QStringList(files[0].toObject().keys()), (QStringList{"bg", "bold", "cells", "hidden"}));
        QCOMPARE(files[0].toObject().value("cells").toArray().size(), 10);

        o = factura({"payment", "--client", "L'Estel", "--month", "03/2009", "--set", "150,456", "--json"}).json();
        QCOMPARE(QStringList(o.keys()), (QStringList{"clients_nom", "mes", "pagaments_import"}));
        QCOMPARE(o.value("pagaments_import").toDouble(), 150.46);
        const QJsonArray xecs = factura({"voucher", "list", "--client", "L'Estel", "--json"}).document().array();
        QCOMPARE(QStringList(xecs[1].toObject().keys()),
                 (QStringList{"clients_nom", "feines_id", "xecs_data_entrega", "xecs_data_liquidat", "xecs_id", "xecs_valor"}));

        const QString mal = m_factures.path() + QStringLiteral("/no/hi/es/f.pdf");
        QCOMPARE(factura({"billing", "commit", "--month", "03/2009", "--client", "L'Estel", "--pdf", mal}).codi, 1);
        QCOMPARE(taula(QStringLiteral("SELECT COUNT(*) FROM Feines WHERE feines_data_factura IS NOT NULL")), QStringList{"0"});
        const QString pdf = m_factures.path() + QStringLiteral("/f.pdf");
        QCOMPARE(factura({"billing", "commit", "--month", "03/2009", "--client", "L'Estel", "--pdf", pdf}).codi, 0);
        QVERIFY(QFileInfo(pdf).size() > 0);
        o = factura({"billing", "commit", "--month", "03/2009", "--client", "L'Estel", "--json"}).json();
        QCOMPARE(o.value("feines_facturades").toInt(), 2);
        QCOMPARE(o.value("xecs_liquidats").toInt(), 2);
        QCOMPARE(factura({"voucher", "delete", "--id", "8", "--yes"}).codi, 0);
        QCOMPARE(taula(QStringLiteral("SELECT xecs_id FROM Xecs")), QStringList{"7"});
    }

    // A planning run stopped by a database error exits with 1, its message on stderr.
    void planFailure()
    {
        DirectoriProva dir;
        dir.obreSessio()->db().exec(QStringLiteral("ALTER TABLE Llocs RENAME TO Llocs_fora"));
        const Sortida s = executaCli({"plan", "--from", "01/05/2009", "--to", "31/05/2009"}, dir.path());
        QCOMPARE(s.codi, 1);
        QVERIFY(s.out.endsWith(QStringLiteral("\n\n\nFINALITZACIO AMB ERRORS!!!\n")));
        QVERIFY(s.err.contains(QStringLiteral("Error en Planificar_Feines:")));
    }

    // The purge deletes only with --yes (no terminal to ask), names its backup and compacts.
    void purge()
    {
        DirectoriProva dir;
        Sortida s = executaCli({"purge", "--until", "2008-12-31"}, dir.path());
        QCOMPARE(s.codi, 1);
        QVERIFY(s.err.contains("Purga cancel·lada"));
        QVERIFY(QDir(dir.path()).entryList({"QuadrellaV01[0-9]*.db"}).isEmpty());
        s = executaCli({"purge", "--until", "31/12/2008", "--yes"}, dir.path());
        QVERIFY2(s.codi == 0, qPrintable(s.err));
        const QStringList copies = QDir(dir.path()).entryList({"QuadrellaV01[0-9]*.db"});
        QCOMPARE(copies.size(), 1);
        QVERIFY(s.out.contains(copies.first()) && s.out.contains("Base de dades compactada:"));
    }

    // Messages in the configured language; the desktop program refuses to start without a display.
    void languageAndDisplay()
    {
        DirectoriProva dir;
        dir.posaParametre(QStringLiteral("Idioma"), QStringLiteral("ES"));
        QCOMPARE(executaCli({"job", "show", "--id", "9"}, dir.path()).err.trimmed(), QStringLiteral("Trabajo no encontrado"));
        const Sortida s = executaCli({}, dir.path(), entornSensePantalla());
        QCOMPARE(s.codi, 1);
        QVERIFY2(s.err.contains("quadrella purge --until D [--yes]"), qPrintable(s.err));
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
