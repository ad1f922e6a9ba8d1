#pragma once
// The two reports of a whole month, started from the billing tab when no client is chosen:
// - the monthly summary ("RESUM FACTURACIÓ"): every client's billing built in turn, its progress
//   logged to the message window, one block per client with its totals per service, fee and
//   vouchers, and the month's total;
// - the settled vouchers ("Relació de XECS"): per client, the vouchers settled against jobs of the
//   month with their jobs, for claiming them back.
// Neither writes to the database.

#include <QDate>
#include <QString>

class Db;
class Facturacio;
class Impressora;
class RegistreSortida;
struct Configuracio;

// The last day the texts give for a month: its last day, or today when today is earlier.
QDate fiPeriode(const QDate &primerDia, const QDate &avui);

// Builds every client's month on `facturacio` (the billing tab's own sheets), prints the summary
// and ends the document; the sheets are left in the all-clients view of the month. The log gets
// its caption, a line per client and the closing lines, and is busy meanwhile. `avui` is today
// (invalid: the current date). Returns the number of clients processed. Throws DbError.
int Imprimeix_Resum_Facturacio(Impressora &imp, Facturacio &facturacio, const QString &mes, RegistreSortida &log,
                               const QDate &avui = QDate());

// The vouchers settled for jobs of the month, per client. Throws DbError.
void Imprimeix_Xecs_Liquidats(Impressora &imp, Db &db, const Configuracio &cfg, const QString &mes);
