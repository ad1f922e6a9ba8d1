#pragma once
// Files an installed copy ships beside the program (<prefix>/share/quadrella/...): the manual and
// the translation rows. A portable or build-folder copy has none and uses those built into it.

#include <QString>

namespace fitxers_instal_lats {

// <folder of the executable>/../share/quadrella/<sub> when that folder exists, else "".
QString dir(const QString &sub);
// The same from a given executable folder (for tests).
QString dir(const QString &dirExecutable, const QString &sub);

} // namespace fitxers_instal_lats
