// The help lookup and the shut-down work that needs no window.
#include "config/arrencada.h"
#include "config/manteniment.h"
#include "core/formats.h"
#include "core/ini.h"
#include "support/entorn_proves.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

void escriu(const QString &fitxer, const QByteArray &contingut)
{
    QFile f(fitxer);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(contingut);
}

QByteArray llegeix(const QString &fitxer)
{
    QFile f(fitxer);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class TestArrencada : public QObject {
    Q_OBJECT

private slots:
    void helpInTheLanguageComesFirstThenTheGeneralOne()
    {
        QTemporaryDir dir;
        InteraccioGuio ui;
        QCOMPARE(arrencada::nomAjudaIdioma("ES"), QString("QuadrellaV01ES.html"));
        escriu(dir.filePath("Quadrella.html"), "general");
        QCOMPARE(arrencada::cercaAjuda(dir.path(), "ES", ui), dir.filePath("Quadrella.html"));
        escriu(dir.filePath("QuadrellaV01ES.html"), "es");
        QCOMPARE(arrencada::cercaAjuda(dir.path(), "ES", ui), dir.filePath("QuadrellaV01ES.html"));
        QCOMPARE(arrencada::cercaAjuda(dir.path(), "EN", ui), dir.filePath("Quadrella.html"));
        QVERIFY(ui.crides.isEmpty());
    }

    void missingHelpWarnsWithTheGeneralPath()
    {
        QTemporaryDir dir;
        InteraccioGuio ui;
        QVERIFY(arrencada::cercaAjuda(dir.filePath("manual"), "CT", ui).isEmpty());
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides[0].tipus, QString("informa"));
        QCOMPARE(ui.crides[0].titol, QString("AVÍS"));
        QCOMPARE(ui.crides[0].text, QString("Fitxer d'ajuda '%1' no trobat").arg(dir.filePath("manual/Quadrella.html")));
    }

    void theShippedManualIsCopiedWithoutReplacingTheUsersPages()
    {
        QTemporaryDir origen, desti;
        escriu(origen.filePath("Quadrella.html"), "nou general");
        escriu(origen.filePath("QuadrellaV01CT.html"), "nou ct");
        const QString manual = desti.filePath("manual");
        QVERIFY(QDir().mkpath(manual));
        escriu(manual + "/QuadrellaV01CT.html", "el meu");
        QCOMPARE(arrencada::instalaManual(origen.path(), manual), 1);
        QCOMPARE(llegeix(manual + "/QuadrellaV01CT.html"), QByteArray("el meu"));
        QCOMPARE(llegeix(manual + "/Quadrella.html"), QByteArray("nou general"));
        QVERIFY(QFileInfo(manual + "/Quadrella.html").isWritable());
        QCOMPARE(arrencada::instalaManual(origen.path(), manual), 0);
        QCOMPARE(arrencada::instalaManual(origen.filePath("no-hi-es"), manual), 0);
    }

    void shutDownWritesTheLastPlannedDayExceptOnTheFirstRun()
    {
        DirectoriProva dir;
        dir.posaParametre("PrimeraExecucio", "0");
        {
            auto s = dir.obreSessio();
            s->cfg().UltimDiaGen = QDate(2009, 4, 30);
            InteraccioGuio ui;
            arrencada::tancaSessio(*s, ui);
            QVERIFY(ui.crides.isEmpty());
            QVERIFY(!s->db().isOpen());
            QVERIFY(!s->dbTraduccio().isOpen());
        }
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("30/04/2009"));

        dir.posaParametre("PrimeraExecucio", "1");
        {
            auto s = dir.obreSessio();
            s->cfg().UltimDiaGen = QDate(2010, 1, 31);
            InteraccioGuio ui;
            arrencada::tancaSessio(*s, ui);
        }
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("30/04/2009"));
    }

    void aFailedSettingsWriteIsReportedAndTheDatabasesStillClose()
    {
        DirectoriProva dir;
        dir.posaParametre("PrimeraExecucio", "0");
        auto s = dir.obreSessio();
        // A settings file that cannot be replaced: its path is taken by a folder.
        s->cfg().fitxerIni = dir.path() + "/carpeta.ini";
        QVERIFY(QDir().mkpath(s->cfg().fitxerIni));
        InteraccioGuio ui;
        arrencada::tancaSessio(*s, ui);
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides[0].titol, QString("ERROR"));
        QCOMPARE(ui.crides[0].text, QString("Error al gravar .ini"));
        QVERIFY(!s->db().isOpen());
    }

    void compactionRunsOnlyWhenAPurgeAskedForIt()
    {
        DirectoriProva dir;
        dir.posaParametre("PrimeraExecucio", "0");
        QString fitxer;
        {
            auto s = dir.obreSessio();
            fitxer = s->cfg().BaseDades;
            s->db().exec("CREATE TABLE Farciment (x BLOB)");
            s->db().exec("INSERT INTO Farciment SELECT randomblob(8000) FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100) SELECT i FROM n)");
            s->db().exec("DROP TABLE Farciment");
            InteraccioGuio ui;
            arrencada::tancaSessio(*s, ui);
        }
        const qint64 senseCompactar = QFileInfo(fitxer).size();
        QVERIFY(senseCompactar > 500000);
        {
            auto s = dir.obreSessio();
            s->CompactarBD = true;
            QList<copia_segura::Etapa> etapes;
            InteraccioGuio ui;
            arrencada::tancaSessio(*s, ui, [&](copia_segura::Etapa e, const QString &) { etapes << e; });
            QCOMPARE(etapes.size(), 4);
            QVERIFY(!s->CompactarBD);
        }
        QVERIFY(QFileInfo(fitxer).size() < senseCompactar / 2);
        QCOMPARE(copia_segura::integritat(fitxer), QString("ok"));
        QVERIFY(!QFileInfo::exists(manteniment::fitxerCompactacio(fitxer)));
    }
};

QTEST_GUILESS_MAIN(TestArrencada)
#include "tst_arrencada.moc"
