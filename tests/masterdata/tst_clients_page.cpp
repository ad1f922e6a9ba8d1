// The clients tab driven as a user drives it, offscreen: typing into the fields, pressing the
// buttons and keys, and checking what reached the database and what the page shows afterwards.
#include "core/formats.h"
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
        e.cfg().ServeiXecs = QStringLiteral("Neteja");
        e.cfg().ValorXec = 10;
        recurs(e.db(), QStringLiteral("Marta"), 65535, true);
        recurs(e.db(), QStringLiteral("Oriol"), 16711680, true);
        grup(e.db(), QStringLiteral("Marta i Oriol"), 65280, {QStringLiteral("Marta"), QStringLiteral("Oriol")});
        servei(e.db(), QStringLiteral("Neteja"), 60, false, 6.25, QStringLiteral("Hores"), QStringLiteral("Servei de neteja"));
        servei(e.db(), QStringLiteral("Desplaçaments"), 3, true, 0.19, QStringLiteral("Kms"));
        client(e.db(), QStringLiteral("Altre"));

        ClientsPage p(*e.sessio, e.io);
        QSignalSpy clientsCanviats(&p, &ClientsPage::clientsCanviats);
        QSignalSpy llocsCanviats(&p, &ClientsPage::llocsCanviats);
        p.resize(1280, 760);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        // A new client: trimmed, registered today, chosen in the list.
        escriu(p, "NomClient", QStringLiteral("  L'Estel "));
        escriu(p, "PoblacioClient", QStringLiteral("Vic"));
        prem(p, "AfegirClient");
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Clients WHERE clients_nom = ? AND clients_poblacio = 'Vic'", {"L'Estel"}), 1);
        QCOMPARE(fill<QListWidget>(p, "ClientsLlista")->currentItem()->text(), QStringLiteral("L'Estel"));
        QCOMPARE(fill<QLineEdit>(p, "NomClient")->text(), QStringLiteral("L'Estel"));
        QCOMPARE(fill<QLineEdit>(p, "DataAltaClient")->text(), format::dataCurta(QDate::currentDate()));
        QCOMPARE(clientsCanviats.count(), 1);
        QVERIFY(fill<QPushButton>(p, "AfegirLloc")->isEnabled());
        QVERIFY(!fill<QListWidget>(p, "XecsLlista")->isEnabled()); // not a voucher client

        // Its first place, monthly, with the group as default resource and a fee.
        escriu(p, "NomLloc", QStringLiteral("Oficina"));
        escriu(p, "MinutsPrevistLloc", QStringLiteral("60"));
        escriu(p, "PeriodicitatDiesLloc", QStringLiteral("7"));
        escriu(p, "QuotaLloc", QStringLiteral("20"));
        QComboBox *recursos = fill<QComboBox>(p, "RecursosCombo");
        recursos->setCurrentIndex(recursos->findText(QStringLiteral("Marta i Oriol")));
        marca(p, "PrimerMesLloc");
        marca(p, "UltimMesLloc");
        QVERIFY(!fill<QCheckBox>(p, "PrimerMesLloc")->isChecked()); // the two are exclusive
        prem(p, "AfegirLloc");
        QVERIFY2(e.io.crides.isEmpty(), qPrintable(e.missatges().join('\n')));
        QCOMPARE(e.text("SELECT llocs_ultim_dia_mes || '/' || recursos_nom || '/' || llocs_quota FROM Llocs"),
                 QStringLiteral("1/Marta i Oriol/20.0"));
        QCOMPARE(fill<QListWidget>(p, "LlocsLlista")->currentItem()->text(), QStringLiteral("Oficina"));
        QCOMPARE(fill<QLineEdit>(p, "PeriodicitatDiesLloc")->text(), QStringLiteral("99"));
        QCOMPARE(llocsCanviats.count(), 1);

        // A service line chosen from the keyboard: its unit and price are offered.
        QComboBox *serveis = fill<QComboBox>(p, "ServeisCombo");
        serveis->setFocus();
        QTest::keyClick(serveis, Qt::Key_Down);
        QTest::keyClick(serveis, Qt::Key_Down);
        QCOMPARE(serveis->currentText(), QStringLiteral("Neteja"));
        QCOMPARE(fill<QLineEdit>(p, "UnitatServeiLloc")->text(), QStringLiteral("Hores"));
        QCOMPARE(fill<QLineEdit>(p, "PreuServeisLloc")->text(), QStringLiteral("6,25"));
        escriu(p, "QuantitatServeisLloc", QStringLiteral("3"));
        e.io.respostes = {true}; // 3 hours shared by two: 90 minutes, not 60
        prem(p, "AfegirServeiLloc");
        QCOMPARE(e.missatges(QStringLiteral("pregunta")).size(), 1);
        QCOMPARE(fill<QLineEdit>(p, "MinutsPrevistLloc")->text(), QStringLiteral("90"));
        QTreeWidget *linies = fill<QTreeWidget>(p, "ServeisLlocLlista");
        QCOMPARE(linies->topLevelItemCount(), 1);
        QCOMPARE(linies->topLevelItem(0)->text(1), QStringLiteral("3"));

        // The list follows the keyboard: Up moves to the other client and shows it.
        QListWidget *clients = fill<QListWidget>(p, "ClientsLlista");
        clients->setFocus();
        QTest::keyClick(clients, Qt::Key_Up);
        QCOMPARE(fill<QLineEdit>(p, "NomClient")->text(), QStringLiteral("Altre"));
        QCOMPARE(fill<QListWidget>(p, "LlocsLlista")->count(), 0);
        QVERIFY(!fill<QListWidget>(p, "XecsLlista")->isEnabled());

        // The jump from the agenda brings the place with its client.
        QSignalSpy mostra(&p, &ClientsPage::mostraPagina);
        QVERIFY(p.obreLloc(QStringLiteral("OFICINA")));
        QCOMPARE(mostra.count(), 1);
        QCOMPARE(fill<QLineEdit>(p, "NomClient")->text(), QStringLiteral("L'Estel"));
        QCOMPARE(fill<QLineEdit>(p, "NomLloc")->text(), QStringLiteral("Oficina"));
        QCOMPARE(fill<QComboBox>(p, "RecursosCombo")->currentText(), QStringLiteral("Marta i Oriol"));
        QVERIFY(!p.obreLloc(QStringLiteral("Ningú")));
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("Lloc no trobat")});
        QCOMPARE(mostra.count(), 1);

        // Delete empties a list choice; entering a field selects its text.
        QComboBox *hora = fill<QComboBox>(p, "HoraLlocCombo");
        hora->setCurrentIndex(4);
        hora->setFocus();
        QTest::keyClick(hora, Qt::Key_Delete);
        QCOMPARE(hora->currentIndex(), -1);
        QLineEdit *nomLloc = fill<QLineEdit>(p, "NomLloc");
        nomLloc->setFocus();
        QTRY_COMPARE(nomLloc->selectedText(), QStringLiteral("Oficina"));
    }

    void renomIRefrescDeLlistes()
    {
        EntornMestres e;
        client(e.db(), QStringLiteral("Client"));
        lloc(e.db(), QStringLiteral("Casa"), 30, QString(), QStringLiteral("Client"));
        ClientsPage p(*e.sessio, e.io);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        fill<QListWidget>(p, "ClientsLlista")->setCurrentRow(0);
        fill<QListWidget>(p, "LlocsLlista")->setCurrentRow(0);

        // Renaming the place in the form renames it in the list; the client's rename follows.
        escriu(p, "NomLloc", QStringLiteral("Casa nova"));
        prem(p, "ModificarLloc");
        e.missatges();
        QCOMPARE(fill<QListWidget>(p, "LlocsLlista")->currentItem()->text(), QStringLiteral("Casa nova"));
        escriu(p, "NomClient", QStringLiteral("Client Nou"));
        prem(p, "ModificarClient");
        QCOMPARE(fill<QListWidget>(p, "ClientsLlista")->currentItem()->text(), QStringLiteral("Client Nou"));
        QCOMPARE(fill<QListWidget>(p, "LlocsLlista")->count(), 1);
        QCOMPARE(e.text("SELECT clients_nom FROM Llocs"), QStringLiteral("Client Nou"));

        // A resource added elsewhere reaches the place form when the other page says so.
        recurs(e.db(), QStringLiteral("Pere"), 0x123456);
        QCOMPARE(fill<QComboBox>(p, "RecursosCombo")->findText(QStringLiteral("Pere")), -1);
        p.recarregaRecursos();
        QVERIFY(fill<QComboBox>(p, "RecursosCombo")->findText(QStringLiteral("Pere")) >= 0);
    }

    void senseServeiDeXecs()
    {
        EntornMestres e;
        e.cfg().ServeiXecs.clear();
        ClientsPage p(*e.sessio, e.io);
        p.resize(1280, 760);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        QVERIFY(fill<QGroupBox>(p, "GrupXecs")->isHidden());
        QVERIFY(fill<QCheckBox>(p, "XecsClient")->isHidden());
        // No client at all: there is nobody to add a place to.
        QVERIFY(!fill<QPushButton>(p, "AfegirLloc")->isEnabled());
        QVERIFY(!fill<QWidget>(p, "ServeisLlocLlista")->isEnabled());
        p.configuraXecs(true, QStringLiteral("Neteja"));
        QVERIFY(!fill<QGroupBox>(p, "GrupXecs")->isHidden());
        QVERIFY(fill<QGroupBox>(p, "GrupXecs")->title().endsWith(QStringLiteral("Neteja")));
        p.configuraXecs(false, QString());
    }
};

QTEST_MAIN(TestClientsPage)
#include "tst_clients_page.moc"
