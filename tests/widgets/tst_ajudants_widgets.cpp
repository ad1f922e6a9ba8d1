// The shared widget helpers later pages rely on: one row per wheel notch on a focused grid,
// distinct keyboard mnemonics, and the message boxes. Selecting a field's text on entering it is
// checked where the pages use it.
#include "widgets/interaccio_missatges.h"
#include "widgets/mnemonics.h"
#include "widgets/roda_grid.h"

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
    // focus the view scrolls its usual way, several rows a notch.
    void aFocusedGridMovesOneRowPerNotch()
    {
        QWidget finestra;
        auto *altre = new QLineEdit(&finestra);
        auto *grid = new QTableWidget(300, 3, &finestra);
        (new QVBoxLayout(&finestra))->addWidget(altre);
        finestra.layout()->addWidget(grid);
        finestra.resize(400, 300);
        instalaRodaUnaFila(grid);
        finestra.show();
        QVERIFY(QTest::qWaitForWindowExposed(&finestra));
        QScrollBar *barra = grid->verticalScrollBar();
        const auto rodaAmbFocus = [&](QWidget *focus, int delta) {
            focus->setFocus();
            QTRY_VERIFY(focus->hasFocus());
            const QPointF pos(20, 20);
            QWheelEvent e(pos, grid->viewport()->mapToGlobal(pos), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(grid->viewport(), &e);
        };
        for (const auto &[delta, fila] : {std::pair{-240, 2}, {-60, 2}, {-60, 3}}) {
            rodaAmbFocus(grid, delta);
            QCOMPARE(barra->value(), fila);
        }
        rodaAmbFocus(altre, -120);
        QVERIFY(barra->value() > 4);
    }

    // Distinct ASCII mnemonics for buttons, boxes and labels with a buddy; the ones given are kept
    // ("Desar" cannot take the D of "&Data").
    void mnemonicsAreDistinctAndKeepTheOnesGiven()
    {
        QWidget d;
        auto *f = new QFormLayout(&d);
        auto *e1 = new QLabel("Nom:", &d);
        e1->setBuddy(new QLineEdit(&d));
        auto *ok = new QPushButton("Desar", &d);
        auto *dada = new QPushButton("&Data", &d);
        auto *chk = new QCheckBox("Àrea comuna", &d);
        f->addRow(e1, e1->buddy());
        f->addRow(ok, dada);
        f->addRow(chk);
        assignaMnemonics(&d);
        QCOMPARE(QStringList({e1->text(), ok->text(), dada->text(), chk->text()}),
                 QStringList({"&Nom:", "D&esar", "&Data", "Àrea &comuna"}));
    }

    // Titles and answers reach the user; no title takes the program's.
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
        responMissatge(QMessageBox::Ok, &titol, &text);
        ui.informa(QString(), "3 feines esborrades.");
        QCOMPARE(titol, QString("Quadrella"));
    }
};

QTEST_MAIN(TestAjudantsUi)
#include "tst_ajudants_widgets.moc"
