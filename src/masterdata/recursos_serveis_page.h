#pragma once
// The "Recursos i Serveis" tab: resources and groups with their colours and members on one side,
// services on the other. The rules live in GestioRecursos and GestioServeis.

#include "recursos.h"
#include "serveis.h"
#include "widgets/pagina_principal.h"

#include <QWidget>
#include <functional>
#include <optional>

class QCheckBox;
class QColor;
class QLineEdit;
class QListWidget;
class QPushButton;
class Interaccio;
class Sessio;

class RecursosServeisPage : public QWidget, public PaginaPrincipal {
    Q_OBJECT
public:
    RecursosServeisPage(Sessio &sessio, Interaccio &io, QWidget *parent = nullptr);

    // The colour chooser; tests replace the dialog with an answer of their own.
    using TriaColor = std::function<std::optional<QColor>(const QColor &inicial)>;
    void setTriaColor(TriaColor tria) { m_triaColor = std::move(tria); }

    FitxaRecurs fitxaRecurs() const { return m_recurs; }

public slots:
    void reconstrueix() override;
    // The jump from the agenda: loads the resource and asks to be shown.
    bool obreRecurs(const QString &recurs);

signals:
    void recursosCanviats(); // resource lists and colour keys elsewhere must be refilled
    void serveisCanviats();  // service lists elsewhere must be refilled
    void mostraPagina();

private:
    void construeix();
    void ordreTabulacio();

    void recarregaRecursos(const QString &seleccionar = QString());
    void enRecursTriat();
    void llegeixRecurs();        // fields into m_recurs
    void mostraRecurs();         // m_recurs into fields
    void mostraColor();
    void enGrupCanviat(bool grup);
    void commutaComponent(int fila);
    void triaColor();
    void afegirRecurs();
    void modificarRecurs();
    void eliminarRecurs();

    void recarregaServeis();
    void enServeiTriat();
    FitxaServei fitxaServei() const;
    void mostraServei(const FitxaServei &f);
    void afegirServei();
    void modificarServei();
    void eliminarServei();

    Sessio &m_sessio;
    Interaccio &m_io;
    GestioRecursos m_recursos;
    GestioServeis m_serveis;
    FitxaRecurs m_recurs;
    QString m_nomServeiAnt;
    TriaColor m_triaColor;

    QListWidget *m_llistaRecursos;
    QLineEdit *m_nomRecurs;
    QCheckBox *m_grup, *m_assignaTemps;
    QPushButton *m_color;
    QListWidget *m_components;
    QPushButton *m_afegirRecurs, *m_modificarRecurs, *m_eliminarRecurs;

    QListWidget *m_llistaServeis;
    QLineEdit *m_nomServei, *m_unitat, *m_preu, *m_minuts, *m_descripcio;
    QCheckBox *m_comu;
    QPushButton *m_afegirServei, *m_modificarServei, *m_eliminarServei;
};
