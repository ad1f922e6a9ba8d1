#include "logo_informe.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

QImage pinta()
{
    // 7000 × 1250 twips at about 290 dpi.
    QImage img(1400, 250, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);

    // The mark: a rounded blue sheet with a small agenda grid and a few coloured jobs.
    const QRectF q(4, 4, 242, 242);
    QPainterPath fons;
    fons.addRoundedRect(q, 38, 38);
    QLinearGradient g(q.topLeft(), q.bottomRight());
    g.setColorAt(0, QColor(0x2b, 0x5f, 0x9e));
    g.setColorAt(1, QColor(0x1b, 0x3a, 0x66));
    p.fillPath(fons, g);
    const QRectF m = q.adjusted(34, 34, -34, -34);
    const qreal cw = m.width() / 4, ch = m.height() / 4;
    const QColor colors[] = {QColor(0xf4, 0xc4, 0x30), QColor(0x5c, 0xc8, 0x6e), QColor(0xe8, 0x6a, 0x5a)};
    const int blocs[][4] = {{0, 0, 2, 0}, {1, 1, 1, 1}, {2, 0, 1, 2}, {3, 2, 2, 0}, {0, 3, 1, 1}, {2, 2, 2, 1}};
    p.setPen(Qt::NoPen);
    for (const auto &b : blocs) {
        p.setBrush(colors[b[3]]);
        p.drawRoundedRect(QRectF(m.left() + b[0] * cw + 4, m.top() + b[1] * ch + 4, cw - 8, b[2] * ch - 8), 6, 6);
    }
    p.setPen(QPen(QColor(255, 255, 255, 150), 3));
    p.setBrush(Qt::NoBrush);
    for (int i = 0; i <= 4; ++i) {
        p.drawLine(QPointF(m.left() + i * cw, m.top()), QPointF(m.left() + i * cw, m.bottom()));
        p.drawLine(QPointF(m.left(), m.top() + i * ch), QPointF(m.right(), m.top() + i * ch));
    }

    // The name beside it.
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(150);
    f.setBold(true);
    p.setFont(f);
    p.setPen(QColor(0x1b, 0x3a, 0x66));
    p.drawText(QRectF(290, 0, 1100, 250), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Quadrella"));
    return img;
}

} // namespace

QImage logoInforme()
{
    static const QImage logo = pinta();
    return logo;
}
