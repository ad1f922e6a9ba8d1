#include "graella_facturacio_widget.h"

#include "graella_facturacio.h"
#include "widgets/roda_grid.h"

#include <QBrush>
#include <QFont>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

// ------------------------------------------------------------------ view

GraellaFacturacioWidget::GraellaFacturacioWidget(GraellaFacturacio &graella, const QString &nom, QWidget *parent)
    : QTableView(parent), m_graella(graella), m_taula(new ModelTaulaFacturacio(graella, this))
{
    setObjectName(nom);
    setModel(m_taula);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    refresca();
}

void GraellaFacturacioWidget::refresca()
{
    m_refrescant = true;
    m_taula->refresca();
    clearSpans();
    if (m_graella.fusiona()) {
        for (int r = 0; r < m_graella.files(); ++r) {
            for (int c = 1; c < GraellaFacturacio::Columnes; ++c) {
                const GraellaFacturacio::Bloc b = m_graella.bloc(r, c);
                if (!b.cobert() && (b.files > 1 || b.columnes > 1))
                    setSpan(r, c, b.files, b.columnes);
            }
        }
    }
    // Column 0 carries the row codes.
    setColumnHidden(0, true);
    ajustaAmplades();
    int fila = m_graella.filaActual();
    int col = qMax(1, m_graella.columnaActual());
    m_graella.iniciBloc(fila, col);
    setCurrentIndex(m_taula->index(fila, col));
    m_refrescant = false;
    viewport()->update();
}

void GraellaFacturacioWidget::ajustaAmplades()
{
    // The sheet's widths are twips; at least their size on this screen, and spread over the
    // whole width when the window is wider.
    int totalTwips = 0;
    for (int c = 1; c < GraellaFacturacio::Columnes; ++c)
        totalTwips += m_graella.ampladaTwips(c);
    if (totalTwips <= 0)
        return;
    const double perPantalla = logicalDpiX() / 1440.0 * 1.15;
    const double perAmplada = double(viewport()->width()) / totalTwips;
    const double escala = qMax(perPantalla, perAmplada);
    int usat = 0;
    for (int c = 1; c < GraellaFacturacio::Columnes; ++c) {
        int px = int(m_graella.ampladaTwips(c) * escala);
        if (c == GraellaFacturacio::Columnes - 1 && perAmplada >= perPantalla)
            px = qMax(px, viewport()->width() - usat); // no sliver of empty space at the right
        setColumnWidth(c, px);
        usat += px;
    }
}

void GraellaFacturacioWidget::resizeEvent(QResizeEvent *e)
{
    QTableView::resizeEvent(e);
    ajustaAmplades();
}

void GraellaFacturacioWidget::currentChanged(const QModelIndex &actual, const QModelIndex &anterior)
{
    QTableView::currentChanged(actual, anterior);
    if (!m_refrescant && actual.isValid())
        m_graella.setCellaActual(actual.row(), actual.column());
}

void GraellaFacturacioWidget::keyPressEvent(QKeyEvent *e)
{
    switch (e->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        e->accept();
        if (currentIndex().isValid())
            emit tecla(currentIndex().row(), e->key());
        return;
    default:
        QTableView::keyPressEvent(e);
    }
}

void GraellaFacturacioWidget::mouseDoubleClickEvent(QMouseEvent *e)
{
    const QModelIndex i = indexAt(e->position().toPoint());
    e->accept();
    if (i.isValid())
        emit dobleClic(i.row());
}

// One line per wheel notch while the sheet has the focus.
void GraellaFacturacioWidget::focusInEvent(QFocusEvent *e)
{
    QTableView::focusInEvent(e);
    instalaRodaUnaFila(this);
}

void GraellaFacturacioWidget::focusOutEvent(QFocusEvent *e)
{
    QTableView::focusOutEvent(e);
    treuRodaUnaFila(this);
}
