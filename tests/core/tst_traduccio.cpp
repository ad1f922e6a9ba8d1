// The translation lookup, the language list, and the shipped translations: every text passed to
// Tradueix has its Spanish and English rows.
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
        Traductor t;
        Traductor::instala(&t);
        t.carrega(db, "ES");
        // Case does not matter for the key; the stored text comes back as it is.
        QCOMPARE(Tradueix("CLIENT"), QString("Cliente"));
        QCOMPARE(Tradueix("Fitxer d'ajuda '"), QString("Fichero de ayuda '"));
        // Trailing blanks are not part of the key and are not added back...
        QCOMPARE(Tradueix("Client   "), QString("Cliente"));
        // ...but a text without a translation comes back with them.
        QCOMPARE(Tradueix("Desconegut  "), QString("Desconegut  "));
        // Leading blanks are part of the key.
        QCOMPARE(Tradueix("fins al"), QString("fins al"));
        // A Null translation is no translation.
        QCOMPARE(Tradueix("Sense traducció"), QString("Sense traducció"));
        // Another language's rows are not used.
        t.carrega(db, "EN");
        QCOMPARE(Tradueix("Fitxer d'ajuda '"), QString("Fitxer d'ajuda '"));
    }

    // The shipped table is read by every session, in the desktop start-up's tests.
    void languageList()
    {
        const QString ini = m_dir.filePath("idiomes.ini");
        QFile f(ini);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("[Parametres]\nIdioma=CT\n[Idiomes]\n (CT) Català \n(ES) Castellà\n");
        f.close();
        const QStringList list = llistaIdiomes(ini);
        QCOMPARE(list, QStringList({"(CT) Català", "(ES) Castellà"}));
        QCOMPARE(codiIdioma(list[1]), QString("ES"));
    }

    void everyLiteralIsTranslatedIntoEnglish()
    {
        QHash<QString, QSet<QString>> known; // key (case-folded, trailing blanks off) -> languages
        for (const FilaTraduccio &r : filesTraduccioIncloses())
            known[senseBlancsFinals(r.texte).toCaseFolded()].insert(r.idioma.toUpper());

        static const QRegularExpression crida(QStringLiteral(
            "\\b(?:Tradueix|PerTraduir)\\s*\\(\\s*(?:QStringLiteral\\s*\\(\\s*|u)?\"((?:[^\"\\\\]|\\\\.)*)\""));
        QStringList falten;
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
                }
            }
        }
        QVERIFY(literals > 100);
        falten.removeDuplicates();
        QVERIFY2(falten.isEmpty(), qPrintable("Missing translations:\n" + falten.join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestTraduccio)
#include "tst_traduccio.moc"
