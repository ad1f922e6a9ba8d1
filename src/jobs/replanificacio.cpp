#include "replanificacio.h"

#include "carrega_feina.h"
#include "motor_feines.h"

#include "core/configuracio.h"
#include "core/db.h"

Replanificador::Replanificador(Db &db, const Configuracio &cfg, MotorFeines &motor, RegistreSortida &registre)
    : m_db(db), m_cfg(cfg), m_motor(motor), m_planificador(db, cfg, motor, registre)
{
}

QList<Feina> Replanificador::futures(const QString &lloc, const QDate &avui)
{
    Query q = m_db.prepared(QStringLiteral("SELECT feines_id FROM Feines WHERE llocs_nom = ? AND feines_data > ? "
                                           "AND feines_feta = 0 ORDER BY feines_data, feines_hora_inici, feines_id"));
    q.bind(lloc).bind(avui).exec();
    QList<int> ids;
    while (q.next())
        ids << static_cast<int>(q.integer(0));
    QList<Feina> out;
    for (int id : ids) {
        Feina f;
        if (carregaFeina(m_db, id, f))
            out << f;
    }
    return out;
}

PrevisioReplanificacio Replanificador::Previsualitza(const QString &lloc, const QDate &avui)
{
    PrevisioReplanificacio p;
    p.lloc = lloc;
    try {
        // The new rhythm must continue from the jobs that stay, so the old ones are deleted in a
        // transaction that is rolled back once the new ones have been worked out.
        Transaction t(m_db);
        p.esborrades = futures(lloc, avui);
        for (const Feina &f : p.esborrades) {
            Feina esborrada = f;
            m_motor.Borra_Feina(esborrada);
            if (!esborrada.missatge.isEmpty())
                throw DbError(esborrada.missatge);
        }
        m_planificador.setNomesLloc(lloc);
        const QDate desde = avui.addDays(1);
        if (m_cfg.UltimDiaGen.isValid() && m_cfg.UltimDiaGen >= desde)
            p.noves = m_planificador.Previsualitza(desde, m_cfg.UltimDiaGen);
        else
            p.noves = PrevisioPlanificacio{desde, m_cfg.UltimDiaGen, {}, {}};
        if (!p.noves.error.isEmpty())
            throw DbError(p.noves.error);
    } catch (const DbError &e) {
        p.esborrades.clear();
        p.noves.feines.clear();
        p.error = QStringLiteral("Error en Replanifica_Lloc:") + e.text();
    }
    return p;
}

QString Replanificador::Replanifica_Lloc(const PrevisioReplanificacio &p)
{
    try {
        Transaction t(m_db);
        for (const Feina &f : p.esborrades) {
            Feina esborrada = f;
            m_motor.Borra_Feina(esborrada);
            if (!esborrada.missatge.isEmpty())
                return QStringLiteral("Error en Replanifica_Lloc:") + esborrada.missatge;
        }
        m_planificador.setNomesLloc(p.lloc);
        const QString r = p.noves.feines.isEmpty() ? QString() : m_planificador.Genera(p.noves);
        if (!r.isEmpty())
            return r;
        t.commit();
        return QString();
    } catch (const DbError &e) {
        return QStringLiteral("Error en Replanifica_Lloc:") + e.text();
    }
}
