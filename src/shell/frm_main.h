#pragma once
// The main window: five tabs holding the business pages, the status bar, the configuration key
// (F2), the help key (F1), the message window of the long operations and the shut-down work when
// it closes. The pages themselves are plugged in from outside (see pagines_principals.cpp).

#include <QDate>
#include <QMainWindow>
#include <QPointer>
#include <array>
#include <functional>

class AjudaWindow;
class HistorialDesferWindow;
class QAction;
class Interaccio;
class LogoClicable;
class OrdreFinestres;
class QLabel;
class QStatusBar;
class QTabWidget;
class QTimer;
class Sessio;
class frmMissatges;

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    enum Pestanya { Agenda = 0, Facturacio, Clients, RecursosServeis, Credits };
    static constexpr int NombrePestanyes = 5;

    frmMain(Sessio &sessio, Interaccio &ui, QWidget *parent = nullptr);
    ~frmMain() override;

    // The load work, done while the window is still hidden: position, captions, run state,
    // status bar, credits and the pages.
    void carrega();

    // Puts a page into a tab (the frame takes ownership, replacing what was there). A page that
    // implements PaginaPrincipal is rebuilt through it; otherwise `reconstrueix` is used.
    void posaPagina(Pestanya p, QWidget *pagina);
    void posaPagina(Pestanya p, QWidget *pagina, std::function<void()> reconstrueix);
    QWidget *pagina(Pestanya p) const { return m_pagines[p]; }

    // Shows the window as the user left it (maximised or not).
    void mostra();

    int pestanyaActual() const { return m_actual; }
    // As if the user clicked the tab.
    void seleccionaPestanya(Pestanya p);

    // Status bar: "Últim dia planificat" and the day (the planning calls this after each run).
    void actualitzaUltimDiaPlanificat(const QDate &dia);

    // Vouchers are in use when a service is paid with them (ServeiXecs not empty).
    bool xecsActius() const;

    // The one message window, created on first use.
    frmMissatges *missatges();

    // F2: the configuration dialog, then a restart or the rebuild of the current tab.
    void obreConfiguracio();
    // F1: the manual in its own window.
    void obreAjuda();
    AjudaWindow *ajuda() const;
    void setFitxerAjuda(const QString &fitxer) { m_fitxerAjuda = fitxer; }
    QString fitxerAjuda() const { return m_fitxerAjuda; }

    // The Edit menu: undo and redo the last change of the agenda, the job editor or the billing
    // sheet (a refusal is shown and changes nothing), and the history of changes.
    void desfes();
    void refes();
    void obreHistorial();
    QAction *accioDesfer() const { return m_desfer; }
    QAction *accioRefer() const { return m_refer; }
    HistorialDesferWindow *historial() const;
    // After an undo or a redo: whatever lists outside the grids must be read again (the client's
    // vouchers, which an undone change may have settled or freed).
    std::function<void()> alDesfer;

    Sessio &sessio() const { return m_sessio; }
    Interaccio &interaccio() const { return m_ui; }

    // Where the main window's position lives (per user, outside the settings file).
    static QPoint posicioDesada();

    QTabWidget *Pestanyes;
    QStatusBar *sbStatusBar;
    QLabel *panellUltimDia;
    QLabel *panellData;
    QLabel *panellHora;
    QLabel *lblProductName;
    QLabel *lblCodVersion;
    QLabel *lblCompanyName;
    QLabel *lblWeb;
    LogoClicable *picLogoQuadrella;

signals:
    // The unload work is done; the program may end (and restart when asked).
    void tancada();

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void canviPestanya(int n);
    void reconstrueixSiCal(int pestanya);
    QWidget *creaCredits();
    QWidget *creaEspai(Pestanya p);
    void restauraPosicio();
    void desaPosicio();
    void actualitzaRellotge();
    void creaMenuEdita();
    void actualitzaDesfer();
    void aplicaDesfer(bool refer);

    Sessio &m_sessio;
    Interaccio &m_ui;
    OrdreFinestres *m_ordre;
    std::array<QWidget *, NombrePestanyes> m_trames{};
    std::array<QWidget *, NombrePestanyes> m_pagines{};
    std::array<std::function<void()>, NombrePestanyes> m_reconstrueix{};
    int m_actual = 0;
    QPointer<frmMissatges> m_missatges;
    QPointer<AjudaWindow> m_ajuda;
    QTimer *m_rellotge;
    QString m_fitxerAjuda;
    QAction *m_desfer = nullptr;
    QAction *m_refer = nullptr;
    QPointer<HistorialDesferWindow> m_historial;
    bool m_tancada = false;
};
