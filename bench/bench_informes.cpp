// The monthly billing summary as the office prints it at the end of March 2025: a thousand
// clients with about twenty done jobs each (two lines: hours of cleaning and square metres of
// windows) at two places, every fifth client's second place with a monthly fee and every tenth
// client paying with vouchers, among 200,000 jobs of other months. Measured whole: every client's
// billing built, the table of totals read from its sheets, the summary drawn into a PDF file.
// Beside it, the build alone and the drawing alone, so a slow run shows where the time went.
#include "billing/facturacio.h"
#include "billing/resum_facturacio.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "reports/execucio_informe.h"
#include "reports/impressora_painter.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <random>

namespace {

constexpr int kClients = 1000;
constexpr int kFeinesClient = 20;
constexpr int kFeinesAltres = 200000;
const QString kMes = QStringLiteral("03/2025");
const QDate kInici(2025, 3, 1);

QString nomClient(int i) { return QStringLiteral("Client %1").arg(i, 4, 10, QLatin1Char('0')); }
QString nomLloc(int client, int k) { return nomClient(client) + QStringLiteral(" lloc %1").arg(k); }

class RegistreMut : public RegistreSortida {
public:
    void afegeix(const QString &) override {}
};

struct Entorn {
    QTemporaryDir dir;
    std::unique_ptr<Sessio> sessio;
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
        QElapsedTimer t;
        t.start();
        omple(sessio->db());
        segonsOmplir = t.elapsed() / 1000.0;
    }

    static void omple(Db &db)
    {
        Transaction tr(db);
        Query servei = db.query(QStringLiteral("INSERT INTO Serveis (serveis_nom, serveis_unitat, serveis_preu_un) VALUES (?, ?, ?)"));
        servei.bind(QStringLiteral("Neteja")).bind(QStringLiteral("Hores")).bind(12.5).exec();
        servei.bind(QStringLiteral("Vidres")).bind(QStringLiteral("m2")).bind(1.9).exec();
        Query client = db.query(QStringLiteral("INSERT INTO Clients (clients_nom, clients_xecs) VALUES (?, ?)"));
        Query lloc = db.query(QStringLiteral("INSERT INTO Llocs (llocs_nom, clients_nom, llocs_minuts_previst, llocs_quota)"
                                             " VALUES (?, ?, 60, ?)"));
        Query feina = db.query(QStringLiteral("INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi,"
                                              " feines_feta) VALUES (?, ?, ?, ?, ?)"));
        Query linia = db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat,"
                                              " feines_detall_unitat, feines_detall_preu_un) VALUES (?, ?, ?, ?, ?)"));
        Query xec = db.query(QStringLiteral("INSERT INTO Xecs (xecs_id, clients_nom, xecs_data_entrega, xecs_valor)"
                                            " VALUES (?, ?, '2025-01-15', 10)"));
        QStringList llocs;
        for (int i = 0; i < kClients; ++i) {
            client.bind(nomClient(i)).bind(i % 10 == 0).exec();
            for (int k = 0; k < 2; ++k) {
                llocs << nomLloc(i, k);
                lloc.bind(llocs.last()).bind(nomClient(i)).bind(k == 1 && i % 5 == 0 ? 45.0 : 0.0).exec();
            }
            if (i % 10 == 0)
                for (int x = 0; x < 6; ++x)
                    xec.bind(i * 10 + x + 1).bind(nomClient(i)).exec();
        }
        std::mt19937 rng(20250301);
        const auto afegeix = [&](const QString &nom, const QDate &dia, bool feta, bool ambLinies) {
            const int slot = 14 + int(rng() % 20);
            feina.bind(nom).bind(dia).bind(hora::text(slot * 30)).bind(hora::text(slot * 30 + 60)).bind(feta).exec();
            if (!ambLinies)
                return;
            const qint64 id = feina.lastInsertId();
            linia.bind(id).bind(QStringLiteral("Neteja")).bind(double(1 + rng() % 3)).bind(QStringLiteral("Hores")).bind(12.5).exec();
            linia.bind(id).bind(QStringLiteral("Vidres")).bind(10.0).bind(QStringLiteral("m2")).bind(1.9).exec();
        };
        for (int i = 0; i < kClients; ++i)
            for (int j = 0; j < kFeinesClient; ++j)
                afegeix(llocs[2 * i + int(rng() % 2)], kInici.addDays(int(rng() % 31)), true, true);
        const QDate primer(2024, 1, 1);
        for (int j = 0; j < kFeinesAltres; ++j) {
            QDate d = primer.addDays(int(rng() % 730));
            if (d >= kInici && d < kInici.addMonths(1))
                d = d.addMonths(2);
            afegeix(llocs[int(rng() % llocs.size())], d, d < kInici, false);
        }
        tr.commit();
        db.exec(QStringLiteral("ANALYZE"));
    }
};

Entorn *g_entorn = nullptr;

void pdf(const QString &fitxer, const Informe &informe)
{
    QFile sortida(fitxer);
    if (!sortida.open(QIODevice::WriteOnly))
        std::abort();
    QPdfWriter writer(&sortida);
    ImpressoraPainter::preparaA4(writer);
    writer.setResolution(1200);
    ImpressoraPainter imp(&writer);
    const QString error = executaInforme(imp, informe);
    if (!error.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        std::abort();
    }
}

// Built, read and drawn: what "Imprimir dades facturació" does before the preview shows it.
void BM_ResumMesPdf(benchmark::State &state)
{
    Sessio &s = *g_entorn->sessio;
    const QString fitxer = g_entorn->dir.filePath(QStringLiteral("resum.pdf"));
    for (auto _ : state) {
        Facturacio f(s.db(), s.cfg());
        RegistreMut log;
        pdf(fitxer, [&](Impressora &imp) { Imprimeix_Resum_Facturacio(imp, f, kMes, log); });
    }
    state.counters["kB"] = double(QFile(fitxer).size()) / 1024.0;
}

void BM_ResumMesCalcul(benchmark::State &state)
{
    Sessio &s = *g_entorn->sessio;
    int blocs = 0;
    for (auto _ : state) {
        Facturacio f(s.db(), s.cfg());
        RegistreMut log;
        blocs = int(Calcula_Resum_Facturacio(f, kMes, log).blocs.size());
    }
    state.counters["blocs"] = blocs;
}

void BM_ResumMesDibuix(benchmark::State &state)
{
    Sessio &s = *g_entorn->sessio;
    Facturacio f(s.db(), s.cfg());
    RegistreMut log;
    const ResumMes resum = Calcula_Resum_Facturacio(f, kMes, log);
    const QString fitxer = g_entorn->dir.filePath(QStringLiteral("dibuix.pdf"));
    for (auto _ : state)
        pdf(fitxer, [&](Impressora &imp) { Imprimeix_Resum(imp, resum, s.cfg().PosicioSaltPagina); });
}

} // namespace

BENCHMARK(BM_ResumMesPdf)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ResumMesCalcul)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ResumMesDibuix)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    // Fonts and the PDF writer need a GUI application, but no screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    Entorn entorn;
    g_entorn = &entorn;
    std::printf("Database: %d clients, %d jobs in %s and %d in other months, written in %.1f s\n", kClients,
                kClients * kFeinesClient, qPrintable(kMes), kFeinesAltres, entorn.segonsOmplir);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    g_entorn = nullptr;
    return 0;
}
