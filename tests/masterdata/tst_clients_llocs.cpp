// Clients, their places and the places' service lines, driven through the engine as the page
// drives it: every check in its order (the first failure ends the action and writes nothing),
// the vouchers-or-fees rule from both sides, renames that carry over and deletes that are
// refused, and the question that keeps a place's minutes in step with its services.
#include "masterdata/clients.h"
#include "masterdata/llocs.h"
#include "mestres_proves.h"

#include <QtTest>

using namespace dades_prova;

namespace {

const QString kClient = QStringLiteral("Comunitat Exemple");
const QString kMinutsServeis = QStringLiteral("Els minuts previstos difereixen de la duració dels serveis (%1 minuts). Actualitzar minuts?");

// A place form for kClient that passes every check.
FitxaLloc llocNou(const QString &nom, const QString &minuts = QStringLiteral("60"))
{
    FitxaLloc f;
    f.nom = nom;
    f.client = kClient;
    f.minutsPrevist = minuts;
    f.periodicitat = QStringLiteral("7");
    return f;
}

// Two workers who take time, a group of both, a per-worker service and a shared one, the client
// and (when named) its place Oficina with the group as default resource.
void omple(EntornMestres &e, int minutsOficina = 0)
{
    recurs(e.db(), "Marta", 65535, true);
    recurs(e.db(), "Oriol", 16711680, true);
    grup(e.db(), "Marta i Oriol", 65280, {"Marta", "Oriol"});
    servei(e.db(), "Neteja", 60, false, 6.25, "Hores", "Servei de neteja");
    servei(e.db(), "Desplaçaments", 3, true, 0.19, "Kms");
    servei(e.db(), "Vidres", 30, false, 9.5, "Hores");
    client(e.db(), kClient);
    if (minutsOficina)
        lloc(e.db(), "Oficina", minutsOficina, "Marta i Oriol", kClient);
}

} // namespace

class TestClientsLlocs : public QObject {
    Q_OBJECT

private slots:
    void clients()
    {
        EntornMestres e;
        omple(e);
        GestioClients g(*e.sessio, e.io);
        g.setAvui(QDate(2009, 3, 5));
        FitxaClient f;
        f.nom = "  L'Estel  ";
        f.xecs = true;
        f.dataAlta = "01/01/1999"; // ignored: a new client registers today
        ESPERA(e, g.AfegirClient(f), Resultat::Fet, "");
        QCOMPARE(f.nom + '|' + f.nomAnt + '|' + f.dataAlta, QString("L'Estel|L'Estel|05/03/2009"));
        // A new client has no places, so it may start paying by vouchers.
        QCOMPARE(e.text("SELECT clients_data_alta || '/' || clients_xecs FROM Clients WHERE clients_nom = ?", {f.nom}),
                 QString("2009-03-05/1"));
        QVERIFY(e.sessio->RefrescarFacturacio);

        const QString abans = e.instantania();
        FitxaClient altre;
        altre.nom = "L'ESTEL"; // the same name in another case is the same client
        ESPERA(e, g.AfegirClient(altre), Resultat::Refusat, "El client ja existeix");
        altre.nom = "   "; // blanks alone are no name: nothing said
        ESPERA(e, g.AfegirClient(altre), Resultat::Res, "");
        QVERIFY(g.carrega(kClient, f)); // a rename onto another client's name
        f.nom = "L'ESTEL";
        ESPERA(e, g.ModificarClient(f), Resultat::Refusat, "El client ja existeix");
        f.nom = kClient;
        f.dataAlta = "31/02/2009";
        QCOMPARE(g.ModificarClient(f), Resultat::Error);
        QVERIFY(e.missatges().first().startsWith("Error:"));
        QCOMPARE(e.instantania(), abans);
        // A client removed meanwhile is reported before anything else is looked at.
        e.db().exec("DELETE FROM Clients");
        f.xecs = true;
        ESPERA(e, g.ModificarClient(f), Resultat::Refusat, "El client no existeix");
    }

    void xecsIQuotesDesDelClient()
    {
        EntornMestres e;
        omple(e, 60);
        lloc(e.db(), "Escala", 30, QString(), kClient);
        client(e.db(), "Altre"); // another client's fee must not count against this one
        lloc(e.db(), "Casa", 30, QString(), "Altre");
        e.db().exec("UPDATE Llocs SET llocs_quota = 20 WHERE llocs_nom IN ('Escala', 'Casa')");
        GestioClients g(*e.sessio, e.io);
        FitxaClient f;
        QVERIFY(g.carrega(kClient, f));
        f.xecs = true;
        const QString abans = e.instantania();
        ESPERA(e, g.ModificarClient(f), Resultat::Refusat, "El client té llocs amb quota. No pot tenir xecs");
        QCOMPARE(e.instantania(), abans);
        e.db().exec("UPDATE Llocs SET llocs_quota = 0 WHERE llocs_nom = 'Escala'");
        ESPERA(e, g.ModificarClient(f), Resultat::Fet, "");
        QVERIFY(g.teXecs(kClient));
        // The other side: a voucher client's place refuses a fee, whether the box is ticked on
        // the page or only stored; a fee that rounds to 0 is no fee.
        GestioLlocs llocs(*e.sessio, e.io);
        FitxaLloc l;
        QVERIFY(llocs.carrega("Oficina", l));
        l.quota = "15";
        for (bool marcat : {true, false}) {
            l.clientXecs = marcat;
            ESPERA(e, llocs.ModificarLloc(l), Resultat::Refusat, "El client té xecs. No pot tenir quotes");
        }
        l.quota = "0,004";
        QCOMPARE(llocs.ModificarLloc(l), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Llocs WHERE clients_nom = ? AND llocs_quota <> 0", {kClient}), 0);
    }

    // Adding and saving a place: each check in its order, with the form as it shows afterwards.
    // Unlike adding, saving checks the minutes before the period and has no default period.
    void llocRefusat()
    {
        EntornMestres e;
        omple(e);
        lloc(e.db(), "Oficina vella", 60, QString(), kClient);
        lloc(e.db(), "Escala", 30, QString(), kClient);
        GestioLlocs g(*e.sessio, e.io);
        const QString periodicitat = "Cal informar la periodicitat en dies. (0 si no planificable)";
        const QString minuts = "Cal informar els minuts previstos", exces = "Excés de minuts previstos";
        const QString abans = e.instantania();
        const struct {
            bool modifica;
            const char *nom, *periodicitat, *minuts, *quota;
            bool xecs;
            QString missatge;
            const char *despres; // period/minutes on the form afterwards
        } casos[] = {
            {false, "...", "abc", "45", "x", true, "El nom del lloc no pot ser '...'", "abc/45"}, // the several-jobs text first
            {false, "Oficina", "abc", "45", "", false, periodicitat, "abc/45"},                 // period before minutes
            {false, "Oficina", "-1,4", "60", "", false, periodicitat, "-1/60"},                 // negative, rewritten
            {false, "Oficina", "", "0", "", false, minuts, "0/0"},
            {false, "Oficina", "7", "1470", "", false, exces, "7/1470"},
            {false, "Oficina", "7", "45,2", "x", false, "Els minuts previstos han de ser múltiples de 30", "7/45"}, // before the fee
            {false, "Oficina", "7", "60", "1,2,3", false, "La quota ha de ser numèrica", "7/60"},
            {false, "Oficina", "7", "60", "20", true, "El client té xecs. No pot tenir quotes", "7/60"},
            {false, "OFICINA VELLA", "7", "60", "", false, "El lloc ja existeix", "7/60"},
            {true, "Oficina vella", "abc", "lletres", "", false, minuts, "abc/lletres"},
            {true, "Oficina vella", "abc", "1470", "", false, periodicitat, "abc/1470"},
            {true, "Oficina vella", "", "1470", "", false, exces, "0/1470"},
        };
        for (const auto &c : casos) {
            FitxaLloc f = llocNou(c.nom, c.minuts);
            if (c.modifica) {
                QVERIFY(g.carrega("Oficina vella", f));
                f.nom = c.nom;
                f.minutsPrevist = c.minuts;
            }
            f.periodicitat = c.periodicitat;
            f.quota = c.quota;
            f.clientXecs = c.xecs;
            ESPERA(e, c.modifica ? g.ModificarLloc(f) : g.AfegirLloc(f), Resultat::Refusat, c.missatge);
            QVERIFY2(f.periodicitat + '/' + f.minutsPrevist == c.despres, c.despres);
        }
        QCOMPARE(e.instantania(), abans);
        QVERIFY(!e.sessio->RefrescarAgenda);
        // Removed meanwhile: refused when the write begins.
        FitxaLloc f;
        QVERIFY(g.carrega("Escala", f));
        e.db().exec("DELETE FROM Llocs");
        ESPERA(e, g.ModificarLloc(f), Resultat::Refusat, "El lloc no existeix");
    }

    void afegirLlocDesaElsCamps()
    {
        EntornMestres e;
        omple(e);
        GestioLlocs g(*e.sessio, e.io);
        FitxaLloc f = llocNou("  L'Escala Àmplia ", "lletres");
        f.adreca = "C/ Major, 1";
        f.ultimMes = true;
        f.diaSetmana = 6;
        f.dissabte = true;
        f.hora = "08:30";
        f.recurs = "Marta i Oriol";
        f.quota = "12,345";
        f.observacions = "Clau a consergeria";
        ESPERA(e, g.AfegirLloc(f), Resultat::Fet, "");
        QVERIFY(e.sessio->RefrescarAgenda);
        // Letters in the minutes mean one cell; a monthly place is stored with period 99.
        FitxaLloc l;
        QVERIFY(g.carrega("l'escala àmplia", l));
        QCOMPARE(QStringList({l.nom, l.client, l.adreca, l.minutsPrevist, l.periodicitat, l.hora, l.recurs, l.observacions,
                              f.minutsPrevist}).join('|'),
                 QString("L'Escala Àmplia|Comunitat Exemple|C/ Major, 1|30|99|08:30|Marta i Oriol|Clau a consergeria|30"));
        QVERIFY(l.ultimMes && !l.primerMes && l.dissabte && !l.diumenge && l.diaSetmana == 6);
        // 12,345 is a half cent: it goes to the even cent.
        QCOMPARE(e.text("SELECT llocs_quota FROM Llocs"), QString("12.34"));

        // Nothing chosen in the lists is stored as no value; a half day of period rounds to even.
        FitxaLloc buit = llocNou("Pati", "1440");
        buit.periodicitat = "2,5";
        QCOMPARE(g.AfegirLloc(buit), Resultat::Fet);
        QCOMPARE(buit.periodicitat + '/' + buit.quota, QString("2/0"));
        QCOMPARE(e.text("SELECT COALESCE(llocs_hora, recursos_nom, 'buit') FROM Llocs WHERE llocs_nom = 'Pati'"), QString("buit"));
        QCOMPARE(e.compte("SELECT llocs_dia_setmana + llocs_minuts_previst FROM Llocs WHERE llocs_nom = 'Pati'"), 1440);
        QCOMPARE(g.llocsClient(kClient), (QStringList{"L'Escala Àmplia", "Pati"}));

        // The day's length follows the configured day: 08:00 to 20:00 in 45-minute cells.
        e.cfg().HoraInici = "08:00";
        e.cfg().HoraFinal = "20:00";
        e.cfg().MinutsCella = 45;
        e.cfg().CellesDia = Configuracio::cellesDia(e.cfg().HoraInici, e.cfg().HoraFinal, 45);
        FitxaLloc llarg = llocNou("Nau", "765");
        ESPERA(e, g.AfegirLloc(llarg), Resultat::Refusat, "Excés de minuts previstos");
        llarg.minutsPrevist = "720";
        QCOMPARE(g.AfegirLloc(llarg), Resultat::Fet);
        QCOMPARE(QString::number(g.horesDia().size()) + g.horesDia().last(), QString("1619:15"));
    }

    void preguntaDeMinuts()
    {
        EntornMestres e;
        omple(e, 60);
        // 2 hours of per-worker cleaning shared by two workers: 60 minutes; plus 10 km of
        // travel the whole group spends: 30; 90 in all.
        llocServei(e.db(), "Oficina", "Neteja", 2, 6.25);
        llocServei(e.db(), "Oficina", "Desplaçaments", 10, 0.19);
        lloc(e.db(), "Buit", 60, QString(), kClient);
        GestioLlocs g(*e.sessio, e.io);
        FitxaLloc f, b;
        QVERIFY(g.carrega("Oficina", f) && g.carrega("Buit", b));
        e.io.respostes = {false};
        QCOMPARE(g.ModificarLloc(f), Resultat::Fet);
        QCOMPARE(e.io.crides.value(0).titol, QString("AVÍS"));
        QCOMPARE(e.missatges("pregunta"), QStringList{kMinutsServeis.arg(90)});
        QCOMPARE(e.compte("SELECT llocs_minuts_previst FROM Llocs"), 60); // No keeps what was typed
        e.io.respostes = {true};
        QCOMPARE(g.ModificarLloc(f), Resultat::Fet);
        QCOMPARE(f.minutsPrevist, QString("90"));
        e.missatges();
        // The resource chosen on the form decides the sharing: one worker does it all (150).
        f.recurs = "Marta";
        e.io.respostes = {true};
        ESPERA(e, g.ModificarLloc(f), Resultat::Fet, kMinutsServeis.arg(150));
        QCOMPARE(e.compte("SELECT llocs_minuts_previst FROM Llocs WHERE llocs_nom = 'Oficina'"), 150);
        // A place without services proposes one cell.
        ESPERA(e, g.ModificarLloc(b), Resultat::Fet, kMinutsServeis.arg(30));
    }

    void liniesDeServei()
    {
        EntornMestres e;
        omple(e, 60);
        GestioLlocs g(*e.sessio, e.io);
        FitxaLloc l;
        QVERIFY(g.carrega("Oficina", l));
        const QString abans = e.instantania();
        for (const auto &[quantitat, preu, missatge] :
             {std::tuple{"dos", "0", "Cal informar la quantitat"}, {"0", "0", "Cal informar una quantitat positiva"},
              {"2", "0", "Cal informar un preu"}}) {
            FitxaServeiLloc s{"Neteja", QString(), quantitat, preu, QString()};
            ESPERA(e, g.AfegirServeiLloc(l, s), Resultat::Refusat, missatge);
        }
        QCOMPARE(e.instantania(), abans);

        // The service's own unit, price and wording are offered when it is chosen.
        FitxaServeiLloc s{"Neteja", {}, {}, {}, {}};
        g.ompleServei(s);
        QCOMPARE(s.unitat + '|' + s.preu + '|' + s.descripcio, QString("Hores|6,25|Servei de neteja"));
        // A negative price is a discount and is accepted; the group halves 2 hours to 60
        // minutes, in step with the place, so nothing is asked.
        s.quantitat = "2";
        s.preu = "-5";
        ESPERA(e, g.AfegirServeiLloc(l, s), Resultat::Fet, "");
        FitxaServeiLloc llegit;
        QVERIFY(g.carregaServeiLloc("oficina", "NETEJA", llegit));
        QCOMPARE(llegit.quantitat + '|' + llegit.preu + '|' + llegit.unitat, QString("2|-5,00|Hores"));

        // The same service again is refused, and the minutes are still compared: 1 hour of
        // windows more would make it 75, rounded up to 90.
        FitxaServeiLloc vidres{"Vidres", {}, "1", "9,5", {}};
        e.io.respostes = {false};
        ESPERA(e, g.AfegirServeiLloc(l, vidres), Resultat::Fet, kMinutsServeis.arg(90));
        FitxaServeiLloc repetit{"neteja", {}, "1", "1", {}};
        e.io.respostes = {false};
        ESPERA(e, g.AfegirServeiLloc(l, repetit), Resultat::Refusat, "El servei ja existeix pel lloc\n" + kMinutsServeis.arg(90));
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Llocs_Serveis"), 2);

        // Yes saves the whole place as it stands on the form, other edits included.
        l.telefon = "555";
        FitxaServeiLloc canvi{"Vidres", {}, "3", "9", "Vidres alts"};
        e.io.respostes = {true};
        QCOMPARE(g.ModificarServeiLloc(l, canvi), Resultat::Fet);
        QVERIFY(canvi.servei.isEmpty() && canvi.quantitat.isEmpty()); // the line's fields are emptied
        QCOMPARE(e.text("SELECT llocs_minuts_previst || '/' || llocs_telefon FROM Llocs"), QString("120/555")); // 60 + 45 -> 120
        QCOMPARE(e.text("SELECT llocs_serveis_descripcio FROM Llocs_Serveis WHERE serveis_nom = 'Vidres'"), QString("Vidres alts"));
        e.missatges();
        FitxaServeiLloc absent{"Desplaçaments", {}, "1", "1", {}};
        ESPERA(e, g.ModificarServeiLloc(l, absent), Resultat::Refusat, "El servei no existeix pel lloc");
        // Deleting a line asks nothing, even though the minutes no longer match.
        FitxaServeiLloc fora{"Vidres", {}, {}, {}, {}};
        ESPERA(e, g.EliminarServeiLloc(l, fora), Resultat::Fet, "");
        QCOMPARE(g.liniesLloc("Oficina").size(), 1);
    }

    // A failure half-way through a rename leaves every row as it was: the rename and what it
    // carries are one unit.
    void fallaAMeitatNoDeixaRes()
    {
        EntornMestres e;
        omple(e);
        lloc(e.db(), "Oficina", 60, QString(), kClient);
        llocServei(e.db(), "Oficina", "Neteja", 1, 6.25);
        xec(e.db(), 7, kClient, 0, QDate());
        e.db().exec("INSERT INTO Pagaments VALUES ('Comunitat Exemple', '03/2009', 50)");
        e.db().exec("CREATE TRIGGER ple BEFORE UPDATE ON Pagaments BEGIN SELECT RAISE(ABORT, 'disc ple'); END");
        e.db().exec("CREATE TRIGGER fix BEFORE DELETE ON Llocs BEGIN SELECT RAISE(ABORT, 'bloquejat'); END");
        GestioClients g(*e.sessio, e.io);
        FitxaClient f;
        QVERIFY(g.carrega(kClient, f));
        f.nom = "Nou nom";
        const QString abans = e.instantania();
        QCOMPARE(g.ModificarClient(f), Resultat::Error);
        QCOMPARE(e.io.crides.size(), 1);
        QVERIFY(e.io.crides[0].text.startsWith("Error:") && e.io.crides[0].text.contains("disc ple"));
        QCOMPARE(f.nomAnt, kClient); // the form still points at the stored row
        // Same for a place whose lines cannot be removed: the place stays, and its lines too.
        GestioLlocs llocs(*e.sessio, e.io);
        FitxaLloc l = llocNou("Oficina");
        QCOMPARE(llocs.EliminarLloc(l), Resultat::Error);
        QCOMPARE(e.instantania(), abans);
        QCOMPARE(e.db().transactionDepth(), 0);
        // Deleted, the place takes its lines with it.
        e.db().exec("DROP TRIGGER fix");
        QCOMPARE(llocs.EliminarLloc(l), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Llocs_Serveis"), 0);
    }
};

QTEST_GUILESS_MAIN(TestClientsLlocs)
#include "tst_clients_llocs.moc"
