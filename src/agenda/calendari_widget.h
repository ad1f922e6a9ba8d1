#pragma once
// The agenda's month calendar (CalendariML): a QCalendarWidget whose month and weekday names are
// the program's own translated names, not the system locale's, with the week starting on the
// system's first weekday. A click or a keyboard move of the user reports the new date; dates set
// by the program report nothing.

#include <QDate>
#include <QWidget>

class QCalendarWidget;
class QLabel;
class QToolButton;

class CalendariWidget : public QWidget {
    Q_OBJECT
public:
    // primerDia: 1 = Sunday ... 7 = Saturday.
    explicit CalendariWidget(int primerDia, QWidget *parent = nullptr);

    QDate dataSeleccionada() const;
    // Shows a date without reporting it.
    void setDataSeleccionada(const QDate &d);
    QCalendarWidget *calendari() const { return m_calendari; }
    QString textMes() const;

signals:
    // The user picked a date (click, keyboard, or a month arrow that moved the selection).
    void dataTriada(const QDate &d);

private:
    void actualitzaMes();
    void canviaMes(int sentit);

    QCalendarWidget *m_calendari;
    QLabel *m_mes;
    QToolButton *m_anterior;
    QToolButton *m_seguent;
    bool m_programatic = false;
};
