// The overtime row's in-place editor on the agenda page, driven by mouse and keyboard.
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

// Marta (whose time counts) works 08:00-12:00 and 15:00-19:30 on `dia`, Pere (whose time does
// not) 08:00-09:00 on the days in `diesPere`; the page shows that day.
struct Pagina {
    DirectoriProva dir;
    std::unique_ptr<Sessio> sessio = dir.obreSessio();
    InteraccioGuio ui;
    std::unique_ptr<AgendaPage> page;
    QTableWidget *hores = nullptr;
    QLineEdit *text1 = nullptr;

    Pagina(const QDate &dia, const QList<int> &diesPere)
    {
        Db &db = sessio->db();
        dades_prova::recurs(db, QStringLiteral("Marta"), 0x0000FF, true);
        dades_prova::recurs(db, QStringLiteral("Pere"), 0x00FF00, false);
        dades_prova::lloc(db, QStringLiteral("Oficina"), 60);
        dades_prova::feina(db, QStringLiteral("Oficina"), dia, QStringLiteral("08:00"), QStringLiteral("12:00"), QStringLiteral("Marta"));
        dades_prova::feina(db, QStringLiteral("Oficina"), dia, QStringLiteral("15:00"), QStringLiteral("19:30"), QStringLiteral("Marta"));
        for (int d : diesPere)
            dades_prova::feina(db, QStringLiteral("Oficina"), dia.addDays(d), QStringLiteral("08:00"), QStringLiteral("09:00"), QStringLiteral("Pere"));
        page = std::make_unique<AgendaPage>(*sessio, ui);
        page->resize(1100, 700);
        page->show();
        QVERIFY(QTest::qWaitForWindowExposed(page.get()));
        page->controlador().estat().DataCalendari = dia;
        page->VistaDia->click();
        hores = page->HoresGrid;
        text1 = hores->findChild<QLineEdit *>(QStringLiteral("Text1"));
    }

    int columna(const char *recurs) { return columnaRecurs(page->controlador().model(), QString::fromLatin1(recurs)); }
    void clica(int col) { QTest::mouseClick(hores->viewport(), Qt::LeftButton, {}, hores->visualRect(hores->model()->index(0, col - 1)).center()); }
    QString cella(int col) { return hores->item(0, col - 1)->text(); }
    double desat(const char *recurs) { return Hores_Fetes(sessio->db(), QString::fromLatin1(recurs), kDimecres); }
};

} // namespace

// The overtime row under the agenda's day view driven by mouse and keyboard: its in-place editor
// opens on a click (only for a worker whose time counts), on Enter or on a typed digit; Enter
// and the loss of focus store; Escape does not.
class TestHoresExtresWidget : public QObject {
    Q_OBJECT

private slots:
    void editsInPlace()
    {
        Pagina p(kDimecres, {0});
        const int marta = p.columna("Marta"), pere = p.columna("Pere");
        QCOMPARE(QPoint(marta, pere), QPoint(1, 2));

        p.clica(marta); // opens on the proposal, selected
        QCOMPARE(p.text1->selectedText(), QStringLiteral("0,50"));
        QTest::keyClicks(p.text1, QStringLiteral("1,5"));
        QTest::keyClick(p.text1, Qt::Key_Return);
        QCOMPARE(p.cella(marta), QStringLiteral("1,50"));

        p.clica(pere); // no click for Pere, but Enter; Escape drops the value
        QVERIFY(!p.text1->isVisible());
        QTest::keyClick(p.hores, Qt::Key_Return);
        QCOMPARE(p.text1->text(), QStringLiteral("0,00"));
        QTest::keyClicks(p.text1, QStringLiteral("9"));
        QTest::keyClick(p.text1, Qt::Key_Escape);
        QVERIFY(!p.text1->isVisible() && p.hores->hasFocus());
        QCOMPARE(p.desat("Pere"), 0.0);

        QTest::keyClick(p.hores, '2'); // a typed digit starts the value
        QTest::keyClick(p.text1, Qt::Key_Return);
        QCOMPARE(p.cella(pere), QStringLiteral("2,00"));

        p.hores->setCurrentCell(0, marta - 1); // losing the focus stores
        QTest::keyClick(p.hores, Qt::Key_Return);
        QTest::keyClicks(p.text1, QStringLiteral("5"));
        p.page->AgendaGrid->setFocus();
        QTRY_VERIFY(!p.text1->isVisible());
        QCOMPARE(p.desat("Marta"), 5.0);
    }

    // Overtime typed in the in-place editor belongs to the worker and day of the cell it was typed
    // in, whatever rebuilds the grid before the editor is left.
    void periodeOVistaAmbEditorObert_data()
    {
        QTest::addColumn<QString>("boto"); // the shortcuts click these buttons
        QTest::newRow("next period") << "PeriodeSeguent";
        QTest::newRow("week view") << "VistaSetmana";
    }

    void periodeOVistaAmbEditorObert()
    {
        QFETCH(QString, boto);
        Pagina p(kDimecres, {-1, 1}); // Pere's column takes the place of Marta's on the days around
        p.clica(p.columna("Marta"));
        QTest::keyClicks(p.text1, QStringLiteral("1,5"));
        QTest::mouseClick(p.page->findChild<QToolButton *>(boto), Qt::LeftButton);
        QVERIFY(!p.text1->isVisible() && p.ui.crides.isEmpty());
        QCOMPARE(dades_prova::files(p.sessio->db(), QStringLiteral("SELECT * FROM Hores_Fetes")), QStringList{QStringLiteral("Marta|2024-05-15|1.5")});
    }
};

QTEST_MAIN(TestHoresExtresWidget)
#include "tst_hores_extres_widget.moc"
