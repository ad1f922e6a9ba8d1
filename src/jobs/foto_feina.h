#pragma once
// The stored state of one job, whole: its Feines row, its service lines and the vouchers it has
// settled (and any other voucher asked for), every column as the database holds it, Null told
// apart from "". Undo and redo compare the database with such a picture before they touch it,
// and write one back to put the job exactly as it was.

#include "feina.h"

#include <QList>
#include <QMap>
#include <QStringList>
#include <QVariant>

class Db;

struct FotoFeina {
    int feines_id = 0;
    QStringList columnes;       // of Feines, in the table's order
    QVariantList fila;          // empty: there is no such job
    QStringList columnesLinia;  // of Feines_Detall
    QList<QVariantList> linies; // in the order they were written
    QStringList columnesXec;    // of Xecs
    QMap<qint64, QVariantList> xecs; // by xecs_id; an empty row: no such voucher

    bool existeix() const { return !fila.isEmpty(); }
    // The job record of the row (only when it exists).
    Feina feina() const;
    // Same job, same rows (the column lists are the tables', not compared).
    bool operator==(const FotoFeina &o) const
    {
        return feines_id == o.feines_id && fila == o.fila && linies == o.linies && xecs == o.xecs;
    }
    bool operator!=(const FotoFeina &o) const { return !(*this == o); }
};

// The job `feinesId` as stored now, with the vouchers it settles and those of `altresXecs`.
// Throws DbError.
FotoFeina fotografiaFeina(Db &db, int feinesId, const QList<qint64> &altresXecs = {});

// Writes the job's row, lines and vouchers as the picture holds them, over a job that exists
// (its row is replaced, its lines rewritten, the vouchers' rows set). No rule is checked: the
// caller has had the job engine accept the change first. Throws DbError.
void escriuFotoFeina(Db &db, const FotoFeina &foto);
