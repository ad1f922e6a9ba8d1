// The schema and the data layer: every table and column, keys that ignore case (Unicode too),
// bound values, Null reads, transactions and errors.
#include "core/db.h"
#include "core/directori_dades.h"

#include <QTemporaryDir>
#include <QtTest>

class TestEsquema : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    Db m_db;

private slots:
    void initTestCase()
    {
        m_db.open(m_dir.filePath("schema.db"));
        directori_dades::creaEsquema(m_db);
    }

    void everyTableAndColumn_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QStringList>("columns");
        QTest::newRow("Clients") << "Clients" << QStringList{"clients_nom", "clients_NIF", "clients_adreça", "clients_codi_postal", "clients_poblacio", "clients_telefons", "clients_email", "clients_ccc", "clients_data_alta", "clients_xecs", "clients_observacions"};
        QTest::newRow("Llocs") << "Llocs" << QStringList{"llocs_nom", "clients_nom", "llocs_adreça", "llocs_poblacio", "llocs_telefon", "llocs_minuts_previst", "recursos_nom", "llocs_observacions", "llocs_periodicitat_dies", "llocs_primer_dia_mes", "llocs_ultim_dia_mes", "llocs_dia_setmana", "llocs_dissabte", "llocs_diumenge", "llocs_hora", "llocs_quota", "llocs_festius"};
        QTest::newRow("Recursos") << "Recursos" << QStringList{"recursos_nom", "recursos_grup", "recursos_color", "recursos_assigna_temps"};
        QTest::newRow("Recursos_Components") << "Recursos_Components" << QStringList{"recursos_nom", "recursos_component_nom"};
        QTest::newRow("Serveis") << "Serveis" << QStringList{"serveis_nom", "serveis_descripcio", "serveis_unitat", "serveis_preu_un", "serveis_minuts_per_unitat", "serveis_comu_per_recursos"};
        QTest::newRow("Llocs_Serveis") << "Llocs_Serveis" << QStringList{"llocs_nom", "serveis_nom", "llocs_serveis_descripcio", "llocs_serveis_quantitat", "llocs_serveis_preu_un"};
        QTest::newRow("Feines") << "Feines" << QStringList{"feines_id", "llocs_nom", "feines_data", "feines_hora_inici", "feines_hora_fi", "recursos_nom", "feines_feta", "feines_data_factura", "feines_quota", "feines_observacions"};
        QTest::newRow("Feines_Detall") << "Feines_Detall" << QStringList{"feines_id", "serveis_nom", "feines_detall_descripcio", "feines_detall_quantitat", "feines_detall_unitat", "feines_detall_preu_un"};
        QTest::newRow("Xecs") << "Xecs" << QStringList{"xecs_id", "clients_nom", "feines_id", "xecs_data_entrega", "xecs_data_liquidat", "xecs_valor"};
        QTest::newRow("Pagaments") << "Pagaments" << QStringList{"clients_nom", "pagaments_mes", "pagaments_import"};
        QTest::newRow("Hores_Fetes") << "Hores_Fetes" << QStringList{"recursos_nom", "hores_data", "hores_quantitat"};
        QTest::newRow("Festius") << "Festius" << QStringList{"festius_data", "festius_descripcio"};
    }

    void everyTableAndColumn()
    {
        QFETCH(QString, table);
        QFETCH(QStringList, columns);
        QVERIFY(m_db.tableExists(table));
        QCOMPARE(m_db.columns(table), columns);
    }

    void storageTypes()
    {
        Query q = m_db.query("SELECT name, type FROM pragma_table_info('Feines')");
        QHash<QString, QString> types;
        while (q.next())
            types.insert(q.text(0), q.text(1));
        QCOMPARE(types["feines_id"], QString("INTEGER"));
        QCOMPARE(types["feines_data"], QString("TEXT"));
        QCOMPARE(types["feines_feta"], QString("INTEGER"));
        QCOMPARE(types["feines_quota"], QString("REAL"));
    }

    void nameKeysIgnoreCase()
    {
        Transaction t(m_db);
        m_db.query("INSERT INTO Recursos (recursos_nom, recursos_color) VALUES (?, ?)").bind("Àngels").bind(1).exec();
        bool refused = false;
        try {
            m_db.query("INSERT INTO Recursos (recursos_nom, recursos_color) VALUES (?, ?)").bind("ÀNGELS").bind(2).exec();
        } catch (const DbError &e) {
            refused = true;
            QVERIFY2(e.text().contains("UNIQUE"), qPrintable(e.text()));
        }
        QVERIFY(refused);
        Query q = m_db.query("SELECT recursos_color FROM Recursos WHERE recursos_nom = ?");
        q.bind("àngels").exec();
        QVERIFY(q.next());
        QCOMPARE(q.integer(0), 1);
        // The pair keys too.
        m_db.query("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES (?, ?)").bind("Oficina").bind("Neteja").exec();
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES (?, ?)").bind("OFICINA").bind("neteja").exec());
        t.commit();
    }

    void accentedNamesSortAmongTheirLetters()
    {
        Db db;
        db.open(m_dir.filePath("order.db"));
        db.exec("CREATE TABLE T (nom TEXT COLLATE QNOCASE PRIMARY KEY)");
        for (const char *n : {"L'Estel", "Àngels", "Zoe", "angels", "ÉS", "Ebre", "Ona"})
            db.query("INSERT INTO T VALUES (?)").bind(QString::fromUtf8(n)).exec();
        QCOMPARE(db.query("SELECT nom FROM T ORDER BY nom").columna(),
                 QStringList({"angels", "Àngels", "Ebre", "ÉS", "L'Estel", "Ona", "Zoe"}));
        // Case folds, accents do not: "àngels" finds Àngels only.
        Query q = db.query("SELECT nom FROM T WHERE nom = ?");
        q.bind(QString::fromUtf8("ÀNGELS")).exec();
        QCOMPARE(q.columna(), QStringList{QString::fromUtf8("Àngels")});
        // The index agrees with the comparison.
        QCOMPARE(db.query("PRAGMA integrity_check").columna(), QStringList{"ok"});
    }

    void quotesNeedNoEscaping()
    {
        m_db.query("INSERT INTO Clients (clients_nom, clients_xecs) VALUES (?, 0)").bind("L'Estel").exec();
        Query q = m_db.query("SELECT clients_nom, clients_NIF, clients_xecs, clients_data_alta FROM Clients WHERE clients_nom = ?");
        q.bind("l'estel").exec();
        QVERIFY(q.next());
        QCOMPARE(q.text("clients_nom"), QString("L'Estel"));
        // Null reads as "" / 0 / an invalid date.
        QCOMPARE(q.text("clients_NIF"), QString());
        QCOMPARE(q.integer("clients_xecs"), 0);
        QVERIFY(!q.date("clients_data_alta").isValid());
        m_db.query("DELETE FROM Clients WHERE clients_nom = ?").bind("L'ESTEL").exec();
        QCOMPARE(m_db.query("SELECT count(*) FROM Clients").exec().next(), true);
    }

    void voucherDeliveryDateDefaultsToToday()
    {
        m_db.query("INSERT INTO Xecs (xecs_id, clients_nom, xecs_valor) VALUES (?, ?, ?)").bind(12).bind("L'Estel").bind(10.5).exec();
        Query q = m_db.query("SELECT xecs_data_entrega, feines_id FROM Xecs WHERE xecs_id = 12");
        QVERIFY(q.next());
        QCOMPARE(q.date(0), QDate::currentDate());
        QVERIFY(q.value(1).isNull());
    }

    void jobLinesGoWithTheirJob()
    {
        Query ins = m_db.query("INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi) VALUES (?, ?, ?, ?)");
        ins.bind("Oficina").bind(QDate(2009, 3, 3)).bind("09:00").bind("10:00").exec();
        const qint64 id = ins.lastInsertId();
        QVERIFY(id > 0);
        m_db.query("INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (?, 'Neteja')").bind(id).exec();
        Query d = m_db.query("SELECT feines_data FROM Feines WHERE feines_id = ?");
        d.bind(id).exec();
        QVERIFY(d.next());
        QCOMPARE(d.text(0), QString("2009-03-03")); // dates bind as ISO whatever the locale
        m_db.query("DELETE FROM Feines WHERE feines_id = ?").bind(id).exec();
        Query c = m_db.query("SELECT count(*) FROM Feines_Detall WHERE feines_id = ?");
        c.bind(id).exec();
        QVERIFY(c.next());
        QCOMPARE(c.integer(0), 0);
    }

    void transactionsRollBackUnlessCommitted()
    {
        {
            Transaction outer(m_db);
            m_db.query("INSERT INTO Serveis (serveis_nom) VALUES ('A')").exec();
            {
                Transaction inner(m_db);
                m_db.query("INSERT INTO Serveis (serveis_nom) VALUES ('B')").exec();
                // not committed: only B goes
            }
            outer.commit();
        }
        {
            Transaction t(m_db);
            m_db.query("INSERT INTO Serveis (serveis_nom) VALUES ('C')").exec();
        }
        Query q = m_db.query("SELECT group_concat(serveis_nom, ',') FROM (SELECT serveis_nom FROM Serveis ORDER BY 1)");
        QVERIFY(q.next());
        QCOMPARE(q.text(0), QString("A"));
        QCOMPARE(m_db.transactionDepth(), 0);
    }

    void missingTableOrColumnIsAnError()
    {
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("SELECT * FROM NoTable"));
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("SELECT no_column FROM Feines"));
        Query q = m_db.query("SELECT feines_id FROM Feines");
        QVERIFY_THROWS_EXCEPTION(DbError, q.text("missing_column"));
        try {
            m_db.query("SELECT * FROM NoTable");
        } catch (const DbError &e) {
            QVERIFY2(e.text().contains("NoTable"), qPrintable(e.text()));
        }
    }

    void cachedStatementsAreReused()
    {
        for (int i = 0; i < 3; ++i) {
            Query q = m_db.prepared("SELECT ? + 1");
            q.bind(i).exec();
            QVERIFY(q.next());
            QCOMPARE(q.integer(0), i + 1);
        }
    }

    void walOnLocalDisk()
    {
        Query q = m_db.query("PRAGMA journal_mode");
        QVERIFY(q.next());
        QCOMPARE(q.text(0).toLower(), QString("wal"));
        Query fk = m_db.query("PRAGMA foreign_keys");
        QVERIFY(fk.next());
        QCOMPARE(fk.integer(0), 1);
    }

    void notADatabase()
    {
        const QString path = m_dir.filePath("text.db");
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("this is not a database file at all, just some text that goes on and on");
        f.close();
        Db db;
        QVERIFY_THROWS_EXCEPTION(DbError, db.open(path));
        QVERIFY(!db.isOpen());
    }
};

QTEST_GUILESS_MAIN(TestEsquema)
#include "tst_esquema.moc"
