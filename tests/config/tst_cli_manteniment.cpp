// `quadrella purge` and `quadrella compact` as a user runs them, and the desktop program's refusal
// to start without a display.
#include "core/copia_segura.h"
#include "support/entorn_proves.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

namespace {

struct Sortida {
    int codi = -1;
    QString out;
    QString err;
};

Sortida executa(const QStringList &args, const QProcessEnvironment &entorn = QProcessEnvironment::systemEnvironment())
{
    QProcess p;
    p.setProcessEnvironment(entorn);
    p.setStandardInputFile(QProcess::nullDevice());
    p.start(QStringLiteral(QUADRELLA_EXECUTABLE), args);
    Sortida s;
    if (!p.waitForFinished(60000))
        return s;
    s.codi = p.exitCode();
    s.out = QString::fromUtf8(p.readAllStandardOutput());
    s.err = QString::fromUtf8(p.readAllStandardError());
    return s;
}

// Jobs on both sides of the purge date, with a voucher on the old one.
void omple(DirectoriProva &dir)
{
    auto s = dir.obreSessio();
    dades_prova::client(s->db(), "Client");
    dades_prova::lloc(s->db(), "Lloc", 30, QString(), "Client");
    const int vella = dades_prova::feina(s->db(), "Lloc", QDate(2008, 12, 31), "08:00", "08:30");
    dades_prova::feina(s->db(), "Lloc", QDate(2009, 1, 1), "08:00", "08:30");
    dades_prova::xec(s->db(), 7, "Client", vella, QDate());
}

qint64 compta(DirectoriProva &dir, const QString &sql)
{
    auto s = dir.obreSessio();
    return dades_prova::valor(s->db(), sql);
}

QStringList copies(DirectoriProva &dir)
{
    return QDir(dir.path()).entryList({"QuadrellaV01[0-9]*.db"}, QDir::Files);
}

} // namespace

class TestCliManteniment : public QObject {
    Q_OBJECT

private slots:
    void purgeWithYesDeletesBacksUpAndCompacts()
    {
        DirectoriProva dir;
        omple(dir);
        const Sortida s = executa({"--data-dir", dir.path(), "purge", "--until", "31/12/2008", "--yes"});
        QVERIFY2(s.codi == 0, qPrintable(s.err));
        QVERIFY2(s.err.contains("1 feines esborrades."), qPrintable(s.err));
        QCOMPARE(copies(dir).size(), 1);
        QVERIFY(s.out.contains(copies(dir).first()));
        QVERIFY(s.out.contains("Base de dades compactada:"));
        QCOMPARE(compta(dir, "SELECT count(*) FROM Feines"), qint64(1));
        QCOMPARE(compta(dir, "SELECT count(*) FROM Xecs"), qint64(0));
        QVERIFY(!QFileInfo::exists(dir.path() + "/BDcompact.db"));
        QCOMPARE(copia_segura::integritat(dir.path() + "/" + copies(dir).first()), QString("ok"));

        const Sortida c = executa({"compact", "--json", "--data-dir", dir.path()});
        QCOMPARE(c.codi, 0);
        const QJsonObject compacta = QJsonDocument::fromJson(c.out.toUtf8()).object();
        QCOMPARE(compacta.value("database").toString(), QDir(dir.path()).filePath("QuadrellaV01.db"));
        QVERIFY(compacta.value("size_after").toInteger() > 0);
    }

    void purgeWithoutYesAndNoTerminalDeletesNothing()
    {
        DirectoriProva dir;
        omple(dir);
        const Sortida s = executa({"purge", "--until", "2008-12-31", "--data-dir", dir.path()});
        QCOMPARE(s.codi, 1);
        QVERIFY(s.err.contains("Purga cancel·lada"));
        QCOMPARE(compta(dir, "SELECT count(*) FROM Feines"), qint64(2));
        QVERIFY(copies(dir).isEmpty());
    }

    void compactingAMissingDatabaseFails()
    {
        DirectoriProva dir;
        QVERIFY(QFile::remove(dir.path() + "/QuadrellaV01.db"));
        const Sortida s = executa({"--data-dir", dir.path(), "compact"});
        QCOMPARE(s.codi, 1);
        QVERIFY(s.err.startsWith("Error:"));
        QVERIFY(!QFileInfo::exists(dir.path() + "/QuadrellaV01.db"));
    }

    void theDesktopProgramNeedsADisplay()
    {
        DirectoriProva dir;
        QProcessEnvironment entorn = QProcessEnvironment::systemEnvironment();
        for (const char *v : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            entorn.remove(v);
        for (const QStringList &args : {QStringList{"--data-dir", dir.path()}, QStringList{"--json", "--data-dir", dir.path()}}) {
            const Sortida s = executa(args, entorn);
            QCOMPARE(s.codi, 1);
            QVERIFY2(s.err.contains("no hi ha cap pantalla"), qPrintable(s.err));
            QVERIFY(s.err.contains("quadrella purge --until D [--yes]"));
        }
        // Commands do not need one.
        QCOMPARE(executa({"--data-dir", dir.path(), "compact"}, entorn).codi, 0);
    }
};

QTEST_GUILESS_MAIN(TestCliManteniment)
#include "tst_cli_manteniment.moc"
