#pragma once
// The headless command line: `quadrella <command> ...`. Commands register themselves with
// REGISTRA_COMANDA in their own cli_*.cpp file; the global options (--data-dir, --json, --help,
// --version) may stand anywhere on the line.

#include "core/interaccio.h"

#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>
#include <initializer_list>
#include <memory>
#include <stdexcept>

class Sessio;

// A usage error: exit code 2 with the command's usage on stderr.
class ErrorUs : public std::runtime_error {
public:
    explicit ErrorUs(const QString &text) : std::runtime_error(text.toStdString()), m_text(text) {}
    QString text() const { return m_text; }

private:
    QString m_text;
};

// A refusal or failure of the system: exit code 1 with the message on stderr.
class ErrorComanda : public std::runtime_error {
public:
    explicit ErrorComanda(const QString &text) : std::runtime_error(text.toStdString()), m_text(text) {}
    QString text() const { return m_text; }

private:
    QString m_text;
};

// Answers questions on the terminal: with --yes every question is answered Yes; without a
// terminal, No. Messages go to stderr.
class InteraccioTerminal : public Interaccio {
public:
    InteraccioTerminal(QTextStream &err, bool siATot) : m_err(err), m_siATot(siATot) {}
    void informa(const QString &titol, const QString &text) override;
    bool pregunta(const QString &titol, const QString &text) override;
    bool preguntaPerDefecteNo(const QString &titol, const QString &text) override;
    void error(const QString &titol, const QString &text) override;
    void setSiATot(bool si) { m_siATot = si; }

private:
    QTextStream &m_err;
    bool m_siATot;
};

// Writes a long operation's log to stdout as it is produced.
class RegistreTerminal : public RegistreSortida {
public:
    explicit RegistreTerminal(QTextStream &out) : m_out(out) {}
    void afegeix(const QString &text) override;

private:
    QTextStream &m_out;
};

class ContextComanda {
public:
    ContextComanda(QString dirDades, bool json, QTextStream &out, QTextStream &err);
    ~ContextComanda();

    QString dirDades() const { return m_dirDades; }
    bool json() const { return m_json; }
    QTextStream &out() { return m_out; }
    QTextStream &err() { return m_err; }
    Sessio &sessio(); // opened on first use
    InteraccioTerminal &interaccio() { return m_interaccio; }

    void escriuJson(const QJsonValue &value);

private:
    QString m_dirDades;
    bool m_json;
    QTextStream &m_out;
    QTextStream &m_err;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioTerminal m_interaccio;
};

// Argument helpers for commands: options of the form --name VALUE and flags --name.
class Arguments {
public:
    explicit Arguments(QStringList args) : m_args(std::move(args)) {}
    bool flag(const QString &name);                  // removes it when present
    bool option(const QString &name, QString *value); // removes it and its value
    QString required(const QString &name);            // throws ErrorUs when missing
    QString nextPositional();                         // "" when none
    void finish();                                    // throws ErrorUs on anything left over
    static QDate date(const QString &text, const QString &option); // dd/mm/yyyy or yyyy-mm-dd
    static QString time(const QString &text, const QString &option); // hh:mm
    static int integer(const QString &text, const QString &option);

private:
    QStringList m_args;
};

struct Comanda {
    QString nom;
    QString us;     // one or more usage lines
    QString resum;  // one line for --help
    std::function<int(ContextComanda &, Arguments &)> executa;
    // The command draws texts (reports): it needs a graphical application, which runs without a
    // display on the offscreen platform.
    bool dibuixa = false;
};

QList<Comanda> &comandesRegistrades();

// A command made of subcommands ("job add", "voucher list"...): runs the one named by the next
// word, or throws ErrorUs naming the subcommands it knows.
struct Subordre {
    const char *nom;
    int (*executa)(ContextComanda &, Arguments &);
};
int executaSubordre(ContextComanda &ctx, Arguments &args, std::initializer_list<Subordre> subordres);

struct RegistreComanda {
    explicit RegistreComanda(Comanda c) { comandesRegistrades().append(std::move(c)); }
};

#define REGISTRA_COMANDA_CONCAT2(a, b) a##b
#define REGISTRA_COMANDA_CONCAT(a, b) REGISTRA_COMANDA_CONCAT2(a, b)
#define REGISTRA_COMANDA(...) \
    static RegistreComanda REGISTRA_COMANDA_CONCAT(s_registre_, __LINE__)(Comanda{__VA_ARGS__})

// Runs the command line (argv without the program name). Returns the exit code.
// `senseComanda` runs when no command is given (the desktop program, once it exists).
int executaLiniaComandes(const QStringList &args, QTextStream &out, QTextStream &err,
                         const std::function<int(const QString &dirDades)> &senseComanda = {});
// The --help text and the manual page are both made from the global options and the registered
// commands, so they cannot drift apart.
struct OpcioGlobal {
    QString nom;        // as written on the line, with its value ("--data-dir DIR")
    QString descripcio;
};
const QList<OpcioGlobal> &opcionsGlobals();
QList<Comanda> comandesOrdenades(); // by name
QString textAjuda();
QString paginaManual(); // roff, for man(1)
// True when the line's command draws (see Comanda::dibuixa).
bool comandaDibuixa(const QStringList &args);
