#pragma once
// What a planning run would create, shown before anything is written: per place each day, start
// and worker, and which jobs would be stored unassigned or refused. "Generar" stores exactly
// these jobs; "Cancel·lar" writes nothing.

#include <QDialog>

class QLabel;
class QTableWidget;
struct PrevisioPlanificacio;

class PrevisioPlanificacioDialog : public QDialog {
    Q_OBJECT
public:
    explicit PrevisioPlanificacioDialog(const PrevisioPlanificacio &previsio, QWidget *parent = nullptr);

    QTableWidget *taula() const { return m_taula; }
    QLabel *comptes() const { return m_comptes; }

private:
    QTableWidget *m_taula;
    QLabel *m_comptes;
};
