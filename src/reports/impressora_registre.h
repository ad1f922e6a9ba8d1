#pragma once
// The printer that draws nothing and keeps everything: every text, line, box and picture with its
// page and position. The tests compare recordings, and `report --json` writes one.

#include "impressora.h"

#include <QJsonObject>
#include <QList>
#include <QString>

struct ElementDibuix {
    enum Tipus { Text, Linia, Requadre, Imatge };
    Tipus tipus = Text;
    double x1 = 0, y1 = 0; // a text's or picture's top-left corner; a line's or box's first point
    double x2 = 0, y2 = 0; // a line's or box's second point; a picture's bottom-right corner
    double ample = 0;      // a text's printed width
    QString text;
    double mida = 0;
    bool negreta = false;
    bool cursiva = false;
    qint32 color = 0;
    bool ple = false;      // a filled box
};

struct PaginaDibuix {
    int numero = 1;
    QList<ElementDibuix> elements;
};

class ImpressoraRegistre : public Impressora {
public:
    ImpressoraRegistre();

    const QList<PaginaDibuix> &pagines() const { return m_pagines; }
    // Every text of the document in the order it was drawn.
    QStringList textos() const;

    // The drawing as `report --json` gives it: {"pages": [{"number", "items": [...]}]}, in whole
    // twips.
    QJsonObject json() const;
    // One line per item in whole twips, for golden files that read well in a diff.
    QString text() const;

protected:
    void dibuixaText(double x, double y, const QString &text) override;
    void dibuixaLinia(double x1, double y1, double x2, double y2) override;
    void dibuixaRequadre(double x1, double y1, double x2, double y2, bool ple) override;
    void dibuixaImatge(const QImage &imatge, double x, double y, double ample, double alt) override;
    void novaPagina() override;
    void tanca() override {}

private:
    QList<PaginaDibuix> m_pagines;
};
