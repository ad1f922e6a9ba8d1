// Creating jobs: the order of the checks, the overlap predicate at the place and for the resource
// (directly, through a group, through a group's members), strict and non-strict mode, the day
// limit, the services copied into the job and the record handed back.
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QtTest>

using namespace dades_prova;

namespace {

const QDate kDia(2024, 5, 14);

// Workers Marta and Oriol (both take a share) and their team.
void equip(Db &db)
{
    recurs(db, QStringLiteral("Marta"), 65535, true);
    recurs(db, QStringLiteral("Oriol"), 16711680, true);
    grup(db, QStringLiteral("Marta i Oriol"), 65280, {QStringLiteral("Marta"), QStringLiteral("Oriol")});
}

Feina nova(const QString &lloc, const QString &inici, const QString &recurs = QString(), const QDate &dia = kDia)
{
    Feina f;
    f.llocs_nom = lloc;
    f.feines_data = dia;
    f.feines_hora_inici = inici;
    f.recursos_nom = recurs;
    return f;
}

qint64 feines(Db &db)
{
    return valor(db, QStringLiteral("SELECT COUNT(*) FROM Feines"));
}

// Each operation's answer: the message it leaves in the record ("" when done).
QString grava(MotorFeines &m, Feina &f, bool estricte)
{
    m.Grava_Feina(f, estricte);
    return f.missatge;
}

} // namespace

class TestFeinesGrava : public QObject {
    Q_OBJECT

private slots:
    // An existing job 09:00-10:00 at the place and a new one starting at `inici` lasting `minuts`.
    void placeOverlap_data()
    {
        QTest::addColumn<QString>("inici");
        QTest::addColumn<int>("minuts");
        QTest::addColumn<bool>("solapa");
        QTest::newRow("ends as the other starts") << "08:00" << 60 << false;
        QTest::newRow("starts as the other ends") << "10:00" << 60 << false;
        QTest::newRow("start inside") << "09:30" << 60 << true;
        QTest::newRow("end inside") << "08:30" << 60 << true;
        QTest::newRow("encloses it") << "08:30" << 120 << true;
    }

    void placeOverlap()
    {
        QFETCH(QString, inici);
        QFETCH(int, minuts);
        QFETCH(bool, solapa);
        BaseProva b;
        b.cfg.PermetSolaparLlocs = false;
        lloc(b.db, QStringLiteral("Àtic Gran"), minuts);
        feina(b.db, QStringLiteral("Àtic Gran"), kDia, QStringLiteral("09:00"), QStringLiteral("10:00"));
        // The same hours on another day and at another place never collide.
        feina(b.db, QStringLiteral("Àtic Gran"), kDia.addDays(1), QStringLiteral("00:00"), QStringLiteral("24:00"));
        feina(b.db, QStringLiteral("Soterrani"), kDia, QStringLiteral("00:00"), QStringLiteral("24:00"));
        MotorFeines m(b.db, b.cfg);

        Feina f = nova(QStringLiteral("àtic gran"), inici);
        QCOMPARE(grava(m, f, true), solapa ? QStringLiteral("Solapament de llocs a ÀTIC GRAN") : QString());
        QCOMPARE(feines(b.db), solapa ? 3 : 4);
    }

    // The resource check, directly, through a team or through a team's member, whatever the
    // case, accents and quotes of the names; strict creation refuses (the planning's tests show
    // the job stored unassigned otherwise). Places may be shared: the place never refuses here.
    void resourceOverlap_data()
    {
        QTest::addColumn<QString>("ocupat");   // who already works 09:00-10:00 at the place
        QTest::addColumn<QString>("inici");    // the new job's start (it lasts an hour)
        QTest::addColumn<QString>("demanat");  // who the new job asks for
        QTest::addColumn<QString>("missatge"); // strict refusal ("" = stored)
        QTest::newRow("worker busy") << "Àngels" << "09:30" << "ÀNGELS" << "Solapament de recursos: ÀNGELS";
        QTest::newRow("worker free when the other ends") << "Àngels" << "10:00" << "Àngels" << "";
        QTest::newRow("worker busy through the team") << "L'equip" << "08:30" << "n'oriol" << "Solapament de recursos: n'oriol";
        QTest::newRow("team busy through a member") << "N'Oriol" << "09:30" << "L'equip" << "Solapament de recursos: N'Oriol";
        QTest::newRow("outsider's job does not block the team") << "Pau" << "09:30" << "L'equip" << "";
    }

    void resourceOverlap()
    {
        QFETCH(QString, ocupat);
        QFETCH(QString, inici);
        QFETCH(QString, demanat);
        QFETCH(QString, missatge);
        BaseProva b;
        recurs(b.db, QStringLiteral("Àngels"), 1, true);
        recurs(b.db, QStringLiteral("N'Oriol"), 2, true);
        recurs(b.db, QStringLiteral("Pau"), 3, true);
        grup(b.db, QStringLiteral("L'equip"), 4, {QStringLiteral("Àngels"), QStringLiteral("N'Oriol")});
        lloc(b.db, QStringLiteral("Oficina"), 60);
        feina(b.db, QStringLiteral("Oficina"), kDia, QStringLiteral("09:00"), QStringLiteral("10:00"), ocupat);
        // The same people all day before: another day never collides.
        for (const QString &r : {QStringLiteral("Àngels"), QStringLiteral("N'Oriol"), QStringLiteral("L'equip")})
            feina(b.db, QStringLiteral("Escala"), kDia.addDays(-1), QStringLiteral("00:00"), QStringLiteral("24:00"), r);
        MotorFeines m(b.db, b.cfg);

        Feina f = nova(QStringLiteral("Oficina"), inici, demanat);
        QCOMPARE(grava(m, f, true), missatge);
        QCOMPARE(feines(b.db), missatge.isEmpty() ? 5 : 4);
    }

    void orderOfRefusals()
    {
        BaseProva b;
        equip(b.db);
        b.cfg.PermetSolaparLlocs = false;
        b.cfg.HoraFinal = QStringLiteral("20:00");
        lloc(b.db, QStringLiteral("Oficina"), 120, QStringLiteral("Ningú"));
        feina(b.db, QStringLiteral("Oficina"), kDia, QStringLiteral("18:00"), QStringLiteral("20:00"), QStringLiteral("Marta"));
        MotorFeines m(b.db, b.cfg);

        // A start that is not a time of day is a failure of the operation.
        Feina f = nova(QStringLiteral("Oficina"), QStringLiteral("9h"));
        QVERIFY(grava(m, f, true).startsWith(QStringLiteral("Error en Grava_Feina:")));
        // A missing place is the first thing refused.
        f = nova(QStringLiteral("Golf"), QStringLiteral("19:00"), QStringLiteral("Marta"));
        QCOMPARE(grava(m, f, true), QStringLiteral("Lloc 'Golf' inexistent"));
        // The day limit comes before any collision (place and resource both collide here), and
        // before the unknown default resource.
        f = nova(QStringLiteral("Oficina"), QStringLiteral("19:00"));
        QCOMPARE(grava(m, f, true), QStringLiteral("L'hora final de la feina supera les 20:00h."));
        // Ending exactly at the limit is allowed; then the place collision is next.
        f = nova(QStringLiteral("Oficina"), QStringLiteral("18:00"), QStringLiteral("Marta"));
        QCOMPARE(grava(m, f, true), QStringLiteral("Solapament de llocs a OFICINA"));
        // Then the resource: the place's default, which does not exist.
        f = nova(QStringLiteral("Oficina"), QStringLiteral("10:00"));
        QCOMPARE(grava(m, f, false), QStringLiteral("Recurs no trobat:Ningú"));
        QCOMPARE(feines(b.db), 1);
    }

    // A job that would run past midnight ends at 24:00, and still blocks the place until then.
    void endAtMidnight()
    {
        BaseProva b;
        lloc(b.db, QStringLiteral("Nit"), 60);
        MotorFeines m(b.db, b.cfg);
        Feina f = nova(QStringLiteral("Nit"), QStringLiteral("23:30"));
        QCOMPARE(grava(m, f, true), QString());
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Feines WHERE feines_hora_fi = '24:00'")), 1);
        b.cfg.PermetSolaparLlocs = false;
        f = nova(QStringLiteral("Nit"), QStringLiteral("23:45"));
        QCOMPARE(grava(m, f, true), QStringLiteral("Solapament de llocs a NIT"));
    }

    void storedJobAndRecord()
    {
        BaseProva b;
        equip(b.db);
        servei(b.db, QStringLiteral("Neteja"), 60, false, 6.25, QStringLiteral("Hores"), QStringLiteral("Servei de neteja"));
        servei(b.db, QStringLiteral("Desplaçaments"), 3, true, 0.19, QStringLiteral("Kms"), QStringLiteral("Distància"));
        servei(b.db, QStringLiteral("Vidres"), 30, false, 9);
        lloc(b.db, QStringLiteral("L'Estel"), 90, QStringLiteral("Marta i Oriol"));
        llocServei(b.db, QStringLiteral("L'Estel"), QStringLiteral("Neteja"), 3, 7.5, QStringLiteral("Neteja de l'Estel"));
        llocServei(b.db, QStringLiteral("L'Estel"), QStringLiteral("Desplaçaments"), 10, 0.2);
        llocServei(b.db, QStringLiteral("Altre"), QStringLiteral("Vidres"), 1, 9);
        MotorFeines m(b.db, b.cfg);

        // The job's row goes in, then copying its service lines fails: nothing half-done is left
        // behind, not even the counter.
        b.db.exec(QStringLiteral("CREATE TRIGGER avaria BEFORE INSERT ON Feines_Detall BEGIN SELECT RAISE(ABORT, 'disc ple'); END"));
        Feina f = nova(QStringLiteral("L'Estel"), QStringLiteral("08:00"));
        QCOMPARE(grava(m, f, true), QStringLiteral("Error en Grava_Feina:disc ple"));
        QCOMPARE(feines(b.db), 0);
        QCOMPARE(b.db.transactionDepth(), 0);
        b.db.exec(QStringLiteral("DROP TRIGGER avaria"));

        f = nova(QStringLiteral("L'Estel"), QStringLiteral("08:00"));
        f.feines_hora_fi = QStringLiteral("23:00"); // ignored: the end comes from the place
        f.feines_feta = true;
        f.feines_observacions = QStringLiteral("vell");
        f.feines_data_factura = kDia;
        QCOMPARE(grava(m, f, false), QString());
        QCOMPARE(f.feines_id, 1);
        QCOMPARE(f.feines_hora_fi, QStringLiteral("09:30"));
        QCOMPARE(f.recursos_nom, QStringLiteral("Marta i Oriol")); // the place's default
        QVERIFY(!f.feines_feta && !f.feines_data_factura.isValid() && f.feines_observacions.isEmpty());

        QCOMPARE(files(b.db, QStringLiteral("SELECT llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom, feines_feta,"
                                            " feines_data_factura, feines_observacions FROM Feines WHERE feines_id = ?"), {f.feines_id}),
                 QStringList({"L'Estel|2024-05-14|08:00|09:30|Marta i Oriol|0|NULL|NULL"}));
        // The place's agreed price and wording travel with the job, the unit from the service.
        QCOMPARE(files(b.db, QStringLiteral("SELECT serveis_nom, feines_detall_quantitat, feines_detall_preu_un, feines_detall_unitat,"
                                            " feines_detall_descripcio FROM Feines_Detall WHERE feines_id = ? ORDER BY serveis_nom"), {f.feines_id}),
                 QStringList({"Desplaçaments|10|0.2|Kms|NULL", "Neteja|3|7.5|Hores|Neteja de l'Estel"}));
    }
};

QTEST_GUILESS_MAIN(TestFeinesGrava)
#include "tst_feines_grava.moc"
