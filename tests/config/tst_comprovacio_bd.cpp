// Checking a database: every kind of row that names a missing row is found and reported with the
// row and the name it holds; name indexes written in another order are found and rebuilt.
#include "config/comprovacio_bd.h"
#include "core/configuracio.h"
#include "support/entorn_proves.h"

#include <QtTest>
#include <sqlite3.h>

namespace {

// A collation of the program's name but another order (plain byte order, backwards), as a tool
// that defines its own would use.
int alReves(void *, int n1, const void *a, int n2, const void *b)
{
    const int r = QByteArray(static_cast<const char *>(a), n1).compare(QByteArray(static_cast<const char *>(b), n2));
    return -r;
}

} // namespace

class TestComprovacioBd : public QObject {
    Q_OBJECT

private slots:
    void brokenReferencesAreFound_data()
    {
        QTest::addColumn<QString>("sql"); // on a sound database holding Can Pep, Oficina, Marta, Equip, Neteja, job 1
        QTest::addColumn<QString>("comprovacio");
        QTest::addColumn<QString>("fila");
        QTest::addColumn<QString>("valor");
        const auto feina = QStringLiteral("INSERT INTO Feines (feines_id, llocs_nom, feines_data, feines_hora_inici, "
                                          "feines_hora_fi, recursos_nom) VALUES (2, '%1', '2026-11-23', '10:00', '11:00', '%2')");
        QTest::newRow("job of a missing place") << feina.arg("Zona", "Marta") << "Feines.llocs_nom" << "feines_id=2" << "Zona";
        QTest::newRow("job of a missing resource") << feina.arg("Oficina", "Pere") << "Feines.recursos_nom" << "feines_id=2" << "Pere";
        QTest::newRow("service line without its job")
            << "INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (9, 'Neteja')" << "Feines_Detall.feines_id" << "rowid=2" << "9";
        QTest::newRow("job line of a missing service")
            << "INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (1, 'Vidres')" << "Feines_Detall.serveis_nom" << "rowid=2"
            << "Vidres";
        QTest::newRow("voucher of a missing job")
            << "INSERT INTO Xecs (xecs_id, clients_nom, feines_id) VALUES (8, 'Can Pep', 5)" << "Xecs.feines_id" << "xecs_id=8" << "5";
        QTest::newRow("voucher of a missing client")
            << "INSERT INTO Xecs (xecs_id, clients_nom) VALUES (8, 'Can Pau')" << "Xecs.clients_nom" << "xecs_id=8" << "Can Pau";
        QTest::newRow("payment of a missing client")
            << "INSERT INTO Pagaments (clients_nom, pagaments_mes) VALUES ('Can Pau', '11/2026')" << "Pagaments.clients_nom"
            << "clients_nom=Can Pau, pagaments_mes=11/2026" << "Can Pau";
        QTest::newRow("members of a worker, not a group")
            << "INSERT INTO Recursos_Components VALUES ('Marta', 'Marta')" << "Recursos_Components.recursos_nom"
            << "recursos_nom=Marta, recursos_component_nom=Marta" << "Marta";
        QTest::newRow("members of a missing group")
            << "INSERT INTO Recursos_Components VALUES ('Nord', 'Marta')" << "Recursos_Components.recursos_nom"
            << "recursos_nom=Nord, recursos_component_nom=Marta" << "Nord";
        QTest::newRow("missing member") << "INSERT INTO Recursos_Components VALUES ('Equip', 'Pere')"
                                        << "Recursos_Components.recursos_component_nom"
                                        << "recursos_nom=Equip, recursos_component_nom=Pere" << "Pere";
        QTest::newRow("place of a missing client")
            << "INSERT INTO Llocs (llocs_nom, clients_nom) VALUES ('Magatzem', 'Can Pau')" << "Llocs.clients_nom"
            << "llocs_nom=Magatzem" << "Can Pau";
        QTest::newRow("place with a missing default resource")
            << "UPDATE Llocs SET recursos_nom = 'Pere'" << "Llocs.recursos_nom" << "llocs_nom=Oficina" << "Pere";
        QTest::newRow("place service of a missing place")
            << "INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES ('Zona', 'Neteja')" << "Llocs_Serveis.llocs_nom"
            << "llocs_nom=Zona, serveis_nom=Neteja" << "Zona";
        QTest::newRow("place service of a missing service")
            << "INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES ('Oficina', 'Vidres')" << "Llocs_Serveis.serveis_nom"
            << "llocs_nom=Oficina, serveis_nom=Vidres" << "Vidres";
        QTest::newRow("overtime of a missing worker")
            << "INSERT INTO Hores_Fetes (recursos_nom, hores_data) VALUES ('Pere', '2026-11-23')" << "Hores_Fetes.recursos_nom"
            << "recursos_nom=Pere, hores_data=2026-11-23" << "Pere";
    }
    void brokenReferencesAreFound()
    {
        QFETCH(QString, sql);
        QFETCH(QString, comprovacio);
        QFETCH(QString, fila);
        QFETCH(QString, valor);
        BaseProva b;
        Db &db = b.db;
        dades_prova::client(db, QStringLiteral("Can Pep"));
        dades_prova::recurs(db, QStringLiteral("Marta"), 255);
        dades_prova::grup(db, QStringLiteral("Equip"), 65280, {QStringLiteral("Marta")});
        dades_prova::servei(db, QStringLiteral("Neteja"), 60, false);
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60, QStringLiteral("Marta"), QStringLiteral("Can Pep"));
        dades_prova::llocServei(db, QStringLiteral("Oficina"), QStringLiteral("Neteja"), 1);
        const int id = dades_prova::feina(db, QStringLiteral("Oficina"), QDate(2026, 11, 23), QStringLiteral("08:00"),
                                          QStringLiteral("09:00"), QStringLiteral("Equip"));
        db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (?, 'Neteja')")).bind(id).exec();
        dades_prova::xec(db, 7, QStringLiteral("Can Pep"), id, QDate(2026, 11, 23));
        QVERIFY(comprovacio_bd::comprova(db).correcta());

        // Written as another program would, without the job lines' foreign key.
        db.exec(QStringLiteral("PRAGMA foreign_keys=OFF"));
        db.exec(sql);
        db.exec(QStringLiteral("PRAGMA foreign_keys=ON"));
        const comprovacio_bd::Informe informe = comprovacio_bd::comprova(db);
        QVERIFY(!informe.correcta());
        QCOMPARE(informe.integritat, QStringList{QStringLiteral("ok")});
        QCOMPARE(informe.problemes.size(), 1);
        QCOMPARE(informe.problemes[0].comprovacio, comprovacio);
        QCOMPARE(informe.problemes[0].fila, fila);
        QCOMPARE(informe.problemes[0].valor, valor);
        QVERIFY(comprovacio_bd::text(informe).contains(QStringLiteral("%1 (%2): 1\n  %3: %4\n").arg(informe.problemes[0].descripcio, comprovacio, fila, valor)));
    }

    void indexesInAnotherOrderAreRebuilt()
    {
        DirectoriProva dir;
        const QString fitxer = Configuracio::carrega(dir.path()).BaseDades;
        {
            sqlite3 *h = nullptr;
            QCOMPARE(sqlite3_open(QFile::encodeName(fitxer).constData(), &h), SQLITE_OK);
            sqlite3_create_collation(h, "QNOCASE", SQLITE_UTF8, nullptr, alReves);
            const char *sql = "INSERT INTO Llocs (llocs_nom) VALUES ('alba'), ('Zona'), ('Ebre'), ('Àngels'), ('Ona')";
            QCOMPARE(sqlite3_exec(h, sql, nullptr, nullptr, nullptr), SQLITE_OK);
            sqlite3_close(h);
        }
        auto s = dir.obreSessio();
        const comprovacio_bd::Informe informe = comprovacio_bd::comprova(s->db());
        QVERIFY2(informe.integritat != QStringList{QStringLiteral("ok")}, qPrintable(informe.integritat.join('\n')));
        QVERIFY(informe.reindexat);
        QCOMPARE(informe.integritatDespres, QStringList{QStringLiteral("ok")});
        QVERIFY(!informe.correcta());
        // Repaired: every place is found by its name again, and the next check finds nothing.
        for (const char *nom : {"ALBA", "zona", "ebre", "àngels", "ONA"})
            QCOMPARE(dades_prova::valor(s->db(), QStringLiteral("SELECT count(*) FROM Llocs WHERE llocs_nom = ?"), {QString::fromUtf8(nom)}), 1);
        QVERIFY(comprovacio_bd::comprova(s->db()).correcta());
    }
};

QTEST_GUILESS_MAIN(TestComprovacioBd)
#include "tst_comprovacio_bd.moc"
