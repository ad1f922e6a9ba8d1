#include "pagines_principals.h"

#include "frm_main.h"
#include "frm_missatges.h"
#include "producte.h"
#include "agenda/agenda_page.h"
#include "agenda/previsio_planificacio_dialog.h"
#include "agenda/replanificacio_dialog.h"
#include "billing/facturacio_page.h"
#include "billing/graella_facturacio_widget.h"
#include "billing/informe_factura.h"
#include "billing/resum_facturacio.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/motor_feines.h"
#include "jobs/replanificacio.h"
#include "masterdata/clients_page.h"
#include "masterdata/llocs_widget.h"
#include "masterdata/recursos.h"
#include "masterdata/recursos_serveis_page.h"
#include "reports/detall_feina.h"
#include "reports/impressio_agenda.h"
#include "reports/informe_hores.h"
#include "reports/llista_feines.h"
#include "reports/previsualitzacio_dialog.h"
#include "widgets/protegeix.h"

#include <QApplication>
#include <QComboBox>
#include <QStatusBar>
#include <memory>

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
    ctl.confirmaPlanificacio = [f](const PrevisioPlanificacio &previsio) {
        PrevisioPlanificacioDialog dialeg(previsio, f);
        return dialeg.exec() == QDialog::Accepted;
    };
    ctl.avisaEstat = [f](const QString &text) { f->sbStatusBar->showMessage(text, 15000); };
    finestra.posaPagina(frmMain::Agenda, pagina);
    connectaImpressions(finestra, *pagina);
    return pagina;
}

// While the monthly summary builds every client, the tab neither redraws its sheets nor offers
// its client selector; both come back however the build ends.
class ResumEnCurs {
public:
    explicit ResumEnCurs(FacturacioPage &p) : m_p(p)
    {
        m_p.ClientsCombo->hide();
        m_p.FacturaGrid->setUpdatesEnabled(false);
        m_p.XecsGrid->setUpdatesEnabled(false);
    }
    ~ResumEnCurs()
    {
        m_p.FacturaGrid->setUpdatesEnabled(true);
        m_p.XecsGrid->setUpdatesEnabled(true);
        m_p.ClientsCombo->show();
    }

private:
    FacturacioPage &m_p;
};

// A preview opened from inside a busy handler (the commit) shows the ordinary pointer.
void previsualitzaAmbPunterNormal(QWidget *pare, Interaccio &ui, const QString &titol, const Informe &informe)
{
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    previsualitzaInforme(pare, ui, titol, informe);
    QApplication::restoreOverrideCursor();
}

// The billing tab's reports, each through the print preview: the monthly summary (built first,
// its log in the message window, then drawn as often as the preview asks), the settled vouchers,
// the overtime, and the invoice data at the end of "Facturar client".
void connectaImpressionsFacturacio(frmMain &finestra, FacturacioPage &pagina)
{
    Sessio &sessio = finestra.sessio();
    Interaccio &ui = finestra.interaccio();
    frmMain *f = &finestra;
    FacturacioPage *p = &pagina;
    pagina.imprimeixResum = [f, p, &sessio, &ui](const QString &mes) {
        auto resum = std::make_shared<ResumMes>();
        bool fet = false;
        {
            ResumEnCurs enCurs(*p);
            fet = protegeix(ui, [&] {
                Facturacio facturacio(sessio.db(), sessio.cfg());
                *resum = Calcula_Resum_Facturacio(facturacio, mes, *f->missatges());
            });
        }
        // The tab ends in the all-clients view of the month, as the summary left it.
        p->reconstrueix();
        if (fet)
            previsualitzaInforme(p, ui, Tradueix("RESUM FACTURACIÓ del mes:") + QLatin1Char(' ') + mes,
                                 [resum, &sessio](Impressora &imp) {
                                     Imprimeix_Resum(imp, *resum, sessio.cfg().PosicioSaltPagina);
                                 });
    };
    pagina.imprimeixXecs = [p, &sessio, &ui](const QString &mes) {
        previsualitzaInforme(p, ui, Tradueix("Relació de XECS") + QLatin1Char(' ') + mes, [&sessio, mes](Impressora &imp) {
            Imprimeix_Xecs_Liquidats(imp, sessio.db(), sessio.cfg(), mes);
        });
    };
    pagina.imprimeixHores = [p, &sessio, &ui](const QString &mes) {
        const QDate primer = primerDiaMes(mes);
        previsualitzaInforme(p, ui, Tradueix("Relació de HORES EXTRA del mes:") + QLatin1Char(' ') + mes,
                             [&sessio, primer](Impressora &imp) {
                                 Imprimeix_Hores(imp, sessio.db(), sessio.cfg().PosicioSaltPagina, primer);
                             });
    };
    pagina.controlador().imprimeixFactura = [p, &sessio, &ui](const Facturacio &facturacio) {
        const ParametresFacturacio &fp = facturacio.parametres();
        previsualitzaAmbPunterNormal(p, ui,
                                     Tradueix("Dades de facturació del mes:") + QLatin1Char(' ') + fp.mes
                                         + QStringLiteral(" - ") + fp.client,
                                     [&sessio, &facturacio](Impressora &imp) {
                                         Imprimeix_Dades_Factura(imp, sessio.db(), facturacio);
                                     });
    };
    pagina.actualitzaMode();
}

// The billing tab with its reports.
FacturacioPage *posaFacturacio(frmMain &finestra)
{
    auto *pagina = new FacturacioPage(finestra.sessio(), finestra.interaccio());
    finestra.posaPagina(frmMain::Facturacio, pagina);
    connectaImpressionsFacturacio(finestra, *pagina);
    return pagina;
}

// A place whose rhythm changed: its pending jobs and what the new rhythm would create instead,
// replaced in one transaction when the user confirms.
void ofereixReplanificacio(frmMain &finestra, const QString &lloc)
{
    Sessio &s = finestra.sessio();
    MotorFeines motor(s.db(), s.cfg());
    Replanificador replanificador(s.db(), s.cfg(), motor, *finestra.missatges());
    const PrevisioReplanificacio p = replanificador.Previsualitza(lloc, QDate::currentDate());
    if (!p.error.isEmpty()) {
        finestra.interaccio().error(QStringLiteral("ERROR"), p.error);
        return;
    }
    if (p.buida())
        return;
    ReplanificacioDialog dialeg(p, &finestra);
    if (dialeg.exec() != QDialog::Accepted)
        return;
    const QString r = replanificador.Replanifica_Lloc(p);
    if (!r.isEmpty())
        finestra.interaccio().error(QStringLiteral("ERROR"), r);
    s.RefrescarAgenda = true;
    s.RefrescarFacturacio = true;
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
    QObject::connect(clients->llocs(), &LlocsWidget::ritmeCanviat, &finestra,
                     [&finestra](const QString &lloc) { ofereixReplanificacio(finestra, lloc); });
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
