// Opening the business database: a missing file is never replaced by a new one, the schema's
// version decides between creating, migrating (after a backup) and refusing, and the name
// collation has a name of its own that other SQLite tools do not know.
#include "core/configuracio.h"
#include "core/copia_segura.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/ini.h"
#include "core/sessio.h"
#include "core/versions_esquema.h"
#include "support/entorn_proves.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <sqlite3.h>

namespace {

// Statements run through a plain SQLite connection, as another tool would; returns its error.
QString sqlitePla(const QString &fitxer, const QString &sql)
{
    sqlite3 *h = nullptr;
    sqlite3_open(QFile::encodeName(fitxer).constData(), &h);
    char *missatge = nullptr;
    QString error;
    if (sqlite3_exec(h, sql.toUtf8().constData(), nullptr, nullptr, &missatge) != SQLITE_OK)
        error = QString::fromUtf8(missatge ? missatge : "error");
    sqlite3_free(missatge);
    sqlite3_close(h);
    return error;
}

// The first schema: today's tables with SQLite's own NOCASE and no version recorded.
QString esquemaVersio1()
{
    return directori_dades::esquemaSql().replace(QStringLiteral("QNOCASE"), QStringLiteral("NOCASE"));
}

const QStringList nomsDesordenats = {QStringLiteral("Zona"), QStringLiteral("Àngels"), QStringLiteral("Ebre"),
                                     QStringLiteral("Élia"), QStringLiteral("alba"), QStringLiteral("Ona")};

// A version-1 file filled by a plain connection: under SQLite's NOCASE the accented names sort
// after "Zona", where the program's order puts them among their letters.
void escriuVersio1(const QString &fitxer)
{
    QString sql = esquemaVersio1();
    for (const QString &n : nomsDesordenats) {
        sql += QStringLiteral("INSERT INTO Clients (clients_nom) VALUES ('%1');"
                              "INSERT INTO Llocs (llocs_nom, clients_nom, recursos_nom) VALUES ('%1', '%1', '%1');"
                              "INSERT INTO Recursos (recursos_nom, recursos_color) VALUES ('%1', %2);"
                              "INSERT INTO Serveis (serveis_nom) VALUES ('%1');"
                              "INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES ('%1', '%1');"
                              "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
                              " VALUES ('%1', '2026-11-23', '08:00', '09:00', '%1');"
                              "INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (last_insert_rowid(), '%1');")
                   .arg(n)
                   .arg(sql.size());
    }
    // Job 40 was deleted once: its number must never come back.
    sql += QStringLiteral("UPDATE sqlite_sequence SET seq = 40 WHERE name = 'Feines';");
    const QString error = sqlitePla(fitxer, sql);
    if (!error.isEmpty())
        qFatal("%s", qPrintable(error));
}

} // namespace

class TestVersionsEsquema : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    Db m_migrada; // a version-1 file, migrated once for the look-ups

private slots:
    void initTestCase()
    {
        const QString fitxer = m_tmp.filePath(QStringLiteral("v1.db"));
        escriuVersio1(fitxer);
        versions_esquema::obre(m_migrada, fitxer);
    }

    // Only `init` (anywhere) and the desktop's first run may create the database, and only at the
    // data directory's default path.
    void onlyTheDefaultPathIsCreated_data()
    {
        QTest::addColumn<bool>("perDefecte");
        QTest::addColumn<bool>("desDeInit");
        QTest::addColumn<bool>("primeraExecucio");
        QTest::addColumn<bool>("creada");
        QTest::newRow("init, default path") << true << true << false << true;
        QTest::newRow("init, path elsewhere") << false << true << true << false;
        QTest::newRow("desktop, first run") << true << false << true << true;
        QTest::newRow("desktop, later run") << true << false << false << false;
        QTest::newRow("desktop, first run, elsewhere") << false << false << true << false;
    }
    void onlyTheDefaultPathIsCreated()
    {
        QFETCH(bool, perDefecte);
        QFETCH(bool, desDeInit);
        QFETCH(bool, primeraExecucio);
        QFETCH(bool, creada);
        DirectoriProva dir;
        const QString fitxer = perDefecte ? QDir(dir.path()).filePath(Configuracio::nomFitxerBaseDades())
                                          : QDir(dir.path()).filePath(QStringLiteral("share/typo.db"));
        QFile::remove(fitxer);
        dir.posaParametre(QStringLiteral("BaseDades"), fitxer, QStringLiteral("General"));
        dir.posaParametre(QStringLiteral("PrimeraExecucio"), primeraExecucio ? QStringLiteral("1") : QStringLiteral("0"));

        using directori_dades::BaseNegoci;
        const QStringList creats = directori_dades::inicialitza(
            dir.path(), desDeInit ? BaseNegoci::Crea : BaseNegoci::NomesPrimeraExecucio);
        QCOMPARE(creats.contains(fitxer), creada);
        QCOMPARE(QFileInfo::exists(fitxer), creada);
        if (creada)
            return;
        // The session then reports the missing file with its path, and still creates nothing.
        try {
            dir.obreSessio();
            QFAIL("a session opened on a missing database");
        } catch (const DbError &e) {
            QVERIFY2(e.text().contains(fitxer), qPrintable(e.text()));
            QCOMPARE(e.text(), versions_esquema::textNoExisteix(fitxer));
        }
        QVERIFY(!QFileInfo::exists(fitxer));
        if (!perDefecte)
            QVERIFY(!QFileInfo::exists(QFileInfo(fitxer).absolutePath()));
    }

    // What opening does with each version of a file.
    void versions_data()
    {
        QTest::addColumn<int>("versioFitxer"); // 0 = an empty file, 1 = the first schema
        QTest::addColumn<bool>("refusada");
        QTest::addColumn<bool>("ambCopia");
        QTest::newRow("empty file gets the schema") << 0 << false << false;
        QTest::newRow("first schema migrated") << 1 << false << true;
        QTest::newRow("current schema untouched") << versions_esquema::Actual << false << false;
        QTest::newRow("newer schema refused") << versions_esquema::Actual + 1 << true << false;
    }
    void versions()
    {
        QFETCH(int, versioFitxer);
        QFETCH(bool, refusada);
        QFETCH(bool, ambCopia);
        QTemporaryDir tmp;
        const QString fitxer = tmp.filePath(QStringLiteral("Quadrella.db"));
        if (versioFitxer == 0) {
            QFile f(fitxer);
            QVERIFY(f.open(QIODevice::WriteOnly));
        } else if (versioFitxer == 1) {
            escriuVersio1(fitxer);
        } else {
            Db d;
            d.open(fitxer);
            directori_dades::creaEsquema(d);
            d.exec(QStringLiteral("PRAGMA user_version=%1").arg(versioFitxer));
        }
        const QDateTime ara(QDate(2026, 11, 23), QTime(10, 15, 30));
        Db db;
        if (refusada) {
            try {
                versions_esquema::obre(db, fitxer, ara);
                QFAIL("a newer database was opened");
            } catch (const DbError &e) {
                QVERIFY2(e.text().contains(fitxer) && e.text().contains(QString::number(versioFitxer)), qPrintable(e.text()));
            }
            QVERIFY(!db.isOpen());
            QCOMPARE(QDir(tmp.path()).entryList({QStringLiteral("Quadrella2*")}), QStringList());
            return;
        }
        const versions_esquema::Actualitzacio a = versions_esquema::obre(db, fitxer, ara);
        QCOMPARE(a.fins, versions_esquema::Actual);
        QCOMPARE(versions_esquema::versio(db), versions_esquema::Actual);
        QCOMPARE(a.copia, ambCopia ? tmp.filePath(QStringLiteral("Quadrella20261123101530.db")) : QString());
        QCOMPARE(QDir(tmp.path()).entryList({QStringLiteral("Quadrella2*")}).size(), ambCopia ? 1 : 0);
        if (ambCopia) {
            // The backup is the file as it was: the first schema, every row.
            QCOMPARE(copia_segura::integritat(a.copia), QStringLiteral("ok"));
            Db copia;
            copia.open(a.copia);
            QCOMPARE(versions_esquema::versio(copia), 1);
            QCOMPARE(dades_prova::valor(copia, QStringLiteral("SELECT count(*) FROM Llocs")), nomsDesordenats.size());
        }
        QCOMPARE(db.query(QStringLiteral("PRAGMA integrity_check")).columna(), QStringList{QStringLiteral("ok")});
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT count(*) FROM sqlite_master WHERE sql LIKE '%COLLATE NOCASE%'")), 0);
    }

    // After the migration every row is found by its name typed in any case, through the indexes
    // rebuilt in the program's order; the rows keep their links and the job counter its place.
    void migratedRowsAreFoundByName_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("nom");
        for (const char *nom : {"ZONA", "àngels", "ebre", "ÉLIA", "ALBA", "ona"}) {
            QTest::addRow("client %s", nom) << "SELECT count(*) FROM Clients WHERE clients_nom = ?" << QString::fromUtf8(nom);
            QTest::addRow("place %s", nom) << "SELECT count(*) FROM Llocs WHERE llocs_nom = ?" << QString::fromUtf8(nom);
            QTest::addRow("resource %s", nom) << "SELECT count(*) FROM Recursos WHERE recursos_nom = ?" << QString::fromUtf8(nom);
            QTest::addRow("service %s", nom) << "SELECT count(*) FROM Serveis WHERE serveis_nom = ?" << QString::fromUtf8(nom);
            QTest::addRow("place line %s", nom)
                << "SELECT count(*) FROM Llocs_Serveis WHERE llocs_nom = ?" << QString::fromUtf8(nom);
            QTest::addRow("jobs of place %s", nom)
                << "SELECT count(*) FROM Feines WHERE feines_data = '2026-11-23' AND llocs_nom = ?" << QString::fromUtf8(nom);
            QTest::addRow("jobs of resource %s", nom)
                << "SELECT count(*) FROM Feines WHERE feines_data = '2026-11-23' AND recursos_nom = ?" << QString::fromUtf8(nom);
        }
    }
    void migratedRowsAreFoundByName()
    {
        QFETCH(QString, sql);
        QFETCH(QString, nom);
        QCOMPARE(dades_prova::valor(m_migrada, sql, {nom}), 1);
    }

    void migrationKeepsLinksAndCounter()
    {
        Db &db = m_migrada;
        // The program's order, accented names among their letters.
        QCOMPARE(db.query(QStringLiteral("SELECT llocs_nom FROM Llocs ORDER BY llocs_nom")).columna(),
                 QStringList({"alba", "Àngels", "Ebre", "Élia", "Ona", "Zona"}));
        // The job lines still go with their job.
        const qint64 id = dades_prova::valor(db, QStringLiteral("SELECT feines_id FROM Feines WHERE llocs_nom = 'ona'"));
        db.query(QStringLiteral("DELETE FROM Feines WHERE feines_id = ?")).bind(id).exec();
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT count(*) FROM Feines_Detall WHERE feines_id = ?"), {id}), 0);
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT count(*) FROM Feines_Detall")), nomsDesordenats.size() - 1);
        QCOMPARE(dades_prova::feina(db, QStringLiteral("Zona"), QDate(2026, 11, 24), QStringLiteral("08:00"), QStringLiteral("09:00")), 41);
        // Every index of the schema is there again.
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'index' AND name LIKE 'idx_%'")),
                 directori_dades::esquemaSql().count(QStringLiteral("CREATE INDEX")));
    }

    // A tool that does not know the program's collation cannot write the names out of order.
    void otherToolsCannotWriteNames()
    {
        DirectoriProva dir;
        const Configuracio cfg = Configuracio::carrega(dir.path());
        const QString error = sqlitePla(cfg.BaseDades, QStringLiteral("INSERT INTO Llocs (llocs_nom) VALUES ('Zona')"));
        QVERIFY2(error.contains(QStringLiteral("no such collation sequence: QNOCASE")), qPrintable(error));
        // The program's own backup check still reads the file.
        QCOMPARE(copia_segura::integritat(cfg.BaseDades), QStringLiteral("ok"));
    }
};

QTEST_GUILESS_MAIN(TestVersionsEsquema)
#include "tst_versions_esquema.moc"
