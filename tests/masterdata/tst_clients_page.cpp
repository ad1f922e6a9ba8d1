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
        escriu(p, "PoblacioClient", "Vic");
        prem(p, "AfegirClient");
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Clients WHERE clients_nom = ? AND clients_poblacio = 'Vic'", {"L'Estel"}), 1);
        QCOMPARE(fill<QListWidget>(p, "ClientsLlista")->currentItem()->text(), QString("L'Estel"));
        QCOMPARE(clientsCanviats.count(), 1);
        QVERIFY(fill<QPushButton>(p, "AfegirLloc")->isEnabled());
        QVERIFY(!fill<QListWidget>(p, "XecsLlista")->isEnabled()); // not a voucher client

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
        QVERIFY2(e.io.crides.isEmpty(), qPrintable(e.missatges().join('\n')));
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
        QTreeWidget *linies = fill<QTreeWidget>(p, "ServeisLlocLlista");
        QCOMPARE(linies->topLevelItemCount(), 1);
        QCOMPARE(linies->topLevelItem(0)->text(1), QString("3"));

        // The list follows the keyboard: Up moves to the other client and shows it.
        QListWidget *clients = fill<QListWidget>(p, "ClientsLlista");
        clients->setFocus();
        QTest::keyClick(clients, Qt::Key_Up);
        QCOMPARE(fill<QLineEdit>(p, "NomClient")->text(), QString("Altre"));

        // The jump from the agenda brings the place with its client.
        QSignalSpy mostra(&p, &ClientsPage::mostraPagina);
        QVERIFY(p.obreLloc("OFICINA"));
        QCOMPARE(fill<QLineEdit>(p, "NomClient")->text() + '|' + fill<QLineEdit>(p, "NomLloc")->text(), QString("L'Estel|Oficina"));
        QVERIFY(!p.obreLloc("Ningú"));
        QCOMPARE(e.missatges(), QStringList{"Lloc no trobat"});
        QCOMPARE(mostra.count(), 1);

        // Delete empties a list choice; entering a field selects its text.
        QComboBox *hora = fill<QComboBox>(p, "HoraLlocCombo");
        hora->setCurrentIndex(4);
        hora->setFocus();
        QTest::keyClick(hora, Qt::Key_Delete);
        QCOMPARE(hora->currentIndex(), -1);
        QLineEdit *nomLloc = fill<QLineEdit>(p, "NomLloc");
        nomLloc->setFocus();
        QTRY_COMPARE(nomLloc->selectedText(), QString("Oficina"));
    }

    // Renames reach the lists; a change of the place's rhythm (the closed-days box among it) is
    // announced and any other is not; the weekday goes back to "any day"; lists fit long names.
    void renomRitmeIDiaSetmana()
    {
        EntornMestres e;
        const QString llarg = "Comunitat de Propietaris del Carrer Major 25";
        client(e.db(), llarg);
        lloc(e.db(), "Casa", 30, QString(), llarg);
        e.db().exec("UPDATE Llocs SET llocs_dia_setmana = 3");
        ClientsPage p(*e.sessio, e.io);
        p.resize(1366, 700);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        QListWidget *clients = fill<QListWidget>(p, "ClientsLlista");
        QVERIFY(clients->viewport()->width() >= clients->fontMetrics().horizontalAdvance(llarg));
        clients->setCurrentRow(0);
        fill<QListWidget>(p, "LlocsLlista")->setCurrentRow(0);
        QSignalSpy ritme(p.llocs(), &LlocsWidget::ritmeCanviat);
        escriu(p, "AdrecaLloc", "Carrer Major 1");
        prem(p, "ModificarLloc");
        fill<QCheckBox>(p, "FestiusLloc")->setChecked(true);
        prem(p, "ModificarLloc");
        QCOMPARE(ritme.count(), 1);
        QCOMPARE(ritme.first().first().toString(), QString("Casa"));
        QComboBox *dies = fill<QComboBox>(p, "DiesSetmanaCombo");
        QCOMPARE(dies->currentIndex(), 3);
        dies->setCurrentIndex(0); // the empty entry
        escriu(p, "NomLloc", "Casa nova");
        prem(p, "ModificarLloc");
        e.missatges();
        QCOMPARE(e.compte("SELECT llocs_dia_setmana FROM Llocs"), 0);
        QCOMPARE(fill<QListWidget>(p, "LlocsLlista")->currentItem()->text(), QString("Casa nova"));
        for (const char *nom : {"PeriodicitatDiesLloc", "DiesSetmanaCombo", "PrimerMesLloc", "DissabteLloc", "DiumengeLloc"})
            QVERIFY2(fill<QWidget>(p, nom)->toolTip().size() > 30, nom);

        escriu(p, "NomClient", "Client Nou");
        prem(p, "ModificarClient");
        QCOMPARE(fill<QListWidget>(p, "ClientsLlista")->currentItem()->text(), QString("Client Nou"));
        // A resource added elsewhere reaches the place form when the other page says so.
        recurs(e.db(), "Pere", 0x123456);
        QCOMPARE(fill<QComboBox>(p, "RecursosCombo")->findText("Pere"), -1);
        p.recarregaRecursos();
        QVERIFY(fill<QComboBox>(p, "RecursosCombo")->findText("Pere") >= 0);
    }

    void senseServeiDeXecs()
    {
        EntornMestres e;
        e.cfg().ServeiXecs.clear();
        ClientsPage p(*e.sessio, e.io);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        QVERIFY(fill<QGroupBox>(p, "GrupXecs")->isHidden() && fill<QCheckBox>(p, "XecsClient")->isHidden());
        // No client at all: there is nobody to add a place to.
        QVERIFY(!fill<QPushButton>(p, "AfegirLloc")->isEnabled());
        p.configuraXecs(true, "Neteja");
        QVERIFY(!fill<QGroupBox>(p, "GrupXecs")->isHidden());
        QVERIFY(fill<QGroupBox>(p, "GrupXecs")->title().endsWith("Neteja"));
    }
};

QTEST_MAIN(TestClientsPage)
#include "tst_clients_page.moc"
