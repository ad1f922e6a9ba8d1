// The configuration's times: a cell length refused, or tried and changed back, leaves the times
// as the user had them; confirming refuses a day that ends before it starts and a lunch outside it.
#include "config/configuracio_dialog.h"
#include "support/entorn_proves.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

using namespace edicio_configuracio;

class TestConfiguracioHoresDialog : public QObject {
    Q_OBJECT
private slots:
    void cellLengthKeepsTheChosenTimes()
    {
        DirectoriProva dir;
        dir.posaParametre("PrimeraExecucio", "0");
        dir.posaParametre("HoraInici", "08:00");
        auto s = dir.obreSessio();
        InteraccioGuio ui;
        frmConfiguracio d(*s, ui);
        d.show();
        d.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&d));
        auto hores = [&] { return QStringList{d.ComboHoraInici->currentText(), d.ComboHoraFinalDinar->currentText()}; };
        for (const char *minuts : {"5", "45", "30"}) {
            d.txtMinutsCella->setFocus();
            d.txtMinutsCella->setText(minuts);
            d.txtHoresDia->setFocus();
            QTest::qWait(30);
            if (QByteArray(minuts) == "45")
                QCOMPARE(hores(), (QStringList{"07:30", "15:00"})); // 08:00 is not on a 45-minute grid
            else
                QCOMPARE(hores(), (QStringList{"08:00", "15:00"}));
        }
        QCOMPARE(ui.crides.size(), 1); // the refused 5
    }

    void dayAndLunchMustFit_data()
    {
        QTest::addColumn<QStringList>("hores"); // start, end, lunch start, lunch end
        QTest::addColumn<int>("resultat");
        QTest::newRow("ordinary") << QStringList{"08:00", "24:00", "13:30", "13:30"} << int(Resultat::Gravat);
        QTest::newRow("end before start") << QStringList{"09:00", "09:00", "13:30", "15:00"} << int(Resultat::DiaIncorrecte);
        QTest::newRow("lunch before the day") << QStringList{"14:00", "22:00", "13:30", "15:00"} << int(Resultat::DinarIncorrecte);
        QTest::newRow("lunch inverted") << QStringList{"08:00", "20:00", "15:00", "13:30"} << int(Resultat::DinarIncorrecte);
    }
    void dayAndLunchMustFit()
    {
        QFETCH(QStringList, hores);
        QFETCH(int, resultat);
        DirectoriProva dir;
        auto s = dir.obreSessio();
        Valors v = valorsInicials(*s);
        std::tie(v.HoraInici, v.HoraFinal, v.HoraIniciDinar, v.HoraFinalDinar) = std::tie(hores[0], hores[1], hores[2], hores[3]);
        InteraccioGuio ui;
        ui.respostes = {true};
        int escrits = 0;
        QCOMPARE(int(confirma(*s, v, ui, [&](auto &, auto &, auto &) { return ++escrits; })), resultat);
        QCOMPARE(escrits > 0, resultat == int(Resultat::Gravat));
    }
};

QTEST_MAIN(TestConfiguracioHoresDialog)
#include "tst_configuracio_hores_dialog.moc"
