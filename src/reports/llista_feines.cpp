#include "llista_feines.h"

#include "marc_informe.h"
#include "text_informe.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/traduccio.h"

namespace {

bool esGrup(Db &db, const QString &recurs)
{
    Query q = db.prepared(QStringLiteral("SELECT recursos_grup FROM Recursos WHERE recursos_nom = ?"));
    q.bind(recurs).exec();
    return q.next() && q.boolean(0);
}

// The month of the list: the calendar's, which the month grid's first days may not share.
QDate diaMes(const EstatAgenda &e)
{
    return e.DataCalendari.isValid() ? e.DataCalendari : e.DiaActual;
}

} // namespace

QList<FeinaLlista> feinesLlista(Db &db, const EstatAgenda &estat, const QString &recurs)
{
    // A group's own jobs, or a worker's jobs whether assigned to the worker or to a group of theirs.
    const bool grup = esGrup(db, recurs);
    QString sql = grup ? QStringLiteral("SELECT Feines.feines_data, Feines.feines_hora_inici, Feines.feines_hora_fi,"
                                        " Feines.llocs_nom, Feines.recursos_nom, Feines.feines_observacions"
                                        " FROM Feines WHERE ")
                       : QStringLiteral("SELECT Feines.feines_data, Feines.feines_hora_inici, Feines.feines_hora_fi,"
                                        " Feines.llocs_nom, Feines.recursos_nom, Feines.feines_observacions"
                                        " FROM Feines LEFT JOIN Recursos_Components"
                                        " ON Feines.recursos_nom = Recursos_Components.recursos_nom WHERE ");
    switch (estat.vista) {
    case VistaAgenda::Dia:
        sql += QStringLiteral("Feines.feines_data = ?");
        break;
    case VistaAgenda::Setmana:
        sql += QStringLiteral("Feines.feines_data >= ? AND Feines.feines_data <= ?");
        break;
    case VistaAgenda::Mes:
        sql += QStringLiteral("CAST(strftime('%Y', Feines.feines_data) AS INTEGER) = ?"
                              " AND CAST(strftime('%m', Feines.feines_data) AS INTEGER) = ?");
        break;
    }
    sql += grup ? QStringLiteral(" AND Feines.recursos_nom = ?")
                : QStringLiteral(" AND COALESCE(Recursos_Components.recursos_component_nom, Feines.recursos_nom) = ? COLLATE NOCASE");
    sql += estat.vista == VistaAgenda::Dia ? QStringLiteral(" ORDER BY Feines.feines_hora_inici")
                                           : QStringLiteral(" ORDER BY Feines.feines_data, Feines.feines_hora_inici");

    Query q = db.query(sql);
    switch (estat.vista) {
    case VistaAgenda::Dia:
        q.bind(estat.DiaActual);
        break;
    case VistaAgenda::Setmana:
        q.bind(estat.IniciSetmana).bind(estat.IniciSetmana.addDays(6));
        break;
    case VistaAgenda::Mes:
        q.bind(diaMes(estat).year()).bind(diaMes(estat).month());
        break;
    }
    q.bind(recurs).exec();
    QList<FeinaLlista> feines;
    while (q.next()) {
        feines.append(FeinaLlista{q.date(0), q.text(1), q.text(2), q.text(3), q.text(4), q.text(5)});
    }
    return feines;
}

QString titolLlistaFeines(const EstatAgenda &e, const QString &recurs)
{
    QString t;
    switch (e.vista) {
    case VistaAgenda::Mes:
        t = Tradueix("Relació de FEINES del mes") + QLatin1Char(' ')
            + QStringLiteral("%1/%2").arg(diaMes(e).month(), 2, 10, QLatin1Char('0')).arg(diaMes(e).year());
        break;
    case VistaAgenda::Setmana:
        t = Tradueix("Relació de FEINES de la setmana del") + QLatin1Char(' ') + format::dataCurta(e.IniciSetmana)
            + Tradueix(" al") + QLatin1Char(' ') + format::dataCurta(e.IniciSetmana.addDays(6));
        break;
    case VistaAgenda::Dia:
        t = Tradueix("Relació de FEINES del dia") + QLatin1Char(' ') + format::dataCurta(e.DiaActual);
        break;
    }
    return t + QStringLiteral(" : ") + recurs.toUpper();
}

void Imprimeix_Feines(Impressora &imp, Db &db, int posicioSaltPagina, const EstatAgenda &estat,
                      const QString &recurs)
{
    const QList<FeinaLlista> feines = feinesLlista(db, estat, recurs);

    MarcInforme marc(imp, posicioSaltPagina);
    MarcInforme::Capcalera cap;
    cap.titol = titolLlistaFeines(estat, recurs);
    cap.linies = [](MarcInforme &m) {
        m.lletra(10, false);
        m.baixa(200);
        m.text(500, Tradueix("Data"));
        m.text(3000, Tradueix("Hora inici"));
        m.text(4200, Tradueix("Hora fi"));
        m.text(5100, Tradueix("Lloc"));
        m.imp().setX(9000);
        m.imp().imprimeix(Tradueix("Recursos"));
    };
    cap.espaiAbansRegla = 300;
    cap.espaiDespresRegla = 150;
    marc.inicia(cap);

    for (const FeinaLlista &f : feines) {
        marc.comprovaSalt();
        marc.lletra(10, false);
        marc.text(500, format::dataCurta(f.data));
        marc.text(1700, MarcInforme::nomDia(f.data));
        marc.text(3200, f.inici);
        marc.text(4250, f.fi);
        imp.setNegreta(true);
        marc.text(5100, text_informe::retalla(imp, f.lloc, 9000 - 5100 - 100));
        imp.setNegreta(false);
        imp.setX(9000);
        imp.imprimeix(text_informe::retalla(imp, f.recurs, MarcInforme::VoraDreta - 9000));

        marc.baixa(300);
        marc.lletra(8, true);
        marc.text(600, Tradueix("Notes:"));
        imp.setNegreta(false);
        for (const QString &l : text_informe::parteix(imp, f.observacions, MarcInforme::VoraDreta - 1300)) {
            imp.setX(1300);
            imp.imprimeix(l);
        }

        marc.lletra(10, false);
        imp.linia(MarcInforme::MargeEsquerre, imp.y(), MarcInforme::VoraDreta, imp.y());
        marc.baixa(200);
    }
    marc.acaba();
}
