// The billing reports as `report` kinds: invoice --client C --month M, summary --month M,
// vouchers --month M. They draw through the same engine code as the billing tab's buttons.
#include "cli_facturacio.h"
#include "cli_report.h"

#include "billing/facturacio.h"
#include "billing/informe_factura.h"
#include "billing/pagaments.h"
#include "billing/resum_facturacio.h"
#include "core/sessio.h"

#include <memory>

namespace {

// The summary's log belongs to the message window; a report on the command line keeps its
// output for the drawing.
class RegistreMut : public RegistreSortida {
public:
    void afegeix(const QString &) override {}
};

Informe dadesFactura(ContextComanda &ctx, Arguments &args)
{
    const QString mes = cli_facturacio::mes(args);
    Sessio &s = ctx.sessio();
    const QString client = cli_facturacio::client(s.db(), args.required(QStringLiteral("--client")));
    return [&s, mes, client](Impressora &imp) {
        Facturacio f(s.db(), s.cfg());
        f.Carrega_Facturacio(ParametresFacturacio{mes, client, false, textPagament(Pagament_Mes(s.db(), mes, client))});
        Imprimeix_Dades_Factura(imp, s.db(), f);
    };
}

Informe resum(ContextComanda &ctx, Arguments &args)
{
    const QString mes = cli_facturacio::mes(args);
    Sessio &s = ctx.sessio();
    return [&s, mes](Impressora &imp) {
        Facturacio f(s.db(), s.cfg());
        RegistreMut log;
        Imprimeix_Resum_Facturacio(imp, f, mes, log);
    };
}

Informe xecs(ContextComanda &ctx, Arguments &args)
{
    const QString mes = cli_facturacio::mes(args);
    Sessio &s = ctx.sessio();
    return [&s, mes](Impressora &imp) { Imprimeix_Xecs_Liquidats(imp, s.db(), s.cfg(), mes); };
}

REGISTRA_INFORME(QStringLiteral("invoice"), QStringLiteral("--client C --month MM/YYYY"), dadesFactura,
                 QStringLiteral("Dades de facturació"));
REGISTRA_INFORME(QStringLiteral("summary"), QStringLiteral("--month MM/YYYY"), resum,
                 QStringLiteral("Resum facturació"));
REGISTRA_INFORME(QStringLiteral("vouchers"), QStringLiteral("--month MM/YYYY"), xecs,
                 QStringLiteral("Relació de xecs"));

} // namespace
