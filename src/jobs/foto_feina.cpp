#include "foto_feina.h"

#include "core/db.h"

#include <QSqlRecord>

namespace {

// Null stays an invalid QVariant, so that it never equals "" or 0.
QVariantList llegeixFila(Query &q, int columnes)
{
    QVariantList fila;
    fila.reserve(columnes);
    for (int i = 0; i < columnes; ++i)
        fila.append(q.raw().isNull(i) ? QVariant() : q.value(i));
    return fila;
}

QStringList nomsColumnes(Query &q)
{
    QStringList noms;
    const QSqlRecord r = q.raw().record();
    for (int i = 0; i < r.count(); ++i)
        noms << r.fieldName(i);
    return noms;
}

QString entreCometes(const QString &columna)
{
    return QLatin1Char('"') + columna + QLatin1Char('"');
}

// "UPDATE taula SET "a" = ?, "b" = ? WHERE clau = ?", every column but the key.
QString sqlActualitza(const QString &taula, const QStringList &columnes, const QString &clau)
{
    QStringList sets;
    for (const QString &c : columnes)
        if (c != clau)
            sets << entreCometes(c) + QStringLiteral(" = ?");
    return QStringLiteral("UPDATE ") + taula + QStringLiteral(" SET ") + sets.join(QStringLiteral(", "))
        + QStringLiteral(" WHERE ") + clau + QStringLiteral(" = ?");
}

void actualitza(Db &db, const QString &taula, const QStringList &columnes, const QString &clau,
                const QVariantList &fila, const QVariant &valorClau)
{
    Query q = db.query(sqlActualitza(taula, columnes, clau));
    for (int i = 0; i < columnes.size(); ++i)
        if (columnes.at(i) != clau)
            q.bind(fila.value(i));
    q.bind(valorClau).exec();
}

} // namespace

Feina FotoFeina::feina() const
{
    auto camp = [this](const char *nom) { return fila.value(static_cast<int>(columnes.indexOf(QLatin1String(nom)))); };
    Feina f;
    f.feines_id = feines_id;
    f.llocs_nom = camp("llocs_nom").toString();
    f.feines_data = QDate::fromString(camp("feines_data").toString(), Qt::ISODate);
    f.feines_hora_inici = camp("feines_hora_inici").toString();
    f.feines_hora_fi = camp("feines_hora_fi").toString();
    f.recursos_nom = camp("recursos_nom").toString();
    f.feines_feta = camp("feines_feta").toLongLong() != 0;
    f.feines_data_factura = QDate::fromString(camp("feines_data_factura").toString(), Qt::ISODate);
    const QVariant notes = camp("feines_observacions");
    f.feines_observacions = notes.isValid() ? notes.toString() : QString();
    return f;
}

FotoFeina fotografiaFeina(Db &db, int feinesId, const QList<qint64> &altresXecs)
{
    FotoFeina foto;
    foto.feines_id = feinesId;
    {
        Query q = db.query(QStringLiteral("SELECT * FROM Feines WHERE feines_id = ?"));
        q.bind(feinesId).exec();
        foto.columnes = nomsColumnes(q);
        if (q.next())
            foto.fila = llegeixFila(q, static_cast<int>(foto.columnes.size()));
    }
    {
        Query q = db.query(QStringLiteral("SELECT * FROM Feines_Detall WHERE feines_id = ? ORDER BY rowid"));
        q.bind(feinesId).exec();
        foto.columnesLinia = nomsColumnes(q);
        while (q.next())
            foto.linies.append(llegeixFila(q, static_cast<int>(foto.columnesLinia.size())));
    }
    {
        Query q = db.query(QStringLiteral("SELECT * FROM Xecs WHERE feines_id = ? ORDER BY xecs_id"));
        q.bind(feinesId).exec();
        foto.columnesXec = nomsColumnes(q);
        const int clau = static_cast<int>(foto.columnesXec.indexOf(QStringLiteral("xecs_id")));
        while (q.next()) {
            const QVariantList fila = llegeixFila(q, static_cast<int>(foto.columnesXec.size()));
            foto.xecs.insert(fila.value(clau).toLongLong(), fila);
        }
    }
    for (qint64 id : altresXecs) {
        if (foto.xecs.contains(id))
            continue;
        Query q = db.query(QStringLiteral("SELECT * FROM Xecs WHERE xecs_id = ?"));
        q.bind(id).exec();
        foto.xecs.insert(id, q.next() ? llegeixFila(q, static_cast<int>(foto.columnesXec.size())) : QVariantList());
    }
    return foto;
}

void escriuFotoFeina(Db &db, const FotoFeina &foto)
{
    actualitza(db, QStringLiteral("Feines"), foto.columnes, QStringLiteral("feines_id"), foto.fila, foto.feines_id);

    db.prepared(QStringLiteral("DELETE FROM Feines_Detall WHERE feines_id = ?")).bind(foto.feines_id).exec();
    if (!foto.linies.isEmpty()) {
        QStringList columnes;
        QStringList marques;
        for (const QString &c : foto.columnesLinia) {
            columnes << entreCometes(c);
            marques << QStringLiteral("?");
        }
        Query q = db.query(QStringLiteral("INSERT INTO Feines_Detall (") + columnes.join(QStringLiteral(", "))
                           + QStringLiteral(") VALUES (") + marques.join(QStringLiteral(", ")) + QStringLiteral(")"));
        for (const QVariantList &linia : foto.linies) {
            for (const QVariant &v : linia)
                q.bind(v);
            q.exec();
        }
    }

    for (auto it = foto.xecs.cbegin(); it != foto.xecs.cend(); ++it)
        if (!it.value().isEmpty())
            actualitza(db, QStringLiteral("Xecs"), foto.columnesXec, QStringLiteral("xecs_id"), it.value(), it.key());
}
