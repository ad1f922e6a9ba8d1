#include "informe_hores.h"

#include "marc_informe.h"

#include "agenda/hores_extres.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/traduccio.h"

namespace {

constexpr int XData = 4000;
constexpr int XDia = 5300;
constexpr int VoraHores = 9700;
constexpr int VoraTotals = 9750;

QString hores(double h)
{
    return format::import(h) + Tradueix(" hores");
}

void subtotal(MarcInforme &marc, double total)
{
    Impressora &imp = marc.imp();
    marc.lletra(10, true);
    marc.baixa(300);
    imp.linia(5500, imp.y() - 100, VoraTotals, imp.y() - 100);
    const QString t = Tradueix("Total") + QLatin1Char(' ') + hores(total);
    imp.setX(VoraTotals - imp.ampleText(t));
    imp.imprimeix(t);
}

} // namespace

QDate primerDiaMes(const QString &mes)
{
    const QString t = mes.trimmed();
    if (t.size() != 7 || t.at(2) != QLatin1Char('/'))
        return QDate();
    bool okMes = false, okAny = false;
    const int m = t.left(2).toInt(&okMes);
    const int a = t.mid(3).toInt(&okAny);
    if (!okMes || !okAny || m < 1 || m > 12)
        return QDate();
    return QDate(a, m, 1);
}

QList<HoresDia> horesMes(Db &db, const QDate &primerDia)
{
    Query q = db.query(QStringLiteral(
        "SELECT Hores_Fetes.recursos_nom, Hores_Fetes.hores_data, Hores_Fetes.hores_quantitat FROM Hores_Fetes"
        " WHERE Hores_Fetes.hores_data >= ? AND Hores_Fetes.hores_data < ?"
        " ORDER BY Hores_Fetes.recursos_nom, Hores_Fetes.hores_data"));
    q.bind(primerDia).bind(primerDia.addMonths(1)).exec();
    QList<HoresDia> r;
    while (q.next())
        r.append(HoresDia{q.text(0), q.date(1), q.real(2)});
    return r;
}

void Imprimeix_Hores(Impressora &imp, Db &db, int posicioSaltPagina, const QDate &mes)
{
    Borra_hores_extres_erronies(db, mes.month(), mes.year());
    const QList<HoresDia> files = horesMes(db, mes);

    MarcInforme marc(imp, posicioSaltPagina);
    MarcInforme::Capcalera cap;
    cap.titol = Tradueix("Relació de HORES EXTRA del mes:") + QLatin1Char(' ') + MarcInforme::mesTitol(mes);
    marc.inicia(cap);

    QString anterior;
    bool primer = true;
    double totalRecurs = 0.0;
    double totalMes = 0.0;
    for (const HoresDia &h : files) {
        if (primer || h.recurs != anterior) {
            if (!primer) {
                marc.comprovaSalt();
                subtotal(marc, totalRecurs);
            }
            marc.comprovaSalt();
            marc.lletra(10, true);
            marc.baixa(200);
            imp.setX(MarcInforme::MargeEsquerre);
            imp.imprimeix(h.recurs);
            anterior = h.recurs;
            totalRecurs = 0.0;
            primer = false;
        } else {
            marc.comprovaSalt();
        }
        marc.lletra(10, false);
        marc.text(XData, format::dataCurta(h.data));
        marc.text(XDia, MarcInforme::nomDia(h.data));
        const QString t = hores(h.hores);
        imp.setX(VoraHores - imp.ampleText(t));
        imp.imprimeix(t);
        totalRecurs += h.hores;
        totalMes += h.hores;
    }
    if (!primer) {
        marc.comprovaSalt();
        subtotal(marc, totalRecurs);
    }

    marc.comprovaSalt();
    marc.lletra(10, true);
    marc.baixa(300);
    const double y = imp.y();
    imp.requadre(7000, y - 50, 10000, y + 290);
    const QString t = Tradueix("TOTAL MES") + QLatin1Char(' ') + hores(totalMes);
    imp.setX(VoraTotals - imp.ampleText(t));
    imp.imprimeix(t);
    marc.acaba();
}
