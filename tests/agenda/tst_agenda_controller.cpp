// What the mouse and the keyboard do on the agenda, driven without a window: drops of places,
// jobs and resources in each view, the keys on a job, the double clicks that change the view,
// the calendar, and the planning offered from the month view.

#include "agenda/agenda_controller.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include "core/ini.h"

#include <QtTest>

namespace {

const QDate kDimecres(2009, 3, 11); // today in these tests; weeks start on Monday 9 March
constexpr qint32 kVermell = 0x0000FF;
constexpr qint32 kVerd = 0x00FF00;
constexpr qint32 kBlau = 0xFF0000;

int columnaDe(const ModelAgenda &m, const QString &capcalera)
{
    for (int c = 1; c < m.columnes(); ++c) {
        if (m.text(0, c) == capcalera)
            return c;
    }
    return -1;
}

} // namespace

class TestAgendaController : public QObject {
    Q_OBJECT

    std::unique_ptr<BaseProva> m_base;
    std::unique_ptr<InteraccioGuio> m_ui;
    std::unique_ptr<ControladorAgenda> m_ctl;
    int m_reconstruccions = 0;
    QList<QDate> m_calendari;

    Db &db() { return m_base->db; }
    Configuracio &cfg() { return m_base->cfg; }
    ControladorAgenda &ctl() { return *m_ctl; }
    const ModelAgenda &model() { return m_ctl->model(); }

    void obre(VistaAgenda v, const QDate &dia)
    {
        ctl().estat() = EstatAgenda(v, dia, cfg().PrimerDiaSetmana);
        ctl().Construeix_Agenda();
        ctl().setRefrescarFacturacio(false);
        m_reconstruccions = 0;
        m_ui->crides.clear();
    }

    Feina feina(int id)
    {
        Feina f;
        f.missatge = QStringLiteral("no existeix");
        carregaFeina(db(), id, f);
        return f;
    }

    int feines() { return int(dades_prova::valor(db(), "SELECT COUNT(*) FROM Feines")); }

    // The last message shown, "" when none.
    QString darrerMissatge()
    {
        return m_ui->crides.isEmpty() ? QString() : m_ui->crides.last().text;
    }

    // A job that was not stored or changed leaves no trace: no rebuild, no billing refresh.
    void comprovaSenseCanvis()
    {
        QCOMPARE(m_reconstruccions, 0);
        QVERIFY(!ctl().refrescarFacturacio());
    }

    void comprovaCanviat()
    {
        QCOMPARE(m_reconstruccions, 1);
        QVERIFY(ctl().refrescarFacturacio());
        QVERIFY(m_ui->crides.isEmpty());
    }

    // Press on a cell and drop what it drags on another.
    void arrossega(int fila, int col, int filaDesti, int colDesti)
    {
        const QString caption = ctl().premGraella(fila, col);
        QVERIFY2(caption.startsWith('F'), qPrintable(caption));
        ctl().deixa(filaDesti, colDesti, caption);
    }

private slots:
    void init()
    {
        m_base = std::make_unique<BaseProva>();
        m_ui = std::make_unique<InteraccioGuio>();
        m_ctl = std::make_unique<ControladorAgenda>(db(), cfg(), *m_ui, kDimecres);
        m_ctl->alReconstruir = [this] { ++m_reconstruccions; };
        m_ctl->alCanviarCalendari = [this](const QDate &d) { m_calendari << d; };
        m_calendari.clear();
        dades_prova::recurs(db(), "Anna", kVermell);
        dades_prova::recurs(db(), "Biel", kVerd);
        dades_prova::grup(db(), "Equip", kBlau, {"Anna", "Biel"});
        dades_prova::lloc(db(), "Escola", 60);
        dades_prova::lloc(db(), "Banc", 60, "Biel");
        dades_prova::lloc(db(), "Forn", 60);
        dades_prova::lloc(db(), "Museu", 30);
    }

    // ------------------------------------------------------------ selection

    // A press on a job finds it through the cell (place, slot, the resource of its colour); a
    // group's job is found from a member's column; a press elsewhere clears the selection.
    void premerSelecciona()
    {
        const int grup = dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Equip");
        dades_prova::feina(db(), "Banc", kDimecres, "11:10", "11:20", "Anna"); // off the slot grid
        obre(VistaAgenda::Dia, kDimecres);
        const int biel = columnaDe(model(), "Biel");
        QCOMPARE(ctl().premGraella(20, biel), QString("FEscola"));
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, grup);
        QCOMPARE(ctl().FeinaSeleccionada.recursos_nom, QString("Equip"));
        QCOMPARE(ctl().filaActual(), 20);
        QCOMPARE(ctl().columnaActual(), biel);

        QCOMPARE(ctl().premGraella(20, biel, false), QString()); // no drag with the right button
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, grup);

        QCOMPARE(ctl().premGraella(5, biel), QString());
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, 0);
        QCOMPARE(ctl().FeinaSeleccionada.feines_data, QDate(1900, 1, 6));

        // the slot label 11:00 does not fall inside 11:10-11:20: the lookup fails and says so
        QCOMPARE(ctl().premGraella(23, columnaDe(model(), "Anna")), QString());
        QCOMPARE(darrerMissatge(), QString("Feina no trobada"));
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, 0);

        // the month view selects nothing, but remembers the pressed cell
        obre(VistaAgenda::Mes, kDimecres);
        QCOMPARE(ctl().premGraella(3, 3), QString());
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, 0);
        QCOMPARE(ctl().filaPremuda(), 3);
        QVERIFY(m_ui->crides.isEmpty());
    }

    // ------------------------------------------------------------ drops

    // A place dropped in the day view takes the column's resource; the unassigned or an unused
    // column leaves the choice to the place's default; a busy resource stores it unassigned.
    void deixarLlocAlDia()
    {
        dades_prova::feina(db(), "Museu", kDimecres, "09:00", "10:00", "Anna");
        dades_prova::feina(db(), "Museu", kDimecres, "07:00", "08:00");
        obre(VistaAgenda::Dia, kDimecres);
        const int senseRecurs = columnaDe(model(), cfg().TexteNoAsignada);
        const int anna = columnaDe(model(), "Anna");
        QCOMPARE(senseRecurs, 1);
        QCOMPARE(anna, 2);

        ctl().deixa(25, anna, "LEscola"); // 12:00
        comprovaCanviat();
        Feina f = feina(int(dades_prova::valor(db(), "SELECT MAX(feines_id) FROM Feines")));
        QCOMPARE(f.feines_hora_inici + f.recursos_nom, QString("12:00Anna"));
        QCOMPARE(model().text(25, anna), QString("Escola"));

        obre(VistaAgenda::Dia, kDimecres);
        ctl().deixa(31, senseRecurs, "LBanc"); // the place's default resource
        comprovaCanviat();
        f = feina(int(dades_prova::valor(db(), "SELECT MAX(feines_id) FROM Feines")));
        QCOMPARE(f.recursos_nom, QString("Biel"));

        obre(VistaAgenda::Dia, kDimecres);
        ctl().deixa(19, anna, "LForn"); // Anna is busy at 09:00
        comprovaCanviat();
        f = feina(int(dades_prova::valor(db(), "SELECT MAX(feines_id) FROM Feines")));
        QCOMPARE(f.llocs_nom, QString("Forn"));
        QCOMPARE(f.recursos_nom, QString());

        obre(VistaAgenda::Dia, kDimecres);
        const int buida = model().columnes() - 1;
        QVERIFY(!model().columnaUsada(buida));
        ctl().deixa(40, buida, "LEscola");
        comprovaCanviat();
        f = feina(int(dades_prova::valor(db(), "SELECT MAX(feines_id) FROM Feines")));
        QCOMPARE(f.feines_hora_inici, QString("19:30"));
        QCOMPARE(f.recursos_nom, QString());
    }

    // In the week view the drop gives the day and the slot, never a resource; drops on the
    // pressed cell, on a header or in the month view do nothing; a refusal is shown verbatim.
    void deixarLlocALaSetmana()
    {
        cfg().PermetSolaparLlocs = false;
        obre(VistaAgenda::Setmana, kDimecres);
        ctl().deixa(17, 4, "LEscola"); // Thursday 08:00
        comprovaCanviat();
        Feina f = feina(int(dades_prova::valor(db(), "SELECT MAX(feines_id) FROM Feines")));
        QCOMPARE(f.feines_data, QDate(2009, 3, 12));
        QCOMPARE(f.feines_hora_inici, QString("08:00"));
        QCOMPARE(f.recursos_nom, QString());

        obre(VistaAgenda::Setmana, kDimecres);
        ctl().deixa(18, 4, "LEscola"); // 08:30: the place is taken
        QCOMPARE(darrerMissatge(), QString("Solapament de llocs a ESCOLA"));
        comprovaSenseCanvis();
        QCOMPARE(feines(), 1);

        m_ui->crides.clear();
        ctl().premGraella(30, 2);
        ctl().deixa(30, 2, "LForn");
        ctl().deixa(0, 2, "LForn");
        ctl().deixa(30, 0, "LForn");
        ctl().deixa(30, 8, "LForn");
        obre(VistaAgenda::Mes, kDimecres);
        ctl().deixa(3, 3, "LForn");
        QCOMPARE(feines(), 1);
        comprovaSenseCanvis();
        QVERIFY(m_ui->crides.isEmpty());
    }

    // Moving a job keeps its length; in the day view the column decides the resource: the
    // unassigned column removes it, another resource's column gives it, its own keeps it.
    void moureFeinaAlDia()
    {
        const int id = dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna");
        dades_prova::feina(db(), "Forn", kDimecres, "07:00", "07:30", "Biel");
        dades_prova::feina(db(), "Museu", kDimecres, "07:00", "07:30");
        obre(VistaAgenda::Dia, kDimecres);
        const int anna = columnaDe(model(), "Anna");
        arrossega(19, anna, 20, anna);
        comprovaCanviat();
        Feina f = feina(id);
        QCOMPARE(f.feines_hora_inici, QString("09:30"));
        QCOMPARE(f.feines_hora_fi, QString("10:30"));
        QCOMPARE(f.recursos_nom, QString("Anna"));

        obre(VistaAgenda::Dia, kDimecres);
        arrossega(20, columnaDe(model(), "Anna"), 20, columnaDe(model(), "Biel"));
        comprovaCanviat();
        QCOMPARE(feina(id).recursos_nom, QString("Biel"));

        obre(VistaAgenda::Dia, kDimecres);
        arrossega(21, columnaDe(model(), "Biel"), 23, columnaDe(model(), cfg().TexteNoAsignada));
        comprovaCanviat();
        f = feina(id);
        QCOMPARE(f.recursos_nom, QString());
        QCOMPARE(f.feines_hora_inici, QString("11:00"));
        QCOMPARE(f.feines_data, kDimecres);
    }

    // In the week view a move changes the day and the time, never the resource.
    void moureFeinaALaSetmana()
    {
        const int id = dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:30", "Anna");
        obre(VistaAgenda::Setmana, kDimecres);
        arrossega(20, 3, 25, 5); // from the 09:30 slot to Friday 12:00
        comprovaCanviat();
        const Feina f = feina(id);
        QCOMPARE(f.feines_data, QDate(2009, 3, 13));
        QCOMPARE(f.feines_hora_inici, QString("12:00"));
        QCOMPARE(f.feines_hora_fi, QString("13:30"));
        QCOMPARE(f.recursos_nom, QString("Anna"));
        QCOMPARE(model().text(25, 5), QString("Escola"));
        QCOMPARE(model().text(19, 3), QString());
    }

    // A move may end the job exactly at the day's end (24:00 stays 24:00), never after it.
    void moureFinsAlFinalDelDia()
    {
        const int tard = dades_prova::feina(db(), "Escola", kDimecres, "23:00", "24:00", "Anna");
        const int abans = dades_prova::feina(db(), "Banc", kDimecres, "21:00", "22:00", "Biel");
        obre(VistaAgenda::Setmana, kDimecres);
        arrossega(47, 3, 48, 3);
        QCOMPARE(darrerMissatge(), QString("L'hora final de la feina supera les 24:00h."));
        comprovaSenseCanvis();
        QCOMPARE(feina(tard).feines_hora_inici, QString("23:00"));
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, 0);

        obre(VistaAgenda::Setmana, kDimecres);
        arrossega(43, 3, 47, 4); // 21:00 -> Thursday 23:00
        comprovaCanviat();
        QCOMPARE(feina(abans).feines_hora_fi, QString("24:00"));

    }

    // A resource dropped on a job assigns it and recomputes the end from the job's services; on
    // an empty cell it does nothing, on a cell of several jobs it says so.
    void deixarRecurs()
    {
        dades_prova::servei(db(), "Neteja", 30, false);
        dades_prova::llocServei(db(), "Forn", "Neteja", 3);
        MotorFeines motor(db(), cfg());
        Feina nova;
        nova.llocs_nom = "Forn";
        nova.feines_data = kDimecres;
        nova.feines_hora_inici = "09:00";
        motor.Grava_Feina(nova, false); // ends at 10:00, the place's planned minutes
        dades_prova::feina(db(), "Escola", kDimecres, "12:00", "13:00", "Anna");
        dades_prova::feina(db(), "Banc", kDimecres, "12:00", "13:00", "Biel");
        dades_prova::feina(db(), "Museu", kDimecres, "16:00", "17:00", "Biel");

        obre(VistaAgenda::Setmana, kDimecres);
        ctl().deixa(20, 3, "RAnna");
        comprovaCanviat();
        Feina f = feina(nova.feines_id);
        QCOMPARE(f.recursos_nom, QString("Anna"));
        QCOMPARE(f.feines_hora_fi, QString("10:30")); // 3 x 30 minutes from its lines

        obre(VistaAgenda::Setmana, kDimecres);
        ctl().deixa(5, 3, "RAnna");
        QVERIFY(m_ui->crides.isEmpty());
        comprovaSenseCanvis();

        ctl().deixa(25, 3, "RAnna"); // 12:00 holds Escola and Banc
        QCOMPARE(darrerMissatge(), QString("Hi ha varies feines en la cel·la"));
        comprovaSenseCanvis();

        m_ui->crides.clear();
        ctl().deixa(33, 3, "RAnna"); // Museu 16:00, but Anna works 09:00-10:30 only: allowed
        comprovaCanviat();
        QCOMPARE(feina(int(dades_prova::valor(db(), "SELECT feines_id FROM Feines WHERE llocs_nom = 'Museu'"))).recursos_nom,
                 QString("Anna"));

        // in the day view the job is found in its own column: Escola 12:00 cannot go to Biel,
        // who is at Banc then; the refusal changes nothing
        obre(VistaAgenda::Dia, kDimecres);
        const int anna = columnaDe(model(), "Anna");
        QCOMPARE(model().text(25, anna), QString("Escola"));
        ctl().deixa(25, anna, "RBiel");
        QCOMPARE(darrerMissatge(), QString("Solapament de recursos: Biel"));
        comprovaSenseCanvis();
        QCOMPARE(model().text(25, anna), QString("Escola"));
    }

    // A caption of an unknown kind is a run-time error of the handler.
    void tipusDesconegut()
    {
        obre(VistaAgenda::Setmana, kDimecres);
        ctl().deixa(20, 3, "Xalguna cosa");
        QCOMPARE(m_ui->crides.size(), 1);
        QCOMPARE(m_ui->crides.first().tipus, QString("error"));
        QCOMPARE(m_ui->crides.first().titol, QString("ERROR"));
        QCOMPARE(m_ui->crides.first().text, QString("Error:Error tipo_dada"));
        comprovaSenseCanvis();
    }

    // ------------------------------------------------------------ keys

    // Space toggles done (the underline follows), Delete asks first, Enter opens the editor;
    // cells of several jobs and empty cells do nothing but say so or stay quiet.
    void tecles()
    {
        const int avui = dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna");
        const int dema = dades_prova::feina(db(), "Banc", kDimecres.addDays(1), "09:00", "10:00", "Biel");
        obre(VistaAgenda::Setmana, kDimecres);

        ctl().setCellaActual(19, 3);
        ctl().tecla(ControladorAgenda::TeclaEspai);
        comprovaCanviat();
        QVERIFY(feina(avui).feines_feta);
        QVERIFY(model().cella(19, 3).subratllat);
        obre(VistaAgenda::Setmana, kDimecres);
        ctl().setCellaActual(20, 3);
        ctl().tecla(ControladorAgenda::TeclaEspai);
        QVERIFY(!feina(avui).feines_feta);
        QVERIFY(!model().cella(19, 3).subratllat);

        obre(VistaAgenda::Setmana, kDimecres);
        ctl().setCellaActual(19, 4);
        ctl().tecla(ControladorAgenda::TeclaEspai);
        QCOMPARE(darrerMissatge(), QString("Una feina futura no pot estar feta"));
        comprovaSenseCanvis();
        QVERIFY(!feina(dema).feines_feta);

        m_ui->crides.clear();
        ctl().tecla(ControladorAgenda::TeclaSuprimir); // answered No
        QCOMPARE(m_ui->crides.size(), 1);
        QCOMPARE(m_ui->crides.first().titol, QString("CONFIRMACIO"));
        QCOMPARE(m_ui->crides.first().text, QString("Eliminar feina Biel 'Banc' del 12/03/2009 ?"));
        QCOMPARE(feines(), 2);
        comprovaSenseCanvis();
        m_ui->respostes << true;
        m_ui->crides.clear();
        ctl().tecla(ControladorAgenda::TeclaSuprimir);
        QCOMPARE(feines(), 1);
        QCOMPARE(m_reconstruccions, 1);
        QVERIFY(ctl().refrescarFacturacio());
        QCOMPARE(model().text(19, 4), QString());

        obre(VistaAgenda::Setmana, kDimecres);
        ctl().setCellaActual(19, 3);
        ctl().tecla('A');
        ctl().setCellaActual(30, 3);
        ctl().tecla(ControladorAgenda::TeclaSuprimir);
        QVERIFY(m_ui->crides.isEmpty());
        comprovaSenseCanvis();
    }

    // Enter opens the job editor on the selected job: without an editor the job is shown
    // read-only; an editor that stored a change ("OK") gets the agenda rebuilt.
    void introObreEditor()
    {
        const int id = dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna");
        dades_prova::feina(db(), "Banc", kDimecres, "09:30", "10:30", "Biel");
        obre(VistaAgenda::Setmana, kDimecres);
        ctl().setCellaActual(19, 3);
        ctl().tecla(ControladorAgenda::TeclaIntro);
        QCOMPARE(m_ui->crides.size(), 1);
        QCOMPARE(m_ui->crides.first().titol, QString("Detall de Feina"));
        QVERIFY(m_ui->crides.first().text.contains("Escola"));
        comprovaSenseCanvis();
        QCOMPARE(ctl().FeinaSeleccionada.feines_id, 0);

        int xecs = 0;
        QList<int> obertes;
        ctl().recarregaXecs = [&] { ++xecs; };
        ctl().obreEditor = [&](Feina &f) {
            obertes << f.feines_id;
            f.missatge = QStringLiteral("OK");
        };
        m_ui->crides.clear();
        ctl().tecla(ControladorAgenda::TeclaIntro);
        QCOMPARE(obertes, QList<int>{id});
        QCOMPARE(xecs, 1);
        comprovaCanviat();

        obre(VistaAgenda::Setmana, kDimecres);
        ctl().setCellaActual(20, 3); // Escola and Banc share 09:30
        ctl().tecla(ControladorAgenda::TeclaIntro);
        QCOMPARE(darrerMissatge(), QString("Hi ha varies feines en la cel·la"));
        QCOMPARE(obertes.size(), 1);

        // a double click on a selected job opens it too; an editor that stored nothing changes nothing
        ctl().obreEditor = [&](Feina &f) { obertes << f.feines_id; };
        m_ui->crides.clear();
        ctl().premGraella(19, 3);
        ctl().dobleClic();
        QCOMPARE(obertes, (QList<int>{id, id}));
        comprovaSenseCanvis();
    }

    // ------------------------------------------------------------ views and periods

    // The double clicks walk month -> week -> day -> week -> month, each on the right dates.
    void dobleClicCanviaVista()
    {
        obre(VistaAgenda::Mes, kDimecres);
        ctl().premGraella(0, 3);
        ctl().dobleClic();
        QCOMPARE(ctl().estat().vista, VistaAgenda::Mes);
        QCOMPARE(m_reconstruccions, 0);

        ctl().premGraella(4, 0); // the week of 16 March
        ctl().dobleClic();
        QCOMPARE(ctl().estat().vista, VistaAgenda::Setmana);
        QCOMPARE(ctl().estat().DiaActual, QDate(2009, 3, 16));
        QCOMPARE(ctl().estat().IniciSetmana, QDate(2009, 3, 16));
        QCOMPARE(model().text(0, 1), QString("dilluns, 16"));
        QCOMPARE(m_calendari.last(), QDate(2009, 3, 16));

        ctl().premGraella(0, 5); // Friday's header
        ctl().dobleClic();
        QCOMPARE(ctl().estat().vista, VistaAgenda::Dia);
        QCOMPARE(ctl().estat().DiaActual, QDate(2009, 3, 20));
        QCOMPARE(ctl().estat().DataCalendari, QDate(2009, 3, 20));
        QCOMPARE(model().text(0, 0), QString("divendres, 20"));

        ctl().premGraella(30, 3); // an empty slot: the week of the calendar's date
        ctl().dobleClic();
        QCOMPARE(ctl().estat().vista, VistaAgenda::Setmana);
        QCOMPARE(ctl().estat().IniciSetmana, QDate(2009, 3, 16));
        QCOMPARE(ctl().estat().DataCalendari, QDate(2009, 3, 16));

        ctl().premGraella(0, 0);
        ctl().dobleClic();
        QCOMPARE(ctl().estat().vista, VistaAgenda::Mes);
        QCOMPARE(ctl().estat().IniciMes, QDate(2009, 2, 23));
        QCOMPARE(ctl().filaActual(), 4); // 16 March
        QCOMPARE(ctl().columnaActual(), 1);

        ctl().premGraella(6, 7); // 5 April
        ctl().dobleClic();
        QCOMPARE(ctl().estat().vista, VistaAgenda::Dia);
        QCOMPARE(ctl().estat().DiaActual, QDate(2009, 4, 5));
        QCOMPARE(ctl().estat().IniciMes, QDate(2009, 3, 30));

        obre(VistaAgenda::Mes, kDimecres);
        ctl().setCellaActual(2, 4);
        ctl().tecla(ControladorAgenda::TeclaIntro);
        QCOMPARE(ctl().estat().vista, VistaAgenda::Dia);
        QCOMPARE(ctl().estat().DiaActual, QDate(2009, 3, 5));
    }

    // The calendar rebuilds only when the date leaves the period shown; in the week view the
    // calendar goes to the first day of the week.
    void calendari()
    {
        obre(VistaAgenda::Dia, kDimecres);
        ctl().Canvi_Data_Calendari(kDimecres);
        QCOMPARE(m_reconstruccions, 0);
        ctl().Canvi_Data_Calendari(kDimecres.addDays(1));
        QCOMPARE(m_reconstruccions, 1);
        QCOMPARE(model().text(0, 0), QString("dijous, 12"));

        obre(VistaAgenda::Setmana, QDate(2009, 3, 9));
        m_calendari.clear();
        ctl().Canvi_Data_Calendari(QDate(2009, 3, 13));
        QCOMPARE(m_reconstruccions, 0);
        QCOMPARE(m_calendari, QList<QDate>{QDate(2009, 3, 9)});
        ctl().Canvi_Data_Calendari(QDate(2009, 3, 17));
        QCOMPARE(m_reconstruccions, 1);
        QCOMPARE(ctl().estat().DiaActual, QDate(2009, 3, 16));
        QCOMPARE(ctl().estat().IniciSetmana, QDate(2009, 3, 16));

        obre(VistaAgenda::Mes, kDimecres);
        int focus = 0;
        ctl().enfocaGraella = [&] { ++focus; };
        ctl().Canvi_Data_Calendari(QDate(2009, 3, 28));
        QCOMPARE(m_reconstruccions, 0);
        QCOMPARE(ctl().filaActual(), 5);
        QCOMPARE(ctl().columnaActual(), 6);
        QCOMPARE(focus, 1);
        ctl().Canvi_Data_Calendari(QDate(2010, 3, 28)); // same month, another year
        QCOMPARE(m_reconstruccions, 1);
        QCOMPARE(ctl().estat().IniciMes, QDate(2010, 3, 1));
        QCOMPARE(model().text(0, 0), QString("2010"));

        // the view buttons and the period arrows
        ctl().canviaVista(VistaAgenda::Setmana);
        QCOMPARE(ctl().estat().IniciSetmana, QDate(2010, 3, 22));
        ctl().mouPeriode(1);
        QCOMPARE(ctl().estat().IniciSetmana, QDate(2010, 3, 29));
        QCOMPARE(model().text(0, 0), QString("març 2010"));
        ctl().canviaVista(VistaAgenda::Dia);
        ctl().mouPeriode(-1);
        QCOMPARE(ctl().estat().DiaActual, QDate(2010, 3, 28));
    }

    // A rebuild keeps the current cell where it can and disables the job-list print; a press on
    // a resource enables it.
    void reconstruccioICellaActual()
    {
        bool refrescarAgenda = true;
        bool refrescarFacturacio = false;
        ctl().setIndicadors(&refrescarAgenda, &refrescarFacturacio);
        obre(VistaAgenda::Setmana, kDimecres);
        QVERIFY(!refrescarAgenda);
        QCOMPARE(ctl().premLlista('R', "Anna"), QString("RAnna"));
        QVERIFY(ctl().imprimirFeinesActiu());
        QCOMPARE(ctl().recursImprimir(), QString("Anna"));
        ctl().setCellaActual(40, 6);
        ctl().canviaVista(VistaAgenda::Mes);
        QVERIFY(!ctl().imprimirFeinesActiu());
        QCOMPARE(ctl().premLlista('L', "Escola"), QString()); // no dragging in the month view
        QCOMPARE(ctl().premLlista('R', "Anna"), QString());
        QVERIFY(ctl().imprimirFeinesActiu());
        ctl().setCellaActual(40, 6);
        QCOMPARE(ctl().filaActual(), 6);
        QCOMPARE(ctl().columnaActual(), 6);
        ctl().deixa(3, 3, "LEscola");
        QVERIFY(!refrescarFacturacio);
    }
};

// The planning offered by a click on a month cell after the last planned day; before it, the
// click shows the day's jobs.
class TestAgendaPlanificacio : public QObject {
    Q_OBJECT

private slots:
    void clicAlMes()
    {
        DirectoriProva dir;
        dir.posaParametre("UltimDiaGen", "10/03/2009", "Estat");
        auto sessio = dir.obreSessio();
        Db &db = sessio->db();
        dades_prova::lloc(db, "Escola", 60);
        db.query("UPDATE Llocs SET llocs_periodicitat_dies = 1, llocs_dissabte = 1, llocs_diumenge = 1, llocs_hora = '08:00'")
            .exec();
        dades_prova::feina(db, "Escola", QDate(2009, 3, 9), "08:00", "09:00");
        InteraccioGuio ui;
        ControladorAgenda ctl(db, sessio->cfg(), ui, kDimecres);
        RegistreMemoria registre;
        ctl.registrePlanificacio = [&] { return &registre; };
        QList<QDate> planificat;
        ctl.alPlanificar = [&](const QDate &d) { planificat << d; };
        QList<QStringList> indicacions;
        ctl.mostraIndicacio = [&](const QString &t, const QString &x) { indicacions << QStringList{t, x}; };
        ctl.Construeix_Agenda();

        // a planned day with jobs: its jobs in a balloon, no question
        ctl.clic(3, 1);
        QCOMPARE(ui.crides.size(), 0);
        QCOMPARE(indicacions.size(), 1);
        QCOMPARE(indicacions.first().at(1), QString("08:00 Escola"));
        QCOMPARE(indicacions.first().at(0), QString("dilluns, 09/03/2009"));
        // a planned day without jobs: nothing
        ctl.clic(3, 2);
        QCOMPARE(indicacions.size(), 1);
        QCOMPARE(ui.crides.size(), 0);

        // after the last planned day, answered No: nothing changes
        ctl.clic(3, 5); // 13 March
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides.first().tipus, QString("pregunta"));
        QCOMPARE(ui.crides.first().titol, QString("GENERACIO DE FEINES PLANIFICADES"));
        QCOMPARE(dades_prova::valor(db, "SELECT COUNT(*) FROM Feines"), 1);
        QCOMPARE(sessio->cfg().UltimDiaGen, QDate(2009, 3, 10));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("10/03/2009"));
        QVERIFY(planificat.isEmpty());
        QVERIFY(registre.text.isEmpty());

        // answered Yes: 11, 12 and 13 March planned, the grid shows them, the day moves on
        ui.respostes << true;
        ctl.clic(3, 5);
        QCOMPARE(dades_prova::valor(db, "SELECT COUNT(*) FROM Feines"), 4);
        QCOMPARE(sessio->cfg().UltimDiaGen, QDate(2009, 3, 13));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("13/03/2009"));
        QCOMPARE(planificat, QList<QDate>{QDate(2009, 3, 13)});
        QVERIFY(registre.text.contains("FINALITZACIO CORRECTA!!!"));
        QCOMPARE(ctl.model().text(3, 4), QString("08:00 Escola"));
        QVERIFY(ctl.refrescarFacturacio());
    }
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    int status = 0;
    {
        TestAgendaController t;
        status |= QTest::qExec(&t, argc, argv);
    }
    {
        TestAgendaPlanificacio t;
        status |= QTest::qExec(&t, argc, argv);
    }
    return status;
}

#include "tst_agenda_controller.moc"
