// The job editor window's wiring for line selection, the end time it recomputes, the refused
// done tick and the question before unsaved changes are dropped.
#include "agenda/frm_feines_dialog.h"
#include "jobs/carrega_feina.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QCheckBox>
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

    explicit Escenari(const QString &recurs = QStringLiteral("Marta"))
    {
        motor.setAvui(kAvui);
        Db &db = base.db;
        dades_prova::recurs(db, QStringLiteral("Marta"), 0x0000FF, true);
        dades_prova::servei(db, QStringLiteral("Neteja"), 30, false, 15.0, QStringLiteral("Hores"));
        dades_prova::servei(db, QStringLiteral("Vidres"), 30, true, 2.5, QStringLiteral("Unitats"));
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60);
        const int id = dades_prova::feina(db, QStringLiteral("Oficina"), kAvui, QStringLiteral("09:00"),
                                          QStringLiteral("10:00"), recurs);
        for (const char *servei : {"Neteja", "Vidres"})
            db.query(QStringLiteral("INSERT INTO Feines_Detall (feines_id, serveis_nom, feines_detall_descripcio,"
                                    " feines_detall_quantitat, feines_detall_unitat, feines_detall_preu_un)"
                                    " VALUES (?, ?, '', 1, 'Hores', 15)"))
                .bind(id).bind(QString::fromLatin1(servei)).exec();
        carregaFeina(db, id, feina);
    }
};

template <typename T>
T *fill(QWidget &w, const char *nom)
{
    T *c = w.findChild<T *>(QString::fromLatin1(nom));
    if (!c)
        qFatal("missing control %s", nom);
    return c;
}

void clicaLinia(QTableWidget *t, int fila)
{
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualRect(t->model()->index(fila, 1)).center());
}

} // namespace

class TestEditorLiniesDialog : public QObject {
    Q_OBJECT

private slots:
    // A click selects the line and fills the line editor; "Modificar" and "Treure" act on it and
    // are only enabled while a line is selected. A changed end is shown and told.
    void lineButtonsActOnTheClickedLine()
    {
        Escenari e;
        FrmFeinesDialog d(e.base.db, e.base.cfg, e.motor, e.ui, e.feina);
        d.setAvui(kAvui);
        d.show();
        QVERIFY(QTest::qWaitForWindowExposed(&d));
        auto *linies = fill<QTableWidget>(d, "DetallFeinaServeis");
        auto *modificar = fill<QPushButton>(d, "ModificarServei");
        auto *treure = fill<QPushButton>(d, "TreureServei");
        auto *quantitat = fill<QLineEdit>(d, "QuantitatServeiFeina");
        auto *horaFi = fill<QComboBox>(d, "HoraFiFeina");
        QVERIFY(!modificar->isEnabled());
        QVERIFY(!treure->isEnabled());

        clicaLinia(linies, 1);
        QCOMPARE(linies->rowCount(), 2);
        QCOMPARE(linies->selectionModel()->selectedRows().value(0).row(), 1);
        QCOMPARE(fill<QComboBox>(d, "ServeisCombo")->currentText(), QStringLiteral("Vidres"));
        QCOMPARE(fill<QLineEdit>(d, "PreuServeiFeina")->text(), QStringLiteral("15,00"));
        QVERIFY(modificar->isEnabled());
        QVERIFY(treure->isEnabled());

        // The user picks an end of their own; replacing the line recomputes it, and says so.
        horaFi->setCurrentIndex(horaFi->findText(QStringLiteral("12:00")));
        emit horaFi->activated(horaFi->currentIndex());
        quantitat->selectAll();
        QTest::keyClicks(quantitat, QStringLiteral("3"));
        QTest::mouseClick(modificar, Qt::LeftButton);
        QCOMPARE(linies->rowCount(), 2);
        QCOMPARE(linies->item(1, 2)->text(), QStringLiteral("3"));
        QCOMPARE(linies->item(1, 4)->text(), QStringLiteral("15,00"));
        QCOMPARE(horaFi->currentText(), QStringLiteral("11:00")); // 30 + 3 x 30 minutes
        const QString estat = fill<QLabel>(d, "EstatFeina")->text();
        QVERIFY2(estat.contains(QStringLiteral("12:00")) && estat.contains(QStringLiteral("11:00")), qPrintable(estat));
        QVERIFY(!modificar->isEnabled());

        clicaLinia(linies, 0);
        QTest::mouseClick(treure, Qt::LeftButton);
        QCOMPARE(linies->rowCount(), 1);
        QCOMPARE(linies->item(0, 0)->text(), QStringLiteral("Vidres"));
        QCOMPARE(fill<QLineEdit>(d, "TotalFeina")->text(), QStringLiteral("45,00"));
        QVERIFY(e.ui.crides.isEmpty());
    }

    // Escape, the Cancel button or closing the window ask before unsaved changes are dropped;
    // without changes they just close. Nothing is stored either way.
    void discardAsksOnlyWithChanges_data()
    {
        QTest::addColumn<bool>("canvi");
        QTest::addColumn<int>("com"); // 0 Escape, 1 Cancel button, 2 window close
        QTest::addColumn<QList<bool>>("respostes");
        QTest::addColumn<bool>("tancat");
        QTest::newRow("no change, Escape") << false << 0 << QList<bool>{} << true;
        QTest::newRow("change, Escape, No") << true << 0 << QList<bool>{false} << false;
        QTest::newRow("change, Cancel, Yes") << true << 1 << QList<bool>{true} << true;
        QTest::newRow("change, close, No") << true << 2 << QList<bool>{false} << false;
    }
    void discardAsksOnlyWithChanges()
    {
        QFETCH(bool, canvi);
        QFETCH(int, com);
        QFETCH(QList<bool>, respostes);
        QFETCH(bool, tancat);
        Escenari e;
        FrmFeinesDialog d(e.base.db, e.base.cfg, e.motor, e.ui, e.feina);
        d.setAvui(kAvui);
        d.show();
        QVERIFY(QTest::qWaitForWindowExposed(&d));
        if (canvi) {
            clicaLinia(fill<QTableWidget>(d, "DetallFeinaServeis"), 0);
            QTest::mouseClick(fill<QPushButton>(d, "TreureServei"), Qt::LeftButton);
        }
        e.ui.respostes = respostes;
        if (com == 0)
            QTest::keyClick(&d, Qt::Key_Escape);
        else if (com == 1)
            QTest::mouseClick(fill<QPushButton>(d, "CancelButton"), Qt::LeftButton);
        else
            d.close();
        QCOMPARE(d.isVisible(), !tancat);
        QCOMPARE(e.ui.crides.size(), canvi ? 1 : 0);
        if (canvi)
            QCOMPARE(e.ui.crides.at(0).text, QStringLiteral("La feina té canvis sense desar. Vols descartar-los?"));
        QCOMPARE(dades_prova::valor(e.base.db, QStringLiteral("SELECT COUNT(*) FROM Feines_Detall")), 2);
        QCOMPARE(e.feina.missatge, QString());
    }

    // A refused tick leaves the box clear and every field open, with the reason shown.
    void refusedDoneTickKeepsFieldsOpen()
    {
        Escenari e{QString()};
        FrmFeinesDialog d(e.base.db, e.base.cfg, e.motor, e.ui, e.feina);
        d.setAvui(kAvui);
        d.show();
        QVERIFY(QTest::qWaitForWindowExposed(&d));
        auto *feta = fill<QCheckBox>(d, "FetaFeina");
        QTest::mouseClick(feta, Qt::LeftButton, {}, QPoint(4, feta->height() / 2));
        QVERIFY(!feta->isChecked());
        QCOMPARE(e.ui.crides.size(), 1);
        QCOMPARE(e.ui.crides.at(0).text, QStringLiteral("Cal assignar recurs si la feina està feta"));
        for (const char *nom : {"RecursFeina", "DataFeina", "ServeisCombo", "AfegirServei"})
            QVERIFY2(fill<QWidget>(d, nom)->isEnabled(), nom);
    }
};

QTEST_MAIN(TestEditorLiniesDialog)
#include "tst_editor_linies_dialog.moc"
