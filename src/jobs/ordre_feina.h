#pragma once
// A change of one job as an undoable command: the whole job before and after it (row, lines,
// vouchers). Undo and redo run through the job engine in one transaction: first the database must
// still hold what the command left (otherwise someone else changed the job since, and that change
// is not overwritten), then the engine must accept the job back in its slot (a slot taken since is
// refused with the engine's own message). Only then are the exact rows written back.

#include "foto_feina.h"

#include "core/pila_desfer.h"

class Db;
struct Configuracio;

class OrdreFeina : public OrdreDesfer {
public:
    OrdreFeina(Db &db, const Configuracio &cfg, const QString &text, FotoFeina abans, FotoFeina despres);

    QString text() const override { return m_text; }
    QString desfes() override { return aplica(m_despres, m_abans); }
    QString refes() override { return aplica(m_abans, m_despres); }

    const FotoFeina &abans() const { return m_abans; }
    const FotoFeina &despres() const { return m_despres; }

private:
    QString aplica(const FotoFeina &de, const FotoFeina &a);

    Db &m_db;
    const Configuracio &m_cfg;
    QString m_text;
    FotoFeina m_abans;
    FotoFeina m_despres;
};

// Follows one change of a job made by the user, from just before the engine is called to its
// success, and then puts it on the stack. Without a stack it does nothing.
class CanviFeina {
public:
    enum class Tipus { Creada, Moguda, Reassignada, Esborrada, Feta, Modificada };

    // Takes the job as it is now; `feinesId` 0 for a job about to be created.
    CanviFeina(PilaDesfer *pila, Db &db, const Configuracio &cfg, int feinesId);
    // After the engine's operation on `f`: when it succeeded (missatge ""), records the change.
    void registra(const Feina &f, Tipus tipus);

    // The name of a change as the Edit menu and the history show it.
    static QString text(Tipus tipus, const Feina &f);

private:
    PilaDesfer *m_pila;
    Db &m_db;
    const Configuracio &m_cfg;
    FotoFeina m_abans;
};
