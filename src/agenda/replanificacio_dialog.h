#pragma once
// Re-planning a changed place, shown before anything is written: the jobs that would be deleted
// and those the new rhythm would create. "Replanificar" does both; "Cancel·lar" writes nothing.

#include <QDialog>

class QTableWidget;
struct PrevisioReplanificacio;

class ReplanificacioDialog : public QDialog {
    Q_OBJECT
public:
    explicit ReplanificacioDialog(const PrevisioReplanificacio &previsio, QWidget *parent = nullptr);

    QTableWidget *esborrades() const { return m_esborrades; }
    QTableWidget *noves() const { return m_noves; }

private:
    QTableWidget *m_esborrades;
    QTableWidget *m_noves;
};
