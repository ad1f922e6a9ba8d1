// A closed day on the agenda: in the week view its header in the Sunday colour with what closes
// it on hovering, in the month view its day cell with the same tooltip; the working day beside it
// stays plain. 25 November 2026 is a Wednesday.
#include "agenda/agenda_model.h"
#include "agenda/agenda_model_taula.h"
#include "jobs/festius.h"
#include "support/entorn_proves.h"

#include <QtTest>

class TestAgendaFestius : public QObject {
    Q_OBJECT

private slots:
    void closedDayHeader()
    {
        BaseProva b;
        QCOMPARE(Festius(b.db).Afegeix_Festiu(QDate(2026, 11, 25), QStringLiteral("Santa Caterina")), QString());
        ModelAgenda m(b.db, b.cfg);
        m.Construeix_Agenda(EstatAgenda(VistaAgenda::Setmana, QDate(2026, 11, 25), 2));
        ModelTaulaAgenda taula(m);
        QCOMPARE(m.cella(0, 3).fons, b.cfg.ColorDiumenge);
        QVERIFY(taula.headerData(2, Qt::Horizontal, Qt::ToolTipRole).toString().contains(QStringLiteral("Santa Caterina")));
        QCOMPARE(m.cella(0, 2).fons, SenseColor);

        m.Construeix_Agenda(EstatAgenda(VistaAgenda::Mes, QDate(2026, 11, 25), 2));
        QCOMPARE(m.diaCella(5, 3), QDate(2026, 11, 25));
        ModelTaulaAgenda taulaMes(m);
        QVERIFY(taulaMes.index(4, 2).data(Qt::ToolTipRole).toString().contains(QStringLiteral("Santa Caterina")));
        QVERIFY(m.cella(5, 2).indicacio.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestAgendaFestius)
#include "tst_agenda_festius.moc"
