#include "llocs_widget.h"

#include "formulari_widget.h"
#include "recursos.h"
#include "serveis.h"

#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include <tuple>

namespace {

QLabel *etiqueta(const QString &text, QWidget *camp, QWidget *pare)
{
    auto *l = new QLabel(text, pare);
    l->setBuddy(camp);
    return l;
}

} // namespace

LlocsWidget::LlocsWidget(Sessio &sessio, Interaccio &io, QWidget *pagina)
    : QObject(pagina), m_sessio(sessio), m_io(io), m_gestio(sessio, io)
{
    construeix(pagina);
    ordreTabulacio();
    recarregaHores();
    recarregaRecursos();
    recarregaServeis();
    mostraClient(QString(), {});
}

QWidget *LlocsWidget::primerCamp() const
{
    return m_llista;
}

QWidget *LlocsWidget::darrerCamp() const
{
    return m_eliminarServei;
}

void LlocsWidget::construeix(QWidget *pagina)
{
    // Places list
    auto *grupLlista = m_grupLlista = new QGroupBox(Tradueix("Llocs"), pagina);
    m_llista = new QListWidget(grupLlista);
    m_llista->setObjectName(QStringLiteral("LlocsLlista"));
    auto *vl = new QVBoxLayout(grupLlista);
    vl->addWidget(m_llista);

    // Place form
    auto *grupFitxa = m_grupFitxa = new QGroupBox(Tradueix("Dades del lloc"), pagina);
    m_nom = formulari::camp(QStringLiteral("NomLloc"), grupFitxa, 50);
    m_adreca = formulari::camp(QStringLiteral("AdrecaLloc"), grupFitxa, 100);
    m_poblacio = formulari::camp(QStringLiteral("PoblacioLloc"), grupFitxa, 50);
    m_telefon = formulari::camp(QStringLiteral("TelefonLloc"), grupFitxa, 50);
    m_minuts = formulari::camp(QStringLiteral("MinutsPrevistLloc"), grupFitxa, 6);
    m_periodicitat = formulari::camp(QStringLiteral("PeriodicitatDiesLloc"), grupFitxa, 6);
    m_quota = formulari::camp(QStringLiteral("QuotaLloc"), grupFitxa, 12);
    for (QLineEdit *n : {m_minuts, m_periodicitat, m_quota})
        n->setAlignment(Qt::AlignRight);
    m_dies = new QComboBox(grupFitxa);
    m_dies->setObjectName(QStringLiteral("DiesSetmanaCombo"));
    m_dies->addItem(QString()); // any day
    m_dies->addItems(GestioLlocs::diesSetmana());
    m_hora = new QComboBox(grupFitxa);
    m_hora->setObjectName(QStringLiteral("HoraLlocCombo"));
    m_recursos = new QComboBox(grupFitxa);
    m_recursos->setObjectName(QStringLiteral("RecursosCombo"));
    for (QComboBox *c : {m_dies, m_hora, m_recursos}) {
        c->setToolTip(Tradueix("Supr per deixar-ho en blanc"));
        formulari::buidaAmbSuprimir(c);
    }
    m_primerMes = new QCheckBox(Tradueix("Primer dia del mes"), grupFitxa);
    m_primerMes->setObjectName(QStringLiteral("PrimerMesLloc"));
    m_ultimMes = new QCheckBox(Tradueix("Últim dia del mes"), grupFitxa);
    m_ultimMes->setObjectName(QStringLiteral("UltimMesLloc"));
    m_dissabte = new QCheckBox(Tradueix("Inclou dissabtes"), grupFitxa);
    m_dissabte->setObjectName(QStringLiteral("DissabteLloc"));
    m_diumenge = new QCheckBox(Tradueix("Inclou diumenges"), grupFitxa);
    m_diumenge->setObjectName(QStringLiteral("DiumengeLloc"));
    m_festius = new QCheckBox(Tradueix("Treballa els festius"), grupFitxa);
    m_festius->setObjectName(QStringLiteral("FestiusLloc"));
    m_festius->setToolTip(Tradueix("La planificació hi posa feines també els dies festius"));
    m_observacions = new QPlainTextEdit(grupFitxa);
    m_observacions->setObjectName(QStringLiteral("ObservacionsLloc"));
    m_observacions->setTabChangesFocus(true);
    m_observacions->setMaximumHeight(64);
    m_afegir = formulari::boto(Tradueix("Afegir"), QStringLiteral("AfegirLloc"), grupFitxa);
    m_modificar = formulari::boto(Tradueix("Modificar"), QStringLiteral("ModificarLloc"), grupFitxa);
    m_eliminar = formulari::boto(Tradueix("Eliminar"), QStringLiteral("EliminarLloc"), grupFitxa);

    auto *g = new QGridLayout(grupFitxa);
    g->addWidget(etiqueta(Tradueix("Nom"), m_nom, grupFitxa), 0, 0);
    g->addWidget(m_nom, 0, 1, 1, 3);
    g->addWidget(etiqueta(Tradueix("Adreça"), m_adreca, grupFitxa), 1, 0);
    g->addWidget(m_adreca, 1, 1, 1, 3);
    g->addWidget(etiqueta(Tradueix("Població"), m_poblacio, grupFitxa), 2, 0);
    g->addWidget(m_poblacio, 2, 1);
    g->addWidget(etiqueta(Tradueix("Telèfon"), m_telefon, grupFitxa), 2, 2);
    g->addWidget(m_telefon, 2, 3);
    g->addWidget(etiqueta(Tradueix("Minuts previstos"), m_minuts, grupFitxa), 3, 0);
    g->addWidget(m_minuts, 3, 1);
    g->addWidget(etiqueta(Tradueix("Recurs"), m_recursos, grupFitxa), 3, 2);
    g->addWidget(m_recursos, 3, 3);
    g->addWidget(etiqueta(Tradueix("Periodicitat (dies)"), m_periodicitat, grupFitxa), 4, 0);
    g->addWidget(m_periodicitat, 4, 1);
    g->addWidget(etiqueta(Tradueix("Hora"), m_hora, grupFitxa), 4, 2);
    g->addWidget(m_hora, 4, 3);
    g->addWidget(etiqueta(Tradueix("Quota"), m_quota, grupFitxa), 5, 0);
    g->addWidget(m_quota, 5, 1);
    g->addWidget(etiqueta(Tradueix("Dia de la setmana"), m_dies, grupFitxa), 5, 2);
    g->addWidget(m_dies, 5, 3);
    auto *marques = new QHBoxLayout;
    for (QCheckBox *c : {m_primerMes, m_ultimMes, m_dissabte, m_diumenge, m_festius})
        marques->addWidget(c);
    marques->addStretch();
    g->addLayout(marques, 6, 1, 1, 3);
    g->addWidget(etiqueta(Tradueix("Observacions"), m_observacions, grupFitxa), 7, 0, Qt::AlignTop);
    g->addWidget(m_observacions, 7, 1, 1, 3);
    auto *botons = new QHBoxLayout;
    botons->addStretch();
    for (QPushButton *b : {m_afegir, m_modificar, m_eliminar})
        botons->addWidget(b);
    g->addLayout(botons, 8, 0, 1, 4);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(3, 1);

    // Services of the place
    m_grupServeis = new QGroupBox(Tradueix("Serveis del lloc"), pagina);
    m_linies = new QTreeWidget(m_grupServeis);
    m_linies->setObjectName(QStringLiteral("ServeisLlocLlista"));
    m_linies->setRootIsDecorated(false);
    m_linies->setAllColumnsShowFocus(true);
    m_linies->setHeaderLabels({Tradueix("Servei"), Tradueix("Quantitat"), Tradueix("Unitat"), Tradueix("Preu")});
    m_linies->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_linies->header()->setStretchLastSection(false);
    for (int c = 1; c < 4; ++c)
        m_linies->header()->setSectionResizeMode(c, QHeaderView::ResizeToContents);
    m_serveis = new QComboBox(m_grupServeis);
    m_serveis->setObjectName(QStringLiteral("ServeisCombo"));
    m_unitat = new QLineEdit(m_grupServeis);
    m_unitat->setObjectName(QStringLiteral("UnitatServeiLloc"));
    m_unitat->setReadOnly(true);
    m_unitat->setFocusPolicy(Qt::NoFocus);
    m_quantitat = formulari::camp(QStringLiteral("QuantitatServeisLloc"), m_grupServeis, 12);
    m_preu = formulari::camp(QStringLiteral("PreuServeisLloc"), m_grupServeis, 12);
    m_quantitat->setAlignment(Qt::AlignRight);
    m_preu->setAlignment(Qt::AlignRight);
    m_descripcio = formulari::camp(QStringLiteral("DescripcioServeiLloc"), m_grupServeis, 100);
    m_afegirServei = formulari::boto(Tradueix("Afegir"), QStringLiteral("AfegirServeiLloc"), m_grupServeis);
    m_modificarServei = formulari::boto(Tradueix("Modificar"), QStringLiteral("ModificarServeiLloc"), m_grupServeis);
    m_eliminarServei = formulari::boto(Tradueix("Eliminar"), QStringLiteral("EliminarServeiLloc"), m_grupServeis);

    auto *gs = new QGridLayout(m_grupServeis);
    gs->addWidget(m_linies, 0, 0, 1, 4);
    gs->addWidget(etiqueta(Tradueix("Servei"), m_serveis, m_grupServeis), 1, 0);
    gs->addWidget(m_serveis, 1, 1, 1, 3);
    gs->addWidget(etiqueta(Tradueix("Quantitat"), m_quantitat, m_grupServeis), 2, 0);
    gs->addWidget(m_quantitat, 2, 1);
    gs->addWidget(etiqueta(Tradueix("Unitat"), m_unitat, m_grupServeis), 2, 2);
    gs->addWidget(m_unitat, 2, 3);
    gs->addWidget(etiqueta(Tradueix("Preu"), m_preu, m_grupServeis), 3, 0);
    gs->addWidget(m_preu, 3, 1);
    gs->addWidget(etiqueta(Tradueix("Descripció"), m_descripcio, m_grupServeis), 4, 0);
    gs->addWidget(m_descripcio, 4, 1, 1, 3);
    auto *bs = new QHBoxLayout;
    bs->addStretch();
    for (QPushButton *b : {m_afegirServei, m_modificarServei, m_eliminarServei})
        bs->addWidget(b);
    gs->addLayout(bs, 5, 0, 1, 4);
    gs->setColumnStretch(1, 1);
    gs->setColumnStretch(3, 1);
    gs->setRowStretch(0, 1);

    connect(m_llista, &QListWidget::currentRowChanged, this, [this] { enLlocTriat(); });
    connect(m_linies, &QTreeWidget::currentItemChanged, this, [this] { enLiniaTriada(); });
    connect(m_serveis, &QComboBox::activated, this, &LlocsWidget::enServeiTriat);
    connect(m_primerMes, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            m_ultimMes->setChecked(false);
    });
    connect(m_ultimMes, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            m_primerMes->setChecked(false);
    });
    connect(m_afegir, &QPushButton::clicked, this, &LlocsWidget::afegirLloc);
    connect(m_modificar, &QPushButton::clicked, this, &LlocsWidget::modificarLloc);
    connect(m_eliminar, &QPushButton::clicked, this, &LlocsWidget::eliminarLloc);
    connect(m_afegirServei, &QPushButton::clicked, this, &LlocsWidget::afegirServeiLloc);
    connect(m_modificarServei, &QPushButton::clicked, this, &LlocsWidget::modificarServeiLloc);
    connect(m_eliminarServei, &QPushButton::clicked, this, &LlocsWidget::eliminarServeiLloc);
    explicaRitme();
}

void LlocsWidget::explicaRitme()
{
    // How the rhythm fields combine, where the user sets them.
    m_periodicitat->setToolTip(
        Tradueix("Cada quants dies es planifica una feina al lloc; buit o 0: el lloc no es planifica.")
        + QLatin1Char('\n')
        + Tradueix("Amb \"Primer dia del mes\" o \"Últim dia del mes\" marcat, es planifica un cop al mes."));
    m_dies->setToolTip(
        Tradueix("Cada N dies: cada setmana que toca, la feina cau en aquest dia.") + QLatin1Char('\n')
        + Tradueix("Amb primer o últim dia del mes: el primer o l'últim d'aquest dia de la setmana del mes.")
        + QLatin1Char('\n') + Tradueix("En blanc: qualsevol dia.") + QLatin1Char('\n')
        + Tradueix("Supr per deixar-ho en blanc"));
    for (QCheckBox *c : {m_primerMes, m_ultimMes})
        c->setToolTip(Tradueix("Un cop al mes en lloc de cada N dies (cal una periodicitat); amb un dia de la setmana, el primer o l'últim d'aquest dia del mes."));
    m_dissabte->setToolTip(Tradueix("Sense marcar, una feina que cauria en dissabte passa al dia següent (a l'últim dia del mes, al divendres d'abans)."));
    m_diumenge->setToolTip(Tradueix("Sense marcar, una feina que cauria en diumenge passa al dilluns (a l'últim dia del mes, al dia permès d'abans)."));
}

void LlocsWidget::ordreTabulacio()
{
    const QList<QWidget *> ordre = {m_llista,    m_nom,       m_adreca,   m_poblacio,  m_telefon,      m_minuts,
                                    m_recursos,  m_periodicitat, m_hora,  m_quota,     m_dies,         m_primerMes,
                                    m_ultimMes,  m_dissabte,  m_diumenge, m_festius, m_observacions, m_afegir,    m_modificar,
                                    m_eliminar,  m_linies,    m_serveis,  m_quantitat, m_preu,         m_descripcio,
                                    m_afegirServei, m_modificarServei, m_eliminarServei};
    for (int i = 1; i < ordre.size(); ++i)
        QWidget::setTabOrder(ordre[i - 1], ordre[i]);
}

// ------------------------------------------------------------------ lists

void LlocsWidget::recarregaHores()
{
    const QString actual = m_hora->currentText();
    m_hora->clear();
    m_hora->addItems(m_gestio.horesDia());
    m_hora->setCurrentIndex(m_hora->findText(actual));
}

void LlocsWidget::recarregaRecursos()
{
    const QString actual = m_recursos->currentText();
    m_recursos->clear();
    m_recursos->addItems(GestioRecursos(m_sessio, m_io).noms());
    m_recursos->setCurrentIndex(actual.isEmpty() ? -1 : m_recursos->findText(actual, Qt::MatchFixedString));
}

void LlocsWidget::recarregaServeis()
{
    const QString actual = m_serveis->currentText();
    m_serveis->clear();
    m_serveis->addItems(GestioServeis(m_sessio, m_io).noms());
    m_serveis->setCurrentIndex(actual.isEmpty() ? -1 : m_serveis->findText(actual, Qt::MatchFixedString));
}

void LlocsWidget::mostraClient(const QString &client, std::function<bool()> xecsClient)
{
    m_client = client;
    m_xecsClient = std::move(xecsClient);
    // The same client shown again (after saving it, or renamed) keeps its place on screen;
    // another client's list never holds it, since place names are unique.
    const QString anterior = m_nomLlocAnt;
    recarregaLlocs(anterior);
}

void LlocsWidget::recarregaLlocs(QString seleccionar)
{
    {
        const QSignalBlocker b(m_llista);
        m_llista->clear();
        if (!m_client.isEmpty())
            m_llista->addItems(m_gestio.llocsClient(m_client));
    }
    formulari::ajustaAmpleLlista(m_llista);
    buidaLloc();
    if (!seleccionar.isEmpty())
        seleccionaLloc(seleccionar);
    actualitzaEstat();
}

bool LlocsWidget::seleccionaLloc(const QString &lloc)
{
    for (int i = 0; i < m_llista->count(); ++i) {
        if (m_llista->item(i)->text().compare(lloc, Qt::CaseInsensitive) == 0) {
            m_llista->setCurrentRow(i);
            enLlocTriat(); // also when it was the current row already
            return true;
        }
    }
    return false;
}

void LlocsWidget::recarregaLinies()
{
    const QSignalBlocker b(m_linies);
    m_linies->clear();
    if (m_nomLlocAnt.isEmpty())
        return;
    for (const LiniaServeiLloc &l : m_gestio.liniesLloc(m_nomLlocAnt)) {
        auto *item = new QTreeWidgetItem(m_linies, {l.servei, mestres::textNombre(l.quantitat), l.unitat, format::import(l.preu)});
        item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        item->setTextAlignment(3, Qt::AlignRight | Qt::AlignVCenter);
    }
}

void LlocsWidget::actualitzaEstat()
{
    const bool client = !m_client.isEmpty();
    for (QPushButton *b : {m_afegir, m_modificar, m_eliminar})
        b->setEnabled(client);
    m_grupServeis->setEnabled(!m_nomLlocAnt.isEmpty());
}

// ------------------------------------------------------------------ fields

FitxaLloc LlocsWidget::fitxa() const
{
    FitxaLloc f;
    f.nom = m_nom->text();
    f.nomAnt = m_nomLlocAnt;
    f.client = m_client;
    f.clientXecs = m_xecsClient ? m_xecsClient() : false;
    f.adreca = m_adreca->text();
    f.poblacio = m_poblacio->text();
    f.telefon = m_telefon->text();
    f.minutsPrevist = m_minuts->text();
    f.dissabte = m_dissabte->isChecked();
    f.diumenge = m_diumenge->isChecked();
    f.festius = m_festius->isChecked();
    f.diaSetmana = std::max(0, m_dies->currentIndex());
    f.primerMes = m_primerMes->isChecked();
    f.ultimMes = m_ultimMes->isChecked();
    f.periodicitat = m_periodicitat->text();
    f.hora = m_hora->currentIndex() >= 0 ? m_hora->currentText() : QString();
    f.recurs = m_recursos->currentIndex() >= 0 ? m_recursos->currentText() : QString();
    f.quota = m_quota->text();
    f.observacions = m_observacions->toPlainText();
    return f;
}

void LlocsWidget::mostra(const FitxaLloc &f)
{
    m_nomLlocAnt = f.nomAnt;
    m_nom->setText(f.nom);
    m_adreca->setText(f.adreca);
    m_poblacio->setText(f.poblacio);
    m_telefon->setText(f.telefon);
    m_minuts->setText(f.minutsPrevist);
    m_dissabte->setChecked(f.dissabte);
    m_diumenge->setChecked(f.diumenge);
    m_festius->setChecked(f.festius);
    m_dies->setCurrentIndex(f.diaSetmana);
    m_primerMes->setChecked(f.primerMes);
    m_ultimMes->setChecked(f.ultimMes);
    m_periodicitat->setText(f.periodicitat);
    // A time stored as "8:00" by another tool is the list's 08:00.
    m_hora->setCurrentIndex(f.hora.isEmpty() ? -1 : m_hora->findText(hora::llegeix(f.hora)));
    m_recursos->setCurrentIndex(f.recurs.isEmpty() ? -1 : m_recursos->findText(f.recurs, Qt::MatchFixedString));
    m_quota->setText(f.quota);
    m_observacions->setPlainText(f.observacions);
    actualitzaEstat();
}

void LlocsWidget::buidaLloc()
{
    mostra(FitxaLloc());
    recarregaLinies();
    mostraServei(FitxaServeiLloc());
}

FitxaServeiLloc LlocsWidget::fitxaServei() const
{
    FitxaServeiLloc s;
    s.servei = m_serveis->currentIndex() >= 0 ? m_serveis->currentText() : QString();
    s.unitat = m_unitat->text();
    s.quantitat = m_quantitat->text();
    s.preu = m_preu->text();
    s.descripcio = m_descripcio->text();
    return s;
}

void LlocsWidget::mostraServei(const FitxaServeiLloc &s)
{
    m_serveis->setCurrentIndex(s.servei.isEmpty() ? -1 : m_serveis->findText(s.servei, Qt::MatchFixedString));
    m_unitat->setText(s.unitat);
    m_quantitat->setText(s.quantitat);
    m_preu->setText(s.preu);
    m_descripcio->setText(s.descripcio);
}

// ------------------------------------------------------------------ selections

void LlocsWidget::enLlocTriat()
{
    QListWidgetItem *item = m_llista->currentItem();
    FitxaLloc f;
    if (item && m_gestio.carrega(item->text(), f)) {
        mostra(f);
    } else {
        mostra(FitxaLloc());
    }
    recarregaLinies();
    mostraServei(FitxaServeiLloc());
}

void LlocsWidget::enLiniaTriada()
{
    QTreeWidgetItem *item = m_linies->currentItem();
    if (!item)
        return;
    FitxaServeiLloc s;
    if (m_gestio.carregaServeiLloc(m_nomLlocAnt, item->text(0), s))
        mostraServei(s);
}

void LlocsWidget::enServeiTriat(int index)
{
    if (index < 0)
        return;
    FitxaServeiLloc s;
    s.servei = m_serveis->itemText(index);
    m_gestio.ompleServei(s);
    mostraServei(s);
}

// ------------------------------------------------------------------ actions

void LlocsWidget::afegirLloc()
{
    FitxaLloc f = fitxa();
    const Resultat r = m_gestio.AfegirLloc(f);
    if (r == Resultat::Fet) {
        recarregaLlocs(f.nom);
        emit llocsCanviats();
        return;
    }
    // The checks rewrite the numeric fields; the user sees what was judged.
    m_nom->setText(f.nom);
    m_minuts->setText(f.minutsPrevist);
    m_periodicitat->setText(f.periodicitat);
    m_quota->setText(f.quota);
}

void LlocsWidget::desaResultatLloc(const FitxaLloc &f, Resultat r)
{
    if (f.nomAnt != m_nomLlocAnt || r == Resultat::Fet) {
        // The place may now have another name or other minutes: reread it from the database.
        const QString nom = f.nomAnt;
        recarregaLlocs(nom);
        emit llocsCanviats();
        return;
    }
    m_nom->setText(f.nom);
    m_minuts->setText(f.minutsPrevist);
    m_periodicitat->setText(f.periodicitat);
    m_quota->setText(f.quota);
}

void LlocsWidget::modificarLloc()
{
    FitxaLloc f = fitxa();
    FitxaLloc abans;
    const bool existia = m_gestio.carrega(f.nomAnt, abans);
    const Resultat r = m_gestio.ModificarLloc(f);
    desaResultatLloc(f, r);
    const auto ritme = [](const FitxaLloc &l) {
        return std::make_tuple(l.periodicitat.toInt(), l.primerMes, l.ultimMes, l.diaSetmana, l.dissabte, l.diumenge,
                               l.festius, l.hora);
    };
    FitxaLloc despres;
    if (r == Resultat::Fet && existia && m_gestio.carrega(f.nom, despres) && ritme(despres) != ritme(abans))
        emit ritmeCanviat(despres.nom);
}

void LlocsWidget::eliminarLloc()
{
    FitxaLloc f = fitxa();
    if (m_gestio.EliminarLloc(f) == Resultat::Fet) {
        recarregaLlocs(QString());
        emit llocsCanviats();
    }
}

void LlocsWidget::afegirServeiLloc()
{
    FitxaLloc f = fitxa();
    FitxaServeiLloc s = fitxaServei();
    const QString minutsAbans = f.minutsPrevist;
    const Resultat r = m_gestio.AfegirServeiLloc(f, s);
    if (r == Resultat::Res)
        return;
    if (f.nomAnt != m_nomLlocAnt || f.minutsPrevist != minutsAbans) {
        desaResultatLloc(f, Resultat::Fet);
        return;
    }
    recarregaLinies();
    if (r == Resultat::Fet)
        mostraServei(FitxaServeiLloc());
}

void LlocsWidget::modificarServeiLloc()
{
    FitxaLloc f = fitxa();
    FitxaServeiLloc s = fitxaServei();
    const QString minutsAbans = f.minutsPrevist;
    const Resultat r = m_gestio.ModificarServeiLloc(f, s);
    if (r != Resultat::Fet)
        return;
    if (f.nomAnt != m_nomLlocAnt || f.minutsPrevist != minutsAbans) {
        desaResultatLloc(f, Resultat::Fet);
        return;
    }
    recarregaLinies();
    mostraServei(s);
}

void LlocsWidget::eliminarServeiLloc()
{
    FitxaLloc f = fitxa();
    FitxaServeiLloc s = fitxaServei();
    if (m_gestio.EliminarServeiLloc(f, s) == Resultat::Fet) {
        recarregaLinies();
        mostraServei(s);
    }
}
