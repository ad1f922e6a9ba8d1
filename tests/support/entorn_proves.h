#pragma once
// Shared test fixtures: a throw-away data directory (settings file, business database with the
// schema, translation database), a bare database with default settings, short writers for the
// master data, a scripted Interaccio and a log sink that keeps what it was given.

#include "core/configuracio.h"
#include "core/db.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QDate>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>


// A complete data directory in a temporary folder, created as `quadrella init` would.
class DirectoriProva {
public:
    DirectoriProva();
    QString path() const { return m_tmp.path(); }
    QString fitxerIni() const;
    // Writes one setting before a session is opened (or before recarregaConfiguracio()).
    void posaParametre(const QString &clau, const QString &valor, const QString &seccio = QStringLiteral("Parametres"));
    // A session on this directory (its translator is the process's current one while it lives).
    std::unique_ptr<Sessio> obreSessio();

private:
    QTemporaryDir m_tmp;
};

// Just a business database with the schema and the default settings, for engine tests that need
// no settings file. `cfg` may be changed freely by the test.
class BaseProva {
public:
    BaseProva();
    Db db;
    Configuracio cfg;
    QString fitxer() const { return m_fitxer; }

private:
    QTemporaryDir m_tmp;
    QString m_fitxer;
};

// Short writers of master data and jobs. Each is one INSERT with bound values.
namespace dades_prova {
void recurs(Db &db, const QString &nom, qint32 color, bool assignaTemps = true);
void grup(Db &db, const QString &nom, qint32 color, const QStringList &membres, bool assignaTemps = false);
void client(Db &db, const QString &nom);
void servei(Db &db, const QString &nom, int minutsPerUnitat, bool comu, double preu = 0.0,
            const QString &unitat = QString(), const QString &descripcio = QString());
void lloc(Db &db, const QString &nom, int minutsPrevist, const QString &recurs = QString(),
          const QString &client = QString());
void llocServei(Db &db, const QString &lloc, const QString &servei, double quantitat, double preu = 0.0,
                const QString &descripcio = QString());
// A job written straight to the table (no checks); returns its id.
int feina(Db &db, const QString &lloc, const QDate &data, const QString &inici, const QString &fi,
          const QString &recurs = QString(), bool feta = false);
// A service line of a job; an empty unit or description is stored as Null.
void linia(Db &db, int feina, const QString &servei, double quantitat, double preu = 0.0,
           const QString &unitat = QString(), const QString &descripcio = QString());
void xec(Db &db, int xecsId, const QString &client, int feinesId, const QDate &liquidat);
// Every row of a query, its columns joined with '|' (Null as "NULL"), in the query's order.
QStringList files(Db &db, const QString &sql, const QVariantList &valors = {});
// The single integer that a query returns (a count, usually).
qint64 valor(Db &db, const QString &sql, const QVariantList &valors = {});
} // namespace dades_prova

// Interaccio with scripted answers: each pregunta() takes the next answer (No when none is left).
// Every call is recorded in order.
class InteraccioGuio : public Interaccio {
public:
    struct Crida {
        QString tipus; // "informa", "pregunta" or "error"
        QString titol;
        QString text;
    };
    QList<bool> respostes;
    QList<Crida> crides;

    void informa(const QString &titol, const QString &text) override;
    bool pregunta(const QString &titol, const QString &text) override;
    void error(const QString &titol, const QString &text) override;
};

// Keeps a long operation's log as it was written.
class RegistreMemoria : public RegistreSortida {
public:
    QString text;
    QStringList titols;
    QList<bool> ocupacions;

    void afegeix(const QString &t) override { text += t; }
    void titol(const QString &t) override { titols << t; }
    void ocupat(bool o) override { ocupacions << o; }
};
