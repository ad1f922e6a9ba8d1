#pragma once
// AgendaGrid: the table that draws the agenda model and hands every press, click, double click,
// key and drop to the agenda controller in the grid's own coordinates (row 0 and column 0 are the
// header row and column, which stay in place while the body scrolls). Jobs are drawn as coloured
// blocks over their merged slots; a drag carries the dragged name under the pointer.

#include <QPointer>
#include <QTableView>

class ControladorAgenda;
class ModelTaulaAgenda;
class QAbstractButton;
class QHeaderView;

// The picture that travels under the pointer while a job, place or resource is dragged.
QPixmap imatgeArrossegament(const QString &nom, const QSize &mida, const QColor &fons, const QFont &font);

class AgendaGridWidget : public QTableView {
    Q_OBJECT
public:
    AgendaGridWidget(ControladorAgenda &ctl, QWidget *parent = nullptr);

    ModelTaulaAgenda *taula() const { return m_taula; }
    // After every rebuild of the model: shape, merged blocks, sizes, current cell.
    void refresca();

    // Grid cell under a point of the viewport as (x = column, y = row); (-1, -1) outside the body.
    QPoint cellaA(const QPoint &posViewport) const;
    // The viewport rectangle of one grid cell of the body (not of its merged block).
    QRect rectCella(int fila, int col) const;
    // The cell a drag is hovering (x = column, y = row), (-1, -1) when none.
    QPoint celaDesti() const { return m_desti; }
    // True when the grid cell shows the agenda's selected job (the job pressed last): its block
    // in the day and week views, its day in the month view. Such cells are drawn outlined.
    bool ressaltada(int fila, int col) const;

    // The press, drag and double-click handling of the header row, the header column and the
    // corner (the header widgets forward their mouse events here).
    void premCapcalera(int fila, int col, Qt::MouseButton boto);
    void dobleClicCapcalera();

protected:
    void mousePressEvent(QMouseEvent *e) override;
    void mouseMoveEvent(QMouseEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void mouseDoubleClickEvent(QMouseEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;
    void focusOutEvent(QFocusEvent *e) override;
    void dragEnterEvent(QDragEnterEvent *e) override;
    void dragMoveEvent(QDragMoveEvent *e) override;
    void dragLeaveEvent(QDragLeaveEvent *e) override;
    void dropEvent(QDropEvent *e) override;
    void resizeEvent(QResizeEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    void currentChanged(const QModelIndex &actual, const QModelIndex &anterior) override;
    bool eventFilter(QObject *o, QEvent *e) override;

private:
    void ajustaMides();
    void aplicaFusions();
    void iniciaArrossegament();
    void paintCantonada(QAbstractButton *b);
    void sincronitzaCellaActual();

    ControladorAgenda &m_ctl;
    ModelTaulaAgenda *m_taula;
    QPointer<QAbstractButton> m_cantonada;
    QString m_caption;      // what a drag started from the last press would carry
    QPoint m_posPremuda;    // viewport position of that press
    QPoint m_cellaPremuda;  // (column, row) of that press
    bool m_arrossegat = false;
    QPoint m_desti{-1, -1};
    bool m_sincronitzant = false;
    QString m_periode; // the view and period last drawn: a new one scrolls to its first job
};
