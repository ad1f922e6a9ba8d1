// quadrella job add|modify|delete|show|find: one job at a time, through the job engine.
#include "linia_comandes.h"

#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/carrega_feina.h"
#include "jobs/feina_json.h"
#include "jobs/motor_feines.h"

#include <optional>

namespace {

void escriuFeina(ContextComanda &ctx, const Feina &f)
{
    if (ctx.json()) {
        ctx.escriuJson(feinaAJson(f));
        return;
    }
    QTextStream &o = ctx.out();
    const auto linia = [&](const QString &etiqueta, const QString &valor) {
        o << "  " << etiqueta.leftJustified(22) << valor << '\n';
    };
    o << Tradueix("Feina") << ' ' << f.feines_id << '\n';
    linia(Tradueix("Lloc:"), f.llocs_nom);
    linia(Tradueix("Data:"), format::dataCurta(f.feines_data));
    linia(Tradueix("Hora:"), f.feines_hora_inici + QStringLiteral(" - ") + f.feines_hora_fi);
    linia(Tradueix("Recurs:"), f.recursos_nom.isEmpty() ? QStringLiteral("-") : f.recursos_nom);
    linia(Tradueix("Feta:"), f.feines_feta ? Tradueix("sí") : Tradueix("no"));
    linia(Tradueix("Data de facturació:"), format::dataCurta(f.feines_data_factura));
    linia(Tradueix("Observacions:"), f.feines_observacions);
    o.flush();
}

// The engine's refusal (or failure) is the command's: message on stderr, exit 1.
void comprova(const Feina &f)
{
    if (!f.missatge.isEmpty())
        throw ErrorComanda(f.missatge);
}

int identificador(Arguments &args)
{
    return Arguments::integer(args.required(QStringLiteral("--id")), QStringLiteral("--id"));
}

int afegeix(ContextComanda &ctx, Arguments &args)
{
    Feina f;
    f.llocs_nom = args.required(QStringLiteral("--place"));
    f.feines_data = Arguments::date(args.required(QStringLiteral("--date")), QStringLiteral("--date"));
    f.feines_hora_inici = Arguments::time(args.required(QStringLiteral("--start")), QStringLiteral("--start"));
    args.option(QStringLiteral("--resource"), &f.recursos_nom);
    const bool estricte = args.flag(QStringLiteral("--strict"));
    args.finish();

    Sessio &s = ctx.sessio();
    MotorFeines motor(s.db(), s.cfg());
    motor.Grava_Feina(f, estricte);
    comprova(f);
    escriuFeina(ctx, f);
    return 0;
}

int modifica(ContextComanda &ctx, Arguments &args)
{
    const int id = identificador(args);
    QString text;
    std::optional<QDate> data, dataFactura;
    std::optional<QString> inici, fi, recurs, notes;
    if (args.option(QStringLiteral("--date"), &text))
        data = Arguments::date(text, QStringLiteral("--date"));
    if (args.option(QStringLiteral("--start"), &text))
        inici = Arguments::time(text, QStringLiteral("--start"));
    if (args.option(QStringLiteral("--end"), &text)) // "" asks for the end to be worked out again
        fi = text.isEmpty() ? QString() : Arguments::time(text, QStringLiteral("--end"));
    if (args.option(QStringLiteral("--resource"), &text))
        recurs = text;
    const bool feta = args.flag(QStringLiteral("--done"));
    const bool noFeta = args.flag(QStringLiteral("--not-done"));
    if (args.option(QStringLiteral("--invoice-date"), &text))
        dataFactura = text.isEmpty() ? QDate() : Arguments::date(text, QStringLiteral("--invoice-date"));
    if (args.option(QStringLiteral("--notes"), &text))
        notes = text;
    args.finish();
    if (feta && noFeta)
        throw ErrorUs(QStringLiteral("--done i --not-done s'exclouen"));

    Sessio &s = ctx.sessio();
    Feina f;
    f.feines_id = id;
    // A job that does not exist is left for the engine to refuse in its own words.
    if (carregaFeina(s.db(), id, f)) {
        f.feines_data = data.value_or(f.feines_data);
        f.feines_hora_inici = inici.value_or(f.feines_hora_inici);
        f.feines_hora_fi = fi.value_or(f.feines_hora_fi);
        f.recursos_nom = recurs.value_or(f.recursos_nom);
        if (feta || noFeta)
            f.feines_feta = feta;
        f.feines_data_factura = dataFactura.value_or(f.feines_data_factura);
        f.feines_observacions = notes.value_or(f.feines_observacions);
    }
    MotorFeines motor(s.db(), s.cfg());
    motor.Modifica_Feina(f);
    comprova(f);
    escriuFeina(ctx, f);
    return 0;
}

int esborra(ContextComanda &ctx, Arguments &args)
{
    Feina f;
    f.feines_id = identificador(args);
    args.finish();
    Sessio &s = ctx.sessio();
    MotorFeines motor(s.db(), s.cfg());
    motor.Borra_Feina(f);
    comprova(f);
    escriuFeina(ctx, f);
    return 0;
}

int mostra(ContextComanda &ctx, Arguments &args)
{
    const int id = identificador(args);
    args.finish();
    Feina f;
    if (!carregaFeina(ctx.sessio().db(), id, f))
        throw ErrorComanda(Tradueix("Feina no trobada"));
    escriuFeina(ctx, f);
    return 0;
}

int busca(ContextComanda &ctx, Arguments &args)
{
    const QString lloc = args.required(QStringLiteral("--place"));
    const QDate dia = Arguments::date(args.required(QStringLiteral("--date")), QStringLiteral("--date"));
    const QString minut = Arguments::time(args.required(QStringLiteral("--minute")), QStringLiteral("--minute"));
    QString recurs;
    args.option(QStringLiteral("--resource"), &recurs);
    args.finish();
    Sessio &s = ctx.sessio();
    MotorFeines motor(s.db(), s.cfg());
    Feina f;
    motor.Busca_Feina(f, dia, minut, lloc, recurs);
    comprova(f);
    escriuFeina(ctx, f);
    return 0;
}

int jobOrdre(ContextComanda &ctx, Arguments &args)
{
    return executaSubordre(ctx, args, {{"add", afegeix}, {"modify", modifica}, {"delete", esborra},
                                       {"show", mostra}, {"find", busca}});
}

REGISTRA_COMANDA(QStringLiteral("job"),
                 QStringLiteral("job add --place P --date D --start HH:MM [--resource R] [--strict]\n"
                                "job modify --id N [--date D] [--start HH:MM] [--end HH:MM] [--resource R]"
                                " [--done|--not-done] [--invoice-date D] [--notes T]\n"
                                "job delete --id N\n"
                                "job show --id N\n"
                                "job find --place P --date D --minute HH:MM [--resource R]"),
                 QStringLiteral("crea, modifica, esborra, mostra o busca una feina"), jobOrdre);

} // namespace
