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
            QString ajust; // "" or one setting changed: "HoresDia=2", "Dissabtes=0", "Diumenges=0"
            double esperat;
        } casos[] = {
            {"slots, weekday", jornada, true, kDimecres, "", 0.5},
            {"slots, Saturday extra", jornada, true, kDissabte, "", 8.5},
            {"slots, Saturday not extra", jornada, true, kDissabte, "Dissabtes=0", 0.5},
            {"slots, Sunday not extra", jornada, true, kDiumenge, "Diumenges=0", 0.5},
            {"slots, Saturday rule on Sunday", jornada, true, kDiumenge, "Dissabtes=0", 8.5},
            {"short day is 0, never less", {"09:10-09:20"}, true, kDimecres, "", 0.0},
            {"span fills the gap", ambBuit, false, kDissabte, "", 4.0},
            {"span skips lunch", ambDinar, false, kDiumenge, "", 7.5},
        };
        for (const auto &c : casos) {
            Configuracio cfg;
            cfg.CalculxHores = c.perFranges;
            const QString clau = c.ajust.section('=', 0, 0), valor = c.ajust.section('=', 1);
            if (clau == "HoresDia")
                QVERIFY(format::llegeixReal(valor, &cfg.HoresDia));
            cfg.DissabtesExtra = clau != "Dissabtes";
            cfg.DiumengesExtra = clau != "Diumenges";
            const double hores = Calcula_Hores_Extres(franges(c.feines, cfg.MinutsCella), cfg, c.dia);
            QVERIFY2(hores == c.esperat, qPrintable(QStringLiteral("%1: %2").arg(c.nom).arg(hores)));
        }
    }

    // When the overtime editor may open, and what a commit stores.
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
        QVERIFY(ed.obre(marta, true)); // on the proposal; stored for the column's worker
        ed.setText("1,5");
        QCOMPARE(ed.confirma(), QString("1,50"));
        QCOMPARE(Hores_Fetes(b.db, "Marta", kDimecres), 1.5);

        ModelAgenda setmana(b.db, b.cfg); // outside the day view there is no overtime row
        setmana.Construeix_Agenda(EstatAgenda(VistaAgenda::Setmana, kDimecres, b.cfg.PrimerDiaSetmana));
        QVERIFY(!EditorHores(b.db, b.cfg, setmana).obre(1, false));
    }

    // One row per worker and day, names compared without regard to case; 0 or a non-number
    // removes it. The month's clean-up keeps an entry when its worker has a job that day,
    // directly or through a group, and leaves other months alone.
    void storesAndCleansUp()
    {
        BaseProva b;
        Db &db = b.db;
        Grava_Hores_Fetes(db, 1.5, "Marta", kDimecres);
        Grava_Hores_Fetes(db, 2.25, "MARTA", kDimecres);
        Grava_Hores_Fetes(db, 1.0, "Oriol", kDimecres);
        QCOMPARE(files(db), 2);
        QCOMPARE(Hores_Fetes(db, "marta", kDimecres), 2.25);
        QCOMPARE(textHores("1,555"), "1,56");
        Grava_Hores_Fetes(db, valorHores(textHores("x")), "Marta", kDimecres);
        Grava_Hores_Fetes(db, 0.0, "Oriol", kDimecres);
        QCOMPARE(files(db), 0);
        QCOMPARE(db.transactionDepth(), 0);

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
            {"Equip", d1, false},    // the group itself is no worker
            {"Oriol", d2, true},     // own job, named in another case
            {"Buit", d3, true},      // a group without members works as itself
            {"Pere", d3, false},     // an unassigned job justifies nobody
            {"Pere", gener, true},   // another month
            {"Pere", novembre, true} // another month
        };
        for (const auto &e : entrades)
            Grava_Hores_Fetes(db, 1, QString::fromUtf8(e.recurs), e.dia);
        QCOMPARE(Borra_hores_extres_erronies(db, "13/2024"), -1);
        QCOMPARE(files(db), 7);
        QCOMPARE(Borra_hores_extres_erronies(db, "12/2024"), 2);
        for (const auto &e : entrades)
            QVERIFY2(Hores_Fetes(db, QString::fromUtf8(e.recurs), e.dia) == (e.queda ? 1.0 : 0.0), e.recurs);
        QCOMPARE(Borra_hores_extres_erronies(db, 1, 2025), 1);
    }
};

QTEST_GUILESS_MAIN(TestHoresExtres)
#include "tst_hores_extres.moc"
