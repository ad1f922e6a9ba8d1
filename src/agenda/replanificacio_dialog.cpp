#include "replanificacio_dialog.h"

#include "core/formats.h"
#include "core/traduccio.h"
#include "jobs/replanificacio.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QString dia(const QDate &d)
{
    return format::nomDia(format::diaSetmana(d)) + QLatin1Char(' ') + format::dataCurta(d);
}

QTableWidget *taula(const QList<QStringList> &files, const QString &nom, QWidget *pare)
{
    auto *t = new QTableWidget(int(files.size()), 3, pare);
    t->setObjectName(nom);
    t->setHorizontalHeaderLabels({Tradueix("Dia"), Tradueix("Hora"), Tradueix("Recurs")});
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->verticalHeader()->hide();
    t->horizontalHeader()->setStretchLastSection(true);
    for (int r = 0; r < files.size(); ++r)
        for (int c = 0; c < 3; ++c)
            t->setItem(r, c, new QTableWidgetItem(files[r].value(c)));
    t->resizeColumnsToContents();
    return t;
}

} // namespace

ReplanificacioDialog::ReplanificacioDialog(const PrevisioReplanificacio &p, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(Tradueix("REPLANIFICACIO DEL LLOC"));
    QList<QStringList> velles;
    for (const Feina &f : p.esborrades)
        velles << QStringList{dia(f.feines_data), f.feines_hora_inici + QStringLiteral(" - ") + f.feines_hora_fi,
                              f.recursos_nom.isEmpty() ? Tradueix("<no assignada>") : f.recursos_nom};
    QList<QStringList> noves;
    for (const FeinaPlanificada &f : p.noves.feines) {
        const QString recurs = f.resultat == FeinaPlanificada::Resultat::Refusada
                                   ? Tradueix("REFUSADA:") + QLatin1Char(' ') + f.missatge
                                   : (f.recursos_nom.isEmpty() ? Tradueix("<no assignada>") : f.recursos_nom);
        noves << QStringList{dia(f.feines_data), f.feines_hora_inici, recurs};
    }
    m_esborrades = taula(velles, QStringLiteral("FeinesEsborrades"), this);
    m_noves = taula(noves, QStringLiteral("FeinesNoves"), this);

    auto *botons = new QDialogButtonBox(this);
    QPushButton *ok = botons->addButton(Tradueix("Replanificar"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("OKButton"));
    QPushButton *cancel = botons->addButton(Tradueix("Cancel·lar"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    cancel->setDefault(true);
    connect(botons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(botons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *l = new QVBoxLayout(this);
    l->addWidget(new QLabel(Tradueix("El ritme del lloc '%1' ha canviat. Feines pendents que s'esborrarien:").arg(p.lloc), this));
    l->addWidget(m_esborrades, 1);
    l->addWidget(new QLabel(Tradueix("Feines que el nou ritme crearia fins al %1:").arg(format::dataCurta(p.noves.fins)), this));
    l->addWidget(m_noves, 1);
    l->addWidget(botons);
    resize(560, 520);
}
