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

    QStringList columna(const QString &sql, const QVariant &valor)
    {
        Query q = m_db.query(sql);
        q.bind(valor).exec();
        return q.columna();
    }

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
        QVERIFY(m_db.tableExists(table));
        QTEST(m_db.columns(table), "columns");
    }

    // Case folds, accents do not; accented names sort among their letters, and the index agrees.
    void nameKeysIgnoreCaseOnly()
    {
        for (const char *n : {"L'Estel", "Àngels", "Zoe", "angels", "ÉS", "Ebre", "Ona"})
            m_db.query("INSERT INTO Recursos (recursos_nom, recursos_color) VALUES (?, 1)").bind(QString::fromUtf8(n)).exec();
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("INSERT INTO Recursos (recursos_nom, recursos_color) VALUES ('ÀNGELS', 2)").exec());
        QCOMPARE(m_db.query("SELECT recursos_nom FROM Recursos ORDER BY recursos_nom").columna(),
                 QStringList({"angels", "Àngels", "Ebre", "ÉS", "L'Estel", "Ona", "Zoe"}));
        QCOMPARE(columna("SELECT recursos_nom FROM Recursos WHERE recursos_nom = ?", QString::fromUtf8("àNGELS")),
                 QStringList{QString::fromUtf8("Àngels")});
        QCOMPARE(m_db.query("PRAGMA integrity_check").columna(), QStringList{"ok"});
        // The pair keys too.
        m_db.query("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES ('Oficina', 'Neteja')").exec();
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES ('OFICINA', 'neteja')").exec());
    }

    // Null reads as "" / 0 / an invalid date; a voucher is delivered today unless told; dates bind
    // as ISO whatever the locale; a job's lines go with it.
    void valuesNullsAndJobLines()
    {
        m_db.query("INSERT INTO Clients (clients_nom, clients_xecs) VALUES (?, 0)").bind("L'Estel").exec();
        Query q = m_db.query("SELECT clients_nom, clients_NIF, clients_xecs, clients_data_alta FROM Clients WHERE clients_nom = ?");
        q.bind("l'estel").exec();
        QVERIFY(q.next());
        QCOMPARE(q.text("clients_nom"), QString("L'Estel"));
        QCOMPARE(q.text("clients_NIF"), QString());
        QCOMPARE(q.integer("clients_xecs"), 0);
        QVERIFY(!q.date("clients_data_alta").isValid());
        m_db.query("INSERT INTO Xecs (xecs_id, clients_nom, xecs_valor) VALUES (12, 'L''Estel', 10.5)").exec();
        QCOMPARE(m_db.query("SELECT xecs_data_entrega || '|' || ifnull(feines_id, 'null') FROM Xecs").columna(),
                 QStringList{QDate::currentDate().toString(Qt::ISODate) + "|null"});

        Query ins = m_db.query("INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi) VALUES (?, ?, ?, ?)");
        ins.bind("Oficina").bind(QDate(2009, 3, 3)).bind("09:00").bind("10:00").exec();
        const qint64 id = ins.lastInsertId();
        m_db.query("INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (?, 'Neteja')").bind(id).exec();
        QCOMPARE(columna("SELECT feines_data FROM Feines WHERE feines_id = ?", id), QStringList{"2009-03-03"});
        m_db.query("DELETE FROM Feines WHERE feines_id = ?").bind(id).exec();
        QCOMPARE(columna("SELECT count(*) FROM Feines_Detall WHERE feines_id = ?", id), QStringList{"0"});
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
        QCOMPARE(m_db.query("SELECT serveis_nom FROM Serveis").columna(), QStringList{"A"});
        QCOMPARE(m_db.transactionDepth(), 0);
    }

    void errorsAndSettings()
    {
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("SELECT * FROM NoTable"));
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("SELECT no_column FROM Feines"));
        Query q = m_db.query("SELECT feines_id FROM Feines");
        QVERIFY_THROWS_EXCEPTION(DbError, q.text("missing_column"));
        QCOMPARE(m_db.query("PRAGMA journal_mode").columna().value(0).toLower(), QString("wal"));
        QCOMPARE(m_db.query("PRAGMA foreign_keys").columna(), QStringList{"1"});

        QFile f(m_dir.filePath("text.db"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("this is not a database file at all, just some text that goes on and on");
        f.close();
        Db db;
        QVERIFY_THROWS_EXCEPTION(DbError, db.open(f.fileName()));
        QVERIFY(!db.isOpen());
    }
};

QTEST_GUILESS_MAIN(TestEsquema)
#include "tst_esquema.moc"
