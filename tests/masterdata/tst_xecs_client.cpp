// A client's vouchers as the clients tab keeps them: numbers typed by the user and unique over
// every client, the list with the settled ones marked, value changes, and deletion that asks
// first when the voucher was already spent.
#include "masterdata/xecs_client.h"
#include "mestres_proves.h"

#include <QtTest>

using namespace dades_prova;

class TestXecsClient : public QObject {
    Q_OBJECT

private slots:
    void afegirXecs()
    {
        EntornMestres e;
        client(e.db(), QStringLiteral("L'Estel"));
        client(e.db(), QStringLiteral("Altre"));
        e.cfg().ValorXec = 12.5;
        GestioXecs g(*e.sessio, e.io);

        FitxaXec f = g.fitxaBuida();
        QCOMPARE(f.valor, QStringLiteral("12,50")); // the configured value is offered
        f.id = QStringLiteral("  0012 ");
        QCOMPARE(g.AfegirXec(QStringLiteral("L'Estel"), f), Resultat::Fet);
        QCOMPARE(f.id, QStringLiteral("12"));
        QCOMPARE(e.text("SELECT clients_nom FROM Xecs WHERE xecs_id = 12"), QStringLiteral("L'Estel"));
        QCOMPARE(e.text("SELECT xecs_valor FROM Xecs WHERE xecs_id = 12"), QStringLiteral("12.5"));
        // The database dates the hand-in; nothing about settlement is written.
        QCOMPARE(e.text("SELECT xecs_data_entrega FROM Xecs"), QDate::currentDate().toString(Qt::ISODate));
        QCOMPARE(e.text("SELECT COALESCE(xecs_data_liquidat, feines_id, 'lliure') FROM Xecs"), QStringLiteral("lliure"));
        QVERIFY(e.sessio->RefrescarFacturacio);
        QVERIFY(e.missatges().isEmpty());

        const QString abans = e.instantania();
        // Numbers are unique over every client.
        for (const QString &client : {QStringLiteral("L'Estel"), QStringLiteral("Altre")}) {
            FitxaXec repetit{QStringLiteral("12"), QStringLiteral("10"), {}, {}, {}};
            QCOMPARE(g.AfegirXec(client, repetit), Resultat::Refusat);
            QCOMPARE(e.missatges(), QStringList{QStringLiteral("El xec ja existeix")});
        }
        struct Cas {
            QString id, valor, missatge;
        };
        const QList<Cas> casos = {
            {QStringLiteral("12a"), QStringLiteral("abc"), QStringLiteral("El Id. del xec ha de ser numèric")},
            {QStringLiteral("99999999999"), QStringLiteral("1"), QStringLiteral("El Id. del xec ha de ser numèric")},
            {QStringLiteral("13"), QString(), QStringLiteral("Cal informar el valor del xec")},
            {QStringLiteral("13"), QStringLiteral("abc"), QStringLiteral("Cal informar el valor del xec")},
            // the number is checked before the value, and before its existence
            {QStringLiteral("12"), QStringLiteral(" "), QStringLiteral("Cal informar el valor del xec")},
        };
        for (const Cas &c : casos) {
            FitxaXec x{c.id, c.valor, {}, {}, {}};
            QCOMPARE(g.AfegirXec(QStringLiteral("Altre"), x), Resultat::Refusat);
            QCOMPARE(e.missatges(), QStringList{c.missatge});
        }
        QCOMPARE(e.instantania(), abans);

        // No number: nothing said (the page puts the focus back in the field).
        FitxaXec buit{QStringLiteral("  "), QStringLiteral("1"), {}, {}, {}};
        QCOMPARE(g.AfegirXec(QStringLiteral("Altre"), buit), Resultat::Res);
        QVERIFY(e.missatges().isEmpty());
    }

    void llistaDelClient()
    {
        EntornMestres e;
        client(e.db(), QStringLiteral("Client"));
        client(e.db(), QStringLiteral("Altre"));
        const int feina7 = feina(e.db(), QStringLiteral("Casa"), QDate(2009, 3, 5), QStringLiteral("09:00"), QStringLiteral("10:00"));
        xec(e.db(), 7, QStringLiteral("Client"), feina7, QDate(2009, 3, 5));
        xec(e.db(), 9, QStringLiteral("Client"), 0, QDate());
        xec(e.db(), 8, QStringLiteral("Altre"), 0, QDate());
        e.db().exec(QStringLiteral("UPDATE Xecs SET xecs_data_entrega = '2009-02-27' WHERE xecs_id = 7"));
        GestioXecs g(*e.sessio, e.io);
        g.setAvui(QDate(2009, 3, 20));

        const QStringList items = g.Carrega_Xecs_Client(QStringLiteral("CLIENT"));
        QCOMPARE(items, (QStringList{QStringLiteral("9             "), QStringLiteral("7 * 05/03/2009")}));
        QCOMPARE(g.numeroItem(items[0]), 9);
        QCOMPARE(g.numeroItem(items[1]), 7);

        FitxaXec f;
        QVERIFY(g.carrega(7, f));
        QCOMPARE(f.id, QStringLiteral("7"));
        QCOMPARE(f.dataEntrega, QStringLiteral("27/02/2009"));
        QCOMPARE(f.dataLiquidat, QStringLiteral("05/03/2009"));
        QCOMPARE(f.idFeina, QString::number(feina7));
        QCOMPARE(f.valor, QStringLiteral("10,00"));
        QVERIFY(g.carrega(9, f));
        QVERIFY(f.dataLiquidat.isEmpty() && f.idFeina.isEmpty());

        // Another mark changes where the number ends.
        e.cfg().MarcaLlista = QStringLiteral(" <liq> ");
        const QStringList marcats = g.Carrega_Xecs_Client(QStringLiteral("Client"));
        QCOMPARE(marcats[1], QStringLiteral("7 <liq> 05/03/2009"));
        QCOMPARE(marcats[0].size(), marcats[1].size());
        QCOMPARE(g.numeroItem(marcats[1]), 7);
        QCOMPARE(g.numeroItem(marcats[0]), 9);
    }

    void modificarIEliminar()
    {
        EntornMestres e;
        client(e.db(), QStringLiteral("Client"));
        xec(e.db(), 7, QStringLiteral("Client"), 0, QDate(2009, 3, 5));
        xec(e.db(), 9, QStringLiteral("Client"), 0, QDate());
        e.cfg().ValorXec = 10;
        GestioXecs g(*e.sessio, e.io);

        // A settled voucher's value may still change; the fields are emptied afterwards.
        FitxaXec f{QStringLiteral("007"), QStringLiteral("11,75"), {}, {}, {}};
        QCOMPARE(g.ModificarXec(f), Resultat::Fet);
        QCOMPARE(e.text("SELECT xecs_valor FROM Xecs WHERE xecs_id = 7"), QStringLiteral("11.75"));
        QCOMPARE(e.text("SELECT xecs_data_liquidat FROM Xecs WHERE xecs_id = 7"), QStringLiteral("2009-03-05"));
        QVERIFY(f.id.isEmpty());
        QCOMPARE(f.valor, QStringLiteral("10,00"));

        FitxaXec absent{QStringLiteral("8"), QStringLiteral("1"), {}, {}, {}};
        QCOMPARE(g.ModificarXec(absent), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El xec no existeix")});
        QCOMPARE(g.EliminarXec(absent), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El xec no existeix")});
        FitxaXec senseValor{QStringLiteral("9"), QString(), {}, {}, {}};
        QCOMPARE(g.ModificarXec(senseValor), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("Cal informar el valor del xec")});

        // A free voucher goes without a question; a settled one asks, and No keeps it.
        FitxaXec lliure{QStringLiteral("9"), {}, {}, {}, {}};
        QCOMPARE(g.EliminarXec(lliure), Resultat::Fet);
        QVERIFY(e.missatges().isEmpty());
        FitxaXec liquidat{QStringLiteral("7"), {}, {}, {}, {}};
        e.io.respostes = {false};
        QCOMPARE(g.EliminarXec(liquidat), Resultat::Res);
        QCOMPARE(e.io.crides.size(), 1);
        QCOMPARE(e.io.crides[0].titol, QStringLiteral("CONFIRMACIO"));
        QCOMPARE(e.io.crides[0].text, QStringLiteral("El xec està liquidat. Eliminar igualment?"));
        e.missatges();
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Xecs"), 1);
        e.io.respostes = {true};
        QCOMPARE(g.EliminarXec(liquidat), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Xecs"), 0);
    }
};

QTEST_GUILESS_MAIN(TestXecsClient)
#include "tst_xecs_client.moc"
