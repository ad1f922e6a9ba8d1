#include "xecs_facturacio.h"

#include "core/db.h"
#include "facturacio.h"
#include "masterdata/xecs_client.h"

QList<Xec> Xecs_Client(Db &db, const QString &client)
{
    QList<Xec> out;
    Query q = db.prepared(QStringLiteral(
        "SELECT xecs_id, clients_nom, xecs_valor, xecs_data_entrega, xecs_data_liquidat, feines_id FROM Xecs"
        " WHERE Xecs.clients_nom = ? ORDER BY Xecs.xecs_id DESC"));
    q.bind(client).exec();
    while (q.next()) {
        Xec x;
        x.xecs_id = q.integer(0);
        x.clients_nom = q.text(1);
        x.xecs_valor = q.real(2);
        x.xecs_data_entrega = q.date(3);
        x.xecs_data_liquidat = q.date(4);
        x.feines_id = q.integer(5);
        out << x;
    }
    return out;
}

Resultat EliminarXecFila(Facturacio &facturacio, GestioXecs &xecs, int fila)
{
    const GraellaFacturacio &g = facturacio.XecsGrid();
    if (fila < 0 || fila >= g.files() || g.codi(fila) != codi_factura::Xec)
        return Resultat::Res;
    FitxaXec f;
    f.id = g.text(fila, ColXecNumero);
    const Resultat r = xecs.EliminarXec(f);
    if (r == Resultat::Fet)
        facturacio.Carrega_Facturacio();
    return r;
}
