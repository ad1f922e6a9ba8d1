#pragma once
// A place's rhythm written in one call, for the planning tests.
#include "jobs/planificacio_regles.h"

inline RitmeLloc ritme(int n, bool primer, bool ultim, int diaSetmana, bool dissabte, bool diumenge)
{
    RitmeLloc r;
    r.periodicitat_dies = n;
    r.primer_dia_mes = primer;
    r.ultim_dia_mes = ultim;
    r.dia_setmana = diaSetmana;
    r.dissabte = dissabte;
    r.diumenge = diumenge;
    return r;
}
