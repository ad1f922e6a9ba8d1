// Confirming the settings refuses a day that ends before it starts and a lunch break outside the
// day, before anything is asked or written.
#include "config/edicio_configuracio.h"
#include "support/entorn_proves.h"

#include <QtTest>

using namespace edicio_configuracio;

class TestHorariConfiguracio : public QObject {
    Q_OBJECT

private slots:
    void dayAndLunchMustFit_data()
    {
        QTest::addColumn<QString>("inici");
        QTest::addColumn<QString>("final");
        QTest::addColumn<QString>("dinarInici");
        QTest::addColumn<QString>("dinarFinal");
        QTest::addColumn<int>("resultat");
        const int dia = int(Resultat::DiaIncorrecte);
        const int dinar = int(Resultat::DinarIncorrecte);
        const int gravat = int(Resultat::Gravat);
        QTest::newRow("ordinary day") << "08:00" << "20:00" << "13:30" << "15:00" << gravat;
        QTest::newRow("whole day, midnight end") << "00:00" << "24:00" << "13:00" << "14:00" << gravat;
        QTest::newRow("lunch at the day's edges") << "08:00" << "20:00" << "08:00" << "20:00" << gravat;
        QTest::newRow("no lunch break") << "08:00" << "20:00" << "13:00" << "13:00" << gravat;
        QTest::newRow("end before start") << "09:00" << "08:00" << "13:30" << "15:00" << dia;
        QTest::newRow("end equals start") << "09:00" << "09:00" << "13:30" << "15:00" << dia;
        QTest::newRow("lunch before the day") << "14:00" << "22:00" << "13:30" << "15:00" << dinar;
        QTest::newRow("lunch after the day") << "06:00" << "14:30" << "13:30" << "15:00" << dinar;
        QTest::newRow("lunch ends before it starts") << "08:00" << "20:00" << "15:00" << "13:30" << dinar;
    }
    void dayAndLunchMustFit()
    {
        QFETCH(QString, inici);
        QFETCH(QString, final);
        QFETCH(QString, dinarInici);
        QFETCH(QString, dinarFinal);
        QFETCH(int, resultat);
        DirectoriProva dir;
        auto s = dir.obreSessio();
        Valors v = valorsInicials(*s);
        v.HoraInici = inici;
        v.HoraFinal = final;
        v.HoraIniciDinar = dinarInici;
        v.HoraFinalDinar = dinarFinal;
        InteraccioGuio ui;
        ui.respostes = {true};
        int escrits = 0;
        const Resultat r = confirma(*s, v, ui, [&](const QString &, const QString &, const QString &) {
            ++escrits;
            return true;
        });
        QCOMPARE(int(r), resultat);
        QCOMPARE(escrits > 0, r == Resultat::Gravat);
        QCOMPARE(s->ReiniciarAplicacio, r == Resultat::Gravat);
        if (r != Resultat::Gravat) {
            QCOMPARE(ui.crides.size(), 1);
            QCOMPARE(ui.crides.at(0).tipus, QStringLiteral("informa"));
            QCOMPARE(ui.crides.at(0).text, r == Resultat::DiaIncorrecte
                                               ? QStringLiteral("L'hora final ha de ser posterior a l'hora d'inici")
                                               : QStringLiteral("L'hora del dinar ha de quedar dins de l'horari del dia"));
        }
    }
};

QTEST_GUILESS_MAIN(TestHorariConfiguracio)
#include "tst_horari_configuracio.moc"
