#include "agenda_llistes.h"

#include "core/db.h"

#include <QStringList>

QStringList llistaLlocsAgenda(Db &db)
{
    Query q = db.prepared(QStringLiteral("SELECT llocs_nom FROM Llocs ORDER BY llocs_nom"));
    q.exec();
    return q.columna();
}

QList<EntradaRecurs> llistaRecursosAgenda(Db &db)
{
    QList<EntradaRecurs> l;
    Query q = db.prepared(QStringLiteral(
        "SELECT recursos_nom, recursos_color, recursos_grup FROM Recursos ORDER BY recursos_nom"));
    q.exec();
    while (q.next())
        l.append({q.text(0), qint32(q.integer(1)), q.boolean(2)});
    return l;
}
