#pragma once
// Running a report: whatever goes wrong half way (a database error, a device that refuses a page),
// the document is still ended, so a printer never waits for the rest of a job that will not come,
// and the error comes back as the text to show.

#include <QString>
#include <functional>

class Impressora;

using Informe = std::function<void(Impressora &)>;

// "" when the report was drawn, otherwise "Error:" followed by the error's own text.
QString executaInforme(Impressora &imp, const Informe &informe);
