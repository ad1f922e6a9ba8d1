// The job editor's line selection, the done flag refused at the tick, and the unsaved-changes
// check, against a real database.
#include "agenda/editor_feina.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

const QDate kAvui(2024, 5, 15);

struct Negoci {
    BaseProva base;
    InteraccioGuio ui;
    MotorFeines motor{base.db, base.cfg};

    Negoci()
    {
        motor.setAvui(kAvui);
        Db &db = base.db;
        dades_prova::recurs(db, QStringLiteral("Marta"), 0x0000FF, true);
        dades_prova::servei(db, QStringLiteral("Neteja"), 30, false, 12.5, QStringLiteral("Hores"), QStringLiteral("Neteja general"));
        dades_prova::servei(db, QStringLiteral("Vidres"), 15, true, 20.0, QStringLiteral("Unitats"), QStringLiteral("Vidres"));
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60, QStringLiteral("Marta"));
    }

    // A job with the given lines (service, quantity), stored straight into the tables.
    int feina(const QDate &dia, const QString &recurs, const QList<QPair<QString, double>> &linies)
    {
        const int id = dades_prova::feina(base.db, QStringLiteral("Oficina"), dia, QStringLiteral("10:00"),
                                          QStringLiteral("11:00"), recurs);
        for (const auto &[servei, quantitat] : linies)
            base.db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio,"
                                         " feines_detall_quantitat, feines_detall_unitat, feines_detall_preu_un)"
                                         " VALUES (?, ?, ?, ?, 'Hores', 10)"))
                .bind(id).bind(servei).bind(servei).bind(quantitat).exec();
        return id;
    }

    QString darrerMissatge() const { return ui.crides.isEmpty() ? QString() : ui.crides.last().text; }
};

} // namespace

class TestEditorFeinaLinies : public QObject {
    Q_OBJECT

private slots:
    // A selected line is loaded, not taken out; "Modificar" replaces it in place with the checks
    // of adding (a duplicate of another line is refused, of itself is not); "Treure" removes it.
    void selectedLineIsReplacedOrRemoved()
    {
        Negoci n;
        Feina f;
        carregaFeina(n.base.db, n.feina(kAvui, QStringLiteral("Marta"), {{"Neteja", 2}, {"Vidres", 1}}), f);
        EditorFeina e(n.base.db, n.base.cfg, n.motor, n.ui);
        e.setAvui(kAvui);
        e.carrega(f);
        QVERIFY(!e.substitueixLinia()); // nothing selected

        e.seleccionaLinia(1);
        QCOMPARE(e.liniaSeleccionada(), 1);
        QCOMPARE(e.linies().size(), 2);
        QCOMPARE(e.serveiLinia(), QStringLiteral("Vidres"));
        QCOMPARE(e.preuLinia(), QStringLiteral("10,00"));
        e.setQuantitatLinia(QStringLiteral("4"));
        QVERIFY(e.substitueixLinia());
        QCOMPARE(e.linies().size(), 2);
        QCOMPARE(e.linies().at(1).quantitat, 4.0);
        QCOMPARE(e.liniaSeleccionada(), -1);
        QCOMPARE(e.horaFi(), QStringLiteral("12:00")); // 2 x 30 + 4 x 15 minutes

        // Turned into a copy of the first line: refused, nothing changes.
        e.seleccionaLinia(1);
        e.triaServei(QStringLiteral("Neteja"));
        e.setDescripcioLinia(QStringLiteral("Neteja"));
        e.setQuantitatLinia(QStringLiteral("1"));
        QVERIFY(!e.substitueixLinia());
        QCOMPARE(n.darrerMissatge(), QStringLiteral("El servei/descripció ja existeix en la feina"));
        QCOMPARE(e.linies().at(1).serveis_nom, QStringLiteral("Vidres"));
        QCOMPARE(e.liniaSeleccionada(), 1);

        // The first line changed but keeping its service and description: accepted.
        e.seleccionaLinia(0);
        e.setQuantitatLinia(QStringLiteral("3"));
        QVERIFY(e.substitueixLinia());
        QCOMPARE(e.linies().at(0).quantitat, 3.0);

        e.seleccionaLinia(0);
        e.treuLinia(e.liniaSeleccionada());
        QCOMPARE(e.linies().size(), 1);
        QCOMPARE(e.linies().at(0).serveis_nom, QStringLiteral("Vidres"));
        QCOMPARE(e.liniaSeleccionada(), -1);
    }

    // Ticking "Feta" is refused with the store's message when the job could not be stored done;
    // clearing it is always allowed.
    void doneTickRefusedWhenStoreWouldRefuse_data()
    {
        QTest::addColumn<QDate>("dia");
        QTest::addColumn<QString>("recurs");
        QTest::addColumn<bool>("ambLinies");
        QTest::addColumn<QString>("missatge");
        QTest::newRow("no resource") << kAvui << QString() << true << "Cal assignar recurs si la feina està feta";
        QTest::newRow("no lines") << kAvui << "Marta" << false << "Una feina feta ha de tenir serveis";
        QTest::newRow("future") << kAvui.addDays(1) << "Marta" << true << "Una feina futura no pot estar feta";
        QTest::newRow("today") << kAvui << "Marta" << true << QString();
    }
    void doneTickRefusedWhenStoreWouldRefuse()
    {
        QFETCH(QDate, dia);
        QFETCH(QString, recurs);
        QFETCH(bool, ambLinies);
        QFETCH(QString, missatge);
        Negoci n;
        Feina f;
        const QList<QPair<QString, double>> linies{{"Neteja", 1}};
        carregaFeina(n.base.db, n.feina(dia, recurs, ambLinies ? linies : QList<QPair<QString, double>>{}), f);
        EditorFeina e(n.base.db, n.base.cfg, n.motor, n.ui);
        e.setAvui(kAvui);
        e.carrega(f);
        QCOMPARE(e.marcaFeta(true), missatge.isEmpty());
        QCOMPARE(e.feta(), missatge.isEmpty());
        QCOMPARE(e.bloquejat(), missatge.isEmpty());
        QCOMPARE(n.darrerMissatge(), missatge);
        QVERIFY(e.marcaFeta(false));
        QVERIFY(!e.feta());
    }

    // Unsaved changes are the fields and lines against the job as loaded or last stored; picking
    // a line is not a change.
    void unsavedChanges()
    {
        Negoci n;
        Feina f;
        carregaFeina(n.base.db, n.feina(kAvui, QStringLiteral("Marta"), {{"Neteja", 2}}), f);
        EditorFeina e(n.base.db, n.base.cfg, n.motor, n.ui);
        e.setAvui(kAvui);
        e.carrega(f);
        QVERIFY(!e.teCanvis());
        e.seleccionaLinia(0);
        QVERIFY(!e.teCanvis());
        e.setQuantitatLinia(QStringLiteral("5"));
        QVERIFY(e.substitueixLinia());
        QVERIFY(e.teCanvis());
        QVERIFY(e.modifica());
        QVERIFY(!e.teCanvis());
        e.setObservacions(QStringLiteral("Clau a consergeria"));
        QVERIFY(e.teCanvis());
        e.setObservacions(QString());
        QVERIFY(!e.teCanvis());
    }
};

QTEST_GUILESS_MAIN(TestEditorFeinaLinies)
#include "tst_editor_feina_linies.moc"
