#include "facturacio_page.h"

#include "graella_facturacio_widget.h"

#include "agenda/frm_feines_dialog.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "masterdata/clients.h"
#include "widgets/mnemonics.h"
#include "widgets/protegeix.h"
#include "widgets/seleccio_text.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

class PunterOcupat {
public:
    PunterOcupat() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~PunterOcupat() { QApplication::restoreOverrideCursor(); }
};

QLineEdit *campTotal(const QString &nom, QWidget *pare, int ample = 110)
{
    auto *c = new QLineEdit(pare);
    c->setObjectName(nom);
    c->setReadOnly(true);
    c->setFocusPolicy(Qt::NoFocus);
    c->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    c->setFixedWidth(ample);
    return c;
}

QLabel *etiqueta(const QString &text, QWidget *pare, Qt::Alignment a = Qt::AlignRight | Qt::AlignVCenter)
{
    auto *l = new QLabel(text, pare);
    l->setAlignment(a);
    return l;
}

QPushButton *boto(const QString &text, const QString &nom, QWidget *pare)
{
    auto *b = new QPushButton(text, pare);
    b->setObjectName(nom);
    return b;
}

// A button whose report is not plugged in yet says so instead of doing nothing.
void posaInforme(QPushButton *b, bool permes, bool disponible)
{
    b->setEnabled(permes && disponible);
    b->setToolTip(disponible ? QString() : Tradueix("Aquest informe encara no està disponible."));
}

} // namespace

FacturacioPage::FacturacioPage(Sessio &sessio, Interaccio &ui, QWidget *parent, const QDate &avui)
    : QWidget(parent), m_sessio(sessio), m_ui(ui), m_ctl(sessio, ui)
{
    setObjectName(QStringLiteral("FacturacioPage"));
    if (avui.isValid())
        m_ctl.setAvui(avui);
    construeixControls();
    distribueix();
    connecta();
    ordreTabulacio();

    m_ctl.obreEditor = [this](Feina &f) {
        FrmFeinesDialog finestra(m_sessio.db(), m_sessio.cfg(), m_ctl.motor(), m_ui, f, this);
        finestra.exec();
    };

    configuraXecs(!sessio.cfg().ServeiXecs.isEmpty(), sessio.cfg().ServeiXecs);
    // The tab opens on the current month, every client.
    mesFactura->setText(m_ctl.entraMes(QString()));
    accio([this] {
        ompleClients();
        QString mes = mesFactura->text();
        m_ctl.surtMes(mes);
    });
}

FacturacioPage::~FacturacioPage()
{
    // The fields and sheets talk to the controller up to their last event (a focus change while
    // they go): they go first, while it still exists.
    mesFactura->removeEventFilter(this);
    TotalPagaments->removeEventFilter(this);
    ClientsCombo->removeEventFilter(this);
    qDeleteAll(findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly));
}

// ------------------------------------------------------------------ building the page

void FacturacioPage::construeixControls()
{
    mesFactura = new QLineEdit(this);
    mesFactura->setObjectName(QStringLiteral("mesFactura"));
    mesFactura->setMaxLength(10);
    mesFactura->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00/00000")) + 20);
    mesFactura->setPlaceholderText(QStringLiteral("mm/aaaa"));

    ClientsCombo = new QComboBox(this);
    ClientsCombo->setObjectName(QStringLiteral("ClientsCombo"));
    ClientsCombo->setPlaceholderText(Tradueix("(tots els clients)"));
    ClientsCombo->setMinimumWidth(280);
    ClientsCombo->setMaxVisibleItems(25);
    ClientsCombo->setToolTip(Tradueix("Supr: tots els clients"));

    PdtFacturar = new QCheckBox(Tradueix("Pdt. de facturar:"), this);
    PdtFacturar->setObjectName(QStringLiteral("PdtFacturar"));
    PdtFacturar->setLayoutDirection(Qt::RightToLeft); // the caption before the box

    FacturaGrid = new GraellaFacturacioWidget(m_ctl.facturacio().FacturaGrid(), QStringLiteral("FacturaGrid"), this);
    TramaXecs = new QGroupBox(this);
    TramaXecs->setObjectName(QStringLiteral("TramaXecs"));
    XecsGrid = new GraellaFacturacioWidget(m_ctl.facturacio().XecsGrid(), QStringLiteral("XecsGrid"), TramaXecs);

    TotalServeis = campTotal(QStringLiteral("TotalServeis"), this);
    TotalNXecs = campTotal(QStringLiteral("TotalNXecs"), this, 50);
    TotalXecs = campTotal(QStringLiteral("TotalXecs"), this);
    TotalFacturar = campTotal(QStringLiteral("TotalFacturar"), this);
    {
        QFont f = TotalFacturar->font();
        f.setBold(true);
        TotalFacturar->setFont(f);
    }
    TotalPagaments = new QLineEdit(this);
    TotalPagaments->setObjectName(QStringLiteral("TotalPagaments"));
    TotalPagaments->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    TotalPagaments->setFixedWidth(110);

    lblTotalServeis = etiqueta(Tradueix("Total serveis realitzats:"), this);
    lblTotalXecs = etiqueta(QString(), this);
    lblTotalXecs->setObjectName(QStringLiteral("lblTotalXecs"));
    lblTotalPagaments = etiqueta(Tradueix("Total pagaments efectuats:"), this);
    lblTotalPagaments->setBuddy(TotalPagaments);
    lblTotalFacturar = etiqueta(Tradueix("TOTAL A PAGAR:"), this);
    {
        QFont f = lblTotalFacturar->font();
        f.setBold(true);
        lblTotalFacturar->setFont(f);
    }

    ImprimirFacturacio = boto(QString(), QStringLiteral("ImprimirFacturacio"), this);
    ImprimirXecs = boto(Tradueix("Imprimir xecs liquidats"), QStringLiteral("ImprimirXecs"), this);
    ImprimirHores = boto(Tradueix("Imprimir hores extra"), QStringLiteral("ImprimirHores"), this);
    ImprimirFacturacio->setMinimumWidth(180);

    seleccionaTotEnEntrar(mesFactura);
    seleccionaTotEnEntrar(TotalPagaments);
    mesFactura->installEventFilter(this);
    TotalPagaments->installEventFilter(this);
    ClientsCombo->installEventFilter(this);
}

void FacturacioPage::distribueix()
{
    auto *lblMes = etiqueta(Tradueix("Mes:"), this);
    lblMes->setBuddy(mesFactura);
    auto *lblClient = etiqueta(Tradueix("Client:"), this);
    lblClient->setBuddy(ClientsCombo);

    auto *barra = new QHBoxLayout;
    barra->setSpacing(6);
    barra->addWidget(lblMes);
    barra->addWidget(mesFactura);
    barra->addSpacing(18);
    barra->addWidget(lblClient);
    barra->addWidget(ClientsCombo, 1);
    barra->addSpacing(18);
    barra->addWidget(PdtFacturar);
    barra->addStretch(1);

    auto *lx = new QVBoxLayout(TramaXecs);
    lx->setContentsMargins(6, 6, 6, 6);
    lx->addWidget(XecsGrid);

    // Totals: label, count (vouchers only), amount, "€". Hidden rows take no room, so what is
    // left moves up and the sheets take the space.
    auto *totals = new QGridLayout;
    totals->setHorizontalSpacing(6);
    totals->setVerticalSpacing(4);
    const auto euro = [this] { return etiqueta(Tradueix("€"), this, Qt::AlignLeft | Qt::AlignVCenter); };
    QLabel *euroServeis = euro();
    QLabel *euroXecs = euro();
    QLabel *euroPagaments = euro();
    QLabel *euroFacturar = euro();
    totals->addWidget(lblTotalServeis, 0, 0);
    totals->addWidget(TotalServeis, 0, 2);
    totals->addWidget(euroServeis, 0, 3);
    totals->addWidget(lblTotalXecs, 1, 0);
    totals->addWidget(TotalNXecs, 1, 1);
    totals->addWidget(TotalXecs, 1, 2);
    totals->addWidget(euroXecs, 1, 3);
    totals->addWidget(lblTotalPagaments, 2, 0);
    totals->addWidget(TotalPagaments, 2, 2);
    totals->addWidget(euroPagaments, 2, 3);
    totals->addWidget(lblTotalFacturar, 3, 0);
    totals->addWidget(TotalFacturar, 3, 2);
    totals->addWidget(euroFacturar, 3, 3);
    m_filesClient = {lblTotalServeis, TotalServeis, euroServeis, lblTotalPagaments, TotalPagaments,
                     euroPagaments, lblTotalFacturar, TotalFacturar, euroFacturar};
    m_filaXecs = {lblTotalXecs, TotalNXecs, TotalXecs, euroXecs};

    auto *botons = new QHBoxLayout;
    botons->setSpacing(8);
    botons->addWidget(ImprimirFacturacio);
    botons->addWidget(ImprimirXecs);
    botons->addWidget(ImprimirHores);

    auto *peu = new QHBoxLayout;
    peu->addLayout(botons);
    peu->addStretch(1);
    peu->addLayout(totals);
    peu->setAlignment(botons, Qt::AlignBottom);

    auto *l = new QVBoxLayout(this);
    l->setContentsMargins(8, 8, 8, 8);
    l->setSpacing(6);
    l->addLayout(barra);
    l->addWidget(FacturaGrid, 3);
    l->addWidget(TramaXecs, 1);
    l->addLayout(peu);
}

void FacturacioPage::connecta()
{
    connect(ClientsCombo, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_omplintClients)
            triaClient();
    });
    connect(PdtFacturar, &QCheckBox::clicked, this, [this](bool marcat) {
        accio([&] { m_ctl.canviaPendents(marcat); });
    });
    connect(FacturaGrid, &GraellaFacturacioWidget::tecla, this, [this](int fila, int key) {
        const auto t = key == Qt::Key_Delete  ? ControladorFacturacio::Tecla::Suprimir
                     : key == Qt::Key_Space   ? ControladorFacturacio::Tecla::Espai
                                              : ControladorFacturacio::Tecla::Intro;
        accio([&] { m_ctl.teclaFeina(fila, t); });
        FacturaGrid->setFocus();
    });
    connect(FacturaGrid, &GraellaFacturacioWidget::dobleClic, this, [this](int fila) {
        accio([&] { m_ctl.dobleClicFeina(fila); });
    });
    connect(XecsGrid, &GraellaFacturacioWidget::tecla, this, [this](int fila, int key) {
        if (key == Qt::Key_Delete)
            accio([&] { m_ctl.suprimeixXec(fila); });
    });
    connect(ImprimirFacturacio, &QPushButton::clicked, this, &FacturacioPage::facturar);
    connect(ImprimirXecs, &QPushButton::clicked, this, [this] {
        if (imprimeixXecs)
            imprimeixXecs(m_ctl.mes());
    });
    connect(ImprimirHores, &QPushButton::clicked, this, [this] {
        if (imprimeixHores)
            imprimeixHores(m_ctl.mes());
    });
}

void FacturacioPage::ordreTabulacio()
{
    const QList<QWidget *> ordre = {mesFactura, ClientsCombo, PdtFacturar, FacturaGrid, XecsGrid,
                                    TotalPagaments, ImprimirFacturacio, ImprimirXecs, ImprimirHores};
    for (int i = 0; i + 1 < ordre.size(); ++i)
        setTabOrder(ordre[i], ordre[i + 1]);
}

void FacturacioPage::configuraXecs(bool actius, const QString &servei)
{
    // Nobody pays with vouchers: their sheet, totals and report would only mislead.
    m_xecsActius = actius;
    TramaXecs->setVisible(actius);
    TramaXecs->setTitle(Tradueix("Xecs") + QStringLiteral(": ") + servei);
    actualitzaMode();
}

// ------------------------------------------------------------------ events

bool FacturacioPage::eventFilter(QObject *obj, QEvent *e)
{
    if (obj == ClientsCombo && e->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(e)->key() == Qt::Key_Delete) {
        ClientsCombo->setCurrentIndex(-1); // every client
        return true;
    }
    if (obj != mesFactura && obj != TotalPagaments)
        return QWidget::eventFilter(obj, e);
    switch (e->type()) {
    case QEvent::FocusIn:
        if (obj == mesFactura && mesFactura->text().trimmed().isEmpty())
            mesFactura->setText(m_ctl.entraMes(mesFactura->text()));
        break;
    case QEvent::FocusOut: {
        // A message box or a menu over the field is not the user leaving it.
        const Qt::FocusReason r = static_cast<QFocusEvent *>(e)->reason();
        if (r == Qt::ActiveWindowFocusReason || r == Qt::PopupFocusReason)
            break;
        if (obj == mesFactura)
            surtMes();
        else
            surtPagament();
        break;
    }
    case QEvent::KeyPress: {
        const int k = static_cast<QKeyEvent *>(e)->key();
        if (k == Qt::Key_Return || k == Qt::Key_Enter) {
            if (obj == mesFactura)
                surtMes();
            else
                surtPagament();
            return true;
        }
        break;
    }
    default:
        break;
    }
    return QWidget::eventFilter(obj, e);
}

void FacturacioPage::surtMes()
{
    if (m_validant)
        return;
    m_validant = true;
    QString mes = mesFactura->text();
    bool ok = true;
    accio([&] { ok = m_ctl.surtMes(mes); });
    if (ok) {
        if (mesFactura->text() != mes)
            mesFactura->setText(mes);
    } else {
        mesFactura->setFocus(Qt::OtherFocusReason);
        mesFactura->selectAll();
    }
    m_validant = false;
}

void FacturacioPage::surtPagament()
{
    if (m_validant || !m_ctl.ambClient())
        return;
    m_validant = true;
    const QString text = TotalPagaments->text();
    bool ok = true;
    accio([&] { ok = m_ctl.surtPagament(text); });
    if (ok) {
        TotalPagaments->setText(m_ctl.pagament());
    } else {
        // Nothing was stored: what the user typed stays there to be corrected.
        TotalPagaments->setText(text);
        TotalPagaments->setFocus(Qt::OtherFocusReason);
        TotalPagaments->selectAll();
    }
    m_validant = false;
}

void FacturacioPage::triaClient()
{
    const QString client = ClientsCombo->currentIndex() >= 0 ? ClientsCombo->currentText() : QString();
    accio([&] { m_ctl.triaClient(client); });
}

void FacturacioPage::facturar()
{
    if (!m_ctl.ambClient()) {
        if (imprimeixResum)
            imprimeixResum(m_ctl.mes());
        return;
    }
    // A payment still being typed belongs to this month's bill.
    if (TotalPagaments->text() != m_ctl.pagament()) {
        surtPagament();
        if (TotalPagaments->text() != m_ctl.pagament())
            return;
    }
    bool fet = false;
    accio([&] { fet = m_ctl.factura(); });
    if (fet)
        ClientsCombo->setFocus(Qt::OtherFocusReason);
}

// ------------------------------------------------------------------ showing

void FacturacioPage::accio(const std::function<void()> &f)
{
    {
        PunterOcupat punter;
        protegeix(m_ui, f);
    }
    mostra();
}

void FacturacioPage::mostra()
{
    FacturaGrid->refresca();
    XecsGrid->refresca();
    const TotalsFacturacio &t = m_ctl.facturacio().totals();
    TotalServeis->setText(t.TotalServeis);
    TotalNXecs->setText(t.TotalNXecs);
    TotalXecs->setText(t.TotalXecs);
    TotalFacturar->setText(t.TotalFacturar);
    if (!TotalPagaments->hasFocus())
        TotalPagaments->setText(m_ctl.pagament());
    actualitzaMode();
}

void FacturacioPage::actualitzaMode()
{
    const bool client = m_ctl.ambClient();
    lblTotalXecs->setText(m_ctl.facturacio().etiquetaXecs());
    ImprimirFacturacio->setText(m_ctl.textBotoFacturar());
    if (client) {
        ImprimirFacturacio->setEnabled(true);
        ImprimirFacturacio->setToolTip(QString());
    } else {
        posaInforme(ImprimirFacturacio, true, bool(imprimeixResum));
    }
    posaInforme(ImprimirXecs, !client, bool(imprimeixXecs));
    posaInforme(ImprimirHores, !client, bool(imprimeixHores));
    ImprimirXecs->setVisible(m_xecsActius);
    PdtFacturar->setEnabled(client);
    TotalPagaments->setEnabled(client);
    for (QWidget *w : std::as_const(m_filesClient))
        w->setVisible(client);
    for (QWidget *w : std::as_const(m_filaXecs))
        w->setVisible(m_xecsActius);
    assignaMnemonics(this);
}

// ------------------------------------------------------------------ outside changes

bool FacturacioPage::ompleClients()
{
    const QString triat = m_ctl.client();
    GestioClients clients(m_sessio, m_ui);
    const QStringList noms = clients.noms();
    m_omplintClients = true;
    ClientsCombo->clear();
    ClientsCombo->addItems(noms);
    const int i = triat.isEmpty() ? -1 : noms.indexOf(triat);
    ClientsCombo->setCurrentIndex(i);
    m_omplintClients = false;
    return triat.isEmpty() || i >= 0;
}

void FacturacioPage::recarregaClients()
{
    bool queda = true;
    protegeix(m_ui, [&] { queda = ompleClients(); });
    if (!queda)
        accio([this] { m_ctl.triaClient(QString()); });
}

void FacturacioPage::reconstrueix()
{
    accio([this] {
        if (ompleClients())
            m_ctl.reconstrueix();
        else
            m_ctl.triaClient(QString());
    });
}
