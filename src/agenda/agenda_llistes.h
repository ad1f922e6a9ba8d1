#pragma once
// The two drag sources beside the agenda: every place by name, and the colour key of the
// resources (each in its colour, groups marked) by name.

#include <QList>
#include <QString>

class Db;

struct EntradaRecurs {
    QString nom;
    qint32 color = 0;
    bool grup = false;
};

QStringList llistaLlocsAgenda(Db &db);
QList<EntradaRecurs> llistaRecursosAgenda(Db &db);

// The drag payload: one letter for the kind ('F' a job, 'R' a resource, 'L' a place) and a name.
namespace arrossegament {
inline constexpr const char *TipusMime = "application/x-quadrella-agenda";
} // namespace arrossegament
