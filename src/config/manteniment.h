#pragma once
// Keeping the business database usable over the years: the purge of old jobs after a dated
// backup, and the compaction that a purge asks for at shut-down.

#include "core/copia_segura.h"

#include <QDateTime>
#include <QString>

class Interaccio;
class Sessio;

namespace manteniment {

// The dated backup beside the database (the same name the schema migration uses).
using copia_segura::nomCopiaDatada;
// The compaction's temporary file, beside the database so that the final rename stays on one
// file system.
QString fitxerCompactacio(const QString &baseDades);

struct ResultatPurga {
    bool fet = false; // false: the date was refused or the user answered No
    int feines = 0;
    int xecs = 0;
    QString copia; // the dated backup written before the deletions
};

// Deletes every job dated up to `dataText` (and first the vouchers attached to them) after a
// verified backup of the open database, asks for the compaction at shut-down and marks the
// agenda and billing pages for a rebuild. Messages and the question go through `ui`. Throws
// DbError or std::runtime_error when the backup or the deletions fail (nothing is deleted then).
ResultatPurga Purga_BD(Sessio &sessio, const QString &dataText, Interaccio &ui,
                       const QDateTime &ara = QDateTime::currentDateTime());

struct ResultatCompactacio {
    qint64 midaAbans = 0;
    qint64 midaDespres = 0;
};

// Rewrites a database file without its free pages. No other connection may hold it open. On a
// failure at any step the original file is left as it was and std::runtime_error (or DbError) is
// thrown.
ResultatCompactacio compactaBaseDades(const QString &fitxer, const copia_segura::Observador &observador = {});

} // namespace manteniment
