// The shared widget helpers later pages rely on: one row per wheel notch on a focused grid, text
// selected on entering a field, distinct keyboard mnemonics, and the message boxes.
#include "widgets/interaccio_missatges.h"
#include "widgets/mnemonics.h"
#include "widgets/roda_grid.h"
#include "widgets/seleccio_text.h"

#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// Answers the next message box by pressing one of its buttons.
void responMissatge(QMessageBox::StandardButton boto, QString *titol, QString *text)
{
    QTimer::singleShot(0, [=] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        *titol = box->windowTitle();
        *text = box->text();
        box->button(boto)->click();
    });
}

} // namespace

class TestAjudantsUi : public QObject {
    Q_OBJECT

private slots:
    // One row per notch on the focused grid (half a notch waits for the other half); without the
    // focus, or once removed, the view scrolls its usual way, several rows a notch.
    void aFocusedGridMovesOneRowPerNotch()
    {
        QWidget finestra;
        auto *altre = new QLineEdit(&finestra);
        auto *grid = new QTableWidget(300, 3, &finestra);
        auto *l = new QVBoxLayout(&finestra);
        l->addWidget(altre);
        l->addWidget(grid);
        finestra.resize(400, 300);
        instalaRodaUnaFila(grid);
        instalaRodaUnaFila(grid); // installing twice changes nothing
        finestra.show();
        QVERIFY(QTest::qWaitForWindowExposed(&finestra));
        QScrollBar *barra = grid->verticalScrollBar();
        const auto rodaAmbFocus = [&](QWidget *focus, int delta) {
            focus->setFocus();
            QTRY_VERIFY(focus->hasFocus());
            const QPointF pos(20, 20);
            QWheelEvent e(pos, grid->viewport()->mapToGlobal(pos), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(grid->viewport(), &e);
        };
        for (const auto &[delta, fila] : {std::pair{-240, 2}, {120, 1}, {-60, 1}, {-60, 2}}) {
            rodaAmbFocus(grid, delta);
            QCOMPARE(barra->value(), fila);
        }
        rodaAmbFocus(altre, -120);
        QVERIFY2(barra->value() > 3, qPrintable(QString::number(barra->value())));
        treuRodaUnaFila(grid);
        const int abans = barra->value();
        rodaAmbFocus(grid, -120);
        QVERIFY(barra->value() - abans > 1);
    }

    // Entering a field by the keyboard or by a click selects its text; a read-only one is left be.
    void textIsSelectedOnEnteringAField()
    {
        QWidget pagina;
        auto *nom = new QLineEdit("Comunitat Exemple", &pagina);
        auto *preu = new QLineEdit("6,25", &pagina);
        auto *nomesLectura = new QLineEdit("no s'edita", &pagina);
        nomesLectura->setReadOnly(true);
        auto *l = new QVBoxLayout(&pagina);
        for (QLineEdit *c : {nom, preu, nomesLectura})
            l->addWidget(c);
        seleccionaTotEnEntrarA(&pagina);
        pagina.show();
        QVERIFY(QTest::qWaitForWindowActive(&pagina));
        preu->setFocus();
        QTRY_COMPARE(preu->selectedText(), QString("6,25"));
        QTest::mouseClick(nom, Qt::LeftButton, {}, QPoint(8, nom->height() / 2));
        QTRY_COMPARE(nom->selectedText(), QString("Comunitat Exemple"));
        nomesLectura->setFocus();
        QTest::qWait(20);
        QVERIFY(nomesLectura->selectedText().isEmpty());
    }

    // Distinct ASCII mnemonics for buttons, boxes and labels with a buddy; the ones given are kept
    // ("Desar" cannot take the D of "&Data").
    void mnemonicsAreDistinctAndKeepTheOnesGiven()
    {
        QWidget d;
        auto *f = new QFormLayout(&d);
        auto *e1 = new QLabel("Nom:", &d);
        e1->setBuddy(new QLineEdit(&d));
        auto *sense = new QLabel("Només text", &d); // no buddy: no mnemonic
        auto *ok = new QPushButton("Desar", &d);
        auto *dada = new QPushButton("&Data", &d);
        auto *chk = new QCheckBox("Àrea comuna", &d);
        f->addRow(e1, e1->buddy());
        f->addRow(sense);
        f->addRow(ok, dada);
        f->addRow(chk);
        assignaMnemonics(&d);
        QCOMPARE(QStringList({e1->text(), sense->text(), ok->text(), dada->text(), chk->text()}),
                 QStringList({"&Nom:", "Només text", "D&esar", "&Data", "Àrea &comuna"}));
    }

    // Titles and answers reach the user; no title takes the program's; the normal pointer over a
    // message during a long operation, the busy one again afterwards.
    void messageBoxesCarryTheirTitlesAndAnswers()
    {
        InteraccioMissatges ui;
        QString titol, text;
        responMissatge(QMessageBox::No, &titol, &text);
        QVERIFY(!ui.pregunta("ESBORRAT DE FEINES", "Vols esborrar les feines fins al 31/12/2008?"));
        QCOMPARE(titol + ": " + text, QString("ESBORRAT DE FEINES: Vols esborrar les feines fins al 31/12/2008?"));
        responMissatge(QMessageBox::Yes, &titol, &text);
        QVERIFY(ui.pregunta("AVÍS", "Continuar?"));
        QCoreApplication::setApplicationName("Quadrella");
        QApplication::setOverrideCursor(Qt::WaitCursor);
        Qt::CursorShape durant = Qt::WaitCursor;
        QTimer::singleShot(0, [&] { durant = QApplication::overrideCursor()->shape(); });
        responMissatge(QMessageBox::Ok, &titol, &text);
        ui.informa(QString(), "3 feines esborrades.");
        QCOMPARE(titol, QString("Quadrella"));
        QCOMPARE(durant, Qt::ArrowCursor);
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QApplication::restoreOverrideCursor();
    }
};

QTEST_MAIN(TestAjudantsUi)
#include "tst_ajudants_widgets.moc"
