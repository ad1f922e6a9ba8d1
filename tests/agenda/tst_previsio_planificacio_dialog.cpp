// The planning preview window: one row per job with the place written once at the head of its
// jobs, a refused job with its reason, a moved one with its closed day, the counts; Enter cancels.
#include "agenda/previsio_planificacio_dialog.h"
#include "jobs/planificacio.h"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

namespace {

FeinaPlanificada feina(const char *lloc, int dia, FeinaPlanificada::Resultat r, const char *recurs = "", const char *missatge = "",
                       QList<QDate> festius = {})
{
    FeinaPlanificada f;
    f.llocs_nom = QString::fromUtf8(lloc);
    f.feines_data = QDate(2026, 6, dia);
    f.resultat = r;
    f.recursos_nom = QString::fromUtf8(recurs);
    f.missatge = QString::fromUtf8(missatge);
    f.festius = std::move(festius);
    return f;
}

} // namespace

class TestPrevisioPlanificacioDialog : public QObject {
    Q_OBJECT

private slots:
    void showsThePreview()
    {
        using R = FeinaPlanificada::Resultat;
        PrevisioPlanificacio p;
        p.desde = QDate(2026, 6, 4);
        p.fins = QDate(2026, 6, 9);
        p.feines = {feina("Bar", 4, R::Ok, "Anna"), feina("Bar", 8, R::Ok, "Anna", "", {QDate(2026, 6, 5)}), feina("Forn", 4, R::SenseRecurs),
                    feina("Tard", 4, R::Refusada, "", "Hora final superada")};
        PrevisioPlanificacioDialog d(p);
        QTableWidget *t = d.taula();
        QStringList files;
        for (int r = 0; r < t->rowCount(); ++r)
            files << t->item(r, 0)->text() + "|" + t->item(r, 3)->text() + "|" + t->item(r, 5)->text();
        QVERIFY(files.size() == 4 && files.at(1).startsWith("|Anna|") && files.at(1).contains("05/06/2026"));
        QCOMPARE(files.mid(2), (QStringList{"Forn|<no assignada>|", "Tard||Hora final superada"}));
        QCOMPARE(d.comptes()->text(), QStringLiteral("4 feines: 2 amb recurs, 1 sense recurs, 1 refusades."));
        QVERIFY(d.findChild<QPushButton *>(QStringLiteral("CancelButton"))->isDefault());
        QTest::mouseClick(d.findChild<QPushButton *>(QStringLiteral("OKButton")), Qt::LeftButton);
        QCOMPARE(d.result(), int(QDialog::Accepted));
    }
};

QTEST_MAIN(TestPrevisioPlanificacioDialog)
#include "tst_previsio_planificacio_dialog.moc"
