#include "versions_esquema.h"

#include "copia_segura.h"
#include "db.h"
#include "directori_dades.h"
#include "traduccio.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace versions_esquema {

namespace {

QString identificador(const QString &nom)
{
    return QLatin1Char('"') + QString(nom).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

// The tables schema.sql creates, in its order.
QStringList taulesEsquema()
{
    static const QRegularExpression creacio(QStringLiteral("CREATE TABLE IF NOT EXISTS\\s+(\\w+)"));
    QStringList taules;
    auto it = creacio.globalMatch(directori_dades::esquemaSql());
    while (it.hasNext())
        taules << it.next().captured(1);
    return taules;
}

// 1 -> 2: every table and index rebuilt from the current schema, under QNOCASE, keeping every
// row (and the job counter). The old indexes are dropped first: an index keeps its name when its
// table is renamed and would stop the new one from being created. Tables the schema does not
// know are left alone.
void refaTaules(Db &db)
{
    const QStringList taules = taulesEsquema();
    QStringList indexos;
    {
        Query q = db.query(QStringLiteral("SELECT name, tbl_name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL"));
        while (q.next()) {
            if (taules.contains(q.text(1), Qt::CaseInsensitive))
                indexos << q.text(0);
        }
    }
    for (const QString &index : indexos)
        db.exec(QStringLiteral("DROP INDEX ") + identificador(index));

    QStringList antigues;
    for (const QString &taula : taules) {
        if (db.tableExists(taula)) {
            db.exec(QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(identificador(taula), identificador(taula + QStringLiteral("_v1"))));
            antigues << taula;
        }
    }
    db.execScript(directori_dades::esquemaSql());

    const bool ambSequencia = db.tableExists(QStringLiteral("sqlite_sequence"));
    for (const QString &taula : antigues) {
        const QString antiga = taula + QStringLiteral("_v1");
        const QStringList noves = db.columns(taula);
        QStringList comunes;
        for (const QString &c : db.columns(antiga)) {
            if (noves.contains(c, Qt::CaseInsensitive))
                comunes << identificador(c);
        }
        const QString llista = comunes.join(QStringLiteral(", "));
        db.exec(QStringLiteral("INSERT INTO %1 (%2) SELECT %2 FROM %3").arg(identificador(taula), llista, identificador(antiga)));
        if (ambSequencia) {
            // A counter that had gone past the highest row stays there: no job number comes back.
            db.query(QStringLiteral("DELETE FROM sqlite_sequence WHERE name = ? AND seq < COALESCE("
                                    "(SELECT seq FROM sqlite_sequence WHERE name = ?), 0)"))
                .bind(taula).bind(antiga).exec();
            db.query(QStringLiteral("INSERT INTO sqlite_sequence (name, seq) SELECT ?, seq FROM sqlite_sequence "
                                    "WHERE name = ? AND NOT EXISTS (SELECT 1 FROM sqlite_sequence WHERE name = ?)"))
                .bind(taula).bind(antiga).bind(taula).exec();
        }
    }
    for (auto it = antigues.crbegin(); it != antigues.crend(); ++it)
        db.exec(QStringLiteral("DROP TABLE ") + identificador(*it + QStringLiteral("_v1")));
}

// 2 -> 3: the closed days and the place's opt-in. A file rebuilt by the step before already has
// both (it was rebuilt from the current schema), so each is added only when missing.
void afegeixFestius(Db &db)
{
    if (!db.columns(QStringLiteral("Llocs")).contains(QStringLiteral("llocs_festius"), Qt::CaseInsensitive))
        db.exec(QStringLiteral("ALTER TABLE Llocs ADD COLUMN llocs_festius INTEGER NOT NULL DEFAULT 0"));
    // Every statement of the schema creates only what is missing.
    db.execScript(directori_dades::esquemaSql());
}

// passos[n - 1] takes a file from version n to n + 1.
using Pas = void (*)(Db &);
const Pas passos[] = {refaTaules, afegeixFestius};
static_assert(std::size(passos) == Actual - 1, "one step per version");

} // namespace

int versio(Db &db)
{
    Query q = db.query(QStringLiteral("PRAGMA user_version"));
    const int v = q.next() ? static_cast<int>(q.integer(0)) : 0;
    if (v != 0)
        return v;
    return db.tableExists(QStringLiteral("Feines")) || db.tableExists(QStringLiteral("Clients")) ? 1 : 0;
}

Actualitzacio actualitza(Db &db, const QDateTime &ara)
{
    Actualitzacio r;
    r.desDe = versio(db);
    r.fins = r.desDe;
    if (r.desDe > Actual)
        throw DbError(
            Tradueix("La base de dades %1 és d'una versió més nova de Quadrella (esquema %2; aquest programa arriba a l'esquema %3). Cal actualitzar el programa per obrir-la.")
                          .arg(db.path())
                          .arg(r.desDe)
                          .arg(Actual));
    if (r.desDe == Actual)
        return r;
    if (r.desDe == 0) {
        directori_dades::creaEsquema(db);
        r.fins = Actual;
        return r;
    }

    r.copia = copia_segura::nomCopiaDatada(db.path(), ara);
    copia_segura::copiaVerificada(db, r.copia + QStringLiteral(".part"), r.copia);
    // Tables are dropped and renamed: the foreign key of the job lines may not follow them
    // meanwhile. The pragma has no effect inside a transaction, so it goes around it.
    db.exec(QStringLiteral("PRAGMA foreign_keys=OFF"));
    try {
        Transaction t(db);
        for (int v = r.desDe; v < Actual; ++v)
            passos[v - 1](db);
        // The rebuilt tables must keep the job lines' foreign key as the old ones did.
        Query fk = db.query(QStringLiteral("PRAGMA foreign_key_check"));
        if (fk.next())
            throw DbError(QStringLiteral("FOREIGN KEY: %1 rowid %2").arg(fk.text(0), fk.text(1)));
        db.exec(QStringLiteral("PRAGMA user_version=%1").arg(Actual));
        t.commit();
    } catch (const DbError &e) {
        db.exec(QStringLiteral("PRAGMA foreign_keys=ON"));
        // Nothing was changed; the backup stays beside the file.
        throw DbError(Tradueix("No s'ha pogut actualitzar la base de dades %1 a la versió d'aquest programa; el fitxer queda com era (còpia: %2).")
                          .arg(db.path(), r.copia)
                      + QLatin1Char(' ') + e.text());
    } catch (...) {
        db.exec(QStringLiteral("PRAGMA foreign_keys=ON"));
        throw;
    }
    db.exec(QStringLiteral("PRAGMA foreign_keys=ON"));
    r.fins = Actual;
    return r;
}

QString textNoExisteix(const QString &fitxer)
{
    return Tradueix("No existeix la base de dades %1. Comprova el fitxer triat a la configuració (BaseDades) o que la unitat on és estigui connectada; no se'n crea cap de nova.")
        .arg(fitxer);
}

Actualitzacio obre(Db &db, const QString &fitxer, const QDateTime &ara)
{
    if (!QFileInfo(fitxer).isFile())
        throw DbError(textNoExisteix(fitxer));
    db.open(fitxer);
    try {
        return actualitza(db, ara);
    } catch (...) {
        db.close();
        throw;
    }
}

} // namespace versions_esquema
