#include "totals_factura.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/traduccio.h"
#include "facturacio.h"

#include <QHash>
#include <QLocale>
#include <cmath>

QList<EntradaTotals> serveisTotals(Db &db)
{
    Query q = db.query(QStringLiteral("SELECT serveis_nom, serveis_unitat FROM Serveis ORDER BY serveis_nom"));
    q.exec();
    QList<EntradaTotals> r;
    while (q.next())
        r.append(EntradaTotals{q.text(0), q.text(1), 0.0, 0.0});
    return r;
}

double numeroCella(const QString &text)
{
    double v = 0.0;
    return format::llegeixReal(text, &v) ? v : 0.0;
}

QString quantitatPlana(double quantitat)
{
    // Sums of quantities carry binary noise (0.1 + 0.2); six decimals are more than any unit needs.
    const double net = std::round(quantitat * 1e6) / 1e6;
    return QString::number(net, 'g', QLocale::FloatingPointShortest).replace(QLatin1Char('.'), QLatin1Char(','));
}

QList<EntradaTotals> taulaTotals(const QList<EntradaTotals> &serveis, const Facturacio &f, const QString &serveiXecs)
{
    QList<EntradaTotals> taula = serveis;
    QHash<QString, int> perNom;
    for (int i = 0; i < taula.size(); ++i)
        perNom.insert(taula[i].nom.toCaseFolded(), i);

    const GraellaFacturacio &g = f.FacturaGrid();
    const QString si = codi_factura::feta();
    const QString quotaMes = Tradueix("Quota mes");
    if (!g.buida()) {
        for (int r = 0; r < g.files(); ++r) {
            if (f.feinaFila(r) != 0) {
                double import = 0.0;
                if (g.text(r, ColFeta) != si || !format::llegeixReal(g.text(r, ColImport), &import))
                    continue;
                const auto it = perNom.constFind(g.text(r, ColServei).toCaseFolded());
                if (it == perNom.constEnd())
                    continue;
                taula[*it].quantitat += numeroCella(g.text(r, ColQuantitat));
                taula[*it].import += import;
            } else if (g.codi(r) == codi_factura::Quota) {
                taula.append(EntradaTotals{g.text(r, ColLloc), quotaMes, 1.0, numeroCella(g.text(r, ColImport))});
            }
        }
    }

    const GraellaFacturacio &x = f.XecsGrid();
    int nombre = 0;
    double suma = 0.0;
    if (!x.buida()) {
        for (int r = 0; r < x.files(); ++r) {
            bool ok = false;
            x.text(r, ColXecFeina).trimmed().toLongLong(&ok);
            if (!ok)
                continue;
            ++nombre;
            suma += numeroCella(x.text(r, ColXecImport));
        }
    }
    if (arrodoneix::centims(suma) != 0.0)
        taula.append(EntradaTotals{serveiXecs, Tradueix("Xecs"), double(nombre), -suma});
    return taula;
}
