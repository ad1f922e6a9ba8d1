#include "agenda_grid_widget.h"

#include "agenda_controller.h"
#include "agenda_llistes.h"
#include "agenda_model_taula.h"

#include "core/configuracio.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace {

QColor colorLinia(const QPalette &p)
{
    return p.color(QPalette::Mid).lighter(135);
}

QColor colorCapcalera(const QPalette &p)
{
    return p.color(QPalette::Button);
}

// ------------------------------------------------------------------ body cells

bool esFeinaSeleccionada(const ControladorAgenda &ctl, const QModelIndex &index)
{
    const int id = ctl.FeinaSeleccionada.feines_id;
    return id > 0 && index.data(ModelTaulaAgenda::RolFeines).toList().contains(QVariant(id));
}

class DelegatAgenda : public QStyledItemDelegate {
public:
    DelegatAgenda(ControladorAgenda &ctl, QObject *parent) : QStyledItemDelegate(parent), m_ctl(ctl) {}

    void paint(QPainter *p, const QStyleOptionViewItem &opcio, const QModelIndex &index) const override
    {
        const QRect r = opcio.rect;
        const QPalette &pal = opcio.palette;
        const VistaAgenda vista = m_ctl.model().vista();
        const qint32 fons = index.data(ModelTaulaAgenda::RolFons).toInt();
        const QString text = index.data(Qt::DisplayRole).toString();
        const QDate dia = index.data(ModelTaulaAgenda::RolDia).toDate();
        p->save();
        p->setRenderHint(QPainter::Antialiasing, false);

        QColor base = pal.color(QPalette::Base);
        if (vista == VistaAgenda::Mes && dia.isValid() && dia.month() != m_ctl.estat().DiaActual.month())
            base = pal.color(QPalette::AlternateBase);
        p->fillRect(r, base);

        QColor colorTextCella = pal.color(QPalette::Text);
        if (vista != VistaAgenda::Mes && !text.isEmpty()) {
            if (fons == SenseColor) {
                // Several jobs share these slots: hatched, so it never looks like one job.
                p->fillRect(r.adjusted(1, 1, -1, -1), QBrush(pal.color(QPalette::Mid), Qt::BDiagPattern));
            } else {
                const QColor c = ModelTaulaAgenda::colorQt(fons);
                const QRectF bloc = QRectF(r).adjusted(2.5, 1.5, -2.5, -1.5);
                p->setRenderHint(QPainter::Antialiasing, true);
                QPainterPath cami;
                cami.addRoundedRect(bloc, 3, 3);
                if (fons == ColorFinestra) {
                    // A job without a resource colour: the window's colour, outlined.
                    p->fillPath(cami, c);
                    p->setPen(QPen(pal.color(QPalette::Mid), 1, Qt::DashLine));
                } else {
                    p->fillPath(cami, c);
                    p->setPen(QPen(c.darker(135), 1));
                    colorTextCella = ModelTaulaAgenda::colorText(c);
                }
                p->drawPath(cami);
                p->setRenderHint(QPainter::Antialiasing, false);
            }
        }

        if (esFeinaSeleccionada(m_ctl, index)) {
            // The selected job stays outlined when the grid loses the focus, in every view; its
            // day in the month is tinted too, to tell it from the current cell.
            QColor tint = pal.color(QPalette::Highlight);
            if (vista == VistaAgenda::Mes) {
                tint.setAlpha(40);
                p->fillRect(r.adjusted(1, 1, -1, -1), tint);
            }
            p->setRenderHint(QPainter::Antialiasing, true);
            p->setPen(QPen(pal.color(QPalette::Highlight).darker(120), 4));
            p->setBrush(Qt::NoBrush);
            p->drawRoundedRect(QRectF(r).adjusted(2, 2, -2, -2), 3, 3);
            p->setRenderHint(QPainter::Antialiasing, false);
        } else if (opcio.state & QStyle::State_HasFocus || opcio.state & QStyle::State_Selected) {
            p->setPen(QPen(pal.color(QPalette::Highlight), 2));
            p->drawRect(QRectF(r).adjusted(1, 1, -1, -1));
        }

        QFont f = opcio.font;
        const QVariant vf = index.data(Qt::FontRole);
        if (vf.isValid())
            f = vf.value<QFont>();
        p->setFont(f);
        p->setPen(colorTextCella);
        const int alineacio = index.data(Qt::TextAlignmentRole).toInt();
        if (vista == VistaAgenda::Mes) {
            // The day number sits in the corner of its cell; the jobs are listed below it.
            QFont fn = opcio.font;
            fn.setPointSizeF(fn.pointSizeF() * 0.85);
            fn.setBold(dia == m_ctl.model().avui());
            const QFontMetrics fmn(fn);
            QRect zonaNum = r.adjusted(3, 3, -5, 0);
            zonaNum.setHeight(fmn.height());
            if (dia.isValid()) {
                p->save();
                p->setFont(fn);
                if (dia == m_ctl.model().avui()) {
                    const int d = fmn.height();
                    const QRect cercle(zonaNum.right() - d - 2, zonaNum.top(), d + 4, d);
                    p->setRenderHint(QPainter::Antialiasing, true);
                    p->setBrush(pal.color(QPalette::Highlight));
                    p->setPen(Qt::NoPen);
                    p->drawRoundedRect(cercle, d / 2.0, d / 2.0);
                    p->setPen(pal.color(QPalette::HighlightedText));
                    p->drawText(cercle, Qt::AlignCenter, QString::number(dia.day()));
                } else {
                    p->setPen(dia.month() == m_ctl.estat().DiaActual.month() ? pal.color(QPalette::Text)
                                                                              : pal.color(QPalette::PlaceholderText));
                    p->drawText(zonaNum, Qt::AlignRight | Qt::AlignVCenter, QString::number(dia.day()));
                }
                p->restore();
            }
            const QRect zona = r.adjusted(4, fmn.height() + 1, -3, -2);
            const QFontMetrics fm(f);
            int y = zona.top();
            const QStringList linies = text.split(QLatin1Char('\n'));
            for (int i = 0; i < linies.size(); ++i) {
                if (y + fm.height() > zona.bottom() + 1 && i > 0) {
                    // What does not fit is announced; a click shows the whole day.
                    p->drawText(QRect(zona.left(), y - fm.height(), zona.width(), fm.height()),
                                Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("…"));
                    break;
                }
                p->drawText(QRect(zona.left(), y, zona.width(), fm.height()), Qt::AlignLeft | Qt::AlignVCenter,
                            fm.elidedText(linies.at(i), Qt::ElideRight, zona.width()));
                y += fm.height();
            }
        } else if (!text.isEmpty()) {
            const QRect zona = r.adjusted(5, 1, -5, -1);
            const QFontMetrics fm(f);
            const QString mostrat = zona.height() >= 2 * fm.height()
                ? text
                : fm.elidedText(text, Qt::ElideRight, zona.width());
            p->drawText(zona, alineacio | Qt::TextWordWrap, mostrat);
        }

        p->setPen(colorLinia(pal));
        p->drawLine(r.topRight(), r.bottomRight());
        p->drawLine(r.bottomLeft(), r.bottomRight());
        p->restore();
    }

private:
    ControladorAgenda &m_ctl;
};

// ------------------------------------------------------------------ header row and column

class CapcaleraAgenda : public QHeaderView {
public:
    CapcaleraAgenda(Qt::Orientation o, AgendaGridWidget *graella, const ControladorAgenda &ctl)
        : QHeaderView(o, graella), m_graella(graella), m_ctl(ctl)
    {
        setSectionsClickable(false);
        setHighlightSections(false);
    }

protected:
    void paintSection(QPainter *p, const QRect &rect, int seccio) const override
    {
        if (!rect.isValid() || !model())
            return;
        p->save();
        const QVariant vb = model()->headerData(seccio, orientation(), Qt::BackgroundRole);
        QColor fons = colorCapcalera(palette());
        if (vb.canConvert<QBrush>() && vb.value<QBrush>().style() != Qt::NoBrush)
            fons = vb.value<QBrush>().color();
        p->fillRect(rect, fons);
        QFont f = font();
        const QVariant vf = model()->headerData(seccio, orientation(), Qt::FontRole);
        if (vf.isValid())
            f = vf.value<QFont>();
        p->setFont(f);
        if (orientation() == Qt::Horizontal && m_ctl.model().vista() == VistaAgenda::Dia) {
            // The day view's columns belong to resources: a strip in the resource's colour.
            const QColor c = colorColumna(seccio);
            if (c.isValid())
                p->fillRect(QRect(rect.left() + 1, rect.bottom() - 3, rect.width() - 2, 3), c);
        }
        const QVariant va = model()->headerData(seccio, orientation(), Qt::TextAlignmentRole);
        const int alineacio = va.isValid() ? va.toInt() : int(Qt::AlignCenter);
        p->setPen(ModelTaulaAgenda::colorText(fons));
        const QString text = model()->headerData(seccio, orientation(), Qt::DisplayRole).toString();
        const QRect zona = rect.adjusted(4, 2, -4, -2);
        p->drawText(zona, alineacio, QFontMetrics(f).elidedText(text, Qt::ElideRight, zona.width()));
        p->setPen(colorLinia(palette()).darker(115));
        p->drawLine(rect.topRight(), rect.bottomRight());
        p->drawLine(rect.bottomLeft(), rect.bottomRight());
        p->restore();
    }

    QSize sizeHint() const override
    {
        QSize s = QHeaderView::sizeHint();
        if (orientation() == Qt::Horizontal)
            s.setHeight(fontMetrics().height() + 10);
        return s;
    }

    void mousePressEvent(QMouseEvent *e) override
    {
        const int seccio = logicalIndexAt(e->position().toPoint());
        if (seccio < 0)
            return;
        if (orientation() == Qt::Horizontal)
            m_graella->premCapcalera(0, seccio + 1, e->button());
        else
            m_graella->premCapcalera(seccio + 1, 0, e->button());
    }
    void mouseMoveEvent(QMouseEvent *) override {}
    void mouseReleaseEvent(QMouseEvent *) override {}
    void mouseDoubleClickEvent(QMouseEvent *) override { m_graella->dobleClicCapcalera(); }

private:
    QColor colorColumna(int seccio) const
    {
        const QAbstractItemModel *m = model();
        for (int r = 0; r < m->rowCount(); ++r) {
            const qint32 c = m->index(r, seccio).data(ModelTaulaAgenda::RolFons).toInt();
            if (c != SenseColor && c != ColorFinestra)
                return ModelTaulaAgenda::colorQt(c);
        }
        return QColor();
    }

    AgendaGridWidget *m_graella;
    const ControladorAgenda &m_ctl;
};

} // namespace

QPixmap imatgeArrossegament(const QString &nom, const QSize &mida, const QColor &fons, const QFont &font)
{
    const qreal dpr = qApp ? qApp->devicePixelRatio() : 1.0;
    QPixmap px(mida * dpr);
    px.setDevicePixelRatio(dpr);
    px.fill(Qt::transparent);
    QPainter p(&px);
    p.setRenderHint(QPainter::Antialiasing, true);
    QColor c = fons.isValid() ? fons : QColor(0xF0, 0xF0, 0xF0);
    c.setAlpha(215);
    const QRectF r = QRectF(QPointF(0, 0), QSizeF(mida)).adjusted(0.5, 0.5, -0.5, -0.5);
    p.setBrush(c);
    p.setPen(QPen(c.darker(150), 1));
    p.drawRoundedRect(r, 4, 4);
    p.setFont(font);
    p.setPen(ModelTaulaAgenda::colorText(c));
    p.drawText(r.adjusted(4, 2, -4, -2), Qt::AlignCenter | Qt::TextWordWrap, nom);
    return px;
}

AgendaGridWidget::AgendaGridWidget(ControladorAgenda &ctl, QWidget *parent)
    : QTableView(parent), m_ctl(ctl), m_taula(new ModelTaulaAgenda(ctl.model(), this))
{
    setObjectName(QStringLiteral("AgendaGrid"));
    setHorizontalHeader(new CapcaleraAgenda(Qt::Horizontal, this, ctl));
    setVerticalHeader(new CapcaleraAgenda(Qt::Vertical, this, ctl));
    setModel(m_taula);
    setItemDelegate(new DelegatAgenda(ctl, this));
    setShowGrid(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setDragEnabled(false);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    setDropIndicatorShown(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setWordWrap(true);
    setCornerButtonEnabled(true);
    verticalHeader()->setMinimumSectionSize(8);
    horizontalHeader()->setMinimumSectionSize(20);
    const auto botons = findChildren<QAbstractButton *>(QString(), Qt::FindDirectChildrenOnly);
    if (!botons.isEmpty()) {
        m_cantonada = botons.first();
        m_cantonada->installEventFilter(this);
    }
}

// ------------------------------------------------------------------ shape

void AgendaGridWidget::refresca()
{
    const int h = horizontalScrollBar()->value();
    const int v = verticalScrollBar()->value();
    m_sincronitzant = true;
    m_taula->refresca();
    aplicaFusions();
    ajustaMides();
    updateGeometries();
    const ModelAgenda &m = m_ctl.model();
    const QString periode = nomVista(m.vista()) + QLatin1Char(' ')
        + (m.vista() == VistaAgenda::Dia ? m.estat().DiaActual : m.vista() == VistaAgenda::Setmana ? m.estat().IniciSetmana
                                                                                                   : m.estat().IniciMes)
              .toString(Qt::ISODate);
    const QModelIndex actual = m_taula->index(m_ctl.filaActual() - 1, m_ctl.columnaActual() - 1);
    if (actual.isValid())
        setCurrentIndex(actual);
    if (periode == m_periode) {
        // The same period redrawn after a change: the user keeps the place he was looking at.
        horizontalScrollBar()->setValue(h);
        verticalScrollBar()->setValue(v);
    } else {
        // A new period opens at its first job (the small hours are usually empty).
        m_periode = periode;
        horizontalScrollBar()->setValue(0);
        int primera = -1;
        for (int r = 1; r < m.files() && primera < 0 && m.vista() != VistaAgenda::Mes; ++r) {
            for (int c = 1; c < m.columnes(); ++c) {
                if (!m.text(r, c).isEmpty()) {
                    primera = r;
                    break;
                }
            }
        }
        verticalScrollBar()->setValue(primera > 0 ? verticalHeader()->sectionPosition(qMax(0, primera - 2)) : 0);
    }
    m_sincronitzant = false;
    if (m_cantonada)
        m_cantonada->update();
    viewport()->update();
}

void AgendaGridWidget::aplicaFusions()
{
    clearSpans();
    const ModelAgenda &m = m_ctl.model();
    if (m.vista() == VistaAgenda::Mes)
        return;
    for (int c = 1; c < m.columnes(); ++c) {
        for (int r = 1; r < m.files(); ++r) {
            const int n = m.cella(r, c).filesFusionades;
            if (n > 1)
                setSpan(r - 1, c - 1, n, 1);
        }
    }
}

void AgendaGridWidget::ajustaMides()
{
    const ModelAgenda &m = m_ctl.model();
    if (m.files() == 0)
        return;
    const VistaAgenda vista = m.vista();
    const QFontMetrics fm(font());

    // The header column: as wide as the view asks for, and never narrower than its labels.
    int ample = vista == VistaAgenda::Dia ? 87 : vista == VistaAgenda::Setmana ? 60 : 44;
    for (int r = 0; r < m.files(); ++r)
        ample = qMax(ample, fm.horizontalAdvance(m.text(r, 0)) + 14);
    QFont fc = font();
    fc.setBold(true);
    ample = qMax(ample, QFontMetrics(fc).horizontalAdvance(m.text(0, 0)) + 14);
    verticalHeader()->setFixedWidth(ample);

    // Columns share the width; the day view scrolls sideways rather than squeeze many columns.
    const int columnes = m.columnes() - 1;
    const int minAmple = vista == VistaAgenda::Dia ? 96 : 64;
    const int disponible = viewport()->width();
    if (columnes * minAmple <= disponible) {
        horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    } else {
        horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        for (int c = 0; c < columnes; ++c)
            horizontalHeader()->resizeSection(c, minAmple);
    }

    // Rows share the height down to a readable minimum, then the grid scrolls.
    const int files = m.files() - 1;
    const int minAlt = vista == VistaAgenda::Mes ? fm.height() * 3 + 8 : fm.height() + 3;
    if (files * minAlt <= viewport()->height()) {
        verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    } else {
        verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        verticalHeader()->setDefaultSectionSize(minAlt);
        for (int r = 0; r < files; ++r)
            verticalHeader()->resizeSection(r, minAlt);
    }
}

void AgendaGridWidget::resizeEvent(QResizeEvent *e)
{
    QTableView::resizeEvent(e);
    ajustaMides();
}

QPoint AgendaGridWidget::cellaA(const QPoint &pos) const
{
    const int r = rowAt(pos.y());
    const int c = columnAt(pos.x());
    if (r < 0 || c < 0)
        return QPoint(-1, -1);
    return QPoint(c + 1, r + 1);
}

QRect AgendaGridWidget::rectCella(int fila, int col) const
{
    return QRect(columnViewportPosition(col - 1), rowViewportPosition(fila - 1), columnWidth(col - 1),
                 rowHeight(fila - 1));
}

// ------------------------------------------------------------------ mouse

void AgendaGridWidget::mousePressEvent(QMouseEvent *e)
{
    setFocus(Qt::MouseFocusReason);
    m_posPremuda = e->position().toPoint();
    m_cellaPremuda = cellaA(m_posPremuda);
    m_arrossegat = false;
    if (m_cellaPremuda.x() < 0) {
        m_caption.clear();
        m_ctl.premGraella(-1, -1, e->button() == Qt::LeftButton);
        return;
    }
    m_sincronitzant = true;
    setCurrentIndex(m_taula->index(m_cellaPremuda.y() - 1, m_cellaPremuda.x() - 1));
    m_sincronitzant = false;
    m_caption = m_ctl.premGraella(m_cellaPremuda.y(), m_cellaPremuda.x(), e->button() == Qt::LeftButton);
    viewport()->update(); // the selected job's outline moves
}

bool AgendaGridWidget::ressaltada(int fila, int col) const
{
    return esFeinaSeleccionada(m_ctl, m_taula->index(fila - 1, col - 1));
}

void AgendaGridWidget::premCapcalera(int fila, int col, Qt::MouseButton boto)
{
    setFocus(Qt::MouseFocusReason);
    m_caption.clear();
    m_arrossegat = false;
    m_cellaPremuda = QPoint(col, fila);
    m_ctl.premGraella(fila, col, boto == Qt::LeftButton);
}

void AgendaGridWidget::dobleClicCapcalera()
{
    m_caption.clear();
    m_ctl.dobleClic();
}

void AgendaGridWidget::mouseMoveEvent(QMouseEvent *e)
{
    if (!(e->buttons() & Qt::LeftButton) || m_caption.isEmpty())
        return;
    if ((e->position().toPoint() - m_posPremuda).manhattanLength() < QApplication::startDragDistance())
        return;
    iniciaArrossegament();
}

void AgendaGridWidget::iniciaArrossegament()
{
    const QString caption = m_caption;
    m_caption.clear();
    m_arrossegat = true;
    const Feina &f = m_ctl.FeinaSeleccionada;
    // The floating label covers the job's cells: one column wide, as tall as its slots.
    const int fila = m_ctl.model().filaBloc(m_cellaPremuda.y(), m_cellaPremuda.x());
    const QRect primera = rectCella(fila, m_cellaPremuda.x());
    const int alt = qBound(primera.height(), primera.height() * m_ctl.cellesFeina(f), 360);
    const QSize mida(qMax(80, primera.width()), alt);
    const qint32 fons = m_ctl.model().cella(m_cellaPremuda.y(), m_cellaPremuda.x()).fons;

    auto *mime = new QMimeData;
    mime->setData(QString::fromLatin1(arrossegament::TipusMime), caption.toUtf8());
    mime->setText(caption.mid(1));
    auto *drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setPixmap(imatgeArrossegament(caption.mid(1), mida, ModelTaulaAgenda::colorQt(fons), font()));
    const QPoint punt = m_posPremuda - primera.topLeft();
    drag->setHotSpot(QPoint(qBound(0, punt.x(), mida.width() - 1), qBound(0, punt.y(), mida.height() - 1)));
    drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
}

void AgendaGridWidget::mouseReleaseEvent(QMouseEvent *e)
{
    m_caption.clear();
    if (m_arrossegat || e->button() != Qt::LeftButton)
        return;
    const QPoint cella = cellaA(e->position().toPoint());
    if (cella.x() >= 0 && cella == m_cellaPremuda)
        m_ctl.clic(cella.y(), cella.x());
}

void AgendaGridWidget::mouseDoubleClickEvent(QMouseEvent *e)
{
    Q_UNUSED(e);
    m_caption.clear();
    m_arrossegat = true; // the release that follows is not a click
    m_ctl.dobleClic();
}

// ------------------------------------------------------------------ keys and focus

void AgendaGridWidget::keyPressEvent(QKeyEvent *e)
{
    int codi = 0;
    switch (e->key()) {
    case Qt::Key_Delete:
        codi = ControladorAgenda::TeclaSuprimir;
        break;
    case Qt::Key_Space:
        codi = ControladorAgenda::TeclaEspai;
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        codi = ControladorAgenda::TeclaIntro;
        break;
    default:
        QTableView::keyPressEvent(e);
        return;
    }
    e->accept();
    sincronitzaCellaActual();
    m_ctl.tecla(codi);
}

void AgendaGridWidget::currentChanged(const QModelIndex &actual, const QModelIndex &anterior)
{
    QTableView::currentChanged(actual, anterior);
    if (!m_sincronitzant && actual.isValid())
        m_ctl.setCellaActual(actual.row() + 1, actual.column() + 1);
}

void AgendaGridWidget::sincronitzaCellaActual()
{
    // The controller keeps the exact slot pressed inside a merged block; the view only knows
    // the block. Keep the controller's cell unless the view moved elsewhere.
    const QModelIndex i = currentIndex();
    if (!i.isValid())
        return;
    const int fila = m_ctl.filaActual();
    const int col = m_ctl.columnaActual();
    const int blocInici = m_ctl.model().filaBloc(fila, col);
    if (col - 1 == i.column() && blocInici - 1 <= i.row() && i.row() <= fila - 1)
        return;
    m_ctl.setCellaActual(i.row() + 1, i.column() + 1);
}

void AgendaGridWidget::focusOutEvent(QFocusEvent *e)
{
    QTableView::focusOutEvent(e);
    m_ctl.perdFocus();
}

// ------------------------------------------------------------------ drops

void AgendaGridWidget::dragEnterEvent(QDragEnterEvent *e)
{
    if (e->mimeData()->hasFormat(QString::fromLatin1(arrossegament::TipusMime)))
        e->acceptProposedAction();
    else
        e->ignore();
}

void AgendaGridWidget::dragMoveEvent(QDragMoveEvent *e)
{
    if (!e->mimeData()->hasFormat(QString::fromLatin1(arrossegament::TipusMime))) {
        e->ignore();
        return;
    }
    const QPoint cella = cellaA(e->position().toPoint());
    if (cella != m_desti) {
        m_desti = cella;
        viewport()->update();
    }
    if (cella.x() < 0 || m_ctl.model().vista() == VistaAgenda::Mes)
        e->ignore();
    else
        e->acceptProposedAction();
}

void AgendaGridWidget::dragLeaveEvent(QDragLeaveEvent *e)
{
    Q_UNUSED(e);
    m_desti = QPoint(-1, -1);
    viewport()->update();
}

void AgendaGridWidget::dropEvent(QDropEvent *e)
{
    m_desti = QPoint(-1, -1);
    viewport()->update();
    const QByteArray dades = e->mimeData()->data(QString::fromLatin1(arrossegament::TipusMime));
    const QPoint cella = cellaA(e->position().toPoint());
    if (dades.isEmpty() || cella.x() < 0) {
        e->ignore();
        return;
    }
    e->setDropAction(Qt::MoveAction);
    e->accept();
    // The drop may ask or tell the user something: do it once the drag has fully ended.
    const QString caption = QString::fromUtf8(dades);
    QMetaObject::invokeMethod(
        this, [this, cella, caption] { m_ctl.deixa(cella.y(), cella.x(), caption); }, Qt::QueuedConnection);
}

void AgendaGridWidget::paintEvent(QPaintEvent *e)
{
    QTableView::paintEvent(e);
    if (m_desti.x() < 0)
        return;
    QPainter p(viewport());
    QColor c = palette().color(QPalette::Highlight);
    p.setPen(QPen(c, 2, Qt::DashLine));
    c.setAlpha(40);
    p.setBrush(c);
    p.drawRect(rectCella(m_desti.y(), m_desti.x()).adjusted(1, 1, -1, -1));
}

// ------------------------------------------------------------------ the corner cell

bool AgendaGridWidget::eventFilter(QObject *o, QEvent *e)
{
    if (o != m_cantonada)
        return QTableView::eventFilter(o, e);
    switch (e->type()) {
    case QEvent::Paint:
        paintCantonada(m_cantonada);
        return true;
    case QEvent::MouseButtonPress:
        premCapcalera(0, 0, static_cast<QMouseEvent *>(e)->button());
        return true;
    case QEvent::MouseButtonDblClick:
        dobleClicCapcalera();
        return true;
    case QEvent::MouseButtonRelease:
        return true;
    default:
        return false;
    }
}

void AgendaGridWidget::paintCantonada(QAbstractButton *b)
{
    QPainter p(b);
    const QRect r = b->rect();
    p.fillRect(r, colorCapcalera(palette()).darker(104));
    const ModelAgenda &m = m_ctl.model();
    if (m.files() > 0) {
        QFont f = font();
        f.setBold(m.cella(0, 0).negreta);
        p.setFont(f);
        p.setPen(palette().color(QPalette::ButtonText));
        p.drawText(r.adjusted(3, 1, -3, -1), Qt::AlignCenter,
                   QFontMetrics(f).elidedText(m.text(0, 0), Qt::ElideRight, r.width() - 6));
    }
    p.setPen(colorLinia(palette()).darker(115));
    p.drawLine(r.topRight(), r.bottomRight());
    p.drawLine(r.bottomLeft(), r.bottomRight());
}
