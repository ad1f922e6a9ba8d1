// The billing tab's print buttons reach their reports through the print preview, with the ordinary
// pointer over it: without a client the summary (its log in the message window, the selector back
// afterwards), the settled vouchers and the overtime; with one, the invoice data once the month is
// written. What the reports draw is checked with the billing engine's tests.
#include "billing/facturacio_page.h"
#include "shell/frm_main.h"
#include "shell/frm_missatges.h"
#include "support/entorn_proves.h"

#include <QApplication>
#include <QComboBox>
#include <QPrintPreviewDialog>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <QtTest>

class TestImpressionsFacturacio : public QObject {
    Q_OBJECT

    QTemporaryDir m_settings;
    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioGuio m_ui;
    std::unique_ptr<frmMain> m_w;

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("QuadrellaProves");
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre("PrimeraExecucio", "0");
        m_sessio = m_dir->obreSessio();
        dades_prova::client(m_sessio->db(), "Bar Nou");
        dades_prova::lloc(m_sessio->db(), "Bar", 60, QString(), "Bar Nou");
        dades_prova::feina(m_sessio->db(), "Bar", QDate::currentDate(), "09:00", "10:00", QString(), true);
        m_w = std::make_unique<frmMain>(*m_sessio, m_ui);
        m_w->carrega();
        m_w->show();
        m_w->seleccionaPestanya(frmMain::Facturacio);
    }

    void buttonsOpenTheirPreviews_data()
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

    void buttonsOpenTheirPreviews()
    {
        QFETCH(QString, client);
        QFETCH(QString, boto);
        QFETCH(QString, titol);
        auto &p = *m_w->findChild<FacturacioPage *>();
        p.ClientsCombo->setCurrentIndex(p.ClientsCombo->findText(client));
        // Closes the preview once it shows (polling while its own loop runs).
        QString vist;
        bool ocupat = false;
        QTimer rellotge;
        connect(&rellotge, &QTimer::timeout, [&] {
            if (auto *d = qobject_cast<QPrintPreviewDialog *>(QApplication::activeModalWidget())) {
                vist = d->windowTitle();
                ocupat = QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
                d->reject();
            }
        });
        rellotge.start(25);
        p.findChild<QPushButton *>(boto)->click();
        QCOMPARE(vist, titol);
        QVERIFY(!ocupat);
        QVERIFY(m_ui.crides.isEmpty());
        if (QTest::currentDataTag() == QLatin1String("summary")) {
            QCOMPARE(m_w->missatges()->windowTitle(), QStringLiteral("CALCUL DADES FACTURACIO"));
            QVERIFY(m_w->missatges()->text().contains(QStringLiteral("1 clients processats.")));
            QVERIFY(m_w->missatges()->Tancar->isEnabled());
            QVERIFY(p.ClientsCombo->isVisible());
        } else if (!client.isEmpty()) {
            QCOMPARE(dades_prova::valor(m_sessio->db(), "SELECT count(*) FROM Feines WHERE feines_data_factura IS NOT NULL"), 1);
        }
    }
};

QTEST_MAIN(TestImpressionsFacturacio)
#include "tst_impressions_facturacio.moc"
