#pragma once
// Where Quadrella keeps its files, and creating what is missing there.

#include <QString>
#include <QStringList>

class Db;

namespace directori_dades {

// --data-dir, then $QUADRELLA_DIR, then the executable's folder when it holds Quadrella.ini
// (portable install), else ~/.local/share/Quadrella.
QString resol(const QString &opcio, const QString &variableEntorn, const QString &dirExecutable,
              const QString &dirInici);
// The same with the real environment and executable.
QString resol(const QString &opcio);

QString fitxerIni(const QString &dir);
QString fitxerTraduccio(const QString &dir);

// When the business database may be created: by `init` (Crea), or by the desktop program on its
// first run only (NomesPrimeraExecucio). Either way only at the default path of the directory.
enum class BaseNegoci { Crea, NomesPrimeraExecucio };

// Creates the directory, Quadrella.ini (every key at its default and the [Idiomes] list), the
// business database with the schema (see BaseNegoci) and the translation database, each only
// when missing. A missing database it may not create is left for the session to report.
// Returns the paths it created. Throws std::runtime_error (a DbError or a plain one) on failure.
QStringList inicialitza(const QString &dir, BaseNegoci base = BaseNegoci::Crea);

// Creates the schema's missing tables and indexes in an open business database.
void creaEsquema(Db &db);
QString esquemaSql();

} // namespace directori_dades
