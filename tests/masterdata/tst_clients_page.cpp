// The clients tab driven as a user drives it, offscreen: typing into the fields, pressing the
// buttons and keys, and checking what reached the engine and what the page shows afterwards.
// The master-data rules themselves are the engine's tests.
#include "masterdata/clients_page.h"
#include "masterdata/llocs_widget.h"
#include "mestres_proves.h"
#include "support/formulari_proves.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>
#include <QtTest>

using namespace dades_prova;
using namespace formulari;

class TestClientsPage : public QObject {
    Q_OBJECT

private slots:
    void clientLlocServeisIXecs()
    {
        EntornMestres e;
        e.cfg().ServeiXecs = "Neteja";
        recurs(e.db(), "Marta", 65535, true);
        recurs(e.db(), "Oriol", 16711680, true);
        grup(e.db(), "Marta i Oriol", 65280, {"Marta", "Oriol"});
        servei(e.db(), "Neteja", 60, false, 6.25, "Hores");
        client(e.db(), "Altre");
        ClientsPage p(*e.sessio, e.io);
        QSignalSpy clientsCanviats(&p, &ClientsPage::clientsCanviats);
        QSignalSpy llocsCanviats(&p, &ClientsPage::llocsCanviats);
        p.resize(1280, 760);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        // A new client: registered today, chosen in the list.
        escriu(p, "NomClient", "  L'Estel ");
        prem(p, "AfegirClient");
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Clients WHERE clients_nom = ?", {"L'Estel"}), 1);
        QCOMPARE(fill<QListWidget>(p, "ClientsLlista")->currentItem()->text(), QString("L'Estel"));
        QCOMPARE(clientsCanviats.count(), 1);

        // Its first place, monthly, with the group as default resource and a fee.
        escriu(p, "NomLloc", "Oficina");
        escriu(p, "MinutsPrevistLloc", "60");
        escriu(p, "PeriodicitatDiesLloc", "7");
        QComboBox *recursos = fill<QComboBox>(p, "RecursosCombo");
        recursos->setCurrentIndex(recursos->findText("Marta i Oriol"));
        marca(p, "PrimerMesLloc");
        marca(p, "UltimMesLloc");
        QVERIFY(!fill<QCheckBox>(p, "PrimerMesLloc")->isChecked()); // the two are exclusive
        prem(p, "AfegirLloc");
        QCOMPARE(e.text("SELECT llocs_ultim_dia_mes || '/' || recursos_nom FROM Llocs"), QString("1/Marta i Oriol"));
        QCOMPARE(fill<QListWidget>(p, "LlocsLlista")->currentItem()->text(), QString("Oficina"));
        QCOMPARE(llocsCanviats.count(), 1);

        // A service line chosen from the keyboard: its unit and price are offered.
        QComboBox *serveis = fill<QComboBox>(p, "ServeisCombo");
        serveis->setFocus();
        QTest::keyClick(serveis, Qt::Key_Down);
        QCOMPARE(serveis->currentText(), QString("Neteja"));
        QCOMPARE(fill<QLineEdit>(p, "UnitatServeiLloc")->text() + '|' + fill<QLineEdit>(p, "PreuServeisLloc")->text(), QString("Hores|6,25"));
        escriu(p, "QuantitatServeisLloc", "3");
        e.io.respostes = {true}; // 3 hours shared by two: 90 minutes, not 60
        prem(p, "AfegirServeiLloc");
        QCOMPARE(e.missatges("pregunta").size(), 1);
        QCOMPARE(fill<QLineEdit>(p, "MinutsPrevistLloc")->text(), QString("90"));
        QCOMPARE(fill<QTreeWidget>(p, "ServeisLlocLlista")->topLevelItem(0)->text(1), QString("3"));

        // The jump from the agenda brings the place with its client.
        QSignalSpy mostra(&p, &ClientsPage::mostraPagina);
        QVERIFY(p.obreLloc("OFICINA"));
        QCOMPARE(fill<QLineEdit>(p, "NomClient")->text() + '|' + fill<QLineEdit>(p, "NomLloc")->text(), QString("L'Estel|Oficina"));
        QCOMPARE(mostra.count(), 1);

        // Entering a field selects its text.
        QLineEdit *nomLloc = fill<QLineEdit>(p, "NomLloc");
        nomLloc->setFocus();
        QTRY_COMPARE(nomLloc->selectedText(), QString("Oficina"));
    }

    // Renames reach the lists; a change of the place's rhythm (the closed-days box among it) is
    // announced and any other is not; the weekday goes back to "any day"; the voucher controls
    // show once there is a voucher service.
    void renomRitmeIDiaSetmana()
    {
        EntornMestres e;
        client(e.db(), "Comunitat");
        lloc(e.db(), "Casa", 30, QString(), "Comunitat");
        e.db().exec("UPDATE Llocs SET llocs_dia_setmana = 3");
        e.cfg().ServeiXecs.clear(); // no voucher control until there is a voucher service
        ClientsPage p(*e.sessio, e.io);
        p.resize(1366, 700);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        QVERIFY(fill<QGroupBox>(p, "GrupXecs")->isHidden() && fill<QCheckBox>(p, "XecsClient")->isHidden());
        fill<QListWidget>(p, "ClientsLlista")->setCurrentRow(0);
        fill<QListWidget>(p, "LlocsLlista")->setCurrentRow(0);
        QSignalSpy ritme(p.llocs(), &LlocsWidget::ritmeCanviat);
        escriu(p, "AdrecaLloc", "Carrer Major 1");
        prem(p, "ModificarLloc");
        fill<QCheckBox>(p, "FestiusLloc")->setChecked(true);
        prem(p, "ModificarLloc");
        QCOMPARE(ritme.count(), 1);
        QComboBox *dies = fill<QComboBox>(p, "DiesSetmanaCombo");
        QCOMPARE(dies->currentIndex(), 3);
        dies->setCurrentIndex(0); // the empty entry
        escriu(p, "NomLloc", "Casa nova");
        prem(p, "ModificarLloc");
        e.missatges();
        QCOMPARE(e.compte("SELECT llocs_dia_setmana FROM Llocs"), 0);
        QCOMPARE(fill<QListWidget>(p, "LlocsLlista")->currentItem()->text(), QString("Casa nova"));

        escriu(p, "NomClient", "Client Nou");
        prem(p, "ModificarClient");
        QCOMPARE(fill<QListWidget>(p, "ClientsLlista")->currentItem()->text(), QString("Client Nou"));
        // A resource added elsewhere reaches the place form when the other page says so.
        recurs(e.db(), "Pere", 0x123456);
        QCOMPARE(fill<QComboBox>(p, "RecursosCombo")->findText("Pere"), -1);
        p.recarregaRecursos();
        QVERIFY(fill<QComboBox>(p, "RecursosCombo")->findText("Pere") >= 0);
        p.configuraXecs(true, "Neteja");
        QVERIFY(!fill<QGroupBox>(p, "GrupXecs")->isHidden());
    }
};

QTEST_MAIN(TestClientsPage)
#include "tst_clients_page.moc"
