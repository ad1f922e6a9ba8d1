// quadrella config [--json]
#include "linia_comandes.h"

#include "core/formats.h"
#include "core/sessio.h"

#include <QJsonObject>

namespace {

QString colorText(qint32 c)
{
    return QString::number(c);
}

int configOrdre(ContextComanda &ctx, Arguments &args)
{
    args.finish();
    // Settings are read on their own: a broken database must not hide them.
    const Configuracio c = Configuracio::carrega(ctx.dirDades());
    if (ctx.json()) {
        QJsonObject s{
            {QStringLiteral("BaseDades"), c.BaseDades},
            {QStringLiteral("TexteVaris"), c.TexteVaris},
            {QStringLiteral("ColorFeina"), c.ColorFeina},
            {QStringLiteral("ColorQuota"), c.ColorQuota},
            {QStringLiteral("ColorDiumenge"), c.ColorDiumenge},
            {QStringLiteral("MarcaSeleccio"), c.MarcaSeleccio},
            {QStringLiteral("MarcaLlista"), c.MarcaLlista},
            {QStringLiteral("PosicioSaltPagina"), c.PosicioSaltPagina},
            {QStringLiteral("TexteNoAsignada"), c.TexteNoAsignada},
            {QStringLiteral("MinutsCella"), c.MinutsCella},
            {QStringLiteral("HoraInici"), c.HoraInici},
            {QStringLiteral("HoraFinal"), c.HoraFinal},
            {QStringLiteral("HoresDia"), c.HoresDia},
            {QStringLiteral("CalculxHores"), c.CalculxHores},
            {QStringLiteral("DissabtesExtra"), c.DissabtesExtra},
            {QStringLiteral("DiumengesExtra"), c.DiumengesExtra},
            {QStringLiteral("HoraIniciDinar"), c.HoraIniciDinar},
            {QStringLiteral("HoraFinalDinar"), c.HoraFinalDinar},
            {QStringLiteral("ServeiXecs"), c.ServeiXecs},
            {QStringLiteral("ValorXec"), c.ValorXec},
            {QStringLiteral("CostHoraXec"), c.CostHoraXec},
            {QStringLiteral("MaxXecsMes"), c.MaxXecsMes},
            {QStringLiteral("PermetSolaparLlocs"), c.PermetSolaparLlocs},
            {QStringLiteral("PrimeraExecucio"), c.PrimeraExecucio},
            {QStringLiteral("Idioma"), c.Idioma},
            {QStringLiteral("UltimDiaGen"), c.UltimDiaGen.toString(Qt::ISODate)},
        };
        ctx.escriuJson(QJsonObject{{QStringLiteral("settings"), s},
                                   {QStringLiteral("PrimerDiaSetmana"), c.PrimerDiaSetmana},
                                   {QStringLiteral("CellesDia"), c.CellesDia},
                                   {QStringLiteral("data_dir"), c.dirDades}});
        return 0;
    }
    QTextStream &o = ctx.out();
    auto line = [&](const char *key, const QString &value) { o << QString::fromLatin1(key).leftJustified(20) << value << '\n'; };
    auto b = [](bool v) { return v ? QStringLiteral("1") : QStringLiteral("0"); };
    o << "[General]\n";
    line("BaseDades", c.BaseDades);
    o << "\n[Parametres]\n";
    line("TexteVaris", c.TexteVaris);
    line("ColorFeina", colorText(c.ColorFeina));
    line("ColorQuota", colorText(c.ColorQuota));
    line("ColorDiumenge", colorText(c.ColorDiumenge));
    line("MarcaSeleccio", QLatin1Char('"') + c.MarcaSeleccio + QLatin1Char('"'));
    line("MarcaLlista", QLatin1Char('"') + c.MarcaLlista + QLatin1Char('"'));
    line("PosicioSaltPagina", QString::number(c.PosicioSaltPagina));
    line("TexteNoAsignada", c.TexteNoAsignada);
    line("MinutsCella", QString::number(c.MinutsCella));
    line("HoraInici", c.HoraInici);
    line("HoraFinal", c.HoraFinal);
    line("HoresDia", format::import(c.HoresDia));
    line("CalculxHores", b(c.CalculxHores));
    line("DissabtesExtra", b(c.DissabtesExtra));
    line("DiumengesExtra", b(c.DiumengesExtra));
    line("HoraIniciDinar", c.HoraIniciDinar);
    line("HoraFinalDinar", c.HoraFinalDinar);
    line("ServeiXecs", c.ServeiXecs);
    line("ValorXec", format::import(c.ValorXec));
    line("CostHoraXec", format::import(c.CostHoraXec));
    line("MaxXecsMes", QString::number(c.MaxXecsMes));
    line("PermetSolaparLlocs", b(c.PermetSolaparLlocs));
    line("PrimeraExecucio", b(c.PrimeraExecucio));
    line("Idioma", c.Idioma);
    o << "\n[Estat]\n";
    line("UltimDiaGen", format::dataCurta(c.UltimDiaGen));
    o << "\n";
    line("PrimerDiaSetmana", QString::number(c.PrimerDiaSetmana));
    line("CellesDia", QString::number(c.CellesDia));
    line("data_dir", c.dirDades);
    o.flush();
    return 0;
}

REGISTRA_COMANDA(QStringLiteral("config"), QStringLiteral("config [--json]"),
                 QStringLiteral("mostra tots els paràmetres en vigor"), configOrdre);

} // namespace
