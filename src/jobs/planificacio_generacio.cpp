#include "planificacio_generacio.h"

#include "planificacio.h"

#include "core/configuracio.h"
#include "core/formats.h"
#include "core/ini.h"
#include "core/interaccio.h"
#include "core/traduccio.h"

bool Genera_Feines_Planificades(Planificador &planificador, Configuracio &cfg, Interaccio &interaccio,
                                const QDate &dia, QString *resultat)
{
    if (resultat)
        resultat->clear();
    // Days already planned are never planned again from here: the last planned day only moves on.
    if (!dia.isValid() || !cfg.UltimDiaGen.isValid() || dia <= cfg.UltimDiaGen)
        return false;
    const QDate primer = cfg.UltimDiaGen.addDays(1);
    const QString pregunta = Tradueix("Vols generar les feines des del") + QLatin1Char(' ') + format::dataCurta(primer)
                             + Tradueix(" fins al") + QLatin1Char(' ') + format::dataCurta(dia) + QStringLiteral(" ?");
    if (!interaccio.pregunta(Tradueix("GENERACIO DE FEINES PLANIFICADES"), pregunta))
        return false;

    const QString res = planificador.Planificar_Feines(primer, dia);
    if (resultat)
        *resultat = res;
    if (!res.isEmpty())
        interaccio.error(QStringLiteral("ERROR"), res);

    // The jobs stored before an error stay, so the period counts as planned either way.
    cfg.UltimDiaGen = dia;
    if (!EscriureIni(cfg.fitxerIni, QStringLiteral("Estat"), QStringLiteral("UltimDiaGen"), format::dataCurta(dia)))
        interaccio.error(QStringLiteral("ERROR"), Tradueix("Error al gravar .ini"));
    return true;
}
