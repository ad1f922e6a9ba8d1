#include "pagaments.h"

#include "core/db.h"
#include "core/formats.h"

double Pagament_Mes(Db &db, const QString &mes, const QString &client)
{
    Query q = db.prepared(QStringLiteral(
        "SELECT pagaments_import FROM Pagaments WHERE pagaments_mes = ? AND clients_nom = ?"));
    q.bind(mes).bind(client).exec();
    return q.next() ? q.real(0) : 0.0;
}

double Grava_Pagament(Db &db, const QString &mes, const QString &client, const QString &import)
{
    const QString text = import.trimmed().isEmpty() ? QStringLiteral("0") : import;
    double valor = 0.0;
    if (client.isEmpty() || !format::llegeixReal(text, &valor))
        return 0.0;
    valor = arrodoneix::centims(valor);

    Transaction t(db);
    Query q = db.prepared(QStringLiteral(
        "SELECT pagaments_import FROM Pagaments WHERE pagaments_mes = ? AND clients_nom = ?"));
    q.bind(mes).bind(client).exec();
    const bool hiHaFila = q.next();
    q.raw().finish();
    if (!hiHaFila && valor == 0.0)
        return 0.0;
    if (!hiHaFila) {
        db.prepared(QStringLiteral("INSERT INTO Pagaments (pagaments_mes, clients_nom, pagaments_import) VALUES (?, ?, ?)"))
            .bind(mes).bind(client).bind(valor).exec();
    } else if (valor == 0.0) {
        db.prepared(QStringLiteral("DELETE FROM Pagaments WHERE pagaments_mes = ? AND clients_nom = ?"))
            .bind(mes).bind(client).exec();
    } else {
        db.prepared(QStringLiteral("UPDATE Pagaments SET pagaments_import = ? WHERE pagaments_mes = ? AND clients_nom = ?"))
            .bind(valor).bind(mes).bind(client).exec();
    }
    t.commit();
    return valor;
}

QString textPagament(double import)
{
    return import == 0.0 ? QString() : format::import(import);
}
