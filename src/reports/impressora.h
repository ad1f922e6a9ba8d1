#pragma once
// The printer every report draws on, in twips (1/1440 inch) from the top-left corner of the page,
// y growing downwards. It keeps a current position and a current font, as a printer driver does:
// printing a text puts its top-left corner at the current position and moves y down one line of
// the current font. Reports only ever see this class, so the same layout code fills a PDF, a real
// printer, the print preview or a recording (tests and --json).
//
// Texts are measured here, once for every back-end, with a fixed family at a size given in twips,
// so a right-aligned text ends at the same x on paper and in a recording.

#include <QFont>
#include <QImage>
#include <QString>

class Impressora {
public:
    Impressora();
    virtual ~Impressora();
    Impressora(const Impressora &) = delete;
    Impressora &operator=(const Impressora &) = delete;

    // ---- the current position
    void setX(double x) { m_x = x; }
    void setY(double y) { m_y = y; }
    double x() const { return m_x; }
    double y() const { return m_y; }

    // ---- the current font and colour
    void setMida(double punts);
    void setNegreta(bool negreta);
    void setCursiva(bool cursiva);
    // The text colour as the system keeps colours: 0x00BBGGRR (0 = black).
    void setColor(qint32 rgb) { m_color = rgb; }
    double mida() const { return m_mida; }
    bool negreta() const { return m_negreta; }
    bool cursiva() const { return m_cursiva; }
    qint32 color() const { return m_color; }

    // Prints at the current position and moves y down one line (an empty text only moves down).
    void imprimeix(const QString &text);
    // The printed width of a text and the height of a line in the current font, in twips.
    double ampleText(const QString &text) const;
    double altLinia() const;

    // A straight line; a rectangle (filled with the current colour when `ple`); a picture scaled
    // into a rectangle.
    void linia(double x1, double y1, double x2, double y2);
    void requadre(double x1, double y1, double x2, double y2, bool ple = false);
    void imatge(const QImage &imatge, double x, double y, double ample, double alt);

    // Starts a new page (the position stays where it was; the reports set it again).
    void paginaNova();
    // Ends the document: a printer prints it, a file is closed. Once only; later calls do nothing.
    void acabaDocument();
    bool acabat() const { return m_acabat; }

    // The font texts are drawn with (its pixel size is the size in twips).
    QFont font() const { return m_font; }
    static QString familia();

protected:
    virtual void dibuixaText(double x, double y, const QString &text) = 0;
    virtual void dibuixaLinia(double x1, double y1, double x2, double y2) = 0;
    virtual void dibuixaRequadre(double x1, double y1, double x2, double y2, bool ple) = 0;
    virtual void dibuixaImatge(const QImage &imatge, double x, double y, double ample, double alt) = 0;
    virtual void novaPagina() = 0;
    virtual void tanca() = 0;

private:
    void actualitzaFont();

    double m_x = 0.0;
    double m_y = 0.0;
    double m_mida = 10.0;
    bool m_negreta = false;
    bool m_cursiva = false;
    qint32 m_color = 0;
    bool m_acabat = false;
    QFont m_font;
};

// The colour of a system colour value 0x00BBGGRR.
QColor colorSistema(qint32 rgb);
