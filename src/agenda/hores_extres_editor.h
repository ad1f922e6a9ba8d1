#pragma once
// The in-place editor of the overtime row under the day view (Text1 over a cell of HoresGrid),
// without its widget: when it may open, what it opens with, and what a commit stores. The page
// lays a text box over the cell and turns focus changes and keys into these calls.

#include <QDate>
#include <QString>

class Db;
class ModelAgenda;
class PilaDesfer;
struct Configuracio;

class EditorHores {
public:
    EditorHores(Db &db, const Configuracio &cfg, const ModelAgenda &model);

    // Whether the overtime cell of agenda column `col` may be edited: it must belong to a worker
    // (not empty, not the unassigned column); a click also wants a worker whose time counts.
    bool potObrir(int col, bool perClic) const;
    // Opens over column `col`. With no typed text (a control key, the blank, a click) the editor
    // holds the proposal, all selected; otherwise the typed text with the caret after it.
    // False when the cell may not be edited.
    bool obre(int col, bool perClic, const QString &teclejat = QString());

    bool visible() const { return m_visible; }
    int columna() const { return m_columna; }
    QString text() const { return m_text; }
    void setText(const QString &text) { m_text = text; }
    // True when the text was opened selected (the proposal), false when the caret follows a typed key.
    bool seleccionat() const { return m_seleccionat; }

    // Stores what the editor holds for the worker and day of the cell it was opened on (whatever
    // the agenda shows by now) and hides it.
    // Returns the cell's new text ("#,##0.00"; "0,00" for anything that is not a number, which
    // removes the day's row). Nothing happens (and "" is returned) when the editor is hidden.
    QString confirma();
    // Hides the editor without storing (Escape).
    void cancela();

    // Where each stored value is recorded as an undoable command (none by default).
    void setPilaDesfer(PilaDesfer *pila) { m_pila = pila; }

    // The proposal for a column, formatted as the cell shows it.
    QString proposta(int col) const;

private:
    Db &m_db;
    const Configuracio &m_cfg;
    const ModelAgenda &m_model;
    bool m_visible = false;
    bool m_seleccionat = false;
    int m_columna = 0;
    QString m_recurs;
    QDate m_dia;
    QString m_text;
    PilaDesfer *m_pila = nullptr;
};
