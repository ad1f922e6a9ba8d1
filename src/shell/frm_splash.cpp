#include "frm_splash.h"

#include "logo_quadrella.h"
#include "producte.h"

#include "core/traduccio.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

frmSplash::frmSplash(QWidget *parent) : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("frmSplash"));
    setAttribute(Qt::WA_DeleteOnClose, false);

    auto *logo = new QLabel(this);
    logo->setPixmap(pixmapLogo(112, devicePixelRatioF()));
    logo->setAlignment(Qt::AlignCenter);

    auto *nom = new QLabel(producte::nom(), this);
    QFont fNom = nom->font();
    fNom.setPointSizeF(fNom.pointSizeF() * 2.6);
    fNom.setBold(true);
    nom->setFont(fNom);

    lblProductName = new QLabel(Tradueix(producte::descripcio()), this);
    lblProductName->setObjectName(QStringLiteral("lblProductName"));
    QFont fDesc = lblProductName->font();
    fDesc.setPointSizeF(fDesc.pointSizeF() * 1.3);
    lblProductName->setFont(fDesc);

    lblVersion = new QLabel(QStringLiteral("v") + producte::versio(), this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));

    const QString empresa = producte::empresa();
    lblCompanyName = new QLabel(empresa.isEmpty() ? Tradueix("<no personalitzat>") : empresa, this);
    lblCompanyName->setObjectName(QStringLiteral("lblCompanyName"));
    lblCompanyName->setTextFormat(Qt::PlainText);

    for (QLabel *l : {nom, lblProductName, lblVersion, lblCompanyName}) {
        l->setStyleSheet(QStringLiteral("color: #1b3a66;"));
        l->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
    lblVersion->setStyleSheet(QStringLiteral("color: #555;"));
    lblCompanyName->setStyleSheet(QStringLiteral("color: #555;"));

    auto *textos = new QVBoxLayout;
    textos->setSpacing(4);
    textos->addStretch();
    textos->addWidget(nom);
    textos->addWidget(lblProductName);
    textos->addSpacing(12);
    textos->addWidget(lblVersion);
    textos->addWidget(lblCompanyName);
    textos->addStretch();

    auto *l = new QHBoxLayout(this);
    l->setContentsMargins(32, 28, 40, 28);
    l->setSpacing(28);
    l->addWidget(logo);
    l->addLayout(textos, 1);

    setFixedSize(sizeHint().expandedTo(QSize(460, 240)));
    if (QScreen *s = QGuiApplication::primaryScreen())
        move(s->availableGeometry().center() - rect().center());
}

void frmSplash::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    QLinearGradient g(0, 0, 0, height());
    g.setColorAt(0, QColor(0xfb, 0xfc, 0xfe));
    g.setColorAt(1, QColor(0xe3, 0xea, 0xf4));
    p.fillRect(rect(), g);
    p.fillRect(QRect(0, height() - 6, width(), 6), QColor(0x2b, 0x5f, 0x9e));
    p.setPen(QColor(0x9a, 0xae, 0xc8));
    p.drawRect(rect().adjusted(0, 0, -1, -1));
}
