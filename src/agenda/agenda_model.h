#pragma once
// The agenda grid as data: every cell of the day, week or month view with its text, colour and
// emphasis, the merged blocks of the jobs, and what the controller needs to know about a cell
// (its day, its slot, the resource of its column, the jobs written in it). The widget only draws
// this; the controller, the overtime proposal and the printed agenda read it, never a widget.
//
// Row 0 and column 0 are the header cells in every view. The grid is rebuilt whole from the
// database by Construeix_Agenda: one query for the jobs of the period (plus one for the overtime
// in the day view); the resources' colours come with the jobs in that same query.

#include "agenda_estat.h"
#include "jobs/feina.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <vector>

class Db;
struct Configuracio;

// A cell colour: 0x00BBGGRR, ColorFinestra (a job whose resource has no colour of its own: the
// window background), or SenseColor (the grid's normal background).
constexpr qint32 SenseColor = -1;

struct CellaAgenda {
    enum Alineacio { CentreCentre, CentreDalt, EsquerraDalt };

    QString text;
    qint32 fons = SenseColor;
    bool negreta = false;
    bool subratllat = false;
    Alineacio alineacio = CentreCentre;
    // Vertical merging of equal cells: the first cell of a block holds the block's height, the
    // cells it covers hold 0; a cell on its own holds 1.
    int filesFusionades = 1;
    // Shown on hovering besides the text (a closed day's description).
    QString indicacio;
    // Hidden: the jobs written into this cell, in the order they were placed.
    QList<int> feines;
};

class ModelAgenda {
public:
    struct Rang {
        int fila_inici = 0;
        int fila_fi = 0;
        int columna_inici = 0;
        int columna_fi = 0;
        bool visible() const { return fila_inici > 0; }
    };

    ModelAgenda(Db &db, const Configuracio &cfg);

    // The day against which jobs and days are "before today" (bold); the real date unless set.
    void setAvui(const QDate &avui) { m_avui = avui; }
    QDate avui() const;

    // Rebuilds the whole grid for the view and dates of `estat`. A database error propagates
    // (DbError) and leaves the grid as far as it was built.
    void Construeix_Agenda(const EstatAgenda &estat);

    // Lays out an empty grid of the view (headers, slot labels, colours) without reading jobs.
    void preparaGraella(const EstatAgenda &estat);
    // The cells a job covers (all 0 when it is not visible). In the day view it chooses the
    // column of the resource `recurs` ("" = unassigned), opening a new one when needed.
    Rang Rang_Celles_Feina(const QDate &data, const QString &inici, const QString &fi, const QString &recurs);
    // Writes one job on the day or week grid, in its resource's colour (Color_Recurs); nothing in
    // the month view.
    void Posa_Feina_Agenda(const Feina &f);
    // Joins equal neighbouring cells of each body column into blocks (day and week views).
    void fusionaColumnes();

    const EstatAgenda &estat() const { return m_estat; }
    VistaAgenda vista() const { return m_estat.vista; }
    int files() const { return m_files; }
    int columnes() const { return int(m_cols.size()); }
    bool esCos(int fila, int col) const { return fila >= 1 && fila < files() && col >= 1 && col < columnes(); }
    const CellaAgenda &cella(int fila, int col) const { return m_cols[size_t(col)][size_t(fila)]; }
    QString text(int fila, int col) const { return cella(fila, col).text; }
    // The first row of the merged block that holds (fila, col).
    int filaBloc(int fila, int col) const;

    // The day a cell stands for (invalid where none: the corner, the day view's header row, the
    // month view's weekday row).
    QDate diaCella(int fila, int col) const;
    // The start of a slot row ("hh:mm") in the day and week views; "" elsewhere.
    QString horaFila(int fila) const;
    // Day view: the resource a column was opened for ("" for the unassigned column) and whether
    // any job uses it.
    QString recursColumna(int col) const;
    bool columnaUsada(int col) const;
    // Day view: the overtime cell under each column (index 0 is the "Hores extra" label).
    QString textHores(int col) const;
    QStringList hores() const; // the cells under the body columns, in order
    // "Feines solapades" once for each day-view job that found its cells taken.
    QStringList avisos() const { return m_avisos; }

private:
    // assignaTemps: whether the job's resource takes time (it fills the overtime cell of a column
    // it opens); -1 looks it up when a column is opened.
    Rang rang(const QDate &data, const QString &inici, const QString &fi, const QString &recurs, int assignaTemps);
    void posa(const Feina &f, qint32 color, int assignaTemps);
    CellaAgenda &at(int fila, int col) { return m_cols[size_t(col)][size_t(fila)]; }
    void nouGraella(int files, int columnes);
    int afegeixColumna();
    void obreColumna(int col, const QString &recurs, bool assignaTemps);
    bool filesBuides(int col, int desDe, int finsA) const;
    void construeixDia();
    void construeixSetmana();
    void construeixMes();
    void carregaHores();

    Db &m_db;
    const Configuracio &m_cfg;
    QDate m_avui;
    EstatAgenda m_estat;
    int m_files = 0;
    std::vector<std::vector<CellaAgenda>> m_cols; // column-major: the day view grows columns
    std::vector<QString> m_recursCol;
    std::vector<char> m_usada;
    std::vector<QString> m_hores;
    QStringList m_avisos;
    int m_iniciMinuts = 0; // HoraInici in minutes
};
