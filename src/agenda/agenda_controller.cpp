#include "agenda_controller.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/traduccio.h"
#include "jobs/planificacio.h"
#include "jobs/ordre_feina.h"
#include "jobs/planificacio_generacio.h"

namespace {

// Message boxes of the agenda carry the program's name: the messages are the engine's own.
const QString kTitol = QStringLiteral("Quadrella");

// Keeps a planning log when no message window was given, to show it once the run ends.
class RegistreRecollit : public RegistreSortida {
public:
    QString text;
    void afegeix(const QString &t) override { text += t; }
};

} // namespace

ControladorAgenda::ControladorAgenda(Db &db, Configuracio &cfg, Interaccio &interaccio, const QDate &avui)
    : m_db(db), m_cfg(cfg), m_interaccio(interaccio), m_motor(db, cfg), m_model(db, cfg)
{
    setAvui(avui);
    const QDate hui = avui.isValid() ? avui : QDate::currentDate();
    m_estat = EstatAgenda(VistaAgenda::Mes, hui, cfg.PrimerDiaSetmana);
    reiniciaSeleccio();
}

void ControladorAgenda::setIndicadors(bool *refrescarAgenda, bool *refrescarFacturacio)
{
    m_refrescarAgenda = refrescarAgenda ? refrescarAgenda : &m_propiAgenda;
    m_refrescarFacturacio = refrescarFacturacio ? refrescarFacturacio : &m_propiFacturacio;
}

void ControladorAgenda::setAvui(const QDate &avui)
{
    m_avui = avui;
    m_model.setAvui(avui);
    m_motor.setAvui(avui);
}

void ControladorAgenda::reiniciaSeleccio()
{
    FeinaSeleccionada = Feina();
    FeinaSeleccionada.feines_data = QDate(1900, 1, 6);
}

void ControladorAgenda::setCellaActual(int fila, int col)
{
    m_filaActual = qBound(1, fila, qMax(1, m_model.files() - 1));
    m_colActual = qBound(1, col, qMax(1, m_model.columnes() - 1));
}

// ------------------------------------------------------------------ rebuild

void ControladorAgenda::Construeix_Agenda()
{
    if (abansDeReconstruir)
        abansDeReconstruir();
    const int fila = m_filaActual;
    const int col = m_colActual;
    try {
        m_model.Construeix_Agenda(m_estat);
    } catch (const DbError &) {
        // The rebuild reports nothing itself: the grid keeps what was drawn before the error.
    }
    setCellaActual(fila, col);
    *m_refrescarAgenda = false;
    m_imprimirActiu = false;
    if (alReconstruir)
        alReconstruir();
    // Told once the grid shows the new model: a message box lets the page repaint meanwhile.
    for (const QString &avis : m_model.avisos())
        m_interaccio.informa(kTitol, avis);
}

// ------------------------------------------------------------------ helpers

bool ControladorAgenda::esCellaUnica(int fila, int col) const
{
    if (m_estat.vista == VistaAgenda::Mes || m_model.vista() == VistaAgenda::Mes || !m_model.esCos(fila, col))
        return false;
    const CellaAgenda &c = m_model.cella(fila, col);
    return !c.text.isEmpty() && c.text != m_cfg.TexteVaris && c.fons != SenseColor;
}

int ControladorAgenda::cellesFeina(const Feina &f) const
{
    const int minuts = hora::minuts(f.feines_hora_fi) - hora::minuts(f.feines_hora_inici);
    return qMax(1, minuts / qMax(1, m_cfg.MinutsCella));
}

void ControladorAgenda::buscaFeinaCella(int fila, int col, Feina &f)
{
    const CellaAgenda &c = m_model.cella(fila, col);
    m_motor.Busca_Feina(f, m_model.diaCella(fila, col), m_model.horaFila(fila), c.text,
                        m_motor.Recurs_Per_Color(c.fons));
}

void ControladorAgenda::refusa(const QString &missatge)
{
    m_interaccio.informa(kTitol, missatge);
}

void ControladorAgenda::errorInesperat(const QString &text)
{
    m_interaccio.error(QStringLiteral("ERROR"), QStringLiteral("Error:") + text);
}

void ControladorAgenda::exit(Feina &f)
{
    if (f.missatge.isEmpty()) {
        Construeix_Agenda();
        *m_refrescarFacturacio = true;
    } else {
        refusa(f.missatge);
    }
}

void ControladorAgenda::canviaCalendari(const QDate &d)
{
    m_estat.DataCalendari = d;
    if (alCanviarCalendari)
        alCanviarCalendari(d);
}

void ControladorAgenda::mostraDetallFeina(const Feina &f)
{
    const QString salt = QStringLiteral("\r\n");
    QString t;
    t += Tradueix("Lloc") + QStringLiteral(": ") + f.llocs_nom + salt;
    t += Tradueix("Data") + QStringLiteral(": ") + format::dataCurta(f.feines_data) + salt;
    t += Tradueix("Hora") + QStringLiteral(": ") + f.feines_hora_inici + QStringLiteral(" - ") + f.feines_hora_fi + salt;
    t += Tradueix("Recurs") + QStringLiteral(": ") + (f.recursos_nom.isEmpty() ? m_cfg.TexteNoAsignada : f.recursos_nom) + salt;
    t += Tradueix("Feta") + QStringLiteral(": ") + (f.feines_feta ? Tradueix("Sí") : Tradueix("No"));
    if (f.feines_data_factura.isValid())
        t += salt + Tradueix("Data fra.") + QStringLiteral(": ") + format::dataCurta(f.feines_data_factura);
    if (!f.feines_observacions.isEmpty())
        t += salt + Tradueix("Observacions") + QStringLiteral(": ") + f.feines_observacions;
    m_interaccio.informa(Tradueix("Detall de Feina"), t);
}

void ControladorAgenda::obreEditorSeleccionada()
{
    FeinaSeleccionada.missatge.clear();
    CanviFeina canvi(obreEditor ? m_pila : nullptr, m_db, m_cfg, FeinaSeleccionada.feines_id);
    if (obreEditor)
        obreEditor(FeinaSeleccionada);
    else
        mostraDetallFeina(FeinaSeleccionada);
    if (FeinaSeleccionada.missatge == QLatin1String("OK")) {
        FeinaSeleccionada.missatge.clear();
        canvi.registra(FeinaSeleccionada, CanviFeina::Tipus::Modificada);
        if (!FeinaSeleccionada.feines_feta && recarregaXecs)
            recarregaXecs();
        Construeix_Agenda();
        *m_refrescarFacturacio = true;
    }
    reiniciaSeleccio();
}

// ------------------------------------------------------------------ mouse

QString ControladorAgenda::premGraella(int fila, int col, bool botoEsquerre)
{
    m_filaPremuda = fila;
    m_colPremuda = col;
    if (m_model.esCos(fila, col))
        setCellaActual(fila, col);
    reiniciaSeleccio();
    if (m_estat.vista == VistaAgenda::Mes)
        return QString();
    try {
        if (!esCellaUnica(fila, col))
            return QString();
        buscaFeinaCella(fila, col, FeinaSeleccionada);
        if (!FeinaSeleccionada.missatge.isEmpty()) {
            refusa(FeinaSeleccionada.missatge);
            reiniciaSeleccio();
            return QString();
        }
        if (botoEsquerre)
            return QStringLiteral("F") + FeinaSeleccionada.llocs_nom;
    } catch (const DbError &) {
        refusa(Tradueix("Error en drag!!"));
        reiniciaSeleccio();
    }
    return QString();
}

QString ControladorAgenda::premLlista(QChar tipus, const QString &nom)
{
    if (nom.isEmpty())
        return QString();
    if (tipus == QLatin1Char('R')) {
        m_imprimirActiu = true;
        m_recursImprimir = nom;
    }
    if (m_estat.vista == VistaAgenda::Mes)
        return QString();
    return QString(tipus) + nom;
}

void ControladorAgenda::perdFocus()
{
    m_filaPremuda = 0;
    m_colPremuda = 0;
}

void ControladorAgenda::deixa(int fila, int col, const QString &caption)
{
    if (!m_model.esCos(fila, col) || (fila == m_filaPremuda && col == m_colPremuda))
        return;
    const CellaAgenda cella = m_model.cella(fila, col);
    const QChar tipus = caption.isEmpty() ? QChar() : caption.at(0);
    const QString nom = caption.mid(1);
    if (tipus != QLatin1Char('F') && tipus != QLatin1Char('R') && tipus != QLatin1Char('L')) {
        errorInesperat(QStringLiteral("Error tipo_dada"));
        return;
    }
    if (tipus == QLatin1Char('R')) {
        if (cella.text.isEmpty())
            return;
        if (cella.text == m_cfg.TexteVaris || cella.fons == SenseColor) {
            refusa(Tradueix("Hi ha varies feines en la cel·la"));
            return;
        }
    }
    if (m_estat.vista == VistaAgenda::Mes)
        return;

    const bool dia = m_estat.vista == VistaAgenda::Dia;
    const QDate diaDesti = m_model.diaCella(fila, col);
    const QString horaDesti = m_model.horaFila(fila);
    try {
        if (tipus == QLatin1Char('L')) {
            Feina f;
            f.llocs_nom = nom;
            f.feines_data = diaDesti;
            f.feines_hora_inici = horaDesti;
            f.recursos_nom = dia ? m_model.recursColumna(col) : QString();
            QString volgut = f.recursos_nom;
            if (volgut.isEmpty()) {
                Query q = m_db.prepared(QStringLiteral("SELECT recursos_nom FROM Llocs WHERE llocs_nom = ?"));
                q.bind(nom).exec();
                if (q.next())
                    volgut = q.text(0);
            }
            CanviFeina canvi(m_pila, m_db, m_cfg, 0);
            m_motor.Grava_Feina(f, false);
            canvi.registra(f, CanviFeina::Tipus::Creada);
            exit(f);
            // A busy resource does not refuse a drop: the job is stored unassigned, and said so.
            if (f.missatge.isEmpty() && f.recursos_nom.isEmpty() && !volgut.isEmpty() && avisaEstat)
                avisaEstat(Tradueix("Recurs ocupat: la feina queda sense assignar"));
        } else if (tipus == QLatin1Char('F')) {
            Feina f = FeinaSeleccionada;
            const int durada = hora::minuts(f.feines_hora_fi) - hora::minuts(f.feines_hora_inici);
            QString fi = hora::suma(horaDesti, durada);
            if (fi == QLatin1String("00:00"))
                fi = QStringLiteral("24:00");
            if (!(fi <= m_cfg.HoraFinal && fi > horaDesti)) {
                refusa(Tradueix("L'hora final de la feina supera les") + QLatin1Char(' ') + m_cfg.HoraFinal
                       + QStringLiteral("h."));
                reiniciaSeleccio();
                return;
            }
            f.feines_hora_inici = horaDesti;
            f.feines_hora_fi = fi;
            if (dia) {
                if (col != m_colActual)
                    f.recursos_nom = m_model.recursColumna(col);
            } else {
                f.feines_data = diaDesti;
            }
            CanviFeina canvi(m_pila, m_db, m_cfg, f.feines_id);
            m_motor.Modifica_Feina(f);
            canvi.registra(f, CanviFeina::Tipus::Moguda);
            exit(f);
        } else {
            Feina f;
            m_motor.Busca_Feina(f, diaDesti, horaDesti, cella.text, m_motor.Recurs_Per_Color(cella.fons));
            if (!f.missatge.isEmpty()) {
                refusa(f.missatge);
                reiniciaSeleccio();
                return;
            }
            f.recursos_nom = nom;
            f.feines_hora_fi.clear();
            CanviFeina canvi(m_pila, m_db, m_cfg, f.feines_id);
            m_motor.Modifica_Feina(f);
            canvi.registra(f, CanviFeina::Tipus::Reassignada);
            exit(f);
        }
    } catch (const DbError &e) {
        errorInesperat(e.text());
    }
    reiniciaSeleccio();
}

void ControladorAgenda::clic(int fila, int col)
{
    if (m_estat.vista != VistaAgenda::Mes || !m_model.esCos(fila, col))
        return;
    const QDate dia = m_model.diaCella(fila, col);
    if (m_cfg.UltimDiaGen.isValid() && dia > m_cfg.UltimDiaGen) {
        planifica(dia);
        return;
    }
    const QString text = m_model.text(fila, col);
    if (!text.isEmpty() && mostraIndicacio)
        mostraIndicacio(m_model.text(0, col) + QStringLiteral(", ") + format::dataCurta(dia), text);
}

void ControladorAgenda::planifica(const QDate &dia)
{
    RegistreRecollit recollit;
    RegistreSortida *registre = registrePlanificacio ? registrePlanificacio() : nullptr;
    if (!registre)
        registre = &recollit;
    try {
        Planificador planificador(m_db, m_cfg, m_motor, *registre);
        const bool fet = confirmaPlanificacio
                             ? Genera_Feines_Planificades(planificador, m_cfg, m_interaccio, dia, confirmaPlanificacio)
                             : Genera_Feines_Planificades(planificador, m_cfg, m_interaccio, dia);
        if (!fet)
            return;
    } catch (const DbError &e) {
        // What the run stored before the failure stays stored.
        if (m_pila)
            m_pila->neteja(Tradueix("planificació de feines"));
        errorInesperat(e.text());
        return;
    }
    if (m_pila)
        m_pila->neteja(Tradueix("planificació de feines"));
    if (registre == &recollit && !recollit.text.isEmpty())
        m_interaccio.informa(Tradueix("PLANIFICACIO DE FEINES"), recollit.text);
    Construeix_Agenda();
    *m_refrescarFacturacio = true;
    if (alPlanificar)
        alPlanificar(m_cfg.UltimDiaGen);
}

void ControladorAgenda::vesAlDia(const QDate &dia)
{
    m_estat.DiaActual = dia;
    m_estat.recalcula();
    canviaCalendari(dia);
    m_estat.vista = VistaAgenda::Dia;
    Construeix_Agenda();
}

void ControladorAgenda::seleccionaDiaActual()
{
    if (m_estat.vista != VistaAgenda::Mes)
        return;
    const qint64 n = m_estat.IniciMes.daysTo(m_estat.DiaActual);
    if (n < 0 || n > 41)
        return;
    setCellaActual(int(n / 7) + 1, int(n % 7) + 1);
    if (enfocaGraella)
        enfocaGraella();
}

void ControladorAgenda::dobleClic()
{
    const int fila = m_filaPremuda;
    const int col = m_colPremuda;
    try {
        if (m_estat.vista == VistaAgenda::Mes) {
            if (fila < 1 || fila >= m_model.files() || col < 0 || col >= m_model.columnes())
                return;
            if (col == 0) {
                m_estat.DiaActual = m_estat.IniciMes.addDays((fila - 1) * 7);
                m_estat.recalcula();
                canviaCalendari(m_estat.DiaActual);
                m_estat.vista = VistaAgenda::Setmana;
                Construeix_Agenda();
            } else {
                vesAlDia(m_model.diaCella(fila, col));
            }
            return;
        }
        if (FeinaSeleccionada.feines_id > 0) {
            obreEditorSeleccionada();
            return;
        }
        if (fila == 0 && col == 0) {
            m_estat.DiaActual = m_estat.DataCalendari;
            m_estat.recalcula();
            m_estat.vista = VistaAgenda::Mes;
            Construeix_Agenda();
            seleccionaDiaActual();
            return;
        }
        if (m_estat.vista == VistaAgenda::Setmana) {
            if (col >= 1 && col < m_model.columnes() && fila >= 0 && fila < m_model.files())
                vesAlDia(m_model.diaCella(0, col));
            return;
        }
        if (m_model.esCos(fila, col)) {
            m_estat.DiaActual = m_estat.DataCalendari;
            m_estat.recalcula();
            canviaCalendari(m_estat.IniciSetmana);
            m_estat.vista = VistaAgenda::Setmana;
            Construeix_Agenda();
        }
    } catch (const DbError &e) {
        errorInesperat(e.text());
    }
}

// ------------------------------------------------------------------ keys

void ControladorAgenda::tecla(int codi)
{
    const int fila = m_filaActual;
    const int col = m_colActual;
    if (!m_model.esCos(fila, col))
        return;
    try {
        if (m_estat.vista == VistaAgenda::Mes) {
            if (codi == TeclaIntro)
                vesAlDia(m_model.diaCella(fila, col));
            return;
        }
        const CellaAgenda &cella = m_model.cella(fila, col);
        if (cella.text.isEmpty() || (codi != TeclaSuprimir && codi != TeclaEspai && codi != TeclaIntro))
            return;
        if (cella.text == m_cfg.TexteVaris || cella.fons == SenseColor) {
            refusa(Tradueix("Hi ha varies feines en la cel·la"));
            return;
        }
        buscaFeinaCella(fila, col, FeinaSeleccionada);
        if (!FeinaSeleccionada.missatge.isEmpty()) {
            refusa(FeinaSeleccionada.missatge);
            reiniciaSeleccio();
            return;
        }
        if (codi == TeclaIntro) {
            obreEditorSeleccionada();
            return;
        }
        Feina f = FeinaSeleccionada;
        if (codi == TeclaEspai) {
            f.feines_feta = !f.feines_feta;
            CanviFeina canvi(m_pila, m_db, m_cfg, f.feines_id);
            m_motor.Modifica_Feina(f);
            canvi.registra(f, CanviFeina::Tipus::Feta);
            exit(f);
        } else {
            const QString pregunta = Tradueix("Eliminar feina") + QLatin1Char(' ') + f.recursos_nom + QStringLiteral(" '")
                + f.llocs_nom + QLatin1Char('\'') + Tradueix(" del") + QLatin1Char(' ') + format::dataCurta(f.feines_data)
                + QStringLiteral(" ?");
            if (m_interaccio.pregunta(Tradueix("CONFIRMACIO"), pregunta)) {
                CanviFeina canvi(m_pila, m_db, m_cfg, f.feines_id);
                m_motor.Borra_Feina(f);
                canvi.registra(f, CanviFeina::Tipus::Esborrada);
                exit(f);
            }
        }
    } catch (const DbError &e) {
        errorInesperat(e.text());
    }
    reiniciaSeleccio();
}

// ------------------------------------------------------------------ period

void ControladorAgenda::Canvi_Data_Calendari(const QDate &nova)
{
    if (!nova.isValid())
        return;
    const QDate anterior = m_estat.DiaActual;
    try {
        switch (m_estat.vista) {
        case VistaAgenda::Mes:
            m_estat.DiaActual = nova;
            m_estat.DataCalendari = nova;
            if (nova.year() != anterior.year() || nova.month() != anterior.month()) {
                m_estat.recalcula();
                Construeix_Agenda();
            }
            seleccionaDiaActual();
            break;
        case VistaAgenda::Setmana: {
            m_estat.DataCalendari = nova;
            m_estat.DiaActual = EstatAgenda::iniciSetmana(nova, m_estat.PrimerDiaSetmana);
            if (m_estat.DataCalendari != m_estat.DiaActual)
                canviaCalendari(m_estat.DiaActual);
            if (EstatAgenda::iniciSetmana(anterior, m_estat.PrimerDiaSetmana) != m_estat.DiaActual) {
                m_estat.recalcula();
                Construeix_Agenda();
            }
            break;
        }
        case VistaAgenda::Dia:
            m_estat.DataCalendari = nova;
            if (nova == anterior)
                return;
            m_estat.DiaActual = nova;
            m_estat.recalcula();
            Construeix_Agenda();
            break;
        }
    } catch (const DbError &e) {
        errorInesperat(e.text());
    }
}

void ControladorAgenda::canviaVista(VistaAgenda v)
{
    if (v == m_estat.vista)
        return;
    m_estat.DiaActual = m_estat.DataCalendari.isValid() ? m_estat.DataCalendari : m_estat.DiaActual;
    m_estat.recalcula();
    m_estat.vista = v;
    if (v == VistaAgenda::Setmana)
        canviaCalendari(m_estat.IniciSetmana);
    Construeix_Agenda();
    seleccionaDiaActual();
}

void ControladorAgenda::mouPeriode(int sentit)
{
    const QDate base = m_estat.DataCalendari.isValid() ? m_estat.DataCalendari : m_estat.DiaActual;
    QDate nova;
    switch (m_estat.vista) {
    case VistaAgenda::Dia:
        nova = base.addDays(sentit);
        break;
    case VistaAgenda::Setmana:
        nova = m_estat.DiaActual.addDays(7 * sentit);
        break;
    case VistaAgenda::Mes:
        nova = base.addMonths(sentit);
        break;
    }
    canviaCalendari(nova);
    Canvi_Data_Calendari(nova);
}

void ControladorAgenda::vesAAvui()
{
    const QDate hui = m_model.avui();
    canviaCalendari(hui);
    Canvi_Data_Calendari(hui);
}
