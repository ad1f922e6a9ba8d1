#pragma once
// Text1: the text box laid over a cell of the overtime row (HoresGrid) to type a worker's overtime
// of the day. It opens on a click or Enter (or a typed digit) on the row, starts with the proposal,
// and stores what it holds when it loses the focus or the row's current cell moves away; Escape
// drops it. The rules are EditorHores'; this only places the box and turns keys and focus into calls.

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

class Db;
class EditorHores;
class Interaccio;
class ModelAgenda;
struct Configuracio;
class QLineEdit;
class QTableView;

class EditorHoresWidget : public QObject {
    Q_OBJECT
public:
    // `desplacament` is the agenda column of the row's first column (1 when the row's label sits in
    // its vertical header, 0 when it is the row's own first cell). `posaText` writes a committed
    // value into the row's cell (the row's column, text); by default it sets the cell's display
    // text through the row's item model.
    EditorHoresWidget(QTableView *horesGrid, EditorHores &editor, Interaccio &ui, int desplacament = 0,
                      std::function<void(int, const QString &)> posaText = {});

    // The same, with an editor of its own over the agenda model (the agenda page's overtime row).
    EditorHoresWidget(QTableView *horesGrid, Db &db, const Configuracio &cfg, const ModelAgenda &model, Interaccio &ui,
                      int desplacament);
    ~EditorHoresWidget() override;

    QLineEdit *text1() const { return m_text1; }
    EditorHores &editor() { return m_editor; }
    // Opens the editor over the row's current cell; `teclejat` is the typed character, if any.
    bool obre(bool perClic, const QString &teclejat = QString());
    // Stores and hides the editor when it is shown.
    void confirma();

protected:
    bool eventFilter(QObject *obj, QEvent *event) override;

private:
    void amaga();
    // Columns are the agenda's; the row's own are shifted by m_desplacament.
    void mouCapA(int col);
    int columnaActual() const;

    QPointer<QTableView> m_grid;
    std::unique_ptr<EditorHores> m_propi;
    EditorHores &m_editor;
    Interaccio &m_ui;
    int m_desplacament;
    std::function<void(int, const QString &)> m_posaText;
    QLineEdit *m_text1;
    bool m_confirmant = false;
};
