// The job editor window driven as a user drives it: it opens on a job, a service line is chosen,
// typed and added, a line is taken out by clicking it, the done flag locks the fields, and
// "Modificar" stores the job and its lines.
#include "agenda/frm_feines_dialog.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"
#include "support/formulari_proves.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

namespace {

const QDate kAvui(2024, 5, 15);

struct Escenari {
    BaseProva base;
    InteraccioGuio ui;
    MotorFeines motor{base.db, base.cfg};
    int id = 0;
    Feina feina;

    Escenari()
    {
        motor.setAvui(kAvui);
        Db &db = base.db;
        dades_prova::recurs(db, QStringLiteral("Marta"), 0x0000FF, true);
        dades_prova::recurs(db, QStringLiteral("Oriol"), 0x00FF00, true);
        dades_prova::servei(db, QStringLiteral("Neteja"), 30, false, 15.0, QStringLiteral("Hores"), QStringLiteral("Servei de neteja"));
        dades_prova::servei(db, QStringLiteral("Vidres"), 20, true, 2.5, QStringLiteral("Unitats"));
        dades_prova::lloc(db, QStringLiteral("Exemple oficina"), 60, QStringLiteral("Marta"));
        id = dades_prova::feina(db, QStringLiteral("Exemple oficina"), kAvui, QStringLiteral("09:00"), QStringLiteral("10:00"),
                                QStringLiteral("Marta"));
        db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio, feines_detall_quantitat,"
                                " feines_detall_unitat, feines_detall_preu_un) VALUES (?, 'Neteja', 'Servei de neteja', 2, 'Hores', 15)"))
            .bind(id).exec();
        db.query(QStringLiteral("UPDATE Feines SET feines_observacions = 'Porta del darrere' WHERE feines_id = ?")).bind(id).exec();
        carregaFeina(db, id, feina);
        feina.feines_observacions.clear(); // the agenda's record carries no notes
    }
};

} // namespace

using formulari::fill;

class TestFrmFeinesDialog : public QObject {
    Q_OBJECT

private slots:
    void editsAndStoresAJob()
    {
        Escenari e;
        FrmFeinesDialog d(e.base.db, e.base.cfg, e.motor, e.ui, e.feina);
        d.setAvui(kAvui);
        d.show();
        QVERIFY(QTest::qWaitForWindowExposed(&d));

        // What the editor holds is shown: the job's fields, its lines, the total.
        QCOMPARE(fill<QLineEdit>(d, "IdFeina")->text(), QString::number(e.id));
        QCOMPARE(fill<QLineEdit>(d, "DataFeina")->text(), QStringLiteral("15/05/2024"));
        auto *horaFi = fill<QComboBox>(d, "HoraFiFeina");
        QCOMPARE(horaFi->currentText(), QStringLiteral("10:00"));
        auto *recurs = fill<QComboBox>(d, "RecursFeina");
        QCOMPARE(recurs->currentText(), QStringLiteral("Marta"));
        QCOMPARE(fill<QPlainTextEdit>(d, "ObservacionsFeina")->toPlainText(), QStringLiteral("Porta del darrere"));
        auto *linies = fill<QTableWidget>(d, "DetallFeinaServeis");
        QCOMPARE(linies->rowCount(), 1);
        auto *total = fill<QLineEdit>(d, "TotalFeina");
        QCOMPARE(total->text(), QStringLiteral("30,00"));

        // Choose "Vidres" with the keyboard: its unit and price fill the line; adding it shows
        // the new line, total and end.
        auto *serveis = fill<QComboBox>(d, "ServeisCombo");
        serveis->setFocus();
        QTest::keyClick(serveis, Qt::Key_Down);
        QTest::keyClick(serveis, Qt::Key_Down);
        QCOMPARE(serveis->currentText(), QStringLiteral("Vidres"));
        QCOMPARE(fill<QLineEdit>(d, "UnitatServeiFeina")->text(), QStringLiteral("Unitats"));
        QCOMPARE(fill<QLineEdit>(d, "PreuServeiFeina")->text(), QStringLiteral("2,50"));
        auto *quantitat = fill<QLineEdit>(d, "QuantitatServeiFeina");
        QTest::keyClicks(quantitat, QStringLiteral("4"));
        QTest::keyClicks(fill<QLineEdit>(d, "DescripcioServeiFeina"), QStringLiteral("Finestres del pati"));
        QTest::mouseClick(fill<QPushButton>(d, "AfegirServei"), Qt::LeftButton);
        QCOMPARE(linies->rowCount(), 2);
        QCOMPARE(linies->item(1, 0)->text(), QStringLiteral("Vidres"));
        QCOMPARE(total->text(), QStringLiteral("40,00"));
        QCOMPARE(horaFi->currentText(), QStringLiteral("11:30"));

        // Clicking a line loads it into the line editor; "Modificar" puts the change back.
        QTest::mouseClick(linies->viewport(), Qt::LeftButton, {}, linies->visualRect(linies->model()->index(0, 1)).center());
        QCOMPARE(linies->rowCount(), 2);
        QCOMPARE(serveis->currentText(), QStringLiteral("Neteja"));
        QCOMPARE(quantitat->text(), QStringLiteral("2"));
        quantitat->selectAll();
        QTest::keyClicks(quantitat, QStringLiteral("3"));
        QTest::mouseClick(fill<QPushButton>(d, "ModificarServei"), Qt::LeftButton);

        // Another resource, typed notes, and Enter stores everything.
        recurs->setFocus();
        QTest::keyClick(recurs, Qt::Key_Down);
        QCOMPARE(recurs->currentText(), QStringLiteral("Oriol"));
        auto *obs = fill<QPlainTextEdit>(d, "ObservacionsFeina");
        obs->selectAll();
        QTest::keyClicks(obs, QStringLiteral("Clau nova"));
        fill<QLineEdit>(d, "DataFeina")->setFocus();
        QTest::keyClick(fill<QLineEdit>(d, "DataFeina"), Qt::Key_Return);
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QVERIFY(!d.isVisible());
        QCOMPARE(e.feina.missatge, QStringLiteral("OK"));

        QCOMPARE(dades_prova::files(e.base.db, "SELECT feines_hora_inici, feines_hora_fi, recursos_nom, feines_observacions"
                                              " FROM Feines WHERE feines_id = ?", {e.id}),
                 QStringList{"09:00|12:00|Oriol|Clau nova"});
        QCOMPARE(dades_prova::files(e.base.db, "SELECT serveis_nom, feines_detall_descripcio, feines_detall_quantitat"
                                              " FROM Feines_Detall WHERE feines_id = ? ORDER BY serveis_nom", {e.id}),
                 (QStringList{"Neteja|Servei de neteja|3", "Vidres|Finestres del pati|4"}));
    }

    // The done flag locks the job's fields and lines but not itself nor the invoice date; the
    // Delete key on the resource clears it only while the job is not done; Escape closes
    // without storing.
    void doneFlagLocksAndEscapeCloses()
    {
        Escenari e;
        FrmFeinesDialog d(e.base.db, e.base.cfg, e.motor, e.ui, e.feina);
        d.setAvui(kAvui);
        d.show();
        QVERIFY(QTest::qWaitForWindowExposed(&d));
        auto *feta = fill<QCheckBox>(d, "FetaFeina");
        auto *recurs = fill<QComboBox>(d, "RecursFeina");
        QTest::mouseClick(feta, Qt::LeftButton, {}, QPoint(4, feta->height() / 2));
        QVERIFY(feta->isChecked());
        for (const char *nom : {"DataFeina", "HoraIniciFeina", "HoraFiFeina", "RecursFeina", "ObservacionsFeina",
                                "ServeisCombo", "QuantitatServeiFeina", "PreuServeiFeina", "AfegirServei", "DetallFeinaServeis"})
            QVERIFY2(!fill<QWidget>(d, nom)->isEnabled(), nom);
        QVERIFY(fill<QLineEdit>(d, "DataFacturaFeina")->isEnabled());
        QVERIFY(feta->isEnabled());
        QVERIFY(!d.editor().esborraRecurs());

        QTest::mouseClick(feta, Qt::LeftButton, {}, QPoint(4, feta->height() / 2));
        QVERIFY(recurs->isEnabled());
        recurs->setFocus();
        QTest::keyClick(recurs, Qt::Key_Delete);
        QCOMPARE(recurs->currentIndex(), -1);
        QCOMPARE(d.editor().recurs(), QString());

        e.ui.respostes << true; // drop the cleared resource
        QTest::keyClick(&d, Qt::Key_Escape);
        QVERIFY(!d.isVisible());
        QCOMPARE(d.result(), int(QDialog::Rejected));
        QCOMPARE(e.feina.missatge, QString());
        QCOMPARE(dades_prova::valor(e.base.db, QStringLiteral("SELECT COUNT(*) FROM Feines WHERE recursos_nom = 'Marta'")), 1);
    }

    // A refused store keeps the window open with the job's own date back in the field.
    void refusalKeepsTheWindowOpen()
    {
        Escenari e;
        FrmFeinesDialog d(e.base.db, e.base.cfg, e.motor, e.ui, e.feina);
        d.show();
        QVERIFY(QTest::qWaitForWindowExposed(&d));
        auto *data = fill<QLineEdit>(d, "DataFeina");
        data->selectAll();
        QTest::keyClicks(data, QStringLiteral("32/05/2024"));
        QTest::mouseClick(fill<QPushButton>(d, "OKButton"), Qt::LeftButton);
        QVERIFY(d.isVisible());
        QCOMPARE(e.ui.crides.size(), 1);
        QCOMPARE(e.ui.crides.at(0).text, QStringLiteral("Data incorrecta"));
        QCOMPARE(data->text(), QStringLiteral("15/05/2024"));
        QCOMPARE(e.feina.missatge, QString());
    }
};

QTEST_MAIN(TestFrmFeinesDialog)
#include "tst_frm_feines_dialog.moc"
