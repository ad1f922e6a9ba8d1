// Closed days in the planning: the rhythm steps over them as over a Sunday the place does not
// work, unless the place works on closed days; and the preview of a run, which must be exactly
// what the run then stores and must write nothing itself. Dates from the 2026 calendar
// (1 June 2026 is a Monday).
#include "core/ini.h"
#include "jobs/festius.h"
#include "jobs/motor_feines.h"
#include "jobs/planificacio.h"
#include "jobs/planificacio_generacio.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

QDate d(int m, int day)
{
    return QDate(2026, m, day);
}

RitmeLloc ritme(int n, bool primer, bool ultim, int diaSetmana, bool dissabte, bool diumenge, bool festius = false)
{
    RitmeLloc r;
    r.periodicitat_dies = n;
    r.primer_dia_mes = primer;
    r.ultim_dia_mes = ultim;
    r.dia_setmana = diaSetmana;
    r.dissabte = dissabte;
    r.diumenge = diumenge;
    r.festius = festius;
    return r;
}

// "MM-dd" for a day, with the closed days it was moved over: "06-08 <06-05>".
QStringList text(const QList<DiaPlanificat> &dies)
{
    QStringList out;
    for (const DiaPlanificat &dia : dies) {
        QString t = dia.dia.toString(QStringLiteral("MM-dd"));
        for (const QDate &f : dia.festius)
            t += QStringLiteral(" <") + f.toString(QStringLiteral("MM-dd")) + QLatin1Char('>');
        out << t;
    }
    return out;
}

// What a preview says will be stored, as the jobs table would then hold it.
QStringList previstes(const PrevisioPlanificacio &p)
{
    QStringList out;
    for (const FeinaPlanificada &f : p.feines) {
        if (f.resultat != FeinaPlanificada::Resultat::Refusada)
            out << f.llocs_nom + QLatin1Char('|') + f.feines_data.toString(Qt::ISODate) + QLatin1Char('|')
                       + f.feines_hora_inici + QLatin1Char('|') + f.recursos_nom;
    }
    return out;
}

QStringList emmagatzemades(Db &db, const QDate &F, const QDate &L)
{
    return dades_prova::files(db, QStringLiteral("SELECT llocs_nom, feines_data, feines_hora_inici, COALESCE(recursos_nom, '') "
                                                 "FROM Feines WHERE feines_data BETWEEN ? AND ? ORDER BY feines_id"),
                              {F.toString(Qt::ISODate), L.toString(Qt::ISODate)});
}

void posaRitme(Db &db, const QString &lloc, int n, bool weekends, const QString &hora, bool festius = false)
{
    db.query(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = ?, llocs_dissabte = ?, llocs_diumenge = ?, "
                            "llocs_hora = ?, llocs_festius = ? WHERE llocs_nom = ?"))
        .bind(n).bind(weekends ? 1 : 0).bind(weekends ? 1 : 0).bind(hora).bind(festius ? 1 : 0).bind(lloc).exec();
}

} // namespace

Q_DECLARE_METATYPE(RitmeLloc)

class TestPlanificacioFestius : public QObject {
    Q_OBJECT

private slots:
    void closedDays_data()
    {
        QTest::addColumn<RitmeLloc>("r");
        QTest::addColumn<QDate>("darrera");
        QTest::addColumn<QDate>("F");
        QTest::addColumn<QDate>("L");
        QTest::addColumn<QList<QDate>>("tancats");
        QTest::addColumn<QStringList>("dies");
        const RitmeLloc diari = ritme(1, false, false, 0, false, false);
        QTest::newRow("daily: a closed Friday goes past the weekend to Monday")
            << diari << QDate() << d(6, 4) << d(6, 9) << QList<QDate>{d(6, 5)} << QStringList{"06-04", "06-08 <06-05>", "06-09"};
        QTest::newRow("daily, opted in: the closed Friday is worked")
            << ritme(1, false, false, 0, false, false, true) << QDate() << d(6, 4) << d(6, 9) << QList<QDate>{d(6, 5)}
            << QStringList{"06-04", "06-05", "06-08", "06-09"};
        QTest::newRow("daily with weekends: a closed Sunday to Monday")
            << ritme(1, false, false, 0, true, true) << QDate() << d(6, 6) << d(6, 8) << QList<QDate>{d(6, 7)}
            << QStringList{"06-06", "06-08 <06-07>"};
        QTest::newRow("weekly: two closed days in a row, then the rhythm from the moved day")
            << ritme(7, false, false, 0, false, false) << d(6, 3) << d(6, 4) << d(6, 20) << QList<QDate>{d(6, 10), d(6, 11)}
            << QStringList{"06-12 <06-10> <06-11>", "06-19"};
        QTest::newRow("weekly on Monday: a closed Monday to Tuesday, next week Monday again")
            << ritme(7, false, false, 2, false, false) << d(6, 1) << d(6, 4) << d(6, 16) << QList<QDate>{d(6, 8)}
            << QStringList{"06-09 <06-08>", "06-15"};
        QTest::newRow("first of month on a closed Monday")
            << ritme(30, true, false, 0, false, false) << QDate() << d(5, 15) << d(6, 30) << QList<QDate>{d(6, 1)}
            << QStringList{"06-02 <06-01>"};
        QTest::newRow("first of month on a Sunday, then a closed Monday")
            << ritme(30, true, false, 0, false, false) << QDate() << d(2, 15) << d(3, 31) << QList<QDate>{d(3, 2)}
            << QStringList{"03-03 <03-02>"};
        QTest::newRow("last of month on a Sunday, a closed Friday before it")
            << ritme(30, false, true, 0, false, false) << QDate() << d(5, 1) << d(5, 31) << QList<QDate>{d(5, 29)}
            << QStringList{"05-28 <05-29>"};
        QTest::newRow("last of month on a closed Friday goes back, not to Saturday")
            << ritme(30, false, true, 0, true, false) << QDate() << d(7, 1) << d(7, 31) << QList<QDate>{d(7, 31)}
            << QStringList{"07-30 <07-31>"};
        QTest::newRow("moved back before the period: no job")
            << ritme(30, false, true, 0, false, false) << QDate() << d(7, 31) << d(8, 15) << QList<QDate>{d(7, 31)}
            << QStringList{};
    }

    void closedDays()
    {
        QFETCH(RitmeLloc, r);
        QFETCH(QDate, darrera);
        QFETCH(QDate, F);
        QFETCH(QDate, L);
        QFETCH(QList<QDate>, tancats);
        QFETCH(QStringList, dies);
        DiesTancats mapa;
        for (const QDate &t : tancats)
            mapa.insert(t, QStringLiteral("Festa"));
        QCOMPARE(text(diesPlanificats(r, F, L, darrera, 2, mapa)), dies);
    }

    // Through the agenda's trigger: Cancel writes nothing (no job, no job number used, the last
    // planned day where it was); Generate stores exactly the preview, a busy worker's job
    // unassigned and a refused one not at all; the log says why a job moved. A plain run then
    // stores what a preview of its period showed.
    void previewIsWhatTheRunStores()
    {
        DirectoriProva dir;
        dir.posaParametre(QStringLiteral("UltimDiaGen"), QStringLiteral("03/06/2026"), QStringLiteral("Estat"));
        dir.posaParametre(QStringLiteral("HoraFinal"), QStringLiteral("20:00"));
        auto s = dir.obreSessio();
        Db &db = s->db();
        dades_prova::recurs(db, QStringLiteral("Anna"), 0x0000FF);
        dades_prova::recurs(db, QStringLiteral("Pere"), 0x00FF00);
        dades_prova::lloc(db, QStringLiteral("Bar"), 60, QStringLiteral("Anna"));
        dades_prova::lloc(db, QStringLiteral("Forn"), 60, QStringLiteral("Anna"));
        dades_prova::lloc(db, QStringLiteral("Obert"), 60, QStringLiteral("Pere"));
        dades_prova::lloc(db, QStringLiteral("Tard"), 60, QStringLiteral("Pere"));
        posaRitme(db, QStringLiteral("Bar"), 1, false, QStringLiteral("08:00"));
        posaRitme(db, QStringLiteral("Forn"), 1, false, QStringLiteral("08:00"));
        posaRitme(db, QStringLiteral("Obert"), 1, false, QStringLiteral("10:00"), true);
        posaRitme(db, QStringLiteral("Tard"), 2, true, QStringLiteral("19:30"));
        QCOMPARE(Festius(db).Afegeix_Festiu(d(6, 5), QStringLiteral("Festa major")), QString());

        MotorFeines motor(db, s->cfg());
        RegistreMemoria log;
        Planificador p(db, s->cfg(), motor, log);
        InteraccioGuio ui;
        PrevisioPlanificacio mostrada;
        bool genera = false;
        const auto confirma = [&](const PrevisioPlanificacio &previsio) {
            mostrada = previsio;
            return genera;
        };

        QVERIFY(!Genera_Feines_Planificades(p, s->cfg(), ui, d(6, 9), confirma));
        QCOMPARE(mostrada.feines.size(), 13);
        QCOMPARE(mostrada.compte(FeinaPlanificada::Resultat::Ok), 7);
        QCOMPARE(mostrada.compte(FeinaPlanificada::Resultat::SenseRecurs), 3);
        QCOMPARE(mostrada.compte(FeinaPlanificada::Resultat::Refusada), 3);
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT COUNT(*) FROM Feines")), 0);
        QCOMPARE(s->cfg().UltimDiaGen, d(6, 3));
        QVERIFY(log.text.isEmpty());

        genera = true;
        QVERIFY(Genera_Feines_Planificades(p, s->cfg(), ui, d(6, 9), confirma));
        QCOMPARE(emmagatzemades(db, d(6, 4), d(6, 9)), previstes(mostrada));
        QVERIFY(emmagatzemades(db, d(6, 5), d(6, 5)) == QStringList{"Obert|2026-06-05|10:00|Pere"});
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT MIN(feines_id) FROM Feines")), 1);
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QStringLiteral("09/06/2026"));
        QVERIFY2(log.text.contains(QStringLiteral("'Bar' planificada el dilluns 08/06/2026 a les 08:00. "
                                                  "Moguda per festiu: divendres 05/06/2026 (Festa major).")),
                 qPrintable(log.text));
        QCOMPARE(log.text.count(QStringLiteral("ERROR en planificació de feina: 'Tard'")), 3);

        const PrevisioPlanificacio seguent = p.Previsualitza(d(6, 10), d(6, 12));
        QCOMPARE(p.Planificar_Feines(d(6, 10), d(6, 12)), QString());
        QCOMPARE(emmagatzemades(db, d(6, 10), d(6, 12)), previstes(seguent));
        QCOMPARE(p.feinesPlanificades(), seguent.feines.size() - seguent.compte(FeinaPlanificada::Resultat::Refusada));
    }
};

QTEST_GUILESS_MAIN(TestPlanificacioFestius)
#include "tst_planificacio_festius.moc"
