#pragma once
// `quadrella report KIND ... (--pdf FILE | --json)`: every printed report from the command line.
// Each kind registers itself with REGISTRA_INFORME in the cli_*.cpp file of its area: it reads its
// own options and returns the drawing, which the report command sends to a PDF or writes as JSON.

#include "linia_comandes.h"

#include "reports/execucio_informe.h"

struct TipusInforme {
    QString nom;
    QString us; // the kind's options, e.g. "--month MM/YYYY"
    // Reads the options (ErrorUs on bad usage, ErrorComanda on a refusal) and returns the report.
    std::function<Informe(ContextComanda &, Arguments &)> prepara;
    QString titol; // the PDF's document title
};

QList<TipusInforme> &tipusInformes();

struct RegistreInforme {
    explicit RegistreInforme(TipusInforme t) { tipusInformes().append(std::move(t)); }
};

#define REGISTRA_INFORME(...) \
    static RegistreInforme REGISTRA_COMANDA_CONCAT(s_informe_, __LINE__)(TipusInforme{__VA_ARGS__})

// Writes a report as a PDF through a temporary file: the file appears whole, or not at all.
// ErrorComanda with the error's text when the report or the file fails.
void escriuPdf(const QString &fitxer, const QString &titol, const Informe &informe);
