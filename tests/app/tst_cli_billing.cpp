// `quadrella billing`, `payment` and `voucher` as a user runs them: what is a usage error, what
// the system refuses, and the JSON shapes. The figures themselves are the engine tests' business.
#include "support/entorn_proves.h"
#include "support/execucio_cli.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

namespace {

QStringList claus(const QJsonObject &o)
{
    QStringList k = o.keys();
    k.sort();
    return k;
}

} // namespace

class TestCliBilling : public QObject {
    Q_OBJECT

    std::unique_ptr<DirectoriProva> m_dir;

    SortidaCli run(const QStringList &args) { return executaCli(args, m_dir->path()); }

    QStringList taula(const char *sql)
    {
        auto s = m_dir->obreSessio();
        return dades_prova::files(s->db(), QString::fromUtf8(sql));
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre(QStringLiteral("ServeiXecs"), QStringLiteral("Neteja"));
        m_dir->posaParametre(QStringLiteral("MaxXecsMes"), QStringLiteral("4"));
        auto s = m_dir->obreSessio();
        Db &db = s->db();
        dades_prova::client(db, QStringLiteral("L'Estel"));
        dades_prova::client(db, QStringLiteral("Sense xecs"));
        db.exec(QStringLiteral("UPDATE Clients SET clients_xecs = 1 WHERE clients_nom = 'L''Estel'"));
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

    void codis_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("codi");
        const auto row = [](const char *nom, QStringList a, int c) { QTest::newRow(nom) << a << c; };
        row("a client's month", {"billing", "--month", "03/2009", "--client", "l'estel", "--pending"}, 0);
        row("every client", {"billing", "--month", "03/2009"}, 0);
        row("no month", {"billing", "--client", "L'Estel"}, 2);
        row("a month without its zero", {"billing", "--month", "3/2009"}, 2);
        row("unknown subcommand", {"billing", "close", "--month", "03/2009"}, 2);
        row("a PDF without a commit", {"billing", "--month", "03/2009", "--pdf", "x.pdf"}, 2);
        row("a commit without a client", {"billing", "commit", "--month", "03/2009"}, 2);
        row("an unknown client", {"billing", "--month", "03/2009", "--client", "Ningú"}, 1);
        row("payment not a number", {"payment", "--client", "L'Estel", "--month", "03/2009", "--set", "abc"}, 2);
        row("payment of an unknown client", {"payment", "--client", "Ningú", "--month", "03/2009", "--set", "1"}, 1);
        row("voucher without subcommand", {"voucher", "--client", "L'Estel"}, 2);
        row("voucher number taken", {"voucher", "add", "--client", "L'Estel", "--id", "7", "--value", "10"}, 1);
        row("settled voucher kept without --yes", {"voucher", "delete", "--id", "8"}, 1);
    }

    // Usage errors exit 2 with the usage, refusals 1 with the message; nothing is written.
    void codis()
    {
        QFETCH(QStringList, args);
        QFETCH(int, codi);
        const QStringList abans = taula("SELECT * FROM Xecs ORDER BY 1") + taula("SELECT * FROM Pagaments");
        const SortidaCli s = run(args);
        QCOMPARE(s.codi, codi);
        if (codi == 2)
            QVERIFY2(s.err.contains(QStringLiteral("Ús:")), qPrintable(s.err));
        if (codi == 1)
            QVERIFY(!s.err.trimmed().isEmpty());
        QCOMPARE(taula("SELECT * FROM Xecs ORDER BY 1") + taula("SELECT * FROM Pagaments"), abans);
    }

    void formesJson()
    {
        SortidaCli s = run({"--json", "billing", "--month", "03/2009", "--client", "L'ESTEL"});
        QCOMPARE(s.codi, 0);
        QJsonObject o = s.json();
        QCOMPARE(claus(o), (QStringList{"client", "factura", "mes", "pendents", "totals", "xecs"}));
        QCOMPARE(o.value("client").toString(), QStringLiteral("L'Estel"));
        QCOMPARE(o.value("mes").toString(), QStringLiteral("03/2009"));
        QCOMPARE(claus(o.value("totals").toObject()),
                 (QStringList{"TotalFacturar", "TotalNXecs", "TotalPagaments", "TotalServeis", "TotalXecs"}));
        const QJsonArray factura = o.value("factura").toArray();
        QCOMPARE(factura.size(), 5); // a line and a total for each job, the fee row
        for (const QJsonValue &v : factura) {
            const QJsonObject fila = v.toObject();
            QCOMPARE(claus(fila), (QStringList{"bg", "bold", "cells", "hidden"}));
            for (const char *k : {"bg", "bold", "cells", "hidden"})
                QCOMPARE(fila.value(k).toArray().size(), 10);
        }
        QCOMPARE(o.value("xecs").toArray().size(), 2);

        s = run({"payment", "--client", "L'Estel", "--month", "03/2009", "--set", "150,456", "--json"});
        QCOMPARE(s.codi, 0);
        o = s.json();
        QCOMPARE(claus(o), (QStringList{"clients_nom", "mes", "pagaments_import"}));
        QCOMPARE(o.value("pagaments_import").toDouble(), 150.46);
        s = run({"payment", "--client", "L'Estel", "--month", "03/2009", "--set", "", "--json"});
        QCOMPARE(s.json().value("pagaments_import").toDouble(), 0.0);

        s = run({"voucher", "list", "--client", "L'Estel", "--json"});
        QCOMPARE(s.codi, 0);
        const QJsonArray xecs = s.document().array();
        QCOMPARE(xecs.size(), 2);
        QCOMPARE(claus(xecs[0].toObject()),
                 (QStringList{"clients_nom", "feines_id", "xecs_data_entrega", "xecs_data_liquidat", "xecs_id", "xecs_valor"}));
        QCOMPARE(xecs[0].toObject().value("xecs_data_liquidat").toString(), QStringLiteral("2009-03-31"));
    }

    // The commit answers with the rebuilt sheets; a PDF that cannot be written bills nothing, one
    // that can holds the invoice data of what was billed.
    void factura()
    {
        const QString mal = m_dir->path() + QStringLiteral("/no/hi/es/f.pdf");
        SortidaCli s = run({"billing", "commit", "--month", "03/2009", "--client", "L'Estel", "--pdf", mal});
        QCOMPARE(s.codi, 1);
        QCOMPARE(taula("SELECT COUNT(*) FROM Feines WHERE feines_data_factura IS NOT NULL"), QStringList{"0"});
        const QString pdf = m_dir->path() + QStringLiteral("/f.pdf");
        s = run({"billing", "commit", "--month", "03/2009", "--client", "L'Estel", "--pdf", pdf});
        QCOMPARE(s.codi, 0);
        QVERIFY(QFileInfo(pdf).size() > 0);
        s = run({"billing", "commit", "--month", "03/2009", "--client", "L'Estel", "--json"});
        QCOMPARE(s.codi, 0);
        const QJsonObject o = s.json();
        QCOMPARE(o.value("feines_facturades").toInt(), 2);
        QCOMPARE(o.value("xecs_liquidats").toInt(), 2);
        QCOMPARE(o.value("factura").toArray()[0].toObject().value("cells").toArray()[5].toString(),
                 QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
        s = run({"voucher", "delete", "--id", "8", "--yes"});
        QCOMPARE(s.codi, 0);
        QCOMPARE(taula("SELECT xecs_id FROM Xecs"), QStringList{"7"});
    }
};

QTEST_GUILESS_MAIN(TestCliBilling)
#include "tst_cli_billing.moc"
