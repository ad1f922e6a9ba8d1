// The job editor's rules, driven without a window: what it loads, the line editor, the end time
// worked out from the lines and the resource, the storing checks in their order, and the job and
// its lines stored together or not at all.
#include "agenda/editor_feina.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

const QDate kAvui(2024, 5, 15); // a Wednesday

// A small business: two workers, a team of both, a place with a default worker and a wording of
// its own for cleaning, and services that take time per worker, shared time, and no time.
struct Negoci {
    BaseProva base;
    Db &db = base.db;
    InteraccioGuio ui;
    MotorFeines motor{base.db, base.cfg};
    Feina f;
    int id = 0;

    Negoci()
    {
        base.cfg.PermetSolaparLlocs = false;
        motor.setAvui(kAvui);
        dades_prova::recurs(db, "Marta", 0x0000FF, true);
        dades_prova::recurs(db, "Joan", 0x00FF00, true);
        dades_prova::grup(db, "Equip", 0xFF0000, {"Marta", "Joan"});
        dades_prova::client(db, "L'Estel");
        dades_prova::servei(db, "Neteja", 30, false, 12.5, "Hores", "Neteja general");
        dades_prova::servei(db, "Vidres", 15, true, 20.0, "Unitats", "Vidres");
        dades_prova::servei(db, "Desplaçament", 0, false, 0.35, "Kms");
        dades_prova::lloc(db, "Oficina L'Estel", 60, "Marta", "L'Estel");
        dades_prova::llocServei(db, "Oficina L'Estel", "Neteja", 2, 11.0, "Neteja de l'oficina");
    }

    // A job at the office today, written straight to the table.
    int feina(const char *inici, const char *fi, const char *recurs = "", const QDate &dia = kAvui)
    {
        return id = dades_prova::feina(db, "Oficina L'Estel", dia, inici, fi, recurs);
    }

    void linia(const char *servei, const char *descripcio, double quantitat, const char *unitat, double preu)
    {
        dades_prova::linia(db, id, QString::fromUtf8(servei), quantitat, preu, QString::fromUtf8(unitat), QString::fromUtf8(descripcio));
    }

    // The editor on the job as the agenda hands it over: from its cell, without its notes.
    EditorFeina editor()
    {
        f = Feina();
        carregaFeina(db, id, f);
        f.feines_observacions.clear();
        EditorFeina e(db, base.cfg, motor, ui);
        e.setAvui(kAvui);
        e.carrega(f);
        return e;
    }

    QString fila()
    {
        return dades_prova::files(db, "SELECT feines_data, feines_hora_inici, feines_hora_fi, COALESCE(recursos_nom, '-'), feines_feta,"
                                      " COALESCE(feines_data_factura, '-'), COALESCE(feines_observacions, '') FROM Feines WHERE feines_id = ?",
                                  {id}).join(';');
    }

    // The stored lines, "service|quantity|unit".
    QStringList linies()
    {
        return dades_prova::files(db, "SELECT serveis_nom, feines_detall_quantitat, feines_detall_unitat FROM Feines_Detall"
                                      " WHERE feines_id = ? ORDER BY serveis_nom, feines_detall_descripcio", {id});
    }

    QString darrer() const { return ui.crides.isEmpty() ? QString() : ui.crides.last().text; }
};

bool afegeix(EditorFeina &e, const char *servei, const char *quantitat)
{
    e.triaServei(QString::fromUtf8(servei));
    e.setQuantitatLinia(QString::fromUtf8(quantitat));
    return e.afegeixServei();
}

} // namespace

class TestEditorFeina : public QObject {
    Q_OBJECT

private slots:
    // What the editor shows when it opens; a start between slot boundaries is stored as the
    // start of its slot; a start before the first slot selects nothing and cannot be stored.
    void loadsTheJobAndItsLists()
    {
        Negoci n;
        n.feina("09:10", "24:00", "marta");
        n.db.exec("UPDATE Feines SET feines_observacions = 'Clau a consergeria'");
        n.linia("Vidres", "Finestres", 2, "Unitats", 20.0);
        n.linia("Neteja", "Neteja de l'oficina", 1.5, "Hores", 12.25);
        EditorFeina e = n.editor();
        QCOMPARE(e.data() + e.horaInici() + e.horaFi() + e.recurs(), QString("15/05/202409:0024:00Marta"));
        QCOMPARE(e.totalText(), QString("58,38")); // 1,5 x 12,25 + 2 x 20 = 58,375
        e.triaServei("Vidres"); // a service chosen but no line picked: nothing to replace
        e.setQuantitatLinia("1");
        QVERIFY(!e.substitueixLinia());
        QVERIFY(e.modifica());
        QCOMPARE(n.fila(), QString("2024-05-15|09:00|24:00|Marta|0|-|Clau a consergeria"));

        n.base.cfg.HoraInici = "08:00";
        n.base.cfg.HoraFinal = "20:00";
        n.base.cfg.MinutsCella = 60;
        n.base.cfg.CellesDia = 12;
        n.feina("07:00", "08:00", "", kAvui.addDays(-1));
        EditorFeina e2 = n.editor();
        QCOMPARE(e2.horaInici() + e2.horaFi(), QString());
        QVERIFY(!e2.modifica());
        QCOMPARE(n.darrer(), QString("Tram d'hores incorrecte"));
    }

    // Choosing a service fills the line; adding checks the numbers and duplicates; taking a line
    // out hands it back to the editor; the total follows every change.
    void editsServiceLines()
    {
        Negoci n;
        n.feina("10:00", "10:30", "Marta");
        EditorFeina e = n.editor();
        e.triaServei("Neteja"); // the place's wording, the service's price
        QCOMPARE(e.unitatLinia() + "|" + e.descripcioLinia() + "|" + e.preuLinia(), QString("Hores|Neteja de l'oficina|12,50"));
        e.setQuantitatLinia("dos");
        QVERIFY(!e.afegeixServei());
        QCOMPARE(n.darrer(), QString("Cal informar la quantitat"));
        e.setQuantitatLinia("2,5");
        e.setPreuLinia("1.234,5");
        QVERIFY(e.afegeixServei());
        QCOMPARE(e.totalText(), QString("3.086,25"));

        QVERIFY(!afegeix(e, "Neteja", "1")); // same service and description again: refused
        QCOMPARE(n.darrer(), QString("El servei/descripció ja existeix en la feina"));
        e.setDescripcioLinia("Abrillantat");
        e.setUnitatLinia(QString()); // an empty unit takes the service's own
        QVERIFY(e.afegeixServei());
        QCOMPARE(e.linies().at(1).unitat, QString("Hores"));

        e.treuLinia(0);
        QCOMPARE(e.serveiLinia() + "|" + e.descripcioLinia() + "|" + e.quantitatLinia() + "|" + e.preuLinia(),
                 QString("Neteja|Neteja de l'oficina|2,5|1234,50"));
        QCOMPARE(e.totalText(), QString("12,50"));
    }

    // The end time follows the lines and the resource; past midnight it stops at the day's end
    // and says so.
    void endTimeFollowsLinesAndResource()
    {
        Negoci n;
        n.feina("10:00", "12:00", "Marta");
        EditorFeina e = n.editor();
        QCOMPARE(e.recalculaHoraFi(), 30); // no lines: one cell
        QVERIFY(afegeix(e, "Neteja", "2"));
        QCOMPARE(e.horaFi(), QString("11:00"));
        e.triaRecurs("Equip");
        QCOMPARE(e.horaFi(), QString("10:30")); // shared by the team's two workers

        // ending exactly at midnight is the day's end; passing it ends there with the warning
        e.setHoraInici("23:00");
        e.triaRecurs("Marta");
        QCOMPARE(e.horaFi() + n.darrer(), QString("24:00"));
        e.setHoraInici("23:30");
        e.triaRecurs("Marta");
        QCOMPARE(e.horaFi() + n.darrer(), QString("24:00L'hora final de la feina supera les 24:00h."));
    }

    // Each check stops the storing with its message and stores nothing; the order decides which
    // message a job failing several checks gets; the done tick is refused at once for what
    // storing would refuse, today's job being no future one.
    void storingChecksInOrder()
    {
        Negoci n;
        n.feina("10:00", "11:00");
        const QString abans = n.fila();
        EditorFeina e = n.editor();
        e.setData("31/02/2024");
        e.setHoraInici("11:00"); // equal start and end, but the date comes first
        e.setFeta(true);
        QVERIFY(!e.modifica());
        QCOMPARE(n.darrer() + e.data(), QString("Data incorrecta15/05/2024"));
        QVERIFY(!e.modifica());
        QCOMPARE(n.darrer(), QString("Tram d'hores incorrecte"));
        e.setHoraInici("10:00");

        e.setData("16/05/2024"); // done without resource and without lines: the resource first
        QVERIFY(!e.modifica());
        QCOMPARE(n.darrer(), QString("Cal assignar recurs si la feina està feta"));
        e.triaRecurs("Joan");
        QVERIFY(!e.modifica());
        QCOMPARE(n.darrer(), QString("Una feina feta ha de tenir serveis"));
        QVERIFY(afegeix(e, "Desplaçament", "0"));
        e.setHoraFi("11:00");
        QVERIFY(!e.modifica());
        QCOMPARE(n.darrer(), QString("Una feina futura no pot estar feta"));
        e.setFeta(false);
        QVERIFY(!e.marcaFeta(true) && !e.bloquejat());
        e.setData("15/05/2024");
        QVERIFY(e.marcaFeta(true) && e.bloquejat());

        const int crides = n.ui.crides.size(); // a total of 0 asks; No stores nothing
        QVERIFY(!e.modifica());
        QCOMPARE(n.ui.crides.size(), crides + 1);
        QCOMPARE(n.ui.crides.last().tipus + n.darrer(), QString("preguntaEl import de la feina és 0. Modificar igualment?"));
        QCOMPARE(n.fila() + n.linies().join(';'), abans);

        n.ui.respostes = {true}; // Yes stores the job, done, with an invoice date, and its line
        e.setDataFactura("31/05/2024");
        QVERIFY(e.modifica());
        QCOMPARE(n.fila(), QString("2024-05-15|10:00|11:00|Joan|1|2024-05-31|"));
        QCOMPARE(n.linies(), QStringList{"Desplaçament|0|Kms"});

        EditorFeina e2 = n.editor(); // a done job opens locked
        QVERIFY(e2.bloquejat() && !e2.esborraRecurs());
        e2.setFeta(false); // undone, it loses its invoice date whatever the field says
        n.ui.respostes = {true};
        QVERIFY(e2.modifica());
        QCOMPARE(n.fila(), QString("2024-05-15|10:00|11:00|Joan|0|-|"));
    }

    // The job and its lines are stored as one: when the engine refuses the job, or when writing
    // the lines fails, neither the job nor its lines change.
    void jobAndLinesStoredTogether()
    {
        Negoci n;
        dades_prova::lloc(n.db, "Magatzem", 60);
        dades_prova::feina(n.db, "Magatzem", kAvui, "14:00", "15:00", "Joan");
        n.feina("10:00", "11:00", "Marta");
        n.linia("Neteja", "Neteja de l'oficina", 2, "Hores", 11.0);
        const QString abans = n.fila();
        EditorFeina e = n.editor();
        e.treuLinia(0);
        e.setQuantitatLinia("3");
        QVERIFY(e.afegeixServei() && afegeix(e, "Vidres", "4"));
        e.setHoraInici("14:30");
        e.triaRecurs("Joan");
        e.setObservacions("Canvi");
        QVERIFY(!e.modifica()); // Joan works elsewhere from 14:00 to 15:00
        QCOMPARE(n.darrer(), QString("Solapament de recursos: Joan"));
        QCOMPARE(n.fila(), abans);
        QCOMPARE(n.linies(), QStringList{"Neteja|2|Hores"});

        e.setHoraInici("15:00"); // now the lines cannot be written: the job stays as it was too
        e.triaRecurs("Joan");
        n.db.exec("CREATE TRIGGER prova_falla BEFORE INSERT ON Feines_Detall WHEN NEW.serveis_nom = 'Vidres'"
                  " BEGIN SELECT RAISE(ABORT, 'linia rebutjada'); END");
        QVERIFY(!e.modifica());
        QVERIFY(n.darrer().contains("linia rebutjada"));
        QCOMPARE(n.fila(), abans);
        QCOMPARE(n.linies(), QStringList{"Neteja|2|Hores"});
        QCOMPARE(n.db.transactionDepth(), 0);

        n.db.exec("DROP TRIGGER prova_falla"); // with the obstacle gone, both are stored
        QVERIFY(e.modifica());
        QCOMPARE(n.fila(), QString("2024-05-15|15:00|17:30|Joan|0|-|Canvi"));
        QCOMPARE(n.linies(), (QStringList{"Neteja|3|Hores", "Vidres|4|Unitats"}));
    }
};

QTEST_GUILESS_MAIN(TestEditorFeina)
#include "tst_editor_feina.moc"
