#include "previsio_planificacio_dialog.h"

#include "core/formats.h"
#include "core/traduccio.h"
#include "jobs/planificacio.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

enum Columna { ColLloc, ColDia, ColInici, ColRecurs, ColResultat, ColNota, NColumnes };

QString textResultat(const FeinaPlanificada &f)
{
    switch (f.resultat) {
    case FeinaPlanificada::Resultat::Ok:
        return Tradueix("Es crearà");
    case FeinaPlanificada::Resultat::SenseRecurs:
        return Tradueix("Sense recurs");
    case FeinaPlanificada::Resultat::Refusada:
        break;
    }
    return Tradueix("Refusada");
}

QString nota(const FeinaPlanificada &f)
{
    if (f.resultat == FeinaPlanificada::Resultat::Refusada)
        return f.missatge;
    if (f.festius.isEmpty())
        return QString();
    QStringList dies;
    for (const QDate &d : f.festius)
        dies << format::dataCurta(d);
    return Tradueix("Moguda per festiu:") + QLatin1Char(' ') + dies.join(QStringLiteral(", "));
}

} // namespace

PrevisioPlanificacioDialog::PrevisioPlanificacioDialog(const PrevisioPlanificacio &p, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(Tradueix("GENERACIO DE FEINES PLANIFICADES"));
    auto *capcalera = new QLabel(Tradueix("Feines que es generaran des del") + QLatin1Char(' ') + format::dataCurta(p.desde)
                                     + Tradueix(" fins al") + QLatin1Char(' ') + format::dataCurta(p.fins) + QLatin1Char(':'),
                                 this);

    m_taula = new QTableWidget(int(p.feines.size()), NColumnes, this);
    m_taula->setObjectName(QStringLiteral("PrevisioGrid"));
    m_taula->setHorizontalHeaderLabels({Tradueix("Lloc"), Tradueix("Dia"), Tradueix("Inici"), Tradueix("Recurs"),
                                        Tradueix("Resultat"), Tradueix("Observacions")});
    m_taula->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_taula->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_taula->verticalHeader()->hide();
    m_taula->horizontalHeader()->setStretchLastSection(true);
    QString llocAnterior;
    for (int i = 0; i < p.feines.size(); ++i) {
        const FeinaPlanificada &f = p.feines[i];
        // The place is written once, at the head of its jobs.
        const QString lloc = f.llocs_nom == llocAnterior ? QString() : f.llocs_nom;
        llocAnterior = f.llocs_nom;
        const QStringList textos = {
            lloc,
            format::nomDia(format::diaSetmana(f.feines_data)) + QLatin1Char(' ') + format::dataCurta(f.feines_data),
            f.feines_hora_inici,
            f.recursos_nom.isEmpty() && f.resultat != FeinaPlanificada::Resultat::Refusada ? Tradueix("<no assignada>")
                                                                                            : f.recursos_nom,
            textResultat(f),
            nota(f)};
        for (int c = 0; c < NColumnes; ++c) {
            auto *item = new QTableWidgetItem(textos[c]);
            if (f.resultat == FeinaPlanificada::Resultat::Refusada)
                item->setForeground(QColor(0xB0, 0x00, 0x00));
            else if (f.resultat == FeinaPlanificada::Resultat::SenseRecurs)
                item->setForeground(QColor(0xA0, 0x60, 0x00));
            if (c == ColNota)
                item->setToolTip(textos[c]);
            m_taula->setItem(i, c, item);
        }
    }
    m_taula->resizeColumnsToContents();

    m_comptes = new QLabel(QString::number(p.feines.size()) + Tradueix(" feines:") + QLatin1Char(' ')
                               + QString::number(p.compte(FeinaPlanificada::Resultat::Ok)) + Tradueix(" amb recurs,")
                               + QLatin1Char(' ') + QString::number(p.compte(FeinaPlanificada::Resultat::SenseRecurs))
                               + Tradueix(" sense recurs,") + QLatin1Char(' ')
                               + QString::number(p.compte(FeinaPlanificada::Resultat::Refusada)) + Tradueix(" refusades."),
                           this);
    m_comptes->setObjectName(QStringLiteral("ComptesPrevisio"));

    auto *botons = new QDialogButtonBox(this);
    QPushButton *generar = botons->addButton(Tradueix("Generar"), QDialogButtonBox::AcceptRole);
    generar->setObjectName(QStringLiteral("OKButton"));
    QPushButton *cancel = botons->addButton(Tradueix("Cancel·lar"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    // Enter must not plan by accident: the safe button is the default.
    cancel->setDefault(true);
    cancel->setFocus();
    connect(botons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(botons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *l = new QVBoxLayout(this);
    l->addWidget(capcalera);
    l->addWidget(m_taula, 1);
    l->addWidget(m_comptes);
    l->addWidget(botons);
    resize(820, 520);
}
