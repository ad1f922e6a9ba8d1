// quadrella plan --until D | --from D --to D
#include "linia_comandes.h"

#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/motor_feines.h"
#include "jobs/planificacio.h"
#include "jobs/planificacio_generacio.h"

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

int planOrdre(ContextComanda &ctx, Arguments &args)
{
    QString fins, des, fi;
    const bool ambFins = args.option(QStringLiteral("--until"), &fins);
    const bool ambDes = args.option(QStringLiteral("--from"), &des);
    const bool ambFi = args.option(QStringLiteral("--to"), &fi);
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

REGISTRA_COMANDA(QStringLiteral("plan"), QStringLiteral("plan --until D\nplan --from D --to D"),
                 QStringLiteral("planifica les feines periòdiques fins a D (i avança l'últim dia planificat), "
                                "o només el període indicat"),
                 planOrdre);

} // namespace
