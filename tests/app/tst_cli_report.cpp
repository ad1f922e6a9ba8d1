// `quadrella report` on a data directory made by `init --sample`, run with no display at all:
// usage errors and refusals with their exit codes, the drawing's JSON for every kind, and a PDF
// whose text pdftotext can read back.
#include "support/execucio_cli.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

class TestCliReport : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString m_dir;

    // No display at all: reports must draw without one.
    SortidaCli run(const QStringList &args) { return executaCli(args, m_dir, entornSensePantalla()); }

private slots:
    void initTestCase()
    {
        m_dir = m_tmp.filePath(QStringLiteral("dades"));
        QCOMPARE(run({"init", "--sample"}).codi, 0);
    }

    void usageAndRefusals_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("codi");
        QTest::addColumn<QString>("missatge");
        QTest::newRow("neither pdf nor json") << QStringList{"report", "overtime", "--month", "03/2031"} << 2 << "--pdf";
        QTest::newRow("both") << QStringList{"report", "agenda", "--json", "--pdf", "x.pdf"} << 2 << "--pdf";
        QTest::newRow("no kind") << QStringList{"report", "--json"} << 2 << "report overtime --month";
        QTest::newRow("unknown kind") << QStringList{"report", "invoices", "--json"} << 2 << "invoices";
        QTest::newRow("bad month") << QStringList{"report", "overtime", "--month", "13/2031", "--json"} << 2 << "13/2031";
        QTest::newRow("missing resource") << QStringList{"report", "jobs", "--json"} << 2 << "--resource";
        QTest::newRow("bad view") << QStringList{"report", "agenda", "--view", "any", "--json"} << 2 << "any";
        QTest::newRow("extra argument") << QStringList{"report", "job", "--id", "1", "--json", "x"} << 2 << "x";
        QTest::newRow("unknown resource") << QStringList{"report", "jobs", "--resource", "Ningú", "--json"} << 1 << "Ningú";
        QTest::newRow("unknown job") << QStringList{"report", "job", "--id", "9999", "--json"} << 1 << "Feina no trobada";
    }

    void usageAndRefusals()
    {
        QFETCH(QStringList, args);
        QFETCH(int, codi);
        QFETCH(QString, missatge);
        const SortidaCli r = run(args);
        QCOMPARE(r.codi, codi);
        QVERIFY2(r.err.contains(missatge), qPrintable(r.err));
        QVERIFY(r.out.isEmpty());
    }

    // Every kind gives {"pages": [{"number", "items": [...]}]}, numbered from 1, with known ops.
    void jsonOfEachKind_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("overtime") << QStringList{"report", "overtime", "--month", "12/2009"};
        QTest::newRow("jobs") << QStringList{"report", "jobs", "--resource", "marta", "--view", "setmana"};
        QTest::newRow("job") << QStringList{"report", "job", "--id", "1"};
        QTest::newRow("agenda") << QStringList{"report", "agenda", "--view", "dia", "--date", "2009-12-01"};
        QTest::newRow("invoice") << QStringList{"report", "invoice", "--client", "Client Particular", "--month", "12/2009"};
        QTest::newRow("summary") << QStringList{"report", "summary", "--month", "12/2009"};
        QTest::newRow("vouchers") << QStringList{"report", "vouchers", "--month", "12/2009"};
    }

    void jsonOfEachKind()
    {
        QFETCH(QStringList, args);
        const SortidaCli r = run(args << "--json");
        QCOMPARE(r.codi, 0);
        const QJsonArray pagines = QJsonDocument::fromJson(r.out.toUtf8()).object().value("pages").toArray();
        QVERIFY(!pagines.isEmpty());
        for (int i = 0; i < pagines.size(); ++i) {
            const QJsonObject p = pagines.at(i).toObject();
            QCOMPARE(p.value("number").toInt(), i + 1);
            const QJsonArray items = p.value("items").toArray();
            QVERIFY(!items.isEmpty());
            for (const QJsonValue &v : items)
                QVERIFY(QStringList({"text", "line", "box", "picture"}).contains(v.toObject().value("op").toString()));
        }
    }

    void pdfReadsBack()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        const QString pdf = m_tmp.filePath(QStringLiteral("feina.pdf"));
        const SortidaCli r = run({"report", "job", "--id", "1", "--pdf", pdf});
        QCOMPARE(r.codi, 0);
        QVERIFY(r.out.isEmpty());
        QProcess text;
        text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
        QVERIFY(text.waitForFinished(30000));
        const QString llegit = QString::fromUtf8(text.readAllStandardOutput());
        for (const char *esperat : {"Detall de la feina nro.: 1", "Lloc:", "Quantitat", "IMPORT FEINA:", "€", "pàg. 1"})
            QVERIFY2(llegit.contains(QString::fromUtf8(esperat)), esperat);

        // A file that cannot be written is a failure, and nothing is left behind.
        const QString mal = m_tmp.filePath(QStringLiteral("no/hi/es/feina.pdf"));
        const SortidaCli e = run({"report", "job", "--id", "1", "--pdf", mal});
        QCOMPARE(e.codi, 1);
        QVERIFY(e.err.contains(QStringLiteral("Error:")));
        QVERIFY(!QFile::exists(mal));
    }
};

QTEST_GUILESS_MAIN(TestCliReport)
#include "tst_cli_report.moc"
