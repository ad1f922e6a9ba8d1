#include "ordre_hores_extres.h"

#include "hores_extres.h"

#include "core/db.h"
#include "core/traduccio.h"

OrdreHoresExtres::OrdreHoresExtres(Db &db, const QString &recurs, const QDate &dia, double abans, double despres)
    : m_db(db), m_recurs(recurs), m_dia(dia), m_abans(abans), m_despres(despres)
{
}

QString OrdreHoresExtres::text() const
{
    return Tradueix("hores extres de %1 el %2").arg(m_recurs, m_dia.toString(QStringLiteral("dd/MM")));
}

QString OrdreHoresExtres::aplica(double de, double a)
{
    try {
        Transaction t(m_db);
        if (Hores_Fetes(m_db, m_recurs, m_dia) != de)
            return Tradueix("Les hores extres han canviat per una altra via des d'aquest canvi; no es toquen:")
                + QLatin1Char(' ') + text();
        Grava_Hores_Fetes(m_db, a, m_recurs, m_dia);
        t.commit();
    } catch (const DbError &e) {
        return QStringLiteral("Error en Desfer:") + e.text();
    }
    return QString();
}
