// The agenda's feedback: the pressed job stays outlined in every view, and a place dropped while
// the resource it would take is busy is stored unassigned with a note for the status bar.
#include "agenda/agenda_grid_widget.h"
#include "agenda/agenda_page.h"
#include "support/entorn_proves.h"

#include <QToolButton>
#include <QtTest>

class TestAgendaRessaltPage : public QObject {
    Q_OBJECT
private slots:
    void selectedJobAndBusyDrop()
    {
        DirectoriProva dir;
        auto sessio = dir.obreSessio();
        Db &db = sessio->db();
        const QDate dia = QDate::currentDate();
        dades_prova::recurs(db, "Anna", 0x00F5D7A8);
        dades_prova::lloc(db, "Museu", 60);
        dades_prova::lloc(db, "Banc", 60, "Anna");
        const int id = dades_prova::feina(db, "Museu", dia, "09:00", "10:30", "Anna");
        dades_prova::feina(db, "Museu", dia.addDays(dia.day() < 15 ? 1 : -1), "11:00", "12:00", "Anna");
        InteraccioGuio ui;
        AgendaPage page(*sessio, ui);
        page.show();
        ControladorAgenda &ctl = page.controlador();
        QStringList avisos;
        ctl.avisaEstat = [&avisos](const QString &t) { avisos << t; };
        auto ressaltades = [&] {
            QList<QPoint> r;
            for (int f = 1; f < ctl.model().files(); ++f)
                for (int c = 1; c < ctl.model().columnes(); ++c)
                    if (page.AgendaGrid->ressaltada(f, c))
                        r << QPoint(c, f);
            return r;
        };
        ctl.estat().DataCalendari = dia;
        page.VistaDia->click();
        int col = 1;
        while (ctl.model().recursColumna(col) != "Anna")
            ++col;
        QVERIFY(ressaltades().isEmpty());
        QTest::mousePress(page.AgendaGrid->viewport(), Qt::LeftButton, {}, page.AgendaGrid->rectCella(19, col).center());
        QCOMPARE(ctl.FeinaSeleccionada.feines_id, id);
        QCOMPARE(ressaltades(), (QList<QPoint>{{col, 19}, {col, 20}, {col, 21}})); // 09:00 to 10:30
        page.VistaSetmana->click();
        QVERIFY(!ressaltades().isEmpty());
        for (const QPoint &p : ressaltades())
            QCOMPARE(ctl.model().diaCella(p.y(), p.x()), dia);
        page.VistaMes->click();
        QCOMPARE(ressaltades().size(), 1);
        QCOMPARE(ctl.model().diaCella(ressaltades()[0].y(), ressaltades()[0].x()), dia);

        // Banc's own resource is busy at 09:30 but free at 12:00.
        page.VistaSetmana->click();
        const int colDia = ressaltades().at(0).x();
        ctl.deixa(20, colDia, "LBanc");
        ctl.deixa(25, colDia, "LBanc");
        QCOMPARE(dades_prova::files(db, "SELECT COALESCE(recursos_nom, '-') FROM Feines WHERE llocs_nom = 'Banc' ORDER BY feines_hora_inici"),
                 (QStringList{"-", "Anna"}));
        QCOMPARE(avisos, QStringList{"Recurs ocupat: la feina queda sense assignar"});
    }
};

QTEST_MAIN(TestAgendaRessaltPage)
#include "tst_agenda_ressalt_page.moc"
