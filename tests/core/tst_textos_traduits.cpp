// What an English-speaking user reads: every text the program passes to Tradueix, looked up in
// the shipped English rows, and the pieces glued to those texts to make a sentence, must not
// carry a Catalan word. A short list of Catalan words that never occur in English gives them away.
#include "core/traduccio.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtTest>

namespace {

// Catalan words an English text never holds (lower case: "Del:" is the Delete key's name).
const QSet<QString> &paraulesCatalanes()
{
    static const QSet<QString> p{
        QStringLiteral("del"),    QStringLiteral("dels"),    QStringLiteral("amb"),    QStringLiteral("els"),
        QStringLiteral("les"),    QStringLiteral("el"),      QStringLiteral("la"),     QStringLiteral("feina"),
        QStringLiteral("feines"), QStringLiteral("recurs"),  QStringLiteral("recursos"), QStringLiteral("lloc"),
        QStringLiteral("llocs"),  QStringLiteral("hores"),   QStringLiteral("dies"),   QStringLiteral("dia"),
        QStringLiteral("sense"),  QStringLiteral("vols"),    QStringLiteral("és"),     QStringLiteral("una"),
        QStringLiteral("aquest"), QStringLiteral("aquesta"), QStringLiteral("setmana"), QStringLiteral("mes"),
        QStringLiteral("fins"),   QStringLiteral("des")};
    return p;
}

// The Catalan words of a text, plus an elided article ("l'hora", "d'inici").
QStringList catalanes(const QString &text)
{
    static const QRegularExpression paraula(QStringLiteral("[\\p{L}]+"));
    static const QRegularExpression elisio(QStringLiteral("\\b[dl]'\\p{L}"));
    QStringList r;
    for (auto it = paraula.globalMatch(text); it.hasNext();) {
        const QString w = it.next().captured(0);
        if (paraulesCatalanes().contains(w))
            r << w;
    }
    if (elisio.match(text).hasMatch())
        r << QStringLiteral("l'/d'");
    return r;
}

QString decodifica(const QString &lit)
{
    // The sources write their texts in UTF-8; only quotes and backslashes are escaped.
    QString r = lit;
    r.replace(QStringLiteral("\\\""), QStringLiteral("\""));
    r.replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
    return r;
}

struct Font {
    QString nom;
    QString text;
};

QList<Font> fonts()
{
    QList<Font> r;
    QDirIterator it(QStringLiteral(QUADRELLA_SOURCE_DIR "/src"), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                    QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString cami = it.next();
        QFile f(cami);
        if (f.open(QIODevice::ReadOnly))
            r.append({QFileInfo(cami).fileName(), QString::fromUtf8(f.readAll())});
    }
    return r;
}

} // namespace

class TestTextosTraduits : public QObject {
    Q_OBJECT

private slots:
    // The checker itself: it must tell a Catalan leftover from English that only looks close.
    void recognisesCatalan_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("catala");
        QTest::newRow("glued connector") << "Delete job Biel 'Banc' del 12/03/2009 ?" << true;
        QTest::newRow("elided article") << "Start time of l'agenda" << true;
        QTest::newRow("untranslated word") << "3 feines planned." << true;
        QTest::newRow("english") << "Delete job Biel 'Banc' on 12/03/2009 ?" << false;
        QTest::newRow("delete key") << "Del: all customers" << false;
        QTest::newRow("contraction") << "I'll plan the day's jobs" << false;
    }
    void recognisesCatalan()
    {
        QFETCH(QString, text);
        QFETCH(bool, catala);
        QCOMPARE(!catalanes(text).isEmpty(), catala);
    }

    // Every text passed to Tradueix, in English.
    void englishTextsHoldNoCatalan()
    {
        Traductor en;
        en.carrega(filesTraduccioIncloses(), QStringLiteral("EN"));
        QVERIFY(en.carregat());
        static const QRegularExpression crida(QStringLiteral(
            "\\b(?:Tradueix|PerTraduir)\\s*\\(\\s*(?:QStringLiteral\\s*\\(\\s*|u)?\"((?:[^\"\\\\]|\\\\.)*)\""));
        QStringList trobats;
        int textos = 0;
        for (const Font &f : fonts()) {
            for (auto it = crida.globalMatch(f.text); it.hasNext();) {
                const QString font = decodifica(it.next().captured(1));
                if (font.trimmed().isEmpty())
                    continue;
                ++textos;
                const QString angles = en.tradueix(font);
                const QStringList w = catalanes(angles);
                if (!w.isEmpty())
                    trobats << QStringLiteral("%1: \"%2\" -> \"%3\" (%4)").arg(f.nom, font, angles, w.join(QLatin1Char(',')));
            }
        }
        QVERIFY(textos > 100);
        trobats.removeDuplicates();
        QVERIFY2(trobats.isEmpty(), qPrintable(QStringLiteral("Catalan left in English texts:\n") + trobats.join(QLatin1Char('\n'))));
    }

    // The untranslated pieces a statement glues to a translated text ("' del " between a place
    // and a date) are shown in every language as they are.
    void gluedPiecesHoldNoCatalan()
    {
        static const QRegularExpression cru(QStringLiteral("(?:QStringLiteral|QLatin1String)\\s*\\(\\s*\"((?:[^\"\\\\]|\\\\.)*)\""));
        QStringList trobats;
        for (const Font &f : fonts()) {
            for (const QString &sentencia : f.text.split(QLatin1Char(';'))) {
                if (!sentencia.contains(QLatin1String("Tradueix(")))
                    continue;
                for (auto it = cru.globalMatch(sentencia); it.hasNext();) {
                    const QString tros = decodifica(it.next().captured(1));
                    const QStringList w = catalanes(tros);
                    if (!w.isEmpty())
                        trobats << QStringLiteral("%1: \"%2\" (%3)").arg(f.nom, tros, w.join(QLatin1Char(',')));
                }
            }
        }
        trobats.removeDuplicates();
        QVERIFY2(trobats.isEmpty(), qPrintable(QStringLiteral("Untranslated pieces of sentences:\n") + trobats.join(QLatin1Char('\n'))));
    }
};

QTEST_GUILESS_MAIN(TestTextosTraduits)
#include "tst_textos_traduits.moc"
