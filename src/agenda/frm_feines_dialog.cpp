#include "frm_feines_dialog.h"

#include "agenda_controller.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

// The service list: opening it starts a new line, so the window must hear of the opening itself,
// not only of a choice.
class ComboServeis : public QComboBox {
public:
    using QComboBox::QComboBox;
    std::function<void()> alObrir;

    void showPopup() override
    {
        if (alObrir)
            alObrir();
        QComboBox::showPopup();
    }
};

namespace {

// Column widths of the service lines, in twips as the lines have always been laid out.
constexpr int kAmplesLinies[] = {1790, 5840, 870, 1650, 1100};

int twipsAPixels(const QWidget *w, int twips)
{
    return twips * w->logicalDpiX() / 1440;
}

QLabel *etiqueta(const char *text, QWidget *company)
{
    auto *l = new QLabel(Tradueix(text));
    l->setBuddy(company);
    return l;
}

void seleccionaText(QComboBox *combo, const QString &text)
{
    const QSignalBlocker b(combo);
    combo->setCurrentIndex(text.isEmpty() ? -1 : combo->findText(text, Qt::MatchFixedString));
}

} // namespace

FrmFeinesDialog::FrmFeinesDialog(Db &db, const Configuracio &cfg, MotorFeines &motor, Interaccio &ui, Feina &feina,
                                 QWidget *parent)
    : QDialog(parent), m_editor(db, cfg, motor, ui), m_ui(ui)
{
    setObjectName(QStringLiteral("frmFeines"));
    setWindowTitle(Tradueix("Detall de Feina"));
    m_editor.carrega(feina);
    construeix();
    mostraTot();
}

void FrmFeinesDialog::construeix()
{
    auto crea = [this](auto *w, const char *nom) {
        w->setObjectName(QString::fromLatin1(nom));
        return w;
    };

    // ---- the job
    m_id = crea(new QLineEdit, "IdFeina");
    m_id->setReadOnly(true);
    m_id->setFocusPolicy(Qt::NoFocus);
    m_id->setMaximumWidth(90);
    m_lloc = crea(new QLineEdit, "LlocFeina");
    m_lloc->setReadOnly(true);
    m_lloc->setFocusPolicy(Qt::NoFocus);
    m_data = crea(new QLineEdit, "DataFeina");
    m_data->setMaximumWidth(110);
    m_horaInici = crea(new QComboBox, "HoraIniciFeina");
    m_horaFi = crea(new QComboBox, "HoraFiFeina");
    for (QComboBox *c : {m_horaInici, m_horaFi}) {
        c->setMaxVisibleItems(16);
        c->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        c->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    m_recurs = crea(new QComboBox, "RecursFeina");
    m_recurs->setMinimumContentsLength(18);
    m_recurs->installEventFilter(this);
    m_feta = crea(new QCheckBox, "FetaFeina");
    m_dataFactura = crea(new QLineEdit, "DataFacturaFeina");
    m_dataFactura->setMaximumWidth(110);
    m_observacions = crea(new QPlainTextEdit, "ObservacionsFeina");
    m_observacions->setTabChangesFocus(true);
    m_observacions->setFixedHeight(m_observacions->fontMetrics().lineSpacing() * 3 + 12);

    auto *feina = crea(new QGroupBox(Tradueix("Feina")), "FrameFeina");
    auto *gf = new QGridLayout(feina);
    gf->setHorizontalSpacing(8);
    // Columns: label and field three times, a free gap, then label and field on the right.
    gf->addWidget(etiqueta("Id.:", m_id), 0, 0);
    gf->addWidget(m_id, 0, 1);
    gf->addWidget(etiqueta("Lloc:", m_lloc), 0, 2);
    gf->addWidget(m_lloc, 0, 3, 1, 6);
    gf->addWidget(etiqueta("Data:", m_data), 1, 0);
    gf->addWidget(m_data, 1, 1);
    gf->addWidget(etiqueta("Hora inici:", m_horaInici), 1, 2);
    gf->addWidget(m_horaInici, 1, 3);
    gf->addWidget(etiqueta("Hora fi:", m_horaFi), 1, 4);
    gf->addWidget(m_horaFi, 1, 5);
    gf->addWidget(etiqueta("Feina feta:", m_feta), 1, 7);
    gf->addWidget(m_feta, 1, 8);
    gf->addWidget(etiqueta("Recurs:", m_recurs), 2, 0);
    gf->addWidget(m_recurs, 2, 1, 1, 5);
    gf->addWidget(etiqueta("Data factura:", m_dataFactura), 2, 7);
    gf->addWidget(m_dataFactura, 2, 8);
    auto *etObs = etiqueta("Observacions:", m_observacions);
    etObs->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    gf->addWidget(etObs, 3, 0);
    gf->addWidget(m_observacions, 3, 1, 1, 8);
    gf->setColumnStretch(6, 1);

    // ---- the service lines
    m_serveis = crea(new ComboServeis, "ServeisCombo");
    m_serveis->setMinimumContentsLength(14);
    m_descripcio = crea(new QLineEdit, "DescripcioServeiFeina");
    m_quantitat = crea(new QLineEdit, "QuantitatServeiFeina");
    m_quantitat->setAlignment(Qt::AlignRight);
    m_unitat = crea(new QLineEdit, "UnitatServeiFeina");
    m_preu = crea(new QLineEdit, "PreuServeiFeina");
    m_preu->setAlignment(Qt::AlignRight);
    m_afegir = crea(new QPushButton(Tradueix("Afegir")), "AfegirServei");
    m_afegir->setToolTip(Tradueix("Afegir servei a la feina."));
    m_afegir->setAutoDefault(false);
    m_modificarLinia = crea(new QPushButton(Tradueix("Modificar")), "ModificarServei");
    m_modificarLinia->setToolTip(Tradueix("Canvia la línia seleccionada pels valors editats."));
    m_modificarLinia->setAutoDefault(false);
    m_treureLinia = crea(new QPushButton(Tradueix("Treure")), "TreureServei");
    m_treureLinia->setToolTip(Tradueix("Treu la línia seleccionada de la feina."));
    m_treureLinia->setAutoDefault(false);

    m_linies = crea(new QTableWidget(0, 5), "DetallFeinaServeis");
    m_linies->setHorizontalHeaderLabels({Tradueix("Servei"), Tradueix("Descripció"), Tradueix("Quantitat"),
                                         Tradueix("Unitat"), Tradueix("Preu unitari")});
    m_linies->verticalHeader()->hide();
    m_linies->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_linies->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_linies->setSelectionMode(QAbstractItemView::SingleSelection);
    m_linies->setAlternatingRowColors(true);
    m_linies->setWordWrap(false);
    m_linies->setToolTip(Tradueix("Fes clic en una línia per editar-la."));
    int ampleTotal = 0;
    for (int c = 0; c < 5; ++c) {
        const int px = std::max(twipsAPixels(this, kAmplesLinies[c]),
                                m_linies->horizontalHeader()->fontMetrics().horizontalAdvance(
                                    m_linies->horizontalHeaderItem(c)->text()) + 16);
        m_linies->setColumnWidth(c, px);
        ampleTotal += px;
    }
    m_linies->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_linies->setMinimumWidth(ampleTotal + 4);
    m_linies->setMinimumHeight(m_linies->verticalHeader()->defaultSectionSize() * 6 + m_linies->horizontalHeader()->sizeHint().height() + 4);

    m_total = crea(new QLineEdit, "TotalFeina");
    m_total->setReadOnly(true);
    m_total->setFocusPolicy(Qt::NoFocus);
    m_total->setAlignment(Qt::AlignRight);
    m_total->setMaximumWidth(twipsAPixels(this, kAmplesLinies[4]) + 20);
    QFont negreta = m_total->font();
    negreta.setBold(true);
    m_total->setFont(negreta);

    auto *serveis = crea(new QGroupBox(Tradueix("Serveis")), "FrameServeis");
    auto *gs = new QGridLayout(serveis);
    gs->setHorizontalSpacing(6);
    gs->addWidget(etiqueta("Servei", m_serveis), 0, 0);
    gs->addWidget(etiqueta("Descripció", m_descripcio), 0, 1);
    gs->addWidget(etiqueta("Quantitat", m_quantitat), 0, 2);
    gs->addWidget(etiqueta("Unitat", m_unitat), 0, 3);
    gs->addWidget(etiqueta("Preu unitari", m_preu), 0, 4);
    gs->addWidget(m_serveis, 1, 0);
    gs->addWidget(m_descripcio, 1, 1);
    gs->addWidget(m_quantitat, 1, 2);
    gs->addWidget(m_unitat, 1, 3);
    gs->addWidget(m_preu, 1, 4);
    auto *botonsLinia = new QHBoxLayout;
    botonsLinia->addWidget(m_afegir);
    botonsLinia->addWidget(m_modificarLinia);
    botonsLinia->addWidget(m_treureLinia);
    gs->addLayout(botonsLinia, 1, 5);
    gs->setColumnStretch(1, 5);
    gs->setColumnStretch(2, 1);
    gs->setColumnStretch(3, 1);
    gs->setColumnStretch(4, 1);
    gs->addWidget(m_linies, 2, 0, 1, 6);
    auto *filaTotal = new QHBoxLayout;
    filaTotal->addStretch(1);
    auto *etTotal = etiqueta("TOTAL FEINA:", m_total);
    etTotal->setFont(negreta);
    filaTotal->addWidget(etTotal);
    filaTotal->addWidget(m_total);
    gs->addLayout(filaTotal, 3, 0, 1, 6);
    gs->setRowStretch(2, 1);

    // ---- buttons
    m_imprimir = crea(new QPushButton(Tradueix("Imprimir")), "ImprimirButton");
    m_imprimir->setAutoDefault(false);
    m_imprimir->hide(); // shown once there is a way to print
    m_ok = crea(new QPushButton(Tradueix("Modificar")), "OKButton");
    m_ok->setDefault(true);
    m_cancel = crea(new QPushButton(Tradueix("Cancel·lar")), "CancelButton");
    m_cancel->setAutoDefault(false);
    m_estat = crea(new QLabel, "EstatFeina");
    m_estat->setWordWrap(true);
    auto *botons = new QHBoxLayout;
    botons->addWidget(m_estat, 1);
    botons->addWidget(m_imprimir);
    botons->addWidget(m_ok);
    botons->addWidget(m_cancel);

    auto *arrel = new QVBoxLayout(this);
    arrel->addWidget(feina);
    arrel->addWidget(serveis, 1);
    arrel->addLayout(botons);

    setTabOrder(m_data, m_horaInici);
    setTabOrder(m_horaInici, m_horaFi);
    setTabOrder(m_horaFi, m_recurs);
    setTabOrder(m_recurs, m_feta);
    setTabOrder(m_feta, m_dataFactura);
    setTabOrder(m_dataFactura, m_observacions);
    setTabOrder(m_observacions, m_serveis);
    setTabOrder(m_serveis, m_descripcio);
    setTabOrder(m_descripcio, m_quantitat);
    setTabOrder(m_quantitat, m_unitat);
    setTabOrder(m_unitat, m_preu);
    setTabOrder(m_preu, m_afegir);
    setTabOrder(m_afegir, m_modificarLinia);
    setTabOrder(m_modificarLinia, m_treureLinia);
    setTabOrder(m_treureLinia, m_linies);
    setTabOrder(m_linies, m_ok);
    setTabOrder(m_ok, m_cancel);

    // Text fields select their content on entry, so that typing replaces it.
    for (QLineEdit *camp : {m_data, m_dataFactura, m_descripcio, m_quantitat, m_unitat, m_preu})
        camp->installEventFilter(this);

    // ---- the user's edits go straight to the editor
    connect(m_data, &QLineEdit::textEdited, this, [this](const QString &t) { m_editor.setData(t); });
    connect(m_dataFactura, &QLineEdit::textEdited, this, [this](const QString &t) { m_editor.setDataFactura(t); });
    connect(m_observacions, &QPlainTextEdit::textChanged, this,
            [this] { m_editor.setObservacions(m_observacions->toPlainText()); });
    connect(m_horaInici, &QComboBox::activated, this, [this](int i) { m_editor.setHoraInici(m_horaInici->itemText(i)); });
    connect(m_horaFi, &QComboBox::activated, this, [this](int i) { m_editor.setHoraFi(m_horaFi->itemText(i)); });
    connect(m_recurs, &QComboBox::activated, this, [this](int i) {
        canviaLinies([this, i] {
            m_editor.triaRecurs(m_recurs->itemText(i));
            return false;
        });
    });
    connect(m_feta, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_editor.marcaFeta(on)) {
            const QSignalBlocker b(m_feta);
            m_feta->setChecked(m_editor.feta());
        }
        aplicaBloqueig();
    });
    m_serveis->alObrir = [this] {
        m_editor.obreLlistaServeis();
        mostraLiniaEditada();
    };
    connect(m_serveis, &QComboBox::activated, this, [this](int i) {
        m_editor.triaServei(m_serveis->itemText(i));
        mostraLiniaEditada();
    });
    connect(m_descripcio, &QLineEdit::textEdited, this, [this](const QString &t) { m_editor.setDescripcioLinia(t); });
    connect(m_quantitat, &QLineEdit::textEdited, this, [this](const QString &t) { m_editor.setQuantitatLinia(t); });
    connect(m_unitat, &QLineEdit::textEdited, this, [this](const QString &t) { m_editor.setUnitatLinia(t); });
    connect(m_preu, &QLineEdit::textEdited, this, [this](const QString &t) { m_editor.setPreuLinia(t); });
    connect(m_afegir, &QPushButton::clicked, this, [this] { canviaLinies([this] { return m_editor.afegeixServei(); }); });
    connect(m_modificarLinia, &QPushButton::clicked, this,
            [this] { canviaLinies([this] { return m_editor.substitueixLinia(); }); });
    connect(m_treureLinia, &QPushButton::clicked, this, [this] {
        canviaLinies([this] {
            m_editor.treuLinia(m_editor.liniaSeleccionada());
            return true;
        });
    });
    // A click only picks the line: it is changed or taken out with the buttons.
    connect(m_linies, &QTableWidget::cellClicked, this, [this](int fila, int) {
        m_editor.seleccionaLinia(fila);
        mostraLiniaEditada();
        m_linies->selectRow(fila);
        aplicaBloqueig();
    });
    connect(m_ok, &QPushButton::clicked, this, &FrmFeinesDialog::modificar);
    connect(m_cancel, &QPushButton::clicked, this, &FrmFeinesDialog::reject);
    connect(m_imprimir, &QPushButton::clicked, this, [this] {
        if (m_imprimeix)
            m_imprimeix(m_editor, this);
    });
}

void FrmFeinesDialog::setImpressio(Impressio imprimeix)
{
    m_imprimeix = std::move(imprimeix);
    m_imprimir->setVisible(bool(m_imprimeix));
}

void FrmFeinesDialog::mostraTot()
{
    m_id->setText(QString::number(m_editor.id()));
    m_lloc->setText(m_editor.lloc());
    m_data->setText(m_editor.data());
    {
        const QSignalBlocker b1(m_horaInici), b2(m_horaFi), b3(m_recurs), b4(m_serveis);
        m_horaInici->clear();
        m_horaInici->addItems(m_editor.horesInici());
        m_horaFi->clear();
        m_horaFi->addItems(m_editor.horesFi());
        m_recurs->clear();
        m_recurs->addItems(m_editor.recursos());
        m_serveis->clear();
        m_serveis->addItems(m_editor.serveis());
    }
    mostraHores();
    seleccionaText(m_recurs, m_editor.recurs());
    seleccionaText(m_serveis, QString());
    {
        const QSignalBlocker b(m_feta);
        m_feta->setChecked(m_editor.feta());
    }
    m_dataFactura->setText(m_editor.dataFactura());
    {
        const QSignalBlocker b(m_observacions);
        m_observacions->setPlainText(m_editor.observacions());
    }
    mostraLinies();
    mostraLiniaEditada();
    aplicaBloqueig();
}

void FrmFeinesDialog::mostraHores()
{
    seleccionaText(m_horaInici, m_editor.horaInici());
    seleccionaText(m_horaFi, m_editor.horaFi());
}

void FrmFeinesDialog::mostraLinies()
{
    const QList<LiniaServei> &linies = m_editor.linies();
    m_linies->setRowCount(int(linies.size()));
    for (int r = 0; r < linies.size(); ++r) {
        const LiniaServei &l = linies.at(r);
        const QStringList textos{l.serveis_nom, l.descripcio, EditorFeina::textNombre(l.quantitat), l.unitat,
                                 format::preu(l.preu)};
        for (int c = 0; c < 5; ++c) {
            auto *item = new QTableWidgetItem(textos.at(c));
            if (c == 2 || c == 4)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_linies->setItem(r, c, item);
        }
    }
    m_linies->clearSelection();
    m_total->setText(m_editor.totalText());
}

void FrmFeinesDialog::mostraLiniaEditada()
{
    seleccionaText(m_serveis, m_editor.serveiLinia());
    m_descripcio->setText(m_editor.descripcioLinia());
    m_quantitat->setText(m_editor.quantitatLinia());
    m_unitat->setText(m_editor.unitatLinia());
    m_preu->setText(m_editor.preuLinia());
}

void FrmFeinesDialog::aplicaBloqueig()
{
    const bool lliure = !m_editor.bloquejat();
    for (QWidget *w : std::initializer_list<QWidget *>{m_data, m_horaInici, m_horaFi, m_recurs, m_observacions, m_serveis,
                                                      m_descripcio, m_quantitat, m_unitat, m_preu, m_linies, m_afegir})
        w->setEnabled(lliure);
    const bool seleccionada = m_editor.liniaSeleccionada() >= 0;
    m_modificarLinia->setEnabled(lliure && seleccionada);
    m_treureLinia->setEnabled(lliure && seleccionada);
}

void FrmFeinesDialog::canviaLinies(const std::function<bool()> &canvi)
{
    const QString abans = m_editor.horaFi();
    if (canvi()) {
        mostraLinies();
        mostraLiniaEditada();
    }
    mostraHores();
    aplicaBloqueig();
    if (m_editor.horaFi() != abans && !abans.isEmpty())
        m_estat->setText(Tradueix("L'hora fi s'ha recalculat segons els serveis i el recurs:") + QLatin1Char(' ') + abans
                         + QStringLiteral(" → ") + m_editor.horaFi());
}

void FrmFeinesDialog::reject()
{
    if (m_editor.teCanvis()
        && !m_ui.preguntaPerDefecteNo(Tradueix("AVÍS"), Tradueix("La feina té canvis sense desar. Vols descartar-los?")))
        return;
    QDialog::reject();
}

void FrmFeinesDialog::modificar()
{
    if (m_editor.modifica()) {
        accept();
        return;
    }
    // A wrong date is put back to the job's own.
    if (m_data->text() != m_editor.data())
        m_data->setText(m_editor.data());
}

bool FrmFeinesDialog::eventFilter(QObject *obj, QEvent *event)
{
    if (obj == m_recurs && event->type() == QEvent::KeyPress) {
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete) {
            if (m_editor.esborraRecurs())
                seleccionaText(m_recurs, QString());
            return true;
        }
    } else if (event->type() == QEvent::FocusIn) {
        if (auto *camp = qobject_cast<QLineEdit *>(obj)) {
            // After the focus event, or the click that brought it would place the caret again.
            QMetaObject::invokeMethod(camp, &QLineEdit::selectAll, Qt::QueuedConnection);
        }
    }
    return QDialog::eventFilter(obj, event);
}

void instalaEditorFeines(ControladorAgenda &ctl, Sessio &sessio, Interaccio &ui, QWidget *pare,
                         FrmFeinesDialog::Impressio imprimeix)
{
    ctl.obreEditor = [&ctl, &sessio, &ui, pare, imprimeix](Feina &f) {
        FrmFeinesDialog finestra(sessio.db(), sessio.cfg(), ctl.motor(), ui, f, pare);
        finestra.setImpressio(imprimeix);
        finestra.exec();
    };
}
