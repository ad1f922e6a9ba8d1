#pragma once
// The job editor window: shows one job of the agenda with its service lines and stores the
// changes. Every rule lives in EditorFeina; this window only lays the fields out, mirrors the
// editor's state into them and hands the user's clicks and keys to it.

#include "editor_feina.h"

#include <QDialog>
#include <functional>

class ControladorAgenda;
class QCheckBox;
class Sessio;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableWidget;
class ComboServeis;

class FrmFeinesDialog : public QDialog {
    Q_OBJECT

public:
    // Opens on `feina` (the agenda's selected job); `feina.missatge` becomes "OK" when the user
    // stored a change.
    FrmFeinesDialog(Db &db, const Configuracio &cfg, MotorFeines &motor, Interaccio &ui, Feina &feina,
                    QWidget *parent = nullptr);

    EditorFeina &editor() { return m_editor; }
    // "Today" for the done-job check (the real date unless set).
    void setAvui(const QDate &avui) { m_editor.setAvui(avui); }

    // What "Imprimir" does with the job as the window holds it; the button shows once it is set.
    using Impressio = std::function<void(const EditorFeina &, QWidget *finestra)>;
    void setImpressio(Impressio imprimeix);

public slots:
    // Escape, "Cancel·lar" and the window's close: changes not stored are only dropped once the
    // user says so.
    void reject() override;

protected:
    bool eventFilter(QObject *obj, QEvent *event) override;

private:
    void construeix();
    void mostraTot();
    void mostraHores();
    void mostraLinies();
    void mostraLiniaEditada();
    void aplicaBloqueig();
    void modificar();
    // Runs a change of the lines or the resource and tells in the status line when the end
    // time it recomputes differs from the one shown before.
    void canviaLinies(const std::function<bool()> &canvi);

    EditorFeina m_editor;

    QLineEdit *m_id = nullptr;
    QLineEdit *m_lloc = nullptr;
    QLineEdit *m_data = nullptr;
    QComboBox *m_horaInici = nullptr;
    QComboBox *m_horaFi = nullptr;
    QComboBox *m_recurs = nullptr;
    QCheckBox *m_feta = nullptr;
    QLineEdit *m_dataFactura = nullptr;
    QPlainTextEdit *m_observacions = nullptr;
    ComboServeis *m_serveis = nullptr;
    QLineEdit *m_descripcio = nullptr;
    QLineEdit *m_quantitat = nullptr;
    QLineEdit *m_unitat = nullptr;
    QLineEdit *m_preu = nullptr;
    QPushButton *m_afegir = nullptr;
    QPushButton *m_modificarLinia = nullptr;
    QPushButton *m_treureLinia = nullptr;
    QLabel *m_estat = nullptr;
    QPushButton *m_cancel = nullptr;
    Interaccio &m_ui;
    QTableWidget *m_linies = nullptr;
    QLineEdit *m_total = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_imprimir = nullptr;
    Impressio m_imprimeix;
};

// Makes the agenda open this window on its selected job (Enter or a double click on a job);
// `imprimeix` prints the job from it (no print button when empty).
void instalaEditorFeines(ControladorAgenda &ctl, Sessio &sessio, Interaccio &ui, QWidget *pare,
                         FrmFeinesDialog::Impressio imprimeix = {});
