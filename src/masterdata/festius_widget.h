#pragma once
// The closed days on the resources-and-services tab: a list by date, a day typed with its
// description and added, the selected day deleted, and a public calendar (.ics) imported.

#include <QGroupBox>
#include <functional>

class QLineEdit;
class QPushButton;
class QTableWidget;
class Interaccio;
class Sessio;

class FestiusWidget : public QGroupBox {
    Q_OBJECT
public:
    FestiusWidget(Sessio &sessio, Interaccio &io, QWidget *parent = nullptr);

    void recarrega();
    // Adds the typed day; deletes the selected one; imports `fitxer` (what the file dialog gave).
    void afegir();
    void eliminar();
    void importa(const QString &fitxer);

    // The file the import reads; a file dialog unless a test replaces it.
    std::function<QString()> triaFitxer;

private:
    void canviat();

    Sessio &m_sessio;
    Interaccio &m_io;
    QTableWidget *m_llista;
    QLineEdit *m_data;
    QLineEdit *m_descripcio;
    QPushButton *m_afegir;
    QPushButton *m_eliminar;
    QPushButton *m_importar;
};
