#include "impressora_painter.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPageLayout>
#include <stdexcept>

namespace {
// Rules and boxes: about a quarter of a millimetre.
constexpr double GruixLinia = 14.0;
} // namespace

ImpressoraPainter::ImpressoraPainter(QPagedPaintDevice *device) : m_device(device)
{
    if (!m_painter.begin(device))
        throw std::runtime_error("no es pot començar a dibuixar el document");
    preparaPagina();
}

ImpressoraPainter::~ImpressoraPainter()
{
    if (m_painter.isActive())
        m_painter.end();
}

void ImpressoraPainter::preparaA4(QPagedPaintDevice &device)
{
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
}

void ImpressoraPainter::preparaPagina()
{
    m_painter.resetTransform();
    m_painter.scale(m_device->logicalDpiX() / 1440.0, m_device->logicalDpiY() / 1440.0);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setRenderHint(QPainter::TextAntialiasing);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
}

QPen ImpressoraPainter::llapis() const
{
    QPen p(colorSistema(color()), GruixLinia);
    p.setCapStyle(Qt::FlatCap);
    p.setJoinStyle(Qt::MiterJoin);
    return p;
}

void ImpressoraPainter::dibuixaText(double x, double y, const QString &text)
{
    m_painter.setFont(font());
    m_painter.setPen(colorSistema(color()));
    m_painter.drawText(QPointF(x, y + QFontMetricsF(font()).ascent()), text);
}

void ImpressoraPainter::dibuixaLinia(double x1, double y1, double x2, double y2)
{
    m_painter.setPen(llapis());
    m_painter.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void ImpressoraPainter::dibuixaRequadre(double x1, double y1, double x2, double y2, bool ple)
{
    const QRectF r = QRectF(QPointF(x1, y1), QPointF(x2, y2)).normalized();
    if (ple) {
        m_painter.fillRect(r, colorSistema(color()));
        return;
    }
    m_painter.setPen(llapis());
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(r);
}

void ImpressoraPainter::dibuixaImatge(const QImage &imatge, double x, double y, double ample, double alt)
{
    m_painter.drawImage(QRectF(x, y, ample, alt), imatge);
}

void ImpressoraPainter::novaPagina()
{
    if (!m_device->newPage())
        throw std::runtime_error("no es pot començar una pàgina nova");
    preparaPagina();
}

void ImpressoraPainter::tanca()
{
    m_painter.end();
}
