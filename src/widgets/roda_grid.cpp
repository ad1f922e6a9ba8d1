#include "roda_grid.h"

#include <QAbstractItemView>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

namespace {

class RodaUnaFila : public QObject {
public:
    explicit RodaUnaFila(QAbstractItemView *grid) : QObject(grid), m_grid(grid) {}

    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() != QEvent::Wheel || !m_grid || !m_grid->hasFocus())
            return false;
        auto *w = static_cast<QWheelEvent *>(e);
        const QPoint angle = w->angleDelta();
        // A horizontal wheel, or a vertical one held with Alt, is left to the view.
        if (angle.y() == 0 || (w->modifiers() & Qt::AltModifier))
            return false;
        // High-resolution wheels send fractions of a notch: keep the remainder.
        m_resta += angle.y();
        const int osques = m_resta / 120;
        m_resta -= osques * 120;
        QScrollBar *barra = m_grid->verticalScrollBar();
        for (int i = 0; i < qAbs(osques); ++i)
            barra->triggerAction(osques > 0 ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
        w->accept();
        return true;
    }

private:
    QPointer<QAbstractItemView> m_grid;
    int m_resta = 0;
};

} // namespace

void instalaRodaUnaFila(QAbstractItemView *grid)
{
    if (!grid || grid->viewport()->findChild<QObject *>(QStringLiteral("RodaUnaFila"), Qt::FindDirectChildrenOnly))
        return;
    // A single step of the scroll bar is one row only when the view scrolls by items.
    grid->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    auto *f = new RodaUnaFila(grid);
    f->setParent(grid->viewport());
    f->setObjectName(QStringLiteral("RodaUnaFila"));
    grid->viewport()->installEventFilter(f);
}

void treuRodaUnaFila(QAbstractItemView *grid)
{
    if (!grid)
        return;
    if (auto *f = grid->viewport()->findChild<QObject *>(QStringLiteral("RodaUnaFila"), Qt::FindDirectChildrenOnly)) {
        grid->viewport()->removeEventFilter(f);
        delete f;
    }
}
