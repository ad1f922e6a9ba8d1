#include "planificacio_generacio.h"

#include "planificacio.h"

#include "core/configuracio.h"
#include "core/formats.h"
#include "core/ini.h"
#include "core/interaccio.h"
#include "core/traduccio.h"

namespace {

// After a run: a failed run's result shown, and the last planned day moved on to `dia` even after
// errors (the jobs stored before an error stay, so the period counts as planned either way).
void tancaPeriode(Configuracio &cfg, Interaccio &interaccio, const QDate &dia, const QString &res, QString *resultat)
{
    if (resultat)
        *resultat = res;
    if (!res.isEmpty())
        interaccio.error(QStringLiteral("ERROR"), res);
    cfg.UltimDiaGen = dia;
    if (!EscriureIni(cfg.fitxerIni, QStringLiteral("Estat"), QStringLiteral("UltimDiaGen"), format::dataCurta(dia)))
        interaccio.error(QStringLiteral("ERROR"), Tradueix("Error al gravar .ini"));
}

bool periodeNou(const Configuracio &cfg, const QDate &dia)
{
    // Days already planned are never planned again from here: the last planned day only moves on.
    return dia.isValid() && cfg.UltimDiaGen.isValid() && dia > cfg.UltimDiaGen;
}

} // namespace

bool Genera_Feines_Planificades(Planificador &planificador, Configuracio &cfg, Interaccio &interaccio,
                                const QDate &dia, QString *resultat)
{
    if (resultat)
        resultat->clear();
    if (!periodeNou(cfg, dia))
        return false;
    const QDate primer = cfg.UltimDiaGen.addDays(1);
    const QString pregunta = Tradueix("Vols generar les feines des del") + QLatin1Char(' ') + format::dataCurta(primer)
                             + Tradueix(" fins al") + QLatin1Char(' ') + format::dataCurta(dia) + QStringLiteral(" ?");
    if (!interaccio.pregunta(Tradueix("GENERACIO DE FEINES PLANIFICADES"), pregunta))
        return false;
    tancaPeriode(cfg, interaccio, dia, planificador.Planificar_Feines(primer, dia), resultat);
    return true;
}

bool Genera_Feines_Planificades(Planificador &planificador, Configuracio &cfg, Interaccio &interaccio,
                                const QDate &dia, const std::function<bool(const PrevisioPlanificacio &)> &confirma,
                                QString *resultat)
{
    if (resultat)
        resultat->clear();
    if (!periodeNou(cfg, dia))
        return false;
    const PrevisioPlanificacio previsio = planificador.Previsualitza(cfg.UltimDiaGen.addDays(1), dia);
    if (!previsio.error.isEmpty()) {
        if (resultat)
            *resultat = previsio.error;
        interaccio.error(QStringLiteral("ERROR"), previsio.error);
        return false;
    }
    if (!confirma(previsio))
        return false;
    tancaPeriode(cfg, interaccio, dia, planificador.Genera(previsio), resultat);
    return true;
}
