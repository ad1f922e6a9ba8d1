#pragma once
// The month's overtime of every worker, for payroll: one group per worker with a line per day and
// a subtotal, then the month's total. Entries for days on which the worker had no job are deleted
// first (Borra_hores_extres_erronies), so they are neither printed nor counted.

#include <QDate>
#include <QList>
#include <QString>

class Db;
class Impressora;

struct HoresDia {
    QString recurs;
    QDate data;
    double hores = 0.0;
};

// The first day of a month written "mm/aaaa"; an invalid date when the text is not one.
QDate primerDiaMes(const QString &mes);

// The month's overtime by worker and day. Throws DbError.
QList<HoresDia> horesMes(Db &db, const QDate &primerDia);

// Cleans the month's overtime up, prints the report and ends the document. `mes` is the first day
// of the month. Throws DbError (the caller ends the document then).
void Imprimeix_Hores(Impressora &imp, Db &db, int posicioSaltPagina, const QDate &mes);
