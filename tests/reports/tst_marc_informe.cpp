// The page frame and the printer it draws on, through the recorder: where a page breaks and what
// the break draws, fitting texts into columns, the drawing's JSON, and a report that fails half
// way.
#include "core/db.h"
#include "reports/execucio_informe.h"
#include "reports/impressora_registre.h"
#include "reports/marc_informe.h"
#include "reports/text_informe.h"

#include <QJsonArray>
#include <QRegularExpression>
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
        QTest::newRow("just over one page") << 14500 << 52 << 2;
        QTest::newRow("lowered, three pages") << 10000 << 75 << 3;
    }

    void pageBreaks()
    {
        QFETCH(int, salt);
        QFETCH(int, entrades);
        QFETCH(int, pagines);
        ImpressoraRegistre imp, mida;
        llista(imp, salt, entrades);
        QVERIFY(imp.acabat());
        QCOMPARE(imp.pagines().size(), pagines);
        const double primeraY = busca(imp, QStringLiteral("Entrada 0")).e.y1;
        mida.setMida(10);
        int seguent = 0;
        for (const PaginaDibuix &p : imp.pagines()) {
            const int n = p.numero;
            // Each mark as "text x y" and its font (B bold, I italic, size).
            QStringList marques, esperades{"Llista de prova 500 2000 B12", QString("pàg. %1 6000 %2 8").arg(n).arg(salt + 1200)};
            if (n > 1)
                esperades << "(Continuació) 9800 2000 I10";
            if (n < pagines)
                esperades << QString(" (Continúa...) 9800 %1 I10").arg(salt + 500);
            double anterior = -1;
            bool primera = true;
            for (const ElementDibuix &e : p.elements) {
                if (e.tipus != ElementDibuix::Text)
                    continue;
                if (e.text.startsWith(QStringLiteral("Entrada "))) {
                    QCOMPARE(e.text, QStringLiteral("Entrada %1").arg(seguent));
                    QVERIFY2(e.negreta == (seguent++ % 2 == 0) && !e.cursiva && e.y1 <= salt, qPrintable(e.text));
                    if (std::exchange(primera, false))
                        QCOMPARE(e.y1, primeraY);
                    anterior = e.y1;
                } else if (e.text.startsWith(QStringLiteral("Llista")) || e.text.startsWith(QStringLiteral("pàg.")) ||
                           e.text.contains(QStringLiteral("Contin"))) {
                    marques << e.text + QStringLiteral(" %1 %2 %3%4%5").arg(e.x1).arg(e.y1).arg(e.negreta ? "B" : "", e.cursiva ? "I" : "")
                                   .arg(e.mida);
                }
            }
            marques.sort();
            esperades.sort();
            QCOMPARE(marques, esperades);
            // A page ends only when the next entry would start past the limit.
            if (n < pagines)
                QVERIFY(anterior + mida.altLinia() > salt);
        }
        QCOMPARE(seguent, entrades);
    }

    // Cutting and breaking texts to a column: every line fits, no word is lost or reordered, the
    // text's own line breaks are kept, and a cut text says so.
    void fitting()
    {
        const struct {
            QString text;
            double ample;
            int minLinies;
        } casos[] = {{"Porteu la clau del cancell i deixeu els contenidors a fora abans de les nou del matí", 3000, 3},
                     {"Primera línia\r\nSegona\nTercera", 9000, 3}, {"", 3000, 1}};
        ImpressoraRegistre imp;
        imp.setMida(8);
        for (const auto &c : casos) {
            const QStringList linies = text_informe::parteix(imp, c.text, c.ample);
            QVERIFY(linies.size() >= c.minLinies);
            for (const QString &l : linies)
                QVERIFY2(imp.ampleText(l) <= c.ample, qPrintable(l));
            QCOMPARE(linies.join(QLatin1Char(' ')).split(QLatin1Char(' '), Qt::SkipEmptyParts),
                     QString(c.text).replace(QRegularExpression(QStringLiteral("\\r?\\n")), QStringLiteral(" ")).split(QLatin1Char(' '), Qt::SkipEmptyParts));
            const QString tallat = text_informe::retalla(imp, c.text, 1000);
            QVERIFY(imp.ampleText(tallat) <= 1000);
            QCOMPARE(tallat.endsWith(QChar(0x2026)), imp.ampleText(c.text) > 1000);
        }
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
        imp.imatge(QImage(), 500, 500, 7000, 1250);
        const QJsonArray pagines = imp.json().value("pages").toArray();
        QCOMPARE(pagines.size(), 2);
        const QJsonObject p1 = pagines.at(0).toObject(), p2 = pagines.at(1).toObject();
        QCOMPARE(p1.value("number").toInt() * 10 + p2.value("number").toInt(), 12);
        QCOMPARE(p1.value("items").toArray(),
                 (QJsonArray{QJsonObject{{"op", "text"}, {"text", "Títol"}, {"x", 500}, {"y", 2001}, {"w", qRound(imp.ampleText("Títol"))},
                                         {"size", 10}, {"bold", true}, {"italic", false}, {"rgb", 0x0000ff}},
                             QJsonObject{{"op", "line"}, {"x1", 500}, {"y1", 2400}, {"x2", 11000}, {"y2", 2400}}}));
        QCOMPARE(p2.value("items").toArray(),
                 (QJsonArray{QJsonObject{{"op", "box"}, {"x1", 7000}, {"y1", 3000}, {"x2", 10000}, {"y2", 3340}, {"fill", 11513775}},
                             QJsonObject{{"op", "picture"}, {"x", 500}, {"y", 500}, {"w", 7000}, {"h", 1250}}}));
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
