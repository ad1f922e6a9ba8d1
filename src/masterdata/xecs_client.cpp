#include "xecs_client.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <cmath>
#include <limits>

GestioXecs::GestioXecs(Sessio &sessio, Interaccio &io) : m_sessio(sessio), m_io(io) {}

int GestioXecs::ampladaCua() const
{
    const QDate avui = m_avui.isValid() ? m_avui : QDate::currentDate();
    return static_cast<int>(m_sessio.cfg().MarcaLlista.size() + format::dataCurta(avui).size());
}

QStringList GestioXecs::Carrega_Xecs_Client(const QString &client)
{
    QStringList out;
    Query q = m_sessio.db().prepared(QStringLiteral(
        "SELECT xecs_id, xecs_data_liquidat FROM Xecs WHERE Xecs.clients_nom = ? ORDER BY Xecs.xecs_id DESC"));
    q.bind(client).exec();
    const QString cua(ampladaCua(), QLatin1Char(' '));
    while (q.next()) {
        const QString numero = QString::number(q.integer(0));
        const QDate liquidat = q.date(1);
        out << numero + (liquidat.isValid() ? m_sessio.cfg().MarcaLlista + format::dataCurta(liquidat) : cua);
    }
    return out;
}

qint64 GestioXecs::numeroItem(const QString &item) const
{
    return item.left(item.size() - ampladaCua()).trimmed().toLongLong();
}

FitxaXec GestioXecs::fitxaBuida() const
{
    FitxaXec f;
    f.valor = format::preu(m_sessio.cfg().ValorXec);
    return f;
}

bool GestioXecs::carrega(qint64 id, FitxaXec &f)
{
    Query q = m_sessio.db().prepared(QStringLiteral(
        "SELECT xecs_id, xecs_data_entrega, xecs_valor, xecs_data_liquidat, feines_id FROM Xecs WHERE xecs_id = ?"));
    q.bind(id).exec();
    if (!q.next())
        return false;
    f.id = QString::number(q.integer(0));
    f.dataEntrega = format::dataCurta(q.date(1));
    f.valor = format::preu(q.real(2));
    f.dataLiquidat = format::dataCurta(q.date(3));
    f.idFeina = q.isNull(QStringLiteral("feines_id")) ? QString() : QString::number(q.integer(4));
    return true;
}

bool GestioXecs::camps(FitxaXec &f, qint64 *id, double *valor)
{
    double numero = 0.0;
    if (!mestres::llegeixNombre(f.id, &numero) || std::fabs(numero) > std::numeric_limits<qint32>::max()) {
        mestres::refusa(m_io, Tradueix("El Id. del xec ha de ser numèric"));
        return false;
    }
    *id = arrodoneix::enter(numero);
    f.id = QString::number(*id);
    if (f.valor.trimmed().isEmpty() || !mestres::llegeixNombre(f.valor, valor)) {
        mestres::refusa(m_io, Tradueix("Cal informar el valor del xec"));
        return false;
    }
    return true;
}

Resultat GestioXecs::AfegirXec(const QString &client, FitxaXec &f)
{
    f.id = f.id.trimmed();
    if (f.id.isEmpty() || client.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        qint64 id = 0;
        double valor = 0.0;
        if (!camps(f, &id, &valor))
            return Resultat::Refusat;
        Db &db = m_sessio.db();
        Transaction t(db);
        Query q = db.prepared(QStringLiteral("SELECT 1 FROM Xecs WHERE xecs_id = ?"));
        q.bind(id).exec();
        if (q.next())
            return mestres::refusa(m_io, Tradueix("El xec ja existeix"));
        Query c = db.prepared(QStringLiteral("SELECT 1 FROM Clients WHERE clients_nom = ?"));
        c.bind(client).exec();
        if (!c.next())
            return mestres::refusa(m_io, Tradueix("El client no existeix"));
        db.prepared(QStringLiteral("INSERT INTO Xecs (xecs_id, clients_nom, xecs_valor) VALUES (?, ?, ?)"))
            .bind(id).bind(client).bind(valor).exec();
        t.commit();
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioXecs::ModificarXec(FitxaXec &f)
{
    f.id = f.id.trimmed();
    if (f.id.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        qint64 id = 0;
        double valor = 0.0;
        if (!camps(f, &id, &valor))
            return Resultat::Refusat;
        Db &db = m_sessio.db();
        Transaction t(db);
        Query q = db.prepared(QStringLiteral("SELECT 1 FROM Xecs WHERE xecs_id = ?"));
        q.bind(id).exec();
        if (!q.next())
            return mestres::refusa(m_io, Tradueix("El xec no existeix"));
        db.prepared(QStringLiteral("UPDATE Xecs SET xecs_valor = ? WHERE xecs_id = ?")).bind(valor).bind(id).exec();
        t.commit();
        f = fitxaBuida();
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioXecs::EliminarXec(FitxaXec &f)
{
    f.id = f.id.trimmed();
    if (f.id.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        double numero = 0.0;
        if (!mestres::llegeixNombre(f.id, &numero))
            return mestres::refusa(m_io, Tradueix("El xec no existeix"));
        const qint64 id = arrodoneix::enter(numero);
        Db &db = m_sessio.db();
        bool liquidat = false;
        {
            Query q = db.prepared(QStringLiteral("SELECT xecs_data_liquidat FROM Xecs WHERE xecs_id = ?"));
            q.bind(id).exec();
            if (!q.next())
                return mestres::refusa(m_io, Tradueix("El xec no existeix"));
            liquidat = !q.isNull(QStringLiteral("xecs_data_liquidat"));
        }
        if (liquidat && !m_io.pregunta(Tradueix("CONFIRMACIO"), Tradueix("El xec està liquidat. Eliminar igualment?")))
            return Resultat::Res;
        Transaction t(db);
        db.prepared(QStringLiteral("DELETE FROM Xecs WHERE xecs_id = ?")).bind(id).exec();
        t.commit();
        f = fitxaBuida();
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}
