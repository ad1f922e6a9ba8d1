#pragma once
// The language dialog of the first run: the languages of the settings file's [Idiomes] section.

#include <QDialog>
#include <QStringList>

class QComboBox;
class QPushButton;

class frmSelIdioma : public QDialog {
    Q_OBJECT
public:
    // `idiomaActual` is kept when nothing is chosen (an empty list, or the dialog closed).
    frmSelIdioma(const QStringList &idiomes, const QString &idiomaActual, QWidget *parent = nullptr);

    QString idioma() const { return m_idioma; }

    QComboBox *ComboSelIdioma;
    QPushButton *OKButton;

private:
    void accepta();
    QString m_idioma;
};
