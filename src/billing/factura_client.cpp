#include "factura_client.h"

#include "core/db.h"
#include "core/interaccio.h"
#include "core/traduccio.h"
#include "facturacio.h"

namespace {

bool esEnter(const QString &text, qint64 *valor)
{
    bool ok = false;
    *valor = text.trimmed().toLongLong(&ok);
    return ok;
}

} // namespace

ResultatFactura Factura_Client(Facturacio &facturacio, Interaccio &io, const QDate &avuiDonat)
{
    ResultatFactura r;
    if (!facturacio.ambClient())
        return r;
    const QDate avui = avuiDonat.isValid() ? avuiDonat : QDate::currentDate();
    const GraellaFacturacio &factura = facturacio.FacturaGrid();
    const GraellaFacturacio &xecs = facturacio.XecsGrid();
    Db &db = facturacio.db();
    const QString si = codi_factura::feta();

    try {
        Transaction t(db);
        Query feina = db.prepared(QStringLiteral(
            "UPDATE Feines SET feines_data_factura = ?, feines_quota = ? WHERE feines_id = ?"));
        for (int f = 0; f < factura.files(); ++f) {
            if (factura.codi(f) != si)
                continue;
            const QString id = factura.text(f, ColIdFeina);
            feina.bind(avui).bind(codi_factura::llegeixQuota(factura.text(f, ColImport))).bind(id.toLongLong()).exec();
            if (feina.rowsAffected() == 0) {
                r.missatge = Tradueix("ERROR: Feina") + QLatin1Char(' ') + id + Tradueix(" no trobada");
                io.error(QStringLiteral("ERROR"), r.missatge);
                return ResultatFactura{false, 0, 0, r.missatge};
            }
            ++r.feines;
        }
        Query xec = db.prepared(QStringLiteral(
            "UPDATE Xecs SET xecs_data_liquidat = ?, feines_id = ? WHERE xecs_id = ?"));
        for (int f = 0; f < xecs.files(); ++f) {
            qint64 numero = 0, idFeina = 0;
            if (!esEnter(xecs.text(f, ColXecNumero), &numero) || numero == 0
                || !esEnter(xecs.text(f, ColXecFeina), &idFeina))
                continue;
            xec.bind(avui).bind(idFeina).bind(numero).exec();
            if (xec.rowsAffected() == 0) {
                r.missatge = Tradueix("ERROR: Xec") + QLatin1Char(' ') + QString::number(numero) + Tradueix(" no trobat");
                io.error(QStringLiteral("ERROR"), r.missatge);
                return ResultatFactura{false, 0, 0, r.missatge};
            }
            ++r.xecs;
        }
        t.commit();
    } catch (const DbError &e) {
        r = ResultatFactura{false, 0, 0, QStringLiteral("Error:") + e.text()};
        io.error(QStringLiteral("ERROR"), r.missatge);
        return r;
    }
    r.fet = true;
    facturacio.Carrega_Facturacio();
    return r;
}
