// The page frame and the printer it draws on, through the recorder: where a page breaks and what
// the break draws, right alignment against an edge, fitting texts into columns, the drawing's
// JSON, and a report that fails half way.
#include "core/db.h"
#include "reports/execucio_informe.h"
#include "reports/impressora_registre.h"
#include "reports/marc_informe.h"
#include "reports/text_informe.h"

#include <QJsonArray>
#include <QtTest>

namespace {

// The first text item that reads `text`, with its page (0 when there is none).
struct Trobat {
    int pagina = 0;
    ElementDibuix e;
};

Trobat busca(const ImpressoraRegistre &r, const QString &text)
{
    for (const PaginaDibuix &p : r.pagines())
        for (const ElementDibuix &e : p.elements)
            if (e.tipus == ElementDibuix::Text && e.text == text)
                return {p.numero, e};
    return {};
}

// A list of one-line entries with a two-line page header, checked for a break before each entry.
void llista(ImpressoraRegistre &imp, int salt, int entrades)
{
    MarcInforme m(imp, salt);
    MarcInforme::Capcalera c;
    c.titol = QStringLiteral("Llista de prova");
    c.linies = [](MarcInforme &mm) {
        mm.lletra(10, false);
        mm.baixa(200);
        mm.imp().setX(500);
        mm.imp().imprimeix(QStringLiteral("Columnes"));
    };
    m.inicia(c);
    for (int i = 0; i < entrades; ++i) {
        m.comprovaSalt();
        m.lletra(10, i % 2 == 0); // the entries' own font survives a break
        m.imp().setX(500);
        m.imp().imprimeix(QStringLiteral("Entrada %1").arg(i));
    }
    m.acaba();
}

} // namespace

class TestMarcInforme : public QObject {
    Q_OBJECT

private slots:
    // Entries start only while y has not passed PosicioSaltPagina; a full page gets the bottom
    // mark, the next one the same header with its number and the top mark, and the body goes on
    // where it started on page 1. A lower PosicioSaltPagina moves the marks up with it.
    void pageBreaks_data()
    {
        QTest::addColumn<int>("salt");
        QTest::addColumn<int>("entrades");
        QTest::addColumn<int>("pagines");
        QTest::newRow("fits on one page") << 14500 << 20 << 1;
        QTest::newRow("just over one page") << 14500 << 52 << 2;
        QTest::newRow("lowered, one page") << 10000 << 20 << 1;
        QTest::newRow("lowered, three pages") << 10000 << 75 << 3;
    }

    void pageBreaks()
    {
        QFETCH(int, salt);
        QFETCH(int, entrades);
        QFETCH(int, pagines);
        ImpressoraRegistre imp;
        llista(imp, salt, entrades);
        QVERIFY(imp.acabat());
        QCOMPARE(imp.pagines().size(), pagines);

        const double primeraY = busca(imp, QStringLiteral("Entrada 0")).e.y1;
        ImpressoraRegistre mida;
        mida.setMida(10);
        const double altLinia = mida.altLinia();
        int seguent = 0;
        for (const PaginaDibuix &p : imp.pagines()) {
            const int n = p.numero;
            // The header of every page.
            QCOMPARE(p.elements.first().tipus, ElementDibuix::Imatge);
            QCOMPARE(p.elements.first().x1, 500.0);
            QCOMPARE(p.elements.first().y1, 500.0);
            QCOMPARE(p.elements.first().x2 - p.elements.first().x1, 7000.0);
            QCOMPARE(p.elements.first().y2 - p.elements.first().y1, 1250.0);
            int titols = 0, numeros = 0, marquesBaix = 0, marquesDalt = 0;
            double anterior = -1;
            bool primera = true;
            for (const ElementDibuix &e : p.elements) {
                if (e.tipus != ElementDibuix::Text)
                    continue;
                if (e.text == QStringLiteral("Llista de prova")) {
                    ++titols;
                    QCOMPARE(e.x1, 500.0);
                    QCOMPARE(e.y1, 2000.0);
                    QVERIFY(e.negreta && e.mida == 12);
                } else if (e.text == QStringLiteral("pàg. %1").arg(n)) {
                    ++numeros;
                    QCOMPARE(e.x1, 6000.0);
                    QCOMPARE(e.y1, salt + 1200.0);
                    QVERIFY(e.mida == 8 && !e.negreta);
                } else if (e.text == QStringLiteral(" (Continúa...)")) {
                    ++marquesBaix;
                    QCOMPARE(e.x1, 9800.0);
                    QCOMPARE(e.y1, salt + 500.0);
                    QVERIFY(e.cursiva && !e.negreta && e.mida == 10);
                } else if (e.text == QStringLiteral("(Continuació)")) {
                    ++marquesDalt;
                    QCOMPARE(e.x1, 9800.0);
                    QCOMPARE(e.y1, 2000.0);
                    QVERIFY(e.cursiva && !e.negreta && e.mida == 10);
                } else if (e.text.startsWith(QStringLiteral("Entrada "))) {
                    QCOMPARE(e.text, QStringLiteral("Entrada %1").arg(seguent));
                    QCOMPARE(e.negreta, seguent % 2 == 0);
                    QVERIFY(!e.cursiva);
                    ++seguent;
                    QVERIFY2(e.y1 <= salt, qPrintable(e.text));
                    if (primera)
                        QCOMPARE(e.y1, primeraY);
                    primera = false;
                    anterior = e.y1;
                }
            }
            QCOMPARE(titols, 1);
            QCOMPARE(numeros, 1);
            QCOMPARE(marquesBaix, n < pagines ? 1 : 0);
            QCOMPARE(marquesDalt, n > 1 ? 1 : 0);
            // A page ends only when the next entry would start past the limit.
            if (n < pagines)
                QVERIFY(anterior + altLinia > salt);
        }
        QCOMPARE(seguent, entrades);
    }

    // A right-aligned text ends exactly at its edge, whatever its font.
    void rightAlignment_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("mida");
        QTest::addColumn<bool>("negreta");
        QTest::addColumn<double>("vora");
        QTest::newRow("amount") << "1.234,56" << 10.0 << false << 11000.0;
        QTest::newRow("hours, bold") << "Total 12,50 hores" << 10.0 << true << 9750.0;
        QTest::newRow("big total") << "IMPORT FEINA: 1.234,56 €" << 12.0 << true << 11000.0;
        QTest::newRow("small") << "0,5" << 8.0 << false << 7350.0;
    }

    void rightAlignment()
    {
        QFETCH(QString, text);
        QFETCH(double, mida);
        QFETCH(bool, negreta);
        QFETCH(double, vora);
        ImpressoraRegistre imp;
        MarcInforme m(imp, 14500);
        m.lletra(mida, negreta);
        imp.setY(3000);
        m.textDreta(vora, text);
        QCOMPARE(imp.y(), 3000.0); // stays on its line
        const ElementDibuix e = busca(imp, text).e;
        QVERIFY(e.ample > 0);
        QVERIFY2(qAbs(e.x1 + e.ample - vora) < 0.01, qPrintable(QString::number(e.x1 + e.ample)));
        QCOMPARE(e.mida, mida);
        QCOMPARE(e.negreta, negreta);
    }

    // Cutting and breaking texts to a column: every line fits, no word is lost or reordered, the
    // text's own line breaks are kept, and a cut text says so.
    void fitting_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("ample");
        QTest::addColumn<int>("minLinies");
        QTest::newRow("short") << "Porteu la clau" << 9000.0 << 1;
        QTest::newRow("long") << "Porteu la clau del cancell i deixeu els contenidors a fora abans de les nou del matí"
                              << 3000.0 << 3;
        QTest::newRow("own breaks") << "Primera línia\r\nSegona\nTercera" << 9000.0 << 3;
        QTest::newRow("empty") << "" << 3000.0 << 1;
    }

    void fitting()
    {
        QFETCH(QString, text);
        QFETCH(double, ample);
        QFETCH(int, minLinies);
        ImpressoraRegistre imp;
        imp.setMida(8);
        const QStringList linies = text_informe::parteix(imp, text, ample);
        QVERIFY(linies.size() >= minLinies);
        for (const QString &l : linies)
            QVERIFY2(imp.ampleText(l) <= ample, qPrintable(l));
        QCOMPARE(linies.join(QLatin1Char(' ')).split(QLatin1Char(' '), Qt::SkipEmptyParts),
                 QString(text).replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(QLatin1Char('\n'), QLatin1Char(' '))
                     .split(QLatin1Char(' '), Qt::SkipEmptyParts));

        const QString tallat = text_informe::retalla(imp, text, 1000);
        QVERIFY(imp.ampleText(tallat) <= 1000);
        QCOMPARE(tallat.endsWith(QChar(0x2026)), imp.ampleText(text) > 1000);
    }

    // The drawing as --json writes it: whole twips, and each kind of item with its own keys.
    void jsonShape()
    {
        ImpressoraRegistre imp;
        imp.setMida(10);
        imp.setNegreta(true);
        imp.setColor(0x0000ff);
        imp.setX(500.4);
        imp.setY(2000.6);
        imp.imprimeix(QStringLiteral("Títol"));
        imp.linia(500, 2400, 11000, 2400);
        imp.paginaNova();
        imp.setColor(11513775);
        imp.requadre(7000, 3000, 10000, 3340, true);
        imp.requadre(7000, 3000, 10000, 3340);
        imp.imatge(QImage(), 500, 500, 7000, 1250);
        const QJsonArray pagines = imp.json().value("pages").toArray();
        QCOMPARE(pagines.size(), 2);
        const QJsonObject p1 = pagines.at(0).toObject();
        QCOMPARE(p1.value("number").toInt(), 1);
        const QJsonObject text = p1.value("items").toArray().at(0).toObject();
        QCOMPARE(QStringList(text.keys()), (QStringList{"bold", "italic", "op", "rgb", "size", "text", "w", "x", "y"}));
        QCOMPARE(text.value("op").toString(), QString("text"));
        QCOMPARE(text.value("x").toInt(), 500);
        QCOMPARE(text.value("y").toInt(), 2001);
        QCOMPARE(text.value("w").toInt(), qRound(imp.ampleText(QStringLiteral("Títol"))));
        QCOMPARE(text.value("rgb").toInt(), 0x0000ff);
        QVERIFY(text.value("bold").toBool() && !text.value("italic").toBool());
        QCOMPARE(p1.value("items").toArray().at(1).toObject(),
                 (QJsonObject{{"op", "line"}, {"x1", 500}, {"y1", 2400}, {"x2", 11000}, {"y2", 2400}}));
        const QJsonArray items2 = pagines.at(1).toObject().value("items").toArray();
        QCOMPARE(pagines.at(1).toObject().value("number").toInt(), 2);
        QCOMPARE(items2.at(0).toObject(), (QJsonObject{{"op", "box"}, {"x1", 7000}, {"y1", 3000}, {"x2", 10000},
                                                       {"y2", 3340}, {"fill", 11513775}}));
        QCOMPARE(items2.at(1).toObject(),
                 (QJsonObject{{"op", "box"}, {"x1", 7000}, {"y1", 3000}, {"x2", 10000}, {"y2", 3340}}));
        QCOMPARE(items2.at(2).toObject(),
                 (QJsonObject{{"op", "picture"}, {"x", 500}, {"y", 500}, {"w", 7000}, {"h", 1250}}));
    }

    // A report that fails half way: the error comes back as "Error:" + its text, what was drawn
    // stays, and the document is ended all the same.
    void failureEndsTheDocument()
    {
        ImpressoraRegistre imp;
        const QString error = executaInforme(imp, [](Impressora &i) {
            MarcInforme m(i, 14500);
            m.inicia({QStringLiteral("Títol"), {}, 200, 200});
            throw DbError(QStringLiteral("disk I/O error"));
        });
        QCOMPARE(error, QStringLiteral("Error:disk I/O error"));
        QVERIFY(imp.acabat());
        QVERIFY(imp.textos().contains(QStringLiteral("Títol")));
        QVERIFY(executaInforme(imp, [](Impressora &) {}).isEmpty());
    }
};

QTEST_MAIN(TestMarcInforme)
#include "tst_marc_informe.moc"
