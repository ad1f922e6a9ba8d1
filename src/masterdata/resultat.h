#pragma once
// What a master-data action tells its page. Every message has already been shown through the
// Interaccio by the time the action returns; the page only decides what to refill.

#include <QString>
#include <functional>

class Interaccio;

enum class Resultat {
    Fet,     // written
    Res,     // nothing to do (an empty name): no message, nothing written
    Refusat, // a check failed: its message was shown, nothing was written
    Error,   // the database failed: "Error:" + its text was shown titled ERROR, nothing was written
};

namespace mestres {

// Runs an action and turns any database or run-time failure into the window handlers' error
// message. The action's own transaction has rolled back by then.
Resultat protegeix(Interaccio &io, const std::function<Resultat()> &accio);

// Shows a validation message (already translated) and answers Refusat.
Resultat refusa(Interaccio &io, const QString &text);

// A number typed by the user (decimal comma, or a dot when there is no comma), as a whole
// number the way the form rewrites it: halves to even, within 16 bits. False when the text is
// not a number or does not fit.
bool llegeixEnter16(const QString &text, int *valor);

// A money or quantity field: false when the text is not a number.
bool llegeixNombre(const QString &text, double *valor);

// A number as the form shows it: decimal comma, no thousands separator, no trailing zeros
// ("6,25", "12", "-0,5").
QString textNombre(double valor);

// A failure inside an action that is not the database's (a date that is not a date): shown as
// "Error:" + text like a database error.
class ErrorAccio : public std::exception {
public:
    explicit ErrorAccio(const QString &text) : m_text(text), m_utf8(text.toUtf8()) {}
    QString text() const { return m_text; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_text;
    QByteArray m_utf8;
};

} // namespace mestres
