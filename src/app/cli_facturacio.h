#pragma once
// What the billing, payment and voucher commands share: the billing month of --month and the
// client of --client as stored.

#include "billing/mes_factura.h"
#include "core/db.h"
#include "core/traduccio.h"
#include "linia_comandes.h"

namespace cli_facturacio {

// --month mm/aaaa, checked as the billing tab checks its month field.
inline QString mes(Arguments &args)
{
    const QString text = args.required(QStringLiteral("--month")).trimmed();
    if (!MesFactura::valid(text))
        throw ErrorUs(QStringLiteral("--month: ") + Tradueix("Mes erroni (format: 'mm/aaaa')"));
    return text;
}

// The client's name as stored (names are found without regard to case); refused when missing.
inline QString client(Db &db, const QString &nom)
{
    Query q = db.query(QStringLiteral("SELECT clients_nom FROM Clients WHERE clients_nom = ?"));
    q.bind(nom.trimmed()).exec();
    if (!q.next())
        throw ErrorComanda(Tradueix("El client no existeix") + QStringLiteral(": ") + nom);
    return q.text(0);
}

} // namespace cli_facturacio
