#pragma once
// Vouchers as billing sees them: a client's vouchers as records (the command line lists them), and
// the Delete key on a row of the voucher sheet, which deletes that voucher through the clients
// tab's own rules (a settled voucher asks first) and rebuilds the sheets.

#include "masterdata/resultat.h"

#include <QDate>
#include <QList>
#include <QString>

class Db;
class Facturacio;
class GestioXecs;

struct Xec {
    qint64 xecs_id = 0;
    QString clients_nom;
    double xecs_valor = 0.0;
    QDate xecs_data_entrega;
    QDate xecs_data_liquidat; // invalid while not settled
    qint64 feines_id = 0;     // 0 while not settled
};

// The client's vouchers, newest number first (as the clients tab lists them).
QList<Xec> Xecs_Client(Db &db, const QString &client);
// One voucher by its number; false when there is none.
bool Busca_Xec(Db &db, qint64 id, Xec &x);

// Deletes the voucher shown on row `fila` of XecsGrid. Fet: deleted and the sheets rebuilt (the
// clients tab's voucher list must be refilled); Res: not a voucher row, or the user kept it.
Resultat EliminarXecFila(Facturacio &facturacio, GestioXecs &xecs, int fila);
