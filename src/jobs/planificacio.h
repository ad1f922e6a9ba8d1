#pragma once
// Periodic planning: every place with a rhythm gets its jobs for a period without anybody typing
// them. Jobs are created through the job engine like any other (a busy worker leaves the job
// unassigned), and every step is written to a log sink as it happens, because a long run must show
// its progress and a refused job must be visible to the office.

#include "planificacio_regles.h"

#include <QDate>
#include <QList>
#include <QString>

class Db;
class MotorFeines;
class RegistreSortida;
struct Configuracio;

class Planificador {
public:
    Planificador(Db &db, const Configuracio &cfg, MotorFeines &motor, RegistreSortida &registre);

    // Plans every place whose llocs_periodicitat_dies > 0 for the days F..L. Returns "" when the
    // run finished, or "Error en Planificar_Feines:" + the error that stopped it. A job the engine
    // refuses is logged and skipped; what was stored before an error stays stored.
    QString Planificar_Feines(const QDate &F, const QDate &L);

    // Jobs stored by the last run.
    int feinesPlanificades() const { return m_comptador; }

    // The unit of work: the run commits after the place in hand once at least this many jobs
    // wait to be committed (1: after every place). A stopped run commits what it stored too.
    void setFeinesPerTransaccio(int n) { m_feinesPerTransaccio = n < 1 ? 1 : n; }
    int feinesPerTransaccio() const { return m_feinesPerTransaccio; }

private:
    struct Lloc {
        QString nom;
        RitmeLloc ritme;
        QString hora; // llocs_hora; "" means the agenda's start
    };

    QList<Lloc> llegeixLlocs();
    QDate darreraFeina(const QString &lloc);
    void planificaLlocs(const QList<Lloc> &llocs, const QDate &F, const QDate &L);
    void planificaLloc(const Lloc &lloc, const QDate &F, const QDate &L);
    void creaFeina(const Lloc &lloc, const QDate &dia);

    Db &m_db;
    const Configuracio &m_cfg;
    MotorFeines &m_motor;
    RegistreSortida &m_registre;
    int m_comptador = 0;
    int m_feinesPerTransaccio = kFeinesPerTransaccio;

public:
    static constexpr int kFeinesPerTransaccio = 2000;
};
