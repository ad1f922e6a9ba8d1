#include "pagines_principals.h"

#include "frm_main.h"
#include "frm_missatges.h"
#include "producte.h"
#include "agenda/agenda_page.h"
#include "billing/facturacio_page.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "masterdata/clients_page.h"
#include "masterdata/recursos.h"
#include "masterdata/recursos_serveis_page.h"
#include "reports/detall_feina.h"
#include "reports/impressio_agenda.h"
#include "reports/llista_feines.h"
#include "reports/previsualitzacio_dialog.h"

namespace {

// The agenda's print buttons and the job editor's, each through the print preview.
void connectaImpressions(frmMain &finestra, AgendaPage &pagina)
{
    Sessio &sessio = finestra.sessio();
    Interaccio &ui = finestra.interaccio();
    ControladorAgenda &ctl = pagina.controlador();
    QObject::connect(&pagina, &AgendaPage::imprimeixFeines, &pagina, [&sessio, &ui, &ctl, &pagina](const QString &recurs) {
        const EstatAgenda estat = ctl.estat();
        previsualitzaInforme(&pagina, ui, titolLlistaFeines(estat, recurs), [&sessio, estat, recurs](Impressora &imp) {
            Imprimeix_Feines(imp, sessio.db(), sessio.cfg().PosicioSaltPagina, estat, recurs);
        });
    });
    QObject::connect(&pagina, &AgendaPage::imprimeixAgenda, &pagina, [&sessio, &ui, &ctl, &pagina] {
        previsualitzaInforme(&pagina, ui, Tradueix("Agenda"), [&sessio, &ctl](Impressora &imp) {
            Imprimeix_Agenda(imp, ctl.model(), sessio.cfg().PosicioSaltPagina, producte::nom(), QDate::currentDate());
        });
    });
    QObject::connect(&pagina, &AgendaPage::imprimeixDetallFeina, &pagina,
                     [&sessio, &ui](const EditorFeina &editor, QWidget *pare) {
                         previsualitzaInforme(pare, ui, Tradueix("Detall de la feina nro.:") + QLatin1Char(' ')
                                                            + QString::number(editor.id()),
                                              [&sessio, &editor](Impressora &imp) {
                                                  Imprimeix_Detall_Feina(imp, editor, sessio.cfg().PosicioSaltPagina);
                                              });
                     });
}

// The agenda tab: the planning's log goes to the message window and the last planned day to the
// status bar.
AgendaPage *posaAgenda(frmMain &finestra)
{
    auto *pagina = new AgendaPage(finestra.sessio(), finestra.interaccio());
    ControladorAgenda &ctl = pagina->controlador();
    frmMain *f = &finestra;
    ctl.registrePlanificacio = [f]() -> RegistreSortida * { return f->missatges(); };
    ctl.alPlanificar = [f](const QDate &d) { f->actualitzaUltimDiaPlanificat(d); };
    finestra.posaPagina(frmMain::Agenda, pagina);
    connectaImpressions(finestra, *pagina);
    return pagina;
}

// The billing tab. Reports it starts are plugged in with the reports; until then its print
// buttons stay disabled and say so.
FacturacioPage *posaFacturacio(frmMain &finestra)
{
    auto *pagina = new FacturacioPage(finestra.sessio(), finestra.interaccio());
    finestra.posaPagina(frmMain::Facturacio, pagina);
    return pagina;
}

// Both master-data tabs, wired to each other, to the tab switch, to the agenda's jumps (a
// double click on a place or a resource beside the agenda opens it here) and to billing (its
// client list, and the voucher list refilled whenever billing or the agenda changed vouchers);
// then the resources' colour repair that start-up does once the pages are filled.
void posaPaginesMestres(frmMain &finestra, AgendaPage &agenda, FacturacioPage &facturacio)
{
    auto *clients = new ClientsPage(finestra.sessio(), finestra.interaccio());
    auto *recursos = new RecursosServeisPage(finestra.sessio(), finestra.interaccio());
    connectaPaginesMestres(*clients, *recursos);
    QObject::connect(clients, &ClientsPage::mostraPagina, &finestra,
                     [&finestra] { finestra.seleccionaPestanya(frmMain::Clients); });
    QObject::connect(recursos, &RecursosServeisPage::mostraPagina, &finestra,
                     [&finestra] { finestra.seleccionaPestanya(frmMain::RecursosServeis); });
    finestra.posaPagina(frmMain::Clients, clients);
    finestra.posaPagina(frmMain::RecursosServeis, recursos);
    QObject::connect(&agenda, &AgendaPage::obreLloc, clients, &ClientsPage::obreLloc);
    QObject::connect(&agenda, &AgendaPage::obreRecurs, recursos, &RecursosServeisPage::obreRecurs);
    QObject::connect(clients, &ClientsPage::clientsCanviats, &facturacio, &FacturacioPage::recarregaClients);
    const auto recarregaXecs = [clients] { clients->Carrega_Xecs_Client(); };
    facturacio.controlador().recarregaXecs = recarregaXecs;
    agenda.controlador().recarregaXecs = recarregaXecs;
    finestra.alDesfer = recarregaXecs;
    if (reparaColorsRecursos(finestra.sessio()) > 0)
        recursos->reconstrueix();
}

} // namespace

void creaPagines(frmMain &finestra)
{
    AgendaPage *agenda = posaAgenda(finestra);
    FacturacioPage *facturacio = posaFacturacio(finestra);
    posaPaginesMestres(finestra, *agenda, *facturacio);
}
