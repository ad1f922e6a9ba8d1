#include "ordre_finestres.h"

#include <QApplication>
#include <QEvent>

OrdreFinestres::OrdreFinestres(QObject *parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

OrdreFinestres::~OrdreFinestres()
{
    if (qApp)
        qApp->removeEventFilter(this);
}

bool OrdreFinestres::eventFilter(QObject *obj, QEvent *e)
{
    if (e->type() == QEvent::Show && obj->isWidgetType()) {
        auto *w = static_cast<QWidget *>(obj);
        const Qt::WindowType tipus = w->windowType();
        if (w->isWindow() && (tipus == Qt::Window || tipus == Qt::Dialog || tipus == Qt::Tool)) {
            m_ordre.removeAll(QPointer<QWidget>(w));
            m_ordre.append(w);
        }
    }
    return false;
}

QList<QWidget *> OrdreFinestres::obertes(const QWidget *excepte) const
{
    QList<QWidget *> r;
    for (auto it = m_ordre.crbegin(); it != m_ordre.crend(); ++it) {
        QWidget *w = *it;
        if (w && w != excepte && w->isVisible())
            r << w;
    }
    return r;
}

int OrdreFinestres::tancaTotes(const QWidget *excepte)
{
    int n = 0;
    for (QWidget *w : obertes(excepte)) {
        if (w->close())
            ++n;
    }
    m_ordre.removeAll(QPointer<QWidget>());
    return n;
}
