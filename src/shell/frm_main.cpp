#include "frm_main.h"

#include "ajuda_window.h"

#include "frm_missatges.h"
#include "historial_desfer_window.h"
#include "logo_quadrella.h"
#include "ordre_finestres.h"
#include "widgets/pagina_principal.h"
#include "pagines_principals.h"
#include "producte.h"
#include "widgets/protegeix.h"

#include "config/arrencada.h"
#include "config/configuracio_dialog.h"
#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QStatusBar>
#include <QTabWidget>
#include <QTime>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace {

// 1000 twips, the position a window gets the first time.
constexpr int kPosicioInicial = 67;
// Room for the title bar before the window manager has framed the window.
constexpr int kMarcTitol = 32;

class PunterOcupat {
public:
    PunterOcupat() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~PunterOcupat() { QApplication::restoreOverrideCursor(); }
};

} // namespace

frmMain::frmMain(Sessio &sessio, Interaccio &ui, QWidget *parent)
    : QMainWindow(parent), m_sessio(sessio), m_ui(ui), m_ordre(new OrdreFinestres(this))
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(producte::nom());
    setWindowIcon(iconaQuadrella());

    Pestanyes = new QTabWidget(this);
    Pestanyes->setObjectName(QStringLiteral("Pestanyes"));
    Pestanyes->setDocumentMode(true);
    for (int i = 0; i < NombrePestanyes; ++i) {
        auto *trama = new QWidget(Pestanyes);
        trama->setObjectName(QStringLiteral("Trama%1").arg(i + 1));
        auto *l = new QVBoxLayout(trama);
        l->setContentsMargins(0, 0, 0, 0);
        m_trames[i] = trama;
        Pestanyes->addTab(trama, QString());
        QWidget *contingut = i == Credits ? creaCredits() : creaEspai(static_cast<Pestanya>(i));
        l->addWidget(contingut);
        m_pagines[i] = contingut;
    }
    setCentralWidget(Pestanyes);
    connect(Pestanyes, &QTabWidget::currentChanged, this, &frmMain::canviPestanya);

    sbStatusBar = new QStatusBar(this);
    sbStatusBar->setObjectName(QStringLiteral("sbStatusBar"));
    panellUltimDia = new QLabel(sbStatusBar);
    panellUltimDia->setObjectName(QStringLiteral("panellUltimDia"));
    panellData = new QLabel(sbStatusBar);
    panellData->setObjectName(QStringLiteral("panellData"));
    panellHora = new QLabel(sbStatusBar);
    panellHora->setObjectName(QStringLiteral("panellHora"));
    for (QLabel *l : {panellUltimDia, panellData, panellHora})
        l->setContentsMargins(6, 0, 6, 0);
    sbStatusBar->addWidget(panellUltimDia, 1);
    sbStatusBar->addPermanentWidget(panellData);
    sbStatusBar->addPermanentWidget(panellHora);
    setStatusBar(sbStatusBar);
    creaMenuEdita();

    m_rellotge = new QTimer(this);
    m_rellotge->setInterval(1000);
    connect(m_rellotge, &QTimer::timeout, this, &frmMain::actualitzaRellotge);
    actualitzaRellotge();
    m_rellotge->start();

    // The window sees these keys before any control does.
    auto *f2 = new QShortcut(QKeySequence(Qt::Key_F2), this);
    f2->setContext(Qt::WindowShortcut);
    connect(f2, &QShortcut::activated, this, &frmMain::obreConfiguracio);
    auto *f1 = new QShortcut(QKeySequence(Qt::Key_F1), this);
    f1->setContext(Qt::WindowShortcut);
    connect(f1, &QShortcut::activated, this, &frmMain::obreAjuda);
    // Alt+1 .. Alt+5 reach the tabs from the keyboard whatever the language.
    for (int i = 0; i < NombrePestanyes; ++i) {
        auto *sc = new QShortcut(QKeySequence(QKeyCombination(Qt::AltModifier, static_cast<Qt::Key>(Qt::Key_1 + i))), this);
        connect(sc, &QShortcut::activated, this, [this, i] { seleccionaPestanya(static_cast<Pestanya>(i)); });
    }

    // A first size that suits the screen; the position comes from the user's store at load.
    QSize mida(1180, 760);
    if (QScreen *s = QGuiApplication::primaryScreen())
        mida = mida.boundedTo(s->availableGeometry().size() - QSize(2 * kPosicioInicial, 2 * kPosicioInicial + kMarcTitol));
    resize(mida);
}

frmMain::~frmMain()
{
    m_sessio.Desfer.alCanviar = nullptr;
}

// ------------------------------------------------------------------ undo and redo

void frmMain::creaMenuEdita()
{
    QMenu *edita = menuBar()->addMenu(Tradueix("Edita"));
    edita->setObjectName(QStringLiteral("MenuEdita"));
    m_desfer = edita->addAction(QString(), this, &frmMain::desfes);
    m_desfer->setObjectName(QStringLiteral("Desfer"));
    m_desfer->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    m_refer = edita->addAction(QString(), this, &frmMain::refes);
    m_refer->setObjectName(QStringLiteral("Refer"));
    m_refer->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    edita->addSeparator();
    QAction *historial = edita->addAction(Tradueix("Historial de canvis"), this, &frmMain::obreHistorial);
    historial->setObjectName(QStringLiteral("VeureHistorial"));
    m_sessio.Desfer.alCanviar = [this] { actualitzaDesfer(); };
    actualitzaDesfer();
}

void frmMain::actualitzaDesfer()
{
    const PilaDesfer &pila = m_sessio.Desfer;
    auto caption = [](const QString &accio, const QString &text) {
        return text.isEmpty() ? accio : accio + QStringLiteral(": ") + text;
    };
    m_desfer->setText(caption(Tradueix("Desfés"), pila.textDesfer()));
    m_desfer->setEnabled(pila.potDesfer());
    m_refer->setText(caption(Tradueix("Refés"), pila.textRefer()));
    m_refer->setEnabled(pila.potRefer());
    if (m_historial)
        m_historial->actualitza();
}

void frmMain::desfes()
{
    aplicaDesfer(false);
}

void frmMain::refes()
{
    aplicaDesfer(true);
}

void frmMain::aplicaDesfer(bool refer)
{
    QString error;
    {
        PunterOcupat punter;
        error = refer ? m_sessio.Desfer.refes() : m_sessio.Desfer.desfes();
    }
    if (!error.isEmpty()) {
        m_ui.informa(Tradueix("AVÍS"), error);
        return;
    }
    // Whatever the change touched, both grids show it at their next showing; the current one now.
    m_sessio.RefrescarAgenda = true;
    m_sessio.RefrescarFacturacio = true;
    reconstrueixSiCal(m_actual);
    if (alDesfer)
        protegeix(m_ui, alDesfer);
}

void frmMain::obreHistorial()
{
    if (!m_historial)
        m_historial = new HistorialDesferWindow(m_sessio.Desfer, m_desfer, m_refer, this);
    m_historial->actualitza();
    m_historial->show();
    m_historial->raise();
    m_historial->activateWindow();
}

HistorialDesferWindow *frmMain::historial() const
{
    return m_historial;
}

QWidget *frmMain::creaEspai(Pestanya p)
{
    auto *w = new QWidget;
    w->setObjectName(QStringLiteral("Espai%1").arg(p + 1));
    auto *l = new QVBoxLayout(w);
    auto *avis = new QLabel(Tradueix("Aquesta pàgina encara no està disponible."), w);
    avis->setAlignment(Qt::AlignCenter);
    avis->setEnabled(false);
    l->addWidget(avis);
    return w;
}

QWidget *frmMain::creaCredits()
{
    auto *w = new QWidget;
    w->setObjectName(QStringLiteral("Credits"));

    picLogoQuadrella = new LogoClicable(144, w);
    picLogoQuadrella->setObjectName(QStringLiteral("picLogoQuadrella"));
    connect(picLogoQuadrella, &LogoClicable::clicat, this, [] { QDesktopServices::openUrl(QUrl(producte::web())); });

    auto *nom = new QLabel(producte::nom(), w);
    QFont f = nom->font();
    f.setPointSizeF(f.pointSizeF() * 2.4);
    f.setBold(true);
    nom->setFont(f);

    lblProductName = new QLabel(w);
    lblProductName->setObjectName(QStringLiteral("lblProductName"));
    QFont fp = lblProductName->font();
    fp.setPointSizeF(fp.pointSizeF() * 1.25);
    lblProductName->setFont(fp);
    lblCodVersion = new QLabel(w);
    lblCodVersion->setObjectName(QStringLiteral("lblCodVersion"));
    lblCodVersion->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblCompanyName = new QLabel(w);
    lblCompanyName->setObjectName(QStringLiteral("lblCompanyName"));
    lblCompanyName->setTextFormat(Qt::PlainText);
    lblWeb = new QLabel(w);
    lblWeb->setObjectName(QStringLiteral("lblWeb"));
    lblWeb->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(lblWeb, &QLabel::linkActivated, this, [](const QString &url) { QDesktopServices::openUrl(QUrl(url)); });

    auto *textos = new QVBoxLayout;
    textos->setSpacing(6);
    textos->addWidget(nom);
    textos->addWidget(lblProductName);
    textos->addSpacing(14);
    textos->addWidget(lblCodVersion);
    textos->addWidget(lblCompanyName);
    textos->addSpacing(14);
    textos->addWidget(lblWeb);

    auto *fitxa = new QHBoxLayout;
    fitxa->setSpacing(32);
    fitxa->addWidget(picLogoQuadrella, 0, Qt::AlignTop);
    fitxa->addLayout(textos);

    auto *g = new QGridLayout(w);
    g->setRowStretch(0, 1);
    g->setRowStretch(2, 2);
    g->setColumnStretch(0, 1);
    g->setColumnStretch(2, 1);
    g->addLayout(fitxa, 1, 1);
    return w;
}

void frmMain::carrega()
{
    restauraPosicio();

    static const char *const titols[NombrePestanyes] = {PerTraduir("Agenda"), PerTraduir("Facturació"),
                                                          PerTraduir("Clients"), PerTraduir("Recursos i Serveis"),
                                                          PerTraduir("Crèdits")};
    for (int i = 0; i < NombrePestanyes; ++i)
        Pestanyes->setTabText(i, Tradueix(titols[i]));

    m_actual = Pestanyes->currentIndex();
    m_sessio.RefrescarAgenda = false;
    m_sessio.RefrescarFacturacio = false;
    m_sessio.ReiniciarAplicacio = false;

    actualitzaUltimDiaPlanificat(m_sessio.cfg().UltimDiaGen);

    lblProductName->setText(Tradueix(producte::descripcio()) + QStringLiteral(" v") + producte::versio());
    lblCodVersion->setText(Tradueix("Codi de versió:") + QLatin1Char(' ') + producte::codiVersio());
    const QString empresa = producte::empresa();
    lblCompanyName->setText(Tradueix("Empresa:") + QLatin1Char(' ')
                            + (empresa.isEmpty() ? Tradueix("<no personalitzat>") : empresa));
    lblWeb->setText(QStringLiteral("<a href=\"%1\">%2</a>").arg(producte::web(), producte::web().toHtmlEscaped()));
    picLogoQuadrella->setToolTip(Tradueix("Fes clic per visitar el web de Quadrella"));

    creaPagines(*this);
}

void frmMain::posaPagina(Pestanya p, QWidget *pagina)
{
    std::function<void()> reconstrueix;
    if (auto *pp = dynamic_cast<PaginaPrincipal *>(pagina))
        reconstrueix = [pp] { pp->reconstrueix(); };
    posaPagina(p, pagina, std::move(reconstrueix));
}

void frmMain::posaPagina(Pestanya p, QWidget *pagina, std::function<void()> reconstrueix)
{
    QWidget *trama = m_trames[p];
    if (m_pagines[p] && m_pagines[p] != pagina) {
        trama->layout()->removeWidget(m_pagines[p]);
        m_pagines[p]->deleteLater();
    }
    m_pagines[p] = pagina;
    m_reconstrueix[p] = std::move(reconstrueix);
    if (pagina) {
        trama->layout()->addWidget(pagina);
        if (auto *pp = dynamic_cast<PaginaPrincipal *>(pagina))
            pp->configuraXecs(xecsActius(), m_sessio.cfg().ServeiXecs);
    }
}

void frmMain::seleccionaPestanya(Pestanya p)
{
    Pestanyes->setCurrentIndex(p);
}

void frmMain::canviPestanya(int n)
{
    if (n == m_actual || n < 0)
        return;
    m_actual = n;
    reconstrueixSiCal(n);
}

void frmMain::reconstrueixSiCal(int pestanya)
{
    bool *pendent = pestanya == Agenda ? &m_sessio.RefrescarAgenda
                  : pestanya == Facturacio ? &m_sessio.RefrescarFacturacio
                                           : nullptr;
    if (!pendent || !*pendent)
        return;
    PunterOcupat punter;
    protegeix(m_ui, [&] {
        if (m_reconstrueix[pestanya])
            m_reconstrueix[pestanya]();
        *pendent = false;
    });
}

void frmMain::actualitzaUltimDiaPlanificat(const QDate &dia)
{
    panellUltimDia->setText(Tradueix("Últim dia planificat") + QLatin1Char(' ') + format::dataCurta(dia));
}

void frmMain::actualitzaRellotge()
{
    const QDateTime ara = QDateTime::currentDateTime();
    panellData->setText(format::dataCurta(ara.date()));
    panellHora->setText(ara.time().toString(QStringLiteral("HH:mm")));
}

bool frmMain::xecsActius() const
{
    return !m_sessio.cfg().ServeiXecs.isEmpty();
}

frmMissatges *frmMain::missatges()
{
    if (!m_missatges)
        m_missatges = new frmMissatges(this);
    return m_missatges;
}

void frmMain::obreConfiguracio()
{
    if (m_tancada)
        return;
    protegeix(m_ui, [&] {
        frmConfiguracio dialeg(m_sessio, m_ui, this);
        dialeg.exec();
    });
    if (m_sessio.ReiniciarAplicacio) {
        close();
        return;
    }
    reconstrueixSiCal(m_actual);
}

void frmMain::obreAjuda()
{
    if (m_fitxerAjuda.isEmpty()) {
        // Warn again with the file it looked for.
        m_fitxerAjuda = arrencada::cercaAjuda(QDir(m_sessio.dirDades()).filePath(QStringLiteral("manual")),
                                              m_sessio.cfg().Idioma, m_ui);
        if (m_fitxerAjuda.isEmpty())
            return;
    }
    if (!m_ajuda)
        m_ajuda = new AjudaWindow(this);
    m_ajuda->mostra(m_fitxerAjuda);
}

QPoint frmMain::posicioDesada()
{
    QSettings s;
    s.beginGroup(QStringLiteral("Settings"));
    return QPoint(s.value(QStringLiteral("MainLeft"), kPosicioInicial).toInt(),
                  s.value(QStringLiteral("MainTop"), kPosicioInicial).toInt());
}

void frmMain::restauraPosicio()
{
    QPoint p = posicioDesada();
    // A position saved on a screen that is no longer there would leave the window out of reach.
    const QRect titol(p, QSize(qMin(width(), 200), 40));
    QScreen *pantalla = nullptr;
    for (QScreen *s : QGuiApplication::screens())
        if (!pantalla && s->availableGeometry().intersects(titol))
            pantalla = s;
    if (!pantalla) {
        pantalla = QGuiApplication::primaryScreen();
        if (pantalla)
            p = pantalla->availableGeometry().topLeft() + QPoint(kPosicioInicial, kPosicioInicial);
    }
    if (pantalla) {
        // The whole window, status bar included, inside the screen's free area (a small laptop
        // screen, a task bar): smaller if it must be, then moved back in.
        const QRect lliure = pantalla->availableGeometry();
        const QSize marc = frameGeometry().size() - size();
        const QSize cap = lliure.size() - marc.expandedTo(QSize(0, kMarcTitol));
        resize(size().boundedTo(cap));
        const QSize total = size() + marc.expandedTo(QSize(0, kMarcTitol));
        p.setX(qBound(lliure.left(), p.x(), lliure.right() + 1 - total.width()));
        p.setY(qBound(lliure.top(), p.y(), lliure.bottom() + 1 - total.height()));
    }
    move(p);
}

void frmMain::mostra()
{
    if (QSettings().value(QStringLiteral("Settings/MainMaximized"), false).toBool())
        showMaximized();
    else
        show();
}

void frmMain::desaPosicio()
{
    QSettings s;
    s.beginGroup(QStringLiteral("Settings"));
    // A maximised window keeps the place it comes back to.
    const QPoint p = isMaximized() ? normalGeometry().topLeft() : pos();
    s.setValue(QStringLiteral("MainLeft"), p.x());
    s.setValue(QStringLiteral("MainTop"), p.y());
    s.setValue(QStringLiteral("MainMaximized"), isMaximized());
    s.sync();
}

void frmMain::closeEvent(QCloseEvent *e)
{
    if (m_tancada) {
        e->accept();
        return;
    }
    m_tancada = true;
    m_rellotge->stop();
    protegeix(m_ui, [&] {
        m_ordre->tancaTotes(this);
        if (!isMinimized())
            desaPosicio();
        if (m_sessio.CompactarBD) {
            PunterOcupat punter;
            arrencada::tancaSessio(m_sessio, m_ui);
        } else {
            arrencada::tancaSessio(m_sessio, m_ui);
        }
    });
    e->accept();
    emit tancada();
}

AjudaWindow *frmMain::ajuda() const
{
    return m_ajuda;
}
