// quadrella billing --month MM/YYYY [--client C] [--pending] [--json]
// quadrella billing commit --month MM/YYYY --client C [--pdf FILE]
#include "cli_facturacio.h"
#include "cli_report.h"

#include "billing/factura_client.h"
#include "billing/facturacio.h"
#include "billing/informe_factura.h"
#include "billing/pagaments.h"
#include "core/formats.h"
#include "core/sessio.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace {

// Messages of the commit are turned into the command's own error.
class Callat : public Interaccio {
public:
    void informa(const QString &, const QString &) override {}
    bool pregunta(const QString &, const QString &) override { return false; }
    void error(const QString &, const QString &) override {}
};

QJsonArray filesJson(const GraellaFacturacio &g)
{
    QJsonArray files;
    if (g.buida())
        return files;
    for (int r = 0; r < g.files(); ++r) {
        QJsonArray cells, bg, bold, hidden;
        for (int c = 0; c < GraellaFacturacio::Columnes; ++c) {
            const CellaFacturacio &cella = g.cella(r, c);
            cells.append(cella.text);
            bg.append(cella.fons == SenseFons ? QJsonValue(QJsonValue::Null) : QJsonValue(cella.fons));
            bold.append(cella.negreta);
            hidden.append(cella.oculta);
        }
        files.append(QJsonObject{{QStringLiteral("cells"), cells},
                                 {QStringLiteral("bg"), bg},
                                 {QStringLiteral("bold"), bold},
                                 {QStringLiteral("hidden"), hidden}});
    }
    return files;
}

QJsonObject facturacioJson(const Facturacio &f)
{
    const TotalsFacturacio &t = f.totals();
    return QJsonObject{
        {QStringLiteral("mes"), f.parametres().mes},
        {QStringLiteral("client"), f.parametres().client},
        {QStringLiteral("pendents"), f.parametres().pendents},
        {QStringLiteral("factura"), filesJson(f.FacturaGrid())},
        {QStringLiteral("xecs"), filesJson(f.XecsGrid())},
        {QStringLiteral("totals"), QJsonObject{{QStringLiteral("TotalServeis"), t.TotalServeis},
                                               {QStringLiteral("TotalNXecs"), t.TotalNXecs},
                                               {QStringLiteral("TotalXecs"), t.TotalXecs},
                                               {QStringLiteral("TotalPagaments"), t.TotalPagaments},
                                               {QStringLiteral("TotalFacturar"), t.TotalFacturar}}},
    };
}

QString ajusta(const QString &text, int ample, CellaFacturacio::Alineacio a)
{
    if (text.size() > ample)
        return text.left(ample - 1) + QChar(0x2026);
    return a == CellaFacturacio::Dreta ? text.rightJustified(ample) : text.leftJustified(ample);
}

// A sheet as a terminal table: the visible columns, a merged block's text once (a row block over
// the width of its columns), hidden texts left out.
void escriuFull(QTextStream &o, const GraellaFacturacio &g)
{
    QList<int> amples(GraellaFacturacio::Columnes, 0);
    for (int c = 1; c < GraellaFacturacio::Columnes; ++c) {
        int a = int(g.capcalera(c).size());
        for (int r = 0; r < g.files(); ++r) {
            if (g.bloc(r, c).columnes == 1 && !g.cella(r, c).oculta)
                a = qMax(a, int(g.text(r, c).size()));
        }
        amples[c] = qBound(3, a, 24);
    }
    const QString separador = QStringLiteral(" | ");
    const auto escriu = [&](QString linia) {
        while (linia.endsWith(QLatin1Char(' ')))
            linia.chop(1);
        o << linia << '\n';
    };
    QStringList cap, guions;
    for (int c = 1; c < GraellaFacturacio::Columnes; ++c) {
        cap << ajusta(g.capcalera(c), amples[c], g.alineacioColumna(c));
        guions << QString(amples[c], QLatin1Char('-'));
    }
    escriu(cap.join(separador));
    o << guions.join(QStringLiteral("-+-")) << '\n';
    if (g.buida())
        return;
    for (int r = 0; r < g.files(); ++r) {
        QStringList parts;
        int c = 1;
        while (c < GraellaFacturacio::Columnes) {
            const GraellaFacturacio::Bloc b = g.bloc(r, c);
            const int n = b.cobert() ? 1 : qMin(b.columnes, GraellaFacturacio::Columnes - c);
            int ample = amples[c];
            for (int k = 1; k < n; ++k)
                ample += amples[c + k] + int(separador.size());
            const CellaFacturacio &cella = g.cella(r, c);
            parts << ajusta(b.cobert() || cella.oculta ? QString() : cella.text, ample, cella.alineacio);
            c += n;
        }
        escriu(parts.join(separador));
    }
}

void escriuFacturacio(QTextStream &o, const Facturacio &f)
{
    const ParametresFacturacio &p = f.parametres();
    o << Tradueix("Mes:") << ' ' << p.mes;
    if (f.ambClient())
        o << "   " << Tradueix("Client:") << ' ' << p.client;
    if (p.pendents)
        o << "   " << Tradueix("Pdt. de facturar:") << ' ' << Tradueix("Si");
    o << "\n\n";
    if (f.ambClient()) {
        escriuFull(o, f.FacturaGrid());
        o << '\n';
    }
    escriuFull(o, f.XecsGrid());
    o << '\n';
    const TotalsFacturacio &t = f.totals();
    const auto total = [&](const QString &etiqueta, const QString &valor) {
        o << etiqueta.leftJustified(30) << valor.rightJustified(14) << (valor.isEmpty() ? QString() : QStringLiteral(" €")) << '\n';
    };
    if (f.ambClient())
        total(Tradueix("Total serveis realitzats:"), t.TotalServeis);
    o << f.etiquetaXecs().leftJustified(30) << t.TotalNXecs.rightJustified(5) << t.TotalXecs.rightJustified(9)
      << (t.TotalXecs.isEmpty() ? QString() : QStringLiteral(" €")) << '\n';
    if (f.ambClient()) {
        total(Tradueix("Total pagaments efectuats:"), t.TotalPagaments);
        total(Tradueix("TOTAL A PAGAR:"), t.TotalFacturar);
    }
    o.flush();
}

void construeix(Sessio &s, Facturacio &f, const QString &mes, const QString &client, bool pendents)
{
    ParametresFacturacio p{mes, client, pendents, QString()};
    if (!client.isEmpty())
        p.pagament = textPagament(Pagament_Mes(s.db(), mes, client));
    f.Carrega_Facturacio(p);
}

int factura(ContextComanda &ctx, const QString &mes, const QString &nomClient, const QString &pdf)
{
    Sessio &s = ctx.sessio();
    const QString client = cli_facturacio::client(s.db(), nomClient);
    // A PDF that cannot be written is refused before anything is billed.
    if (!pdf.isEmpty()) {
        const QFileInfo desti(pdf);
        if (desti.isDir() || !QFileInfo(desti.absolutePath()).isWritable() || (desti.exists() && !desti.isWritable()))
            throw ErrorComanda(QStringLiteral("Error:%1: ").arg(pdf) + Tradueix("no es pot escriure; no s'ha facturat res."));
    }
    Facturacio f(s.db(), s.cfg());
    construeix(s, f, mes, client, false);
    Callat callat;
    const ResultatFactura r = Factura_Client(f, callat);
    if (!r.fet)
        throw ErrorComanda(r.missatge);
    // The commit has rebuilt the sheets: the invoice data prints what was billed.
    if (!pdf.isEmpty())
        escriuPdf(pdf, QStringLiteral("Dades de facturació"), [&s, &f](Impressora &imp) { Imprimeix_Dades_Factura(imp, s.db(), f); });
    if (ctx.json()) {
        QJsonObject o = facturacioJson(f);
        o.insert(QStringLiteral("feines_facturades"), r.feines);
        o.insert(QStringLiteral("xecs_liquidats"), r.xecs);
        ctx.escriuJson(o);
        return 0;
    }
    ctx.out() << Tradueix("Feines facturades:") << ' ' << r.feines << "   " << Tradueix("Xecs liquidats:") << ' ' << r.xecs
              << "\n\n";
    escriuFacturacio(ctx.out(), f);
    return 0;
}

int billingOrdre(ContextComanda &ctx, Arguments &args)
{
    // Options first: their values are not the subcommand.
    const QString mes = cli_facturacio::mes(args);
    QString nomClient;
    const bool ambClient = args.option(QStringLiteral("--client"), &nomClient);
    const bool pendents = args.flag(QStringLiteral("--pending"));
    QString pdf;
    const bool ambPdf = args.option(QStringLiteral("--pdf"), &pdf);
    const QString sub = args.nextPositional();
    args.finish();
    if (sub == QLatin1String("commit")) {
        if (!ambClient)
            throw ErrorUs(QStringLiteral("falta --client"));
        if (pendents)
            throw ErrorUs(QStringLiteral("--pending no és per a commit"));
        if (ambPdf && pdf.isEmpty())
            throw ErrorUs(QStringLiteral("--pdf necessita un fitxer"));
        return factura(ctx, mes, nomClient, pdf);
    }
    if (!sub.isEmpty())
        throw ErrorUs(QStringLiteral("subordre desconeguda '%1'").arg(sub));
    if (ambPdf)
        throw ErrorUs(QStringLiteral("--pdf només és per a commit"));

    Sessio &s = ctx.sessio();
    const QString client = ambClient ? cli_facturacio::client(s.db(), nomClient) : QString();
    Facturacio f(s.db(), s.cfg());
    construeix(s, f, mes, client, pendents);
    if (ctx.json())
        ctx.escriuJson(facturacioJson(f));
    else
        escriuFacturacio(ctx.out(), f);
    return 0;
}

REGISTRA_COMANDA(QStringLiteral("billing"),
                 QStringLiteral("billing --month MM/YYYY [--client C] [--pending] [--json]\n"
                                "billing commit --month MM/YYYY --client C [--pdf FILE]"),
                 QStringLiteral("la facturació d'un mes (d'un client, o els xecs liquidats de tots); commit la registra"),
                 billingOrdre, true);

} // namespace
