#pragma once
// Re-planning one place whose rhythm, hour or weekday changed: its jobs after today that are not
// done give way to what the new rhythm creates up to the last planned day. The preview shows
// both lists before anything is written; confirming deletes and creates in one transaction.

#include "feina.h"
#include "planificacio.h"

#include <QList>

class Db;
class MotorFeines;
struct Configuracio;

struct PrevisioReplanificacio {
    QString lloc;
    QList<Feina> esborrades;    // by date and start
    PrevisioPlanificacio noves; // desde = the day after today, fins = the last planned day
    QString error;              // "Error en Replanifica_Lloc:" + text when it could not be made
    bool buida() const { return esborrades.isEmpty() && noves.feines.isEmpty(); }
};

class Replanificador {
public:
    Replanificador(Db &db, const Configuracio &cfg, MotorFeines &motor, RegistreSortida &registre);

    // Writes nothing.
    PrevisioReplanificacio Previsualitza(const QString &lloc, const QDate &avui);
    // Deletes the jobs of the preview and creates its new ones, all or nothing. Returns "" when
    // done, else why nothing was changed (a job deleted or done meanwhile, a database error).
    QString Replanifica_Lloc(const PrevisioReplanificacio &previsio);

private:
    QList<Feina> futures(const QString &lloc, const QDate &avui);

    Db &m_db;
    const Configuracio &m_cfg;
    MotorFeines &m_motor;
    Planificador m_planificador;
};
