// Building the agenda on a large office database: 1,000,000 jobs over ten years, 1,000 places,
// 60 workers and 6 teams. The month grid of March 2025 holds 5,000 jobs in its 42
// days; its 12 March has 60 workers busy all day, one column each. Measures the model builds of
// the three views against a bare SQLite read of the same rows, and a full rebuild of the page
// including its drawing offscreen.
#include "agenda/agenda_model.h"
#include "agenda/agenda_page.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/sessio.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSqlDriver>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <random>
#include <sqlite3.h>

namespace {

constexpr int kFeines = 1000000;
constexpr int kFeinesMes = 5000;
constexpr int kLlocs = 1000;
constexpr int kTreballadors = 60;
constexpr int kEquips = 6; // teams of three of them
const QDate kDia(2025, 3, 12);
const QDate kPrimer(2020, 1, 1);
const QDate kDarrer(2029, 12, 31);

QString nomLloc(int i) { return QStringLiteral("Lloc %1").arg(i, 4, 10, QLatin1Char('0')); }
QString nomTreballador(int i) { return QStringLiteral("Treballador %1").arg(i, 2, 10, QLatin1Char('0')); }
QString nomEquip(int i) { return QStringLiteral("Equip %1").arg(i); }

class Silenci : public Interaccio {
public:
    void informa(const QString &, const QString &) override {}
    bool pregunta(const QString &, const QString &) override { return false; }
    void error(const QString &, const QString &) override {}
};

sqlite3 *handle(Db &db)
{
    const QVariant v = db.handle().driver()->handle();
    return *static_cast<sqlite3 *const *>(v.constData());
}

struct Insercio {
    sqlite3_stmt *st = nullptr;
    explicit Insercio(sqlite3 *h)
    {
        sqlite3_prepare_v2(h,
                           "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
                           " VALUES (?, ?, ?, ?, ?)",
                           -1, &st, nullptr);
    }
    ~Insercio() { sqlite3_finalize(st); }
    void operator()(const QByteArray &lloc, const QByteArray &dia, const QByteArray &inici, const QByteArray &fi,
                    const QByteArray &recurs)
    {
        sqlite3_bind_text(st, 1, lloc.constData(), int(lloc.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(st, 2, dia.constData(), int(dia.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(st, 3, inici.constData(), int(inici.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(st, 4, fi.constData(), int(fi.size()), SQLITE_TRANSIENT);
        if (recurs.isEmpty())
            sqlite3_bind_null(st, 5);
        else
            sqlite3_bind_text(st, 5, recurs.constData(), int(recurs.size()), SQLITE_TRANSIENT);
        sqlite3_step(st);
        sqlite3_reset(st);
    }
};

struct Entorn {
    QTemporaryDir dir;
    std::unique_ptr<Sessio> sessio;
    Silenci silenci;
    QDate iniciMes;
    double segonsOmplir = 0;

    Entorn()
    {
        directori_dades::inicialitza(dir.path());
        sessio = std::make_unique<Sessio>(dir.path());
        Db &db = sessio->db();
        iniciMes = EstatAgenda::iniciMes(kDia, sessio->cfg().PrimerDiaSetmana);
        QElapsedTimer t;
        t.start();
        db.exec(QStringLiteral("PRAGMA cache_size = -200000"));
        omple(db);
        segonsOmplir = t.elapsed() / 1000.0;
    }

    void omple(Db &db)
    {
        Transaction tr(db);
        sqlite3 *h = handle(db);
        for (int i = 0; i < kTreballadors; ++i)
            db.query(QStringLiteral("INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps)"
                                    " VALUES (?, 0, ?, 1)"))
                .bind(nomTreballador(i)).bind(0x404040 + i * 0x030507).exec();
        for (int i = 0; i < kEquips; ++i) {
            db.query(QStringLiteral("INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps)"
                                    " VALUES (?, 1, ?, 0)"))
                .bind(nomEquip(i)).bind(0xC0C0C0 + i).exec();
            for (int m = 0; m < 3; ++m)
                db.query(QStringLiteral("INSERT INTO Recursos_Components (recursos_nom, recursos_component_nom) VALUES (?, ?)"))
                    .bind(nomEquip(i)).bind(nomTreballador(i * 3 + m)).exec();
        }
        for (int i = 0; i < kLlocs; ++i)
            db.query(QStringLiteral("INSERT INTO Llocs (llocs_nom, llocs_minuts_previst) VALUES (?, 60)")).bind(nomLloc(i)).exec();

        // Texts made once: the fill writes a million rows, in date order so that the indexes grow
        // at their ends.
        std::mt19937 rng(20250312);
        Insercio insereix(h);
        QList<QByteArray> llocs, hores, recursos;
        for (int i = 0; i < kLlocs; ++i)
            llocs << nomLloc(i).toUtf8();
        for (int m = 0; m <= 48; ++m)
            hores << hora::text(m * 30).toUtf8();
        for (int i = 0; i < kTreballadors; ++i)
            recursos << nomTreballador(i).toUtf8();
        for (int i = 0; i < kEquips; ++i)
            recursos << nomEquip(i).toUtf8();
        const auto feina = [&](const QByteArray &dia, int slot, int llargada, int lloc, const QByteArray &recurs) {
            insereix(llocs[lloc], dia, hores[slot], hores[qMin(48, slot + llargada)], recurs);
        };
        const auto recursAtzar = [&]() -> QByteArray {
            const int r = int(rng() % 76);
            return r < recursos.size() ? recursos[r] : QByteArray(); // the rest unassigned
        };
        const auto feinaAtzar = [&](const QByteArray &dia) {
            feina(dia, 12 + int(rng() % 24), 1 + int(rng() % 4), int(rng() % kLlocs), recursAtzar());
        };

        const QDate fiMes = iniciMes.addDays(41);
        const int dies = int(kPrimer.daysTo(kDarrer)) + 1;
        const qint64 foraDelMes = kFeines - kFeinesMes;
        qint64 escrites = 0;
        int diaFora = 0;
        for (QDate d = kPrimer; d <= kDarrer; d = d.addDays(1)) {
            const QByteArray dia = d.toString(Qt::ISODate).toUtf8();
            if (d >= iniciMes && d <= fiMes) {
                // The month grid: 5,000 jobs in its 42 days; 12 March has 60 workers busy all
                // day, eight one-hour jobs each from 07:00, one column each in the day view.
                const int n = int(iniciMes.daysTo(d));
                if (d == kDia) {
                    for (int w = 0; w < 60; ++w)
                        for (int k = 0; k < 8; ++k)
                            feina(dia, 14 + 2 * k, 2, (w * 8 + k) % kLlocs, recursos[w]);
                } else {
                    const int resta = kFeinesMes - 480;
                    const int perDia = resta / 41 + (n < resta % 41 ? 1 : 0);
                    for (int k = 0; k < perDia; ++k)
                        feinaAtzar(dia);
                }
                continue;
            }
            // Spread the other jobs evenly over the other days.
            ++diaFora;
            const qint64 fins = foraDelMes * diaFora / (dies - 42);
            for (; escrites < fins; ++escrites)
                feinaAtzar(dia);
        }
        tr.commit();
        db.exec(QStringLiteral("ANALYZE"));
    }
};

Entorn *g_entorn = nullptr;

void construeix(benchmark::State &state, VistaAgenda vista)
{
    Sessio &s = *g_entorn->sessio;
    ModelAgenda model(s.db(), s.cfg());
    const EstatAgenda estat(vista, kDia, s.cfg().PrimerDiaSetmana);
    for (auto _ : state) {
        model.Construeix_Agenda(estat);
        benchmark::DoNotOptimize(model.files());
    }
    int feines = 0;
    for (int r = 1; r < model.files(); ++r)
        for (int c = 1; c < model.columnes(); ++c)
            feines += int(model.cella(r, c).feines.size());
    state.counters["columnes"] = model.columnes() - 1;
    state.counters["feines_cel.les"] = feines;
}

void BM_ModelMes(benchmark::State &state) { construeix(state, VistaAgenda::Mes); }
void BM_ModelSetmana(benchmark::State &state) { construeix(state, VistaAgenda::Setmana); }
void BM_ModelDia(benchmark::State &state) { construeix(state, VistaAgenda::Dia); }

// The floor: the month's rows read with bare SQLite, nothing built from them.
void BM_SQLiteMes(benchmark::State &state)
{
    sqlite3 *h = handle(g_entorn->sessio->db());
    sqlite3_stmt *st = nullptr;
    sqlite3_prepare_v2(h,
                       "SELECT feines_id, feines_data, feines_hora_inici, llocs_nom FROM Feines"
                       " WHERE feines_data >= ? AND feines_data <= ? ORDER BY feines_data, feines_hora_inici, feines_id",
                       -1, &st, nullptr);
    const QByteArray de = g_entorn->iniciMes.toString(Qt::ISODate).toUtf8();
    const QByteArray fins = g_entorn->iniciMes.addDays(41).toString(Qt::ISODate).toUtf8();
    int files = 0;
    for (auto _ : state) {
        sqlite3_bind_text(st, 1, de.constData(), -1, SQLITE_STATIC);
        sqlite3_bind_text(st, 2, fins.constData(), -1, SQLITE_STATIC);
        files = 0;
        while (sqlite3_step(st) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_text(st, 3));
            ++files;
        }
        sqlite3_reset(st);
    }
    sqlite3_finalize(st);
    state.counters["files"] = files;
}

// What the user waits for after a change: the model rebuilt and the page drawn (offscreen).
void reconstrueixPagina(benchmark::State &state, VistaAgenda vista)
{
    Sessio &s = *g_entorn->sessio;
    AgendaPage pagina(s, g_entorn->silenci);
    pagina.resize(1400, 900);
    pagina.show();
    ControladorAgenda &ctl = pagina.controlador();
    ctl.estat() = EstatAgenda(vista, kDia, s.cfg().PrimerDiaSetmana);
    ctl.Construeix_Agenda();
    QApplication::processEvents();
    for (auto _ : state) {
        ctl.Construeix_Agenda();
        QPixmap px = pagina.grab();
        benchmark::DoNotOptimize(px.cacheKey());
    }
}

void BM_PaginaMes(benchmark::State &state) { reconstrueixPagina(state, VistaAgenda::Mes); }
void BM_PaginaSetmana(benchmark::State &state) { reconstrueixPagina(state, VistaAgenda::Setmana); }
void BM_PaginaDia(benchmark::State &state) { reconstrueixPagina(state, VistaAgenda::Dia); }

} // namespace

BENCHMARK(BM_SQLiteMes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ModelMes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ModelSetmana)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ModelDia)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaginaMes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaginaSetmana)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaginaDia)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    Entorn entorn;
    g_entorn = &entorn;
    std::printf("Database: %d jobs written in %.1f s\n", kFeines, entorn.segonsOmplir);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    g_entorn = nullptr;
    return 0;
}
