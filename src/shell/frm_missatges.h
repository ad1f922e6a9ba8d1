#pragma once
// The message window of the long operations (the planning, the monthly billing summary): a
// caption, a log that grows as the operation writes to it and a close button that stays disabled
// while the operation runs. One instance, created on first use.

#include "core/interaccio.h"

#include <QDialog>

class QPlainTextEdit;
class QPushButton;

class frmMissatges : public QDialog, public RegistreSortida {
    Q_OBJECT
public:
    explicit frmMissatges(QWidget *parent = nullptr);

    // RegistreSortida
    void afegeix(const QString &text) override; // appended as given; CR LF ends a line
    void titol(const QString &text) override;
    // true: the operation starts (window shown, Tancar disabled, busy pointer); false: it ended.
    void ocupat(bool ocupat) override;

    QString text() const;
    void buida();
    bool esOcupat() const { return m_ocupat; }

    QPlainTextEdit *Missatges;
    QPushButton *Tancar;

protected:
    void closeEvent(QCloseEvent *e) override;
    void reject() override;
    QSize sizeHint() const override;

private:
    bool m_ocupat = false;
};
