// quadrella report KIND ... (--pdf FILE | --json), and the kinds of the agenda and the reports:
// overtime, jobs, job, agenda.
#include "cli_report.h"
#include "cli_agenda.h"

#include "agenda/agenda_model.h"
#include "agenda/editor_feina.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "reports/detall_feina.h"
#include "reports/impressio_agenda.h"
#include "reports/impressora_painter.h"
#include "reports/impressora_registre.h"
#include "reports/informe_hores.h"
#include "reports/llista_feines.h"

#include <QFileInfo>
#include <QPdfWriter>
#include <QSaveFile>
#include <memory>

QList<TipusInforme> &tipusInformes()
{
    static QList<TipusInforme> tipus;
    return tipus;
}

// Writes the PDF through a temporary file: the file appears whole, or not at all.
void escriuPdf(const QString &fitxer, const QString &titol, const Informe &informe)
{
    QSaveFile sortida(fitxer);
    if (!sortida.open(QIODevice::WriteOnly))
        throw ErrorComanda(QStringLiteral("Error:%1: %2").arg(fitxer, sortida.errorString()));
    QString error;
    {
        QPdfWriter pdf(&sortida);
        ImpressoraPainter::preparaA4(pdf);
        pdf.setResolution(1200);
        pdf.setTitle(titol);
        pdf.setCreator(QStringLiteral("Quadrella"));
        try {
            ImpressoraPainter imp(&pdf);
            error = executaInforme(imp, informe);
        } catch (const std::exception &e) {
            error = QStringLiteral("Error:") + QString::fromUtf8(e.what());
        }
    }
    if (!error.isEmpty()) {
        sortida.cancelWriting();
        throw ErrorComanda(error);
    }
    if (!sortida.commit())
        throw ErrorComanda(QStringLiteral("Error:%1: %2").arg(fitxer, sortida.errorString()));
}

namespace {

Informe hores(ContextComanda &ctx, Arguments &args)
{
    const QString text = args.required(QStringLiteral("--month"));
    const QDate mes = primerDiaMes(text);
    if (!mes.isValid())
        throw ErrorUs(QStringLiteral("--month: mes no vàlid '%1' (mm/aaaa)").arg(text));
    Sessio &s = ctx.sessio();
    return [&s, mes](Impressora &imp) { Imprimeix_Hores(imp, s.db(), s.cfg().PosicioSaltPagina, mes); };
}

Informe feines(ContextComanda &ctx, Arguments &args)
{
    const QString demanat = args.required(QStringLiteral("--resource"));
    const EstatAgenda estat = estatAgenda(ctx, args);
    Sessio &s = ctx.sessio();
    Query q = s.db().query(QStringLiteral("SELECT recursos_nom FROM Recursos WHERE recursos_nom = ?"));
    q.bind(demanat).exec();
    if (!q.next())
        throw ErrorComanda(Tradueix("Recurs no trobat:") + demanat);
    const QString recurs = q.text(0);
    return [&s, estat, recurs](Impressora &imp) {
        Imprimeix_Feines(imp, s.db(), s.cfg().PosicioSaltPagina, estat, recurs);
    };
}

Informe feina(ContextComanda &ctx, Arguments &args)
{
    const int id = Arguments::integer(args.required(QStringLiteral("--id")), QStringLiteral("--id"));
    Sessio &s = ctx.sessio();
    auto f = std::make_shared<Feina>();
    if (!carregaFeina(s.db(), id, *f))
        throw ErrorComanda(Tradueix("Feina no trobada"));
    // The print-out reads the job as the editor shows it, lines and total included.
    auto motor = std::make_shared<MotorFeines>(s.db(), s.cfg());
    auto editor = std::make_shared<EditorFeina>(s.db(), s.cfg(), *motor, ctx.interaccio());
    editor->carrega(*f);
    return [&s, f, motor, editor](Impressora &imp) {
        Imprimeix_Detall_Feina(imp, *editor, s.cfg().PosicioSaltPagina);
    };
}

Informe agenda(ContextComanda &ctx, Arguments &args)
{
    const EstatAgenda estat = estatAgenda(ctx, args);
    Sessio &s = ctx.sessio();
    return [&s, estat](Impressora &imp) {
        ModelAgenda model(s.db(), s.cfg());
        model.Construeix_Agenda(estat);
        Imprimeix_Agenda(imp, model, s.cfg().PosicioSaltPagina, QStringLiteral("Quadrella"), QDate::currentDate());
    };
}

REGISTRA_INFORME(QStringLiteral("overtime"), QStringLiteral("--month MM/YYYY"), hores,
                 QStringLiteral("Hores extra"));
REGISTRA_INFORME(QStringLiteral("jobs"), QStringLiteral("--resource R [--view dia|setmana|mes] [--date D]"), feines,
                 QStringLiteral("Feines"));
REGISTRA_INFORME(QStringLiteral("job"), QStringLiteral("--id N"), feina, QStringLiteral("Feina"));
REGISTRA_INFORME(QStringLiteral("agenda"), QStringLiteral("[--view dia|setmana|mes] [--date D]"), agenda,
                 QStringLiteral("Agenda"));

int reportOrdre(ContextComanda &ctx, Arguments &args)
{
    QString pdf;
    const bool ambPdf = args.option(QStringLiteral("--pdf"), &pdf);
    const QString nom = args.nextPositional();
    const TipusInforme *tipus = nullptr;
    for (const TipusInforme &t : tipusInformes())
        if (t.nom == nom)
            tipus = &t;
    if (!tipus) {
        // Kinds register from several files: the list is the one known when the command runs.
        QStringList usos;
        for (const TipusInforme &t : tipusInformes())
            usos << QStringLiteral("  quadrella report %1 %2 (--pdf FILE | --json)").arg(t.nom, t.us);
        throw ErrorUs((nom.isEmpty() ? QStringLiteral("falta el tipus d'informe")
                                     : QStringLiteral("tipus d'informe desconegut: %1").arg(nom))
                      + QStringLiteral("\nTipus:\n") + usos.join(QLatin1Char('\n')));
    }
    if (ambPdf == ctx.json())
        throw ErrorUs(QStringLiteral("cal --pdf FITXER o --json (només un)"));
    if (ambPdf && pdf.isEmpty())
        throw ErrorUs(QStringLiteral("--pdf necessita un fitxer"));
    const Informe informe = tipus->prepara(ctx, args);
    args.finish();

    if (ambPdf) {
        escriuPdf(pdf, tipus->titol, informe);
        return 0;
    }
    ImpressoraRegistre registre;
    const QString error = executaInforme(registre, informe);
    if (!error.isEmpty())
        throw ErrorComanda(error);
    ctx.escriuJson(registre.json());
    return 0;
}

REGISTRA_COMANDA(QStringLiteral("report"), QStringLiteral("report KIND ... (--pdf FILE | --json)"),
                 QStringLiteral("un informe imprès, en PDF o com el dibuix que fa (JSON); 'report' sol llista els tipus"),
                 reportOrdre, true);

} // namespace
