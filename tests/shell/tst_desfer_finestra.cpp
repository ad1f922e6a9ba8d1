// The Edit menu of the main window: its captions name the change they take back, Ctrl+Z,
// Ctrl+Shift+Z and Ctrl+Y reach the stack and the agenda shows the result at once, a refusal is
// shown and changes nothing, and the history window lists the changes and the cuts.

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
        QCOMPARE(w.accioRefer()->text(), QString("Refés: afegir 'Exemple oficina' al 12/03"));
        QTest::keyClick(&w, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(feines(), 1);
        QVERIFY(!ctl.model().text(19, 1).isEmpty());
        QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(ui.crides.isEmpty() && feines() == 1);

        // changed by someone else meanwhile: told, nothing undone, still offered
        db.exec("UPDATE Feines SET feines_observacions = 'des de la línia d''ordres'");
        QTest::keyClick(&w, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides.first().titol, QString("AVÍS"));
        QVERIFY(ui.crides.first().text.contains("'Exemple oficina'"));
        QVERIFY(w.accioDesfer()->isEnabled() && feines() == 1);

        sessio->Desfer.neteja("planificació de feines");
        w.obreHistorial();
        QListWidget *llista = w.historial()->Historial;
        QCOMPARE(llista->count(), 2);
        QCOMPARE(llista->item(0)->text(), QString("afegir 'Exemple oficina' al 12/03"));
        QVERIFY(llista->item(1)->text().contains("planificació de feines"));
        QCOMPARE(w.accioDesfer()->text(), QString("Desfés"));
    }
};

QTEST_MAIN(TestDesferFinestra)
#include "tst_desfer_finestra.moc"
