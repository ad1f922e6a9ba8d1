// Opening the business database: never a new file in place of a missing one; creating, migrating
// after a backup or refusing by the schema's version; a collation other SQLite tools do not know.
#include "core/copia_segura.h"
#include "core/directori_dades.h"
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

// A version-1 file (SQLite's own NOCASE, no version recorded) filled by a plain connection: its
// indexes put the accented names after "Zona", where the program's order has them among their
// letters. Job 40 was deleted once: its number must never come back.
void escriuVersio1(const QString &fitxer)
{
    QString sql = directori_dades::esquemaSql().replace(QStringLiteral("QNOCASE"), QStringLiteral("NOCASE"));
    int color = 0;
    for (const char *n : {"Zona", "Àngels", "Ebre", "Élia", "alba", "Ona"})
        sql += QStringLiteral("INSERT INTO Llocs (llocs_nom, clients_nom) VALUES ('%1', '%1');"
                              "INSERT INTO Recursos (recursos_nom, recursos_color) VALUES ('%1', %2);"
                              "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
                              " VALUES ('%1', '2026-11-23', '08:00', '09:00', '%1');"
                              "INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (last_insert_rowid(), '%1');")
                   .arg(QString::fromUtf8(n)).arg(++color);
    QCOMPARE(sqlitePla(fitxer, sql + QStringLiteral("UPDATE sqlite_sequence SET seq = 40;")), QString());
}

} // namespace

class TestVersionsEsquema : public QObject {
    Q_OBJECT

private slots:
    // Only init and the first run create it, at the default path; else the session reports it.
    void onlyTheDefaultPathIsCreated_data()
    {
        QTest::addColumn<bool>("perDefecte");
        QTest::addColumn<bool>("desDeInit");
        QTest::addColumn<bool>("primeraExecucio");
        QTest::newRow("init, elsewhere") << false << true << true;
        QTest::newRow("desktop, first run") << true << false << true;
        QTest::newRow("desktop, later run") << true << false << false;
        QTest::newRow("desktop, first run, elsewhere") << false << false << true;
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
            QVERIFY2(e.text().contains(fitxer) && e.text() == versions_esquema::textNoExisteix(fitxer), qPrintable(e.text()));
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

    // A migrated file: every row found by its name in any case through the rebuilt indexes, in
    // the program's order, the dated backup as the file was, the job lines still going with their
    // job and the job counter where it was.
    void aMigratedFileKeepsEveryRow()
    {
        QTemporaryDir tmp;
        const QString fitxer = tmp.filePath(QStringLiteral("v1.db"));
        escriuVersio1(fitxer);
        Db db;
        const QString copia = versions_esquema::obre(db, fitxer, QDateTime(QDate(2026, 11, 23), QTime(10, 15, 30))).copia;
        QCOMPARE(copia, tmp.filePath(QStringLiteral("v120261123101530.db")));
        QCOMPARE(versions_esquema::versio(db), versions_esquema::Actual);
        QCOMPARE(db.query(QStringLiteral("PRAGMA integrity_check")).columna(), QStringList{QStringLiteral("ok")});
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT count(*) FROM sqlite_master WHERE sql LIKE '%COLLATE NOCASE%'")), 0);
        for (const char *nom : {"ZONA", "àngels", "ebre", "ÉLIA", "ALBA", "ona"}) {
            for (const char *sql : {"SELECT count(*) FROM Llocs WHERE llocs_nom = ?", "SELECT count(*) FROM Recursos WHERE recursos_nom = ?",
                                    "SELECT count(*) FROM Feines WHERE feines_data = '2026-11-23' AND llocs_nom = ?",
                                    "SELECT count(*) FROM Feines WHERE feines_data = '2026-11-23' AND recursos_nom = ?"})
                QVERIFY2(dades_prova::valor(db, QString::fromUtf8(sql), {QString::fromUtf8(nom)}) == 1, sql);
        }
        QCOMPARE(db.query(QStringLiteral("SELECT llocs_nom FROM Llocs ORDER BY llocs_nom")).columna(),
                 QStringList({"alba", "Àngels", "Ebre", "Élia", "Ona", "Zona"}));
        QCOMPARE(copia_segura::integritat(copia), QStringLiteral("ok"));
        Db anterior;
        anterior.open(copia);
        QCOMPARE(versions_esquema::versio(anterior), 1);
        QCOMPARE(dades_prova::valor(anterior, QStringLiteral("SELECT count(*) FROM Feines")), 6);
        db.exec(QStringLiteral("DELETE FROM Feines WHERE llocs_nom = 'ona'"));
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT count(*) FROM Feines_Detall")), 5);
        QCOMPARE(dades_prova::feina(db, QStringLiteral("Zona"), QDate(2026, 11, 24), QStringLiteral("08:00"), QStringLiteral("09:00")), 41);
        QCOMPARE(dades_prova::valor(db, QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name LIKE 'idx_%'")),
                 directori_dades::esquemaSql().count(QStringLiteral("CREATE INDEX")));
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

QTEST_GUILESS_MAIN(TestVersionsEsquema)
#include "tst_versions_esquema.moc"
