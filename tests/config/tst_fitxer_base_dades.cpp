// The configuration dialog's database file: a missing one only after a Yes to a new empty
// database there, created once the whole change is confirmed.
#include "config/edicio_configuracio.h"
#include "core/ini.h"
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
        const QStringList dues{"pregunta (No)", "pregunta"};
        QTest::newRow("no new database") << "<dir>/Quadrela.db" << QList<bool>{} << int(Resultat::BaseDadesRebutjada) << dues.mid(0, 1);
        QTest::newRow("new database, relative name") << "Nova.db" << QList<bool>{true, true} << int(Resultat::Gravat) << dues;
        QTest::newRow("change not confirmed") << "<dir>/Nova.db" << QList<bool>{true, false} << int(Resultat::NoConfirmat) << dues;
        QTest::newRow("folder missing") << "<dir>/xarxa/Quadrella.db" << QList<bool>{true, true} << int(Resultat::BaseDadesRebutjada)
                                        << QStringList{"informa"};
    }
    void aMissingFileNeedsAYes()
    {
        QFETCH(QString, fitxer);
        QFETCH(QList<bool>, respostes);
        QFETCH(int, resultat);
        QFETCH(QStringList, crides);
        DirectoriProva dir;
        auto s = dir.obreSessio();
        Valors v = valorsInicials(*s);
        v.BaseDades = QString(fitxer).replace(QStringLiteral("<dir>"), dir.path());
        const QString absolut = QDir(dir.path()).filePath(v.BaseDades);
        InteraccioDefectes ui;
        ui.respostes = respostes;
        const Resultat r = confirma(*s, v, ui);
        QCOMPARE(int(r), resultat);
        QStringList tipus;
        for (const auto &c : ui.crides)
            tipus << c.tipus;
        QCOMPARE(tipus, crides);
        QVERIFY2(ui.crides[0].text.contains(QFileInfo(absolut).absolutePath()), qPrintable(ui.crides[0].text));
        QCOMPARE(LlegirIni(dir.fitxerIni(), "General", "BaseDades", "") == v.BaseDades, r == Resultat::Gravat);
        QCOMPARE(QFileInfo::exists(absolut), r == Resultat::Gravat);
        if (r == Resultat::Gravat) {
            Db db;
            db.open(absolut);
            QCOMPARE(versions_esquema::versio(db), versions_esquema::Actual);
        }
    }
};

QTEST_GUILESS_MAIN(TestFitxerBaseDades)
#include "tst_fitxer_base_dades.moc"
