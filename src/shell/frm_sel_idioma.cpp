#include "frm_sel_idioma.h"

#include "logo_quadrella.h"
#include "widgets/mnemonics.h"

#include "core/traduccio.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

frmSelIdioma::frmSelIdioma(const QStringList &idiomes, const QString &idiomaActual, QWidget *parent)
    : QDialog(parent), m_idioma(idiomaActual)
{
    setObjectName(QStringLiteral("frmSelIdioma"));
    setWindowTitle(Tradueix("Quadrella - Idioma/Language"));

    auto *logo = new QLabel(this);
    logo->setPixmap(pixmapLogo(64, devicePixelRatioF()));
    logo->setAlignment(Qt::AlignTop);

    ComboSelIdioma = new QComboBox(this);
    ComboSelIdioma->setObjectName(QStringLiteral("ComboSelIdioma"));
    ComboSelIdioma->addItems(idiomes);
    ComboSelIdioma->setMinimumContentsLength(24);
    if (!idiomes.isEmpty())
        ComboSelIdioma->setCurrentIndex(0);

    auto *etiqueta = new QLabel(Tradueix("Idioma/Language:"), this);
    etiqueta->setBuddy(ComboSelIdioma);

    OKButton = new QPushButton(Tradueix("Acceptar"), this);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    auto *botons = new QDialogButtonBox(this);
    botons->addButton(OKButton, QDialogButtonBox::AcceptRole);
    connect(OKButton, &QPushButton::clicked, this, &frmSelIdioma::accepta);

    auto *l = new QGridLayout(this);
    l->setHorizontalSpacing(16);
    l->addWidget(logo, 0, 0, 3, 1);
    l->addWidget(etiqueta, 0, 1);
    l->addWidget(ComboSelIdioma, 1, 1);
    l->setRowStretch(2, 1);
    l->addWidget(botons, 3, 0, 1, 2);
    l->setSizeConstraint(QLayout::SetFixedSize);
    assignaMnemonics(this);
    ComboSelIdioma->setFocus();
}

void frmSelIdioma::accepta()
{
    if (ComboSelIdioma->currentIndex() >= 0)
        m_idioma = codiIdioma(ComboSelIdioma->currentText());
    accept();
}
