#include "ajuda_window.h"

#include "core/traduccio.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>

AjudaWindow::AjudaWindow(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAjuda"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(false);

    auto *barra = new QHBoxLayout;
    auto boto = [&](QStyle::StandardPixmap icona, const char *text, const QKeySequence &tecla) {
        auto *b = new QToolButton(this);
        b->setIcon(style()->standardIcon(icona));
        b->setToolTip(Tradueix(text) + QStringLiteral(" (") + tecla.toString(QKeySequence::NativeText) + QLatin1Char(')'));
        b->setShortcut(tecla);
        b->setAutoRaise(true);
        barra->addWidget(b);
        return b;
    };
    Enrere = boto(QStyle::SP_ArrowBack, "Enrere", QKeySequence(QKeySequence::Back));
    Endavant = boto(QStyle::SP_ArrowForward, "Endavant", QKeySequence(QKeySequence::Forward));
    Inici = boto(QStyle::SP_DirHomeIcon, "Inici", QKeySequence(Qt::ALT | Qt::Key_Home));
    barra->addStretch();

    Navegador = new QTextBrowser(this);
    Navegador->setOpenLinks(false);
    connect(Navegador, &QTextBrowser::anchorClicked, this, [this](const QUrl &url) {
        if (url.isLocalFile() || url.isRelative())
            Navegador->setSource(url.isRelative() ? Navegador->source().resolved(url) : url);
        else
            QDesktopServices::openUrl(url);
    });
    connect(Navegador, &QTextBrowser::backwardAvailable, Enrere, &QWidget::setEnabled);
    connect(Navegador, &QTextBrowser::forwardAvailable, Endavant, &QWidget::setEnabled);
    connect(Navegador, &QTextBrowser::sourceChanged, this, [this] {
        setWindowTitle(Navegador->documentTitle().isEmpty() ? Tradueix("Ajuda") : Navegador->documentTitle());
    });
    connect(Enrere, &QToolButton::clicked, Navegador, &QTextBrowser::backward);
    connect(Endavant, &QToolButton::clicked, Navegador, &QTextBrowser::forward);
    connect(Inici, &QToolButton::clicked, this, [this] { Navegador->setSource(m_inici); });
    Enrere->setEnabled(false);
    Endavant->setEnabled(false);

    auto *l = new QVBoxLayout(this);
    l->setContentsMargins(6, 6, 6, 6);
    l->addLayout(barra);
    l->addWidget(Navegador);

    QSize mida(760, 640);
    if (QScreen *s = screen())
        mida = mida.boundedTo(s->availableGeometry().size() * 0.9);
    resize(mida);
}

void AjudaWindow::mostra(const QString &fitxer)
{
    m_inici = QUrl::fromLocalFile(fitxer);
    if (Navegador->source() != m_inici)
        Navegador->setSource(m_inici);
    show();
    raise();
    activateWindow();
    Navegador->setFocus();
}

QUrl AjudaWindow::pagina() const
{
    return Navegador->source();
}
