// The configuration rules without the dialog: time lists, field checks, the job-coherence
// refusal and the confirmed writes.
#include "config/edicio_configuracio.h"
#include "core/formats.h"
#include "core/ini.h"
#include "support/entorn_proves.h"

#include <QTest>

using namespace edicio_configuracio;

Q_DECLARE_METATYPE(edicio_configuracio::Camp)

class TestEdicioConfiguracio : public QObject {
    Q_OBJECT

private slots:
    void timeListsFollowTheCellLength()
    {
        const LlistesHores de45 = llistesHores(45);
        QCOMPARE(de45.inicis.size(), 32);
        QCOMPARE(de45.inicis.first(), QString("00:00"));
        QCOMPARE(de45.inicis.last(), QString("23:15"));
        QCOMPARE(de45.finals.size(), 32);
        QCOMPARE(de45.finals.first(), QString("00:45"));
        QCOMPARE(de45.finals.last(), QString("24:00"));

        // 1440 is not a multiple of 50: the day ends on the last whole cell.
        const LlistesHores de50 = llistesHores(50);
        QCOMPARE(de50.finals.last(), QString("23:20"));
        QCOMPARE(de50.inicis.last(), QString("22:30"));

        const LlistesHores de30 = llistesHores(30);
        QCOMPARE(de30.inicis.size(), 48);
        QVERIFY(!de30.inicis.contains("24:00"));
        QVERIFY(!de30.finals.contains("00:00"));
    }

    void aSettingOffTheGridSelectsTheTimeBefore()
    {
        const QStringList inicis = llistesHores(60).inicis;
        QCOMPARE(inicis.value(indexHora(inicis, "08:00")), QString("08:00"));
        QCOMPARE(inicis.value(indexHora(inicis, "08:30")), QString("08:00"));
        QCOMPARE(inicis.value(indexHora(inicis, "23:59")), QString("23:00"));
        const QStringList finals = llistesHores(45).finals;
        QCOMPARE(finals.value(indexHora(finals, "24:00")), QString("24:00"));
        QCOMPARE(finals.value(indexHora(finals, "13:00")), QString("12:45"));
        // Before the first entry: the first one rather than nothing.
        QCOMPARE(indexHora(finals, "00:10"), 0);
        QCOMPARE(indexHora(QStringList(), "08:00"), -1);
    }

    void fieldChecks_data()
    {
        QTest::addColumn<Camp>("camp");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("missatge");
        QTest::addColumn<QString>("accepta");

        QTest::newRow("cell: letters") << Camp::MinutsCella << "deu" << "Cal introduir un valor no inferior a 10 minuts" << "";
        QTest::newRow("cell: 9") << Camp::MinutsCella << "9" << "El valor no pot ser inferior a 10 minuts" << "";
        QTest::newRow("cell: 10") << Camp::MinutsCella << "10" << "" << "10";
        QTest::newRow("cell: 45,4 rounds") << Camp::MinutsCella << " 45,4 " << "" << "45";
        QTest::newRow("cell: a day and more") << Camp::MinutsCella << "1500" << "El valor no pot ser superior a 1440 minuts" << "";

        QTest::newRow("hours: letters") << Camp::HoresDia << "vuit" << "Cal introduir un valor no negatiu" << "";
        QTest::newRow("hours: negative") << Camp::HoresDia << "-1" << "No es pot introduir un valor negatiu" << "";
        QTest::newRow("hours: 7,5") << Camp::HoresDia << "7,5" << "" << "7,50";
        QTest::newRow("hours: 0") << Camp::HoresDia << "0" << "" << "0,00";
        QTest::newRow("hours: three decimals") << Camp::HoresDia << "8,257" << "" << "8,26";

        QTest::newRow("voucher value: negative") << Camp::ValorXec << "-2" << "Cal introduir un valor no negatiu" << "";
        QTest::newRow("voucher value: 12") << Camp::ValorXec << "12" << "" << "12,00";

        QTest::newRow("hour cost: 0") << Camp::CostHoraXec << "0" << "" << "0,00";
        QTest::newRow("hour cost: -0") << Camp::CostHoraXec << "-0" << "" << "0,00";
        QTest::newRow("hour cost: -1,5") << Camp::CostHoraXec << "-1,5" << "" << "-1,50";
        QTest::newRow("hour cost: 2") << Camp::CostHoraXec << "2" << "Cal introduir un valor no positiu" << "";

        QTest::newRow("max vouchers: letters") << Camp::MaxXecsMes << "dos" << "Cal introduir un valor enter no negatiu" << "";
        QTest::newRow("max vouchers: negative") << Camp::MaxXecsMes << "-1" << "No es pot introduir un valor negatiu" << "";
        QTest::newRow("max vouchers: 3,6") << Camp::MaxXecsMes << "3,6" << "" << "4";

        QTest::newRow("last day: not a date") << Camp::UltimDiaGen << "31/02/2009" << "Data incorrecta" << "";
        QTest::newRow("last day: ISO") << Camp::UltimDiaGen << "2009-03-01" << "" << "01/03/2009";
    }

    void fieldChecks()
    {
        QFETCH(Camp, camp);
        QFETCH(QString, text);
        QFETCH(QString, missatge);
        QFETCH(QString, accepta);
        int acceptats = 30;
        const Comprovacio c = comprova(camp, text, &acceptats);
        QCOMPARE(c.missatge, missatge);
        if (missatge.isEmpty())
            QCOMPARE(c.text, accepta);
    }

    void theAcceptedCellLengthMovesOnlyOnANewValidValue()
    {
        int acceptats = 30;
        QVERIFY(!comprova(Camp::MinutsCella, "30", &acceptats).canviaLlistesHores);
        QVERIFY(comprova(Camp::MinutsCella, "45", &acceptats).canviaLlistesHores);
        QCOMPARE(acceptats, 45);
        QVERIFY(!comprova(Camp::MinutsCella, "5", &acceptats).missatge.isEmpty());
        QCOMPARE(acceptats, 45);
        // A length below 10 that was already in the settings may stay as it is.
        int antic = 5;
        const Comprovacio igual = comprova(Camp::MinutsCella, "5", &antic);
        QVERIFY(igual.missatge.isEmpty());
        QVERIFY(!igual.canviaLlistesHores);
    }

    void jobsOffTheNewGridAreFound()
    {
        BaseProva b;
        dades_prova::lloc(b.db, "Lloc", 30);
        const int nou = dades_prova::feina(b.db, "Lloc", QDate(2009, 1, 5), "10:00", "10:30");
        const int primer = dades_prova::feina(b.db, "Lloc", QDate(2009, 1, 1), "09:30", "10:00");
        // Table order, not date order: the first incoherent row is named.
        QCOMPARE(feinaIncoherent(b.db, "00:00", 60), primer);
        QCOMPARE(feinaIncoherent(b.db, "00:30", 60), nou);
        QCOMPARE(feinaIncoherent(b.db, "00:00", 30), 0);

        // A job before the day's start counts backwards on the same grid.
        BaseProva abans;
        dades_prova::lloc(abans.db, "Lloc", 30);
        const int dhora = dades_prova::feina(abans.db, "Lloc", QDate(2009, 1, 2), "07:45", "08:15");
        QCOMPARE(feinaIncoherent(abans.db, "08:15", 30), 0);
        QCOMPARE(feinaIncoherent(abans.db, "08:15", 45), dhora);
    }

    void voucherServicesAndPurgeDate()
    {
        BaseProva b;
        dades_prova::servei(b.db, "neteja", 60, false);
        dades_prova::servei(b.db, "Desplaçaments", 3, true);
        QCOMPARE(serveisXecs(b.db), QStringList({"", "Desplaçaments", "neteja"}));
        QCOMPARE(dataPurgaInicial(QDate(2009, 3, 12)), QDate(2008, 12, 31));
        QCOMPARE(dataPurgaInicial(QDate(2009, 1, 1)), QDate(2008, 12, 31));
    }

    void incoherentJobsBlockTheConfirmation()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        dades_prova::lloc(s->db(), "Lloc", 30);
        const int id = dades_prova::feina(s->db(), "Lloc", QDate(2009, 1, 1), "09:30", "10:00");
        Valors v = valorsInicials(*s);
        v.MinutsCella = "60";
        InteraccioGuio ui;
        ui.respostes = {true};
        int escrits = 0;
        const Resultat r = confirma(*s, v, ui, [&](const QString &, const QString &, const QString &) {
            ++escrits;
            return true;
        });
        QCOMPARE(r, Resultat::Incoherent);
        QCOMPARE(escrits, 0);
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides[0].titol, QString("ERROR"));
        QCOMPARE(ui.crides[0].text,
                 QString("Hi ha feines (p.ex. id=%1: Lloc 01/01/2009 09:30) amb hora d'inici incoherent amb els paràmetres 'Hora inici:' i 'Tram mínim:'.").arg(id));
        QVERIFY(!s->ReiniciarAplicacio);
    }

    void answeringNoWritesNothing()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        QFile f(dir.fitxerIni());
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray abans = f.readAll();
        f.close();
        InteraccioGuio ui;
        ui.respostes = {false};
        Valors v = valorsInicials(*s);
        v.HoraInici = "08:00";
        QCOMPARE(confirma(*s, v, ui), Resultat::NoConfirmat);
        QCOMPARE(ui.crides.size(), 1);
        QCOMPARE(ui.crides[0].titol, QString("AVÍS"));
        QCOMPARE(ui.crides[0].text, QString("Vas a modificar la configuració.\nEs reiniciarà l'aplicació. Continuar?"));
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), abans);
        QVERIFY(!s->ReiniciarAplicacio);
    }

    void confirmedSettingsAreWrittenInOrderAndReadBack()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        Valors v = valorsInicials(*s);
        v.MinutsCella = "45";
        v.HoraInici = "07:30";
        v.HoraFinal = "21:00";
        v.HoresDia = "7,50";
        v.DissabtesExtra = false;
        v.CalculxHores = false;
        v.ServeiXecs = "Neteja";
        v.ValorXec = "12,00";
        v.CostHoraXec = "-1,50";
        v.MaxXecsMes = "4";
        v.PermetSolaparLlocs = false;
        v.Idioma = "(ES) Castellano";
        v.UltimDiaGen = "15/03/2009";

        InteraccioGuio ui;
        ui.respostes = {true};
        QStringList ordre;
        const QString ini = dir.fitxerIni();
        const Resultat r = confirma(*s, v, ui, [&](const QString &sec, const QString &clau, const QString &valor) {
            ordre << sec + "/" + clau;
            return EscriureIni(ini, sec, clau, valor);
        });
        QCOMPARE(r, Resultat::Gravat);
        QCOMPARE(ordre, QStringList({"General/BaseDades", "Parametres/MinutsCella", "Parametres/HoraInici",
                                     "Parametres/HoraFinal", "Parametres/HoresDia", "Parametres/DissabtesExtra",
                                     "Parametres/DiumengesExtra", "Parametres/CalculxHores", "Parametres/HoraIniciDinar",
                                     "Parametres/HoraFinalDinar", "Parametres/ServeiXecs", "Parametres/ValorXec",
                                     "Parametres/CostHoraXec", "Parametres/MaxXecsMes", "Parametres/PermetSolaparLlocs",
                                     "Parametres/Idioma", "Estat/UltimDiaGen"}));
        QVERIFY(s->ReiniciarAplicacio);
        QCOMPARE(s->cfg().UltimDiaGen, QDate(2009, 3, 15));
        // The running session keeps the old values until the restart.
        QCOMPARE(s->cfg().MinutsCella, 30);

        const Configuracio c = Configuracio::carrega(dir.path());
        QCOMPARE(c.MinutsCella, 45);
        QCOMPARE(c.HoraInici, QString("07:30"));
        QCOMPARE(c.HoraFinal, QString("21:00"));
        QCOMPARE(c.HoresDia, 7.5);
        QCOMPARE(c.DissabtesExtra, false);
        QCOMPARE(c.DiumengesExtra, true);
        QCOMPARE(c.CalculxHores, false);
        QCOMPARE(c.ServeiXecs, QString("Neteja"));
        QCOMPARE(c.ValorXec, 12.0);
        QCOMPARE(c.CostHoraXec, -1.5);
        QCOMPARE(c.MaxXecsMes, 4);
        QCOMPARE(c.PermetSolaparLlocs, false);
        QCOMPARE(c.Idioma, QString("ES"));
        QCOMPARE(c.UltimDiaGen, QDate(2009, 3, 15));
        QCOMPARE(c.CellesDia, (21 * 60 - 7 * 60 - 30) / 45);
    }

    void noVoucherServiceWritesItEmpty()
    {
        DirectoriProva dir;
        dir.posaParametre("ServeiXecs", "Neteja");
        dir.posaParametre("ValorXec", "10,00");
        auto s = dir.obreSessio();
        Valors v = valorsInicials(*s);
        QCOMPARE(v.ServeiXecs, QString("Neteja"));
        v.ServeiXecs.clear();
        v.ValorXec.clear();
        v.CostHoraXec.clear();
        v.MaxXecsMes.clear();
        InteraccioGuio ui;
        ui.respostes = {true};
        QCOMPARE(confirma(*s, v, ui), Resultat::Gravat);
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Parametres", "ServeiXecs", "<cap>"), QString("<cap>"));
        QVERIFY(Configuracio::carrega(dir.path()).ServeiXecs.isEmpty());
    }

    void everyFailedWriteIsReportedAndTheRestStillRuns()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        InteraccioGuio ui;
        ui.respostes = {true};
        int intents = 0;
        const Resultat r = confirma(*s, valorsInicials(*s), ui, [&](const QString &, const QString &clau, const QString &) {
            ++intents;
            return clau != "HoraInici" && clau != "Idioma" && clau != "UltimDiaGen";
        });
        QCOMPARE(r, Resultat::Gravat);
        QCOMPARE(intents, 17);
        int errors = 0;
        for (const auto &c : ui.crides) {
            if (c.tipus == "error") {
                ++errors;
                QCOMPARE(c.titol, QString("ERROR"));
                QCOMPARE(c.text, QString("Error al gravar .ini"));
            }
        }
        QCOMPARE(errors, 3);
        QVERIFY(s->ReiniciarAplicacio);
    }

};

QTEST_GUILESS_MAIN(TestEdicioConfiguracio)
#include "tst_edicio_configuracio.moc"
