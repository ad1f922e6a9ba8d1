#include "formulari_widget.h"

#include "widgets/seleccio_text.h"

#include <QColor>
#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
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

} // namespace formulari
