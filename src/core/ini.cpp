#include "ini.h"

#include "codi_1252.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringList>

namespace {

constexpr int kValueBuffer = 200;   // characters, including the terminator
constexpr int kSectionBuffer = 1000;

// The file as it lies on disk: each line's bytes and its own line end, so that a write can leave
// every line it does not change exactly as it was. A file that is not valid UTF-8 was saved by a
// Windows editor in its "ANSI" code page, Windows-1252, and is written back in it.
struct FitxerIni {
    QByteArray bom;               // a UTF-8 byte-order mark, kept as it was
    QList<QByteArray> linies;     // without their ends
    QList<QByteArray> finals;     // "\r\n", "\n", "\r", or "" for a last line without one
    bool utf8 = true;
    QByteArray salt = "\n";       // the end of new lines: the file's first one

    QString text(int i) const { return utf8 ? QString::fromUtf8(linies[i]) : text1252(linies[i]); }
};

bool readFile(const QString &file, FitxerIni &ini)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    QByteArray data = f.readAll();
    if (data.startsWith("\xEF\xBB\xBF")) {
        ini.bom = data.left(3);
        data.remove(0, 3);
    }
    ini.utf8 = esUtf8(data);
    bool primer = true;
    qsizetype i = 0;
    while (i < data.size()) {
        qsizetype j = i;
        while (j < data.size() && data[j] != '\n' && data[j] != '\r')
            ++j;
        qsizetype k = j;
        if (k < data.size())
            k += (data[k] == '\r' && k + 1 < data.size() && data[k + 1] == '\n') ? 2 : 1;
        ini.linies << data.mid(i, j - i);
        ini.finals << data.mid(j, k - j);
        if (primer && k > j) {
            ini.salt = data.mid(j, k - j);
            primer = false;
        }
        i = k;
    }
    return true;
}

bool readLines(const QString &file, QStringList &lines)
{
    FitxerIni ini;
    if (!readFile(file, ini))
        return false;
    for (int i = 0; i < ini.linies.size(); ++i)
        lines << ini.text(i);
    return true;
}

bool isComment(const QString &trimmed)
{
    return trimmed.startsWith(QLatin1Char(';')) || trimmed.startsWith(QLatin1Char('#'));
}

// The section name of a "[name]" line, or a null string for any other line.
QString sectionOf(const QString &line)
{
    const QString t = line.trimmed();
    if (t.startsWith(QLatin1Char('[')) && t.contains(QLatin1Char(']')))
        return t.mid(1, t.indexOf(QLatin1Char(']')) - 1).trimmed();
    return QString();
}

bool keyOf(const QString &line, QString &key, QString &value)
{
    const QString t = line.trimmed();
    if (t.isEmpty() || isComment(t))
        return false;
    const int eq = t.indexOf(QLatin1Char('='));
    if (eq < 0)
        return false;
    key = t.left(eq).trimmed();
    value = t.mid(eq + 1).trimmed();
    // A value in matching quotes reads without them.
    if (value.size() >= 2 && ((value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
                              || (value.startsWith(QLatin1Char('\'')) && value.endsWith(QLatin1Char('\'')))))
        value = value.mid(1, value.size() - 2);
    return true;
}

bool sameName(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

QString LlegirIni(const QString &file, const QString &section, const QString &key, const QString &defaultValue)
{
    QStringList lines;
    if (!readLines(file, lines))
        return defaultValue;
    bool inSection = false;
    for (const QString &line : std::as_const(lines)) {
        const QString s = sectionOf(line);
        if (!s.isNull()) {
            inSection = sameName(s, section);
            continue;
        }
        QString k, v;
        if (inSection && keyOf(line, k, v) && sameName(k, key)) {
            v = v.left(kValueBuffer - 1);
            return v.isEmpty() ? defaultValue : v;
        }
    }
    return defaultValue;
}

QString LlegirSeccioIni(const QString &file, const QString &section)
{
    QStringList lines;
    if (!readLines(file, lines))
        return QString();
    QString result;
    bool inSection = false;
    for (const QString &line : std::as_const(lines)) {
        const QString s = sectionOf(line);
        if (!s.isNull()) {
            inSection = sameName(s, section);
            continue;
        }
        const QString t = line.trimmed();
        if (!inSection || t.isEmpty() || isComment(t))
            continue;
        QString k, v;
        const QString entry = keyOf(line, k, v) ? k + QLatin1Char('=') + v : t;
        result += entry + QChar(0);
    }
    // The buffer holds 1000 characters including the closing pair of NULs.
    if (result.size() > kSectionBuffer - 2) {
        result.truncate(kSectionBuffer - 2);
        if (!result.endsWith(QChar(0)))
            result += QChar(0);
    }
    return result;
}

bool EscriureIni(const QString &file, const QString &section, const QString &key, const QString &value)
{
    FitxerIni ini;
    if (QFileInfo::exists(file) && !readFile(file, ini))
        return false;

    int sectionLine = -1;  // the header of the section
    int lastInSection = -1; // the last non-blank line inside it
    int keyLine = -1;
    bool inSection = false;
    for (int i = 0; i < ini.linies.size(); ++i) {
        const QString line = ini.text(i);
        const QString s = sectionOf(line);
        if (!s.isNull()) {
            if (inSection)
                break;
            inSection = sameName(s, section);
            if (inSection) {
                sectionLine = i;
                lastInSection = i;
            }
            continue;
        }
        if (!inSection)
            continue;
        if (!line.trimmed().isEmpty())
            lastInSection = i;
        QString k, v;
        if (keyOf(line, k, v) && sameName(k, key)) {
            keyLine = i;
            break;
        }
    }

    // The new lines in the file's own encoding; a text Windows-1252 cannot hold turns the file
    // into UTF-8 rather than lose a character of it.
    const QString entry = key + QLatin1Char('=') + value;
    const QString header = QLatin1Char('[') + section + QLatin1Char(']');
    if (!ini.utf8 && !(es1252(entry) && es1252(header))) {
        for (QByteArray &linia : ini.linies)
            linia = QString(text1252(linia)).toUtf8();
        ini.utf8 = true;
    }
    const auto codifica = [&ini](const QString &t) { return ini.utf8 ? t.toUtf8() : a1252(t); };
    const auto insereix = [&ini](int at, const QByteArray &linia) {
        // The line before gets an end if it was the file's last one without it.
        if (at > 0 && ini.finals[at - 1].isEmpty())
            ini.finals[at - 1] = ini.salt;
        ini.linies.insert(at, linia);
        ini.finals.insert(at, ini.salt);
    };

    if (keyLine >= 0) {
        ini.linies[keyLine] = codifica(entry);
    } else if (sectionLine >= 0) {
        insereix(lastInSection + 1, codifica(entry));
    } else {
        if (!ini.linies.isEmpty() && !ini.text(int(ini.linies.size()) - 1).trimmed().isEmpty())
            insereix(int(ini.linies.size()), QByteArray());
        insereix(int(ini.linies.size()), codifica(header));
        insereix(int(ini.linies.size()), codifica(entry));
    }

    QByteArray data = ini.bom;
    for (int i = 0; i < ini.linies.size(); ++i)
        data += ini.linies[i] + ini.finals[i];
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    if (out.write(data) != data.size())
        return false;
    return out.commit();
}
