#pragma once
// Overtime: one Hores_Fetes row per worker and day (never a row of 0 hours), the proposal worked
// out from the slots a worker's agenda column occupies, and the month's clean-up of entries no job
// justifies.

#include <QDate>
#include <QList>
#include <QString>

class Db;
class ModelAgenda;
struct Configuracio;

// One slot of a worker's agenda column: its label ("hh:mm") and whether a job occupies it.
struct FranjaHores {
    QString etiqueta;
    bool ocupada = false;
};

// Stores the day's overtime of a worker: a new row, a replaced quantity, or (for 0) no row.
void Grava_Hores_Fetes(Db &db, double quantitat, const QString &recurs, const QDate &dia);

// The stored overtime of a worker's day; 0 when there is no row.
double Hores_Fetes(Db &db, const QString &recurs, const QDate &dia);

// The proposed overtime of a day from the slots of one agenda column, top to bottom. Only the
// occupied slots count when CalculxHores is set; otherwise the gaps between jobs count too, except
// those of the lunch break. A Saturday or Sunday marked as extra counts every hour; any other day
// counts what passes HoresDia. Never negative.
double Calcula_Hores_Extres(const QList<FranjaHores> &franges, const Configuracio &cfg, const QDate &dia);

// The proposal for the worker of a day-view column of the agenda, from the slots its jobs take.
double Calcula_Hores_Extres(const ModelAgenda &model, int columna, const Configuracio &cfg, const QDate &dia);
// The first day-view column opened for a worker (names compare without regard to case); 0 when
// the worker has no job that day.
int columnaRecurs(const ModelAgenda &model, const QString &recurs);

// Deletes the month's overtime entries of workers who have no job that day, directly or through a
// group. `mes` is "mm/aaaa". Returns the number of rows deleted, or -1 when the month is not valid.
int Borra_hores_extres_erronies(Db &db, const QString &mes);
int Borra_hores_extres_erronies(Db &db, int mes, int any);

// An hours text as the overtime cell keeps it: "#,##0.00" when it is a number, "0,00" otherwise.
QString textHores(const QString &entrada);
// The value of such a cell text (what is stored).
double valorHores(const QString &textCella);
