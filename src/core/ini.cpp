#include "ini.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringList>

namespace {

constexpr int kValueBuffer = 200;   // characters, including the terminator
constexpr int kSectionBuffer = 1000;

bool readLines(const QString &file, QStringList &lines)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    QString text = QString::fromUtf8(f.readAll());
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
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
    QStringList lines;
    if (QFileInfo::exists(file) && !readLines(file, lines))
        return false;

    int sectionLine = -1;  // the header of the section
    int lastInSection = -1; // the last non-blank line inside it
    int keyLine = -1;
    bool inSection = false;
    for (int i = 0; i < lines.size(); ++i) {
        const QString s = sectionOf(lines[i]);
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
        if (!lines[i].trimmed().isEmpty())
            lastInSection = i;
        QString k, v;
        if (keyOf(lines[i], k, v) && sameName(k, key)) {
            keyLine = i;
            break;
        }
    }

    const QString entry = key + QLatin1Char('=') + value;
    if (keyLine >= 0) {
        lines[keyLine] = entry;
    } else if (sectionLine >= 0) {
        lines.insert(lastInSection + 1, entry);
    } else {
        if (!lines.isEmpty() && !lines.last().trimmed().isEmpty())
            lines << QString();
        lines << QLatin1Char('[') + section + QLatin1Char(']') << entry;
    }

    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    const QByteArray data = (lines.join(QLatin1String("\n")) + QLatin1Char('\n')).toUtf8();
    if (out.write(data) != data.size())
        return false;
    return out.commit();
}
