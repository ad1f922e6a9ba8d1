// The job editor: a clicked line is picked, not taken out; Modificar and Treure act on it; a
// recomputed end is told; unsaved changes are only dropped when the user says so; a
// done tick storing would refuse is refused at once.
#include "agenda/frm_feines_dialog.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

namespace {
const QDate kAvui(2024, 5, 15);

struct Escenari {
    BaseProva base;
    InteraccioGuio ui;
    MotorFeines motor{base.db, base.cfg};
    Feina feina;
    Escenari()
    {
        motor.setAvui(kAvui);
        dades_prova::recurs(base.db, "Marta", 0x0000FF, true);
        dades_prova::servei(base.db, "Neteja", 30, false, 15.0, "Hores");
        dades_prova::servei(base.db, "Vidres", 30, true, 2.5, "Unitats");
        dades_prova::lloc(base.db, "Oficina", 60);
        const int id = dades_prova::feina(base.db, "Oficina", kAvui, "09:00", "10:00", "Marta");
        for (const char *servei : {"Neteja", "Vidres"})
            base.db.query("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio, feines_detall_quantitat,"
                          " feines_detall_unitat, feines_detall_preu_un) VALUES (?, ?, '', 1, 'Hores', 15)")
                .bind(id).bind(QString::fromLatin1(servei)).exec();
        carregaFeina(base.db, id, feina);
    }
};

template <typename T> T *fill(QWidget &w, const char *nom) { return w.findChild<T *>(QString::fromLatin1(nom)); }
void clica(QTableWidget *t, int fila) { QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualRect(t->model()->index(fila, 1)).center()); }
void prem(QWidget &d, const char *boto) { QTest::mouseClick(fill<QPushButton>(d, boto), Qt::LeftButton); }
} // namespace

class TestEditorLiniesDialog : public QObject {
    Q_OBJECT
private slots:
    void lineButtonsAndDiscardQuestion()
    {
        Escenari e;
        FrmFeinesDialog d(e.base.db, e.base.cfg, e.motor, e.ui, e.feina);
        d.setAvui(kAvui);
        d.show();
        auto *linies = fill<QTableWidget>(d, "DetallFeinaServeis");
        auto *horaFi = fill<QComboBox>(d, "HoraFiFeina");
        QVERIFY(!fill<QPushButton>(d, "ModificarServei")->isEnabled());
        clica(linies, 1);
        QCOMPARE(linies->rowCount(), 2);
        QCOMPARE(fill<QLineEdit>(d, "PreuServeiFeina")->text(), QString("15,00"));
        horaFi->setCurrentIndex(horaFi->findText("12:00")); // the user's own end
        emit horaFi->activated(horaFi->currentIndex());
        fill<QLineEdit>(d, "QuantitatServeiFeina")->setText("3");
        emit fill<QLineEdit>(d, "QuantitatServeiFeina")->textEdited("3");
        prem(d, "ModificarServei");
        QCOMPARE(linies->rowCount(), 2);
        QCOMPARE(linies->item(1, 2)->text(), QString("3"));
        QCOMPARE(horaFi->currentText(), QString("11:00")); // 30 + 3 x 30 minutes
        QVERIFY(fill<QLabel>(d, "EstatFeina")->text().contains("12:00 → 11:00"));
        clica(linies, 0);
        prem(d, "TreureServei");
        QCOMPARE(linies->rowCount(), 1);
        QCOMPARE(linies->item(0, 0)->text(), QString("Vidres"));

        e.ui.respostes = {false, true};
        QTest::keyClick(&d, Qt::Key_Escape); // No: the changes stay
        QVERIFY(d.isVisible());
        prem(d, "CancelButton"); // Yes: dropped, nothing stored
        QVERIFY(!d.isVisible());
        QCOMPARE(e.ui.crides.size(), 2);
        QCOMPARE(e.ui.crides.at(0).text, QString("La feina té canvis sense desar. Vols descartar-los?"));
        QCOMPARE(dades_prova::valor(e.base.db, "SELECT COUNT(*) FROM Feines_Detall"), 2);

        // "Feta" on a job moved to tomorrow is refused at the tick, as storing would refuse it.
        EditorFeina ed(e.base.db, e.base.cfg, e.motor, e.ui);
        ed.setAvui(kAvui);
        ed.carrega(e.feina);
        ed.setData("16/05/2024");
        QVERIFY(!ed.marcaFeta(true) && !ed.bloquejat());
        QCOMPARE(e.ui.crides.last().text, QString("Una feina futura no pot estar feta"));
    }
};

QTEST_MAIN(TestEditorLiniesDialog)
#include "tst_editor_linies_dialog.moc"
