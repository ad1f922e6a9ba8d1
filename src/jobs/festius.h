#pragma once
// Closed days: public holidays and the company's own closing days, one row per date. The planning
// steps over them as it steps over a Sunday, and the agenda marks them. Calendars published as
// iCalendar files are imported whole.

#include <QDate>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class Db;

struct Festiu {
    QDate data;
    QString descripcio;
};

// What an import did: the days stored and, one line each, what it left out and why.
struct ResultatImportacio {
    int afegits = 0;
    QStringList avisos;
    QString error; // "" unless the file could not be read or the database failed (nothing stored)
};

class Festius {
public:
    explicit Festius(Db &db);

    // The closed days in date order; of one year when `any` > 0.
    QList<Festiu> llista(int any = 0);
    // Every closed day, date -> description.
    QMap<QDate, QString> mapa();
    // The closed days from F to L inclusive, date -> description.
    QMap<QDate, QString> entre(const QDate &F, const QDate &L);

    // Stores a closed day. Returns "" when stored, else why not (translated), or
    // "Error en Afegeix_Festiu:" + the database's text.
    QString Afegeix_Festiu(const QDate &data, const QString &descripcio);
    // Removes a closed day; "" when removed, else why not.
    QString Esborra_Festiu(const QDate &data);
    // Stores the all-day events of an iCalendar file in one transaction. A date already closed
    // (in the table or earlier in the file) is skipped and reported, and so is a timed event: an
    // appointment with an hour is not a closed day.
    ResultatImportacio Importa_Festius(const QString &fitxer);

private:
    Db &m_db;
};
