// Overtime typed in the day view's in-place editor belongs to the worker and day of the cell it was
// typed in, whatever rebuilds the grid before the editor is left.
#include "agenda/agenda_page.h"
#include "agenda/hores_extres.h"
#include "support/entorn_proves.h"

#include <QLineEdit>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

class TestHoresReconstruccio : public QObject {
    Q_OBJECT

private slots:
    void periodeOVistaAmbEditorObert_data()
    {
        // The shortcuts click these buttons.
        QTest::addColumn<QString>("boto");
        QTest::newRow("next period") << "PeriodeSeguent";
        QTest::newRow("previous period") << "PeriodeAnterior";
        QTest::newRow("week view") << "VistaSetmana";
        QTest::newRow("month view") << "VistaMes";
    }

    void periodeOVistaAmbEditorObert()
    {
        QFETCH(QString, boto);
        const QDate dia(2026, 11, 25);
        DirectoriProva dir;
        auto sessio = dir.obreSessio();
        dades_prova::recurs(sessio->db(), QStringLiteral("Marta"), 0x0000FF);
        dades_prova::recurs(sessio->db(), QStringLiteral("Pere"), 0x00FF00);
        dades_prova::lloc(sessio->db(), QStringLiteral("Oficina"), 60);
        // Marta works on the day, Pere on the days around it: his column takes the place of hers.
        for (int d : {-1, 0, 1})
            dades_prova::feina(sessio->db(), QStringLiteral("Oficina"), dia.addDays(d), QStringLiteral("08:00"),
                               QStringLiteral("12:00"), d ? QStringLiteral("Pere") : QStringLiteral("Marta"));
        InteraccioGuio ui;
        AgendaPage page(*sessio, ui);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        page.controlador().estat().DataCalendari = dia;
        page.VistaDia->click();
        QTableWidget *hores = page.HoresGrid;
        const int marta = columnaRecurs(page.controlador().model(), QStringLiteral("Marta"));
        QTest::mouseClick(hores->viewport(), Qt::LeftButton, {}, hores->visualRect(hores->model()->index(0, marta - 1)).center());
        auto *text1 = hores->findChild<QLineEdit *>(QStringLiteral("Text1"));
        QTest::keyClicks(text1, QStringLiteral("1,5"));
        QTest::mouseClick(page.findChild<QToolButton *>(boto), Qt::LeftButton);
        QVERIFY(!text1->isVisible() && ui.crides.isEmpty());
        QCOMPARE(dades_prova::files(sessio->db(), QStringLiteral("SELECT * FROM Hores_Fetes")), QStringList{QStringLiteral("Marta|2026-11-25|1.5")});
    }
};

QTEST_MAIN(TestHoresReconstruccio)
#include "tst_hores_reconstruccio_page.moc"
