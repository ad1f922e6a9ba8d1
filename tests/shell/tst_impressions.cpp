// The print buttons of the main window reach their reports through the print preview: the
// agenda's two buttons, the job editor's "Imprimir" and the billing tab's buttons.
#include "agenda/agenda_page.h"
#include "agenda/agenda_llista_widget.h"
#include "agenda/frm_feines_dialog.h"
#include "billing/facturacio_page.h"
#include "shell/frm_main.h"
#include "support/entorn_proves.h"
#include "support/guio_usuari.h"

#include <QApplication>
#include <QComboBox>
#include <QPrintPreviewDialog>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <QtTest>

class TestImpressions : public QObject {
    Q_OBJECT

    QTemporaryDir m_settings;
    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioGuio m_ui;
    std::unique_ptr<frmMain> m_w;
    // Every preview is closed as soon as it shows (polling while its own loop runs); its title is
    // kept.
    QTimer m_tancador;
    QStringList m_titols;

    AgendaPage &agenda() { return *m_w->findChild<AgendaPage *>(); }

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("QuadrellaProves");
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre("PrimeraExecucio", "0");
        m_sessio = m_dir->obreSessio();
        dades_prova::recurs(m_sessio->db(), "Anna", 0x00ffff);
        dades_prova::lloc(m_sessio->db(), "Escola Sol", 60);
        dades_prova::feina(m_sessio->db(), "Escola Sol", QDate::currentDate(), "09:00", "10:00", "Anna");
        dades_prova::client(m_sessio->db(), "Bar Nou");
        dades_prova::lloc(m_sessio->db(), "Bar", 60, QString(), "Bar Nou");
        dades_prova::feina(m_sessio->db(), "Bar", QDate::currentDate(), "09:00", "10:00", QString(), true);
        m_w = std::make_unique<frmMain>(*m_sessio, m_ui);
        m_w->carrega();
        m_w->show();
        connect(&m_tancador, &QTimer::timeout, this, [this] {
            if (auto *d = qobject_cast<QPrintPreviewDialog *>(QApplication::activeModalWidget())) {
                m_titols << d->windowTitle();
                d->reject();
            }
        });
        m_tancador.start(25);
    }

    void init()
    {
        m_titols.clear();
        m_ui.crides.clear();
    }

    void cleanupTestCase()
    {
        m_w.reset();
        QSettings().clear();
    }

    // The job list: enabled by pressing a resource, disabled again once printed.
    void agendaButtonsOpenTheirPreviews()
    {
        agenda().ImprimirAgenda->click();
        agenda().controlador().premLlista(QLatin1Char('R'), QStringLiteral("Anna"));
        agenda().RecursosGrid->alPremer();
        QVERIFY(agenda().ImprimirFeines->isEnabled());
        agenda().ImprimirFeines->click();
        QCOMPARE(m_titols.size(), 2);
        QVERIFY(m_titols[0] == QStringLiteral("Agenda") && m_titols[1].endsWith(QStringLiteral(": ANNA")));
        QVERIFY(!agenda().ImprimirFeines->isEnabled());
    }

    // The editor's "Imprimir" is shown and prints the job it holds, from its own window.
    void jobEditorPrints()
    {
        GuioUsuari guio;
        guio.quanAparegui([](QWidget *d) {
            d->findChild<QPushButton *>(QStringLiteral("ImprimirButton"))->click();
            qobject_cast<QDialog *>(d)->reject();
        });
        Feina f;
        f.feines_id = 1;
        f.llocs_nom = QStringLiteral("Escola Sol");
        f.feines_data = QDate::currentDate();
        f.feines_hora_inici = QStringLiteral("09:00");
        f.feines_hora_fi = QStringLiteral("10:00");
        f.recursos_nom = QStringLiteral("Anna");
        agenda().controlador().obreEditor(f);
        QCOMPARE(m_titols, QStringList{QStringLiteral("Detall de la feina nro.: 1")});
    }

    // The billing tab's buttons: without a client the summary, the settled vouchers and the
    // overtime; with one, the invoice data.
    void billingButtonsOpenTheirPreviews_data()
    {
        const QString mes = QDate::currentDate().toString(QStringLiteral("MM/yyyy"));
        QTest::addColumn<QString>("client");
        QTest::addColumn<QString>("boto");
        QTest::addColumn<QString>("titol");
        QTest::newRow("summary") << "" << "ImprimirFacturacio" << "RESUM FACTURACIÓ del mes: " + mes;
        QTest::newRow("vouchers") << "" << "ImprimirXecs" << "Relació de XECS " + mes;
        QTest::newRow("overtime") << "" << "ImprimirHores" << "Relació de HORES EXTRA del mes: " + mes;
        QTest::newRow("commit") << "Bar Nou" << "ImprimirFacturacio" << "Dades de facturació del mes: " + mes + " - Bar Nou";
    }
    void billingButtonsOpenTheirPreviews()
    {
        m_w->seleccionaPestanya(frmMain::Facturacio);
        QFETCH(QString, client);
        QFETCH(QString, boto);
        QFETCH(QString, titol);
        auto &p = *m_w->findChild<FacturacioPage *>();
        p.ClientsCombo->setCurrentIndex(p.ClientsCombo->findText(client));
        p.findChild<QPushButton *>(boto)->click();
        QCOMPARE(m_titols, QStringList{titol});
        QVERIFY(m_ui.crides.isEmpty());
    }
};

QTEST_MAIN(TestImpressions)
#include "tst_impressions.moc"
