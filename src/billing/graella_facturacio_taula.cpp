#include "graella_facturacio_taula.h"

#include <QBrush>
#include <QFont>

namespace {

Qt::Alignment alineacioQt(CellaFacturacio::Alineacio a)
{
    switch (a) {
    case CellaFacturacio::Centre:
        return Qt::AlignCenter;
    case CellaFacturacio::Dreta:
        return Qt::AlignRight | Qt::AlignVCenter;
    case CellaFacturacio::Esquerra:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace

ModelTaulaFacturacio::ModelTaulaFacturacio(const GraellaFacturacio &graella, QObject *parent)
    : QAbstractTableModel(parent), m_graella(graella), m_files(graella.files())
{
}

void ModelTaulaFacturacio::refresca()
{
    beginResetModel();
    m_files = m_graella.files();
    endResetModel();
}

int ModelTaulaFacturacio::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_files;
}

int ModelTaulaFacturacio::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : GraellaFacturacio::Columnes;
}

Qt::ItemFlags ModelTaulaFacturacio::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

QColor ModelTaulaFacturacio::colorQt(qint32 color)
{
    if (color == SenseFons)
        return QColor();
    const quint32 c = quint32(color);
    return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF));
}

QVariant ModelTaulaFacturacio::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || index.row() >= m_graella.files())
        return QVariant();
    const int fila = index.row();
    const int col = index.column();
    const CellaFacturacio &c = m_graella.cella(fila, col);
    switch (role) {
    case Qt::DisplayRole:
        return c.text;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alineacioQt(c.alineacio));
    case Qt::BackgroundRole: {
        const QColor q = colorQt(c.fons);
        return q.isValid() ? QVariant(QBrush(q)) : QVariant();
    }
    case Qt::ForegroundRole:
        // Hidden: the text in the colour of its background (the view's base when it has none).
        if (c.oculta)
            return c.fons == SenseFons ? QVariant(QBrush(Qt::transparent)) : QVariant(QBrush(colorQt(c.fons)));
        return QVariant();
    case Qt::FontRole: {
        if (!c.negreta)
            return QVariant();
        QFont f;
        f.setBold(true);
        return f;
    }
    case RolFons:
        return c.fons;
    case RolFilesBloc:
        return m_graella.bloc(fila, col).files;
    case RolColumnesBloc:
        return m_graella.bloc(fila, col).columnes;
    case RolOculta:
        return c.oculta;
    case RolCodi:
        return m_graella.codi(fila);
    default:
        return QVariant();
    }
}

QVariant ModelTaulaFacturacio::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= GraellaFacturacio::Columnes)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return m_graella.capcalera(section);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alineacioQt(m_graella.alineacioColumna(section)));
    case Qt::FontRole: {
        QFont f;
        f.setBold(true);
        return f;
    }
    case RolAmpladaTwips:
        return m_graella.ampladaTwips(section);
    default:
        return QVariant();
    }
}
