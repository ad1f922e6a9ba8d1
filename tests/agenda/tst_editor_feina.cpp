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

// The job's stored lines, "service|quantity|unit", in the order the editor loads them.
QStringList liniesGuardades(Db &db, int id)
{
    return dades_prova::files(db, QStringLiteral("SELECT serveis_nom, feines_detall_quantitat, feines_detall_unitat FROM Feines_Detall"
                                                 " WHERE feines_id = ? ORDER BY serveis_nom, feines_detall_descripcio"), {id});
}

QString filaFeina(Db &db, int id)
{
    return dades_prova::files(db, QStringLiteral("SELECT feines_data, feines_hora_inici, feines_hora_fi, COALESCE(recursos_nom, '<null>'),"
                                                 " feines_feta, COALESCE(feines_data_factura, '<null>'), COALESCE(feines_observacions, '')"
                                                 " FROM Feines WHERE feines_id = ?"), {id}).join(QLatin1Char(';'));
}

void afegeixLinia(Db &db, int id, const QString &servei, const QString &descripcio, double quantitat,
                  const QString &unitat, double preu)
{
    db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio,"
                            " feines_detall_quantitat, feines_detall_unitat, feines_detall_preu_un) VALUES (?, ?, ?, ?, ?, ?)"))
        .bind(id).bind(servei).bind(descripcio).bind(quantitat).bind(unitat).bind(preu).exec();
}

// The job as the agenda hands it over: from its cell, without its notes.
Feina feinaDe(Db &db, int id)
{
    Feina f;
    carregaFeina(db, id, f);
    f.feines_observacions.clear();
    return f;
}

// A small business: two workers, a team of both, a place with a default worker, and services
// that take time per worker, shared time, and no time.
struct Negoci {
    BaseProva base;
    InteraccioGuio ui;
    MotorFeines motor{base.db, base.cfg};

    Negoci()
    {
        base.cfg.PermetSolaparLlocs = false;
        motor.setAvui(kAvui);
        Db &db = base.db;
        dades_prova::recurs(db, QStringLiteral("Marta"), 0x0000FF, true);
        dades_prova::recurs(db, QStringLiteral("Joan"), 0x00FF00, true);
        dades_prova::grup(db, QStringLiteral("Equip"), 0xFF0000, {QStringLiteral("Marta"), QStringLiteral("Joan")});
        dades_prova::client(db, QStringLiteral("L'Estel"));
        dades_prova::servei(db, QStringLiteral("Neteja"), 30, false, 12.5, QStringLiteral("Hores"), QStringLiteral("Neteja general"));
        dades_prova::servei(db, QStringLiteral("Vidres"), 15, true, 20.0, QStringLiteral("Unitats"), QStringLiteral("Vidres"));
        dades_prova::servei(db, QStringLiteral("Desplaçament"), 0, false, 0.35, QStringLiteral("Kms"));
        dades_prova::lloc(db, QStringLiteral("Oficina L'Estel"), 60, QStringLiteral("Marta"), QStringLiteral("L'Estel"));
        dades_prova::llocServei(db, QStringLiteral("Oficina L'Estel"), QStringLiteral("Neteja"), 2, 11.0, QStringLiteral("Neteja de l'oficina"));
    }

    EditorFeina editor()
    {
        EditorFeina e(base.db, base.cfg, motor, ui);
        e.setAvui(kAvui);
        return e;
    }

    QStringList missatges() const
    {
        QStringList r;
        for (const auto &c : ui.crides)
            r << c.text;
        return r;
    }
};

} // namespace

class TestEditorFeina : public QObject {
    Q_OBJECT

private slots:
    // What the editor shows when it opens; a start between slot boundaries is stored as the
    // start of its slot; a start before the first slot selects nothing and cannot be stored.
    void loadsTheJobAndItsLists()
    {
        Negoci n;
        Db &db = n.base.db;
        const int id = dades_prova::feina(db, QStringLiteral("Oficina L'Estel"), kAvui, QStringLiteral("09:10"),
                                          QStringLiteral("24:00"), QStringLiteral("marta"));
        db.exec(QStringLiteral("UPDATE Feines SET feines_observacions = 'Clau a consergeria'"));
        afegeixLinia(db, id, QStringLiteral("Vidres"), QStringLiteral("Finestres"), 2, QStringLiteral("Unitats"), 20.0);
        afegeixLinia(db, id, QStringLiteral("Neteja"), QStringLiteral("Neteja de l'oficina"), 1.5, QStringLiteral("Hores"), 12.25);

        Feina f = feinaDe(db, id);
        EditorFeina e = n.editor();
        e.carrega(f);
        QCOMPARE(e.data(), QStringLiteral("15/05/2024"));
        QCOMPARE(e.horesInici().size(), 48);
        QCOMPARE(e.horesFi().last(), QStringLiteral("24:00"));
        QCOMPARE(e.horaInici() + e.horaFi(), QStringLiteral("09:0024:00"));
        QCOMPARE(e.recursos(), (QStringList{"Equip", "Joan", "Marta"}));
        QCOMPARE(e.recurs(), QStringLiteral("Marta"));
        QCOMPARE(e.observacions(), QStringLiteral("Clau a consergeria"));
        QCOMPARE(e.linies().at(0).serveis_nom, QStringLiteral("Neteja"));
        QCOMPARE(e.totalText(), QStringLiteral("58,38")); // 1,5 x 12,25 + 2 x 20 = 58,375
        QVERIFY(!e.bloquejat());
        // with a service chosen but no line picked there is nothing to replace
        e.triaServei(QStringLiteral("Vidres"));
        e.setQuantitatLinia(QStringLiteral("1"));
        QVERIFY(!e.substitueixLinia());
        QCOMPARE(e.linies().size(), 2);

        QVERIFY(e.modifica());
        QCOMPARE(filaFeina(db, id), QStringLiteral("2024-05-15|09:00|24:00|Marta|0|<null>|Clau a consergeria"));
        QCOMPARE(f.missatge, QStringLiteral("OK"));
        QVERIFY(n.ui.crides.isEmpty());

        n.base.cfg.HoraInici = QStringLiteral("08:00");
        n.base.cfg.HoraFinal = QStringLiteral("20:00");
        n.base.cfg.MinutsCella = 60;
        n.base.cfg.CellesDia = 12;
        const int d = dades_prova::feina(db, QStringLiteral("Oficina L'Estel"), kAvui.addDays(-1), QStringLiteral("07:00"),
                                         QStringLiteral("08:00"));
        Feina g = feinaDe(db, d);
        EditorFeina e2 = n.editor();
        e2.carrega(g);
        QCOMPARE(e2.horesInici().last(), QStringLiteral("19:00"));
        QCOMPARE(e2.horaInici() + e2.horaFi(), QString());
        QVERIFY(!e2.modifica());
        QCOMPARE(n.missatges().last(), QStringLiteral("Tram d'hores incorrecte"));
    }

    // Choosing a service fills the line; adding checks the numbers and duplicates; taking a line
    // out hands it back to the editor; the total follows every change.
    void editsServiceLines()
    {
        Negoci n;
        Db &db = n.base.db;
        const int id = dades_prova::feina(db, QStringLiteral("Oficina L'Estel"), kAvui, QStringLiteral("10:00"),
                                          QStringLiteral("10:30"), QStringLiteral("Marta"));
        Feina f = feinaDe(db, id);
        EditorFeina e = n.editor();
        e.carrega(f);
        e.setQuantitatLinia(QStringLiteral("1"));
        QVERIFY(!e.afegeixServei()); // no service chosen: nothing happens, nothing is said
        QVERIFY(n.ui.crides.isEmpty());

        e.triaServei(QStringLiteral("Neteja"));
        QCOMPARE(e.unitatLinia(), QStringLiteral("Hores"));
        QCOMPARE(e.descripcioLinia(), QStringLiteral("Neteja de l'oficina")); // the place's wording
        QCOMPARE(e.preuLinia(), QStringLiteral("12,50"));                       // the service's price
        e.setQuantitatLinia(QStringLiteral("dos"));
        QVERIFY(!e.afegeixServei());
        QCOMPARE(n.missatges().last(), QStringLiteral("Cal informar la quantitat"));
        e.setQuantitatLinia(QStringLiteral("2,5"));
        e.setPreuLinia(QString());
        QVERIFY(!e.afegeixServei());
        QCOMPARE(n.missatges().last(), QStringLiteral("Cal informar el preu unitari"));
        e.setPreuLinia(QStringLiteral("1.234,5"));
        QVERIFY(e.afegeixServei());
        QCOMPARE(e.totalText(), QStringLiteral("3.086,25"));

        // same service and description again: refused; another description: a second line
        e.triaServei(QStringLiteral("Neteja"));
        e.setQuantitatLinia(QStringLiteral("1"));
        QVERIFY(!e.afegeixServei());
        QCOMPARE(n.missatges().last(), QStringLiteral("El servei/descripció ja existeix en la feina"));
        e.setDescripcioLinia(QStringLiteral("Abrillantat"));
        e.setUnitatLinia(QString()); // an empty unit takes the service's own
        QVERIFY(e.afegeixServei());
        QCOMPARE(e.linies().at(1).unitat, QStringLiteral("Hores"));
        e.triaServei(QStringLiteral("Desplaçament"));
        e.setQuantitatLinia(QStringLiteral("10"));
        QVERIFY(e.afegeixServei());
        QCOMPARE(e.totalText(), QStringLiteral("3.102,25"));

        e.treuLinia(0);
        QCOMPARE(e.serveiLinia() + "|" + e.descripcioLinia() + "|" + e.quantitatLinia() + "|" + e.preuLinia(),
                 QStringLiteral("Neteja|Neteja de l'oficina|2,5|1234,50"));
        QCOMPARE(e.totalText(), QStringLiteral("16,00"));
        // a line without description is handed back with the service's current one
        db.exec(QStringLiteral("UPDATE Serveis SET serveis_descripcio = 'Quilometratge' WHERE serveis_nom = 'Desplaçament'"));
        e.treuLinia(1);
        QCOMPARE(e.descripcioLinia(), QStringLiteral("Quilometratge"));
        e.treuLinia(0);
        e.treuLinia(0); // nothing left to take
        QVERIFY(e.linies().isEmpty());
        QCOMPARE(e.totalText(), QStringLiteral("0,00"));
    }

    // The end time from the lines: one cell for an empty job, whole cells up, shared work halved
    // for a team of two, common work whole, and the end of the day.
    void endTimeFollowsLinesAndResource()
    {
        Negoci n;
        Db &db = n.base.db;
        const int id = dades_prova::feina(db, QStringLiteral("Oficina L'Estel"), kAvui, QStringLiteral("10:00"),
                                          QStringLiteral("12:00"), QStringLiteral("Marta"));
        Feina f = feinaDe(db, id);
        EditorFeina e = n.editor();
        e.carrega(f);
        QCOMPARE(e.recalculaHoraFi(), 30);
        QCOMPARE(e.horaFi(), QStringLiteral("10:30"));

        // 61 minutes of work (2 x 30 + 1 x 1) take three cells
        dades_prova::servei(db, QStringLiteral("Minut"), 1, false, 1.0, QStringLiteral("Min"));
        for (const auto &[servei, quantitat] : {std::pair{"Neteja", "2"}, {"Minut", "1"}, {"Vidres", "1"}}) {
            e.triaServei(QString::fromUtf8(servei));
            e.setQuantitatLinia(QString::fromUtf8(quantitat));
            QVERIFY(e.afegeixServei());
        }
        QCOMPARE(e.horaFi(), QStringLiteral("11:30")); // Marta alone: 61 + 15 common = 76 -> 90
        // the team shares the non-common work: 61 / 2 (rounded to even: 30) + 15 = 45 -> 60
        e.triaRecurs(QStringLiteral("Equip"));
        QCOMPARE(e.horaFi(), QStringLiteral("11:00"));
        // a team none of whose members takes time divides nothing
        db.exec(QStringLiteral("UPDATE Recursos SET recursos_assigna_temps = 0"));
        e.triaRecurs(QStringLiteral("Equip"));
        QCOMPARE(e.horaFi(), QStringLiteral("11:30"));

        // ending exactly at midnight is the day's end; passing it ends there with the warning
        e.setHoraInici(QStringLiteral("22:30"));
        e.triaRecurs(QStringLiteral("Marta"));
        QCOMPARE(e.horaFi(), QStringLiteral("24:00"));
        QVERIFY(n.ui.crides.isEmpty());
        e.setHoraInici(QStringLiteral("23:00"));
        e.triaRecurs(QStringLiteral("Marta"));
        QCOMPARE(e.horaFi(), QStringLiteral("24:00"));
        QCOMPARE(n.missatges(), QStringList{QStringLiteral("L'hora final de la feina supera les 24:00h.")});
    }

    // Each check stops the storing with its message and stores nothing; the order decides which
    // message a job failing several checks gets; the done tick is refused at once for what
    // storing would refuse, today's job being no future one.
    void storingChecksInOrder()
    {
        Negoci n;
        Db &db = n.base.db;
        const int id = dades_prova::feina(db, QStringLiteral("Oficina L'Estel"), kAvui, QStringLiteral("10:00"),
                                          QStringLiteral("11:00"));
        const QString abans = filaFeina(db, id);
        Feina f = feinaDe(db, id);
        EditorFeina e = n.editor();
        e.carrega(f);

        e.setData(QStringLiteral("31/02/2024"));
        e.setHoraInici(QStringLiteral("11:00")); // equal start and end, but the date comes first
        e.setFeta(true);
        QVERIFY(!e.modifica());
        QCOMPARE(n.missatges().last(), QStringLiteral("Data incorrecta"));
        QCOMPARE(e.data(), QStringLiteral("15/05/2024"));
        QVERIFY(!e.modifica());
        QCOMPARE(n.missatges().last(), QStringLiteral("Tram d'hores incorrecte"));
        e.setHoraInici(QStringLiteral("10:00"));

        // done without resource and without lines: the resource is asked for first
        e.setData(QStringLiteral("16/05/2024"));
        QVERIFY(!e.modifica());
        QCOMPARE(n.missatges().last(), QStringLiteral("Cal assignar recurs si la feina està feta"));
        e.triaRecurs(QStringLiteral("Joan"));
        QVERIFY(!e.modifica());
        QCOMPARE(n.missatges().last(), QStringLiteral("Una feina feta ha de tenir serveis"));
        e.triaServei(QStringLiteral("Desplaçament"));
        e.setQuantitatLinia(QStringLiteral("0"));
        QVERIFY(e.afegeixServei());
        e.setHoraFi(QStringLiteral("11:00"));
        QVERIFY(!e.modifica());
        QCOMPARE(n.missatges().last(), QStringLiteral("Una feina futura no pot estar feta"));
        e.setFeta(false);
        QVERIFY(!e.marcaFeta(true));
        QVERIFY(!e.bloquejat());
        e.setData(QStringLiteral("15/05/2024"));
        QVERIFY(e.marcaFeta(true));
        QVERIFY(e.bloquejat());

        // a total of 0 asks; No stores nothing
        const int crides = n.ui.crides.size();
        QVERIFY(!e.modifica());
        QCOMPARE(n.ui.crides.size(), crides + 1);
        QCOMPARE(n.ui.crides.last().tipus, QStringLiteral("pregunta"));
        QCOMPARE(n.ui.crides.last().text, QStringLiteral("El import de la feina és 0. Modificar igualment?"));
        QCOMPARE(filaFeina(db, id), abans);
        QVERIFY(liniesGuardades(db, id).isEmpty());
        QCOMPARE(f.missatge, QString());

        // Yes stores the job, done, with an invoice date, and its line
        n.ui.respostes = {true};
        e.setDataFactura(QStringLiteral("31/05/2024"));
        QVERIFY(e.modifica());
        QCOMPARE(filaFeina(db, id), QStringLiteral("2024-05-15|10:00|11:00|Joan|1|2024-05-31|"));
        QCOMPARE(liniesGuardades(db, id).size(), 1);
        QVERIFY(f.feines_feta);

        // storing the done job again as done is the engine's refusal, shown as it comes
        EditorFeina e2 = n.editor();
        Feina g = feinaDe(db, id);
        e2.carrega(g);
        QVERIFY(e2.bloquejat());
        QVERIFY(!e2.esborraRecurs());
        n.ui.respostes = {true};
        QVERIFY(!e2.modifica());
        QCOMPARE(n.missatges().last(), QStringLiteral("No es pot modificar una feina feta"));

        // undone, it loses its invoice date whatever the field says
        e2.setFeta(false);
        n.ui.respostes = {true};
        QVERIFY(e2.modifica());
        QCOMPARE(filaFeina(db, id), QStringLiteral("2024-05-15|10:00|11:00|Joan|0|<null>|"));
        QVERIFY(e2.esborraRecurs());
        QCOMPARE(e2.recurs(), QString());
    }

    // The job and its lines are stored as one: when the engine refuses the job, or when writing
    // the lines fails, neither the job nor its lines change.
    void jobAndLinesStoredTogether()
    {
        Negoci n;
        Db &db = n.base.db;
        const int id = dades_prova::feina(db, QStringLiteral("Oficina L'Estel"), kAvui, QStringLiteral("10:00"),
                                          QStringLiteral("11:00"), QStringLiteral("Marta"));
        afegeixLinia(db, id, QStringLiteral("Neteja"), QStringLiteral("Neteja de l'oficina"), 2, QStringLiteral("Hores"), 11.0);
        dades_prova::lloc(db, QStringLiteral("Magatzem"), 60);
        dades_prova::feina(db, QStringLiteral("Magatzem"), kAvui, QStringLiteral("14:00"), QStringLiteral("15:00"), QStringLiteral("Joan"));
        const QString abans = filaFeina(db, id);

        Feina f = feinaDe(db, id);
        EditorFeina e = n.editor();
        e.carrega(f);
        e.treuLinia(0);
        e.setQuantitatLinia(QStringLiteral("3"));
        QVERIFY(e.afegeixServei());
        e.triaServei(QStringLiteral("Vidres"));
        e.setQuantitatLinia(QStringLiteral("4"));
        QVERIFY(e.afegeixServei());
        e.setHoraInici(QStringLiteral("14:30"));
        e.triaRecurs(QStringLiteral("Joan"));
        e.setObservacions(QStringLiteral("Canvi"));
        QVERIFY(!e.modifica()); // Joan works elsewhere from 14:00 to 15:00
        QCOMPARE(n.missatges().last(), QStringLiteral("Solapament de recursos: Joan"));
        QCOMPARE(filaFeina(db, id), abans);
        QCOMPARE(liniesGuardades(db, id), QStringList{"Neteja|2|Hores"});
        QCOMPARE(f.missatge, QString());

        // now the lines cannot be written: the job stays as it was too
        e.setHoraInici(QStringLiteral("15:00"));
        e.triaRecurs(QStringLiteral("Joan"));
        db.exec(QStringLiteral("CREATE TRIGGER prova_falla BEFORE INSERT ON Feines_Detall"
                               " WHEN NEW.serveis_nom = 'Vidres' BEGIN SELECT RAISE(ABORT, 'linia rebutjada'); END"));
        QVERIFY(!e.modifica());
        QCOMPARE(n.ui.crides.last().tipus, QStringLiteral("error"));
        QVERIFY(n.ui.crides.last().text.contains(QStringLiteral("linia rebutjada")));
        QCOMPARE(filaFeina(db, id), abans);
        QCOMPARE(liniesGuardades(db, id), QStringList{"Neteja|2|Hores"});
        QCOMPARE(db.transactionDepth(), 0);

        // with the obstacle gone, both are stored
        db.exec(QStringLiteral("DROP TRIGGER prova_falla"));
        QVERIFY(e.modifica());
        QCOMPARE(filaFeina(db, id), QStringLiteral("2024-05-15|15:00|17:30|Joan|0|<null>|Canvi"));
        QCOMPARE(liniesGuardades(db, id), (QStringList{"Neteja|3|Hores", "Vidres|4|Unitats"}));
        QCOMPARE(f.missatge, QStringLiteral("OK"));
    }
};

QTEST_GUILESS_MAIN(TestEditorFeina)
#include "tst_editor_feina.moc"
