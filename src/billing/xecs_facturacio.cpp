#include "xecs_facturacio.h"

#include "core/db.h"
#include "facturacio.h"
#include "masterdata/xecs_client.h"

namespace {

const QString kColumnes = QStringLiteral(
    "SELECT xecs_id, clients_nom, xecs_valor, xecs_data_entrega, xecs_data_liquidat, feines_id FROM Xecs");

Xec llegeix(const Query &q)
{
    Xec x;
    x.xecs_id = q.integer(0);
    x.clients_nom = q.text(1);
    x.xecs_valor = q.real(2);
    x.xecs_data_entrega = q.date(3);
    x.xecs_data_liquidat = q.date(4);
    x.feines_id = q.integer(5);
    return x;
}

} // namespace

QList<Xec> Xecs_Client(Db &db, const QString &client)
{
    QList<Xec> out;
    Query q = db.prepared(kColumnes + QStringLiteral(" WHERE Xecs.clients_nom = ? ORDER BY Xecs.xecs_id DESC"));
    q.bind(client).exec();
    while (q.next())
        out << llegeix(q);
    return out;
}

bool Busca_Xec(Db &db, qint64 id, Xec &x)
{
    Query q = db.prepared(kColumnes + QStringLiteral(" WHERE xecs_id = ?"));
    q.bind(id).exec();
    if (!q.next())
        return false;
    x = llegeix(q);
    return true;
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
