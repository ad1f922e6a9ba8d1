#pragma once
// Names are keys, and other tables hold them: a place names its client and default resource, a
// job its place and resource, a line its service, a member its group... This is the one list of
// which (table, column) pairs hold each kind of key. The carried renames, the refused deletes and
// the invariants of `quadrella check` all read it; no engine keeps a list of its own.

#include <QList>
#include <QString>

class Db;

namespace referencies {

enum class Tipus { Client, Lloc, Recurs, Servei, Feina };

// The table and key column where each kind of row lives.
struct Mestra {
    Tipus tipus;
    const char *taula;
    const char *columna;
};
const Mestra &mestra(Tipus tipus);

// What deleting the named row does with the rows that hold its name.
enum class EnEsborrar {
    Refusa, // the delete is refused while such a row exists
    Esborra // the rows go with it (a place's service lines, a group's member list)
};

struct Referencia {
    Tipus tipus;
    const char *taula;
    const char *columna;
    EnEsborrar enEsborrar;
    // Refusa: the refusal shown (translated when shown). Esborra: unused.
    const char *missatgeEsborrar;
    // What the row must also be, beyond existing (an SQL condition on the Mestra's row), e.g. a
    // group for the group column of a membership; "" when existing is enough.
    const char *condicio;
    // The invariant as `check` reports it: what a row that breaks it is.
    const char *descripcio;
    // Job numbers are not renamed; names are.
    bool esReanomena() const { return tipus != Tipus::Feina; }
};

// Every reference, in the order deletes are checked.
const QList<Referencia> &totes();
QList<Referencia> de(Tipus tipus);

// Carries a rename to every row that holds the old name. Runs inside the caller's transaction
// (the master row's own update and this form one unit).
void reanomena(Db &db, Tipus tipus, const QString &antic, const QString &nou);

// The first reference that stops `nom` from being deleted, or nullptr.
const Referencia *impedeixEsborrar(Db &db, Tipus tipus, const QString &nom);

// Deletes the rows that go with `nom` (EnEsborrar::Esborra), inside the caller's transaction.
void esborraDependents(Db &db, Tipus tipus, const QString &nom);

// A row that breaks a reference: the value it holds, and a readable key of the row itself.
struct Trencada {
    const Referencia *referencia;
    QString fila;  // e.g. "feines_id=12" or "llocs_nom=Oficina"
    QString valor; // the name (or job number) that finds no row
};
// Every row that names a missing row (or one that is not what the reference requires).
QList<Trencada> trencades(Db &db);

} // namespace referencies
