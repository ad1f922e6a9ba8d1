#include "pila_desfer.h"

#include "traduccio.h"

void PilaDesfer::avisa()
{
    if (alCanviar)
        alCanviar();
}

void PilaDesfer::afegeix(std::unique_ptr<OrdreDesfer> ordre)
{
    if (!ordre)
        return;
    m_ordres.erase(m_ordres.begin() + m_fets, m_ordres.end());
    m_ordres.push_back(std::move(ordre));
    m_fets = static_cast<int>(m_ordres.size());
    avisa();
}

QString PilaDesfer::textDesfer() const
{
    return potDesfer() ? m_ordres[m_fets - 1]->text() : QString();
}

QString PilaDesfer::textRefer() const
{
    return potRefer() ? m_ordres[m_fets]->text() : QString();
}

QString PilaDesfer::desfes()
{
    if (!potDesfer())
        return QString();
    const QString error = m_ordres[m_fets - 1]->desfes();
    if (error.isEmpty()) {
        --m_fets;
        avisa();
    }
    return error;
}

QString PilaDesfer::refes()
{
    if (!potRefer())
        return QString();
    const QString error = m_ordres[m_fets]->refes();
    if (error.isEmpty()) {
        ++m_fets;
        avisa();
    }
    return error;
}

void PilaDesfer::neteja(const QString &motiu)
{
    // Two cuts in a row with nothing between them say nothing new.
    if (m_ordres.empty() && !m_tancades.isEmpty() && m_tancades.last().tipus == Entrada::Tall
        && m_tancades.last().text == motiu)
        return;
    // What was undone never happened: only the done commands stay in the history.
    for (int i = 0; i < m_fets; ++i)
        m_tancades.append({Entrada::Tancat, m_ordres[i]->text()});
    m_tancades.append({Entrada::Tall, motiu});
    m_ordres.clear();
    m_fets = 0;
    avisa();
}

void PilaDesfer::netejaDadesMestres()
{
    neteja(Tradueix("canvis en les dades mestres"));
}

QList<PilaDesfer::Entrada> PilaDesfer::historial() const
{
    QList<Entrada> h = m_tancades;
    for (int i = 0; i < static_cast<int>(m_ordres.size()); ++i)
        h.append({i < m_fets ? Entrada::Fet : Entrada::Desfet, m_ordres[i]->text()});
    return h;
}
