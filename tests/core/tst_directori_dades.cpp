// Where the data directory is, and creating its files without ever overwriting one.
#include "core/configuracio.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/ini.h"
#include "core/traduccio.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestDirectoriDades : public QObject {
    Q_OBJECT

private slots:
    void resolutionOrder()
    {
        QTemporaryDir exe;
        using directori_dades::resol;
        QCOMPARE(resol("/opt/a", "/env", exe.path(), "/home/u"), QString("/opt/a"));
        QCOMPARE(resol("", "/env", exe.path(), "/home/u"), QString("/env"));
        QCOMPARE(resol("", "", exe.path(), "/home/u"), QString("/home/u/.local/share/Quadrella"));
        // A portable install: the executable's folder holds the settings file.
        QFile ini(exe.filePath("Quadrella.ini"));
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.close();
        QCOMPARE(resol("", "", exe.path(), "/home/u"), exe.path());
        QCOMPARE(resol("", "/env", exe.path(), "/home/u"), QString("/env"));
    }

    void initCreatesEverythingOnce()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath("sub/data");
        QCOMPARE(directori_dades::inicialitza(dir).size(), 3);
        const QString ini = directori_dades::fitxerIni(dir);
        // Every key at its default, in its section (present but empty reads as the default).
        for (const auto &k : Configuracio::claus(dir))
            QCOMPARE(LlegirIni(ini, k.seccio, k.clau, "<missing>"), k.perDefecte.isEmpty() ? QString("<missing>") : k.perDefecte);
        QCOMPARE(llistaIdiomes(ini), QStringList({"(CT) Català", "(ES) Castellano", "(EN) English"}));
        const Configuracio c = Configuracio::carrega(dir);
        Db db;
        db.open(c.BaseDades);
        db.query("INSERT INTO Serveis (serveis_nom) VALUES ('Neteja')").exec();
        db.close();

        // Hand edits and data survive a second init, which creates nothing.
        QVERIFY(EscriureIni(ini, "Parametres", "MinutsCella", "15"));
        QVERIFY(directori_dades::inicialitza(dir).isEmpty());
        QCOMPARE(LlegirIni(ini, "Parametres", "MinutsCella", ""), QString("15"));
        db.open(c.BaseDades);
        QCOMPARE(db.query("SELECT count(*) FROM Serveis").columna(), QStringList{"1"});
        db.close();

        // A lost translation database comes back.
        QVERIFY(QFile::remove(directori_dades::fitxerTraduccio(dir)));
        QCOMPARE(directori_dades::inicialitza(dir), QStringList{directori_dades::fitxerTraduccio(dir)});
        // A directory that cannot be made is an error.
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, directori_dades::inicialitza(ini + "/data"));
    }
};

QTEST_GUILESS_MAIN(TestDirectoriDades)
#include "tst_directori_dades.moc"
