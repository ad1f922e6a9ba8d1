#pragma once
// What a page of the main window offers the frame around it. The agenda and billing pages are
// rebuilt lazily: a change elsewhere raises RefrescarAgenda or RefrescarFacturacio, and the frame
// calls reconstrueix() the next time the tab is shown (then clears the flag).

#include <QString>

class PaginaPrincipal {
public:
    virtual ~PaginaPrincipal() = default;

    // Rebuild the page from the database.
    virtual void reconstrueix() = 0;

    // Called once when the page is plugged in: `actius` is false when no service is paid with
    // vouchers (ServeiXecs empty), and the page then hides every voucher control; with layouts,
    // what lies below them moves up and the grids grow into the space. `servei` names the
    // voucher service for the vouchers label.
    virtual void configuraXecs(bool actius, const QString &servei)
    {
        Q_UNUSED(actius);
        Q_UNUSED(servei);
    }
};
