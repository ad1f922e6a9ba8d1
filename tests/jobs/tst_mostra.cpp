// The sample data of a first run: the master rows in their order, quantities rounded half to even
// after the subtraction, a week of jobs through the job engine, the settings
// read again from the file, and nothing at all once a master table holds a row.
#include "core/formats.h"
#include "jobs/dades_mostra.h"
#include "support/entorn_proves.h"

#include <QtTest>

using namespace dades_prova;

namespace {

QString iso(const QDate &d)
{
    return d.toString(Qt::ISODate);
}

} // namespace

class TestMostra : public QObject {
    Q_OBJECT

private slots:
    void masterRowsAndAWeekOfJobs()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        QVERIFY(afegeixDadesMostra(*s));
        Db &db = s->db();

        // The master rows themselves are data, not rules: how many, and the team made of the two workers.
        QCOMPARE(files(db, "SELECT (SELECT COUNT(*) FROM Recursos) || (SELECT COUNT(*) FROM Serveis) || (SELECT COUNT(*) FROM Clients)"
                           " || (SELECT COUNT(*) FROM Llocs) || (SELECT COUNT(*) FROM Llocs_Serveis)"),
                 QStringList{"32234"});

        // Seven days back from the last planned day; the stairs every other day, the house once.
        const QDate u = s->cfg().UltimDiaGen;
        QStringList esperades;
        for (int d = 0; d <= 6; ++d) {
            const QString dia = iso(u.addDays(-d));
            esperades << QStringLiteral("Exemple oficina|%1|00:30|02:30|Marta i Oriol").arg(dia);
            if (d % 2 == 0)
                esperades << QStringLiteral("Exemple escala|%1|02:30|03:00|Marta").arg(dia);
            if (d == 3)
                esperades << QStringLiteral("Particular casa|%1|03:00|04:00|Oriol").arg(dia);
        }
        QCOMPARE(files(db, "SELECT llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom FROM Feines ORDER BY feines_id"),
                 esperades);
        // Each job carries its place's services.
        QCOMPARE(valor(db, "SELECT COUNT(*) FROM Feines_Detall"), 7 * 2 + 4 + 1);

    }

    void quantitiesFollowTheCell_data()
    {
        QTest::addColumn<int>("cella");
        QTest::addColumn<QStringList>("quantitats");
        // 0.245 is a half: it goes to the even cent, 0.24.
        QTest::newRow("15") << 15 << QStringList{"1.5", "5", "0.24", "0.5"};
    }

    void quantitiesFollowTheCell()
    {
        QFETCH(int, cella);
        QFETCH(QStringList, quantitats);
        DirectoriProva dir;
        auto s = dir.obreSessio();
        // Written after the session started, as the configuration dialog of a first run does.
        dir.posaParametre("MinutsCella", QString::number(cella));
        dir.posaParametre("HoraInici", "08:00");
        QVERIFY(afegeixDadesMostra(*s));
        QCOMPARE(s->cfg().MinutsCella, cella);
        QCOMPARE(files(s->db(), "SELECT llocs_serveis_quantitat FROM Llocs_Serveis ORDER BY rowid"), quantitats);
        QCOMPARE(files(s->db(), "SELECT llocs_minuts_previst FROM Llocs ORDER BY rowid"),
                 QStringList({QString::number(4 * cella), QString::number(cella), QString::number(2 * cella)}));
        // Starts count cells from the day's start.
        QCOMPARE(files(s->db(), "SELECT DISTINCT feines_hora_inici || '-' || feines_hora_fi FROM Feines WHERE llocs_nom = 'Exemple escala'"),
                 QStringList{hora::text(8 * 60 + 5 * cella) + "-" + hora::text(8 * 60 + 6 * cella)});
    }

    // Nothing at all (nothing written, nothing read again) once Recursos, Serveis or Clients
    // holds a row; a place alone does not count.
    void nothingWhenAMasterTableHasARow_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<bool>("afegeix");
        QTest::newRow("Recursos") << "INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps) VALUES ('Pau', 0, 1, 1)" << false;
        QTest::newRow("Llocs does not count") << "INSERT INTO Llocs (llocs_nom, llocs_minuts_previst) VALUES ('Un lloc', 30)" << true;
    }

    void nothingWhenAMasterTableHasARow()
    {
        QFETCH(QString, sql);
        QFETCH(bool, afegeix);
        DirectoriProva dir;
        auto s = dir.obreSessio();
        Db &db = s->db();
        db.exec(sql);
        dir.posaParametre("Idioma", "ES");
        QCOMPARE(afegeixDadesMostra(*s), afegeix);
        const qint64 total = valor(db, "SELECT (SELECT COUNT(*) FROM Recursos) + (SELECT COUNT(*) FROM Serveis)"
                                       " + (SELECT COUNT(*) FROM Clients) + (SELECT COUNT(*) FROM Llocs) + (SELECT COUNT(*) FROM Feines)");
        QCOMPARE(total, afegeix ? 3 + 2 + 2 + 4 + 12 : 1);
        QCOMPARE(s->traductor().idioma(), QString::fromLatin1(afegeix ? "ES" : "CT"));
    }
};

QTEST_GUILESS_MAIN(TestMostra)
#include "tst_mostra.moc"
