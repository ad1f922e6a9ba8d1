// The translation lookup, the language list, and the shipped translations: every text passed to
// Tradueix has its Spanish and English rows, and no English text (nor a piece glued to one in the
// same statement) holds a Catalan word.
#include "core/db.h"
#include "core/traduccio.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QString decodeLiteral(const QString &s)
{
    QString out;
    for (int i = 0; i < s.size(); ++i) {
        if (s[i] == QLatin1Char('\\') && i + 1 < s.size()) {
            const QChar c = s[++i];
            out += c == QLatin1Char('n') ? QChar('\n') : c == QLatin1Char('t') ? QChar('\t') : c;
        } else {
            out += s[i];
        }
    }
    return out;
}

QString senseBlancsFinals(QString s)
{
    while (s.endsWith(QLatin1Char(' ')))
        s.chop(1);
    return s;
}

// A short list of words no English text holds gives a Catalan leftover away (lower case, so the
// key "Del" passes).
bool teCatala(const QString &t)
{
    static const QSet<QString> catalanes{"del", "dels", "amb", "els", "les", "el", "la", "feina", "feines", "recurs",
                                         "lloc", "llocs", "hores", "dies", "dia", "sense", "vols", "és", "una",
                                         "aquest", "aquesta", "setmana", "mes", "fins", "des"};
    static const QRegularExpression paraula("\\p{L}+"), elisio("\\b[dl]'\\p{L}");
    for (auto it = paraula.globalMatch(t); it.hasNext();)
        if (catalanes.contains(it.next().captured(0)))
            return true;
    return elisio.match(t).hasMatch();
}

} // namespace

class TestTraduccio : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void cleanup() { Traductor::instala(nullptr); }

    void lookupRules()
    {
        Db db;
        db.open(m_dir.filePath(QStringLiteral("t.db")));
        db.exec("CREATE TABLE Ztraduccio (Texte TEXT COLLATE NOCASE, Idioma TEXT, TexteTraduit TEXT)");
        db.exec("INSERT INTO Ztraduccio VALUES ('Client', 'ES', 'Cliente'), ('Fitxer d''ajuda ''', 'ES', 'Fichero de ayuda '''),"
                " (' fins al', 'ES', ' hasta el'), ('Sense traducció', 'ES', NULL), ('Client', 'EN', 'Customer')");
        QCOMPARE(Tradueix("Client  "), QString("Client  ")); // no translator
        Traductor t;
        Traductor::instala(&t);
        QCOMPARE(Tradueix("Client"), QString("Client")); // never loaded
        t.carrega(db, "ES");
        // Case does not matter for the key; the stored text comes back as it is.
        QCOMPARE(Tradueix("CLIENT"), QString("Cliente"));
        QCOMPARE(Tradueix("Fitxer d'ajuda '"), QString("Fichero de ayuda '"));
        // Trailing blanks are not part of the key and are not added back...
        QCOMPARE(Tradueix("Client   "), QString("Cliente"));
        // ...but a text without a translation comes back with them.
        QCOMPARE(Tradueix("Desconegut  "), QString("Desconegut  "));
        // Leading blanks are part of the key.
        QCOMPARE(Tradueix(" fins al"), QString(" hasta el"));
        QCOMPARE(Tradueix("fins al"), QString("fins al"));
        // A Null translation is no translation.
        QCOMPARE(Tradueix("Sense traducció"), QString("Sense traducció"));
        // Another language's rows are not used.
        t.carrega(db, "EN");
        QCOMPARE(Tradueix("Client"), QString("Customer"));
        QCOMPARE(Tradueix("Fitxer d'ajuda '"), QString("Fitxer d'ajuda '"));
    }

    void languageListAndShippedTable()
    {
        const QString ini = m_dir.filePath("idiomes.ini");
        QFile f(ini);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("[Parametres]\nIdioma=CT\n[Idiomes]\n (CT) Català \n(ES) Castellà\n");
        f.close();
        const QStringList list = llistaIdiomes(ini);
        QCOMPARE(list, QStringList({"(CT) Català", "(ES) Castellà"}));
        QCOMPARE(codiIdioma(list[1]), QString("ES"));
        QVERIFY(llistaIdiomes(m_dir.filePath("missing.ini")).isEmpty());

        Db db;
        db.open(m_dir.filePath("shipped.db"));
        creaTaulaTraduccio(db);
        Traductor t;
        t.carrega(db, "EN");
        QCOMPARE(t.tradueix("dilluns"), QString("Monday"));
        t.carrega(db, "ES");
        QCOMPARE(t.tradueix("desembre"), QString("diciembre"));
    }

    void everyLiteralIsTranslatedIntoEnglish()
    {
        QHash<QString, QSet<QString>> known; // key (case-folded, trailing blanks off) -> languages
        for (const FilaTraduccio &r : filesTraduccioIncloses())
            known[senseBlancsFinals(r.texte).toCaseFolded()].insert(r.idioma.toUpper());
        QVERIFY(teCatala("Delete job Biel 'Banc' del 12/03/2009 ?") && !teCatala("Del: all customers, I'll plan the day's jobs"));
        Traductor en;
        en.carrega(filesTraduccioIncloses(), "EN");

        static const QRegularExpression crida(QStringLiteral(
            "\\b(?:Tradueix|PerTraduir)\\s*\\(\\s*(?:QStringLiteral\\s*\\(\\s*|u)?\"((?:[^\"\\\\]|\\\\.)*)\""));
        static const QRegularExpression cru("(?:QStringLiteral|QLatin1String)\\s*\\(\\s*\"((?:[^\"\\\\]|\\\\.)*)\"");
        QStringList falten, catala;
        int literals = 0;
        QDirIterator it(QStringLiteral(QUADRELLA_SOURCE_DIR "/src"), {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile f(it.next());
            QVERIFY(f.open(QIODevice::ReadOnly));
            const QString nom = QFileInfo(f).fileName();
            for (const QString &sentencia : QString::fromUtf8(f.readAll()).split(';')) {
                for (auto m = crida.globalMatch(sentencia); m.hasNext();) {
                    const QString lit = senseBlancsFinals(decodeLiteral(m.next().captured(1)));
                    if (lit.trimmed().isEmpty())
                        continue;
                    ++literals;
                    const QSet<QString> langs = known.value(lit.toCaseFolded());
                    for (const QString lang : {"ES", "EN"})
                        if (!langs.contains(lang))
                            falten << QStringLiteral("%1 [%2] in %3").arg(lit, lang, nom);
                    if (teCatala(en.tradueix(lit)))
                        catala << nom + ": " + en.tradueix(lit);
                }
                for (auto m = cru.globalMatch(sentencia); sentencia.contains("Tradueix(") && m.hasNext();) {
                    const QString tros = m.next().captured(1);
                    if (teCatala(tros))
                        catala << nom + ": glued \"" + tros + "\"";
                }
            }
        }
        QVERIFY(literals > 100);
        falten.removeDuplicates();
        QVERIFY2(falten.isEmpty(), qPrintable("Missing translations:\n" + falten.join('\n')));
        QVERIFY2(catala.isEmpty(), qPrintable("Catalan in English:\n" + catala.join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestTraduccio)
#include "tst_traduccio.moc"
