#include "comprovacio_bd.h"

#include "core/db.h"
#include "core/referencies.h"
#include "core/traduccio.h"

#include <QJsonArray>

namespace comprovacio_bd {

namespace {

QStringList integritat(Db &db)
{
    try {
        const QStringList r = db.query(QStringLiteral("PRAGMA integrity_check")).columna();
        return r.isEmpty() ? QStringList{QStringLiteral("sense resposta")} : r;
    } catch (const DbError &e) {
        // A file damaged badly enough makes the check itself fail: that is its finding.
        return {e.text()};
    }
}

bool esOk(const QStringList &resultat)
{
    return resultat == QStringList{QStringLiteral("ok")};
}

} // namespace

bool Informe::correcta() const
{
    return esOk(integritat) && esOk(integritatDespres) && problemes.isEmpty();
}

Informe comprova(Db &db)
{
    Informe r;
    r.baseDades = db.path();
    r.integritat = integritat(db);
    // Indexes written in another order (by a tool that used a different collation of the same
    // name, or by an older program) are rebuilt from the table rows, which lose nothing.
    try {
        Transaction t(db);
        db.exec(QStringLiteral("REINDEX QNOCASE"));
        t.commit();
        r.reindexat = true;
    } catch (const DbError &e) {
        r.integritatDespres << e.text();
    }
    if (r.reindexat)
        r.integritatDespres = integritat(db);
    try {
        for (const referencies::Trencada &t : referencies::trencades(db)) {
            r.problemes.append({QStringLiteral("%1.%2").arg(QString::fromUtf8(t.referencia->taula), QString::fromUtf8(t.referencia->columna)),
                                Tradueix(t.referencia->descripcio), t.fila, t.valor});
        }
    } catch (const DbError &e) {
        r.integritatDespres << e.text();
    }
    return r;
}

QString text(const Informe &informe)
{
    QString t = Tradueix("Base de dades:") + QLatin1Char(' ') + informe.baseDades + QLatin1Char('\n');
    t += Tradueix("Integritat:") + QLatin1Char(' ') + informe.integritat.join(QStringLiteral("; ")) + QLatin1Char('\n');
    if (informe.reindexat)
        t += Tradueix("Índexs de noms refets amb l'ordre del programa.") + QLatin1Char('\n');
    if (!esOk(informe.integritat) || !informe.reindexat)
        t += Tradueix("Integritat després de refer els índexs:") + QLatin1Char(' ')
            + informe.integritatDespres.join(QStringLiteral("; ")) + QLatin1Char('\n');
    if (informe.problemes.isEmpty())
        t += Tradueix("Referències entre taules: cap problema.") + QLatin1Char('\n');
    QString anterior;
    for (const Problema &p : informe.problemes) {
        if (p.comprovacio != anterior) {
            int n = 0;
            for (const Problema &q : informe.problemes)
                n += q.comprovacio == p.comprovacio ? 1 : 0;
            t += QStringLiteral("%1 (%2): %3\n").arg(p.descripcio, p.comprovacio).arg(n);
            anterior = p.comprovacio;
        }
        t += QStringLiteral("  %1: %2\n").arg(p.fila, p.valor);
    }
    t += informe.correcta() ? Tradueix("La base de dades és correcta.") : Tradueix("La base de dades té problemes.");
    return t + QLatin1Char('\n');
}

QJsonObject json(const Informe &informe)
{
    QJsonArray problemes;
    for (const Problema &p : informe.problemes) {
        problemes.append(QJsonObject{{QStringLiteral("check"), p.comprovacio},
                                     {QStringLiteral("description"), p.descripcio},
                                     {QStringLiteral("row"), p.fila},
                                     {QStringLiteral("value"), p.valor}});
    }
    return QJsonObject{{QStringLiteral("database"), informe.baseDades},
                       {QStringLiteral("sound"), informe.correcta()},
                       {QStringLiteral("integrity"), QJsonArray::fromStringList(informe.integritat)},
                       {QStringLiteral("integrity_after_repair"), QJsonArray::fromStringList(informe.integritatDespres)},
                       {QStringLiteral("reindexed"), informe.reindexat},
                       {QStringLiteral("problems"), problemes}};
}

} // namespace comprovacio_bd
