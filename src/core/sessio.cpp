#include "sessio.h"

#include "directori_dades.h"

#include <QDir>
#include <QFileInfo>

Sessio::Sessio(const QString &dirDades)
{
    m_cfg = Configuracio::carrega(dirDades);
    const bool nova = !QFileInfo::exists(m_cfg.BaseDades);
    if (nova)
        QDir().mkpath(QFileInfo(m_cfg.BaseDades).absolutePath());
    m_db.open(m_cfg.BaseDades);
    if (nova)
        directori_dades::creaEsquema(m_db);

    const QString trad = directori_dades::fitxerTraduccio(dirDades);
    const bool novaTrad = !QFileInfo::exists(trad);
    m_dbTraduccio.open(trad);
    if (novaTrad || !m_dbTraduccio.tableExists(QStringLiteral("Ztraduccio")))
        creaTaulaTraduccio(m_dbTraduccio);
    m_traductor.carrega(m_dbTraduccio, m_cfg.Idioma);
    Traductor::instala(&m_traductor);
}

Sessio::~Sessio()
{
    if (Traductor::actual() == &m_traductor)
        Traductor::instala(nullptr);
}

void Sessio::canviaIdioma(const QString &idioma)
{
    m_cfg.Idioma = idioma;
    m_traductor.carrega(m_dbTraduccio, idioma);
}

void Sessio::recarregaConfiguracio()
{
    const Configuracio nova = Configuracio::carrega(m_cfg.dirDades, m_cfg.PrimerDiaSetmana);
    m_cfg = nova;
    m_traductor.carrega(m_dbTraduccio, m_cfg.Idioma);
}
