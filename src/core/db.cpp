#include "db.h"

#include <QAtomicInt>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlRecord>
#include <sqlite3.h>
#include <sys/statfs.h>

namespace {

QAtomicInt g_connectionCounter;

QString errorText(const QSqlError &error)
{
    const QString db = error.databaseText().trimmed();
    if (!db.isEmpty())
        return db;
    const QString all = error.text().trimmed();
    return all.isEmpty() ? QStringLiteral("error de base de dades") : all;
}

QString senseAccents(const QString &text)
{
    const QString d = text.normalized(QString::NormalizationForm_D);
    QString out;
    out.reserve(d.size());
    for (const QChar c : d) {
        if (c.category() != QChar::Mark_NonSpacing)
            out += c;
    }
    return out.toCaseFolded();
}

// QNOCASE: case-insensitive comparison for every Unicode letter (SQLite's own NOCASE folds ASCII
// only). ASCII is compared in place; anything else goes through Qt's case folding.
int unicodeNoCase(void *, int len1, const void *data1, int len2, const void *data2)
{
    const auto *a = static_cast<const unsigned char *>(data1);
    const auto *b = static_cast<const unsigned char *>(data2);
    const int n = len1 < len2 ? len1 : len2;
    for (int i = 0; i < n; ++i) {
        unsigned char ca = a[i];
        unsigned char cb = b[i];
        if (ca >= 0x80 || cb >= 0x80) {
            const QString sa = QString::fromUtf8(reinterpret_cast<const char *>(a), len1);
            const QString sb = QString::fromUtf8(reinterpret_cast<const char *>(b), len2);
            // Letters first by their base (Àngels sorts among the A's), then accents tell
            // apart names that differ only there; case never counts.
            int r = senseAccents(sa).compare(senseAccents(sb));
            if (r == 0)
                r = sa.toCaseFolded().compare(sb.toCaseFolded());
            return r < 0 ? -1 : (r > 0 ? 1 : 0);
        }
        if (ca >= 'A' && ca <= 'Z')
            ca = static_cast<unsigned char>(ca + 32);
        if (cb >= 'A' && cb <= 'Z')
            cb = static_cast<unsigned char>(cb + 32);
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return len1 == len2 ? 0 : (len1 < len2 ? -1 : 1);
}

sqlite3 *sqliteHandle(QSqlDatabase &db)
{
    const QVariant v = db.driver()->handle();
    if (v.isValid() && qstrcmp(v.typeName(), "sqlite3*") == 0)
        return *static_cast<sqlite3 *const *>(v.constData());
    return nullptr;
}

QVariant normalise(const QVariant &value)
{
    if (value.metaType().id() == QMetaType::QDate)
        return value.toDate().toString(Qt::ISODate);
    return value;
}

} // namespace

void registraColacio(sqlite3 *handle)
{
    sqlite3_create_collation_v2(handle, "QNOCASE", SQLITE_UTF8, nullptr, unicodeNoCase, nullptr);
}

// ---------------------------------------------------------------- Query

Query::Query(Db &db, const QString &sql, bool cached) : m_db(&db), m_sql(sql)
{
    if (!db.isOpen())
        throw DbError(QStringLiteral("la base de dades no està oberta"));
    if (cached) {
        auto it = db.m_cache.find(sql);
        if (it != db.m_cache.end()) {
            m_query = it.value();
            return;
        }
    }
    m_owned = std::make_unique<QSqlQuery>(db.m_db);
    m_owned->setForwardOnly(true);
    if (!m_owned->prepare(sql))
        fail(QString());
    if (cached) {
        m_query = m_owned.release();
        db.m_cache.insert(sql, m_query);
    } else {
        m_query = m_owned.get();
    }
}

Query::~Query()
{
    if (m_query && !m_owned)
        m_query->finish();
}

Query::Query(Query &&other) noexcept
    : m_db(other.m_db), m_sql(std::move(other.m_sql)), m_query(other.m_query),
      m_owned(std::move(other.m_owned)), m_pos(other.m_pos), m_ran(other.m_ran)
{
    other.m_query = nullptr;
}

void Query::fail(const QString &what) const
{
    if (!what.isEmpty())
        throw DbError(what);
    const QSqlQuery *q = m_query ? m_query : m_owned.get();
    throw DbError(errorText(q ? q->lastError() : QSqlError()));
}

Query &Query::bind(const QVariant &value)
{
    m_query->bindValue(m_pos++, normalise(value));
    return *this;
}

Query &Query::bind(const QDate &date)
{
    return bind(date.isValid() ? QVariant(date.toString(Qt::ISODate)) : QVariant());
}

Query &Query::bind(const QString &name, const QVariant &value)
{
    m_query->bindValue(name, normalise(value));
    return *this;
}

Query &Query::bind(const QString &name, const QDate &date)
{
    return bind(name, date.isValid() ? QVariant(date.toString(Qt::ISODate)) : QVariant());
}

Query &Query::bindNull()
{
    return bind(QVariant());
}

Query &Query::exec()
{
    m_pos = 0;
    if (!m_query->exec())
        fail(QString());
    m_ran = true;
    return *this;
}

bool Query::next()
{
    if (!m_ran)
        exec();
    if (m_query->next())
        return true;
    if (m_query->lastError().isValid())
        fail(QString());
    return false;
}

QStringList Query::columna()
{
    QStringList out;
    while (next())
        out << text(0);
    return out;
}

int Query::indexOf(const QString &column) const
{
    const int i = m_query->record().indexOf(column);
    if (i < 0)
        throw DbError(QStringLiteral("no such column: %1").arg(column));
    return i;
}

QVariant Query::value(int column) const
{
    return m_query->value(column);
}

QVariant Query::value(const QString &column) const
{
    return m_query->value(indexOf(column));
}

QString Query::text(int column) const
{
    const QVariant v = value(column);
    return v.isNull() ? QString() : v.toString();
}

QString Query::text(const QString &column) const
{
    return text(indexOf(column));
}

qint64 Query::integer(int column) const
{
    const QVariant v = value(column);
    return v.isNull() ? 0 : v.toLongLong();
}

qint64 Query::integer(const QString &column) const
{
    return integer(indexOf(column));
}

double Query::real(int column) const
{
    const QVariant v = value(column);
    return v.isNull() ? 0.0 : v.toDouble();
}

double Query::real(const QString &column) const
{
    return real(indexOf(column));
}

bool Query::boolean(int column) const
{
    const QVariant v = value(column);
    if (v.isNull())
        return false;
    if (v.metaType().id() == QMetaType::QString) {
        const QString s = v.toString().trimmed();
        if (s.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
            return true;
        if (s.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
            return false;
    }
    return v.toLongLong() != 0;
}

bool Query::boolean(const QString &column) const
{
    return boolean(indexOf(column));
}

QDate Query::date(int column) const
{
    const QVariant v = value(column);
    if (v.isNull())
        return QDate();
    return QDate::fromString(v.toString().left(10), Qt::ISODate);
}

QDate Query::date(const QString &column) const
{
    return date(indexOf(column));
}

bool Query::isNull(const QString &column) const
{
    return value(column).isNull();
}

qint64 Query::lastInsertId() const
{
    return m_query->lastInsertId().toLongLong();
}

int Query::rowsAffected() const
{
    return m_query->numRowsAffected();
}

// ---------------------------------------------------------------- Db

Db::Db() = default;

Db::~Db()
{
    close();
}

bool Db::isNetworkFileSystem(const QString &path)
{
    struct statfs info {};
    QFileInfo fi(path);
    const QString dir = fi.exists() ? fi.absoluteFilePath() : fi.absolutePath();
    if (statfs(QFile::encodeName(dir).constData(), &info) != 0)
        return false;
    const auto type = static_cast<unsigned long>(info.f_type);
    return type == 0x6969UL          // NFS
        || type == 0x517BUL          // SMB
        || type == 0xFF534D42UL      // CIFS
        || type == 0xFE534D42UL      // SMB2
        || type == 0x65735546UL;     // FUSE (sshfs and the like)
}

void Db::open(const QString &path, Journal journal)
{
    close();
    m_name = QStringLiteral("quadrella_%1").arg(g_connectionCounter.fetchAndAddRelaxed(1));
    m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    m_db.setDatabaseName(path);
    m_db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=10000"));
    m_path = path;
    if (!m_db.open()) {
        const QString text = errorText(m_db.lastError());
        close();
        throw DbError(text);
    }
    sqlite3 *h = sqliteHandle(m_db);
    if (!h) {
        close();
        throw DbError(QStringLiteral("controlador SQLite no disponible"));
    }
    registraColacio(h);
    if (journal == Journal::Auto)
        journal = isNetworkFileSystem(path) ? Journal::Delete : Journal::Wal;
    try {
        exec(QStringLiteral("PRAGMA foreign_keys=ON"));
        exec(QStringLiteral("PRAGMA cache_size=-32000")); // 32 MB: the job indexes stay in memory
        exec(QStringLiteral("PRAGMA temp_store=MEMORY"));
        if (journal == Journal::Wal) {
            exec(QStringLiteral("PRAGMA journal_mode=WAL"));
            exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
            // Fewer, larger checkpoints: each one syncs the database file.
            exec(QStringLiteral("PRAGMA wal_autocheckpoint=8000"));
        } else {
            exec(QStringLiteral("PRAGMA journal_mode=DELETE"));
            exec(QStringLiteral("PRAGMA synchronous=FULL"));
        }
        // Reading the schema proves the file is a database (a text file opens without complaint).
        exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    } catch (...) {
        close();
        throw;
    }
}

void Db::close()
{
    for (QSqlQuery *q : std::as_const(m_cache))
        delete q;
    m_cache.clear();
    m_depth = 0;
    if (!m_name.isEmpty()) {
        if (m_db.isOpen())
            m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_name);
        m_name.clear();
    }
}

bool Db::isOpen() const
{
    return !m_name.isEmpty() && m_db.isOpen();
}

Query Db::query(const QString &sql)
{
    return Query(*this, sql, false);
}

Query Db::prepared(const QString &sql)
{
    return Query(*this, sql, true);
}

void Db::exec(const QString &sql)
{
    if (!isOpen())
        throw DbError(QStringLiteral("la base de dades no està oberta"));
    QSqlQuery q(m_db);
    if (!q.exec(sql))
        throw DbError(errorText(q.lastError()));
}

void Db::execScript(const QString &script)
{
    if (!isOpen())
        throw DbError(QStringLiteral("la base de dades no està oberta"));
    sqlite3 *h = sqliteHandle(m_db);
    char *message = nullptr;
    const QByteArray utf8 = script.toUtf8();
    if (sqlite3_exec(h, utf8.constData(), nullptr, nullptr, &message) != SQLITE_OK) {
        const QString text = QString::fromUtf8(message ? message : "error");
        sqlite3_free(message);
        throw DbError(text);
    }
}

bool Db::tableExists(const QString &table)
{
    Query q = query(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type='table' AND name=? COLLATE NOCASE"));
    q.bind(table).exec();
    return q.next();
}

QStringList Db::columns(const QString &table)
{
    Query q = query(QStringLiteral("SELECT name FROM pragma_table_info(?)"));
    q.bind(table).exec();
    return q.columna();
}

void Db::begin()
{
    if (m_depth == 0)
        prepared(QStringLiteral("BEGIN IMMEDIATE")).exec();
    else
        prepared(QStringLiteral("SAVEPOINT nivell%1").arg(m_depth)).exec();
    ++m_depth;
}

void Db::commit()
{
    if (m_depth <= 0)
        throw DbError(QStringLiteral("cap transacció oberta"));
    if (m_depth == 1) {
        try {
            prepared(QStringLiteral("COMMIT")).exec();
        } catch (...) {
            try {
                exec(QStringLiteral("ROLLBACK"));
            } catch (...) {
            }
            m_depth = 0;
            throw;
        }
    } else {
        prepared(QStringLiteral("RELEASE nivell%1").arg(m_depth - 1)).exec();
    }
    --m_depth;
}

void Db::rollback()
{
    if (m_depth <= 0)
        return;
    --m_depth;
    if (m_depth == 0) {
        exec(QStringLiteral("ROLLBACK"));
    } else {
        exec(QStringLiteral("ROLLBACK TO nivell%1").arg(m_depth));
        exec(QStringLiteral("RELEASE nivell%1").arg(m_depth));
    }
}
