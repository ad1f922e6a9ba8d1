// Resources and services through their engine: the checks in order, the colour rules (unique,
// never one the agenda paints itself, repaired at start-up), group membership on add and on
// rename, and the voucher service that keeps its name and cannot be deleted.
#include "jobs/feina.h"
#include "masterdata/recursos.h"
#include "masterdata/serveis.h"
#include "mestres_proves.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace dades_prova;

namespace {

FitxaRecurs recursNou(const QString &nom, qint32 color)
{
    FitxaRecurs f;
    f.nom = nom;
    f.color = color;
    f.assignaTemps = true;
    return f;
}

FitxaServei serveiNou(const QString &nom, const QString &preu = QStringLiteral("6,25"), const QString &minuts = QStringLiteral("60"),
                      const QString &unitat = QStringLiteral("Hores"))
{
    FitxaServei f;
    f.nom = nom;
    f.unitat = unitat;
    f.preu = preu;
    f.minuts = minuts;
    return f;
}

} // namespace

class TestRecursosServeis : public QObject {
    Q_OBJECT

private slots:
    void afegirRecurs()
    {
        EntornMestres e;
        recurs(e.db(), "Oriol", 0x0000FF);
        GestioRecursos g(*e.sessio, e.io);
        FitxaRecurs f = recursNou("  Marta ", 0x00FFFF);
        QCOMPARE(g.AfegirRecurs(f), Resultat::Fet);
        QCOMPARE(f.nom, QString("Marta"));
        QCOMPARE(e.text("SELECT recursos_color || '/' || recursos_assigna_temps FROM Recursos WHERE recursos_nom = 'Marta'"),
                 QString::number(0x00FFFF) + "/1");
        QVERIFY(e.sessio->RefrescarAgenda);

        const QString abans = e.instantania();
        const QString enUs = "Color ja en ús. Selecciona un altre color";
        const struct {
            const char *nom;
            qint32 color;
            bool grup;
            QString missatge;
        } casos[] = {
            {"MARTA", 0x0000FF, true, "El recurs ja existeix"}, // the name comes before the colour
            {"Equip", 0x0000FF, true, enUs},                   // another's colour, before the members
            {"Pere", ColorFinestra, false, "Tria un color per al recurs amb el botó \"Color...\""},
            {"Pere", 0xFFFFFF, false, enUs}, // the agenda's plain background
            {"Pere", e.cfg().ColorDiumenge, false, enUs},
            {"Equip", 0x123456, true, "Falta marcar components del grup"},
        };
        for (const auto &c : casos) {
            FitxaRecurs r = recursNou(c.nom, c.color);
            g.marcaGrup(r, c.grup);
            ESPERA(e, g.AfegirRecurs(r), Resultat::Refusat, c.missatge);
        }
        QCOMPARE(e.instantania(), abans);
    }

    void membresDelGrup()
    {
        EntornMestres e;
        recurs(e.db(), "Oriol", 0x0000FF);
        recurs(e.db(), "Marta", 0x00FFFF);
        recurs(e.db(), "Àngels", 0x00FF00);
        grup(e.db(), "Vell", 0x111111, {"Oriol"});
        GestioRecursos g(*e.sessio, e.io);
        // A new group lists every worker (never a group) but the name being edited, unmarked.
        FitxaRecurs f = recursNou(" marta ", 0x222222);
        g.marcaGrup(f, true);
        QVERIFY(!f.assignaTemps);
        QCOMPARE(f.components.size(), 2);
        QVERIFY(f.components.contains("   Oriol") && f.components.contains("   Àngels"));
        f.nom = "Equip";
        const int oriol = f.components.indexOf("   Oriol");
        for (int i : {oriol, oriol, oriol, 99}) // twice back to unmarked; outside the list: nothing
            g.commuta(f, i);
        QCOMPARE(g.membresMarcats(f), QStringList{"Oriol"});
        f.assignaTemps = true; // a group takes no share of its own whatever the form says
        QCOMPARE(g.AfegirRecurs(f), Resultat::Fet);
        QCOMPARE(e.compte("SELECT recursos_grup * 10 + recursos_assigna_temps FROM Recursos WHERE recursos_nom = 'Equip'"), 10);
        QCOMPARE(files(e.db(), "SELECT recursos_component_nom FROM Recursos_Components WHERE recursos_nom = 'Equip'"),
                 QStringList{"Oriol"});

        // Loading a group marks exactly its members, among every worker, with the marker of the
        // settings.
        e.cfg().MarcaSeleccio = "[x] ";
        FitxaRecurs carregat;
        QVERIFY(g.carrega("EQUIP", carregat));
        QCOMPARE(carregat.components.size(), 3);
        QVERIFY(carregat.components.contains("[x] Oriol") && carregat.components.contains("    Marta"));
    }

    void modificarIEliminarRecurs()
    {
        EntornMestres e;
        recurs(e.db(), "Oriol", 0x0000FF);
        recurs(e.db(), "Marta", 0x00FFFF);
        grup(e.db(), "Equip", 0x00FF00, {"Oriol"});
        feina(e.db(), "Casa", QDate(2009, 3, 2), "09:00", "10:00", "Oriol");
        GestioRecursos g(*e.sessio, e.io);
        FitxaRecurs f;
        QVERIFY(g.carrega("Equip", f));
        // Its own colour is no conflict; the other worker is added to the group.
        g.commuta(f, f.components.indexOf("   Marta"));
        QCOMPARE(g.ModificarRecurs(f), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Recursos_Components WHERE recursos_nom = 'Equip'"), 2);
        QVERIFY(e.sessio->RefrescarAgenda && e.sessio->RefrescarFacturacio);

        const QString abans = e.instantania();
        FitxaRecurs canvi = f;
        canvi.color = 0x00FFFF;
        ESPERA(e, g.ModificarRecurs(canvi), Resultat::Refusat, "Color ja en ús. Selecciona un altre color");
        for (int i = 0; i < f.components.size(); ++i)
            if (g.marcada(f.components[i]))
                g.commuta(f, i);
        ESPERA(e, g.ModificarRecurs(f), Resultat::Refusat, "Falta marcar components del grup");
        QCOMPARE(e.instantania(), abans);

        // Renamed and no longer a group: its memberships go, under the old name and the new.
        QVERIFY(g.carrega("Equip", f));
        f.nom = "L'Equip";
        g.marcaGrup(f, false);
        QCOMPARE(g.ModificarRecurs(f), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Recursos_Components"), 0);
        // Deleting a group takes its member list; its member's jobs stay.
        grup(e.db(), "Equip", 0x00FF00, {"Oriol"});
        FitxaRecurs fora = recursNou(" EQUIP ", 0);
        QCOMPARE(g.EliminarRecurs(fora), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Recursos_Components") * 10 + e.compte("SELECT COUNT(*) FROM Feines"), 1);
        e.db().exec("DELETE FROM Recursos WHERE recursos_nom = 'Marta'");
        FitxaRecurs perdut = recursNou("Marta", 0x00FFFF);
        perdut.nomAnt = "Marta";
        ESPERA(e, g.ModificarRecurs(perdut), Resultat::Refusat, "El recurs no existeix");
    }

    void reparacioDeColors()
    {
        EntornMestres e;
        recurs(e.db(), "Blanc", 0xFFFFFF);
        recurs(e.db(), "Diumenge", e.cfg().ColorDiumenge);
        recurs(e.db(), "Bo", 0x336699);
        GestioRecursos g(*e.sessio, e.io);
        // The first colour this generator draws is given to another resource beforehand: the
        // repair must draw again rather than create a twin.
        QRandomGenerator copia(4242);
        qint32 primer = 0;
        for (int i = 0; i < 3; ++i)
            primer |= static_cast<int>(copia.generateDouble() * 255) << (8 * i);
        recurs(e.db(), "Ocupat", primer);
        QRandomGenerator atzar(4242);
        QCOMPARE(g.reparaColors(atzar), 2);
        QCOMPARE(e.compte("SELECT recursos_color FROM Recursos WHERE recursos_nom = 'Bo'"), 0x336699);
        QCOMPARE(e.compte("SELECT recursos_color FROM Recursos WHERE recursos_nom = 'Ocupat'"), primer);
        QCOMPARE(e.compte("SELECT COUNT(DISTINCT recursos_color) FROM Recursos"), 4);
        const QList<qint32> reservats = GestioRecursos::coloursReservats(e.cfg());
        for (const FilaRecurs &fila : g.recursos())
            QVERIFY2(!reservats.contains(fila.color), qPrintable(fila.nom));
        QVERIFY(e.sessio->RefrescarAgenda);
        QCOMPARE(reparaColorsRecursos(*e.sessio), 0); // at start-up again: nothing left to repair
    }

    void serveis()
    {
        EntornMestres e;
        servei(e.db(), "Vidres", 30, false, 9, "Hores");
        llocServei(e.db(), "Oficina", "Vidres", 1, 9);
        GestioServeis g(*e.sessio, e.io);
        for (const auto &[unitat, preu, minuts, missatge] :
             {std::tuple{"", "0", "x", "Cal informar la unitat del servei"}, {"Hores", "sis", "x", "Cal informar el preu unitari"},
              {"Hores", "6,25", "x", "La equivalencia en minuts ha de ser numèrica"}}) {
            FitxaServei f = serveiNou("Neteja", preu, minuts, unitat);
            ESPERA(e, g.AfegirServei(f), Resultat::Refusat, missatge);
        }
        // A discount service has a negative price; no minutes means 0 and says so.
        FitxaServei f = serveiNou(" Neteja ", "-2", "");
        f.comu = true;
        f.descripcio = "Neteja d'estiu";
        QCOMPARE(g.AfegirServei(f), Resultat::Fet);
        QCOMPARE(f.minuts, QString("0"));
        FitxaServei llegit;
        QVERIFY(g.carrega("NETEJA", llegit));
        QCOMPARE(QStringList({llegit.nom, llegit.preu, llegit.minuts, llegit.descripcio}).join('|'), QString("Neteja|-2,00|0|Neteja d'estiu"));
        QVERIFY(llegit.comu);

        QVERIFY(g.carrega("Vidres", f));
        f.nom = "NETEJA";
        const QString abans = e.instantania();
        ESPERA(e, g.ModificarServei(f), Resultat::Refusat, "El servei ja existeix");
        QCOMPARE(e.instantania(), abans);
        f.nom = "Finestres";
        QCOMPARE(g.ModificarServei(f), Resultat::Fet);
        QCOMPARE(g.noms(), (QStringList{"Finestres", "Neteja"}));
        // A service that places no longer use can go.
        e.db().exec("DELETE FROM Llocs_Serveis");
        f.nomAnt = "Finestres";
        FitxaServei fora = serveiNou("finestres");
        QCOMPARE(g.EliminarServei(fora), Resultat::Fet);
        ESPERA(e, g.ModificarServei(f), Resultat::Refusat, "El servei no existeix");
    }

    void serveiDelsXecs()
    {
        EntornMestres e;
        servei(e.db(), "Neteja", 60, false, 6.25, "Hores");
        e.cfg().ServeiXecs = "Neteja";
        GestioServeis g(*e.sessio, e.io);
        FitxaServei f;
        QVERIFY(g.carrega("Neteja", f));
        // Its other fields may change.
        f.unitat = "Hora";
        f.preu = "7";
        f.minuts = "50";
        QCOMPARE(g.ModificarServei(f), Resultat::Fet);
        QCOMPARE(e.text("SELECT serveis_unitat || serveis_preu_un || '/' || serveis_minuts_per_unitat FROM Serveis"), QString("Hora7.0/50"));
        // Its name may not, not even its case; and the name is checked before the fields.
        const QString abans = e.instantania();
        for (const char *nom : {"Neteja general", "NETEJA"}) {
            FitxaServei canvi = serveiNou(nom, "0");
            canvi.nomAnt = f.nomAnt;
            ESPERA(e, g.ModificarServei(canvi), Resultat::Refusat, "No es pot modificar el nom del servei dels xecs");
        }
        // It cannot be deleted, however its name is typed.
        FitxaServei xecs = serveiNou(" neteja ");
        ESPERA(e, g.EliminarServei(xecs), Resultat::Refusat, "No es pot eliminar el servei dels xecs");
        QCOMPARE(e.instantania(), abans);
        // With vouchers off, it is a service like any other.
        e.cfg().ServeiXecs.clear();
        FitxaServei fora = serveiNou("Neteja");
        QCOMPARE(g.EliminarServei(fora), Resultat::Fet);
    }
};

QTEST_GUILESS_MAIN(TestRecursosServeis)
#include "tst_recursos_serveis.moc"
