#include "resum_facturacio.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/traduccio.h"
#include "facturacio.h"
#include "reports/marc_informe.h"
#include "totals_factura.h"

#include <QFontMetricsF>

namespace {

const QString kCrLf = QStringLiteral("\r\n");

QString euros(double import)
{
    return format::import(import) + QStringLiteral(" €");
}

// A move after a printed line; never less than the line itself, so lines cannot overlap.
void avanca(MarcInforme &marc, double twips)
{
    marc.baixa(qMax(twips, marc.imp().altLinia()));
}

// The baseline of a text printed at the current y in the current font.
double liniaBase(const Impressora &imp)
{
    return imp.y() + QFontMetricsF(imp.font()).ascent();
}

// The log stays busy until the report is over, whatever ends it.
class Ocupat {
public:
    explicit Ocupat(RegistreSortida &r) : m_r(r) { m_r.ocupat(true); }
    ~Ocupat() { m_r.ocupat(false); }

private:
    RegistreSortida &m_r;
};

// Summary columns.
constexpr int XEntrada = 5000, VoraQuantitat = 7500, XUnitat = 7600, XTotal = 9300, FiLiniaClient = 4900;

// The block of one client; its total.
double blocClient(MarcInforme &marc, const BlocResum &bloc)
{
    Impressora &imp = marc.imp();
    double total = 0.0;
    marc.baixa(200);
    marc.lletra(10, true);
    marc.text(MarcInforme::MargeEsquerre, bloc.client);
    const double fi = MarcInforme::MargeEsquerre + imp.ampleText(bloc.client) + 60;
    if (fi < FiLiniaClient)
        imp.linia(fi, liniaBase(imp), FiLiniaClient, liniaBase(imp));
    for (const EntradaTotals &e : bloc.entrades) {
        marc.lletra(10, false);
        marc.text(XEntrada, e.nom);
        marc.textDreta(VoraQuantitat, quantitatPlana(e.quantitat));
        marc.text(XUnitat, e.unitat);
        if (e.import != 0.0) {
            marc.textDreta(MarcInforme::VoraDreta, euros(e.import));
            total += arrodoneix::centims(e.import);
        }
        avanca(marc, 200);
    }
    marc.baixa(50);
    marc.lletra(10, true);
    marc.text(XTotal, Tradueix("Total:"));
    marc.textDreta(MarcInforme::VoraDreta, euros(total));
    marc.lletra(10, false);
    avanca(marc, 250);
    return total;
}

} // namespace

QDate fiPeriode(const QDate &primerDia, const QDate &avui)
{
    const QDate darrer = primerDia.addMonths(1).addDays(-1);
    return avui.isValid() && avui < darrer ? avui : darrer;
}

ResumMes Calcula_Resum_Facturacio(Facturacio &f, const QString &mes, RegistreSortida &log, const QDate &avuiDonat)
{
    const QDate avui = avuiDonat.isValid() ? avuiDonat : QDate::currentDate();
    ResumMes r;
    r.mes = mes;
    r.inici = MesFactura::llegeix(mes).inici;
    r.fi = fiPeriode(r.inici, avui);
    Db &db = f.db();
    const Configuracio &cfg = f.cfg();

    log.titol(Tradueix("CALCUL DADES FACTURACIO"));
    Ocupat ocupat(log);
    log.afegeix(kCrLf + Tradueix("Iniciant càlcul periode: 01/") + mes + QStringLiteral(" - ") + format::dataCurta(r.fi)
                + QStringLiteral(" ..."));

    QStringList clients;
    {
        Query q = db.query(QStringLiteral("SELECT clients_nom FROM Clients ORDER BY clients_nom"));
        q.exec();
        while (q.next())
            clients << q.text(0);
    }
    const QList<EntradaTotals> serveis = serveisTotals(db);
    for (const QString &client : clients) {
        log.afegeix(kCrLf + Tradueix("Calculant client:") + QLatin1Char(' ') + client);
        f.Carrega_Facturacio(ParametresFacturacio{mes, client, false, QString()});
        BlocResum bloc{client, {}};
        for (const EntradaTotals &e : taulaTotals(serveis, f, cfg.ServeiXecs))
            if (e.quantitat != 0.0)
                bloc.entrades.append(e);
        if (!bloc.entrades.isEmpty())
            r.blocs.append(std::move(bloc));
        ++r.clients;
    }
    f.Carrega_Facturacio(ParametresFacturacio{mes, QString(), false, QString()});
    log.afegeix(kCrLf + QString::number(r.clients) + Tradueix(" clients processats.") + kCrLf + kCrLf
                + Tradueix("FINALITZACIO CORRECTA!!!") + kCrLf);
    return r;
}

void Imprimeix_Resum(Impressora &imp, const ResumMes &r, int posicioSaltPagina)
{
    MarcInforme marc(imp, posicioSaltPagina);
    MarcInforme::Capcalera cap;
    cap.titol = Tradueix("RESUM FACTURACIÓ del mes:") + QLatin1Char(' ') + MarcInforme::mesTitol(r.inici);
    cap.espaiAbansRegla = 300;
    cap.espaiDespresRegla = 150;
    cap.linies = [&](MarcInforme &m) {
        // The period goes on the title's line, not bold.
        Impressora &p = m.imp();
        const double ampleTitol = p.ampleText(cap.titol);
        m.lletra(12, false);
        p.setX(MarcInforme::MargeEsquerre + ampleTitol);
        p.setY(MarcInforme::YTitol);
        p.imprimeix(QStringLiteral(" ( ") + format::dataCurta(r.inici) + QStringLiteral(" - ")
                    + format::dataCurta(r.fi) + QStringLiteral(" )"));
        m.lletra(10, true);
        m.baixa(200);
        m.text(MarcInforme::MargeEsquerre, Tradueix("Client"));
        m.text(XEntrada, Tradueix("Servei/Lloc"));
        m.text(6550, Tradueix("Quantitat"));
        m.text(XUnitat, Tradueix("Unitat"));
        m.text(10350, Tradueix("Import"));
    };
    marc.inicia(cap);

    double totalMes = 0.0;
    for (const BlocResum &bloc : r.blocs) {
        if (imp.y() + 200 > posicioSaltPagina)
            marc.salta();
        totalMes += blocClient(marc, bloc);
    }

    marc.baixa(3 * imp.altLinia());
    marc.comprovaSalt();
    marc.lletra(10, true);
    const double y = imp.y();
    imp.requadre(7000, y - 50, 11200, y + 290);
    marc.textDreta(MarcInforme::VoraDreta, Tradueix("TOTAL MES:") + QLatin1Char(' ') + euros(totalMes));
    marc.lletra(10, false);
    marc.acaba();
}

int Imprimeix_Resum_Facturacio(Impressora &imp, Facturacio &f, const QString &mes, RegistreSortida &log,
                               const QDate &avui)
{
    const ResumMes r = Calcula_Resum_Facturacio(f, mes, log, avui);
    Imprimeix_Resum(imp, r, f.cfg().PosicioSaltPagina);
    return r.clients;
}

void Imprimeix_Xecs_Liquidats(Impressora &imp, Db &db, const Configuracio &cfg, const QString &mes)
{
    const MesFactura periode = MesFactura::llegeix(mes);
    struct Grup {
        QString client;
        qint64 nombre;
        double suma;
    };
    QList<Grup> grups;
    {
        Query q = db.query(QStringLiteral(
            "SELECT Xecs.clients_nom, Count(Xecs.xecs_id), Sum(Xecs.xecs_valor)"
            " FROM Feines INNER JOIN Xecs ON Feines.feines_id = Xecs.feines_id"
            " WHERE Feines.feines_data >= ? AND Feines.feines_data < ? AND Xecs.xecs_data_liquidat IS NOT NULL"
            " GROUP BY Xecs.clients_nom ORDER BY Xecs.clients_nom"));
        q.bind(periode.inici).bind(periode.fi).exec();
        while (q.next())
            grups.append(Grup{q.text(0), q.integer(1), q.real(2)});
    }
    Query linies = db.query(QStringLiteral(
        "SELECT Xecs.xecs_id, Feines.feines_id, Feines.llocs_nom, Feines.recursos_nom, Feines.feines_data,"
        " Feines.feines_hora_inici, Feines_Detall.feines_detall_quantitat"
        " FROM (Feines INNER JOIN Feines_Detall ON Feines.feines_id = Feines_Detall.feines_id)"
        " INNER JOIN Xecs ON Feines.feines_id = Xecs.feines_id"
        " WHERE Xecs.clients_nom = ? AND Feines.feines_data >= ? AND Feines.feines_data < ?"
        " AND Xecs.xecs_data_liquidat IS NOT NULL AND Feines_Detall.serveis_nom = ?"
        " ORDER BY Xecs.xecs_id"));

    MarcInforme marc(imp, cfg.PosicioSaltPagina);
    MarcInforme::Capcalera cap;
    cap.titol = Tradueix("Relació de XECS") + QLatin1Char(' ') + cfg.ServeiXecs.toUpper() + Tradueix(" a liquidar en el mes:")
                + QLatin1Char(' ') + MarcInforme::mesTitol(periode.inici);
    marc.inicia(cap);

    qint64 totalNombre = 0;
    double totalSuma = 0.0;
    for (const Grup &g : grups) {
        marc.comprovaSalt();
        marc.baixa(200);
        marc.lletra(10, true);
        marc.text(MarcInforme::MargeEsquerre, g.client);
        const QString compte = format::enter(double(g.nombre)) + Tradueix(" xecs");
        marc.textDreta(9700, compte);
        const double desDe = MarcInforme::MargeEsquerre + imp.ampleText(g.client) + 60;
        const double finsA = 9700 - imp.ampleText(compte) - 60;
        if (desDe < finsA)
            imp.linia(desDe, liniaBase(imp), finsA, liniaBase(imp));
        marc.textDreta(MarcInforme::VoraDreta, QStringLiteral("( ") + format::import(g.suma) + Tradueix(" € )"));
        avanca(marc, 100);

        linies.bind(g.client).bind(periode.inici).bind(periode.fi).bind(cfg.ServeiXecs).exec();
        marc.lletra(10, false);
        while (linies.next()) {
            marc.comprovaSalt();
            marc.lletra(10, false);
            marc.text(800, Tradueix("Xec") + QLatin1Char(' ') + QString::number(linies.integer(0)) + QLatin1Char(':'));
            marc.text(2000, linies.text(2) + QStringLiteral(" [") + format::dataCurta(linies.date(4)) + QLatin1Char(' ')
                                + linies.text(5) + QStringLiteral("] (") + quantitatPlana(linies.real(6))
                                + Tradueix(" hores)"));
            marc.text(7200, linies.text(3));
            avanca(marc, 200);
        }
        totalNombre += g.nombre;
        totalSuma += g.suma;
    }

    marc.baixa(200);
    marc.comprovaSalt();
    marc.lletra(10, true);
    const double y = imp.y();
    imp.requadre(8000, y - 50, 11000, y + 290);
    marc.textDreta(9750, Tradueix("Total") + QLatin1Char(' ') + format::enter(double(totalNombre)) + Tradueix(" xecs:"));
    marc.textDreta(10900, euros(totalSuma));
    marc.lletra(10, false);
    marc.acaba();
}
