#pragma once
// The lower half of the clients tab: the chosen client's places with their form, and the
// services contracted at the chosen place. Every rule lives in GestioLlocs; this widget moves
// values between the fields and it.

#include "llocs.h"

#include <QWidget>
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

class LlocsWidget : public QWidget {
    Q_OBJECT
public:
    LlocsWidget(Sessio &sessio, Interaccio &io, QWidget *parent = nullptr);

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

private:
    void construeix();
    void ordreTabulacio();
    void recarregaLlocs(const QString &seleccionar);
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
    QCheckBox *m_primerMes, *m_ultimMes, *m_dissabte, *m_diumenge;
    QPlainTextEdit *m_observacions;
    QPushButton *m_afegir, *m_modificar, *m_eliminar;
    QGroupBox *m_grupServeis;
    QTreeWidget *m_linies;
    QComboBox *m_serveis;
    QLineEdit *m_unitat, *m_quantitat, *m_preu, *m_descripcio;
    QPushButton *m_afegirServei, *m_modificarServei, *m_eliminarServei;
};
