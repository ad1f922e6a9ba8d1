// The agenda grid built from a real database: which cells a job covers, where the day view puts
// each resource's jobs, what the week and month views show, and in which colours.

#include "agenda/agenda_model.h"
#include "agenda/agenda_model_taula.h"
#include "jobs/festius.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QAbstractItemModelTester>
#include <QtTest>

namespace {

const QDate kDimecres(2009, 3, 11); // a Wednesday; "today" in these tests
constexpr qint32 kVermell = 0x0000FF;
constexpr qint32 kVerd = 0x00FF00;
constexpr qint32 kBlau = 0xFF0000;

// The blocks drawn in column `col`, top down: "first-last text" ("first text" for one row).
QString blocs(const ModelAgenda &m, int col)
{
    QStringList r;
    for (int f = 1; f < m.files(); ++f) {
        const CellaAgenda &c = m.cella(f, col);
        if (c.filesFusionades >= 1 && !c.text.isEmpty())
            r << (c.filesFusionades == 1 ? QString::number(f) : QStringLiteral("%1-%2").arg(f).arg(f + c.filesFusionades - 1)) + ' ' + c.text;
    }
    return r.join(QStringLiteral(", "));
}

// The headers of the body columns.
QStringList capcaleres(const ModelAgenda &m)
{
    QStringList r;
    for (int c = 1; c < m.columnes(); ++c)
        r << m.text(0, c);
    return r;
}

} // namespace

class TestAgendaModel : public QObject {
    Q_OBJECT

    std::unique_ptr<BaseProva> m_base;

    Db &db() { return m_base->db; }
    Configuracio &cfg() { return m_base->cfg; }

    std::unique_ptr<ModelAgenda> construeix(VistaAgenda v, const QDate &dia = kDimecres)
    {
        auto m = std::make_unique<ModelAgenda>(db(), cfg());
        m->setAvui(kDimecres);
        m->Construeix_Agenda(EstatAgenda(v, dia, cfg().PrimerDiaSetmana));
        return m;
    }

private slots:
    void init()
    {
        m_base = std::make_unique<BaseProva>();
        dades_prova::recurs(db(), "Anna", kVermell);
        dades_prova::recurs(db(), "Biel", kVerd);
        dades_prova::recurs(db(), "Carles", 0x00FFFF, false);
        dades_prova::grup(db(), "Equip", kBlau, {"Anna", "Biel"});
        for (const char *lloc : {"Escola", "Banc", "Forn", "Museu"})
            dades_prova::lloc(db(), lloc, 60);
    }

    // A job covers the slots from the one holding its start up to, not including, the one that
    // starts at its end, drawn as one block; the week view draws the same slots as the day view.
    void coberturaDeFranges()
    {
        const struct {
            const char *horaInici, *horaFinal;
            int minutsCella;
            const char *inici, *fi;
            int primera, darrera; // 0 when it is not drawn
        } casos[] = {
            {"00:00", "24:00", 30, "09:00", "10:00", 19, 20}, // a whole hour
            {"00:00", "24:00", 30, "09:10", "09:20", 19, 19}, // shorter than a slot
            {"00:00", "24:00", 30, "23:30", "24:00", 48, 48}, // ends at 24:00
            {"08:00", "20:00", 30, "07:00", "08:00", 0, 0},   // ends at the day's start
            {"08:00", "20:00", 30, "07:00", "09:00", 1, 2},   // starts before the day
            {"08:00", "20:00", 30, "20:00", "21:00", 0, 0},   // starts at the day's end
            {"08:00", "20:00", 30, "19:30", "21:00", 24, 24}, // passes the day's end
        };
        for (const auto &c : casos) {
            const QString nom = QStringLiteral("%1-%2 in %3-%4").arg(c.inici, c.fi, c.horaInici, c.horaFinal);
            cfg().HoraInici = c.horaInici;
            cfg().HoraFinal = c.horaFinal;
            cfg().MinutsCella = c.minutsCella;
            cfg().CellesDia = Configuracio::cellesDia(c.horaInici, c.horaFinal, c.minutsCella);
            db().exec("DELETE FROM Feines");
            dades_prova::feina(db(), "Escola", kDimecres, c.inici, c.fi, "Anna");
            const QString esperat = !c.primera ? QString()
                : c.primera == c.darrera   ? QStringLiteral("%1 Escola").arg(c.primera)
                                           : QStringLiteral("%1-%2 Escola").arg(c.primera).arg(c.darrera);
            auto dia = construeix(VistaAgenda::Dia);
            QCOMPARE(dia->files(), cfg().CellesDia + 1);
            QVERIFY2(blocs(*dia, 1) == esperat, qPrintable(nom));
            auto setmana = construeix(VistaAgenda::Setmana);
            QVERIFY2(blocs(*setmana, 3) == esperat, qPrintable(nom));
            const ModelAgenda::Rang g = setmana->Rang_Celles_Feina(kDimecres, c.inici, c.fi, "Anna");
            QVERIFY2(g.visible() == bool(c.primera) && (!c.primera || g.fila_fi == c.darrera), qPrintable(nom));
        }
    }

    // The day view: a column per resource with jobs, sorted by name after the unassigned ones;
    // overlapping jobs of one resource open another column with the same header, and a later job
    // that fits goes back to the first; a group's job in each member's column and colour;
    // the overtime row; the lunch colour.
    void vistaDia()
    {
        dades_prova::feina(db(), "Escola", kDimecres, "09:00", "11:00", "Biel");
        dades_prova::feina(db(), "Banc", kDimecres, "10:00", "12:00", "Biel");
        dades_prova::feina(db(), "Forn", kDimecres, "12:00", "13:00", "Biel");
        dades_prova::feina(db(), "Museu", kDimecres, "08:00", "09:00", "Anna");
        dades_prova::feina(db(), "Escola", kDimecres, "15:00", "16:00");
        dades_prova::feina(db(), "Banc", kDimecres, "15:30", "16:30");
        dades_prova::feina(db(), "Forn", kDimecres, "16:00", "17:00", "Equip");
        dades_prova::feina(db(), "Museu", kDimecres, "09:00", "10:00", "Carles");
        dades_prova::feina(db(), "Forn", kDimecres.addDays(1), "09:00", "10:00", "Anna"); // another day
        db().query("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('anna', ?, 1.5)").bind(kDimecres).exec();
        db().query("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('Biel', ?, 2)").bind(kDimecres.addDays(1)).exec();
        auto m = construeix(VistaAgenda::Dia);
        const QString cap = cfg().TexteNoAsignada;
        QCOMPARE(capcaleres(*m), (QStringList{cap, cap, "Anna", "Biel", "Biel", "Carles", ""}));
        const QStringList esperats = {"31-32 Escola", "32-33 Banc", "17-18 Museu, 33-34 Forn", "19-22 Escola, 25-26 Forn, 33-34 Forn",
                                      "21-24 Banc", "19-20 Museu", ""};
        for (int c = 1; c < m->columnes(); ++c)
            QCOMPARE(blocs(*m, c), esperats[c - 1]);
        QCOMPARE(m->cella(33, 3).fons, kVermell);
        QCOMPARE(m->cella(33, 4).fons, kVerd);
        QVERIFY(m->columnaUsada(6) && !m->columnaUsada(7) && !m->columnaUsada(8));
        QCOMPARE(m->hores(), (QStringList{"", "", "1,50", "0,00", "0,00", "", ""})); // Carles's time does not count
        // 13:30 up to (not including) 15:00 is the lunch break
        const QList<qint32> fons = {m->cella(27, 0).fons, m->cella(28, 0).fons, m->cella(30, 0).fons, m->cella(31, 0).fons};
        QCOMPARE(fons, (QList<qint32>{SenseColor, cfg().ColorDiumenge, cfg().ColorDiumenge, SenseColor}));
    }

    // The week view: its seven days from the first to the last; overlapping different jobs
    // become TexteVaris on the normal background for the shared slots only, a second job with
    // the same place and colour leaves the cell as it was; a group in its own colour; headers,
    // Sundays, past days in bold, done jobs underlined, the window colour for an unassigned job
    // or a missing resource.
    void vistaSetmana()
    {
        dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna", true);
        dades_prova::feina(db(), "Banc", kDimecres, "09:30", "11:00", "Anna");
        dades_prova::feina(db(), "Forn", kDimecres, "14:00", "15:00", "Anna");
        dades_prova::feina(db(), "Forn", kDimecres, "14:00", "14:30", "Anna");
        dades_prova::feina(db(), "Museu", kDimecres, "16:00", "17:00", "Equip");
        dades_prova::feina(db(), "Banc", kDimecres, "18:00", "19:00");
        dades_prova::feina(db(), "Forn", kDimecres, "20:00", "21:00", "Esborrat");
        dades_prova::feina(db(), "Escola", kDimecres.addDays(-1), "09:00", "10:00", "Anna");
        dades_prova::feina(db(), "Forn", QDate(2009, 3, 9), "12:00", "12:30", "Biel");
        dades_prova::feina(db(), "Forn", QDate(2009, 3, 15), "12:00", "12:30", "Biel");
        dades_prova::feina(db(), "Museu", QDate(2009, 3, 16), "12:00", "12:30", "Biel");
        dades_prova::feina(db(), "Museu", QDate(2009, 3, 8), "12:00", "12:30", "Biel");
        auto m = construeix(VistaAgenda::Setmana);
        QCOMPARE(blocs(*m, 3), QString("19 Escola, 20 %1, 21-22 Banc, 29-30 Forn, 33-34 Museu, 37-38 Banc, 41-42 Forn").arg(cfg().TexteVaris));
        const QStringList altres = {"25 Forn", "19-20 Escola", "", "", "", "25 Forn"};
        for (int c : {1, 2, 4, 5, 6, 7})
            QCOMPARE(blocs(*m, c), altres[c == 1 ? 0 : c - 1 - (c > 3)]);
        QCOMPARE(m->cella(20, 3).fons, SenseColor);
        QVERIFY(m->cella(19, 3).subratllat && !m->cella(20, 3).subratllat && !m->cella(19, 2).subratllat);
        MotorFeines motor(db(), cfg());
        const QList<qint32> colors = {m->cella(29, 3).fons, m->cella(33, 3).fons, m->cella(37, 3).fons, m->cella(41, 3).fons};
        QCOMPARE(colors, (QList<qint32>{kVermell, kBlau, ColorFinestra, motor.Color_Recurs("Esborrat")}));
        QCOMPARE(capcaleres(*m).first() + capcaleres(*m).last() + m->text(0, 0), QString("dilluns, 9diumenge, 15març 2009"));
        QCOMPARE(QList<qint32>({m->cella(0, 6).fons, m->cella(0, 7).fons}), QList<qint32>({SenseColor, cfg().ColorDiumenge}));
        QVERIFY(m->cella(19, 2).negreta && !m->cella(19, 3).negreta); // yesterday's jobs, not today's
        QCOMPARE(m->diaCella(5, 7), QDate(2009, 3, 15));
    }

    // The month view: 42 days from the first day of the week of the 1st, days of the
    // neighbouring months included, one "hh:mm place" line per job in time order.
    void vistaMes()
    {
        dades_prova::feina(db(), "Escola", QDate(2009, 2, 23), "09:00", "10:00", "Anna"); // first cell
        dades_prova::feina(db(), "Banc", QDate(2009, 3, 11), "15:00", "16:00", "Anna");
        dades_prova::feina(db(), "Forn", QDate(2009, 3, 11), "08:00", "09:00");
        dades_prova::feina(db(), "Museu", QDate(2009, 4, 5), "10:00", "11:00"); // last cell
        dades_prova::feina(db(), "Museu", QDate(2009, 4, 6), "10:00", "11:00"); // outside
        dades_prova::feina(db(), "Museu", QDate(2009, 2, 22), "10:00", "11:00"); // outside
        auto m = construeix(VistaAgenda::Mes);
        QCOMPARE(QPoint(m->columnes(), m->files()), QPoint(8, 7));
        QStringList plens;
        for (int r = 1; r < 7; ++r)
            for (int c = 1; c < 8; ++c)
                if (!m->text(r, c).isEmpty())
                    plens << QStringLiteral("%1,%2 %3").arg(r).arg(c).arg(m->text(r, c));
        QCOMPARE(plens, (QStringList{"1,1 09:00 Escola", "3,3 08:00 Forn\r\n15:00 Banc", "6,7 10:00 Museu"}));
        QCOMPARE(m->diaCella(6, 7), QDate(2009, 4, 5));
    }

    // The item model a table view reads: body cells as items, the grid's header row as header
    // data, colours in the standard roles, a closed day's name as the tooltip of its header.
    void modelDeTaula()
    {
        dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna", true);
        dades_prova::feina(db(), "Banc", kDimecres, "11:00", "12:00");
        QCOMPARE(Festius(db()).Afegeix_Festiu(QDate(2009, 3, 12), QStringLiteral("Santa Caterina")), QString());
        auto m = construeix(VistaAgenda::Setmana);
        ModelTaulaAgenda taula(*m);
        QAbstractItemModelTester tester(&taula, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(QPoint(taula.columnCount(), taula.rowCount()), QPoint(7, 48));
        const QModelIndex escola = taula.index(18, 2);
        QCOMPARE(escola.data().toString(), QString("Escola"));
        QCOMPARE(escola.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(255, 0, 0));
        QCOMPARE(escola.data(ModelTaulaAgenda::RolFilesFusionades).toInt(), 2);
        QCOMPARE(taula.index(19, 2).data(ModelTaulaAgenda::RolFilesFusionades).toInt(), 0);
        QCOMPARE(taula.headerData(0, Qt::Horizontal).toString(), QString("dilluns, 9"));
        QCOMPARE(taula.headerData(6, Qt::Horizontal, Qt::BackgroundRole).value<QBrush>().color(),
                 ModelTaulaAgenda::colorQt(cfg().ColorDiumenge));
        QVERIFY(taula.headerData(3, Qt::Horizontal, Qt::ToolTipRole).toString().contains("Santa Caterina"));

        // a rebuild into another view resets the item model's shape; an index a view still holds
        // from before shows nothing once it is past the new shape
        const QModelIndex vella = taula.index(6, 2);
        m->Construeix_Agenda(EstatAgenda(VistaAgenda::Mes, kDimecres, cfg().PrimerDiaSetmana));
        taula.refresca();
        QCOMPARE(taula.rowCount(), 6);
        QVERIFY(!taula.data(vella).isValid());
        const QModelIndex dimecres = taula.index(2, 2);
        QCOMPARE(dimecres.data().toString(), QString("09:00 Escola\n11:00 Banc"));
    }
};

QTEST_MAIN(TestAgendaModel)
#include "tst_agenda_model.moc"
