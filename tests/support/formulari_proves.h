#pragma once
// What the widget tests do to a form as a user would: find a control by its object name, type
// into a field, tick a box from the keyboard, press a button. Header-only: only tests that link
// the widget library include it.

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace formulari {

// The named child control; a missing one ends the test run (the form changed under the test).
template <typename T>
T *fill(QWidget &pare, const char *nom)
{
    T *w = pare.findChild<T *>(QString::fromLatin1(nom));
    if (!w)
        qFatal("no widget %s", nom);
    return w;
}

inline void escriu(QWidget &pare, const char *camp, const QString &text)
{
    QLineEdit *c = fill<QLineEdit>(pare, camp);
    c->setFocus();
    c->selectAll();
    QTest::keyClick(c, Qt::Key_Delete);
    QTest::keyClicks(c, text);
}

inline void marca(QWidget &pare, const char *nom)
{
    QCheckBox *c = fill<QCheckBox>(pare, nom);
    c->setFocus();
    QTest::keyClick(c, Qt::Key_Space);
}

inline void prem(QWidget &pare, const char *boto)
{
    QTest::mouseClick(fill<QPushButton>(pare, boto), Qt::LeftButton);
}

} // namespace formulari
