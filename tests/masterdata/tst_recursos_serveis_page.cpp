// The resources and services tab driven offscreen as a user drives it: a group built by ticking
// its members, a colour chosen, a service added, the jump from the agenda, and the signals that
// tell the other pages to refill.
#include "masterdata/recursos_serveis_page.h"
#include "mestres_proves.h"
#include "support/formulari_proves.h"

#include <QCheckBox>
#include <QColor>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

using namespace dades_prova;
using namespace formulari;

class TestRecursosServeisPage : public QObject {
    Q_OBJECT

private slots:
    void grupAmbColorIMembres()
    {
        EntornMestres e;
        recurs(e.db(), QStringLiteral("Marta"), 0x00FFFF);
        recurs(e.db(), QStringLiteral("Oriol"), 0xFF0000);
        servei(e.db(), QStringLiteral("Neteja"), 60, false, 6.25, QStringLiteral("Hores"));
        RecursosServeisPage p(*e.sessio, e.io);
        QSignalSpy canviats(&p, &RecursosServeisPage::recursosCanviats);
        QSignalSpy serveisCanviats(&p, &RecursosServeisPage::serveisCanviats);
        QColor triat(0x20, 0x80, 0x40);
        p.setTriaColor([&triat](const QColor &) { return std::optional<QColor>(triat); });
        p.resize(1200, 560);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));

        escriu(p, "NomRecurs", QStringLiteral(" Equip "));
        marca(p, "chkGrupRecurs");
        QListWidget *membres = fill<QListWidget>(p, "ComponentsLlista");
        QVERIFY(membres->isEnabled());

        prem(p, "ColorRecurs");

        // Space from the keyboard marks a member.
        membres->setFocus();
        membres->setCurrentRow(1);
        QTest::keyClick(membres, Qt::Key_Space);
        QCOMPARE(membres->item(1)->text(), QStringLiteral("-> Oriol"));

        prem(p, "AfegirRecurs");
        QCOMPARE(e.text("SELECT recursos_color || '/' || recursos_component_nom FROM Recursos JOIN Recursos_Components"
                        " USING (recursos_nom) WHERE recursos_nom = 'Equip' AND recursos_grup = 1"), QString::number(0x408020) + "/Oriol");
        QCOMPARE(canviats.count(), 1);
        QCOMPARE(fill<QListWidget>(p, "RecursosLlista")->count(), 3);

        // The jump from the agenda loads the group with its member marked.
        QSignalSpy mostra(&p, &RecursosServeisPage::mostraPagina);
        QVERIFY(p.obreRecurs(QStringLiteral("equip")));
        QCOMPARE(fill<QLineEdit>(p, "NomRecurs")->text(), QStringLiteral("Equip"));
        QVERIFY(fill<QCheckBox>(p, "chkGrupRecurs")->isChecked() && membres->item(1)->text() == QStringLiteral("-> Oriol"));
        QCOMPARE(mostra.count(), 1);

        // A service added from its form; one chosen in the list fills the form.
        escriu(p, "NomServei", QStringLiteral("Vidres"));
        escriu(p, "UnitatServei", QStringLiteral("Hores"));
        escriu(p, "PreuUnServei", QStringLiteral("9,5"));
        marca(p, "ComuRecursosServei");
        prem(p, "AfegirServei");
        QCOMPARE(e.text("SELECT serveis_preu_un || '/' || serveis_comu_per_recursos FROM Serveis WHERE serveis_nom = 'Vidres'"),
                 QStringLiteral("9.5/1"));
        QCOMPARE(serveisCanviats.count(), 1);
        QListWidget *llista = fill<QListWidget>(p, "ServeisLlista");
        llista->setFocus();
        llista->setCurrentRow(0);
        QCOMPARE(fill<QLineEdit>(p, "NomServei")->text() + '|' + fill<QLineEdit>(p, "PreuUnServei")->text(), QString("Neteja|6,25"));
    }

    // A list that only takes the focus loads nothing: a name typed then would rename its first
    // record.
    void llistaAmbFocusNoCarrega()
    {
        EntornMestres e;
        recurs(e.db(), "Marta", 0x00FFFF, true);
        RecursosServeisPage r(*e.sessio, e.io);
        r.show();
        QVERIFY(QTest::qWaitForWindowActive(&r));
        fill<QListWidget>(r, "RecursosLlista")->setFocus(Qt::TabFocusReason);
        escriu(r, "NomRecurs", "Pere");
        prem(r, "ModificarRecurs");
        QCOMPARE(files(e.db(), "SELECT recursos_nom FROM Recursos"), QStringList{"Marta"});
    }
};

QTEST_MAIN(TestRecursosServeisPage)
#include "tst_recursos_serveis_page.moc"
