#include "sessio.h"

#include "directori_dades.h"
#include "versions_esquema.h"

#include <QFileInfo>

Sessio::Sessio(const QString &dirDades)
{
    m_cfg = Configuracio::carrega(dirDades);

    // The translator first, so that a database that cannot be opened is reported in the user's
    // language. The translation database holds no user data: it is rebuilt when missing.
    const QString trad = directori_dades::fitxerTraduccio(dirDades);
    const bool novaTrad = !QFileInfo::exists(trad);
    m_dbTraduccio.open(trad);
    if (novaTrad || !m_dbTraduccio.tableExists(QStringLiteral("Ztraduccio")))
        creaTaulaTraduccio(m_dbTraduccio);
    m_traductor.carrega(m_dbTraduccio, m_cfg.Idioma);
    const Traductor *anterior = Traductor::actual();
    Traductor::instala(&m_traductor);

    try {
        const versions_esquema::Actualitzacio a = versions_esquema::obre(m_db, m_cfg.BaseDades);
        copiaMigracio = a.copia;
    } catch (...) {
        Traductor::instala(anterior);
        throw;
    }
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
