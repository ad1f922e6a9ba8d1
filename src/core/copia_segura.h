#pragma once
// Copies of a live database that can never leave a half-written file under a real name: SQLite
// writes the copy to a temporary file (VACUUM INTO, which does not sync), the copy is flushed to
// disk and checked, and only then renamed into place. The dated backup of the purge and the
// compaction at shut-down, and the backup taken before a schema migration all go through here.

#include <QDateTime>
#include <QString>
#include <functional>

class Db;

namespace copia_segura {

// The dated backup beside the database: "<path without extension><yyyyMMddHHmmss><extension>".
QString nomCopiaDatada(const QString &baseDades, const QDateTime &moment);

// Points between the steps; a test can throw from the callback to interrupt the sequence there.
enum class Etapa { Escrita, Sincronitzada, Comprovada, Instal_lada };
using Observador = std::function<void(Etapa, const QString &fitxerTemporal)>;

// Writes a consistent snapshot of the open database into `temporal` (replacing a leftover file of
// that name). Must not run inside a transaction. Throws DbError.
void escriuInstantania(Db &db, const QString &temporal);

// Syncs `temporal`, checks it with PRAGMA integrity_check, renames it over `desti` atomically and
// syncs the folder. On any failure `temporal` is removed, `desti` is left as it was and
// std::runtime_error is thrown.
void instal_la(const QString &temporal, const QString &desti, const Observador &observador = {});

// Both steps: a verified copy of an open database at `desti`, through `temporal`.
void copiaVerificada(Db &db, const QString &temporal, const QString &desti, const Observador &observador = {});

// "ok" when the file is a sound SQLite database; otherwise the reasons SQLite gives.
QString integritat(const QString &fitxer);

} // namespace copia_segura
