#include "agenda_llista_widget.h"

#include "agenda_controller.h"
#include "agenda_grid_widget.h"
#include "agenda_llistes.h"
#include "agenda_model_taula.h"

#include <QApplication>
#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>

LlistaAgendaWidget::LlistaAgendaWidget(ControladorAgenda &ctl, QChar tipus, QWidget *parent)
    : QTableWidget(parent), m_ctl(ctl), m_tipus(tipus)
{
    setObjectName(tipus == QLatin1Char('L') ? QStringLiteral("LlocsGrid") : QStringLiteral("RecursosGrid"));
    setColumnCount(1);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setShowGrid(false);
    setDragEnabled(false);
    setWordWrap(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void LlistaAgendaWidget::posaLlocs(const QStringList &llocs)
{
    clearContents();
    setRowCount(int(llocs.size()));
    for (int i = 0; i < llocs.size(); ++i)
        setItem(i, 0, new QTableWidgetItem(llocs.at(i)));
}

void LlistaAgendaWidget::posaRecursos(const QList<EntradaRecurs> &recursos)
{
    clearContents();
    setRowCount(int(recursos.size()));
    for (int i = 0; i < recursos.size(); ++i) {
        const EntradaRecurs &r = recursos.at(i);
        auto *item = new QTableWidgetItem(r.nom);
        const QColor c = ModelTaulaAgenda::colorQt(r.color);
        item->setBackground(c);
        item->setForeground(ModelTaulaAgenda::colorText(c));
        if (r.grup) {
            QFont f = font();
            f.setBold(true);
            item->setFont(f);
        }
        setItem(i, 0, item);
    }
}

QString LlistaAgendaWidget::nom(int fila) const
{
    const QTableWidgetItem *i = item(fila, 0);
    return i ? i->text() : QString();
}

void LlistaAgendaWidget::mousePressEvent(QMouseEvent *e)
{
    QTableWidget::mousePressEvent(e);
    m_posPremuda = e->position().toPoint();
    m_filaPremuda = rowAt(m_posPremuda.y());
    m_caption = m_filaPremuda >= 0 ? m_ctl.premLlista(m_tipus, nom(m_filaPremuda)) : QString();
    if (e->button() != Qt::LeftButton)
        m_caption.clear();
    if (alPremer)
        alPremer();
}

void LlistaAgendaWidget::mouseMoveEvent(QMouseEvent *e)
{
    if (!(e->buttons() & Qt::LeftButton) || m_caption.isEmpty())
        return;
    if ((e->position().toPoint() - m_posPremuda).manhattanLength() < QApplication::startDragDistance())
        return;
    const QString caption = m_caption;
    m_caption.clear();
    const QRect r = visualRect(model()->index(m_filaPremuda, 0));
    const QTableWidgetItem *i = item(m_filaPremuda, 0);
    const QColor fons = (i && m_tipus == QLatin1Char('R')) ? i->background().color() : QColor();
    auto *mime = new QMimeData;
    mime->setData(QString::fromLatin1(arrossegament::TipusMime), caption.toUtf8());
    mime->setText(caption.mid(1));
    auto *drag = new QDrag(this);
    drag->setMimeData(mime);
    const QSize mida(qMax(90, qMin(r.width(), 200)), qMax(r.height(), fontMetrics().height() + 8));
    drag->setPixmap(imatgeArrossegament(caption.mid(1), mida, fons, i ? i->font() : font()));
    drag->setHotSpot(QPoint(mida.width() / 2, mida.height() / 2));
    drag->exec(Qt::CopyAction, Qt::CopyAction);
}

void LlistaAgendaWidget::mouseReleaseEvent(QMouseEvent *e)
{
    m_caption.clear();
    QTableWidget::mouseReleaseEvent(e);
}

void LlistaAgendaWidget::mouseDoubleClickEvent(QMouseEvent *e)
{
    m_caption.clear();
    const int fila = rowAt(e->position().toPoint().y());
    if (fila >= 0 && !nom(fila).isEmpty())
        emit dobleClicNom(nom(fila));
}

void LlistaAgendaWidget::keyPressEvent(QKeyEvent *e)
{
    // A letter selects the first entry that starts with it.
    const QString t = e->text();
    if (t.size() == 1 && t.at(0).isLetterOrNumber() && !(e->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        for (int i = 0; i < rowCount(); ++i) {
            if (nom(i).startsWith(t, Qt::CaseInsensitive)) {
                setCurrentCell(i, 0);
                scrollToItem(item(i, 0));
                break;
            }
        }
        e->accept();
        return;
    }
    QTableWidget::keyPressEvent(e);
}
