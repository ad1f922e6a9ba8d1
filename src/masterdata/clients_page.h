#pragma once
// The clients tab: clients and their form, the chosen client's vouchers, and below them the
// client's places with their services (LlocsWidget). The rules live in GestioClients,
// GestioLlocs and GestioXecs; the page moves values between fields and them and refills lists.

#include "clients.h"
#include "xecs_client.h"
#include "widgets/pagina_principal.h"

#include <QWidget>

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class Interaccio;
class LlocsWidget;
class RecursosServeisPage;
class Sessio;

class ClientsPage : public QWidget, public PaginaPrincipal {
    Q_OBJECT
public:
    ClientsPage(Sessio &sessio, Interaccio &io, QWidget *parent = nullptr);

    LlocsWidget *llocs() const { return m_llocs; }
    QString clientActual() const { return m_nomClientAnt; }

    // Without a voucher service the voucher box and the voucher area are hidden.
    void configuraXecs(bool actius, const QString &servei) override;

public slots:
    // Refills every list of the page from the database (start-up, or after outside changes).
    void reconstrueix() override;
    void recarregaRecursos();
    void recarregaServeis();
    // The jump from the agenda: selects the place with its client and asks to be shown.
    bool obreLloc(const QString &lloc);
    // Refills the chosen client's vouchers (billing settles and deletes them too).
    void Carrega_Xecs_Client();

signals:
    void clientsCanviats(); // the client lists elsewhere (billing) must be refilled
    void llocsCanviats();   // the place lists elsewhere (agenda) must be refilled
    void xecsCanviats();
    void mostraPagina();    // the page wants its tab brought to the front

private:
    void construeix();
    void ordreTabulacio();
    void recarregaClients(const QString &seleccionar);
    bool seleccionaClient(const QString &client);
    void enClientTriat();
    FitxaClient fitxa() const;
    void mostra(const FitxaClient &f);

    void afegirClient();
    void modificarClient();
    void eliminarClient();

    void enXecTriat();
    FitxaXec fitxaXec() const;
    void mostraXec(const FitxaXec &f);
    void afegirXec();
    void modificarXec();
    void eliminarXec();

    Sessio &m_sessio;
    Interaccio &m_io;
    GestioClients m_clients;
    GestioXecs m_xecs;
    QString m_nomClientAnt;

    QListWidget *m_llista;
    QLineEdit *m_nom, *m_nif, *m_adreca, *m_codiPostal, *m_poblacio, *m_telefons, *m_email, *m_ccc, *m_dataAlta;
    QCheckBox *m_xecsClient;
    QGroupBox *m_grupFitxa;
    class QGridLayout *m_graella;
    class QSplitter *m_separador;
    QPlainTextEdit *m_observacions;
    QPushButton *m_afegir, *m_modificar, *m_eliminar;

    QGroupBox *m_grupXecs;
    QListWidget *m_llistaXecs;
    QLineEdit *m_idXec, *m_valorXec, *m_dataEntrega, *m_dataLiquidat, *m_idFeina;
    QPushButton *m_afegirXec, *m_modificarXec, *m_eliminarXec;

    LlocsWidget *m_llocs;
};

// Wires the two master-data pages together: a change of resources or services refills the
// place form's lists.
void connectaPaginesMestres(ClientsPage &clients, RecursosServeisPage &recursos);
