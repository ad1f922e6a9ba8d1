#include "linia_comandes.h"

#include "core/configuracio.h"
#include "core/db.h"
#include "core/directori_dades.h"
#include "core/formats.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cstdio>
#include <unistd.h>

QList<Comanda> &comandesRegistrades()
{
    static QList<Comanda> comandes;
    return comandes;
}

// ---------------------------------------------------------------- terminal

void InteraccioTerminal::informa(const QString &titol, const QString &text)
{
    m_err << titol << ": " << text << Qt::endl;
}

namespace {

// An empty answer is No; `opcions` is how the answers are offered ("[s/N]" marks No as the default).
bool preguntaTerminal(QTextStream &err, bool siATot, const QString &titol, const QString &text, const char *opcions)
{
    err << titol << ": " << text << ' ' << opcions;
    if (siATot || !isatty(STDIN_FILENO)) {
        err << (siATot ? " s" : " n") << Qt::endl;
        return siATot;
    }
    err << ' ' << Qt::flush;
    char line[64] = {};
    if (!std::fgets(line, sizeof line, stdin))
        return false;
    const QString answer = QString::fromLocal8Bit(line).trimmed().toLower();
    return answer.startsWith(QLatin1Char('s')) || answer.startsWith(QLatin1Char('y'));
}

} // namespace

bool InteraccioTerminal::pregunta(const QString &titol, const QString &text)
{
    return preguntaTerminal(m_err, m_siATot, titol, text, "[s/n]");
}

bool InteraccioTerminal::preguntaPerDefecteNo(const QString &titol, const QString &text)
{
    return preguntaTerminal(m_err, m_siATot, titol, text, "[s/N]");
}

void InteraccioTerminal::error(const QString &titol, const QString &text)
{
    m_err << titol << ": " << text << Qt::endl;
}

void RegistreTerminal::afegeix(const QString &text)
{
    QString t = text;
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    m_out << t << Qt::flush;
}

// ---------------------------------------------------------------- context

ContextComanda::ContextComanda(QString dirDades, bool json, QTextStream &out, QTextStream &err)
    : m_dirDades(std::move(dirDades)), m_json(json), m_out(out), m_err(err), m_interaccio(err, false)
{
}

ContextComanda::~ContextComanda() = default;

Sessio &ContextComanda::sessio()
{
    if (!m_sessio) {
        m_sessio = std::make_unique<Sessio>(m_dirDades);
        if (!m_sessio->copiaMigracio.isEmpty())
            m_err << Tradueix("Base de dades actualitzada a la versió d'aquest programa. Còpia de l'anterior:") << ' '
                  << m_sessio->copiaMigracio << Qt::endl;
    }
    return *m_sessio;
}

void ContextComanda::escriuJson(const QJsonValue &value)
{
    QJsonDocument doc = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    m_out << QString::fromUtf8(doc.toJson(QJsonDocument::Indented)) << Qt::flush;
}

// ---------------------------------------------------------------- arguments

bool Arguments::flag(const QString &name)
{
    const int i = m_args.indexOf(name);
    if (i < 0)
        return false;
    m_args.removeAt(i);
    return true;
}

bool Arguments::option(const QString &name, QString *value)
{
    for (int i = 0; i < m_args.size(); ++i) {
        const QString &a = m_args[i];
        if (a == name) {
            if (i + 1 >= m_args.size())
                throw ErrorUs(QStringLiteral("%1 necessita un valor").arg(name));
            *value = m_args[i + 1];
            m_args.remove(i, 2);
            return true;
        }
        if (a.startsWith(name + QLatin1Char('='))) {
            *value = a.mid(name.size() + 1);
            m_args.removeAt(i);
            return true;
        }
    }
    return false;
}

QString Arguments::required(const QString &name)
{
    QString v;
    if (!option(name, &v))
        throw ErrorUs(QStringLiteral("falta %1").arg(name));
    return v;
}

int executaSubordre(ContextComanda &ctx, Arguments &args, std::initializer_list<Subordre> subordres)
{
    const QString sub = args.nextPositional();
    QStringList noms;
    for (const Subordre &s : subordres) {
        if (sub == QLatin1String(s.nom))
            return s.executa(ctx, args);
        noms << QLatin1String(s.nom);
    }
    throw ErrorUs(sub.isEmpty() ? QStringLiteral("falta la subordre (%1)").arg(noms.join(QStringLiteral(", ")))
                                : QStringLiteral("subordre desconeguda '%1'").arg(sub));
}

QString Arguments::nextPositional()
{
    for (int i = 0; i < m_args.size(); ++i) {
        if (!m_args[i].startsWith(QLatin1String("--"))) {
            const QString v = m_args[i];
            m_args.removeAt(i);
            return v;
        }
    }
    return QString();
}

void Arguments::finish()
{
    if (!m_args.isEmpty())
        throw ErrorUs(QStringLiteral("argument desconegut: %1").arg(m_args.first()));
}

QDate Arguments::date(const QString &text, const QString &option)
{
    const QDate d = format::llegeixData(text);
    if (!d.isValid())
        throw ErrorUs(QStringLiteral("%1: data no vàlida '%2' (dd/mm/aaaa o aaaa-mm-dd)").arg(option, text));
    return d;
}

QString Arguments::time(const QString &text, const QString &option)
{
    const QString h = hora::llegeix(text);
    if (h.isNull())
        throw ErrorUs(QStringLiteral("%1: hora no vàlida '%2' (hh:mm)").arg(option, text));
    return h;
}

int Arguments::integer(const QString &text, const QString &option)
{
    bool ok = false;
    const int v = text.toInt(&ok);
    if (!ok)
        throw ErrorUs(QStringLiteral("%1: nombre no vàlid '%2'").arg(option, text));
    return v;
}

// ---------------------------------------------------------------- dispatch

const QList<OpcioGlobal> &opcionsGlobals()
{
    static const QList<OpcioGlobal> opcions = {
        {QStringLiteral("--data-dir DIR"),
         QStringLiteral("directori de dades (per defecte: $QUADRELLA_DIR, el directori del programa si conté "
                        "Quadrella.ini, o ~/.local/share/Quadrella)")},
        {QStringLiteral("--json"), QStringLiteral("sortida en JSON")},
        {QStringLiteral("--help"), QStringLiteral("aquesta ajuda")},
        {QStringLiteral("--version"), QStringLiteral("versió del programa")},
        {QStringLiteral("--man"), QStringLiteral("aquesta ajuda com a pàgina de manual (roff)")},
    };
    return opcions;
}

QList<Comanda> comandesOrdenades()
{
    QList<Comanda> comandes = comandesRegistrades();
    std::sort(comandes.begin(), comandes.end(), [](const Comanda &a, const Comanda &b) { return a.nom < b.nom; });
    return comandes;
}

QString textAjuda()
{
    QString t = QStringLiteral(
        "Quadrella %1.%2 - planificador de feines\n\n"
        "Ús: quadrella [opcions] [ordre [arguments]]\n\n"
        "Sense ordre obre el programa d'escriptori.\n\n"
        "Opcions (a qualsevol lloc de la línia):\n")
                    .arg(QUADRELLA_VERSION_MAJOR)
                    .arg(QUADRELLA_VERSION_MINOR);
    for (const OpcioGlobal &o : opcionsGlobals())
        t += QStringLiteral("  %1  %2\n").arg(o.nom.leftJustified(15), o.descripcio);
    t += QStringLiteral("\nOrdres:\n");
    for (const Comanda &c : comandesOrdenades()) {
        const QStringList lines = c.us.split(QLatin1Char('\n'));
        for (const QString &l : lines)
            t += QStringLiteral("  quadrella %1\n").arg(l);
        if (!c.resum.isEmpty())
            t += QStringLiteral("      %1\n").arg(c.resum);
    }
    return t;
}

bool comandaDibuixa(const QStringList &args)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args[i];
        if (a == QLatin1String("--data-dir")) {
            ++i;
            continue;
        }
        if (a.startsWith(QLatin1String("--")) || a == QLatin1String("-h"))
            continue;
        for (const Comanda &c : comandesRegistrades())
            if (c.nom == a)
                return c.dibuixa;
        return false;
    }
    return false;
}

int executaLiniaComandes(const QStringList &argsIn, QTextStream &out, QTextStream &err,
                         const std::function<int(const QString &)> &senseComanda)
{
    QStringList args = argsIn;
    QString dataDir;
    bool json = false;
    bool help = false;
    bool version = false;
    bool manual = false;
    try {
        Arguments globals(args);
        // Pull the global options out wherever they stand.
        QStringList rest;
        for (int i = 0; i < args.size(); ++i) {
            const QString &a = args[i];
            if (a == QLatin1String("--data-dir")) {
                if (i + 1 >= args.size())
                    throw ErrorUs(QStringLiteral("--data-dir necessita un valor"));
                dataDir = args[++i];
                if (dataDir.isEmpty())
                    throw ErrorUs(QStringLiteral("--data-dir necessita un valor"));
            } else if (a.startsWith(QLatin1String("--data-dir="))) {
                dataDir = a.mid(11);
            } else if (a == QLatin1String("--json")) {
                json = true;
            } else if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
                help = true;
            } else if (a == QLatin1String("--version")) {
                version = true;
            } else if (a == QLatin1String("--man")) {
                manual = true;
            } else {
                rest << a;
            }
        }
        args = rest;
    } catch (const ErrorUs &e) {
        err << "quadrella: " << e.text() << "\n\n" << textAjuda() << Qt::flush;
        return 2;
    }

    if (manual) {
        out << paginaManual() << Qt::flush;
        return 0;
    }
    if (version) {
        out << "Quadrella " << QUADRELLA_VERSION_MAJOR << '.' << QUADRELLA_VERSION_MINOR << Qt::endl;
        return 0;
    }
    if (args.isEmpty() && !help) {
        if (senseComanda)
            return senseComanda(directori_dades::resol(dataDir));
        out << textAjuda() << Qt::flush;
        return 0;
    }
    if (args.isEmpty() || (help && args.isEmpty())) {
        out << textAjuda() << Qt::flush;
        return 0;
    }

    const QString nom = args.takeFirst();
    const Comanda *comanda = nullptr;
    for (const Comanda &c : comandesRegistrades()) {
        if (c.nom == nom) {
            comanda = &c;
            break;
        }
    }
    if (!comanda) {
        err << "quadrella: ordre desconeguda '" << nom << "'\n\n" << textAjuda() << Qt::flush;
        return 2;
    }
    auto usage = [&]() {
        QString u;
        for (const QString &l : comanda->us.split(QLatin1Char('\n')))
            u += QStringLiteral("  quadrella %1\n").arg(l);
        return u;
    };
    if (help) {
        out << "Ús:\n" << usage() << Qt::flush;
        if (!comanda->resum.isEmpty())
            out << "\n" << comanda->resum << Qt::endl;
        return 0;
    }

    ContextComanda ctx(directori_dades::resol(dataDir), json, out, err);
    Arguments arguments(args);
    try {
        const int code = comanda->executa(ctx, arguments);
        out.flush();
        err.flush();
        return code;
    } catch (const ErrorUs &e) {
        err << "quadrella " << nom << ": " << e.text() << "\nÚs:\n" << usage() << Qt::flush;
        return 2;
    } catch (const ErrorComanda &e) {
        out.flush();
        err << e.text() << Qt::endl;
        return 1;
    } catch (const ConfigError &e) {
        out.flush();
        err << "Error: " << e.text() << Qt::endl;
        return 1;
    } catch (const DbError &e) {
        out.flush();
        err << "Error: " << e.text() << Qt::endl;
        return 1;
    } catch (const std::exception &e) {
        out.flush();
        err << "Error: " << QString::fromUtf8(e.what()) << Qt::endl;
        return 1;
    }
}
