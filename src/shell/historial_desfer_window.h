#pragma once
// The history of the undo stack in a window of its own: what was done (the next undo at the
// bottom of the done part), what was undone and may be redone, and the lines where a planning run,
// a purge, a billing commit or a master-data change cut the stack. The undo and redo buttons are
// the main window's own actions, so their captions name the change they take back.

#include <QWidget>

class PilaDesfer;
class QAction;
class QListWidget;

class HistorialDesferWindow : public QWidget {
    Q_OBJECT
public:
    HistorialDesferWindow(PilaDesfer &pila, QAction *desfer, QAction *refer, QWidget *parent = nullptr);

    // Shows the stack as it is now.
    void actualitza();

    QListWidget *Historial;

private:
    PilaDesfer &m_pila;
};
