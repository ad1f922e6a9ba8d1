// One rule for every kind of name: a rename reaches every row that holds the name, in the same
// transaction; a delete is refused while a row still holds it (a place's service lines and a
// group's member list go with their owner instead).
#include "masterdata/clients.h"
#include "masterdata/llocs.h"
#include "masterdata/recursos.h"
#include "masterdata/serveis.h"
#include "mestres_proves.h"

#include <QtTest>

using namespace dades_prova;

namespace {

// Every kind of reference filled once: client Can Pep with place Oficina (default resource
// Marta, service line Neteja), worker Marta in group Equip, a job of each with a Neteja line, a
// voucher spent on the first job, a payment and an overtime row.
void omple(Db &db)
{
    client(db, QStringLiteral("Can Pep"));
    recurs(db, QStringLiteral("Marta"), 0x0000FF);
    grup(db, QStringLiteral("Equip"), 0x00FF00, {QStringLiteral("Marta")});
    servei(db, QStringLiteral("Neteja"), 60, false, 10, QStringLiteral("Hores"));
    lloc(db, QStringLiteral("Oficina"), 60, QStringLiteral("Marta"), QStringLiteral("Can Pep"));
    llocServei(db, QStringLiteral("Oficina"), QStringLiteral("Neteja"), 1, 10);
    const int deMarta = feina(db, QStringLiteral("Oficina"), QDate(2026, 11, 23), QStringLiteral("08:00"), QStringLiteral("09:00"),
                              QStringLiteral("Marta"));
    const int delGrup = feina(db, QStringLiteral("Oficina"), QDate(2026, 11, 23), QStringLiteral("10:00"), QStringLiteral("11:00"),
                              QStringLiteral("Equip"));
    for (const int id : {deMarta, delGrup})
        db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat) VALUES (?, 'Neteja', 1)"))
            .bind(id).exec();
    xec(db, 7, QStringLiteral("Can Pep"), deMarta, QDate(2026, 11, 23));
    db.exec(QStringLiteral("INSERT INTO Pagaments (clients_nom, pagaments_mes, pagaments_import) VALUES ('Can Pep', '11/2026', 50)"));
    db.exec(QStringLiteral("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('Marta', '2026-11-23', 1.5)"));
}

// Renames the named row through its own engine, as its page does.
Resultat reanomena(EntornMestres &e, const QString &tipus, const QString &nom, const QString &nou)
{
    if (tipus == QLatin1String("client")) {
        GestioClients g(*e.sessio, e.io);
        FitxaClient f;
        g.carrega(nom, f);
        f.nom = nou;
        return g.ModificarClient(f);
    }
    if (tipus == QLatin1String("lloc")) {
        GestioLlocs g(*e.sessio, e.io);
        FitxaLloc f;
        g.carrega(nom, f);
        f.nom = nou;
        return g.ModificarLloc(f);
    }
    if (tipus == QLatin1String("recurs")) {
        GestioRecursos g(*e.sessio, e.io);
        FitxaRecurs f;
        g.carrega(nom, f);
        f.nom = nou;
        return g.ModificarRecurs(f);
    }
    GestioServeis g(*e.sessio, e.io);
    FitxaServei f;
    g.carrega(nom, f);
    f.nom = nou;
    return g.ModificarServei(f);
}

Resultat elimina(EntornMestres &e, const QString &tipus, const QString &nom)
{
    if (tipus == QLatin1String("client")) {
        FitxaClient f;
        f.nom = nom;
        return GestioClients(*e.sessio, e.io).EliminarClient(f);
    }
    if (tipus == QLatin1String("lloc")) {
        FitxaLloc f;
        f.nom = nom;
        return GestioLlocs(*e.sessio, e.io).EliminarLloc(f);
    }
    if (tipus == QLatin1String("recurs")) {
        FitxaRecurs f;
        f.nom = nom;
        return GestioRecursos(*e.sessio, e.io).EliminarRecurs(f);
    }
    FitxaServei f;
    f.nom = nom;
    return GestioServeis(*e.sessio, e.io).EliminarServei(f);
}

} // namespace

class TestReferencies : public QObject {
    Q_OBJECT

private slots:
    void renameReachesEveryHolder_data()
    {
        QTest::addColumn<QString>("tipus");
        QTest::addColumn<QString>("nom");
        QTest::addColumn<QString>("nou");
        QTest::addColumn<QString>("taula");
        QTest::addColumn<QString>("columna");
        QTest::addColumn<int>("files");
        const auto fila = [](const char *tipus, const char *nom, const char *nou, const char *taula, const char *columna, int files) {
            QTest::addRow("%s %s.%s", tipus, taula, columna)
                << QString::fromUtf8(tipus) << QString::fromUtf8(nom) << QString::fromUtf8(nou) << QString::fromUtf8(taula)
                << QString::fromUtf8(columna) << files;
        };
        fila("client", "Can Pep", "Can Pep i Fills", "Llocs", "clients_nom", 1);
        fila("client", "Can Pep", "Can Pep i Fills", "Xecs", "clients_nom", 1);
        fila("client", "Can Pep", "Can Pep i Fills", "Pagaments", "clients_nom", 1);
        fila("lloc", "Oficina", "L'Oficina", "Feines", "llocs_nom", 2);
        fila("lloc", "Oficina", "L'Oficina", "Llocs_Serveis", "llocs_nom", 1);
        fila("recurs", "Marta", "Marta Puig", "Feines", "recursos_nom", 1);
        fila("recurs", "Marta", "Marta Puig", "Recursos_Components", "recursos_component_nom", 1);
        fila("recurs", "Marta", "Marta Puig", "Llocs", "recursos_nom", 1);
        fila("recurs", "Marta", "Marta Puig", "Hores_Fetes", "recursos_nom", 1);
        fila("recurs", "Equip", "Equip Nord", "Feines", "recursos_nom", 1);
        fila("recurs", "Equip", "Equip Nord", "Recursos_Components", "recursos_nom", 1);
        fila("servei", "Neteja", "Neteja a fons", "Llocs_Serveis", "serveis_nom", 1);
        fila("servei", "Neteja", "Neteja a fons", "Feines_Detall", "serveis_nom", 2);
        // A change of case alone is a rename too: the rows show the name as it is now.
        fila("recurs", "Marta", "MARTA", "Feines", "recursos_nom", 1);
    }
    void renameReachesEveryHolder()
    {
        QFETCH(QString, tipus);
        QFETCH(QString, nom);
        QFETCH(QString, nou);
        QFETCH(QString, taula);
        QFETCH(QString, columna);
        QFETCH(int, files);
        EntornMestres e;
        omple(e.db());
        QCOMPARE(reanomena(e, tipus, nom, nou), Resultat::Fet);
        // Compared exactly, not through the collation: every row holds the new spelling.
        const QString sql = QStringLiteral("SELECT COUNT(*) FROM %1 WHERE %2 = ? COLLATE BINARY").arg(taula, columna);
        QCOMPARE(e.compte(sql, {nou}), files);
        QCOMPARE(e.compte(sql, {nom}), 0);
    }

    void deleteRefusedWhileNamed_data()
    {
        QTest::addColumn<QString>("tipus");
        QTest::addColumn<QString>("nom");
        QTest::addColumn<QString>("prepara"); // the row and the one row that holds its name
        QTest::addColumn<QString>("missatge");
        QTest::addColumn<QString>("allibera"); // what lets the delete through afterwards
        const QString client = QStringLiteral("INSERT INTO Clients (clients_nom) VALUES ('Can Pep');");
        const QString marta = QStringLiteral("INSERT INTO Recursos (recursos_nom, recursos_color) VALUES ('Marta', 255);");
        const QString equip = QStringLiteral("INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color) VALUES ('Equip', 1, 65280);");
        const QString neteja = QStringLiteral("INSERT INTO Serveis (serveis_nom) VALUES ('Neteja');");
        const QString feina = QStringLiteral("INSERT INTO Feines (feines_id, llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, "
                                             "recursos_nom) VALUES (1, 'Oficina', '2026-11-23', '08:00', '09:00', '%1');");
        QTest::newRow("client with places")
            << "client" << "can pep" << client + "INSERT INTO Llocs (llocs_nom, clients_nom) VALUES ('Oficina', 'Can Pep')"
            << "El client té llocs. No es pot eliminar" << "DELETE FROM Llocs";
        QTest::newRow("client with vouchers")
            << "client" << "Can Pep" << client + "INSERT INTO Xecs (xecs_id, clients_nom) VALUES (7, 'can pep')"
            << "El client té xecs. No es pot eliminar" << "DELETE FROM Xecs";
        QTest::newRow("client with payments")
            << "client" << "Can Pep" << client + "INSERT INTO Pagaments (clients_nom, pagaments_mes) VALUES ('Can Pep', '11/2026')"
            << "El client té pagaments a compte. No es pot eliminar" << "DELETE FROM Pagaments";
        QTest::newRow("place with jobs")
            << "lloc" << "Oficina" << "INSERT INTO Llocs (llocs_nom) VALUES ('Oficina');" + feina.arg(QString())
            << "El lloc té feines. No es pot eliminar" << "DELETE FROM Feines";
        QTest::newRow("worker with jobs") << "recurs" << "MARTA" << marta + feina.arg("Marta")
                                          << "El recurs té feines. No es pot eliminar" << "DELETE FROM Feines";
        QTest::newRow("worker in a group")
            << "recurs" << "Marta" << marta + equip + "INSERT INTO Recursos_Components VALUES ('Equip', 'Marta')"
            << "El recurs és membre d'un grup. No es pot eliminar" << "DELETE FROM Recursos_Components";
        QTest::newRow("worker a place's default")
            << "recurs" << "Marta" << marta + "INSERT INTO Llocs (llocs_nom, recursos_nom) VALUES ('Oficina', 'Marta')"
            << "El recurs és el recurs per defecte d'un lloc. No es pot eliminar" << "UPDATE Llocs SET recursos_nom = NULL";
        QTest::newRow("worker with overtime")
            << "recurs" << "Marta" << marta + "INSERT INTO Hores_Fetes (recursos_nom, hores_data) VALUES ('Marta', '2026-11-23')"
            << "El recurs té hores extra. No es pot eliminar" << "DELETE FROM Hores_Fetes";
        QTest::newRow("group with jobs") << "recurs" << "Equip" << equip + feina.arg("Equip")
                                         << "El recurs té feines. No es pot eliminar" << "DELETE FROM Feines";
        QTest::newRow("service on place lines")
            << "servei" << "Neteja" << neteja + "INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom) VALUES ('Oficina', 'Neteja')"
            << "El servei és als serveis d'un lloc. No es pot eliminar" << "DELETE FROM Llocs_Serveis";
        QTest::newRow("service on job lines")
            << "servei" << "neteja" << neteja + feina.arg(QString()) + "INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (1, 'Neteja')"
            << "El servei és a les línies d'una feina. No es pot eliminar" << "DELETE FROM Feines_Detall";
    }
    void deleteRefusedWhileNamed()
    {
        QFETCH(QString, tipus);
        QFETCH(QString, nom);
        QFETCH(QString, prepara);
        QFETCH(QString, missatge);
        QFETCH(QString, allibera);
        EntornMestres e;
        e.db().execScript(prepara);

        const QString abans = e.instantania();
        QCOMPARE(elimina(e, tipus, nom), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{missatge});
        QCOMPARE(e.instantania(), abans);

        e.db().exec(allibera);
        QCOMPARE(elimina(e, tipus, nom), Resultat::Fet);
        QCOMPARE(e.missatges(), QStringList());
    }

    // What goes with its owner instead of stopping the delete.
    void ownedRowsGoWithTheirOwner()
    {
        EntornMestres e;
        omple(e.db());
        e.db().exec(QStringLiteral("DELETE FROM Feines"));
        e.db().exec(QStringLiteral("DELETE FROM Xecs"));
        QCOMPARE(elimina(e, QStringLiteral("lloc"), QStringLiteral("Oficina")), Resultat::Fet);
        QCOMPARE(e.compte(QStringLiteral("SELECT COUNT(*) FROM Llocs_Serveis")), 0);
        QCOMPARE(elimina(e, QStringLiteral("recurs"), QStringLiteral("Equip")), Resultat::Fet);
        QCOMPARE(e.compte(QStringLiteral("SELECT COUNT(*) FROM Recursos_Components")), 0);
        QCOMPARE(e.compte(QStringLiteral("SELECT COUNT(*) FROM Recursos")), 1);
    }
};

QTEST_GUILESS_MAIN(TestReferencies)
#include "tst_referencies.moc"
