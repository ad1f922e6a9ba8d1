#pragma once
// The page frame every report is drawn in: the logo and the bold title at the top, the report's
// own heading lines, a rule, the page number at the foot, and the page break with its
// continuation marks. A report describes its page header once (Capcalera) and the frame draws it on
// every page; before each entry of the body the report asks for a break (comprovaSalt), so the
// lines of one entry always stay together.
//
// The frame also carries the small layout helpers the reports share: a text placed on the current
// line, a text right-aligned to an edge, and the month as report titles write it.

#include "impressora.h"

#include <QDate>
#include <QString>
#include <functional>

class MarcInforme {
public:
    // Fixed positions, in twips.
    static constexpr int MargeEsquerre = 500;
    static constexpr int VoraDreta = 11000;
    static constexpr int YTitol = 2000;
    static constexpr int XPagina = 6000;
    static constexpr int XContinuacio = 9800;

    // A report's page header: its title line, then its own heading lines (drawn from just under
    // the title, in the frame's font until they set theirs), then the rule between two gaps.
    struct Capcalera {
        QString titol;
        std::function<void(MarcInforme &)> linies;
        int espaiAbansRegla = 200;
        int espaiDespresRegla = 200;
    };

    // posicioSaltPagina: the lowest y at which a body entry may still start (PosicioSaltPagina).
    MarcInforme(Impressora &impressora, int posicioSaltPagina);

    Impressora &imp() { return m_imp; }
    int posicioSaltPagina() const { return m_salt; }
    int pagina() const { return m_pagina; }

    // Page 1 with its header; the position is left at the left margin under the rule.
    void inicia(const Capcalera &capcalera);
    // Before a body entry: a page break when the current y has passed PosicioSaltPagina.
    // True when it broke the page.
    bool comprovaSalt();
    // The page break: " (Continúa...)" at the foot, a new page with the header and the page
    // number, "(Continuació)" beside the title; the body goes on under the rule.
    void salta();
    // Ends the document.
    void acaba();

    // ---- layout helpers
    // A text at x on the current line: y does not move.
    void text(double x, const QString &text);
    // A text that ends at x (x minus its printed width), on the current line.
    void textDreta(double x, const QString &text);
    // Moves y down by `twips`.
    void baixa(double twips);
    // Size, bold and italic at once (the colour goes back to black).
    void lletra(double mida, bool negreta, bool cursiva = false);

    // A month as titles write it: the translated abbreviation, trimmed and in capitals, a blank
    // and the year ("MARÇ 2009").
    static QString mesTitol(const QDate &dia);
    // A weekday name as the lists write it (translated).
    static QString nomDia(const QDate &dia);

private:
    void capcalera();

    Impressora &m_imp;
    int m_salt;
    int m_pagina = 0;
    Capcalera m_capcalera;
};
