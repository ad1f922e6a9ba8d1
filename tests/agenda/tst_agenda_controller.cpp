// What the mouse and the keyboard do on the agenda, driven without a window: drops of places,
// jobs and resources in each view, the keys on a job, the double clicks that change the view,
// the calendar, and the planning offered from the month view.

#include "agenda/agenda_controller.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include "core/ini.h"
#include "core/pila_desfer.h"

#include <QtTest>

namespace {

const QDate kDimecres(2009, 3, 11); // today in these tests; weeks start on Monday 9 March

int columnaDe(const ModelAgenda &m, const QString &capcalera)
{
    for (int c = 1; c < m.columnes(); ++c) {
        if (m.text(0, c) == capcalera)
            return c;
    }
    return -1;
}

// A drop on the agenda: an optional press first (what it drags is the caption "F"), the drop,
// the rows of Feines that are new or changed afterwards, and what the user is told.
struct Deixada {
    const char *nom;
    VistaAgenda vista;
    int filaOrigen;
    const char *colOrigen, *caption;
    int fila;
    const char *col, *canvi, *missatge;
};

} // namespace

Q_DECLARE_METATYPE(Deixada)

class TestAgendaController : public QObject {
    Q_OBJECT

    std::unique_ptr<BaseProva> m_base;
    std::unique_ptr<InteraccioGuio> m_ui;
    std::unique_ptr<ControladorAgenda> m_ctl;
    int m_reconstruccions = 0;
    QList<QDate> m_calendari;
    QStringList m_avisos;
    int m_escola = 0;

    Db &db() { return m_base->db; }
    Configuracio &cfg() { return m_base->cfg; }
    ControladorAgenda &ctl() { return *m_ctl; }
    const ModelAgenda &model() { return m_ctl->model(); }

    void obre(VistaAgenda v, const QDate &dia = kDimecres)
    {
        ctl().estat() = EstatAgenda(v, dia, cfg().PrimerDiaSetmana);
        ctl().Construeix_Agenda();
        ctl().setRefrescarFacturacio(false);
        m_reconstruccions = 0;
        m_ui->crides.clear();
    }

    QStringList feines()
    {
        return dades_prova::files(db(), "SELECT llocs_nom, feines_data, feines_hora_inici, feines_hora_fi,"
                                        " COALESCE(recursos_nom, ''), feines_feta FROM Feines ORDER BY feines_id");
    }

    void tecla(int fila, int col, int t)
    {
        ctl().setCellaActual(fila, col);
        ctl().tecla(t);
    }

    // The view and its dates: "view day sWeek'sStart mMonthGrid'sStart".
    QString on()
    {
        const EstatAgenda &e = ctl().estat();
        return nomVista(e.vista) + ' ' + e.DiaActual.toString("d/M") + " s" + e.IniciSetmana.toString("d/M") + " m"
            + e.IniciMes.toString("d/M");
    }

    // The last thing said to the user, in a window or on the status bar; "" when nothing.
    QString darrerMissatge()
    {
        return !m_avisos.isEmpty() ? m_avisos.last() : m_ui->crides.isEmpty() ? QString() : m_ui->crides.last().text;
    }

    // A body column by its header: a resource, "-" for the unassigned one, "buida" for the last
    // (unused) one, or its number.
    int columna(const char *text)
    {
        const QString c = QString::fromUtf8(text);
        bool numero = false;
        const int n = c.toInt(&numero);
        if (numero)
            return n;
        if (c == "buida")
            return model().columnes() - 1;
        return columnaDe(model(), c == "-" ? cfg().TexteNoAsignada : c);
    }

private slots:
    // Anna at Escola 09:00-10:00 and Biel at Banc 12:00-13:00 today; two unassigned jobs, one at
    // Taller (whose lines take 3 x 30 minutes) at 07:00, one at Museu at 12:00.
    void init()
    {
        m_base = std::make_unique<BaseProva>();
        m_ui = std::make_unique<InteraccioGuio>();
        m_ctl = std::make_unique<ControladorAgenda>(db(), cfg(), *m_ui, kDimecres);
        m_ctl->alReconstruir = [this] { ++m_reconstruccions; };
        m_ctl->alCanviarCalendari = [this](const QDate &d) { m_calendari << d; };
        m_ctl->avisaEstat = [this](const QString &t) { m_avisos << t; };
        m_calendari.clear();
        m_avisos.clear();
        cfg().PermetSolaparLlocs = false;
        dades_prova::recurs(db(), "Anna", 0x0000FF);
        dades_prova::recurs(db(), "Biel", 0x00FF00);
        dades_prova::grup(db(), "Equip", 0xFF0000, {"Anna", "Biel"});
        for (const char *l : {"Escola", "Forn", "Museu", "Taller"})
            dades_prova::lloc(db(), l, 60);
        dades_prova::lloc(db(), "Banc", 60, "Biel");
        dades_prova::servei(db(), "Neteja", 30, false);
        dades_prova::llocServei(db(), "Taller", "Neteja", 3);
        m_escola = dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna");
        dades_prova::feina(db(), "Banc", kDimecres, "12:00", "13:00", "Biel");
        MotorFeines motor(db(), cfg());
        Feina taller;
        taller.llocs_nom = "Taller";
        taller.feines_data = kDimecres;
        taller.feines_hora_inici = "07:00";
        motor.Grava_Feina(taller, false); // ends at 08:00, the place's planned minutes
        dades_prova::feina(db(), "Museu", kDimecres, "12:00", "12:30");
    }

    void deixar_data()
    {
        QTest::addColumn<Deixada>("d");
        const auto D = VistaAgenda::Dia, S = VistaAgenda::Setmana, M = VistaAgenda::Mes;
        // day view: slot 19 is 09:00, 25 is 12:00, 31 is 15:00; week view: column 3 is Wednesday
        const Deixada casos[] = {
            {"place takes the column's resource", D, 0, "", "LEscola", 31, "Anna", "Escola|2009-03-11|15:00|16:00|Anna|0", ""},
            {"unassigned column: the place's own", D, 0, "", "LBanc", 31, "-", "Banc|2009-03-11|15:00|16:00|Biel|0", ""},
            {"busy resource: stored unassigned", D, 0, "", "LForn", 19, "Anna", "Forn|2009-03-11|09:00|10:00||0",
             "Recurs ocupat: la feina queda sense assignar"},
            {"unused column", D, 0, "", "LForn", 40, "buida", "Forn|2009-03-11|19:30|20:30||0", ""},
            {"move keeps resource and length", D, 19, "Anna", "F", 20, "Anna", "Escola|2009-03-11|09:30|10:30|Anna|0", ""},
            {"move to another resource", D, 19, "Anna", "F", 21, "Biel", "Escola|2009-03-11|10:00|11:00|Biel|0", ""},
            {"move to unassigned", D, 19, "Anna", "F", 23, "-", "Escola|2009-03-11|11:00|12:00||0", ""},
            {"resource found in its own column, busy", D, 0, "", "RBiel", 25, "-", "", "Solapament de recursos: Biel"},
            {"week: day and slot, no resource", S, 0, "", "LEscola", 17, "4", "Escola|2009-03-12|08:00|09:00||0", ""},
            {"week: place overlap refused verbatim", S, 0, "", "LEscola", 20, "3", "", "Solapament de llocs a ESCOLA"},
            {"week: move changes day, keeps resource", S, 19, "3", "F", 25, "5", "Escola|2009-03-13|12:00|13:00|Anna|0", ""},
            {"week: move ending at 24:00", S, 19, "3", "F", 47, "3", "Escola|2009-03-11|23:00|24:00|Anna|0", ""},
            {"week: move past 24:00", S, 19, "3", "F", 48, "3", "", "L'hora final de la feina supera les 24:00h."},
            {"week: resource on a job, end from its lines", S, 0, "", "RAnna", 15, "3", "Taller|2009-03-11|07:00|08:30|Anna|0", ""},
            {"week: resource on an empty cell", S, 0, "", "RAnna", 5, "3", "", ""},
            {"week: resource on several jobs", S, 0, "", "RAnna", 25, "3", "", "Hi ha varies feines en la cel·la"},
            {"week: on the pressed cell", S, 30, "2", "LForn", 30, "2", "", ""},
            {"week: on a header", S, 0, "", "LForn", 0, "2", "", ""},
            {"week: on the hours column", S, 0, "", "LForn", 30, "0", "", ""},
            {"week: unknown kind", S, 0, "", "Xalguna cosa", 20, "3", "", "Error:Error tipo_dada"},
            {"month", M, 0, "", "LForn", 3, "3", "", ""},
        };
        for (const Deixada &d : casos)
            QTest::newRow(d.nom) << d;
    }

    // Where a drop lands decides the day, the time and, in the day view, the resource; a refusal
    // is shown as it comes and changes nothing; a change rebuilds and refreshes the billing.
    void deixar()
    {
        QFETCH(Deixada, d);
        obre(d.vista);
        const QStringList abans = feines();
        QString caption = QString::fromUtf8(d.caption);
        if (d.filaOrigen) {
            const QString arrossegat = ctl().premGraella(d.filaOrigen, columna(d.colOrigen));
            if (caption == "F")
                caption = arrossegat;
        }
        ctl().deixa(d.fila, columna(d.col), caption);
        QStringList canviades;
        for (const QString &f : feines())
            if (!abans.contains(f))
                canviades << f;
        const QString canvi = QString::fromUtf8(d.canvi);
        QCOMPARE(canviades.join(';'), canvi);
        QCOMPARE(darrerMissatge(), QString::fromUtf8(d.missatge));
        QCOMPARE(m_reconstruccions, canvi.isEmpty() ? 0 : 1);
        QCOMPARE(ctl().refrescarFacturacio(), !canvi.isEmpty());
    }

    // A press on a job finds it through the cell, a group's job from a member's column; the
    // right button drags nothing; a press elsewhere clears the selection; a job off the slot
    // grid is not found, and said so; the month view selects nothing but remembers the cell.
    void premerSelecciona()
    {
        const int grup = dades_prova::feina(db(), "Forn", kDimecres, "15:00", "16:00", "Equip");
        dades_prova::feina(db(), "Forn", kDimecres, "17:10", "17:20", "Anna");
        obre(VistaAgenda::Dia);
        const int biel = columnaDe(model(), "Biel");
        QCOMPARE(ctl().premGraella(31, biel), QString("FForn"));
        QCOMPARE(QString::number(ctl().FeinaSeleccionada.feines_id) + ctl().FeinaSeleccionada.recursos_nom, QString::number(grup) + "Equip");
        QCOMPARE(QPoint(ctl().columnaActual(), ctl().filaActual()), QPoint(biel, 31));
        QCOMPARE(ctl().premGraella(31, biel, false), QString()); // no drag with the right button
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, grup);
        QCOMPARE(ctl().premGraella(5, biel), QString());
        QCOMPARE(ctl().FeinaSeleccionada.feines_data, QDate(1900, 1, 6));
        QCOMPARE(ctl().premGraella(35, columnaDe(model(), "Anna")), QString()); // 17:00 is not in 17:10-17:20
        QCOMPARE(darrerMissatge(), QString("Feina no trobada"));
        obre(VistaAgenda::Mes);
        QCOMPARE(ctl().premGraella(3, 3), QString());
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, 0);
        QCOMPARE(ctl().filaPremuda(), 3);
    }

    // Space toggles done (the underline follows) but not on a future job nor on several jobs;
    // Delete asks first; other keys and empty cells do nothing.
    void tecles()
    {
        dades_prova::feina(db(), "Forn", kDimecres.addDays(1), "09:00", "10:00", "Biel");
        obre(VistaAgenda::Setmana);
        tecla(19, 3, ControladorAgenda::TeclaEspai);
        QVERIFY(feines().first().endsWith("|1") && model().cella(19, 3).subratllat);
        tecla(20, 3, ControladorAgenda::TeclaEspai);
        QVERIFY(feines().first().endsWith("|0") && !model().cella(19, 3).subratllat);
        tecla(19, 4, ControladorAgenda::TeclaEspai);
        QCOMPARE(darrerMissatge(), QString("Una feina futura no pot estar feta"));
        QVERIFY(feines().last().endsWith("|0"));
        tecla(25, 3, ControladorAgenda::TeclaEspai);
        QCOMPARE(darrerMissatge(), QString("Hi ha varies feines en la cel·la"));

        obre(VistaAgenda::Setmana);
        tecla(19, 4, ControladorAgenda::TeclaSuprimir); // answered No
        QCOMPARE(darrerMissatge() + QString::number(feines().size()), QString("Eliminar feina Biel 'Forn' del 12/03/2009 ?5"));
        m_ui->respostes << true;
        ctl().tecla(ControladorAgenda::TeclaSuprimir);
        QCOMPARE(feines().size(), 4);
        QCOMPARE(model().text(19, 4), QString());
        QVERIFY(ctl().refrescarFacturacio());

        obre(VistaAgenda::Setmana);
        tecla(19, 3, 'A');
        tecla(30, 3, ControladorAgenda::TeclaSuprimir);
        QCOMPARE(m_ui->crides.size() + m_reconstruccions, 0);
    }

    // Enter opens the editor on the selected job (shown read-only without one); an editor that
    // stored a change gets the agenda rebuilt; a double click on a selected job opens it too.
    void introObreEditor()
    {
        obre(VistaAgenda::Setmana);
        tecla(19, 3, ControladorAgenda::TeclaIntro);
        QCOMPARE(m_ui->crides.size(), 1);
        QCOMPARE(m_ui->crides.first().titol, QString("Detall de Feina"));
        int xecs = 0;
        QList<int> obertes;
        ctl().recarregaXecs = [&] { ++xecs; };
        ctl().obreEditor = [&](Feina &f) { obertes << f.feines_id, f.missatge = QStringLiteral("OK"); };
        tecla(19, 3, ControladorAgenda::TeclaIntro);
        QCOMPARE(QList<int>(obertes) << xecs << m_reconstruccions, (QList<int>{m_escola, 1, 1}));
        obre(VistaAgenda::Setmana);
        ctl().obreEditor = [&](Feina &f) { obertes << f.feines_id; };
        ctl().premGraella(19, 3);
        ctl().dobleClic();
        QCOMPARE(QList<int>(obertes) << m_reconstruccions, (QList<int>{m_escola, m_escola, 0}));
    }

    // The double clicks walk month -> week -> day -> week -> month -> day, each on the right
    // dates; Enter on a month cell opens its day.
    void dobleClicCanviaVista()
    {
        obre(VistaAgenda::Mes);
        const struct {
            int fila, col;
            const char *on;
        } passos[] = {
            {0, 3, "mes 11/3 s9/3 m23/2"},     // a month header: nothing
            {4, 0, "setmana 16/3 s16/3 m23/2"}, // the week of 16 March
            {0, 5, "dia 20/3 s16/3 m23/2"},     // Friday's header
            {30, 3, "setmana 20/3 s16/3 m23/2"}, // an empty slot: the week of the calendar's date
            {0, 0, "mes 16/3 s16/3 m23/2"},
            {6, 7, "dia 5/4 s30/3 m30/3"},      // 5 April
        };
        for (const auto &p : passos) {
            ctl().premGraella(p.fila, p.col);
            ctl().dobleClic();
            QCOMPARE(on(), QString(p.on));
        }
        QCOMPARE(m_calendari.first(), QDate(2009, 3, 16));
        obre(VistaAgenda::Mes);
        tecla(2, 4, ControladorAgenda::TeclaIntro);
        QCOMPARE(on(), QString("dia 5/3 s2/3 m23/2"));
    }

    // The calendar rebuilds only when the date leaves the period shown; the week view moves the
    // calendar to the week's first day; the month view moves the current cell; the view buttons
    // and the period arrows.
    void calendari()
    {
        obre(VistaAgenda::Dia);
        ctl().Canvi_Data_Calendari(kDimecres);
        QCOMPARE(m_reconstruccions, 0);
        ctl().Canvi_Data_Calendari(kDimecres.addDays(1));
        QCOMPARE(m_reconstruccions, 1);

        obre(VistaAgenda::Setmana, QDate(2009, 3, 9));
        m_calendari.clear();
        ctl().Canvi_Data_Calendari(QDate(2009, 3, 15));
        QCOMPARE(m_calendari, QList<QDate>{QDate(2009, 3, 9)});
        QCOMPARE(m_reconstruccions, 0);
        ctl().Canvi_Data_Calendari(QDate(2009, 3, 16));
        QCOMPARE(on() + QString::number(m_reconstruccions), QString("setmana 16/3 s16/3 m23/2") + "1");

        obre(VistaAgenda::Mes);
        int focus = 0;
        ctl().enfocaGraella = [&] { ++focus; };
        ctl().Canvi_Data_Calendari(QDate(2009, 3, 28));
        QCOMPARE((QList<int>{ctl().columnaActual(), ctl().filaActual(), focus, m_reconstruccions}), (QList<int>{6, 5, 1, 0}));
        ctl().Canvi_Data_Calendari(QDate(2010, 3, 28)); // same month, another year
        QCOMPARE(on() + QString::number(m_reconstruccions), QString("mes 28/3 s22/3 m1/3") + "1");
        ctl().canviaVista(VistaAgenda::Setmana);
        ctl().mouPeriode(1);
        QCOMPARE(on(), QString("setmana 29/3 s29/3 m1/3"));
        ctl().canviaVista(VistaAgenda::Dia);
        ctl().mouPeriode(-1);
        QCOMPARE(on(), QString("dia 28/3 s22/3 m1/3"));
    }

    // A press on a resource enables the job-list print until the next rebuild; the month view
    // starts no drags and keeps the current cell inside its grid.
    void imprimirICellaActual()
    {
        obre(VistaAgenda::Setmana);
        QCOMPARE(ctl().premLlista('R', "Anna"), QString("RAnna"));
        QCOMPARE(ctl().recursImprimir(), QString("Anna"));
        QVERIFY(ctl().imprimirFeinesActiu());
        ctl().canviaVista(VistaAgenda::Mes);
        QVERIFY(!ctl().imprimirFeinesActiu());
        QCOMPARE(ctl().premLlista('L', "Escola") + ctl().premLlista('R', "Anna"), QString());
        QVERIFY(ctl().imprimirFeinesActiu());
        ctl().setCellaActual(40, 6);
        QCOMPARE(QPoint(ctl().columnaActual(), ctl().filaActual()), QPoint(6, 6));
    }

    // The planning offered by a click on a month cell after the last planned day (before it,
    // the click shows the day's jobs): No changes nothing, Yes plans up to that day, moves the
    // last planned day on and empties the undo stack, leaving a cut in its history.
    void clicAlMes()
    {
        DirectoriProva dir;
        dir.posaParametre("UltimDiaGen", "10/03/2009", "Estat");
        auto sessio = dir.obreSessio();
        Db &db = sessio->db();
        dades_prova::lloc(db, "Escola", 60);
        dades_prova::lloc(db, "Forn", 60);
        db.exec("UPDATE Llocs SET llocs_periodicitat_dies = 1, llocs_dissabte = 1, llocs_diumenge = 1, llocs_hora = '08:00'"
                " WHERE llocs_nom = 'Escola'");
        dades_prova::feina(db, "Escola", QDate(2009, 3, 9), "08:00", "09:00");
        InteraccioGuio ui;
        ControladorAgenda ctl(db, sessio->cfg(), ui, kDimecres);
        ctl.setPilaDesfer(&sessio->Desfer);
        RegistreMemoria registre;
        ctl.registrePlanificacio = [&] { return &registre; };
        QList<QDate> planificat;
        ctl.alPlanificar = [&](const QDate &d) { planificat << d; };
        QList<QStringList> indicacions;
        ctl.mostraIndicacio = [&](const QString &t, const QString &x) { indicacions << QStringList{t, x}; };
        ctl.estat() = EstatAgenda(VistaAgenda::Dia, kDimecres, sessio->cfg().PrimerDiaSetmana);
        ctl.Construeix_Agenda();
        ctl.deixa(19, 1, "LForn");
        ctl.deixa(25, 1, "LForn");
        QCOMPARE(sessio->Desfer.desfes(), QString());
        ctl.canviaVista(VistaAgenda::Mes);

        ctl.clic(3, 1); // a planned day with jobs: its jobs in a balloon
        ctl.clic(3, 2); // a planned day without jobs: nothing
        QCOMPARE(indicacions, (QList<QStringList>{{"dilluns, 09/03/2009", "08:00 Escola"}}));
        QVERIFY(ui.crides.isEmpty());

        ctl.clic(3, 5); // 13 March, after the last planned day; answered No
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides.first().titol, QString("GENERACIO DE FEINES PLANIFICADES"));
        QCOMPARE(dades_prova::valor(db, "SELECT COUNT(*) FROM Feines"), 2);
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("10/03/2009"));
        QVERIFY(planificat.isEmpty() && registre.text.isEmpty());
        QCOMPARE(sessio->Desfer.mida(), 2);

        ui.respostes << true; // 11, 12 and 13 March planned and shown
        ctl.clic(3, 5);
        QCOMPARE(dades_prova::valor(db, "SELECT COUNT(*) FROM Feines"), 5);
        QCOMPARE(sessio->cfg().UltimDiaGen, QDate(2009, 3, 13));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("13/03/2009"));
        QCOMPARE(planificat, QList<QDate>{QDate(2009, 3, 13)});
        QVERIFY(registre.text.contains("FINALITZACIO CORRECTA!!!"));
        QCOMPARE(ctl.model().text(3, 4), QString("08:00 Escola"));
        QVERIFY(!sessio->Desfer.potDesfer() && !sessio->Desfer.potRefer());
        const QList<PilaDesfer::Entrada> h = sessio->Desfer.historial();
        QCOMPARE(h.size(), 2);
        QCOMPARE(h.first().tipus, PilaDesfer::Entrada::Tancat);
        QCOMPARE(h.last().tipus, PilaDesfer::Entrada::Tall);
        QCOMPARE(h.last().text, QString("planificació de feines"));
    }
};

QTEST_GUILESS_MAIN(TestAgendaController)
#include "tst_agenda_controller.moc"
