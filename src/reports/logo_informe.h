#pragma once
// The logo at the top of every printed page: the program's grid mark beside its name, in the
// 7000 × 1250 proportion of the frame. Painted once and kept, so every page reuses the same image.

#include <QImage>

QImage logoInforme();
