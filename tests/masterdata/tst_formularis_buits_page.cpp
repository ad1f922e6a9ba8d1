// The master-data pages as a new user meets them: a list that merely takes the focus loads
// nothing (a name typed then would rename its first record), the lists are as wide as their
// names, the place's weekday can go back to "any day", and the rhythm fields explain themselves.
#include "masterdata/clients_page.h"
#include "masterdata/recursos_serveis_page.h"
#include "mestres_proves.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace dades_prova;

namespace {

template <typename T>
T *fill(QWidget &p, const char *nom)
{
    T *w = p.findChild<T *>(QString::fromLatin1(nom));
    if (!w)
        qFatal("no widget %s", nom);
    return w;
}

} // namespace

class TestFormularisBuitsPage : public QObject {
    Q_OBJECT

private slots:
    // Focus alone loads nothing, so "Modificar" after typing a name changes no record; picking
    // a row still loads it.
    void focusLoadsNoRecord()
    {
        EntornMestres e;
        recurs(e.db(), QStringLiteral("Marta"), 0x00FFFF, true);
        recurs(e.db(), QStringLiteral("Oriol"), 0xFF0000, true);
        RecursosServeisPage p(*e.sessio, e.io);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        auto *llista = fill<QListWidget>(p, "RecursosLlista");
        llista->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(llista->hasFocus());
        auto *nom = fill<QLineEdit>(p, "NomRecurs");
        QCOMPARE(nom->text(), QString());
        nom->setText(QStringLiteral("Pere"));
        QTest::mouseClick(fill<QPushButton>(p, "ModificarRecurs"), Qt::LeftButton);
        QCOMPARE(files(e.db(), QStringLiteral("SELECT recursos_nom FROM Recursos ORDER BY recursos_nom")),
                 (QStringList{"Marta", "Oriol"}));

        QTest::keyClick(llista, Qt::Key_Down);
        QCOMPARE(nom->text(), llista->selectedItems().value(0)->text());
    }

    // A client whose name is long is shown whole; the place's weekday list starts with an empty
    // entry that stores "any day"; the rhythm fields carry their explanation.
    void placeFormAndListWidths()
    {
        EntornMestres e;
        const QString llarg = QStringLiteral("Comunitat de Propietaris del Carrer Major 25");
        client(e.db(), llarg);
        lloc(e.db(), QStringLiteral("Escala A"), 60, QString(), llarg);
        e.db().query(QStringLiteral("UPDATE Llocs SET llocs_dia_setmana = 3")).exec();
        ClientsPage p(*e.sessio, e.io);
        p.resize(1366, 700);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        auto *clients = fill<QListWidget>(p, "ClientsLlista");
        QVERIFY(clients->viewport()->width() >= clients->fontMetrics().horizontalAdvance(llarg));

        clients->setCurrentRow(0);
        auto *llocs = fill<QListWidget>(p, "LlocsLlista");
        QCOMPARE(llocs->count(), 1);
        llocs->setCurrentRow(0);
        auto *dies = fill<QComboBox>(p, "DiesSetmanaCombo");
        QCOMPARE(dies->itemText(0), QString());
        QCOMPARE(dies->count(), 8);
        QCOMPARE(dies->currentIndex(), 3);
        dies->setCurrentIndex(0);
        QTest::mouseClick(fill<QPushButton>(p, "ModificarLloc"), Qt::LeftButton);
        QCOMPARE(valor(e.db(), QStringLiteral("SELECT llocs_dia_setmana FROM Llocs")), 0);

        for (const char *nom : {"PeriodicitatDiesLloc", "DiesSetmanaCombo", "PrimerMesLloc", "UltimMesLloc",
                                "DissabteLloc", "DiumengeLloc"})
            QVERIFY2(fill<QWidget>(p, nom)->toolTip().size() > 30, nom);
    }
};

QTEST_MAIN(TestFormularisBuitsPage)
#include "tst_formularis_buits_page.moc"
