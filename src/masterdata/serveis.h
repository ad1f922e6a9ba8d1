#pragma once
// Services that are sold: unit, default price, minutes per unit and whether the group size
// changes that time. The voucher service named by ServeiXecs keeps its name and cannot go. A
// rename travels to the place and job lines (core/referencies); a service still on a line is
// not deleted.

#include "resultat.h"

#include <QString>
#include <QStringList>

class Sessio;
class Interaccio;

// The values of the service form, as typed.
struct FitxaServei {
    QString nom;    // NomServei
    QString nomAnt; // NomServeiANT
    QString unitat;
    QString preu;
    QString minuts; // minutes per unit; "" is taken as 0
    bool comu = false;
    QString descripcio;
};

class GestioServeis {
public:
    GestioServeis(Sessio &sessio, Interaccio &io);

    QStringList noms(); // every service, by name
    bool carrega(const QString &nom, FitxaServei &f);

    Resultat AfegirServei(FitxaServei &f);
    Resultat ModificarServei(FitxaServei &f);
    Resultat EliminarServei(FitxaServei &f);

private:
    bool campsAcceptats(FitxaServei &f, double *preu, int *minuts);

    Sessio &m_sessio;
    Interaccio &m_io;
};
