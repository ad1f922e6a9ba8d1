#pragma once
// The undo stack of a working session: every change the user makes on the agenda, the job editor
// and the billing sheet is kept here as a command that can be taken back and done again, for as
// long as the program runs.
//
// Unlike a plain undo stack, a command may refuse: the rows it would put back may have been
// changed by something else since (the command line, a second Quadrella on the same file), or the
// slot it needs may be taken. A refused command stays where it is and the refusal is handed back
// as the text to show. Operations that cannot be taken back (a planning run, a purge, a billing
// commit, master-data changes) empty the stack; the history keeps what was done before them and a
// line that says where the stack was cut.

#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class OrdreDesfer {
public:
    virtual ~OrdreDesfer() = default;
    // What the change was, as the Edit menu names it ("moure 'Oficina' al 24/11").
    virtual QString text() const = 0;
    // Takes the change back / does it again. "" when done; otherwise why nothing was changed.
    virtual QString desfes() = 0;
    virtual QString refes() = 0;
};

class PilaDesfer {
public:
    // A line of the history, oldest first.
    struct Entrada {
        enum Tipus { Fet, Desfet, Tancat, Tall };
        Tipus tipus; // Fet/Desfet: on the stack (undo / redo side); Tancat: done before a cut
        QString text;
    };

    // Records a change that has just been made; whatever had been undone can no longer be redone.
    void afegeix(std::unique_ptr<OrdreDesfer> ordre);

    bool potDesfer() const { return m_fets > 0; }
    bool potRefer() const { return m_fets < static_cast<int>(m_ordres.size()); }
    QString textDesfer() const; // "" when there is nothing to undo
    QString textRefer() const;

    // Undoes / redoes the next command. "" when done; otherwise the refusal (the stack is as it was).
    QString desfes();
    QString refes();

    // Empties the stack after an operation that cannot be taken back; `motiu` names it.
    void neteja(const QString &motiu);
    // The same after a change of clients, places, resources, services or vouchers.
    void netejaDadesMestres();

    QList<Entrada> historial() const;
    int mida() const { return static_cast<int>(m_ordres.size()); }

    // Called after every change of the stack (the menu texts and the history follow it).
    std::function<void()> alCanviar;

private:
    void avisa();

    std::vector<std::unique_ptr<OrdreDesfer>> m_ordres;
    int m_fets = 0; // commands [0, m_fets) are done
    QList<Entrada> m_tancades;
};
