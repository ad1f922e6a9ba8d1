// What an English-speaking user reads: the English row of every text passed to Tradueix, and the
// untranslated pieces glued to such texts in the same statement, hold no Catalan word (a short
// list of words no English text holds gives a leftover away; lower case, so the key "Del" passes).
#include "core/traduccio.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

class TestTextosTraduits : public QObject {
    Q_OBJECT
private slots:
    void noCatalanLeftInEnglish()
    {
        static const QSet<QString> catalanes{"del", "dels", "amb", "els", "les", "el", "la", "feina", "feines", "recurs",
                                             "lloc", "llocs", "hores", "dies", "dia", "sense", "vols", "és", "una",
                                             "aquest", "aquesta", "setmana", "mes", "fins", "des"};
        static const QRegularExpression paraula("\\p{L}+"), elisio("\\b[dl]'\\p{L}");
        const auto te = [](const QString &t) {
            for (auto it = paraula.globalMatch(t); it.hasNext();)
                if (catalanes.contains(it.next().captured(0)))
                    return true;
            return elisio.match(t).hasMatch();
        };
        QVERIFY(te("Delete job Biel 'Banc' del 12/03/2009 ?") && !te("Del: all customers, I'll plan the day's jobs"));

        Traductor en;
        en.carrega(filesTraduccioIncloses(), "EN");
        static const QRegularExpression crida("\\b(?:Tradueix|PerTraduir)\\s*\\(\\s*(?:QStringLiteral\\s*\\(\\s*|u)?\"((?:[^\"\\\\]|\\\\.)*)\"");
        static const QRegularExpression cru("(?:QStringLiteral|QLatin1String)\\s*\\(\\s*\"((?:[^\"\\\\]|\\\\.)*)\"");
        QStringList trobats;
        int textos = 0;
        QDirIterator it(QUADRELLA_SOURCE_DIR "/src", {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile f(it.next());
            QVERIFY(f.open(QIODevice::ReadOnly));
            for (const QString &sentencia : QString::fromUtf8(f.readAll()).split(';')) {
                for (auto m = crida.globalMatch(sentencia); m.hasNext();) {
                    const QString angles = en.tradueix(m.next().captured(1).replace("\\\"", "\""));
                    ++textos;
                    if (te(angles))
                        trobats << f.fileName() + ": " + angles;
                }
                if (!sentencia.contains("Tradueix("))
                    continue;
                for (auto m = cru.globalMatch(sentencia); m.hasNext();) {
                    const QString tros = m.next().captured(1);
                    if (te(tros))
                        trobats << f.fileName() + ": glued \"" + tros + "\"";
                }
            }
        }
        QVERIFY(textos > 100);
        QVERIFY2(trobats.isEmpty(), qPrintable("Catalan in English:\n" + trobats.join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestTextosTraduits)
#include "tst_textos_traduits.moc"
