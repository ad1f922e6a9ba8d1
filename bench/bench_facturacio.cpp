// Billing sheets on a large office database: 1,000,000 jobs over ten years. In March 2025 a
// thousand clients have about twenty done jobs of two lines each at their two places (every fifth
// client's second place has a monthly fee, every tenth client pays with vouchers), and one large
// client has 300 jobs at five places. Measures one client's build (the large one) and every
// client's build in turn (what the monthly summary does), each against bare SQLite reads of the
// same rows with the same two queries; the ratio to those reads is measured in the same run.
#include "billing/facturacio.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/formats.h"
#include "core/sessio.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlDriver>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <sqlite3.h>

namespace {

constexpr int kFeines = 1000000;
constexpr int kClients = 1000;
constexpr int kFeinesClient = 20;
constexpr int kFeinesGran = 300;
constexpr int kLlocsGran = 5;
const QString kMes = QStringLiteral("03/2025");
const QDate kInici(2025, 3, 1);
const QDate kPrimer(2020, 1, 1);
const QDate kDarrer(2029, 12, 31);
const QString kGran = QStringLiteral("Client Gran");

QString nomClient(int i) { return QStringLiteral("Client %1").arg(i, 4, 10, QLatin1Char('0')); }
QString nomLloc(int client, int k) { return nomClient(client) + QStringLiteral(" lloc %1").arg(k); }
QString nomLlocGran(int k) { return kGran + QStringLiteral(" lloc %1").arg(k); }

sqlite3 *handle(Db &db)
{
    const QVariant v = db.handle().driver()->handle();
    return *static_cast<sqlite3 *const *>(v.constData());
}

struct Sentencia {
    sqlite3_stmt *st = nullptr;
    Sentencia(sqlite3 *h, const char *sql) { sqlite3_prepare_v2(h, sql, -1, &st, nullptr); }
    ~Sentencia() { sqlite3_finalize(st); }
    Sentencia &text(int i, const QByteArray &t)
    {
        sqlite3_bind_text(st, i, t.constData(), int(t.size()), SQLITE_TRANSIENT);
        return *this;
    }
    Sentencia &enter(int i, qint64 v)
    {
        sqlite3_bind_int64(st, i, v);
        return *this;
    }
    Sentencia &real(int i, double v)
    {
        sqlite3_bind_double(st, i, v);
        return *this;
    }
    qint64 executa()
    {
        sqlite3_step(st);
        sqlite3_reset(st);
        return sqlite3_last_insert_rowid(sqlite3_db_handle(st));
    }
};

struct Entorn {
    QTemporaryDir dir;
    std::unique_ptr<Sessio> sessio;
    QStringList clients; // every client, by name, as the monthly summary goes through them
    double segonsOmplir = 0;

    Entorn()
    {
        directori_dades::inicialitza(dir.path());
        sessio = std::make_unique<Sessio>(dir.path());
        Configuracio &cfg = sessio->cfg();
        cfg.ServeiXecs = QStringLiteral("Neteja");
        cfg.ValorXec = 10;
        cfg.CostHoraXec = 2;
        cfg.MaxXecsMes = 4;
        Db &db = sessio->db();
        QElapsedTimer t;
        t.start();
        db.exec(QStringLiteral("PRAGMA cache_size = -200000"));
        omple(db);
        segonsOmplir = t.elapsed() / 1000.0;
        Query q = db.query(QStringLiteral("SELECT clients_nom FROM Clients ORDER BY clients_nom"));
        clients = q.columna();
    }

    void omple(Db &db)
    {
        Transaction tr(db);
        sqlite3 *h = handle(db);
        Sentencia client(h, "INSERT INTO Clients (clients_nom, clients_xecs) VALUES (?, ?)");
        Sentencia lloc(h, "INSERT INTO Llocs (llocs_nom, clients_nom, llocs_minuts_previst, llocs_quota) VALUES (?, ?, 60, ?)");
        Sentencia feina(h, "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, feines_feta)"
                           " VALUES (?, ?, ?, ?, ?)");
        Sentencia linia(h, "INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat,"
                           " feines_detall_unitat, feines_detall_preu_un) VALUES (?, ?, ?, ?, ?)");
        Sentencia xec(h, "INSERT INTO Xecs (xecs_id, clients_nom, xecs_data_entrega, xecs_valor) VALUES (?, ?, ?, 10)");

        QList<QByteArray> llocs; // every place, for the jobs of the other months
        for (int i = 0; i < kClients; ++i) {
            client.text(1, nomClient(i).toUtf8()).enter(2, i % 10 == 0).executa();
            for (int k = 0; k < 2; ++k) {
                llocs << nomLloc(i, k).toUtf8();
                lloc.text(1, llocs.last()).text(2, nomClient(i).toUtf8()).real(3, k == 1 && i % 5 == 0 ? 45.0 : 0.0).executa();
            }
        }
        client.text(1, kGran.toUtf8()).enter(2, 0).executa();
        for (int k = 0; k < kLlocsGran; ++k) {
            llocs << nomLlocGran(k).toUtf8();
            lloc.text(1, llocs.last()).text(2, kGran.toUtf8()).real(3, 0.0).executa();
        }

        const QByteArray neteja("Neteja"), vidres("Vidres"), hores("Hores"), m2("m2");
        QList<QByteArray> hora;
        for (int m = 0; m <= 48; ++m)
            hora << hora::text(m * 30).toUtf8();
        QList<QByteArray> diesMes;
        for (int d = 0; d < 31; ++d)
            diesMes << kInici.addDays(d).toString(Qt::ISODate).toUtf8();
        std::mt19937 rng(20250301);
        const auto feinaMes = [&](const QByteArray &nomLloc, bool feta) {
            const int slot = 14 + int(rng() % 20);
            const qint64 id = feina.text(1, nomLloc).text(2, diesMes[int(rng() % 31)]).text(3, hora[slot])
                                  .text(4, hora[slot + 2]).enter(5, feta).executa();
            linia.enter(1, id).text(2, neteja).real(3, 1 + int(rng() % 3)).text(4, hores).real(5, 12.5).executa();
            linia.enter(1, id).text(2, vidres).real(3, 10).text(4, m2).real(5, 1.9).executa();
        };

        // The month: twenty done jobs a client, three hundred for the large client.
        int mes = 0;
        for (int i = 0; i < kClients; ++i) {
            for (int j = 0; j < kFeinesClient; ++j, ++mes)
                feinaMes(llocs[2 * i + int(rng() % 2)], true);
            if (i % 10 == 0) {
                for (int x = 0; x < 6; ++x)
                    xec.enter(1, i * 10 + x + 1).text(2, nomClient(i).toUtf8()).text(3, QByteArrayLiteral("2025-01-15")).executa();
            }
        }
        for (int j = 0; j < kFeinesGran; ++j, ++mes)
            feinaMes(llocs[2 * kClients + j % kLlocsGran], j % 3 != 0);

        // The other months: the rest of the million, spread evenly, without lines.
        const QDate fiMes = kInici.addMonths(1);
        const int dies = int(kPrimer.daysTo(kDarrer)) + 1 - 31;
        const qint64 resta = kFeines - mes;
        qint64 escrites = 0;
        int dia = 0;
        for (QDate d = kPrimer; d <= kDarrer; d = d.addDays(1)) {
            if (d >= kInici && d < fiMes)
                continue;
            const QByteArray text = d.toString(Qt::ISODate).toUtf8();
            ++dia;
            for (const qint64 fins = resta * dia / dies; escrites < fins; ++escrites) {
                const int slot = 14 + int(rng() % 20);
                feina.text(1, llocs[int(rng() % llocs.size())]).text(2, text).text(3, hora[slot]).text(4, hora[slot + 2])
                    .enter(5, d < kInici).executa();
            }
        }
        tr.commit();
        db.exec(QStringLiteral("ANALYZE"));
    }
};

Entorn *g_entorn = nullptr;

// The bare reads of one client's sheet: both queries, every column touched.
struct LecturaNua {
    Sentencia feines;
    Sentencia xecs;
    QByteArray de = kInici.toString(Qt::ISODate).toUtf8();
    QByteArray fins = kInici.addMonths(1).toString(Qt::ISODate).toUtf8();
    explicit LecturaNua(sqlite3 *h) : feines(h, Facturacio::kSqlFeines), xecs(h, Facturacio::kSqlXecs) {}

    static int llegeix(Sentencia &s, const QByteArray &client, const QByteArray &de, const QByteArray &fins)
    {
        s.text(1, client).text(2, de).text(3, fins);
        int files = 0;
        const int columnes = sqlite3_column_count(s.st);
        while (sqlite3_step(s.st) == SQLITE_ROW) {
            for (int c = 0; c < columnes; ++c)
                benchmark::DoNotOptimize(sqlite3_column_text(s.st, c));
            ++files;
        }
        sqlite3_reset(s.st);
        return files;
    }
    int operator()(const QByteArray &client) { return llegeix(feines, client, de, fins) + llegeix(xecs, client, de, fins); }
};

// Seconds per run of `f`, the best of several runs (the ratio is read from the two bests).
double millor(const std::function<void()> &f, int vegades)
{
    double m = 1e9;
    for (int i = 0; i < vegades; ++i) {
        QElapsedTimer t;
        t.start();
        f();
        m = qMin(m, t.nsecsElapsed() / 1e9);
    }
    return m;
}

void unClient(Facturacio &f) { f.Carrega_Facturacio({kMes, kGran, false, QString()}); }

void totsClients(Facturacio &f, int *files)
{
    for (const QString &c : g_entorn->clients) {
        f.Carrega_Facturacio({kMes, c, false, QString()});
        *files += f.FacturaGrid().files() + f.XecsGrid().files();
    }
}

void BM_SQLiteUnClient(benchmark::State &state)
{
    LecturaNua nua(handle(g_entorn->sessio->db()));
    const QByteArray client = kGran.toUtf8();
    int files = 0;
    for (auto _ : state)
        files = nua(client);
    state.counters["files_lleg"] = files;
}

void BM_FacturacioUnClient(benchmark::State &state)
{
    Sessio &s = *g_entorn->sessio;
    Facturacio f(s.db(), s.cfg());
    for (auto _ : state) {
        unClient(f);
        benchmark::DoNotOptimize(f.totals().TotalFacturar);
    }
    state.counters["files_full"] = f.FacturaGrid().files();
    LecturaNua nua(handle(s.db()));
    const QByteArray client = kGran.toUtf8();
    state.counters["x_sqlite"] = millor([&] { unClient(f); }, 50) / millor([&] { nua(client); }, 50);
}

void BM_SQLiteTotsClients(benchmark::State &state)
{
    LecturaNua nua(handle(g_entorn->sessio->db()));
    QList<QByteArray> clients;
    for (const QString &c : g_entorn->clients)
        clients << c.toUtf8();
    int files = 0;
    for (auto _ : state) {
        files = 0;
        for (const QByteArray &c : clients)
            files += nua(c);
    }
    state.counters["files_lleg"] = files;
}

void BM_FacturacioTotsClients(benchmark::State &state)
{
    Sessio &s = *g_entorn->sessio;
    Facturacio f(s.db(), s.cfg());
    int files = 0;
    for (auto _ : state) {
        files = 0;
        totsClients(f, &files);
    }
    state.counters["files_full"] = files;
    LecturaNua nua(handle(s.db()));
    QList<QByteArray> clients;
    for (const QString &c : g_entorn->clients)
        clients << c.toUtf8();
    state.counters["x_sqlite"] = millor([&] { int n = 0; totsClients(f, &n); }, 5)
        / millor([&] { for (const QByteArray &c : clients) nua(c); }, 5);
}

} // namespace

BENCHMARK(BM_SQLiteUnClient)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FacturacioUnClient)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SQLiteTotsClients)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FacturacioTotsClients)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    Entorn entorn;
    g_entorn = &entorn;
    std::printf("Database: %d jobs written in %.1f s; %lld clients billed in %s\n", kFeines, entorn.segonsOmplir,
                static_cast<long long>(entorn.clients.size()), qPrintable(kMes));
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    g_entorn = nullptr;
    return 0;
}
