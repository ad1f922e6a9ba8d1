#pragma once
// Billing a client's month: what the last build of the sheets shows is written into the database
// in one transaction. Every done job of the job sheet gets the billing date and the fee it is
// billed with (the hidden fee code of its total row, else 0); every voucher row that shows a job is
// settled on that day for that job. A job or voucher that is no longer there stops the whole
// commit with its message, and nothing at all is written. Committing again re-stamps every row
// with the new date. The sheets are rebuilt afterwards.

#include <QDate>
#include <QString>

class Facturacio;
class Interaccio;

struct ResultatFactura {
    bool fet = false;
    int feines = 0; // jobs stamped
    int xecs = 0;   // vouchers settled
    QString missatge; // the message shown when nothing was written
};

// `avui` is the billing date (today when invalid). The sheets must hold a client's month.
ResultatFactura Factura_Client(Facturacio &facturacio, Interaccio &io, const QDate &avui = QDate());
