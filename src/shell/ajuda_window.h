#pragma once
// The manual inside the program (F1): the shipped HTML pages in a browser of their own, so help
// works on a machine without a desktop browser. Links between the pages stay inside; links to the
// web go to the desktop's browser when there is one.

#include <QDialog>
#include <QUrl>

class QTextBrowser;
class QToolButton;

class AjudaWindow : public QDialog {
    Q_OBJECT
public:
    explicit AjudaWindow(QWidget *parent = nullptr);

    // Shows `fitxer` (a page of the manual) and brings the window up.
    void mostra(const QString &fitxer);
    QUrl pagina() const;

    QTextBrowser *Navegador;
    QToolButton *Enrere;
    QToolButton *Endavant;
    QToolButton *Inici;

private:
    QUrl m_inici;
};
