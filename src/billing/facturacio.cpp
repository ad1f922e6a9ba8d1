#include "facturacio.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/traduccio.h"

#include <QLocale>

namespace {

using C = CellaFacturacio;

const std::array<GraellaFacturacio::Columna, GraellaFacturacio::Columnes> kColumnesFactura = {{
    {PerTraduir("CP"), 0, C::Esquerra},
    {PerTraduir("Data"), 1000, C::Centre},
    {PerTraduir("Lloc"), 2500, C::Centre},
    {PerTraduir("Recurs"), 2000, C::Centre},
    {PerTraduir("Feta"), 900, C::Centre},
    {PerTraduir("Data fra."), 1000, C::Centre},
    {PerTraduir("Servei"), 2000, C::Centre},
    {PerTraduir("Quantitat"), 1000, C::Dreta},
    {PerTraduir("Unitat"), 1600, C::Centre},
    {PerTraduir("Import"), 1200, C::Dreta},
}};

const std::array<GraellaFacturacio::Columna, GraellaFacturacio::Columnes> kColumnesXecs = {{
    {PerTraduir("CP"), 0, C::Esquerra},
    {PerTraduir("Data entr."), 1000, C::Centre},
    {PerTraduir("Nro. de Xec"), 1500, C::Centre},
    {PerTraduir("Client"), 3000, C::Centre},
    {PerTraduir("Feina"), 900, C::Centre},
    {PerTraduir("Data liq."), 1000, C::Centre},
    {PerTraduir("Servei"), 2000, C::Centre},
    {PerTraduir("Quantitat"), 1000, C::Dreta},
    {PerTraduir("Unitat"), 1600, C::Centre},
    {PerTraduir("Import"), 1200, C::Dreta},
}};

// A stored day (YYYY-MM-DD) as the sheets show it (dd/mm/yyyy), without a date conversion.
QString dia(const QString &t)
{
    if (t.isEmpty())
        return QString();
    if (t.size() != 10 || t.at(4) != QLatin1Char('-') || t.at(7) != QLatin1Char('-'))
        return format::dataCurta(QDate::fromString(t, Qt::ISODate));
    QString out(10, QLatin1Char('/'));
    out[0] = t[8];
    out[1] = t[9];
    out[3] = t[5];
    out[4] = t[6];
    for (int i = 0; i < 4; ++i)
        out[6 + i] = t[i];
    return out;
}

// A quantity or fee as plain text with a decimal comma, every digit that tells it apart kept.
QString nombrePla(double v)
{
    QString t = QString::number(v, 'g', QLocale::FloatingPointShortest);
    if (t.contains(QLatin1Char('e')))
        t = QString::number(v, 'f', 6);
    return t.replace(QLatin1Char('.'), QLatin1Char(','));
}

double numero(const QString &text)
{
    double v = 0.0;
    return format::llegeixReal(text, &v) ? v : 0.0;
}

bool mateixNom(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

void alinea(CellaFacturacio *fila, int desDe, int finsA, CellaFacturacio::Alineacio a)
{
    for (int c = desDe; c <= finsA; ++c)
        fila[c].alineacio = a;
}

} // namespace

// ---------------------------------------------------------------- codes

namespace codi_factura {

QString feta()
{
    return Tradueix("Si");
}

QString noFeta()
{
    return Tradueix("No");
}

QString quotaOculta(double quota)
{
    return PrefixQuota + nombrePla(quota);
}

double llegeixQuota(const QString &text)
{
    if (!text.startsWith(PrefixQuota))
        return 0.0;
    return numero(text.mid(PrefixQuota.size()));
}

} // namespace codi_factura

// ---------------------------------------------------------------- model

// The sheet's two queries: a client's jobs of the month with their lines, and its vouchers.
const char *const Facturacio::kSqlFeines =
    "SELECT Llocs.llocs_quota, Feines.feines_id, Feines.feines_data, Feines.llocs_nom, Feines.recursos_nom,"
    " Feines.feines_feta, Feines.feines_data_factura, Feines.feines_quota, Feines_Detall.serveis_nom,"
    " Feines_Detall.feines_detall_quantitat, Feines_Detall.feines_detall_unitat, Feines_Detall.feines_detall_preu_un"
    " FROM Llocs INNER JOIN (Feines LEFT JOIN Feines_Detall ON Feines.feines_id = Feines_Detall.feines_id)"
    " ON Llocs.llocs_nom = Feines.llocs_nom"
    " WHERE Llocs.clients_nom = ? AND Feines.feines_data >= ? AND Feines.feines_data < ?"
    " ORDER BY Feines.llocs_nom, Feines.feines_data, Feines.feines_id, Feines_Detall.serveis_nom,"
    " Feines_Detall.feines_detall_unitat";
const char *const Facturacio::kSqlXecs =
    "SELECT Xecs.xecs_id, Xecs.clients_nom, Xecs.feines_id, Xecs.xecs_data_entrega, Xecs.xecs_data_liquidat,"
    " Xecs.xecs_valor, Feines.feines_data, Feines.feines_data_factura"
    " FROM Xecs LEFT JOIN Feines ON Feines.feines_id = Xecs.feines_id"
    " WHERE Xecs.clients_nom = ?"
    " AND ((Feines.feines_data >= ? AND Feines.feines_data < ?) OR Feines.feines_data IS NULL)"
    " ORDER BY Xecs.xecs_data_liquidat DESC, Xecs.xecs_data_entrega, Xecs.xecs_id";

Facturacio::Facturacio(Db &db, const Configuracio &cfg)
    : m_db(db), m_cfg(cfg), m_factura(kColumnesFactura, true), m_xecs(kColumnesXecs, false)
{
}

double Facturacio::serveis() const
{
    return arrodoneix::centims(m_serveis);
}

double Facturacio::valorXecs() const
{
    return arrodoneix::centims(m_valorXecs);
}

QString Facturacio::etiquetaXecs() const
{
    return ambClient() ? Tradueix("Total xecs assignats:") : Tradueix("Total xecs liquidats:");
}

int Facturacio::feinaFila(int fila) const
{
    if (fila < 0 || fila >= m_factura.files())
        return 0;
    bool ok = false;
    const int id = m_factura.codi(fila).toInt(&ok);
    return ok ? id : 0;
}

qint64 Facturacio::xecFila(int fila) const
{
    if (fila < 0 || fila >= m_xecs.files() || m_xecs.codi(fila) != codi_factura::Xec)
        return 0;
    return m_xecs.text(fila, ColXecNumero).toLongLong();
}

void Facturacio::buidaTotals()
{
    m_totals = TotalsFacturacio();
    m_serveis = 0.0;
    m_nXecs = 0;
    m_valorXecs = 0.0;
}

void Facturacio::Carrega_Facturacio(const ParametresFacturacio &p)
{
    m_parametres = p;
    m_factura.reinicia();
    m_xecs.reinicia();
    m_candidats.clear();
    buidaTotals();

    const MesFactura mes = MesFactura::llegeix(p.mes);
    if (mes.esValid()) {
        if (!ambClient()) {
            if (!m_cfg.ServeiXecs.isEmpty())
                carregaLiquidats(mes);
        } else {
            m_totals.TotalPagaments = p.pagament;
            carregaFeines(mes);
            if (!m_cfg.ServeiXecs.isEmpty()) {
                carregaXecs(mes);
                m_totals.TotalNXecs = QString::number(m_nXecs);
                m_totals.TotalXecs = format::import(m_valorXecs);
            }
            totalFacturar();
        }
    }
    m_candidats.clear();
    m_factura.calculaBlocs();
    m_xecs.calculaBlocs();
}

void Facturacio::totalFacturar()
{
    m_totals.TotalFacturar = format::import(serveis() - valorXecs() - arrodoneix::centims(numero(m_totals.TotalPagaments)));
}

void Facturacio::posaPagament(const QString &pagament)
{
    m_parametres.pagament = pagament;
    if (!ambClient())
        return;
    m_totals.TotalPagaments = pagament;
    totalFacturar();
}

// Every client's vouchers settled for a job of the month.
void Facturacio::carregaLiquidats(const MesFactura &mes)
{
    Query q = m_db.prepared(QStringLiteral(
        "SELECT Xecs.xecs_data_entrega, Xecs.xecs_id, Xecs.clients_nom, Xecs.feines_id, Xecs.xecs_data_liquidat,"
        " Xecs.xecs_valor FROM Feines INNER JOIN Xecs ON Feines.feines_id = Xecs.feines_id"
        " WHERE Feines.feines_data >= ? AND Feines.feines_data < ? AND Xecs.xecs_data_liquidat IS NOT NULL"
        " ORDER BY Xecs.clients_nom, Xecs.xecs_id"));
    q.bind(mes.inici).bind(mes.fi).exec();
    const QString servei = m_cfg.ServeiXecs;
    const QString u = QStringLiteral("1");
    const QString hores = Tradueix("Hores");
    while (q.next()) {
        const double valor = q.real(5);
        const int r = m_xecs.afegeixFila();
        CellaFacturacio *fila = &m_xecs.at(r, 0);
        fila[ColXecCodi].text = codi_factura::Xec;
        fila[ColXecDataEntrega].text = dia(q.text(0));
        fila[ColXecNumero].text = QString::number(q.integer(1));
        fila[ColXecClient].text = q.text(2);
        fila[ColXecFeina].text = QString::number(q.integer(3));
        fila[ColXecDataLiquidat].text = dia(q.text(4));
        fila[ColXecServei].text = servei;
        fila[ColXecQuantitat].text = u;
        fila[ColXecUnitat].text = hores;
        fila[ColXecImport].text = format::import(valor);
        alinea(fila, 1, 9, C::Centre);
        fila[ColXecQuantitat].alineacio = C::Dreta;
        fila[ColXecImport].alineacio = C::Dreta;
        ++m_nXecs;
        m_valorXecs += valor;
    }
    m_totals.TotalNXecs = QString::number(m_nXecs);
    m_totals.TotalXecs = format::import(m_valorXecs);
}

void Facturacio::carregaFeines(const MesFactura &mes)
{
    Query q = m_db.prepared(QString::fromLatin1(Facturacio::kSqlFeines));
    q.bind(m_parametres.client).bind(mes.inici).bind(mes.fi).exec();

    const QString si = codi_factura::feta();
    const QString no = codi_factura::noFeta();
    const QString totalFeina = Tradueix("Total feina:");
    const QString quotaMes = Tradueix("Quota mes");
    const QString servei = m_cfg.ServeiXecs;
    const QString blanc = QStringLiteral(" ");
    const QString tresBlancs = QStringLiteral("   ");

    // The previous record, the running job total and the two flags of the breaks.
    int feinaAnt = 0;
    QString llocAnt;
    double quotaAnt = 0.0;
    bool fetaAnt = false;
    bool primer = true;
    double totalFeinaAct = 0.0;
    bool liniesMostrades = false;
    bool quotaPendent = false;

    const auto filaTotal = [&] {
        const int r = m_factura.afegeixFila();
        CellaFacturacio *fila = &m_factura.at(r, 0);
        fila[ColCodi].text = fetaAnt ? si : no;
        for (int c = ColData; c <= ColQuantitat; ++c)
            fila[c].text = totalFeina;
        fila[ColIdFeina].text = QString::number(feinaAnt);
        const qint32 fons = quotaAnt == 0.0 ? m_cfg.ColorFeina : m_cfg.ColorQuota;
        fila[ColData].fons = fila[ColIdFeina].fons = fila[ColImport].fons = fons;
        fila[ColData].alineacio = C::Dreta;
        fila[ColIdFeina].alineacio = C::Esquerra;
        fila[ColImport].alineacio = C::Dreta;
        fila[ColImport].negreta = true;
        if (quotaAnt != 0.0) {
            fila[ColImport].text = codi_factura::quotaOculta(quotaAnt);
            fila[ColImport].oculta = true;
        } else if (fetaAnt) {
            fila[ColImport].text = format::import(totalFeinaAct);
        }
    };
    const auto filaQuota = [&] {
        const int r = m_factura.afegeixFila();
        CellaFacturacio *fila = &m_factura.at(r, 0);
        fila[ColCodi].text = codi_factura::Quota;
        fila[ColData].text = tresBlancs;
        for (int c = ColLloc; c <= ColServei; ++c)
            fila[c].text = llocAnt;
        fila[ColQuantitat].text = tresBlancs;
        fila[ColUnitat].text = quotaMes;
        fila[ColImport].text = format::import(quotaAnt);
        for (int c : {ColData, ColLloc, ColRecurs, ColQuantitat, ColUnitat, ColImport})
            fila[c].fons = m_cfg.ColorQuota;
        for (int c : {ColLloc, ColUnitat, ColImport}) {
            fila[c].negreta = true;
            fila[c].alineacio = C::Dreta;
        }
        m_serveis += quotaAnt;
    };

    // Texts of the last line row, often the same job and day.
    QString idText, diaIso, diaText;
    int idDe = 0;
    while (q.next()) {
        const int id = int(q.integer(1));
        const QString lloc = q.text(3);
        const bool feta = q.boolean(5);
        const QVariant dataFactura = q.value(6);
        const bool facturada = !dataFactura.isNull();
        // A billed job keeps the fee it was billed with; the others take the place's.
        const double quota = facturada ? q.real(7) : q.real(0);
        if (primer) {
            feinaAnt = id;
            llocAnt = lloc;
            quotaAnt = quota;
            fetaAnt = feta;
            primer = false;
        }

        if (id != feinaAnt && liniesMostrades) {
            filaTotal();
            totalFeinaAct = 0.0;
            liniesMostrades = false;
        }
        if (!mateixNom(lloc, llocAnt) && quotaAnt != 0.0) {
            if (quotaPendent)
                filaQuota();
            quotaPendent = false;
        }

        if (!m_parametres.pendents || !facturada) {
            const QVariant nomServei = q.value(8);
            const QVariant quantitat = q.value(9);
            const double preu = q.real(11);
            double import = feta ? arrodoneix::centims(quantitat.toDouble() * preu) : 0.0;

            const int r = m_factura.afegeixFila();
            if (!servei.isEmpty() && feta && quota == 0.0 && import + 1e-9 >= m_cfg.ValorXec
                && mateixNom(nomServei.toString(), servei) && !nomServei.isNull()) {
                const int n = quantitat.isNull() ? 0 : arrodoneix::enter(quantitat.toDouble() - 0.1);
                for (int k = 0; k < n; ++k)
                    m_candidats.push_back(Candidat{id, 0, r, preu});
            }

            CellaFacturacio *fila = &m_factura.at(r, 0);
            if (idText.isEmpty() || id != idDe) {
                idText = QString::number(id);
                idDe = id;
            }
            const QString iso = q.text(2);
            if (iso != diaIso) {
                diaIso = iso;
                diaText = dia(iso);
            }
            fila[ColCodi].text = idText;
            fila[ColData].text = diaText;
            fila[ColLloc].text = lloc;
            const QString recurs = q.text(4);
            fila[ColRecurs].text = recurs.isEmpty() ? blanc : recurs;
            fila[ColFeta].text = feta ? si : no;
            fila[ColFeta].negreta = !feta;
            fila[ColDataFactura].text = facturada ? dia(dataFactura.toString()) : blanc;
            fila[ColServei].text = nomServei.toString();
            fila[ColQuantitat].text = quantitat.isNull() ? QString() : nombrePla(quantitat.toDouble());
            fila[ColUnitat].text = q.text(10);
            alinea(fila, ColData, ColImport, C::Centre);
            fila[ColQuantitat].alineacio = C::Dreta;
            fila[ColImport].alineacio = C::Dreta;
            if (quota != 0.0) {
                for (int c = ColData; c <= ColImport; ++c)
                    fila[c].fons = m_cfg.ColorQuota;
                import = 0.0;
                if (feta)
                    quotaPendent = true;
            } else if (feta) {
                fila[ColImport].text = format::import(import);
            }
            totalFeinaAct += import;
            m_serveis += import;
            liniesMostrades = true;
        }

        feinaAnt = id;
        llocAnt = lloc;
        quotaAnt = quota;
        fetaAnt = feta;
    }
    if (liniesMostrades)
        filaTotal();
    if (quotaAnt != 0.0 && quotaPendent)
        filaQuota();
    m_totals.TotalServeis = format::import(m_serveis);
}

// The client's vouchers: those already settled for a job of the month, which count towards
// MaxXecsMes and take back their own candidate, then the free ones in order of delivery, each
// given the next free candidate hour.
void Facturacio::carregaXecs(const MesFactura &mes)
{
    Query q = m_db.prepared(QString::fromLatin1(Facturacio::kSqlXecs));
    q.bind(m_parametres.client).bind(mes.inici).bind(mes.fi).exec();

    const QString servei = m_cfg.ServeiXecs;
    const QString u = QStringLiteral("1");
    const QString hores = Tradueix("Hores");
    const QString si = codi_factura::feta();

    const auto recarrec = [&](const Candidat &c) {
        const auto suma = [&](int fila) {
            CellaFacturacio &cella = m_factura.at(fila, ColImport);
            cella.text = format::import(numero(cella.text) + m_cfg.CostHoraXec);
        };
        suma(c.fila);
        for (int r = c.fila + 1; r < m_factura.files(); ++r) {
            if (m_factura.codi(r) == si) {
                suma(r);
                break;
            }
        }
        m_serveis += m_cfg.CostHoraXec;
        m_totals.TotalServeis = format::import(m_serveis);
    };

    auto lliure = m_candidats.begin(); // candidates before it are all taken
    while (q.next()) {
        const qint64 numero = q.integer(0);
        const bool liquidat = !q.value(4).isNull();
        if (m_parametres.pendents && liquidat)
            continue;
        const double valor = q.real(5);
        const int r = m_xecs.afegeixFila();
        CellaFacturacio *fila = &m_xecs.at(r, 0);
        fila[ColXecCodi].text = codi_factura::Xec;
        fila[ColXecDataEntrega].text = dia(q.text(3));
        fila[ColXecNumero].text = QString::number(numero);
        fila[ColXecClient].text = q.text(1);
        alinea(fila, 1, 9, C::Centre);
        fila[ColXecQuantitat].alineacio = C::Dreta;
        fila[ColXecImport].alineacio = C::Dreta;

        qint64 feina = 0;
        if (!liquidat) {
            if (m_nXecs < m_cfg.MaxXecsMes) {
                while (lliure != m_candidats.end() && lliure->xec != 0)
                    ++lliure;
                if (lliure != m_candidats.end()) {
                    lliure->xec = numero;
                    feina = lliure->feina;
                    recarrec(*lliure);
                }
            }
            fila[ColXecFeina].text = feina ? QString::number(feina) : QStringLiteral(" ");
            fila[ColXecDataLiquidat].text = QStringLiteral("   ");
            if (feina) {
                fila[ColXecServei].text = servei;
                fila[ColXecQuantitat].text = u;
                fila[ColXecUnitat].text = hores;
                fila[ColXecImport].text = format::import(valor);
            } else {
                fila[ColXecImport].text = format::import(0.0);
            }
        } else {
            feina = q.integer(2);
            fila[ColXecFeina].text = QString::number(feina);
            fila[ColXecDataLiquidat].text = dia(q.text(4));
            fila[ColXecServei].text = servei;
            fila[ColXecQuantitat].text = u;
            fila[ColXecUnitat].text = hores;
            fila[ColXecImport].text = format::import(valor);
            for (Candidat &c : m_candidats) {
                if (c.feina == feina && c.xec == 0) {
                    c.xec = numero;
                    recarrec(c);
                    break;
                }
            }
        }
        if (feina != 0) {
            ++m_nXecs;
            m_valorXecs += valor;
        }
    }
}
