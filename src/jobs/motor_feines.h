#pragma once
// The job engine: the only code that creates, changes, deletes and finds jobs, and the small
// lookups and duration rules those operations rest on.
//
// The four job operations report through the record's `missatge` ("" = success) and never throw:
// a database or run-time failure becomes "Error en <operation>:" + its text. Each one runs in a
// single transaction, so a refusal or a failure leaves the database as it was. The lookups let a
// database error through to their caller, who reports it.

#include "feina.h"

#include <QDate>
#include <QString>

class Db;
struct Configuracio;

class MotorFeines {
public:
    MotorFeines(Db &db, const Configuracio &cfg);

    // Creates a job for llocs_nom / feines_data / feines_hora_inici (and recursos_nom, or else
    // the place's default resource). A busy resource refuses the job when `estricte`, otherwise
    // the job is stored unassigned.
    void Grava_Feina(Feina &f, bool estricte);
    // Rewrites the job feines_id with every field of the record (an empty end is recomputed).
    void Modifica_Feina(Feina &f);
    // Deletes a job that is not done; the record receives the deleted row.
    void Borra_Feina(Feina &f);
    // Puts back a job that an undo or redo brings back, under its own id and with the record's
    // fields (done flag and invoice date included): the place must exist and the place, the
    // resource and a group's members must be free, as for a change. The caller writes its lines.
    void Restaura_Feina(Feina &f);
    // The job of `lloc` covering `minut` on `dia` for `recurs` (directly or through a group), or
    // the unassigned one when `recurs` is "".
    void Busca_Feina(Feina &f, const QDate &dia, const QString &minut, const QString &lloc,
                     const QString &recurs);

    qint32 Color_Recurs(const QString &recurs); // ColorFinestra on a miss
    bool Assigna_Temps_Recurs(const QString &recurs);
    QString Recurs_Per_Color(qint32 color);
    double Preu_Servei(const QString &servei);
    QString Unitat_Servei(const QString &servei);
    QString Descripcio_Servei(const QString &servei, const QString &lloc);
    int Components_Assigna_Temps(const QString &recurs);
    int Minuts_Serveis_Lloc(const QString &lloc, int n);
    QString Hora_Fi_Feina(const Feina &f);

    // The day against which "a future job cannot be done" is judged; the real date unless set.
    void setAvui(const QDate &avui) { m_avui = avui; }

private:
    QDate avui() const;
    void grava(Feina &f, bool estricte);
    void modifica(Feina &f);
    void borra(Feina &f);
    void restaura(Feina &f);
    // The refusal of a change that would take the place or the resource (or a member of the
    // group) from another job; "" when the slot is free.
    QString comprovaSolapaments(const Feina &f, int excloure);
    void busca(Feina &f, const QDate &dia, const QString &minut, const QString &lloc, const QString &recurs);

    bool solapamentLloc(const Feina &f, int excloure);
    bool solapamentRecurs(const QString &recurs, const Feina &f, int excloure);
    QStringList membres(const QString &grup);
    int arrodoneixCella(int total) const;

    Db &m_db;
    const Configuracio &m_cfg;
    QDate m_avui;
};
