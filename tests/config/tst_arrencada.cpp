// The help lookup and the shut-down work that needs no window.
#include "config/arrencada.h"
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
    // The help in the language comes first, then the general one; a missing one warns with the
    // general path.
    void helpLookup()
    {
        QTemporaryDir dir;
        InteraccioGuio ui;
        escriu(dir.filePath("Quadrella.html"), "general");
        escriu(dir.filePath("QuadrellaV01ES.html"), "es");
        QCOMPARE(arrencada::cercaAjuda(dir.path(), "ES", ui), dir.filePath("QuadrellaV01ES.html"));
        QCOMPARE(arrencada::cercaAjuda(dir.path(), "EN", ui), dir.filePath("Quadrella.html"));
        QVERIFY(arrencada::cercaAjuda(dir.filePath("manual"), "CT", ui).isEmpty());
        QCOMPARE(ui.crides.size(), 1);
        QVERIFY(ui.crides[0].text.contains(dir.filePath("manual/Quadrella.html")));
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
    }

    // Shut-down writes the last planned day, compacts the database only
    // when a purge asked for it, and closes both databases even when the settings file cannot be
    // written, which it reports.
    void shutDown()
    {
        DirectoriProva dir;
        dir.posaParametre("PrimeraExecucio", "0");
        QList<copia_segura::Etapa> etapes;
        const auto tanca = [&](Sessio &s, InteraccioGuio &ui) {
            arrencada::tancaSessio(s, ui, [&](copia_segura::Etapa e, const QString &) { etapes << e; });
        };
        for (const bool compacta : {false, true}) {
            auto s = dir.obreSessio();
            const QString fitxer = s->cfg().BaseDades;
            s->cfg().UltimDiaGen = QDate(2009, 4, 30);
            s->CompactarBD = compacta;
            s->db().exec("CREATE TABLE Farciment (x BLOB)");
            s->db().exec("INSERT INTO Farciment SELECT randomblob(8000) FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100) SELECT i FROM n)");
            s->db().exec("DROP TABLE Farciment");
            const qint64 abans = QFileInfo(fitxer).size();
            InteraccioGuio ui;
            tanca(*s, ui);
            QVERIFY(ui.crides.isEmpty() && !s->db().isOpen() && !s->dbTraduccio().isOpen() && !s->CompactarBD);
            QCOMPARE(QFileInfo(fitxer).size() < abans / 2 && etapes.size() == 4, compacta);
        }
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Estat", "UltimDiaGen", ""), QString("30/04/2009"));
        {
            auto s = dir.obreSessio();
            // A settings file that cannot be replaced: its path is taken by a folder.
            s->cfg().fitxerIni = dir.path() + "/carpeta.ini";
            QVERIFY(QDir().mkpath(s->cfg().fitxerIni));
            InteraccioGuio ui;
            tanca(*s, ui);
            QVERIFY(ui.crides.size() == 1 && !s->db().isOpen());
        }
    }
};

QTEST_GUILESS_MAIN(TestArrencada)
#include "tst_arrencada.moc"
