// A place dropped on the agenda while the resource it would take is busy is stored unassigned,
// and the status bar is told so; a drop that gets its resource, or wanted none, says nothing.
#include "agenda/agenda_controller.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

const QDate kDimecres(2009, 3, 11);

int columna(const ModelAgenda &m, const QString &recurs, const QDate &dia)
{
    for (int c = 1; c < m.columnes(); ++c) {
        if (m.diaCella(1, c) == dia && (m.vista() != VistaAgenda::Dia || m.recursColumna(c) == recurs))
            return c;
    }
    return -1;
}

} // namespace

class TestAgendaAvisOcupat : public QObject {
    Q_OBJECT

private slots:
    void busyResourceIsTold_data()
    {
        QTest::addColumn<bool>("vistaDia");
        QTest::addColumn<QString>("lloc");
        QTest::addColumn<int>("fila"); // slot row: 19 is 09:00, 25 is 12:00
        QTest::addColumn<QString>("recursGuardat");
        QTest::addColumn<bool>("avis");
        QTest::newRow("column's resource busy") << true << "Forn" << 19 << "" << true;
        QTest::newRow("column's resource free") << true << "Forn" << 25 << "Anna" << false;
        QTest::newRow("place's resource busy") << false << "Banc" << 19 << "" << true;
        QTest::newRow("place's resource free") << false << "Banc" << 25 << "Anna" << false;
        QTest::newRow("no resource wanted") << false << "Forn" << 19 << "" << false;
    }
    void busyResourceIsTold()
    {
        QFETCH(bool, vistaDia);
        QFETCH(QString, lloc);
        QFETCH(int, fila);
        QFETCH(QString, recursGuardat);
        QFETCH(bool, avis);
        BaseProva base;
        InteraccioGuio ui;
        Db &db = base.db;
        dades_prova::recurs(db, "Anna", 0x00F5D7A8);
        dades_prova::lloc(db, "Museu", 60, "Anna");
        dades_prova::lloc(db, "Banc", 60, "Anna");
        dades_prova::lloc(db, "Forn", 60);
        dades_prova::feina(db, "Museu", kDimecres, "09:00", "10:00", "Anna");
        ControladorAgenda ctl(db, base.cfg, ui, kDimecres);
        QStringList avisos;
        ctl.avisaEstat = [&avisos](const QString &t) { avisos << t; };
        ctl.estat() = EstatAgenda(vistaDia ? VistaAgenda::Dia : VistaAgenda::Setmana, kDimecres, base.cfg.PrimerDiaSetmana);
        ctl.Construeix_Agenda();
        const int col = columna(ctl.model(), "Anna", kDimecres);
        QVERIFY(col > 0);

        ctl.deixa(fila, col, QStringLiteral("L") + lloc);
        QVERIFY(ui.crides.isEmpty());
        QCOMPARE(dades_prova::files(db, "SELECT recursos_nom FROM Feines WHERE llocs_nom = ?", {lloc}),
                 QStringList{recursGuardat.isEmpty() ? QStringLiteral("NULL") : recursGuardat});
        QCOMPARE(avisos, avis ? QStringList{"Recurs ocupat: la feina queda sense assignar"} : QStringList{});
    }
};

QTEST_GUILESS_MAIN(TestAgendaAvisOcupat)
#include "tst_agenda_avis_ocupat.moc"
