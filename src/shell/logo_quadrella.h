#pragma once
// Quadrella's logo, painted rather than shipped as a bitmap so that it stays sharp at every size:
// a small planning grid with a few coloured jobs on it.

#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QRectF>

class QPainter;

void pintaLogo(QPainter &p, const QRectF &rect);
QPixmap pixmapLogo(int mida, qreal ratio = 1.0);
QIcon iconaQuadrella();

// The logo on the credits page: a click opens the maker's web site in the browser.
class LogoClicable : public QLabel {
    Q_OBJECT
public:
    explicit LogoClicable(int mida, QWidget *parent = nullptr);

signals:
    void clicat();

protected:
    void mouseReleaseEvent(QMouseEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;
};
