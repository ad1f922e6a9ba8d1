#pragma once
// The desktop program from start to end: settings and both databases, the language dialog of the
// first run, the help file, the main window loaded hidden, the splash, then the main window or the
// first-run sequence (configuration, sample data, restart); and, once the main window has closed,
// the restart when a configuration change asked for it.

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>

class Interaccio;
class QTimer;
class QTranslator;
class Sessio;
class frmMain;
class frmSplash;

class AplicacioEscriptori : public QObject {
    Q_OBJECT
public:
    struct Opcions {
        int msSplash = 3000;
        // Where the shipped manual pages are read from (copied into the data directory).
        QString dirManual = QStringLiteral(":/resources/manual");
        // Starts the program again; by default its own executable with the same arguments.
        std::function<void()> reinicia;
        // Whether to install Qt's own translations (file dialogs, context menus).
        bool traduccionsQt = true;
    };

    AplicacioEscriptori(const QString &dirDades, Interaccio &ui, Opcions opcions);
    AplicacioEscriptori(const QString &dirDades, Interaccio &ui);
    ~AplicacioEscriptori() override;

    // Runs the start-up up to the splash. false: an error was shown and the program must end.
    bool inicia();

    Sessio *sessio() const { return m_sessio.get(); }
    frmMain *finestra() const;
    frmSplash *splash() const;
    QString fitxerAjuda() const { return m_fitxerAjuda; }
    bool primeraExecucio() const { return m_primeraExecucio; }
    static void reiniciaPrograma();

signals:
    // The main window has closed and its unload work is done: the program may end.
    void acabada();

private:
    void despresSplash();
    void sequenciaPrimeraExecucio();
    void finestraTancada();
    void instalaTraduccionsQt(const QString &idioma);

    QString m_dirDades;
    Interaccio &m_ui;
    Opcions m_opcions;
    std::unique_ptr<Sessio> m_sessio;
    QPointer<frmMain> m_main;
    QPointer<frmSplash> m_splash;
    QTimer *m_temporitzador = nullptr;
    QString m_fitxerAjuda;
    bool m_primeraExecucio = false;
    std::unique_ptr<QTranslator> m_traductorQt;
};
