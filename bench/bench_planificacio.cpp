// Planning one year for 1,000 places of mixed rhythms on a database that already holds 100,000
// jobs, against bare INSERTs of the same job rows and service lines (committed per place, as the
// planning commits) measured in the same run.
#include "core/configuracio.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/interaccio.h"
#include "jobs/motor_feines.h"
#include "jobs/planificacio.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <ctime>

namespace {

constexpr int kLlocs = 1000;
constexpr int kTreballadors = 50;
constexpr int kGrups = 10;
constexpr int kServeis = 30;
constexpr int kFeinesExistents = 100000;
const QDate kInici(2024, 1, 1);
const QDate kFi(2024, 12, 31);

QString nomLloc(int i) { return QStringLiteral("Lloc %1").arg(i, 4, 10, QLatin1Char('0')); }
QString nomRecurs(int i) { return QStringLiteral("Treballador %1").arg(i); }
QString nomGrup(int i) { return QStringLiteral("Equip %1").arg(i); }
QString nomServei(int i) { return QStringLiteral("Servei %1").arg(i); }

// The place's default resource: most places have a worker, some a team, a few none.
QString recursLloc(int i)
{
    if (i % 20 == 19)
        return QString();
    if (i % 10 == 3)
        return nomGrup(i % kGrups);
    return nomRecurs(i % kTreballadors);
}

QString horaLloc(int i)
{
    const int minuts = 6 * 60 + (i % 28) * 30;
    return QStringLiteral("%1:%2").arg(minuts / 60, 2, 10, QLatin1Char('0')).arg(minuts % 60, 2, 10, QLatin1Char('0'));
}

void omple(Db &db)
{
    Transaction t(db);
    Query recurs = db.prepared(QStringLiteral(
        "INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps) VALUES (?, ?, ?, ?)"));
    for (int i = 0; i < kTreballadors; ++i)
        recurs.bind(nomRecurs(i)).bind(0).bind(1000 + i).bind(1).exec();
    Query membre = db.prepared(QStringLiteral(
        "INSERT INTO Recursos_Components (recursos_nom, recursos_component_nom) VALUES (?, ?)"));
    for (int g = 0; g < kGrups; ++g) {
        recurs.bind(nomGrup(g)).bind(1).bind(2000 + g).bind(0).exec();
        for (int m = 0; m < 2 + g % 2; ++m)
            membre.bind(nomGrup(g)).bind(nomRecurs((g * 3 + m) % kTreballadors)).exec();
    }
    Query servei = db.prepared(QStringLiteral(
        "INSERT INTO Serveis (serveis_nom, serveis_descripcio, serveis_unitat, serveis_preu_un, serveis_minuts_per_unitat, "
        "serveis_comu_per_recursos) VALUES (?, ?, 'Hores', ?, ?, ?)"));
    for (int s = 0; s < kServeis; ++s)
        servei.bind(nomServei(s)).bind(QStringLiteral("Descripció %1").arg(s)).bind(5.0 + s).bind(15 + s % 4 * 15).bind(s % 5 == 0).exec();

    Query lloc = db.prepared(QStringLiteral(
        "INSERT INTO Llocs (llocs_nom, llocs_minuts_previst, recursos_nom, llocs_periodicitat_dies, llocs_primer_dia_mes, "
        "llocs_ultim_dia_mes, llocs_dia_setmana, llocs_dissabte, llocs_diumenge, llocs_hora) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    Query llocServei = db.prepared(QStringLiteral(
        "INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom, llocs_serveis_descripcio, llocs_serveis_quantitat, "
        "llocs_serveis_preu_un) VALUES (?, ?, ?, ?, ?)"));
    for (int i = 0; i < kLlocs; ++i) {
        // Mixed rhythms: daily, every 2 or 3 days, weekly and fortnightly on a weekday, monthly.
        int n = 1, w = 0;
        bool primer = false, ultim = false, dissabte = false, diumenge = false;
        switch (i % 10) {
        case 0: case 1: n = 1; break;
        case 2: n = 2; break;
        case 3: n = 3; dissabte = true; break;
        case 4: case 5: n = 7; w = 2 + i % 5; break;
        case 6: n = 14; w = 2 + i % 5; break;
        case 7: n = 30; primer = true; break;
        case 8: n = 30; ultim = true; w = 6; break;
        default: n = 30; primer = true; w = 2 + i % 5; diumenge = true; break;
        }
        const QString r = recursLloc(i);
        lloc.bind(nomLloc(i)).bind(30 + (i % 4) * 30).bind(r.isEmpty() ? QVariant() : QVariant(r)).bind(n).bind(primer)
            .bind(ultim).bind(w).bind(dissabte).bind(diumenge).bind(horaLloc(i)).exec();
        for (int s = 0; s < 1 + i % 3; ++s)
            llocServei.bind(nomLloc(i)).bind(nomServei((i + s * 7) % kServeis)).bind(QStringLiteral("Línia %1").arg(s))
                .bind(1.0 + s).bind(6.25).exec();
    }

    // The history: 100 jobs a place spread over the previous year.
    Query feina = db.prepared(QStringLiteral(
        "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom, feines_feta) "
        "VALUES (?, ?, ?, ?, ?, 1)"));
    const QDate inici(2023, 1, 1);
    for (int k = 0; k < kFeinesExistents; ++k) {
        const int i = k % kLlocs;
        const int ordre = k / kLlocs;
        const QString r = recursLloc(i);
        feina.bind(nomLloc(i)).bind(inici.addDays(ordre * 365 / (kFeinesExistents / kLlocs) + i % 3))
            .bind(horaLloc(i)).bind(horaLloc(i + 1)).bind(r.isEmpty() ? QVariant() : QVariant(r)).exec();
    }
    t.commit();
}

void creaPlantilla(const QString &fitxer)
{
    Db db;
    db.open(fitxer);
    directori_dades::creaEsquema(db);
    omple(db); // its statements are gone before the connection closes
    db.exec(QStringLiteral("ANALYZE"));
    db.close();
}

// Counts what the log receives, so that building it is not optimised away.
class RegistreComptador : public RegistreSortida {
public:
    void afegeix(const QString &text) override { caracters += text.size(); }
    qint64 caracters = 0;
};

struct Fila {
    QString lloc, data, inici, fi;
    QVariant recurs;
    QList<QVariantList> linies; // service lines
};

QList<Fila> filesPlanificades(Db &db)
{
    QList<Fila> files;
    Query q = db.query(QStringLiteral("SELECT feines_id, llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom "
                                      "FROM Feines WHERE feines_data >= ? ORDER BY llocs_nom, feines_id"));
    q.bind(kInici).exec();
    Query det = db.prepared(QStringLiteral(
        "SELECT serveis_nom, feines_detall_descripcio, feines_detall_quantitat, feines_detall_unitat, feines_detall_preu_un "
        "FROM Feines_Detall WHERE feines_id = ?"));
    while (q.next()) {
        Fila f{q.text(1), q.text(2), q.text(3), q.text(4), q.value(5), {}};
        det.bind(q.integer(0)).exec();
        while (det.next())
            f.linies.append({det.value(0), det.value(1), det.value(2), det.value(3), det.value(4)});
        files.append(f);
    }
    return files;
}

// The same rows written with nothing but prepared INSERTs, committed like the planning: after
// the place in hand once `perTransaccio` rows wait.
double insercioNua(const QString &fitxer, const QList<Fila> &files, int perTransaccio)
{
    Db db;
    db.open(fitxer);
    Query feina = db.prepared(QStringLiteral(
        "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom) VALUES (?, ?, ?, ?, ?)"));
    Query linia = db.prepared(QStringLiteral(
        "INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio, feines_detall_quantitat, "
        "feines_detall_unitat, feines_detall_preu_un) VALUES (?, ?, ?, ?, ?, ?)"));
    QElapsedTimer t;
    t.start();
    int i = 0;
    while (i < files.size()) {
        Transaction tx(db);
        int pendents = 0;
        while (i < files.size() && pendents < perTransaccio) {
            const QString lloc = files[i].lloc;
            for (; i < files.size() && files[i].lloc == lloc; ++i, ++pendents) {
                const Fila &f = files[i];
                feina.bind(f.lloc).bind(f.data).bind(f.inici).bind(f.fi).bind(f.recurs).exec();
                const qint64 id = feina.lastInsertId();
                for (const QVariantList &l : f.linies)
                    linia.bind(id).bind(l[0]).bind(l[1]).bind(l[2]).bind(l[3]).bind(l[4]).exec();
            }
        }
        tx.commit();
    }
    return t.nsecsElapsed() / 1e9;
}

// CPU time of this thread: the other helpers' compilers share the machine, and the planning's
// own cost is what the figure is for.
double segonsCpu()
{
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return ts.tv_sec + ts.tv_nsec / 1e9;
}

QTemporaryDir &directori()
{
    static QTemporaryDir dir;
    return dir;
}

QString plantilla()
{
    static const QString fitxer = [] {
        const QString f = directori().filePath(QStringLiteral("plantilla.db"));
        creaPlantilla(f);
        return f;
    }();
    return fitxer;
}

QString copia(const QString &nom)
{
    const QString f = directori().filePath(nom);
    QFile::remove(f);
    QFile::remove(f + QStringLiteral("-wal"));
    QFile::remove(f + QStringLiteral("-shm"));
    QFile::copy(plantilla(), f);
    return f;
}

void BM_PlanificarAny(benchmark::State &state)
{
    Configuracio cfg;
    cfg.PermetSolaparLlocs = state.range(0) != 0;
    qint64 feines = 0, linies = 0;
    double segons = 0, segonsNua = 0, segonsCpuPla = 0, segonsCpuNua = 0;
    for (auto _ : state) {
        const QString fitxer = copia(QStringLiteral("treball.db"));
        Db db;
        db.open(fitxer);
        MotorFeines motor(db, cfg);
        RegistreComptador registre;
        Planificador planificador(db, cfg, motor, registre);
        planificador.setFeinesPerTransaccio(static_cast<int>(state.range(1)));
        QElapsedTimer t;
        t.start();
        const double cpu0 = segonsCpu();
        const QString resultat = planificador.Planificar_Feines(kInici, kFi);
        const double s = t.nsecsElapsed() / 1e9;
        segonsCpuPla += segonsCpu() - cpu0;
        state.SetIterationTime(s);
        if (!resultat.isEmpty()) {
            state.SkipWithError(resultat.toStdString().c_str());
            break;
        }
        segons += s;
        feines += planificador.feinesPlanificades();

        const QList<Fila> files = filesPlanificades(db);
        for (const Fila &f : files)
            linies += f.linies.size();
        const QString fitxerNua = copia(QStringLiteral("nua.db"));
        const double cpu1 = segonsCpu();
        segonsNua += insercioNua(fitxerNua, files, static_cast<int>(state.range(1)));
        segonsCpuNua += segonsCpu() - cpu1;
        benchmark::DoNotOptimize(registre.caracters);
    }
    state.counters["jobs"] = benchmark::Counter(static_cast<double>(feines) / state.iterations());
    state.counters["jobs_per_s"] = benchmark::Counter(feines / segons);
    state.counters["bare_rows_per_s"] = benchmark::Counter(feines / segonsNua);
    state.counters["detail_lines"] = benchmark::Counter(static_cast<double>(linies) / state.iterations());
    state.counters["ratio_to_bare"] = benchmark::Counter(segons / segonsNua);
    state.counters["cpu_jobs_per_s"] = benchmark::Counter(feines / segonsCpuPla);
    state.counters["cpu_ratio_to_bare"] = benchmark::Counter(segonsCpuPla / segonsCpuNua);
}
// Arguments: PermetSolaparLlocs (0 adds the place-collision check to every job), and the jobs per
// transaction (1: a commit after every place).
BENCHMARK(BM_PlanificarAny)
    ->Args({1, Planificador::kFeinesPerTransaccio})
    ->Args({0, Planificador::kFeinesPerTransaccio})
    ->Args({1, 1})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
