#pragma once
// Small helpers shared by the master-data pages: text fields that select their whole text when
// they receive the focus, drop-down lists that the Delete key clears, and resource colours.

#include <QString>

class QComboBox;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QWidget;
class QColor;

namespace formulari {

// Delete (and Backspace) leaves the list with nothing selected.
void buidaAmbSuprimir(QComboBox *combo);
// A QLineEdit with its object name, select-all on focus and, when given, a maximum length.
QLineEdit *camp(const QString &nomObjecte, QWidget *pare, int maxim = 0);
QPushButton *boto(const QString &text, const QString &nomObjecte, QWidget *pare);
// 0x00BBGGRR as Qt colours it, and back.
QColor aQColor(qint32 color);
qint32 deQColor(const QColor &color);
// A list of names at least as wide as its longest name (up to `maxim` pixels), so that the
// names are not clipped; wider ones scroll and show whole in their tooltip.
void ajustaAmpleLlista(QListWidget *llista, int maxim = 360);

} // namespace formulari
