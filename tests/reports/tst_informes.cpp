// The reports on a small seeded database, through the recorder. Each golden case compares the
// whole drawing (rounded twips, texts, fonts) with tests/reports/dibuixos/<case>.txt, so a change
// of layout shows as a readable diff (see support/dibuix_esperat.h).
//
// Beside the goldens: which jobs a resource's list holds (groups both ways, the calendar month),
// long lists and the agenda breaking their pages, and the overtime clean-up before the report.
#include "agenda/agenda_model.h"
#include "agenda/editor_feina.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "reports/detall_feina.h"
#include "reports/impressio_agenda.h"
#include "reports/impressora_registre.h"
#include "reports/informe_hores.h"
#include "reports/llista_feines.h"
#include "support/dibuix_esperat.h"
#include "support/entorn_proves.h"

#include <QtTest>
#include <functional>

namespace {

const QDate kAvui(2031, 3, 5); // a Wednesday

// Anna and Bernat, both members of the group Equip Nord; Carla on her own.
void sembra(Db &db)
{
    dades_prova::recurs(db, QStringLiteral("Anna"), 0x00ffff);
    dades_prova::recurs(db, QStringLiteral("Bernat"), 0xff8000);
    dades_prova::recurs(db, QStringLiteral("Carla"), 0x80ff80);
    dades_prova::grup(db, QStringLiteral("Equip Nord"), 0x8080ff, {QStringLiteral("Anna"), QStringLiteral("Bernat")});
    dades_prova::servei(db, QStringLiteral("Neteja"), 60, false, 15.5, QStringLiteral("Hores"), QStringLiteral("Neteja general"));
    dades_prova::servei(db, QStringLiteral("Vidres"), 30, false, 2.25, QStringLiteral("m2"), QStringLiteral("Vidres"));
    dades_prova::lloc(db, QStringLiteral("Escola Sol"), 60);
    dades_prova::lloc(db, QStringLiteral("Casa L'Estel"), 120);
    const int primera = dades_prova::feina(db, QStringLiteral("Escola Sol"), QDate(2031, 3, 3), "08:00", "10:00", "Anna", true);
    db.query(QStringLiteral("UPDATE Feines SET feines_observacions = ? WHERE feines_id = ?"))
        .bind(QStringLiteral("Porteu la clau del cancell")).bind(primera).exec();
    dades_prova::feina(db, QStringLiteral("Casa L'Estel"), QDate(2031, 3, 4), "09:00", "11:00", "Equip Nord");
    dades_prova::feina(db, QStringLiteral("Escola Sol"), QDate(2031, 3, 4), "07:00", "08:00", "Anna");
    dades_prova::feina(db, QStringLiteral("Escola Sol"), QDate(2031, 3, 5), "08:00", "09:00", "Bernat");
    dades_prova::feina(db, QStringLiteral("Casa L'Estel"), QDate(2031, 3, 6), "10:00", "11:00", "Carla");
    // In the month grid of March, outside March.
    dades_prova::feina(db, QStringLiteral("Escola Sol"), QDate(2031, 2, 28), "08:00", "09:00", "Anna");
    dades_prova::feina(db, QStringLiteral("Casa L'Estel"), QDate(2031, 4, 1), "08:00", "09:00", "Equip Nord");
    for (const auto &[servei, descripcio, quantitat, unitat, preu] :
         {std::tuple{"Neteja", "Neteja general", 2.0, "Hores", 15.5}, std::tuple{"Vidres", "Vidres de l'entrada", 12.5, "m2", 2.25}})
        dades_prova::linia(db, primera, QString::fromUtf8(servei), quantitat, preu, QString::fromUtf8(unitat), QString::fromUtf8(descripcio));
}

void hores(Db &db, const QString &recurs, const QDate &dia, double quantitat)
{
    db.query(QStringLiteral("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES (?, ?, ?)"))
        .bind(recurs).bind(dia).bind(quantitat).exec();
}

// The places and dates of a list, "dd/mm place".
QStringList resum(const QList<FeinaLlista> &feines)
{
    QStringList r;
    for (const FeinaLlista &f : feines)
        r << f.data.toString(QStringLiteral("dd/MM")) + QLatin1Char(' ') + f.inici + QLatin1Char(' ') + f.lloc;
    return r;
}

using Dibuix = std::function<void(BaseProva &, Impressora &)>;

// The agenda printed on a short day of hour-long slots, which keeps the grids small.
void agendaCurta(BaseProva &b, Impressora &imp, VistaAgenda vista, const QDate &dia, int salt = 14500)
{
    b.cfg.HoraInici = QStringLiteral("07:00");
    b.cfg.HoraFinal = b.cfg.HoraFinalDinar = QStringLiteral("12:00");
    b.cfg.HoraIniciDinar = QStringLiteral("11:00");
    b.cfg.MinutsCella = 60;
    b.cfg.CellesDia = 5;
    ModelAgenda model(b.db, b.cfg);
    model.setAvui(kAvui);
    model.Construeix_Agenda(EstatAgenda(vista, dia, 2));
    Imprimeix_Agenda(imp, model, salt, QStringLiteral("Quadrella"), kAvui);
}

} // namespace

class TestInformes : public QObject {
    Q_OBJECT

private slots:
    void goldenDrawings_data()
    {
        QTest::addColumn<Dibuix>("dibuix");
        QTest::newRow("llista_mes_grup") << Dibuix([](BaseProva &b, Impressora &imp) {
            Imprimeix_Feines(imp, b.db, 14500, EstatAgenda(VistaAgenda::Mes, kAvui, 2), QStringLiteral("Equip Nord"));
        });
        QTest::newRow("detall_feina") << Dibuix([](BaseProva &b, Impressora &imp) {
            MotorFeines motor(b.db, b.cfg);
            InteraccioGuio ui;
            EditorFeina editor(b.db, b.cfg, motor, ui);
            Feina f;
            QVERIFY(carregaFeina(b.db, 1, f));
            editor.carrega(f);
            Imprimeix_Detall_Feina(imp, editor, 14500);
        });
        QTest::newRow("hores_mes") << Dibuix([](BaseProva &b, Impressora &imp) {
            hores(b.db, QStringLiteral("Anna"), QDate(2031, 3, 3), 1.5);
            hores(b.db, QStringLiteral("Bernat"), QDate(2031, 3, 4), 2.25);
            hores(b.db, QStringLiteral("Bernat"), QDate(2031, 3, 5), 0.5);
            Imprimeix_Hores(imp, b.db, 14500, QDate(2031, 3, 1));
        });
        const auto agenda = [](VistaAgenda vista, const QDate &dia) {
            return Dibuix([vista, dia](BaseProva &b, Impressora &imp) {
                hores(b.db, QStringLiteral("Anna"), QDate(2031, 3, 4), 1.5);
                agendaCurta(b, imp, vista, dia);
            });
        };
        QTest::newRow("agenda_dia") << agenda(VistaAgenda::Dia, QDate(2031, 3, 4));
        QTest::newRow("agenda_setmana") << agenda(VistaAgenda::Setmana, kAvui);
        QTest::newRow("agenda_mes") << agenda(VistaAgenda::Mes, kAvui);
    }

    void goldenDrawings()
    {
        QFETCH(Dibuix, dibuix);
        BaseProva b;
        sembra(b.db);
        ImpressoraRegistre imp;
        dibuix(b, imp);
        QVERIFY(imp.acabat());
        comparaAmbDibuix(QStringLiteral("reports"), QString::fromUtf8(QTest::currentDataTag()), imp.text());
    }

    // A group's list holds the group's own jobs; a worker's, their own and their groups'. The
    // month is the calendar's, not the grid's 42 days; the day list runs by start time.
    void whichJobsAList()
    {
        BaseProva b;
        sembra(b.db);
        const struct {
            const char *recurs;
            VistaAgenda vista;
            QDate dia;
            QStringList esperat;
        } casos[] = {
            {"Anna", VistaAgenda::Mes, {2031, 3, 20}, {"03/03 08:00 Escola Sol", "04/03 07:00 Escola Sol", "04/03 09:00 Casa L'Estel"}},
            {"Equip Nord", VistaAgenda::Mes, {2031, 3, 20}, {"04/03 09:00 Casa L'Estel"}},
            {"Anna", VistaAgenda::Setmana, {2031, 3, 2}, {"28/02 08:00 Escola Sol"}},
            {"Anna", VistaAgenda::Dia, {2031, 3, 4}, {"04/03 07:00 Escola Sol", "04/03 09:00 Casa L'Estel"}},
        };
        for (const auto &c : casos)
            QVERIFY2(resum(feinesLlista(b.db, EstatAgenda(c.vista, c.dia, 2), c.recurs)) == c.esperat, c.recurs);
    }

    // A list longer than a page breaks between entries: a job's line and its notes stay on one
    // page, every job appears once and in order.
    void longListsBreakBetweenEntries()
    {
        BaseProva b;
        sembra(b.db);
        for (int i = 0; i < 24; ++i)
            dades_prova::feina(b.db, QStringLiteral("Lloc %1").arg(i, 2, 10, QLatin1Char('0')), QDate(2031, 3, 1).addDays(i), "08:00", "09:00", "Carla");
        ImpressoraRegistre llista;
        Imprimeix_Feines(llista, b.db, 14500, EstatAgenda(VistaAgenda::Mes, QDate(2031, 3, 1), 2), QStringLiteral("Carla"));
        QCOMPARE(llista.pagines().size(), 2);
        QStringList llocs, esperat;
        for (const PaginaDibuix &p : llista.pagines()) {
            int linies = 0;
            for (const ElementDibuix &e : p.elements) {
                if (e.text.startsWith(QStringLiteral("Lloc ")) || e.text.startsWith(QStringLiteral("Casa"))) {
                    llocs << e.text;
                    linies += e.y1 <= 14500 ? 1 : 100;
                }
                linies -= e.text == QStringLiteral("Notes:");
            }
            QCOMPARE(linies, 0); // each line with its notes, above the break
        }
        for (int i = 0; i < 24; ++i)
            esperat << QStringLiteral("Lloc %1").arg(i, 2, 10, QLatin1Char('0')) << (i == 5 ? QStringLiteral("Casa L'Estel") : QString());
        esperat.removeAll(QString()); // Casa L'Estel on 6 March, after 08:00
        QCOMPARE(llocs, esperat);
    }

    // The agenda runs over as many pages as it needs: each page repeats the header line and the
    // header row, and a job's block cut by a break is drawn, with its name, on both sides.
    void agendaRunsOverPages()
    {
        BaseProva b;
        sembra(b.db);
        ImpressoraRegistre imp;
        agendaCurta(b, imp, VistaAgenda::Setmana, kAvui, 1400); // room for one slot row per page
        QCOMPARE(imp.pagines().size(), 5);
        QStringList blocs;
        for (const PaginaDibuix &p : imp.pagines()) {
            QStringList textos;
            for (const ElementDibuix &e : p.elements)
                textos << e.text;
            for (const QString &t : {QStringLiteral("Agenda SETMANA del 03/03/2031 al 09/03/2031"), QStringLiteral("dilluns, 3"),
                                     QStringLiteral("diumenge, 9"), QStringLiteral("pàg. %1").arg(p.numero),
                                     QStringLiteral("%1:00").arg(6 + p.numero, 2, 10, QLatin1Char('0'))})
                QVERIFY2(!textos.filter(t).isEmpty(), qPrintable(t));
            if (textos.contains(QStringLiteral("Casa L'Estel")))
                blocs << QString::number(p.numero);
        }
        QCOMPARE(blocs, (QStringList{"3", "4"})); // 09:00-11:00 on Tuesday
    }

    // The report runs the month's clean-up first (its rule is the overtime engine's test): an
    // unjustified entry is neither printed nor kept; another month's is not printed but stays.
    void overtimeCleanUpFirst()
    {
        const struct {
            const char *recurs;
            QDate dia;
            bool impresa, queda;
        } casos[] = {{"Anna", {2031, 3, 3}, true, true}, {"Carla", {2031, 3, 3}, false, false}, {"Carla", {2031, 2, 28}, false, true}};
        for (const auto &c : casos) {
            BaseProva b;
            sembra(b.db);
            hores(b.db, c.recurs, c.dia, 3.0);
            ImpressoraRegistre imp;
            Imprimeix_Hores(imp, b.db, 14500, QDate(2031, 3, 1));
            QCOMPARE(imp.textos().contains(c.recurs), c.impresa);
            QCOMPARE(imp.textos().last(), c.impresa ? QStringLiteral("TOTAL MES 3,00 hores") : QStringLiteral("TOTAL MES 0,00 hores"));
            QCOMPARE(dades_prova::valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Hores_Fetes")), c.queda ? 1 : 0);
        }
    }
};

QTEST_MAIN(TestInformes)
#include "tst_informes.moc"
