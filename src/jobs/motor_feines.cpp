#include "motor_feines.h"

#include "carrega_feina.h"
#include "durada_feina.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/traduccio.h"

#include <QStringList>
#include <stdexcept>

// Every statement here is prepared once per connection (Db::prepared) and reused: the planning
// calls Grava_Feina thousands of times in a row. The overlap tests keep the three-clause
// predicate but state the date and the place (or resource) once, so that SQLite reaches the rows
// through the (date, place) and (date, resource) indexes instead of reading the whole table.

namespace {

// A job that contains the new start, or contains the new end, or lies inside the new job.
// Binds: start, start, end, end, start, end. Touching jobs do not overlap.
const QString kPredicatSolapament = QStringLiteral(
    "((Feines.feines_hora_inici <= ? AND Feines.feines_hora_fi > ?)"
    " OR (Feines.feines_hora_inici < ? AND Feines.feines_hora_fi >= ?)"
    " OR (Feines.feines_hora_inici >= ? AND Feines.feines_hora_fi <= ?))");

QString construeixSolapamentLloc(bool excloure)
{
    return QStringLiteral("SELECT 1 FROM Feines WHERE Feines.llocs_nom = ? AND Feines.feines_data = ?")
        + (excloure ? QStringLiteral(" AND Feines.feines_id <> ?") : QString())
        + QStringLiteral(" AND ") + kPredicatSolapament + QStringLiteral(" LIMIT 1");
}

// The resource's own jobs that day, and the jobs of every group that has it as a member.
QString construeixSolapamentRecurs(bool excloure)
{
    const QString excl = excloure ? QStringLiteral(" AND Feines.feines_id <> ?") : QString();
    return QStringLiteral("SELECT 1 FROM Feines WHERE Feines.feines_data = ? AND Feines.recursos_nom = ?") + excl
        + QStringLiteral(" AND ") + kPredicatSolapament
        // CROSS JOIN keeps the inner join's meaning and makes SQLite start from the (few) groups
        // of the resource rather than from every job of the day.
        + QStringLiteral(" UNION ALL SELECT 1 FROM Recursos_Components CROSS JOIN Feines"
                         " ON Feines.recursos_nom = Recursos_Components.recursos_nom"
                         " WHERE Recursos_Components.recursos_component_nom = ? AND Feines.feines_data = ?")
        + excl + QStringLiteral(" AND ") + kPredicatSolapament + QStringLiteral(" LIMIT 1");
}

// Built once: the texts are also the keys of the connection's statement cache.
const QString &sqlSolapamentLloc(bool excloure)
{
    static const QString sql[2] = {construeixSolapamentLloc(false), construeixSolapamentLloc(true)};
    return sql[excloure ? 1 : 0];
}

const QString &sqlSolapamentRecurs(bool excloure)
{
    static const QString sql[2] = {construeixSolapamentRecurs(false), construeixSolapamentRecurs(true)};
    return sql[excloure ? 1 : 0];
}

QVariant textONull(const QString &t)
{
    return t.isEmpty() ? QVariant() : QVariant(t);
}

// Minute totals are 16-bit, as the agenda has always kept them.
int minuts16(double valor)
{
    if (!(valor > -32768.5 && valor < 32767.5))
        throw std::overflow_error("desbordament");
    const int r = arrodoneix::enter(valor);
    if (r < -32768 || r > 32767)
        throw std::overflow_error("desbordament");
    return r;
}

int minutsHora(const QString &hhmm)
{
    const int m = hora::minuts(hhmm);
    if (m < 0)
        throw std::invalid_argument(QStringLiteral("hora no vàlida: '%1'").arg(hhmm).toStdString());
    return m;
}

// Start plus a span of minutes; a job that would run past midnight ends at the day's end.
QString horaFi(const QString &inici, int minuts, const QString &horaFinal)
{
    minutsHora(inici);
    const QString fi = hora::suma(inici, minuts);
    return fi < inici ? horaFinal : fi;
}

QString textError(const char *operacio, const QString &text)
{
    return QStringLiteral("Error en %1:").arg(QLatin1String(operacio)) + text;
}

// Runs one job operation with every failure turned into the record's message.
template <typename Fn>
void protegeix(Feina &f, const char *operacio, Fn &&fn)
{
    try {
        fn();
    } catch (const DbError &e) {
        f.missatge = textError(operacio, e.text());
    } catch (const std::exception &e) {
        f.missatge = textError(operacio, QString::fromUtf8(e.what()));
    } catch (...) {
        f.missatge = textError(operacio, QStringLiteral("error desconegut"));
    }
}

} // namespace

MotorFeines::MotorFeines(Db &db, const Configuracio &cfg) : m_db(db), m_cfg(cfg) {}

QDate MotorFeines::avui() const
{
    return m_avui.isValid() ? m_avui : QDate::currentDate();
}

// ---------------------------------------------------------------- lookups

qint32 MotorFeines::Color_Recurs(const QString &recurs)
{
    Query q = m_db.prepared(QStringLiteral("SELECT recursos_color FROM Recursos WHERE recursos_nom = ?"));
    q.bind(recurs).exec();
    return q.next() ? static_cast<qint32>(q.integer(0)) : ColorFinestra;
}

bool MotorFeines::Assigna_Temps_Recurs(const QString &recurs)
{
    Query q = m_db.prepared(QStringLiteral("SELECT recursos_assigna_temps FROM Recursos WHERE recursos_nom = ?"));
    q.bind(recurs).exec();
    return q.next() && q.boolean(0);
}

QString MotorFeines::Recurs_Per_Color(qint32 color)
{
    Query q = m_db.prepared(QStringLiteral("SELECT recursos_nom FROM Recursos WHERE recursos_color = ? LIMIT 1"));
    q.bind(color).exec();
    return q.next() ? q.text(0) : QString();
}

double MotorFeines::Preu_Servei(const QString &servei)
{
    Query q = m_db.prepared(QStringLiteral("SELECT serveis_preu_un FROM Serveis WHERE serveis_nom = ?"));
    q.bind(servei).exec();
    return q.next() ? q.real(0) : 0.0;
}

QString MotorFeines::Unitat_Servei(const QString &servei)
{
    Query q = m_db.prepared(QStringLiteral("SELECT serveis_unitat FROM Serveis WHERE serveis_nom = ?"));
    q.bind(servei).exec();
    return q.next() ? q.text(0) : QString();
}

QString MotorFeines::Descripcio_Servei(const QString &servei, const QString &lloc)
{
    QString descripcio;
    {
        Query q = m_db.prepared(QStringLiteral("SELECT serveis_descripcio FROM Serveis WHERE serveis_nom = ?"));
        q.bind(servei).exec();
        if (q.next())
            descripcio = q.text(0);
    }
    // The place's own wording, when it has one for this service, wins.
    if (!lloc.isEmpty()) {
        Query q = m_db.prepared(QStringLiteral(
            "SELECT llocs_serveis_descripcio FROM Llocs_Serveis WHERE serveis_nom = ? AND llocs_nom = ?"));
        q.bind(servei).bind(lloc).exec();
        if (q.next())
            descripcio = q.text(0);
    }
    return descripcio;
}

int MotorFeines::Components_Assigna_Temps(const QString &recurs)
{
    Query q = m_db.prepared(QStringLiteral(
        "SELECT COUNT(*) FROM Recursos INNER JOIN Recursos_Components"
        " ON Recursos.recursos_nom = Recursos_Components.recursos_component_nom"
        " WHERE Recursos_Components.recursos_nom = ? AND Recursos.recursos_assigna_temps <> 0"));
    q.bind(recurs).exec();
    const qint64 n = q.next() ? q.integer(0) : 0;
    // A single worker has no members; a group whose members take no time divides nothing.
    return n > 0 ? static_cast<int>(n) : 1;
}

int MotorFeines::arrodoneixCella(int total) const
{
    const int cella = m_cfg.MinutsCella;
    if (cella <= 0)
        throw std::domain_error("divisió per zero");
    if (total > 0 && total % cella == 0)
        return total;
    return minuts16(static_cast<double>((total / cella + 1) * cella));
}

namespace {

// Sums a place's or a job's service lines (quantity, minutes per unit, common) among n workers.
int sumaMinuts(Query &q, int n)
{
    SumaMinuts suma(n);
    while (q.next()) {
        suma.afegeix(q.real(0), static_cast<double>(q.integer(1)), q.boolean(2));
        if (suma.desbordat())
            throw std::overflow_error("desbordament");
    }
    return suma.total();
}

} // namespace

int MotorFeines::Minuts_Serveis_Lloc(const QString &lloc, int n)
{
    Query q = m_db.prepared(QStringLiteral(
        "SELECT Llocs_Serveis.llocs_serveis_quantitat, Serveis.serveis_minuts_per_unitat, Serveis.serveis_comu_per_recursos"
        " FROM Serveis INNER JOIN Llocs_Serveis ON Serveis.serveis_nom = Llocs_Serveis.serveis_nom"
        " WHERE Llocs_Serveis.llocs_nom = ?"));
    q.bind(lloc).exec();
    return arrodoneixCella(sumaMinuts(q, n));
}

QString MotorFeines::Hora_Fi_Feina(const Feina &f)
{
    const int n = Components_Assigna_Temps(f.recursos_nom);
    int total = 0;
    {
        Query q = m_db.prepared(QStringLiteral(
            "SELECT Feines_Detall.feines_detall_quantitat, Serveis.serveis_minuts_per_unitat, Serveis.serveis_comu_per_recursos"
            " FROM Serveis INNER JOIN Feines_Detall ON Serveis.serveis_nom = Feines_Detall.serveis_nom"
            " WHERE Feines_Detall.feines_id = ?"));
        q.bind(f.feines_id).exec();
        total = arrodoneixCella(sumaMinuts(q, n));
    }
    return horaFi(f.feines_hora_inici, total, m_cfg.HoraFinal);
}

// ---------------------------------------------------------------- overlap checks

bool MotorFeines::solapamentLloc(const Feina &f, int excloure)
{
    Query q = m_db.prepared(sqlSolapamentLloc(excloure != 0));
    q.bind(f.llocs_nom).bind(f.feines_data);
    if (excloure)
        q.bind(excloure);
    q.bind(f.feines_hora_inici).bind(f.feines_hora_inici).bind(f.feines_hora_fi).bind(f.feines_hora_fi)
        .bind(f.feines_hora_inici).bind(f.feines_hora_fi);
    q.exec();
    return q.next();
}

bool MotorFeines::solapamentRecurs(const QString &recurs, const Feina &f, int excloure)
{
    Query q = m_db.prepared(sqlSolapamentRecurs(excloure != 0));
    for (int branca = 0; branca < 2; ++branca) {
        if (branca == 0)
            q.bind(f.feines_data).bind(recurs);
        else
            q.bind(recurs).bind(f.feines_data);
        if (excloure)
            q.bind(excloure);
        q.bind(f.feines_hora_inici).bind(f.feines_hora_inici).bind(f.feines_hora_fi).bind(f.feines_hora_fi)
            .bind(f.feines_hora_inici).bind(f.feines_hora_fi);
    }
    q.exec();
    return q.next();
}

QStringList MotorFeines::membres(const QString &grup)
{
    Query q = m_db.prepared(QStringLiteral(
        "SELECT recursos_component_nom FROM Recursos_Components WHERE recursos_nom = ?"));
    q.bind(grup).exec();
    return q.columna();
}

// ---------------------------------------------------------------- Grava_Feina

void MotorFeines::Grava_Feina(Feina &f, bool estricte)
{
    f.missatge.clear();
    protegeix(f, "Grava_Feina", [&] { grava(f, estricte); });
}

void MotorFeines::grava(Feina &f, bool estricte)
{
    Transaction t(m_db);

    int minutsPrevist = 0;
    {
        Query q = m_db.prepared(QStringLiteral("SELECT llocs_minuts_previst, recursos_nom FROM Llocs WHERE llocs_nom = ?"));
        q.bind(f.llocs_nom).exec();
        if (!q.next()) {
            f.missatge = Tradueix("Lloc '") + f.llocs_nom + Tradueix("' inexistent");
            return;
        }
        minutsPrevist = minuts16(static_cast<double>(q.integer(0)));
        if (f.recursos_nom.isEmpty())
            f.recursos_nom = q.text(1);
    }

    f.feines_hora_fi = horaFi(f.feines_hora_inici, minutsPrevist, m_cfg.HoraFinal);
    if (f.feines_hora_fi > m_cfg.HoraFinal) {
        f.missatge = Tradueix("L'hora final de la feina supera les") + QLatin1Char(' ') + m_cfg.HoraFinal + QStringLiteral("h.");
        return;
    }

    if (!m_cfg.PermetSolaparLlocs && solapamentLloc(f, 0)) {
        f.missatge = Tradueix("Solapament de llocs a") + QLatin1Char(' ') + f.llocs_nom.toUpper();
        return;
    }

    if (!f.recursos_nom.isEmpty()) {
        bool grup = false;
        {
            Query q = m_db.prepared(QStringLiteral("SELECT recursos_grup FROM Recursos WHERE recursos_nom = ?"));
            q.bind(f.recursos_nom).exec();
            if (!q.next()) {
                f.missatge = Tradueix("Recurs no trobat:") + f.recursos_nom;
                return;
            }
            grup = q.boolean(0);
        }
        QString ocupat;
        if (solapamentRecurs(f.recursos_nom, f, 0)) {
            ocupat = f.recursos_nom;
        } else if (grup) {
            for (const QString &membre : membres(f.recursos_nom)) {
                if (solapamentRecurs(membre, f, 0)) {
                    ocupat = membre;
                    break;
                }
            }
        }
        if (!ocupat.isEmpty()) {
            if (estricte) {
                f.missatge = Tradueix("Solapament de recursos:") + QLatin1Char(' ') + ocupat;
                return;
            }
            f.recursos_nom.clear(); // stored without a resource, for someone to assign later
        }
    }

    {
        Query q = m_db.prepared(QStringLiteral(
            "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
            " VALUES (?, ?, ?, ?, ?)"));
        q.bind(f.llocs_nom).bind(f.feines_data).bind(f.feines_hora_inici).bind(f.feines_hora_fi)
            .bind(textONull(f.recursos_nom)).exec();
        f.feines_id = static_cast<int>(q.lastInsertId());
    }
    try {
        // The job carries the place's agreed price and wording, not the service's list ones.
        Query q = m_db.prepared(QStringLiteral(
            "INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_preu_un,"
            " feines_detall_unitat, feines_detall_descripcio)"
            " SELECT ?, Llocs_Serveis.serveis_nom, Llocs_Serveis.llocs_serveis_quantitat, Llocs_Serveis.llocs_serveis_preu_un,"
            " Serveis.serveis_unitat, Llocs_Serveis.llocs_serveis_descripcio"
            " FROM Serveis INNER JOIN Llocs_Serveis ON Serveis.serveis_nom = Llocs_Serveis.serveis_nom"
            " WHERE Llocs_Serveis.llocs_nom = ?"));
        q.bind(f.feines_id).bind(f.llocs_nom).exec();
        t.commit();
    } catch (...) {
        f.feines_id = 0; // rolled back: the job does not exist
        throw;
    }
    f.feines_feta = false;
    f.feines_data_factura = QDate();
    f.feines_observacions.clear();
}

// ---------------------------------------------------------------- checks of a change

// Unlike creation there is no falling back to "unassigned": the user asked for this resource.
QString MotorFeines::comprovaSolapaments(const Feina &f, int excloure)
{
    if (!m_cfg.PermetSolaparLlocs && solapamentLloc(f, excloure))
        return Tradueix("Solapament de llocs a") + QLatin1Char(' ') + f.llocs_nom.toUpper();
    if (!f.recursos_nom.isEmpty()) {
        bool grup = false;
        {
            Query q = m_db.prepared(QStringLiteral("SELECT recursos_grup FROM Recursos WHERE recursos_nom = ?"));
            q.bind(f.recursos_nom).exec();
            if (!q.next())
                return Tradueix("Recurs no trobat:") + f.recursos_nom;
            grup = q.boolean(0);
        }
        if (solapamentRecurs(f.recursos_nom, f, excloure))
            return Tradueix("Solapament de recursos:") + QLatin1Char(' ') + f.recursos_nom;
        if (grup) {
            for (const QString &membre : membres(f.recursos_nom)) {
                if (solapamentRecurs(membre, f, excloure))
                    return Tradueix("Solapament de recursos:") + QLatin1Char(' ') + membre;
            }
        }
    }
    return QString();
}

// ---------------------------------------------------------------- Modifica_Feina

void MotorFeines::Modifica_Feina(Feina &f)
{
    f.missatge.clear();
    protegeix(f, "Modifica_Feina", [&] { modifica(f); });
}

void MotorFeines::modifica(Feina &f)
{
    if (f.feines_id == 0) {
        f.missatge = Tradueix("Feina no especificada");
        return;
    }
    Transaction t(m_db);
    {
        Query q = m_db.prepared(QStringLiteral("SELECT feines_feta FROM Feines WHERE feines_id = ?"));
        q.bind(f.feines_id).exec();
        if (!q.next()) {
            f.missatge = Tradueix("Feina no trobada");
            return;
        }
        // A done job may only be changed back to not done.
        if (q.boolean(0) && f.feines_feta) {
            f.missatge = Tradueix("No es pot modificar una feina feta");
            return;
        }
    }
    if (f.feines_hora_fi.isEmpty())
        f.feines_hora_fi = Hora_Fi_Feina(f);
    if (f.recursos_nom.isEmpty() && f.feines_feta) {
        f.missatge = Tradueix("Cal assignar recurs si la feina està feta");
        return;
    }
    if (f.feines_data > avui() && f.feines_feta) {
        f.missatge = Tradueix("Una feina futura no pot estar feta");
        return;
    }
    f.missatge = comprovaSolapaments(f, f.feines_id);
    if (!f.missatge.isEmpty())
        return;

    Query q = m_db.prepared(
        f.feines_feta
            ? QStringLiteral("UPDATE Feines SET llocs_nom = ?, feines_data = ?, feines_hora_inici = ?, feines_hora_fi = ?,"
                             " recursos_nom = ?, feines_feta = 1, feines_data_factura = ?, feines_observacions = ?"
                             " WHERE feines_id = ?")
            // Not done: whatever billing had recorded for it no longer holds.
            : QStringLiteral("UPDATE Feines SET llocs_nom = ?, feines_data = ?, feines_hora_inici = ?, feines_hora_fi = ?,"
                             " recursos_nom = ?, feines_feta = 0, feines_data_factura = ?, feines_quota = 0,"
                             " feines_observacions = ? WHERE feines_id = ?"));
    q.bind(f.llocs_nom).bind(f.feines_data).bind(f.feines_hora_inici).bind(f.feines_hora_fi)
        .bind(textONull(f.recursos_nom));
    if (f.feines_feta)
        q.bind(f.feines_data_factura); // an invalid date binds Null
    else
        q.bindNull();
    q.bind(f.feines_observacions.isNull() ? QVariant() : QVariant(f.feines_observacions)).bind(f.feines_id).exec();
    if (q.rowsAffected() == 0) {
        f.missatge = Tradueix("Feina no trobada");
        return;
    }
    if (!f.feines_feta) {
        m_db.prepared(QStringLiteral("UPDATE Xecs SET xecs_data_liquidat = NULL, feines_id = NULL WHERE feines_id = ?"))
            .bind(f.feines_id).exec();
    }
    t.commit();
}

// ---------------------------------------------------------------- Borra_Feina

void MotorFeines::Borra_Feina(Feina &f)
{
    f.missatge.clear();
    protegeix(f, "Borra_Feina", [&] { borra(f); });
}

void MotorFeines::borra(Feina &f)
{
    if (f.feines_id == 0) {
        f.missatge = Tradueix("Feina no especificada");
        return;
    }
    Transaction t(m_db);
    Feina fila;
    if (!carregaFeina(m_db, f.feines_id, fila)) {
        f.missatge = Tradueix("Feina no trobada");
        return;
    }
    if (fila.feines_feta) {
        f.missatge = Tradueix("No es pot esborrar una feina feta");
        return;
    }
    m_db.prepared(QStringLiteral("UPDATE Xecs SET xecs_data_liquidat = NULL, feines_id = NULL WHERE feines_id = ?"))
        .bind(fila.feines_id).exec();
    // Its service lines go with it (Feines_Detall cascades).
    m_db.prepared(QStringLiteral("DELETE FROM Feines WHERE feines_id = ?")).bind(fila.feines_id).exec();
    t.commit();
    fila.missatge.clear();
    f = fila;
}

// ---------------------------------------------------------------- Restaura_Feina

void MotorFeines::Restaura_Feina(Feina &f)
{
    f.missatge.clear();
    protegeix(f, "Restaura_Feina", [&] { restaura(f); });
}

void MotorFeines::restaura(Feina &f)
{
    if (f.feines_id == 0) {
        f.missatge = Tradueix("Feina no especificada");
        return;
    }
    Transaction t(m_db);
    {
        Query q = m_db.prepared(QStringLiteral("SELECT 1 FROM Feines WHERE feines_id = ?"));
        q.bind(f.feines_id).exec();
        if (q.next()) {
            f.missatge = Tradueix("La feina ja existeix");
            return;
        }
    }
    {
        Query q = m_db.prepared(QStringLiteral("SELECT 1 FROM Llocs WHERE llocs_nom = ?"));
        q.bind(f.llocs_nom).exec();
        if (!q.next()) {
            f.missatge = Tradueix("Lloc '") + f.llocs_nom + Tradueix("' inexistent");
            return;
        }
    }
    if (f.feines_hora_fi > m_cfg.HoraFinal) {
        f.missatge = Tradueix("L'hora final de la feina supera les") + QLatin1Char(' ') + m_cfg.HoraFinal + QStringLiteral("h.");
        return;
    }
    f.missatge = comprovaSolapaments(f, 0);
    if (!f.missatge.isEmpty())
        return;
    Query q = m_db.prepared(QStringLiteral(
        "INSERT INTO Feines (feines_id, llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom,"
        " feines_feta, feines_data_factura, feines_observacions) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    q.bind(f.feines_id).bind(f.llocs_nom).bind(f.feines_data).bind(f.feines_hora_inici).bind(f.feines_hora_fi)
        .bind(textONull(f.recursos_nom)).bind(f.feines_feta ? 1 : 0).bind(f.feines_data_factura)
        .bind(f.feines_observacions.isNull() ? QVariant() : QVariant(f.feines_observacions)).exec();
    t.commit();
}

// ---------------------------------------------------------------- Busca_Feina

void MotorFeines::Busca_Feina(Feina &f, const QDate &dia, const QString &minut, const QString &lloc,
                              const QString &recurs)
{
    f = Feina();
    protegeix(f, "Busca_Feina", [&] { busca(f, dia, minut, lloc, recurs); });
}

void MotorFeines::busca(Feina &f, const QDate &dia, const QString &minut, const QString &lloc, const QString &recurs)
{
    // A job covers the minutes from its start up to, not including, its end: the minute at which
    // one job ends belongs to the next.
    static const QString comu = QStringLiteral(
        " WHERE Feines.llocs_nom = ? AND Feines.feines_data = ?"
        " AND Feines.feines_hora_inici <= ? AND Feines.feines_hora_fi > ?");
    static const QString senseRecurs = QStringLiteral("SELECT ") + kColumnesFeina + QStringLiteral(" FROM Feines") + comu
        + QStringLiteral(" AND Feines.recursos_nom IS NULL LIMIT 1");
    static const QString ambRecurs = QStringLiteral("SELECT ") + kColumnesFeina
        + QStringLiteral(" FROM Feines LEFT JOIN Recursos_Components ON Feines.recursos_nom = Recursos_Components.recursos_nom")
        + comu
        + QStringLiteral(" AND (Feines.recursos_nom = ? OR Recursos_Components.recursos_component_nom = ?) LIMIT 1");
    Query q = m_db.prepared(recurs.isEmpty() ? senseRecurs : ambRecurs);
    q.bind(lloc).bind(dia).bind(minut).bind(minut);
    if (!recurs.isEmpty())
        q.bind(recurs).bind(recurs);
    q.exec();
    if (!q.next()) {
        f.missatge = Tradueix("Feina no trobada");
        return;
    }
    llegeixFilaFeina(q, f);
}
