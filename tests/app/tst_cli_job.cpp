// `quadrella job` as a user runs it on a data directory made by `init --sample`: add, find, show,
// modify and delete, the JSON shape of a job, refusals on stderr with exit 1, usage errors exit 2.
#include "core/ini.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Resultat {
    int codi;
    QString out;
    QString err;
    QJsonObject json() const { return QJsonDocument::fromJson(out.toUtf8()).object(); }
};

} // namespace

class TestCliJob : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString m_dir;
    QDate m_ultim; // the sample week ends here

    Resultat run(QStringList args, const QString &dir = QString())
    {
        args << QStringLiteral("--data-dir") << (dir.isEmpty() ? m_dir : dir);
        QProcess p;
        QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
        e.remove(QStringLiteral("QUADRELLA_DIR"));
        p.setProcessEnvironment(e);
        p.start(QStringLiteral(QUADRELLA_EXECUTABLE), args);
        if (!p.waitForFinished(60000))
            qFatal("quadrella did not finish");
        return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
    }

    QJsonObject jobOk(const QStringList &args)
    {
        const Resultat r = run(QStringList{QStringLiteral("job")} + args + QStringList{QStringLiteral("--json")});
        if (r.codi != 0)
            qWarning("%s", qPrintable(r.err));
        return r.codi == 0 ? r.json() : QJsonObject();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_tmp.isValid());
        m_dir = m_tmp.filePath(QStringLiteral("dades"));
        const Resultat r = run({QStringLiteral("init"), QStringLiteral("--sample")});
        QCOMPARE(r.codi, 0);
        const Resultat c = run({QStringLiteral("config"), QStringLiteral("--json")});
        m_ultim = QDate::fromString(c.json().value(QStringLiteral("settings")).toObject().value(QStringLiteral("UltimDiaGen")).toString(), Qt::ISODate);
        QVERIFY(m_ultim.isValid());
    }

    void addShowAndTheJsonShape()
    {
        const QJsonObject j = jobOk({"add", "--place", "exemple escala", "--date", "04/03/2031", "--start", "08:00"});
        QCOMPARE(QStringList(j.keys()),
                 QStringList({"feines_data", "feines_data_factura", "feines_feta", "feines_hora_fi", "feines_hora_inici", "feines_id",
                              "feines_observacions", "llocs_nom", "missatge", "recursos_nom"}));
        QVERIFY(j.value("feines_id").isDouble());
        QVERIFY(j.value("feines_id").toInt() > 12);
        QCOMPARE(j.value("feines_data").toString(), QStringLiteral("2031-03-04"));
        QCOMPARE(j.value("feines_hora_inici").toString(), QStringLiteral("08:00"));
        QCOMPARE(j.value("feines_hora_fi").toString(), QStringLiteral("08:30"));
        QCOMPARE(j.value("recursos_nom").toString(), QStringLiteral("Marta")); // the place's default
        QCOMPARE(j.value("feines_feta"), QJsonValue(false));
        QCOMPARE(j.value("feines_data_factura"), QJsonValue(QStringLiteral("")));
        QCOMPARE(j.value("missatge").toString(), QString());

        const QString id = QString::number(j.value("feines_id").toInt());
        QCOMPARE(jobOk({"show", "--id", id}), j);
        // For people: the id, the place and the times on the screen.
        const Resultat text = run({"job", "show", "--id", id});
        QCOMPARE(text.codi, 0);
        QVERIFY(text.out.contains(id));
        QVERIFY(text.out.contains(QStringLiteral("exemple escala")));
        QVERIFY(text.out.contains(QStringLiteral("04/03/2031")));
        QVERIFY(text.out.contains(QStringLiteral("08:00 - 08:30")));
    }

    void refusalsAndUsage()
    {
        Resultat r = run({"job", "add", "--place", "Golf", "--date", "2031-03-05", "--start", "08:00"});
        QCOMPARE(r.codi, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Lloc 'Golf' inexistent"));
        QCOMPARE(r.out, QString());

        // Marta is busy at the stairs; strict refuses, otherwise the job is stored unassigned.
        QVERIFY(!jobOk({"add", "--place", "Exemple escala", "--date", "2031-03-05", "--start", "09:00"}).isEmpty());
        r = run({"job", "add", "--place", "Particular casa", "--date", "2031-03-05", "--start", "08:30", "--resource", "Marta", "--strict"});
        QCOMPARE(r.codi, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Solapament de recursos: Marta"));
        const QJsonObject lliure = jobOk({"add", "--place", "Particular casa", "--date", "2031-03-05", "--start", "08:30", "--resource", "Marta"});
        QCOMPARE(lliure.value("recursos_nom").toString(), QString());
        QCOMPARE(lliure.value("feines_hora_fi").toString(), QStringLiteral("09:30"));

        r = run({"job", "show", "--id", "99999"});
        QCOMPARE(r.codi, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Feina no trobada"));

        const QList<QStringList> usos = {
            {"job"},
            {"job", "launch"},
            {"job", "add", "--date", "2031-03-05", "--start", "08:00"},
            {"job", "add", "--place", "Exemple escala", "--date", "31/02/2031", "--start", "08:00"},
            {"job", "add", "--place", "Exemple escala", "--date", "2031-03-05", "--start", "8:0"},
            {"job", "show", "--id", "deu"},
            {"job", "modify", "--id", "1", "--done", "--not-done"},
            {"job", "modify", "--id", "1", "--end", "25:00"},
            {"job", "find", "--place", "Exemple escala", "--date", "2031-03-05"},
            {"job", "delete", "--id", "1", "--force"},
        };
        for (const QStringList &us : usos) {
            r = run(us);
            QVERIFY2(r.codi == 2, qPrintable(us.join(' ') + QStringLiteral(" -> ") + QString::number(r.codi)));
            QVERIFY2(r.err.contains(QStringLiteral("job")), qPrintable(r.err));
        }
    }

    void findModifyAndDelete()
    {
        // The sample team's office job on the first day of the sample week.
        const QString dia = m_ultim.addDays(-6).toString(Qt::ISODate);
        QJsonObject f = jobOk({"find", "--place", "Exemple oficina", "--date", dia, "--minute", "01:00", "--resource", "Oriol"});
        QCOMPARE(f.value("recursos_nom").toString(), QStringLiteral("Marta i Oriol"));
        QCOMPARE(f.value("feines_hora_inici").toString(), QStringLiteral("00:30"));
        const QString id = QString::number(f.value("feines_id").toInt());
        // Its end minute belongs to whatever comes next: the stairs, Marta's own job.
        const QJsonObject seguent = jobOk({"find", "--place", "Exemple escala", "--date", dia, "--minute", "02:30", "--resource", "Marta"});
        QCOMPARE(seguent.value("feines_hora_inici").toString(), QStringLiteral("02:30"));
        Resultat r = run({"job", "find", "--place", "Exemple oficina", "--date", dia, "--minute", "02:30", "--resource", "Oriol"});
        QCOMPARE(r.codi, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Feina no trobada"));

        // Notes, then a new start with the end recomputed from its lines: 3 h shared by two,
        // 10 km common: 90 + 30 minutes. The notes are kept when not given.
        QCOMPARE(jobOk({"modify", "--id", id, "--notes", "Porta de l'Estel"}).value("feines_observacions").toString(),
                 QStringLiteral("Porta de l'Estel"));
        f = jobOk({"modify", "--id", id, "--start", "05:00", "--end", ""});
        QCOMPARE(f.value("feines_hora_fi").toString(), QStringLiteral("07:00"));
        QCOMPARE(f.value("feines_observacions").toString(), QStringLiteral("Porta de l'Estel"));
        QCOMPARE(f.value("recursos_nom").toString(), QStringLiteral("Marta i Oriol"));

        // Done with a billing date; then it can be neither changed nor deleted.
        f = jobOk({"modify", "--id", id, "--done", "--invoice-date", "30/06/2031"});
        QCOMPARE(f.value("feines_feta"), QJsonValue(true));
        QCOMPARE(f.value("feines_data_factura").toString(), QStringLiteral("2031-06-30"));
        r = run({"job", "delete", "--id", id});
        QCOMPARE(r.codi, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("No es pot esborrar una feina feta"));
        r = run({"job", "modify", "--id", id, "--start", "05:30"});
        QCOMPARE(r.codi, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("No es pot modificar una feina feta"));

        f = jobOk({"modify", "--id", id, "--not-done"});
        QCOMPARE(f.value("feines_feta"), QJsonValue(false));
        QCOMPARE(jobOk({"show", "--id", id}).value("feines_data_factura").toString(), QString());
        f = jobOk({"modify", "--id", id, "--resource", ""});
        QCOMPARE(f.value("recursos_nom").toString(), QString());

        // Deleting prints the deleted job; afterwards it is gone.
        const QJsonObject esborrada = jobOk({"delete", "--id", id});
        QCOMPARE(esborrada.value("feines_id").toInt(), id.toInt());
        QCOMPARE(esborrada.value("feines_hora_inici").toString(), QStringLiteral("05:00"));
        QCOMPARE(esborrada.value("feines_observacions").toString(), QStringLiteral("Porta de l'Estel"));
        r = run({"job", "show", "--id", id});
        QCOMPARE(r.codi, 1);
        r = run({"job", "delete", "--id", id});
        QCOMPARE(r.codi, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Feina no trobada"));
    }

    void refusalsInTheConfiguredLanguage()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath(QStringLiteral("es"));
        QCOMPARE(run({"init", "--sample"}, dir).codi, 0);
        QVERIFY(EscriureIni(dir + QStringLiteral("/Quadrella.ini"), QStringLiteral("Parametres"), QStringLiteral("Idioma"), QStringLiteral("ES")));
        Resultat r = run({"job", "add", "--place", "Golf", "--date", "2031-03-05", "--start", "08:00"}, dir);
        QCOMPARE(r.codi, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Lugar 'Golf' inexistente"));
        r = run({"job", "show", "--id", "99999"}, dir);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Trabajo no encontrado"));
    }
};

QTEST_GUILESS_MAIN(TestCliJob)
#include "tst_cli_job.moc"
