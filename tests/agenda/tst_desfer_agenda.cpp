// The agenda's changes reach the undo stack: each mouse and key action of a working sequence is
// one command named after what it did, undoing them all gives back the database as it was and
// redoing them all the database as it was left.

#include "agenda/agenda_controller.h"
#include "agenda/hores_extres_editor.h"
#include "core/pila_desfer.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

const QDate kDimecres(2009, 3, 11);

QStringList estat(Db &db)
{
    return dades_prova::files(db, "SELECT 'F', * FROM Feines ORDER BY feines_id")
        + dades_prova::files(db, "SELECT 'D', * FROM Feines_Detall ORDER BY feines_id, rowid")
        + dades_prova::files(db, "SELECT 'H', * FROM Hores_Fetes ORDER BY recursos_nom, hores_data");
}

} // namespace

class TestDesferAgenda : public QObject {
    Q_OBJECT

private slots:
    // One command per kind of change, named after it; undoing them all gives back the database
    // as it was, redoing them all as it was left; a new change drops what was undone.
    void cadaAccioEsUnaOrdre()
    {
        BaseProva b;
        InteraccioGuio ui;
        PilaDesfer pila;
        dades_prova::recurs(b.db, "Anna", 0x0000FF);
        dades_prova::recurs(b.db, "Biel", 0x00FF00);
        dades_prova::lloc(b.db, "Escola", 60);
        dades_prova::feina(b.db, "Escola", kDimecres, "16:00", "17:00", "Anna"); // Anna's column first,
        dades_prova::feina(b.db, "Escola", kDimecres, "18:00", "19:00", "Biel"); // then Biel's
        ControladorAgenda ctl(b.db, b.cfg, ui, kDimecres);
        ctl.setPilaDesfer(&pila);
        ctl.estat() = EstatAgenda(VistaAgenda::Dia, kDimecres, b.cfg.PrimerDiaSetmana);
        ctl.Construeix_Agenda();
        const QStringList inicial = estat(b.db);

        ctl.deixa(19, 1, "LEscola"); // 09:00
        ctl.deixa(23, 1, ctl.premGraella(19, 1)); // dragged to 11:00
        ctl.premGraella(1, 1);
        ctl.deixa(23, 1, "RBiel");
        ctl.setCellaActual(23, 2);
        ctl.tecla(ControladorAgenda::TeclaEspai);
        ctl.tecla(ControladorAgenda::TeclaEspai);
        ctl.obreEditor = [&](Feina &f) {
            f.feines_observacions = "Timbre 2";
            ctl.motor().Modifica_Feina(f);
            f.missatge = "OK";
        };
        ctl.tecla(ControladorAgenda::TeclaIntro);
        EditorHores hores(b.db, b.cfg, ctl.model());
        hores.setPilaDesfer(&pila);
        QVERIFY(hores.obre(2, false, "2"));
        hores.confirma();
        ui.respostes << true;
        ctl.tecla(ControladorAgenda::TeclaSuprimir);
        QCOMPARE(ui.crides.size(), 1); // only the question: nothing was refused on the way

        QStringList textos;
        for (const PilaDesfer::Entrada &e : pila.historial())
            textos << e.text;
        QCOMPARE(textos, (QStringList{"afegir 'Escola' al 11/03", "moure 'Escola' al 11/03 11:00", "assignar 'Escola' del 11/03 a Biel",
                                      "marcar feta 'Escola' del 11/03", "marcar no feta 'Escola' del 11/03", "modificar 'Escola' del 11/03",
                                      "hores extres de Biel el 11/03", "eliminar 'Escola' del 11/03"}));
        const QStringList final = estat(b.db);
        while (pila.potDesfer())
            QCOMPARE(pila.desfes(), QString());
        QCOMPARE(estat(b.db), inicial);
        while (pila.potRefer())
            QCOMPARE(pila.refes(), QString());
        QCOMPARE(estat(b.db), final);
        QCOMPARE(pila.desfes(), QString());
        ctl.deixa(31, 1, "LEscola");
        QVERIFY(!pila.potRefer());
        QCOMPARE(pila.mida(), 8);
    }
};

QTEST_GUILESS_MAIN(TestDesferAgenda)
#include "tst_desfer_agenda.moc"
