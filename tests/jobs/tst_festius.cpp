// Closed days: typed one by one and imported from iCalendar files as public calendars publish
// them; the planning steps over them as over a Sunday the place does not work, unless the place
// works on closed days; the preview of a run, exactly what the run then stores and writing
// nothing itself; and re-planning a place whose rhythm changed. Dates from the 2026 calendar
// (1 June 2026 is a Monday).
#include "core/ini.h"
#include "jobs/festius.h"
#include "jobs/motor_feines.h"
#include "jobs/planificacio.h"
#include "jobs/planificacio_generacio.h"
#include "jobs/replanificacio.h"
#include "support/entorn_proves.h"
#include "support/ritme_proves.h"

#include <QtTest>

namespace {


// The stored closed days as "yyyy-mm-dd description".
QStringList tancats(Db &db)
{
    QStringList out;
    for (const Festiu &f : Festius(db).llista())
        out << f.data.toString(Qt::ISODate) + QLatin1Char(' ') + f.descripcio;
    return out;
}

QByteArray calendari(const QByteArray &esdeveniments)
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Ajuntament//Festius//CA\r\n" + esdeveniments + "END:VCALENDAR\r\n";
}

QByteArray diaSencer(const char *inici, const char *resum, const QByteArray &mes = {})
{
    return QByteArray("BEGIN:VEVENT\r\nUID:") + inici + resum + "\r\nDTSTART;VALUE=DATE:" + inici + "\r\nSUMMARY:" + resum
           + "\r\n" + mes + "END:VEVENT\r\n";
}

QDate d(int m, int day)
{
    return QDate(2026, m, day);
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

QStringList feinesReplan(Db &db)
{
    return dades_prova::files(db, QStringLiteral("SELECT llocs_nom, feines_data, feines_hora_inici, feines_feta FROM Feines "
                                                 "ORDER BY llocs_nom, feines_data"));
}

} // namespace

Q_DECLARE_METATYPE(RitmeLloc)

class TestFestius : public QObject {
    Q_OBJECT

private slots:
    void import_data()
    {
        QTest::addColumn<QByteArray>("fitxer");
        QTest::addColumn<QStringList>("esperats");
        QTest::addColumn<int>("afegits");
        QTest::addColumn<QStringList>("avisos"); // a word each warning must hold, in order
        QTest::addColumn<bool>("error");

        const QStringList nadal{"2026-12-08 Prèvia", "2026-12-25 Nadal"}; // stored before each import
        QTest::newRow("closing over several days, by end and by duration")
            << calendari(diaSencer("20260810", "Vacances", "DTEND;VALUE=DATE:20260813\r\n")
                         + diaSencer("20261130", "Inventari", "DURATION:P2D\r\n"))
            << QStringList{"2026-08-10 Vacances", "2026-08-11 Vacances", "2026-08-12 Vacances", "2026-11-30 Inventari",
                           "2026-12-01 Inventari"} + nadal
            << 5 << QStringList{} << false;
        QTest::newRow("a stored day keeps its text; a repeat in the file is skipped too")
            << calendari(diaSencer("20261225", "Natividad") + diaSencer("20261226", "Sant Esteve")
                         + diaSencer("20261226", "Segon dia"))
            << QStringList{"2026-12-08 Prèvia", "2026-12-25 Nadal", "2026-12-26 Sant Esteve"} << 1
            << QStringList{"Natividad", "Segon dia"} << false;
        QTest::newRow("escaped text; a timed, a cancelled and a repeating event")
            << calendari("BEGIN:VEVENT\r\nUID:r\r\nDTSTART:20260310T090000Z\r\nSUMMARY:Reunió\r\nEND:VEVENT\r\n"
                         + diaSencer("20260911", "Diada\\, Catalunya") + diaSencer("20260501", "Treball", "STATUS:CANCELLED\r\n")
                         + diaSencer("20260101", "Any nou", "RRULE:FREQ=YEARLY\r\n"))
            << QStringList{"2026-01-01 Any nou", "2026-09-11 Diada, Catalunya"} + nadal << 2
            << QStringList{"Reunió", "Treball", "Any nou"} << false;
        QTest::newRow("not a calendar: nothing changes") << QByteArray("[General]\nBaseDades=x\n") << nadal << 0
                                                        << QStringList{} << true;
    }

    void import()
    {
        QFETCH(QByteArray, fitxer);
        QFETCH(QStringList, esperats);
        QFETCH(int, afegits);
        QFETCH(QStringList, avisos);
        QFETCH(bool, error);
        BaseProva b;
        Festius festius(b.db);
        QCOMPARE(festius.Afegeix_Festiu(QDate(2026, 12, 8), QStringLiteral("Prèvia")), QString());
        QCOMPARE(festius.Afegeix_Festiu(QDate(2026, 12, 25), QStringLiteral("Nadal")), QString());
        QTemporaryDir tmp;
        QFile f(tmp.filePath(QStringLiteral("festius.ics")));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(fitxer);
        f.close();

        const ResultatImportacio r = festius.Importa_Festius(f.fileName());
        QCOMPARE(r.error.isEmpty(), !error);
        QCOMPARE(r.afegits, afegits);
        QCOMPARE(tancats(b.db), esperats);
        QCOMPARE(r.avisos.size(), avisos.size());
        for (int i = 0; i < avisos.size(); ++i)
            QVERIFY2(r.avisos[i].contains(avisos[i]), qPrintable(r.avisos[i]));
    }

    // Typed closed days: a second one on a date is refused and the first kept; a year lists its
    // own days only; deleting a day that is not closed says so.
    void typedDays()
    {
        BaseProva b;
        Festius festius(b.db);
        QCOMPARE(festius.Afegeix_Festiu(QDate(2026, 12, 31), QStringLiteral("  Tancament  ")), QString());
        QCOMPARE(festius.Afegeix_Festiu(QDate(2027, 1, 1), QStringLiteral("Cap d'any")), QString());
        QVERIFY(festius.Afegeix_Festiu(QDate(2026, 12, 31), QStringLiteral("Un altre")).contains(QStringLiteral("Tancament")));
        QCOMPARE(tancats(b.db), QStringList({"2026-12-31 Tancament", "2027-01-01 Cap d'any"}));

        QCOMPARE(festius.Esborra_Festiu(QDate(2026, 12, 31)), QString());
        QVERIFY(!festius.Esborra_Festiu(QDate(2026, 12, 31)).isEmpty());
        QCOMPARE(tancats(b.db), QStringList{"2027-01-01 Cap d'any"});
    }

    void closedDays_data()
    {
        QTest::addColumn<RitmeLloc>("r");
        QTest::addColumn<QDate>("darrera");
        QTest::addColumn<QDate>("F");
        QTest::addColumn<QDate>("L");
        QTest::addColumn<QList<QDate>>("tancats");
        QTest::addColumn<QStringList>("dies");
        QTest::newRow("weekly: two closed days in a row, then the rhythm from the moved day")
            << ritme(7, false, false, 0, false, false) << d(6, 3) << d(6, 4) << d(6, 20) << QList<QDate>{d(6, 10), d(6, 11)}
            << QStringList{"06-12 <06-10> <06-11>", "06-19"};
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
    // unassigned and a refused one not at all; the log says why a job moved.
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
        QCOMPARE(mostrada.compte(FeinaPlanificada::Resultat::SenseRecurs), 3);
        QCOMPARE(mostrada.compte(FeinaPlanificada::Resultat::Refusada), 3);
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT COUNT(*) FROM Feines")), 0);
        QCOMPARE(s->cfg().UltimDiaGen, d(6, 3));

        genera = true;
        QVERIFY(Genera_Feines_Planificades(p, s->cfg(), ui, d(6, 9), confirma));
        QCOMPARE(emmagatzemades(db, d(6, 4), d(6, 9)), previstes(mostrada));
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT MIN(feines_id) FROM Feines")), 1);
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QStringLiteral("09/06/2026"));
        QVERIFY2(log.text.contains(QStringLiteral("'Bar' planificada el dilluns 08/06/2026 a les 08:00. "
                                                  "Moguda per festiu: divendres 05/06/2026 (Festa major).")),
                 qPrintable(log.text));
    }

    void replansAChangedPlace()
    {
        BaseProva b;
        b.cfg.UltimDiaGen = d(6, 10);
        dades_prova::recurs(b.db, QStringLiteral("Anna"), 0x0000FF);
        dades_prova::lloc(b.db, QStringLiteral("Bar"), 60, QStringLiteral("Anna"));
        dades_prova::lloc(b.db, QStringLiteral("Forn"), 60, QStringLiteral("Anna"));
        for (int dia : {4, 5, 6, 7, 8, 9, 10}) // the 6th is done: it stays
            dades_prova::feina(b.db, QStringLiteral("Bar"), d(6, dia), "08:00", "09:00", "Anna", dia == 6);
        dades_prova::feina(b.db, QStringLiteral("Forn"), d(6, 8), "12:00", "13:00", "Anna");
        // Every 2 days, now at 10:00, weekends allowed.
        b.db.exec(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = 2, llocs_hora = '10:00', llocs_dissabte = 1, "
                                 "llocs_diumenge = 1 WHERE llocs_nom = 'Bar'"));
        MotorFeines motor(b.db, b.cfg);
        RegistreMemoria log;
        Replanificador r(b.db, b.cfg, motor, log);
        const QStringList abans = feinesReplan(b.db);

        const PrevisioReplanificacio p = r.Previsualitza(QStringLiteral("Bar"), d(6, 5));
        QCOMPARE(p.error, QString());
        QCOMPARE(feinesReplan(b.db), abans);
        QVERIFY(p.esborrades.size() == 4 && p.noves.feines.size() == 2); // 7th to 10th go, 8th and 10th come back

        // A job done meanwhile: nothing changes at all.
        b.db.exec(QStringLiteral("UPDATE Feines SET feines_feta = 1 WHERE llocs_nom = 'Bar' AND feines_data = '2026-06-09'"));
        const QStringList ambFeta = feinesReplan(b.db);
        QVERIFY(!r.Replanifica_Lloc(p).isEmpty());
        QCOMPARE(feinesReplan(b.db), ambFeta);

        b.db.exec(QStringLiteral("UPDATE Feines SET feines_feta = 0 WHERE llocs_nom = 'Bar' AND feines_data = '2026-06-09'"));
        QCOMPARE(r.Replanifica_Lloc(p), QString());
        QCOMPARE(feinesReplan(b.db), QStringList({"Bar|2026-06-04|08:00|0", "Bar|2026-06-05|08:00|0", "Bar|2026-06-06|08:00|1",
                                            "Bar|2026-06-08|10:00|0", "Bar|2026-06-10|10:00|0", "Forn|2026-06-08|12:00|0"}));
    }
};

QTEST_GUILESS_MAIN(TestFestius)
#include "tst_festius.moc"
