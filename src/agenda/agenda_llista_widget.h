#pragma once
// LlocsGrid and RecursosGrid: the one-column lists beside the agenda from which places and
// resources are dragged onto it. A press asks the agenda controller whether a drag may start (not
// in the month view); a double click asks for the entry's master-data page; a letter selects the
// first entry that starts with it.

#include <QTableWidget>

#include <functional>

class ControladorAgenda;
struct EntradaRecurs;

class LlistaAgendaWidget : public QTableWidget {
    Q_OBJECT
public:
    // tipus: 'L' for places, 'R' for resources.
    LlistaAgendaWidget(ControladorAgenda &ctl, QChar tipus, QWidget *parent = nullptr);

    void posaLlocs(const QStringList &llocs);
    void posaRecursos(const QList<EntradaRecurs> &recursos);
    QString nom(int fila) const;

    // Called after a press (the page updates its print button).
    std::function<void()> alPremer;

signals:
    void dobleClicNom(const QString &nom);

protected:
    void mousePressEvent(QMouseEvent *e) override;
    void mouseMoveEvent(QMouseEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void mouseDoubleClickEvent(QMouseEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;

private:
    ControladorAgenda &m_ctl;
    QChar m_tipus;
    QString m_caption;
    QPoint m_posPremuda;
    int m_filaPremuda = -1;
};
