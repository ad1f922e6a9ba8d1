// The undo stack: a new change drops what had been undone, a refused step stays where it was, and
// a cut keeps only what was done in the history, once per cut.

#include "core/pila_desfer.h"

#include <QtTest>

namespace {

// A command over a shared list of texts; `refusa` makes both directions refuse.
class OrdreProva : public OrdreDesfer {
public:
    OrdreProva(QStringList &fet, QString text, bool &refusa) : m_fet(fet), m_text(std::move(text)), m_refusa(refusa) {}
    QString text() const override { return m_text; }
    QString desfes() override
    {
        if (m_refusa)
            return QStringLiteral("no");
        m_fet.removeLast();
        return QString();
    }
    QString refes() override
    {
        if (m_refusa)
            return QStringLiteral("no");
        m_fet.append(m_text);
        return QString();
    }

private:
    QStringList &m_fet;
    QString m_text;
    bool &m_refusa;
};

QStringList historial(const PilaDesfer &p)
{
    static const char *tipus[] = {"fet", "desfet", "tancat", "tall"};
    QStringList h;
    for (const PilaDesfer::Entrada &e : p.historial())
        h << QLatin1String(tipus[e.tipus]) + QLatin1Char(' ') + e.text;
    return h;
}

} // namespace

class TestPilaDesfer : public QObject {
    Q_OBJECT

private slots:
    void pila()
    {
        PilaDesfer p;
        QStringList fet;
        bool refusa = false;
        int avisos = 0;
        p.alCanviar = [&] { ++avisos; };
        auto fes = [&](const QString &t) {
            fet.append(t);
            p.afegeix(std::make_unique<OrdreProva>(fet, t, refusa));
        };
        fes("a");
        fes("b");
        fes("c");
        QCOMPARE(p.desfes(), QString());
        QCOMPARE(p.desfes(), QString());
        QCOMPARE(p.textRefer(), QString("b"));
        // a new change after two undos: b and c can no longer come back
        fes("d");
        QCOMPARE(fet, (QStringList{"a", "d"}));
        QVERIFY(!p.potRefer());
        QCOMPARE(historial(p), (QStringList{"fet a", "fet d"}));

        // refused both ways: nothing moves, nobody is told of a change
        QCOMPARE(p.desfes(), QString());
        const int abans = avisos;
        refusa = true;
        QCOMPARE(p.refes(), QString("no"));
        QCOMPARE(p.desfes(), QString("no"));
        QCOMPARE(p.textDesfer(), QString("a"));
        QCOMPARE(p.textRefer(), QString("d"));
        QCOMPARE(avisos, abans);
        refusa = false;

        // a cut keeps what was done, forgets what was undone; a second identical cut adds nothing
        p.neteja("planificació");
        p.neteja("planificació");
        QVERIFY(!p.potDesfer() && !p.potRefer());
        QCOMPARE(p.desfes(), QString());
        fes("e");
        p.neteja("facturació");
        fes("f");
        QCOMPARE(p.desfes(), QString());
        QCOMPARE(historial(p), (QStringList{"tancat a", "tall planificació", "tancat e", "tall facturació", "desfet f"}));
    }
};

QTEST_GUILESS_MAIN(TestPilaDesfer)
#include "tst_pila_desfer.moc"
