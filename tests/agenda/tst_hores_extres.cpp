// Overtime: the proposal in both counting modes with the lunch break and the weekend rules,
// storing (twice, zero, non-numbers), and the month's clean-up of entries no job justifies.
#include "agenda/agenda_model.h"
#include "agenda/hores_extres.h"
#include "agenda/hores_extres_editor.h"
#include "core/formats.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

const QDate kDimecres(2024, 5, 15);
const QDate kDissabte(2024, 5, 18);
const QDate kDiumenge(2024, 5, 19);

// The 48 half-hour slots of a day, occupied where one of the given "hh:mm-hh:mm" jobs covers the
// slot's start.
QList<FranjaHores> franges(const QStringList &feines, int minutsCella = 30)
{
    QList<FranjaHores> r;
    for (int m = 0; m < 1440; m += minutsCella) {
        FranjaHores f;
        f.etiqueta = hora::text(m);
        for (const QString &feina : feines) {
            const int inici = hora::minuts(feina.section(QLatin1Char('-'), 0, 0));
            const int fi = hora::minuts(feina.section(QLatin1Char('-'), 1, 1));
            if (m + minutsCella > inici && m < fi)
                f.ocupada = true;
        }
        r.append(f);
    }
    return r;
}

int files(Db &db)
{
    return int(dades_prova::valor(db, "SELECT COUNT(*) FROM Hores_Fetes"));
}

// Two workers whose time counts (Marta, Oriol), one whose time does not (Pere), a team of the
// first two, two places.
void personal(Db &db)
{
    dades_prova::recurs(db, "Marta", 1);
    dades_prova::recurs(db, "Oriol", 2);
    dades_prova::recurs(db, "Pere", 3, false);
    dades_prova::grup(db, "Equip", 4, {"Marta", "Oriol"});
    dades_prova::lloc(db, "Oficina", 60);
    dades_prova::lloc(db, "Escala", 60);
}

void feina(Db &db, const QDate &dia, const char *lloc, const char *inici, const char *fi, const char *recurs = "")
{
    dades_prova::feina(db, QString::fromUtf8(lloc), dia, QString::fromUtf8(inici), QString::fromUtf8(fi), QString::fromUtf8(recurs));
}

} // namespace

class TestHoresExtres : public QObject {
    Q_OBJECT

private slots:
    // The proposal by counting mode, weekday, weekend settings and lunch break. Counting slots,
    // only occupied slots count, whole; counting the span, the gaps between two jobs count too,
    // except the lunch break, and nothing before the first job or after the last does.
    void proposal()
    {
        const QStringList jornada{"08:00-12:00", "15:00-19:30"}; // 17 slots
        const QStringList ambBuit{"08:00-10:00", "11:00-12:00"};
        const QStringList ambDinar{"09:00-13:00", "16:00-18:00"}; // gap 13:00-16:00
        const struct {
            const char *nom;
            QStringList feines;
            bool perFranges;
            QDate dia;
            QString ajust; // "" or one setting changed: "HoresDia=2", "Dissabtes=0", ...
            double esperat;
        } casos[] = {
            {"slots, weekday", jornada, true, kDimecres, "", 0.5},
            {"slots, Saturday extra", jornada, true, kDissabte, "", 8.5},
            {"slots, Saturday not extra", jornada, true, kDissabte, "Dissabtes=0", 0.5},
            {"slots, Sunday not extra", jornada, true, kDiumenge, "Diumenges=0", 0.5},
            {"slots, Saturday rule on Sunday", jornada, true, kDiumenge, "Dissabtes=0", 8.5},
            {"short day is 0, never less", {"09:10-09:20"}, true, kDimecres, "", 0.0},
            {"short job takes its slot", {"09:10-09:20"}, true, kDimecres, "HoresDia=0,25", 0.25},
            {"hour slots", {"08:30-09:30"}, true, kDissabte, "Cella=60", 2.0},
            {"slots ignore gaps", ambBuit, true, kDimecres, "HoresDia=2", 1.0},
            {"span fills the gap", ambBuit, false, kDissabte, "", 4.0},
            {"span skips lunch", ambDinar, false, kDiumenge, "", 7.5},
            {"span, nothing before or after", {"20:00-21:00"}, false, kDissabte, "", 1.0},
            // 1 + 0,5 (13:00-13:30) + 0,5 + 1 (15:00-16:00) + 0,5
            {"span, job inside lunch", {"12:00-13:00", "14:00-14:30", "16:00-16:30"}, false, kDissabte, "", 3.5},
            {"span, other lunch", {"09:00-11:00", "14:00-15:00"}, false, kDissabte, "Dinar=12:00-12:30", 5.5},
        };
        for (const auto &c : casos) {
            Configuracio cfg;
            cfg.CalculxHores = c.perFranges;
            const QString clau = c.ajust.section('=', 0, 0), valor = c.ajust.section('=', 1);
            if (clau == "HoresDia")
                QVERIFY(format::llegeixReal(valor, &cfg.HoresDia));
            cfg.DissabtesExtra = clau != "Dissabtes";
            cfg.DiumengesExtra = clau != "Diumenges";
            if (clau == "Cella")
                cfg.MinutsCella = valor.toInt();
            if (clau == "Dinar") {
                cfg.HoraIniciDinar = valor.section('-', 0, 0);
                cfg.HoraFinalDinar = valor.section('-', 1);
            }
            const double hores = Calcula_Hores_Extres(franges(c.feines, cfg.MinutsCella), cfg, c.dia);
            QVERIFY2(hores == c.esperat, qPrintable(QStringLiteral("%1: %2").arg(c.nom).arg(hores)));
        }
    }

    // The proposal read from the day view: each worker's first column, a group's job in each
    // member's column; no column, no proposal.
    void proposalFromTheAgenda()
    {
        BaseProva b;
        personal(b.db);
        feina(b.db, kDissabte, "Oficina", "08:00", "12:00", "Marta");
        // overlaps Marta's own job: drawn in a second Marta column, which the proposal ignores
        feina(b.db, kDissabte, "Escala", "11:00", "13:00", "Equip");
        feina(b.db, kDissabte, "Escala", "16:00", "16:10", "Marta");
        ModelAgenda model(b.db, b.cfg);
        model.Construeix_Agenda(EstatAgenda(VistaAgenda::Dia, kDissabte, b.cfg.PrimerDiaSetmana));
        const int marta = columnaRecurs(model, "MARTA");
        const int oriol = columnaRecurs(model, "Oriol");
        QCOMPARE(QPoint(marta, oriol), QPoint(1, 3));
        QVERIFY(EditorHores(b.db, b.cfg, model).potObrir(marta, true)); // the first column opens
        QCOMPARE(columnaRecurs(model, "Equip") + columnaRecurs(model, QString()), 0);
        QCOMPARE(Calcula_Hores_Extres(model, marta, b.cfg, kDissabte), 4.5); // 08:00-12:00 and 16:00-16:30
        QCOMPARE(Calcula_Hores_Extres(model, oriol, b.cfg, kDissabte), 2.0);
        b.cfg.CalculxHores = false; // 12:00-13:30 and 15:00-16:00 between the jobs count too
        QCOMPARE(Calcula_Hores_Extres(model, marta, b.cfg, kDissabte), 7.0);
        QCOMPARE(Calcula_Hores_Extres(model, 0, b.cfg, kDissabte), 0.0);
        QCOMPARE(Calcula_Hores_Extres(model, model.columnes(), b.cfg, kDissabte), 0.0);
    }

    // When the overtime editor may open, what it opens with, and what a commit stores.
    void overtimeEditorOpensAndCommits()
    {
        BaseProva b;
        personal(b.db);
        feina(b.db, kDimecres, "Oficina", "08:00", "12:00", "Marta");
        feina(b.db, kDimecres, "Escala", "15:00", "19:30", "Marta");
        feina(b.db, kDimecres, "Escala", "08:00", "09:00", "Pere");
        feina(b.db, kDimecres, "Oficina", "13:00", "14:00");
        ModelAgenda model(b.db, b.cfg);
        model.Construeix_Agenda(EstatAgenda(VistaAgenda::Dia, kDimecres, b.cfg.PrimerDiaSetmana));
        const int marta = columnaRecurs(model, "Marta"), pere = columnaRecurs(model, "Pere");
        QCOMPARE(QPoint(marta, pere), QPoint(2, 3)); // after the unassigned column

        EditorHores ed(b.db, b.cfg, model);
        // the unassigned column and an unused one never open; a worker whose time does not count
        // opens with Enter but not with a click
        for (bool clic : {true, false}) {
            QVERIFY(!ed.potObrir(0, clic) && !ed.potObrir(1, clic) && !ed.potObrir(4, clic) && !ed.potObrir(model.columnes(), clic));
            QVERIFY(ed.potObrir(marta, clic));
            QCOMPARE(ed.potObrir(pere, clic), !clic);
        }
        QVERIFY(!ed.obre(pere, true));
        QCOMPARE(ed.confirma(), QString()); // hidden: nothing to commit

        QVERIFY(ed.obre(marta, true)); // on the proposal, selected; stored for the column's worker
        QVERIFY(ed.visible() && ed.seleccionat());
        QCOMPARE(ed.text(), QString("0,50"));
        ed.setText("1,5");
        QCOMPARE(ed.confirma(), QString("1,50"));
        QVERIFY(!ed.visible());
        QVERIFY(ed.obre(marta, false, "2")); // opened by a typed digit; Escape stores nothing
        QCOMPARE(ed.text() + (ed.seleccionat() ? "+" : ""), QString("2"));
        ed.cancela();
        QCOMPARE(ed.confirma(), QString());
        QCOMPARE(Hores_Fetes(b.db, "Marta", kDimecres), 1.5);
        QVERIFY(ed.obre(pere, false, "\r")); // Enter opens on the proposal too
        QCOMPARE(ed.text(), QString("0,00"));

        ModelAgenda setmana(b.db, b.cfg); // outside the day view there is no overtime row
        setmana.Construeix_Agenda(EstatAgenda(VistaAgenda::Setmana, kDimecres, b.cfg.PrimerDiaSetmana));
        QVERIFY(!EditorHores(b.db, b.cfg, setmana).obre(1, false));
    }

    // One row per worker and day; 0 or a non-number removes it; names compare without regard
    // to case.
    void storesOneRowPerWorkerAndDay()
    {
        BaseProva b;
        Db &db = b.db;
        Grava_Hores_Fetes(db, 0.0, "Marta", kDimecres);
        QCOMPARE(files(db), 0);
        Grava_Hores_Fetes(db, 1.5, "Marta", kDimecres);
        Grava_Hores_Fetes(db, 2.25, "MARTA", kDimecres);
        QCOMPARE(files(db), 1);
        QCOMPARE(Hores_Fetes(db, "marta", kDimecres), 2.25);
        Grava_Hores_Fetes(db, 1.0, "Marta", kDissabte);
        Grava_Hores_Fetes(db, 3.0, "L'Àngels", kDimecres);
        QCOMPARE(files(db), 3);
        QCOMPARE(Hores_Fetes(db, "L'ÀNGELS", kDimecres), 3.0);

        // what the overtime cell makes of what was typed
        QCOMPARE(textHores("1,555"), "1,56");
        QCOMPARE(textHores("molt"), "0,00");
        QCOMPARE(valorHores("1.234,50"), 1234.5);
        Grava_Hores_Fetes(db, valorHores(textHores("x")), "Marta", kDimecres);
        QCOMPARE(files(db), 2);
        QCOMPARE(db.transactionDepth(), 0);
    }

    // An entry stays when its worker has a job that day, directly or through a group; other
    // months are left alone.
    void cleanUpKeepsJustifiedEntries()
    {
        BaseProva b;
        Db &db = b.db;
        personal(db);
        dades_prova::grup(db, "Buit", 5, {});
        const QDate d1(2024, 12, 2), d2(2024, 12, 3), d3(2024, 12, 31), gener(2025, 1, 1), novembre(2024, 11, 30);
        feina(db, d1, "Oficina", "09:00", "10:00", "Equip");
        feina(db, d2, "Oficina", "09:00", "10:00", "oriol");
        feina(db, d3, "Oficina", "09:00", "10:00", "Buit");
        feina(db, d3, "Oficina", "11:00", "12:00");
        const struct {
            const char *recurs;
            QDate dia;
            bool queda;
        } entrades[] = {
            {"Marta", d1, true},     // through the group
            {"Pere", d1, false},     // no job
            {"Equip", d1, false},    // the group itself is no worker
            {"Oriol", d2, true},     // own job, named in another case
            {"Marta", d2, false},    // no job that day
            {"Buit", d3, true},      // a group without members works as itself
            {"Pere", d3, false},     // an unassigned job justifies nobody
            {"Pere", gener, true},   // another month
            {"Pere", novembre, true} // another month
        };
        for (const auto &e : entrades)
            Grava_Hores_Fetes(db, 1, QString::fromUtf8(e.recurs), e.dia);
        QCOMPARE(Borra_hores_extres_erronies(db, "13/2024"), -1);
        QCOMPARE(files(db), 9);
        QCOMPARE(Borra_hores_extres_erronies(db, "12/2024"), 4);
        for (const auto &e : entrades)
            QVERIFY2(Hores_Fetes(db, QString::fromUtf8(e.recurs), e.dia) == (e.queda ? 1.0 : 0.0), e.recurs);
        QCOMPARE(Borra_hores_extres_erronies(db, 1, 2025), 1);
        QCOMPARE(Borra_hores_extres_erronies(db, 11, 2024), 1);
    }
};

QTEST_GUILESS_MAIN(TestHoresExtres)
#include "tst_hores_extres.moc"
