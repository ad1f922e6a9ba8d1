#include "recursos_serveis_page.h"

#include "festius_widget.h"
#include "formulari_widget.h"

#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/feina.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

QLabel *etiqueta(const QString &text, QWidget *camp, QWidget *pare)
{
    auto *l = new QLabel(text, pare);
    l->setBuddy(camp);
    return l;
}

QIcon mostraDeColor(const QColor &color, const QSize &mida)
{
    QPixmap p(mida);
    p.fill(Qt::transparent);
    QPainter pintor(&p);
    pintor.setPen(QColor(0x80, 0x80, 0x80));
    pintor.setBrush(color);
    pintor.drawRect(QRect(QPoint(0, 0), mida - QSize(1, 1)));
    return QIcon(p);
}

// Space toggles the current member as a click does, so the list works from the keyboard.
class EspaiCommuta : public QObject {
public:
    EspaiCommuta(QListWidget *llista, std::function<void(int)> commuta)
        : QObject(llista), m_llista(llista), m_commuta(std::move(commuta))
    {
    }
    bool eventFilter(QObject *, QEvent *ev) override
    {
        if (ev->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(ev)->key() == Qt::Key_Space) {
            m_commuta(m_llista->currentRow());
            return true;
        }
        return false;
    }

private:
    QListWidget *m_llista;
    std::function<void(int)> m_commuta;
};

} // namespace

RecursosServeisPage::RecursosServeisPage(Sessio &sessio, Interaccio &io, QWidget *parent)
    : QWidget(parent), m_sessio(sessio), m_io(io), m_recursos(sessio, io), m_serveis(sessio, io)
{
    m_triaColor = [this](const QColor &inicial) -> std::optional<QColor> {
        const QColor c = QColorDialog::getColor(inicial, this, Tradueix("Color del recurs"));
        if (!c.isValid())
            return std::nullopt;
        return c;
    };
    construeix();
    ordreTabulacio();
    reconstrueix();
}

void RecursosServeisPage::construeix()
{
    // Resources
    auto *grupRecursos = new QGroupBox(Tradueix("Recursos"), this);
    m_llistaRecursos = new QListWidget(grupRecursos);
    m_llistaRecursos->setObjectName(QStringLiteral("RecursosLlista"));
    m_llistaRecursos->setIconSize(QSize(24, 14));
    m_nomRecurs = formulari::camp(QStringLiteral("NomRecurs"), grupRecursos, 50);
    m_grup = new QCheckBox(Tradueix("Grup"), grupRecursos);
    m_grup->setObjectName(QStringLiteral("chkGrupRecurs"));
    m_assignaTemps = new QCheckBox(Tradueix("Assigna temps"), grupRecursos);
    m_assignaTemps->setObjectName(QStringLiteral("chkAssignaTemps"));
    m_assignaTemps->setToolTip(Tradueix("Marca'l si el temps del recurs consumeix temps de la feina"));
    m_color = formulari::boto(Tradueix("Color..."), QStringLiteral("ColorRecurs"), grupRecursos);
    m_color->setIconSize(QSize(48, 16));
    m_components = new QListWidget(grupRecursos);
    m_components->setObjectName(QStringLiteral("ComponentsLlista"));
    // Marked and unmarked entries are padded to one width; a fixed font keeps names aligned.
    m_components->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_components->installEventFilter(new EspaiCommuta(m_components, [this](int fila) { commutaComponent(fila); }));
    m_afegirRecurs = formulari::boto(Tradueix("Afegir"), QStringLiteral("AfegirRecurs"), grupRecursos);
    m_modificarRecurs = formulari::boto(Tradueix("Modificar"), QStringLiteral("ModificarRecurs"), grupRecursos);
    m_eliminarRecurs = formulari::boto(Tradueix("Eliminar"), QStringLiteral("EliminarRecurs"), grupRecursos);

    auto *gr = new QGridLayout(grupRecursos);
    gr->addWidget(m_llistaRecursos, 0, 0, 6, 1);
    gr->addWidget(etiqueta(Tradueix("Nom"), m_nomRecurs, grupRecursos), 0, 1);
    gr->addWidget(m_nomRecurs, 0, 2);
    auto *marques = new QHBoxLayout;
    marques->addWidget(m_grup);
    marques->addWidget(m_assignaTemps);
    marques->addStretch();
    gr->addLayout(marques, 1, 2);
    gr->addWidget(etiqueta(Tradueix("Color"), m_color, grupRecursos), 2, 1);
    auto *filaColor = new QHBoxLayout;
    filaColor->addWidget(m_color);
    filaColor->addStretch();
    gr->addLayout(filaColor, 2, 2);
    gr->addWidget(etiqueta(Tradueix("Components"), m_components, grupRecursos), 3, 1, Qt::AlignTop);
    gr->addWidget(m_components, 3, 2, 3, 1);
    auto *br = new QHBoxLayout;
    br->addStretch();
    for (QPushButton *b : {m_afegirRecurs, m_modificarRecurs, m_eliminarRecurs})
        br->addWidget(b);
    gr->addLayout(br, 6, 0, 1, 3);
    gr->setColumnStretch(0, 2);
    gr->setColumnStretch(2, 3);
    gr->setRowStretch(5, 1);

    // Services
    auto *grupServeis = new QGroupBox(Tradueix("Serveis"), this);
    m_llistaServeis = new QListWidget(grupServeis);
    m_llistaServeis->setObjectName(QStringLiteral("ServeisLlista"));
    m_nomServei = formulari::camp(QStringLiteral("NomServei"), grupServeis, 50);
    m_unitat = formulari::camp(QStringLiteral("UnitatServei"), grupServeis, 20);
    m_preu = formulari::camp(QStringLiteral("PreuUnServei"), grupServeis, 12);
    m_minuts = formulari::camp(QStringLiteral("MinutsUnitatServei"), grupServeis, 6);
    m_preu->setAlignment(Qt::AlignRight);
    m_minuts->setAlignment(Qt::AlignRight);
    m_minuts->setToolTip(Tradueix("Per calcular la duració de la feina."));
    m_comu = new QCheckBox(Tradueix("Comú als recursos"), grupServeis);
    m_comu->setObjectName(QStringLiteral("ComuRecursosServei"));
    m_comu->setToolTip(Tradueix("Marca'l si has informat equivalència i el nombre de recursos assignats no afecta a la duració del servei."));
    m_descripcio = formulari::camp(QStringLiteral("DescripcioServei"), grupServeis, 100);
    m_afegirServei = formulari::boto(Tradueix("Afegir"), QStringLiteral("AfegirServei"), grupServeis);
    m_modificarServei = formulari::boto(Tradueix("Modificar"), QStringLiteral("ModificarServei"), grupServeis);
    m_eliminarServei = formulari::boto(Tradueix("Eliminar"), QStringLiteral("EliminarServei"), grupServeis);

    auto *gs = new QGridLayout(grupServeis);
    gs->addWidget(m_llistaServeis, 0, 0, 7, 1);
    gs->addWidget(etiqueta(Tradueix("Nom"), m_nomServei, grupServeis), 0, 1);
    gs->addWidget(m_nomServei, 0, 2);
    gs->addWidget(etiqueta(Tradueix("Unitat"), m_unitat, grupServeis), 1, 1);
    gs->addWidget(m_unitat, 1, 2);
    gs->addWidget(etiqueta(Tradueix("Preu unitari"), m_preu, grupServeis), 2, 1);
    gs->addWidget(m_preu, 2, 2);
    gs->addWidget(etiqueta(Tradueix("Minuts per unitat"), m_minuts, grupServeis), 3, 1);
    gs->addWidget(m_minuts, 3, 2);
    gs->addWidget(m_comu, 4, 2);
    gs->addWidget(etiqueta(Tradueix("Descripció"), m_descripcio, grupServeis), 5, 1);
    gs->addWidget(m_descripcio, 5, 2);
    auto *bs = new QHBoxLayout;
    bs->addStretch();
    for (QPushButton *b : {m_afegirServei, m_modificarServei, m_eliminarServei})
        bs->addWidget(b);
    gs->addLayout(bs, 7, 0, 1, 3);
    gs->setColumnStretch(0, 2);
    gs->setColumnStretch(2, 3);
    gs->setRowStretch(6, 1);

    auto *h = new QHBoxLayout(this);
    h->addWidget(grupRecursos, 1);
    h->addWidget(grupServeis, 1);
    h->addWidget(new FestiusWidget(m_sessio, m_io, this), 1);

    // A record is loaded when the user picks it, not when the list merely gets the focus (the
    // list then makes its first entry current without selecting it, and a name typed over it
    // would rename that record).
    connect(m_llistaRecursos, &QListWidget::itemSelectionChanged, this, [this] { enRecursTriat(); });
    connect(m_grup, &QCheckBox::clicked, this, &RecursosServeisPage::enGrupCanviat);
    connect(m_components, &QListWidget::itemClicked, this,
            [this](QListWidgetItem *item) { commutaComponent(m_components->row(item)); });
    connect(m_color, &QPushButton::clicked, this, &RecursosServeisPage::triaColor);
    connect(m_afegirRecurs, &QPushButton::clicked, this, &RecursosServeisPage::afegirRecurs);
    connect(m_modificarRecurs, &QPushButton::clicked, this, &RecursosServeisPage::modificarRecurs);
    connect(m_eliminarRecurs, &QPushButton::clicked, this, &RecursosServeisPage::eliminarRecurs);
    connect(m_llistaServeis, &QListWidget::itemSelectionChanged, this, [this] { enServeiTriat(); });
    connect(m_afegirServei, &QPushButton::clicked, this, &RecursosServeisPage::afegirServei);
    connect(m_modificarServei, &QPushButton::clicked, this, &RecursosServeisPage::modificarServei);
    connect(m_eliminarServei, &QPushButton::clicked, this, &RecursosServeisPage::eliminarServei);
}

void RecursosServeisPage::ordreTabulacio()
{
    const QList<QWidget *> ordre = {m_llistaRecursos, m_nomRecurs,     m_grup,           m_assignaTemps,
                                    m_color,          m_components,    m_afegirRecurs,   m_modificarRecurs,
                                    m_eliminarRecurs, m_llistaServeis, m_nomServei,      m_unitat,
                                    m_preu,           m_minuts,        m_comu,           m_descripcio,
                                    m_afegirServei,   m_modificarServei, m_eliminarServei};
    for (int i = 1; i < ordre.size(); ++i)
        setTabOrder(ordre[i - 1], ordre[i]);
}

void RecursosServeisPage::reconstrueix()
{
    recarregaRecursos();
    recarregaServeis();
}

// ------------------------------------------------------------------ resources

void RecursosServeisPage::recarregaRecursos(const QString &seleccionar)
{
    {
        const QSignalBlocker b(m_llistaRecursos);
        m_llistaRecursos->clear();
        for (const FilaRecurs &r : m_recursos.recursos()) {
            auto *item = new QListWidgetItem(mostraDeColor(formulari::aQColor(r.color), m_llistaRecursos->iconSize()), r.nom,
                                             m_llistaRecursos);
            if (r.grup) {
                QFont f = item->font();
                f.setBold(true);
                item->setFont(f);
            }
        }
    }
    m_recurs = FitxaRecurs();
    mostraRecurs();
    if (!seleccionar.isEmpty())
        obreRecurs(seleccionar);
}

void RecursosServeisPage::enRecursTriat()
{
    QListWidgetItem *item = m_llistaRecursos->selectedItems().value(0);
    FitxaRecurs f;
    if (!item || !m_recursos.carrega(item->text(), f))
        return;
    m_recurs = f;
    mostraRecurs();
}

void RecursosServeisPage::llegeixRecurs()
{
    m_recurs.nom = m_nomRecurs->text();
    m_recurs.grup = m_grup->isChecked();
    m_recurs.assignaTemps = m_assignaTemps->isChecked();
}

void RecursosServeisPage::mostraRecurs()
{
    m_nomRecurs->setText(m_recurs.nom);
    m_grup->setChecked(m_recurs.grup);
    m_assignaTemps->setChecked(m_recurs.assignaTemps);
    m_assignaTemps->setEnabled(!m_recurs.grup);
    {
        const QSignalBlocker b(m_components);
        const int fila = m_components->currentRow();
        m_components->clear();
        m_components->addItems(m_recurs.components);
        if (fila < m_components->count())
            m_components->setCurrentRow(fila);
    }
    m_components->setEnabled(m_recurs.grup);
    mostraColor();
}

void RecursosServeisPage::mostraColor()
{
    const QColor c = m_recurs.color == ColorFinestra ? palette().color(QPalette::Base) : formulari::aQColor(m_recurs.color);
    m_color->setIcon(mostraDeColor(c, m_color->iconSize()));
}

void RecursosServeisPage::enGrupCanviat(bool grup)
{
    llegeixRecurs();
    m_recursos.marcaGrup(m_recurs, grup);
    mostraRecurs();
}

void RecursosServeisPage::commutaComponent(int fila)
{
    if (!m_recurs.grup)
        return;
    llegeixRecurs();
    m_recursos.commuta(m_recurs, fila);
    mostraRecurs();
}

void RecursosServeisPage::triaColor()
{
    const QColor inicial = m_recurs.color == ColorFinestra ? QColor(Qt::white) : formulari::aQColor(m_recurs.color);
    if (const std::optional<QColor> triat = m_triaColor(inicial)) {
        m_recurs.color = formulari::deQColor(*triat);
        mostraColor();
    }
}

void RecursosServeisPage::afegirRecurs()
{
    llegeixRecurs();
    const Resultat r = m_recursos.AfegirRecurs(m_recurs);
    m_nomRecurs->setText(m_recurs.nom);
    if (r == Resultat::Fet) {
        recarregaRecursos();
        emit recursosCanviats();
    }
}

void RecursosServeisPage::modificarRecurs()
{
    llegeixRecurs();
    const Resultat r = m_recursos.ModificarRecurs(m_recurs);
    m_nomRecurs->setText(m_recurs.nom);
    if (r == Resultat::Fet) {
        recarregaRecursos();
        emit recursosCanviats();
    }
}

void RecursosServeisPage::eliminarRecurs()
{
    llegeixRecurs();
    const Resultat r = m_recursos.EliminarRecurs(m_recurs);
    m_nomRecurs->setText(m_recurs.nom);
    if (r == Resultat::Fet) {
        recarregaRecursos();
        emit recursosCanviats();
    }
}

bool RecursosServeisPage::obreRecurs(const QString &recurs)
{
    for (int i = 0; i < m_llistaRecursos->count(); ++i) {
        if (m_llistaRecursos->item(i)->text().compare(recurs, Qt::CaseInsensitive) == 0) {
            m_llistaRecursos->setCurrentRow(i);
            enRecursTriat();
            emit mostraPagina();
            return true;
        }
    }
    return false;
}

// ------------------------------------------------------------------ services

void RecursosServeisPage::recarregaServeis()
{
    {
        const QSignalBlocker b(m_llistaServeis);
        m_llistaServeis->clear();
        m_llistaServeis->addItems(m_serveis.noms());
    }
    mostraServei(FitxaServei());
}

void RecursosServeisPage::enServeiTriat()
{
    QListWidgetItem *item = m_llistaServeis->selectedItems().value(0);
    FitxaServei f;
    if (item && m_serveis.carrega(item->text(), f))
        mostraServei(f);
}

FitxaServei RecursosServeisPage::fitxaServei() const
{
    FitxaServei f;
    f.nom = m_nomServei->text();
    f.nomAnt = m_nomServeiAnt;
    f.unitat = m_unitat->text();
    f.preu = m_preu->text();
    f.minuts = m_minuts->text();
    f.comu = m_comu->isChecked();
    f.descripcio = m_descripcio->text();
    return f;
}

void RecursosServeisPage::mostraServei(const FitxaServei &f)
{
    m_nomServeiAnt = f.nomAnt;
    m_nomServei->setText(f.nom);
    m_unitat->setText(f.unitat);
    m_preu->setText(f.preu);
    m_minuts->setText(f.minuts);
    m_comu->setChecked(f.comu);
    m_descripcio->setText(f.descripcio);
}

void RecursosServeisPage::afegirServei()
{
    FitxaServei f = fitxaServei();
    const Resultat r = m_serveis.AfegirServei(f);
    if (r == Resultat::Fet) {
        recarregaServeis();
        emit serveisCanviats();
        return;
    }
    m_nomServei->setText(f.nom);
    m_minuts->setText(f.minuts);
}

void RecursosServeisPage::modificarServei()
{
    FitxaServei f = fitxaServei();
    const Resultat r = m_serveis.ModificarServei(f);
    if (r == Resultat::Fet) {
        recarregaServeis();
        emit serveisCanviats();
        return;
    }
    m_nomServei->setText(f.nom);
    m_minuts->setText(f.minuts);
}

void RecursosServeisPage::eliminarServei()
{
    FitxaServei f = fitxaServei();
    if (m_serveis.EliminarServei(f) == Resultat::Fet) {
        recarregaServeis();
        emit serveisCanviats();
        return;
    }
    m_nomServei->setText(f.nom);
}
