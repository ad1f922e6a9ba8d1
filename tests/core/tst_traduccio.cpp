// The translation lookup, the language list, and the completeness of the shipped translations.
#include "core/db.h"
#include "core/traduccio.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

class TestTraduccio : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    // A translation database holding exactly these rows.
    void makeDb(Db &db, const QList<FilaTraduccio> &rows)
    {
        db.open(m_dir.filePath(QStringLiteral("t%1.db").arg(++m_counter)));
        db.exec("CREATE TABLE Ztraduccio (Texte TEXT COLLATE NOCASE, Idioma TEXT, TexteTraduit TEXT)");
        for (const FilaTraduccio &r : rows) {
            Query q = db.query("INSERT INTO Ztraduccio VALUES (?, ?, ?)");
            q.bind(r.texte).bind(r.idioma).bind(r.traduit.isNull() ? QVariant() : QVariant(r.traduit)).exec();
        }
    }
    int m_counter = 0;

    static QString decodeLiteral(const QString &s)
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

private slots:
    void cleanup() { Traductor::instala(nullptr); }

    void lookupRules()
    {
        Db db;
        makeDb(db, {{"Client", "ES", "Cliente"},
                    {"Fitxer d'ajuda '", "ES", "Fichero de ayuda '"},
                    {" fins al", "ES", " hasta el"},
                    {"Sense traducció", "ES", QString()},
                    {"Client", "EN", "Customer"}});
        Traductor t;
        t.carrega(db, "ES");
        Traductor::instala(&t);
        QCOMPARE(Tradueix("Client"), QString("Cliente"));
        // Case does not matter for the key; the stored text comes back as it is.
        QCOMPARE(Tradueix("CLIENT"), QString("Cliente"));
        // A quote in the text is no problem.
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
        // Catalan has no rows: texts come back unchanged.
        t.carrega(db, "CT");
        QCOMPARE(Tradueix("Últim dia planificat"), QString("Últim dia planificat"));
    }

    void noTranslatorMeansUnchanged()
    {
        Traductor::instala(nullptr);
        QCOMPARE(Tradueix("Client  "), QString("Client  "));
        Traductor empty; // never loaded
        Traductor::instala(&empty);
        QCOMPARE(Tradueix("Client"), QString("Client"));
    }

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
        QVERIFY(llistaIdiomes(m_dir.filePath("missing.ini")).isEmpty());
    }

    void shippedRowsBuildTheTable()
    {
        Db db;
        db.open(m_dir.filePath("shipped.db"));
        creaTaulaTraduccio(db);
        Traductor t;
        t.carrega(db, "EN");
        QCOMPARE(t.tradueix("dilluns"), QString("Monday"));
        t.carrega(db, "ES");
        QCOMPARE(t.tradueix("desembre"), QString("diciembre"));
    }

    // Every literal the program passes to Tradueix (or marks for later translation) has a
    // Spanish and an English row.
    void everyLiteralIsTranslated()
    {
        QHash<QString, QSet<QString>> known; // key (case-folded, trailing blanks off) -> languages
        for (const FilaTraduccio &r : filesTraduccioIncloses()) {
            QString k = r.texte;
            while (k.endsWith(QLatin1Char(' ')))
                k.chop(1);
            known[k.toCaseFolded()].insert(r.idioma.toUpper());
        }
        QVERIFY(!known.isEmpty());

        static const QRegularExpression call(QStringLiteral(
            "\\b(?:Tradueix|PerTraduir)\\s*\\(\\s*(?:QStringLiteral\\s*\\(\\s*|u)?\"((?:[^\"\\\\]|\\\\.)*)\""));
        QStringList missing;
        int literals = 0;
        QDirIterator it(QStringLiteral(QUADRELLA_SOURCE_DIR "/src"), {"*.cpp", "*.h"}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            QFile f(path);
            QVERIFY(f.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(f.readAll());
            auto matches = call.globalMatch(text);
            while (matches.hasNext()) {
                const auto m = matches.next();
                QString lit = decodeLiteral(m.captured(1));
                while (lit.endsWith(QLatin1Char(' ')))
                    lit.chop(1);
                if (lit.trimmed().isEmpty())
                    continue;
                ++literals;
                const QSet<QString> langs = known.value(lit.toCaseFolded());
                for (const char *lang : {"ES", "EN"}) {
                    if (!langs.contains(QString::fromLatin1(lang)))
                        missing << QStringLiteral("%1 [%2] in %3").arg(lit, QString::fromLatin1(lang), QFileInfo(path).fileName());
                }
            }
        }
        QVERIFY(literals > 20);
        missing.removeDuplicates();
        QVERIFY2(missing.isEmpty(), qPrintable("Missing translations:\n" + missing.join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestTraduccio)
#include "tst_traduccio.moc"
