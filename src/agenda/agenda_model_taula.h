#pragma once
// The agenda grid as a Qt item model for a table view: the body cells are the items, the header
// row and column of the grid are the horizontal and vertical header data, and the corner cell is
// read apart. Colours, bold and underline travel in the standard roles, so any view draws them;
// the roles below carry what a view needs to draw merged blocks and to tell "no colour" from
// "the window's colour".

#include "agenda_model.h"

#include <QAbstractTableModel>
#include <QColor>

class ModelTaulaAgenda : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Rol {
        RolFons = Qt::UserRole + 1, // qint32: 0x00BBGGRR, ColorFinestra or SenseColor
        RolFilesFusionades,         // int: the block height on its first cell, 0 on covered cells
        RolDia,                     // QDate of the cell
        RolHora,                    // slot label of the row
        RolFeines,                  // QVariantList of the job ids written in the cell
        RolText,                    // the cell's own text (CR LF kept)
    };

    explicit ModelTaulaAgenda(const ModelAgenda &model, QObject *parent = nullptr);

    // Call after every rebuild of the grid.
    void refresca();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // Roles of any grid cell, headers and corner included.
    QVariant dadaCella(int fila, int col, int role) const;

    // 0x00BBGGRR as a colour; the window background for ColorFinestra; invalid for SenseColor.
    static QColor colorQt(qint32 color);
    // Black or white, whichever reads better on the colour.
    static QColor colorText(const QColor &fons);

private:
    const ModelAgenda &m_model;
    int m_files = 0;
    int m_columnes = 0;
};
