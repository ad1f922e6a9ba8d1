// quadrella plan --until D | --from D --to D [--dry-run]
#include "linia_comandes.h"

#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/motor_feines.h"
#include "jobs/planificacio.h"
#include "jobs/planificacio_generacio.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

// With --json the log is gathered and printed as one value at the end.
// Counts the errors shown, so that a failed settings write also ends in exit code 1.
class InteraccioComptada : public Interaccio {
public:
    explicit InteraccioComptada(Interaccio &base) : m_base(base) {}
    void informa(const QString &titol, const QString &text) override { m_base.informa(titol, text); }
    bool pregunta(const QString &titol, const QString &text) override { return m_base.pregunta(titol, text); }
    void error(const QString &titol, const QString &text) override
    {
        ++errors;
        m_base.error(titol, text);
    }
    int errors = 0;

private:
    Interaccio &m_base;
};

class RegistreRecollit : public RegistreSortida {
public:
    void afegeix(const QString &text) override { m_text += text; }
    QString text() const
    {
        QString t = m_text;
        return t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    }

private:
    QString m_text;
};

QString nomResultat(FeinaPlanificada::Resultat r)
{
    switch (r) {
    case FeinaPlanificada::Resultat::Ok:
        return QStringLiteral("ok");
    case FeinaPlanificada::Resultat::SenseRecurs:
        return QStringLiteral("sense_recurs");
    case FeinaPlanificada::Resultat::Refusada:
        break;
    }
    return QStringLiteral("refusada");
}

// The preview: per place its jobs, then the counts.
void escriuPrevisio(QTextStream &o, const PrevisioPlanificacio &p)
{
    o << Tradueix("Previsió de la planificació:") << ' ' << format::dataCurta(p.desde) << " - " << format::dataCurta(p.fins)
      << '\n';
    QString lloc;
    for (const FeinaPlanificada &f : p.feines) {
        if (f.llocs_nom != lloc) {
            lloc = f.llocs_nom;
            o << '\n' << lloc << '\n';
        }
        o << "  " << format::nomDia(format::diaSetmana(f.feines_data)).leftJustified(10) << ' '
          << format::dataCurta(f.feines_data) << ' ' << f.feines_hora_inici << "  ";
        if (f.resultat == FeinaPlanificada::Resultat::Refusada)
            o << Tradueix("REFUSADA:") << ' ' << f.missatge;
        else
            o << (f.recursos_nom.isEmpty() ? Tradueix("<no assignada>") : f.recursos_nom);
        if (!f.festius.isEmpty()) {
            QStringList dies;
            for (const QDate &d : f.festius)
                dies << format::dataCurta(d);
            o << "  (" << Tradueix("Moguda per festiu:") << ' ' << dies.join(QStringLiteral(", ")) << ')';
        }
        o << '\n';
    }
    o << '\n' << p.feines.size() << Tradueix(" feines:") << ' ' << p.compte(FeinaPlanificada::Resultat::Ok)
      << Tradueix(" amb recurs,") << ' ' << p.compte(FeinaPlanificada::Resultat::SenseRecurs)
      << Tradueix(" sense recurs,") << ' ' << p.compte(FeinaPlanificada::Resultat::Refusada) << Tradueix(" refusades.")
      << Qt::endl;
}

int previsio(ContextComanda &ctx, const QDate &F, const QDate &L)
{
    Sessio &s = ctx.sessio();
    MotorFeines motor(s.db(), s.cfg());
    RegistreRecollit registre;
    Planificador planificador(s.db(), s.cfg(), motor, registre);
    const PrevisioPlanificacio p = F <= L ? planificador.Previsualitza(F, L) : PrevisioPlanificacio{F, L, {}, {}};
    if (!p.error.isEmpty())
        throw ErrorComanda(p.error);
    if (!ctx.json()) {
        escriuPrevisio(ctx.out(), p);
        return 0;
    }
    QJsonArray feines;
    for (const FeinaPlanificada &f : p.feines)
        feines.append(QJsonObject{{QStringLiteral("llocs_nom"), f.llocs_nom},
                                  {QStringLiteral("feines_data"), f.feines_data.toString(Qt::ISODate)},
                                  {QStringLiteral("feines_hora_inici"), f.feines_hora_inici},
                                  {QStringLiteral("recursos_nom"), f.recursos_nom},
                                  {QStringLiteral("resultat"), nomResultat(f.resultat)},
                                  {QStringLiteral("missatge"), f.missatge}});
    ctx.escriuJson(QJsonObject{{QStringLiteral("desde"), p.desde.toString(Qt::ISODate)},
                               {QStringLiteral("fins"), p.fins.toString(Qt::ISODate)},
                               {QStringLiteral("feines"), feines}});
    return 0;
}

int planOrdre(ContextComanda &ctx, Arguments &args)
{
    QString fins, des, fi;
    const bool ambFins = args.option(QStringLiteral("--until"), &fins);
    const bool ambDes = args.option(QStringLiteral("--from"), &des);
    const bool ambFi = args.option(QStringLiteral("--to"), &fi);
    const bool prova = args.flag(QStringLiteral("--dry-run"));
    args.finish();
    if (ambFins == (ambDes || ambFi))
        throw ErrorUs(QStringLiteral("cal --until D, o bé --from D --to D"));
    if (!ambFins && !(ambDes && ambFi))
        throw ErrorUs(QStringLiteral("--from i --to van junts"));
    const QDate dia = ambFins ? Arguments::date(fins, QStringLiteral("--until")) : QDate();
    const QDate F = ambFins ? QDate() : Arguments::date(des, QStringLiteral("--from"));
    const QDate L = ambFins ? QDate() : Arguments::date(fi, QStringLiteral("--to"));
    if (!ambFins && L < F)
        throw ErrorUs(QStringLiteral("--to no pot ser anterior a --from"));

    if (prova) {
        // --until previews the period a run would take on: from the day after the last planned one.
        return ambFins ? previsio(ctx, ctx.sessio().cfg().UltimDiaGen.addDays(1), dia) : previsio(ctx, F, L);
    }

    Sessio &s = ctx.sessio();
    MotorFeines motor(s.db(), s.cfg());
    RegistreTerminal terminal(ctx.out());
    RegistreRecollit recollit;
    RegistreSortida &registre = ctx.json() ? static_cast<RegistreSortida &>(recollit) : terminal;
    Planificador planificador(s.db(), s.cfg(), motor, registre);

    QString resultat;
    bool executada = true;
    int errorsMostrats = 0;
    if (ambFins) {
        if (dia <= s.cfg().UltimDiaGen) {
            executada = false;
            if (!ctx.json())
                ctx.out() << Tradueix("No hi ha res a planificar: l'últim dia planificat és el") << ' '
                          << format::dataCurta(s.cfg().UltimDiaGen) << Qt::endl;
        } else {
            // The command itself is the user's Yes.
            ctx.interaccio().setSiATot(true);
            InteraccioComptada interaccio(ctx.interaccio());
            executada = Genera_Feines_Planificades(planificador, s.cfg(), interaccio, dia, &resultat);
            errorsMostrats = interaccio.errors;
        }
    } else {
        resultat = planificador.Planificar_Feines(F, L);
        if (!resultat.isEmpty())
            ctx.err() << resultat << Qt::endl;
    }
    if (ctx.json()) {
        ctx.escriuJson(QJsonObject{{QStringLiteral("executada"), executada},
                                   {QStringLiteral("feines"), planificador.feinesPlanificades()},
                                   {QStringLiteral("resultat"), resultat},
                                   {QStringLiteral("UltimDiaGen"), s.cfg().UltimDiaGen.toString(Qt::ISODate)},
                                   {QStringLiteral("log"), recollit.text()}});
    }
    return resultat.isEmpty() && errorsMostrats == 0 ? 0 : 1;
}

REGISTRA_COMANDA(QStringLiteral("plan"), QStringLiteral("plan --until D [--dry-run]\nplan --from D --to D [--dry-run]"),
                 QStringLiteral("planifica les feines periòdiques fins a D (i avança l'últim dia planificat), "
                                "o només el període indicat; amb --dry-run mostra què crearia sense escriure res"),
                 planOrdre);

} // namespace
