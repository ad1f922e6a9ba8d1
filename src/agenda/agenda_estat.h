#pragma once
// Which period the agenda shows: the view and the dates it is built from. Kept apart from the grid
// so that the controller, the page (its calendar) and the command line share one notion of "the
// week of a date" and "the month grid of a date", both counted from the system's first weekday.

#include <QDate>
#include <QString>

enum class VistaAgenda { Dia, Setmana, Mes };

// "dia", "setmana", "mes" (the names the settings, the command line and the JSON use).
QString nomVista(VistaAgenda v);
// The view of one of those names; false when the text names none.
bool llegeixVista(const QString &text, VistaAgenda *v);

struct EstatAgenda {
    VistaAgenda vista = VistaAgenda::Mes;
    QDate DiaActual;
    QDate IniciSetmana;
    QDate IniciMes;
    // The date the month calendar shows selected; the page mirrors it.
    QDate DataCalendari;
    int PrimerDiaSetmana = 2; // 1 = Sunday ... 7 = Saturday

    EstatAgenda() = default;
    EstatAgenda(VistaAgenda v, const QDate &dia, int primerDia);

    // IniciSetmana and IniciMes from DiaActual.
    void recalcula();

    // First day of the week holding `d`.
    static QDate iniciSetmana(const QDate &d, int primerDia);
    // First day of the six-week grid of d's month: the 1st, taken back to its week's first day.
    static QDate iniciMes(const QDate &d, int primerDia);
};
