#pragma once
// The vouchers a client hands in, as kept on the clients tab: the list (newest number first,
// settled ones marked with their settled day), and add / change value / delete. Numbers are the
// user's own and unique over all clients.

#include "resultat.h"

#include <QDate>
#include <QString>
#include <QStringList>

class Sessio;
class Interaccio;

// The values of the voucher fields, as typed or shown.
struct FitxaXec {
    QString id;           // IdXec
    QString valor;        // ValorXec
    QString dataEntrega;  // shown only
    QString dataLiquidat; // shown only; "" while free
    QString idFeina;      // shown only; "" while free
};

class GestioXecs {
public:
    GestioXecs(Sessio &sessio, Interaccio &io);

    // The list items of a client's vouchers, all of the same length: the number, then the list
    // mark and the settled day, or as many blanks while the voucher is free.
    QStringList Carrega_Xecs_Client(const QString &client);
    // The voucher number an item of that list shows; 0 when it shows none.
    qint64 numeroItem(const QString &item) const;
    // The empty fields with the default value offered for a new voucher.
    FitxaXec fitxaBuida() const;
    bool carrega(qint64 id, FitxaXec &f);

    Resultat AfegirXec(const QString &client, FitxaXec &f);
    Resultat ModificarXec(FitxaXec &f);
    Resultat EliminarXec(FitxaXec &f);

    void setAvui(const QDate &avui) { m_avui = avui; }

private:
    int ampladaCua() const;
    // Checks shared by add and change: the number (rewritten as a whole number) and the value.
    bool camps(FitxaXec &f, qint64 *id, double *valor);

    Sessio &m_sessio;
    Interaccio &m_io;
    QDate m_avui;
};
