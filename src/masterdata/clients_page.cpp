#include "clients_page.h"

#include "formulari_widget.h"
#include "llocs_widget.h"
#include "recursos_serveis_page.h"

#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSplitter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

QLabel *etiqueta(const QString &text, QWidget *camp, QWidget *pare)
{
    auto *l = new QLabel(text, pare);
    l->setBuddy(camp);
    return l;
}

QLineEdit *campNomesLectura(const QString &nom, QWidget *pare)
{
    auto *c = new QLineEdit(pare);
    c->setObjectName(nom);
    c->setReadOnly(true);
    c->setFocusPolicy(Qt::NoFocus);
    return c;
}

} // namespace

ClientsPage::ClientsPage(Sessio &sessio, Interaccio &io, QWidget *parent)
    : QWidget(parent), m_sessio(sessio), m_io(io), m_clients(sessio, io), m_xecs(sessio, io)
{
    construeix();
    ordreTabulacio();
    configuraXecs(!m_sessio.cfg().ServeiXecs.isEmpty(), m_sessio.cfg().ServeiXecs);
    reconstrueix();
}

void ClientsPage::configuraXecs(bool actius, const QString &servei)
{
    // Without a voucher service nobody pays by vouchers: the controls would only mislead.
    m_grupXecs->setVisible(actius);
    m_xecsClient->setVisible(actius);
    // The client form takes the voucher column's place when there is none.
    m_graella->removeWidget(m_grupFitxa);
    m_graella->addWidget(m_grupFitxa, 0, 0, 1, actius ? 1 : 2);
    m_grupXecs->setTitle(Tradueix("Xecs") + QStringLiteral(": ") + servei);
}

void ClientsPage::construeix()
{
    // Client list
    auto *grupLlista = new QGroupBox(Tradueix("Clients"), this);
    m_llista = new QListWidget(grupLlista);
    m_llista->setObjectName(QStringLiteral("ClientsLlista"));
    (new QVBoxLayout(grupLlista))->addWidget(m_llista);

    // Client form
    auto *grupFitxa = m_grupFitxa = new QGroupBox(Tradueix("Dades del client"), this);
    m_nom = formulari::camp(QStringLiteral("NomClient"), grupFitxa, 50);
    m_nif = formulari::camp(QStringLiteral("NIFClient"), grupFitxa, 20);
    m_adreca = formulari::camp(QStringLiteral("AdrecaClient"), grupFitxa, 100);
    m_codiPostal = formulari::camp(QStringLiteral("CodiPostalClient"), grupFitxa, 10);
    m_poblacio = formulari::camp(QStringLiteral("PoblacioClient"), grupFitxa, 50);
    m_telefons = formulari::camp(QStringLiteral("TelefonsClient"), grupFitxa, 50);
    m_email = formulari::camp(QStringLiteral("EmailClient"), grupFitxa, 100);
    m_ccc = formulari::camp(QStringLiteral("CccClient"), grupFitxa, 34);
    m_dataAlta = formulari::camp(QStringLiteral("DataAltaClient"), grupFitxa, 10);
    m_dataAlta->setPlaceholderText(Tradueix("dd/mm/aaaa"));
    m_xecsClient = new QCheckBox(Tradueix("Paga amb xecs"), grupFitxa);
    m_xecsClient->setObjectName(QStringLiteral("XecsClient"));
    m_observacions = new QPlainTextEdit(grupFitxa);
    m_observacions->setObjectName(QStringLiteral("ObservacionsClient"));
    m_observacions->setTabChangesFocus(true);
    m_observacions->setMaximumHeight(64);
    m_afegir = formulari::boto(Tradueix("Afegir"), QStringLiteral("AfegirClient"), grupFitxa);
    m_modificar = formulari::boto(Tradueix("Modificar"), QStringLiteral("ModificarClient"), grupFitxa);
    m_eliminar = formulari::boto(Tradueix("Eliminar"), QStringLiteral("EliminarClient"), grupFitxa);

    auto *g = new QGridLayout(grupFitxa);
    g->addWidget(etiqueta(Tradueix("Nom"), m_nom, grupFitxa), 0, 0);
    g->addWidget(m_nom, 0, 1, 1, 3);
    g->addWidget(etiqueta(Tradueix("NIF"), m_nif, grupFitxa), 1, 0);
    g->addWidget(m_nif, 1, 1);
    g->addWidget(etiqueta(Tradueix("Data alta"), m_dataAlta, grupFitxa), 1, 2);
    g->addWidget(m_dataAlta, 1, 3);
    g->addWidget(etiqueta(Tradueix("Adreça"), m_adreca, grupFitxa), 2, 0);
    g->addWidget(m_adreca, 2, 1, 1, 3);
    g->addWidget(etiqueta(Tradueix("Codi postal"), m_codiPostal, grupFitxa), 3, 0);
    g->addWidget(m_codiPostal, 3, 1);
    g->addWidget(etiqueta(Tradueix("Població"), m_poblacio, grupFitxa), 3, 2);
    g->addWidget(m_poblacio, 3, 3);
    g->addWidget(etiqueta(Tradueix("Telèfons"), m_telefons, grupFitxa), 4, 0);
    g->addWidget(m_telefons, 4, 1);
    g->addWidget(etiqueta(Tradueix("E-mail"), m_email, grupFitxa), 4, 2);
    g->addWidget(m_email, 4, 3);
    g->addWidget(etiqueta(Tradueix("CCC"), m_ccc, grupFitxa), 5, 0);
    g->addWidget(m_ccc, 5, 1);
    g->addWidget(m_xecsClient, 5, 2, 1, 2);
    g->addWidget(etiqueta(Tradueix("Observacions"), m_observacions, grupFitxa), 6, 0, Qt::AlignTop);
    g->addWidget(m_observacions, 6, 1, 1, 3);
    auto *botons = new QHBoxLayout;
    botons->addStretch();
    for (QPushButton *b : {m_afegir, m_modificar, m_eliminar})
        botons->addWidget(b);
    g->addLayout(botons, 7, 0, 1, 4);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(3, 1);

    // Vouchers
    m_grupXecs = new QGroupBox(this);
    m_grupXecs->setObjectName(QStringLiteral("GrupXecs"));
    m_llistaXecs = new QListWidget(m_grupXecs);
    m_llistaXecs->setObjectName(QStringLiteral("XecsLlista"));
    // Items are padded to one length; a fixed-width font keeps the marks in a column.
    m_llistaXecs->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_idXec = formulari::camp(QStringLiteral("IdXec"), m_grupXecs, 10);
    m_valorXec = formulari::camp(QStringLiteral("ValorXec"), m_grupXecs, 12);
    m_idXec->setAlignment(Qt::AlignRight);
    m_valorXec->setAlignment(Qt::AlignRight);
    m_dataEntrega = campNomesLectura(QStringLiteral("DataEntregaXec"), m_grupXecs);
    m_dataLiquidat = campNomesLectura(QStringLiteral("DataLiquidatXec"), m_grupXecs);
    m_idFeina = campNomesLectura(QStringLiteral("IdFeinaXec"), m_grupXecs);
    m_afegirXec = formulari::boto(Tradueix("Afegir"), QStringLiteral("AfegirXec"), m_grupXecs);
    m_modificarXec = formulari::boto(Tradueix("Modificar"), QStringLiteral("ModificarXec"), m_grupXecs);
    m_eliminarXec = formulari::boto(Tradueix("Eliminar"), QStringLiteral("EliminarXec"), m_grupXecs);

    auto *gx = new QGridLayout(m_grupXecs);
    gx->addWidget(m_llistaXecs, 0, 0, 6, 1);
    gx->addWidget(etiqueta(Tradueix("Nro. de Xec"), m_idXec, m_grupXecs), 0, 1);
    gx->addWidget(m_idXec, 0, 2);
    gx->addWidget(etiqueta(Tradueix("Valor"), m_valorXec, m_grupXecs), 1, 1);
    gx->addWidget(m_valorXec, 1, 2);
    gx->addWidget(etiqueta(Tradueix("Data entr."), m_dataEntrega, m_grupXecs), 2, 1);
    gx->addWidget(m_dataEntrega, 2, 2);
    gx->addWidget(etiqueta(Tradueix("Data liq."), m_dataLiquidat, m_grupXecs), 3, 1);
    gx->addWidget(m_dataLiquidat, 3, 2);
    gx->addWidget(etiqueta(Tradueix("Feina"), m_idFeina, m_grupXecs), 4, 1);
    gx->addWidget(m_idFeina, 4, 2);
    auto *bx = new QHBoxLayout;
    bx->addStretch();
    for (QPushButton *b : {m_afegirXec, m_modificarXec, m_eliminarXec})
        bx->addWidget(b);
    gx->addLayout(bx, 6, 0, 1, 3);
    gx->setRowStretch(5, 1);
    gx->setColumnStretch(0, 3);
    gx->setColumnStretch(2, 2);

    m_llocs = new LlocsWidget(m_sessio, m_io, this);

    // The two lists on the left, clients above and places below, beside one grid of the forms,
    // so that the forms' columns line up; a splitter between them lets long names be seen whole.
    auto *llistes = new QWidget(this);
    auto *vl = new QVBoxLayout(llistes);
    vl->setContentsMargins(0, 0, 0, 0);
    vl->addWidget(grupLlista, 1);
    vl->addWidget(m_llocs->grupLlista(), 1);
    auto *fitxes = new QWidget(this);
    auto *graella = m_graella = new QGridLayout(fitxes);
    graella->setContentsMargins(0, 0, 0, 0);
    graella->addWidget(grupFitxa, 0, 0);
    graella->addWidget(m_grupXecs, 0, 1);
    graella->addWidget(m_llocs->grupFitxa(), 1, 0);
    graella->addWidget(m_llocs->grupServeis(), 1, 1);
    graella->setColumnStretch(0, 5);
    graella->setColumnStretch(1, 4);
    graella->setRowStretch(0, 1);
    graella->setRowStretch(1, 1);
    m_separador = new QSplitter(Qt::Horizontal, this);
    m_separador->setObjectName(QStringLiteral("SeparadorClients"));
    m_separador->addWidget(llistes);
    m_separador->addWidget(fitxes);
    m_separador->setStretchFactor(0, 2);
    m_separador->setStretchFactor(1, 9);
    m_separador->setChildrenCollapsible(false);
    (new QVBoxLayout(this))->addWidget(m_separador);

    // Loaded when picked, not when the list merely takes the focus (its first row then becomes
    // current unselected, and a name typed over the form would rename that client).
    connect(m_llista, &QListWidget::itemSelectionChanged, this, [this] { enClientTriat(); });
    connect(m_afegir, &QPushButton::clicked, this, &ClientsPage::afegirClient);
    connect(m_modificar, &QPushButton::clicked, this, &ClientsPage::modificarClient);
    connect(m_eliminar, &QPushButton::clicked, this, &ClientsPage::eliminarClient);
    connect(m_llistaXecs, &QListWidget::currentRowChanged, this, [this] { enXecTriat(); });
    connect(m_afegirXec, &QPushButton::clicked, this, &ClientsPage::afegirXec);
    connect(m_modificarXec, &QPushButton::clicked, this, &ClientsPage::modificarXec);
    connect(m_eliminarXec, &QPushButton::clicked, this, &ClientsPage::eliminarXec);
    connect(m_llocs, &LlocsWidget::llocsCanviats, this, &ClientsPage::llocsCanviats);
}

void ClientsPage::ordreTabulacio()
{
    const QList<QWidget *> ordre = {m_llista,   m_nom,       m_nif,          m_dataAlta,  m_adreca,     m_codiPostal,
                                    m_poblacio, m_telefons,  m_email,        m_ccc,       m_xecsClient, m_observacions,
                                    m_afegir,   m_modificar, m_eliminar,     m_llistaXecs, m_idXec,     m_valorXec,
                                    m_afegirXec, m_modificarXec, m_eliminarXec};
    for (int i = 1; i < ordre.size(); ++i)
        setTabOrder(ordre[i - 1], ordre[i]);
    setTabOrder(m_eliminarXec, m_llocs->primerCamp());
}

// ------------------------------------------------------------------ lists

void ClientsPage::reconstrueix()
{
    m_llocs->recarregaHores();
    m_llocs->recarregaRecursos();
    m_llocs->recarregaServeis();
    recarregaClients(m_nomClientAnt);
}

void ClientsPage::recarregaRecursos()
{
    m_llocs->recarregaRecursos();
}

void ClientsPage::recarregaServeis()
{
    m_llocs->recarregaServeis();
}

void ClientsPage::recarregaClients(const QString &seleccionar)
{
    {
        const QSignalBlocker b(m_llista);
        m_llista->clear();
        m_llista->addItems(m_clients.noms());
    }
    formulari::ajustaAmpleLlista(m_llista);
    if (seleccionar.isEmpty() || !seleccionaClient(seleccionar)) {
        m_llista->setCurrentRow(-1);
        enClientTriat();
    }
}

bool ClientsPage::seleccionaClient(const QString &client)
{
    for (int i = 0; i < m_llista->count(); ++i) {
        if (m_llista->item(i)->text().compare(client, Qt::CaseInsensitive) == 0) {
            const QSignalBlocker b(m_llista);
            m_llista->setCurrentRow(i);
            enClientTriat();
            return true;
        }
    }
    return false;
}

void ClientsPage::enClientTriat()
{
    QListWidgetItem *item = m_llista->selectedItems().value(0);
    FitxaClient f;
    if (item && !m_clients.carrega(item->text(), f))
        f = FitxaClient();
    mostra(f);
    m_llocs->mostraClient(m_nomClientAnt, [this] { return m_xecsClient->isChecked(); });
    Carrega_Xecs_Client();
}

FitxaClient ClientsPage::fitxa() const
{
    FitxaClient f;
    f.nom = m_nom->text();
    f.nomAnt = m_nomClientAnt;
    f.nif = m_nif->text();
    f.adreca = m_adreca->text();
    f.poblacio = m_poblacio->text();
    f.codiPostal = m_codiPostal->text();
    f.telefons = m_telefons->text();
    f.ccc = m_ccc->text();
    f.email = m_email->text();
    f.dataAlta = m_dataAlta->text();
    f.xecs = m_xecsClient->isChecked();
    f.observacions = m_observacions->toPlainText();
    return f;
}

void ClientsPage::mostra(const FitxaClient &f)
{
    m_nomClientAnt = f.nomAnt;
    m_nom->setText(f.nom);
    m_nif->setText(f.nif);
    m_adreca->setText(f.adreca);
    m_poblacio->setText(f.poblacio);
    m_codiPostal->setText(f.codiPostal);
    m_telefons->setText(f.telefons);
    m_ccc->setText(f.ccc);
    m_email->setText(f.email);
    m_dataAlta->setText(f.dataAlta);
    m_xecsClient->setChecked(f.xecs);
    m_observacions->setPlainText(f.observacions);
}

// ------------------------------------------------------------------ client actions

void ClientsPage::afegirClient()
{
    FitxaClient f = fitxa();
    const Resultat r = m_clients.AfegirClient(f);
    m_nom->setText(f.nom);
    if (r == Resultat::Fet) {
        recarregaClients(f.nom);
        emit clientsCanviats();
    }
}

void ClientsPage::modificarClient()
{
    FitxaClient f = fitxa();
    const Resultat r = m_clients.ModificarClient(f);
    m_nom->setText(f.nom);
    if (r == Resultat::Fet) {
        recarregaClients(f.nom);
        emit clientsCanviats();
    }
}

void ClientsPage::eliminarClient()
{
    FitxaClient f = fitxa();
    const Resultat r = m_clients.EliminarClient(f);
    if (r == Resultat::Fet) {
        m_nomClientAnt.clear();
        recarregaClients(QString());
        emit clientsCanviats();
    } else {
        m_nom->setText(f.nom);
    }
}

// ------------------------------------------------------------------ vouchers

void ClientsPage::Carrega_Xecs_Client()
{
    {
        const QSignalBlocker b(m_llistaXecs);
        m_llistaXecs->clear();
        if (!m_nomClientAnt.isEmpty())
            m_llistaXecs->addItems(m_xecs.Carrega_Xecs_Client(m_nomClientAnt));
    }
    mostraXec(m_xecs.fitxaBuida());
    const bool actiu = !m_nomClientAnt.isEmpty() && m_xecsClient->isChecked();
    for (QWidget *w : std::initializer_list<QWidget *>{m_llistaXecs, m_afegirXec, m_modificarXec, m_eliminarXec})
        w->setEnabled(actiu);
    m_idXec->setReadOnly(!actiu);
    m_valorXec->setReadOnly(!actiu);
}

void ClientsPage::enXecTriat()
{
    QListWidgetItem *item = m_llistaXecs->currentItem();
    if (!item)
        return;
    FitxaXec f;
    if (m_xecs.carrega(m_xecs.numeroItem(item->text()), f))
        mostraXec(f);
}

FitxaXec ClientsPage::fitxaXec() const
{
    FitxaXec f;
    f.id = m_idXec->text();
    f.valor = m_valorXec->text();
    f.dataEntrega = m_dataEntrega->text();
    f.dataLiquidat = m_dataLiquidat->text();
    f.idFeina = m_idFeina->text();
    return f;
}

void ClientsPage::mostraXec(const FitxaXec &f)
{
    m_idXec->setText(f.id);
    m_valorXec->setText(f.valor);
    m_dataEntrega->setText(f.dataEntrega);
    m_dataLiquidat->setText(f.dataLiquidat);
    m_idFeina->setText(f.idFeina);
}

void ClientsPage::afegirXec()
{
    FitxaXec f = fitxaXec();
    const Resultat r = m_xecs.AfegirXec(m_nomClientAnt, f);
    m_idXec->setText(f.id);
    if (r == Resultat::Fet) {
        Carrega_Xecs_Client();
        emit xecsCanviats();
    }
    m_idXec->setFocus();
}

void ClientsPage::modificarXec()
{
    FitxaXec f = fitxaXec();
    const Resultat r = m_xecs.ModificarXec(f);
    if (r == Resultat::Fet) {
        mostraXec(f);
        const QSignalBlocker b(m_llistaXecs);
        m_llistaXecs->setCurrentRow(-1);
        m_llistaXecs->clearSelection();
        emit xecsCanviats();
    } else {
        m_idXec->setText(f.id);
        m_idXec->setFocus();
    }
}

void ClientsPage::eliminarXec()
{
    FitxaXec f = fitxaXec();
    if (m_xecs.EliminarXec(f) == Resultat::Fet) {
        Carrega_Xecs_Client();
        emit xecsCanviats();
    }
}

// ------------------------------------------------------------------ jumps

bool ClientsPage::obreLloc(const QString &lloc)
{
    GestioLlocs llocs(m_sessio, m_io);
    FitxaLloc f;
    if (!llocs.carrega(lloc, f)) {
        m_io.informa(QString(), Tradueix("Lloc no trobat"));
        return false;
    }
    seleccionaClient(f.client);
    m_llocs->seleccionaLloc(f.nom);
    emit mostraPagina();
    return true;
}

void connectaPaginesMestres(ClientsPage &clients, RecursosServeisPage &recursos)
{
    QObject::connect(&recursos, &RecursosServeisPage::recursosCanviats, &clients, &ClientsPage::recarregaRecursos);
    QObject::connect(&recursos, &RecursosServeisPage::serveisCanviats, &clients, &ClientsPage::recarregaServeis);
}
