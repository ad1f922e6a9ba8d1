#pragma once
// The job list of one resource for the period the agenda shows: the day, the week, or the calendar
// month (not the six weeks of the month grid). A group's list holds the jobs assigned to the group
// itself; a worker's list holds the worker's own jobs and those of every group the worker belongs
// to.

#include "agenda/agenda_estat.h"

#include <QDate>
#include <QList>
#include <QString>

class Db;
class Impressora;

struct FeinaLlista {
    QDate data;
    QString inici;
    QString fi;
    QString lloc;
    QString recurs;
    QString observacions;
};

// The jobs of the list, by date and start (by start alone in the day view). Throws DbError.
QList<FeinaLlista> feinesLlista(Db &db, const EstatAgenda &estat, const QString &recurs);

// The title line of the list for the view and the resource.
QString titolLlistaFeines(const EstatAgenda &estat, const QString &recurs);

// Prints the list and ends the document. Throws DbError (the caller ends the document then).
void Imprimeix_Feines(Impressora &imp, Db &db, int posicioSaltPagina, const EstatAgenda &estat,
                      const QString &recurs);
