#pragma once
// The two reports of a whole month, started from the billing tab when no client is chosen:
// - the monthly summary ("RESUM FACTURACIÓ"): every client's billing built in turn, its progress
//   logged to the message window, one block per client with its totals per service, fee and
//   vouchers, and the month's total;
// - the settled vouchers ("Relació de XECS"): per client, the vouchers settled against jobs of the
//   month with their jobs, for claiming them back.
// Neither writes to the database.

#include "totals_factura.h"

#include <QDate>
#include <QList>
#include <QString>

class Db;
class Facturacio;
class Impressora;
class RegistreSortida;
struct Configuracio;

// The last day the texts give for a month: its last day, or today when today is earlier.
QDate fiPeriode(const QDate &primerDia, const QDate &avui);

// The summary of a month once every client's billing is built: per client, the entries of its
// table of totals with a quantity (a client without one is left out), in table order.
struct BlocResum {
    QString client;
    QList<EntradaTotals> entrades;
};
struct ResumMes {
    QString mes;     // "mm/aaaa"
    QDate inici;     // the first day of the month
    QDate fi;        // the period's end the texts give (fiPeriode)
    int clients = 0; // every client processed, with or without a block
    QList<BlocResum> blocs;
};

// Builds every client's month on `facturacio` in name order and keeps what the summary prints;
// the sheets are left in the all-clients view of the month. The log gets its caption, a line per
// client and the closing lines, and is busy meanwhile. `avui` is today (invalid: the current
// date). Throws DbError (the log is no longer busy then).
ResumMes Calcula_Resum_Facturacio(Facturacio &facturacio, const QString &mes, RegistreSortida &log,
                                  const QDate &avui = QDate());
// Draws the summary and ends the document. Reads nothing, so a preview may draw it again.
void Imprimeix_Resum(Impressora &imp, const ResumMes &resum, int posicioSaltPagina);
// Both at once (the command line). Returns the number of clients processed.
int Imprimeix_Resum_Facturacio(Impressora &imp, Facturacio &facturacio, const QString &mes, RegistreSortida &log,
                               const QDate &avui = QDate());

// The vouchers settled for jobs of the month, per client. Throws DbError.
void Imprimeix_Xecs_Liquidats(Impressora &imp, Db &db, const Configuracio &cfg, const QString &mes);
