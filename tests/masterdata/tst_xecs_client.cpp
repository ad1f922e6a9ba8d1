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
        client(e.db(), "L'Estel");
        client(e.db(), "Altre");
        e.cfg().ValorXec = 12.5;
        GestioXecs g(*e.sessio, e.io);
        FitxaXec f = g.fitxaBuida();
        QCOMPARE(f.valor, QString("12,50")); // the configured value is offered
        f.id = "  0012 ";
        ESPERA(e, g.AfegirXec("L'Estel", f), Resultat::Fet, "");
        QCOMPARE(f.id, QString("12"));
        // The database dates the hand-in; nothing about settlement is written.
        QCOMPARE(files(e.db(), "SELECT xecs_id, clients_nom, xecs_valor, xecs_data_entrega, COALESCE(xecs_data_liquidat, feines_id)"
                               " FROM Xecs"),
                 QStringList{"12|L'Estel|12.5|" + QDate::currentDate().toString(Qt::ISODate) + "|NULL"});
        QVERIFY(e.sessio->RefrescarFacturacio);

        const QString abans = e.instantania();
        const struct {
            const char *id, *valor, *missatge;
        } casos[] = {
            {"12", "10", "El xec ja existeix"}, // unique over every client
            {"12a", "abc", "El Id. del xec ha de ser numèric"},
            {"99999999999", "1", "El Id. del xec ha de ser numèric"},
            {"13", "abc", "Cal informar el valor del xec"},
            {"12", " ", "Cal informar el valor del xec"}, // the value before the number's existence
            {"  ", "1", ""},                              // no number: nothing said
        };
        for (const auto &c : casos) {
            FitxaXec x{c.id, c.valor, {}, {}, {}};
            ESPERA(e, g.AfegirXec("Altre", x), *c.missatge ? Resultat::Refusat : Resultat::Res, c.missatge);
        }
        QCOMPARE(e.instantania(), abans);
    }

    void llistaDelClient()
    {
        EntornMestres e;
        client(e.db(), "Client");
        client(e.db(), "Altre");
        const int feina7 = feina(e.db(), "Casa", QDate(2009, 3, 5), "09:00", "10:00");
        xec(e.db(), 7, "Client", feina7, QDate(2009, 3, 5));
        xec(e.db(), 9, "Client", 0, QDate());
        xec(e.db(), 8, "Altre", 0, QDate());
        e.db().exec("UPDATE Xecs SET xecs_data_entrega = '2009-02-27' WHERE xecs_id = 7");
        GestioXecs g(*e.sessio, e.io);
        g.setAvui(QDate(2009, 3, 20));
        const QStringList items = g.Carrega_Xecs_Client("CLIENT");
        QCOMPARE(items, (QStringList{"9             ", "7 * 05/03/2009"}));
        QCOMPARE(g.numeroItem(items[0]) * 10 + g.numeroItem(items[1]), 97);
        FitxaXec f;
        QVERIFY(g.carrega(7, f));
        QCOMPARE(QStringList({f.id, f.dataEntrega, f.dataLiquidat, f.idFeina, f.valor}).join('|'),
                 "7|27/02/2009|05/03/2009|" + QString::number(feina7) + "|10,00");
    }

    void modificarIEliminar()
    {
        EntornMestres e;
        client(e.db(), "Client");
        xec(e.db(), 7, "Client", 0, QDate(2009, 3, 5));
        xec(e.db(), 9, "Client", 0, QDate());
        e.cfg().ValorXec = 10;
        GestioXecs g(*e.sessio, e.io);
        // A settled voucher's value may still change; the fields are emptied afterwards.
        FitxaXec f{"007", "11,75", {}, {}, {}};
        QCOMPARE(g.ModificarXec(f), Resultat::Fet);
        QCOMPARE(e.text("SELECT xecs_valor || '/' || xecs_data_liquidat FROM Xecs WHERE xecs_id = 7"), QString("11.75/2009-03-05"));
        QCOMPARE(f.id + '|' + f.valor, QString("|10,00"));
        FitxaXec absent{"8", "1", {}, {}, {}}, senseValor{"9", QString(), {}, {}, {}};
        ESPERA(e, g.ModificarXec(absent), Resultat::Refusat, "El xec no existeix");
        ESPERA(e, g.ModificarXec(senseValor), Resultat::Refusat, "Cal informar el valor del xec");
        // A free voucher goes without a question; a settled one asks, and No keeps it.
        FitxaXec lliure{"9", {}, {}, {}, {}}, liquidat{"7", {}, {}, {}, {}};
        ESPERA(e, g.EliminarXec(lliure), Resultat::Fet, "");
        e.io.respostes = {false};
        QCOMPARE(g.EliminarXec(liquidat), Resultat::Res);
        QCOMPARE(e.missatges("pregunta"), QStringList{"El xec està liquidat. Eliminar igualment?"});
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Xecs"), 1);
        e.io.respostes = {true};
        QCOMPARE(g.EliminarXec(liquidat), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Xecs"), 0);
    }
};

QTEST_GUILESS_MAIN(TestXecsClient)
#include "tst_xecs_client.moc"
