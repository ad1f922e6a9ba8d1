#include "formulari_widget.h"

#include "widgets/seleccio_text.h"

#include <algorithm>

#include <QColor>
#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QPushButton>

namespace {

class BuidaAmbSuprimir : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject *obj, QEvent *ev) override
    {
        if (ev->type() == QEvent::KeyPress) {
            const int tecla = static_cast<QKeyEvent *>(ev)->key();
            if (tecla == Qt::Key_Delete || tecla == Qt::Key_Backspace) {
                static_cast<QComboBox *>(obj)->setCurrentIndex(-1);
                return true;
            }
        }
        return false;
    }
};

} // namespace

namespace formulari {

void buidaAmbSuprimir(QComboBox *combo)
{
    combo->installEventFilter(new BuidaAmbSuprimir(combo));
}

QLineEdit *camp(const QString &nomObjecte, QWidget *pare, int maxim)
{
    auto *c = new QLineEdit(pare);
    c->setObjectName(nomObjecte);
    if (maxim > 0)
        c->setMaxLength(maxim);
    seleccionaTotEnEntrar(c);
    return c;
}

QPushButton *boto(const QString &text, const QString &nomObjecte, QWidget *pare)
{
    auto *b = new QPushButton(text, pare);
    b->setObjectName(nomObjecte);
    b->setAutoDefault(false);
    return b;
}

QColor aQColor(qint32 color)
{
    return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

qint32 deQColor(const QColor &color)
{
    return color.red() | (color.green() << 8) | (color.blue() << 16);
}

void ajustaAmpleLlista(QListWidget *llista, int maxim)
{
    const QFontMetrics fm(llista->font());
    int ample = 0;
    for (int i = 0; i < llista->count(); ++i) {
        QListWidgetItem *item = llista->item(i);
        const int a = fm.horizontalAdvance(item->text());
        item->setToolTip(item->text());
        ample = std::max(ample, a);
    }
    const int marges = 2 * llista->frameWidth() + llista->verticalScrollBar()->sizeHint().width() + 12;
    llista->setMinimumWidth(std::min(maxim, std::max(120, ample + marges)));
}

} // namespace formulari
