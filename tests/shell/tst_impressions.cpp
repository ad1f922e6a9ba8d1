// The print buttons of the main window reach their reports through the print preview: the
// agenda's two buttons, the job editor's "Imprimir" and the billing tab's buttons; and a report that fails inside the
// preview shows "Error:" once. Set QUADRELLA_CAPTURES=DIR to keep a picture of each preview.
#include "agenda/agenda_page.h"
#include "agenda/agenda_llista_widget.h"
#include "agenda/frm_feines_dialog.h"
#include "billing/facturacio_page.h"
#include "reports/impressora.h"
#include "reports/previsualitzacio_dialog.h"
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

// Runs `accio` on the first modal window of type T that opens (polling, as the window's own event
// loop runs), within a few seconds. Returns a flag that tells whether it happened.
template <typename T>
std::shared_ptr<bool> quanAparegui(std::function<void(T *)> accio)
{
    auto fet = std::make_shared<bool>(false);
    auto *rellotge = new QTimer;
    auto intents = std::make_shared<int>(0);
    QObject::connect(rellotge, &QTimer::timeout, [rellotge, accio, fet, intents] {
        if (auto *w = qobject_cast<T *>(QApplication::activeModalWidget())) {
            rellotge->stop();
            rellotge->deleteLater();
            *fet = true;
            accio(w);
        } else if (++(*intents) > 200) {
            rellotge->stop();
            rellotge->deleteLater();
        }
    });
    rellotge->start(25);
    return fet;
}

void captura(QWidget *w, const QString &nom)
{
    const QString dir = qEnvironmentVariable("QUADRELLA_CAPTURES");
    if (!dir.isEmpty())
        w->grab().save(dir + QLatin1Char('/') + nom + QStringLiteral(".png"));
}

// Closes the preview once it is shown, keeping its title.
std::shared_ptr<bool> tancaPrevisualitzacio(QString *titol, const QString &nom)
{
    return quanAparegui<QPrintPreviewDialog>([titol, nom](QPrintPreviewDialog *d) {
        *titol = d->windowTitle();
        captura(d, nom);
        d->reject();
    });
}

} // namespace

class TestImpressions : public QObject {
    Q_OBJECT

    QTemporaryDir m_settings;
    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioGuio m_ui;
    std::unique_ptr<frmMain> m_w;

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
    }

    void cleanupTestCase()
    {
        m_w.reset();
        QSettings().clear();
    }

    void agendaButtonsOpenTheirPreviews()
    {
        captura(m_w.get(), "pagina-agenda");
        QString titol;
        auto obert = tancaPrevisualitzacio(&titol, "previsualitzacio-agenda");
        agenda().ImprimirAgenda->click();
        QVERIFY(*obert);
        QCOMPARE(titol, QStringLiteral("Agenda"));

        // The job list: enabled by pressing a resource, disabled again once printed.
        QVERIFY(!agenda().ImprimirFeines->isEnabled());
        agenda().controlador().premLlista(QLatin1Char('R'), QStringLiteral("Anna"));
        agenda().RecursosGrid->alPremer();
        QVERIFY(agenda().ImprimirFeines->isEnabled());
        obert = tancaPrevisualitzacio(&titol, "previsualitzacio-feines");
        agenda().ImprimirFeines->click();
        QVERIFY(*obert);
        QVERIFY(titol.endsWith(QStringLiteral(": ANNA")));
        QVERIFY(!agenda().ImprimirFeines->isEnabled());
        QVERIFY(m_ui.crides.isEmpty());
    }

    // The editor's "Imprimir" is shown and prints the job it holds, from its own window.
    void jobEditorPrints()
    {
        QString titol;
        std::shared_ptr<bool> previ;
        auto editor = quanAparegui<FrmFeinesDialog>([&](FrmFeinesDialog *d) {
            auto *boto = d->findChild<QPushButton *>(QStringLiteral("ImprimirButton"));
            QVERIFY(boto && boto->isVisible());
            previ = tancaPrevisualitzacio(&titol, "previsualitzacio-detall");
            boto->click();
            d->reject();
        });
        Feina f;
        f.feines_id = 1;
        f.llocs_nom = QStringLiteral("Escola Sol");
        f.feines_data = QDate::currentDate();
        f.feines_hora_inici = QStringLiteral("09:00");
        f.feines_hora_fi = QStringLiteral("10:00");
        f.recursos_nom = QStringLiteral("Anna");
        agenda().controlador().obreEditor(f);
        QVERIFY(*editor);
        QVERIFY(previ && *previ);
        QCOMPARE(titol, QStringLiteral("Detall de la feina nro.: 1"));
    }

    // However often the preview draws, a failing report says so once, and what it drew stays.
    void failureShowsErrorOnce()
    {
        m_ui.crides.clear();
        int vegades = 0;
        QString titol;
        auto obert = quanAparegui<QPrintPreviewDialog>([&](QPrintPreviewDialog *d) {
            titol = d->windowTitle();
            d->reject();
        });
        previsualitzaInforme(m_w.get(), m_ui, QStringLiteral("Prova"), [&](Impressora &imp) {
            ++vegades;
            imp.setX(500);
            imp.setY(500);
            imp.imprimeix(QStringLiteral("Abans de l'error"));
            throw DbError(QStringLiteral("database is locked"));
        });
        QVERIFY(*obert);
        QVERIFY(vegades >= 1);
        QCOMPARE(m_ui.crides.size(), 1);
        QCOMPARE(m_ui.crides.first().tipus, QStringLiteral("error"));
        QCOMPARE(m_ui.crides.first().titol, QStringLiteral("ERROR"));
        QCOMPARE(m_ui.crides.first().text, QStringLiteral("Error:database is locked"));
    }

    // The billing tab's buttons: without a client the summary (its log in the message window, the
    // selector back afterwards), the settled vouchers and the overtime; with one, the invoice data
    // once the month is written. The ordinary pointer over every preview.
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
        m_ui.crides.clear();
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

QTEST_MAIN(TestImpressions)
#include "tst_impressions.moc"
