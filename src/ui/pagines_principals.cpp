#include "pagines_principals.h"

#include "frm_main.h"
#include "agenda/agenda_page.h"
#include "masterdata/clients_page.h"

void creaPagines(frmMain &finestra)
{
    // Each business page goes into its tab here, e.g.
    //   finestra.posaPagina(frmMain::Agenda, new AgendaPage(finestra.sessio(), finestra.interaccio()));
    // A page that implements PaginaPrincipal is rebuilt through it; until a page is plugged, its
    // tab shows a placeholder.
    AgendaPage::posaA(finestra);
    // Master data last: it connects the agenda's jumps to its pages when the agenda is there.
    posaPaginesMestres(finestra);
}
