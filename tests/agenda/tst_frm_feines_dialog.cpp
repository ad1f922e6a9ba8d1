// The job editor window: each control reaches the editor once; Enter stores, Escape asks before
// dropping changes, a refused store keeps the window open.
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

// Marta's job at the office today, 09:00-10:00, with one cleaning line.
struct Escenari {
    BaseProva base;
    InteraccioGuio ui;
    MotorFeines motor{base.db, base.cfg};
    int id = 0;
    Feina feina;
    std::unique_ptr<FrmFeinesDialog> d;

    Escenari()
    {
        motor.setAvui(kAvui);
        Db &db = base.db;
        dades_prova::recurs(db, "Marta", 0x0000FF, true);
        dades_prova::recurs(db, "Oriol", 0x00FF00, true);
        dades_prova::servei(db, "Neteja", 30, false, 15.0, "Hores", "Servei de neteja");
        dades_prova::servei(db, "Vidres", 20, true, 2.5, "Unitats");
        dades_prova::lloc(db, "Exemple oficina", 60, "Marta");
        id = dades_prova::feina(db, "Exemple oficina", kAvui, "09:00", "10:00", "Marta");
        dades_prova::linia(db, id, "Neteja", 2, 15, "Hores", "Servei de neteja");
        carregaFeina(db, id, feina);
        d = std::make_unique<FrmFeinesDialog>(db, base.cfg, motor, ui, feina);
        d->setAvui(kAvui);
        d->show();
    }
};

void clicaLinia(QTableWidget *t, int fila)
{
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualRect(t->model()->index(fila, 1)).center());
}

} // namespace

using formulari::fill;

class TestFrmFeinesDialog : public QObject {
    Q_OBJECT

private slots:
    void editsAndStoresAJob()
    {
        Escenari e;
        FrmFeinesDialog &d = *e.d;
        auto *recurs = fill<QComboBox>(d, "RecursFeina");
        auto *linies = fill<QTableWidget>(d, "DetallFeinaServeis");
        auto *total = fill<QLineEdit>(d, "TotalFeina");
        QCOMPARE(total->text(), QString("30,00"));

        // "Vidres" chosen with the keyboard fills its price; adding it shows the new line and total
        auto *serveis = fill<QComboBox>(d, "ServeisCombo");
        serveis->setFocus();
        QTest::keyClick(serveis, Qt::Key_Down);
        QTest::keyClick(serveis, Qt::Key_Down);
        QCOMPARE(fill<QLineEdit>(d, "PreuServeiFeina")->text(), QString("2,50"));
        auto *quantitat = fill<QLineEdit>(d, "QuantitatServeiFeina");
        QTest::keyClicks(quantitat, "4");
        QTest::keyClicks(fill<QLineEdit>(d, "DescripcioServeiFeina"), "Finestres del pati");
        QTest::mouseClick(fill<QPushButton>(d, "AfegirServei"), Qt::LeftButton);
        QCOMPARE(linies->rowCount(), 2);
        QCOMPARE(total->text(), QString("40,00"));

        // a clicked line is picked, not taken out; Modificar puts the change back
        clicaLinia(linies, 0);
        QCOMPARE(quantitat->text(), QString("2"));
        quantitat->selectAll();
        QTest::keyClicks(quantitat, "3");
        QTest::mouseClick(fill<QPushButton>(d, "ModificarServei"), Qt::LeftButton);
        QCOMPARE(linies->item(0, 2)->text(), QString("3"));

        // another resource, typed notes, and Enter stores everything
        recurs->setFocus();
        QTest::keyClick(recurs, Qt::Key_Down);
        auto *obs = fill<QPlainTextEdit>(d, "ObservacionsFeina");
        obs->selectAll();
        QTest::keyClicks(obs, "Clau nova");
        fill<QLineEdit>(d, "DataFeina")->setFocus();
        QTest::keyClick(fill<QLineEdit>(d, "DataFeina"), Qt::Key_Return);
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QCOMPARE(dades_prova::files(e.base.db, "SELECT recursos_nom, feines_observacions, (SELECT COUNT(*) FROM Feines_Detall) FROM Feines"),
                 QStringList{"Oriol|Clau nova|2"});
    }

    // Ticking done locks the job's fields but not the invoice date; Delete on the resource clears
    // it; Treure takes the picked line out; a refused store keeps the window open; Escape with
    // changes asks and Yes closes it storing nothing.
    void doneTickTakeOutAndEscape()
    {
        Escenari e;
        FrmFeinesDialog &d = *e.d;
        auto *feta = fill<QCheckBox>(d, "FetaFeina");
        QTest::mouseClick(feta, Qt::LeftButton, {}, QPoint(4, feta->height() / 2));
        QVERIFY(feta->isChecked());
        QVERIFY(!fill<QWidget>(d, "DetallFeinaServeis")->isEnabled() && fill<QLineEdit>(d, "DataFacturaFeina")->isEnabled());
        QTest::mouseClick(feta, Qt::LeftButton, {}, QPoint(4, feta->height() / 2));

        auto *recurs = fill<QComboBox>(d, "RecursFeina");
        recurs->setFocus();
        QTest::keyClick(recurs, Qt::Key_Delete);
        QCOMPARE(d.editor().recurs(), QString());
        auto *linies = fill<QTableWidget>(d, "DetallFeinaServeis");
        clicaLinia(linies, 0);
        QTest::mouseClick(fill<QPushButton>(d, "TreureServei"), Qt::LeftButton);
        QCOMPARE(linies->rowCount(), 0);

        auto *data = fill<QLineEdit>(d, "DataFeina"); // a refused store keeps the window and the job's date
        data->selectAll();
        QTest::keyClicks(data, "32/05/2024");
        QTest::mouseClick(fill<QPushButton>(d, "OKButton"), Qt::LeftButton);
        QVERIFY(d.isVisible());
        QCOMPARE(data->text(), QString("15/05/2024"));

        e.ui.respostes = {true};
        QTest::keyClick(&d, Qt::Key_Escape);
        QVERIFY(!d.isVisible());
        QCOMPARE(dades_prova::files(e.base.db, "SELECT recursos_nom, (SELECT COUNT(*) FROM Feines_Detall) FROM Feines"),
                 QStringList{"Marta|1"});
    }
};

QTEST_MAIN(TestFrmFeinesDialog)
#include "tst_frm_feines_dialog.moc"
