// The overtime row under the agenda's day view driven by mouse and keyboard: its in-place editor
// opens on a click (only for a worker whose time counts), on Enter or on a typed digit; Enter,
// Right, Left, a move of the row's current cell and the loss of focus store; Escape does not; a
// rebuild shows what was stored, and a change of period or view keeps the typed value with its cell.
#include "agenda/agenda_controller.h"
#include "agenda/agenda_grid_widget.h"
#include "agenda/agenda_page.h"
#include "agenda/hores_extres.h"
#include "support/entorn_proves.h"

#include <QLineEdit>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

namespace {

const QDate kDimecres(2024, 5, 15);

// The row shows the agenda's body columns from its own column 0, its label in the vertical header.
QRect rect(QTableWidget &g, int col)
{
    return g.visualRect(g.model()->index(0, col - 1));
}

int actual(QTableWidget &g)
{
    return g.currentColumn() + 1;
}

QString textCella(QTableWidget &g, int col)
{
    return g.item(0, col - 1)->text();
}

} // namespace

class TestHoresExtresWidget : public QObject {
    Q_OBJECT

private slots:
    void editsInPlace()
    {
        DirectoriProva dir;
        auto sessio = dir.obreSessio();
        InteraccioGuio ui;
        Db &db = sessio->db();
        dades_prova::recurs(db, QStringLiteral("Marta"), 0x0000FF, true);
        dades_prova::recurs(db, QStringLiteral("Pere"), 0x00FF00, false);
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60);
        dades_prova::lloc(db, QStringLiteral("Escala"), 60);
        dades_prova::feina(db, QStringLiteral("Oficina"), kDimecres, QStringLiteral("08:00"), QStringLiteral("12:00"), QStringLiteral("Marta"));
        dades_prova::feina(db, QStringLiteral("Escala"), kDimecres, QStringLiteral("15:00"), QStringLiteral("19:30"), QStringLiteral("Marta"));
        dades_prova::feina(db, QStringLiteral("Escala"), kDimecres, QStringLiteral("08:00"), QStringLiteral("09:00"), QStringLiteral("Pere"));

        AgendaPage page(*sessio, ui);
        page.resize(1100, 700);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        ControladorAgenda &ctl = page.controlador();
        ctl.estat().DataCalendari = kDimecres;
        page.VistaDia->click();
        const int marta = columnaRecurs(ctl.model(), QStringLiteral("Marta"));
        const int pere = columnaRecurs(ctl.model(), QStringLiteral("Pere"));
        QVERIFY(marta > 0 && pere > 0);
        QTableWidget *grid = page.HoresGrid;
        auto *text1 = grid->findChild<QLineEdit *>(QStringLiteral("Text1"));
        QVERIFY(text1);

        // A click on Marta's cell opens on the proposal, selected; typing replaces it; Enter
        // stores and moves on.
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, rect(*grid, marta).center());
        QVERIFY(text1->isVisible());
        QCOMPARE(text1->selectedText(), QStringLiteral("0,50")); // 8,5 hours worked
        QCOMPARE(text1->geometry(), rect(*grid, marta));
        QTest::keyClicks(text1, QStringLiteral("1,5"));
        QTest::keyClick(text1, Qt::Key_Return);
        QVERIFY(!text1->isVisible());
        QCOMPARE(textCella(*grid, marta), QStringLiteral("1,50"));
        QCOMPARE(Hores_Fetes(db, QStringLiteral("Marta"), kDimecres), 1.5);
        QCOMPARE(actual(*grid), marta + 1);

        // Pere's time does not count: a click does nothing, Enter opens; Escape drops the value.
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, rect(*grid, pere).center());
        QCOMPARE(actual(*grid), pere);
        QVERIFY(!text1->isVisible());
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(text1->text(), QStringLiteral("0,00"));
        QTest::keyClicks(text1, QStringLiteral("9"));
        QTest::keyClick(text1, Qt::Key_Escape);
        QVERIFY(!text1->isVisible());
        QCOMPARE(actual(*grid), pere);
        QVERIFY(grid->hasFocus());
        QCOMPARE(Hores_Fetes(db, QStringLiteral("Pere"), kDimecres), 0.0);

        // A digit typed on the row starts the value with the caret after it; Left stores.
        QTest::keyClick(grid, '2');
        QCOMPARE(text1->text(), QStringLiteral("2"));
        QVERIFY(!text1->hasSelectedText());
        QTest::keyClicks(text1, QStringLiteral(",25"));
        QTest::keyClick(text1, Qt::Key_Left);
        QVERIFY(!text1->isVisible());
        QCOMPARE(Hores_Fetes(db, QStringLiteral("Pere"), kDimecres), 2.25);
        QCOMPARE(textCella(*grid, pere), QStringLiteral("2,25"));
        QCOMPARE(actual(*grid), pere > 1 ? pere - 1 : pere);

        // Right stores and moves on, like Enter.
        grid->setCurrentCell(0, marta - 1);
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClicks(text1, QStringLiteral("4"));
        QTest::keyClick(text1, Qt::Key_Right);
        QCOMPARE(textCella(*grid, marta), QStringLiteral("4,00"));
        QCOMPARE(actual(*grid), marta + 1);

        // Moving the row's current cell stores, in the column the editor was opened on.
        grid->setCurrentCell(0, marta - 1);
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClicks(text1, QStringLiteral("3"));
        grid->setCurrentCell(0, pere - 1);
        QVERIFY(!text1->isVisible());
        QCOMPARE(actual(*grid), pere);
        QCOMPARE(textCella(*grid, marta), QStringLiteral("3,00"));
        QCOMPARE(textCella(*grid, pere), QStringLiteral("2,25"));

        // A rebuild shows what is stored.
        ctl.Construeix_Agenda();
        QCOMPARE(textCella(*page.HoresGrid, marta), QStringLiteral("3,00"));

        // Losing the focus stores; a non-number removes the row.
        grid->setCurrentCell(0, marta - 1);
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClicks(text1, QStringLiteral("res"));
        page.AgendaGrid->setFocus();
        QTRY_VERIFY(!text1->isVisible());
        QCOMPARE(textCella(*grid, marta), QStringLiteral("0,00"));
        QCOMPARE(Hores_Fetes(db, QStringLiteral("Marta"), kDimecres), 0.0);
        QVERIFY(ui.crides.isEmpty());

        // The unassigned and empty columns never open.
        grid->setCurrentCell(0, grid->columnCount() - 1);
        QTest::keyClick(grid, Qt::Key_Return);
        QVERIFY(!text1->isVisible());
    }

    // Overtime typed in the in-place editor belongs to the worker and day of the cell it was typed
    // in, whatever rebuilds the grid before the editor is left.
    void periodeOVistaAmbEditorObert_data()
    {
        // The shortcuts click these buttons.
        QTest::addColumn<QString>("boto");
        QTest::newRow("next period") << "PeriodeSeguent";
        QTest::newRow("previous period") << "PeriodeAnterior";
        QTest::newRow("week view") << "VistaSetmana";
        QTest::newRow("month view") << "VistaMes";
    }

    void periodeOVistaAmbEditorObert()
    {
        QFETCH(QString, boto);
        const QDate dia(2026, 11, 25);
        DirectoriProva dir;
        auto sessio = dir.obreSessio();
        dades_prova::recurs(sessio->db(), QStringLiteral("Marta"), 0x0000FF);
        dades_prova::recurs(sessio->db(), QStringLiteral("Pere"), 0x00FF00);
        dades_prova::lloc(sessio->db(), QStringLiteral("Oficina"), 60);
        // Marta works on the day, Pere on the days around it: his column takes the place of hers.
        for (int d : {-1, 0, 1})
            dades_prova::feina(sessio->db(), QStringLiteral("Oficina"), dia.addDays(d), QStringLiteral("08:00"),
                               QStringLiteral("12:00"), d ? QStringLiteral("Pere") : QStringLiteral("Marta"));
        InteraccioGuio ui;
        AgendaPage page(*sessio, ui);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        page.controlador().estat().DataCalendari = dia;
        page.VistaDia->click();
        QTableWidget *hores = page.HoresGrid;
        const int marta = columnaRecurs(page.controlador().model(), QStringLiteral("Marta"));
        QTest::mouseClick(hores->viewport(), Qt::LeftButton, {}, hores->visualRect(hores->model()->index(0, marta - 1)).center());
        auto *text1 = hores->findChild<QLineEdit *>(QStringLiteral("Text1"));
        QTest::keyClicks(text1, QStringLiteral("1,5"));
        QTest::mouseClick(page.findChild<QToolButton *>(boto), Qt::LeftButton);
        QVERIFY(!text1->isVisible() && ui.crides.isEmpty());
        QCOMPARE(dades_prova::files(sessio->db(), QStringLiteral("SELECT * FROM Hores_Fetes")), QStringList{QStringLiteral("Marta|2026-11-25|1.5")});
    }
};

QTEST_MAIN(TestHoresExtresWidget)
#include "tst_hores_extres_widget.moc"
