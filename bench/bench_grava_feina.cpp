// Creating jobs on a realistic database: 100,000 jobs, 500 places, 60 resources (some of them
// teams). Measures Grava_Feina against bare INSERTs of the same rows in the same run, one
// transaction per job (the agenda) and in batches inside an outer transaction (the planning).
#include "core/configuracio.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/formats.h"
#include "jobs/motor_feines.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <ctime>
#include <map>
#include <memory>

namespace {

constexpr int kLlocs = 500;
constexpr int kTreballadors = 48;
constexpr int kEquips = 12; // 60 resources in all
constexpr int kFeinesInicials = 100000;
const QDate kPrimerDia(2030, 1, 1);

QString nomLloc(int i) { return QStringLiteral("Lloc %1").arg(i, 3, 10, QLatin1Char('0')); }
QString nomTreballador(int i) { return QStringLiteral("Treballador %1").arg(i, 2, 10, QLatin1Char('0')); }
QString nomEquip(int i) { return QStringLiteral("Equip %1").arg(i, 2, 10, QLatin1Char('0')); }

// A place's default resource: mostly workers, every fifth place a team.
QString recursDelLloc(int i) { return i % 5 == 0 ? nomEquip(i % kEquips) : nomTreballador(i % kTreballadors); }
int minutsDelLloc(int i) { return 30 * (1 + i % 4); }

// The k-th job either benchmark creates: a place, a day among those that already hold jobs, a start.
struct FilaNova {
    QString lloc;
    QDate dia;
    QString inici;
    QString fi;
    QString recurs;
};

FilaNova filaNova(int k)
{
    const int lloc = k % kLlocs;
    // One afternoon job per place and day, on the days that already hold the morning jobs (and
    // on later days past the first 100,000). A worker's places are spread over six two-hour
    // slots, so most jobs keep their resource and some find it busy and are stored unassigned.
    const QDate dia = kPrimerDia.addDays(k / kLlocs);
    const int minut = 12 * 60 + ((lloc / kTreballadors) % 6) * 120;
    const QString inici = hora::text(minut);
    return {nomLloc(lloc), dia, inici, hora::suma(inici, minutsDelLloc(lloc)), recursDelLloc(lloc)};
}

struct Base {
    QTemporaryDir dir;
    Db db;
    Configuracio cfg;
};

void omple(Db &db)
{
    Transaction t(db);
    Query recurs = db.query(QStringLiteral("INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps) VALUES (?, ?, ?, ?)"));
    for (int i = 0; i < kTreballadors; ++i)
        recurs.bind(nomTreballador(i)).bind(0).bind(1000 + i).bind(1).exec();
    Query membre = db.query(QStringLiteral("INSERT INTO Recursos_Components (recursos_nom, recursos_component_nom) VALUES (?, ?)"));
    for (int e = 0; e < kEquips; ++e) {
        recurs.bind(nomEquip(e)).bind(1).bind(2000 + e).bind(0).exec();
        for (int m = 0; m < 3; ++m)
            membre.bind(nomEquip(e)).bind(nomTreballador((e * 3 + m) % kTreballadors)).exec();
    }
    db.exec(QStringLiteral("INSERT INTO Serveis (serveis_nom, serveis_unitat, serveis_preu_un, serveis_minuts_per_unitat, serveis_comu_per_recursos)"
                           " VALUES ('Neteja', 'Hores', 6.25, 60, 0), ('Desplaçaments', 'Kms', 0.19, 3, 1)"));
    Query lloc = db.query(QStringLiteral("INSERT INTO Llocs (llocs_nom, llocs_minuts_previst, recursos_nom) VALUES (?, ?, ?)"));
    Query servei = db.query(QStringLiteral("INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom, llocs_serveis_descripcio, llocs_serveis_quantitat, llocs_serveis_preu_un) VALUES (?, ?, ?, ?, ?)"));
    for (int i = 0; i < kLlocs; ++i) {
        lloc.bind(nomLloc(i)).bind(minutsDelLloc(i)).bind(recursDelLloc(i)).exec();
        servei.bind(nomLloc(i)).bind(QStringLiteral("Neteja")).bind(QStringLiteral("Neteja")).bind(minutsDelLloc(i) / 60.0).bind(6.25).exec();
        servei.bind(nomLloc(i)).bind(QStringLiteral("Desplaçaments")).bind(QStringLiteral("Km")).bind(5).bind(0.19).exec();
    }
    // 200 days of one morning job per place.
    Query feina = db.query(QStringLiteral("INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom) VALUES (?, ?, ?, ?, ?)"));
    for (int k = 0; k < kFeinesInicials; ++k) {
        const int i = k % kLlocs;
        const QString inici = hora::text(8 * 60 + (i % 4) * 30);
        feina.bind(nomLloc(i)).bind(kPrimerDia.addDays(k / kLlocs)).bind(inici).bind(hora::suma(inici, minutsDelLloc(i)))
            .bind(recursDelLloc(i)).exec();
    }
    t.commit();
    db.exec(QStringLiteral("ANALYZE"));
}

// The database is built once and copied for every run, so that each run starts from the same
// 100,000 jobs and the building is never part of a measurement.
std::unique_ptr<Base> construeixBase()
{
    static QTemporaryDir plantillaDir;
    static const QString plantilla = [] {
        const QString path = plantillaDir.filePath(QStringLiteral("plantilla.db"));
        Db db;
        db.open(path, Db::Journal::Delete);
        directori_dades::creaEsquema(db);
        omple(db);
        db.close();
        return path;
    }();
    auto b = std::make_unique<Base>();
    const QString path = b->dir.filePath(QStringLiteral("bench.db"));
    if (!QFile::copy(plantilla, path))
        throw std::runtime_error("cannot copy the template database");
    b->db.open(path);
    b->cfg.PermetSolaparLlocs = false;
    return b;
}

void executa(benchmark::State &state, bool viaMotor)
{
    const int lot = static_cast<int>(state.range(0)); // jobs per transaction
    auto b = construeixBase();
    MotorFeines motor(b->db, b->cfg);
    Query feina = b->db.prepared(QStringLiteral("INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom) VALUES (?, ?, ?, ?, ?)"));
    Query detall = b->db.prepared(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_preu_un, feines_detall_unitat, feines_detall_descripcio) VALUES (?, ?, ?, ?, ?, ?)"));
    std::unique_ptr<Transaction> exterior;
    // CPU time as well as real time: on a busy machine the real time mostly measures the wait.
    const auto cpu = [] {
        timespec ts{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
        return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
    };
    int k = 0;
    int refusades = 0;
    int senseRecurs = 0;
    double cpuInici = 0;
    for (auto _ : state) {
        if (k == 0)
            cpuInici = cpu();
        if (lot > 1 && k % lot == 0) {
            if (exterior)
                exterior->commit();
            exterior = std::make_unique<Transaction>(b->db);
        }
        const FilaNova fila = filaNova(k++);
        if (viaMotor) {
            Feina f;
            f.llocs_nom = fila.lloc;
            f.feines_data = fila.dia;
            f.feines_hora_inici = fila.inici;
            motor.Grava_Feina(f, false);
            if (!f.missatge.isEmpty())
                ++refusades;
            else if (f.recursos_nom.isEmpty())
                ++senseRecurs;
        } else {
            Transaction t(b->db);
            feina.bind(fila.lloc).bind(fila.dia).bind(fila.inici).bind(fila.fi).bind(fila.recurs).exec();
            const qint64 id = feina.lastInsertId();
            detall.bind(id).bind(QStringLiteral("Desplaçaments")).bind(5).bind(0.19).bind(QStringLiteral("Kms")).bind(QStringLiteral("Km")).exec();
            detall.bind(id).bind(QStringLiteral("Neteja")).bind(1).bind(6.25).bind(QStringLiteral("Hores")).bind(QStringLiteral("Neteja")).exec();
            t.commit();
        }
    }
    if (exterior)
        exterior->commit();
    const double segonsCpu = cpu() - cpuInici;
    state.counters["feines_per_s_cpu"] = segonsCpu > 0 ? static_cast<double>(state.iterations()) / segonsCpu : 0.0;
    state.counters["feines_per_s"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
    if (viaMotor) {
        state.counters["refusades"] = refusades;
        state.counters["sense_recurs"] = senseRecurs;
    }
}

void BM_Grava_Feina(benchmark::State &state) { executa(state, true); }
void BM_InsertNu(benchmark::State &state) { executa(state, false); }

BENCHMARK(BM_Grava_Feina)->Arg(1)->Arg(500)->Unit(benchmark::kMicrosecond)->MinTime(2.0)->UseRealTime();
BENCHMARK(BM_InsertNu)->Arg(1)->Arg(500)->Unit(benchmark::kMicrosecond)->MinTime(2.0)->UseRealTime();

// Prints the engine's rate as a fraction of the bare INSERTs' rate, per transaction size.
class InformeAmbRati : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &r : runs) {
            for (const char *nom : {"feines_per_s", "feines_per_s_cpu"}) {
                auto it = r.counters.find(nom);
                if (it != r.counters.end())
                    m_rates[std::string(nom) + " " + r.benchmark_name()] = it->second.value;
            }
        }
    }
    void Finalize() override
    {
        ConsoleReporter::Finalize();
        for (const char *arg : {"/1/", "/500/"}) {
            const std::string lot = std::string(arg).substr(1, std::string(arg).size() - 2);
            for (const char *mesura : {"feines_per_s", "feines_per_s_cpu"}) {
                const double motor = taxa(std::string(mesura) + " BM_Grava_Feina" + arg);
                const double nu = taxa(std::string(mesura) + " BM_InsertNu" + arg);
                if (motor > 0 && nu > 0)
                    std::printf("jobs per transaction %s (%s): Grava_Feina %.0f/s, bare INSERT %.0f/s, ratio %.2f\n",
                                lot.c_str(), mesura, motor, nu, motor / nu);
            }
        }
    }

private:
    double taxa(const std::string &prefix) const
    {
        for (const auto &[nom, valor] : m_rates)
            if (nom.rfind(prefix, 0) == 0)
                return valor;
        return 0;
    }
    std::map<std::string, double> m_rates;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    InformeAmbRati informe;
    benchmark::RunSpecifiedBenchmarks(&informe);
    benchmark::Shutdown();
    return 0;
}
