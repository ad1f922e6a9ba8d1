#include "historial_desfer_window.h"

#include "core/pila_desfer.h"
#include "core/traduccio.h"

#include <QAction>
#include <QHBoxLayout>
#include <QListWidget>
#include <QToolButton>
#include <QVBoxLayout>

HistorialDesferWindow::HistorialDesferWindow(PilaDesfer &pila, QAction *desfer, QAction *refer, QWidget *parent)
    : QWidget(parent, Qt::Window), m_pila(pila)
{
    setObjectName(QStringLiteral("HistorialDesfer"));
    setWindowTitle(Tradueix("Historial de canvis"));
    Historial = new QListWidget(this);
    Historial->setObjectName(QStringLiteral("Historial"));
    Historial->setSelectionMode(QAbstractItemView::NoSelection);
    Historial->setFocusPolicy(Qt::NoFocus);
    Historial->setWordWrap(true);
    Historial->setResizeMode(QListView::Adjust);
    Historial->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    auto *botons = new QHBoxLayout;
    for (QAction *a : {desfer, refer}) {
        auto *b = new QToolButton(this);
        b->setDefaultAction(a);
        b->setToolButtonStyle(Qt::ToolButtonTextOnly);
        botons->addWidget(b);
        addAction(a); // the keys work here too
    }
    botons->addStretch();

    auto *l = new QVBoxLayout(this);
    l->addWidget(Historial);
    l->addLayout(botons);
    resize(460, 360);
    actualitza();
}

void HistorialDesferWindow::actualitza()
{
    Historial->clear();
    const QList<PilaDesfer::Entrada> entrades = m_pila.historial();
    if (entrades.isEmpty()) {
        auto *item = new QListWidgetItem(Tradueix("Cap canvi per desfer"), Historial);
        item->setFlags(Qt::NoItemFlags);
        return;
    }
    const QColor gris = palette().color(QPalette::Disabled, QPalette::Text);
    QListWidgetItem *darrerFet = nullptr;
    for (const PilaDesfer::Entrada &e : entrades) {
        auto *item = new QListWidgetItem(Historial);
        QFont lletra = item->font();
        switch (e.tipus) {
        case PilaDesfer::Entrada::Fet:
            item->setText(e.text);
            darrerFet = item;
            break;
        case PilaDesfer::Entrada::Desfet:
            item->setText(Tradueix("(desfet)") + QLatin1Char(' ') + e.text);
            item->setForeground(gris);
            lletra.setItalic(true);
            break;
        case PilaDesfer::Entrada::Tancat:
            item->setText(e.text);
            item->setForeground(gris);
            break;
        case PilaDesfer::Entrada::Tall:
            item->setText(QStringLiteral("—— ") + Tradueix("%1: el que hi ha abans ja no es pot desfer").arg(e.text)
                          + QStringLiteral(" ——"));
            item->setTextAlignment(Qt::AlignCenter);
            lletra.setBold(true);
            break;
        }
        item->setFont(lletra);
    }
    // The next undo stands out; the list shows the end of the history.
    if (darrerFet) {
        QFont lletra = darrerFet->font();
        lletra.setBold(true);
        darrerFet->setFont(lletra);
    }
    Historial->scrollToBottom();
}
