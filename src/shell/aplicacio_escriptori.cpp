#include "aplicacio_escriptori.h"

#include "frm_main.h"
#include "frm_sel_idioma.h"
#include "frm_splash.h"
#include "widgets/protegeix.h"

#include "config/arrencada.h"
#include "config/configuracio_dialog.h"
#include "core/directori_dades.h"
#include "core/ini.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/dades_mostra.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QProcess>
#include <QTimer>
#include <QTranslator>

AplicacioEscriptori::AplicacioEscriptori(const QString &dirDades, Interaccio &ui, Opcions opcions)
    : m_dirDades(dirDades), m_ui(ui), m_opcions(std::move(opcions))
{
    if (!m_opcions.reinicia)
        m_opcions.reinicia = &AplicacioEscriptori::reiniciaPrograma;
}

AplicacioEscriptori::AplicacioEscriptori(const QString &dirDades, Interaccio &ui)
    : AplicacioEscriptori(dirDades, ui, Opcions())
{
}

AplicacioEscriptori::~AplicacioEscriptori()
{
    delete m_splash;
    delete m_main;
    if (m_traductorQt)
        QCoreApplication::removeTranslator(m_traductorQt.get());
}

frmMain *AplicacioEscriptori::finestra() const
{
    return m_main;
}

frmSplash *AplicacioEscriptori::splash() const
{
    return m_splash;
}

void AplicacioEscriptori::reiniciaPrograma()
{
    QProcess::startDetached(QCoreApplication::applicationFilePath(), QCoreApplication::arguments().mid(1));
}

bool AplicacioEscriptori::inicia()
{
    const bool ok = protegeix(m_ui, [&] {
        // Settings first (a missing file is created with every default and the language list),
        // then the translation database; the business database only on the first run, at the
        // default path. A missing one stops the start-up like any database that cannot be opened.
        directori_dades::inicialitza(m_dirDades, directori_dades::BaseNegoci::NomesPrimeraExecucio);
        m_sessio = std::make_unique<Sessio>(m_dirDades);
        if (!m_sessio->copiaMigracio.isEmpty())
            m_ui.informa(QStringLiteral("Quadrella"),
                         Tradueix("Base de dades actualitzada a la versió d'aquest programa. Còpia de l'anterior:")
                             + QLatin1Char(' ') + m_sessio->copiaMigracio);
        m_primeraExecucio = m_sessio->cfg().PrimeraExecucio;

        if (m_primeraExecucio) {
            frmSelIdioma idioma(llistaIdiomes(m_sessio->cfg().fitxerIni), m_sessio->cfg().Idioma);
            idioma.exec();
            if (idioma.idioma() != m_sessio->cfg().Idioma)
                m_sessio->canviaIdioma(idioma.idioma());
        }
        instalaTraduccionsQt(m_sessio->cfg().Idioma);

        const QString dirAjuda = QDir(m_dirDades).filePath(QStringLiteral("manual"));
        arrencada::instalaManual(m_opcions.dirManual, dirAjuda);
        m_fitxerAjuda = arrencada::cercaAjuda(dirAjuda, m_sessio->cfg().Idioma, m_ui);

        m_main = new frmMain(*m_sessio, m_ui);
        m_main->setFitxerAjuda(m_fitxerAjuda);
        connect(m_main, &frmMain::tancada, this, &AplicacioEscriptori::finestraTancada);
        m_main->carrega();
    });
    if (!ok) {
        delete m_main;
        m_sessio.reset();
        return false;
    }

    m_splash = new frmSplash;
    m_splash->show();
    m_splash->repaint();
    m_temporitzador = new QTimer(this);
    m_temporitzador->setSingleShot(true);
    m_temporitzador->setInterval(m_opcions.msSplash);
    connect(m_temporitzador, &QTimer::timeout, this, &AplicacioEscriptori::despresSplash);
    m_temporitzador->start();
    return true;
}

void AplicacioEscriptori::despresSplash()
{
    if (m_splash) {
        m_splash->close();
        m_splash->deleteLater();
    }
    if (!m_main)
        return;
    if (!m_primeraExecucio) {
        m_main->mostra();
        m_main->raise();
        m_main->activateWindow();
        return;
    }
    sequenciaPrimeraExecucio();
}

void AplicacioEscriptori::sequenciaPrimeraExecucio()
{
    Sessio &s = *m_sessio;
    if (!EscriureIni(s.cfg().fitxerIni, QStringLiteral("Parametres"), QStringLiteral("PrimeraExecucio"),
                     QStringLiteral("0")))
        m_ui.error(QStringLiteral("ERROR"), Tradueix("Error al gravar .ini"));

    protegeix(m_ui, [&] {
        frmConfiguracio configuracio(s, m_ui);
        configuracio.exec();
    });
    protegeix(m_ui, [&] {
        // A new office may start empty; the sample data is there to explore the program.
        if (!admetDadesMostra(s)
            || !m_ui.pregunta(Tradueix("CONFIRMACIO"),
                              Tradueix("Vols afegir-hi dades d'exemple per explorar el programa?")))
            return;
        QApplication::setOverrideCursor(Qt::WaitCursor);
        try {
            afegeixDadesMostra(s);
        } catch (...) {
            QApplication::restoreOverrideCursor();
            throw;
        }
        QApplication::restoreOverrideCursor();
    });
    // The main window closes unseen; the restart brings up an ordinary run.
    m_main->close();
}

void AplicacioEscriptori::finestraTancada()
{
    const bool reinicia = m_sessio && m_sessio->ReiniciarAplicacio;
    if (reinicia)
        m_opcions.reinicia();
    emit acabada();
}

void AplicacioEscriptori::instalaTraduccionsQt(const QString &idioma)
{
    if (!m_opcions.traduccionsQt)
        return;
    // The program's language codes are its own; Qt's files follow ISO 639.
    const QString codi = idioma.compare(QLatin1String("CT"), Qt::CaseInsensitive) == 0 ? QStringLiteral("ca")
                                                                                        : idioma.toLower();
    auto t = std::make_unique<QTranslator>();
    if (t->load(QStringLiteral("qtbase_") + codi, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(t.get());
        m_traductorQt = std::move(t);
    }
}
