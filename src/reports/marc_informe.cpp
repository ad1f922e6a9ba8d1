#include "marc_informe.h"

#include "logo_informe.h"

#include "core/formats.h"
#include "core/traduccio.h"

MarcInforme::MarcInforme(Impressora &impressora, int posicioSaltPagina)
    : m_imp(impressora), m_salt(posicioSaltPagina)
{
}

void MarcInforme::inicia(const Capcalera &c)
{
    m_capcalera = c;
    m_pagina = 1;
    capcalera();
}

void MarcInforme::capcalera()
{
    m_imp.imatge(logoInforme(), MargeEsquerre, 500, 7000, 1250);
    lletra(12, true);
    m_imp.setX(MargeEsquerre);
    m_imp.setY(YTitol);
    m_imp.imprimeix(m_capcalera.titol);
    m_imp.setX(MargeEsquerre);
    if (m_capcalera.linies)
        m_capcalera.linies(*this);
    baixa(m_capcalera.espaiAbansRegla);
    m_imp.setColor(0);
    m_imp.linia(MargeEsquerre, m_imp.y(), VoraDreta, m_imp.y());
    baixa(m_capcalera.espaiDespresRegla);

    const double y = m_imp.y();
    m_imp.setX(XPagina);
    m_imp.setY(m_salt + 1200);
    lletra(8, false);
    m_imp.imprimeix(Tradueix("pàg.") + QLatin1Char(' ') + QString::number(m_pagina));
    m_imp.setX(MargeEsquerre);
    m_imp.setY(y);
}

bool MarcInforme::comprovaSalt()
{
    if (m_imp.y() <= m_salt)
        return false;
    salta();
    return true;
}

void MarcInforme::salta()
{
    // The report sets its own font again before its next line; the marks must not leak into it.
    const double mida = m_imp.mida();
    const bool negreta = m_imp.negreta();
    const bool cursiva = m_imp.cursiva();
    const qint32 color = m_imp.color();

    m_imp.setX(XContinuacio);
    m_imp.setY(m_salt + 500);
    lletra(10, false, true);
    m_imp.imprimeix(Tradueix(" (Continúa...)"));
    m_imp.setCursiva(false);

    ++m_pagina;
    m_imp.paginaNova();
    capcalera();
    const double y = m_imp.y();

    m_imp.setX(XContinuacio);
    m_imp.setY(YTitol);
    lletra(10, false, true);
    m_imp.imprimeix(Tradueix("(Continuació)"));
    m_imp.setCursiva(false);

    m_imp.setX(MargeEsquerre);
    m_imp.setY(y);
    m_imp.setMida(mida);
    m_imp.setNegreta(negreta);
    m_imp.setCursiva(cursiva);
    m_imp.setColor(color);
}

void MarcInforme::acaba()
{
    m_imp.acabaDocument();
}

void MarcInforme::text(double x, const QString &t)
{
    const double y = m_imp.y();
    m_imp.setX(x);
    m_imp.imprimeix(t);
    m_imp.setY(y);
}

void MarcInforme::textDreta(double x, const QString &t)
{
    text(x - m_imp.ampleText(t), t);
}

void MarcInforme::baixa(double twips)
{
    m_imp.setY(m_imp.y() + twips);
}

void MarcInforme::lletra(double mida, bool negreta, bool cursiva)
{
    m_imp.setMida(mida);
    m_imp.setNegreta(negreta);
    m_imp.setCursiva(cursiva);
    m_imp.setColor(0);
}

QString MarcInforme::mesTitol(const QDate &dia)
{
    return format::nomMesCurt(dia.month()).trimmed().toUpper() + QLatin1Char(' ') + QString::number(dia.year());
}

QString MarcInforme::nomDia(const QDate &dia)
{
    return format::nomDia(format::diaSetmana(dia));
}
