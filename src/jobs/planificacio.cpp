#include "planificacio.h"

#include "festius.h"
#include "motor_feines.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/traduccio.h"

#include <algorithm>
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

int PrevisioPlanificacio::compte(FeinaPlanificada::Resultat r) const
{
    return static_cast<int>(std::count_if(feines.cbegin(), feines.cend(),
                                          [r](const FeinaPlanificada &f) { return f.resultat == r; }));
}

QString Planificador::Planificar_Feines(const QDate &F, const QDate &L)
{
    return executa(F, L, [&] { return calcula(F, L); });
}

QString Planificador::Genera(const PrevisioPlanificacio &previsio)
{
    // The closed days named in the log are read again: the preview carries only their dates.
    return executa(previsio.desde, previsio.fins, [&] {
        m_tancats = Festius(m_db).mapa();
        return previsio.feines;
    });
}

PrevisioPlanificacio Planificador::Previsualitza(const QDate &F, const QDate &L)
{
    PrevisioPlanificacio p;
    p.desde = F;
    p.fins = L;
    try {
        p.feines = calcula(F, L);
        Transaction t(m_db); // never committed
        m_silenci = true;
        for (FeinaPlanificada &f : p.feines)
            grava(f);
        m_silenci = false;
    } catch (const std::exception &e) {
        m_silenci = false;
        p.feines.clear();
        p.error = QStringLiteral("Error en Planificar_Feines:") + textError(e);
    }
    return p;
}

QString Planificador::executa(const QDate &F, const QDate &L, const std::function<QList<FeinaPlanificada>()> &feines)
{
    m_comptador = 0;
    m_registre.titol(Tradueix("PLANIFICACIO DE FEINES"));
    QString resultat;
    {
        Ocupat ocupat(m_registre);
        m_registre.afegeix(kCrLf + Tradueix("Iniciant planificació periode:") + QLatin1Char(' ') + format::dataCurta(F)
                           + QStringLiteral(" - ") + format::dataCurta(L) + QStringLiteral(" ...") + kCrLf);
        try {
            QList<FeinaPlanificada> llista = feines();
            grava(llista);
            m_registre.afegeix(kCrLf + kCrLf + QString::number(m_comptador) + Tradueix(" feines planificades.") + kCrLf);
            m_registre.afegeix(kCrLf + kCrLf + Tradueix("FINALITZACIO CORRECTA!!!") + kCrLf);
        } catch (const std::exception &e) {
            resultat = QStringLiteral("Error en Planificar_Feines:") + textError(e);
            m_registre.afegeix(kCrLf + kCrLf + Tradueix("FINALITZACIO AMB ERRORS!!!") + kCrLf);
        }
    }
    return resultat;
}

QList<FeinaPlanificada> Planificador::calcula(const QDate &F, const QDate &L)
{
    m_tancats = Festius(m_db).mapa();
    QList<FeinaPlanificada> out;
    for (const Lloc &lloc : llegeixLlocs()) {
        if (!m_nomesLloc.isEmpty() && lloc.nom.compare(m_nomesLloc, Qt::CaseInsensitive) != 0)
            continue;
        const QDate darrera = lloc.ritme.mensual() ? QDate() : darreraFeina(lloc.nom);
        const QString inici = lloc.hora.isEmpty() ? m_cfg.HoraInici : lloc.hora;
        for (const DiaPlanificat &dia : diesPlanificats(lloc.ritme, F, L, darrera, m_cfg.PrimerDiaSetmana, m_tancats)) {
            FeinaPlanificada f;
            f.llocs_nom = lloc.nom;
            f.feines_data = dia.dia;
            f.feines_hora_inici = inici;
            f.festius = dia.festius;
            out.append(f);
        }
    }
    return out;
}

QList<Planificador::Lloc> Planificador::llegeixLlocs()
{
    // Read whole before any job is written. Places come in name order so that two runs over the
    // same data hand busy workers to the same places.
    Query q = m_db.prepared(QStringLiteral(
        "SELECT llocs_nom, llocs_periodicitat_dies, llocs_primer_dia_mes, llocs_ultim_dia_mes, llocs_dia_setmana, "
        "llocs_dissabte, llocs_diumenge, llocs_hora, llocs_festius FROM Llocs WHERE Llocs.llocs_periodicitat_dies > 0 "
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
        l.ritme.festius = q.boolean(8);
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

void Planificador::grava(QList<FeinaPlanificada> &feines)
{
    // Whole places make a unit of work, so a place is never half committed. Small units cost
    // dear: each commit rewrites every index page its jobs touched, and a place's jobs are spread
    // over the whole period. A failure commits what the log already shows before it is reported.
    std::optional<Transaction> t;
    int pendents = 0;
    try {
        for (qsizetype i = 0; i < feines.size(); ++i) {
            if (!t)
                t.emplace(m_db);
            const int abans = m_comptador;
            grava(feines[i]);
            pendents += m_comptador - abans;
            const bool fiLloc = i + 1 == feines.size() || feines[i + 1].llocs_nom != feines[i].llocs_nom;
            if (fiLloc && pendents >= m_feinesPerTransaccio) {
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

QString Planificador::textFestius(const QList<QDate> &festius) const
{
    QStringList dies;
    for (const QDate &d : festius) {
        const QString descripcio = m_tancats.value(d);
        dies << (descripcio.isEmpty() ? diaDelLog(d) : diaDelLog(d) + QStringLiteral(" (") + descripcio + QLatin1Char(')'));
    }
    return Tradueix("Moguda per festiu:") + QLatin1Char(' ') + dies.join(QStringLiteral(", ")) + QLatin1Char('.');
}

void Planificador::grava(FeinaPlanificada &p)
{
    Feina f;
    f.llocs_nom = p.llocs_nom;
    f.feines_data = p.feines_data;
    f.feines_hora_inici = p.feines_hora_inici;
    f.feines_hora_fi = QString();
    f.recursos_nom = QString(); // the place's default resource
    f.feines_feta = false;
    f.feines_data_factura = QDate();
    f.feines_observacions = QString();
    m_motor.Grava_Feina(f, false);

    p.missatge = f.missatge;
    p.recursos_nom = f.missatge.isEmpty() ? f.recursos_nom : QString();
    p.feines_id = f.missatge.isEmpty() ? f.feines_id : 0;
    p.resultat = !f.missatge.isEmpty()      ? FeinaPlanificada::Resultat::Refusada
                 : f.recursos_nom.isEmpty() ? FeinaPlanificada::Resultat::SenseRecurs
                                            : FeinaPlanificada::Resultat::Ok;
    if (m_silenci)
        return;
    const QString moguda = p.festius.isEmpty() ? QString() : textFestius(p.festius);
    const QString &inici = p.feines_hora_inici;
    const QDate &dia = p.feines_data;
    if (!f.missatge.isEmpty()) {
        m_registre.afegeix(kCrLf + Tradueix("ERROR en planificació de feina: '") + p.llocs_nom + Tradueix("' el")
                           + QLatin1Char(' ') + diaDelLog(dia) + Tradueix(" a les") + QLatin1Char(' ') + inici
                           + QLatin1Char('.') + (moguda.isEmpty() ? QString() : QLatin1Char(' ') + moguda) + kCrLf + f.missatge);
        return;
    }
    const QString recurs = f.recursos_nom.isEmpty() ? Tradueix("<no assignada>") : f.recursos_nom.toUpper();
    m_registre.afegeix(kCrLf + Tradueix("Feina") + QLatin1Char(' ') + QString::number(f.feines_id) + QStringLiteral(": ")
                       + recurs + QStringLiteral("  -  '") + p.llocs_nom + Tradueix("' planificada el") + QLatin1Char(' ')
                       + diaDelLog(dia) + Tradueix(" a les") + QLatin1Char(' ') + inici + QStringLiteral(". ") + moguda);
    ++m_comptador;
}
