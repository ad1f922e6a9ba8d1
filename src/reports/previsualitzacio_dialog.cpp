#include "previsualitzacio_dialog.h"

#include "impressora_painter.h"

#include "core/interaccio.h"

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <exception>

void previsualitzaInforme(QWidget *pare, Interaccio &ui, const QString &titol, const Informe &informe)
{
    QPrinter printer(QPrinter::HighResolution);
    ImpressoraPainter::preparaA4(printer);
    printer.setFullPage(true);
    printer.setDocName(titol);

    QPrintPreviewDialog finestra(&printer, pare);
    finestra.setObjectName(QStringLiteral("PrevisualitzacioInforme"));
    finestra.setWindowTitle(titol);
    bool errorMostrat = false;
    QObject::connect(&finestra, &QPrintPreviewDialog::paintRequested, &finestra, [&](QPrinter *p) {
        QString error;
        try {
            ImpressoraPainter imp(p);
            error = executaInforme(imp, informe);
        } catch (const std::exception &e) {
            error = QStringLiteral("Error:") + QString::fromUtf8(e.what());
        }
        // The preview draws again for the printer: the same error once is enough.
        if (!error.isEmpty() && !errorMostrat) {
            errorMostrat = true;
            ui.error(QStringLiteral("ERROR"), error);
        }
    });
    finestra.resize(900, 1000);
    finestra.exec();
}
