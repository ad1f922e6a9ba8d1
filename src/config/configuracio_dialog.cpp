#include "configuracio_dialog.h"

#include "comprovacio_bd.h"
#include "manteniment.h"

#include "core/formats.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "widgets/mnemonics.h"
#include "widgets/protegeix.h"
#include "widgets/seleccio_text.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFocusEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

using namespace edicio_configuracio;

namespace {

QGroupBox *marc(const char *titol, QWidget *pare)
{
    // Frame captions are shown in capitals in every language.
    auto *g = new QGroupBox(Tradueix(titol).toUpper(), pare);
    return g;
}

QLineEdit *campNumeric(QWidget *pare, const char *nom, int caracters)
{
    auto *c = new QLineEdit(pare);
    c->setObjectName(QString::fromLatin1(nom));
    c->setAlignment(Qt::AlignRight);
    const QFontMetrics fm(c->font());
    c->setFixedWidth(fm.horizontalAdvance(QLatin1Char('0')) * caracters + 16);
    return c;
}

QComboBox *llistaHores(QWidget *pare, const char *nom)
{
    auto *c = new QComboBox(pare);
    c->setObjectName(QString::fromLatin1(nom));
    c->setMaxVisibleItems(16);
    c->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return c;
}

QLabel *etiqueta(const char *text, QWidget *buddy, QWidget *pare)
{
    auto *l = new QLabel(Tradueix(text), pare);
    l->setBuddy(buddy);
    return l;
}

class PunterOcupat {
public:
    PunterOcupat() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~PunterOcupat() { QApplication::restoreOverrideCursor(); }
};

} // namespace

frmConfiguracio::frmConfiguracio(Sessio &sessio, Interaccio &ui, QWidget *parent)
    : QDialog(parent), m_sessio(sessio), m_ui(ui)
{
    setObjectName(QStringLiteral("frmConfiguracio"));
    setWindowTitle(Tradueix("Configuració"));
    construeix();
    omple();
    assignaMnemonics(this);
}

void frmConfiguracio::construeix()
{
    // ---- BASE DE DADES
    fraBaseDades = marc(PerTraduir("BASE DE DADES"), this);
    txtBD = new QLineEdit(fraBaseDades);
    txtBD->setObjectName(QStringLiteral("txtBD"));
    txtBD->setMinimumWidth(QFontMetrics(txtBD->font()).horizontalAdvance(QLatin1Char('x')) * 52);
    btnSeleccionaBD = new QPushButton(Tradueix("Seleccionar..."), fraBaseDades);
    btnSeleccionaBD->setObjectName(QStringLiteral("btnSeleccionaBD"));
    btnSeleccionaBD->setAutoDefault(false);
    txtDataPurgat = campNumeric(fraBaseDades, "txtDataPurgat", 10);
    txtDataPurgat->setAlignment(Qt::AlignLeft);
    btnPurgarBD = new QPushButton(Tradueix("Purgar"), fraBaseDades);
    btnPurgarBD->setObjectName(QStringLiteral("btnPurgarBD"));
    btnPurgarBD->setAutoDefault(false);
    lblDataPurgat = etiqueta(PerTraduir("Esborrar feines fins al:"), txtDataPurgat, fraBaseDades);
    btnComprovaBD = new QPushButton(Tradueix("Comprova la base de dades"), fraBaseDades);
    btnComprovaBD->setObjectName(QStringLiteral("btnComprovaBD"));
    btnComprovaBD->setAutoDefault(false);
    auto *filaBD = new QHBoxLayout;
    filaBD->addWidget(txtBD, 1);
    filaBD->addWidget(btnSeleccionaBD);
    auto *filaPurga = new QHBoxLayout;
    filaPurga->addWidget(txtDataPurgat);
    filaPurga->addWidget(btnPurgarBD);
    filaPurga->addStretch();
    auto *fBD = new QFormLayout(fraBaseDades);
    fBD->addRow(etiqueta(PerTraduir("Fitxer:"), txtBD, fraBaseDades), filaBD);
    fBD->addRow(lblDataPurgat, filaPurga);
    auto *filaComprova = new QHBoxLayout;
    filaComprova->addWidget(btnComprovaBD);
    filaComprova->addStretch();
    fBD->addRow(QString(), filaComprova);

    // ---- PLANIFICACIO
    fraPlanificacio = marc(PerTraduir("PLANIFICACIO"), this);
    txtMinutsCella = campNumeric(fraPlanificacio, "txtMinutsCella", 5);
    ComboHoraInici = llistaHores(fraPlanificacio, "ComboHoraInici");
    ComboHoraFinal = llistaHores(fraPlanificacio, "ComboHoraFinal");
    chkPermetSolaparLlocs = new QCheckBox(Tradueix("Permet solapar feines en un mateix lloc"), fraPlanificacio);
    chkPermetSolaparLlocs->setObjectName(QStringLiteral("chkPermetSolaparLlocs"));
    txtUltDiaGenerat = campNumeric(fraPlanificacio, "txtUltDiaGenerat", 10);
    txtUltDiaGenerat->setAlignment(Qt::AlignLeft);
    lblUltDiaGenerat = etiqueta(PerTraduir("Últim dia planificat:"), txtUltDiaGenerat, fraPlanificacio);
    auto *filaMinuts = new QHBoxLayout;
    filaMinuts->addWidget(txtMinutsCella);
    filaMinuts->addWidget(new QLabel(Tradueix("minuts"), fraPlanificacio));
    filaMinuts->addStretch();
    auto *fPla = new QFormLayout(fraPlanificacio);
    fPla->addRow(etiqueta(PerTraduir("Tram mínim:"), txtMinutsCella, fraPlanificacio), filaMinuts);
    fPla->addRow(etiqueta(PerTraduir("Hora inici:"), ComboHoraInici, fraPlanificacio), ComboHoraInici);
    fPla->addRow(etiqueta(PerTraduir("Hora final:"), ComboHoraFinal, fraPlanificacio), ComboHoraFinal);
    fPla->addRow(lblUltDiaGenerat, txtUltDiaGenerat);
    fPla->addRow(chkPermetSolaparLlocs);

    // ---- HORES EXTRA
    fraHoresExtra = marc(PerTraduir("HORES EXTRA"), this);
    txtHoresDia = campNumeric(fraHoresExtra, "txtHoresDia", 7);
    ComboHoraIniciDinar = llistaHores(fraHoresExtra, "ComboHoraIniciDinar");
    ComboHoraFinalDinar = llistaHores(fraHoresExtra, "ComboHoraFinalDinar");
    chkCalculHoresFetes = new QCheckBox(Tradueix("Comptar només les hores ocupades per feines"), fraHoresExtra);
    chkCalculHoresFetes->setObjectName(QStringLiteral("chkCalculHoresFetes"));
    chkDissabtesExtra = new QCheckBox(Tradueix("Els dissabtes tot són hores extra"), fraHoresExtra);
    chkDissabtesExtra->setObjectName(QStringLiteral("chkDissabtesExtra"));
    chkDiumengesExtra = new QCheckBox(Tradueix("Els diumenges tot són hores extra"), fraHoresExtra);
    chkDiumengesExtra->setObjectName(QStringLiteral("chkDiumengesExtra"));
    auto *fHE = new QFormLayout(fraHoresExtra);
    fHE->addRow(etiqueta(PerTraduir("Hores per dia:"), txtHoresDia, fraHoresExtra), txtHoresDia);
    fHE->addRow(etiqueta(PerTraduir("Inici del dinar:"), ComboHoraIniciDinar, fraHoresExtra), ComboHoraIniciDinar);
    fHE->addRow(etiqueta(PerTraduir("Final del dinar:"), ComboHoraFinalDinar, fraHoresExtra), ComboHoraFinalDinar);
    fHE->addRow(chkCalculHoresFetes);
    fHE->addRow(chkDissabtesExtra);
    fHE->addRow(chkDiumengesExtra);

    // ---- XECS
    fraXecs = marc(PerTraduir("XECS"), this);
    ComboServeiXecs = new QComboBox(fraXecs);
    ComboServeiXecs->setObjectName(QStringLiteral("ComboServeiXecs"));
    ComboServeiXecs->setMinimumContentsLength(18);
    ComboServeiXecs->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    txtNMaxXecsMes = campNumeric(fraXecs, "txtNMaxXecsMes", 7);
    txtValorDftXec = campNumeric(fraXecs, "txtValorDftXec", 9);
    txtCostHoraXec = campNumeric(fraXecs, "txtCostHoraXec", 9);
    auto *fX = new QFormLayout(fraXecs);
    fX->addRow(etiqueta(PerTraduir("Servei pagat amb xecs:"), ComboServeiXecs, fraXecs), ComboServeiXecs);
    fX->addRow(etiqueta(PerTraduir("Màxim de xecs per mes:"), txtNMaxXecsMes, fraXecs), txtNMaxXecsMes);
    fX->addRow(etiqueta(PerTraduir("Valor per defecte del xec:"), txtValorDftXec, fraXecs), txtValorDftXec);
    fX->addRow(etiqueta(PerTraduir("Cost per hora del xec:"), txtCostHoraXec, fraXecs), txtCostHoraXec);

    // ---- LOCALITZACIO
    fraLocalitzacio = marc(PerTraduir("LOCALITZACIO"), this);
    ComboSelIdioma = new QComboBox(fraLocalitzacio);
    ComboSelIdioma->setObjectName(QStringLiteral("ComboSelIdioma"));
    ComboSelIdioma->setMinimumContentsLength(16);
    auto *fL = new QFormLayout(fraLocalitzacio);
    // Times and amounts keep their natural width instead of stretching across the frame.
    for (QFormLayout *f : {fPla, fHE, fX, fL})
        f->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    fL->addRow(etiqueta(PerTraduir("Idioma:"), ComboSelIdioma, fraLocalitzacio), ComboSelIdioma);

    // ---- buttons
    OKButton = new QPushButton(Tradueix("Configurar"), this);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    CancelButton = new QPushButton(Tradueix("Cancel·lar"), this);
    CancelButton->setObjectName(QStringLiteral("CancelButton"));
    CancelButton->setAutoDefault(false);
    auto *botons = new QDialogButtonBox(this);
    botons->addButton(OKButton, QDialogButtonBox::AcceptRole);
    botons->addButton(CancelButton, QDialogButtonBox::RejectRole);

    auto *g = new QGridLayout(this);
    g->setHorizontalSpacing(12);
    g->setVerticalSpacing(10);
    g->addWidget(fraBaseDades, 0, 0, 1, 2);
    g->addWidget(fraPlanificacio, 1, 0);
    g->addWidget(fraHoresExtra, 1, 1);
    g->addWidget(fraXecs, 2, 0);
    g->addWidget(fraLocalitzacio, 2, 1, Qt::AlignTop);
    g->setRowStretch(3, 1);
    g->addWidget(botons, 4, 0, 1, 2);
    g->setColumnStretch(0, 1);
    g->setColumnStretch(1, 1);

    // The order a keyboard user expects: frame by frame, top to bottom.
    const QList<QWidget *> ordre{txtBD, btnSeleccionaBD, txtDataPurgat, btnPurgarBD, btnComprovaBD,
                                 txtMinutsCella, ComboHoraInici, ComboHoraFinal, txtUltDiaGenerat, chkPermetSolaparLlocs,
                                 txtHoresDia, ComboHoraIniciDinar, ComboHoraFinalDinar, chkCalculHoresFetes,
                                 chkDissabtesExtra, chkDiumengesExtra,
                                 ComboServeiXecs, txtNMaxXecsMes, txtValorDftXec, txtCostHoraXec,
                                 ComboSelIdioma, OKButton, CancelButton};
    for (int i = 0; i + 1 < ordre.size(); ++i)
        setTabOrder(ordre[i], ordre[i + 1]);

    m_ordreCamps = {txtMinutsCella, txtUltDiaGenerat, txtHoresDia, txtNMaxXecsMes, txtValorDftXec, txtCostHoraXec};
    m_camps = {{txtMinutsCella, Camp::MinutsCella}, {txtHoresDia, Camp::HoresDia},
               {txtValorDftXec, Camp::ValorXec},     {txtCostHoraXec, Camp::CostHoraXec},
               {txtNMaxXecsMes, Camp::MaxXecsMes},   {txtUltDiaGenerat, Camp::UltimDiaGen}};
    for (QLineEdit *c : std::as_const(m_ordreCamps))
        c->installEventFilter(this);
    for (QLineEdit *c : {txtCostHoraXec, txtDataPurgat, txtHoresDia, txtMinutsCella, txtNMaxXecsMes,
                         txtUltDiaGenerat, txtValorDftXec})
        seleccionaTotEnEntrar(c);

    connect(ComboServeiXecs, &QComboBox::currentIndexChanged, this, &frmConfiguracio::canviServeiXecs);
    connect(OKButton, &QPushButton::clicked, this, &frmConfiguracio::confirma);
    connect(CancelButton, &QPushButton::clicked, this, &frmConfiguracio::reject);
    connect(btnPurgarBD, &QPushButton::clicked, this, &frmConfiguracio::purga);
    connect(btnComprovaBD, &QPushButton::clicked, this, &frmConfiguracio::comprovaBD);
    connect(btnSeleccionaBD, &QPushButton::clicked, this, &frmConfiguracio::seleccionaBD);
    connect(txtBD, &QLineEdit::editingFinished, this, [this] { txtBD->setCursorPosition(txtBD->text().size()); });
}

void frmConfiguracio::omple()
{
    const Configuracio &cfg = m_sessio.cfg();
    const Valors v = valorsInicials(m_sessio);

    mostraBD(v.BaseDades);
    txtMinutsCella->setText(v.MinutsCella);
    m_minutsAcceptats = cfg.MinutsCella;
    txtHoresDia->setText(v.HoresDia);
    chkDissabtesExtra->setChecked(v.DissabtesExtra);
    chkDiumengesExtra->setChecked(v.DiumengesExtra);
    chkCalculHoresFetes->setChecked(v.CalculxHores);
    chkPermetSolaparLlocs->setChecked(v.PermetSolaparLlocs);
    txtUltDiaGenerat->setText(v.UltimDiaGen);
    construeixLlistesHores();

    ComboServeiXecs->blockSignals(true);
    ComboServeiXecs->clear();
    ComboServeiXecs->addItems(serveisXecs(m_sessio.db()));
    int servei = ComboServeiXecs->findText(cfg.ServeiXecs, Qt::MatchFixedString);
    if (cfg.ServeiXecs.isEmpty() || servei < 0)
        servei = 0;
    ComboServeiXecs->setCurrentIndex(servei);
    ComboServeiXecs->blockSignals(false);
    canviServeiXecs(servei);

    ComboSelIdioma->addItems(llistaIdiomes(cfg.fitxerIni));
    ComboSelIdioma->setCurrentIndex(v.Idioma.isEmpty() ? -1 : ComboSelIdioma->findText(v.Idioma));

    txtDataPurgat->setText(format::dataCurta(dataPurgaInicial(QDate::currentDate())));

    if (cfg.PrimeraExecucio) {
        // The language has just been chosen, and there is nothing to purge or to have planned yet.
        CancelButton->setEnabled(false);
        btnPurgarBD->hide();
        btnComprovaBD->hide();
        txtDataPurgat->hide();
        lblDataPurgat->hide();
        txtUltDiaGenerat->hide();
        lblUltDiaGenerat->hide();
        fraLocalitzacio->hide();
    }
}

void frmConfiguracio::mostraBD(const QString &cami)
{
    txtBD->setText(cami);
    txtBD->setCursorPosition(cami.size()); // the file name is the part that matters
}

void frmConfiguracio::construeixLlistesHores()
{
    const Configuracio &cfg = m_sessio.cfg();
    const LlistesHores l = llistesHores(m_minutsAcceptats);
    const struct {
        QComboBox *combo;
        const QStringList &llista;
        QString inicial;
    } llistes[] = {
        {ComboHoraInici, l.inicis, cfg.HoraInici},
        {ComboHoraFinal, l.finals, cfg.HoraFinal},
        {ComboHoraIniciDinar, l.inicis, cfg.HoraIniciDinar},
        {ComboHoraFinalDinar, l.finals, cfg.HoraFinalDinar},
    };
    for (const auto &e : llistes) {
        if (!m_horesTriades.contains(e.combo)) {
            m_horesTriades.insert(e.combo, e.inicial);
            connect(e.combo, &QComboBox::activated, this,
                    [this, combo = e.combo](int i) { m_horesTriades.insert(combo, combo->itemText(i)); });
        }
        const QSignalBlocker b(e.combo);
        e.combo->clear();
        e.combo->addItems(e.llista);
        e.combo->setCurrentIndex(indexHora(e.llista, m_horesTriades.value(e.combo)));
    }
}

void frmConfiguracio::canviServeiXecs(int index)
{
    const bool actiu = index > 0;
    const Configuracio &cfg = m_sessio.cfg();
    txtNMaxXecsMes->setText(actiu ? QString::number(cfg.MaxXecsMes) : QString());
    txtValorDftXec->setText(actiu ? textDecimal(cfg.ValorXec) : QString());
    txtCostHoraXec->setText(actiu ? textDecimal(cfg.CostHoraXec) : QString());
    for (QLineEdit *c : {txtNMaxXecsMes, txtValorDftXec, txtCostHoraXec})
        c->setEnabled(actiu);
}

Valors frmConfiguracio::valors() const
{
    Valors v;
    v.BaseDades = txtBD->text().trimmed();
    v.MinutsCella = txtMinutsCella->text().trimmed();
    v.HoraInici = ComboHoraInici->currentText();
    v.HoraFinal = ComboHoraFinal->currentText();
    v.HoresDia = txtHoresDia->text().trimmed();
    v.DissabtesExtra = chkDissabtesExtra->isChecked();
    v.DiumengesExtra = chkDiumengesExtra->isChecked();
    v.CalculxHores = chkCalculHoresFetes->isChecked();
    v.HoraIniciDinar = ComboHoraIniciDinar->currentText();
    v.HoraFinalDinar = ComboHoraFinalDinar->currentText();
    v.ServeiXecs = ComboServeiXecs->currentIndex() > 0 ? ComboServeiXecs->currentText() : QString();
    v.ValorXec = txtValorDftXec->text().trimmed();
    v.CostHoraXec = txtCostHoraXec->text().trimmed();
    v.MaxXecsMes = txtNMaxXecsMes->text().trimmed();
    v.PermetSolaparLlocs = chkPermetSolaparLlocs->isChecked();
    v.Idioma = ComboSelIdioma->currentText();
    v.UltimDiaGen = txtUltDiaGenerat->text().trimmed();
    return v;
}

bool frmConfiguracio::eventFilter(QObject *obj, QEvent *e)
{
    if (e->type() == QEvent::FocusOut && !m_comprovant && isVisible()) {
        auto *camp = qobject_cast<QLineEdit *>(obj);
        const auto motiu = static_cast<QFocusEvent *>(e)->reason();
        // Switching to another program, or opening a list, is not leaving the field; going to
        // Cancel throws the value away anyway.
        const bool cancel = QApplication::focusWidget() == CancelButton && CancelButton->isEnabled();
        if (camp && m_camps.contains(camp) && motiu != Qt::ActiveWindowFocusReason && motiu != Qt::PopupFocusReason
            && !cancel) {
            // The check runs once the focus change is over: a message box inside a focus event
            // would leave a pressed button stuck down.
            m_pendent = camp;
            QTimer::singleShot(0, this, [this, camp] {
                if (m_pendent == camp) {
                    m_pendent = nullptr;
                    comprovaCamp(camp);
                }
            });
        }
    }
    return QDialog::eventFilter(obj, e);
}

bool frmConfiguracio::comprovaCamp(QLineEdit *camp)
{
    if (!camp || !camp->isEnabled() || camp->isHidden())
        return true;
    const Comprovacio c = comprova(m_camps.value(camp), camp->text(), &m_minutsAcceptats);
    if (c.missatge.isEmpty()) {
        camp->setText(c.text);
        if (c.canviaLlistesHores)
            construeixLlistesHores();
        return true;
    }
    m_comprovant = true;
    m_ui.informa(QString(), c.missatge);
    camp->setFocus(Qt::OtherFocusReason);
    camp->selectAll();
    m_comprovant = false;
    return false;
}

void frmConfiguracio::confirma()
{
    // Enter confirms without leaving the field: check it first, then every other one.
    if (m_pendent) {
        QLineEdit *camp = m_pendent;
        m_pendent = nullptr;
        if (!comprovaCamp(camp))
            return;
    }
    for (QLineEdit *camp : std::as_const(m_ordreCamps)) {
        if (!comprovaCamp(camp))
            return;
    }
    protegeix(m_ui, [&] {
        const Resultat r = edicio_configuracio::confirma(m_sessio, valors(), m_ui);
        if (r == Resultat::Incoherent) {
            txtMinutsCella->setFocus(Qt::OtherFocusReason);
            txtMinutsCella->selectAll();
        } else if (r == Resultat::DiaIncorrecte) {
            ComboHoraFinal->setFocus(Qt::OtherFocusReason);
        } else if (r == Resultat::DinarIncorrecte) {
            ComboHoraIniciDinar->setFocus(Qt::OtherFocusReason);
        } else if (r == Resultat::BaseDadesRebutjada) {
            txtBD->setFocus(Qt::OtherFocusReason);
            txtBD->selectAll();
        } else if (r == Resultat::Gravat) {
            accept();
        }
    });
}

void frmConfiguracio::reject()
{
    // On the first run the configuration must be confirmed.
    if (m_sessio.cfg().PrimeraExecucio)
        return;
    m_pendent = nullptr;
    m_sessio.ReiniciarAplicacio = false;
    QDialog::reject();
}

void frmConfiguracio::purga()
{
    const QString data = txtDataPurgat->text().trimmed();
    protegeix(m_ui, [&] {
        PunterOcupat punter;
        manteniment::Purga_BD(m_sessio, data, m_ui);
    });
}

void frmConfiguracio::comprovaBD()
{
    protegeix(m_ui, [&] {
        comprovacio_bd::Informe informe;
        {
            PunterOcupat punter;
            informe = comprovacio_bd::comprova(m_sessio.db());
        }
        if (informe.correcta())
            m_ui.informa(QStringLiteral("Quadrella"), comprovacio_bd::text(informe));
        else
            m_ui.error(QStringLiteral("ERROR"), comprovacio_bd::text(informe));
    });
}

void frmConfiguracio::seleccionaBD()
{
    const QString actual = txtBD->text().trimmed();
    QString triat;
    if (triaFitxer) {
        triat = triaFitxer(this, actual);
    } else {
        triat = QFileDialog::getOpenFileName(this, Tradueix("Selecció de Base de Dades"),
                                             QFileInfo(actual).absolutePath(),
                                             Tradueix("Base de Dades Quadrella") + QStringLiteral(" (*.db)"));
    }
    if (!triat.isEmpty())
        mostraBD(triat);
}
