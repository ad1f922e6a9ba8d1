#pragma once
// Fitting texts into the columns of a report: a text cut to a width with an ellipsis, and a text
// broken into lines (at its own line breaks and between words) that fit a width. Widths are those
// of the printer's current font.

#include <QString>
#include <QStringList>

class Impressora;

namespace text_informe {

// The text itself when it fits; otherwise as much of it as fits followed by "…".
QString retalla(const Impressora &imp, const QString &text, double ample);
// The lines of a text no wider than `ample` (a single word wider than that is cut); an empty text
// gives one empty line.
QStringList parteix(const Impressora &imp, const QString &text, double ample);

} // namespace text_informe
