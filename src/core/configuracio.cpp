#include "configuracio.h"

#include "formats.h"
#include "ini.h"

#include <QDir>
#include <QLocale>
#include <QRegularExpression>
#include <cmath>

namespace conversio {

bool aBoolea(const QString &text, bool *ok)
{
    const QString t = text.trimmed();
    *ok = true;
    if (t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || t.compare(QLatin1String("cert"), Qt::CaseInsensitive) == 0)
        return true;
    if (t.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0 || t.compare(QLatin1String("fals"), Qt::CaseInsensitive) == 0)
        return false;
    double v = 0;
    if (format::llegeixReal(t, &v))
        return v != 0.0;
    *ok = false;
    return false;
}

qint32 aLong(const QString &text, bool *ok)
{
    const QString t = text.trimmed();
    *ok = false;
    if (t.startsWith(QLatin1String("&H"), Qt::CaseInsensitive) || t.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        QString hex = t.mid(2);
        if (hex.endsWith(QLatin1Char('&')))
            hex.chop(1);
        const qint64 v = hex.toLongLong(ok, 16);
        return *ok ? static_cast<qint32>(v) : 0;
    }
    double v = 0;
    if (!format::llegeixReal(t, &v))
        return 0;
    // Range checked on the rounded value itself: converting first would wrap a large number.
    const double r = std::rint(v); // halves to even, as arrodoneix::enter
    if (r < -2147483648.0 || r > 2147483647.0)
        return 0;
    *ok = true;
    return static_cast<qint32>(r);
}

int aEnter(const QString &text, bool *ok)
{
    double v = 0;
    *ok = false;
    if (!format::llegeixReal(text, &v))
        return 0;
    const double r = std::rint(v);
    if (r < -32768.0 || r > 32767.0)
        return 0;
    *ok = true;
    return static_cast<int>(r);
}

double aReal(const QString &text, bool *ok)
{
    double v = 0;
    *ok = format::llegeixReal(text, &v);
    return *ok ? v : 0.0;
}

QDate aData(const QString &text, bool *ok)
{
    const QDate d = format::llegeixData(text);
    *ok = d.isValid();
    return d;
}

QString aHora(const QString &text, bool *ok)
{
    const QString h = hora::llegeix(text);
    *ok = !h.isNull();
    return h;
}

} // namespace conversio

namespace {

struct Lector {
    QString fitxer;
    QString llegeix(const char *seccio, const char *clau, const QString &perDefecte) const
    {
        return LlegirIni(fitxer, QString::fromLatin1(seccio), QString::fromLatin1(clau), perDefecte);
    }
    [[noreturn]] static void malament(const char *clau, const QString &valor)
    {
        throw ConfigError(QStringLiteral("Valor no vàlid per a %1: '%2'").arg(QString::fromLatin1(clau), valor));
    }
    QString text(const char *clau, const QString &def) const { return llegeix("Parametres", clau, def); }
    qint32 color(const char *clau, qint32 def) const
    {
        const QString v = llegeix("Parametres", clau, QString::number(def));
        bool ok = false;
        const qint32 r = conversio::aLong(v, &ok);
        if (!ok)
            malament(clau, v);
        return r;
    }
    int enter(const char *clau, int def) const
    {
        const QString v = llegeix("Parametres", clau, QString::number(def));
        bool ok = false;
        const int r = conversio::aEnter(v, &ok);
        if (!ok)
            malament(clau, v);
        return r;
    }
    double real(const char *clau, const QString &def) const
    {
        const QString v = llegeix("Parametres", clau, def);
        bool ok = false;
        const double r = conversio::aReal(v, &ok);
        if (!ok)
            malament(clau, v);
        return r;
    }
    bool boolea(const char *clau, bool def) const
    {
        const QString v = llegeix("Parametres", clau, def ? QStringLiteral("1") : QStringLiteral("0"));
        bool ok = false;
        const bool r = conversio::aBoolea(v, &ok);
        if (!ok)
            malament(clau, v);
        return r;
    }
    QString hora(const char *clau, const QString &def) const
    {
        const QString v = llegeix("Parametres", clau, def);
        bool ok = false;
        const QString h = conversio::aHora(v, &ok);
        if (!ok)
            malament(clau, v);
        return h;
    }
};

} // namespace

int Configuracio::primerDiaSistema()
{
    // Qt numbers Monday = 1 ... Sunday = 7; the system numbers Sunday = 1 ... Saturday = 7.
    const int qtDay = QLocale::system().firstDayOfWeek();
    return qtDay % 7 + 1;
}

int Configuracio::diaSetmana(const QDate &d, int primerDia)
{
    const int sys = format::diaSetmana(d); // 1 = Sunday
    return ((sys - primerDia + 7) % 7) + 1;
}

QDate Configuracio::ultimDiaSetmana(const QDate &avui, int primerDia)
{
    return avui.addDays(-diaSetmana(avui, primerDia) + 7);
}

int Configuracio::cellesDia(const QString &horaInici, const QString &horaFinal, int minutsCella)
{
    const int inici = hora::minuts(horaInici);
    const int fi = hora::minuts(horaFinal);
    if (inici < 0 || fi < 0 || minutsCella <= 0)
        return 0;
    const int span = fi - inici;
    return span > 0 ? span / minutsCella : 0;
}

QString Configuracio::nomFitxerBaseDades()
{
    return QStringLiteral("QuadrellaV%1.db").arg(QUADRELLA_VERSION_MAJOR, 2, 10, QLatin1Char('0'));
}

QList<Configuracio::Clau> Configuracio::claus(const QString &dirDades, const QDate &avui, int primerDia)
{
    return {
        {"General", "BaseDades", QDir(dirDades).filePath(nomFitxerBaseDades())},
        {"Parametres", "TexteVaris", QStringLiteral("...")},
        {"Parametres", "ColorFeina", QStringLiteral("16768483")},
        {"Parametres", "ColorQuota", QStringLiteral("16764117")},
        {"Parametres", "ColorDiumenge", QStringLiteral("11513775")},
        {"Parametres", "MarcaSeleccio", QStringLiteral("-> ")},
        {"Parametres", "MarcaLlista", QStringLiteral(" * ")},
        {"Parametres", "PosicioSaltPagina", QStringLiteral("14500")},
        {"Parametres", "TexteNoAsignada", QStringLiteral("< >")},
        {"Parametres", "MinutsCella", QStringLiteral("30")},
        {"Parametres", "HoraInici", QStringLiteral("00:00")},
        {"Parametres", "HoraFinal", QStringLiteral("24:00")},
        {"Parametres", "HoresDia", QStringLiteral("8,00")},
        {"Parametres", "CalculxHores", QStringLiteral("1")},
        {"Parametres", "DissabtesExtra", QStringLiteral("1")},
        {"Parametres", "DiumengesExtra", QStringLiteral("1")},
        {"Parametres", "HoraIniciDinar", QStringLiteral("13:30")},
        {"Parametres", "HoraFinalDinar", QStringLiteral("15:00")},
        {"Parametres", "ServeiXecs", QString()},
        {"Parametres", "ValorXec", QStringLiteral("0,00")},
        {"Parametres", "CostHoraXec", QStringLiteral("0,00")},
        {"Parametres", "MaxXecsMes", QStringLiteral("0")},
        {"Parametres", "PermetSolaparLlocs", QStringLiteral("1")},
        {"Parametres", "PrimeraExecucio", QStringLiteral("1")},
        {"Parametres", "Idioma", QStringLiteral("CT")},
        {"Estat", "UltimDiaGen", format::dataCurta(ultimDiaSetmana(avui, primerDia))},
    };
}

Configuracio Configuracio::carrega(const QString &dirDades, int primerDiaSetmana, const QDate &avui)
{
    Configuracio c;
    c.dirDades = dirDades;
    c.fitxerIni = QDir(dirDades).filePath(QStringLiteral("Quadrella.ini"));
    c.PrimerDiaSetmana = primerDiaSetmana;
    const Lector l{c.fitxerIni};

    c.BaseDades = l.llegeix("General", "BaseDades", QDir(dirDades).filePath(nomFitxerBaseDades()));
    if (QDir::isRelativePath(c.BaseDades))
        c.BaseDades = QDir(dirDades).filePath(c.BaseDades);

    c.TexteVaris = l.text("TexteVaris", QStringLiteral("..."));
    c.ColorFeina = l.color("ColorFeina", 16768483);
    c.ColorQuota = l.color("ColorQuota", 16764117);
    c.ColorDiumenge = l.color("ColorDiumenge", 11513775);
    c.MarcaSeleccio = l.text("MarcaSeleccio", QStringLiteral("-> "));
    c.MarcaLlista = l.text("MarcaLlista", QStringLiteral(" * "));
    c.PosicioSaltPagina = l.enter("PosicioSaltPagina", 14500);
    c.TexteNoAsignada = l.text("TexteNoAsignada", QStringLiteral("< >"));
    c.MinutsCella = l.enter("MinutsCella", 30);
    if (c.MinutsCella <= 0)
        Lector::malament("MinutsCella", QString::number(c.MinutsCella));
    c.HoraInici = l.hora("HoraInici", QStringLiteral("00:00"));
    c.HoraFinal = l.hora("HoraFinal", QStringLiteral("24:00"));
    c.HoresDia = l.real("HoresDia", QStringLiteral("8,00"));
    c.CalculxHores = l.boolea("CalculxHores", true);
    c.DissabtesExtra = l.boolea("DissabtesExtra", true);
    c.DiumengesExtra = l.boolea("DiumengesExtra", true);
    c.HoraIniciDinar = l.hora("HoraIniciDinar", QStringLiteral("13:30"));
    c.HoraFinalDinar = l.hora("HoraFinalDinar", QStringLiteral("15:00"));
    c.ServeiXecs = l.text("ServeiXecs", QString());
    c.ValorXec = l.real("ValorXec", QStringLiteral("0,00"));
    c.CostHoraXec = l.real("CostHoraXec", QStringLiteral("0,00"));
    c.MaxXecsMes = l.enter("MaxXecsMes", 0);
    c.PermetSolaparLlocs = l.boolea("PermetSolaparLlocs", true);
    c.PrimeraExecucio = l.boolea("PrimeraExecucio", true);
    c.Idioma = l.text("Idioma", QStringLiteral("CT"));

    const QString ultim = l.llegeix("Estat", "UltimDiaGen", format::dataCurta(ultimDiaSetmana(avui, primerDiaSetmana)));
    bool ok = false;
    c.UltimDiaGen = conversio::aData(ultim, &ok);
    if (!ok)
        Lector::malament("UltimDiaGen", ultim);

    c.CellesDia = cellesDia(c.HoraInici, c.HoraFinal, c.MinutsCella);
    return c;
}
