#include "logo_quadrella.h"

#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

void pintaLogo(QPainter &p, const QRectF &r)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = qMin(r.width(), r.height());
    const QRectF q(r.center().x() - s / 2, r.center().y() - s / 2, s, s);

    // The sheet: a rounded square in a deep blue.
    QPainterPath fons;
    fons.addRoundedRect(q, s * 0.16, s * 0.16);
    QLinearGradient g(q.topLeft(), q.bottomRight());
    g.setColorAt(0, QColor(0x2b, 0x5f, 0x9e));
    g.setColorAt(1, QColor(0x1b, 0x3a, 0x66));
    p.fillPath(fons, g);

    // The grid of the agenda: 4 columns, 4 rows.
    const QRectF m = q.adjusted(s * 0.14, s * 0.14, -s * 0.14, -s * 0.14);
    const qreal cw = m.width() / 4, ch = m.height() / 4;
    const QColor feines[] = {QColor(0xf4, 0xc4, 0x30), QColor(0x5c, 0xc8, 0x6e), QColor(0xe8, 0x6a, 0x5a)};
    struct Bloc {
        int col, fila, alt, color;
    };
    const Bloc blocs[] = {{0, 0, 2, 0}, {1, 1, 1, 1}, {2, 0, 1, 2}, {3, 2, 2, 0}, {0, 3, 1, 1}, {2, 2, 2, 1}};
    const qreal marge = s * 0.018;
    for (const Bloc &b : blocs) {
        const QRectF c(m.left() + b.col * cw + marge, m.top() + b.fila * ch + marge, cw - 2 * marge,
                       b.alt * ch - 2 * marge);
        p.setPen(Qt::NoPen);
        p.setBrush(feines[b.color]);
        p.drawRoundedRect(c, s * 0.025, s * 0.025);
    }
    QPen linia(QColor(255, 255, 255, 150), qMax<qreal>(1.0, s * 0.012));
    p.setPen(linia);
    p.setBrush(Qt::NoBrush);
    for (int i = 0; i <= 4; ++i) {
        p.drawLine(QPointF(m.left() + i * cw, m.top()), QPointF(m.left() + i * cw, m.bottom()));
        p.drawLine(QPointF(m.left(), m.top() + i * ch), QPointF(m.right(), m.top() + i * ch));
    }
    p.restore();
}

QPixmap pixmapLogo(int mida, qreal ratio)
{
    QPixmap px(qRound(mida * ratio), qRound(mida * ratio));
    px.fill(Qt::transparent);
    {
        QPainter p(&px);
        pintaLogo(p, QRectF(0, 0, px.width(), px.height()));
    }
    px.setDevicePixelRatio(ratio);
    return px;
}

QIcon iconaQuadrella()
{
    QIcon icona;
    for (int mida : {16, 24, 32, 48, 64, 128, 256})
        icona.addPixmap(pixmapLogo(mida));
    return icona;
}

LogoClicable::LogoClicable(int mida, QWidget *parent) : QLabel(parent)
{
    setPixmap(pixmapLogo(mida, devicePixelRatioF()));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setAlignment(Qt::AlignCenter);
}

void LogoClicable::mouseReleaseEvent(QMouseEvent *e)
{
    if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()))
        emit clicat();
    QLabel::mouseReleaseEvent(e);
}

void LogoClicable::keyPressEvent(QKeyEvent *e)
{
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter || e->key() == Qt::Key_Space) {
        emit clicat();
        return;
    }
    QLabel::keyPressEvent(e);
}
