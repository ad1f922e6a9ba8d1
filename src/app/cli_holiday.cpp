// quadrella holiday list [--year Y] [--json]
// quadrella holiday add --date D --text T
// quadrella holiday delete --date D
// quadrella holiday import FILE.ics
#include "linia_comandes.h"

#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/festius.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

QJsonObject festiuJson(const Festiu &f)
{
    return QJsonObject{{QStringLiteral("data"), f.data.toString(Qt::ISODate)},
                       {QStringLiteral("descripcio"), f.descripcio}};
}

void comprova(const QString &missatge)
{
    if (!missatge.isEmpty())
        throw ErrorComanda(missatge);
}

int llista(ContextComanda &ctx, Arguments &args)
{
    QString textAny;
    const int any = args.option(QStringLiteral("--year"), &textAny) ? Arguments::integer(textAny, QStringLiteral("--year")) : 0;
    args.finish();
    if (!textAny.isNull() && (any < 1 || any > 9999))
        throw ErrorUs(QStringLiteral("--year ha de ser un any"));
    const QList<Festiu> festius = Festius(ctx.sessio().db()).llista(any);
    if (ctx.json()) {
        QJsonArray a;
        for (const Festiu &f : festius)
            a.append(festiuJson(f));
        ctx.escriuJson(a);
        return 0;
    }
    QTextStream &o = ctx.out();
    for (const Festiu &f : festius)
        o << format::nomDia(format::diaSetmana(f.data)).leftJustified(10) << ' ' << format::dataCurta(f.data) << "  "
          << f.descripcio << '\n';
    o.flush();
    return 0;
}

int afegeix(ContextComanda &ctx, Arguments &args)
{
    const Festiu f{Arguments::date(args.required(QStringLiteral("--date")), QStringLiteral("--date")),
                   args.required(QStringLiteral("--text")).trimmed()};
    args.finish();
    comprova(Festius(ctx.sessio().db()).Afegeix_Festiu(f.data, f.descripcio));
    if (ctx.json())
        ctx.escriuJson(festiuJson(f));
    else
        ctx.out() << Tradueix("Festiu afegit:") << ' ' << format::dataCurta(f.data) << "  " << f.descripcio << Qt::endl;
    return 0;
}

int esborra(ContextComanda &ctx, Arguments &args)
{
    const QDate data = Arguments::date(args.required(QStringLiteral("--date")), QStringLiteral("--date"));
    args.finish();
    comprova(Festius(ctx.sessio().db()).Esborra_Festiu(data));
    if (ctx.json())
        ctx.escriuJson(QJsonObject{{QStringLiteral("data"), data.toString(Qt::ISODate)}});
    else
        ctx.out() << Tradueix("Festiu esborrat:") << ' ' << format::dataCurta(data) << Qt::endl;
    return 0;
}

int importa(ContextComanda &ctx, Arguments &args)
{
    const QString fitxer = args.nextPositional();
    args.finish();
    if (fitxer.isEmpty())
        throw ErrorUs(QStringLiteral("falta el fitxer .ics"));
    const ResultatImportacio r = Festius(ctx.sessio().db()).Importa_Festius(fitxer);
    comprova(r.error);
    if (ctx.json()) {
        ctx.escriuJson(QJsonObject{{QStringLiteral("afegits"), r.afegits},
                                   {QStringLiteral("avisos"), QJsonArray::fromStringList(r.avisos)}});
        return 0;
    }
    for (const QString &avis : r.avisos)
        ctx.err() << avis << '\n';
    ctx.err().flush();
    ctx.out() << r.afegits << Tradueix(" festius importats.") << Qt::endl;
    return 0;
}

int holidayOrdre(ContextComanda &ctx, Arguments &args)
{
    const QString sub = args.nextPositional();
    if (sub == QLatin1String("list"))
        return llista(ctx, args);
    if (sub == QLatin1String("add"))
        return afegeix(ctx, args);
    if (sub == QLatin1String("delete"))
        return esborra(ctx, args);
    if (sub == QLatin1String("import"))
        return importa(ctx, args);
    throw ErrorUs(sub.isEmpty() ? QStringLiteral("falta la subordre (list, add, delete, import)")
                                : QStringLiteral("subordre desconeguda '%1'").arg(sub));
}

REGISTRA_COMANDA(QStringLiteral("holiday"),
                 QStringLiteral("holiday list [--year Y] [--json]\n"
                                "holiday add --date D --text T\n"
                                "holiday delete --date D\n"
                                "holiday import FILE.ics"),
                 QStringLiteral("els festius (dies tancats) que la planificació salta: llista, afegeix, esborra o "
                                "importa d'un calendari iCalendar"),
                 holidayOrdre);

} // namespace
