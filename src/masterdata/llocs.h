#pragma once
// Places of a client and the services contracted at each: the lists, loading, and add / save /
// delete with their checks in order. A place's planned minutes are kept in step with its
// services by asking the user whenever they differ. A rename carries over to every row that
// holds the name (core/referencies) in one transaction; a place that still has jobs cannot be
// deleted, and its service lines go with it.

#include "resultat.h"

#include <QList>
#include <QString>
#include <QStringList>

class Sessio;
class Interaccio;

// The values of the place form, as typed. The numeric fields are texts because the checks
// rewrite them (as the whole number they hold, 99 for a monthly place, the services' minutes).
struct FitxaLloc {
    QString nom;    // NomLloc
    QString nomAnt; // NomLlocANT: the name the displayed place is stored under
    QString client; // the client selected on the page
    bool clientXecs = false; // that client's voucher box as it stands on the page
    QString adreca;
    QString poblacio;
    QString telefon;
    QString minutsPrevist;
    bool dissabte = false;
    bool diumenge = false;
    bool festius = false; // works on closed days
    int diaSetmana = 0; // 1 = Sunday ... 7 = Saturday; 0 = none chosen
    bool primerMes = false;
    bool ultimMes = false;
    QString periodicitat;
    QString hora;  // "hh:mm", "" = none
    QString recurs; // "" = none
    QString quota;
    QString observacions;
};

// One service line of the place-services form.
struct FitxaServeiLloc {
    QString servei; // ServeisCombo; "" = none chosen
    QString unitat; // shown only
    QString quantitat;
    QString preu;
    QString descripcio;
};

// A stored service line of a place, as its list shows it.
struct LiniaServeiLloc {
    QString servei;
    double quantitat = 0.0;
    double preu = 0.0;
    QString unitat;
};

class GestioLlocs {
public:
    GestioLlocs(Sessio &sessio, Interaccio &io);

    QStringList llocsClient(const QString &client);
    // The place's client and fields; false when there is no place by that name.
    bool carrega(const QString &nom, FitxaLloc &f);
    QString clientDelLloc(const QString &nom); // "" when the place does not exist

    // The start of every cell of the agenda day ("hh:mm"), for the planned-hour list.
    QStringList horesDia() const;
    // The translated weekday names of the planning weekday list, Sunday first.
    static QStringList diesSetmana();

    Resultat AfegirLloc(FitxaLloc &f);
    Resultat ModificarLloc(FitxaLloc &f);
    Resultat EliminarLloc(FitxaLloc &f);

    QList<LiniaServeiLloc> liniesLloc(const QString &lloc); // by service name
    bool carregaServeiLloc(const QString &lloc, const QString &servei, FitxaServeiLloc &s);
    // Unit, default price and own description of a service chosen in the list.
    void ompleServei(FitxaServeiLloc &s);

    // The place is the one loaded in `lloc` (its nomAnt). When the user accepts the services'
    // minutes, the place is saved as by ModificarLloc.
    Resultat AfegirServeiLloc(FitxaLloc &lloc, FitxaServeiLloc &s);
    Resultat ModificarServeiLloc(FitxaLloc &lloc, FitxaServeiLloc &s);
    Resultat EliminarServeiLloc(FitxaLloc &lloc, FitxaServeiLloc &s);

    // Compares the planned minutes with what the services of `nomLloc` need for the chosen
    // resource and, when they differ, offers the services' figure. True when it was taken.
    bool preguntaMinuts(FitxaLloc &f, const QString &nomLloc);

private:
    int duradaDia() const;
    bool existeix(const QString &nom);
    // The checks that add and save share, each showing its message; false stops the action.
    bool nomAcceptat(const FitxaLloc &f);
    bool periodicitatAcceptada(FitxaLloc &f);
    bool minutsDinsDelDia(int minuts);
    bool quotaAcceptada(FitxaLloc &f);
    void escriu(const FitxaLloc &f, bool nou);

    Sessio &m_sessio;
    Interaccio &m_io;
};
