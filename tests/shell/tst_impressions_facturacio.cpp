// The billing tab's print buttons reach their reports through the print preview: the monthly
// summary with its log in the message window, the settled vouchers and the overtime without a
// client, and the invoice data at the end of "Facturar client", after the month is written.
// What the reports draw is checked with the billing engine's tests.
#include "billing/facturacio_page.h"
#include "billing/graella_facturacio_widget.h"
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
#include <functional>

namespace {

struct Previsualitzacio {
    bool oberta = false;
    QString titol;
    bool punterOcupat = false; // the busy pointer still on over the preview
};

// Closes the first print preview that opens (polling while its own loop runs; gives up after 5 s).
std::shared_ptr<Previsualitzacio> tancaPrevisualitzacio()
{
    auto vista = std::make_shared<Previsualitzacio>();
    auto *rellotge = new QTimer;
    auto intents = std::make_shared<int>(0);
    QObject::connect(rellotge, &QTimer::timeout, [rellotge, vista, intents] {
        auto *d = qobject_cast<QPrintPreviewDialog *>(QApplication::activeModalWidget());
        if (!d && ++(*intents) <= 200)
            return;
        rellotge->deleteLater();
        if (d) {
            const QCursor *c = QApplication::overrideCursor();
            *vista = {true, d->windowTitle(), c && c->shape() == Qt::WaitCursor};
            d->reject();
        }
    });
    rellotge->start(25);
    return vista;
}

const QString kClient = QStringLiteral("Bar Nou");

} // namespace

class TestImpressionsFacturacio : public QObject {
    Q_OBJECT

    QTemporaryDir m_settings;
    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioGuio m_ui;
    std::unique_ptr<frmMain> m_w;
    int m_feina = 0;

    FacturacioPage &pagina() { return *m_w->findChild<FacturacioPage *>(); }
    QString mes() const { return QDate::currentDate().toString(QStringLiteral("MM/yyyy")); }

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("QuadrellaProves");
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre("PrimeraExecucio", "0");
        m_sessio = m_dir->obreSessio();
        Db &db = m_sessio->db();
        dades_prova::recurs(db, "Anna", 0x00ffff);
        dades_prova::client(db, kClient);
        dades_prova::lloc(db, "Bar", 60, QString(), kClient);
        m_feina = dades_prova::feina(db, "Bar", QDate::currentDate(), "09:00", "10:00", "Anna", true);
        m_w = std::make_unique<frmMain>(*m_sessio, m_ui);
        m_w->carrega();
        m_w->show();
        m_w->seleccionaPestanya(frmMain::Facturacio);
    }

    void cleanupTestCase()
    {
        m_w.reset();
        QSettings().clear();
    }

    // Without a client: the summary (its log complete, the window closable again, the selector
    // back), the settled vouchers and the overtime, each in its own preview.
    void allClientsButtons_data()
    {
        QTest::addColumn<QString>("boto");
        QTest::addColumn<QString>("titol");
        QTest::newRow("summary") << "ImprimirFacturacio" << "RESUM FACTURACIÓ del mes: " + mes();
        QTest::newRow("vouchers") << "ImprimirXecs" << "Relació de XECS " + mes();
        QTest::newRow("overtime") << "ImprimirHores" << "Relació de HORES EXTRA del mes: " + mes();
    }

    void allClientsButtons()
    {
        QFETCH(QString, boto);
        QFETCH(QString, titol);
        QVERIFY(!pagina().controlador().ambClient());
        auto *b = pagina().findChild<QPushButton *>(boto);
        QVERIFY(b && b->isEnabled());
        auto vista = tancaPrevisualitzacio();
        b->click();
        QVERIFY(vista->oberta);
        QCOMPARE(vista->titol, titol);
        QVERIFY(m_ui.crides.isEmpty());
        if (boto != QLatin1String("ImprimirFacturacio"))
            return;
        frmMissatges *log = m_w->missatges();
        QCOMPARE(log->windowTitle(), QStringLiteral("CALCUL DADES FACTURACIO"));
        QVERIFY(log->text().contains(QStringLiteral("Calculant client: ") + kClient));
        QVERIFY(log->text().contains(QStringLiteral("1 clients processats.")));
        QVERIFY(log->Tancar->isEnabled());
        QVERIFY(pagina().ClientsCombo->isVisible());
        QVERIFY(pagina().FacturaGrid->updatesEnabled());
        QVERIFY(!pagina().controlador().ambClient());
    }

    // "Facturar client" writes the month first, then shows the invoice data with the ordinary
    // pointer, and leaves the focus on the client selector.
    void commitPrintsTheInvoiceData()
    {
        pagina().ClientsCombo->setCurrentIndex(pagina().ClientsCombo->findText(kClient));
        QCOMPARE(pagina().controlador().client(), kClient);
        auto vista = tancaPrevisualitzacio();
        pagina().ImprimirFacturacio->click();
        QVERIFY(vista->oberta);
        QCOMPARE(vista->titol, "Dades de facturació del mes: " + mes() + " - " + kClient);
        QVERIFY(!vista->punterOcupat);
        QCOMPARE(dades_prova::valor(m_sessio->db(), "SELECT count(*) FROM Feines WHERE feines_id = ?"
                                                    " AND feines_data_factura IS NOT NULL", {m_feina}),
                 1);
        QCOMPARE(pagina().window()->focusWidget(), pagina().ClientsCombo);
        QVERIFY(m_ui.crides.isEmpty());
    }
};

QTEST_MAIN(TestImpressionsFacturacio)
#include "tst_impressions_facturacio.moc"
