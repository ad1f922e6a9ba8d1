#include "editor_hores_widget.h"

#include "hores_extres_editor.h"

#include "core/db.h"
#include "core/interaccio.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>

EditorHoresWidget::EditorHoresWidget(QTableView *horesGrid, EditorHores &editor, Interaccio &ui, int desplacament,
                                     std::function<void(int, const QString &)> posaText)
    : QObject(horesGrid), m_grid(horesGrid), m_editor(editor), m_ui(ui), m_desplacament(desplacament),
      m_posaText(std::move(posaText))
{
    m_text1 = new QLineEdit(horesGrid->viewport());
    m_text1->setObjectName(QStringLiteral("Text1"));
    m_text1->setAlignment(Qt::AlignCenter);
    m_text1->hide();
    m_text1->installEventFilter(this);
    horesGrid->installEventFilter(this);

    if (!m_posaText) {
        m_posaText = [this](int col, const QString &text) {
            if (!m_grid || !m_grid->model())
                return;
            QAbstractItemModel *m = m_grid->model();
            const QModelIndex i = m->index(0, col);
            m->setData(i, text, Qt::DisplayRole);
            m->setData(i, int(Qt::AlignCenter), Qt::TextAlignmentRole);
        };
    }
    connect(horesGrid, &QAbstractItemView::clicked, this, [this](const QModelIndex &) { obre(true); });
    // The row leaving its current cell is a commit point too.
    if (horesGrid->selectionModel()) {
        connect(horesGrid->selectionModel(), &QItemSelectionModel::currentChanged, this,
                [this](const QModelIndex &, const QModelIndex &) { confirma(); });
    }
}

EditorHoresWidget::EditorHoresWidget(QTableView *horesGrid, Db &db, const Configuracio &cfg, const ModelAgenda &model,
                                     Interaccio &ui, int desplacament)
    : EditorHoresWidget(horesGrid, *new EditorHores(db, cfg, model), ui, desplacament)
{
    m_propi.reset(&m_editor);
}

EditorHoresWidget::~EditorHoresWidget() = default;

int EditorHoresWidget::columnaActual() const
{
    if (!m_grid || !m_grid->currentIndex().isValid())
        return -1;
    return m_grid->currentIndex().column() + m_desplacament;
}

bool EditorHoresWidget::obre(bool perClic, const QString &teclejat)
{
    if (!m_grid || !m_grid->model())
        return false;
    const int col = columnaActual();
    if (!m_editor.obre(col, perClic, teclejat))
        return false;
    const QModelIndex i = m_grid->model()->index(0, col - m_desplacament);
    m_text1->setGeometry(m_grid->visualRect(i));
    QFont f = m_text1->font();
    f.setPointSizeF(m_grid->font().pointSizeF());
    m_text1->setFont(f);
    m_text1->setText(m_editor.text());
    m_text1->show();
    m_text1->setFocus(Qt::OtherFocusReason);
    if (m_editor.seleccionat())
        m_text1->selectAll();
    else
        m_text1->end(false);
    return true;
}

void EditorHoresWidget::confirma()
{
    if (!m_editor.visible() || m_confirmant)
        return;
    m_confirmant = true;
    const int col = m_editor.columna();
    m_editor.setText(m_text1->text());
    try {
        const QString text = m_editor.confirma();
        m_posaText(col - m_desplacament, text);
    } catch (const DbError &e) {
        m_ui.error(QStringLiteral("ERROR"), QStringLiteral("Error:") + e.text());
    }
    amaga();
    m_confirmant = false;
}

void EditorHoresWidget::amaga()
{
    // Hiding the box while it has the focus would hand the focus on along the chain, and the
    // table would take that as a move to its next cell.
    if (m_text1->hasFocus() && m_grid)
        m_grid->setFocus(Qt::OtherFocusReason);
    m_text1->hide();
}

void EditorHoresWidget::mouCapA(int col)
{
    const int c = col - m_desplacament;
    if (!m_grid || !m_grid->model() || c < 0 || c >= m_grid->model()->columnCount())
        return;
    m_grid->setCurrentIndex(m_grid->model()->index(0, c));
}

bool EditorHoresWidget::eventFilter(QObject *obj, QEvent *event)
{
    if (obj == m_text1) {
        if (event->type() == QEvent::FocusOut) {
            confirma();
        } else if (event->type() == QEvent::KeyPress) {
            const int tecla = static_cast<QKeyEvent *>(event)->key();
            const int col = m_editor.columna();
            switch (tecla) {
            case Qt::Key_Escape:
                m_editor.cancela();
                amaga();
                return true;
            case Qt::Key_Return:
            case Qt::Key_Enter:
            case Qt::Key_Right:
                // Handing the focus back to the row is what stores the value.
                if (m_grid)
                    m_grid->setFocus(Qt::OtherFocusReason);
                confirma();
                mouCapA(col + 1);
                return true;
            case Qt::Key_Left:
                confirma();
                if (col > 1)
                    mouCapA(col - 1);
                return true;
            default:
                break;
            }
        }
    } else if (obj == m_grid && event->type() == QEvent::KeyPress) {
        auto *k = static_cast<QKeyEvent *>(event);
        if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
            obre(false);
            return true;
        }
        const QString t = k->text();
        if (!t.isEmpty() && t.at(0).unicode() > 32 && !(k->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            if (obre(false, t))
                return true;
        }
    }
    return QObject::eventFilter(obj, event);
}
