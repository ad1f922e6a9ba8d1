// What the job engine guarantees around its rules: a failed operation leaves the database as it
// was, failures come back as "Error en <operation>:" messages, and the hot queries reach Feines
// through its indexes with statements prepared once.
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QRegularExpression>
#include <QSet>
#include <QtTest>
#include <sqlite3.h>

using namespace dades_prova;

namespace {

const QDate kAvui(2024, 5, 14);

void equip(Db &db)
{
    recurs(db, QStringLiteral("Marta"), 65535, true);
    recurs(db, QStringLiteral("Oriol"), 16711680, true);
    grup(db, QStringLiteral("Marta i Oriol"), 65280, {QStringLiteral("Marta"), QStringLiteral("Oriol")});
    servei(db, QStringLiteral("Neteja"), 60, false, 6.25, QStringLiteral("Hores"));
    lloc(db, QStringLiteral("Oficina"), 60, QStringLiteral("Marta i Oriol"));
    llocServei(db, QStringLiteral("Oficina"), QStringLiteral("Neteja"), 2, 6.25);
}

Feina nova(const QString &lloc, const QString &inici, const QString &recurs = QString())
{
    Feina f;
    f.llocs_nom = lloc;
    f.feines_data = kAvui;
    f.feines_hora_inici = inici;
    f.recursos_nom = recurs;
    return f;
}

// Every statement SQLite runs on a connection, with the statement objects that ran it.
struct Traca {
    QHash<QString, QSet<const void *>> sentencies;

    static int enregistra(unsigned tipus, void *ctx, void *p, void *)
    {
        if (tipus == SQLITE_TRACE_STMT) {
            auto *stmt = static_cast<sqlite3_stmt *>(p);
            static_cast<Traca *>(ctx)->sentencies[QString::fromUtf8(sqlite3_sql(stmt))].insert(stmt);
        }
        return 0;
    }
};

QStringList plaDeConsulta(sqlite3 *h, const QString &sql)
{
    QStringList linies;
    sqlite3_stmt *stmt = nullptr;
    const QByteArray text = QByteArrayLiteral("EXPLAIN QUERY PLAN ") + sql.toUtf8();
    if (sqlite3_prepare_v2(h, text.constData(), -1, &stmt, nullptr) != SQLITE_OK)
        return {QStringLiteral("ERROR: ") + QString::fromUtf8(sqlite3_errmsg(h))};
    while (sqlite3_step(stmt) == SQLITE_ROW)
        linies << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(stmt, 3)));
    sqlite3_finalize(stmt);
    return linies;
}

} // namespace

class TestFeinesIntegritat : public QObject {
    Q_OBJECT

private slots:
    void failedCreationStoresNothing()
    {
        BaseProva b;
        equip(b.db);
        // The job's row goes in, then copying its service lines fails.
        b.db.exec(QStringLiteral("CREATE TRIGGER avaria BEFORE INSERT ON Feines_Detall BEGIN SELECT RAISE(ABORT, 'disc ple'); END"));
        MotorFeines m(b.db, b.cfg);
        Feina f = nova(QStringLiteral("Oficina"), QStringLiteral("09:00"));
        m.Grava_Feina(f, true);
        QCOMPARE(f.missatge, QStringLiteral("Error en Grava_Feina:disc ple"));
        QCOMPARE(f.feines_id, 0);
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Feines")), 0);
        QCOMPARE(b.db.transactionDepth(), 0);

        // Nothing half-done is left behind, not even the counter: the next job is number 1.
        b.db.exec(QStringLiteral("DROP TRIGGER avaria"));
        f = nova(QStringLiteral("Oficina"), QStringLiteral("09:00"));
        m.Grava_Feina(f, true);
        QCOMPARE(f.missatge, QString());
        QCOMPARE(f.feines_id, 1);
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Feines_Detall WHERE feines_id = 1")), 1);
    }

    void failedModificationAndDeletionChangeNothing()
    {
        BaseProva b;
        equip(b.db);
        client(b.db, QStringLiteral("Comunitat"));
        const int id = feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("09:00"), QStringLiteral("10:00"), QStringLiteral("Marta"), true);
        b.db.query(QStringLiteral("UPDATE Feines SET feines_quota = 25, feines_data_factura = '2024-05-31' WHERE feines_id = ?")).bind(id).exec();
        xec(b.db, 1, QStringLiteral("Comunitat"), id, kAvui);
        xec(b.db, 2, QStringLiteral("Comunitat"), id, kAvui);
        MotorFeines m(b.db, b.cfg);
        m.setAvui(kAvui);

        // Unmarking writes the job and then frees its vouchers; the second write fails.
        b.db.exec(QStringLiteral("CREATE TRIGGER avaria BEFORE UPDATE ON Xecs BEGIN SELECT RAISE(ABORT, 'xecs bloquejats'); END"));
        Feina f;
        QVERIFY(carregaFeina(b.db, id, f));
        f.feines_feta = false;
        m.Modifica_Feina(f);
        QCOMPARE(f.missatge, QStringLiteral("Error en Modifica_Feina:xecs bloquejats"));
        QCOMPARE(valor(b.db, QStringLiteral("SELECT feines_feta FROM Feines WHERE feines_id = ?"), {id}), 1);
        QCOMPARE(valor(b.db, QStringLiteral("SELECT feines_quota FROM Feines WHERE feines_id = ?"), {id}), 25);
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Feines WHERE feines_data_factura = '2024-05-31'")), 1);
        b.db.exec(QStringLiteral("DROP TRIGGER avaria"));

        // Unmarked for real; then deleting frees the vouchers first and the delete itself fails.
        m.Modifica_Feina(f);
        QCOMPARE(f.missatge, QString());
        xec(b.db, 3, QStringLiteral("Comunitat"), id, kAvui);
        b.db.exec(QStringLiteral("CREATE TRIGGER avaria BEFORE DELETE ON Feines BEGIN SELECT RAISE(ABORT, 'no esborris'); END"));
        Feina e;
        e.feines_id = id;
        m.Borra_Feina(e);
        QCOMPARE(e.missatge, QStringLiteral("Error en Borra_Feina:no esborris"));
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Xecs WHERE feines_id = ?"), {id}), 1);
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Feines WHERE feines_id = ?"), {id}), 1);
        QCOMPARE(b.db.transactionDepth(), 0);
    }

    void failuresBecomeMessages()
    {
        BaseProva b;
        equip(b.db);
        feina(b.db, QStringLiteral("Oficina"), kAvui, QStringLiteral("09:00"), QStringLiteral("10:00"), QStringLiteral("Marta"));
        MotorFeines m(b.db, b.cfg);

        // A start that is not a time of day.
        Feina f = nova(QStringLiteral("Oficina"), QStringLiteral("9h"));
        m.Grava_Feina(f, true);
        QVERIFY2(f.missatge.startsWith(QStringLiteral("Error en Grava_Feina:")), qPrintable(f.missatge));

        b.db.exec(QStringLiteral("DROP TABLE Recursos_Components"));
        f = Feina();
        m.Busca_Feina(f, kAvui, QStringLiteral("09:30"), QStringLiteral("Oficina"), QStringLiteral("Marta"));
        QVERIFY2(f.missatge.startsWith(QStringLiteral("Error en Busca_Feina:")), qPrintable(f.missatge));
        QVERIFY2(f.missatge.contains(QStringLiteral("Recursos_Components")), qPrintable(f.missatge));
        QCOMPARE(f.feines_id, 0);
        // The unassigned search does not need the dropped table and still works.
        m.Busca_Feina(f, kAvui, QStringLiteral("09:30"), QStringLiteral("Oficina"), QString());
        QCOMPARE(f.missatge, QStringLiteral("Feina no trobada"));

        f = nova(QStringLiteral("Oficina"), QStringLiteral("11:00"), QStringLiteral("Marta"));
        m.Grava_Feina(f, true);
        QVERIFY2(f.missatge.startsWith(QStringLiteral("Error en Grava_Feina:")), qPrintable(f.missatge));
        QCOMPARE(valor(b.db, QStringLiteral("SELECT COUNT(*) FROM Feines")), 1);
    }

    void hotQueriesUseTheIndexes()
    {
        BaseProva b;
        equip(b.db);
        // Enough jobs over enough days that a scan would be the planner's own choice only if no
        // index fitted.
        for (int d = 0; d < 30; ++d) {
            for (int h = 0; h < 8; ++h) {
                const QString inici = QStringLiteral("%1:00").arg(h + 8, 2, 10, QLatin1Char('0'));
                const QString fi = QStringLiteral("%1:00").arg(h + 9, 2, 10, QLatin1Char('0'));
                feina(b.db, QStringLiteral("Lloc %1").arg(h), kAvui.addDays(d), inici, fi, h % 2 ? QStringLiteral("Marta") : QString());
            }
        }
        b.db.exec(QStringLiteral("ANALYZE"));
        b.cfg.PermetSolaparLlocs = false;
        MotorFeines m(b.db, b.cfg);
        m.setAvui(kAvui.addDays(40));

        Traca traca;
        sqlite3 *h = handle(b.db);
        QVERIFY(h);
        sqlite3_trace_v2(h, SQLITE_TRACE_STMT, &Traca::enregistra, &traca);
        int creades = 0;
        for (int i = 0; i < 12; ++i) {
            Feina f = nova(QStringLiteral("Oficina"), QStringLiteral("%1:00").arg(i + 6, 2, 10, QLatin1Char('0')));
            f.feines_data = kAvui.addDays(i % 3);
            m.Grava_Feina(f, i % 2 == 0);
            creades += f.missatge.isEmpty() ? 1 : 0;
            Feina trobada;
            m.Busca_Feina(trobada, f.feines_data, f.feines_hora_inici, QStringLiteral("Oficina"), QStringLiteral("Oriol"));
            m.Busca_Feina(trobada, f.feines_data, f.feines_hora_inici, QStringLiteral("Oficina"), QString());
            if (f.missatge.isEmpty()) {
                f.feines_hora_fi.clear();
                f.feines_feta = true;
                m.Modifica_Feina(f);
                f.feines_feta = false;
                m.Modifica_Feina(f);
            }
        }
        Feina e;
        e.feines_id = 3;
        m.Borra_Feina(e);
        sqlite3_trace_v2(h, 0, nullptr, nullptr);
        QVERIFY(creades > 3);

        const QRegularExpression scanFeines(QStringLiteral("^SCAN Feines( |$)"));
        int consultesFeines = 0;
        for (auto it = traca.sentencies.cbegin(); it != traca.sentencies.cend(); ++it) {
            const QString &sql = it.key();
            if (!sql.contains(QLatin1String("Feines")) || sql.startsWith(QLatin1String("INSERT INTO Feines ")))
                continue;
            ++consultesFeines;
            const QStringList pla = plaDeConsulta(h, sql);
            for (const QString &linia : pla)
                QVERIFY2(!scanFeines.match(linia).hasMatch() && !linia.startsWith(QLatin1String("ERROR")),
                         qPrintable(sql + QStringLiteral("\n  ") + pla.join(QStringLiteral("\n  "))));
            // Run many times, prepared once.
            QVERIFY2(it.value().size() == 1, qPrintable(QStringLiteral("prepared %1 times: ").arg(it.value().size()) + sql));
        }
        // The place and resource overlap checks (with and without the job itself), both
        // searches, the reads, updates and deletes of one job.
        QVERIFY2(consultesFeines >= 8, qPrintable(QString::number(consultesFeines)));
    }
};

QTEST_GUILESS_MAIN(TestFeinesIntegritat)
#include "tst_feines_integritat.moc"
