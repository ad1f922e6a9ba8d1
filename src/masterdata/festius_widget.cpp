#include "festius_widget.h"

#include "formulari_widget.h"

#include "core/formats.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/festius.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

FestiusWidget::FestiusWidget(Sessio &sessio, Interaccio &io, QWidget *parent)
    : QGroupBox(Tradueix("Festius"), parent), m_sessio(sessio), m_io(io)
{
    setObjectName(QStringLiteral("Festius"));
    m_llista = new QTableWidget(0, 2, this);
    m_llista->setObjectName(QStringLiteral("LlistaFestius"));
    m_llista->setHorizontalHeaderLabels({Tradueix("Data"), Tradueix("Descripció")});
    m_llista->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_llista->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_llista->setSelectionMode(QAbstractItemView::SingleSelection);
    m_llista->verticalHeader()->hide();
    m_llista->horizontalHeader()->setStretchLastSection(true);
    m_data = formulari::camp(QStringLiteral("DataFestiu"), this, 10);
    m_data->setPlaceholderText(Tradueix("dd/mm/aaaa"));
    m_descripcio = formulari::camp(QStringLiteral("DescripcioFestiu"), this, 100);
    m_afegir = formulari::boto(Tradueix("Afegir"), QStringLiteral("AfegirFestiu"), this);
    m_eliminar = formulari::boto(Tradueix("Eliminar"), QStringLiteral("EliminarFestiu"), this);
    m_importar = formulari::boto(Tradueix("Importar .ics..."), QStringLiteral("ImportarFestius"), this);

    auto *g = new QGridLayout(this);
    g->addWidget(m_llista, 0, 0, 1, 2);
    auto *etData = new QLabel(Tradueix("Data"), this);
    etData->setBuddy(m_data);
    g->addWidget(etData, 1, 0);
    g->addWidget(m_data, 1, 1);
    auto *etDescripcio = new QLabel(Tradueix("Descripció"), this);
    etDescripcio->setBuddy(m_descripcio);
    g->addWidget(etDescripcio, 2, 0);
    g->addWidget(m_descripcio, 2, 1);
    auto *botons = new QHBoxLayout;
    for (QPushButton *b : {m_afegir, m_eliminar, m_importar})
        botons->addWidget(b);
    botons->addStretch();
    g->addLayout(botons, 3, 0, 1, 2);
    g->setRowStretch(0, 1);

    triaFitxer = [this] {
        return QFileDialog::getOpenFileName(this, Tradueix("Importar festius"), QString(),
                                            Tradueix("Calendaris iCalendar (*.ics)"));
    };
    connect(m_afegir, &QPushButton::clicked, this, &FestiusWidget::afegir);
    connect(m_eliminar, &QPushButton::clicked, this, &FestiusWidget::eliminar);
    connect(m_importar, &QPushButton::clicked, this, [this] {
        const QString f = triaFitxer();
        if (!f.isEmpty())
            importa(f);
    });
    connect(m_llista, &QTableWidget::currentCellChanged, this, [this](int fila) {
        if (fila < 0)
            return;
        m_data->setText(m_llista->item(fila, 0)->text());
        m_descripcio->setText(m_llista->item(fila, 1)->text());
    });
    recarrega();
}

void FestiusWidget::recarrega()
{
    try {
        const QList<Festiu> festius = Festius(m_sessio.db()).llista();
        m_llista->setRowCount(0);
        m_llista->setRowCount(int(festius.size()));
        for (int i = 0; i < festius.size(); ++i) {
            m_llista->setItem(i, 0, new QTableWidgetItem(format::dataCurta(festius[i].data)));
            m_llista->setItem(i, 1, new QTableWidgetItem(festius[i].descripcio));
        }
        m_llista->resizeColumnToContents(0);
    } catch (const DbError &e) {
        m_io.error(QStringLiteral("ERROR"), QStringLiteral("Error:") + e.text());
    }
}

void FestiusWidget::canviat()
{
    // The agenda marks closed days in its headers.
    m_sessio.RefrescarAgenda = true;
    recarrega();
}

void FestiusWidget::afegir()
{
    const QDate data = format::llegeixData(m_data->text().trimmed());
    if (!data.isValid()) {
        m_io.informa(Tradueix("AVÍS"), Tradueix("Data incorrecta"));
        m_data->setFocus();
        return;
    }
    const QString r = Festius(m_sessio.db()).Afegeix_Festiu(data, m_descripcio->text());
    if (!r.isEmpty()) {
        m_io.informa(Tradueix("AVÍS"), r);
        return;
    }
    canviat();
    m_data->clear();
    m_descripcio->clear();
    m_data->setFocus();
}

void FestiusWidget::eliminar()
{
    const int fila = m_llista->currentRow();
    if (fila < 0)
        return;
    const QDate data = format::llegeixData(m_llista->item(fila, 0)->text());
    const QString r = Festius(m_sessio.db()).Esborra_Festiu(data);
    if (!r.isEmpty()) {
        m_io.informa(Tradueix("AVÍS"), r);
        return;
    }
    canviat();
}

void FestiusWidget::importa(const QString &fitxer)
{
    const ResultatImportacio r = Festius(m_sessio.db()).Importa_Festius(fitxer);
    if (!r.error.isEmpty()) {
        m_io.error(QStringLiteral("ERROR"), r.error);
        return;
    }
    canviat();
    QString text = QString::number(r.afegits) + Tradueix(" festius importats.");
    if (!r.avisos.isEmpty())
        text += QStringLiteral("\n\n") + r.avisos.join(QLatin1Char('\n'));
    m_io.informa(Tradueix("Importar festius"), text);
}
