// A file of the schema before closed days existed is brought forward on opening: its places keep
// their rows and do not work on closed days, the closed days' table is there, and a backup was made
// first.
#include "core/directori_dades.h"
#include "core/versions_esquema.h"
#include "support/entorn_proves.h"

#include <QtTest>

class TestEsquemaFestius : public QObject {
    Q_OBJECT

private slots:
    void aVersion2FileIsMigrated()
    {
        QTemporaryDir tmp;
        const QString fitxer = tmp.filePath(QStringLiteral("v2.db"));
        {
            // The current schema less what version 3 added, as version 2 wrote it.
            Db db;
            db.open(fitxer);
            db.execScript(directori_dades::esquemaSql());
            db.exec(QStringLiteral("DROP TABLE Festius"));
            db.exec(QStringLiteral("ALTER TABLE Llocs DROP COLUMN llocs_festius"));
            db.exec(QStringLiteral("PRAGMA user_version=2"));
            dades_prova::lloc(db, QStringLiteral("Bar Estel"), 60);
            db.exec(QStringLiteral("UPDATE Llocs SET llocs_periodicitat_dies = 7, llocs_diumenge = 1"));
        }
        Db db;
        const versions_esquema::Actualitzacio a = versions_esquema::obre(db, fitxer, QDateTime(QDate(2026, 11, 23), QTime(11, 0)));
        QCOMPARE(a.desDe, 2);
        QCOMPARE(a.fins, versions_esquema::Actual);
        QCOMPARE(versions_esquema::versio(db), versions_esquema::Actual);
        QCOMPARE(dades_prova::files(db, QStringLiteral("SELECT llocs_nom, llocs_periodicitat_dies, llocs_diumenge, llocs_festius FROM Llocs")),
                 QStringList{"Bar Estel|7|1|0"});
        db.exec(QStringLiteral("INSERT INTO Festius (festius_data, festius_descripcio) VALUES ('2026-12-25', 'Nadal')"));
        QVERIFY_THROWS_EXCEPTION(DbError, db.exec(QStringLiteral("INSERT INTO Festius (festius_data) VALUES ('2026-12-25')")));

        QVERIFY(QFileInfo::exists(a.copia));
    }
};

QTEST_GUILESS_MAIN(TestEsquemaFestius)
#include "tst_esquema_festius.moc"
