// quadrella overtime --resource R --date D [--set HOURS] [--json]
#include "linia_comandes.h"

#include "agenda/agenda_model.h"
#include "agenda/hores_extres.h"
#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QJsonObject>

namespace {

// The worker's name as stored, or "" when there is no such worker.
QString nomRecurs(Db &db, const QString &recurs)
{
    Query q = db.query(QStringLiteral("SELECT recursos_nom FROM Recursos WHERE recursos_nom = ?"));
    q.bind(recurs).exec();
    return q.next() ? q.text(0) : QString();
}

int overtimeOrdre(ContextComanda &ctx, Arguments &args)
{
    const QString recursDemanat = args.required(QStringLiteral("--resource"));
    const QDate dia = Arguments::date(args.required(QStringLiteral("--date")), QStringLiteral("--date"));
    QString hores;
    const bool posa = args.option(QStringLiteral("--set"), &hores);
    args.finish();

    Sessio &s = ctx.sessio();
    const QString recurs = nomRecurs(s.db(), recursDemanat);
    if (recurs.isEmpty())
        throw ErrorComanda(Tradueix("Recurs no trobat:") + recursDemanat);

    // The proposal reads the worker's first column of the day's agenda, as the overtime row does.
    ModelAgenda model(s.db(), s.cfg());
    model.Construeix_Agenda(EstatAgenda(VistaAgenda::Dia, dia, s.cfg().PrimerDiaSetmana));
    const double proposta = Calcula_Hores_Extres(model, columnaRecurs(model, recurs), s.cfg(), dia);

    if (posa) {
        // Stored as the overtime cell keeps it: to the cent, and 0 for anything but a number.
        Grava_Hores_Fetes(s.db(), valorHores(textHores(hores)), recurs, dia);
    }
    const double guardades = Hores_Fetes(s.db(), recurs, dia);

    if (ctx.json()) {
        ctx.escriuJson(QJsonObject{{QStringLiteral("recursos_nom"), recurs},
                                   {QStringLiteral("data"), dia.toString(Qt::ISODate)},
                                   {QStringLiteral("proposta"), proposta},
                                   {QStringLiteral("hores"), guardades}});
        return 0;
    }
    QTextStream &o = ctx.out();
    o << Tradueix("Recurs:") << ' ' << recurs << '\n'
      << Tradueix("Data:") << ' ' << format::dataCurta(dia) << '\n'
      << Tradueix("Proposta:") << ' ' << format::import(proposta) << '\n'
      << Tradueix("Hores extra") << ": " << format::import(guardades) << '\n';
    o.flush();
    return 0;
}

REGISTRA_COMANDA(QStringLiteral("overtime"),
                 QStringLiteral("overtime --resource R --date D [--set HOURS] [--json]"),
                 QStringLiteral("hores extra proposades i guardades d'un treballador en un dia; --set les guarda"),
                 overtimeOrdre);

} // namespace
