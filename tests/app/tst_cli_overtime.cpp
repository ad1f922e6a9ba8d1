// `quadrella overtime` as a user runs it: the proposal from the worker's agenda column (own jobs
// and a group's), the stored hours, storing with --set (twice, zero, non-numbers), the JSON shape,
// the settings the proposal follows, and refusals and usage errors.
#include "support/entorn_proves.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

namespace {

struct Resultat {
    int codi;
    QString out;
    QString err;
    QJsonObject json() const { return QJsonDocument::fromJson(out.toUtf8()).object(); }
};

const QDate kDimecres(2024, 5, 15);
const QDate kDissabte(2024, 5, 18);

} // namespace

class TestCliOvertime : public QObject {
    Q_OBJECT

    std::unique_ptr<DirectoriProva> m_dir;

    Resultat run(QStringList args)
    {
        args << QStringLiteral("--data-dir") << m_dir->path();
        QProcess p;
        QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
        e.remove(QStringLiteral("QUADRELLA_DIR"));
        p.setProcessEnvironment(e);
        p.start(QStringLiteral(QUADRELLA_EXECUTABLE), QStringList{QStringLiteral("overtime")} + args);
        if (!p.waitForFinished(60000))
            qFatal("quadrella did not finish");
        return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
    }

    QJsonObject json(const QStringList &args)
    {
        const Resultat r = run(args + QStringList{QStringLiteral("--json")});
        if (r.codi != 0)
            qWarning("%s", qPrintable(r.err));
        return r.codi == 0 ? r.json() : QJsonObject();
    }

    int filesHores()
    {
        auto s = m_dir->obreSessio();
        return int(dades_prova::valor(s->db(), QStringLiteral("SELECT COUNT(*) FROM Hores_Fetes")));
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<DirectoriProva>();
        auto s = m_dir->obreSessio();
        Db &db = s->db();
        dades_prova::recurs(db, QStringLiteral("Marta"), 0x0000FF, true);
        dades_prova::recurs(db, QStringLiteral("Oriol"), 0x00FF00, true);
        dades_prova::grup(db, QStringLiteral("Marta i Oriol"), 0xFF0000, {QStringLiteral("Marta"), QStringLiteral("Oriol")});
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60);
        dades_prova::lloc(db, QStringLiteral("Escala"), 60);
        dades_prova::feina(db, QStringLiteral("Oficina"), kDimecres, QStringLiteral("08:00"), QStringLiteral("12:00"), QStringLiteral("Marta"));
        dades_prova::feina(db, QStringLiteral("Escala"), kDimecres, QStringLiteral("15:00"), QStringLiteral("19:30"), QStringLiteral("Marta"));
        dades_prova::feina(db, QStringLiteral("Oficina"), kDissabte, QStringLiteral("09:00"), QStringLiteral("11:00"),
                           QStringLiteral("Marta i Oriol"));
        dades_prova::feina(db, QStringLiteral("Escala"), kDissabte, QStringLiteral("12:00"), QStringLiteral("12:30"), QStringLiteral("Oriol"));
    }

    void proposesFromTheAgendaColumn()
    {
        QJsonObject o = json({"--resource", "marta", "--date", "15/05/2024"});
        QCOMPARE(o.keys(), (QStringList{"data", "hores", "proposta", "recursos_nom"}));
        QCOMPARE(o.value("recursos_nom").toString(), QStringLiteral("Marta"));
        QCOMPARE(o.value("data").toString(), QStringLiteral("2024-05-15"));
        QVERIFY(o.value("proposta").isDouble());
        QCOMPARE(o.value("proposta").toDouble(), 0.5); // 17 slots, 8,5 hours
        QVERIFY(o.value("hores").isDouble());
        QCOMPARE(o.value("hores").toDouble(), 0.0);

        // A Saturday counts every hour; the group's job counts in each member's column.
        QCOMPARE(json({"--resource", "Marta", "--date", "2024-05-18"}).value("proposta").toDouble(), 2.0);
        QCOMPARE(json({"--resource", "Oriol", "--date", "2024-05-18"}).value("proposta").toDouble(), 2.5);
        // No job that day: nothing to propose.
        QCOMPARE(json({"--resource", "Oriol", "--date", "2024-05-15"}).value("proposta").toDouble(), 0.0);

        const Resultat t = run({"--resource", "Marta", "--date", "15/05/2024"});
        QCOMPARE(t.codi, 0);
        QVERIFY2(t.out.contains(QStringLiteral("Marta")), qPrintable(t.out));
        QVERIFY(t.out.contains(QStringLiteral("15/05/2024")));
        QVERIFY(t.out.contains(QStringLiteral("0,50")));

        // The settings decide: counting the span fills Oriol's gap 11:00-12:00 on Saturday;
        // Saturdays not extra take the day's hours off.
        m_dir->posaParametre(QStringLiteral("CalculxHores"), QStringLiteral("0"));
        QCOMPARE(json({"--resource", "Oriol", "--date", "2024-05-18"}).value("proposta").toDouble(), 3.5);
        m_dir->posaParametre(QStringLiteral("DissabtesExtra"), QStringLiteral("0"));
        m_dir->posaParametre(QStringLiteral("HoresDia"), QStringLiteral("3,00"));
        QCOMPARE(json({"--resource", "Oriol", "--date", "2024-05-18"}).value("proposta").toDouble(), 0.5);

    }

    void storesWithSet()
    {
        QJsonObject o = json({"--resource", "Marta", "--date", "15/05/2024", "--set", "1,5"});
        QCOMPARE(o.value("hores").toDouble(), 1.5);
        QCOMPARE(o.value("proposta").toDouble(), 0.5);
        o = json({"--resource", "MARTA", "--date", "15/05/2024", "--set", "1,5"});
        QCOMPARE(o.value("hores").toDouble(), 1.5);
        QCOMPARE(filesHores(), 1);
        // Stored to the cent, as the overtime cell shows it.
        QCOMPARE(json({"--resource", "Marta", "--date", "15/05/2024", "--set", "2.257"}).value("hores").toDouble(), 2.26);
        QCOMPARE(json({"--resource", "Oriol", "--date", "15/05/2024", "--set", "3"}).value("hores").toDouble(), 3.0);
        QCOMPARE(filesHores(), 2);
        // Reading alone leaves the value.
        QCOMPARE(json({"--resource", "Marta", "--date", "15/05/2024"}).value("hores").toDouble(), 2.26);

        QCOMPARE(json({"--resource", "Marta", "--date", "15/05/2024", "--set", "0"}).value("hores").toDouble(), 0.0);
        QCOMPARE(filesHores(), 1);
        QCOMPARE(json({"--resource", "Oriol", "--date", "15/05/2024", "--set", "moltes"}).value("hores").toDouble(), 0.0);
        QCOMPARE(filesHores(), 0);
    }

    void refusalsAndUsageErrors()
    {
        Resultat r = run({"--resource", "Ningú", "--date", "15/05/2024", "--set", "2"});
        QCOMPARE(r.codi, 1);
        QVERIFY(r.err.contains(QStringLiteral("Recurs no trobat:Ningú")));
        QCOMPARE(filesHores(), 0);
        r = run({"--resource", "Marta"});
        QCOMPARE(r.codi, 2);
        QVERIFY(r.err.contains(QStringLiteral("--date")));
        r = run({"--resource", "Marta", "--date", "30/02/2024"});
        QCOMPARE(r.codi, 2);
        r = run({"--date", "15/05/2024"});
        QCOMPARE(r.codi, 2);
        r = run({"--resource", "Marta", "--date", "15/05/2024", "--hours", "2"});
        QCOMPARE(r.codi, 2);
    }
};

QTEST_GUILESS_MAIN(TestCliOvertime)
#include "tst_cli_overtime.moc"
