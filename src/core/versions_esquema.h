#pragma once
// Opening a business database. The schema's version lives in PRAGMA user_version. A missing file
// is an error (a typo or an unmounted share must never start the office on a new empty file); an
// older schema is migrated step by step inside one transaction, after a dated backup beside the
// file; a schema newer than this program knows is refused.

#include <QDateTime>
#include <QString>

class Db;

namespace versions_esquema {

// The version schema.sql creates. 1 is the first schema (name columns COLLATE NOCASE, no
// user_version recorded); 2 declares them COLLATE QNOCASE; 3 adds the closed days (Festius) and
// the place's llocs_festius (works on closed days).
constexpr int Actual = 3;

// The file's version: its user_version, 1 for tables without one, 0 for a file with no tables.
int versio(Db &db);

struct Actualitzacio {
    int desDe = 0;
    int fins = 0;
    QString copia; // the dated backup written before migrating; "" when nothing was migrated
};

// Brings an open database to the current version: creates the schema in a file with no tables,
// migrates an older one after its backup, refuses a newer one (DbError). Not inside a transaction.
Actualitzacio actualitza(Db &db, const QDateTime &ara = QDateTime::currentDateTime());

// The business database at `fitxer`, which must exist: opened and brought to the current version.
Actualitzacio obre(Db &db, const QString &fitxer, const QDateTime &ara = QDateTime::currentDateTime());

// The message of a missing database (translated), naming the path.
QString textNoExisteix(const QString &fitxer);

} // namespace versions_esquema
