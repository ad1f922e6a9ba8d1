// What the mouse and the keyboard do on the agenda, driven without a window: drops of places,
// jobs and resources in each view, the keys on a job, the double clicks that change the view,
// the calendar, and the planning offered from the month view.

#include "agenda/agenda_controller.h"
#include "agenda/hores_extres_editor.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include "core/ini.h"
#include "core/pila_desfer.h"

#include <QtTest>

namespace {

const QDate kDimecres(2009, 3, 11); // today in these tests; weeks start on Monday 9 March

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

    // A body column by its header: a resource, "-" for the unassigned one, or its number.
    int columna(const char *text)
    {
        const QString c = QString::fromUtf8(text);
        bool numero = false;
        const int n = c.toInt(&numero);
        if (numero)
            return n;
        for (int col = 1; col < model().columnes(); ++col)
            if (model().text(0, col) == (c == "-" ? cfg().TexteNoAsignada : c))
                return col;
        return -1;
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
            {"move to unassigned", D, 19, "Anna", "F", 23, "-", "Escola|2009-03-11|11:00|12:00||0", ""},
            {"resource found in its own column, busy", D, 0, "", "RBiel", 25, "-", "", "Solapament de recursos: Biel"},
            {"week: day and slot, no resource", S, 0, "", "LEscola", 17, "4", "Escola|2009-03-12|08:00|09:00||0", ""},
            {"week: place overlap refused verbatim", S, 0, "", "LEscola", 20, "3", "", "Solapament de llocs a ESCOLA"},
            {"week: move changes day, keeps resource", S, 19, "3", "F", 25, "5", "Escola|2009-03-13|12:00|13:00|Anna|0", ""},
            {"week: move ending at 24:00", S, 19, "3", "F", 47, "3", "Escola|2009-03-11|23:00|24:00|Anna|0", ""},
            {"week: move past 24:00", S, 19, "3", "F", 48, "3", "", "L'hora final de la feina supera les 24:00h."},
            {"week: resource on a job, end from its lines", S, 0, "", "RAnna", 15, "3", "Taller|2009-03-11|07:00|08:30|Anna|0", ""},
            {"week: resource on several jobs", S, 0, "", "RAnna", 25, "3", "", "Hi ha varies feines en la cel·la"},
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
    // right button drags nothing.
    void premerSelecciona()
    {
        const int grup = dades_prova::feina(db(), "Forn", kDimecres, "15:00", "16:00", "Equip");
        obre(VistaAgenda::Dia);
        const int biel = columna("Biel");
        QCOMPARE(ctl().premGraella(31, biel), QString("FForn"));
        QCOMPARE(QString::number(ctl().FeinaSeleccionada.feines_id) + ctl().FeinaSeleccionada.recursos_nom, QString::number(grup) + "Equip");
        QCOMPARE(ctl().premGraella(31, biel, false), QString()); // no drag with the right button
    }

    // Space toggles done (the underline follows) but not on a future job; Delete asks first;
    // an empty cell does nothing.
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

        obre(VistaAgenda::Setmana);
        tecla(30, 3, ControladorAgenda::TeclaSuprimir); // an empty cell: nothing asked
        tecla(19, 4, ControladorAgenda::TeclaSuprimir); // answered No
        QCOMPARE(darrerMissatge() + QString::number(feines().size()), QString("Eliminar feina Biel 'Forn' del 12/03/2009 ?5"));
        m_ui->respostes << true;
        ctl().tecla(ControladorAgenda::TeclaSuprimir);
        QCOMPARE(model().text(19, 4), QString());
        QCOMPARE(m_ui->crides.size(), 2); // the two questions only
    }

    // Enter opens the editor on the selected job (shown read-only without one); an editor that
    // stored a change gets the agenda rebuilt.
    void introObreEditor()
    {
        obre(VistaAgenda::Setmana);
        tecla(19, 3, ControladorAgenda::TeclaIntro);
        QCOMPARE(m_ui->crides.value(0).titol, QString("Detall de Feina"));
        int xecs = 0;
        QList<int> obertes;
        ctl().recarregaXecs = [&] { ++xecs; };
        ctl().obreEditor = [&](Feina &f) { obertes << f.feines_id, f.missatge = QStringLiteral("OK"); };
        tecla(19, 3, ControladorAgenda::TeclaIntro);
        QCOMPARE(QList<int>(obertes) << xecs << m_reconstruccions, (QList<int>{m_escola, 1, 1}));
    }

    // The double clicks walk month -> week -> day -> week -> month -> day, each on the right
    // dates.
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
    }

    // The calendar rebuilds only when the date leaves the period shown; the week view moves the
    // calendar to the week's first day; the month view moves the current cell; the period arrows.
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
    }

    // Each agenda change is one undo command named after it; undoing them all gives back the
    // database as it was, redoing them all as it was left.
    void cadaAccioEsUnaOrdre()
    {
        PilaDesfer pila;
        ctl().setPilaDesfer(&pila);
        obre(VistaAgenda::Dia);
        const auto estat = [this] {
            return dades_prova::files(db(), "SELECT 'F', * FROM Feines ORDER BY feines_id")
                + dades_prova::files(db(), "SELECT 'H', * FROM Hores_Fetes");
        };
        const QStringList inicial = estat();
        const int anna = columna("Anna"), biel = columna("Biel");
        ctl().deixa(31, anna, "LForn"); // 15:00
        ctl().deixa(33, anna, ctl().premGraella(31, anna)); // dragged to 16:00
        ctl().premGraella(1, anna);
        ctl().deixa(33, anna, "RBiel");
        ctl().setCellaActual(33, biel);
        ctl().tecla(ControladorAgenda::TeclaEspai);
        ctl().tecla(ControladorAgenda::TeclaEspai);
        EditorHores hores(db(), cfg(), model());
        hores.setPilaDesfer(&pila);
        QVERIFY(hores.obre(biel, false, "2"));
        hores.confirma();
        m_ui->respostes << true;
        ctl().tecla(ControladorAgenda::TeclaSuprimir);
        QCOMPARE(m_ui->crides.size(), 1); // only the question: nothing was refused on the way

        QStringList textos;
        for (const PilaDesfer::Entrada &e : pila.historial())
            textos << e.text;
        QCOMPARE(textos, (QStringList{"afegir 'Forn' al 11/03", "moure 'Forn' al 11/03 16:00", "assignar 'Forn' del 11/03 a Biel",
                                      "marcar feta 'Forn' del 11/03", "marcar no feta 'Forn' del 11/03",
                                      "hores extres de Biel el 11/03", "eliminar 'Forn' del 11/03"}));
        const QStringList final = estat();
        while (pila.potDesfer())
            QCOMPARE(pila.desfes(), QString());
        QCOMPARE(estat(), inicial);
        while (pila.potRefer())
            QCOMPARE(pila.refes(), QString());
        QCOMPARE(estat(), final);
    }

    // A click on a month cell after the last planned day offers the planning (before it, the
    // click shows the day's jobs): No changes nothing, Yes plans up to that day, stores the last
    // planned day and cuts the undo stack.
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
        QStringList indicacions;
        ctl.mostraIndicacio = [&](const QString &t, const QString &x) { indicacions << t + ' ' + x; };
        ctl.estat() = EstatAgenda(VistaAgenda::Dia, kDimecres, sessio->cfg().PrimerDiaSetmana);
        ctl.Construeix_Agenda();
        ctl.deixa(19, 1, "LForn");
        ctl.canviaVista(VistaAgenda::Mes);

        ctl.clic(3, 1); // a planned day: its jobs in a balloon
        QCOMPARE(indicacions, QStringList{"dilluns, 09/03/2009 08:00 Escola"});

        ctl.clic(3, 5); // 13 March, after the last planned day; answered No
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(dades_prova::valor(db, "SELECT COUNT(*) FROM Feines"), 2);
        QVERIFY(planificat.isEmpty() && sessio->Desfer.mida() == 1);

        ui.respostes << true; // 11, 12 and 13 March planned and shown
        ctl.clic(3, 5);
        QCOMPARE(dades_prova::valor(db, "SELECT COUNT(*) FROM Feines"), 5);
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("13/03/2009"));
        QCOMPARE(planificat, QList<QDate>{QDate(2009, 3, 13)});
        QVERIFY(!sessio->Desfer.potDesfer());
        QCOMPARE(sessio->Desfer.historial().last().tipus, PilaDesfer::Entrada::Tall);
    }
};

QTEST_GUILESS_MAIN(TestAgendaController)
#include "tst_agenda_controller.moc"
