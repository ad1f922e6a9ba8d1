#include "llocs.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/referencies.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/motor_feines.h"

namespace {

QVariant textONull(const QString &t)
{
    return t.isEmpty() ? QVariant() : QVariant(t);
}

const char *const kDiesPlanificacio[] = {PerTraduir("diumenges"), PerTraduir("dilluns"), PerTraduir("dimarts"),
                                         PerTraduir("dimecres"),  PerTraduir("dijous"),  PerTraduir("divendres"),
                                         PerTraduir("dissabtes")};

} // namespace

GestioLlocs::GestioLlocs(Sessio &sessio, Interaccio &io) : m_sessio(sessio), m_io(io) {}

// ------------------------------------------------------------------ lists and loading

QStringList GestioLlocs::llocsClient(const QString &client)
{
    Query q = m_sessio.db().prepared(
        QStringLiteral("SELECT llocs_nom FROM Llocs WHERE Llocs.clients_nom = ? ORDER BY Llocs.llocs_nom"));
    q.bind(client).exec();
    return q.columna();
}

bool GestioLlocs::carrega(const QString &nom, FitxaLloc &f)
{
    Query q = m_sessio.db().prepared(QStringLiteral(
        "SELECT llocs_nom, clients_nom, \"llocs_adreça\", llocs_poblacio, llocs_telefon, llocs_minuts_previst, "
        "recursos_nom, llocs_observacions, llocs_periodicitat_dies, llocs_primer_dia_mes, llocs_ultim_dia_mes, "
        "llocs_dia_setmana, llocs_dissabte, llocs_diumenge, llocs_hora, llocs_quota, llocs_festius FROM Llocs "
        "WHERE llocs_nom = ?"));
    q.bind(nom).exec();
    if (!q.next())
        return false;
    f.nom = f.nomAnt = q.text(0);
    f.client = q.text(1);
    f.adreca = q.text(2);
    f.poblacio = q.text(3);
    f.telefon = q.text(4);
    f.minutsPrevist = QString::number(q.integer(5));
    f.recurs = q.text(6);
    f.observacions = q.text(7);
    f.periodicitat = QString::number(q.integer(8));
    f.primerMes = q.boolean(9);
    f.ultimMes = q.boolean(10);
    const int dia = static_cast<int>(q.integer(11));
    f.diaSetmana = dia >= 1 && dia <= 7 ? dia : 0;
    f.dissabte = q.boolean(12);
    f.diumenge = q.boolean(13);
    f.festius = q.boolean(16);
    f.hora = q.text(14);
    f.quota = q.isNull(QStringLiteral("llocs_quota")) ? QString() : format::preu(q.real(15));
    return true;
}

QString GestioLlocs::clientDelLloc(const QString &nom)
{
    Query q = m_sessio.db().prepared(QStringLiteral("SELECT clients_nom FROM Llocs WHERE Llocs.llocs_nom = ?"));
    q.bind(nom).exec();
    return q.next() ? q.text(0) : QString();
}

QStringList GestioLlocs::horesDia() const
{
    const Configuracio &cfg = m_sessio.cfg();
    QStringList out;
    const int inici = hora::minuts(cfg.HoraInici);
    for (int i = 0; inici >= 0 && i < cfg.CellesDia; ++i)
        out << hora::text(inici + i * cfg.MinutsCella);
    return out;
}

QStringList GestioLlocs::diesSetmana()
{
    QStringList out;
    for (const char *dia : kDiesPlanificacio)
        out << Tradueix(dia);
    return out;
}

int GestioLlocs::duradaDia() const
{
    return m_sessio.cfg().CellesDia * m_sessio.cfg().MinutsCella;
}

bool GestioLlocs::existeix(const QString &nom)
{
    Query q = m_sessio.db().prepared(QStringLiteral("SELECT 1 FROM Llocs WHERE llocs_nom = ?"));
    q.bind(nom).exec();
    return q.next();
}

// ------------------------------------------------------------------ shared checks

bool GestioLlocs::nomAcceptat(const FitxaLloc &f)
{
    // TexteVaris marks an agenda cell holding several jobs: a place by that name would be
    // indistinguishable from it.
    if (f.nom == m_sessio.cfg().TexteVaris) {
        m_io.informa(QString(), Tradueix("El nom del lloc no pot ser '") + m_sessio.cfg().TexteVaris + QLatin1Char('\''));
        return false;
    }
    return true;
}

bool GestioLlocs::periodicitatAcceptada(FitxaLloc &f)
{
    if (f.periodicitat.trimmed().isEmpty())
        f.periodicitat = QStringLiteral("0");
    int dies = 0;
    if (mestres::llegeixEnter16(f.periodicitat, &dies)) {
        f.periodicitat = QString::number(dies);
        if (dies >= 0)
            return true;
    }
    mestres::refusa(m_io, Tradueix("Cal informar la periodicitat en dies. (0 si no planificable)"));
    return false;
}

bool GestioLlocs::minutsDinsDelDia(int minuts)
{
    if (minuts > duradaDia()) {
        mestres::refusa(m_io, Tradueix("Excés de minuts previstos"));
        return false;
    }
    const int cella = m_sessio.cfg().MinutsCella;
    if (cella > 0 && minuts % cella != 0) {
        mestres::refusa(m_io, Tradueix("Els minuts previstos han de ser múltiples de") + QLatin1Char(' ') + QString::number(cella));
        return false;
    }
    return true;
}

bool GestioLlocs::quotaAcceptada(FitxaLloc &f)
{
    if (f.quota.trimmed().isEmpty())
        f.quota = QStringLiteral("0");
    double quota = 0.0;
    if (!mestres::llegeixNombre(f.quota, &quota)) {
        mestres::refusa(m_io, Tradueix("La quota ha de ser numèrica"));
        return false;
    }
    // The box on the page may not be saved yet, and the stored flag may be set while the box was
    // cleared without saving: either one keeps fees away from a voucher client.
    if (arrodoneix::centims(quota) != 0.0) {
        Query q = m_sessio.db().prepared(QStringLiteral("SELECT clients_xecs FROM Clients WHERE clients_nom = ?"));
        q.bind(f.client).exec();
        const bool xecsDesat = q.next() && q.boolean(0);
        if (f.clientXecs || xecsDesat) {
            mestres::refusa(m_io, Tradueix("El client té xecs. No pot tenir quotes"));
            return false;
        }
    }
    return true;
}

// ------------------------------------------------------------------ places

void GestioLlocs::escriu(const FitxaLloc &f, bool nou)
{
    double quota = 0.0;
    mestres::llegeixNombre(f.quota, &quota);
    const QString columnes = QStringLiteral(
        "llocs_nom, clients_nom, \"llocs_adreça\", llocs_poblacio, llocs_telefon, llocs_minuts_previst, "
        "recursos_nom, llocs_observacions, llocs_periodicitat_dies, llocs_primer_dia_mes, llocs_ultim_dia_mes, "
        "llocs_dia_setmana, llocs_dissabte, llocs_diumenge, llocs_hora, llocs_quota, llocs_festius");
    Query q = nou ? m_sessio.db().prepared(QStringLiteral("INSERT INTO Llocs (") + columnes +
                                           QStringLiteral(") VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"))
                  : m_sessio.db().prepared(QStringLiteral(
                        "UPDATE Llocs SET llocs_nom = ?, clients_nom = ?, \"llocs_adreça\" = ?, llocs_poblacio = ?, "
                        "llocs_telefon = ?, llocs_minuts_previst = ?, recursos_nom = ?, llocs_observacions = ?, "
                        "llocs_periodicitat_dies = ?, llocs_primer_dia_mes = ?, llocs_ultim_dia_mes = ?, "
                        "llocs_dia_setmana = ?, llocs_dissabte = ?, llocs_diumenge = ?, llocs_hora = ?, "
                        "llocs_quota = ?, llocs_festius = ? WHERE llocs_nom = ?"));
    q.bind(f.nom).bind(f.client).bind(f.adreca).bind(f.poblacio).bind(f.telefon).bind(f.minutsPrevist.toInt())
        .bind(textONull(f.recurs)).bind(f.observacions).bind(f.periodicitat.toInt()).bind(f.primerMes ? 1 : 0)
        .bind(f.ultimMes ? 1 : 0).bind(f.diaSetmana).bind(f.dissabte ? 1 : 0).bind(f.diumenge ? 1 : 0)
        .bind(textONull(f.hora)).bind(arrodoneix::centims(quota)).bind(f.festius ? 1 : 0);
    if (!nou)
        q.bind(f.nomAnt);
    q.exec();
}

Resultat GestioLlocs::AfegirLloc(FitxaLloc &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty() || f.client.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        if (!nomAcceptat(f) || !periodicitatAcceptada(f))
            return Resultat::Refusat;
        int minuts = 0;
        if (!mestres::llegeixEnter16(f.minutsPrevist, &minuts))
            minuts = m_sessio.cfg().MinutsCella;
        f.minutsPrevist = QString::number(minuts);
        if (minuts < 1)
            return mestres::refusa(m_io, Tradueix("Cal informar els minuts previstos"));
        if (!minutsDinsDelDia(minuts) || !quotaAcceptada(f))
            return Resultat::Refusat;

        Db &db = m_sessio.db();
        Transaction t(db);
        if (existeix(f.nom))
            return mestres::refusa(m_io, Tradueix("El lloc ja existeix"));
        Query c = db.prepared(QStringLiteral("SELECT 1 FROM Clients WHERE clients_nom = ?"));
        c.bind(f.client).exec();
        if (!c.next())
            return mestres::refusa(m_io, Tradueix("El client no existeix"));
        // Monthly places are picked by the planning through this value.
        if (f.primerMes || f.ultimMes)
            f.periodicitat = QStringLiteral("99");
        escriu(f, true);
        t.commit();
        f.nomAnt = f.nom;
        m_sessio.RefrescarAgenda = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioLlocs::ModificarLloc(FitxaLloc &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty() || f.nomAnt.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        if (!nomAcceptat(f))
            return Resultat::Refusat;
        int minuts = 0;
        const bool numeric = mestres::llegeixEnter16(f.minutsPrevist, &minuts);
        if (numeric)
            f.minutsPrevist = QString::number(minuts);
        if (!numeric || minuts <= 0)
            return mestres::refusa(m_io, Tradueix("Cal informar els minuts previstos"));
        if (!periodicitatAcceptada(f) || !minutsDinsDelDia(minuts) || !quotaAcceptada(f))
            return Resultat::Refusat;
        // Asked before the write starts, so no lock is held while the user thinks.
        preguntaMinuts(f, f.nomAnt);

        Db &db = m_sessio.db();
        Transaction t(db);
        if (!existeix(f.nomAnt))
            return mestres::refusa(m_io, Tradueix("El lloc no existeix"));
        Query q = db.prepared(QStringLiteral("SELECT 1 FROM Llocs WHERE llocs_nom = ? AND llocs_nom <> ?"));
        q.bind(f.nom).bind(f.nomAnt).exec();
        if (q.next())
            return mestres::refusa(m_io, Tradueix("El lloc ja existeix"));
        if (f.primerMes || f.ultimMes)
            f.periodicitat = QStringLiteral("99");
        escriu(f, false);
        if (f.nom != f.nomAnt)
            referencies::reanomena(db, referencies::Tipus::Lloc, f.nomAnt, f.nom);
        t.commit();
        if (f.nom != f.nomAnt)
            m_sessio.RefrescarFacturacio = true;
        f.nomAnt = f.nom;
        m_sessio.RefrescarAgenda = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioLlocs::EliminarLloc(FitxaLloc &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        Db &db = m_sessio.db();
        Transaction t(db);
        if (!existeix(f.nom))
            return mestres::refusa(m_io, Tradueix("El lloc no existeix"));
        if (const referencies::Referencia *r = referencies::impedeixEsborrar(db, referencies::Tipus::Lloc, f.nom))
            return mestres::refusa(m_io, Tradueix(r->missatgeEsborrar));
        referencies::esborraDependents(db, referencies::Tipus::Lloc, f.nom);
        db.prepared(QStringLiteral("DELETE FROM Llocs WHERE llocs_nom = ?")).bind(f.nom).exec();
        t.commit();
        const QString client = f.client;
        const bool xecs = f.clientXecs;
        f = FitxaLloc();
        f.client = client;
        f.clientXecs = xecs;
        m_sessio.RefrescarAgenda = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

// ------------------------------------------------------------------ the minutes question

bool GestioLlocs::preguntaMinuts(FitxaLloc &f, const QString &nomLloc)
{
    MotorFeines motor(m_sessio.db(), m_sessio.cfg());
    const int n = motor.Components_Assigna_Temps(f.recurs);
    const int d = motor.Minuts_Serveis_Lloc(nomLloc, n);
    int minuts = 0;
    const bool numeric = mestres::llegeixEnter16(f.minutsPrevist, &minuts);
    if (d < 1 || (numeric && d == minuts))
        return false;
    const QString text = Tradueix("Els minuts previstos difereixen de la duració dels serveis (") + QString::number(d) +
                         Tradueix(" minuts).") + Tradueix(" Actualitzar minuts?");
    if (!m_io.pregunta(Tradueix("AVÍS"), text))
        return false;
    f.minutsPrevist = QString::number(d);
    return true;
}

// ------------------------------------------------------------------ service lines

QList<LiniaServeiLloc> GestioLlocs::liniesLloc(const QString &lloc)
{
    QList<LiniaServeiLloc> out;
    Query q = m_sessio.db().prepared(QStringLiteral(
        "SELECT Llocs_Serveis.serveis_nom, llocs_serveis_quantitat, llocs_serveis_preu_un, Serveis.serveis_unitat "
        "FROM Llocs_Serveis LEFT JOIN Serveis ON Serveis.serveis_nom = Llocs_Serveis.serveis_nom "
        "WHERE Llocs_Serveis.llocs_nom = ? ORDER BY Llocs_Serveis.serveis_nom"));
    q.bind(lloc).exec();
    while (q.next())
        out.append({q.text(0), q.real(1), q.real(2), q.text(3)});
    return out;
}

void GestioLlocs::ompleServei(FitxaServeiLloc &s)
{
    MotorFeines motor(m_sessio.db(), m_sessio.cfg());
    s.unitat = motor.Unitat_Servei(s.servei);
    s.preu = format::preu(motor.Preu_Servei(s.servei));
    s.descripcio = motor.Descripcio_Servei(s.servei, QString());
}

bool GestioLlocs::carregaServeiLloc(const QString &lloc, const QString &servei, FitxaServeiLloc &s)
{
    Query q = m_sessio.db().prepared(QStringLiteral(
        "SELECT serveis_nom, llocs_serveis_quantitat, llocs_serveis_preu_un, llocs_serveis_descripcio "
        "FROM Llocs_Serveis WHERE llocs_nom = ? AND serveis_nom = ?"));
    q.bind(lloc).bind(servei).exec();
    if (!q.next())
        return false;
    const QString nom = q.text(0);
    const double quantitat = q.real(1);
    const double preu = q.real(2);
    const QString descripcio = q.text(3);
    s.servei = nom;
    ompleServei(s);
    s.quantitat = mestres::textNombre(quantitat);
    s.preu = format::preu(preu);
    s.descripcio = descripcio;
    return true;
}

namespace {

// The two checks of a service line, in order; false after showing the message.
bool liniaAcceptada(Interaccio &io, const FitxaServeiLloc &s, double *quantitat, double *preu)
{
    if (!mestres::llegeixNombre(s.quantitat, quantitat)) {
        mestres::refusa(io, Tradueix("Cal informar la quantitat"));
        return false;
    }
    if (*quantitat <= 0.0) {
        mestres::refusa(io, Tradueix("Cal informar una quantitat positiva"));
        return false;
    }
    if (!mestres::llegeixNombre(s.preu, preu) || *preu == 0.0) {
        mestres::refusa(io, Tradueix("Cal informar un preu"));
        return false;
    }
    return true;
}

bool liniaExisteix(Db &db, const QString &lloc, const QString &servei)
{
    Query q = db.prepared(QStringLiteral("SELECT 1 FROM Llocs_Serveis WHERE llocs_nom = ? AND serveis_nom = ?"));
    q.bind(lloc).bind(servei).exec();
    return q.next();
}

} // namespace

Resultat GestioLlocs::AfegirServeiLloc(FitxaLloc &lloc, FitxaServeiLloc &s)
{
    if (lloc.nomAnt.isEmpty() || s.servei.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        double quantitat = 0.0, preu = 0.0;
        if (!liniaAcceptada(m_io, s, &quantitat, &preu))
            return Resultat::Refusat;
        Resultat r = Resultat::Fet;
        {
            Db &db = m_sessio.db();
            Transaction t(db);
            if (liniaExisteix(db, lloc.nomAnt, s.servei)) {
                mestres::refusa(m_io, Tradueix("El servei ja existeix pel lloc"));
                r = Resultat::Refusat;
            } else {
                db.prepared(QStringLiteral("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom, llocs_serveis_descripcio, "
                                           "llocs_serveis_quantitat, llocs_serveis_preu_un) VALUES (?, ?, ?, ?, ?)"))
                    .bind(lloc.nomAnt).bind(s.servei).bind(s.descripcio).bind(quantitat).bind(preu).exec();
                t.commit();
            }
        }
        // Either way the place's minutes are compared with its services now.
        if (preguntaMinuts(lloc, lloc.nom.trimmed()))
            ModificarLloc(lloc);
        return r;
    });
}

Resultat GestioLlocs::ModificarServeiLloc(FitxaLloc &lloc, FitxaServeiLloc &s)
{
    if (lloc.nomAnt.isEmpty() || s.servei.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        double quantitat = 0.0, preu = 0.0;
        if (!liniaAcceptada(m_io, s, &quantitat, &preu))
            return Resultat::Refusat;
        {
            Db &db = m_sessio.db();
            Transaction t(db);
            if (!liniaExisteix(db, lloc.nomAnt, s.servei))
                return mestres::refusa(m_io, Tradueix("El servei no existeix pel lloc"));
            db.prepared(QStringLiteral("UPDATE Llocs_Serveis SET llocs_serveis_quantitat = ?, llocs_serveis_preu_un = ?, "
                                       "llocs_serveis_descripcio = ? WHERE llocs_nom = ? AND serveis_nom = ?"))
                .bind(quantitat).bind(preu).bind(s.descripcio).bind(lloc.nomAnt).bind(s.servei).exec();
            t.commit();
        }
        s = FitxaServeiLloc();
        if (preguntaMinuts(lloc, lloc.nomAnt))
            ModificarLloc(lloc);
        return Resultat::Fet;
    });
}

Resultat GestioLlocs::EliminarServeiLloc(FitxaLloc &lloc, FitxaServeiLloc &s)
{
    if (lloc.nomAnt.isEmpty() || s.servei.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        Db &db = m_sessio.db();
        Transaction t(db);
        if (!liniaExisteix(db, lloc.nomAnt, s.servei))
            return mestres::refusa(m_io, Tradueix("El servei no existeix pel lloc"));
        db.prepared(QStringLiteral("DELETE FROM Llocs_Serveis WHERE llocs_nom = ? AND serveis_nom = ?"))
            .bind(lloc.nomAnt).bind(s.servei).exec();
        t.commit();
        s = FitxaServeiLloc();
        return Resultat::Fet;
    });
}
