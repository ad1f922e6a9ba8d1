#pragma once
// Everything the job editor knows and decides, without a window: the lists it offers, the job's
// fields as the user edits them, the service lines with their total, the end time worked out from
// the lines, the done flag's lock and the checks made before the job is stored. The dialog
// (frm_feines_dialog) only renders this state and forwards the user's clicks and keys, so the
// rules can be exercised by tests without one.
//
// Storing writes the job through the job engine and then rewrites its service lines; both happen
// in one transaction, so a refusal or a failure half way leaves the job and its lines untouched.

#include "jobs/feina.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

class Db;
class Interaccio;
class MotorFeines;
struct Configuracio;

// One service line of a job, as the grid shows it.
struct LiniaServei {
    QString serveis_nom;
    QString descripcio;
    double quantitat = 0.0;
    QString unitat;
    double preu = 0.0;

    bool operator==(const LiniaServei &) const = default;
};

class EditorFeina {
public:
    EditorFeina(Db &db, const Configuracio &cfg, MotorFeines &motor, Interaccio &ui);

    // Loads the job and everything around it. The record is the caller's selected job: it is
    // rewritten, with missatge "OK", only when the job has been stored.
    void carrega(Feina &feina);

    // ---- the job's fields
    int id() const { return m_original.feines_id; }
    QString lloc() const { return m_original.llocs_nom; }
    QString data() const { return m_data; }
    void setData(const QString &text) { m_data = text; }
    QStringList horesInici() const { return m_horesInici; }
    QStringList horesFi() const { return m_horesFi; }
    QString horaInici() const { return m_horaInici; } // "" when none is selected
    QString horaFi() const { return m_horaFi; }
    void setHoraInici(const QString &hora);
    void setHoraFi(const QString &hora);
    QStringList recursos() const { return m_recursos; }
    QString recurs() const { return m_recurs; } // "" when none
    // Choosing a resource changes how the work is shared, hence the end.
    void triaRecurs(const QString &recurs);
    // The Delete key on the resource list; a done job keeps its resource. True when cleared.
    bool esborraRecurs();
    bool feta() const { return m_feta; }
    void setFeta(bool feta) { m_feta = feta; }
    // The user ticks or clears "Feta". Ticking is refused, with the message storing would give,
    // when the job could not be stored done (no resource, no lines, a future date): a done job
    // locks its fields, so the user could no longer put right what the store refuses.
    bool marcaFeta(bool feta);
    // A done job is locked: only the flag itself and the invoice date stay editable.
    bool bloquejat() const { return m_feta; }
    QString dataFactura() const { return m_dataFactura; }
    void setDataFactura(const QString &text) { m_dataFactura = text; }
    QString observacions() const { return m_observacions; }
    void setObservacions(const QString &text) { m_observacions = text; }

    // ---- the line editor
    QStringList serveis() const { return m_serveis; }
    QString serveiLinia() const { return m_serveiLinia; }
    QString descripcioLinia() const { return m_descripcioLinia; }
    QString quantitatLinia() const { return m_quantitatLinia; }
    QString unitatLinia() const { return m_unitatLinia; }
    QString preuLinia() const { return m_preuLinia; }
    void setDescripcioLinia(const QString &t) { m_descripcioLinia = t; }
    void setQuantitatLinia(const QString &t) { m_quantitatLinia = t; }
    void setUnitatLinia(const QString &t) { m_unitatLinia = t; }
    void setPreuLinia(const QString &t) { m_preuLinia = t; }
    // Opening the service list starts a new line.
    void obreLlistaServeis();
    // Fills the line editor with the service's unit, description (this place's wording) and price.
    void triaServei(const QString &servei);
    // Adds the edited line; false (with the reason shown) when it is refused or no service is chosen.
    bool afegeixServei();
    // Takes a line out of the job; its values stay in the line editor, to be added again.
    void treuLinia(int fila);
    // A click on a line: loads it into the line editor and selects it; the lines do not change.
    void seleccionaLinia(int fila);
    int liniaSeleccionada() const { return m_liniaSeleccionada; } // -1 when none
    // The edited line replaces the selected one, with the checks of adding; false (with the
    // reason shown) when it is refused or no line is selected.
    bool substitueixLinia();

    // ---- the lines and the total
    const QList<LiniaServei> &linies() const { return m_linies; }
    double total() const; // rounded to cents
    QString totalText() const;

    // True when the fields or the lines differ from the job as it was loaded (or last stored).
    bool teCanvis() const;

    // ---- storing
    // Runs the checks in order, stores the job and its lines; true when stored (the caller's record
    // then holds the job with missatge "OK").
    bool modifica();

    // Works out the end from the lines and the resource and selects it (warning when it passes
    // the day's end). Returns the minutes of work, rounded up to whole cells.
    int recalculaHoraFi();

    // The day against which a done job may not lie in the future; the real date unless set.
    void setAvui(const QDate &avui) { m_avui = avui; }

    // A number as the grid shows it: decimal comma, no thousands, no trailing zeros.
    static QString textNombre(double valor);

private:
    QDate avui() const;
    void avisa(const QString &text);
    void desaLinies(int feinesId);
    bool llegeixLinia(LiniaServei &linia, int excepte) const;
    void carregaLiniaEditada(const LiniaServei &l);

    // The fields as the user can change them, to tell whether anything is left unsaved.
    struct Estat {
        QString data, horaInici, horaFi, recurs, dataFactura, observacions;
        bool feta = false;
        QList<LiniaServei> linies;
        bool operator==(const Estat &) const = default;
    };
    Estat estat() const;
    Estat m_desat;
    int m_liniaSeleccionada = -1;

    Db &m_db;
    const Configuracio &m_cfg;
    MotorFeines &m_motor;
    Interaccio &m_ui;
    QDate m_avui;

    Feina *m_feina = nullptr;
    Feina m_original;
    QString m_data;
    QStringList m_horesInici;
    QStringList m_horesFi;
    QString m_horaInici;
    QString m_horaFi;
    QStringList m_recursos;
    QString m_recurs;
    bool m_feta = false;
    QString m_dataFactura;
    QString m_observacions;

    QStringList m_serveis;
    QString m_serveiLinia;
    QString m_descripcioLinia;
    QString m_quantitatLinia;
    QString m_unitatLinia;
    QString m_preuLinia;
    QList<LiniaServei> m_linies;
};

// The item of a list of "hh:mm" texts to select for a time: the last one not later than it
// (-1 when every item is later).
int indexHoraNoPosterior(const QStringList &hores, const QString &hora);
