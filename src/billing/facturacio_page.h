#pragma once
// The billing tab: the month (mesFactura), the client (ClientsCombo, Delete clears it), the
// pending-only switch (PdtFacturar), the job sheet (FacturaGrid) and the voucher sheet
// (XecsGrid), the totals, the payment on account (TotalPagaments) and the buttons. With a client
// the tab bills that client's month; without one it shows the vouchers every client settled in
// the month. Everything it shows comes from the billing engine and everything it does is a call
// of the billing controller; the page only moves texts and keys between them.

#include "controlador_facturacio.h"
#include "widgets/pagina_principal.h"

#include <QWidget>
#include <functional>

class GraellaFacturacioWidget;
class Interaccio;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class Sessio;

class FacturacioPage : public QWidget, public PaginaPrincipal {
    Q_OBJECT
public:
    FacturacioPage(Sessio &sessio, Interaccio &ui, QWidget *parent = nullptr, const QDate &avui = QDate());
    ~FacturacioPage() override;

    ControladorFacturacio &controlador() { return m_ctl; }

    void reconstrueix() override;
    void configuraXecs(bool actius, const QString &servei) override;

    // Reports started from the tab: each button is enabled when its mode allows it and its report
    // is plugged in here; until then it stays disabled and says why.
    std::function<void(const QString &mes)> imprimeixResum; // "Imprimir dades facturació", no client
    std::function<void(const QString &mes)> imprimeixXecs;  // "Imprimir xecs liquidats"
    std::function<void(const QString &mes)> imprimeixHores; // "Imprimir hores extra"
    // Re-evaluates the buttons after the hooks above were set.
    void actualitzaMode();

    QLineEdit *mesFactura;
    QComboBox *ClientsCombo;
    QCheckBox *PdtFacturar;
    GraellaFacturacioWidget *FacturaGrid;
    GraellaFacturacioWidget *XecsGrid;
    QGroupBox *TramaXecs;
    QLineEdit *TotalServeis;
    QLineEdit *TotalNXecs;
    QLineEdit *TotalXecs;
    QLineEdit *TotalPagaments;
    QLineEdit *TotalFacturar;
    QLabel *lblTotalServeis;
    QLabel *lblTotalXecs;
    QLabel *lblTotalPagaments;
    QLabel *lblTotalFacturar;
    QPushButton *ImprimirFacturacio;
    QPushButton *ImprimirXecs;
    QPushButton *ImprimirHores;

public slots:
    // Refills the client selector (clients added, renamed or deleted on the clients tab); a
    // chosen client that is gone leaves the tab in the all-clients mode.
    void recarregaClients();

protected:
    bool eventFilter(QObject *obj, QEvent *e) override;

private:
    void construeixControls();
    void distribueix();
    void connecta();
    void ordreTabulacio();
    bool ompleClients(); // false when the chosen client is no longer there
    void surtMes();
    void surtPagament();
    void triaClient();
    void facturar();
    void accio(const std::function<void()> &f);
    void mostra();

    Sessio &m_sessio;
    Interaccio &m_ui;
    ControladorFacturacio m_ctl;
    bool m_xecsActius = true;
    bool m_omplintClients = false;
    bool m_validant = false;
    QList<QWidget *> m_filesClient;  // shown only with a client (services, payments, to pay)
    QList<QWidget *> m_filaXecs;     // the vouchers total
};
