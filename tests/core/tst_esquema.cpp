// The schema and the data layer: keys that ignore case (Unicode too),
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

    // Case folds, accents do not; accented names sort among their letters, and the index agrees.
    void nameKeysIgnoreCaseOnly()
    {
        for (const char *n : {"L'Estel", "Àngels", "Zoe", "angels", "ÉS", "Ebre", "Ona"})
            m_db.query("INSERT INTO Recursos (recursos_nom, recursos_color) VALUES (?, 1)").bind(QString::fromUtf8(n)).exec();
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("INSERT INTO Recursos (recursos_nom, recursos_color) VALUES ('ÀNGELS', 2)").exec());
        QCOMPARE(m_db.query("SELECT recursos_nom FROM Recursos ORDER BY recursos_nom").columna(),
                 QStringList({"angels", "Àngels", "Ebre", "ÉS", "L'Estel", "Ona", "Zoe"}));
        // The pair keys too.
        m_db.query("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES ('Oficina', 'Neteja')").exec();
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES ('OFICINA', 'neteja')").exec());
    }

    // Null reads as "" / 0 / an invalid date; dates bind
    // as ISO whatever the locale.
    void valuesNullsAndJobLines()
    {
        m_db.query("INSERT INTO Clients (clients_nom, clients_xecs) VALUES (?, 0)").bind("L'Estel").exec();
        Query q = m_db.query("SELECT clients_nom, clients_NIF, clients_xecs, clients_data_alta FROM Clients WHERE clients_nom = ?");
        q.bind("l'estel").exec();
        QVERIFY(q.next());
        QVERIFY(q.text("clients_NIF").isEmpty() && q.integer("clients_xecs") == 0 && !q.date("clients_data_alta").isValid());

        Query ins = m_db.query("INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi) VALUES (?, ?, ?, ?)");
        ins.bind("Oficina").bind(QDate(2009, 3, 3)).bind("09:00").bind("10:00").exec();
        Query data = m_db.query("SELECT feines_data FROM Feines WHERE feines_id = ?");
        data.bind(ins.lastInsertId()).exec();
        QCOMPARE(data.columna(), QStringList{"2009-03-03"});
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
        QVERIFY_THROWS_EXCEPTION(DbError, m_db.query("SELECT no_column FROM Feines"));
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
