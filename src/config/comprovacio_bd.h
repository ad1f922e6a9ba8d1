#pragma once
// Checking a business database: SQLite's own integrity check, the name indexes rebuilt in the
// program's order (the one repair that is always safe), and every row that names a row that
// does not exist (core/referencies). `quadrella check` and the configuration dialog's button
// both run it.

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

class Db;

namespace comprovacio_bd {

struct Problema {
    QString comprovacio; // "Taula.columna" of the reference
    QString descripcio;  // what a row that breaks it is (translated)
    QString fila;        // the row, e.g. "feines_id=12"
    QString valor;       // the name or job number it holds
};

struct Informe {
    QString baseDades;
    QStringList integritat;        // PRAGMA integrity_check before the repair: "ok" or its findings
    QStringList integritatDespres; // the same once the indexes were rebuilt
    bool reindexat = false;
    QList<Problema> problemes;
    // Sound: nothing found, neither by SQLite nor among the references.
    bool correcta() const;
};

// Runs every check on an open database and rebuilds its name indexes. Not inside a transaction.
Informe comprova(Db &db);

// The report as the user reads it (translated), one finding per line.
QString text(const Informe &informe);

// {"database", "sound", "integrity": [...], "integrity_after_repair": [...], "reindexed",
//  "problems": [{"check", "description", "row", "value"}, ...]}
QJsonObject json(const Informe &informe);

} // namespace comprovacio_bd
