// Checking a database: each kind of row that names a missing row is found and reported with the
// row and the name it holds; name indexes written in another order are found and rebuilt.
#include "config/comprovacio_bd.h"
#include "support/entorn_proves.h"
#include "support/totes_referencies.h"

#include <QtTest>
#include <sqlite3.h>

namespace {

// A collation of the program's name in another order, as a tool that defines its own would use.
int alReves(void *, int n1, const void *a, int n2, const void *b)
{
    return -QByteArray(static_cast<const char *>(a), n1).compare(QByteArray(static_cast<const char *>(b), n2));
}

} // namespace

class TestComprovacioBd : public QObject {
    Q_OBJECT

private slots:
    void brokenReferencesAreFound_data()
    {
        QTest::addColumn<QString>("sql"); // breaks one of totesLesReferencies
        QTest::addColumn<QString>("comprovacio");
        QTest::addColumn<QString>("fila");
        QTest::addColumn<QString>("valor");
        QTest::newRow("job of a missing place") << "UPDATE Feines SET llocs_nom = 'Zona' WHERE feines_id = 1" << "Feines.llocs_nom" << "feines_id=1" << "Zona";
        QTest::newRow("service line without its job")
            << "UPDATE Feines_Detall SET feines_id = 9 WHERE rowid = 1" << "Feines_Detall.feines_id" << "rowid=1" << "9";
        QTest::newRow("voucher of a missing job") << "UPDATE Xecs SET feines_id = 5" << "Xecs.feines_id" << "xecs_id=7" << "5";
        QTest::newRow("members of a worker, not a group") << "UPDATE Recursos SET recursos_grup = 0"
                                                          << "Recursos_Components.recursos_nom"
                                                          << "recursos_nom=Equip, recursos_component_nom=Marta" << "Equip";
        QTest::newRow("place of a missing client")
            << "UPDATE Llocs SET clients_nom = 'Can Pau'" << "Llocs.clients_nom" << "llocs_nom=Oficina" << "Can Pau";
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
        QCOMPARE(informe.integritat, QStringList{QStringLiteral("ok")});
        QCOMPARE(informe.problemes.size(), 1);
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
        QCOMPARE(informe.integritatDespres, QStringList{QStringLiteral("ok")});
        QCOMPARE(dades_prova::valor(b.db, QStringLiteral("SELECT count(*) FROM Llocs WHERE llocs_nom = 'àNGELS'")), 1);
        QVERIFY(comprovacio_bd::comprova(b.db).correcta()); // repaired
    }
};

QTEST_GUILESS_MAIN(TestComprovacioBd)
#include "tst_comprovacio_bd.moc"
