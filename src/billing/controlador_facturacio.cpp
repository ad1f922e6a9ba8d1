#include "controlador_facturacio.h"

#include "factura_client.h"
#include "pagaments.h"
#include "xecs_facturacio.h"

#include "core/formats.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/carrega_feina.h"
#include "jobs/ordre_feina.h"

namespace {

const QString kTitol = QStringLiteral("Quadrella");

} // namespace

ControladorFacturacio::ControladorFacturacio(Sessio &sessio, Interaccio &io)
    : m_sessio(sessio), m_io(io), m_facturacio(sessio.db(), sessio.cfg()), m_motor(sessio.db(), sessio.cfg()),
      m_xecs(sessio, io)
{
}

void ControladorFacturacio::setAvui(const QDate &avui)
{
    m_avui = avui;
    m_motor.setAvui(avui);
    m_xecs.setAvui(avui);
}

QString ControladorFacturacio::textBotoFacturar() const
{
    return ambClient() ? Tradueix("Facturar client") : Tradueix("Imprimir dades facturació");
}

// ------------------------------------------------------------------ fields

QString ControladorFacturacio::entraMes(const QString &text) const
{
    return text.trimmed().isEmpty() ? MesFactura::actual(avui()) : text;
}

bool ControladorFacturacio::surtMes(QString &text)
{
    QString t = text.trimmed();
    if (t.isEmpty())
        t = MesFactura::actual(avui());
    if (!MesFactura::valid(t)) {
        m_io.informa(kTitol, Tradueix("Mes erroni (format: 'mm/aaaa')"));
        return false;
    }
    text = t;
    if (t != m_mes) {
        m_mes = t;
        llegeixPagament();
        construeix();
    }
    return true;
}

void ControladorFacturacio::triaClient(const QString &client)
{
    m_client = client;
    llegeixPagament();
    construeix();
}

void ControladorFacturacio::canviaPendents(bool pendents)
{
    m_pendents = pendents;
    if (ambClient())
        construeix();
}

bool ControladorFacturacio::surtPagament(const QString &text)
{
    if (!ambClient())
        return true;
    const QString t = text.trimmed();
    double valor = 0.0;
    if (!t.isEmpty() && !format::llegeixReal(t, &valor)) {
        m_io.informa(kTitol, Tradueix("El pagament ha de ser un import"));
        return false;
    }
    m_pagament = textPagament(Grava_Pagament(m_sessio.db(), m_mes, m_client, t));
    m_facturacio.posaPagament(m_pagament);
    return true;
}

void ControladorFacturacio::llegeixPagament()
{
    m_pagament = ambClient() && !m_mes.isEmpty() ? textPagament(Pagament_Mes(m_sessio.db(), m_mes, m_client))
                                                 : QString();
}

// ------------------------------------------------------------------ rebuilding

void ControladorFacturacio::construeix()
{
    m_facturacio.Carrega_Facturacio(ParametresFacturacio{m_mes, m_client, m_pendents, m_pagament});
    m_sessio.RefrescarFacturacio = false;
    ++m_construccions;
}

void ControladorFacturacio::reconstrueix()
{
    llegeixPagament();
    construeix();
}

// ------------------------------------------------------------------ jobs of the sheet

bool ControladorFacturacio::carregaSeleccionada(int fila)
{
    FeinaSeleccionada = Feina();
    const int id = m_facturacio.feinaFila(fila);
    if (id == 0)
        return false;
    if (!carregaFeina(m_sessio.db(), id, FeinaSeleccionada)) {
        m_io.informa(kTitol, Tradueix("Feina no trobada"));
        return false;
    }
    return true;
}

bool ControladorFacturacio::obreEditorSeleccionada()
{
    FeinaSeleccionada.missatge.clear();
    if (!obreEditor)
        return false;
    CanviFeina canvi(&m_sessio.Desfer, m_sessio.db(), m_sessio.cfg(), FeinaSeleccionada.feines_id);
    obreEditor(FeinaSeleccionada);
    if (FeinaSeleccionada.missatge != QLatin1String("OK"))
        return false;
    Feina canviada = FeinaSeleccionada;
    canviada.missatge.clear();
    canvi.registra(canviada, CanviFeina::Tipus::Modificada);
    m_sessio.RefrescarAgenda = true;
    m_sessio.RefrescarFacturacio = true; // the sheets show the change at their next build
    // Marking a job not done frees the vouchers it had used.
    if (!FeinaSeleccionada.feines_feta)
        xecsCanviats();
    return true;
}

void ControladorFacturacio::teclaFeina(int fila, Tecla t)
{
    if (!carregaSeleccionada(fila))
        return;
    Feina f = FeinaSeleccionada;
    switch (t) {
    case Tecla::Intro:
        obreEditorSeleccionada();
        break;
    case Tecla::Espai: {
        f.feines_feta = !f.feines_feta;
        CanviFeina canvi(&m_sessio.Desfer, m_sessio.db(), m_sessio.cfg(), f.feines_id);
        m_motor.Modifica_Feina(f);
        canvi.registra(f, CanviFeina::Tipus::Feta);
        if (!f.missatge.isEmpty()) {
            m_io.informa(kTitol, f.missatge);
            break;
        }
        m_sessio.RefrescarAgenda = true;
        m_sessio.RefrescarFacturacio = true;
        if (!f.feines_feta)
            xecsCanviats();
        break;
    }
    case Tecla::Suprimir: {
        const QString pregunta = Tradueix("Eliminar feina '") + f.llocs_nom + QLatin1Char('\'') + Tradueix(" del")
            + QLatin1Char(' ') + format::dataCurta(f.feines_data) + QStringLiteral(" ?");
        if (!m_io.pregunta(Tradueix("CONFIRMACIO"), pregunta))
            break;
        CanviFeina canvi(&m_sessio.Desfer, m_sessio.db(), m_sessio.cfg(), f.feines_id);
        m_motor.Borra_Feina(f);
        canvi.registra(f, CanviFeina::Tipus::Esborrada);
        if (!f.missatge.isEmpty()) {
            m_io.informa(kTitol, f.missatge);
            break;
        }
        construeix();
        m_sessio.RefrescarAgenda = true;
        xecsCanviats();
        break;
    }
    }
    FeinaSeleccionada = Feina();
}

void ControladorFacturacio::dobleClicFeina(int fila)
{
    if (carregaSeleccionada(fila) && obreEditorSeleccionada())
        construeix();
    FeinaSeleccionada = Feina();
}

// ------------------------------------------------------------------ vouchers and the commit

void ControladorFacturacio::suprimeixXec(int fila)
{
    if (EliminarXecFila(m_facturacio, m_xecs, fila) != Resultat::Fet)
        return;
    // The sheets were rebuilt by the deletion.
    m_sessio.RefrescarFacturacio = false;
    ++m_construccions;
    xecsCanviats();
}

bool ControladorFacturacio::factura()
{
    if (!ambClient())
        return false;
    // Something changed under the sheets since they were built (a job changed from them, or
    // elsewhere): bill what the database holds now, not what was shown.
    if (m_sessio.RefrescarFacturacio)
        construeix();
    const ResultatFactura r = Factura_Client(m_facturacio, m_io, avui());
    if (!r.fet)
        return false;
    m_sessio.Desfer.neteja(Tradueix("facturació de %1 del mes %2").arg(m_client, m_mes));
    m_sessio.RefrescarFacturacio = false;
    ++m_construccions;
    if (imprimeixFactura)
        imprimeixFactura(m_facturacio);
    xecsCanviats();
    return true;
}

void ControladorFacturacio::xecsCanviats()
{
    if (recarregaXecs)
        recarregaXecs();
}
