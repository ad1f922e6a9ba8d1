#pragma once
// The configuration dialog: every setting of the settings file in five frames, each field checked
// when it is left, and the database maintenance (choosing the file, the purge). Confirming writes
// the settings and asks the program to restart; the rules live in edicio_configuracio.

#include "edicio_configuracio.h"

#include <QDialog>
#include <QHash>
#include <QPointer>
#include <functional>

class Interaccio;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class Sessio;

class frmConfiguracio : public QDialog {
    Q_OBJECT
public:
    frmConfiguracio(Sessio &sessio, Interaccio &ui, QWidget *parent = nullptr);

    // How the database file is chosen (a file dialog unless replaced); "" when cancelled.
    std::function<QString(QWidget *pare, const QString &actual)> triaFitxer;

    // What the fields hold now.
    edicio_configuracio::Valors valors() const;
    int minutsAcceptats() const { return m_minutsAcceptats; }

    QGroupBox *fraBaseDades;
    QGroupBox *fraPlanificacio;
    QGroupBox *fraHoresExtra;
    QGroupBox *fraXecs;
    QGroupBox *fraLocalitzacio;

    QLineEdit *txtBD;
    QPushButton *btnSeleccionaBD;
    QLabel *lblDataPurgat;
    QLineEdit *txtDataPurgat;
    QPushButton *btnPurgarBD;
    QPushButton *btnComprovaBD;

    QLineEdit *txtMinutsCella;
    QComboBox *ComboHoraInici;
    QComboBox *ComboHoraFinal;
    QCheckBox *chkPermetSolaparLlocs;
    QLabel *lblUltDiaGenerat;
    QLineEdit *txtUltDiaGenerat;

    QLineEdit *txtHoresDia;
    QComboBox *ComboHoraIniciDinar;
    QComboBox *ComboHoraFinalDinar;
    QCheckBox *chkCalculHoresFetes;
    QCheckBox *chkDissabtesExtra;
    QCheckBox *chkDiumengesExtra;

    QComboBox *ComboServeiXecs;
    QLineEdit *txtNMaxXecsMes;
    QLineEdit *txtValorDftXec;
    QLineEdit *txtCostHoraXec;

    QComboBox *ComboSelIdioma;

    QPushButton *OKButton;
    QPushButton *CancelButton;

public slots:
    void reject() override;

protected:
    bool eventFilter(QObject *obj, QEvent *e) override;

private:
    void construeix();
    void omple();
    void construeixLlistesHores();
    void canviServeiXecs(int index);
    void mostraBD(const QString &cami);
    // Checks a field as when it is left; on failure shows the message and puts the focus back.
    bool comprovaCamp(QLineEdit *camp);
    void confirma();
    void purga();
    void comprovaBD();
    void seleccionaBD();

    Sessio &m_sessio;
    Interaccio &m_ui;
    int m_minutsAcceptats = 30;
    QHash<QLineEdit *, edicio_configuracio::Camp> m_camps;
    QList<QLineEdit *> m_ordreCamps;
    QPointer<QLineEdit> m_pendent; // left with a check still to run
    bool m_comprovant = false;
    // The time the user chose in each time list: a list rebuilt for another cell length selects
    // it again (or the nearest grid time before it), so that a cell length tried and changed back
    // leaves the times as they were.
    QHash<QComboBox *, QString> m_horesTriades;
};
