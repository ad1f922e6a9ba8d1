#include "impressio_agenda.h"

#include "marc_informe.h"
#include "text_informe.h"

#include "agenda/agenda_model.h"
#include "core/formats.h"
#include "core/traduccio.h"
#include "jobs/feina.h"

#include <QColor>
#include <QList>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace {

constexpr double YCapcalera = 500;
constexpr double YGraella = 1000;
constexpr double AltFilaCapcalera = 300;
constexpr double AltFranja = 260;      // a slot row of the day and week views
constexpr double AltSetmanaMinim = 1500; // a week row of the month view
constexpr double MidaCos = 8;
constexpr double MidaMes = 7;
constexpr double Marge = 40;           // text inside a cell
constexpr qint32 ColorAltreMes = 0xf2f2f2;

class Graella {
public:
    Graella(Impressora &imp, const ModelAgenda &m, int salt, QString capcalera)
        : m_imp(imp), m_m(m), m_salt(salt), m_capcalera(std::move(capcalera))
    {
        const int cols = m.columnes();
        double primera = m.vista() == VistaAgenda::Dia ? 1300 : m.vista() == VistaAgenda::Setmana ? 900 : 650;
        // Wide enough for the corner and the labels of the header column.
        for (int r = 0; r < m.files(); ++r) {
            lletra(MidaCos, m.cella(r, 0).negreta);
            primera = std::max(primera, m_imp.ampleText(m.text(r, 0)) + 2 * Marge + 20);
        }
        if (m.vista() == VistaAgenda::Dia) {
            lletra(MidaCos, true);
            primera = std::max(primera, m_imp.ampleText(m.textHores(0)) + 2 * Marge + 20);
        }
        const double cos = (MarcInforme::VoraDreta - MarcInforme::MargeEsquerre - primera) / std::max(1, cols - 1);
        double x = MarcInforme::MargeEsquerre;
        for (int c = 0; c < cols; ++c) {
            m_x.append(x);
            x += c == 0 ? primera : cos;
        }
        m_x.append(x);
    }

    void imprimeix()
    {
        pagina();
        if (m_m.vista() == VistaAgenda::Mes)
            setmanes();
        else
            franges();
        m_imp.acabaDocument();
    }

private:
    // The page's top: the header line, the page number and the grid's header row.
    void pagina()
    {
        if (m_pagina > 0)
            m_imp.paginaNova();
        ++m_pagina;
        lletra(10, false);
        m_imp.setX(MarcInforme::MargeEsquerre);
        m_imp.setY(YCapcalera);
        m_imp.imprimeix(m_capcalera);
        m_imp.setX(MarcInforme::XPagina);
        m_imp.setY(m_salt + 1200);
        lletra(8, false);
        m_imp.imprimeix(Tradueix("pàg.") + QLatin1Char(' ') + QString::number(m_pagina));
        m_y = YGraella;
        for (int c = 0; c < m_m.columnes(); ++c)
            cella(m_m.cella(0, c), c, m_y, AltFilaCapcalera, {m_m.text(0, c)}, Qt::AlignHCenter | Qt::AlignVCenter);
        m_y += AltFilaCapcalera;
    }

    void lletra(double mida, bool negreta)
    {
        m_imp.setMida(mida);
        m_imp.setNegreta(negreta);
        m_imp.setCursiva(false);
        m_imp.setColor(0);
    }

    // One cell (or the part of a block on this page): background, frame and its lines of text.
    void cella(const CellaAgenda &c, int col, double y, double alt, const QStringList &linies, Qt::Alignment al,
               double mida = MidaCos)
    {
        const double x1 = m_x[col], x2 = m_x[col + 1];
        const bool pintada = c.fons != SenseColor && c.fons != ColorFinestra;
        if (pintada) {
            m_imp.setColor(c.fons);
            m_imp.requadre(x1, y, x2, y + alt, true);
        }
        m_imp.setColor(0);
        m_imp.requadre(x1, y, x2, y + alt);
        lletra(mida, c.negreta);
        // Dark resource colours get a white text.
        const QColor fons = colorSistema(c.fons);
        if (pintada && 0.299 * fons.red() + 0.587 * fons.green() + 0.114 * fons.blue() < 140)
            m_imp.setColor(0xffffff);
        const double ampleUtil = x2 - x1 - 2 * Marge;
        const double altText = m_imp.altLinia() * std::min<double>(linies.size(), std::max(1.0, std::floor((alt - 2 * Marge) / m_imp.altLinia())));
        double ty = y + Marge;
        if (al & Qt::AlignVCenter)
            ty = y + std::max(0.0, (alt - altText) / 2);
        for (qsizetype i = 0; i < linies.size(); ++i) {
            if (i > 0 && ty + m_imp.altLinia() > y + alt - Marge / 2)
                break;
            // The last line that fits says there is more.
            const bool tallada = i + 1 < linies.size() && ty + 2 * m_imp.altLinia() > y + alt - Marge / 2;
            const QString t = text_informe::retalla(m_imp, tallada ? linies[i] + QChar(0x2026) : linies[i], ampleUtil);
            const double ample = m_imp.ampleText(t);
            const double tx = (al & Qt::AlignHCenter) ? x1 + (x2 - x1 - ample) / 2 : x1 + Marge;
            m_imp.setX(tx);
            m_imp.setY(ty);
            m_imp.imprimeix(t);
            if (c.subratllat && !t.isEmpty()) {
                const double ys = ty + m_imp.altLinia() * 0.85;
                m_imp.linia(tx, ys, tx + ample, ys);
            }
            ty += m_imp.altLinia();
        }
    }

    // Day and week views: a row per slot; a job's block once per page it reaches.
    void franges()
    {
        const int files = m_m.files();
        int r = 1;
        while (r < files) {
            if (m_y > m_salt)
                pagina();
            // The rows that fit on this page.
            int fins = r;
            double y = m_y;
            while (fins < files && (fins == r || y <= m_salt)) {
                y += AltFranja;
                ++fins;
            }
            tram(r, fins);
            m_y = y;
            r = fins;
        }
        if (m_m.vista() == VistaAgenda::Dia)
            filaHores();
    }

    // Rows [desDe, finsA) on the current page, from m_y.
    void tram(int desDe, int finsA)
    {
        for (int c = 0; c < m_m.columnes(); ++c) {
            int r = desDe;
            while (r < finsA) {
                int fi = r + 1;
                if (c > 0) {
                    const int bloc = m_m.filaBloc(r, c);
                    while (fi < finsA && m_m.filaBloc(fi, c) == bloc)
                        ++fi;
                }
                const CellaAgenda &cc = m_m.cella(m_m.filaBloc(r, c), c);
                const Qt::Alignment al = c == 0 ? Qt::AlignHCenter | Qt::AlignTop : Qt::AlignHCenter | Qt::AlignVCenter;
                // A block of several slots has room for its place name on more than one line.
                lletra(MidaCos, cc.negreta);
                const QStringList linies = fi - r > 1 ? text_informe::parteix(m_imp, cc.text, m_x[c + 1] - m_x[c] - 2 * Marge)
                                                      : QStringList{cc.text};
                cella(cc, c, m_y + (r - desDe) * AltFranja, (fi - r) * AltFranja, linies, al);
                r = fi;
            }
        }
    }

    // The day view's overtime row under the grid.
    void filaHores()
    {
        if (m_y > m_salt)
            pagina();
        CellaAgenda etiqueta;
        etiqueta.negreta = true;
        for (int c = 0; c < m_m.columnes(); ++c) {
            const CellaAgenda &cc = c == 0 ? etiqueta : CellaAgenda{};
            cella(cc, c, m_y, AltFilaCapcalera, {m_m.textHores(c)}, Qt::AlignHCenter | Qt::AlignVCenter);
        }
        m_y += AltFilaCapcalera;
    }

    // Month view: a row per week, as tall as its busiest day; a week with more jobs than the rest of
    // the page holds goes on over the next page.
    void setmanes()
    {
        static const QRegularExpression salt(QStringLiteral("\r\n"));
        lletra(MidaMes, false);
        const double linia = m_imp.altLinia();
        for (int r = 1; r < m_m.files(); ++r) {
            QList<QStringList> linies;
            qsizetype mesLlarga = 0;
            for (int c = 0; c < m_m.columnes(); ++c) {
                // A job's line that does not fit the day's width goes on under it.
                QStringList l;
                if (c > 0 && !m_m.text(r, c).isEmpty()) {
                    lletra(MidaMes, m_m.cella(r, c).negreta);
                    for (const QString &feina : m_m.text(r, c).split(salt))
                        l += text_informe::parteix(m_imp, feina, m_x[c + 1] - m_x[c] - 2 * Marge);
                }
                mesLlarga = std::max(mesLlarga, l.size());
                linies.append(l);
            }
            qsizetype desDe = 0;
            do {
                if (m_y > m_salt)
                    pagina();
                // Room down to where the continuation mark of a framed page would stand.
                const qsizetype cap = std::max<qsizetype>(1, qsizetype((m_salt + 500 - m_y - linia - 2 * Marge) / linia));
                const qsizetype n = std::min(cap, mesLlarga - desDe);
                const double alt = std::max(desDe == 0 ? AltSetmanaMinim : 0.0, (n + 1) * linia + 2 * Marge);
                for (int c = 0; c < m_m.columnes(); ++c) {
                    const CellaAgenda &cc = m_m.cella(r, c);
                    if (c == 0) {
                        cella(cc, c, m_y, alt, {cc.text}, Qt::AlignHCenter | Qt::AlignVCenter);
                        continue;
                    }
                    // The day number in the top right corner, the jobs under it; the days of the
                    // months around shaded, as on screen.
                    QStringList l{QString()};
                    l += linies[c].mid(desDe, n);
                    CellaAgenda pintada = cc;
                    if (pintada.fons == SenseColor && m_m.diaCella(r, c).month() != mesCalendari())
                        pintada.fons = ColorAltreMes;
                    cella(pintada, c, m_y, alt, l, Qt::AlignLeft | Qt::AlignTop, MidaMes);
                    lletra(MidaMes, false);
                    const QString dia = QString::number(m_m.diaCella(r, c).day());
                    m_imp.setX(m_x[c + 1] - Marge - m_imp.ampleText(dia));
                    m_imp.setY(m_y + Marge);
                    m_imp.imprimeix(dia);
                }
                m_y += alt;
                desDe += n;
            } while (desDe < mesLlarga);
        }
    }

    int mesCalendari() const
    {
        const EstatAgenda &e = m_m.estat();
        return (e.DataCalendari.isValid() ? e.DataCalendari : e.DiaActual).month();
    }

    Impressora &m_imp;
    const ModelAgenda &m_m;
    int m_salt;
    QString m_capcalera;
    QList<double> m_x;
    double m_y = 0;
    int m_pagina = 0;
};

} // namespace

QString capcaleraAgenda(const ModelAgenda &m, const QString &titolPrograma, const QDate &avui)
{
    const EstatAgenda &e = m.estat();
    const QDate calendari = e.DataCalendari.isValid() ? e.DataCalendari : e.DiaActual;
    QString t = QString(10, QLatin1Char(' ')) + titolPrograma + QString(12, QLatin1Char(' ')) + Tradueix("Agenda")
        + QLatin1Char(' ') + Tradueix(nomVista(e.vista)).toUpper();
    switch (e.vista) {
    case VistaAgenda::Mes:
        t += QStringLiteral(": ") + MarcInforme::mesTitol(calendari);
        break;
    case VistaAgenda::Setmana:
        t += Tradueix(" del") + QLatin1Char(' ') + format::dataCurta(e.IniciSetmana) + Tradueix(" al")
            + QLatin1Char(' ') + format::dataCurta(e.IniciSetmana.addDays(6));
        break;
    case VistaAgenda::Dia:
        t += QStringLiteral(": ") + format::dataCurta(calendari);
        break;
    }
    return t + QString(15, QLatin1Char(' ')) + format::dataCurta(avui);
}

void Imprimeix_Agenda(Impressora &imp, const ModelAgenda &model, int posicioSaltPagina,
                      const QString &titolPrograma, const QDate &avui)
{
    Graella(imp, model, posicioSaltPagina, capcaleraAgenda(model, titolPrograma, avui)).imprimeix();
}
