#include "planificacio.h"

#include "motor_feines.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/traduccio.h"

#include <optional>

namespace {

const QString kCrLf = QStringLiteral("\r\n");

QString textError(const std::exception &e)
{
    if (const auto *db = dynamic_cast<const DbError *>(&e))
        return db->text();
    return QString::fromUtf8(e.what());
}

// "<weekday> dd/mm/yyyy", as the log names a day.
QString diaDelLog(const QDate &dia)
{
    return format::nomDia(format::diaSetmana(dia)) + QLatin1Char(' ') + format::dataCurta(dia);
}

// Keeps the sink's busy state balanced whatever way the run ends.
class Ocupat {
public:
    explicit Ocupat(RegistreSortida &r) : m_r(r) { m_r.ocupat(true); }
    ~Ocupat() { m_r.ocupat(false); }
    Ocupat(const Ocupat &) = delete;
    Ocupat &operator=(const Ocupat &) = delete;

private:
    RegistreSortida &m_r;
};

} // namespace

Planificador::Planificador(Db &db, const Configuracio &cfg, MotorFeines &motor, RegistreSortida &registre)
    : m_db(db), m_cfg(cfg), m_motor(motor), m_registre(registre)
{
}

QString Planificador::Planificar_Feines(const QDate &F, const QDate &L)
{
    m_comptador = 0;
    m_registre.titol(Tradueix("PLANIFICACIO DE FEINES"));
    QString resultat;
    {
        Ocupat ocupat(m_registre);
        m_registre.afegeix(kCrLf + Tradueix("Iniciant planificació periode:") + QLatin1Char(' ') + format::dataCurta(F)
                           + QStringLiteral(" - ") + format::dataCurta(L) + QStringLiteral(" ...") + kCrLf);
        try {
            planificaLlocs(llegeixLlocs(), F, L);
            m_registre.afegeix(kCrLf + kCrLf + QString::number(m_comptador) + Tradueix(" feines planificades.") + kCrLf);
            m_registre.afegeix(kCrLf + kCrLf + Tradueix("FINALITZACIO CORRECTA!!!") + kCrLf);
        } catch (const std::exception &e) {
            resultat = QStringLiteral("Error en Planificar_Feines:") + textError(e);
            m_registre.afegeix(kCrLf + kCrLf + Tradueix("FINALITZACIO AMB ERRORS!!!") + kCrLf);
        }
    }
    return resultat;
}

QList<Planificador::Lloc> Planificador::llegeixLlocs()
{
    // Read whole before any job is written. Places come in name order so that two runs over the
    // same data hand busy workers to the same places.
    Query q = m_db.prepared(QStringLiteral(
        "SELECT llocs_nom, llocs_periodicitat_dies, llocs_primer_dia_mes, llocs_ultim_dia_mes, llocs_dia_setmana, "
        "llocs_dissabte, llocs_diumenge, llocs_hora FROM Llocs WHERE Llocs.llocs_periodicitat_dies > 0 "
        "ORDER BY llocs_nom"));
    q.exec();
    QList<Lloc> llocs;
    while (q.next()) {
        Lloc l;
        l.nom = q.text(0);
        l.ritme.periodicitat_dies = static_cast<int>(q.integer(1));
        l.ritme.primer_dia_mes = q.boolean(2);
        l.ritme.ultim_dia_mes = q.boolean(3);
        l.ritme.dia_setmana = static_cast<int>(q.integer(4));
        l.ritme.dissabte = q.boolean(5);
        l.ritme.diumenge = q.boolean(6);
        // A time stored by another tool as "8:00" is the place's 08:00; one that still is no time
        // goes to the engine as it stands, which refuses each job with its message in the log.
        const QString h = hora::llegeix(q.text(7));
        l.hora = h.isNull() ? q.text(7).trimmed() : h;
        llocs.append(l);
    }
    return llocs;
}

QDate Planificador::darreraFeina(const QString &lloc)
{
    // Any job counts, planned or typed: the rhythm continues from whatever was done last.
    Query q = m_db.prepared(QStringLiteral(
        "SELECT feines_data FROM Feines WHERE Feines.llocs_nom = ? ORDER BY Feines.feines_data DESC LIMIT 1"));
    q.bind(lloc).exec();
    return q.next() ? q.date(0) : QDate();
}

void Planificador::planificaLlocs(const QList<Lloc> &llocs, const QDate &F, const QDate &L)
{
    // Whole places make a unit of work, so a place is never half committed. Small units cost
    // dear: each commit rewrites every index page its jobs touched, and a place's jobs are spread
    // over the whole period. A failure commits what the log already shows before it is reported.
    std::optional<Transaction> t;
    int pendents = 0;
    try {
        for (const Lloc &lloc : llocs) {
            if (!t)
                t.emplace(m_db);
            const int abans = m_comptador;
            planificaLloc(lloc, F, L);
            pendents += m_comptador - abans;
            if (pendents >= m_feinesPerTransaccio) {
                t->commit();
                t.reset();
                pendents = 0;
            }
        }
        if (t)
            t->commit();
    } catch (...) {
        if (t) {
            try {
                t->commit();
            } catch (...) {
            }
        }
        throw;
    }
}

void Planificador::planificaLloc(const Lloc &lloc, const QDate &F, const QDate &L)
{
    const QDate darrera = lloc.ritme.mensual() ? QDate() : darreraFeina(lloc.nom);
    const QList<QDate> dies = diesPlanificats(lloc.ritme, F, L, darrera, m_cfg.PrimerDiaSetmana);
    for (const QDate &dia : dies)
        creaFeina(lloc, dia);
}

void Planificador::creaFeina(const Lloc &lloc, const QDate &dia)
{
    const QString inici = lloc.hora.isEmpty() ? m_cfg.HoraInici : lloc.hora;
    Feina f;
    f.llocs_nom = lloc.nom;
    f.feines_data = dia;
    f.feines_hora_inici = inici;
    f.feines_hora_fi = QString();
    f.recursos_nom = QString(); // the place's default resource
    f.feines_feta = false;
    f.feines_data_factura = QDate();
    f.feines_observacions = QString();
    m_motor.Grava_Feina(f, false);

    if (!f.missatge.isEmpty()) {
        m_registre.afegeix(kCrLf + Tradueix("ERROR en planificació de feina: '") + lloc.nom + Tradueix("' el")
                           + QLatin1Char(' ') + diaDelLog(dia) + Tradueix(" a les") + QLatin1Char(' ') + inici
                           + QLatin1Char('.') + kCrLf + f.missatge);
        return;
    }
    const QString recurs = f.recursos_nom.isEmpty() ? Tradueix("<no assignada>") : f.recursos_nom.toUpper();
    m_registre.afegeix(kCrLf + Tradueix("Feina") + QLatin1Char(' ') + QString::number(f.feines_id) + QStringLiteral(": ")
                       + recurs + QStringLiteral("  -  '") + lloc.nom + Tradueix("' planificada el") + QLatin1Char(' ')
                       + diaDelLog(dia) + Tradueix(" a les") + QLatin1Char(' ') + inici + QStringLiteral(". "));
    ++m_comptador;
}
