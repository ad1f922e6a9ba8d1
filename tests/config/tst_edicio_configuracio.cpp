// The configuration rules without the dialog: time lists, field checks, the refusals of a
// confirmation (jobs off the new grid, a day or lunch that does not fit, a missing database file)
// and the confirmed writes.
#include "config/edicio_configuracio.h"
#include "core/ini.h"
#include "core/versions_esquema.h"
#include "support/entorn_proves.h"

#include <QTest>

using namespace edicio_configuracio;

Q_DECLARE_METATYPE(edicio_configuracio::Camp)

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

// Applies "Camp=valor" edits to the dialog's values.
void aplica(Valors &v, const QStringList &canvis)
{
    const QMap<QString, QString Valors::*> camps{{"MinutsCella", &Valors::MinutsCella}, {"HoraInici", &Valors::HoraInici},
                                                 {"HoraFinal", &Valors::HoraFinal}, {"HoraIniciDinar", &Valors::HoraIniciDinar},
                                                 {"HoraFinalDinar", &Valors::HoraFinalDinar}};
    for (const QString &c : canvis)
        v.*camps.value(c.section('=', 0, 0)) = c.section('=', 1);
}

} // namespace

class TestEdicioConfiguracio : public QObject {
    Q_OBJECT

private slots:
    // 1440 is not a multiple of 50: the day ends on the last whole cell. A setting off the grid
    // selects the time before (the first one before the first).
    void timeListsFollowTheCellLength()
    {
        const LlistesHores de45 = llistesHores(45);
        QCOMPARE(QStringList({de45.inicis.first(), de45.inicis.last(), de45.finals.first(), de45.finals.last()}),
                 QStringList({"00:00", "23:15", "00:45", "24:00"}));
        QVERIFY(de45.inicis.size() == 32 && llistesHores(0).inicis.isEmpty());
        QCOMPARE(QStringList({llistesHores(50).inicis.last(), llistesHores(50).finals.last()}), QStringList({"22:30", "23:20"}));
        QCOMPARE(de45.finals.value(indexHora(de45.finals, "13:00")), QString("12:45"));
        QCOMPARE(indexHora(de45.finals, "00:10"), 0);
    }

    void fieldChecks_data()
    {
        QTest::addColumn<Camp>("camp");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("missatge");
        QTest::addColumn<QString>("accepta");
        QTest::newRow("cell: 9") << Camp::MinutsCella << "9" << "El valor no pot ser inferior a 10 minuts" << "";
        QTest::newRow("cell: 10") << Camp::MinutsCella << "10" << "" << "10";
        QTest::newRow("cell: 45,4 rounds") << Camp::MinutsCella << " 45,4 " << "" << "45";
        QTest::newRow("cell: a day and more") << Camp::MinutsCella << "1500" << "El valor no pot ser superior a 1440 minuts" << "";
        QTest::newRow("hours: negative") << Camp::HoresDia << "-1" << "No es pot introduir un valor negatiu" << "";
        QTest::newRow("hours: 0") << Camp::HoresDia << "0" << "" << "0,00";
        QTest::newRow("hour cost: -0") << Camp::CostHoraXec << "-0" << "" << "0,00";
        QTest::newRow("hour cost: 2") << Camp::CostHoraXec << "2" << "Cal introduir un valor no positiu" << "";
        QTest::newRow("last day: not a date") << Camp::UltimDiaGen << "31/02/2009" << "Data incorrecta" << "";
    }
    void fieldChecks()
    {
        QFETCH(Camp, camp);
        QFETCH(QString, text);
        QFETCH(QString, missatge);
        int acceptats = 30;
        const Comprovacio c = comprova(camp, text, &acceptats);
        QCOMPARE(c.missatge, missatge);
        if (missatge.isEmpty())
            QTEST(c.text, "accepta");
    }

    // The accepted cell length moves only on a new valid value; one below 10 that was already in
    // the settings may stay.
    void theAcceptedCellLength()
    {
        int acceptats = 30;
        QVERIFY(comprova(Camp::MinutsCella, "45", &acceptats).canviaLlistesHores);
        QVERIFY(!comprova(Camp::MinutsCella, "5", &acceptats).missatge.isEmpty() && acceptats == 45);
        int antic = 5;
        const Comprovacio igual = comprova(Camp::MinutsCella, "5", &antic);
        QVERIFY(igual.missatge.isEmpty() && !igual.canviaLlistesHores);
    }

    // Table order, not date order: the first incoherent row is named; a job before the day's
    // start counts backwards on the same grid.
    void jobsOffTheNewGridAreFound()
    {
        BaseProva b;
        dades_prova::lloc(b.db, "Lloc", 30);
        const int nou = dades_prova::feina(b.db, "Lloc", QDate(2009, 1, 5), "10:00", "10:30");
        const int primer = dades_prova::feina(b.db, "Lloc", QDate(2009, 1, 1), "09:30", "10:00");
        QCOMPARE(feinaIncoherent(b.db, "00:00", 60), primer);
        QCOMPARE(feinaIncoherent(b.db, "00:30", 60), nou);
        b.db.exec("DELETE FROM Feines");
        const int dhora = dades_prova::feina(b.db, "Lloc", QDate(2009, 1, 2), "07:45", "08:15");
        QCOMPARE(feinaIncoherent(b.db, "08:15", 45), dhora);
        dades_prova::servei(b.db, "neteja", 60, false);
        QCOMPARE(serveisXecs(b.db), QStringList({"", "neteja"}));
        QCOMPARE(dataPurgaInicial(QDate(2009, 1, 1)), QDate(2008, 12, 31));
    }

    // A refused or unanswered confirmation writes nothing and asks for no restart.
    void confirmation_data()
    {
        QTest::addColumn<QStringList>("canvis");
        QTest::addColumn<bool>("resposta");
        QTest::addColumn<int>("resultat");
        QTest::addColumn<QString>("missatge"); // the first message, title: text
        QTest::newRow("job off the grid") << QStringList{"MinutsCella=60"} << true << int(Resultat::Incoherent)
            << "ERROR: Hi ha feines (p.ex. id=1: Lloc 01/01/2009 09:30) amb hora d'inici incoherent amb els paràmetres 'Hora inici:' i 'Tram mínim:'.";
        QTest::newRow("answered No") << QStringList{"HoraInici=08:00"} << false << int(Resultat::NoConfirmat)
                                     << "AVÍS: Vas a modificar la configuració.\nEs reiniciarà l'aplicació. Continuar?";
        QTest::newRow("ordinary") << QStringList{"HoraInici=08:00", "HoraIniciDinar=13:30", "HoraFinalDinar=13:30"} << true
                                  << int(Resultat::Gravat) << "AVÍS: Vas a modificar la configuració.\nEs reiniciarà l'aplicació. Continuar?";
        QTest::newRow("end at the start") << QStringList{"HoraInici=09:00", "HoraFinal=09:00"} << true << int(Resultat::DiaIncorrecte) << "";
        QTest::newRow("lunch inverted") << QStringList{"HoraIniciDinar=15:00", "HoraFinalDinar=13:30"} << true << int(Resultat::DinarIncorrecte) << "";
    }
    void confirmation()
    {
        QFETCH(QStringList, canvis);
        QFETCH(bool, resposta);
        QFETCH(int, resultat);
        QFETCH(QString, missatge);
        DirectoriProva dir;
        auto s = dir.obreSessio();
        dades_prova::lloc(s->db(), "Lloc", 30);
        dades_prova::feina(s->db(), "Lloc", QDate(2009, 1, 1), "09:30", "10:00");
        Valors v = valorsInicials(*s);
        aplica(v, canvis);
        InteraccioGuio ui;
        ui.respostes = {resposta};
        int escrits = 0;
        QCOMPARE(int(confirma(*s, v, ui, [&](auto &, auto &, auto &) { return ++escrits; })), resultat);
        QCOMPARE(escrits > 0 || s->ReiniciarAplicacio, resultat == int(Resultat::Gravat));
        if (!missatge.isEmpty())
            QCOMPARE(ui.crides.value(0).titol + ": " + ui.crides.value(0).text, missatge);
    }

    // Every key is written, in order, even after one fails (reported); the running session keeps
    // its values until the restart; no voucher service writes the key empty.
    void confirmedSettingsAreWrittenInOrderAndReadBack()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        Valors v = valorsInicials(*s);
        aplica(v, {"MinutsCella=45", "HoraInici=07:30"});
        v.HoresDia = "7,50";
        v.ServeiXecs = "Neteja";
        v.UltimDiaGen = "15/03/2009";
        InteraccioGuio ui;
        ui.respostes = {true};
        QStringList ordre;
        QCOMPARE(confirma(*s, v, ui, [&](const QString &sec, const QString &clau, const QString &valor) {
                     ordre << clau;
                     return clau != "HoraIniciDinar" && EscriureIni(dir.fitxerIni(), sec, clau, valor);
                 }), Resultat::Gravat);
        QVERIFY(ordre.size() == 17 && ordre.last() == "UltimDiaGen");
        QCOMPARE(ui.crides.size(), 2);
        QCOMPARE(ui.crides[1].titol + ": " + ui.crides[1].text, QString("ERROR: Error al gravar .ini"));
        QCOMPARE(s->cfg().UltimDiaGen, QDate(2009, 3, 15));
        QCOMPARE(s->cfg().MinutsCella, 30);
        const Configuracio c = Configuracio::carrega(dir.path());
        QVERIFY(c.HoraInici == "07:30" && c.ServeiXecs == "Neteja" && c.HoresDia == 7.5);
        v = valorsInicials(*s);
        v.ServeiXecs.clear();
        ui.respostes = {true};
        QCOMPARE(confirma(*s, v, ui), Resultat::Gravat);
        QCOMPARE(LlegirIni(dir.fitxerIni(), "Parametres", "ServeiXecs", "<cap>"), QString("<cap>"));
    }

    // A missing database file only after a Yes to a new empty database there, created once the
    // whole change is confirmed.
    void aMissingDatabaseFileNeedsAYes_data()
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
    void aMissingDatabaseFileNeedsAYes()
    {
        QFETCH(QString, fitxer);
        QFETCH(QList<bool>, respostes);
        QFETCH(int, resultat);
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
        QTEST(tipus, "crides");
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

QTEST_GUILESS_MAIN(TestEdicioConfiguracio)
#include "tst_edicio_configuracio.moc"
