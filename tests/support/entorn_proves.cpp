#include "entorn_proves.h"

#include "core/directori_dades.h"
#include "core/ini.h"

#include <QDir>
#include <QSqlRecord>
#include <stdexcept>

// ---------------------------------------------------------------- DirectoriProva

DirectoriProva::DirectoriProva()
{
    if (!m_tmp.isValid())
        throw std::runtime_error("no temporary directory");
    directori_dades::inicialitza(m_tmp.path());
}

QString DirectoriProva::fitxerIni() const
{
    return directori_dades::fitxerIni(m_tmp.path());
}

void DirectoriProva::posaParametre(const QString &clau, const QString &valor, const QString &seccio)
{
    if (!EscriureIni(fitxerIni(), seccio, clau, valor))
        throw std::runtime_error("cannot write the test settings file");
}

std::unique_ptr<Sessio> DirectoriProva::obreSessio()
{
    return std::make_unique<Sessio>(m_tmp.path());
}

// ---------------------------------------------------------------- BaseProva

BaseProva::BaseProva()
{
    if (!m_tmp.isValid())
        throw std::runtime_error("no temporary directory");
    m_fitxer = m_tmp.filePath(QStringLiteral("prova.db"));
    db.open(m_fitxer);
    directori_dades::creaEsquema(db);
    cfg.dirDades = m_tmp.path();
    cfg.BaseDades = m_fitxer;
}

// ---------------------------------------------------------------- dades_prova

namespace dades_prova {

namespace {
QVariant textONull(const QString &t)
{
    return t.isEmpty() ? QVariant() : QVariant(t);
}
} // namespace

void recurs(Db &db, const QString &nom, qint32 color, bool assignaTemps)
{
    db.query(QStringLiteral("INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps) VALUES (?, 0, ?, ?)"))
        .bind(nom).bind(color).bind(assignaTemps ? 1 : 0).exec();
}

void grup(Db &db, const QString &nom, qint32 color, const QStringList &membres, bool assignaTemps)
{
    db.query(QStringLiteral("INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps) VALUES (?, 1, ?, ?)"))
        .bind(nom).bind(color).bind(assignaTemps ? 1 : 0).exec();
    for (const QString &m : membres)
        db.query(QStringLiteral("INSERT INTO Recursos_Components (recursos_nom, recursos_component_nom) VALUES (?, ?)"))
            .bind(nom).bind(m).exec();
}

void client(Db &db, const QString &nom)
{
    db.query(QStringLiteral("INSERT INTO Clients (clients_nom) VALUES (?)")).bind(nom).exec();
}

void servei(Db &db, const QString &nom, int minutsPerUnitat, bool comu, double preu, const QString &unitat,
            const QString &descripcio)
{
    db.query(QStringLiteral("INSERT INTO Serveis (serveis_nom, serveis_descripcio, serveis_unitat, serveis_preu_un, "
                            "serveis_minuts_per_unitat, serveis_comu_per_recursos) VALUES (?, ?, ?, ?, ?, ?)"))
        .bind(nom).bind(textONull(descripcio)).bind(textONull(unitat)).bind(preu).bind(minutsPerUnitat).bind(comu ? 1 : 0)
        .exec();
}

void lloc(Db &db, const QString &nom, int minutsPrevist, const QString &recurs, const QString &client)
{
    db.query(QStringLiteral("INSERT INTO Llocs (llocs_nom, clients_nom, llocs_minuts_previst, recursos_nom) VALUES (?, ?, ?, ?)"))
        .bind(nom).bind(textONull(client)).bind(minutsPrevist).bind(textONull(recurs)).exec();
}

void llocServei(Db &db, const QString &lloc, const QString &servei, double quantitat, double preu,
                const QString &descripcio)
{
    db.query(QStringLiteral("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom, llocs_serveis_descripcio, "
                            "llocs_serveis_quantitat, llocs_serveis_preu_un) VALUES (?, ?, ?, ?, ?)"))
        .bind(lloc).bind(servei).bind(textONull(descripcio)).bind(quantitat).bind(preu).exec();
}

int feina(Db &db, const QString &lloc, const QDate &data, const QString &inici, const QString &fi,
          const QString &recurs, bool feta)
{
    Query q = db.query(QStringLiteral("INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, "
                                      "recursos_nom, feines_feta) VALUES (?, ?, ?, ?, ?, ?)"));
    q.bind(lloc).bind(data).bind(inici).bind(fi).bind(textONull(recurs)).bind(feta ? 1 : 0).exec();
    return static_cast<int>(q.lastInsertId());
}

void linia(Db &db, int feina, const QString &servei, double quantitat, double preu, const QString &unitat,
           const QString &descripcio)
{
    db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio, feines_detall_quantitat,"
                            " feines_detall_unitat, feines_detall_preu_un) VALUES (?, ?, ?, ?, ?, ?)"))
        .bind(feina).bind(servei).bind(textONull(descripcio)).bind(quantitat).bind(textONull(unitat)).bind(preu).exec();
}

void xec(Db &db, int xecsId, const QString &client, int feinesId, const QDate &liquidat)
{
    db.query(QStringLiteral("INSERT INTO Xecs (xecs_id, clients_nom, feines_id, xecs_data_liquidat, xecs_valor) VALUES (?, ?, ?, ?, 10)"))
        .bind(xecsId).bind(client).bind(feinesId ? QVariant(feinesId) : QVariant()).bind(liquidat).exec();
}

QStringList files(Db &db, const QString &sql, const QVariantList &valors)
{
    QStringList result;
    Query q = db.query(sql);
    for (const QVariant &v : valors)
        q.bind(v);
    q.exec();
    while (q.next()) {
        QStringList cols;
        const int n = q.raw().record().count();
        for (int i = 0; i < n; ++i)
            cols << (q.value(i).isNull() ? QStringLiteral("NULL") : q.value(i).toString());
        result << cols.join(QLatin1Char('|'));
    }
    return result;
}

qint64 valor(Db &db, const QString &sql, const QVariantList &valors)
{
    Query q = db.query(sql);
    for (const QVariant &v : valors)
        q.bind(v);
    q.exec();
    if (!q.next())
        throw DbError(QStringLiteral("no row: ") + sql);
    return q.integer(0);
}

} // namespace dades_prova

// ---------------------------------------------------------------- InteraccioGuio

void InteraccioGuio::informa(const QString &titol, const QString &text)
{
    crides.append({QStringLiteral("informa"), titol, text});
}

bool InteraccioGuio::pregunta(const QString &titol, const QString &text)
{
    crides.append({QStringLiteral("pregunta"), titol, text});
    return !respostes.isEmpty() && respostes.takeFirst();
}

void InteraccioGuio::error(const QString &titol, const QString &text)
{
    crides.append({QStringLiteral("error"), titol, text});
}
