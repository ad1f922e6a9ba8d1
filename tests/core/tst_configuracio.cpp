// Settings: defaults, conversions, run state and errors that name the key.
#include "core/configuracio.h"
#include "core/ini.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestConfiguracio : public QObject {
    Q_OBJECT

    void writeIni(const QTemporaryDir &dir, const QByteArray &content)
    {
        QFile f(dir.filePath("Quadrella.ini"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(content);
    }

private slots:
    void defaultsWithoutFile()
    {
        QTemporaryDir dir;
        const QDate wednesday(2009, 3, 4);
        const Configuracio c = Configuracio::carrega(dir.path(), 2, wednesday);
        QCOMPARE(c.MinutsCella, 30);
        QCOMPARE(c.HoraFinal, QString("24:00"));
        QCOMPARE(c.HoresDia, 8.0);
        QCOMPARE(c.MarcaSeleccio, QString("-> "));
        QCOMPARE(c.ColorDiumenge, 11513775);
        QVERIFY(c.PermetSolaparLlocs && c.PrimeraExecucio);
        QCOMPARE(c.Idioma, QString("CT"));
        QCOMPARE(c.CellesDia, 48);
        QCOMPARE(c.BaseDades, dir.filePath("QuadrellaV01.db"));
        // The last planned day: the end of this week, whichever day the week starts on and
        // whether today is its first or its last day.
        QCOMPARE(c.UltimDiaGen, QDate(2009, 3, 8));
        QCOMPARE(Configuracio::carrega(dir.path(), 1, wednesday).UltimDiaGen, QDate(2009, 3, 7));
        QCOMPARE(Configuracio::carrega(dir.path(), 2, QDate(2009, 3, 2)).UltimDiaGen, QDate(2009, 3, 8));
        QCOMPARE(Configuracio::carrega(dir.path(), 2, QDate(2009, 3, 8)).UltimDiaGen, QDate(2009, 3, 8));
        QCOMPARE(Configuracio::claus("/data").size(), 26);
    }

    void conversions()
    {
        QTemporaryDir dir;
        writeIni(dir, "[General]\nBaseDades=altra.db\n"
                      "[Parametres]\nMinutsCella=\nHoresDia=7,5\nValorXec=12.25\nCostHoraXec=1.234,5\n"
                      "PermetSolaparLlocs=0\nCalculxHores=True\nDissabtesExtra=false\nColorDiumenge=&HFF00&\n"
                      "MaxXecsMes=4\nIdioma=ES\nHoraInici=08:00\nHoraFinal=20:00\n"
                      "[Estat]\nUltimDiaGen=05/03/2009\n");
        const Configuracio c = Configuracio::carrega(dir.path(), 2);
        QCOMPARE(c.MinutsCella, 30);
        QCOMPARE(c.HoresDia, 7.5);
        QCOMPARE(c.ValorXec, 12.25);
        QCOMPARE(c.CostHoraXec, 1234.5);
        QVERIFY(!c.PermetSolaparLlocs && c.CalculxHores && !c.DissabtesExtra);
        QCOMPARE(c.ColorDiumenge, 0xFF00);
        QCOMPARE(c.MaxXecsMes, 4);
        QCOMPARE(c.UltimDiaGen, QDate(2009, 3, 5));
        QCOMPARE(c.CellesDia, 24);
        // A relative database path lies in the data directory.
        QCOMPARE(c.BaseDades, dir.filePath("altra.db"));
        QCOMPARE(Configuracio::cellesDia("08:00", "20:00", 45), 16);
        QCOMPARE(Configuracio::cellesDia("10:00", "09:00", 30), 0);
        QCOMPARE(Configuracio::diaSetmana(QDate(2009, 3, 1), 2), 7); // Sunday, weeks from Monday
        QCOMPARE(Configuracio::diaSetmana(QDate(2009, 3, 7), 7), 1); // Saturday first
    }

    void badValuesNameTheKey_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("key");
        QTest::newRow("letter in cells") << QByteArray("[Parametres]\nMinutsCella=3O\n") << "MinutsCella";
        QTest::newRow("hours") << QByteArray("[Parametres]\nHoresDia=vuit\n") << "HoresDia";
        QTest::newRow("boolean") << QByteArray("[Parametres]\nPermetSolaparLlocs=potser\n") << "PermetSolaparLlocs";
        QTest::newRow("colour out of range") << QByteArray("[Parametres]\nColorFeina=3000000000\n") << "ColorFeina";
        QTest::newRow("time") << QByteArray("[Parametres]\nHoraInici=8h\n") << "HoraInici";
        QTest::newRow("date") << QByteArray("[Estat]\nUltimDiaGen=31/02/2009\n") << "UltimDiaGen";
        QTest::newRow("integer range") << QByteArray("[Parametres]\nMaxXecsMes=70000\n") << "MaxXecsMes";
    }
    void badValuesNameTheKey()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, key);
        QTemporaryDir dir;
        writeIni(dir, line);
        try {
            Configuracio::carrega(dir.path(), 2);
            QFAIL("a bad value was accepted");
        } catch (const ConfigError &e) {
            const QString value = QString::fromUtf8(line.mid(line.indexOf('=') + 1)).trimmed();
            QVERIFY2(e.text().contains(key) && e.text().contains(value), qPrintable(e.text()));
        }
    }
};

QTEST_GUILESS_MAIN(TestConfiguracio)
#include "tst_configuracio.moc"
