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

} // namespace

class TestClientsLlocs : public QObject {
    Q_OBJECT

    // Two workers who take time, a group of both, a per-worker service and a shared one.
    static void omple(EntornMestres &e)
    {
        recurs(e.db(), QStringLiteral("Marta"), 65535, true);
        recurs(e.db(), QStringLiteral("Oriol"), 16711680, true);
        grup(e.db(), QStringLiteral("Marta i Oriol"), 65280, {QStringLiteral("Marta"), QStringLiteral("Oriol")});
        servei(e.db(), QStringLiteral("Neteja"), 60, false, 6.25, QStringLiteral("Hores"), QStringLiteral("Servei de neteja"));
        servei(e.db(), QStringLiteral("Desplaçaments"), 3, true, 0.19, QStringLiteral("Kms"));
        servei(e.db(), QStringLiteral("Vidres"), 30, false, 9.5, QStringLiteral("Hores"));
        client(e.db(), kClient);
    }

private slots:
    // ------------------------------------------------------------------ clients

    void afegirClient()
    {
        EntornMestres e;
        GestioClients g(*e.sessio, e.io);
        g.setAvui(QDate(2009, 3, 5));

        FitxaClient f;
        f.nom = QStringLiteral("  L'Estel  ");
        f.nif = QStringLiteral("B-123");
        f.xecs = true;
        f.dataAlta = QStringLiteral("01/01/1999"); // ignored: a new client registers today
        QCOMPARE(g.AfegirClient(f), Resultat::Fet);
        QCOMPARE(f.nom, QStringLiteral("L'Estel"));
        QCOMPARE(f.nomAnt, QStringLiteral("L'Estel"));
        QCOMPARE(f.dataAlta, QStringLiteral("05/03/2009"));
        QCOMPARE(e.text("SELECT clients_data_alta FROM Clients WHERE clients_nom = ?", {"L'Estel"}), QStringLiteral("2009-03-05"));
        // A new client has no places, so it may start paying by vouchers.
        QCOMPARE(e.compte("SELECT clients_xecs FROM Clients WHERE clients_nom = ?", {"L'Estel"}), 1);
        QVERIFY(e.missatges().isEmpty());
        QVERIFY(e.sessio->RefrescarFacturacio);

        // The same name in another case is the same client.
        const QString abans = e.instantania();
        FitxaClient altre;
        altre.nom = QStringLiteral("L'ESTEL");
        QCOMPARE(g.AfegirClient(altre), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El client ja existeix")});
        QCOMPARE(e.instantania(), abans);

        // Blanks alone are no name: nothing is said and nothing written.
        FitxaClient buit;
        buit.nom = QStringLiteral("   ");
        QCOMPARE(g.AfegirClient(buit), Resultat::Res);
        QVERIFY(e.missatges().isEmpty());
    }

    void xecsIQuotesDesDelClient()
    {
        EntornMestres e;
        omple(e);
        lloc(e.db(), QStringLiteral("Oficina"), 60, QString(), kClient);
        lloc(e.db(), QStringLiteral("Escala"), 30, QString(), kClient);
        e.db().exec(QStringLiteral("UPDATE Llocs SET llocs_quota = 20 WHERE llocs_nom = 'Escala'"));
        // Another client's fee must not count against this one.
        client(e.db(), QStringLiteral("Altre"));
        lloc(e.db(), QStringLiteral("Casa"), 30, QString(), QStringLiteral("Altre"));
        e.db().exec(QStringLiteral("UPDATE Llocs SET llocs_quota = 5 WHERE llocs_nom = 'Casa'"));
        GestioClients g(*e.sessio, e.io);

        FitxaClient f;
        QVERIFY(g.carrega(kClient, f));
        f.xecs = true;
        f.telefons = QStringLiteral("93 000 00 00");
        const QString abans = e.instantania();
        QCOMPARE(g.ModificarClient(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El client té llocs amb quota. No pot tenir xecs")});
        QCOMPARE(e.instantania(), abans);

        // With every fee back at 0 the switch is allowed.
        e.db().exec(QStringLiteral("UPDATE Llocs SET llocs_quota = 0 WHERE llocs_nom = 'Escala'"));
        QCOMPARE(g.ModificarClient(f), Resultat::Fet);
        QVERIFY(g.teXecs(kClient));
        QCOMPARE(e.text("SELECT clients_telefons FROM Clients WHERE clients_nom = ?", {kClient}), QStringLiteral("93 000 00 00"));

        // The other side: a voucher client's place refuses a fee, whether the box is ticked on
        // the page or only stored.
        GestioLlocs llocs(*e.sessio, e.io);
        FitxaLloc l;
        QVERIFY(llocs.carrega(QStringLiteral("Oficina"), l));
        l.quota = QStringLiteral("15");
        l.clientXecs = true;
        QCOMPARE(llocs.ModificarLloc(l), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El client té xecs. No pot tenir quotes")});
        l.clientXecs = false;
        QCOMPARE(llocs.ModificarLloc(l), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El client té xecs. No pot tenir quotes")});
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Llocs WHERE clients_nom = ? AND llocs_quota <> 0", {kClient}), 0);
        // A fee of 0 (or one that rounds to 0) is no fee.
        l.quota = QStringLiteral("0,004");
        QCOMPARE(llocs.ModificarLloc(l), Resultat::Fet);
    }

    void modificarClientComprovacions()
    {
        EntornMestres e;
        omple(e);
        GestioClients g(*e.sessio, e.io);
        FitxaClient f;
        QVERIFY(g.carrega(kClient, f));

        // A client removed meanwhile is reported before anything else is looked at.
        e.db().exec(QStringLiteral("DELETE FROM Clients"));
        f.xecs = true;
        QCOMPARE(g.ModificarClient(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El client no existeix")});

        client(e.db(), kClient);
        f.dataAlta = QStringLiteral("31/02/2009");
        const QString abans = e.instantania();
        QCOMPARE(g.ModificarClient(f), Resultat::Error);
        QCOMPARE(e.io.crides.size(), 1);
        QCOMPARE(e.io.crides[0].titol, QStringLiteral("ERROR"));
        QVERIFY(e.io.crides[0].text.startsWith(QStringLiteral("Error:")));
        QVERIFY(e.io.crides[0].text.contains(QStringLiteral("31/02/2009")));
        e.missatges();
        QCOMPARE(e.instantania(), abans);

        f.dataAlta = QStringLiteral("7/4/2008");
        QCOMPARE(g.ModificarClient(f), Resultat::Fet);
        QCOMPARE(e.text("SELECT clients_data_alta FROM Clients"), QStringLiteral("2008-04-07"));
        f.dataAlta.clear();
        QCOMPARE(g.ModificarClient(f), Resultat::Fet);
        QCOMPARE(e.text("SELECT clients_data_alta FROM Clients"), QStringLiteral("<null>"));

        // A rename onto another client's name is refused.
        client(e.db(), QStringLiteral("Altre"));
        f.nom = QStringLiteral("ALTRE");
        QCOMPARE(g.ModificarClient(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El client ja existeix")});
    }

    // ------------------------------------------------------------------ places

    void afegirLlocRefusat_data()
    {
        QTest::addColumn<QString>("nom");
        QTest::addColumn<QString>("periodicitat");
        QTest::addColumn<QString>("minuts");
        QTest::addColumn<QString>("quota");
        QTest::addColumn<bool>("xecs");
        QTest::addColumn<QString>("missatge");
        QTest::addColumn<QString>("periodicitatDespres");
        QTest::addColumn<QString>("minutsDespres");

        const QString varis = QStringLiteral("El nom del lloc no pot ser '...'");
        const QString periodicitat = QStringLiteral("Cal informar la periodicitat en dies. (0 si no planificable)");
        QTest::newRow("the several-jobs text comes first") << "..." << "abc" << "45" << "x" << true << varis << "abc" << "45";
        QTest::newRow("periodicity before minutes") << "Oficina" << "abc" << "45" << "" << false << periodicitat << "abc" << "45";
        QTest::newRow("negative periodicity, rewritten") << "Oficina" << "-1,4" << "60" << "" << false << periodicitat << "-1" << "60";
        QTest::newRow("no minutes") << "Oficina" << "" << "0" << "" << false << "Cal informar els minuts previstos" << "0" << "0";
        QTest::newRow("longer than the day") << "Oficina" << "7" << "1470" << "" << false << "Excés de minuts previstos" << "7" << "1470";
        QTest::newRow("not whole cells, before the quota") << "Oficina" << "7" << "45,2" << "x" << false
                                                         << "Els minuts previstos han de ser múltiples de 30" << "7" << "45";
        QTest::newRow("quota not a number") << "Oficina" << "7" << "60" << "1,2,3" << false << "La quota ha de ser numèrica" << "7" << "60";
        QTest::newRow("quota of a voucher client") << "Oficina" << "7" << "60" << "20" << true
                                                   << "El client té xecs. No pot tenir quotes" << "7" << "60";
        QTest::newRow("name taken, any case") << "OFICINA VELLA" << "7" << "60" << "" << false << "El lloc ja existeix" << "7" << "60";
    }

    void afegirLlocRefusat()
    {
        QFETCH(QString, nom);
        QFETCH(QString, periodicitat);
        QFETCH(QString, minuts);
        QFETCH(QString, quota);
        QFETCH(bool, xecs);
        QFETCH(QString, missatge);
        QFETCH(QString, periodicitatDespres);
        QFETCH(QString, minutsDespres);

        EntornMestres e;
        omple(e);
        lloc(e.db(), QStringLiteral("Oficina vella"), 60, QString(), kClient);
        GestioLlocs g(*e.sessio, e.io);
        FitxaLloc f = llocNou(nom, minuts);
        f.periodicitat = periodicitat;
        f.quota = quota;
        f.clientXecs = xecs;
        const QString abans = e.instantania();
        QCOMPARE(g.AfegirLloc(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{missatge});
        QCOMPARE(e.instantania(), abans);
        QCOMPARE(f.periodicitat, periodicitatDespres);
        QCOMPARE(f.minutsPrevist, minutsDespres);
        QVERIFY(!e.sessio->RefrescarAgenda);
    }

    void afegirLlocDesaElsCamps()
    {
        EntornMestres e;
        omple(e);
        GestioLlocs g(*e.sessio, e.io);

        FitxaLloc f = llocNou(QStringLiteral("  L'Escala Àmplia "), QStringLiteral("lletres"));
        f.adreca = QStringLiteral("C/ Major, 1");
        f.poblacio = QStringLiteral("Vic");
        f.telefon = QStringLiteral("938");
        f.periodicitat = QStringLiteral("7");
        f.ultimMes = true;
        f.diaSetmana = 6;
        f.dissabte = true;
        f.hora = QStringLiteral("08:30");
        f.recurs = QStringLiteral("Marta i Oriol");
        f.quota = QStringLiteral("12,345");
        f.observacions = QStringLiteral("Clau a consergeria");
        QCOMPARE(g.AfegirLloc(f), Resultat::Fet);
        QVERIFY(e.missatges().isEmpty());
        QVERIFY(e.sessio->RefrescarAgenda);
        // Letters in the minutes mean one cell; a monthly place is stored with period 99.
        QCOMPARE(f.minutsPrevist, QStringLiteral("30"));
        QCOMPARE(f.periodicitat, QStringLiteral("99"));

        FitxaLloc l;
        QVERIFY(g.carrega(QStringLiteral("l'escala àmplia"), l));
        QCOMPARE(l.nom, QStringLiteral("L'Escala Àmplia"));
        QCOMPARE(l.client, kClient);
        QCOMPARE(l.adreca, QStringLiteral("C/ Major, 1"));
        QCOMPARE(l.poblacio, QStringLiteral("Vic"));
        QCOMPARE(l.telefon, QStringLiteral("938"));
        QCOMPARE(l.minutsPrevist, QStringLiteral("30"));
        QCOMPARE(l.periodicitat, QStringLiteral("99"));
        QVERIFY(l.ultimMes && !l.primerMes && l.dissabte && !l.diumenge);
        QCOMPARE(l.diaSetmana, 6);
        QCOMPARE(l.hora, QStringLiteral("08:30"));
        QCOMPARE(l.recurs, QStringLiteral("Marta i Oriol"));
        // 12,345 is a half cent: it goes to the even cent.
        QCOMPARE(e.text("SELECT llocs_quota FROM Llocs"), QStringLiteral("12.34"));
        QCOMPARE(l.observacions, QStringLiteral("Clau a consergeria"));

        // Nothing chosen in the lists is stored as no value; a half day of period rounds to even.
        FitxaLloc buit = llocNou(QStringLiteral("Pati"), QStringLiteral("1440"));
        buit.periodicitat = QStringLiteral("2,5");
        QCOMPARE(g.AfegirLloc(buit), Resultat::Fet);
        QCOMPARE(buit.periodicitat, QStringLiteral("2"));
        QCOMPARE(buit.quota, QStringLiteral("0"));
        QCOMPARE(e.text("SELECT llocs_hora FROM Llocs WHERE llocs_nom = 'Pati'"), QStringLiteral("<null>"));
        QCOMPARE(e.text("SELECT recursos_nom FROM Llocs WHERE llocs_nom = 'Pati'"), QStringLiteral("<null>"));
        QCOMPARE(e.compte("SELECT llocs_dia_setmana + llocs_minuts_previst FROM Llocs WHERE llocs_nom = 'Pati'"), 1440);
        QCOMPARE(g.llocsClient(kClient), (QStringList{QStringLiteral("L'Escala Àmplia"), QStringLiteral("Pati")}));

        // The day's length follows the configured day: 08:00 to 20:00 in 45-minute cells.
        e.cfg().HoraInici = QStringLiteral("08:00");
        e.cfg().HoraFinal = QStringLiteral("20:00");
        e.cfg().MinutsCella = 45;
        e.cfg().CellesDia = Configuracio::cellesDia(e.cfg().HoraInici, e.cfg().HoraFinal, 45);
        FitxaLloc llarg = llocNou(QStringLiteral("Nau"), QStringLiteral("765"));
        QCOMPARE(g.AfegirLloc(llarg), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("Excés de minuts previstos")});
        llarg.minutsPrevist = QStringLiteral("720");
        QCOMPARE(g.AfegirLloc(llarg), Resultat::Fet);
        QCOMPARE(g.horesDia().size(), 16);
        QCOMPARE(g.horesDia().first(), QStringLiteral("08:00"));
        QCOMPARE(g.horesDia().last(), QStringLiteral("19:15"));
    }

    void modificarLlocOrdre()
    {
        EntornMestres e;
        omple(e);
        lloc(e.db(), QStringLiteral("Oficina"), 30, QString(), kClient);
        GestioLlocs g(*e.sessio, e.io);
        FitxaLloc f;
        QVERIFY(g.carrega(QStringLiteral("Oficina"), f));
        const QString abans = e.instantania();

        // Unlike adding, saving checks the minutes before the period and has no default.
        f.minutsPrevist = QStringLiteral("lletres");
        f.periodicitat = QStringLiteral("abc");
        QCOMPARE(g.ModificarLloc(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("Cal informar els minuts previstos")});

        f.minutsPrevist = QStringLiteral("1470");
        QCOMPARE(g.ModificarLloc(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("Cal informar la periodicitat en dies. (0 si no planificable)")});
        f.periodicitat = QString();
        QCOMPARE(g.ModificarLloc(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("Excés de minuts previstos")});
        QCOMPARE(f.periodicitat, QStringLiteral("0"));

        f.minutsPrevist = QStringLiteral("30");
        f.nom = QStringLiteral("...");
        QCOMPARE(g.ModificarLloc(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El nom del lloc no pot ser '...'")});
        QCOMPARE(e.instantania(), abans);

        lloc(e.db(), QStringLiteral("Escala"), 30, QString(), kClient);
        f.nom = QStringLiteral("escala");
        QCOMPARE(g.ModificarLloc(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El lloc ja existeix")});

        // Removed meanwhile: refused when the write begins.
        f.nom = QStringLiteral("Oficina");
        e.db().exec(QStringLiteral("DELETE FROM Llocs"));
        QCOMPARE(g.ModificarLloc(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El lloc no existeix")});
    }

    void preguntaDeMinuts()
    {
        EntornMestres e;
        omple(e);
        lloc(e.db(), QStringLiteral("Oficina"), 60, QStringLiteral("Marta i Oriol"), kClient);
        // 2 hours of per-worker cleaning shared by two workers: 60 minutes; plus 10 km of
        // travel the whole group spends: 30; 90 in all.
        llocServei(e.db(), QStringLiteral("Oficina"), QStringLiteral("Neteja"), 2, 6.25);
        llocServei(e.db(), QStringLiteral("Oficina"), QStringLiteral("Desplaçaments"), 10, 0.19);
        GestioLlocs g(*e.sessio, e.io);
        FitxaLloc f;
        QVERIFY(g.carrega(QStringLiteral("Oficina"), f));

        e.io.respostes = {false};
        QCOMPARE(g.ModificarLloc(f), Resultat::Fet);
        QCOMPARE(e.io.crides.size(), 1);
        QCOMPARE(e.io.crides[0].tipus, QStringLiteral("pregunta"));
        QCOMPARE(e.io.crides[0].titol, QStringLiteral("AVÍS"));
        QCOMPARE(e.io.crides[0].text,
                 QStringLiteral("Els minuts previstos difereixen de la duració dels serveis (90 minuts). Actualitzar minuts?"));
        e.missatges();
        QCOMPARE(e.compte("SELECT llocs_minuts_previst FROM Llocs"), 60); // No keeps what was typed

        e.io.respostes = {true};
        QCOMPARE(g.ModificarLloc(f), Resultat::Fet);
        QCOMPARE(f.minutsPrevist, QStringLiteral("90"));
        QCOMPARE(e.compte("SELECT llocs_minuts_previst FROM Llocs"), 90);
        e.missatges();

        // In step: nothing asked.
        QCOMPARE(g.ModificarLloc(f), Resultat::Fet);
        QVERIFY(e.missatges().isEmpty());

        // The resource chosen on the form decides the sharing: one worker does it all (150).
        f.recurs = QStringLiteral("Marta");
        e.io.respostes = {true};
        QCOMPARE(g.ModificarLloc(f), Resultat::Fet);
        QCOMPARE(e.missatges(QStringLiteral("pregunta")).size(), 1);
        QCOMPARE(e.compte("SELECT llocs_minuts_previst FROM Llocs"), 150);

        // A place without services proposes one cell.
        lloc(e.db(), QStringLiteral("Buit"), 60, QString(), kClient);
        FitxaLloc b;
        QVERIFY(g.carrega(QStringLiteral("Buit"), b));
        QCOMPARE(g.ModificarLloc(b), Resultat::Fet);
        QCOMPARE(e.missatges(QStringLiteral("pregunta")),
                 QStringList{QStringLiteral("Els minuts previstos difereixen de la duració dels serveis (30 minuts). Actualitzar minuts?")});
    }

    // ------------------------------------------------------------------ service lines

    void liniesDeServei()
    {
        EntornMestres e;
        omple(e);
        lloc(e.db(), QStringLiteral("Oficina"), 60, QStringLiteral("Marta i Oriol"), kClient);
        GestioLlocs g(*e.sessio, e.io);
        FitxaLloc l;
        QVERIFY(g.carrega(QStringLiteral("Oficina"), l));
        const QString abans = e.instantania();

        auto prova = [&](const QString &quantitat, const QString &preu, const QString &missatge) {
            FitxaServeiLloc s{QStringLiteral("Neteja"), QString(), quantitat, preu, QString()};
            QCOMPARE(g.AfegirServeiLloc(l, s), Resultat::Refusat);
            QCOMPARE(e.missatges(), QStringList{missatge});
            QCOMPARE(e.instantania(), abans);
        };
        prova(QStringLiteral("dos"), QStringLiteral("0"), QStringLiteral("Cal informar la quantitat"));
        prova(QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("Cal informar una quantitat positiva"));
        prova(QStringLiteral("-1"), QStringLiteral("5"), QStringLiteral("Cal informar una quantitat positiva"));
        prova(QStringLiteral("2"), QStringLiteral("0"), QStringLiteral("Cal informar un preu"));
        prova(QStringLiteral("2"), QStringLiteral("cinc"), QStringLiteral("Cal informar un preu"));

        // The service's own unit, price and wording are offered when it is chosen.
        FitxaServeiLloc s{QStringLiteral("Neteja"), {}, {}, {}, {}};
        g.ompleServei(s);
        QCOMPARE(s.unitat, QStringLiteral("Hores"));
        QCOMPARE(s.preu, QStringLiteral("6,25"));
        QCOMPARE(s.descripcio, QStringLiteral("Servei de neteja"));

        // A negative price is a discount and is accepted; the group halves 2 hours to 60
        // minutes, in step with the place, so nothing is asked.
        s.quantitat = QStringLiteral("2");
        s.preu = QStringLiteral("-5");
        s.descripcio = QStringLiteral("Neteja d'oficina");
        QCOMPARE(g.AfegirServeiLloc(l, s), Resultat::Fet);
        QVERIFY(e.missatges().isEmpty());
        FitxaServeiLloc llegit;
        QVERIFY(g.carregaServeiLloc(QStringLiteral("oficina"), QStringLiteral("NETEJA"), llegit));
        QCOMPARE(llegit.quantitat, QStringLiteral("2"));
        QCOMPARE(llegit.preu, QStringLiteral("-5,00"));
        QCOMPARE(llegit.unitat, QStringLiteral("Hores"));
        QCOMPARE(llegit.descripcio, QStringLiteral("Neteja d'oficina"));

        // The same service again is refused, and the minutes are still compared: 1 hour of
        // windows more would make it 75, rounded up to 90.
        FitxaServeiLloc vidres{QStringLiteral("Vidres"), {}, QStringLiteral("1"), QStringLiteral("9,5"), {}};
        e.io.respostes = {false};
        QCOMPARE(g.AfegirServeiLloc(l, vidres), Resultat::Fet);
        QCOMPARE(e.missatges(QStringLiteral("pregunta")).size(), 1);
        FitxaServeiLloc repetit{QStringLiteral("neteja"), {}, QStringLiteral("1"), QStringLiteral("1"), {}};
        e.io.respostes = {false};
        QCOMPARE(g.AfegirServeiLloc(l, repetit), Resultat::Refusat);
        QCOMPARE(e.missatges(),
                 (QStringList{QStringLiteral("El servei ja existeix pel lloc"),
                              QStringLiteral("Els minuts previstos difereixen de la duració dels serveis (90 minuts). Actualitzar minuts?")}));
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Llocs_Serveis"), 2);

        // Yes saves the whole place as it stands on the form, other edits included.
        l.telefon = QStringLiteral("555");
        FitxaServeiLloc canvi{QStringLiteral("Vidres"), {}, QStringLiteral("3"), QStringLiteral("9"), QStringLiteral("Vidres alts")};
        e.io.respostes = {true};
        QCOMPARE(g.ModificarServeiLloc(l, canvi), Resultat::Fet);
        QVERIFY(canvi.servei.isEmpty() && canvi.quantitat.isEmpty()); // the line's fields are emptied
        QCOMPARE(l.minutsPrevist, QStringLiteral("120")); // 60 + 45 -> 105 -> 120
        QCOMPARE(e.compte("SELECT llocs_minuts_previst FROM Llocs"), 120);
        QCOMPARE(e.text("SELECT llocs_telefon FROM Llocs"), QStringLiteral("555"));
        QCOMPARE(e.text("SELECT llocs_serveis_descripcio FROM Llocs_Serveis WHERE serveis_nom = 'Vidres'"), QStringLiteral("Vidres alts"));
        e.missatges();

        FitxaServeiLloc absent{QStringLiteral("Desplaçaments"), {}, QStringLiteral("1"), QStringLiteral("1"), {}};
        QCOMPARE(g.ModificarServeiLloc(l, absent), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El servei no existeix pel lloc")});
        QCOMPARE(g.EliminarServeiLloc(l, absent), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El servei no existeix pel lloc")});

        // Deleting a line asks nothing, even though the minutes no longer match.
        FitxaServeiLloc fora{QStringLiteral("Vidres"), {}, {}, {}, {}};
        QCOMPARE(g.EliminarServeiLloc(l, fora), Resultat::Fet);
        QVERIFY(e.missatges().isEmpty());
        const QList<LiniaServeiLloc> linies = g.liniesLloc(QStringLiteral("Oficina"));
        QCOMPARE(linies.size(), 1);
        QCOMPARE(linies[0].servei, QStringLiteral("Neteja"));
        QCOMPARE(linies[0].unitat, QStringLiteral("Hores"));
    }

    // A failure half-way through a rename leaves every row as it was: the rename and what it
    // carries are one unit.
    void fallaAMeitatNoDeixaRes()
    {
        EntornMestres e;
        omple(e);
        lloc(e.db(), QStringLiteral("Oficina"), 60, QString(), kClient);
        xec(e.db(), 7, kClient, 0, QDate());
        e.db().exec(QStringLiteral("INSERT INTO Pagaments VALUES ('Comunitat Exemple', '03/2009', 50)"));
        e.db().exec(QStringLiteral("CREATE TRIGGER ple BEFORE UPDATE ON Pagaments BEGIN SELECT RAISE(ABORT, 'disc ple'); END"));
        GestioClients g(*e.sessio, e.io);
        FitxaClient f;
        QVERIFY(g.carrega(kClient, f));
        f.nom = QStringLiteral("Nou nom");
        const QString abans = e.instantania();
        QCOMPARE(g.ModificarClient(f), Resultat::Error);
        QCOMPARE(e.io.crides.size(), 1);
        QCOMPARE(e.io.crides[0].titol, QStringLiteral("ERROR"));
        QVERIFY(e.io.crides[0].text.startsWith(QStringLiteral("Error:")));
        QVERIFY(e.io.crides[0].text.contains(QStringLiteral("disc ple")));
        QCOMPARE(e.instantania(), abans);
        QCOMPARE(f.nomAnt, kClient); // the form still points at the stored row
        QCOMPARE(e.db().transactionDepth(), 0);

        // Same for a place whose lines cannot be removed: the place stays too.
        llocServei(e.db(), QStringLiteral("Oficina"), QStringLiteral("Neteja"), 1, 6.25);
        e.db().exec(QStringLiteral("CREATE TRIGGER fix BEFORE DELETE ON Llocs BEGIN SELECT RAISE(ABORT, 'bloquejat'); END"));
        e.missatges();
        GestioLlocs llocs(*e.sessio, e.io);
        FitxaLloc l = llocNou(QStringLiteral("Oficina"));
        QCOMPARE(llocs.EliminarLloc(l), Resultat::Error);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Llocs_Serveis WHERE llocs_nom = 'Oficina'"), 1);
        // Deleted, the place takes its lines with it.
        e.db().exec(QStringLiteral("DROP TRIGGER fix"));
        QCOMPARE(llocs.EliminarLloc(l), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Llocs_Serveis"), 0);
    }
};

QTEST_GUILESS_MAIN(TestClientsLlocs)
#include "tst_clients_llocs.moc"
