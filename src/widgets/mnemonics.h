#pragma once
// Keyboard mnemonics for translated captions. A caption comes from Tradueix at run time, so a
// fixed "&" cannot be written in the source: this gives every label (with a buddy), button, check
// box and group box below a widget a distinct Alt+letter, the first free letter of its caption.

class QWidget;

void assignaMnemonics(QWidget *arrel);
