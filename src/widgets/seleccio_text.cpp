#include "seleccio_text.h"

#include <QEvent>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

namespace {

class SeleccioEnEntrar : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject *obj, QEvent *e) override
    {
        if (e->type() == QEvent::FocusIn) {
            if (auto *camp = qobject_cast<QLineEdit *>(obj)) {
                // A click places the cursor after the focus arrives: select once the click is done.
                camp->selectAll();
                QPointer<QLineEdit> p(camp);
                QTimer::singleShot(0, camp, [p] {
                    if (p && p->hasFocus())
                        p->selectAll();
                });
            }
        }
        return false;
    }
};

SeleccioEnEntrar *filtre()
{
    static SeleccioEnEntrar *f = new SeleccioEnEntrar;
    return f;
}

} // namespace

void seleccionaTotEnEntrar(QLineEdit *camp)
{
    if (camp)
        camp->installEventFilter(filtre());
}

void seleccionaTotEnEntrarA(QWidget *arrel)
{
    if (!arrel)
        return;
    const auto camps = arrel->findChildren<QLineEdit *>();
    for (QLineEdit *c : camps) {
        // A combo box's own line edit and read-only fields are not data entry.
        const QObject *pare = c->parent();
        if (c->isReadOnly() || (pare && (pare->inherits("QAbstractSpinBox") || pare->inherits("QComboBox"))))
            continue;
        seleccionaTotEnEntrar(c);
    }
}
