#pragma once
// What the billing tab does, without a widget: the month field's check, the client choice and its
// two modes (one client, or every client's settled vouchers), the pending-only switch, the payment
// field, the job actions started from a line of the job sheet, the Delete key on a voucher row and
// the commit. The page turns its events into these calls and draws the Facturacio sheets after
// each one.
//
// Changes made here raise RefrescarAgenda (jobs deleted or changed) and ask the clients tab to
// refill its voucher list (recarregaXecs) whenever vouchers may have changed. A job changed from
// the sheets without a rebuild (Space, Enter) raises RefrescarFacturacio: the sheets are stale,
// and the commit rebuilds them before it writes anything.

#include "facturacio.h"
#include "masterdata/xecs_client.h"
#include "jobs/feina.h"
#include "jobs/motor_feines.h"

#include <QDate>
#include <QString>
#include <functional>

class Interaccio;
class Sessio;

class ControladorFacturacio {
public:
    enum class Tecla { Suprimir, Espai, Intro };

    ControladorFacturacio(Sessio &sessio, Interaccio &io);

    Facturacio &facturacio() { return m_facturacio; }
    const Facturacio &facturacio() const { return m_facturacio; }
    MotorFeines &motor() { return m_motor; }

    // ---- hooks the page (or a test) sets
    // Opens the job editor on the record; it sets missatge to "OK" when the user stored a change.
    std::function<void(Feina &)> obreEditor;
    // The clients tab must refill the chosen client's vouchers.
    std::function<void()> recarregaXecs;
    // The invoice data of the month just billed, printed from the rebuilt sheets once the commit
    // is written (unset: the commit ends with the rebuild).
    std::function<void(const Facturacio &)> imprimeixFactura;

    // ---- the fields as the tab shows them
    QString mes() const { return m_mes; }
    QString client() const { return m_client; }
    bool pendents() const { return m_pendents; }
    QString pagament() const { return m_pagament; }
    bool ambClient() const { return !m_client.isEmpty(); }
    // How many times the sheets have been built (a field left unchanged builds nothing).
    int construccions() const { return m_construccions; }
    // The caption of the commit button: "Facturar client", or "Imprimir dades facturació" (the
    // monthly summary) without a client.
    QString textBotoFacturar() const;

    // "Today" for the current month and the billing date; the real date unless set.
    void setAvui(const QDate &avui);
    QDate avui() const { return m_avui.isValid() ? m_avui : QDate::currentDate(); }

    // ---- the month field
    // Entering the field: the text it should show (the current month when it is empty).
    QString entraMes(const QString &text) const;
    // Leaving it: false after the "Mes erroni" message (the field keeps the text and the focus).
    // Otherwise `text` becomes the month as accepted and, when it differs from the month of the
    // last build, the payment is read again and the sheets rebuilt.
    bool surtMes(QString &text);

    // ---- the client and the switch
    // "" = no client: every client's settled vouchers.
    void triaClient(const QString &client);
    void canviaPendents(bool pendents);

    // ---- the payment field
    // Stores the payment and shows what is stored; the total to pay follows without a rebuild.
    // False, with a message and nothing stored, when the text is not an amount.
    bool surtPagament(const QString &text);

    // ---- rebuilding
    // The sheets again with the current fields (clears RefrescarFacturacio).
    void construeix();
    // A rebuild asked from outside: the payment is read again first (it may have been changed
    // from elsewhere).
    void reconstrueix();

    // ---- actions on the sheets
    // A key on row `fila` of the job sheet; only line rows react.
    void teclaFeina(int fila, Tecla t);
    // A double click on row `fila`: the job editor, and a rebuild after a stored change.
    void dobleClicFeina(int fila);
    // The Delete key on row `fila` of the voucher sheet.
    void suprimeixXec(int fila);
    // "Facturar client": the commit of the month shown. True when it was written.
    bool factura();

private:
    bool carregaSeleccionada(int fila);
    bool obreEditorSeleccionada();
    void llegeixPagament();
    void xecsCanviats();

    Sessio &m_sessio;
    Interaccio &m_io;
    Facturacio m_facturacio;
    MotorFeines m_motor;
    GestioXecs m_xecs;
    QDate m_avui;

    QString m_mes;     // the month of the last build ("" before the first)
    QString m_client;
    bool m_pendents = false;
    QString m_pagament;
    int m_construccions = 0;

public:
    // The job a key or a double click acts on; cleared afterwards.
    Feina FeinaSeleccionada;
};
