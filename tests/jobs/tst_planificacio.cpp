// Periodic planning against a real database: the jobs each rhythm stores, what a second run over
// the same period does, busy workers, refusals and run-time failures, the log line by line, and
// the agenda's trigger with its last planned day.
#include "core/ini.h"
#include "jobs/motor_feines.h"
#include "jobs/planificacio.h"
#include "jobs/planificacio_generacio.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

QDate d(int y, int m, int day)
{
    return QDate(y, m, day);
}

struct Ritme {
    int periodicitat = 0;
    bool primer = false;
    bool ultim = false;
    int diaSetmana = 0;
    bool dissabte = false;
    bool diumenge = false;
    QVariant hora; // null: no hour of its own
};

void posaRitme(Db &db, const QString &lloc, const Ritme &r)
{
    db.query(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = ?, llocs_primer_dia_mes = ?, "
                            "llocs_ultim_dia_mes = ?, llocs_dia_setmana = ?, llocs_dissabte = ?, llocs_diumenge = ?, "
                            "llocs_hora = ? WHERE llocs_nom = ?"))
        .bind(r.periodicitat).bind(r.primer ? 1 : 0).bind(r.ultim ? 1 : 0).bind(r.diaSetmana)
        .bind(r.dissabte ? 1 : 0).bind(r.diumenge ? 1 : 0).bind(r.hora).bind(lloc).exec();
}

// The dates of a place's jobs, "yyyy-mm-dd", in order.
QStringList dates(Db &db, const QString &lloc)
{
    return dades_prova::files(db, QStringLiteral("SELECT feines_data FROM Feines WHERE llocs_nom = ? ORDER BY feines_data"), {lloc});
}

QString idFeina(Db &db, const char *lloc, const QDate &dia)
{
    return QString::number(dades_prova::valor(db, QStringLiteral("SELECT feines_id FROM Feines WHERE llocs_nom = ? AND feines_data = ?"),
                                              {QString::fromUtf8(lloc), dia.toString(Qt::ISODate)}));
}

qint64 totalFeines(Db &db)
{
    return dades_prova::valor(db, QStringLiteral("SELECT COUNT(*) FROM Feines"));
}

// Fails once, like a message window that goes away, when handed a line holding `clau` the n-th time.
class RegistreQueFalla : public RegistreMemoria {
public:
    RegistreQueFalla(const QString &clau, int vegada) : m_clau(clau), m_vegada(vegada) {}
    void afegeix(const QString &t) override
    {
        RegistreMemoria::afegeix(t);
        if (t.contains(m_clau) && --m_vegada == 0)
            throw std::runtime_error("finestra tancada");
    }

private:
    QString m_clau;
    int m_vegada;
};

} // namespace

class TestPlanificacio : public QObject {
    Q_OBJECT

    // Places A, B and C planned weekly at 10:00, weekends included: five jobs each in March 2009.
    static void tresLlocs(Db &db)
    {
        for (const char *lloc : {"A", "B", "C"}) {
            dades_prova::lloc(db, QString::fromLatin1(lloc), 30);
            posaRitme(db, QString::fromLatin1(lloc), {7, false, false, 0, true, true, QStringLiteral("10:00")});
        }
    }

private slots:
    // The every-N-days rule continues from the place's latest job, whatever order the jobs were
    // stored in, or starts on the period's first day (the calendar itself is the rules' test).
    void everyNPlaces()
    {
        BaseProva b;
        dades_prova::lloc(b.db, QStringLiteral("Setmanal"), 30);
        dades_prova::lloc(b.db, QStringLiteral("Nou"), 30);
        posaRitme(b.db, QStringLiteral("Setmanal"), {7, false, false, 0, false, false, QStringLiteral("10:00")});
        posaRitme(b.db, QStringLiteral("Nou"), {10, false, false, 0, true, true, QStringLiteral("10:00")});
        dades_prova::feina(b.db, QStringLiteral("Setmanal"), d(2009, 2, 20), "10:00", "10:30");
        dades_prova::feina(b.db, QStringLiteral("Setmanal"), d(2009, 2, 27), "12:00", "12:30"); // the latest
        dades_prova::feina(b.db, QStringLiteral("Setmanal"), d(2009, 2, 13), "10:00", "10:30");

        MotorFeines motor(b.db, b.cfg);
        RegistreMemoria log;
        QCOMPARE(Planificador(b.db, b.cfg, motor, log).Planificar_Feines(d(2009, 3, 5), d(2009, 3, 31)), QString());
        QCOMPARE(dates(b.db, QStringLiteral("Setmanal")),
                 QStringList({"2009-02-13", "2009-02-20", "2009-02-27", "2009-03-06", "2009-03-13", "2009-03-20", "2009-03-27"}));
        QCOMPARE(dates(b.db, QStringLiteral("Nou")), QStringList({"2009-03-05", "2009-03-15", "2009-03-25"}));
    }

    // A second run over the same period adds nothing for every-N places. Monthly places have no
    // memory: the place-collision check refuses them (logged).
    void samePeriodTwice()
    {
        BaseProva b;
        b.cfg.PermetSolaparLlocs = false;
        dades_prova::lloc(b.db, QStringLiteral("Cada2"), 30);
        dades_prova::lloc(b.db, QStringLiteral("Mensual"), 30);
        posaRitme(b.db, QStringLiteral("Cada2"), {2, false, false, 0, false, false, QStringLiteral("08:00")});
        posaRitme(b.db, QStringLiteral("Mensual"), {30, true, false, 0, false, false, QStringLiteral("08:00")});
        MotorFeines motor(b.db, b.cfg);
        RegistreMemoria primer;
        QCOMPARE(Planificador(b.db, b.cfg, motor, primer).Planificar_Feines(d(2009, 3, 1), d(2009, 4, 30)), QString());
        QVERIFY(dates(b.db, QStringLiteral("Cada2")).size() > 20);
        const qint64 total = totalFeines(b.db);

        RegistreMemoria segon;
        Planificador p(b.db, b.cfg, motor, segon);
        QCOMPARE(p.Planificar_Feines(d(2009, 3, 1), d(2009, 4, 30)), QString());
        QCOMPARE(totalFeines(b.db), total);
        QCOMPARE(segon.text.count(QStringLiteral("Solapament de llocs a MENSUAL")), 2);
    }

    // The exact log of a run: a job with its resource, a job whose default resource is busy
    // (stored unassigned), a refused job, the count and the closing line.
    void logLines()
    {
        BaseProva b;
        b.cfg.HoraFinal = QStringLiteral("20:00");
        dades_prova::recurs(b.db, QStringLiteral("Anna"), 255);
        dades_prova::lloc(b.db, QStringLiteral("Botiga"), 30, QStringLiteral("Anna"));
        dades_prova::lloc(b.db, QStringLiteral("L'Estel"), 30);
        dades_prova::lloc(b.db, QStringLiteral("Oficina"), 60, QStringLiteral("Anna"));
        posaRitme(b.db, QStringLiteral("Botiga"), {7, false, false, 2, false, false, QStringLiteral("08:30")});
        posaRitme(b.db, QStringLiteral("L'Estel"), {30, false, false, 0, false, false, QStringLiteral("19:45")});
        posaRitme(b.db, QStringLiteral("Oficina"), {30, true, false, 0, false, false, QStringLiteral("08:00")});
        MotorFeines motor(b.db, b.cfg);
        RegistreMemoria log;
        QCOMPARE(Planificador(b.db, b.cfg, motor, log).Planificar_Feines(d(2009, 3, 1), d(2009, 3, 10)), QString());

        const QString esperat =
            "\r\nIniciant planificació periode: 01/03/2009 - 10/03/2009 ...\r\n"
            "\r\nFeina " + idFeina(b.db, "Botiga", d(2009, 3, 2)) + ": ANNA  -  'Botiga' planificada el dilluns 02/03/2009 a les 08:30. "
            "\r\nFeina " + idFeina(b.db, "Botiga", d(2009, 3, 9)) + ": ANNA  -  'Botiga' planificada el dilluns 09/03/2009 a les 08:30. "
            "\r\nERROR en planificació de feina: 'L'Estel' el dilluns 02/03/2009 a les 19:45.\r\n"
            "L'hora final de la feina supera les 20:00h."
            "\r\nFeina " + idFeina(b.db, "Oficina", d(2009, 3, 2)) + ": <no assignada>  -  'Oficina' planificada el dilluns 02/03/2009 a les 08:00. "
            "\r\n\r\n3 feines planificades.\r\n"
            "\r\n\r\nFINALITZACIO CORRECTA!!!\r\n";
        QCOMPARE(log.text, esperat);
        QCOMPARE(log.ocupacions, QList<bool>({true, false}));
        QCOMPARE(dades_prova::files(b.db, QStringLiteral("SELECT feines_hora_fi, recursos_nom FROM Feines WHERE llocs_nom = 'Oficina'")),
                 QStringList({"09:00|NULL"}));
    }

    // A run-time error stops the run: its text comes back, the log closes with the error line,
    // and everything stored before it stays, including the jobs of the place in hand.
    void runTimeErrors()
    {
        BaseProva b;
        tresLlocs(b.db);
        MotorFeines motor(b.db, b.cfg);
        RegistreQueFalla log(QStringLiteral("'B'"), 2);
        Planificador p(b.db, b.cfg, motor, log);
        QCOMPARE(p.Planificar_Feines(d(2009, 3, 1), d(2009, 3, 31)), QStringLiteral("Error en Planificar_Feines:finestra tancada"));
        QVERIFY(log.text.endsWith(QStringLiteral("\r\n\r\nFINALITZACIO AMB ERRORS!!!\r\n")));
        QVERIFY(!log.text.contains(QStringLiteral("feines planificades")));
        QCOMPARE(b.db.transactionDepth(), 0);
        // What the log showed is stored, seen from another connection too.
        Db altra;
        altra.open(b.fitxer());
        QCOMPARE(dates(altra, QStringLiteral("A")).size(), 5);
        QCOMPARE(dates(altra, QStringLiteral("B")), QStringList({"2009-03-01", "2009-03-08"}));
        QVERIFY(dates(altra, QStringLiteral("C")).isEmpty());
        altra.close();
    }

    // The trigger: a day up to the last planned day asks nothing; No changes nothing; Yes plans
    // the days in between and moves the last planned day forward, in memory and in the file,
    // even when the run stops on an error; a settings file that cannot be written is reported.
    void trigger()
    {
        DirectoriProva dir;
        dir.posaParametre(QStringLiteral("UltimDiaGen"), QStringLiteral("28/02/2009"), QStringLiteral("Estat"));
        auto s = dir.obreSessio();
        dades_prova::lloc(s->db(), QStringLiteral("Diari"), 30);
        posaRitme(s->db(), QStringLiteral("Diari"), {1, false, false, 0, true, true, QStringLiteral("08:00")});
        MotorFeines motor(s->db(), s->cfg());
        RegistreQueFalla log(QStringLiteral("13/03/2009"), 1);
        Planificador p(s->db(), s->cfg(), motor, log);
        const auto ultim = [&] { return LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""); };

        InteraccioGuio ui;
        ui.respostes = {true};
        QVERIFY(!Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 2, 28)));
        QVERIFY(ui.crides.isEmpty());

        ui.respostes = {false};
        QVERIFY(!Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 3, 10)));
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides[0].text, QStringLiteral("Vols generar les feines des del 01/03/2009 fins al 10/03/2009 ?"));
        QCOMPARE(s->cfg().UltimDiaGen, d(2009, 2, 28));
        QCOMPARE(totalFeines(s->db()), qint64(0));

        // Yes plans from the day after the last planned one; the run stops on the 13th, is
        // reported, and the day moves all the same.
        ui.crides.clear();
        ui.respostes = {true};
        QString resultat;
        QVERIFY(Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 3, 14), &resultat));
        QCOMPARE(resultat, QStringLiteral("Error en Planificar_Feines:finestra tancada"));
        QVERIFY(ui.crides.size() == 2 && ui.crides[1].tipus == QStringLiteral("error") && ui.crides[1].text == resultat);
        QCOMPARE(dates(s->db(), QStringLiteral("Diari")).size(), 13);
        QCOMPARE(dates(s->db(), QStringLiteral("Diari")).first(), QStringLiteral("2009-03-01"));
        QCOMPARE(s->cfg().UltimDiaGen, d(2009, 3, 14));
        QCOMPARE(ultim(), QStringLiteral("14/03/2009"));

        // The settings file cannot be replaced: the day still moves in memory, and the user hears.
        s->cfg().fitxerIni = dir.path() + QStringLiteral("/no/such/folder/Quadrella.ini");
        ui.crides.clear();
        ui.respostes = {true};
        QVERIFY(Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 3, 15), &resultat));
        QCOMPARE(resultat, QString());
        QVERIFY(ui.crides.size() == 2 && ui.crides[1].text == QStringLiteral("Error al gravar .ini"));
        QCOMPARE(s->cfg().UltimDiaGen, d(2009, 3, 15));
        QCOMPARE(ultim(), QStringLiteral("14/03/2009"));
    }
};

QTEST_GUILESS_MAIN(TestPlanificacio)
#include "tst_planificacio.moc"
