#include "agenda_page.h"

#include "agenda_grid_widget.h"
#include "agenda_llista_widget.h"
#include "agenda_llistes.h"
#include "calendari_widget.h"
#include "editor_hores_widget.h"
#include "hores_extres_editor.h"
#include "frm_feines_dialog.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QButtonGroup>
#include <QCursor>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTableWidget>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

namespace {

QToolButton *botoVista(const QString &text, const QString &nom, QWidget *pare)
{
    auto *b = new QToolButton(pare);
    b->setObjectName(nom);
    b->setText(text);
    b->setCheckable(true);
    b->setAutoRaise(false);
    b->setToolButtonStyle(Qt::ToolButtonTextOnly);
    b->setMinimumWidth(72);
    return b;
}

QString capitalitza(const QString &t)
{
    return t.isEmpty() ? t : t.left(1).toUpper() + t.mid(1);
}

QLabel *titolLlista(const QString &text, QWidget *pare)
{
    auto *l = new QLabel(text, pare);
    QFont f = l->font();
    f.setBold(true);
    l->setFont(f);
    return l;
}

} // namespace

AgendaPage::AgendaPage(Sessio &sessio, Interaccio &ui, QWidget *parent)
    : QWidget(parent), m_sessio(sessio),
      m_ctl(std::make_unique<ControladorAgenda>(sessio.db(), sessio.cfg(), ui))
{
    setObjectName(QStringLiteral("AgendaPage"));
    m_ctl->setIndicadors(&sessio.RefrescarAgenda, &sessio.RefrescarFacturacio);
    m_ctl->setPilaDesfer(&sessio.Desfer);

    AgendaGrid = new AgendaGridWidget(*m_ctl, this);

    HoresGrid = new QTableWidget(1, 0, this);
    HoresGrid->setObjectName(QStringLiteral("HoresGrid"));
    HoresGrid->horizontalHeader()->hide();
    HoresGrid->setVerticalHeaderLabels({Tradueix("Hores extra")});
    {
        QFont f = HoresGrid->verticalHeader()->font();
        f.setBold(true);
        HoresGrid->verticalHeader()->setFont(f);
    }
    HoresGrid->verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    HoresGrid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    HoresGrid->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
    HoresGrid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    HoresGrid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    HoresGrid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    HoresGrid->setSelectionMode(QAbstractItemView::SingleSelection);
    HoresGrid->setFixedHeight(HoresGrid->verticalHeader()->defaultSectionSize() + 2 * HoresGrid->frameWidth());
    HoresGrid->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);

    CalendariML = new CalendariWidget(sessio.cfg().PrimerDiaSetmana, this);
    LlocsGrid = new LlistaAgendaWidget(*m_ctl, QLatin1Char('L'), this);
    RecursosGrid = new LlistaAgendaWidget(*m_ctl, QLatin1Char('R'), this);

    VistaDia = botoVista(Tradueix("Dia"), QStringLiteral("VistaDia"), this);
    VistaSetmana = botoVista(Tradueix("Setmana"), QStringLiteral("VistaSetmana"), this);
    VistaMes = botoVista(Tradueix("Mes"), QStringLiteral("VistaMes"), this);
    VistaDia->setToolTip(QStringLiteral("Ctrl+1"));
    VistaSetmana->setToolTip(QStringLiteral("Ctrl+2"));
    VistaMes->setToolTip(QStringLiteral("Ctrl+3"));
    auto *grup = new QButtonGroup(this);
    grup->setExclusive(true);
    grup->addButton(VistaDia);
    grup->addButton(VistaSetmana);
    grup->addButton(VistaMes);

    PeriodeAnterior = new QToolButton(this);
    PeriodeAnterior->setObjectName(QStringLiteral("PeriodeAnterior"));
    PeriodeAnterior->setArrowType(Qt::LeftArrow);
    PeriodeAnterior->setToolTip(Tradueix("Període anterior") + QStringLiteral(" (Alt+←)"));
    PeriodeSeguent = new QToolButton(this);
    PeriodeSeguent->setObjectName(QStringLiteral("PeriodeSeguent"));
    PeriodeSeguent->setArrowType(Qt::RightArrow);
    PeriodeSeguent->setToolTip(Tradueix("Període següent") + QStringLiteral(" (Alt+→)"));
    Avui = new QToolButton(this);
    Avui->setObjectName(QStringLiteral("Avui"));
    Avui->setText(Tradueix("Avui"));
    TitolPeriode = new QLabel(this);
    TitolPeriode->setObjectName(QStringLiteral("TitolPeriode"));
    {
        QFont f = TitolPeriode->font();
        f.setBold(true);
        f.setPointSizeF(f.pointSizeF() * 1.3);
        TitolPeriode->setFont(f);
    }
    ImprimirFeines = new QPushButton(Tradueix("Imprimir feines"), this);
    ImprimirFeines->setObjectName(QStringLiteral("ImprimirFeines"));
    ImprimirFeines->setEnabled(false);
    ImprimirAgenda = new QPushButton(Tradueix("Imprimir agenda"), this);
    ImprimirAgenda->setObjectName(QStringLiteral("ImprimirAgenda"));

    auto *barra = new QHBoxLayout;
    barra->setSpacing(4);
    barra->addWidget(PeriodeAnterior);
    barra->addWidget(Avui);
    barra->addWidget(PeriodeSeguent);
    barra->addSpacing(10);
    barra->addWidget(TitolPeriode, 1);
    barra->addWidget(VistaDia);
    barra->addWidget(VistaSetmana);
    barra->addWidget(VistaMes);
    barra->addSpacing(16);
    barra->addWidget(ImprimirFeines);
    barra->addWidget(ImprimirAgenda);

    auto *esquerra = new QVBoxLayout;
    esquerra->setSpacing(0);
    esquerra->addLayout(barra);
    esquerra->addSpacing(6);
    esquerra->addWidget(AgendaGrid, 1);
    esquerra->addWidget(HoresGrid);

    auto *dreta = new QVBoxLayout;
    dreta->setSpacing(4);
    dreta->addWidget(CalendariML);
    dreta->addSpacing(6);
    dreta->addWidget(titolLlista(Tradueix("Llocs"), this));
    dreta->addWidget(LlocsGrid, 3);
    dreta->addSpacing(4);
    dreta->addWidget(titolLlista(Tradueix("Recursos"), this));
    dreta->addWidget(RecursosGrid, 2);
    auto *panell = new QWidget(this);
    panell->setLayout(dreta);
    panell->setFixedWidth(250);
    dreta->setContentsMargins(0, 0, 0, 0);

    auto *l = new QHBoxLayout(this);
    l->setContentsMargins(8, 8, 8, 8);
    l->setSpacing(10);
    l->addLayout(esquerra, 1);
    l->addWidget(panell);

    // The overtime row follows the grid's columns and its sideways scrolling.
    connect(AgendaGrid->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int col, int, int nou) {
                if (col < HoresGrid->columnCount())
                    HoresGrid->setColumnWidth(col, nou);
            });
    connect(AgendaGrid->horizontalScrollBar(), &QScrollBar::valueChanged, HoresGrid->horizontalScrollBar(),
            &QScrollBar::setValue);

    connect(CalendariML, &CalendariWidget::dataTriada, this, [this](const QDate &d) { m_ctl->Canvi_Data_Calendari(d); });
    connect(VistaDia, &QToolButton::clicked, this, [this] { m_ctl->canviaVista(VistaAgenda::Dia); });
    connect(VistaSetmana, &QToolButton::clicked, this, [this] { m_ctl->canviaVista(VistaAgenda::Setmana); });
    connect(VistaMes, &QToolButton::clicked, this, [this] { m_ctl->canviaVista(VistaAgenda::Mes); });
    connect(PeriodeAnterior, &QToolButton::clicked, this, [this] { m_ctl->mouPeriode(-1); });
    connect(PeriodeSeguent, &QToolButton::clicked, this, [this] { m_ctl->mouPeriode(1); });
    connect(Avui, &QToolButton::clicked, this, [this] { m_ctl->vesAAvui(); });
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_1), this), &QShortcut::activated, VistaDia, &QToolButton::click);
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_2), this), &QShortcut::activated, VistaSetmana, &QToolButton::click);
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_3), this), &QShortcut::activated, VistaMes, &QToolButton::click);
    connect(new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Left), this), &QShortcut::activated, PeriodeAnterior, &QToolButton::click);
    connect(new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Right), this), &QShortcut::activated, PeriodeSeguent, &QToolButton::click);
    connect(ImprimirFeines, &QPushButton::clicked, this, [this] {
        emit imprimeixFeines(m_ctl->recursImprimir());
        m_ctl->imprimirFeinesFet();
        actualitzaBotons();
    });
    connect(ImprimirAgenda, &QPushButton::clicked, this, &AgendaPage::imprimeixAgenda);
    connect(LlocsGrid, &LlistaAgendaWidget::dobleClicNom, this, &AgendaPage::obreLloc);
    connect(RecursosGrid, &LlistaAgendaWidget::dobleClicNom, this, &AgendaPage::obreRecurs);
    RecursosGrid->alPremer = [this] { actualitzaBotons(); };

    m_ctl->alReconstruir = [this] { alReconstruir(); };
    m_ctl->alCanviarCalendari = [this](const QDate &d) { CalendariML->setDataSeleccionada(d); };
    m_ctl->enfocaGraella = [this] {
        AgendaGrid->refresca();
        if (isVisible())
            AgendaGrid->setFocus(Qt::OtherFocusReason);
    };
    m_ctl->mostraIndicacio = [this](const QString &t, const QString &x) { mostraIndicacio(t, x); };
    instalaEditorFeines(*m_ctl, sessio, ui, this, [this](const EditorFeina &editor, QWidget *finestra) {
        emit imprimeixDetallFeina(editor, finestra);
    });
    // An overtime value being typed is stored before the grid changes under it (a period or view
    // button, their shortcuts, the calendar, a drop...).
    auto *editorHores = new EditorHoresWidget(HoresGrid, sessio.db(), sessio.cfg(), m_ctl->model(), ui, 1);
    editorHores->editor().setPilaDesfer(&sessio.Desfer);
    m_ctl->abansDeReconstruir = [editorHores] { editorHores->confirma(); };

    CalendariML->setDataSeleccionada(m_ctl->estat().DataCalendari);
    recarregaLlistes();
    m_ctl->Construeix_Agenda();
    m_ctl->seleccionaDiaActual();
}

AgendaPage::~AgendaPage()
{
    // The child widgets talk to the controller up to their last event (a focus change while they
    // are hidden): they go first, while it still exists.
    m_ctl->abansDeReconstruir = nullptr;
    m_ctl->alReconstruir = nullptr;
    m_ctl->enfocaGraella = nullptr;
    m_ctl->alCanviarCalendari = nullptr;
    m_ctl->mostraIndicacio = nullptr;
    qDeleteAll(findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly));
}

void AgendaPage::reconstrueix()
{
    recarregaLlistes();
    m_ctl->Construeix_Agenda();
}

void AgendaPage::recarregaLlistes()
{
    try {
        const int filaLloc = LlocsGrid->currentRow();
        LlocsGrid->posaLlocs(llistaLlocsAgenda(m_sessio.db()));
        RecursosGrid->posaRecursos(llistaRecursosAgenda(m_sessio.db()));
        if (filaLloc >= 0 && filaLloc < LlocsGrid->rowCount())
            LlocsGrid->setCurrentCell(filaLloc, 0);
    } catch (const DbError &) {
        // The lists keep what they had; the next rebuild tries again.
    }
}

void AgendaPage::showEvent(QShowEvent *e)
{
    QWidget::showEvent(e);
    recarregaLlistes();
}

void AgendaPage::alReconstruir()
{
    AgendaGrid->refresca();
    const EstatAgenda &e = m_ctl->estat();
    const bool dia = e.vista == VistaAgenda::Dia;
    HoresGrid->setVisible(dia);
    actualitzaHores();

    // The drag sources say what they allow in this view.
    const bool mes = e.vista == VistaAgenda::Mes;
    LlocsGrid->setToolTip(mes ? Tradueix("Fés DblClick") : Tradueix("Fés DblClick o arrossega"));
    RecursosGrid->setToolTip(mes ? Tradueix("Fés Click o DblClick") : Tradueix("Fés Click, DblClick o arrossega"));

    switch (e.vista) {
    case VistaAgenda::Dia:
        TitolPeriode->setText(capitalitza(format::nomDia(format::diaSetmana(e.DiaActual))) + QStringLiteral(", ")
                              + format::dataCurta(e.DiaActual));
        VistaDia->setChecked(true);
        break;
    case VistaAgenda::Setmana:
        TitolPeriode->setText(format::dataCurta(e.IniciSetmana) + QStringLiteral(" – ")
                              + format::dataCurta(e.IniciSetmana.addDays(6)));
        VistaSetmana->setChecked(true);
        break;
    case VistaAgenda::Mes:
        TitolPeriode->setText(capitalitza(format::nomMes(e.DiaActual.month())) + QLatin1Char(' ')
                              + QString::number(e.DiaActual.year()));
        VistaMes->setChecked(true);
        break;
    }
    if (CalendariML->dataSeleccionada() != e.DataCalendari)
        CalendariML->setDataSeleccionada(e.DataCalendari);
    actualitzaBotons();
}

void AgendaPage::actualitzaHores()
{
    const ModelAgenda &m = m_ctl->model();
    if (m.vista() != VistaAgenda::Dia) {
        HoresGrid->setColumnCount(0);
        return;
    }
    const int columnes = m.columnes() - 1;
    HoresGrid->setColumnCount(columnes);
    HoresGrid->verticalHeader()->setFixedWidth(AgendaGrid->verticalHeader()->width());
    for (int c = 0; c < columnes; ++c) {
        auto *item = new QTableWidgetItem(m.textHores(c + 1));
        item->setTextAlignment(Qt::AlignCenter);
        HoresGrid->setItem(0, c, item);
        HoresGrid->setColumnWidth(c, AgendaGrid->columnWidth(c));
    }
    HoresGrid->horizontalScrollBar()->setValue(AgendaGrid->horizontalScrollBar()->value());
}

void AgendaPage::actualitzaBotons()
{
    ImprimirFeines->setEnabled(m_ctl->imprimirFeinesActiu());
}

void AgendaPage::mostraIndicacio(const QString &titol, const QString &text)
{
    QString cos = text.toHtmlEscaped();
    cos.replace(QStringLiteral("\r\n"), QStringLiteral("<br>"));
    QToolTip::showText(QCursor::pos(), QStringLiteral("<b>") + titol.toHtmlEscaped() + QStringLiteral("</b><br>") + cos,
                       AgendaGrid);
}
