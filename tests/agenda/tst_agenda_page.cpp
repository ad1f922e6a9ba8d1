// The agenda page on sample-like data, offscreen: the table draws the model's blocks, headers
// and overtime row; real mouse, keyboard and drop events reach the controller; the pressed job
// stays outlined in every view.

#include "agenda/agenda_grid_widget.h"
#include "agenda/agenda_llista_widget.h"
#include "agenda/agenda_llistes.h"
#include "agenda/agenda_page.h"
#include "agenda/calendari_widget.h"
#include "jobs/dades_mostra.h"
#include "jobs/motor_feines.h"
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
    QDate m_dilluns;

    ControladorAgenda &ctl() { return m_page->controlador(); }
    const ModelAgenda &model() { return m_page->controlador().model(); }
    QPoint centre(int fila, int col) { return m_page->AgendaGrid->rectCella(fila, col).center(); }
    qint64 feines() { return dades_prova::valor(m_sessio->db(), "SELECT COUNT(*) FROM Feines"); }

    // The table shows the model: its headers, its blocks merged as the model says (one row each
    // in the month view), and the overtime row under the day view only.
    void comprovaDibuix()
    {
        AgendaGridWidget *g = m_page->AgendaGrid;
        const ModelAgenda &m = model();
        QCOMPARE(QPoint(g->model()->columnCount(), g->model()->rowCount()), QPoint(m.columnes() - 1, m.files() - 1));
        int blocs = 0;
        for (int c = 1; c < m.columnes(); ++c) {
            QCOMPARE(g->model()->headerData(c - 1, Qt::Horizontal).toString(), m.text(0, c));
            for (int r = 1; r < m.files(); ++r) {
                const int fusionades = m.cella(r, c).filesFusionades;
                if (fusionades >= 1)
                    QCOMPARE(g->rowSpan(r - 1, c - 1), m.vista() == VistaAgenda::Mes ? 1 : fusionades);
                blocs += fusionades > 1 ? 1 : 0;
            }
        }
        QCOMPARE(blocs > 0, m.vista() != VistaAgenda::Mes);
        QCOMPARE(m_page->HoresGrid->isVisible(), m.vista() == VistaAgenda::Dia);
        if (m.vista() == VistaAgenda::Dia) {
            for (int c = 1; c < m.columnes(); ++c)
                QCOMPARE(m_page->HoresGrid->item(0, c - 1)->text(), m.textHores(c));
        }
    }

    void deixa(int fila, int col, const QString &caption)
    {
        QMimeData mime;
        mime.setData(arrossegament::TipusMime, caption.toUtf8());
        QWidget *vp = m_page->AgendaGrid->viewport();
        QDragEnterEvent entra(centre(fila, col), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &entra);
        QDragMoveEvent mou(centre(fila, col), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &mou);
        QCOMPARE(m_page->AgendaGrid->celaDesti(), QPoint(col, fila));
        QDropEvent deixa(QPointF(centre(fila, col)), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &deixa);
        QCoreApplication::processEvents();
    }

    // The cells outlined as the selected job's, as (column, row).
    QList<QPoint> ressaltades()
    {
        QList<QPoint> r;
        for (int f = 1; f < model().files(); ++f)
            for (int c = 1; c < model().columnes(); ++c)
                if (m_page->AgendaGrid->ressaltada(f, c))
                    r << QPoint(c, f);
        return r;
    }

private slots:
    // The sample data and a working week: Anna at 08:00, Biel at 09:30, their team at 11:00,
    // Monday to Saturday; Biel has overtime on Wednesday.
    void init()
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_sessio = m_dir->obreSessio();
        afegeixDadesMostra(*m_sessio);
        m_dilluns = EstatAgenda::iniciSetmana(QDate::currentDate(), m_sessio->cfg().PrimerDiaSetmana);
        Db &db = m_sessio->db();
        dades_prova::recurs(db, "Anna", 0x00F5D7A8);
        dades_prova::recurs(db, "Biel", 0x00B5E6B8);
        dades_prova::grup(db, "Equip Nord", 0x00E0B0D8, {"Anna", "Biel"});
        const QStringList llocs = {"Biblioteca", "Escola Pia", "Museu"};
        for (const QString &l : llocs)
            dades_prova::lloc(db, l, 60);
        for (int d = 0; d < 6; ++d) {
            dades_prova::feina(db, llocs[d % 3], m_dilluns.addDays(d), "08:00", "09:00", "Anna");
            dades_prova::feina(db, llocs[(d + 1) % 3], m_dilluns.addDays(d), "09:30", "10:30", "Biel");
            dades_prova::feina(db, llocs[(d + 2) % 3], m_dilluns.addDays(d), "11:00", "12:00", "Equip Nord");
        }
        db.query("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('Biel', ?, 1.25)")
            .bind(m_dilluns.addDays(2)).exec();
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

    // The three views drawn as their models say; the resource list in the resources' colours.
    void dibuixaLesTresVistes()
    {
        QCOMPARE(ctl().estat().vista, VistaAgenda::Mes);
        QVERIFY(m_page->VistaMes->isChecked());
        comprovaDibuix();
        m_page->VistaSetmana->click();
        QCOMPARE(ctl().estat().vista, VistaAgenda::Setmana);
        comprovaDibuix();
        ctl().estat().DataCalendari = m_dilluns.addDays(2);
        m_page->VistaDia->click();
        QCOMPARE(ctl().estat().DiaActual, m_dilluns.addDays(2));
        comprovaDibuix();
        QVERIFY(m_page->HoresGrid->findItems("1,25", Qt::MatchExactly).size() == 1);

        const QList<EntradaRecurs> recursos = llistaRecursosAgenda(m_sessio->db());
        QCOMPARE(m_page->RecursosGrid->rowCount(), int(recursos.size()));
        QCOMPARE(m_page->RecursosGrid->item(0, 0)->font().bold(), recursos[0].grup);
    }

    // A press selects and outlines the job in every view; a double click opens it; a dropped
    // place is stored where it lands; Space reaches the controller; the corner goes back to the
    // month.
    void ratoliIDeixar()
    {
        ctl().estat().DataCalendari = m_dilluns.addDays(2);
        m_page->VistaSetmana->click();
        QWidget *vp = m_page->AgendaGrid->viewport();
        QVERIFY(ressaltades().isEmpty());
        QTest::mousePress(vp, Qt::LeftButton, Qt::NoModifier, centre(17, 3)); // Anna's 08:00 on Wednesday
        QTest::mouseRelease(vp, Qt::LeftButton, Qt::NoModifier, centre(17, 3));
        QCOMPARE(ctl().FeinaSeleccionada.llocs_nom, model().text(17, 3));
        QCOMPARE(ressaltades(), (QList<QPoint>{{3, 17}, {3, 18}}));
        m_page->VistaMes->click();
        QCOMPARE(ressaltades().size(), 1);
        QCOMPARE(model().diaCella(ressaltades()[0].y(), ressaltades()[0].x()), m_dilluns.addDays(2));
        m_page->VistaSetmana->click();

        QList<int> obertes;
        ctl().obreEditor = [&](Feina &f) { obertes << f.feines_id; };
        const int seleccionada = ctl().FeinaSeleccionada.feines_id;
        QTest::mouseDClick(vp, Qt::LeftButton, Qt::NoModifier, centre(17, 3));
        QCOMPARE(obertes, QList<int>{seleccionada});

        const qint64 abans = feines();
        deixa(41, 5, "LMuseu"); // Friday 20:00
        QCOMPARE(feines(), abans + 1);
        QCOMPARE(m_page->AgendaGrid->model()->index(40, 4).data().toString(), QString("Museu"));
        QVERIFY(m_sessio->RefrescarFacturacio);
        QCOMPARE(m_page->AgendaGrid->celaDesti(), QPoint(-1, -1));

        m_page->AgendaGrid->setFocus();
        QTest::mouseClick(vp, Qt::LeftButton, Qt::NoModifier, centre(41, 5));
        m_ui->crides.clear();
        QTest::keyClick(m_page->AgendaGrid, Qt::Key_Space);
        QCOMPARE(m_ui->crides.size(), 1);
        QCOMPARE(m_ui->crides.first().text, QString("Cal assignar recurs si la feina està feta"));

        QAbstractButton *cantonada = m_page->AgendaGrid->findChild<QAbstractButton *>();
        QTest::mouseClick(cantonada, Qt::LeftButton);
        QTest::mouseDClick(cantonada, Qt::LeftButton);
        QCOMPARE(ctl().estat().vista, VistaAgenda::Mes);
        QVERIFY(m_page->VistaMes->isChecked());
    }

    // The calendar drives the period; the side lists ask for their pages; the print button
    // follows the last pressed resource until the next rebuild.
    void calendariILlistes()
    {
        const QDate dema = QDate::currentDate().addMonths(2);
        m_page->CalendariML->calendari()->setSelectedDate(dema);
        QCOMPARE(ctl().estat().DiaActual, dema);
        QVERIFY(m_page->CalendariML->textMes().contains(QString::number(dema.year())));

        QSignalSpy recursos(m_page.get(), &AgendaPage::obreRecurs);
        QSignalSpy llocs(m_page.get(), &AgendaPage::obreLloc);
        QSignalSpy imprimir(m_page.get(), &AgendaPage::imprimeixFeines);
        LlistaAgendaWidget *r = m_page->RecursosGrid;
        QVERIFY(!m_page->ImprimirFeines->isEnabled());
        const QPoint p = r->visualRect(r->model()->index(0, 0)).center();
        QTest::mouseClick(r->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QTest::mouseDClick(r->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QCOMPARE(recursos.first().first().toString(), r->nom(0));
        LlistaAgendaWidget *l = m_page->LlocsGrid;
        QTest::mouseDClick(l->viewport(), Qt::LeftButton, Qt::NoModifier, l->visualRect(l->model()->index(2, 0)).center());
        QCOMPARE(llocs.first().first().toString(), l->nom(2));
        QTest::keyClick(l, Qt::Key_M);
        QVERIFY(l->nom(l->currentRow()).startsWith('M'));
        m_page->ImprimirFeines->click();
        QCOMPARE(imprimir.first().first().toString(), r->nom(0));
        QVERIFY(!m_page->ImprimirFeines->isEnabled());
    }
};

QTEST_MAIN(TestAgendaPage)
#include "tst_agenda_page.moc"
