#pragma once
// The overtime stored for a worker's day as an undoable command: the hours before and after
// (0 = no row). Undo and redo refuse when the day holds something else by then.

#include "core/pila_desfer.h"

#include <QDate>
#include <QString>

class Db;

class OrdreHoresExtres : public OrdreDesfer {
public:
    OrdreHoresExtres(Db &db, const QString &recurs, const QDate &dia, double abans, double despres);

    QString text() const override;
    QString desfes() override { return aplica(m_despres, m_abans); }
    QString refes() override { return aplica(m_abans, m_despres); }

private:
    QString aplica(double de, double a);

    Db &m_db;
    QString m_recurs;
    QDate m_dia;
    double m_abans;
    double m_despres;
};
