#pragma once
// The job record that every job operation and its callers exchange.

#include <QDate>
#include <QString>

struct Feina {
    QString missatge;           // "" after a successful operation, else the message to show
    int feines_id = 0;          // 0: no job specified
    QString llocs_nom;
    QDate feines_data;
    QString feines_hora_inici;  // "hh:mm"
    QString feines_hora_fi;     // "hh:mm"; "" asks Modifica_Feina to compute it
    QString recursos_nom;       // "" = unassigned (Null in the database)
    bool feines_feta = false;
    QDate feines_data_factura;  // invalid = empty
    QString feines_observacions;
};

// What Color_Recurs returns for a resource without a colour of its own: draw the job with the
// window background.
constexpr qint32 ColorFinestra = static_cast<qint32>(0x80000005u);
