// The overtime row's in-place editor driven by mouse and keyboard: it opens on a click (only for a
// worker whose time counts), on Enter or on a typed digit; Enter, Right, Left, a move of the current
// cell and the loss of focus store; Escape does not.
#include "agenda/agenda_controller.h"
#include "agenda/agenda_model.h"
#include "agenda/agenda_page.h"
#include "agenda/editor_hores_widget.h"
#include "agenda/hores_extres.h"
#include "agenda/hores_extres_editor.h"
#include "support/entorn_proves.h"

#include <QLineEdit>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

namespace {

const QDate kDimecres(2024, 5, 15);

struct Fila {
    BaseProva b;
    InteraccioGuio ui;
    ModelAgenda model{b.db, b.cfg};
    int marta = 0;
    int pere = 0;

    Fila()
    {
        Db &db = b.db;
        dades_prova::recurs(db, QStringLiteral("Marta"), 1, true);
        dades_prova::recurs(db, QStringLiteral("Pere"), 2, false);
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60);
        dades_prova::lloc(db, QStringLiteral("Escala"), 60);
        dades_prova::feina(db, QStringLiteral("Oficina"), kDimecres, QStringLiteral("08:00"), QStringLiteral("12:00"), QStringLiteral("Marta"));
        dades_prova::feina(db, QStringLiteral("Escala"), kDimecres, QStringLiteral("15:00"), QStringLiteral("19:30"), QStringLiteral("Marta"));
        dades_prova::feina(db, QStringLiteral("Escala"), kDimecres, QStringLiteral("08:00"), QStringLiteral("09:00"), QStringLiteral("Pere"));
        model.Construeix_Agenda(EstatAgenda(VistaAgenda::Dia, kDimecres, b.cfg.PrimerDiaSetmana));
        marta = columnaRecurs(model, QStringLiteral("Marta"));
        pere = columnaRecurs(model, QStringLiteral("Pere"));
    }
};

// The row shows the agenda's body columns from its own column 0, its label in the vertical header,
// as under the day view.
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
        Fila f;
        QVERIFY(f.marta > 0 && f.pere > 0);
        QWidget finestra;
        auto *lay = new QVBoxLayout(&finestra);
        auto *grid = new QTableWidget(1, f.model.columnes() - 1);
        grid->setVerticalHeaderLabels({f.model.textHores(0)});
        auto *altre = new QLineEdit;
        lay->addWidget(grid);
        lay->addWidget(altre);
        for (int c = 1; c < f.model.columnes(); ++c)
            grid->setItem(0, c - 1, new QTableWidgetItem(f.model.textHores(c)));
        EditorHores ed(f.b.db, f.b.cfg, f.model);
        EditorHoresWidget w(grid, ed, f.ui, 1);
        finestra.resize(900, 200);
        finestra.show();
        QVERIFY(QTest::qWaitForWindowExposed(&finestra));
        QLineEdit *text1 = w.text1();
        QCOMPARE(text1->objectName(), QStringLiteral("Text1"));

        // A click on Marta's cell opens on the proposal, selected; typing replaces it; Enter
        // stores and moves on.
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, rect(*grid, f.marta).center());
        QVERIFY(text1->isVisible());
        QCOMPARE(text1->text(), QStringLiteral("0,50"));
        QCOMPARE(text1->selectedText(), QStringLiteral("0,50"));
        QCOMPARE(text1->geometry(), rect(*grid, f.marta));
        QTest::keyClicks(text1, QStringLiteral("1,5"));
        QTest::keyClick(text1, Qt::Key_Return);
        QVERIFY(!text1->isVisible());
        QCOMPARE(textCella(*grid, f.marta), QStringLiteral("1,50"));
        QCOMPARE(Hores_Fetes(f.b.db, QStringLiteral("Marta"), kDimecres), 1.5);
        QCOMPARE(actual(*grid), f.marta + 1);

        // Pere's time does not count: a click does nothing, Enter opens.
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, rect(*grid, f.pere).center());
        QCOMPARE(actual(*grid), f.pere);
        QVERIFY(!text1->isVisible());
        QTest::keyClick(grid, Qt::Key_Return);
        QVERIFY(text1->isVisible());
        QCOMPARE(text1->text(), QStringLiteral("0,00"));
        // Escape drops what was typed.
        QTest::keyClicks(text1, QStringLiteral("9"));
        QTest::keyClick(text1, Qt::Key_Escape);
        QVERIFY(!text1->isVisible());
        QCOMPARE(actual(*grid), f.pere);
        QVERIFY(grid->hasFocus());
        QCOMPARE(Hores_Fetes(f.b.db, QStringLiteral("Pere"), kDimecres), 0.0);
        QCOMPARE(textCella(*grid, f.pere), f.model.textHores(f.pere));

        // A digit typed on the row starts the value with the caret after it; Left stores.
        QTest::keyClick(grid, '2');
        QVERIFY(text1->isVisible());
        QCOMPARE(text1->text(), QStringLiteral("2"));
        QVERIFY(!text1->hasSelectedText());
        QTest::keyClicks(text1, QStringLiteral(",25"));
        QTest::keyClick(text1, Qt::Key_Left);
        QVERIFY(!text1->isVisible());
        QCOMPARE(Hores_Fetes(f.b.db, QStringLiteral("Pere"), kDimecres), 2.25);
        QCOMPARE(textCella(*grid, f.pere), QStringLiteral("2,25"));
        QCOMPARE(actual(*grid), f.pere > 1 ? f.pere - 1 : f.pere);

        // Right stores and moves on, like Enter.
        grid->setCurrentCell(0, f.marta - 1);
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClicks(text1, QStringLiteral("4"));
        QTest::keyClick(text1, Qt::Key_Right);
        QVERIFY(!text1->isVisible());
        QCOMPARE(textCella(*grid, f.marta), QStringLiteral("4,00"));
        QCOMPARE(actual(*grid), f.marta + 1);

        // Moving the row's current cell stores, in the column the editor was opened on.
        grid->setCurrentCell(0, f.marta - 1);
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClicks(text1, QStringLiteral("3"));
        grid->setCurrentCell(0, f.pere - 1);
        QVERIFY(!text1->isVisible());
        QCOMPARE(actual(*grid), f.pere);
        QCOMPARE(textCella(*grid, f.marta), QStringLiteral("3,00"));
        QCOMPARE(textCella(*grid, f.pere), QStringLiteral("2,25"));

        // Losing the focus stores; a non-number removes the row.
        grid->setCurrentCell(0, f.marta - 1);
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClicks(text1, QStringLiteral("res"));
        altre->setFocus();
        QTRY_VERIFY(!text1->isVisible());
        QCOMPARE(textCella(*grid, f.marta), QStringLiteral("0,00"));
        QCOMPARE(Hores_Fetes(f.b.db, QStringLiteral("Marta"), kDimecres), 0.0);
        QVERIFY(f.ui.crides.isEmpty());

        // The unassigned and empty columns never open.
        grid->setCurrentCell(0, f.model.columnes() - 2); // the last agenda column, unused
        QTest::keyClick(grid, Qt::Key_Return);
        QVERIFY(!text1->isVisible());
    }

    // The agenda page's own overtime row: a click on a worker's cell opens Text1 on the proposal,
    // Enter stores, and the next rebuild shows the stored value.
    void agendaPageOvertimeRow()
    {
        DirectoriProva dir;
        dir.posaParametre(QStringLiteral("HoresDia"), QStringLiteral("1,00"));
        auto sessio = dir.obreSessio();
        InteraccioGuio ui;
        Db &db = sessio->db();
        dades_prova::recurs(db, QStringLiteral("Marta"), 0x0000FF, true);
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60);
        const QDate dilluns(2024, 5, 13);
        dades_prova::feina(db, QStringLiteral("Oficina"), dilluns, QStringLiteral("09:00"), QStringLiteral("11:00"), QStringLiteral("Marta"));

        AgendaPage page(*sessio, ui);
        page.resize(1100, 700);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        page.controlador().estat().DataCalendari = dilluns;
        page.VistaDia->click();
        const int col = columnaRecurs(page.controlador().model(), QStringLiteral("Marta"));
        QVERIFY(col > 0);
        QTableWidget *hores = page.HoresGrid;
        QCOMPARE(hores->item(0, col - 1)->text(), QStringLiteral("0,00"));
        auto *text1 = hores->findChild<QLineEdit *>(QStringLiteral("Text1"));
        QVERIFY(text1);

        QTest::mouseClick(hores->viewport(), Qt::LeftButton, {}, rect(*hores, col).center());
        QVERIFY(text1->isVisible());
        QCOMPARE(text1->text(), QStringLiteral("1,00")); // 2 hours worked, 1 a day
        const QString captures = qEnvironmentVariable("QUADRELLA_CAPTURES");
        if (!captures.isEmpty())
            page.grab().save(captures + QStringLiteral("/agenda_hores.png"));
        QTest::keyClicks(text1, QStringLiteral("1,75"));
        QTest::keyClick(text1, Qt::Key_Return);
        QVERIFY(!text1->isVisible());
        QCOMPARE(Hores_Fetes(db, QStringLiteral("Marta"), dilluns), 1.75);
        page.controlador().Construeix_Agenda();
        QCOMPARE(page.HoresGrid->item(0, col - 1)->text(), QStringLiteral("1,75"));
        QVERIFY(ui.crides.isEmpty());
    }
};

QTEST_MAIN(TestHoresExtresWidget)
#include "tst_hores_extres_widget.moc"
