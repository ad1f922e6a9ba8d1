// quadrella purge --until D [--yes]   and   quadrella compact
#include "linia_comandes.h"

#include "config/manteniment.h"
#include "core/configuracio.h"
#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QJsonObject>

namespace {

QString bytes(qint64 n)
{
    return format::enter(static_cast<double>(n)) + QStringLiteral(" B");
}

int purgeOrdre(ContextComanda &ctx, Arguments &args)
{
    const QString until = args.required(QStringLiteral("--until"));
    const bool yes = args.flag(QStringLiteral("--yes"));
    args.finish();
    const QDate fins = Arguments::date(until, QStringLiteral("--until"));

    ctx.interaccio().setSiATot(yes);
    Sessio &sessio = ctx.sessio();
    const manteniment::ResultatPurga r = manteniment::Purga_BD(sessio, format::dataCurta(fins), ctx.interaccio());
    if (!r.fet)
        throw ErrorComanda(Tradueix("Purga cancel·lada: no s'ha esborrat cap feina."));

    // As the desktop program does when it ends after a purge: compact the file, with no
    // connection left open on it.
    const QString fitxer = sessio.db().path();
    sessio.db().close();
    const manteniment::ResultatCompactacio c = manteniment::compactaBaseDades(fitxer);
    sessio.CompactarBD = false;

    if (ctx.json()) {
        ctx.escriuJson(QJsonObject{{QStringLiteral("until"), fins.toString(Qt::ISODate)},
                                   {QStringLiteral("deleted"), r.feines},
                                   {QStringLiteral("vouchers_deleted"), r.xecs},
                                   {QStringLiteral("backup"), r.copia},
                                   {QStringLiteral("compacted"), true},
                                   {QStringLiteral("size_before"), c.midaAbans},
                                   {QStringLiteral("size_after"), c.midaDespres}});
    } else {
        ctx.out() << Tradueix("Còpia de seguretat:") << ' ' << r.copia << '\n'
                  << Tradueix("Base de dades compactada:") << ' ' << bytes(c.midaAbans) << " -> "
                  << bytes(c.midaDespres) << Qt::endl;
    }
    return 0;
}

int compactOrdre(ContextComanda &ctx, Arguments &args)
{
    args.finish();
    // Only the settings: no session may hold the database open while its file is replaced.
    const Configuracio cfg = Configuracio::carrega(ctx.dirDades());
    const manteniment::ResultatCompactacio c = manteniment::compactaBaseDades(cfg.BaseDades);
    if (ctx.json()) {
        ctx.escriuJson(QJsonObject{{QStringLiteral("database"), cfg.BaseDades},
                                   {QStringLiteral("size_before"), c.midaAbans},
                                   {QStringLiteral("size_after"), c.midaDespres}});
    } else {
        ctx.out() << Tradueix("Base de dades compactada:") << ' ' << cfg.BaseDades << ' ' << bytes(c.midaAbans)
                  << " -> " << bytes(c.midaDespres) << Qt::endl;
    }
    return 0;
}

REGISTRA_COMANDA(QStringLiteral("purge"), QStringLiteral("purge --until D [--yes]"),
                 QStringLiteral("esborra les feines fins a D (i els seus xecs) després d'una còpia datada, i compacta"),
                 purgeOrdre);
REGISTRA_COMANDA(QStringLiteral("compact"), QStringLiteral("compact"),
                 QStringLiteral("compacta la base de dades"), compactOrdre);

} // namespace
