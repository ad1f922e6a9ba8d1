#pragma once
// Questions and messages of the desktop program: message boxes over the window the user is
// working in, with the system's own titles and translated buttons.

#include "core/interaccio.h"

#include <QPointer>
#include <QWidget>

class InteraccioMissatges : public Interaccio {
public:
    explicit InteraccioMissatges(QWidget *pare = nullptr) : m_pare(pare) {}
    void setPare(QWidget *pare) { m_pare = pare; }

    void informa(const QString &titol, const QString &text) override;
    bool pregunta(const QString &titol, const QString &text) override;
    bool preguntaPerDefecteNo(const QString &titol, const QString &text) override;
    void error(const QString &titol, const QString &text) override;

private:
    QWidget *pareActual() const;
    QPointer<QWidget> m_pare;
};
