// quadrella agenda [--view dia|setmana|mes] [--date D] [--json]
#include "cli_agenda.h"

#include "agenda/agenda_model.h"
#include "core/formats.h"
#include "core/sessio.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

QJsonValue colorJson(qint32 color)
{
    if (color == SenseColor)
        return QJsonValue::Null;
    if (color == ColorFinestra)
        return QStringLiteral("window");
    return color;
}

QJsonObject modelJson(const ModelAgenda &m)
{
    QJsonArray files;
    for (int r = 0; r < m.files(); ++r) {
        QJsonArray fila;
        for (int c = 0; c < m.columnes(); ++c) {
            const CellaAgenda &cella = m.cella(r, c);
            fila.append(QJsonObject{{QStringLiteral("text"), cella.text},
                                    {QStringLiteral("bg"), colorJson(cella.fons)},
                                    {QStringLiteral("bold"), cella.negreta},
                                    {QStringLiteral("underline"), cella.subratllat}});
        }
        files.append(fila);
    }
    return QJsonObject{{QStringLiteral("vista"), nomVista(m.vista())},
                       {QStringLiteral("DiaActual"), m.estat().DiaActual.toString(Qt::ISODate)},
                       {QStringLiteral("cells"), files},
                       {QStringLiteral("hores"), QJsonArray::fromStringList(m.hores())}};
}

QString ajusta(const QString &text, int ample)
{
    if (text.size() > ample)
        return text.left(ample - 1) + QChar(0x2026);
    return text.leftJustified(ample);
}

// The grid as a terminal table: one column per grid column, a merged block's place name once
// with "|" under it, a month cell's jobs one per line.
void escriuGraella(QTextStream &o, const ModelAgenda &m)
{
    const int columnes = m.columnes();
    QList<int> amples(columnes, 0);
    for (int c = 0; c < columnes; ++c) {
        for (int r = 0; r < m.files(); ++r) {
            for (const QString &l : m.text(r, c).split(QStringLiteral("\r\n")))
                amples[c] = qMax(amples[c], int(l.size()));
        }
        amples[c] = qBound(3, amples[c], c == 0 ? 16 : 22);
    }
    if (m.vista() == VistaAgenda::Dia) {
        for (int c = 0; c < columnes; ++c)
            amples[c] = qMax(amples[c], int(m.textHores(c).size()));
    }
    const auto separador = [&] {
        for (int c = 0; c < columnes; ++c)
            o << '+' << QString(amples[c] + 2, QLatin1Char('-'));
        o << "+\n";
    };
    separador();
    for (int r = 0; r < m.files(); ++r) {
        QList<QStringList> linies;
        int alt = 1;
        for (int c = 0; c < columnes; ++c) {
            const CellaAgenda &cella = m.cella(r, c);
            QStringList l = cella.text.split(QStringLiteral("\r\n"));
            if (r > 0 && c > 0 && cella.filesFusionades == 0)
                l = QStringList{QStringLiteral("|")};
            alt = qMax(alt, int(l.size()));
            linies.append(l);
        }
        for (int k = 0; k < alt; ++k) {
            for (int c = 0; c < columnes; ++c)
                o << "| " << ajusta(k < linies[c].size() ? linies[c][k] : QString(), amples[c]) << ' ';
            o << "|\n";
        }
        if (r == 0 || m.vista() == VistaAgenda::Mes)
            separador();
    }
    if (m.vista() != VistaAgenda::Mes)
        separador();
    if (m.vista() == VistaAgenda::Dia) {
        for (int c = 0; c < columnes; ++c)
            o << "| " << ajusta(m.textHores(c), amples[c]) << ' ';
        o << "|\n";
        separador();
    }
    for (const QString &avis : m.avisos())
        o << avis << '\n';
}

int agendaOrdre(ContextComanda &ctx, Arguments &args)
{
    const EstatAgenda estat = estatAgenda(ctx, args);
    args.finish();

    Sessio &s = ctx.sessio();
    ModelAgenda model(s.db(), s.cfg());
    try {
        model.Construeix_Agenda(estat);
    } catch (const DbError &e) {
        throw ErrorComanda(QStringLiteral("Error:") + e.text());
    }
    if (ctx.json())
        ctx.escriuJson(modelJson(model));
    else
        escriuGraella(ctx.out(), model);
    ctx.out().flush();
    return 0;
}

REGISTRA_COMANDA(QStringLiteral("agenda"), QStringLiteral("agenda [--view dia|setmana|mes] [--date D] [--json]"),
                 QStringLiteral("mostra la graella de l'agenda d'una vista i una data"), agendaOrdre);

} // namespace

EstatAgenda estatAgenda(ContextComanda &ctx, Arguments &args)
{
    VistaAgenda vista = VistaAgenda::Mes;
    QString text;
    if (args.option(QStringLiteral("--view"), &text) && !llegeixVista(text, &vista))
        throw ErrorUs(QStringLiteral("--view: ") + text);
    QDate dia = QDate::currentDate();
    if (args.option(QStringLiteral("--date"), &text))
        dia = Arguments::date(text, QStringLiteral("--date"));
    return EstatAgenda(vista, dia, ctx.sessio().cfg().PrimerDiaSetmana);
}
