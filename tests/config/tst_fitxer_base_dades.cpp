// The database file chosen in the configuration dialog: a file that does not exist is accepted
// only when the user asks for a new empty database there, and it is created only once the whole
// change is confirmed.
#include "config/edicio_configuracio.h"
#include "core/versions_esquema.h"
#include "support/entorn_proves.h"

#include <QtTest>

using namespace edicio_configuracio;

namespace {

// Tells the questions whose default answer is No from the others.
class InteraccioDefectes : public InteraccioGuio {
public:
    bool preguntaPerDefecteNo(const QString &titol, const QString &text) override
    {
        const bool r = pregunta(titol, text);
        crides.last().tipus = QStringLiteral("pregunta (No)");
        return r;
    }
};

} // namespace

class TestFitxerBaseDades : public QObject {
    Q_OBJECT

private slots:
    void aMissingFileNeedsAYes_data()
    {
        QTest::addColumn<QString>("fitxer");    // as typed; "<dir>" is the data directory
        QTest::addColumn<QList<bool>>("respostes");
        QTest::addColumn<int>("resultat");
        QTest::addColumn<QStringList>("crides"); // the kinds of message, in order
        QTest::addColumn<bool>("creat");
        const int gravat = int(Resultat::Gravat);
        const int rebutjada = int(Resultat::BaseDadesRebutjada);
        const int noConfirmat = int(Resultat::NoConfirmat);
        QTest::newRow("missing, no new database") << "<dir>/Quadrela.db" << QList<bool>{} << rebutjada
                                                  << QStringList{"pregunta (No)"} << false;
        QTest::newRow("missing, new database") << "<dir>/Nova.db" << QList<bool>{true, true} << gravat
                                               << QStringList{"pregunta (No)", "pregunta"} << true;
        QTest::newRow("missing, change not confirmed")
            << "<dir>/Nova.db" << QList<bool>{true, false} << noConfirmat << QStringList{"pregunta (No)", "pregunta"} << false;
        QTest::newRow("relative name, new database") << "Nova.db" << QList<bool>{true, true} << gravat
                                                     << QStringList{"pregunta (No)", "pregunta"} << true;
        QTest::newRow("folder missing") << "<dir>/xarxa/Quadrella.db" << QList<bool>{true, true} << rebutjada
                                        << QStringList{"informa"} << false;
    }
    void aMissingFileNeedsAYes()
    {
        QFETCH(QString, fitxer);
        QFETCH(QList<bool>, respostes);
        QFETCH(int, resultat);
        QFETCH(QStringList, crides);
        QFETCH(bool, creat);
        DirectoriProva dir;
        auto s = dir.obreSessio();
        Valors v = valorsInicials(*s);
        v.BaseDades = QString(fitxer).replace(QStringLiteral("<dir>"), dir.path());
        const QString absolut = QDir(dir.path()).filePath(v.BaseDades);
        InteraccioDefectes ui;
        ui.respostes = respostes;
        QStringList escrits;
        const Resultat r = confirma(*s, v, ui, [&](const QString &, const QString &clau, const QString &valor) {
            escrits << clau + QLatin1Char('=') + valor;
            return true;
        });
        QCOMPARE(int(r), resultat);
        QStringList tipus;
        for (const auto &c : ui.crides)
            tipus << c.tipus;
        QCOMPARE(tipus, crides);
        QVERIFY2(ui.crides[0].text.contains(QFileInfo(absolut).absolutePath()), qPrintable(ui.crides[0].text));
        QCOMPARE(escrits.contains(QStringLiteral("BaseDades=") + v.BaseDades), r == Resultat::Gravat);
        QCOMPARE(QFileInfo::exists(absolut), creat);
        if (creat) {
            Db db;
            db.open(absolut);
            QCOMPARE(versions_esquema::versio(db), versions_esquema::Actual);
        }
    }
};

QTEST_GUILESS_MAIN(TestFitxerBaseDades)
#include "tst_fitxer_base_dades.moc"
