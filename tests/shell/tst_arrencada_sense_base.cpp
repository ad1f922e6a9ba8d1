// A business database that is not there stops the desktop start-up with its path, in the user's
// language, and nothing is created in its place.
#include "core/configuracio.h"
#include "core/ini.h"
#include "shell/aplicacio_escriptori.h"
#include "support/entorn_proves.h"

#include <QTest>

class TestArrencadaSenseBase : public QObject {
    Q_OBJECT

private slots:
    void aMissingDatabaseStopsTheStartUp_data()
    {
        QTest::addColumn<bool>("perDefecte");
        QTest::addColumn<bool>("primeraExecucio");
        QTest::addColumn<QString>("idioma");
        QTest::addColumn<QString>("frase");
        QTest::newRow("default path, later run") << true << false << "CT" << "No existeix la base de dades";
        QTest::newRow("elsewhere, later run") << false << false << "ES" << "No existe la base de datos";
        QTest::newRow("elsewhere, first run") << false << true << "EN" << "does not exist";
    }
    void aMissingDatabaseStopsTheStartUp()
    {
        QFETCH(bool, perDefecte);
        QFETCH(bool, primeraExecucio);
        QFETCH(QString, idioma);
        QFETCH(QString, frase);
        DirectoriProva dir;
        const QString bd = perDefecte ? QDir(dir.path()).filePath(Configuracio::nomFitxerBaseDades())
                                      : QDir(dir.path()).filePath(QStringLiteral("Quadrela.db"));
        QFile::remove(bd);
        dir.posaParametre(QStringLiteral("BaseDades"), bd, QStringLiteral("General"));
        dir.posaParametre(QStringLiteral("PrimeraExecucio"), primeraExecucio ? QStringLiteral("1") : QStringLiteral("0"));
        dir.posaParametre(QStringLiteral("Idioma"), idioma);

        InteraccioGuio ui;
        AplicacioEscriptori::Opcions o;
        o.msSplash = 1;
        o.traduccionsQt = false;
        AplicacioEscriptori app(dir.path(), ui, o);
        QVERIFY(!app.inicia());
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides[0].titol, QStringLiteral("ERROR"));
        const QString text = ui.crides[0].text;
        QVERIFY2(text.startsWith(QStringLiteral("Error:")) && text.contains(bd) && text.contains(frase), qPrintable(text));
        QVERIFY(!app.finestra());
        QVERIFY(!QFileInfo::exists(bd));
    }
};

QTEST_MAIN(TestArrencadaSenseBase)
#include "tst_arrencada_sense_base.moc"
