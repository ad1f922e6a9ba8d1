// One rule for every kind of name, through each page's engine: a rename reaches every row that
// holds the name; a delete is refused, writing nothing, while a row still holds it.
#include "masterdata/clients.h"
#include "masterdata/llocs.h"
#include "masterdata/recursos.h"
#include "masterdata/serveis.h"
#include "mestres_proves.h"
#include "support/totes_referencies.h"

#include <QtTest>

namespace {

// Loads the named row into its form, sets the new name, and saves it (or deletes the name).
template <class Gestio, class Fitxa>
Resultat actua(EntornMestres &e, Resultat (Gestio::*accio)(Fitxa &), const QString &nom, const QString &nou)
{
    Gestio g(*e.sessio, e.io);
    Fitxa f;
    g.carrega(nom, f);
    f.nom = nou.isEmpty() ? nom : nou;
    return (g.*accio)(f);
}

Resultat actua(EntornMestres &e, const QString &tipus, const QString &nom, const QString &nou = QString())
{
    const bool elimina = nou.isEmpty();
    if (tipus == QLatin1String("client"))
        return actua(e, elimina ? &GestioClients::EliminarClient : &GestioClients::ModificarClient, nom, nou);
    if (tipus == QLatin1String("lloc"))
        return actua(e, elimina ? &GestioLlocs::EliminarLloc : &GestioLlocs::ModificarLloc, nom, nou);
    if (tipus == QLatin1String("recurs"))
        return actua(e, elimina ? &GestioRecursos::EliminarRecurs : &GestioRecursos::ModificarRecurs, nom, nou);
    return actua(e, elimina ? &GestioServeis::EliminarServei : &GestioServeis::ModificarServei, nom, nou);
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
        QTest::addColumn<QString>("columnes"); // "Taula.columna=rows ..." that must hold the new name
        QTest::newRow("client, new case") << "client" << "Can Pep" << "CAN PEP"
                                          << "Llocs.clients_nom=1 Xecs.clients_nom=1 Pagaments.clients_nom=1";
        QTest::newRow("place") << "lloc" << "Oficina" << "L'Oficina nova" << "Feines.llocs_nom=2 Llocs_Serveis.llocs_nom=1";
        QTest::newRow("worker") << "recurs" << "Marta" << "Marta Puig"
                                << "Feines.recursos_nom=1 Recursos_Components.recursos_component_nom=1 Llocs.recursos_nom=1 "
                                   "Hores_Fetes.recursos_nom=1";
        QTest::newRow("group") << "recurs" << "Equip" << "Equip Nord" << "Feines.recursos_nom=1 Recursos_Components.recursos_nom=1";
        QTest::newRow("service") << "servei" << "Neteja" << "Neteja a fons" << "Llocs_Serveis.serveis_nom=1 Feines_Detall.serveis_nom=2";
    }
    void renameReachesEveryHolder()
    {
        QFETCH(QString, tipus);
        QFETCH(QString, nom);
        QFETCH(QString, nou);
        QFETCH(QString, columnes);
        EntornMestres e;
        e.db().execScript(QString::fromUtf8(totesLesReferencies));
        QCOMPARE(actua(e, tipus, nom, nou), Resultat::Fet);
        for (const QString &c : columnes.split(QLatin1Char(' '))) {
            const QStringList parts = c.split(QRegularExpression(QStringLiteral("[.=]")));
            // Compared byte for byte: every row holds the new spelling, none the old one.
            const QString sql = QStringLiteral("SELECT count(*) FROM %1 WHERE %2 = ? COLLATE BINARY").arg(parts[0], parts[1]);
            QVERIFY2(e.compte(sql, {nou}) == parts[2].toInt() && e.compte(sql, {nom}) == 0, qPrintable(c));
        }
    }

    void deleteRefusedWhileNamed_data()
    {
        QTest::addColumn<QString>("tipus");
        QTest::addColumn<QString>("nom");
        QTest::addColumn<QString>("missatge");
        QTest::addColumn<QString>("abans"); // the holders checked before this one, cleared first
        QTest::addColumn<QString>("resta"); // every holder left, cleared before the delete that goes through
        const QString client = QStringLiteral("DELETE FROM Llocs; DELETE FROM Xecs; DELETE FROM Pagaments");
        const QString marta = QStringLiteral("DELETE FROM Feines; DELETE FROM Recursos_Components; "
                                             "UPDATE Llocs SET recursos_nom = NULL; DELETE FROM Hores_Fetes");
        const QString servei = QStringLiteral("DELETE FROM Llocs_Serveis; DELETE FROM Feines_Detall");
        QTest::newRow("client with places") << "client" << "Can Pep" << "El client té llocs. No es pot eliminar" << "" << client;
        QTest::newRow("place with jobs") << "lloc" << "OFICINA" << "El lloc té feines. No es pot eliminar" << ""
                                         << "DELETE FROM Feines";
        QTest::newRow("client with vouchers") << "client" << "can pep" << "El client té xecs. No es pot eliminar" << "DELETE FROM Llocs" << client;
        QTest::newRow("client with payments") << "client" << "Can Pep" << "El client té pagaments a compte. No es pot eliminar"
                                              << "DELETE FROM Llocs; DELETE FROM Xecs" << client;
        QTest::newRow("worker with jobs") << "recurs" << "MARTA" << "El recurs té feines. No es pot eliminar" << "" << marta;
        QTest::newRow("worker in a group")
            << "recurs" << "Marta" << "El recurs és membre d'un grup. No es pot eliminar" << "DELETE FROM Feines" << marta;
        QTest::newRow("worker a place's default") << "recurs" << "Marta" << "El recurs és el recurs per defecte d'un lloc. No es pot eliminar"
                                                  << "DELETE FROM Feines; DELETE FROM Recursos_Components" << marta;
        QTest::newRow("worker with overtime")
            << "recurs" << "Marta" << "El recurs té hores extra. No es pot eliminar"
            << "DELETE FROM Feines; DELETE FROM Recursos_Components; UPDATE Llocs SET recursos_nom = NULL" << marta;
        QTest::newRow("service on place lines")
            << "servei" << "Neteja" << "El servei és als serveis d'un lloc. No es pot eliminar" << "" << servei;
        QTest::newRow("service on job lines") << "servei" << "neteja" << "El servei és a les línies d'una feina. No es pot eliminar"
                                              << "DELETE FROM Llocs_Serveis" << servei;
    }
    void deleteRefusedWhileNamed()
    {
        QFETCH(QString, tipus);
        QFETCH(QString, nom);
        QFETCH(QString, missatge);
        QFETCH(QString, abans);
        QFETCH(QString, resta);
        EntornMestres e;
        e.db().execScript(QString::fromUtf8(totesLesReferencies) + abans);
        const QString instantania = e.instantania();
        QCOMPARE(actua(e, tipus, nom), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{missatge});
        QCOMPARE(e.instantania(), instantania);
        e.db().execScript(resta);
        QCOMPARE(actua(e, tipus, nom), Resultat::Fet);
    }
};

QTEST_GUILESS_MAIN(TestReferencies)
#include "tst_referencies.moc"
