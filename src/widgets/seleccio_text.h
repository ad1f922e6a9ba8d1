#pragma once
// Text fields select their whole content when they receive the focus, so that typing replaces the
// value. Install it on each field, or on a whole page (every QLineEdit below it that is not
// read-only).

class QLineEdit;
class QWidget;

void seleccionaTotEnEntrar(QLineEdit *camp);
void seleccionaTotEnEntrarA(QWidget *arrel);
