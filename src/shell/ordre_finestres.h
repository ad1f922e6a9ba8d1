#pragma once
// Remembers in which order the program's windows were opened, so that shutting down can close
// them newest first, as a user closing them by hand would.

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

class OrdreFinestres : public QObject {
    Q_OBJECT
public:
    explicit OrdreFinestres(QObject *parent = nullptr); // watches the whole application
    ~OrdreFinestres() override;

    // The visible windows other than `excepte`, most recently shown first.
    QList<QWidget *> obertes(const QWidget *excepte = nullptr) const;
    // Closes them in that order; returns how many closed.
    int tancaTotes(const QWidget *excepte = nullptr);

protected:
    bool eventFilter(QObject *obj, QEvent *e) override;

private:
    QList<QPointer<QWidget>> m_ordre;
};
