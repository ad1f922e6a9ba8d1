#pragma once
// The table of totals the invoice data and the monthly summary print for a client's month: every
// service (in name order) with the quantity and amount of its priced lines, then each place's
// monthly fee, then the vouchers taken off. It is read from the billing sheets as the last build
// left them, so the paper always says what the tab showed.

#include <QList>
#include <QString>

class Db;
class Facturacio;

struct EntradaTotals {
    QString nom;
    QString unitat;
    double quantitat = 0.0;
    double import = 0.0;
};

// One entry per service of the table, with nothing counted yet. Throws DbError.
QList<EntradaTotals> serveisTotals(Db &db);

// The client's table from the sheets of `f`: a line row of a done job whose amount is a number adds
// its quantity and amount to its service (a service no longer in the table adds nothing); each
// fee row adds an entry; the vouchers that pay a job add one entry with minus their value.
QList<EntradaTotals> taulaTotals(const QList<EntradaTotals> &serveis, const Facturacio &f, const QString &serveiXecs);

// Reading the sheets' texts back: a number shown in a cell (0 when it is not one), and a
// quantity as reports print it (no grouping, only the decimals it has).
double numeroCella(const QString &text);
QString quantitatPlana(double quantitat);
