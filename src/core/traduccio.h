#pragma once
// The translation lookup. Source texts are Catalan; the rows of Ztraduccio give the text in
// other languages. The rows of the current language are loaded once into an index, so a lookup
// never runs a query.

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

class Db;

struct FilaTraduccio {
    QString texte;
    QString idioma;
    QString traduit;
};

class Traductor {
public:
    Traductor() = default;

    // Loads the rows of one language from an open translation database (table Ztraduccio).
    void carrega(Db &db, const QString &idioma);
    // Loads from rows already in memory (the shipped files).
    void carrega(const QList<FilaTraduccio> &files, const QString &idioma);
    bool carregat() const { return m_carregat; }
    QString idioma() const { return m_idioma; }

    QString tradueix(const QString &text) const;

    // The process's current translator; Tradueix() uses it. Null means "return texts unchanged".
    static void instala(const Traductor *t);
    static const Traductor *actual();

private:
    static QString clau(const QString &text);
    QHash<QString, QString> m_index;
    QString m_idioma;
    bool m_carregat = false;
};

QString Tradueix(const QString &text);
inline QString Tradueix(const char *text) { return Tradueix(QString::fromUtf8(text)); }

// The rows shipped with the program (translations/*.tsv): "Catalan<TAB>ES<TAB>EN" per line.
QList<FilaTraduccio> filesTraduccioIncloses();
// Creates Ztraduccio in an open database and fills it with the shipped rows (in one transaction).
void creaTaulaTraduccio(Db &db);

// The language list of section [Idiomes]: each non-empty line trimmed, as shown to the user.
QStringList llistaIdiomes(const QString &iniFile);
// The code of an entry of that list: characters 2 and 3 of the trimmed line.
QString codiIdioma(const QString &entrada);
