#pragma once
// Access to one SQLite database through Qt SQL. Every statement is prepared and takes bound
// values; Null reads as "" or 0; every failure throws DbError carrying the database's own text.

#include <QDate>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <stdexcept>

class DbError : public std::runtime_error {
public:
    explicit DbError(const QString &text) : std::runtime_error(text.toStdString()), m_text(text) {}
    QString text() const { return m_text; }

private:
    QString m_text;
};

class Db;
struct sqlite3;

// Name columns are declared COLLATE QNOCASE: case never counts and accented letters sort among
// their base letters. The name is our own, so that another SQLite tool refuses to write the file
// ("no such collation sequence") instead of keeping the indexes in a different order. Every
// connection of the program registers it; Db::open does so itself.
void registraColacio(sqlite3 *handle);

// A prepared statement. Obtained from Db::query() (fresh) or Db::prepared() (cached and reused).
class Query {
public:
    Query(Db &db, const QString &sql, bool cached);
    ~Query();
    Query(Query &&) noexcept;
    Query &operator=(Query &&) = delete;
    Query(const Query &) = delete;

    // Binding: positional (in order of the ? marks) or by :name. Dates bind as YYYY-MM-DD,
    // a null QVariant as SQL NULL.
    Query &bind(const QVariant &value);
    Query &bind(const QDate &date);
    Query &bind(const QString &name, const QVariant &value);
    Query &bind(const QString &name, const QDate &date);
    Query &bindNull();

    // Runs the statement (the bound values are cleared for the next run afterwards).
    Query &exec();
    bool next();
    // The text of the first column of every remaining row (runs the statement if needed).
    QStringList columna();

    QString text(const QString &column) const;
    QString text(int column) const;
    qint64 integer(const QString &column) const;
    qint64 integer(int column) const;
    double real(const QString &column) const;
    double real(int column) const;
    bool boolean(const QString &column) const;
    bool boolean(int column) const;
    QDate date(const QString &column) const; // invalid QDate when Null
    QDate date(int column) const;
    bool isNull(const QString &column) const;
    QVariant value(const QString &column) const;
    QVariant value(int column) const;

    qint64 lastInsertId() const;
    int rowsAffected() const;
    QSqlQuery &raw() { return *m_query; }

private:
    int indexOf(const QString &column) const;
    [[noreturn]] void fail(const QString &what) const;

    Db *m_db;
    QString m_sql;
    QSqlQuery *m_query = nullptr;
    std::unique_ptr<QSqlQuery> m_owned;
    int m_pos = 0;
    bool m_ran = false;
};

class Db {
public:
    enum class Journal { Auto, Wal, Delete };

    Db();
    ~Db();
    Db(const Db &) = delete;
    Db &operator=(const Db &) = delete;

    // Opens (creating the file when missing) and sets the connection up: the QNOCASE collation,
    // foreign keys, busy timeout, WAL (or DELETE + FULL on a network file system).
    void open(const QString &path, Journal journal = Journal::Auto);
    void close();
    bool isOpen() const;
    QString path() const { return m_path; }

    Query query(const QString &sql);    // prepared now, for one use
    Query prepared(const QString &sql); // prepared once per connection and reused
    void exec(const QString &sql);      // a statement without values (DDL, pragmas)
    void execScript(const QString &script); // several statements separated by ';'

    bool tableExists(const QString &table);
    QStringList columns(const QString &table);

    // Transactions nest: the outermost begins IMMEDIATE, inner ones are savepoints.
    void begin();
    void commit();
    void rollback();
    int transactionDepth() const { return m_depth; }

    QSqlDatabase &handle() { return m_db; }
    QString connectionName() const { return m_name; }

    static bool isNetworkFileSystem(const QString &path);

private:
    friend class Query;
    QSqlDatabase m_db;
    QString m_name;
    QString m_path;
    QHash<QString, QSqlQuery *> m_cache;
    int m_depth = 0;
};

// Rolls back unless commit() is called; usable nested.
class Transaction {
public:
    explicit Transaction(Db &db) : m_db(db) { m_db.begin(); }
    ~Transaction()
    {
        if (!m_done) {
            try {
                m_db.rollback();
            } catch (...) {
            }
        }
    }
    void commit()
    {
        m_db.commit();
        m_done = true;
    }
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

private:
    Db &m_db;
    bool m_done = false;
};
