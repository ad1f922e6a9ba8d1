#pragma once
// Every print goes through a preview: the report is drawn on an A4 QPrinter inside a
// QPrintPreviewDialog, from which the user prints it or saves it as a PDF. An error while drawing
// is shown once as "Error:" with its text, and the pages drawn so far stay in the preview.

#include "execucio_informe.h"

#include <QString>

class Interaccio;
class QWidget;

// Opens the preview (modal) and returns when the user closes it.
void previsualitzaInforme(QWidget *pare, Interaccio &ui, const QString &titol, const Informe &informe);
