// The billing sheet's job actions reach the undo stack (Space, Delete) and come back whole; the commit of a month empties the stack, since a billed month is not taken back.

#include "billing/controlador_facturacio.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

const QDate kAvui(2026, 3, 15);
const QString kEstel = QStringLiteral("L'Estel");

QStringList estat(Db &db)
{
    return dades_prova::files(db, "SELECT 'F', * FROM Feines ORDER BY feines_id")
        + dades_prova::files(db, "SELECT 'D', * FROM Feines_Detall ORDER BY feines_id, rowid")
        + dades_prova::files(db, "SELECT 'X', * FROM Xecs ORDER BY xecs_id");
}

} // namespace

class TestDesferFacturacio : public QObject {
    Q_OBJECT

private slots:
    void accionsDelFull()
    {
        DirectoriProva dir;
        auto sessio = dir.obreSessio();
        Db &db = sessio->db();
        dades_prova::client(db, kEstel);
        dades_prova::recurs(db, "Anna", 0x00F5D7A8);
        dades_prova::lloc(db, "Escala A", 60, "Anna", kEstel);
        const int feta = dades_prova::feina(db, "Escala A", QDate(2026, 3, 3), "09:00", "11:00", "Anna", true);
        const int pendent = dades_prova::feina(db, "Escala A", QDate(2026, 3, 10), "09:00", "10:00", "Anna");
        for (int id : {feta, pendent})
            db.query("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_unitat,"
                     " feines_detall_preu_un) VALUES (?, 'Neteja', 2, 'h', 12)").bind(id).exec();
        dades_prova::xec(db, 5, kEstel, feta, QDate(2026, 3, 20));
        InteraccioGuio ui;
        ControladorFacturacio ctl(*sessio, ui);
        ctl.setAvui(kAvui);
        QString mes = "03/2026";
        QVERIFY(ctl.surtMes(mes));
        ctl.triaClient(kEstel);
        auto fila = [&](int id) { // the sheet's row of a job
            const GraellaFacturacio &g = ctl.facturacio().FacturaGrid();
            int r = 0;
            while (r < g.files() && g.text(r, 0) != QString::number(id))
                ++r;
            return r;
        };
        const QStringList inicial = estat(db);
        PilaDesfer &pila = sessio->Desfer;

        ctl.teclaFeina(fila(feta), ControladorFacturacio::Tecla::Espai); // not done: vouchers freed
        QCOMPARE(pila.textDesfer(), QString("marcar no feta 'Escala A' del 03/03"));
        ui.respostes << true;
        ctl.teclaFeina(fila(pendent), ControladorFacturacio::Tecla::Suprimir);
        QCOMPARE(pila.textDesfer(), QString("eliminar 'Escala A' del 10/03"));
        QCOMPARE(pila.mida(), 2);
        while (pila.potDesfer())
            QCOMPARE(pila.desfes(), QString());
        QCOMPARE(estat(db), inicial);

        ui.respostes = {true, true, true};
        QVERIFY(ctl.factura());
        QVERIFY(!pila.potRefer());
        QCOMPARE(pila.historial().last().text, QString("facturació de L'Estel del mes 03/2026"));
    }
};

QTEST_GUILESS_MAIN(TestDesferFacturacio)
#include "tst_desfer_facturacio.moc"
