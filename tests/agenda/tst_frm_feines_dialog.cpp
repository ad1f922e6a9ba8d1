// The job editor window driven as a user drives it: it shows the job, a service line is chosen,
// typed and added, a clicked line is picked and replaced or taken out, the done tick locks the
// fields, Enter stores the job and its lines, Escape asks before dropping changes, and a refused
// store keeps the window open.
#include "agenda/frm_feines_dialog.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"
#include "support/formulari_proves.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

namespace {

const QDate kAvui(2024, 5, 15);

// Marta's job at the office today, 09:00-10:00, with one cleaning line and a note.
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
        db.query("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio, feines_detall_quantitat,"
                 " feines_detall_unitat, feines_detall_preu_un) VALUES (?, 'Neteja', 'Servei de neteja', 2, 'Hores', 15)")
            .bind(id).exec();
        db.exec("UPDATE Feines SET feines_observacions = 'Porta del darrere'");
        carregaFeina(db, id, feina);
        feina.feines_observacions.clear(); // the agenda's record carries no notes
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
        QCOMPARE(fill<QLineEdit>(d, "IdFeina")->text(), QString::number(e.id));
        auto *horaFi = fill<QComboBox>(d, "HoraFiFeina");
        QCOMPARE(horaFi->currentText(), QString("10:00"));
        auto *recurs = fill<QComboBox>(d, "RecursFeina");
        QCOMPARE(recurs->currentText(), QString("Marta"));
        QCOMPARE(fill<QPlainTextEdit>(d, "ObservacionsFeina")->toPlainText(), QString("Porta del darrere"));
        auto *linies = fill<QTableWidget>(d, "DetallFeinaServeis");
        auto *total = fill<QLineEdit>(d, "TotalFeina");
        QCOMPARE(total->text(), QString("30,00"));
        QVERIFY(!fill<QPushButton>(d, "ModificarServei")->isEnabled());

        // "Vidres" chosen with the keyboard fills its unit and price; adding it shows the new
        // line, total and end
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
        QCOMPARE(linies->item(1, 0)->text(), QString("Vidres"));
        QCOMPARE(total->text(), QString("40,00"));
        QCOMPARE(horaFi->currentText(), QString("11:30"));

        // a clicked line is picked, not taken out; Modificar puts the change back and the
        // recomputed end replaces the user's own, and says so
        horaFi->setCurrentIndex(horaFi->findText("12:30"));
        emit horaFi->activated(horaFi->currentIndex());
        clicaLinia(linies, 0);
        QCOMPARE(linies->rowCount(), 2);
        QCOMPARE(serveis->currentText(), QString("Neteja"));
        QCOMPARE(quantitat->text(), QString("2"));
        quantitat->selectAll();
        QTest::keyClicks(quantitat, "3");
        QTest::mouseClick(fill<QPushButton>(d, "ModificarServei"), Qt::LeftButton);
        QCOMPARE(linies->item(0, 2)->text(), QString("3"));
        QCOMPARE(horaFi->currentText(), QString("12:00"));
        QVERIFY(fill<QLabel>(d, "EstatFeina")->text().contains("12:30 → 12:00"));

        // another resource, typed notes, and Enter stores everything
        recurs->setFocus();
        QTest::keyClick(recurs, Qt::Key_Down);
        auto *obs = fill<QPlainTextEdit>(d, "ObservacionsFeina");
        obs->selectAll();
        QTest::keyClicks(obs, "Clau nova");
        fill<QLineEdit>(d, "DataFeina")->setFocus();
        QTest::keyClick(fill<QLineEdit>(d, "DataFeina"), Qt::Key_Return);
        QCOMPARE(d.result(), int(QDialog::Accepted));
        QCOMPARE(e.feina.missatge, QString("OK"));
        QCOMPARE(dades_prova::files(e.base.db, "SELECT feines_hora_fi, recursos_nom, feines_observacions FROM Feines"),
                 QStringList{"12:00|Oriol|Clau nova"});
        QCOMPARE(dades_prova::files(e.base.db, "SELECT serveis_nom, feines_detall_descripcio, feines_detall_quantitat"
                                              " FROM Feines_Detall ORDER BY serveis_nom"),
                 (QStringList{"Neteja|Servei de neteja|3", "Vidres|Finestres del pati|4"}));
    }

    // Ticking done locks the job's fields and lines but not itself nor the invoice date; the
    // Delete key on the resource clears it; Treure takes the picked line out; Escape with
    // changes asks, No keeps the window, Yes closes it storing nothing.
    void doneTickTakeOutAndEscape()
    {
        Escenari e;
        FrmFeinesDialog &d = *e.d;
        auto *feta = fill<QCheckBox>(d, "FetaFeina");
        QTest::mouseClick(feta, Qt::LeftButton, {}, QPoint(4, feta->height() / 2));
        QVERIFY(feta->isChecked());
        for (const char *nom : {"DataFeina", "HoraIniciFeina", "HoraFiFeina", "RecursFeina", "ObservacionsFeina",
                                "ServeisCombo", "QuantitatServeiFeina", "PreuServeiFeina", "AfegirServei", "DetallFeinaServeis"})
            QVERIFY2(!fill<QWidget>(d, nom)->isEnabled(), nom);
        QVERIFY(fill<QLineEdit>(d, "DataFacturaFeina")->isEnabled() && feta->isEnabled());
        QTest::mouseClick(feta, Qt::LeftButton, {}, QPoint(4, feta->height() / 2));

        auto *recurs = fill<QComboBox>(d, "RecursFeina");
        recurs->setFocus();
        QTest::keyClick(recurs, Qt::Key_Delete);
        QCOMPARE(d.editor().recurs(), QString());
        auto *linies = fill<QTableWidget>(d, "DetallFeinaServeis");
        clicaLinia(linies, 0);
        QTest::mouseClick(fill<QPushButton>(d, "TreureServei"), Qt::LeftButton);
        QCOMPARE(linies->rowCount(), 0);

        e.ui.respostes = {false, true};
        QTest::keyClick(&d, Qt::Key_Escape);
        QVERIFY(d.isVisible());
        QTest::keyClick(&d, Qt::Key_Escape);
        QVERIFY(!d.isVisible());
        QCOMPARE(e.ui.crides.at(0).text, QString("La feina té canvis sense desar. Vols descartar-los?"));
        QCOMPARE(e.feina.missatge, QString());
        QCOMPARE(dades_prova::files(e.base.db, "SELECT recursos_nom, (SELECT COUNT(*) FROM Feines_Detall) FROM Feines"),
                 QStringList{"Marta|1"});
    }

    // A refused store keeps the window open with the job's own date back in the field.
    void refusalKeepsTheWindowOpen()
    {
        Escenari e;
        auto *data = fill<QLineEdit>(*e.d, "DataFeina");
        data->selectAll();
        QTest::keyClicks(data, "32/05/2024");
        QTest::mouseClick(fill<QPushButton>(*e.d, "OKButton"), Qt::LeftButton);
        QVERIFY(e.d->isVisible());
        QCOMPARE(e.ui.crides.size(), 1);
        QCOMPARE(e.ui.crides.at(0).text, QString("Data incorrecta"));
        QCOMPARE(data->text(), QString("15/05/2024"));
    }
};

QTEST_MAIN(TestFrmFeinesDialog)
#include "tst_frm_feines_dialog.moc"
