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

void roda(QAbstractItemView *v, int delta)
{
    const QPointF pos(20, 20);
    QWheelEvent e(pos, v->viewport()->mapToGlobal(pos), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                  Qt::NoScrollPhase, false);
    QApplication::sendEvent(v->viewport(), &e);
}

QChar mnemonic(const QString &text)
{
    const int i = text.indexOf('&');
    return i >= 0 && i + 1 < text.size() ? text[i + 1].toLower() : QChar();
}

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
        grid->setFocus();
        QTRY_VERIFY(grid->hasFocus());

        roda(grid, -120);
        QCOMPARE(barra->value(), 1);
        roda(grid, -240);
        QCOMPARE(barra->value(), 3);
        roda(grid, 120);
        QCOMPARE(barra->value(), 2);
        // A fine-grained wheel: half a notch does nothing until the other half arrives.
        roda(grid, -60);
        QCOMPARE(barra->value(), 2);
        roda(grid, -60);
        QCOMPARE(barra->value(), 3);

        // Without the focus the view scrolls its usual way, several rows a notch.
        altre->setFocus();
        QTRY_VERIFY(altre->hasFocus());
        roda(grid, -120);
        QVERIFY2(barra->value() - 3 > 1, qPrintable(QString::number(barra->value())));

        treuRodaUnaFila(grid);
        grid->setFocus();
        QTRY_VERIFY(grid->hasFocus());
        const int abans = barra->value();
        roda(grid, -120);
        QVERIFY(barra->value() - abans > 1);
    }

    void textIsSelectedOnEnteringAField()
    {
        QWidget pagina;
        auto *nom = new QLineEdit("Comunitat Exemple", &pagina);
        auto *preu = new QLineEdit("6,25", &pagina);
        auto *nomesLectura = new QLineEdit("no s'edita", &pagina);
        nomesLectura->setReadOnly(true);
        auto *l = new QVBoxLayout(&pagina);
        l->addWidget(nom);
        l->addWidget(preu);
        l->addWidget(nomesLectura);
        seleccionaTotEnEntrarA(&pagina);
        pagina.show();
        QVERIFY(QTest::qWaitForWindowActive(&pagina));

        preu->setFocus();
        QTRY_COMPARE(preu->selectedText(), QString("6,25"));
        // A click that gives the focus also ends with everything selected.
        QTest::mouseClick(nom, Qt::LeftButton, {}, QPoint(8, nom->height() / 2));
        QTRY_COMPARE(nom->selectedText(), QString("Comunitat Exemple"));
        QTest::keyClicks(nom, "Nou");
        QCOMPARE(nom->text(), QString("Nou"));

        nomesLectura->setFocus();
        QTest::qWait(20);
        QVERIFY(nomesLectura->selectedText().isEmpty());
    }

    void mnemonicsAreDistinctAndKeepTheOnesGiven()
    {
        QWidget d;
        auto *f = new QFormLayout(&d);
        auto *camp1 = new QLineEdit(&d);
        auto *camp2 = new QLineEdit(&d);
        auto *e1 = new QLabel("Nom:", &d);
        e1->setBuddy(camp1);
        auto *e2 = new QLabel("Nom del lloc:", &d);
        e2->setBuddy(camp2);
        auto *sense = new QLabel("Només text", &d); // no buddy: no mnemonic
        auto *ok = new QPushButton("Desar", &d);
        auto *dada = new QPushButton("&Data", &d);
        auto *chk = new QCheckBox("Àrea comuna", &d);
        f->addRow(e1, camp1);
        f->addRow(e2, camp2);
        f->addRow(sense);
        f->addRow(ok, dada);
        f->addRow(chk);
        assignaMnemonics(&d);

        QCOMPARE(dada->text(), QString("&Data"));
        QCOMPARE(sense->text(), QString("Només text"));
        QList<QChar> lletres;
        for (const QString &t : {e1->text(), e2->text(), ok->text(), dada->text(), chk->text()}) {
            const QChar c = mnemonic(t);
            QVERIFY2(!c.isNull(), qPrintable(t));
            QVERIFY2(c.unicode() < 128, qPrintable(t));
            QVERIFY2(!lletres.contains(c), qPrintable(t));
            lletres << c;
        }
        // "Desar" could not take the D already claimed by "&Data".
        QCOMPARE(mnemonic(ok->text()), QChar('e'));
        QCOMPARE(QString(chk->text()).remove('&'), QString("Àrea comuna"));
    }

    void messageBoxesCarryTheirTitlesAndAnswers()
    {
        InteraccioMissatges ui;
        QString titol, text;
        responMissatge(QMessageBox::No, &titol, &text);
        QVERIFY(!ui.pregunta("ESBORRAT DE FEINES", "Vols esborrar les feines fins al 31/12/2008?"));
        QCOMPARE(titol, QString("ESBORRAT DE FEINES"));
        QCOMPARE(text, QString("Vols esborrar les feines fins al 31/12/2008?"));

        responMissatge(QMessageBox::Yes, &titol, &text);
        QVERIFY(ui.pregunta("AVÍS", "Continuar?"));

        // A message with no title of its own takes the program's.
        QCoreApplication::setApplicationName("Quadrella");
        responMissatge(QMessageBox::Ok, &titol, &text);
        ui.informa(QString(), "3 feines esborrades.");
        QCOMPARE(titol, QString("Quadrella"));

        // During a long operation the message box shows the normal pointer, then the busy one again.
        QApplication::setOverrideCursor(Qt::WaitCursor);
        Qt::CursorShape durant = Qt::WaitCursor;
        QTimer::singleShot(0, [&] {
            durant = QApplication::overrideCursor()->shape();
            qobject_cast<QMessageBox *>(QApplication::activeModalWidget())->button(QMessageBox::Ok)->click();
        });
        ui.error("ERROR", "Error:disc ple");
        QCOMPARE(durant, Qt::ArrowCursor);
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QApplication::restoreOverrideCursor();
        QVERIFY(!QApplication::overrideCursor());
    }
};

QTEST_MAIN(TestAjudantsUi)
#include "tst_ajudants_widgets.moc"
