#pragma once
// Clients: the list, loading one into the form, and add / save / delete with their checks.
// A client either pays by vouchers or has places with a monthly fee, never both; this side of
// the rule is checked when the voucher box is saved. A rename travels to every row that holds
// the name (core/referencies) in the same transaction, and a client still named anywhere is not
// deleted.

#include "resultat.h"

#include <QDate>
#include <QString>
#include <QStringList>

class Sessio;
class Interaccio;

// The values of the client form, as typed.
struct FitxaClient {
    QString nom;    // NomClient
    QString nomAnt; // NomClientANT: the name the displayed client is stored under
    QString nif;
    QString adreca;
    QString poblacio;
    QString codiPostal;
    QString telefons;
    QString ccc;
    QString email;
    QString dataAlta; // dd/mm/yyyy; "" stores no date
    bool xecs = false;
    QString observacions;
};

class GestioClients {
public:
    GestioClients(Sessio &sessio, Interaccio &io);

    QStringList noms(); // every client, by name
    // Fills the form from the stored client; false when there is none by that name.
    bool carrega(const QString &nom, FitxaClient &f);
    bool teXecs(const QString &nom); // the stored voucher flag

    Resultat AfegirClient(FitxaClient &f);
    Resultat ModificarClient(FitxaClient &f);
    Resultat EliminarClient(FitxaClient &f);

    // The registration date of a new client; today unless set (tests).
    void setAvui(const QDate &avui) { m_avui = avui; }

private:
    QDate avui() const { return m_avui.isValid() ? m_avui : QDate::currentDate(); }
    bool existeix(const QString &nom);

    Sessio &m_sessio;
    Interaccio &m_io;
    QDate m_avui;
};
