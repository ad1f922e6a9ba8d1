#pragma once
// The calendar of periodic planning: which days a place's rhythm gives inside a period. Kept apart
// from the database so that every rule can be checked day by day; the planner only feeds it the
// place's rhythm and its latest job and turns the days into jobs.

#include <QDate>
#include <QList>
#include <QMap>
#include <QString>

// The rhythm columns of a place (Llocs).
struct RitmeLloc {
    int periodicitat_dies = 0; // days between jobs; 0 = not planned
    bool primer_dia_mes = false;
    bool ultim_dia_mes = false;
    int dia_setmana = 0;       // 1 = Sunday ... 7 = Saturday; 0 = any day
    bool dissabte = false;     // Saturdays allowed
    bool diumenge = false;     // Sundays allowed
    bool festius = false;      // works on closed days (llocs_festius)

    bool mensual() const { return primer_dia_mes || ultim_dia_mes; }
};

// The monthly rule's calendar step: from D, the first day numbered W (1 = Sunday) on or after D
// (D itself when W <= 0), then moved to the first such day of a month (primer) and/or the last
// such day of its month (ultim); without a weekday, to the first day of the next month unless D
// is a first, and/or to the last day of the month.
QDate Data_Planificacio(const QDate &D, int W, bool primer, bool ultim);

// Week number of a date counted from the week that holds 1 January (week 1), weeks beginning on
// primerDia (1 = Sunday ... 7 = Saturday).
int numeroSetmana(const QDate &d, int primerDia);

// Days of the monthly rule inside [F, L], with the Saturday and Sunday moves.
QList<QDate> diesMensuals(const RitmeLloc &r, const QDate &F, const QDate &L);

// Days of the every-N-days rule inside [F, L]. `darreraFeina` is the place's latest job (invalid
// when it has none): planning continues N days after it. `primerDia` decides the week numbers of
// the weekday alignment.
QList<QDate> diesCadaN(const RitmeLloc &r, const QDate &F, const QDate &L, const QDate &darreraFeina,
                       int primerDia);

// Either rule, as the place's flags choose.
QList<QDate> diesPlanificats(const RitmeLloc &r, const QDate &F, const QDate &L, const QDate &darreraFeina,
                             int primerDia);

// Closed days (Festius): date -> description.
using DiesTancats = QMap<QDate, QString>;

// A day of the rhythm and the closed days it was moved over to get there (none: not moved for
// one; a weekend move alone is the rhythm's own and is not listed).
struct DiaPlanificat {
    QDate dia;
    QList<QDate> festius;
    bool operator==(const DiaPlanificat &) const = default;
};

// Either rule with the closed days: a closed day is treated as a Sunday the place does not work
// (the every-N-days rule moves on a day and checks again; the monthly rule moves a first-of-month
// day forward and a last-of-month day back, past weekend days the place does not work too),
// unless the place works on closed days.
QList<DiaPlanificat> diesPlanificats(const RitmeLloc &r, const QDate &F, const QDate &L, const QDate &darreraFeina,
                                     int primerDia, const DiesTancats &tancats);
