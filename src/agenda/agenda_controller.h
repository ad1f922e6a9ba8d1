#pragma once
// What the mouse and the keyboard do on the agenda, without a widget: the page turns its events
// into calls of grid coordinates (row and column of the model, header row and column included)
// and the controller selects, creates, moves, reassigns, marks done and deletes jobs through the
// job engine, changes the view and the period, and starts the planning from the month view.
//
// A refusal of the engine is shown verbatim through Interaccio and changes nothing; a success
// rebuilds the grid and raises RefrescarFacturacio. The page learns about rebuilds and about the
// calendar's date through the callbacks below.

#include "agenda_estat.h"
#include "agenda_model.h"
#include "jobs/feina.h"
#include "jobs/motor_feines.h"

#include <QDate>
#include <QString>
#include <functional>

struct PrevisioPlanificacio;

class Db;
class Interaccio;
class PilaDesfer;
class RegistreSortida;
struct Configuracio;

class ControladorAgenda {
public:
    // Key codes the grid reacts to.
    static constexpr int TeclaSuprimir = 46;
    static constexpr int TeclaEspai = 32;
    static constexpr int TeclaIntro = 13;

    ControladorAgenda(Db &db, Configuracio &cfg, Interaccio &interaccio, const QDate &avui = QDate());

    ModelAgenda &model() { return m_model; }
    const ModelAgenda &model() const { return m_model; }
    EstatAgenda &estat() { return m_estat; }
    const EstatAgenda &estat() const { return m_estat; }
    MotorFeines &motor() { return m_motor; }
    Configuracio &cfg() { return m_cfg; }

    // The page-wide flags this controller clears (agenda) and raises (billing); by default the
    // controller's own.
    void setIndicadors(bool *refrescarAgenda, bool *refrescarFacturacio);
    bool refrescarFacturacio() const { return *m_refrescarFacturacio; }
    void setRefrescarFacturacio(bool v) { *m_refrescarFacturacio = v; }
    // Where every change made here is recorded as an undoable command (none by default); a
    // planning run empties it.
    void setPilaDesfer(PilaDesfer *pila) { m_pila = pila; }
    // "Today" for the bold past days and the done-job rules (the real date unless set).
    void setAvui(const QDate &avui);

    // ---- hooks the page (or a test) sets
    // Opens the job editor on the job; it sets missatge to "OK" when the user stored a change.
    // Until set, the job is shown read-only through Interaccio.
    std::function<void(Feina &)> obreEditor;
    // Reloads the vouchers list after the editor changed a job that is not done.
    std::function<void()> recarregaXecs;
    // Called before every rebuild of the grid, while it still shows what the user sees (an open
    // in-place editor stores its value here), and after it.
    std::function<void()> abansDeReconstruir;
    std::function<void()> alReconstruir;
    // The calendar must show this date.
    std::function<void(const QDate &)> alCanviarCalendari;
    // The grid must take the focus (its current cell is the controller's).
    std::function<void()> enfocaGraella;
    // A balloon over the grid: title and text (a month cell's jobs).
    std::function<void(const QString &, const QString &)> mostraIndicacio;
    // The log of a planning run (the message window); when unset the log is shown at the end.
    std::function<RegistreSortida *()> registrePlanificacio;
    // Shows what a planning run would create and answers whether to create it; when unset the
    // run is confirmed with a Yes/No question instead.
    std::function<bool(const PrevisioPlanificacio &)> confirmaPlanificacio;
    // The last planned day moved (the status bar shows it).
    std::function<void(const QDate &)> alPlanificar;
    // A short note for the status bar: what an action did that the grid alone does not tell.
    std::function<void(const QString &)> avisaEstat;

    // ---- state shared with the page
    Feina FeinaSeleccionada;
    void reiniciaSeleccio();
    int filaPremuda() const { return m_filaPremuda; }
    int columnaPremuda() const { return m_colPremuda; }
    int filaActual() const { return m_filaActual; }
    int columnaActual() const { return m_colActual; }
    // The grid's current cell (kept inside the body).
    void setCellaActual(int fila, int col);
    // ImprimirFeines: enabled by a press on a resource, disabled by every rebuild.
    bool imprimirFeinesActiu() const { return m_imprimirActiu; }
    QString recursImprimir() const { return m_recursImprimir; }
    void imprimirFeinesFet() { m_imprimirActiu = false; }

    // ---- the grid
    void Construeix_Agenda();
    // A press on cell (fila, col). Returns the drag caption ("F" + place) when a left press on a
    // job may start dragging it, "" otherwise.
    QString premGraella(int fila, int col, bool botoEsquerre = true);
    // A press on an entry of the resources ('R') or places ('L') list: the drag caption, "" when
    // no drag may start (month view, empty entry).
    QString premLlista(QChar tipus, const QString &nom);
    // A drop of a drag caption on cell (fila, col).
    void deixa(int fila, int col, const QString &caption);
    // A key on the current cell (TeclaSuprimir, TeclaEspai, TeclaIntro; others do nothing).
    void tecla(int codi);
    // A double click: acts on the pressed cell.
    void dobleClic();
    // A click (press and release without a drag) on cell (fila, col).
    void clic(int fila, int col);
    void perdFocus();

    // ---- the period
    void Canvi_Data_Calendari(const QDate &nova);
    // Switches view on the calendar's date (the page's view buttons).
    void canviaVista(VistaAgenda v);
    // The previous (-1) or next (+1) day, week or month of the current view.
    void mouPeriode(int sentit);
    // Back to today's day, week or month.
    void vesAAvui();
    // Month view: the current cell becomes DiaActual's and the grid takes the focus.
    void seleccionaDiaActual();

    // True when the cell stands for one job (a day or week body cell with a text that is not
    // TexteVaris and a colour of a job).
    bool esCellaUnica(int fila, int col) const;
    // Slots a job covers (its minutes over MinutsCella): the height of a dragged job.
    int cellesFeina(const Feina &f) const;

private:
    void buscaFeinaCella(int fila, int col, Feina &f);
    void obreEditorSeleccionada();
    void exit(Feina &f);
    void refusa(const QString &missatge);
    void errorInesperat(const QString &text);
    void mostraDetallFeina(const Feina &f);
    void vesAlDia(const QDate &dia);
    void planifica(const QDate &dia);
    void canviaCalendari(const QDate &d);

    Db &m_db;
    Configuracio &m_cfg;
    Interaccio &m_interaccio;
    MotorFeines m_motor;
    ModelAgenda m_model;
    EstatAgenda m_estat;
    QDate m_avui;
    bool m_propiAgenda = false;
    bool m_propiFacturacio = false;
    bool *m_refrescarAgenda = &m_propiAgenda;
    bool *m_refrescarFacturacio = &m_propiFacturacio;
    int m_filaPremuda = 0;
    int m_colPremuda = 0;
    int m_filaActual = 1;
    int m_colActual = 1;
    bool m_imprimirActiu = false;
    QString m_recursImprimir;
    PilaDesfer *m_pila = nullptr;
};
