#pragma once
// The window shown while the program finishes starting: logo, name, description, version and the
// company the copy belongs to.

#include <QWidget>

class QLabel;

class frmSplash : public QWidget {
    Q_OBJECT
public:
    explicit frmSplash(QWidget *parent = nullptr);

    QLabel *lblProductName;
    QLabel *lblVersion;
    QLabel *lblCompanyName;

protected:
    void paintEvent(QPaintEvent *e) override;
};
