#pragma once
// One billing sheet as data: the job sheet (FacturaGrid) and the voucher sheet (XecsGrid) are two
// of these. Ten columns; column 0 holds the row code, which the user never sees but the commit and
// the reports read. Every cell carries its text, background, bold, alignment and whether its text
// is hidden (drawn in its background colour: the fee code of a job's total row).
//
// The header row is not a data row: data rows are numbered from 0. After a build there is always
// at least one data row; a sheet with nothing to show keeps one empty row.
//
// The job sheet merges cells as it is drawn: equal neighbouring texts of a row show as one wide
// cell (the total and fee rows spread one label over several columns that way), and in columns 1
// to 5 equal texts of adjacent rows show as one tall cell (a job's date, place, resource... once for
// all its lines). bloc() gives the widget those blocks; a block is drawn with the attributes of
// its first cell.

#include <QString>
#include <array>
#include <vector>

// A cell without a background colour of its own.
constexpr qint32 SenseFons = -1;

struct CellaFacturacio {
    enum Alineacio { Esquerra, Centre, Dreta };

    QString text;
    qint32 fons = SenseFons; // 0x00BBGGRR
    bool negreta = false;
    Alineacio alineacio = Esquerra;
    bool oculta = false; // the text is there for the code, not for the eye
};

class GraellaFacturacio {
public:
    static constexpr int Columnes = 10;

    struct Columna {
        const char *capcalera; // Catalan source text, translated when asked for
        int amplada;           // twips; 0 hides the column
        CellaFacturacio::Alineacio alineacio;
    };

    // A merged block as the widget draws it: the first cell holds its size, the cells it covers
    // hold {0, 0}; a cell on its own is {1, 1}.
    struct Bloc {
        int files = 1;
        int columnes = 1;
        bool cobert() const { return files == 0; }
    };

    GraellaFacturacio(const std::array<Columna, Columnes> &columnes, bool fusiona);

    // The headers (translated), their widths in twips and their alignment.
    QString capcalera(int col) const;
    int ampladaTwips(int col) const { return m_columnes[size_t(col)].amplada; }
    CellaFacturacio::Alineacio alineacioColumna(int col) const { return m_columnes[size_t(col)].alineacio; }

    int files() const { return m_n; }
    const CellaFacturacio &cella(int fila, int col) const { return m_files[size_t(fila)][size_t(col)]; }
    QString text(int fila, int col) const { return cella(fila, col).text; }
    QString codi(int fila) const { return text(fila, 0); }
    // True while the sheet holds only its one empty row.
    bool buida() const { return m_filaBuidaLliure; }

    bool fusiona() const { return m_fusiona; }
    Bloc bloc(int fila, int col) const { return m_blocs[size_t(fila) * Columnes + size_t(col)]; }
    // The first cell of the block that covers (fila, col).
    void iniciBloc(int &fila, int &col) const;

    // The current cell, kept across rebuilds and limited to what the new sheet has.
    int filaActual() const { return m_filaActual; }
    int columnaActual() const { return m_columnaActual; }
    void setCellaActual(int fila, int col);

    // ---- building (the billing engine)
    // Removes every row and leaves one empty data row.
    void reinicia();
    // A new data row at the end; the empty row left by reinicia() is used first.
    int afegeixFila();
    CellaFacturacio &at(int fila, int col) { return m_files[size_t(fila)][size_t(col)]; }
    // Works out the merged blocks; call when the rows are complete.
    void calculaBlocs();

private:
    using Fila = std::array<CellaFacturacio, Columnes>;

    std::array<Columna, Columnes> m_columnes;
    bool m_fusiona;
    std::vector<Fila> m_files; // rows kept from build to build; the first m_n are the sheet's
    int m_n = 0;
    std::vector<Bloc> m_blocs;
    bool m_filaBuidaLliure = true;
    int m_filaActual = 0;
    int m_columnaActual = 1;
};
