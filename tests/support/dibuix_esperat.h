#pragma once
// Compares a report's recorded drawing with its reviewed copy, tests/<carpeta>/dibuixos/<cas>.txt.
// After a deliberate change of layout, regenerate the copies with
//     QUADRELLA_REGENERA_DIBUIXOS=1 ctest -R <test>
// and review the diff before committing it.

#include <QString>

void comparaAmbDibuix(const QString &carpeta, const QString &cas, const QString &actual);
