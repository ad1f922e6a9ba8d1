#include "agenda_model_taula.h"

#include <QBrush>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>

ModelTaulaAgenda::ModelTaulaAgenda(const ModelAgenda &model, QObject *parent)
    : QAbstractTableModel(parent), m_model(model)
{
    m_files = qMax(0, m_model.files() - 1);
    m_columnes = qMax(0, m_model.columnes() - 1);
}

void ModelTaulaAgenda::refresca()
{
    beginResetModel();
    m_files = qMax(0, m_model.files() - 1);
    m_columnes = qMax(0, m_model.columnes() - 1);
    endResetModel();
}

int ModelTaulaAgenda::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_files;
}

int ModelTaulaAgenda::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columnes;
}

Qt::ItemFlags ModelTaulaAgenda::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
}

QColor ModelTaulaAgenda::colorQt(qint32 color)
{
    if (color == SenseColor)
        return QColor();
    if (color == ColorFinestra) {
        if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
            return QGuiApplication::palette().color(QPalette::Base);
        return QColor(Qt::white);
    }
    const quint32 c = quint32(color);
    return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF));
}

QColor ModelTaulaAgenda::colorText(const QColor &fons)
{
    if (!fons.isValid())
        return QColor();
    // Perceived luminance (ITU-R BT.601 weights).
    const double y = 0.299 * fons.redF() + 0.587 * fons.greenF() + 0.114 * fons.blueF();
    return y < 0.5 ? QColor(Qt::white) : QColor(Qt::black);
}

QVariant ModelTaulaAgenda::dadaCella(int fila, int col, int role) const
{
    if (fila < 0 || col < 0 || fila >= m_model.files() || col >= m_model.columnes())
        return QVariant();
    const CellaAgenda &c = m_model.cella(fila, col);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: {
        QString t = c.text;
        t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        if (role == Qt::ToolTipRole && !c.indicacio.isEmpty())
            return t.isEmpty() ? c.indicacio : t + QLatin1Char('\n') + c.indicacio;
        if (role == Qt::ToolTipRole && t.isEmpty())
            return QVariant();
        return t;
    }
    case RolText:
        return c.text;
    case Qt::BackgroundRole: {
        const QColor q = colorQt(c.fons);
        return q.isValid() ? QVariant(QBrush(q)) : QVariant();
    }
    case Qt::ForegroundRole: {
        if (c.fons == SenseColor || c.fons == ColorFinestra)
            return QVariant();
        return QBrush(colorText(colorQt(c.fons)));
    }
    case Qt::FontRole: {
        if (!c.negreta && !c.subratllat)
            return QVariant();
        QFont f;
        f.setBold(c.negreta);
        f.setUnderline(c.subratllat);
        return f;
    }
    case Qt::TextAlignmentRole:
        switch (c.alineacio) {
        case CellaAgenda::CentreCentre:
            return int(Qt::AlignCenter);
        case CellaAgenda::CentreDalt:
            return int(Qt::AlignHCenter | Qt::AlignTop);
        case CellaAgenda::EsquerraDalt:
            return int(Qt::AlignLeft | Qt::AlignTop);
        }
        return QVariant();
    case RolFons:
        return c.fons;
    case RolFilesFusionades:
        return c.filesFusionades;
    case RolDia: {
        const QDate d = m_model.diaCella(fila, col);
        return d.isValid() ? QVariant(d) : QVariant();
    }
    case RolHora: {
        const QString h = m_model.horaFila(fila);
        return h.isEmpty() ? QVariant() : QVariant(h);
    }
    case RolFeines: {
        QVariantList l;
        for (int id : c.feines)
            l << id;
        return l;
    }
    default:
        return QVariant();
    }
}

QVariant ModelTaulaAgenda::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_files || index.column() >= m_columnes)
        return QVariant();
    return dadaCella(index.row() + 1, index.column() + 1, role);
}

QVariant ModelTaulaAgenda::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section < 0)
        return QVariant();
    if (orientation == Qt::Horizontal)
        return section < m_columnes ? dadaCella(0, section + 1, role) : QVariant();
    return section < m_files ? dadaCella(section + 1, 0, role) : QVariant();
}
