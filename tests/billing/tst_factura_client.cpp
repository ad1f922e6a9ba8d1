// Writing a month's billing: the commit's stamps and settlements, re-stamping, the refusal that
// writes nothing when a job or voucher has gone; the payment on account and its rounding; and the
// Delete key on a voucher row; the sheet's job actions on the undo stack.

#include "billing/controlador_facturacio.h"
#include "billing/factura_client.h"
#include "billing/facturacio.h"
#include "billing/pagaments.h"
#include "billing/xecs_facturacio.h"
#include "masterdata/xecs_client.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

const QString kClient = QStringLiteral("Cal Pep");
const QString kMes = QStringLiteral("03/2009");

QStringList files(Db &db, const char *sql)
{
    return dades_prova::files(db, QString::fromUtf8(sql));
}

} // namespace

class TestFacturaClient : public QObject {
    Q_OBJECT

    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_s;
    InteraccioGuio m_io;

    Db &db() { return m_s->db(); }

    void exec(const QString &sql) { db().exec(sql); }

private slots:
    // Place A without fee: job 1 done (2 voucher hours), job 2 not done. Place B with a fee of
    // 45: job 3 done. Vouchers 10 and 11 pay job 1's hours; voucher 12 finds no hour.
    void init()
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_s = m_dir->obreSessio();
        m_io = InteraccioGuio();
        Configuracio &cfg = m_s->cfg();
        cfg.ServeiXecs = QStringLiteral("Neteja");
        cfg.ValorXec = 10;
        cfg.CostHoraXec = 2;
        cfg.MaxXecsMes = 4;
        dades_prova::client(db(), kClient);
        dades_prova::lloc(db(), QStringLiteral("A"), 60, QString(), kClient);
        dades_prova::lloc(db(), QStringLiteral("B"), 60, QString(), kClient);
        exec(QStringLiteral("UPDATE Llocs SET llocs_quota = 45 WHERE llocs_nom = 'B'"));
        for (const auto &[lloc, dia, feta] : {std::tuple{"A", 2, true}, {"A", 3, false}, {"B", 4, true}})
            dades_prova::feina(db(), QString::fromUtf8(lloc), QDate(2009, 3, dia), QStringLiteral("09:00"),
                               QStringLiteral("10:00"), QString(), feta);
        exec(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat, feines_detall_preu_un)"
                            " VALUES (1, 'Neteja', 2, 12), (2, 'Neteja', 1, 12), (3, 'Vidres', 1, 30)"));
        for (int x : {10, 11, 12})
            dades_prova::xec(db(), x, kClient, 0, QDate());
    }

    void estampaIReestampa()
    {
        Facturacio f(db(), m_s->cfg());
        f.Carrega_Facturacio({kMes, kClient, false, QString()});
        QCOMPARE(f.totals().TotalFacturar, QStringLiteral("53,00")); // 24 + 4 + 45 - 20

        ResultatFactura r = Factura_Client(f, m_io, QDate(2009, 4, 2));
        QVERIFY(r.fet);
        QCOMPARE(r.feines, 2);
        QCOMPARE(r.xecs, 2);
        QVERIFY(m_io.crides.isEmpty());
        QCOMPARE(files(db(), "SELECT feines_id, feines_data_factura, feines_quota FROM Feines ORDER BY 1"),
                 (QStringList{"1|2009-04-02|0", "2|NULL|0", "3|2009-04-02|45"}));
        QCOMPARE(files(db(), "SELECT xecs_id, feines_id, xecs_data_liquidat FROM Xecs ORDER BY 1"),
                 (QStringList{"10|1|2009-04-02", "11|1|2009-04-02", "12|NULL|NULL"}));
        // The sheets were rebuilt: the billing date shows and the settled vouchers keep their hours.
        QCOMPARE(f.FacturaGrid().text(0, ColDataFactura), QStringLiteral("02/04/2009"));
        QCOMPARE(f.totals().TotalFacturar, QStringLiteral("53,00"));

        // The place's fee changes; a second commit re-stamps everything with its own day and the
        // fee the job was billed with.
        exec(QStringLiteral("UPDATE Llocs SET llocs_quota = 50 WHERE llocs_nom = 'B'"));
        f.Carrega_Facturacio();
        r = Factura_Client(f, m_io, QDate(2009, 4, 5));
        QVERIFY(r.fet);
        QCOMPARE(files(db(), "SELECT feines_id, feines_data_factura, feines_quota FROM Feines ORDER BY 1"),
                 (QStringList{"1|2009-04-05|0", "2|NULL|0", "3|2009-04-05|45"}));
        QCOMPARE(files(db(), "SELECT xecs_id, feines_id, xecs_data_liquidat FROM Xecs ORDER BY 1"),
                 (QStringList{"10|1|2009-04-05", "11|1|2009-04-05", "12|NULL|NULL"}));

        // Without a client there is nothing to bill.
        f.Carrega_Facturacio({kMes, QString(), false, QString()});
        QVERIFY(!Factura_Client(f, m_io, QDate(2009, 4, 9)).fet);
        QCOMPARE(dades_prova::valor(db(), QStringLiteral("SELECT COUNT(*) FROM Feines WHERE feines_data_factura = '2009-04-09'")), 0);
    }

    void totOResRes_data()
    {
        QTest::addColumn<QString>("esborra");
        QTest::addColumn<QString>("missatge");
        QTest::newRow("the last job") << "DELETE FROM Feines WHERE feines_id = 3" << "ERROR: Feina 3 no trobada";
        QTest::newRow("a voucher") << "DELETE FROM Xecs WHERE xecs_id = 11" << "ERROR: Xec 11 no trobat";
    }

    // A row that has gone since the build stops the commit and nothing at all is written.
    void totOResRes()
    {
        QFETCH(QString, esborra);
        QFETCH(QString, missatge);
        Facturacio f(db(), m_s->cfg());
        f.Carrega_Facturacio({kMes, kClient, false, QString()});
        exec(esborra);
        const QStringList feines = files(db(), "SELECT * FROM Feines ORDER BY 1");
        const QStringList xecs = files(db(), "SELECT * FROM Xecs ORDER BY 1");

        const ResultatFactura r = Factura_Client(f, m_io, QDate(2009, 4, 2));
        QVERIFY(!r.fet);
        QCOMPARE(r.missatge, missatge);
        QCOMPARE(m_io.crides.size(), 1);
        QCOMPARE(m_io.crides[0].titol, QStringLiteral("ERROR"));
        QCOMPARE(m_io.crides[0].text, missatge);
        QCOMPARE(files(db(), "SELECT * FROM Feines ORDER BY 1"), feines);
        QCOMPARE(files(db(), "SELECT * FROM Xecs ORDER BY 1"), xecs);
        QCOMPARE(db().transactionDepth(), 0);
    }

    // The payment on account as typed: rounded half to the even cent, removed by zero or an
    // empty field, kept when the text is not an amount; another month and client never touched.
    void pagaments()
    {
        const QString client = QStringLiteral("L'Estel");
        const struct {
            const char *abans, *entrat;
            double resultat;
            const char *despres, *mostrat;
        } casos[] = {
            {"", "0,125", 0.12, "0.12", "0,12"}, {"150.46", "0", 0, "", ""}, {"100", "  ", 0, "", ""},
            {"100", "abc", 0, "100", "100,00"}, {"100", "75", 75, "75", "75,00"},
        };
        for (const auto &c : casos) {
            db().execScript(QStringLiteral("DELETE FROM Pagaments; INSERT INTO Pagaments VALUES ('L''Estel', '04/2009', 7), ('Altre', '03/2009', 8)"));
            if (*c.abans)
                db().query(QStringLiteral("INSERT INTO Pagaments VALUES (?, ?, ?)")).bind(client).bind(kMes).bind(QString(c.abans).toDouble()).exec();
            QCOMPARE(Grava_Pagament(db(), kMes, client, c.entrat), c.resultat);
            QCOMPARE(files(db(), "SELECT pagaments_import FROM Pagaments WHERE pagaments_mes = '03/2009' AND clients_nom <> 'Altre'"),
                     *c.despres ? QStringList{c.despres} : QStringList());
            QCOMPARE(dades_prova::valor(db(), QStringLiteral("SELECT COUNT(*) FROM Pagaments")), *c.despres ? 3 : 2);
            QCOMPARE(textPagament(Pagament_Mes(db(), kMes, QStringLiteral("l'estel"))), QString(c.mostrat));
        }
    }

    // Delete on the voucher sheet: a free voucher goes at once, a settled one asks first.
    void eliminaXecDelFull()
    {
        exec(QStringLiteral("UPDATE Xecs SET xecs_data_liquidat = '2009-03-02', feines_id = 1 WHERE xecs_id = 10"));
        Facturacio f(db(), m_s->cfg());
        f.Carrega_Facturacio({kMes, kClient, false, QString()});
        GestioXecs gestio(*m_s, m_io);
        const auto fila = [&](qint64 xec) {
            for (int r = 0; r < f.XecsGrid().files(); ++r)
                if (f.xecFila(r) == xec)
                    return r;
            return -1;
        };
        // The settled one asks (No keeps it); the free one goes at once and the sheet is rebuilt.
        m_io.respostes = {false};
        QCOMPARE(EliminarXecFila(f, gestio, fila(10)), Resultat::Res);
        QCOMPARE(EliminarXecFila(f, gestio, fila(12)), Resultat::Fet);
        QVERIFY(m_io.crides.size() == 1 && fila(12) == -1);
        QCOMPARE(files(db(), "SELECT xecs_id FROM Xecs ORDER BY 1"), (QStringList{"10", "11"}));
    }
    // Space and Delete on the sheet's jobs reach the undo stack and come back whole; the commit
    // of the month empties it, since a billed month is not taken back.
    void desferAccionsDelFull()
    {
        exec(QStringLiteral("UPDATE Xecs SET feines_id = 1, xecs_data_liquidat = '2009-03-20' WHERE xecs_id = 10"));
        dades_prova::recurs(db(), QStringLiteral("Anna"), 0x00F5D7A8);
        exec(QStringLiteral("UPDATE Feines SET recursos_nom = 'Anna'")); // a done job needs one
        ControladorFacturacio ctl(*m_s, m_io);
        ctl.setAvui(QDate(2009, 4, 2));
        QString mes = kMes;
        QVERIFY(ctl.surtMes(mes));
        ctl.triaClient(kClient);
        const auto fila = [&](int id) {
            const GraellaFacturacio &g = ctl.facturacio().FacturaGrid();
            int r = 0;
            while (r < g.files() && g.text(r, 0) != QString::number(id))
                ++r;
            return r;
        };
        const auto estat = [&] { return files(db(), "SELECT * FROM Feines ORDER BY 1") + files(db(), "SELECT * FROM Feines_Detall ORDER BY feines_id, serveis_nom")
                + files(db(), "SELECT * FROM Xecs ORDER BY 1"); };
        const QStringList inicial = estat();
        PilaDesfer &pila = m_s->Desfer;
        ctl.teclaFeina(fila(1), ControladorFacturacio::Tecla::Espai); // not done: its voucher freed
        QCOMPARE(pila.textDesfer(), QStringLiteral("marcar no feta 'A' del 02/03"));
        m_io.respostes = {true};
        ctl.teclaFeina(fila(2), ControladorFacturacio::Tecla::Suprimir);
        QCOMPARE(pila.textDesfer(), QStringLiteral("eliminar 'A' del 03/03"));
        while (pila.potDesfer())
            QCOMPARE(pila.desfes(), QString());
        QCOMPARE(estat(), inicial);
        m_io.respostes = {true, true, true};
        QVERIFY(ctl.factura());
        QVERIFY(!pila.potRefer());
        QCOMPARE(pila.historial().last().text, QStringLiteral("facturació de Cal Pep del mes 03/2009"));
    }
};

QTEST_GUILESS_MAIN(TestFacturaClient)
#include "tst_factura_client.moc"
