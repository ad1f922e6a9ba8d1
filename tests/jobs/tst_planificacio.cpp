// Periodic planning against a real database: the jobs each rhythm stores, what a second run over
// the same period does, busy workers, refusals and run-time failures, the log line by line, and
// the agenda's trigger with its last planned day.
#include "core/formats.h"
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

// "yyyy-mm-dd hh:mm-hh:mm RESOURCE" for every job of a place, by date.
QStringList feines(Db &db, const QString &lloc)
{
    Query q = db.query(QStringLiteral("SELECT feines_data, feines_hora_inici, feines_hora_fi, recursos_nom FROM Feines "
                                      "WHERE llocs_nom = ? ORDER BY feines_data, feines_id"));
    q.bind(lloc).exec();
    QStringList out;
    while (q.next()) {
        QString fila = q.text(0) + QLatin1Char(' ') + q.text(1) + QLatin1Char('-') + q.text(2);
        if (!q.isNull(QStringLiteral("recursos_nom")))
            fila += QLatin1Char(' ') + q.text(3);
        out << fila;
    }
    return out;
}

QList<QDate> datesFeines(Db &db, const QString &lloc)
{
    Query q = db.query(QStringLiteral("SELECT feines_data FROM Feines WHERE llocs_nom = ? ORDER BY feines_data"));
    q.bind(lloc).exec();
    QList<QDate> out;
    while (q.next())
        out << q.date(0);
    return out;
}

int idFeina(Db &db, const QString &lloc, const QDate &dia)
{
    return static_cast<int>(dades_prova::valor(
        db, QStringLiteral("SELECT feines_id FROM Feines WHERE llocs_nom = ? AND feines_data = ?"),
        {lloc, dia.toString(Qt::ISODate)}));
}

qint64 totalFeines(Db &db)
{
    return dades_prova::valor(db, QStringLiteral("SELECT COUNT(*) FROM Feines"));
}

// A log sink that fails once, like a message window that goes away, when it is handed a line
// containing `clau` for the n-th time.
class RegistreQueFalla : public RegistreMemoria {
public:
    RegistreQueFalla(QString clau, int vegada) : m_clau(std::move(clau)), m_vegada(vegada) {}
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

// A log sink that lets a test look around each time a piece of the log arrives.
class RegistreAmbAccio : public RegistreMemoria {
public:
    explicit RegistreAmbAccio(std::function<void(const QString &)> accio) : m_accio(std::move(accio)) {}
    void afegeix(const QString &t) override
    {
        RegistreMemoria::afegeix(t);
        m_accio(t);
    }

private:
    std::function<void(const QString &)> m_accio;
};

const QString kCrLf = QStringLiteral("\r\n");

} // namespace

class TestPlanificacio : public QObject {
    Q_OBJECT

private slots:

    // The every-N-days rule continues from the place's latest job, whatever order the jobs were
    // stored in, or starts on the period's first day (the calendar itself is the rules' test).
    void everyNPlaces()
    {
        BaseProva b;
        dades_prova::servei(b.db, QStringLiteral("Neteja"), 60, false, 6.25);
        dades_prova::lloc(b.db, QStringLiteral("Setmanal"), 30);
        dades_prova::llocServei(b.db, QStringLiteral("Setmanal"), QStringLiteral("Neteja"), 0.5, 6.25);
        dades_prova::lloc(b.db, QStringLiteral("Nou"), 30);
        posaRitme(b.db, QStringLiteral("Setmanal"), {7, false, false, 0, false, false, QStringLiteral("10:00")});
        posaRitme(b.db, QStringLiteral("Nou"), {10, false, false, 0, true, true, QStringLiteral("10:00")});
        dades_prova::feina(b.db, QStringLiteral("Setmanal"), d(2009, 2, 20), "10:00", "10:30");
        dades_prova::feina(b.db, QStringLiteral("Setmanal"), d(2009, 2, 27), "12:00", "12:30"); // the latest
        dades_prova::feina(b.db, QStringLiteral("Setmanal"), d(2009, 2, 13), "10:00", "10:30");

        MotorFeines motor(b.db, b.cfg);
        RegistreMemoria log;
        Planificador p(b.db, b.cfg, motor, log);
        QCOMPARE(p.Planificar_Feines(d(2009, 3, 5), d(2009, 3, 31)), QString());

        QCOMPARE(datesFeines(b.db, QStringLiteral("Setmanal")),
                 QList<QDate>({d(2009, 2, 13), d(2009, 2, 20), d(2009, 2, 27), d(2009, 3, 6), d(2009, 3, 13),
                               d(2009, 3, 20), d(2009, 3, 27)}));
        QCOMPARE(datesFeines(b.db, QStringLiteral("Nou")), QList<QDate>({d(2009, 3, 5), d(2009, 3, 15), d(2009, 3, 25)}));
        // Each planned job has the place's service lines.
        const int id = idFeina(b.db, QStringLiteral("Setmanal"), d(2009, 3, 6));
        QCOMPARE(dades_prova::valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Feines_Detall WHERE feines_id = ?"), {id}),
                 qint64(1));
    }

    // A second run over the same period adds nothing for every-N places. Monthly places have no
    // memory: the place-collision check refuses them (logged), or they are stored again when
    // places may overlap.
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
        const QStringList cada2 = feines(b.db, QStringLiteral("Cada2"));
        QVERIFY(cada2.size() > 20);
        QCOMPARE(feines(b.db, QStringLiteral("Mensual")).size(), 2);
        const qint64 total = totalFeines(b.db);

        RegistreMemoria segon;
        Planificador p(b.db, b.cfg, motor, segon);
        QCOMPARE(p.Planificar_Feines(d(2009, 3, 1), d(2009, 4, 30)), QString());
        QCOMPARE(totalFeines(b.db), total);
        QCOMPARE(p.feinesPlanificades(), 0);
        QCOMPARE(segon.text.count(QStringLiteral("Solapament de llocs a MENSUAL")), 2);
        QVERIFY(segon.text.contains(kCrLf + kCrLf + QStringLiteral("0 feines planificades.") + kCrLf));
        QVERIFY(!segon.text.contains(QStringLiteral("'Cada2'")));

        b.cfg.PermetSolaparLlocs = true;
        RegistreMemoria tercer;
        QCOMPARE(Planificador(b.db, b.cfg, motor, tercer).Planificar_Feines(d(2009, 3, 1), d(2009, 4, 30)), QString());
        QCOMPARE(feines(b.db, QStringLiteral("Mensual")).size(), 4);
        QCOMPARE(feines(b.db, QStringLiteral("Cada2")), cada2);
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
        Planificador p(b.db, b.cfg, motor, log);
        QCOMPARE(p.Planificar_Feines(d(2009, 3, 1), d(2009, 3, 10)), QString());

        const QString botiga1 = QString::number(idFeina(b.db, QStringLiteral("Botiga"), d(2009, 3, 2)));
        const QString botiga2 = QString::number(idFeina(b.db, QStringLiteral("Botiga"), d(2009, 3, 9)));
        const QString oficina = QString::number(idFeina(b.db, QStringLiteral("Oficina"), d(2009, 3, 2)));
        const QString esperat =
            "\r\nIniciant planificació periode: 01/03/2009 - 10/03/2009 ...\r\n"
            "\r\nFeina " + botiga1 + ": ANNA  -  'Botiga' planificada el dilluns 02/03/2009 a les 08:30. "
            "\r\nFeina " + botiga2 + ": ANNA  -  'Botiga' planificada el dilluns 09/03/2009 a les 08:30. "
            "\r\nERROR en planificació de feina: 'L'Estel' el dilluns 02/03/2009 a les 19:45.\r\n"
            "L'hora final de la feina supera les 20:00h."
            "\r\nFeina " + oficina + ": <no assignada>  -  'Oficina' planificada el dilluns 02/03/2009 a les 08:00. "
            "\r\n\r\n3 feines planificades.\r\n"
            "\r\n\r\nFINALITZACIO CORRECTA!!!\r\n";
        QCOMPARE(log.text, esperat);
        QCOMPARE(log.titols, QStringList({"PLANIFICACIO DE FEINES"}));
        QCOMPARE(log.ocupacions, QList<bool>({true, false}));
        // The busy worker left the job unassigned in the database too.
        QCOMPARE(feines(b.db, QStringLiteral("Oficina")), QStringList({"2009-03-02 08:00-09:00"}));
        QCOMPARE(feines(b.db, QStringLiteral("L'Estel")), QStringList());
    }

    // A run-time error stops the run: its text comes back, the log closes with the error line,
    // and everything stored before it stays, including the jobs of the place in hand.
    void runTimeErrors_data()
    {
        QTest::addColumn<int>("perTransaccio");
        QTest::newRow("a commit after every place") << 1;
        QTest::newRow("several places a commit") << Planificador::kFeinesPerTransaccio;
    }

    void runTimeErrors()
    {
        QFETCH(int, perTransaccio);
        BaseProva b;
        dades_prova::lloc(b.db, QStringLiteral("A"), 30);
        dades_prova::lloc(b.db, QStringLiteral("B"), 30);
        dades_prova::lloc(b.db, QStringLiteral("C"), 30);
        for (const char *lloc : {"A", "B", "C"})
            posaRitme(b.db, QString::fromLatin1(lloc), {7, false, false, 0, true, true, QStringLiteral("10:00")});
        MotorFeines motor(b.db, b.cfg);

        RegistreQueFalla log(QStringLiteral("'B'"), 2);
        Planificador p(b.db, b.cfg, motor, log);
        p.setFeinesPerTransaccio(perTransaccio);
        QCOMPARE(p.Planificar_Feines(d(2009, 3, 1), d(2009, 3, 31)),
                 QStringLiteral("Error en Planificar_Feines:finestra tancada"));
        QVERIFY(log.text.endsWith(QStringLiteral("\r\n\r\nFINALITZACIO AMB ERRORS!!!\r\n")));
        QVERIFY(!log.text.contains(QStringLiteral("FINALITZACIO CORRECTA")));
        QVERIFY(!log.text.contains(QStringLiteral("feines planificades")));
        QCOMPARE(log.ocupacions, QList<bool>({true, false}));
        QCOMPARE(b.db.transactionDepth(), 0);
        // What the log showed is stored, seen from another connection too.
        Db altra;
        altra.open(b.fitxer());
        QCOMPARE(datesFeines(altra, QStringLiteral("A")).size(), 5);
        QCOMPARE(datesFeines(altra, QStringLiteral("B")), QList<QDate>({d(2009, 3, 1), d(2009, 3, 8)}));
        QVERIFY(datesFeines(altra, QStringLiteral("C")).isEmpty());
        altra.close();

        // A database failure of the planning's own reading ends the same way.
        b.db.exec(QStringLiteral("DROP TABLE Llocs"));
        RegistreMemoria log2;
        const QString res = Planificador(b.db, b.cfg, motor, log2).Planificar_Feines(d(2009, 4, 1), d(2009, 4, 30));
        QVERIFY2(res.startsWith(QStringLiteral("Error en Planificar_Feines:")) && res.contains(QStringLiteral("Llocs")),
                 qPrintable(res));
        QCOMPARE(log2.text, QStringLiteral("\r\nIniciant planificació periode: 01/04/2009 - 30/04/2009 ...\r\n"
                                           "\r\n\r\nFINALITZACIO AMB ERRORS!!!\r\n"));
    }

    // Work is committed place by place as the run goes on: another connection sees a finished
    // place while later places are being planned, unless the unit holds several places.
    void unitOfWork()
    {
        for (const int perTransaccio : {1, 6, Planificador::kFeinesPerTransaccio}) {
            BaseProva b;
            for (const char *lloc : {"A", "B", "C"}) {
                dades_prova::lloc(b.db, QString::fromLatin1(lloc), 30);
                posaRitme(b.db, QString::fromLatin1(lloc), {7, false, false, 0, true, true, QStringLiteral("10:00")});
            }
            MotorFeines motor(b.db, b.cfg);
            Db altra;
            altra.open(b.fitxer());
            QList<qint64> vistes; // jobs the other connection sees when each place starts
            RegistreAmbAccio log([&](const QString &t) {
                if (t.contains(QStringLiteral("01/03/2009")) && t.startsWith(QStringLiteral("\r\nFeina ")))
                    vistes << totalFeines(altra);
            });
            Planificador p(b.db, b.cfg, motor, log);
            p.setFeinesPerTransaccio(perTransaccio);
            QCOMPARE(p.Planificar_Feines(d(2009, 3, 1), d(2009, 3, 31)), QString());
            QCOMPARE(totalFeines(altra), qint64(15));
            if (perTransaccio == 1)
                QCOMPARE(vistes, QList<qint64>({0, 5, 10}));
            else if (perTransaccio == 6) // A and B (10 jobs) make the first unit
                QCOMPARE(vistes, QList<qint64>({0, 0, 10}));
            else
                QCOMPARE(vistes, QList<qint64>({0, 0, 0}));
        }
    }

    // The trigger: a day up to the last planned day asks nothing; No changes nothing; Yes plans
    // the days in between and moves the last planned day forward, in memory and in the file.
    void trigger()
    {
        DirectoriProva dir;
        dir.posaParametre(QStringLiteral("UltimDiaGen"), QStringLiteral("28/02/2009"), QStringLiteral("Estat"));
        auto s = dir.obreSessio();
        QCOMPARE(s->cfg().UltimDiaGen, d(2009, 2, 28));
        dades_prova::lloc(s->db(), QStringLiteral("Diari"), 30);
        posaRitme(s->db(), QStringLiteral("Diari"), {1, false, false, 0, true, true, QStringLiteral("08:00")});
        MotorFeines motor(s->db(), s->cfg());
        RegistreMemoria log;
        Planificador p(s->db(), s->cfg(), motor, log);

        InteraccioGuio ui;
        ui.respostes = {true};
        QVERIFY(!Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 2, 28)));
        QVERIFY(!Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 2, 1)));
        QVERIFY(ui.crides.isEmpty());

        ui.respostes = {false};
        QVERIFY(!Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 3, 10)));
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides[0].tipus, QStringLiteral("pregunta"));
        QCOMPARE(ui.crides[0].titol, QStringLiteral("GENERACIO DE FEINES PLANIFICADES"));
        QCOMPARE(ui.crides[0].text, QStringLiteral("Vols generar les feines des del 01/03/2009 fins al 10/03/2009 ?"));
        QCOMPARE(s->cfg().UltimDiaGen, d(2009, 2, 28));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QStringLiteral("28/02/2009"));
        QCOMPARE(totalFeines(s->db()), qint64(0));
        QVERIFY(log.text.isEmpty());

        ui.crides.clear();
        ui.respostes = {true};
        QString resultat = QStringLiteral("x");
        QVERIFY(Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 3, 10), &resultat));
        QCOMPARE(resultat, QString());
        QCOMPARE(ui.crides.size(), 1); // the question only: nothing to report
        QCOMPARE(datesFeines(s->db(), QStringLiteral("Diari")).first(), d(2009, 3, 1));
        QCOMPARE(datesFeines(s->db(), QStringLiteral("Diari")).last(), d(2009, 3, 10));
        QCOMPARE(totalFeines(s->db()), qint64(10));
        QCOMPARE(s->cfg().UltimDiaGen, d(2009, 3, 10));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QStringLiteral("10/03/2009"));
        QCOMPARE(Configuracio::carrega(dir.path()).UltimDiaGen, d(2009, 3, 10));

        // The next click continues the day after.
        ui.crides.clear();
        ui.respostes = {true};
        QVERIFY(Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 3, 12)));
        QCOMPARE(ui.crides[0].text, QStringLiteral("Vols generar les feines des del 11/03/2009 fins al 12/03/2009 ?"));
        QCOMPARE(totalFeines(s->db()), qint64(12));
    }

    // A run that stops on an error is reported, and the last planned day still moves; a settings
    // file that cannot be written is reported as such.
    void triggerFailures()
    {
        DirectoriProva dir;
        dir.posaParametre(QStringLiteral("UltimDiaGen"), QStringLiteral("28/02/2009"), QStringLiteral("Estat"));
        auto s = dir.obreSessio();
        dades_prova::lloc(s->db(), QStringLiteral("A"), 30);
        dades_prova::lloc(s->db(), QStringLiteral("B"), 30);
        for (const char *lloc : {"A", "B"})
            posaRitme(s->db(), QString::fromLatin1(lloc), {1, false, false, 0, true, true, QStringLiteral("08:00")});
        MotorFeines motor(s->db(), s->cfg());

        RegistreQueFalla log(QStringLiteral("'B'"), 1);
        Planificador p(s->db(), s->cfg(), motor, log);
        InteraccioGuio ui;
        ui.respostes = {true};
        QString resultat;
        QVERIFY(Genera_Feines_Planificades(p, s->cfg(), ui, d(2009, 3, 5), &resultat));
        QCOMPARE(resultat, QStringLiteral("Error en Planificar_Feines:finestra tancada"));
        QCOMPARE(ui.crides.size(), 2);
        QCOMPARE(ui.crides[1].tipus, QStringLiteral("error"));
        QCOMPARE(ui.crides[1].text, resultat);
        QCOMPARE(datesFeines(s->db(), QStringLiteral("A")).size(), 5);
        QCOMPARE(s->cfg().UltimDiaGen, d(2009, 3, 5));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QStringLiteral("05/03/2009"));

        // The settings file cannot be replaced: the day still moves in memory, and the user hears.
        RegistreMemoria log2;
        Planificador p2(s->db(), s->cfg(), motor, log2);
        s->cfg().fitxerIni = dir.path() + QStringLiteral("/no/such/folder/Quadrella.ini");
        ui.crides.clear();
        ui.respostes = {true};
        QVERIFY(Genera_Feines_Planificades(p2, s->cfg(), ui, d(2009, 3, 6), &resultat));
        QCOMPARE(resultat, QString());
        QCOMPARE(ui.crides.size(), 2);
        QCOMPARE(ui.crides[1].tipus, QStringLiteral("error"));
        QCOMPARE(ui.crides[1].titol, QStringLiteral("ERROR"));
        QCOMPARE(ui.crides[1].text, QStringLiteral("Error al gravar .ini"));
        QCOMPARE(s->cfg().UltimDiaGen, d(2009, 3, 6));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QStringLiteral("05/03/2009"));
    }
};

QTEST_GUILESS_MAIN(TestPlanificacio)
#include "tst_planificacio.moc"
