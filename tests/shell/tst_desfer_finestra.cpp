// The Edit menu of the main window: its caption names the change it takes back, Ctrl+Z and
// Ctrl+Y reach the stack and the agenda shows the result at once, and the history window lists
// the changes and the cuts.

#include "agenda/agenda_page.h"
#include "shell/frm_main.h"
#include "shell/historial_desfer_window.h"
#include "shell/pagines_principals.h"
#include "support/entorn_proves.h"

#include <QAction>
#include <QListWidget>
#include <QtTest>

class TestDesferFinestra : public QObject {
    Q_OBJECT

private slots:
    void menuEdita()
    {
        DirectoriProva dir;
        dir.posaParametre("PrimeraExecucio", "0");
        dir.posaParametre("UltimDiaGen", "31/12/2009", "Estat");
        auto sessio = dir.obreSessio();
        Db &db = sessio->db();
        dades_prova::lloc(db, "Exemple oficina", 60);
        InteraccioGuio ui;
        frmMain w(*sessio, ui);
        w.carrega();
        creaPagines(w);
        w.show();
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        ControladorAgenda &ctl = qobject_cast<AgendaPage *>(w.pagina(frmMain::Agenda))->controlador();
        ctl.estat() = EstatAgenda(VistaAgenda::Dia, QDate(2009, 3, 12), sessio->cfg().PrimerDiaSetmana);
        ctl.Construeix_Agenda();
        ctl.deixa(19, 1, "LExemple oficina");
        const auto feines = [&] { return dades_prova::valor(db, "SELECT COUNT(*) FROM Feines"); };
        QCOMPARE(feines(), 1);
        QCOMPARE(w.accioDesfer()->text(), QString("Desfés: afegir 'Exemple oficina' al 12/03"));

        QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(feines(), 0);
        QCOMPARE(ctl.model().text(19, 1), QString()); // the agenda was rebuilt at once
        QTest::keyClick(&w, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(feines(), 1);
        QVERIFY(!ctl.model().text(19, 1).isEmpty() && ui.crides.isEmpty());

        sessio->Desfer.neteja("planificació de feines");
        w.obreHistorial();
        QListWidget *llista = w.historial()->Historial;
        QCOMPARE(llista->count(), 2);
        QVERIFY(llista->item(1)->text().contains("planificació de feines") && !w.accioDesfer()->isEnabled());
    }
};

QTEST_MAIN(TestDesferFinestra)
#include "tst_desfer_finestra.moc"
