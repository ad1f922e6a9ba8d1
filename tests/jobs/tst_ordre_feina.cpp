// Undo and redo of job changes: each kind of change taken back and done again leaves every row of
// Feines, Feines_Detall and Xecs exactly as it was (ids, lines, billing stamp, fee, vouchers
// included); a slot taken since is refused with the engine's message and the command stays; a job
// changed since by something else is refused instead of being overwritten.

#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "jobs/ordre_feina.h"
#include "support/entorn_proves.h"

#include <QtTest>

using namespace dades_prova;

namespace {

const QDate kDia(2024, 5, 10);

enum Cas { Creada, Moguda, Esborrada, Feta, NoFeta, Editada };

// Every row the commands may touch, Null told apart from "".
QStringList estat(Db &db)
{
    return files(db, QStringLiteral("SELECT 'F', * FROM Feines ORDER BY feines_id"))
        + files(db, QStringLiteral("SELECT 'D', * FROM Feines_Detall ORDER BY feines_id, rowid"))
        + files(db, QStringLiteral("SELECT 'X', * FROM Xecs ORDER BY xecs_id"));
}

struct Entorn {
    BaseProva b;
    PilaDesfer pila;
    int oficina = 0; // not done, Marta, two lines, settles voucher 7 (left over from an old bill)
    int escala = 0;  // done and billed: stamp, fee, vouchers 1 and 2

    Entorn()
    {
        b.cfg.PermetSolaparLlocs = false;
        recurs(b.db, "Marta", 0x0000FF);
        recurs(b.db, "Oriol", 0x00FF00);
        servei(b.db, "Neteja", 30, false, 12.5, "h");
        lloc(b.db, "Oficina", 60, "Marta", "Comunitat");
        lloc(b.db, "Escala", 60, "Oriol", "Comunitat");
        llocServei(b.db, "Oficina", "Neteja", 2, 11.0, "Vidres");
        oficina = feina(b.db, "Oficina", kDia, "09:00", "10:00", "Marta");
        b.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio,"
                                  " feines_detall_quantitat, feines_detall_unitat, feines_detall_preu_un)"
                                  " VALUES (?, 'Neteja', 'Vidres', 2, 'h', 11), (?, 'Neteja', NULL, 1, '', 0)"))
            .bind(oficina).bind(oficina).exec();
        escala = feina(b.db, "Escala", kDia, "11:00", "12:00", "Oriol", true);
        b.db.query(QStringLiteral("UPDATE Feines SET feines_data_factura = '2024-05-31', feines_quota = 25,"
                                  " feines_observacions = '' WHERE feines_id = ?")).bind(escala).exec();
        xec(b.db, 1, "Comunitat", escala, QDate(2024, 5, 31));
        xec(b.db, 2, "Comunitat", escala, QDate(2024, 5, 31));
        xec(b.db, 7, "Comunitat", oficina, QDate(2024, 4, 30));
    }

    // The change as the agenda, the billing sheet or the job editor makes it.
    void fes(Cas cas)
    {
        MotorFeines m(b.db, b.cfg);
        const int id = cas == Creada ? 0 : cas == NoFeta ? escala : oficina;
        CanviFeina canvi(&pila, b.db, b.cfg, id);
        Feina f;
        carregaFeina(b.db, id, f);
        CanviFeina::Tipus tipus = CanviFeina::Tipus::Modificada;
        Transaction t(b.db); // the editor stores the job and its lines together
        if (cas == Creada) {
            f.llocs_nom = "Oficina";
            f.feines_data = kDia.addDays(1);
            f.feines_hora_inici = QStringLiteral("09:00");
            m.Grava_Feina(f, false);
            tipus = CanviFeina::Tipus::Creada;
        } else if (cas == Esborrada) {
            m.Borra_Feina(f);
            tipus = CanviFeina::Tipus::Esborrada;
        } else {
            if (cas == Moguda) {
                f.feines_data = kDia.addDays(3);
                f.feines_hora_inici = QStringLiteral("15:00");
                f.feines_hora_fi = QStringLiteral("16:00");
                tipus = CanviFeina::Tipus::Moguda;
            } else if (cas == Editada) {
                f.feines_observacions = QStringLiteral("Porta del darrere");
                f.feines_hora_fi = QStringLiteral("10:30");
                b.db.query(QStringLiteral("UPDATE Feines_Detall SET feines_detall_quantitat = 3 WHERE feines_id = ?"))
                    .bind(f.feines_id).exec();
            } else {
                f.feines_feta = !f.feines_feta;
                tipus = CanviFeina::Tipus::Feta;
            }
            m.Modifica_Feina(f);
        }
        t.commit();
        QCOMPARE(f.missatge, QString());
        canvi.registra(f, tipus);
    }
};

} // namespace

class TestOrdreFeina : public QObject {
    Q_OBJECT

private slots:
    void desferIRefer_data()
    {
        QTest::addColumn<int>("cas");
        QTest::addColumn<QString>("text");
        QTest::newRow("place dropped") << int(Creada) << "afegir 'Oficina' al 11/05";
        QTest::newRow("job dragged") << int(Moguda) << "moure 'Oficina' al 13/05 15:00";
        QTest::newRow("deleted with a settled voucher") << int(Esborrada) << "eliminar 'Oficina' del 10/05";
        QTest::newRow("billed job marked not done") << int(NoFeta) << "marcar no feta 'Escala' del 10/05";
        QTest::newRow("editor: job and lines") << int(Editada) << "modificar 'Oficina' del 10/05";
    }

    // Undo gives back every row as it was, redo every row as the change left it.
    void desferIRefer()
    {
        QFETCH(int, cas);
        QFETCH(QString, text);
        Entorn e;
        const QStringList abans = estat(e.b.db);
        e.fes(Cas(cas));
        const QStringList despres = estat(e.b.db);
        QVERIFY(despres != abans);
        QCOMPARE(e.pila.textDesfer(), text);
        QCOMPARE(e.pila.desfes(), QString());
        QCOMPARE(estat(e.b.db), abans);
        QCOMPARE(e.pila.textRefer(), text);
        QCOMPARE(e.pila.refes(), QString());
        QCOMPARE(estat(e.b.db), despres);
    }

    void refusat_data()
    {
        QTest::addColumn<int>("cas");
        QTest::addColumn<bool>("refer");      // the refused step is the redo after an undo
        QTest::addColumn<QString>("entremig"); // what happens meanwhile (%1 = the Oficina job)
        QTest::addColumn<QString>("missatge");

        // Slots taken since: the engine's own refusal.
        QTest::newRow("worker took the old slot") << int(Moguda) << false
            << "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
               " VALUES ('Escala', '2024-05-10', '09:30', '10:30', 'Marta')"
            << "Solapament de recursos: Marta";
        QTest::newRow("redo of a drop after the worker was booked") << int(Creada) << true
            << "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
               " VALUES ('Escala', '2024-05-11', '09:00', '10:00', 'Marta')"
            << "Solapament de recursos: Marta";

        // Changed by someone else: never overwritten.
        const QString canviat = QStringLiteral("La feina ha canviat per una altra via");
        QTest::newRow("freed voucher used by another job") << int(NoFeta) << false
            << "UPDATE Xecs SET feines_id = %1, xecs_data_liquidat = '2024-06-30' WHERE xecs_id = 1" << canviat;
    }

    // A refused step changes nothing and stays on the stack, ready for when the way is clear.
    void refusat()
    {
        QFETCH(int, cas);
        QFETCH(bool, refer);
        QFETCH(QString, entremig);
        QFETCH(QString, missatge);
        Entorn e;
        const QStringList original = estat(e.b.db);
        e.fes(Cas(cas));
        if (refer)
            QCOMPARE(e.pila.desfes(), QString());
        e.b.db.exec(entremig.arg(e.oficina));
        const QStringList interferit = estat(e.b.db);
        const QString text = refer ? e.pila.textRefer() : e.pila.textDesfer();

        const QString error = refer ? e.pila.refes() : e.pila.desfes();
        QVERIFY2(error.startsWith(missatge), qPrintable(error));
        QCOMPARE(estat(e.b.db), interferit);
        QCOMPARE(refer ? e.pila.textRefer() : e.pila.textDesfer(), text);

        if (missatge.startsWith("Solapament")) { // the slot freed again: the same step goes through
            e.b.db.exec(QStringLiteral("DELETE FROM Feines WHERE feines_id = (SELECT MAX(feines_id) FROM Feines)"));
            QCOMPARE(refer ? e.pila.refes() : e.pila.desfes(), QString());
            if (!refer)
                QCOMPARE(estat(e.b.db), original);
        }
    }
};

QTEST_GUILESS_MAIN(TestOrdreFeina)
#include "tst_ordre_feina.moc"
