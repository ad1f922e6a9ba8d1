// The agenda grid built from a real database: which cells a job covers, where the day view puts
// each resource's jobs, what the week and month views show, and in which colours.

#include "agenda/agenda_model.h"
#include "agenda/agenda_model_taula.h"
#include "jobs/festius.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QAbstractItemModelTester>
#include <QFont>
#include <QtTest>

namespace {

const QDate kDimecres(2009, 3, 11); // a Wednesday; "today" in these tests
constexpr qint32 kVermell = 0x0000FF;
constexpr qint32 kVerd = 0x00FF00;
constexpr qint32 kBlau = 0xFF0000;

// The rows of column `col` that show `text`.
QList<int> filesAmb(const ModelAgenda &m, int col, const QString &text)
{
    QList<int> files;
    for (int r = 1; r < m.files(); ++r) {
        if (m.text(r, col) == text)
            files << r;
    }
    return files;
}

// The body columns whose header is `text`.
QList<int> columnesAmb(const ModelAgenda &m, const QString &text)
{
    QList<int> cols;
    for (int c = 1; c < m.columnes(); ++c) {
        if (m.text(0, c) == text)
            cols << c;
    }
    return cols;
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

    void coberturaDeFranges_data()
    {
        QTest::addColumn<QString>("horaInici");
        QTest::addColumn<QString>("horaFinal");
        QTest::addColumn<int>("minutsCella");
        QTest::addColumn<QString>("inici");
        QTest::addColumn<QString>("fi");
        QTest::addColumn<QList<int>>("files");
        QTest::newRow("whole hour") << "00:00" << "24:00" << 30 << "09:00" << "10:00" << QList<int>{19, 20};
        QTest::newRow("shorter than a slot") << "00:00" << "24:00" << 30 << "09:10" << "09:20" << QList<int>{19};
        QTest::newRow("ends mid-slot") << "00:00" << "24:00" << 30 << "09:00" << "09:45" << QList<int>{19};
        QTest::newRow("ends at 24:00") << "00:00" << "24:00" << 30 << "23:30" << "24:00" << QList<int>{48};
        QTest::newRow("ends at the day's start") << "08:00" << "20:00" << 30 << "07:00" << "08:00" << QList<int>{};
        QTest::newRow("starts before the day") << "08:00" << "20:00" << 30 << "07:00" << "09:00" << QList<int>{1, 2};
        QTest::newRow("starts at the day's end") << "08:00" << "20:00" << 30 << "20:00" << "21:00" << QList<int>{};
        QTest::newRow("passes the day's end") << "08:00" << "20:00" << 30 << "19:30" << "21:00" << QList<int>{24};
        QTest::newRow("15-minute slots") << "08:00" << "12:00" << 15 << "08:15" << "09:00" << QList<int>{2, 3, 4};
    }

    // A job covers the slots from the one holding its start up to, not including, the one that
    // starts at its end, drawn as one block; the week view draws the same slots as the day view.
    void coberturaDeFranges()
    {
        QFETCH(QString, horaInici);
        QFETCH(QString, horaFinal);
        QFETCH(int, minutsCella);
        QFETCH(QString, inici);
        QFETCH(QString, fi);
        QFETCH(QList<int>, files);
        cfg().HoraInici = horaInici;
        cfg().HoraFinal = horaFinal;
        cfg().MinutsCella = minutsCella;
        cfg().CellesDia = Configuracio::cellesDia(horaInici, horaFinal, minutsCella);
        dades_prova::feina(db(), "Escola", kDimecres, inici, fi, "Anna");

        auto dia = construeix(VistaAgenda::Dia);
        QCOMPARE(dia->files(), cfg().CellesDia + 1);
        QCOMPARE(columnesAmb(*dia, "Anna"), files.isEmpty() ? QList<int>{} : QList<int>{1});
        QCOMPARE(filesAmb(*dia, 1, "Escola"), files);
        if (!files.isEmpty())
            QCOMPARE(dia->cella(files.first(), 1).filesFusionades, files.size());

        auto setmana = construeix(VistaAgenda::Setmana);
        QCOMPARE(filesAmb(*setmana, 3, "Escola"), files);
        const ModelAgenda::Rang g = setmana->Rang_Celles_Feina(kDimecres, inici, fi, "Anna");
        QCOMPARE(g.visible(), !files.isEmpty());
        const QList<int> rang = files.isEmpty() ? QList<int>{0, 0, 0, 0} : QList<int>{files.first(), files.last(), 3, 3};
        QCOMPARE((QList<int>{g.fila_inici, g.fila_fi, g.columna_inici, g.columna_fi}), rang);
    }

    // Back-to-back jobs share no slot; the slot labels and the lunch colour follow the settings.
    void frangesContiguesIEtiquetes()
    {
        dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna");
        dades_prova::feina(db(), "Banc", kDimecres, "10:00", "11:00", "Anna");
        auto m = construeix(VistaAgenda::Dia);
        QCOMPARE(filesAmb(*m, 1, "Escola"), (QList<int>{19, 20}));
        QCOMPARE(filesAmb(*m, 1, "Banc"), (QList<int>{21, 22}));
        QCOMPARE(m->text(48, 0), QString("23:30"));
        QCOMPARE(m->horaFila(21), QString("10:00"));
        // 13:30 up to (not including) 15:00 is the lunch break
        const QList<qint32> fons = {m->cella(27, 0).fons, m->cella(28, 0).fons, m->cella(30, 0).fons, m->cella(31, 0).fons};
        QCOMPARE(fons, (QList<qint32>{SenseColor, cfg().ColorDiumenge, cfg().ColorDiumenge, SenseColor}));
        QCOMPARE(m->cella(0, 0).text, QString("dimecres, 11"));
    }

    // Overlapping jobs of one resource open a second column with the same header; a later job
    // that fits goes back to the first; unassigned jobs share the TexteNoAsignada columns; the
    // columns follow the resource names and unused columns stay blank.
    void columnesDelDia()
    {
        dades_prova::feina(db(), "Escola", kDimecres, "09:00", "11:00", "Biel");
        dades_prova::feina(db(), "Banc", kDimecres, "10:00", "12:00", "Biel");
        dades_prova::feina(db(), "Forn", kDimecres, "12:00", "13:00", "Biel");
        dades_prova::feina(db(), "Museu", kDimecres, "08:00", "09:00", "Anna");
        dades_prova::feina(db(), "Escola", kDimecres, "15:00", "16:00");
        dades_prova::feina(db(), "Banc", kDimecres, "15:30", "16:30");
        dades_prova::feina(db(), "Forn", kDimecres.addDays(1), "09:00", "10:00", "Carles"); // another day

        auto m = construeix(VistaAgenda::Dia);
        QCOMPARE(m->columnes(), 8);
        QCOMPARE(columnesAmb(*m, cfg().TexteNoAsignada), (QList<int>{1, 2}));
        QCOMPARE(columnesAmb(*m, "Anna"), QList<int>{3});
        QCOMPARE(columnesAmb(*m, "Biel"), (QList<int>{4, 5}));
        QCOMPARE(filesAmb(*m, 5, "Banc"), (QList<int>{21, 22, 23, 24}));
        QCOMPARE(filesAmb(*m, 4, "Forn"), (QList<int>{25, 26}));
        QCOMPARE(filesAmb(*m, 2, "Banc"), (QList<int>{32, 33}));
        QCOMPARE(m->recursColumna(5), QString("Biel"));
        QCOMPARE(m->recursColumna(1), QString());
        QVERIFY(m->columnaUsada(5));
        QVERIFY(!m->columnaUsada(6) && !m->columnaUsada(8));
        QCOMPARE(m->text(0, 7), QString());

        // more overlapping jobs than seven columns hold add columns on the right
        for (int i = 0; i < 5; ++i)
            dades_prova::feina(db(), QStringLiteral("Lloc %1").arg(i), kDimecres, "09:00", "10:00", "Anna");
        m = construeix(VistaAgenda::Dia);
        QCOMPARE(m->columnes(), 10);
        QCOMPARE(columnesAmb(*m, "Anna"), (QList<int>{3, 4, 5, 6, 7}));
        QCOMPARE(columnesAmb(*m, "Biel"), (QList<int>{8, 9}));
        QCOMPARE(m->cella(19, 7).fons, kVermell);
    }

    // A group's job is drawn in each member's column and colour in the day view, and once in the
    // group's colour in the week view.
    void feinaDeGrup()
    {
        dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Equip");
        auto dia = construeix(VistaAgenda::Dia);
        QCOMPARE(columnesAmb(*dia, "Anna") + columnesAmb(*dia, "Biel"), (QList<int>{1, 2}));
        QCOMPARE(dia->cella(19, 1).fons, kVermell);
        QCOMPARE(dia->cella(19, 2).fons, kVerd);
        QCOMPARE(dia->cella(19, 1).feines, dia->cella(19, 2).feines);
        auto setmana = construeix(VistaAgenda::Setmana);
        QCOMPARE(setmana->cella(19, 3).fons, kBlau);
    }

    // The overtime row: "0,00" under a resource that takes time, nothing under one that does not
    // or under the unassigned column, then the stored hours of that day.
    void horesExtra()
    {
        dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna");
        dades_prova::feina(db(), "Forn", kDimecres, "09:00", "10:00", "Biel");
        dades_prova::feina(db(), "Museu", kDimecres, "09:00", "10:00", "Carles");
        dades_prova::feina(db(), "Museu", kDimecres, "11:00", "12:00");
        db().query("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('anna', ?, 1.5)")
            .bind(kDimecres).exec();
        db().query("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('Biel', ?, 2)")
            .bind(kDimecres.addDays(1)).exec();
        auto m = construeix(VistaAgenda::Dia);
        QCOMPARE(m->textHores(0), QString("Hores extra"));
        QCOMPARE(m->hores(), (QStringList{"", "1,50", "0,00", "", "", "", ""})); // < >, Anna, Biel, Carles
        QVERIFY(construeix(VistaAgenda::Setmana)->hores().isEmpty());
    }

    // Overlapping different jobs in one day become TexteVaris on the normal background for the
    // shared slots only; a second job with the same place and colour leaves the cell as it was.
    void setmanaVaries()
    {
        dades_prova::feina(db(), "Escola", kDimecres, "09:00", "10:00", "Anna", true);
        dades_prova::feina(db(), "Banc", kDimecres, "09:30", "11:00", "Anna");
        dades_prova::feina(db(), "Forn", kDimecres, "14:00", "15:00", "Anna");
        dades_prova::feina(db(), "Forn", kDimecres, "14:00", "14:30", "Anna");
        auto m = construeix(VistaAgenda::Setmana);
        QVERIFY(m->cella(19, 3).subratllat);
        const CellaAgenda &varis = m->cella(20, 3);
        QCOMPARE(varis.text, cfg().TexteVaris);
        QCOMPARE(varis.fons, SenseColor);
        QVERIFY(!varis.subratllat);
        QCOMPARE(varis.feines.size(), 2);
        QCOMPARE(filesAmb(*m, 3, "Banc"), (QList<int>{21, 22}));
        QCOMPARE(filesAmb(*m, 3, "Forn"), (QList<int>{29, 30}));
        QCOMPARE(m->cella(29, 3).fons, kVermell);
        QCOMPARE(m->cella(29, 3).feines.size(), 2);
    }

    // The week's seven days from its first to its last, header texts, Sundays, past days in
    // bold and done jobs underlined.
    void setmanaCapcaleresIEmfasi()
    {
        dades_prova::feina(db(), "Escola", kDimecres.addDays(-1), "09:00", "10:00", "Anna");
        dades_prova::feina(db(), "Banc", kDimecres, "09:00", "10:00", "Biel", true);
        dades_prova::feina(db(), "Forn", QDate(2009, 3, 9), "12:00", "12:30", "Biel");
        dades_prova::feina(db(), "Forn", QDate(2009, 3, 15), "12:00", "12:30", "Biel");
        dades_prova::feina(db(), "Museu", QDate(2009, 3, 16), "12:00", "12:30", "Biel");
        dades_prova::feina(db(), "Museu", QDate(2009, 3, 8), "12:00", "12:30", "Biel");
        auto m = construeix(VistaAgenda::Setmana);
        QCOMPARE(filesAmb(*m, 1, "Forn"), QList<int>{25});
        QCOMPARE(filesAmb(*m, 7, "Forn"), QList<int>{25});
        for (int c = 1; c <= 7; ++c)
            QCOMPARE(filesAmb(*m, c, "Museu"), QList<int>{});
        QCOMPARE(m->text(0, 0), QString("març 2009"));
        QCOMPARE(m->text(0, 7), QString("diumenge, 15"));
        QCOMPARE(m->cella(0, 7).fons, cfg().ColorDiumenge);
        QCOMPARE(m->cella(0, 6).fons, SenseColor);
        QVERIFY(m->cella(0, 2).negreta);
        QVERIFY(!m->cella(0, 3).negreta); // today
        QVERIFY(m->cella(19, 2).negreta);  // yesterday's job
        QVERIFY(!m->cella(19, 3).negreta); // today's job
        QVERIFY(!m->cella(19, 2).subratllat);
        QVERIFY(m->cella(19, 3).subratllat);
        QCOMPARE(m->diaCella(5, 7), QDate(2009, 3, 15));
    }

    // A missing resource and an unassigned job get the window colour, told apart from the grid's
    // own background; placing one job by hand gives the same cells as the rebuild.
    void coloresDeRecurs()
    {
        dades_prova::feina(db(), "Banc", kDimecres, "11:00", "12:00");
        dades_prova::feina(db(), "Forn", kDimecres, "13:00", "14:00", "Esborrat");
        auto m = construeix(VistaAgenda::Setmana);
        MotorFeines motor(db(), cfg());
        QCOMPARE(m->cella(23, 3).fons, ColorFinestra);
        QCOMPARE(m->cella(27, 3).fons, motor.Color_Recurs("Esborrat"));
        QCOMPARE(m->cella(25, 3).fons, SenseColor);

        Feina f;
        f.feines_id = 99;
        f.llocs_nom = "Escola";
        f.feines_data = kDimecres;
        f.feines_hora_inici = "09:00";
        f.feines_hora_fi = "10:00";
        f.recursos_nom = "Anna";
        m->Posa_Feina_Agenda(f);
        QCOMPARE(filesAmb(*m, 3, "Escola"), (QList<int>{19, 20}));
        QCOMPARE(m->cella(20, 3).fons, kVermell);
        QCOMPARE(m->cella(20, 3).feines, QList<int>{99});
    }

    // 42 days from the first day of the week of the 1st, days of the neighbouring months
    // included, one "hh:mm place" line per job in time order.
    void mesSencer()
    {
        dades_prova::feina(db(), "Escola", QDate(2009, 2, 23), "09:00", "10:00", "Anna"); // first cell
        dades_prova::feina(db(), "Banc", QDate(2009, 3, 11), "15:00", "16:00", "Anna");
        dades_prova::feina(db(), "Forn", QDate(2009, 3, 11), "08:00", "09:00");
        dades_prova::feina(db(), "Museu", QDate(2009, 4, 5), "10:00", "11:00"); // last cell
        dades_prova::feina(db(), "Museu", QDate(2009, 4, 6), "10:00", "11:00"); // outside
        dades_prova::feina(db(), "Museu", QDate(2009, 2, 22), "10:00", "11:00"); // outside
        auto m = construeix(VistaAgenda::Mes);
        QCOMPARE(QPoint(m->columnes(), m->files()), QPoint(8, 7));
        QCOMPARE(m->text(1, 1), QString("09:00 Escola"));
        QCOMPARE(m->text(3, 3), QString("08:00 Forn\r\n15:00 Banc"));
        QCOMPARE(m->text(6, 7), QString("10:00 Museu"));
        int plens = 0;
        for (int r = 1; r < 7; ++r)
            for (int c = 1; c < 8; ++c)
                plens += m->text(r, c).isEmpty() ? 0 : 1;
        QCOMPARE(plens, 3);
        QCOMPARE(m->diaCella(6, 7), QDate(2009, 4, 5));
        QCOMPARE(m->text(0, 1), QString("dilluns"));
        QCOMPARE(m->text(3, 0), QString("9/3"));
        QVERIFY(m->cella(3, 2).negreta);  // 10 March, before today
        QVERIFY(!m->cella(3, 3).negreta); // today
    }

    void iniciDeSetmana_data()
    {
        QTest::addColumn<int>("primerDia");
        QTest::addColumn<QDate>("dia");
        QTest::addColumn<QDate>("setmana");
        QTest::addColumn<QDate>("mes");
        QTest::addColumn<QString>("primeraCapcalera");
        // 15 March 2009 is a Sunday; 1 March 2009 is a Sunday too
        QTest::newRow("Sunday, weeks from Monday") << 2 << QDate(2009, 3, 15) << QDate(2009, 3, 9) << QDate(2009, 2, 23) << "dilluns";
        QTest::newRow("Monday, weeks from Sunday") << 1 << QDate(2009, 3, 16) << QDate(2009, 3, 15) << QDate(2009, 3, 1) << "diumenge";
        QTest::newRow("1st on a Monday") << 2 << QDate(2009, 6, 1) << QDate(2009, 6, 1) << QDate(2009, 6, 1) << "dilluns";
        QTest::newRow("new year") << 2 << QDate(2010, 1, 1) << QDate(2009, 12, 28) << QDate(2009, 12, 28) << "dilluns";
    }

    // The week and the month grid start on the system's first weekday.
    void iniciDeSetmana()
    {
        QFETCH(int, primerDia);
        QFETCH(QDate, dia);
        QFETCH(QDate, setmana);
        QFETCH(QDate, mes);
        QFETCH(QString, primeraCapcalera);
        cfg().PrimerDiaSetmana = primerDia;
        const EstatAgenda e(VistaAgenda::Setmana, dia, primerDia);
        QCOMPARE(e.IniciSetmana, setmana);
        QCOMPARE(e.IniciMes, mes);
        auto m = construeix(VistaAgenda::Setmana, dia);
        QVERIFY(m->text(0, 1).startsWith(primeraCapcalera));
        QCOMPARE(m->cella(0, primerDia == 1 ? 1 : 7).fons, cfg().ColorDiumenge);
        auto mm = construeix(VistaAgenda::Mes, dia);
        QCOMPARE(mm->text(0, 1), primeraCapcalera);
        QCOMPARE(mm->diaCella(1, 1), mes);
    }

    // One query for the jobs of each view, one for its closed days, plus the overtime in the day view.
    void unaConsultaPerVista()
    {
        for (int i = 0; i < 6; ++i)
            dades_prova::feina(db(), "Escola", kDimecres.addDays(i - 2), "09:00", "10:00", i % 2 ? "Anna" : "Equip");
        auto m = std::make_unique<ModelAgenda>(db(), cfg());
        const QList<QPair<VistaAgenda, int>> casos = {{VistaAgenda::Dia, 3}, {VistaAgenda::Setmana, 2}, {VistaAgenda::Mes, 2}};
        for (const auto &[vista, esperades] : casos)
            QCOMPARE(dades_prova::sentencies(db(), [&] { m->Construeix_Agenda(EstatAgenda(vista, kDimecres, cfg().PrimerDiaSetmana)); }),
                     esperades);
    }

    // The item model a table view reads: body cells as items, the grid's header row and column
    // as header data, colours and emphasis in the standard roles, a closed day's name as the
    // tooltip of its header and of its month cell.
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
        QCOMPARE(escola.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(Qt::white));
        QVERIFY(escola.data(Qt::FontRole).value<QFont>().underline());
        QCOMPARE(escola.data(ModelTaulaAgenda::RolFilesFusionades).toInt(), 2);
        QCOMPARE(taula.index(19, 2).data(ModelTaulaAgenda::RolFilesFusionades).toInt(), 0);
        QCOMPARE(escola.data(ModelTaulaAgenda::RolDia).toDate(), kDimecres);
        QCOMPARE(escola.data(ModelTaulaAgenda::RolHora).toString(), QString("09:00"));
        QCOMPARE(taula.index(22, 2).data(ModelTaulaAgenda::RolFons).toInt(), ColorFinestra);
        QCOMPARE(taula.headerData(0, Qt::Horizontal).toString(), QString("dilluns, 9"));
        QCOMPARE(taula.headerData(6, Qt::Horizontal, Qt::BackgroundRole).value<QBrush>().color(),
                 ModelTaulaAgenda::colorQt(cfg().ColorDiumenge));
        QCOMPARE(m->cella(0, 4).fons, cfg().ColorDiumenge); // the closed Thursday
        QVERIFY(taula.headerData(3, Qt::Horizontal, Qt::ToolTipRole).toString().contains("Santa Caterina"));
        QVERIFY(!taula.headerData(4, Qt::Horizontal, Qt::ToolTipRole).toString().contains("Santa Caterina"));
        QCOMPARE(taula.headerData(27, Qt::Vertical).toString(), QString("13:30"));
        QCOMPARE(ModelTaulaAgenda::colorQt(0x00112233), QColor(0x33, 0x22, 0x11));

        // a rebuild into another view resets the item model's shape
        m->Construeix_Agenda(EstatAgenda(VistaAgenda::Mes, kDimecres, cfg().PrimerDiaSetmana));
        taula.refresca();
        QCOMPARE(taula.rowCount(), 6);
        const QModelIndex dimecres = taula.index(2, 2);
        QCOMPARE(dimecres.data().toString(), QString("09:00 Escola\n11:00 Banc"));
        QCOMPARE(dimecres.data(ModelTaulaAgenda::RolText).toString(), QString("09:00 Escola\r\n11:00 Banc"));
        QCOMPARE(dimecres.data(Qt::ToolTipRole).toString(), QString("09:00 Escola\n11:00 Banc"));
        QVERIFY(taula.index(2, 3).data(Qt::ToolTipRole).toString().contains("Santa Caterina"));
        QVERIFY(!taula.index(0, 0).data(Qt::ToolTipRole).isValid());
    }
};

QTEST_MAIN(TestAgendaModel)
#include "tst_agenda_model.moc"
