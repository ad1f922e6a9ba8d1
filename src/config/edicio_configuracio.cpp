#include "edicio_configuracio.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/formats.h"
#include "core/ini.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QDir>
#include <QFileInfo>

namespace edicio_configuracio {

LlistesHores llistesHores(int minutsCella)
{
    LlistesHores l;
    if (minutsCella <= 0)
        return l;
    const int n = 1440 / minutsCella;
    for (int i = 0; i <= n; ++i) {
        const QString t = hora::text(i * minutsCella); // 1440 reads "24:00"
        if (i < n)
            l.inicis << t;
        if (i > 0)
            l.finals << t;
    }
    return l;
}

int indexHora(const QStringList &llista, const QString &actual)
{
    int index = llista.isEmpty() ? -1 : 0;
    for (int i = 0; i < llista.size(); ++i) {
        if (llista[i] <= actual)
            index = i;
    }
    return index;
}

QString textDecimal(double valor)
{
    if (valor == 0.0)
        valor = 0.0; // no "-0,00"
    return QString::number(valor, 'f', 2).replace(QLatin1Char('.'), QLatin1Char(','));
}

namespace {

Comprovacio rebutja(const char *missatge)
{
    Comprovacio c;
    c.missatge = Tradueix(missatge);
    return c;
}

Comprovacio accepta(const QString &text)
{
    Comprovacio c;
    c.text = text;
    return c;
}

} // namespace

Comprovacio comprova(Camp camp, const QString &textCamp, int *minutsAcceptats)
{
    const QString text = textCamp.trimmed();
    double real = 0.0;
    bool ok = false;
    switch (camp) {
    case Camp::MinutsCella: {
        const int v = conversio::aEnter(text, &ok);
        if (!ok)
            return rebutja(PerTraduir("Cal introduir un valor no inferior a 10 minuts"));
        const bool nou = v != *minutsAcceptats;
        if (nou && v < 10)
            return rebutja(PerTraduir("El valor no pot ser inferior a 10 minuts"));
        // A cell longer than a day leaves the time lists empty.
        if (nou && v > 1440)
            return rebutja(PerTraduir("El valor no pot ser superior a 1440 minuts"));
        Comprovacio c = accepta(QString::number(v));
        if (nou) {
            *minutsAcceptats = v;
            c.canviaLlistesHores = true;
        }
        return c;
    }
    case Camp::HoresDia:
        if (!format::llegeixReal(text, &real))
            return rebutja(PerTraduir("Cal introduir un valor no negatiu"));
        if (real < 0)
            return rebutja(PerTraduir("No es pot introduir un valor negatiu"));
        return accepta(textDecimal(arrodoneix::centims(real)));
    case Camp::ValorXec:
        if (!format::llegeixReal(text, &real) || real < 0)
            return rebutja(PerTraduir("Cal introduir un valor no negatiu"));
        return accepta(textDecimal(arrodoneix::centims(real)));
    case Camp::CostHoraXec:
        if (!format::llegeixReal(text, &real) || real > 0)
            return rebutja(PerTraduir("Cal introduir un valor no positiu"));
        return accepta(textDecimal(arrodoneix::centims(real)));
    case Camp::MaxXecsMes: {
        const int v = conversio::aEnter(text, &ok);
        if (!ok)
            return rebutja(PerTraduir("Cal introduir un valor enter no negatiu"));
        if (v < 0)
            return rebutja(PerTraduir("No es pot introduir un valor negatiu"));
        return accepta(QString::number(v));
    }
    case Camp::UltimDiaGen: {
        const QDate d = format::llegeixData(text);
        if (!d.isValid())
            return rebutja(PerTraduir("Data incorrecta"));
        return accepta(format::dataCurta(d));
    }
    }
    return rebutja(PerTraduir("Data incorrecta"));
}

int feinaIncoherent(Db &db, const QString &horaInici, int minutsCella)
{
    const int inici = hora::minuts(horaInici);
    if (inici < 0 || minutsCella <= 0)
        return 0;
    // The start's minutes are worked out in SQL so that a large table is scanned once, in order.
    Query q = db.query(QStringLiteral(
        "SELECT feines_id FROM Feines "
        "WHERE ((CAST(substr(feines_hora_inici, 1, 2) AS INTEGER) * 60 "
        "+ CAST(substr(feines_hora_inici, 4, 2) AS INTEGER)) - ?) % ? <> 0 "
        "ORDER BY feines_id LIMIT 1"));
    q.bind(inici).bind(minutsCella).exec();
    return q.next() ? static_cast<int>(q.integer(0)) : 0;
}

QStringList serveisXecs(Db &db)
{
    QStringList l{QString()};
    Query q = db.query(QStringLiteral("SELECT serveis_nom FROM Serveis ORDER BY serveis_nom"));
    q.exec();
    l += q.columna();
    return l;
}

QDate dataPurgaInicial(const QDate &avui)
{
    return QDate(avui.year(), 1, 1).addDays(-1);
}

Valors valorsInicials(const Sessio &sessio)
{
    const Configuracio &c = sessio.cfg();
    Valors v;
    v.BaseDades = c.BaseDades;
    v.MinutsCella = QString::number(c.MinutsCella);
    v.HoraInici = c.HoraInici;
    v.HoraFinal = c.HoraFinal;
    v.HoresDia = textDecimal(c.HoresDia);
    v.DissabtesExtra = c.DissabtesExtra;
    v.DiumengesExtra = c.DiumengesExtra;
    v.CalculxHores = c.CalculxHores;
    v.HoraIniciDinar = c.HoraIniciDinar;
    v.HoraFinalDinar = c.HoraFinalDinar;
    v.ServeiXecs = c.ServeiXecs;
    v.ValorXec = textDecimal(c.ValorXec);
    v.CostHoraXec = textDecimal(c.CostHoraXec);
    v.MaxXecsMes = QString::number(c.MaxXecsMes);
    v.PermetSolaparLlocs = c.PermetSolaparLlocs;
    for (const QString &entrada : llistaIdiomes(c.fitxerIni)) {
        if (codiIdioma(entrada).compare(c.Idioma, Qt::CaseInsensitive) == 0) {
            v.Idioma = entrada;
            break;
        }
    }
    v.UltimDiaGen = format::dataCurta(c.UltimDiaGen);
    return v;
}

QString fitxerBaseDades(const Sessio &sessio, const QString &text)
{
    const QString t = text.trimmed();
    const QString dir = sessio.cfg().dirDades;
    if (t.isEmpty())
        return QDir(dir).filePath(Configuracio::nomFitxerBaseDades());
    return QDir::isRelativePath(t) ? QDir(dir).filePath(t) : t;
}

Resultat confirma(Sessio &sessio, const Valors &valors, Interaccio &ui, const Escriptor &escriuDonat)
{
    bool ok = false;
    const int minuts = conversio::aEnter(valors.MinutsCella, &ok);
    if (!ok || minuts <= 0) {
        ui.informa(QStringLiteral("Quadrella"), Tradueix("Cal introduir un valor no inferior a 10 minuts"));
        return Resultat::Incoherent;
    }
    // Times are "hh:mm" texts ("24:00" the end of the day), so they compare as texts.
    if (!(valors.HoraInici < valors.HoraFinal)) {
        ui.informa(QStringLiteral("Quadrella"), Tradueix("L'hora final ha de ser posterior a l'hora d'inici"));
        return Resultat::DiaIncorrecte;
    }
    if (valors.HoraIniciDinar < valors.HoraInici || valors.HoraFinalDinar > valors.HoraFinal
        || valors.HoraFinalDinar < valors.HoraIniciDinar) {
        ui.informa(QStringLiteral("Quadrella"), Tradueix("L'hora del dinar ha de quedar dins de l'horari del dia"));
        return Resultat::DinarIncorrecte;
    }
    if (const int id = feinaIncoherent(sessio.db(), valors.HoraInici, minuts)) {
        // The job is named as the agenda shows it, so that the user can find it.
        QString on;
        Query q = sessio.db().query(QStringLiteral(
            "SELECT llocs_nom, feines_data, feines_hora_inici FROM Feines WHERE feines_id = ?"));
        q.bind(id).exec();
        if (q.next())
            on = QStringLiteral(": ") + q.text(0) + QLatin1Char(' ')
                + format::dataCurta(QDate::fromString(q.text(1), Qt::ISODate)) + QLatin1Char(' ') + q.text(2);
        ui.error(QStringLiteral("ERROR"),
                 Tradueix("Hi ha feines (p.ex. id=") + QString::number(id) + on
                     + Tradueix(") amb hora d'inici incoherent amb els paràmetres 'Hora inici:' i 'Tram mínim:'."));
        return Resultat::Incoherent;
    }
    // A typo or an unmounted share must not send the next start to a new empty file.
    const QString fitxerBD = fitxerBaseDades(sessio, valors.BaseDades);
    const bool baseNova = !QFileInfo::exists(fitxerBD);
    if (baseNova) {
        const QString carpeta = QFileInfo(fitxerBD).absolutePath();
        if (!QFileInfo(carpeta).isDir()) {
            ui.informa(QStringLiteral("Quadrella"), Tradueix("No existeix la carpeta %1.").arg(carpeta));
            return Resultat::BaseDadesRebutjada;
        }
        if (!ui.preguntaPerDefecteNo(Tradueix("AVÍS"), Tradueix("No existeix la base de dades %1. Vols crear-hi una base de dades nova i buida?").arg(fitxerBD)))
            return Resultat::BaseDadesRebutjada;
    }
    if (!ui.pregunta(Tradueix("AVÍS"), Tradueix("Vas a modificar la configuració.") + QLatin1Char('\n')
                                           + Tradueix("Es reiniciarà l'aplicació. Continuar?")))
        return Resultat::NoConfirmat;
    if (baseNova && !QFileInfo::exists(fitxerBD)) {
        Db nova;
        nova.open(fitxerBD);
        directori_dades::creaEsquema(nova);
    }

    Configuracio &cfg = sessio.cfg();
    const QString fitxer = cfg.fitxerIni;
    const Escriptor escriu = escriuDonat ? escriuDonat : Escriptor([&fitxer](const QString &s, const QString &k, const QString &v) {
        return EscriureIni(fitxer, s, k, v);
    });
    const auto grava = [&](const char *seccio, const char *clau, const QString &valor) {
        if (!escriu(QString::fromLatin1(seccio), QString::fromLatin1(clau), valor))
            ui.error(QStringLiteral("ERROR"), Tradueix("Error al gravar .ini"));
    };
    const auto boolea = [](bool b) { return b ? QStringLiteral("1") : QStringLiteral("0"); };
    // A language list without entries leaves the language as it is.
    const QString idioma = valors.Idioma.trimmed().isEmpty() ? cfg.Idioma : codiIdioma(valors.Idioma);

    grava("General", "BaseDades", valors.BaseDades);
    grava("Parametres", "MinutsCella", valors.MinutsCella);
    grava("Parametres", "HoraInici", valors.HoraInici);
    grava("Parametres", "HoraFinal", valors.HoraFinal);
    grava("Parametres", "HoresDia", valors.HoresDia);
    grava("Parametres", "DissabtesExtra", boolea(valors.DissabtesExtra));
    grava("Parametres", "DiumengesExtra", boolea(valors.DiumengesExtra));
    grava("Parametres", "CalculxHores", boolea(valors.CalculxHores));
    grava("Parametres", "HoraIniciDinar", valors.HoraIniciDinar);
    grava("Parametres", "HoraFinalDinar", valors.HoraFinalDinar);
    grava("Parametres", "ServeiXecs", valors.ServeiXecs);
    grava("Parametres", "ValorXec", valors.ValorXec);
    grava("Parametres", "CostHoraXec", valors.CostHoraXec);
    grava("Parametres", "MaxXecsMes", valors.MaxXecsMes);
    grava("Parametres", "PermetSolaparLlocs", boolea(valors.PermetSolaparLlocs));
    grava("Parametres", "Idioma", idioma);

    const QDate ultim = format::llegeixData(valors.UltimDiaGen.trimmed());
    if (ultim.isValid()) {
        cfg.UltimDiaGen = ultim;
        grava("Estat", "UltimDiaGen", format::dataCurta(ultim));
    }
    sessio.ReiniciarAplicacio = true;
    return Resultat::Gravat;
}

} // namespace edicio_configuracio
