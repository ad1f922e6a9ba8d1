#pragma once
// What the program says about itself: on the splash, the credits page and the window captions.

#include "core/formats.h"

#include <QString>

namespace producte {

inline QString nom() { return QStringLiteral("Quadrella"); }
// Passed through Tradueix where it is shown.
inline const char *descripcio() { return PerTraduir("Planificador de feines"); }
// The build the copy runs: version and the libraries it stands on.
QString codiVersio();
// The company the copy is licensed to; empty in a copy that has not been customised.
inline QString empresa() { return QString(); }
inline QString versio() { return QStringLiteral("%1.%2").arg(QUADRELLA_VERSION_MAJOR).arg(QUADRELLA_VERSION_MINOR); }
// The maker's web site, opened from the logo.
inline QString web() { return QStringLiteral("https://quadrella.example.org"); }

} // namespace producte
