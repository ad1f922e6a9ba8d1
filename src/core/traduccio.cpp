#include "traduccio.h"

#include "fitxers_instal_lats.h"

#include "db.h"
#include "ini.h"

#include <QDirIterator>
#include <QFile>

namespace {
const Traductor *g_actual = nullptr;
const QStringList kLlengues = {QStringLiteral("ES"), QStringLiteral("EN")};
} // namespace

QString Traductor::clau(const QString &text)
{
    // Trailing blanks are not part of the key; leading blanks are. Case does not matter.
    int end = text.size();
    while (end > 0 && text.at(end - 1) == QLatin1Char(' '))
        --end;
    return text.left(end).toCaseFolded();
}

void Traductor::carrega(Db &db, const QString &idioma)
{
    m_index.clear();
    m_idioma = idioma;
    Query q = db.query(QStringLiteral("SELECT Texte, TexteTraduit FROM Ztraduccio WHERE Idioma = ? COLLATE NOCASE"));
    q.bind(idioma).exec();
    while (q.next()) {
        if (q.value(1).isNull())
            continue; // a Null translation is no translation
        const QString k = clau(q.text(0));
        if (!m_index.contains(k))
            m_index.insert(k, q.text(1));
    }
    m_carregat = true;
}

void Traductor::carrega(const QList<FilaTraduccio> &files, const QString &idioma)
{
    m_index.clear();
    m_idioma = idioma;
    for (const FilaTraduccio &f : files) {
        if (f.idioma.compare(idioma, Qt::CaseInsensitive) != 0 || f.traduit.isNull())
            continue;
        const QString k = clau(f.texte);
        if (!m_index.contains(k))
            m_index.insert(k, f.traduit);
    }
    m_carregat = true;
}

QString Traductor::tradueix(const QString &text) const
{
    if (!m_carregat)
        return text;
    auto it = m_index.constFind(clau(text));
    return it == m_index.constEnd() ? text : it.value();
}

void Traductor::instala(const Traductor *t)
{
    g_actual = t;
}

const Traductor *Traductor::actual()
{
    return g_actual;
}

QString Tradueix(const QString &text)
{
    return g_actual ? g_actual->tradueix(text) : text;
}

QList<FilaTraduccio> filesTraduccioIncloses()
{
    QList<FilaTraduccio> files;
    QStringList paths;
    // An installed copy reads the rows shipped beside it, so a corrected row needs no rebuild.
    QString dir = fitxers_instal_lats::dir(QStringLiteral("translations"));
    if (dir.isEmpty())
        dir = QStringLiteral(":/translations");
    QDirIterator it(dir, {QStringLiteral("*.tsv")}, QDir::Files);
    while (it.hasNext())
        paths << it.next();
    paths.sort();
    for (const QString &path : std::as_const(paths)) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly))
            continue;
        const QStringList lines = QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'));
        for (QString line : lines) {
            if (line.endsWith(QLatin1Char('\r')))
                line.chop(1);
            if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
                continue;
            const QStringList cols = line.split(QLatin1Char('\t'));
            for (int i = 0; i < kLlengues.size() && i + 1 < cols.size(); ++i) {
                if (!cols[i + 1].isEmpty())
                    files.append({cols[0], kLlengues[i], cols[i + 1]});
            }
        }
    }
    return files;
}

void creaTaulaTraduccio(Db &db)
{
    Transaction t(db);
    db.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS Ztraduccio ("
                           "Texte TEXT NOT NULL COLLATE NOCASE, "
                           "Idioma TEXT NOT NULL COLLATE NOCASE, "
                           "TexteTraduit TEXT, "
                           "PRIMARY KEY (Texte, Idioma))"));
    Query ins = db.prepared(QStringLiteral("INSERT OR IGNORE INTO Ztraduccio (Texte, Idioma, TexteTraduit) VALUES (?, ?, ?)"));
    for (const FilaTraduccio &f : filesTraduccioIncloses()) {
        QString texte = f.texte;
        while (texte.endsWith(QLatin1Char(' ')))
            texte.chop(1);
        ins.bind(texte).bind(f.idioma).bind(f.traduit).exec();
    }
    t.commit();
}

QStringList llistaIdiomes(const QString &iniFile)
{
    QStringList result;
    const QString section = LlegirSeccioIni(iniFile, QStringLiteral("Idiomes"));
    if (section.isEmpty())
        return result;
    QStringList pieces = section.split(QChar(0));
    pieces.removeLast(); // the empty piece after the last NUL
    for (const QString &p : std::as_const(pieces))
        result << p.trimmed();
    return result;
}

QString codiIdioma(const QString &entrada)
{
    return entrada.trimmed().mid(1, 2);
}
