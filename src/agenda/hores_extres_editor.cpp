#include "hores_extres_editor.h"

#include "agenda_model.h"
#include "hores_extres.h"
#include "ordre_hores_extres.h"

#include "core/configuracio.h"
#include "core/formats.h"
#include "jobs/motor_feines.h"

EditorHores::EditorHores(Db &db, const Configuracio &cfg, const ModelAgenda &model)
    : m_db(db), m_cfg(cfg), m_model(model)
{
}

bool EditorHores::potObrir(int col, bool perClic) const
{
    if (m_model.vista() != VistaAgenda::Dia || col < 1 || col >= m_model.columnes())
        return false;
    const QString capcalera = m_model.text(0, col);
    if (capcalera.isEmpty() || capcalera == m_cfg.TexteNoAsignada || m_model.recursColumna(col).isEmpty())
        return false;
    if (!perClic)
        return true;
    MotorFeines motor(m_db, m_cfg);
    return motor.Assigna_Temps_Recurs(m_model.recursColumna(col));
}

QString EditorHores::proposta(int col) const
{
    return format::import(Calcula_Hores_Extres(m_model, col, m_cfg, m_model.estat().DiaActual));
}

bool EditorHores::obre(int col, bool perClic, const QString &teclejat)
{
    if (!potObrir(col, perClic))
        return false;
    m_columna = col;
    m_recurs = m_model.recursColumna(col);
    m_dia = m_model.estat().DiaActual;
    m_visible = true;
    // A control key or the blank opens on the proposal; a typed key starts a new value.
    const bool tecla = !teclejat.isEmpty() && teclejat.at(0).unicode() > 32;
    m_seleccionat = !tecla;
    m_text = tecla ? teclejat : proposta(col);
    return true;
}

QString EditorHores::confirma()
{
    if (!m_visible)
        return QString();
    m_visible = false;
    const QString cella = textHores(m_text);
    const double abans = m_pila ? Hores_Fetes(m_db, m_recurs, m_dia) : 0.0;
    Grava_Hores_Fetes(m_db, valorHores(cella), m_recurs, m_dia);
    if (m_pila) {
        const double despres = Hores_Fetes(m_db, m_recurs, m_dia);
        if (despres != abans)
            m_pila->afegeix(std::make_unique<OrdreHoresExtres>(m_db, m_recurs, m_dia, abans, despres));
    }
    return cella;
}

void EditorHores::cancela()
{
    m_visible = false;
}
