#include "editor_feina.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/traduccio.h"
#include "jobs/durada_feina.h"
#include "jobs/motor_feines.h"

#include <cmath>

int indexHoraNoPosterior(const QStringList &hores, const QString &hora)
{
    int index = -1;
    for (int i = 0; i < hores.size(); ++i) {
        if (hores.at(i) <= hora)
            index = i;
    }
    return index;
}

EditorFeina::EditorFeina(Db &db, const Configuracio &cfg, MotorFeines &motor, Interaccio &ui)
    : m_db(db), m_cfg(cfg), m_motor(motor), m_ui(ui)
{
}

QDate EditorFeina::avui() const
{
    return m_avui.isValid() ? m_avui : QDate::currentDate();
}

QString EditorFeina::textNombre(double valor)
{
    QString t = QString::number(valor, 'f', 6);
    while (t.contains(QLatin1Char('.')) && (t.endsWith(QLatin1Char('0')) || t.endsWith(QLatin1Char('.'))))
        t.chop(1);
    if (t == QLatin1String("-0"))
        t = QStringLiteral("0");
    return t.replace(QLatin1Char('.'), QLatin1Char(','));
}

void EditorFeina::avisa(const QString &text)
{
    m_ui.informa(Tradueix("AVÍS"), text);
}

void EditorFeina::carrega(Feina &feina)
{
    m_feina = &feina;
    m_original = feina;

    m_data = format::dataCurta(feina.feines_data);

    // The day's slots: the starts from the first slot, the ends up to the last one.
    m_horesInici.clear();
    m_horesFi.clear();
    const int inici = std::max(0, hora::minuts(m_cfg.HoraInici));
    for (int i = 0; i < m_cfg.CellesDia; ++i)
        m_horesInici << hora::text((inici + i * m_cfg.MinutsCella) % 1440);
    for (int i = 1; i <= m_cfg.CellesDia; ++i) {
        const int m = (inici + i * m_cfg.MinutsCella) % 1440;
        m_horesFi << (m == 0 ? QStringLiteral("24:00") : hora::text(m));
    }
    // A start between two slot boundaries opens on the slot that contains it.
    const int iInici = indexHoraNoPosterior(m_horesInici, feina.feines_hora_inici);
    m_horaInici = iInici >= 0 ? m_horesInici.at(iInici) : QString();
    const int iFi = indexHoraNoPosterior(m_horesFi, feina.feines_hora_fi);
    m_horaFi = iFi >= 0 ? m_horesFi.at(iFi) : QString();

    m_recursos.clear();
    m_recurs.clear();
    {
        Query q = m_db.query(QStringLiteral("SELECT recursos_nom FROM Recursos ORDER BY recursos_nom"));
        q.exec();
        while (q.next()) {
            const QString nom = q.text(0);
            m_recursos << nom;
            if (!feina.recursos_nom.isEmpty() && nom.compare(feina.recursos_nom, Qt::CaseInsensitive) == 0)
                m_recurs = nom;
        }
    }

    m_feta = feina.feines_feta;
    m_dataFactura = feina.feines_data_factura.isValid() ? format::dataCurta(feina.feines_data_factura) : QString();

    // The notes come from the table: the record the agenda built from a cell need not carry them.
    m_observacions.clear();
    {
        Query q = m_db.query(QStringLiteral("SELECT feines_observacions FROM Feines WHERE feines_id = ?"));
        q.bind(feina.feines_id).exec();
        if (q.next())
            m_observacions = q.text(0);
    }

    m_serveis.clear();
    {
        Query q = m_db.query(QStringLiteral("SELECT serveis_nom FROM Serveis ORDER BY serveis_nom"));
        q.exec();
        m_serveis += q.columna();
    }

    m_linies.clear();
    {
        Query q = m_db.query(QStringLiteral(
            "SELECT serveis_nom, feines_detall_descripcio, feines_detall_quantitat, feines_detall_unitat,"
            " feines_detall_preu_un FROM Feines_Detall WHERE Feines_Detall.feines_id = ?"
            " ORDER BY Feines_Detall.serveis_nom"));
        q.bind(feina.feines_id).exec();
        while (q.next())
            m_linies.append({q.text(0), q.text(1), q.real(2), q.text(3), q.real(4)});
    }

    m_serveiLinia.clear();
    m_descripcioLinia.clear();
    m_quantitatLinia.clear();
    m_unitatLinia.clear();
    m_preuLinia.clear();
    m_liniaSeleccionada = -1;
    m_desat = estat();
}

void EditorFeina::setHoraInici(const QString &hora)
{
    m_horaInici = m_horesInici.contains(hora) ? hora : QString();
}

void EditorFeina::setHoraFi(const QString &hora)
{
    m_horaFi = m_horesFi.contains(hora) ? hora : QString();
}

void EditorFeina::triaRecurs(const QString &recurs)
{
    m_recurs = recurs;
    recalculaHoraFi();
}

bool EditorFeina::esborraRecurs()
{
    if (m_feta)
        return false;
    m_recurs.clear();
    return true;
}

// ---------------------------------------------------------------- line editor

void EditorFeina::obreLlistaServeis()
{
    m_descripcioLinia.clear();
    m_quantitatLinia.clear();
    m_unitatLinia.clear();
    m_preuLinia.clear();
}

void EditorFeina::triaServei(const QString &servei)
{
    m_serveiLinia = servei;
    if (servei.isEmpty())
        return;
    m_unitatLinia = m_motor.Unitat_Servei(servei);
    m_descripcioLinia = m_motor.Descripcio_Servei(servei, m_original.llocs_nom);
    m_preuLinia = format::preu(m_motor.Preu_Servei(servei));
}

bool EditorFeina::llegeixLinia(LiniaServei &linia, int excepte) const
{
    double quantitat = 0.0;
    double preu = 0.0;
    if (!format::llegeixReal(m_quantitatLinia, &quantitat)) {
        m_ui.informa(Tradueix("AVÍS"), Tradueix("Cal informar la quantitat"));
        return false;
    }
    if (!format::llegeixReal(m_preuLinia, &preu)) {
        m_ui.informa(Tradueix("AVÍS"), Tradueix("Cal informar el preu unitari"));
        return false;
    }
    for (int i = 0; i < m_linies.size(); ++i) {
        const LiniaServei &l = m_linies.at(i);
        if (i != excepte && l.serveis_nom.compare(m_serveiLinia, Qt::CaseInsensitive) == 0
            && l.descripcio == m_descripcioLinia) {
            m_ui.informa(Tradueix("AVÍS"), Tradueix("El servei/descripció ja existeix en la feina"));
            return false;
        }
    }
    const QString unitat = m_unitatLinia.isEmpty() ? m_motor.Unitat_Servei(m_serveiLinia) : m_unitatLinia;
    linia = {m_serveiLinia, m_descripcioLinia, quantitat, unitat, preu};
    return true;
}

bool EditorFeina::afegeixServei()
{
    if (m_serveiLinia.isEmpty())
        return false;
    LiniaServei l;
    if (!llegeixLinia(l, -1))
        return false;
    m_linies.append(l);
    m_liniaSeleccionada = -1;
    recalculaHoraFi();
    return true;
}

bool EditorFeina::substitueixLinia()
{
    if (m_serveiLinia.isEmpty() || m_liniaSeleccionada < 0 || m_liniaSeleccionada >= m_linies.size())
        return false;
    LiniaServei l;
    if (!llegeixLinia(l, m_liniaSeleccionada))
        return false;
    m_linies[m_liniaSeleccionada] = l;
    m_liniaSeleccionada = -1;
    recalculaHoraFi();
    return true;
}

void EditorFeina::carregaLiniaEditada(const LiniaServei &l)
{
    m_serveiLinia = l.serveis_nom;
    m_descripcioLinia = l.descripcio.isEmpty() ? m_motor.Descripcio_Servei(l.serveis_nom, m_original.llocs_nom)
                                               : l.descripcio;
    m_quantitatLinia = textNombre(l.quantitat);
    m_unitatLinia = l.unitat;
    m_preuLinia = format::preu(l.preu);
}

void EditorFeina::seleccionaLinia(int fila)
{
    if (fila < 0 || fila >= m_linies.size()) {
        m_liniaSeleccionada = -1;
        return;
    }
    m_liniaSeleccionada = fila;
    carregaLiniaEditada(m_linies.at(fila));
}

void EditorFeina::treuLinia(int fila)
{
    if (fila < 0 || fila >= m_linies.size())
        return;
    carregaLiniaEditada(m_linies.takeAt(fila));
    m_liniaSeleccionada = -1;
    recalculaHoraFi();
}

bool EditorFeina::marcaFeta(bool feta)
{
    if (feta && !m_feta) {
        const QDate data = format::llegeixData(m_data);
        QString refus;
        if (m_recurs.isEmpty())
            refus = Tradueix("Cal assignar recurs si la feina està feta");
        else if (m_linies.isEmpty())
            refus = Tradueix("Una feina feta ha de tenir serveis");
        else if (data.isValid() && data > avui())
            refus = Tradueix("Una feina futura no pot estar feta");
        if (!refus.isEmpty()) {
            avisa(refus);
            return false;
        }
    }
    m_feta = feta;
    return true;
}

EditorFeina::Estat EditorFeina::estat() const
{
    return {m_data, m_horaInici, m_horaFi, m_recurs, m_dataFactura, m_observacions, m_feta, m_linies};
}

bool EditorFeina::teCanvis() const
{
    return !(estat() == m_desat);
}

double EditorFeina::total() const
{
    double t = 0.0;
    for (const LiniaServei &l : m_linies)
        t += l.quantitat * l.preu;
    return arrodoneix::centims(t);
}

QString EditorFeina::totalText() const
{
    return format::import(total());
}

// ---------------------------------------------------------------- end time

int EditorFeina::recalculaHoraFi()
{
    // The lines still being edited are summed as the engine sums a stored job's.
    SumaMinuts suma(std::max(1, m_motor.Components_Assigna_Temps(m_recurs)));
    Query q = m_db.prepared(QStringLiteral(
        "SELECT serveis_minuts_per_unitat, serveis_comu_per_recursos FROM Serveis WHERE serveis_nom = ?"));
    for (const LiniaServei &l : m_linies) {
        q.bind(l.serveis_nom).exec();
        if (q.next())
            suma.afegeix(l.quantitat, static_cast<double>(q.integer(0)), q.boolean(1));
    }
    int minuts = suma.total();
    const int cella = std::max(1, m_cfg.MinutsCella);
    if (minuts == 0 || minuts % cella != 0)
        minuts = (minuts / cella + 1) * cella;

    const int inici = hora::minuts(m_horaInici);
    if (inici < 0)
        return minuts;
    // Ends are compared as minutes so that a job ending exactly at midnight reads 24:00 and is
    // only refused when the day itself ends earlier.
    const int fi = inici + minuts;
    const int limit = hora::minuts(m_cfg.HoraFinal);
    QString textFi;
    if (fi > limit || fi < inici) {
        textFi = m_cfg.HoraFinal;
        m_ui.informa(Tradueix("AVÍS"),
                     Tradueix("L'hora final de la feina supera les") + QLatin1Char(' ') + m_cfg.HoraFinal + QStringLiteral("h."));
    } else {
        textFi = hora::text(fi);
    }
    if (m_horesFi.contains(textFi)) {
        m_horaFi = textFi;
    } else {
        const int i = indexHoraNoPosterior(m_horesFi, textFi);
        m_horaFi = i >= 0 ? m_horesFi.at(i) : QString();
    }
    return minuts;
}

// ---------------------------------------------------------------- storing

bool EditorFeina::modifica()
{
    if (!m_feina)
        return false;
    const QDate data = format::llegeixData(m_data);
    if (!data.isValid()) {
        avisa(Tradueix("Data incorrecta"));
        m_data = format::dataCurta(m_original.feines_data);
        return false;
    }
    // An invoice date that cannot be read is refused rather than stored as none.
    const QDate factura = format::llegeixData(m_dataFactura);
    if (!m_dataFactura.trimmed().isEmpty() && !factura.isValid()) {
        avisa(Tradueix("Data de factura incorrecta"));
        return false;
    }
    if (m_horaInici.isEmpty() || m_horaFi.isEmpty() || !(m_horaInici < m_horaFi)) {
        avisa(Tradueix("Tram d'hores incorrecte"));
        return false;
    }
    if (m_feta && m_recurs.isEmpty()) {
        avisa(Tradueix("Cal assignar recurs si la feina està feta"));
        return false;
    }
    if (m_feta && m_linies.isEmpty()) {
        avisa(Tradueix("Una feina feta ha de tenir serveis"));
        return false;
    }
    if (m_feta && data > avui()) {
        avisa(Tradueix("Una feina futura no pot estar feta"));
        return false;
    }
    if (total() == 0.0 && !m_ui.pregunta(Tradueix("CONFIRMACIO"), Tradueix("El import de la feina és 0. Modificar igualment?")))
        return false;

    Feina f = m_original;
    f.missatge.clear();
    f.feines_data = data;
    f.feines_hora_inici = m_horaInici;
    f.feines_hora_fi = m_horaFi;
    f.recursos_nom = m_recurs;
    f.feines_feta = m_feta;
    // Only a done job keeps an invoice date.
    f.feines_data_factura = (m_feta && factura.isValid()) ? factura : QDate();
    f.feines_observacions = m_observacions;

    try {
        Transaction t(m_db);
        m_motor.Modifica_Feina(f);
        if (!f.missatge.isEmpty()) {
            avisa(f.missatge);
            return false;
        }
        desaLinies(f.feines_id);
        t.commit();
    } catch (const DbError &e) {
        m_ui.error(QStringLiteral("ERROR"), QStringLiteral("Error:") + e.text());
        return false;
    }
    f.missatge = QStringLiteral("OK");
    *m_feina = f;
    m_original = f;
    m_desat = estat();
    return true;
}

void EditorFeina::desaLinies(int feinesId)
{
    m_db.prepared(QStringLiteral("DELETE FROM Feines_Detall WHERE Feines_Detall.feines_id = ?")).bind(feinesId).exec();
    Query ins = m_db.prepared(QStringLiteral(
        "INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio, feines_detall_quantitat,"
        " feines_detall_unitat, feines_detall_preu_un) VALUES (?, ?, ?, ?, ?, ?)"));
    for (const LiniaServei &l : m_linies)
        ins.bind(feinesId).bind(l.serveis_nom).bind(l.descripcio).bind(l.quantitat).bind(l.unitat).bind(l.preu).exec();
}
