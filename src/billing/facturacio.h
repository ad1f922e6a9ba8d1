#pragma once
// A client's month of billing as the billing tab shows it and the commit and the reports read it:
// the job sheet FacturaGrid, the voucher sheet XecsGrid and the totals, built whole by
// Carrega_Facturacio from the month, the client (or none: the vouchers settled by every client),
// the pending-only switch and the payment on account.
//
// Rules of the build:
// - a job counts only when it is done; a line is worth quantity x unit price, rounded to cents;
// - a place with a monthly fee is charged the fee once for the month instead of its lines, when at
//   least one of its shown jobs is done; a billed job keeps the fee it was billed with;
// - hours of the voucher service (ServeiXecs) are paid with the client's vouchers, one voucher per
//   hour, while the vouchers counted for the month stay below MaxXecsMes; each voucher used adds
//   CostHoraXec to the line, the job and the services, and takes its value off the total;
// - the payment on account is taken off at the end.
// The client's month is read in one query and its vouchers in a second; nothing is read per job.
//
// Row codes (column 0):
//   FacturaGrid  the job's id            a line of a job
//                Tradueix("Si") / ("No") the job's total row (done / not done); the id in cell 8,
//                                        the total in cell 9, or the hidden fee code "QM<fee>"
//                "SQ"                    a place's monthly fee
//   XecsGrid     "XC"                    a voucher; its number in cell 2, the job it pays in cell 4

#include "graella_facturacio.h"
#include "mes_factura.h"

#include <QString>

class Db;
struct Configuracio;

namespace codi_factura {
inline const QString Quota = QStringLiteral("SQ");
inline const QString Xec = QStringLiteral("XC");
inline const QString PrefixQuota = QStringLiteral("QM");
QString feta();   // the total row of a done job: the translated "Si"
QString noFeta(); // the total row of a job not done: the translated "No"
// The hidden fee code of a total row ("QM" + the fee, decimal comma) and its fee.
QString quotaOculta(double quota);
// The fee a cell 9 carries: the number after "QM", 0 for anything else.
double llegeixQuota(const QString &text);
} // namespace codi_factura

// The columns of FacturaGrid and XecsGrid.
enum ColumnaFactura { ColCodi = 0, ColData, ColLloc, ColRecurs, ColFeta, ColDataFactura, ColServei, ColQuantitat,
                      ColUnitat, ColImport, ColIdFeina = ColUnitat };
enum ColumnaXecs { ColXecCodi = 0, ColXecDataEntrega, ColXecNumero, ColXecClient, ColXecFeina, ColXecDataLiquidat,
                   ColXecServei, ColXecQuantitat, ColXecUnitat, ColXecImport };

struct ParametresFacturacio {
    QString mes;        // "mm/aaaa" that passes MesFactura::valid
    QString client;     // "" = every client (the vouchers they settled in the month)
    bool pendents = false; // "Pdt. de facturar:": only what is not billed yet
    QString pagament;   // the payment field as it stands (not a number counts as 0)
};

// The totals as the tab shows them ("" where it shows nothing).
struct TotalsFacturacio {
    QString TotalServeis;
    QString TotalNXecs;
    QString TotalXecs;
    QString TotalPagaments;
    QString TotalFacturar;
};

class Facturacio {
public:
    // The two queries a sheet is built from (bound: client, first day, day after the month), for
    // whoever measures them bare.
    static const char *const kSqlFeines;
    static const char *const kSqlXecs;

    Facturacio(Db &db, const Configuracio &cfg);

    // Rebuilds both sheets and the totals. Reads, never writes. A database error propagates
    // (DbError). A month that is not valid builds empty sheets.
    void Carrega_Facturacio(const ParametresFacturacio &p);
    // The same again with the parameters of the last build.
    void Carrega_Facturacio() { Carrega_Facturacio(m_parametres); }

    const ParametresFacturacio &parametres() const { return m_parametres; }
    bool ambClient() const { return !m_parametres.client.isEmpty(); }

    const GraellaFacturacio &FacturaGrid() const { return m_factura; }
    const GraellaFacturacio &XecsGrid() const { return m_xecs; }
    // For the widget to keep the current cell across rebuilds.
    GraellaFacturacio &FacturaGrid() { return m_factura; }
    GraellaFacturacio &XecsGrid() { return m_xecs; }

    const TotalsFacturacio &totals() const { return m_totals; }
    // The same figures as numbers, rounded to cents as shown.
    double serveis() const;
    int nombreXecs() const { return m_nXecs; }
    double valorXecs() const;

    // The payment field was left: it now shows `pagament` and the total to pay follows; the
    // sheets are not rebuilt.
    void posaPagament(const QString &pagament);

    // The job of a line row (numeric code), 0 on any other row.
    int feinaFila(int fila) const;
    // The voucher number of a data row of XecsGrid, 0 when it shows none.
    qint64 xecFila(int fila) const;

    // The label of the vouchers total: "Total xecs assignats:" with a client, "Total xecs
    // liquidats:" without (translated).
    QString etiquetaXecs() const;

    Db &db() { return m_db; }
    const Configuracio &cfg() const { return m_cfg; }

private:
    void buidaTotals();
    void carregaLiquidats(const MesFactura &mes);
    void carregaFeines(const MesFactura &mes);
    void carregaXecs(const MesFactura &mes);
    void totalFacturar();

    Db &m_db;
    const Configuracio &m_cfg;
    ParametresFacturacio m_parametres;
    GraellaFacturacio m_factura;
    GraellaFacturacio m_xecs;
    TotalsFacturacio m_totals;
    double m_serveis = 0.0;
    int m_nXecs = 0;
    double m_valorXecs = 0.0;

    struct Candidat {
        int feina;
        qint64 xec;
        int fila;
        double preu;
    };
    std::vector<Candidat> m_candidats; // lives during one build
};
