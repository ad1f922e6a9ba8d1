#pragma once
// The one way engine code talks to the user: message boxes in the desktop program, the terminal
// on the command line, a scripted fake in tests. Engine code never opens a window.

#include <QString>

class Interaccio {
public:
    virtual ~Interaccio() = default;
    // An information or warning message with an OK button.
    virtual void informa(const QString &titol, const QString &text) = 0;
    // A Yes/No question; true is Yes.
    virtual bool pregunta(const QString &titol, const QString &text) = 0;
    // The same for a step that is hard to take back: the default answer (Enter) is No.
    virtual bool preguntaPerDefecteNo(const QString &titol, const QString &text) { return pregunta(titol, text); }
    // An error message ("ERROR" titles are not translated).
    virtual void error(const QString &titol, const QString &text) = 0;
};

// A sink for the lines of a long operation's log (the message window, or standard output).
class RegistreSortida {
public:
    virtual ~RegistreSortida() = default;
    virtual void afegeix(const QString &text) = 0; // text exactly as produced (may hold CR LF)
    virtual void titol(const QString &) {}
    virtual void ocupat(bool) {} // a long operation starts (true) or ends (false)
};
