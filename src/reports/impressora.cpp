#include "impressora.h"

#include <QColor>
#include <QFontMetricsF>
#include <cmath>

namespace {
constexpr double TwipsPerPunt = 20.0;
}

Impressora::Impressora()
{
    actualitzaFont();
}

Impressora::~Impressora() = default;

QString Impressora::familia()
{
    return QStringLiteral("DejaVu Sans");
}

void Impressora::setMida(double punts)
{
    m_mida = punts;
    actualitzaFont();
}

void Impressora::setNegreta(bool negreta)
{
    m_negreta = negreta;
    actualitzaFont();
}

void Impressora::setCursiva(bool cursiva)
{
    m_cursiva = cursiva;
    actualitzaFont();
}

void Impressora::actualitzaFont()
{
    QFont f(familia());
    // Pixels stand for twips: the same metrics whatever the resolution of the device.
    f.setPixelSize(int(std::lround(m_mida * TwipsPerPunt)));
    f.setBold(m_negreta);
    f.setItalic(m_cursiva);
    f.setHintingPreference(QFont::PreferNoHinting);
    f.setKerning(false);
    m_font = f;
}

double Impressora::ampleText(const QString &text) const
{
    return QFontMetricsF(m_font).horizontalAdvance(text);
}

double Impressora::altLinia() const
{
    return QFontMetricsF(m_font).height();
}

void Impressora::imprimeix(const QString &text)
{
    if (!text.isEmpty())
        dibuixaText(m_x, m_y, text);
    m_y += altLinia();
}

void Impressora::linia(double x1, double y1, double x2, double y2)
{
    dibuixaLinia(x1, y1, x2, y2);
}

void Impressora::requadre(double x1, double y1, double x2, double y2, bool ple)
{
    dibuixaRequadre(x1, y1, x2, y2, ple);
}

void Impressora::imatge(const QImage &imatge, double x, double y, double ample, double alt)
{
    dibuixaImatge(imatge, x, y, ample, alt);
}

void Impressora::paginaNova()
{
    novaPagina();
}

void Impressora::acabaDocument()
{
    if (m_acabat)
        return;
    m_acabat = true;
    tanca();
}

QColor colorSistema(qint32 rgb)
{
    const quint32 v = quint32(rgb);
    return QColor(int(v & 0xff), int((v >> 8) & 0xff), int((v >> 16) & 0xff));
}
