// The agenda page on sample-like data, offscreen: what the table draws (merged blocks, colours,
// header texts, the overtime row) is what the model holds, and real mouse, keyboard and drop
// events reach the controller.

#include "agenda/agenda_grid_widget.h"
#include "agenda/agenda_llista_widget.h"
#include "agenda/agenda_llistes.h"
#include "agenda/agenda_model_taula.h"
#include "agenda/agenda_page.h"
#include "agenda/calendari_widget.h"
#include "jobs/dades_mostra.h"
#include "jobs/motor_feines.h"
#include "support/entorn_proves.h"

#include <QAbstractButton>
#include <QCalendarWidget>
#include <QDir>
#include <QHeaderView>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

namespace {

// Two workers and their team at three places, Monday to Saturday, stored through the job engine;
// Biel has overtime on Wednesday.
void afegeixSetmanaFeinera(Sessio &s, const QDate &dilluns)
{
    Db &db = s.db();
    dades_prova::recurs(db, "Anna", 0x00F5D7A8);
    dades_prova::recurs(db, "Biel", 0x00B5E6B8);
    dades_prova::grup(db, "Equip Nord", 0x00E0B0D8, {"Anna", "Biel"});
    const QStringList llocs = {"Biblioteca", "Escola Pia", "Museu"};
    for (const QString &l : llocs)
        dades_prova::lloc(db, l, 60);
    MotorFeines motor(db, s.cfg());
    for (int d = 0; d < 6; ++d) {
        for (const auto &[inici, recurs] : {std::pair{"08:00", "Anna"}, {"09:30", "Biel"}, {"11:00", "Equip Nord"}}) {
            Feina f;
            f.llocs_nom = llocs[d % 3];
            f.feines_data = dilluns.addDays(d);
            f.feines_hora_inici = QString::fromLatin1(inici);
            f.recursos_nom = QString::fromLatin1(recurs);
            motor.Grava_Feina(f, false);
        }
    }
    db.query("INSERT INTO Hores_Fetes (recursos_nom, hores_data, hores_quantitat) VALUES ('Biel', ?, 1.25)")
        .bind(dilluns.addDays(2)).exec();
}

} // namespace

class TestAgendaPage : public QObject {
    Q_OBJECT

    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    std::unique_ptr<InteraccioGuio> m_ui;
    std::unique_ptr<AgendaPage> m_page;
    QDate m_dilluns;

    ControladorAgenda &ctl() { return m_page->controlador(); }
    const ModelAgenda &model() { return m_page->controlador().model(); }

    // The table over the model's item model (whose roles are the model's test): the blocks
    // merged as the model says, the headers, and the overtime row under the day view.
    void comprovaDibuix()
    {
        AgendaGridWidget *g = m_page->AgendaGrid;
        const ModelAgenda &m = model();
        QCOMPARE(g->model()->rowCount(), m.files() - 1);
        QCOMPARE(g->model()->columnCount(), m.columnes() - 1);
        int blocs = 0;
        for (int c = 1; c < m.columnes(); ++c) {
            QCOMPARE(g->model()->headerData(c - 1, Qt::Horizontal).toString(), m.text(0, c));
            for (int r = 1; r < m.files(); ++r) {
                const CellaAgenda &cella = m.cella(r, c);
                if (cella.filesFusionades >= 1) {
                    QCOMPARE(g->rowSpan(r - 1, c - 1), m.vista() == VistaAgenda::Mes ? 1 : cella.filesFusionades);
                    blocs += cella.filesFusionades > 1 ? 1 : 0;
                }
                QCOMPARE(g->columnSpan(r - 1, c - 1), 1);
            }
        }
        if (m.vista() != VistaAgenda::Mes)
            QVERIFY(blocs > 0);
        // the header row and column stay in place: they are the table's own headers
        QVERIFY(g->horizontalHeader()->isVisible());
        QVERIFY(g->verticalHeader()->isVisible());

        QCOMPARE(m_page->HoresGrid->isVisible(), m.vista() == VistaAgenda::Dia);
        if (m.vista() == VistaAgenda::Dia) {
            QCOMPARE(m_page->HoresGrid->columnCount(), m.columnes() - 1);
            for (int c = 1; c < m.columnes(); ++c) {
                QCOMPARE(m_page->HoresGrid->item(0, c - 1)->text(), m.textHores(c));
                QCOMPARE(m_page->HoresGrid->columnWidth(c - 1), g->columnWidth(c - 1));
            }
        }
    }

    QPoint centre(int fila, int col) { return m_page->AgendaGrid->rectCella(fila, col).center(); }

    void deixa(int fila, int col, const QString &caption)
    {
        auto *mime = new QMimeData;
        mime->setData(arrossegament::TipusMime, caption.toUtf8());
        QWidget *vp = m_page->AgendaGrid->viewport();
        QDragEnterEvent entra(centre(fila, col), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &entra);
        QDragMoveEvent mou(centre(fila, col), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &mou);
        QCOMPARE(m_page->AgendaGrid->celaDesti(), QPoint(col, fila));
        QDropEvent deixa(QPointF(centre(fila, col)), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &deixa);
        QCoreApplication::processEvents();
        delete mime;
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_sessio = m_dir->obreSessio();
        afegeixDadesMostra(*m_sessio);
        m_dilluns = EstatAgenda::iniciSetmana(QDate::currentDate(), m_sessio->cfg().PrimerDiaSetmana);
        afegeixSetmanaFeinera(*m_sessio, m_dilluns);
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

    // The three views drawn as their models say, with the lists beside them.
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
        QCOMPARE(model().text(0, 0).section(',', 1).trimmed(), QString::number(m_dilluns.addDays(2).day()));
        comprovaDibuix();
        QCOMPARE(model().columnes(), 8);
        int biel = 1;
        while (biel < model().columnes() && model().text(0, biel) != "Biel")
            ++biel;
        QCOMPARE(m_page->HoresGrid->item(0, biel - 1)->text(), QString("1,25")); // Biel's stored overtime

        Db &db = m_sessio->db();
        // the lists: every place, every resource in its colour, groups in bold
        QCOMPARE(m_page->LlocsGrid->rowCount(), int(dades_prova::valor(db, "SELECT COUNT(*) FROM Llocs")));
        const QList<EntradaRecurs> recursos = llistaRecursosAgenda(db);
        QCOMPARE(m_page->RecursosGrid->rowCount(), int(recursos.size()));
        for (int i = 0; i < recursos.size(); ++i) {
            QTableWidgetItem *item = m_page->RecursosGrid->item(i, 0);
            QCOMPARE(item->text(), recursos[i].nom);
            QCOMPARE(item->background().color(), ModelTaulaAgenda::colorQt(recursos[i].color));
            QCOMPARE(item->font().bold(), recursos[i].grup);
        }
        QCOMPARE(m_page->LlocsGrid->toolTip(), QString("Fés DblClick o arrossega"));
    }

    // A press on a job selects it, a drag-and-drop of a place creates a job where it lands, a
    // double click opens the job, the corner goes back to the month.
    void ratoliIDeixar()
    {
        ctl().estat().DataCalendari = m_dilluns.addDays(2);
        m_page->VistaSetmana->click();
        QWidget *vp = m_page->AgendaGrid->viewport();
        const int colDimecres = 3;
        QVERIFY(!model().text(17, colDimecres).isEmpty()); // Anna's 08:00 job
        QTest::mousePress(vp, Qt::LeftButton, Qt::NoModifier, centre(17, colDimecres));
        QVERIFY(ctl().FeinaSeleccionada.feines_id > 0);
        QCOMPARE(ctl().FeinaSeleccionada.llocs_nom, model().text(17, colDimecres));
        QTest::mouseRelease(vp, Qt::LeftButton, Qt::NoModifier, centre(17, colDimecres));

        QList<int> obertes;
        ctl().obreEditor = [&](Feina &f) { obertes << f.feines_id; };
        const int seleccionada = ctl().FeinaSeleccionada.feines_id;
        QTest::mouseDClick(vp, Qt::LeftButton, Qt::NoModifier, centre(17, colDimecres));
        QCOMPARE(obertes, QList<int>{seleccionada});

        const qint64 abans = dades_prova::valor(m_sessio->db(), "SELECT COUNT(*) FROM Feines");
        deixa(41, 5, "LMuseu"); // Friday 20:00
        QCOMPARE(dades_prova::valor(m_sessio->db(), "SELECT COUNT(*) FROM Feines"), abans + 1);
        QCOMPARE(model().text(41, 5), QString("Museu"));
        QCOMPARE(m_page->AgendaGrid->model()->index(40, 4).data().toString(), QString("Museu"));
        QVERIFY(m_sessio->RefrescarFacturacio);
        QCOMPARE(m_page->AgendaGrid->celaDesti(), QPoint(-1, -1));

        // Space on the new job through the keyboard: without a resource it cannot be done
        m_page->AgendaGrid->setFocus();
        QTest::mousePress(vp, Qt::LeftButton, Qt::NoModifier, centre(41, 5));
        QTest::mouseRelease(vp, Qt::LeftButton, Qt::NoModifier, centre(41, 5));
        m_ui->crides.clear();
        QTest::keyClick(m_page->AgendaGrid, Qt::Key_Space);
        QCOMPARE(m_ui->crides.size(), 1);
        QCOMPARE(m_ui->crides.first().text, QString("Cal assignar recurs si la feina està feta"));

        QAbstractButton *cantonada = m_page->AgendaGrid->findChild<QAbstractButton *>();
        QVERIFY(cantonada);
        // a real double click: press and release, then the second press as a double click
        QTest::mouseClick(cantonada, Qt::LeftButton);
        QTest::mouseDClick(cantonada, Qt::LeftButton);
        QCOMPARE(ctl().estat().vista, VistaAgenda::Mes);
        QVERIFY(m_page->VistaMes->isChecked());
        comprovaDibuix();
    }

    // The calendar drives the period; the side lists start drags and ask for their pages; the
    // print button follows the last pressed resource until the next rebuild.
    void calendariILlistes()
    {
        const QDate dema = QDate::currentDate().addMonths(2);
        m_page->CalendariML->calendari()->setSelectedDate(dema);
        QCOMPARE(ctl().estat().DiaActual, dema);
        QCOMPARE(ctl().estat().IniciMes, EstatAgenda::iniciMes(dema, m_sessio->cfg().PrimerDiaSetmana));
        QVERIFY(m_page->CalendariML->textMes().contains(QString::number(dema.year())));

        QSignalSpy recursos(m_page.get(), &AgendaPage::obreRecurs);
        QSignalSpy llocs(m_page.get(), &AgendaPage::obreLloc);
        LlistaAgendaWidget *r = m_page->RecursosGrid;
        QVERIFY(!m_page->ImprimirFeines->isEnabled());
        const QPoint p = r->visualRect(r->model()->index(0, 0)).center();
        QTest::mousePress(r->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QTest::mouseRelease(r->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QVERIFY(m_page->ImprimirFeines->isEnabled());
        QCOMPARE(ctl().recursImprimir(), r->nom(0));
        QTest::mouseDClick(r->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QCOMPARE(recursos.size(), 1);
        QCOMPARE(recursos.first().first().toString(), r->nom(0));
        LlistaAgendaWidget *l = m_page->LlocsGrid;
        QTest::mouseDClick(l->viewport(), Qt::LeftButton, Qt::NoModifier, l->visualRect(l->model()->index(2, 0)).center());
        QCOMPARE(llocs.size(), 1);
        QCOMPARE(llocs.first().first().toString(), l->nom(2));
        QTest::keyClick(l, Qt::Key_M);
        QVERIFY(l->nom(l->currentRow()).startsWith('M'));

        QSignalSpy imprimir(m_page.get(), &AgendaPage::imprimeixFeines);
        m_page->ImprimirFeines->click();
        QCOMPARE(imprimir.size(), 1);
        QVERIFY(!m_page->ImprimirFeines->isEnabled());
        QTest::mousePress(r->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QVERIFY(m_page->ImprimirFeines->isEnabled());
        m_page->reconstrueix();
        QVERIFY(!m_page->ImprimirFeines->isEnabled());
    }
};

QTEST_MAIN(TestAgendaPage)
#include "tst_agenda_page.moc"
