// quadrella check [--json]
#include "linia_comandes.h"

#include "config/comprovacio_bd.h"
#include "core/sessio.h"

namespace {

int checkOrdre(ContextComanda &ctx, Arguments &args)
{
    args.finish();
    const comprovacio_bd::Informe informe = comprovacio_bd::comprova(ctx.sessio().db());
    if (ctx.json())
        ctx.escriuJson(comprovacio_bd::json(informe));
    else
        ctx.out() << comprovacio_bd::text(informe) << Qt::flush;
    return informe.correcta() ? 0 : 1;
}

REGISTRA_COMANDA(QStringLiteral("check"), QStringLiteral("check [--json]"),
                 QStringLiteral("comprova la base de dades (integritat, índexs refets, referències entre taules); 1 si té problemes"),
                 checkOrdre);

} // namespace
