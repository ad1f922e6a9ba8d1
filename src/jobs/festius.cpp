#include "festius.h"

#include "calendari_ics.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/traduccio.h"

#include <QFile>
#include <QSet>

namespace {

QString jaHiHa(const QDate &data, const QString &descripcio)
{
    return Tradueix("Ja hi ha un festiu el %1 (%2).").arg(format::dataCurta(data), descripcio);
}

} // namespace

Festius::Festius(Db &db) : m_db(db) {}

QList<Festiu> Festius::llista(int any)
{
    Query q = m_db.prepared(any > 0
        ? QStringLiteral("SELECT festius_data, festius_descripcio FROM Festius WHERE festius_data >= ? AND festius_data < ? "
                         "ORDER BY festius_data")
        : QStringLiteral("SELECT festius_data, festius_descripcio FROM Festius ORDER BY festius_data"));
    if (any > 0)
        q.bind(QDate(any, 1, 1)).bind(QDate(any + 1, 1, 1));
    q.exec();
    QList<Festiu> out;
    while (q.next())
        out.append({q.date(0), q.text(1)});
    return out;
}

QMap<QDate, QString> Festius::mapa()
{
    QMap<QDate, QString> out;
    for (const Festiu &f : llista())
        out.insert(f.data, f.descripcio);
    return out;
}

QMap<QDate, QString> Festius::entre(const QDate &F, const QDate &L)
{
    Query q = m_db.prepared(QStringLiteral(
        "SELECT festius_data, festius_descripcio FROM Festius WHERE festius_data >= ? AND festius_data <= ?"));
    q.bind(F).bind(L).exec();
    QMap<QDate, QString> out;
    while (q.next())
        out.insert(q.date(0), q.text(1));
    return out;
}

QString Festius::Afegeix_Festiu(const QDate &data, const QString &descripcio)
{
    if (!data.isValid())
        return Tradueix("Data incorrecta");
    try {
        Transaction t(m_db);
        Query q = m_db.prepared(QStringLiteral("SELECT festius_descripcio FROM Festius WHERE festius_data = ?"));
        q.bind(data).exec();
        if (q.next())
            return jaHiHa(data, q.text(0));
        m_db.prepared(QStringLiteral("INSERT INTO Festius (festius_data, festius_descripcio) VALUES (?, ?)"))
            .bind(data).bind(descripcio.trimmed()).exec();
        t.commit();
        return QString();
    } catch (const DbError &e) {
        return QStringLiteral("Error en Afegeix_Festiu:") + e.text();
    }
}

QString Festius::Esborra_Festiu(const QDate &data)
{
    try {
        Query q = m_db.prepared(QStringLiteral("DELETE FROM Festius WHERE festius_data = ?"));
        q.bind(data).exec();
        if (q.rowsAffected() == 0)
            return Tradueix("No hi ha cap festiu el %1.").arg(format::dataCurta(data));
        return QString();
    } catch (const DbError &e) {
        return QStringLiteral("Error en Esborra_Festiu:") + e.text();
    }
}

ResultatImportacio Festius::Importa_Festius(const QString &fitxer)
{
    ResultatImportacio r;
    QFile f(fitxer);
    if (!f.open(QIODevice::ReadOnly)) {
        r.error = Tradueix("No es pot llegir el fitxer %1: %2").arg(fitxer, f.errorString());
        return r;
    }
    const LecturaIcs lectura = llegeixCalendariIcs(f.readAll());
    if (!lectura.error.isEmpty()) {
        r.error = lectura.error;
        return r;
    }
    r.avisos = lectura.avisos;
    try {
        Transaction t(m_db);
        Query existent = m_db.prepared(QStringLiteral("SELECT festius_descripcio FROM Festius WHERE festius_data = ?"));
        Query insereix = m_db.prepared(QStringLiteral("INSERT INTO Festius (festius_data, festius_descripcio) VALUES (?, ?)"));
        for (const Festiu &dia : lectura.dies) {
            existent.bind(dia.data).exec();
            if (existent.next()) {
                r.avisos << jaHiHa(dia.data, existent.text(0)) + QLatin1Char(' ')
                                + Tradueix("No s'importa «%1».").arg(dia.descripcio);
                continue;
            }
            insereix.bind(dia.data).bind(dia.descripcio).exec();
            ++r.afegits;
        }
        t.commit();
    } catch (const DbError &e) {
        r.afegits = 0;
        r.error = QStringLiteral("Error en Importa_Festius:") + e.text();
    }
    return r;
}
