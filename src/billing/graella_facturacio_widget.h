#pragma once
// One billing sheet on screen (FacturaGrid or XecsGrid): a table that draws a GraellaFacturacio
// as the billing engine left it, its merged blocks as spans, the code column out of sight and
// hidden texts left undrawn, and hands the keys and double clicks on a row to the page. The
// widths of the columns are the sheet's own, scaled to the space the window gives.

#include "graella_facturacio_taula.h"

#include <QTableView>

class GraellaFacturacioWidget : public QTableView {
    Q_OBJECT
public:
    GraellaFacturacioWidget(GraellaFacturacio &graella, const QString &nom, QWidget *parent = nullptr);

    ModelTaulaFacturacio *taula() const { return m_taula; }
    // After every build: rows, spans, widths and the current cell the sheet kept.
    void refresca();

signals:
    // Delete, Space or Enter on the current row (data rows from 0).
    void tecla(int fila, int key);
    void dobleClic(int fila);

protected:
    void keyPressEvent(QKeyEvent *e) override;
    void mouseDoubleClickEvent(QMouseEvent *e) override;
    void resizeEvent(QResizeEvent *e) override;
    void focusInEvent(QFocusEvent *e) override;
    void focusOutEvent(QFocusEvent *e) override;
    void currentChanged(const QModelIndex &actual, const QModelIndex &anterior) override;

private:
    void ajustaAmplades();

    GraellaFacturacio &m_graella;
    ModelTaulaFacturacio *m_taula;
    bool m_refrescant = false;
};
