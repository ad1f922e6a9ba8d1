// quadrella init [--sample]
#include "linia_comandes.h"

#include "core/directori_dades.h"
#include "core/sessio.h"
#include "jobs/dades_mostra.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

int initOrdre(ContextComanda &ctx, Arguments &args)
{
    const bool sample = args.flag(QStringLiteral("--sample"));
    args.finish();
    const QStringList creats = directori_dades::inicialitza(ctx.dirDades());
    QJsonArray creatsJson;
    for (const QString &c : creats) {
        creatsJson.append(c);
        if (!ctx.json())
            ctx.out() << "Creat: " << c << Qt::endl;
    }
    // Opening the session checks the database that the settings name (a missing one elsewhere
    // than the default path is an error) and brings an older one to the current schema.
    ctx.sessio();
    bool mostra = false;
    if (sample) {
        mostra = afegeixDadesMostra(ctx.sessio());
        if (!ctx.json())
            ctx.out() << (mostra ? "Dades d'exemple afegides." : "Les taules mestres no són buides: no s'afegeixen dades d'exemple.") << Qt::endl;
    }
    if (!ctx.json() && creats.isEmpty() && !sample)
        ctx.out() << "Res a crear: " << ctx.dirDades() << " ja és complet." << Qt::endl;
    if (ctx.json()) {
        QJsonObject o{{QStringLiteral("data_dir"), ctx.dirDades()}, {QStringLiteral("created"), creatsJson}};
        if (sample)
            o.insert(QStringLiteral("sample"), mostra);
        ctx.escriuJson(o);
    }
    return 0;
}

REGISTRA_COMANDA(QStringLiteral("init"), QStringLiteral("init [--sample]"),
                 QStringLiteral("crea els fitxers que falten al directori de dades; --sample hi afegeix dades d'exemple"),
                 initOrdre);

} // namespace
