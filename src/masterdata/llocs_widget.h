#pragma once
// The lower half of the clients tab: the chosen client's places with their form, and the
// services contracted at the chosen place. It builds three group boxes on the page it is given
// (the page lays them out in one grid with its client columns, so the columns line up) and
// moves values between their fields and GestioLlocs, where every rule lives.

#include "llocs.h"

#include <QObject>
#include <functional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;
class Interaccio;
class Sessio;

class LlocsWidget : public QObject {
    Q_OBJECT
public:
    LlocsWidget(Sessio &sessio, Interaccio &io, QWidget *pagina);

    // The three columns: places list, place form, services of the place.
    QGroupBox *grupLlista() const { return m_grupLlista; }
    QGroupBox *grupFitxa() const { return m_grupFitxa; }
    QGroupBox *grupServeis() const { return m_grupServeis; }
    QWidget *primerCamp() const;
    QWidget *darrerCamp() const;

    // The client whose places are shown ("" = none) and how to read its voucher box now.
    void mostraClient(const QString &client, std::function<bool()> xecsClient);
    bool seleccionaLloc(const QString &lloc);
    QString llocActual() const { return m_nomLlocAnt; }

    void recarregaRecursos();
    void recarregaServeis();
    void recarregaHores(); // after a change of the agenda's day

    // The fields as the actions read them (tests look at them too).
    FitxaLloc fitxa() const;
    FitxaServeiLloc fitxaServei() const;

signals:
    void llocsCanviats();
    // A stored place's rhythm, hour or weekday changed: its pending jobs may need re-planning.
    void ritmeCanviat(const QString &lloc);

private:
    void construeix(QWidget *pagina);
    void ordreTabulacio();
    void explicaRitme();
    void recarregaLlocs(QString seleccionar); // by value: reloading empties the form it may come from
    void mostra(const FitxaLloc &f);
    void buidaLloc();
    void mostraServei(const FitxaServeiLloc &s);
    void recarregaLinies();
    void actualitzaEstat();
    void enLlocTriat();
    void enLiniaTriada();
    void enServeiTriat(int index);
    // After an action that may have saved the place: show what it now holds.
    void desaResultatLloc(const FitxaLloc &f, Resultat r);

    void afegirLloc();
    void modificarLloc();
    void eliminarLloc();
    void afegirServeiLloc();
    void modificarServeiLloc();
    void eliminarServeiLloc();

    Sessio &m_sessio;
    Interaccio &m_io;
    GestioLlocs m_gestio;
    QString m_client;
    std::function<bool()> m_xecsClient;
    QString m_nomLlocAnt;

    QListWidget *m_llista;
    QLineEdit *m_nom, *m_adreca, *m_poblacio, *m_telefon, *m_minuts, *m_periodicitat, *m_quota;
    QComboBox *m_dies, *m_hora, *m_recursos;
    QCheckBox *m_primerMes, *m_ultimMes, *m_dissabte, *m_diumenge, *m_festius;
    QPlainTextEdit *m_observacions;
    QPushButton *m_afegir, *m_modificar, *m_eliminar;
    QGroupBox *m_grupLlista, *m_grupFitxa, *m_grupServeis;
    QTreeWidget *m_linies;
    QComboBox *m_serveis;
    QLineEdit *m_unitat, *m_quantitat, *m_preu, *m_descripcio;
    QPushButton *m_afegirServei, *m_modificarServei, *m_eliminarServei;
};
