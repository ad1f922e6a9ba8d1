#pragma once
// The agenda tab: the grid of the day, week or month (AgendaGrid) with the overtime row under the
// day view (HoresGrid), the month calendar (CalendariML), the places and resources to drag
// (LlocsGrid, RecursosGrid), the view and period buttons and the print buttons (ImprimirFeines,
// ImprimirAgenda). The page asks for prints with its signals; whoever holds the reports prints. Everything the user does goes to the agenda controller; the page only draws
// what the controller's model holds after each rebuild.

#include "agenda_controller.h"
#include "editor_feina.h"
#include "widgets/pagina_principal.h"

#include <QWidget>
#include <memory>

class AgendaGridWidget;
class CalendariWidget;
class Interaccio;
class LlistaAgendaWidget;
class QLabel;
class QPushButton;
class QTableWidget;
class QToolButton;
class Sessio;

class AgendaPage : public QWidget, public PaginaPrincipal {
    Q_OBJECT
public:
    AgendaPage(Sessio &sessio, Interaccio &ui, QWidget *parent = nullptr);
    ~AgendaPage() override;

    void reconstrueix() override;
    ControladorAgenda &controlador() { return *m_ctl; }
    // Reloads the places and resources beside the grid.
    void recarregaLlistes();

    AgendaGridWidget *AgendaGrid;
    QTableWidget *HoresGrid;
    CalendariWidget *CalendariML;
    LlistaAgendaWidget *LlocsGrid;
    LlistaAgendaWidget *RecursosGrid;
    QPushButton *ImprimirFeines;
    QPushButton *ImprimirAgenda;
    QToolButton *VistaDia;
    QToolButton *VistaSetmana;
    QToolButton *VistaMes;
    QToolButton *PeriodeAnterior;
    QToolButton *Avui;
    QToolButton *PeriodeSeguent;
    QLabel *TitolPeriode;

signals:
    void obreLloc(const QString &lloc);
    void obreRecurs(const QString &recurs);
    // The job list of a resource for the period shown.
    void imprimeixFeines(const QString &recurs);
    // The grid as it is shown.
    void imprimeixAgenda();
    // The job open in the job editor, from its window.
    void imprimeixDetallFeina(const EditorFeina &editor, QWidget *finestra);

protected:
    void showEvent(QShowEvent *e) override;

private:
    void alReconstruir();
    void actualitzaHores();
    void actualitzaBotons();
    void mostraIndicacio(const QString &titol, const QString &text);

    Sessio &m_sessio;
    std::unique_ptr<ControladorAgenda> m_ctl;
};
