#pragma once
// The parts of starting and ending the desktop program that need no window: finding the help
// file, and what happens to the settings and the databases once the main window has gone.

#include "core/copia_segura.h"

#include <QString>

class Interaccio;
class Sessio;

namespace arrencada {

// "QuadrellaV01<Idioma>.html" and "Quadrella.html": the help in one language, and the general one.
QString nomAjudaIdioma(const QString &idioma);
QString nomAjudaGeneral();

// Copies the shipped manual pages of `dirRecursos` into `dirAjuda` where they are missing (a
// page the user replaced stays); returns how many it copied. Silent on failure: the lookup then
// reports the missing file.
int instalaManual(const QString &dirRecursos, const QString &dirAjuda);

// The help file of a language in `dirAjuda`, else the general one; "" when neither exists, after
// warning through `ui` with the general file's path.
QString cercaAjuda(const QString &dirAjuda, const QString &idioma, Interaccio &ui);

// Shut-down once the windows are closed: UltimDiaGen back to the settings file (not on the first
// run; a failed write is reported and the rest goes on), both databases closed, and the
// compaction when a purge asked for it. Errors of the databases or the compaction propagate.
void tancaSessio(Sessio &sessio, Interaccio &ui, const copia_segura::Observador &observador = {});

} // namespace arrencada
