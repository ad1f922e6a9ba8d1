#pragma once
// The agenda's options on the command line, shared by `agenda` and the agenda's reports.

#include "linia_comandes.h"

#include "agenda/agenda_estat.h"

// --view (dia|setmana|mes, the month by default) and --date (today by default).
EstatAgenda estatAgenda(ContextComanda &ctx, Arguments &args);
