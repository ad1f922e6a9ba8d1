#include "calendari_widget.h"

#include "core/formats.h"
#include "core/traduccio.h"

#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

Qt::DayOfWeek diaQt(int diaSistema) // 1 = Sunday ... 7 = Saturday
{
    return Qt::DayOfWeek((diaSistema + 5) % 7 + 1);
}

QString capitalitza(const QString &t)
{
    return t.isEmpty() ? t : t.left(1).toUpper() + t.mid(1);
}

} // namespace

CalendariWidget::CalendariWidget(int primerDia, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("CalendariML"));
    m_calendari = new QCalendarWidget(this);
    m_calendari->setObjectName(QStringLiteral("CalendariMLGraella"));
    m_calendari->setNavigationBarVisible(false);
    m_calendari->setHorizontalHeaderFormat(QCalendarWidget::NoHorizontalHeader);
    m_calendari->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendari->setFirstDayOfWeek(diaQt(primerDia));
    m_calendari->setGridVisible(false);
    QTextCharFormat avui;
    avui.setFontWeight(QFont::Bold);
    avui.setForeground(palette().color(QPalette::Highlight));
    m_calendari->setDateTextFormat(QDate::currentDate(), avui);
    QTextCharFormat dissabte = m_calendari->weekdayTextFormat(Qt::Saturday);
    dissabte.setForeground(palette().color(QPalette::Text));
    m_calendari->setWeekdayTextFormat(Qt::Saturday, dissabte);

    m_anterior = new QToolButton(this);
    m_anterior->setArrowType(Qt::LeftArrow);
    m_anterior->setAutoRaise(true);
    m_anterior->setToolTip(Tradueix("Mes anterior"));
    m_seguent = new QToolButton(this);
    m_seguent->setArrowType(Qt::RightArrow);
    m_seguent->setAutoRaise(true);
    m_seguent->setToolTip(Tradueix("Mes següent"));
    m_mes = new QLabel(this);
    m_mes->setAlignment(Qt::AlignCenter);
    QFont fm = m_mes->font();
    fm.setBold(true);
    m_mes->setFont(fm);

    auto *barra = new QHBoxLayout;
    barra->setContentsMargins(0, 0, 0, 0);
    barra->addWidget(m_anterior);
    barra->addWidget(m_mes, 1);
    barra->addWidget(m_seguent);

    // The weekday names above the calendar's seven equal columns.
    auto *dies = new QHBoxLayout;
    dies->setContentsMargins(0, 0, 0, 0);
    dies->setSpacing(0);
    for (int i = 0; i < 7; ++i) {
        const int dia = (primerDia - 1 + i) % 7 + 1;
        auto *l = new QLabel(format::nomDiaCurt(dia), this);
        l->setObjectName(QStringLiteral("diaSetmana%1").arg(i));
        l->setAlignment(Qt::AlignCenter);
        QFont f = l->font();
        f.setPointSizeF(f.pointSizeF() * 0.9);
        l->setFont(f);
        if (dia == 1) {
            QPalette p = l->palette();
            p.setColor(QPalette::WindowText, QColor(0xB0, 0x30, 0x30));
            l->setPalette(p);
        } else {
            l->setForegroundRole(QPalette::PlaceholderText);
        }
        dies->addWidget(l, 1);
    }

    auto *l = new QVBoxLayout(this);
    l->setContentsMargins(0, 0, 0, 0);
    l->setSpacing(2);
    l->addLayout(barra);
    l->addLayout(dies);
    l->addWidget(m_calendari);

    connect(m_anterior, &QToolButton::clicked, this, [this] { canviaMes(-1); });
    connect(m_seguent, &QToolButton::clicked, this, [this] { canviaMes(1); });
    connect(m_calendari, &QCalendarWidget::currentPageChanged, this, [this](int, int) { actualitzaMes(); });
    connect(m_calendari, &QCalendarWidget::selectionChanged, this, [this] {
        if (!m_programatic)
            emit dataTriada(m_calendari->selectedDate());
    });
    // A click on the day already selected changes no selection but is still a pick.
    connect(m_calendari, &QCalendarWidget::clicked, this, [this](const QDate &d) {
        if (!m_programatic)
            emit dataTriada(d);
    });
    actualitzaMes();
}

QDate CalendariWidget::dataSeleccionada() const
{
    return m_calendari->selectedDate();
}

void CalendariWidget::setDataSeleccionada(const QDate &d)
{
    if (!d.isValid())
        return;
    m_programatic = true;
    m_calendari->setSelectedDate(d);
    m_calendari->setCurrentPage(d.year(), d.month());
    m_programatic = false;
    actualitzaMes();
}

QString CalendariWidget::textMes() const
{
    return m_mes->text();
}

void CalendariWidget::actualitzaMes()
{
    m_mes->setText(capitalitza(format::nomMes(m_calendari->monthShown())) + QLatin1Char(' ')
                   + QString::number(m_calendari->yearShown()));
}

void CalendariWidget::canviaMes(int sentit)
{
    // Moving the month moves the selected day with it, as the calendar's own arrows do.
    const QDate d = m_calendari->selectedDate().addMonths(sentit);
    m_calendari->setSelectedDate(d);
    m_calendari->setCurrentPage(d.year(), d.month());
}
