// The data directory: where it is, creating its files without ever overwriting one; and opening
// the business database: never a new file in place of a missing one; creating, migrating after a
// backup or refusing by the schema's version; a collation other SQLite tools do not know.
#include "core/copia_segura.h"
#include "core/directori_dades.h"
#include "core/ini.h"
#include "core/traduccio.h"
#include "core/versions_esquema.h"
#include "support/entorn_proves.h"

#include <QtTest>
#include <sqlite3.h>

namespace {

// Runs statements through a plain SQLite connection, as another tool would; returns its error.
QString sqlitePla(const QString &fitxer, const QString &sql)
{
    sqlite3 *h = nullptr;
    sqlite3_open(QFile::encodeName(fitxer).constData(), &h);
    char *missatge = nullptr;
    const QString error = sqlite3_exec(h, sql.toUtf8().constData(), nullptr, nullptr, &missatge) == SQLITE_OK
        ? QString() : QString::fromUtf8(missatge);
    sqlite3_free(missatge);
    sqlite3_close(h);
    return error;
}

// A file of an older version, filled by a plain connection. Version 1: SQLite's own NOCASE, no
// version recorded, indexes that put the accented names after "Zona", and job 40 deleted once.
// Version 2: no closed days yet, one place working on Sundays every week.
void escriuVersio(int versio, const QString &fitxer)
{
    QString sql = directori_dades::esquemaSql();
    if (versio == 2) {
        Db db;
        db.open(fitxer);
        db.execScript(sql + "DROP TABLE Festius; ALTER TABLE Llocs DROP COLUMN llocs_festius; PRAGMA user_version=2;");
        dades_prova::lloc(db, QStringLiteral("Bar Estel"), 60);
        db.exec(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = 7, llocs_diumenge = 1"));
        return;
    }
    sql.replace(QStringLiteral("QNOCASE"), QStringLiteral("NOCASE"));
    int color = 0;
    for (const char *n : {"Zona", "Àngels", "Ebre", "Élia", "alba", "Ona"})
        sql += QStringLiteral("INSERT INTO Llocs (llocs_nom, clients_nom) VALUES ('%1', '%1');"
                              "INSERT INTO Recursos (recursos_nom, recursos_color) VALUES ('%1', %2);"
                              "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
                              " VALUES ('%1', '2026-11-23', '08:00', '09:00', '%1');"
                              "INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (last_insert_rowid(), '%1');")
                   .arg(QString::fromUtf8(n)).arg(++color);
    sql += QStringLiteral("UPDATE sqlite_sequence SET seq = 40;");
    QCOMPARE(sqlitePla(fitxer, sql), QString());
}

} // namespace

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
        QVERIFY(QFile(exe.filePath("Quadrella.ini")).open(QIODevice::WriteOnly));
        QCOMPARE(resol("", "", exe.path(), "/home/u"), exe.path());
    }

    void initCreatesEverythingOnce()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath("sub/data");
        QCOMPARE(directori_dades::inicialitza(dir).size(), 3);
        const QString ini = directori_dades::fitxerIni(dir);
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
    // Only init and the first run create it, at the default path; else the session reports it.
    void onlyTheDefaultPathIsCreated_data()
    {
        QTest::addColumn<bool>("perDefecte");
        QTest::addColumn<bool>("desDeInit");
        QTest::addColumn<bool>("primeraExecucio");
        QTest::newRow("init, elsewhere") << false << true << true;
        QTest::newRow("desktop, first run") << true << false << true;
        QTest::newRow("desktop, later run") << true << false << false;
    }
    void onlyTheDefaultPathIsCreated()
    {
        QFETCH(bool, perDefecte);
        QFETCH(bool, desDeInit);
        QFETCH(bool, primeraExecucio);
        DirectoriProva dir;
        const QString fitxer = QDir(dir.path()).filePath(perDefecte ? Configuracio::nomFitxerBaseDades() : "xarxa/typo.db");
        QFile::remove(fitxer);
        dir.posaParametre(QStringLiteral("BaseDades"), fitxer, QStringLiteral("General"));
        dir.posaParametre(QStringLiteral("PrimeraExecucio"), QString::number(primeraExecucio));
        directori_dades::inicialitza(dir.path(), desDeInit ? directori_dades::BaseNegoci::Crea
                                                           : directori_dades::BaseNegoci::NomesPrimeraExecucio);
        const bool creada = perDefecte && (desDeInit || primeraExecucio);
        QCOMPARE(QFileInfo::exists(fitxer), creada);
        if (creada)
            return;
        try {
            dir.obreSessio();
            QFAIL("a session opened a missing database");
        } catch (const DbError &e) {
            QCOMPARE(e.text(), versions_esquema::textNoExisteix(fitxer));
        }
    }

    // A newer schema is refused and left alone, without a backup.
    void aNewerFileIsRefused()
    {
        QTemporaryDir tmp;
        const QString nou = tmp.filePath(QStringLiteral("nou.db"));
        QCOMPARE(sqlitePla(nou, QStringLiteral("PRAGMA user_version=%1").arg(versions_esquema::Actual + 1)), QString());
        Db db;
        QVERIFY_THROWS_EXCEPTION(DbError, versions_esquema::obre(db, nou));
        QCOMPARE(QDir(tmp.path()).entryList(QDir::Files), QStringList{QStringLiteral("nou.db")});
    }

    // Each older version is brought forward after a dated backup of the file as it was; then each
    // statement gives its rows joined by ',' (or "ERROR").
    void migrations_data()
    {
        QTest::addColumn<int>("versio");
        QTest::addColumn<QStringList>("comprovacions"); // "sql -> rows"
        QTest::newRow("1: names rebuilt in the program's order, lines with their job, counter kept") << 1 << QStringList{
            "SELECT llocs_nom FROM Llocs ORDER BY llocs_nom -> alba,Àngels,Ebre,Élia,Ona,Zona",
            "SELECT count(*) FROM Llocs WHERE llocs_nom IN ('ZONA', 'àngels', 'ÉLIA', 'ALBA') -> 4",
            "SELECT count(*) FROM Feines WHERE feines_data = '2026-11-23' AND llocs_nom = 'àNGELS' -> 1",
            "SELECT count(*) FROM sqlite_master WHERE sql LIKE '%COLLATE NOCASE%' -> 0",
            "DELETE FROM Feines WHERE llocs_nom = 'ona' -> ", "SELECT count(*) FROM Feines_Detall -> 5",
            "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi) VALUES ('Zona', '2026-11-24', '08:00', '09:00') -> ",
            "SELECT max(feines_id) FROM Feines -> 41"};
        QTest::newRow("2: closed days") << 2 << QStringList{
            "SELECT llocs_nom, llocs_periodicitat_dies, llocs_diumenge, llocs_festius FROM Llocs -> Bar Estel|7|1|0",
            "INSERT INTO Festius (festius_data, festius_descripcio) VALUES ('2026-12-25', 'Nadal') -> ",
            "INSERT INTO Festius (festius_data) VALUES ('2026-12-25') -> ERROR"};
    }
    void migrations()
    {
        QFETCH(int, versio);
        QFETCH(QStringList, comprovacions);
        QTemporaryDir tmp;
        const QString fitxer = tmp.filePath(QStringLiteral("v.db"));
        escriuVersio(versio, fitxer);
        Db db;
        const versions_esquema::Actualitzacio a = versions_esquema::obre(db, fitxer, QDateTime(QDate(2026, 11, 23), QTime(10, 15, 30)));
        QCOMPARE(a.desDe, versio);
        QCOMPARE(a.copia, tmp.filePath(QStringLiteral("v20261123101530.db")));
        QCOMPARE(versions_esquema::versio(db), versions_esquema::Actual);
        QCOMPARE(db.query(QStringLiteral("PRAGMA integrity_check")).columna(), QStringList{QStringLiteral("ok")});
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name LIKE 'idx_%'")),
                 directori_dades::esquemaSql().count(QStringLiteral("CREATE INDEX")));
        for (const QString &c : comprovacions) {
            const QStringList parts = c.split(QStringLiteral(" -> "));
            QString obtingut;
            try {
                obtingut = dades_prova::files(db, parts[0]).join(QLatin1Char(','));
            } catch (const DbError &) {
                obtingut = QStringLiteral("ERROR");
            }
            QVERIFY2(obtingut == parts[1], qPrintable(parts[0] + " gave " + obtingut));
        }
        Db anterior;
        anterior.open(a.copia);
        QCOMPARE(versions_esquema::versio(anterior), versio);
        QCOMPARE(copia_segura::integritat(a.copia), QStringLiteral("ok"));
    }

    // A tool that does not know the program's collation cannot write names out of order.
    void otherToolsCannotWriteNames()
    {
        BaseProva b;
        b.db.close();
        QCOMPARE(sqlitePla(b.fitxer(), QStringLiteral("INSERT INTO Llocs (llocs_nom) VALUES ('Zona')")),
                 QStringLiteral("no such collation sequence: QNOCASE"));
    }
};

QTEST_GUILESS_MAIN(TestDirectoriDades)
#include "tst_directori_dades.moc"
