// Changing, deleting and finding jobs: a job never collides with itself, the done-job life cycle
// (vouchers freed, fee mark reset), the end recomputed from the job's lines, the deleted record
// handed back, the minute a job covers; a failed operation leaves the database as it was and
// comes back as an "Error en <operation>:" message.
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QtTest>

using namespace dades_prova;

namespace {

const QDate kAvui(2024, 5, 14);

void equip(Db &db)
{
    recurs(db, QStringLiteral("Marta"), 65535, true);
    recurs(db, QStringLiteral("Oriol"), 16711680, true);
    grup(db, QStringLiteral("Marta i Oriol"), 65280, {QStringLiteral("Marta"), QStringLiteral("Oriol")});
}

Feina llegeix(Db &db, int id)
{
    Feina f;
    if (!carregaFeina(db, id, f))
        qFatal("job %d missing", id);
    return f;
}

// A record in one line: id|place|date|start-end|resource|done|billing date|notes.
QString resum(const Feina &f)
{
    return QStringList({QString::number(f.feines_id), f.llocs_nom, f.feines_data.toString(Qt::ISODate),
                        f.feines_hora_inici + QLatin1Char('-') + f.feines_hora_fi, f.recursos_nom,
                        f.feines_feta ? QStringLiteral("feta") : QStringLiteral("no"),
                        f.feines_data_factura.toString(Qt::ISODate), f.feines_observacions})
        .join(QLatin1Char('|'));
}

// Every voucher as "id|job|settled" (Null as "NULL").
QStringList xecs(Db &db)
{
    return files(db, QStringLiteral("SELECT xecs_id, feines_id, xecs_data_liquidat FROM Xecs ORDER BY xecs_id"));
}

// Each operation's answer: the message it leaves in the record ("" when done).
QString modifica(MotorFeines &m, Feina &f)
{
    m.Modifica_Feina(f);
    return f.missatge;
}

QString borra(MotorFeines &m, Feina &f)
{
    m.Borra_Feina(f);
    return f.missatge;
}

} // namespace

class TestFeinesModifica : public QObject {
    Q_OBJECT

private slots:
    void neverCollidesWithItself()
    {
        BaseProva b;
        b.cfg.PermetSolaparLlocs = false;
        equip(b.db);
        const int id = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("09:00"), QStringLiteral("10:00"), QStringLiteral("Marta i Oriol"));
        const int altra = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("11:00"), QStringLiteral("12:00"), QStringLiteral("Oriol"));
        MotorFeines m(b.db, b.cfg);
        m.setAvui(kAvui);

        // Moved by half an hour: it overlaps only its own old position, at the place and for the
        // team and both members.
        Feina f = llegeix(b.db, id);
        f.feines_hora_inici = QStringLiteral("09:30");
        f.feines_hora_fi = QStringLiteral("10:30");
        QCOMPARE(modifica(m, f), QString());
        QCOMPARE(llegeix(b.db, id).feines_hora_inici, QStringLiteral("09:30"));

        // Into the other job: refused at the place first ...
        f.feines_hora_fi = QStringLiteral("11:30");
        QCOMPARE(modifica(m, f), QStringLiteral("Solapament de llocs a OFICINA"));
        // ... and, where places may be shared, through the team's member.
        b.cfg.PermetSolaparLlocs = true;
        QCOMPARE(modifica(m, f), QStringLiteral("Solapament de recursos: Oriol"));
        // Creation would have stored it unassigned; modification refuses and writes nothing.
        Feina g = llegeix(b.db, altra);
        g.feines_hora_inici = QStringLiteral("09:00");
        g.recursos_nom = QStringLiteral("Marta");
        QCOMPARE(modifica(m, g), QStringLiteral("Solapament de recursos: Marta"));
        QCOMPARE(resum(llegeix(b.db, altra)), QString::number(altra) + QStringLiteral("|Oficina|2024-05-14|11:00-12:00|Oriol|no||"));
    }

    void doneLifeCycle()
    {
        BaseProva b;
        equip(b.db);
        b.db.exec(QStringLiteral("INSERT INTO Clients (clients_nom) VALUES ('Comunitat')"));
        const int id = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("09:00"), QStringLiteral("10:00"));
        const int dema = feina(b.db, QStringLiteral("Oficina"), kAvui.addDays(1), QStringLiteral("09:00"), QStringLiteral("10:00"), QStringLiteral("Marta"));
        const int altra = feina(b.db, QStringLiteral("Escala"), kAvui, QStringLiteral("12:00"), QStringLiteral("13:00"), QStringLiteral("Marta"));
        MotorFeines m(b.db, b.cfg);
        m.setAvui(kAvui);

        // Done needs a resource, and a date that is not in the future.
        Feina f = llegeix(b.db, id);
        f.feines_feta = true;
        QCOMPARE(modifica(m, f), QStringLiteral("Cal assignar recurs si la feina està feta"));
        Feina g = llegeix(b.db, dema);
        g.feines_feta = true;
        QCOMPARE(modifica(m, g), QStringLiteral("Una feina futura no pot estar feta"));

        f.recursos_nom = QStringLiteral("Marta");
        f.feines_data_factura = QDate(2024, 5, 31);
        QCOMPARE(modifica(m, f), QString());
        Feina desat = llegeix(b.db, id);
        QVERIFY(desat.feines_feta);
        QCOMPARE(desat.feines_data_factura, QDate(2024, 5, 31));

        // Billing spends two vouchers on it and records a fee; a third voucher is another job's.
        b.db.query(QStringLiteral("UPDATE Feines SET feines_quota = 25 WHERE feines_id = ?")).bind(id).exec();
        xec(b.db, 1, QStringLiteral("Comunitat"), id, QDate(2024, 5, 31));
        xec(b.db, 2, QStringLiteral("Comunitat"), id, QDate(2024, 5, 31));
        xec(b.db, 3, QStringLiteral("Comunitat"), altra, QDate(2024, 5, 31));

        // Anything else on a done job, or deleting it, is refused and changes nothing.
        f = llegeix(b.db, id);
        f.feines_observacions = QStringLiteral("canvi");
        QCOMPARE(modifica(m, f), QStringLiteral("No es pot modificar una feina feta"));
        Feina e;
        e.feines_id = id;
        QCOMPARE(borra(m, e), QStringLiteral("No es pot esborrar una feina feta"));
        QCOMPARE(llegeix(b.db, id).feines_observacions, QString());
        const QStringList billed = xecs(b.db);
        QCOMPARE(billed.first(), QStringLiteral("1|%1|2024-05-31").arg(id));

        // Unmarking writes the job and then frees its vouchers: when the second write fails,
        // nothing changes at all.
        b.db.exec(QStringLiteral("CREATE TRIGGER avaria BEFORE UPDATE ON Xecs BEGIN SELECT RAISE(ABORT, 'xecs bloquejats'); END"));
        f = llegeix(b.db, id);
        f.feines_feta = false;
        QCOMPARE(modifica(m, f), QStringLiteral("Error en Modifica_Feina:xecs bloquejats"));
        QCOMPARE(resum(llegeix(b.db, id)), resum(desat));
        QCOMPARE(valor(b.db, QStringLiteral("SELECT feines_quota FROM Feines WHERE feines_id = ?"), {id}), 25);
        QCOMPARE(xecs(b.db), billed);
        QCOMPARE(b.db.transactionDepth(), 0);
        b.db.exec(QStringLiteral("DROP TRIGGER avaria"));

        // Unmarking frees its vouchers (only its own), clears the billing date and the fee mark.
        QCOMPARE(modifica(m, f), QString());
        QCOMPARE(resum(llegeix(b.db, id)), QString::number(id) + QStringLiteral("|Oficina|2024-05-14|09:00-10:00|Marta|no||"));
        QCOMPARE(valor(b.db, QStringLiteral("SELECT feines_quota FROM Feines WHERE feines_id = ?"), {id}), 0);
        QCOMPARE(xecs(b.db), QStringList({"1|NULL|NULL", "2|NULL|NULL", billed.last()}));
        QCOMPARE(billed.last(), QStringLiteral("3|%1|2024-05-31").arg(altra));
    }

    void emptyEndIsRecomputed()
    {
        BaseProva b;
        equip(b.db);
        servei(b.db, QStringLiteral("Neteja"), 60, false);
        servei(b.db, QStringLiteral("Desplaçaments"), 3, true);
        const int id = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("08:00"), QStringLiteral("08:30"), QStringLiteral("Marta"));
        b.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat) VALUES (?, 'Neteja', 1.5), (?, 'Desplaçaments', 10)"))
            .bind(id).bind(id).exec();
        MotorFeines m(b.db, b.cfg);

        // Marta alone: 90 + 30 = 120 minutes.
        Feina f = llegeix(b.db, id);
        f.feines_hora_fi.clear();
        QCOMPARE(modifica(m, f), QString());
        QCOMPARE(llegeix(b.db, id).feines_hora_fi, QStringLiteral("10:00"));
    }

    void deleteHandsBackTheJob()
    {
        BaseProva b;
        equip(b.db);
        servei(b.db, QStringLiteral("Neteja"), 60, false);
        const int id = feina(b.db, QStringLiteral("L'Estel"), kAvui, QStringLiteral("09:00"), QStringLiteral("10:00"), QStringLiteral("Oriol"));
        const int unassigned = feina(b.db, QStringLiteral("L'Estel"), kAvui, QStringLiteral("11:00"), QStringLiteral("12:00"));
        b.db.query(QStringLiteral("UPDATE Feines SET feines_observacions = 'nota', feines_data_factura = '2024-05-31' WHERE feines_id = ?")).bind(id).exec();
        b.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_quantitat) VALUES (?, 'Neteja', 1), (?, 'Neteja', 2)"))
            .bind(id).bind(unassigned).exec();
        xec(b.db, 1, QStringLiteral("Comunitat"), id, kAvui);
        xec(b.db, 2, QStringLiteral("Comunitat"), id, kAvui);
        MotorFeines m(b.db, b.cfg);

        // A delete that fails after freeing the vouchers leaves them with the job.
        b.db.exec(QStringLiteral("CREATE TRIGGER avaria BEFORE DELETE ON Feines BEGIN SELECT RAISE(ABORT, 'no esborris'); END"));
        Feina f;
        f.feines_id = id;
        QCOMPARE(borra(m, f), QStringLiteral("Error en Borra_Feina:no esborris"));
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Xecs WHERE feines_id = ?"), {id}), 2);
        QCOMPARE(b.db.transactionDepth(), 0);
        b.db.exec(QStringLiteral("DROP TRIGGER avaria"));

        f = Feina();
        f.feines_id = id;
        QCOMPARE(borra(m, f), QString());
        QCOMPARE(resum(f), QString::number(id) + QStringLiteral("|L'Estel|2024-05-14|09:00-10:00|Oriol|no|2024-05-31|nota"));

        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Feines WHERE feines_id = ?"), {id}), 0);
        QCOMPARE(files(b.db, QStringLiteral("SELECT feines_id FROM Feines_Detall")), QStringList{QString::number(unassigned)});
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Xecs WHERE feines_id IS NULL AND xecs_data_liquidat IS NULL")), 2);

        // Deleted then handed straight to creation: the job comes back (cut and paste).
        lloc(b.db, QStringLiteral("L'Estel"), 60);
        f.feines_hora_inici = QStringLiteral("13:00");
        m.Grava_Feina(f, true);
        QCOMPARE(f.missatge, QString());
        QCOMPARE(f.recursos_nom, QStringLiteral("Oriol"));
    }

    void findTheCoveringJob()
    {
        BaseProva b;
        equip(b.db);
        const int nou = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("09:00"), QStringLiteral("10:00"), QStringLiteral("Marta"));
        const int deu = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("10:00"), QStringLiteral("11:00"), QStringLiteral("Marta"));
        const int equipId = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("12:00"), QStringLiteral("13:00"), QStringLiteral("Marta i Oriol"));
        const int lliure = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("09:00"), QStringLiteral("11:00"));
        feina(b.db, QStringLiteral("Oficina"), kAvui.addDays(1), QStringLiteral("00:00"), QStringLiteral("24:00"), QStringLiteral("Oriol"));
        MotorFeines m(b.db, b.cfg);

        struct Cas {
            const char *minut;
            const char *lloc;
            const char *recurs;
            int esperada; // 0: not found
        };
        const Cas casos[] = {
            {"10:00", "Oficina", "Marta", deu},       // the minute a job ends belongs to the next
            {"09:59", "OFICINA", "marta", nou},
            {"11:00", "Oficina", "Marta", 0},
            {"12:30", "Oficina", "Oriol", equipId},   // through the team
            {"10:30", "Oficina", "", lliure},         // "" finds only the unassigned job
        };
        for (const Cas &c : casos) {
            Feina f;
            f.feines_id = 999;
            f.llocs_nom = QStringLiteral("vell");
            m.Busca_Feina(f, kAvui, QString::fromUtf8(c.minut), QString::fromUtf8(c.lloc), QString::fromUtf8(c.recurs));
            const QByteArray cas = QByteArray(c.minut) + ' ' + c.lloc + ' ' + c.recurs;
            if (c.esperada == 0) {
                QVERIFY2(f.missatge == QStringLiteral("Feina no trobada"), cas.constData());
                QVERIFY2(f.feines_id == 0 && f.llocs_nom.isEmpty(), cas.constData());
            } else {
                QVERIFY2(f.missatge.isEmpty(), cas.constData());
                QVERIFY2(f.feines_id == c.esperada, cas.constData());
            }
        }

        // A database failure comes back as the operation's message.
        b.db.exec(QStringLiteral("DROP TABLE Recursos_Components"));
        Feina f;
        m.Busca_Feina(f, kAvui, QStringLiteral("09:30"), QStringLiteral("Oficina"), QStringLiteral("Marta"));
        QVERIFY2(f.missatge.startsWith(QStringLiteral("Error en Busca_Feina:")) && f.feines_id == 0, qPrintable(f.missatge));
    }
};

QTEST_GUILESS_MAIN(TestFeinesModifica)
#include "tst_feines_modifica.moc"
