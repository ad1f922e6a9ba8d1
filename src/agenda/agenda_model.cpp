#include "agenda_model.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/formats.h"
#include "core/traduccio.h"
#include "jobs/festius.h"
#include "jobs/motor_feines.h"

namespace {

// Whole cells from a minute count, rounding towards minus infinity like the grid's own
// arithmetic (a job starting before HoraInici gives a row below 1).
int divideixAvall(int a, int b)
{
    int q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0)))
        --q;
    return q;
}

bool mateixNom(const QString &a, const QString &b)
{
    // Names are keys compared without regard to case everywhere in the database.
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

ModelAgenda::ModelAgenda(Db &db, const Configuracio &cfg) : m_db(db), m_cfg(cfg) {}

QDate ModelAgenda::avui() const
{
    return m_avui.isValid() ? m_avui : QDate::currentDate();
}

// ------------------------------------------------------------------ layout

void ModelAgenda::nouGraella(int files, int columnes)
{
    m_files = files;
    m_cols.assign(size_t(columnes), std::vector<CellaAgenda>(size_t(files)));
    m_recursCol.assign(size_t(columnes), QString());
    m_usada.assign(size_t(columnes), 0);
    m_hores.assign(size_t(columnes), QString());
    m_avisos.clear();
}

QString ModelAgenda::horaFila(int fila) const
{
    if (m_estat.vista == VistaAgenda::Mes || fila < 1 || fila >= m_files)
        return QString();
    return hora::text(m_iniciMinuts + (fila - 1) * m_cfg.MinutsCella);
}

void ModelAgenda::preparaGraella(const EstatAgenda &estat)
{
    m_estat = estat;
    m_iniciMinuts = qMax(0, hora::minuts(m_cfg.HoraInici));
    const QDate hui = avui();

    // A closed day is shown as a Sunday is, with what closes it on hovering.
    const auto marcaTancat = [](CellaAgenda &c, const QMap<QDate, QString> &tancats, const QDate &d, qint32 color) {
        const auto it = tancats.constFind(d);
        if (it == tancats.constEnd())
            return;
        if (color != SenseColor)
            c.fons = color;
        c.indicacio = Tradueix("Festiu:") + QLatin1Char(' ') + it.value();
    };

    if (estat.vista == VistaAgenda::Mes) {
        nouGraella(7, 8);
        const QMap<QDate, QString> tancats = Festius(m_db).entre(estat.IniciMes, estat.IniciMes.addDays(41));
        CellaAgenda &corner = at(0, 0);
        corner.text = QString::number(estat.DataCalendari.isValid() ? estat.DataCalendari.year() : estat.DiaActual.year());
        corner.negreta = true;
        for (int c = 1; c < 8; ++c) {
            const QDate d = estat.IniciSetmana.addDays(c - 1);
            CellaAgenda &h = at(0, c);
            h.text = format::nomDia(format::diaSetmana(d));
            if (format::diaSetmana(d) == 1)
                h.fons = m_cfg.ColorDiumenge;
        }
        for (int r = 1; r < 7; ++r) {
            const QDate primer = estat.IniciMes.addDays((r - 1) * 7);
            CellaAgenda &h = at(r, 0);
            h.text = QString::number(primer.day()) + QLatin1Char('/') + QString::number(primer.month());
            for (int c = 1; c < 8; ++c) {
                CellaAgenda &b = at(r, c);
                b.alineacio = CellaAgenda::EsquerraDalt;
                b.negreta = diaCella(r, c) < hui;
                marcaTancat(b, tancats, diaCella(r, c), SenseColor);
            }
        }
        return;
    }

    const int files = m_cfg.CellesDia + 1;
    nouGraella(files, 8);
    CellaAgenda &corner = at(0, 0);
    corner.negreta = true;
    if (estat.vista == VistaAgenda::Dia) {
        corner.text = format::nomDia(format::diaSetmana(estat.DiaActual)) + QStringLiteral(", ")
            + QString::number(estat.DiaActual.day());
        marcaTancat(corner, Festius(m_db).entre(estat.DiaActual, estat.DiaActual), estat.DiaActual, m_cfg.ColorDiumenge);
        m_hores[0] = Tradueix("Hores extra");
    } else {
        corner.text = format::nomMesCurt(estat.IniciSetmana.month()).trimmed() + QLatin1Char(' ')
            + QString::number(estat.IniciSetmana.year());
        const QMap<QDate, QString> tancats = Festius(m_db).entre(estat.IniciSetmana, estat.IniciSetmana.addDays(6));
        for (int c = 1; c < 8; ++c) {
            const QDate d = estat.IniciSetmana.addDays(c - 1);
            CellaAgenda &h = at(0, c);
            h.text = format::nomDia(format::diaSetmana(d)) + QStringLiteral(", ") + QString::number(d.day());
            if (format::diaSetmana(d) == 1)
                h.fons = m_cfg.ColorDiumenge;
            h.negreta = d < hui;
            marcaTancat(h, tancats, d, m_cfg.ColorDiumenge);
        }
    }
    for (int r = 1; r < files; ++r) {
        CellaAgenda &h = at(r, 0);
        h.text = horaFila(r);
        h.alineacio = CellaAgenda::CentreDalt;
        if (h.text >= m_cfg.HoraIniciDinar && h.text < m_cfg.HoraFinalDinar)
            h.fons = m_cfg.ColorDiumenge;
    }
}

// ------------------------------------------------------------------ rebuild

void ModelAgenda::Construeix_Agenda(const EstatAgenda &estat)
{
    preparaGraella(estat);
    switch (estat.vista) {
    case VistaAgenda::Dia:
        construeixDia();
        break;
    case VistaAgenda::Setmana:
        construeixSetmana();
        break;
    case VistaAgenda::Mes:
        construeixMes();
        break;
    }
}

void ModelAgenda::construeixSetmana()
{
    // A job's colour is its own resource's, a group's job included.
    Query q = m_db.prepared(QStringLiteral(
        "SELECT Feines.feines_id, Feines.llocs_nom, Feines.feines_data, Feines.feines_hora_inici,"
        " Feines.feines_hora_fi, Feines.recursos_nom, Feines.feines_feta, Recursos.recursos_color"
        " FROM Feines LEFT JOIN Recursos ON Recursos.recursos_nom = Feines.recursos_nom"
        " WHERE Feines.feines_data >= ? AND Feines.feines_data <= ?"
        " ORDER BY Feines.feines_id"));
    q.bind(m_estat.IniciSetmana).bind(m_estat.IniciSetmana.addDays(6)).exec();
    Feina f;
    while (q.next()) {
        f.feines_id = int(q.integer(0));
        f.llocs_nom = q.text(1);
        f.feines_data = q.date(2);
        f.feines_hora_inici = q.text(3);
        f.feines_hora_fi = q.text(4);
        f.recursos_nom = q.text(5);
        f.feines_feta = q.boolean(6);
        const qint32 color = q.isNull(QStringLiteral("recursos_color")) ? ColorFinestra : qint32(q.integer(7));
        posa(f, color, 0);
    }
    fusionaColumnes();
}

void ModelAgenda::construeixDia()
{
    // A group's job is drawn once for each member, in the member's column and colour; whether the
    // column's resource takes time comes along for its overtime cell.
    Query q = m_db.prepared(QStringLiteral(
        "SELECT Feines.feines_id, Feines.llocs_nom, Feines.feines_data, Feines.feines_hora_inici,"
        " Feines.feines_hora_fi, Feines.feines_feta,"
        " COALESCE(Recursos_Components.recursos_component_nom, Feines.recursos_nom) AS recurs,"
        " Recursos.recursos_color, Recursos.recursos_assigna_temps"
        " FROM Feines"
        " LEFT JOIN Recursos_Components ON Feines.recursos_nom = Recursos_Components.recursos_nom"
        " LEFT JOIN Recursos ON Recursos.recursos_nom = COALESCE(Recursos_Components.recursos_component_nom, Feines.recursos_nom)"
        " WHERE Feines.feines_data = ?"
        " ORDER BY COALESCE(Recursos_Components.recursos_component_nom, Feines.recursos_nom) COLLATE QNOCASE,"
        " Feines.feines_hora_inici, Feines.feines_hora_fi, Feines.feines_id"));
    q.bind(m_estat.DiaActual).exec();
    Feina f;
    while (q.next()) {
        f.feines_id = int(q.integer(0));
        f.llocs_nom = q.text(1);
        f.feines_data = q.date(2);
        f.feines_hora_inici = q.text(3);
        f.feines_hora_fi = q.text(4);
        f.feines_feta = q.boolean(5);
        f.recursos_nom = q.text(6);
        const bool senseRecurs = q.isNull(QStringLiteral("recursos_color"));
        const qint32 color = senseRecurs ? ColorFinestra : qint32(q.integer(7));
        posa(f, color, !senseRecurs && q.boolean(8) ? 1 : 0);
    }
    fusionaColumnes();
    carregaHores();
}

void ModelAgenda::carregaHores()
{
    Query q = m_db.prepared(QStringLiteral(
        "SELECT recursos_nom, hores_quantitat FROM Hores_Fetes WHERE hores_data = ?"));
    q.bind(m_estat.DiaActual).exec();
    while (q.next()) {
        const QString nom = q.text(0);
        const QString valor = format::import(q.real(1));
        for (int c = 1; c < columnes(); ++c) {
            if (m_usada[size_t(c)] && !m_recursCol[size_t(c)].isEmpty() && mateixNom(m_recursCol[size_t(c)], nom))
                m_hores[size_t(c)] = valor;
        }
    }
}

void ModelAgenda::construeixMes()
{
    Query q = m_db.prepared(QStringLiteral(
        "SELECT feines_id, feines_data, feines_hora_inici, llocs_nom FROM Feines"
        " WHERE feines_data >= ? AND feines_data <= ?"
        " ORDER BY feines_data, feines_hora_inici, feines_id"));
    q.bind(m_estat.IniciMes).bind(m_estat.IniciMes.addDays(41)).exec();
    static const QString salt = QStringLiteral("\r\n");
    // The rows come by day: each day's text is parsed once.
    QString diaAnterior;
    qint64 n = -1;
    while (q.next()) {
        const QString dia = q.text(1);
        if (dia != diaAnterior) {
            diaAnterior = dia;
            const QDate d = QDate::fromString(dia, Qt::ISODate);
            n = d.isValid() ? m_estat.IniciMes.daysTo(d) : -1;
        }
        if (n < 0 || n > 41)
            continue;
        CellaAgenda &b = at(int(n / 7) + 1, int(n % 7) + 1);
        if (!b.text.isEmpty())
            b.text += salt;
        b.text += q.text(2);
        b.text += QLatin1Char(' ');
        b.text += q.text(3);
        b.feines.append(int(q.integer(0)));
    }
}

// ------------------------------------------------------------------ placing jobs

ModelAgenda::Rang ModelAgenda::Rang_Celles_Feina(const QDate &data, const QString &inici, const QString &fi,
                                                 const QString &recurs)
{
    return rang(data, inici, fi, recurs, -1);
}

ModelAgenda::Rang ModelAgenda::rang(const QDate &data, const QString &inici, const QString &fi,
                                    const QString &recurs, int assignaTemps)
{
    Rang g;
    if (m_estat.vista == VistaAgenda::Mes)
        return g;
    const int mc = m_cfg.MinutsCella;
    int filaInici = divideixAvall(hora::minuts(inici) - m_iniciMinuts, mc) + 1;
    int filaFi = divideixAvall(hora::minuts(fi) - m_iniciMinuts, mc);
    if (filaFi < filaInici)
        filaFi = filaInici;
    if (filaInici < 1)
        filaInici = 1;
    if (filaInici > m_files - 1 || filaFi < 1)
        return g;
    if (filaFi > m_files - 1)
        filaFi = m_files - 1;

    int col = 0;
    if (m_estat.vista == VistaAgenda::Setmana) {
        int ci = int(m_estat.IniciSetmana.daysTo(data)) + 1;
        int cf = ci;
        if (ci < 1)
            ci = 1;
        if (ci > columnes() - 1 || cf < 1)
            return g;
        if (cf > columnes() - 1)
            cf = columnes() - 1;
        g.fila_inici = filaInici;
        g.fila_fi = filaFi;
        g.columna_inici = ci;
        g.columna_fi = cf;
        return g;
    }

    // Day view: the first column of this resource with the job's rows free, else the first unused
    // column, else a new one. Unassigned jobs share the columns headed TexteNoAsignada.
    for (int c = 1; c < columnes(); ++c) {
        if (!m_usada[size_t(c)]) {
            col = c;
            obreColumna(c, recurs, assignaTemps);
            break;
        }
        const bool mateix = recurs.isEmpty() ? m_recursCol[size_t(c)].isEmpty()
                                             : (!m_recursCol[size_t(c)].isEmpty() && mateixNom(m_recursCol[size_t(c)], recurs));
        if (mateix && filesBuides(c, filaInici, filaFi)) {
            col = c;
            break;
        }
    }
    if (col == 0) {
        col = afegeixColumna();
        obreColumna(col, recurs, assignaTemps);
    }
    g.fila_inici = filaInici;
    g.fila_fi = filaFi;
    g.columna_inici = col;
    g.columna_fi = col;
    return g;
}

bool ModelAgenda::filesBuides(int col, int desDe, int finsA) const
{
    const auto &columna = m_cols[size_t(col)];
    for (int r = desDe; r <= finsA; ++r) {
        if (!columna[size_t(r)].text.isEmpty())
            return false;
    }
    return true;
}

int ModelAgenda::afegeixColumna()
{
    m_cols.emplace_back(size_t(m_files));
    m_recursCol.emplace_back();
    m_usada.push_back(0);
    m_hores.emplace_back();
    return columnes() - 1;
}

void ModelAgenda::obreColumna(int col, const QString &recurs, bool assignaTemps)
{
    m_usada[size_t(col)] = 1;
    m_recursCol[size_t(col)] = recurs;
    at(0, col).text = recurs.isEmpty() ? m_cfg.TexteNoAsignada : recurs;
    m_hores[size_t(col)] = assignaTemps ? format::import(0.0) : QString();
}

void ModelAgenda::Posa_Feina_Agenda(const Feina &f)
{
    if (m_estat.vista == VistaAgenda::Mes)
        return;
    MotorFeines motor(m_db, m_cfg);
    posa(f, motor.Color_Recurs(f.recursos_nom), -1);
}

void ModelAgenda::posa(const Feina &f, qint32 color, int assignaTemps)
{
    if (m_estat.vista == VistaAgenda::Mes)
        return;
    if (assignaTemps < 0 && m_estat.vista == VistaAgenda::Dia) {
        MotorFeines motor(m_db, m_cfg);
        assignaTemps = motor.Assigna_Temps_Recurs(f.recursos_nom) ? 1 : 0;
    }
    const Rang g = rang(f.feines_data, f.feines_hora_inici, f.feines_hora_fi, f.recursos_nom, assignaTemps);
    if (!g.visible())
        return;
    const bool setmana = m_estat.vista == VistaAgenda::Setmana;
    const bool passada = setmana && f.feines_data < avui();
    bool avisat = false;
    const int col = g.columna_inici;
    for (int r = g.fila_inici; r <= g.fila_fi; ++r) {
        CellaAgenda &c = at(r, col);
        if (passada)
            c.negreta = true;
        if (horaFila(r) >= f.feines_hora_fi)
            break;
        if (c.text.isEmpty()) {
            c.subratllat = f.feines_feta;
            c.text = f.llocs_nom;
            c.fons = color;
            c.feines.append(f.feines_id);
        } else if (setmana) {
            if (c.text != f.llocs_nom || c.fons != color) {
                c.subratllat = false;
                c.text = m_cfg.TexteVaris;
                c.fons = SenseColor;
            }
            c.feines.append(f.feines_id);
        } else if (!avisat) {
            m_avisos << Tradueix("Feines solapades");
            avisat = true;
        }
    }
}

void ModelAgenda::fusionaColumnes()
{
    // A block is a run of equal non-empty cells. Cells of equal text but another colour or
    // emphasis stay apart, so that every block drawn stands for what its cells hold.
    for (int c = 1; c < columnes(); ++c) {
        auto &col = m_cols[size_t(c)];
        int r = 1;
        while (r < m_files) {
            CellaAgenda &primer = col[size_t(r)];
            primer.filesFusionades = 1;
            int s = r + 1;
            if (!primer.text.isEmpty()) {
                while (s < m_files) {
                    const CellaAgenda &x = col[size_t(s)];
                    if (x.text != primer.text || x.fons != primer.fons || x.subratllat != primer.subratllat
                        || x.negreta != primer.negreta)
                        break;
                    ++s;
                }
            }
            primer.filesFusionades = s - r;
            for (int k = r + 1; k < s; ++k)
                col[size_t(k)].filesFusionades = 0;
            r = s;
        }
    }
}

// ------------------------------------------------------------------ reading

int ModelAgenda::filaBloc(int fila, int col) const
{
    while (fila > 1 && cella(fila, col).filesFusionades == 0)
        --fila;
    return fila;
}

QDate ModelAgenda::diaCella(int fila, int col) const
{
    if (fila < 0 || fila >= m_files || col < 0 || col >= columnes())
        return QDate();
    switch (m_estat.vista) {
    case VistaAgenda::Dia:
        return fila >= 1 ? m_estat.DiaActual : QDate();
    case VistaAgenda::Setmana:
        return col >= 1 ? m_estat.IniciSetmana.addDays(col - 1) : QDate();
    case VistaAgenda::Mes:
        if (fila < 1)
            return QDate();
        return m_estat.IniciMes.addDays((fila - 1) * 7 + qMax(col, 1) - 1);
    }
    return QDate();
}

QString ModelAgenda::recursColumna(int col) const
{
    return col >= 0 && col < columnes() ? m_recursCol[size_t(col)] : QString();
}

bool ModelAgenda::columnaUsada(int col) const
{
    return col >= 0 && col < columnes() && m_usada[size_t(col)];
}

QString ModelAgenda::textHores(int col) const
{
    return col >= 0 && col < int(m_hores.size()) ? m_hores[size_t(col)] : QString();
}

QStringList ModelAgenda::hores() const
{
    QStringList l;
    if (m_estat.vista != VistaAgenda::Dia)
        return l;
    for (size_t c = 1; c < m_hores.size(); ++c)
        l << m_hores[c];
    return l;
}
