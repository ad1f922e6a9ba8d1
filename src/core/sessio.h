#pragma once
// One working session on a data directory: the settings, the open business database and the
// translator. The desktop program and every command-line command open one; tests make their own.

#include "configuracio.h"
#include "db.h"
#include "pila_desfer.h"
#include "traduccio.h"

#include <memory>

class Sessio {
public:
    // Loads the settings, opens the translation database (recreated from the shipped rows when
    // missing) and installs the translator, then opens the business database, which must exist,
    // migrating an older schema after a dated backup (versions_esquema). Throws ConfigError,
    // DbError or std::runtime_error.
    explicit Sessio(const QString &dirDades);
    ~Sessio();
    Sessio(const Sessio &) = delete;
    Sessio &operator=(const Sessio &) = delete;

    Configuracio &cfg() { return m_cfg; }
    const Configuracio &cfg() const { return m_cfg; }
    Db &db() { return m_db; }
    Db &dbTraduccio() { return m_dbTraduccio; }
    Traductor &traductor() { return m_traductor; }
    QString dirDades() const { return m_cfg.dirDades; }

    // Changes the language of texts translated from now on.
    void canviaIdioma(const QString &idioma);
    // Reloads the settings from the file (after the configuration dialog wrote it).
    void recarregaConfiguracio();

    // Flags that tell a page to rebuild before it is shown again.
    bool RefrescarAgenda = false;
    bool RefrescarFacturacio = false;
    bool ReiniciarAplicacio = false;
    bool CompactarBD = false;
    // The undo stack of the desktop program's changes, for the whole run.
    PilaDesfer Desfer;
    // The backup written before this session migrated an older database; "" when none was.
    QString copiaMigracio;

private:
    Configuracio m_cfg;
    Db m_db;
    Db m_dbTraduccio;
    Traductor m_traductor;
};
