#include "impressora_registre.h"

#include <QJsonArray>
#include <cmath>

namespace {

int tw(double v)
{
    return int(std::lround(v));
}

} // namespace

ImpressoraRegistre::ImpressoraRegistre()
{
    m_pagines.append(PaginaDibuix{});
}

void ImpressoraRegistre::dibuixaText(double x, double y, const QString &text)
{
    ElementDibuix e;
    e.tipus = ElementDibuix::Text;
    e.x1 = x;
    e.y1 = y;
    e.ample = ampleText(text);
    e.text = text;
    e.mida = mida();
    e.negreta = negreta();
    e.cursiva = cursiva();
    e.color = color();
    m_pagines.last().elements.append(e);
}

void ImpressoraRegistre::dibuixaLinia(double x1, double y1, double x2, double y2)
{
    ElementDibuix e;
    e.tipus = ElementDibuix::Linia;
    e.x1 = x1;
    e.y1 = y1;
    e.x2 = x2;
    e.y2 = y2;
    e.color = color();
    m_pagines.last().elements.append(e);
}

void ImpressoraRegistre::dibuixaRequadre(double x1, double y1, double x2, double y2, bool ple)
{
    ElementDibuix e;
    e.tipus = ElementDibuix::Requadre;
    e.x1 = x1;
    e.y1 = y1;
    e.x2 = x2;
    e.y2 = y2;
    e.color = color();
    e.ple = ple;
    m_pagines.last().elements.append(e);
}

void ImpressoraRegistre::dibuixaImatge(const QImage &, double x, double y, double ample, double alt)
{
    ElementDibuix e;
    e.tipus = ElementDibuix::Imatge;
    e.x1 = x;
    e.y1 = y;
    e.x2 = x + ample;
    e.y2 = y + alt;
    m_pagines.last().elements.append(e);
}

void ImpressoraRegistre::novaPagina()
{
    PaginaDibuix p;
    p.numero = int(m_pagines.size()) + 1;
    m_pagines.append(p);
}

QStringList ImpressoraRegistre::textos() const
{
    QStringList t;
    for (const PaginaDibuix &p : m_pagines)
        for (const ElementDibuix &e : p.elements)
            if (e.tipus == ElementDibuix::Text)
                t << e.text;
    return t;
}

QJsonObject ImpressoraRegistre::json() const
{
    QJsonArray pagines;
    for (const PaginaDibuix &p : m_pagines) {
        QJsonArray items;
        for (const ElementDibuix &e : p.elements) {
            switch (e.tipus) {
            case ElementDibuix::Text:
                items.append(QJsonObject{{"op", "text"}, {"x", tw(e.x1)}, {"y", tw(e.y1)}, {"w", tw(e.ample)},
                                         {"text", e.text}, {"size", e.mida}, {"bold", e.negreta},
                                         {"italic", e.cursiva}, {"rgb", e.color}});
                break;
            case ElementDibuix::Linia:
                items.append(QJsonObject{{"op", "line"}, {"x1", tw(e.x1)}, {"y1", tw(e.y1)}, {"x2", tw(e.x2)},
                                         {"y2", tw(e.y2)}});
                break;
            case ElementDibuix::Requadre: {
                QJsonObject o{{"op", "box"}, {"x1", tw(e.x1)}, {"y1", tw(e.y1)}, {"x2", tw(e.x2)}, {"y2", tw(e.y2)}};
                // A filled box (the agenda's coloured cells) says with which colour.
                if (e.ple)
                    o.insert(QStringLiteral("fill"), e.color);
                items.append(o);
                break;
            }
            case ElementDibuix::Imatge:
                items.append(QJsonObject{{"op", "picture"}, {"x", tw(e.x1)}, {"y", tw(e.y1)},
                                         {"w", tw(e.x2 - e.x1)}, {"h", tw(e.y2 - e.y1)}});
                break;
            }
        }
        pagines.append(QJsonObject{{"number", p.numero}, {"items", items}});
    }
    return QJsonObject{{"pages", pagines}};
}

QString ImpressoraRegistre::text() const
{
    QString t;
    for (const PaginaDibuix &p : m_pagines) {
        t += QStringLiteral("== page %1\n").arg(p.numero);
        for (const ElementDibuix &e : p.elements) {
            switch (e.tipus) {
            case ElementDibuix::Text: {
                QString lletra = QString::number(e.mida);
                if (e.negreta)
                    lletra += QLatin1Char('B');
                if (e.cursiva)
                    lletra += QLatin1Char('I');
                if (e.color != 0)
                    lletra += QStringLiteral(" #%1").arg(quint32(e.color), 6, 16, QLatin1Char('0'));
                t += QStringLiteral("text %1,%2 w%3 %4 \"%5\"\n")
                         .arg(tw(e.x1)).arg(tw(e.y1)).arg(tw(e.ample)).arg(lletra, e.text);
                break;
            }
            case ElementDibuix::Linia:
                t += QStringLiteral("line %1,%2 %3,%4\n").arg(tw(e.x1)).arg(tw(e.y1)).arg(tw(e.x2)).arg(tw(e.y2));
                break;
            case ElementDibuix::Requadre:
                t += QStringLiteral("box %1,%2 %3,%4").arg(tw(e.x1)).arg(tw(e.y1)).arg(tw(e.x2)).arg(tw(e.y2));
                if (e.ple)
                    t += QStringLiteral(" fill #%1").arg(quint32(e.color), 6, 16, QLatin1Char('0'));
                t += QLatin1Char('\n');
                break;
            case ElementDibuix::Imatge:
                t += QStringLiteral("picture %1,%2 %3x%4\n")
                         .arg(tw(e.x1)).arg(tw(e.y1)).arg(tw(e.x2 - e.x1)).arg(tw(e.y2 - e.y1));
                break;
            }
        }
    }
    return t;
}
