#pragma once
// A scripted user for the modal dialogs a test cannot reach from its own code (they run inside
// exec()): each queued action runs on the next modal dialog that appears, in order.

#include <QApplication>
#include <QList>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>

class GuioUsuari : public QObject {
public:
    using Accio = std::function<void(QWidget *dialeg)>;

    GuioUsuari()
    {
        m_timer.setInterval(10);
        connect(&m_timer, &QTimer::timeout, this, [this] { mira(); });
        m_timer.start();
    }

    void quanAparegui(Accio a) { m_accions.append(std::move(a)); }
    int pendents() const { return m_accions.size(); }
    QStringList vistos() const { return m_vistos; }

private:
    void mira()
    {
        QWidget *m = QApplication::activeModalWidget();
        if (!m || !m->isVisible() || m == m_ultim || m_accions.isEmpty())
            return;
        m_ultim = m;
        m_vistos << m->objectName();
        Accio a = m_accions.takeFirst();
        a(m);
    }

    QTimer m_timer;
    QList<Accio> m_accions;
    QPointer<QWidget> m_ultim;
    QStringList m_vistos;
};

