#include "informe_factura.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/traduccio.h"
#include "facturacio.h"
#include "reports/marc_informe.h"
#include "totals_factura.h"

#include <QtGlobal>

namespace {

constexpr qint32 Gris = 0x929292; // RGB(146, 146, 146)

constexpr int XValor = 1550;
constexpr int XData = 500, XLloc = 1700, XRecurs = 4400, XServei = 6400, VoraQuantitat = 8800, XUnitat = 8900;
constexpr int XQuotaMes = 8400;
constexpr int XTotals = 4400, VoraQuantitatTotals = 8850;
constexpr int XPagament = 6000;

QString euros(double import)
{
    return format::import(import) + QStringLiteral(" €");
}

// A move after a printed line; never less than the line itself, so lines cannot overlap.
void avanca(MarcInforme &marc, double twips)
{
    marc.baixa(qMax(twips, marc.imp().altLinia()));
}

struct DadesClient {
    QString nif, adreca, codiPostal, poblacio, telefons, ccc;
};

DadesClient dadesClient(Db &db, const QString &client)
{
    Query q = db.query(QStringLiteral("SELECT clients_NIF, \"clients_adreça\", clients_codi_postal, clients_poblacio,"
                                      " clients_telefons, clients_ccc FROM Clients WHERE clients_nom = ?"));
    q.bind(client).exec();
    if (!q.next())
        return {};
    return DadesClient{q.text(0), q.text(1), q.text(2), q.text(3), q.text(4), q.text(5)};
}

// A row of the client block: the label in black, the value in grey, then the next line.
void filaClient(MarcInforme &marc, const QString &etiqueta, const QString &valor)
{
    Impressora &imp = marc.imp();
    if (!etiqueta.isEmpty())
        marc.text(MarcInforme::MargeEsquerre, etiqueta);
    imp.setColor(Gris);
    imp.setX(XValor);
    imp.imprimeix(valor);
    imp.setColor(0);
    marc.baixa(50);
}

} // namespace

void Imprimeix_Dades_Factura(Impressora &imp, Db &db, const Facturacio &f)
{
    const Configuracio &cfg = f.cfg();
    const QString client = f.parametres().client;
    const DadesClient d = dadesClient(db, client);
    const QList<EntradaTotals> taula = taulaTotals(serveisTotals(db), f, cfg.ServeiXecs);

    MarcInforme marc(imp, cfg.PosicioSaltPagina);
    MarcInforme::Capcalera cap;
    cap.titol = Tradueix("Dades de facturació del mes:") + QLatin1Char(' ')
                + MarcInforme::mesTitol(MesFactura::llegeix(f.parametres().mes).inici);
    cap.espaiAbansRegla = 300;
    cap.espaiDespresRegla = 200;
    cap.linies = [&](MarcInforme &m) {
        m.lletra(10, false);
        m.baixa(400);
        filaClient(m, Tradueix("Client:"), client);
        filaClient(m, Tradueix("NIF/CIF:"), d.nif);
        filaClient(m, Tradueix("Adreça:"), d.adreca);
        filaClient(m, QString(), d.codiPostal + QStringLiteral(" - ") + d.poblacio.toUpper());
        m.text(MarcInforme::MargeEsquerre, Tradueix("Telèfons:"));
        m.imp().setColor(Gris);
        m.text(XValor, d.telefons);
        m.text(6600, d.ccc);
        m.imp().setColor(0);
        m.text(XPagament, Tradueix("CCC:"));
        m.baixa(m.imp().altLinia());
        m.lletra(10, true);
        m.baixa(200);
        m.text(XData, Tradueix("Data"));
        m.text(XLloc, Tradueix("Lloc"));
        m.text(XRecurs, Tradueix("Recurs"));
        m.text(XServei, Tradueix("Servei"));
        m.textDreta(VoraQuantitat, Tradueix("Quantitat"));
        m.text(XUnitat, Tradueix("Unitat"));
        m.textDreta(MarcInforme::VoraDreta, Tradueix("Import"));
    };
    marc.inicia(cap);

    const GraellaFacturacio &g = f.FacturaGrid();
    const QString si = codi_factura::feta();
    int darreraFeina = 0;
    bool darreraAmbImport = true;
    for (int r = 0; !g.buida() && r < g.files(); ++r) {
        if (marc.comprovaSalt()) {
            darreraFeina = 0;
            darreraAmbImport = true;
        }
        const int feina = f.feinaFila(r);
        if (feina != 0 && g.text(r, ColFeta) == si) {
            marc.lletra(10, false);
            imp.setColor(Gris);
            if (feina != darreraFeina) {
                if (darreraAmbImport)
                    marc.baixa(200);
                marc.text(XData, g.text(r, ColData));
                marc.text(XLloc, g.text(r, ColLloc));
                marc.text(XRecurs, g.text(r, ColRecurs).trimmed());
                darreraFeina = feina;
            }
            const QString import = g.text(r, ColImport);
            marc.text(XServei, g.text(r, ColServei));
            marc.textDreta(VoraQuantitat, g.text(r, ColQuantitat));
            marc.text(XUnitat, g.text(r, ColUnitat));
            if (!import.isEmpty())
                marc.textDreta(MarcInforme::VoraDreta, euros(numeroCella(import)));
            darreraAmbImport = !import.isEmpty();
            imp.setColor(0);
            avanca(marc, 200);
        } else if (g.codi(r) == codi_factura::Quota) {
            marc.lletra(10, false);
            imp.setColor(Gris);
            marc.baixa(50);
            marc.text(MarcInforme::MargeEsquerre, g.text(r, ColLloc));
            marc.text(XQuotaMes, Tradueix("Quota mes"));
            marc.textDreta(MarcInforme::VoraDreta, euros(numeroCella(g.text(r, ColImport))));
            imp.setColor(0);
            avanca(marc, 200);
            darreraAmbImport = true;
        }
    }

    // The table of totals is one entry: it is never split by a page break.
    marc.comprovaSalt();
    marc.lletra(10, true);
    marc.baixa(2 * imp.altLinia());
    marc.text(XTotals, Tradueix("TOTALS:"));
    double importFactura = 0.0;
    for (const EntradaTotals &e : taula) {
        if (e.quantitat == 0.0)
            continue;
        marc.text(XServei, e.nom);
        marc.textDreta(VoraQuantitatTotals, quantitatPlana(e.quantitat));
        marc.text(XUnitat, e.unitat);
        if (e.import != 0.0) {
            marc.textDreta(MarcInforme::VoraDreta, euros(e.import));
            importFactura += arrodoneix::centims(e.import);
        }
        marc.baixa(imp.altLinia());
    }

    marc.baixa(300);
    marc.comprovaSalt();
    marc.baixa(400);
    marc.comprovaSalt();
    marc.lletra(12, true);
    marc.textDreta(MarcInforme::VoraDreta, Tradueix("IMPORT FACTURA:") + QLatin1Char(' ') + euros(importFactura));
    marc.baixa(imp.altLinia());
    imp.linia(4300, imp.y(), 11100, imp.y());

    const double pagament = arrodoneix::centims(numeroCella(f.totals().TotalPagaments));
    if (pagament != 0.0) {
        marc.lletra(10, false);
        marc.baixa(100);
        marc.comprovaSalt();
        marc.text(XPagament, Tradueix("Pagaments a compte:"));
        marc.textDreta(MarcInforme::VoraDreta, euros(pagament));
        marc.baixa(imp.altLinia());
        marc.baixa(100);
        marc.comprovaSalt();
        marc.lletra(10, true);
        marc.text(XPagament, Tradueix("TOTAL A PAGAR:"));
        marc.textDreta(MarcInforme::VoraDreta, euros(importFactura - pagament));
        marc.baixa(imp.altLinia());
        marc.lletra(10, false);
    }
    marc.acaba();
}
