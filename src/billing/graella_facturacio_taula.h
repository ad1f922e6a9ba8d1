#pragma once
// A billing sheet as a Qt item model for a table view: all ten columns (the code column is there
// for the view to hide, width 0), the translated headers, and each cell's colour, bold, alignment
// and hidden text in the standard roles. A hidden text is drawn in its background colour, so it is
// never seen but a copy or a test still reads it. The roles below carry the rest: the merged
// blocks (a view calls setSpan with them after every refresca()) and the raw cell.

#include "graella_facturacio.h"

#include <QAbstractTableModel>
#include <QColor>

class ModelTaulaFacturacio : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Rol {
        RolFons = Qt::UserRole + 1, // qint32: 0x00BBGGRR or SenseFons
        RolFilesBloc,               // int: rows of the block starting here, 0 on a covered cell
        RolColumnesBloc,            // int: columns of the block starting here, 0 on a covered cell
        RolOculta,                  // bool: the text is for the code only
        RolCodi,                    // the row code (column 0) of the cell's row
        RolAmpladaTwips,            // header data: the column's width in twips (0 = hidden)
    };

    explicit ModelTaulaFacturacio(const GraellaFacturacio &graella, QObject *parent = nullptr);

    // Call after every rebuild of the sheet.
    void refresca();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // 0x00BBGGRR as a colour; invalid for SenseFons.
    static QColor colorQt(qint32 color);

private:
    const GraellaFacturacio &m_graella;
    int m_files = 0;
};
