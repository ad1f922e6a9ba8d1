// quadrella payment --client C --month MM/YYYY [--set AMOUNT] [--json]
#include "cli_facturacio.h"

#include "billing/pagaments.h"
#include "core/formats.h"
#include "core/sessio.h"

#include <QJsonObject>

namespace {

int paymentOrdre(ContextComanda &ctx, Arguments &args)
{
    const QString nomClient = args.required(QStringLiteral("--client"));
    const QString mes = cli_facturacio::mes(args);
    QString import;
    const bool posa = args.option(QStringLiteral("--set"), &import);
    args.finish();
    double valor = 0.0;
    if (posa && !import.trimmed().isEmpty() && !format::llegeixReal(import, &valor))
        throw ErrorUs(QStringLiteral("--set: import no vàlid '%1'").arg(import));

    Sessio &s = ctx.sessio();
    const QString client = cli_facturacio::client(s.db(), nomClient);
    const double guardat = posa ? Grava_Pagament(s.db(), mes, client, import) : Pagament_Mes(s.db(), mes, client);
    if (ctx.json()) {
        ctx.escriuJson(QJsonObject{{QStringLiteral("clients_nom"), client},
                                   {QStringLiteral("mes"), mes},
                                   {QStringLiteral("pagaments_import"), guardat}});
        return 0;
    }
    ctx.out() << Tradueix("Client:") << ' ' << client << '\n'
              << Tradueix("Mes:") << ' ' << mes << '\n'
              << Tradueix("Total pagaments efectuats:") << ' ' << format::import(guardat) << " €\n";
    ctx.out().flush();
    return 0;
}

REGISTRA_COMANDA(QStringLiteral("payment"),
                 QStringLiteral("payment --client C --month MM/YYYY [--set AMOUNT] [--json]"),
                 QStringLiteral("el pagament a compte d'un client en un mes; --set el guarda (0 o \"\" l'esborra)"),
                 paymentOrdre);

} // namespace
