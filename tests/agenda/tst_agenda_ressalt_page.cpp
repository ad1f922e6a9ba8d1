// The job pressed on the agenda stays outlined: its block in the day and week views, its day in
// the month view, and nothing else.
#include "agenda/agenda_grid_widget.h"
#include "agenda/agenda_page.h"
#include "support/entorn_proves.h"

#include <QToolButton>
#include <QtTest>

class TestAgendaRessaltPage : public QObject {
    Q_OBJECT

private slots:
    void selectedJobOutlinedInEveryView()
    {
        DirectoriProva dir;
        auto sessio = dir.obreSessio();
        Db &db = sessio->db();
        const QDate dia = QDate::currentDate();
        dades_prova::recurs(db, "Anna", 0x00F5D7A8);
        dades_prova::lloc(db, "Museu", 60);
        dades_prova::lloc(db, "Banc", 60);
        const int id = dades_prova::feina(db, "Museu", dia, "09:00", "10:30", "Anna");
        dades_prova::feina(db, "Banc", dia, "11:00", "12:00", "Anna");
        dades_prova::feina(db, "Banc", dia.addDays(dia.day() < 15 ? 1 : -1), "09:00", "10:00", "Anna");
        InteraccioGuio ui;
        AgendaPage page(*sessio, ui);
        page.resize(1200, 800);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        ControladorAgenda &ctl = page.controlador();
        AgendaGridWidget *g = page.AgendaGrid;

        // The cells that outline, as (row, column).
        auto ressaltades = [&] {
            QList<QPoint> r;
            for (int f = 1; f < ctl.model().files(); ++f)
                for (int c = 1; c < ctl.model().columnes(); ++c)
                    if (g->ressaltada(f, c))
                        r << QPoint(c, f);
            return r;
        };
        ctl.estat().DataCalendari = dia;
        page.VistaDia->click();
        QVERIFY(ressaltades().isEmpty());
        int col = 1;
        while (col < ctl.model().columnes() && ctl.model().recursColumna(col) != "Anna")
            ++col;
        const int fila = 19; // 09:00
        QCOMPARE(ctl.model().text(fila, col), QString("Museu"));
        QTest::mousePress(g->viewport(), Qt::LeftButton, Qt::NoModifier, g->rectCella(fila, col).center());
        QTest::mouseRelease(g->viewport(), Qt::LeftButton, Qt::NoModifier, g->rectCella(fila, col).center());
        QCOMPARE(ctl.FeinaSeleccionada.feines_id, id);
        QCOMPARE(ressaltades(), (QList<QPoint>{{col, 19}, {col, 20}, {col, 21}}));

        page.VistaSetmana->click();
        const QList<QPoint> setmana = ressaltades();
        QVERIFY(!setmana.isEmpty());
        for (const QPoint &p : setmana) {
            QCOMPARE(ctl.model().diaCella(p.y(), p.x()), dia);
            QCOMPARE(ctl.model().text(p.y(), p.x()), QString("Museu"));
        }

        page.VistaMes->click();
        const QList<QPoint> mes = ressaltades();
        QCOMPARE(mes.size(), 1);
        QCOMPARE(ctl.model().diaCella(mes.at(0).y(), mes.at(0).x()), dia);
    }
};

QTEST_MAIN(TestAgendaRessaltPage)
#include "tst_agenda_ressalt_page.moc"
