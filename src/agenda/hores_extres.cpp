#include "hores_extres.h"

#include "agenda_model.h"
#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"

void Grava_Hores_Fetes(Db &db, double quantitat, const QString &recurs, const QDate &dia)
{
    Transaction t(db);
    Query q = db.prepared(QStringLiteral("SELECT hores_quantitat FROM Hores_Fetes WHERE recursos_nom = ? AND hores_data = ?"));
    q.bind(recurs).bind(dia).exec();
    const bool existeix = q.next();
    if (!existeix) {
        if (quantitat != 0.0) {
            db.prepared(QStringLiteral("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES (?, ?, ?)"))
                .bind(recurs).bind(dia).bind(quantitat).exec();
        }
    } else if (quantitat == 0.0) {
        db.prepared(QStringLiteral("DELETE FROM Hores_Fetes WHERE recursos_nom = ? AND hores_data = ?"))
            .bind(recurs).bind(dia).exec();
    } else {
        db.prepared(QStringLiteral("UPDATE Hores_Fetes SET hores_quantitat = ? WHERE recursos_nom = ? AND hores_data = ?"))
            .bind(quantitat).bind(recurs).bind(dia).exec();
    }
    t.commit();
}

double Hores_Fetes(Db &db, const QString &recurs, const QDate &dia)
{
    Query q = db.prepared(QStringLiteral("SELECT hores_quantitat FROM Hores_Fetes WHERE recursos_nom = ? AND hores_data = ?"));
    q.bind(recurs).bind(dia).exec();
    return q.next() ? q.real(0) : 0.0;
}

double Calcula_Hores_Extres(const QList<FranjaHores> &franges, const Configuracio &cfg, const QDate &dia)
{
    int treballats = 0;
    int pendents = 0;
    bool vist = false;
    for (const FranjaHores &f : franges) {
        if (f.ocupada) {
            // A slot counts whole, however little of it the job takes.
            treballats += cfg.MinutsCella + pendents;
            pendents = 0;
            vist = true;
        } else if (!cfg.CalculxHores && vist
                   && (f.etiqueta < cfg.HoraIniciDinar || !(f.etiqueta < cfg.HoraFinalDinar))) {
            // A gap only counts once a later job closes it, hence pending.
            pendents += cfg.MinutsCella;
        }
    }
    const double hores = treballats / 60.0;
    const int dow = dia.dayOfWeek();
    const bool capDeSetmana = (cfg.DissabtesExtra && dow == Qt::Saturday) || (cfg.DiumengesExtra && dow == Qt::Sunday);
    const double resultat = capDeSetmana ? hores : hores - cfg.HoresDia;
    return resultat < 0.0 ? 0.0 : resultat;
}

double Calcula_Hores_Extres(const ModelAgenda &model, int columna, const Configuracio &cfg, const QDate &dia)
{
    QList<FranjaHores> franges;
    if (columna >= 1 && columna < model.columnes()) {
        for (int r = 1; r < model.files(); ++r)
            franges.append({model.horaFila(r), !model.text(r, columna).isEmpty()});
    }
    return Calcula_Hores_Extres(franges, cfg, dia);
}

int columnaRecurs(const ModelAgenda &model, const QString &recurs)
{
    if (recurs.isEmpty())
        return 0;
    for (int c = 1; c < model.columnes(); ++c) {
        if (model.columnaUsada(c) && model.recursColumna(c).compare(recurs, Qt::CaseInsensitive) == 0)
            return c;
    }
    return 0;
}

int Borra_hores_extres_erronies(Db &db, int mes, int any)
{
    const QDate primer(any, mes, 1);
    if (!primer.isValid())
        return -1;
    const QDate seguent = primer.addMonths(1);
    Transaction t(db);
    // An entry stands when its worker has a job that day, on its own or as a member of the group
    // doing it.
    Query q = db.query(QStringLiteral(
        "DELETE FROM Hores_Fetes WHERE hores_data >= ? AND hores_data < ? AND NOT EXISTS ("
        " SELECT 1 FROM Feines LEFT JOIN Recursos_Components ON Feines.recursos_nom = Recursos_Components.recursos_nom"
        " WHERE Feines.feines_data = Hores_Fetes.hores_data"
        " AND Hores_Fetes.recursos_nom = COALESCE(Recursos_Components.recursos_component_nom, Feines.recursos_nom))"));
    q.bind(primer).bind(seguent).exec();
    const int esborrades = q.rowsAffected();
    t.commit();
    return esborrades;
}

int Borra_hores_extres_erronies(Db &db, const QString &mes)
{
    const QDate primer = format::llegeixMes(mes);
    if (!primer.isValid())
        return -1;
    return Borra_hores_extres_erronies(db, primer.month(), primer.year());
}

QString textHores(const QString &entrada)
{
    double v = 0.0;
    if (!format::llegeixReal(entrada, &v))
        return format::import(0.0);
    return format::import(v);
}

double valorHores(const QString &textCella)
{
    double v = 0.0;
    return format::llegeixReal(textCella, &v) ? v : 0.0;
}
