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

enum Cas { Creada, Moguda, Reassignada, Esborrada, Feta, NoFeta, Editada };

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
        recurs(b.db, QStringLiteral("Marta"), 0x0000FF);
        recurs(b.db, QStringLiteral("Oriol"), 0x00FF00);
        client(b.db, QStringLiteral("Comunitat"));
        servei(b.db, QStringLiteral("Neteja"), 30, false, 12.5, QStringLiteral("h"));
        lloc(b.db, QStringLiteral("Oficina"), 60, QStringLiteral("Marta"), QStringLiteral("Comunitat"));
        lloc(b.db, QStringLiteral("Escala"), 60, QStringLiteral("Oriol"), QStringLiteral("Comunitat"));
        llocServei(b.db, QStringLiteral("Oficina"), QStringLiteral("Neteja"), 2, 11.0, QStringLiteral("Vidres"));
        oficina = feina(b.db, QStringLiteral("Oficina"), kDia, QStringLiteral("09:00"), QStringLiteral("10:00"), QStringLiteral("Marta"));
        b.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio,"
                                  " feines_detall_quantitat, feines_detall_unitat, feines_detall_preu_un)"
                                  " VALUES (?, 'Neteja', 'Vidres', 2, 'h', 11), (?, 'Neteja', NULL, 1, '', 0)"))
            .bind(oficina).bind(oficina).exec();
        escala = feina(b.db, QStringLiteral("Escala"), kDia, QStringLiteral("11:00"), QStringLiteral("12:00"), QStringLiteral("Oriol"), true);
        b.db.query(QStringLiteral("UPDATE Feines SET feines_data_factura = '2024-05-31', feines_quota = 25,"
                                  " feines_observacions = '' WHERE feines_id = ?")).bind(escala).exec();
        xec(b.db, 1, QStringLiteral("Comunitat"), escala, QDate(2024, 5, 31));
        xec(b.db, 2, QStringLiteral("Comunitat"), escala, QDate(2024, 5, 31));
        xec(b.db, 3, QStringLiteral("Comunitat"), 0, QDate());
        xec(b.db, 7, QStringLiteral("Comunitat"), oficina, QDate(2024, 4, 30));
    }

    Feina llegeix(int id)
    {
        Feina f;
        carregaFeina(b.db, id, f);
        return f;
    }

    // The change as the agenda, the billing sheet or the job editor makes it.
    void fes(Cas cas)
    {
        MotorFeines m(b.db, b.cfg);
        Feina f;
        const int id = cas == Creada ? 0 : cas == Feta || cas == NoFeta ? (cas == NoFeta ? escala : oficina) : oficina;
        CanviFeina canvi(&pila, b.db, b.cfg, id);
        if (id)
            f = llegeix(id);
        switch (cas) {
        case Creada:
            f.llocs_nom = QStringLiteral("Oficina");
            f.feines_data = kDia.addDays(1);
            f.feines_hora_inici = QStringLiteral("09:00");
            m.Grava_Feina(f, false);
            canvi.registra(f, CanviFeina::Tipus::Creada);
            break;
        case Moguda:
            f.feines_data = kDia.addDays(3);
            f.feines_hora_inici = QStringLiteral("15:00");
            f.feines_hora_fi = QStringLiteral("16:00");
            m.Modifica_Feina(f);
            canvi.registra(f, CanviFeina::Tipus::Moguda);
            break;
        case Reassignada:
            f.recursos_nom = QStringLiteral("Oriol");
            f.feines_hora_fi.clear();
            m.Modifica_Feina(f);
            canvi.registra(f, CanviFeina::Tipus::Reassignada);
            break;
        case Esborrada:
            m.Borra_Feina(f);
            canvi.registra(f, CanviFeina::Tipus::Esborrada);
            break;
        case Feta:
        case NoFeta:
            f.feines_feta = !f.feines_feta;
            m.Modifica_Feina(f);
            canvi.registra(f, CanviFeina::Tipus::Feta);
            break;
        case Editada: {
            Transaction t(b.db);
            f.feines_observacions = QStringLiteral("Porta del darrere");
            f.feines_hora_fi = QStringLiteral("10:30");
            m.Modifica_Feina(f);
            b.db.query(QStringLiteral("DELETE FROM Feines_Detall WHERE feines_id = ?")).bind(f.feines_id).exec();
            b.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat)"
                                      " VALUES (?, 'Neteja', 3)")).bind(f.feines_id).exec();
            t.commit();
            canvi.registra(f, CanviFeina::Tipus::Modificada);
            break;
        }
        }
        QCOMPARE(f.missatge, QString());
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
        QTest::newRow("resource dropped") << int(Reassignada) << "assignar 'Oficina' del 10/05 a Oriol";
        QTest::newRow("deleted with a settled voucher") << int(Esborrada) << "eliminar 'Oficina' del 10/05";
        QTest::newRow("marked done") << int(Feta) << "marcar feta 'Oficina' del 10/05";
        QTest::newRow("billed job marked not done") << int(NoFeta) << "marcar no feta 'Escala' del 10/05";
        QTest::newRow("editor: job and lines") << int(Editada) << "modificar 'Oficina' del 10/05";
    }

    // Undo gives back every row as it was, redo every row as the change left it, twice over.
    void desferIRefer()
    {
        QFETCH(int, cas);
        QFETCH(QString, text);
        Entorn e;
        const QStringList abans = estat(e.b.db);
        e.fes(Cas(cas));
        const QStringList despres = estat(e.b.db);
        QVERIFY(despres != abans);
        QCOMPARE(e.pila.mida(), 1);
        QCOMPARE(e.pila.textDesfer(), text);
        for (int volta = 0; volta < 2; ++volta) {
            QCOMPARE(e.pila.desfes(), QString());
            QCOMPARE(estat(e.b.db), abans);
            QVERIFY(!e.pila.potDesfer());
            QCOMPARE(e.pila.textRefer(), text);
            QCOMPARE(e.pila.refes(), QString());
            QCOMPARE(estat(e.b.db), despres);
        }
    }

    void refusat_data()
    {
        QTest::addColumn<int>("cas");
        QTest::addColumn<bool>("refer");      // the refused step is the redo after an undo
        QTest::addColumn<QString>("entremig"); // what happens meanwhile (%1 = the Oficina job)
        QTest::addColumn<QString>("missatge");
        QTest::addColumn<bool>("solapament"); // freeing the slot again lets the command through

        // Slots taken since: the engine's own refusal.
        QTest::newRow("worker took the old slot") << int(Moguda) << false
            << "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
               " VALUES ('Escala', '2024-05-10', '09:30', '10:30', 'Marta')"
            << "Solapament de recursos: Marta" << true;
        QTest::newRow("place booked where the deleted job was") << int(Esborrada) << false
            << "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi)"
               " VALUES ('Oficina', '2024-05-10', '08:30', '09:30')"
            << "Solapament de llocs a OFICINA" << true;
        QTest::newRow("redo of a drop after the worker was booked") << int(Creada) << true
            << "INSERT INTO Feines (llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom)"
               " VALUES ('Escala', '2024-05-11', '09:00', '10:00', 'Marta')"
            << "Solapament de recursos: Marta" << true;
        QTest::newRow("resource deleted before the job came back") << int(Esborrada) << false
            << "DELETE FROM Recursos WHERE recursos_nom = 'Marta'" << "Recurs no trobat:Marta" << false;

        // Changed by someone else: never overwritten.
        const QString canviat = QStringLiteral("La feina ha canviat per una altra via");
        QTest::newRow("notes typed on the command line") << int(Moguda) << false
            << "UPDATE Feines SET feines_observacions = 'Clau a consergeria' WHERE feines_id = %1" << canviat << false;
        QTest::newRow("a line changed elsewhere") << int(Editada) << false
            << "UPDATE Feines_Detall SET feines_detall_quantitat = 4 WHERE feines_id = %1" << canviat << false;
        QTest::newRow("freed voucher used by another job") << int(NoFeta) << false
            << "UPDATE Xecs SET feines_id = %1, xecs_data_liquidat = '2024-06-30' WHERE xecs_id = 1" << canviat << false;
        QTest::newRow("job deleted by a second Quadrella") << int(Feta) << false
            << "DELETE FROM Feines WHERE feines_id = %1" << canviat << false;
        QTest::newRow("same id taken before a redo") << int(Creada) << true
            << "INSERT INTO Feines (feines_id, llocs_nom, feines_data, feines_hora_inici, feines_hora_fi)"
               " VALUES ((SELECT seq FROM sqlite_sequence WHERE name = 'Feines'), 'Oficina', '2024-06-01', '09:00', '10:00')"
            << canviat << false;
    }

    // A refused step changes nothing and stays on the stack, ready for when the way is clear.
    void refusat()
    {
        QFETCH(int, cas);
        QFETCH(bool, refer);
        QFETCH(QString, entremig);
        QFETCH(QString, missatge);
        QFETCH(bool, solapament);
        Entorn e;
        const QStringList original = estat(e.b.db);
        e.fes(Cas(cas));
        const QStringList fet = estat(e.b.db);
        if (refer)
            QCOMPARE(e.pila.desfes(), QString());
        e.b.db.exec(entremig.arg(e.oficina));
        const QStringList interferit = estat(e.b.db);
        const QString text = refer ? e.pila.textRefer() : e.pila.textDesfer();

        const QString error = refer ? e.pila.refes() : e.pila.desfes();
        QVERIFY2(error.startsWith(missatge), qPrintable(error));
        QCOMPARE(estat(e.b.db), interferit);
        QCOMPARE(refer ? e.pila.textRefer() : e.pila.textDesfer(), text);

        if (solapament) {
            e.b.db.exec(QStringLiteral("DELETE FROM Feines WHERE feines_id = (SELECT MAX(feines_id) FROM Feines)"));
            QCOMPARE(refer ? e.pila.refes() : e.pila.desfes(), QString());
            QCOMPARE(estat(e.b.db), refer ? fet : original);
        }
    }
};

QTEST_GUILESS_MAIN(TestOrdreFeina)
#include "tst_ordre_feina.moc"
