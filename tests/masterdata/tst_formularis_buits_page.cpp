// The master-data pages as a new user meets them: a list that only takes the focus loads nothing
// (a name typed then would rename its first record); lists fit their names; the place's weekday
// goes back to "any day"; the rhythm fields explain themselves.
#include "masterdata/clients_page.h"
#include "masterdata/recursos_serveis_page.h"
#include "mestres_proves.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace dades_prova;

template <typename T> T *fill(QWidget &p, const char *nom) { return p.findChild<T *>(QString::fromLatin1(nom)); }

class TestFormularisBuitsPage : public QObject {
    Q_OBJECT
private slots:
    void formsStartEmptyAndPlacesReadWell()
    {
        EntornMestres e;
        recurs(e.db(), "Marta", 0x00FFFF, true);
        RecursosServeisPage r(*e.sessio, e.io);
        r.show();
        QVERIFY(QTest::qWaitForWindowActive(&r));
        fill<QListWidget>(r, "RecursosLlista")->setFocus(Qt::TabFocusReason);
        fill<QLineEdit>(r, "NomRecurs")->setText("Pere");
        QTest::mouseClick(fill<QPushButton>(r, "ModificarRecurs"), Qt::LeftButton);
        QCOMPARE(files(e.db(), "SELECT recursos_nom FROM Recursos"), QStringList{"Marta"});

        const QString llarg = "Comunitat de Propietaris del Carrer Major 25";
        client(e.db(), llarg);
        lloc(e.db(), "Escala A", 60, QString(), llarg);
        e.db().query("UPDATE Llocs SET llocs_dia_setmana = 3").exec();
        ClientsPage p(*e.sessio, e.io);
        p.resize(1366, 700);
        p.show();
        auto *clients = fill<QListWidget>(p, "ClientsLlista");
        QVERIFY(clients->viewport()->width() >= clients->fontMetrics().horizontalAdvance(llarg));
        clients->setCurrentRow(0);
        fill<QListWidget>(p, "LlocsLlista")->setCurrentRow(0);
        auto *dies = fill<QComboBox>(p, "DiesSetmanaCombo");
        QCOMPARE(dies->currentIndex(), 3);
        dies->setCurrentIndex(0); // the empty entry
        QTest::mouseClick(fill<QPushButton>(p, "ModificarLloc"), Qt::LeftButton);
        QCOMPARE(valor(e.db(), "SELECT llocs_dia_setmana FROM Llocs"), 0);
        for (const char *nom : {"PeriodicitatDiesLloc", "DiesSetmanaCombo", "PrimerMesLloc", "DissabteLloc", "DiumengeLloc"})
            QVERIFY2(fill<QWidget>(p, nom)->toolTip().size() > 30, nom);
    }
};

QTEST_MAIN(TestFormularisBuitsPage)
#include "tst_formularis_buits_page.moc"
