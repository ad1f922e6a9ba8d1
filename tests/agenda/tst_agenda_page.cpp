// The agenda page offscreen: each button, mouse and keyboard path reaches the controller once and
// the table shows the result.

#include "agenda/agenda_grid_widget.h"
#include "agenda/agenda_llista_widget.h"
#include "agenda/agenda_llistes.h"
#include "agenda/agenda_page.h"
#include "agenda/calendari_widget.h"
#include "jobs/dades_mostra.h"
#include "support/entorn_proves.h"

#include <QAbstractButton>
#include <QCalendarWidget>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

class TestAgendaPage : public QObject {
    Q_OBJECT

    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    std::unique_ptr<InteraccioGuio> m_ui;
    std::unique_ptr<AgendaPage> m_page;
    QDate m_dimecres;

    ControladorAgenda &ctl() { return m_page->controlador(); }
    QPoint centre(int fila, int col) { return m_page->AgendaGrid->rectCella(fila, col).center(); }

    void deixa(int fila, int col, const QString &caption)
    {
        QMimeData mime;
        mime.setData(arrossegament::TipusMime, caption.toUtf8());
        QWidget *vp = m_page->AgendaGrid->viewport();
        QDragEnterEvent entra(centre(fila, col), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &entra);
        QDragMoveEvent mou(centre(fila, col), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &mou);
        QDropEvent deixa(QPointF(centre(fila, col)), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &deixa);
        QCoreApplication::processEvents();
    }

private slots:
    // The sample data, Biel at Museu on this week's Wednesday at 08:00 and his overtime that day.
    void init()
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_sessio = m_dir->obreSessio();
        afegeixDadesMostra(*m_sessio);
        m_dimecres = EstatAgenda::iniciSetmana(QDate::currentDate(), m_sessio->cfg().PrimerDiaSetmana).addDays(2);
        Db &db = m_sessio->db();
        dades_prova::recurs(db, "Biel", 0x00B5E6B8);
        for (const char *l : {"Biblioteca", "Escola Pia", "Museu"})
            dades_prova::lloc(db, l, 60);
        dades_prova::feina(db, "Museu", m_dimecres, "08:00", "09:00", "Biel");
        db.query("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('Biel', ?, 1.25)").bind(m_dimecres).exec();
        m_ui = std::make_unique<InteraccioGuio>();
        m_page = std::make_unique<AgendaPage>(*m_sessio, *m_ui);
        m_page->resize(1400, 860);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        m_sessio.reset();
        m_dir.reset();
    }

    // The view buttons switch the view, drawn as its model says; the day view shows the overtime
    // row. A press selects and outlines the job; a double click opens it; a dropped place is
    // stored where it lands; Space reaches the controller; the corner goes back to the month.
    void vistesRatoliIDeixar()
    {
        ctl().estat().DataCalendari = m_dimecres;
        m_page->VistaDia->click();
        QCOMPARE(m_page->HoresGrid->findItems("1,25", Qt::MatchExactly).size(), 1);
        m_page->VistaSetmana->click();
        AgendaGridWidget *g = m_page->AgendaGrid;
        QCOMPARE(QPoint(g->model()->columnCount(), g->model()->rowCount()), QPoint(7, 48));
        QCOMPARE(g->rowSpan(16, 2), 2);

        QWidget *vp = g->viewport();
        QTest::mousePress(vp, Qt::LeftButton, Qt::NoModifier, centre(17, 3));
        QTest::mouseRelease(vp, Qt::LeftButton, Qt::NoModifier, centre(17, 3));
        QCOMPARE(ctl().FeinaSeleccionada.llocs_nom, QString("Museu"));
        QVERIFY(g->ressaltada(18, 3) && !g->ressaltada(19, 3));
        QList<int> obertes;
        ctl().obreEditor = [&](Feina &f) { obertes << f.feines_id; };
        const int seleccionada = ctl().FeinaSeleccionada.feines_id;
        QTest::mouseDClick(vp, Qt::LeftButton, Qt::NoModifier, centre(17, 3));
        QCOMPARE(obertes, QList<int>{seleccionada});

        deixa(41, 5, "LMuseu"); // Friday 20:00
        QCOMPARE(g->model()->index(40, 4).data().toString(), QString("Museu"));
        g->setFocus();
        QTest::mouseClick(vp, Qt::LeftButton, Qt::NoModifier, centre(41, 5));
        m_ui->crides.clear();
        QTest::keyClick(g, Qt::Key_Space); // refused: no resource
        QCOMPARE(m_ui->crides.size(), 1);

        QAbstractButton *cantonada = g->findChild<QAbstractButton *>();
        QTest::mouseClick(cantonada, Qt::LeftButton);
        QTest::mouseDClick(cantonada, Qt::LeftButton);
        QVERIFY(m_page->VistaMes->isChecked());
    }

    // The calendar drives the period; the side lists ask for their pages; the print button
    // prints the last pressed resource.
    void calendariILlistes()
    {
        const QDate dema = QDate::currentDate().addMonths(2);
        m_page->CalendariML->calendari()->setSelectedDate(dema);
        QCOMPARE(ctl().estat().DiaActual, dema);

        QSignalSpy recursos(m_page.get(), &AgendaPage::obreRecurs);
        QSignalSpy llocs(m_page.get(), &AgendaPage::obreLloc);
        QSignalSpy imprimir(m_page.get(), &AgendaPage::imprimeixFeines);
        LlistaAgendaWidget *r = m_page->RecursosGrid;
        const QPoint p = r->visualRect(r->model()->index(0, 0)).center();
        QTest::mouseClick(r->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QTest::mouseDClick(r->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QCOMPARE(recursos.first().first().toString(), r->nom(0));
        LlistaAgendaWidget *l = m_page->LlocsGrid;
        QTest::mouseDClick(l->viewport(), Qt::LeftButton, Qt::NoModifier, l->visualRect(l->model()->index(2, 0)).center());
        QCOMPARE(llocs.first().first().toString(), l->nom(2));
        m_page->ImprimirFeines->click();
        QCOMPARE(imprimir.first().first().toString(), r->nom(0));
    }
};

QTEST_MAIN(TestAgendaPage)
#include "tst_agenda_page.moc"
