// Maintenance of the database: the purge with its dated backup, the compaction that must never
// lose the file, and the check that finds each kind of row naming a missing row (reported with the
// row and the name it holds) and name indexes written in another order (rebuilt).
#include "core/copia_segura.h"
#include "config/comprovacio_bd.h"
#include "config/manteniment.h"
#include "support/entorn_proves.h"
#include "support/totes_referencies.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <sqlite3.h>

using namespace manteniment;

namespace {

struct Interrupcio {};

// A collation of the program's name in another order, as a tool that defines its own would use.
int alReves(void *, int n1, const void *a, int n2, const void *b)
{
    return -QByteArray(static_cast<const char *>(a), n1).compare(QByteArray(static_cast<const char *>(b), n2));
}

qint64 compta(const QString &fitxer, const QString &sql)
{
    Db db;
    db.open(fitxer);
    return dades_prova::valor(db, sql);
}

// Jobs on 31/12/2008 and the day after, each with a voucher, one voucher not used yet, and
// overtime of the period; returns the later job.
int omple(Db &db)
{
    dades_prova::recurs(db, "Marta", 255);
    dades_prova::client(db, "Comunitat");
    dades_prova::lloc(db, "Escala", 60, QString(), "Comunitat");
    const int limit = dades_prova::feina(db, "Escala", QDate(2008, 12, 31), "09:00", "10:00");
    const int despres = dades_prova::feina(db, "Escala", QDate(2009, 1, 1), "09:00", "10:00");
    dades_prova::xec(db, 1, "Comunitat", limit, QDate());
    dades_prova::xec(db, 2, "Comunitat", despres, QDate());
    dades_prova::xec(db, 3, "Comunitat", 0, QDate());
    db.exec("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('Marta', '2008-06-01', 1.5)");
    return despres;
}

} // namespace

class TestManteniment : public QObject {
    Q_OBJECT

private slots:
    void purgeDeletesOldJobsAndTheirVouchersAfterABackup()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        const int despres = omple(s->db());
        InteraccioGuio ui;
        ui.respostes = {true};
        const ResultatPurga r = Purga_BD(*s, "31/12/2008", ui, QDateTime(QDate(2009, 3, 12), QTime(13, 45, 2)));
        QVERIFY(r.fet && r.feines == 1 && r.xecs == 1);
        Db &db = s->db();
        QCOMPARE(dades_prova::valor(db, "SELECT group_concat(feines_id) FROM Feines"), qint64(despres));
        QCOMPARE(dades_prova::files(db, "SELECT xecs_id FROM Xecs ORDER BY 1"), QStringList({"2", "3"}));
        QCOMPARE(dades_prova::valor(db, "SELECT count(*) FROM Hores_Fetes"), qint64(1)); // overtime stays
        // The backup holds the state before the purge, beside the database.
        QCOMPARE(r.copia, QFileInfo(s->cfg().BaseDades).absolutePath() + "/QuadrellaV0120090312134502.db");
        QCOMPARE(compta(r.copia, "SELECT count(*) FROM Feines"), qint64(2));
        QVERIFY(!QFileInfo::exists(r.copia + ".part"));
        QCOMPARE(nomCopiaDatada("/dades/v1.2/Quadrella", QDateTime(QDate(2009, 3, 12), QTime(13, 45, 2))),
                 QString("/dades/v1.2/Quadrella20090312134502"));
        QCOMPARE(ui.crides.size(), 2);
        QVERIFY(s->RefrescarAgenda && s->RefrescarFacturacio && s->CompactarBD);

        // A second purge in the same second overwrites the backup with what it started from.
        ui.respostes = {true};
        const ResultatPurga segona = Purga_BD(*s, "2009-01-01", ui, QDateTime(QDate(2009, 3, 12), QTime(13, 45, 2)));
        QCOMPARE(segona.copia, r.copia);
        QCOMPARE(compta(r.copia, "SELECT count(*) FROM Feines"), qint64(1));
    }

    void purgeRefusedOrDeclinedTouchesNothing()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        omple(s->db());
        const QString carpeta = QFileInfo(s->cfg().BaseDades).absolutePath();
        const QStringList fitxersAbans = QDir(carpeta).entryList(QDir::Files);
        InteraccioGuio ui;
        QVERIFY(!Purga_BD(*s, "31/13/2008", ui).fet && ui.crides.value(0).text == "Data incorrecta");
        QVERIFY(!Purga_BD(*s, "31/12/2008", ui).fet); // answered No
        QCOMPARE(dades_prova::valor(s->db(), "SELECT count(*) FROM Feines"), qint64(2));
        QCOMPARE(QDir(carpeta).entryList(QDir::Files), fitxersAbans);
        QVERIFY(!s->CompactarBD && !s->RefrescarAgenda);
    }

    // Interrupted at any step the database stays readable and whole; the file is smaller only once
    // the compacted copy is in place.
    void compactionKeepsTheDatabaseReadable_data()
    {
        QTest::addColumn<int>("etapa");
        QTest::addColumn<bool>("corromp");
        QTest::addColumn<bool>("compactada");
        QTest::newRow("not interrupted") << -1 << false << true;
        QTest::newRow("snapshot damaged before the check") << int(copia_segura::Etapa::Escrita) << true << false;
        QTest::newRow("after the check") << int(copia_segura::Etapa::Comprovada) << false << false;
        QTest::newRow("after the rename") << int(copia_segura::Etapa::Instal_lada) << false << true;
    }
    void compactionKeepsTheDatabaseReadable()
    {
        QFETCH(int, etapa);
        QFETCH(bool, corromp);
        QFETCH(bool, compactada);
        BaseProva b;
        dades_prova::client(b.db, "L'Estel");
        dades_prova::lloc(b.db, "Lloc", 30, QString(), "L'Estel");
        dades_prova::feina(b.db, "Lloc", QDate(2009, 1, 1), "08:00", "08:30");
        b.db.exec("CREATE TABLE Farciment (x BLOB)");
        b.db.exec("INSERT INTO Farciment SELECT randomblob(4000) FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) SELECT i FROM n)");
        b.db.exec("DROP TABLE Farciment");
        b.db.close();
        const qint64 midaOriginal = QFileInfo(b.fitxer()).size();
        bool interromput = false;
        try {
            compactaBaseDades(b.fitxer(), [&](copia_segura::Etapa e, const QString &fitxer) {
                if (int(e) != etapa)
                    return;
                if (corromp) {
                    // Half a file, as a full disk or a crash would leave it.
                    QFile f(fitxer);
                    QVERIFY(f.open(QIODevice::ReadWrite) && f.resize(f.size() / 2));
                    f.write(QByteArray(512, 'x'));
                    return;
                }
                throw Interrupcio{};
            });
        } catch (const Interrupcio &) {
            interromput = true;
        } catch (const std::runtime_error &e) {
            QVERIFY2(corromp, e.what());
            interromput = true;
        }
        QCOMPARE(interromput, etapa >= 0);
        QCOMPARE(copia_segura::integritat(b.fitxer()), QString("ok"));
        QCOMPARE(compta(b.fitxer(), "SELECT count(*) FROM Feines JOIN Clients ON clients_nom = 'l''estel'"), qint64(1));
        QCOMPARE(QFileInfo(b.fitxer()).size() < midaOriginal / 3, compactada);
        QVERIFY(!QFileInfo::exists(fitxerCompactacio(b.fitxer())));
    }

    void compactionRefusesAFileAnotherConnectionHolds()
    {
        BaseProva b;
        dades_prova::client(b.db, "Obert");
        const qint64 mida = QFileInfo(b.fitxer()).size();
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, compactaBaseDades(b.fitxer()));
        // The open connection still works on the same file.
        dades_prova::client(b.db, "Després");
        b.db.close();
        QCOMPARE(compta(b.fitxer(), "SELECT count(*) FROM Clients"), qint64(2));
        QVERIFY(QFileInfo(b.fitxer()).size() >= mida);
        QVERIFY(!QFileInfo::exists(fitxerCompactacio(b.fitxer())));
    }

    void brokenReferencesAreFound_data()
    {
        QTest::addColumn<QString>("sql"); // breaks one of totesLesReferencies
        QTest::addColumn<QString>("comprovacio");
        QTest::addColumn<QString>("fila");
        QTest::addColumn<QString>("valor");
        QTest::newRow("job of a missing place") << "UPDATE Feines SET llocs_nom = 'Zona' WHERE feines_id = 1" << "Feines.llocs_nom" << "feines_id=1" << "Zona";
        QTest::newRow("members of a worker, not a group") << "UPDATE Recursos SET recursos_grup = 0"
                                                          << "Recursos_Components.recursos_nom"
                                                          << "recursos_nom=Equip, recursos_component_nom=Marta" << "Equip";
    }
    void brokenReferencesAreFound()
    {
        QFETCH(QString, sql);
        QFETCH(QString, comprovacio);
        QFETCH(QString, fila);
        QFETCH(QString, valor);
        BaseProva b;
        b.db.execScript(QString::fromUtf8(totesLesReferencies));
        QVERIFY(comprovacio_bd::comprova(b.db).correcta());
        // Written as another program would, without the job lines' foreign key.
        b.db.execScript(QStringLiteral("PRAGMA foreign_keys=OFF;") + sql + QStringLiteral(";PRAGMA foreign_keys=ON"));
        const comprovacio_bd::Informe informe = comprovacio_bd::comprova(b.db);
        QVERIFY(informe.integritat == QStringList{QStringLiteral("ok")} && informe.problemes.size() == 1);
        const comprovacio_bd::Problema &p = informe.problemes[0];
        QCOMPARE(QStringList({p.comprovacio, p.fila, p.valor}), QStringList({comprovacio, fila, valor}));
        const QJsonObject j = comprovacio_bd::json(informe);
        QCOMPARE(QStringList(j.keys()), QStringList({"database", "integrity", "integrity_after_repair", "problems", "reindexed", "sound"}));
        QCOMPARE(QStringList(j["problems"][0].toObject().keys()), QStringList({"check", "description", "row", "value"}));
        QVERIFY(comprovacio_bd::text(informe).contains(QStringLiteral("%1 (%2): 1\n  %3: %4\n").arg(p.descripcio, comprovacio, fila, valor)));
    }

    void indexesInAnotherOrderAreRebuilt()
    {
        BaseProva b;
        b.db.close();
        sqlite3 *h = nullptr;
        QCOMPARE(sqlite3_open(QFile::encodeName(b.fitxer()).constData(), &h), SQLITE_OK);
        sqlite3_create_collation(h, "QNOCASE", SQLITE_UTF8, nullptr, alReves);
        const char *sql = "INSERT INTO Llocs (llocs_nom) VALUES ('alba'), ('Zona'), ('Ebre'), ('Àngels'), ('Ona')";
        QCOMPARE(sqlite3_exec(h, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(h);

        b.db.open(b.fitxer());
        const comprovacio_bd::Informe informe = comprovacio_bd::comprova(b.db);
        QVERIFY(informe.integritat != QStringList{QStringLiteral("ok")} && informe.reindexat && !informe.correcta());
        QCOMPARE(dades_prova::valor(b.db, QStringLiteral("SELECT count(*) FROM Llocs WHERE llocs_nom = 'àNGELS'")), 1);
        QVERIFY(comprovacio_bd::comprova(b.db).correcta()); // repaired
    }
};

QTEST_GUILESS_MAIN(TestManteniment)
#include "tst_manteniment.moc"
