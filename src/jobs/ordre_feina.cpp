#include "ordre_feina.h"

#include "motor_feines.h"

#include "core/db.h"
#include "core/traduccio.h"

namespace {

// Both pictures over the same vouchers: one the change did not touch reads the same on both sides.
void igualaXecs(FotoFeina &a, const FotoFeina &b)
{
    for (auto it = b.xecs.cbegin(); it != b.xecs.cend(); ++it)
        if (!a.xecs.contains(it.key()))
            a.xecs.insert(it.key(), it.value());
}

} // namespace

OrdreFeina::OrdreFeina(Db &db, const Configuracio &cfg, const QString &text, FotoFeina abans, FotoFeina despres)
    : m_db(db), m_cfg(cfg), m_text(text), m_abans(std::move(abans)), m_despres(std::move(despres))
{
    igualaXecs(m_abans, m_despres);
    igualaXecs(m_despres, m_abans);
}

QString OrdreFeina::aplica(const FotoFeina &de, const FotoFeina &a)
{
    try {
        Transaction t(m_db);
        if (fotografiaFeina(m_db, de.feines_id, de.xecs.keys()) != de)
            return Tradueix("La feina ha canviat per una altra via des d'aquest canvi; no es toca per no perdre aquell canvi:")
                + QLatin1Char(' ') + m_text;
        MotorFeines motor(m_db, m_cfg);
        Feina f;
        if (!a.existeix()) {
            f.feines_id = de.feines_id;
            motor.Borra_Feina(f);
        } else if (!de.existeix()) {
            f = a.feina();
            motor.Restaura_Feina(f);
        } else if (de.fila != a.fila) {
            f = a.feina();
            motor.Modifica_Feina(f);
        }
        if (!f.missatge.isEmpty())
            return f.missatge;
        if (a.existeix())
            escriuFotoFeina(m_db, a);
        if (fotografiaFeina(m_db, a.feines_id, a.xecs.keys()) != a)
            return QStringLiteral("Error en Desfer:") + Tradueix("la feina no ha quedat com estava");
        t.commit();
    } catch (const DbError &e) {
        return QStringLiteral("Error en Desfer:") + e.text();
    }
    return QString();
}

// ------------------------------------------------------------------ CanviFeina

CanviFeina::CanviFeina(PilaDesfer *pila, Db &db, const Configuracio &cfg, int feinesId)
    : m_pila(pila), m_db(db), m_cfg(cfg)
{
    m_abans.feines_id = feinesId;
    if (m_pila && feinesId != 0)
        m_abans = fotografiaFeina(db, feinesId);
}

void CanviFeina::registra(const Feina &f, Tipus tipus)
{
    if (!m_pila || !f.missatge.isEmpty() || f.feines_id == 0)
        return;
    FotoFeina abans = m_abans;
    abans.feines_id = f.feines_id; // a job just created had no id before
    FotoFeina despres = fotografiaFeina(m_db, f.feines_id, abans.xecs.keys());
    if (despres == abans)
        return; // nothing changed, nothing to take back
    m_pila->afegeix(std::make_unique<OrdreFeina>(m_db, m_cfg, text(tipus, f), std::move(abans), std::move(despres)));
}

QString CanviFeina::text(Tipus tipus, const Feina &f)
{
    const QString dia = f.feines_data.toString(QStringLiteral("dd/MM"));
    switch (tipus) {
    case Tipus::Creada:
        return Tradueix("afegir '%1' al %2").arg(f.llocs_nom, dia);
    case Tipus::Moguda:
        return Tradueix("moure '%1' al %2").arg(f.llocs_nom, dia + QLatin1Char(' ') + f.feines_hora_inici);
    case Tipus::Reassignada:
        return Tradueix("assignar '%1' del %2 a %3").arg(f.llocs_nom, dia, f.recursos_nom);
    case Tipus::Esborrada:
        return Tradueix("eliminar '%1' del %2").arg(f.llocs_nom, dia);
    case Tipus::Feta:
        return (f.feines_feta ? Tradueix("marcar feta '%1' del %2") : Tradueix("marcar no feta '%1' del %2"))
            .arg(f.llocs_nom, dia);
    case Tipus::Modificada:
        return Tradueix("modificar '%1' del %2").arg(f.llocs_nom, dia);
    }
    return QString();
}
