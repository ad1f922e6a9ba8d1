#pragma once
// Periodic planning: every place with a rhythm gets its jobs for a period without anybody typing
// them. Jobs are created through the job engine like any other (a busy worker leaves the job
// unassigned), and every step is written to a log sink as it happens, because a long run must show
// its progress and a refused job must be visible to the office.

#include "planificacio_regles.h"

#include <QDate>
#include <QList>
#include <QString>
#include <functional>

class Db;
class MotorFeines;
struct Feina;
class RegistreSortida;
struct Configuracio;

// One job of a run: what the rhythm gives (place, day, start and the closed days it was moved
// over) and what the job engine made of it.
struct FeinaPlanificada {
    enum class Resultat {
        Ok,          // stored with its resource
        SenseRecurs, // stored unassigned (the resource was busy, or the place has none)
        Refusada,    // not stored: missatge says why
    };
    QString llocs_nom;
    QDate feines_data;
    QString feines_hora_inici;
    QList<QDate> festius;
    Resultat resultat = Resultat::Ok;
    QString recursos_nom;
    QString missatge;
    int feines_id = 0; // 0 in a preview
};

// What a run over a period would create, in the order it would store it.
struct PrevisioPlanificacio {
    QDate desde;
    QDate fins;
    QList<FeinaPlanificada> feines;
    QString error; // "Error en Planificar_Feines:" + text when the preview could not be made
    int compte(FeinaPlanificada::Resultat r) const;
};

class Planificador {
public:
    Planificador(Db &db, const Configuracio &cfg, MotorFeines &motor, RegistreSortida &registre);

    // Plans every place whose llocs_periodicitat_dies > 0 for the days F..L. Returns "" when the
    // run finished, or "Error en Planificar_Feines:" + the error that stopped it. A job the engine
    // refuses is logged and skipped; what was stored before an error stays stored.
    QString Planificar_Feines(const QDate &F, const QDate &L);

    // The same run without writing anything: every job goes through the job engine inside a
    // transaction that is rolled back, so a worker taken by an earlier job of the run is busy for
    // the later ones exactly as in the run. Nothing is logged.
    PrevisioPlanificacio Previsualitza(const QDate &F, const QDate &L);

    // Stores the jobs of a preview, in its order, with the log of a run over its period. Returns
    // what Planificar_Feines returns.
    QString Genera(const PrevisioPlanificacio &previsio);

    // Plans only this place from now on ("" = every place with a rhythm).
    void setNomesLloc(const QString &lloc) { m_nomesLloc = lloc; }

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

    QList<FeinaPlanificada> calcula(const QDate &F, const QDate &L);
    QString executa(const QDate &F, const QDate &L, const std::function<QList<FeinaPlanificada>()> &feines);
    void grava(QList<FeinaPlanificada> &feines);
    void grava(FeinaPlanificada &f);
    QString textFestius(const QList<QDate> &festius) const;

    QList<Lloc> llegeixLlocs();
    QDate darreraFeina(const QString &lloc);

    Db &m_db;
    const Configuracio &m_cfg;
    MotorFeines &m_motor;
    RegistreSortida &m_registre;
    DiesTancats m_tancats;
    QString m_nomesLloc;
    bool m_silenci = false; // a preview: the engine's answers are kept, nothing is logged
    int m_comptador = 0;
    int m_feinesPerTransaccio = kFeinesPerTransaccio;

public:
    static constexpr int kFeinesPerTransaccio = 2000;
};
