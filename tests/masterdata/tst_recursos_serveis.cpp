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

FitxaServei serveiNou(const QString &nom)
{
    FitxaServei f;
    f.nom = nom;
    f.unitat = QStringLiteral("Hores");
    f.preu = QStringLiteral("6,25");
    f.minuts = QStringLiteral("60");
    return f;
}

} // namespace

class TestRecursosServeis : public QObject {
    Q_OBJECT

private slots:
    // ------------------------------------------------------------------ resources

    void afegirRecurs()
    {
        EntornMestres e;
        recurs(e.db(), QStringLiteral("Oriol"), 0x0000FF);
        GestioRecursos g(*e.sessio, e.io);

        FitxaRecurs f = recursNou(QStringLiteral("  Marta "), 0x00FFFF);
        QCOMPARE(g.AfegirRecurs(f), Resultat::Fet);
        QCOMPARE(f.nom, QStringLiteral("Marta"));
        QCOMPARE(e.compte("SELECT recursos_color FROM Recursos WHERE recursos_nom = 'Marta'"), 0x00FFFF);
        QCOMPARE(e.compte("SELECT recursos_assigna_temps FROM Recursos WHERE recursos_nom = 'Marta'"), 1);
        QVERIFY(e.sessio->RefrescarAgenda);

        const QString abans = e.instantania();
        struct Cas {
            const char *cas;
            QString nom;
            qint32 color;
            bool grup;
            QString missatge;
        };
        const QString enUs = QStringLiteral("Color ja en ús. Selecciona un altre color");
        const QList<Cas> casos = {
            {"the name comes before the colour", QStringLiteral("MARTA"), 0x0000FF, true, QStringLiteral("El recurs ja existeix")},
            {"another's colour, before the members", QStringLiteral("Equip"), 0x0000FF, true, enUs},
            {"no colour chosen", QStringLiteral("Pere"), ColorFinestra, false,
             QStringLiteral("Tria un color per al recurs amb el botó \"Color...\"")},
            {"the agenda's plain background", QStringLiteral("Pere"), 0xFFFFFF, false, enUs},
            {"the agenda's Sunday colour", QStringLiteral("Pere"), e.cfg().ColorDiumenge, false, enUs},
            {"a group with nobody marked", QStringLiteral("Equip"), 0x123456, true, QStringLiteral("Falta marcar components del grup")},
        };
        for (const Cas &c : casos) {
            FitxaRecurs r = recursNou(c.nom, c.color);
            g.marcaGrup(r, c.grup);
            QVERIFY2(g.AfegirRecurs(r) == Resultat::Refusat, c.cas);
            QCOMPARE(e.missatges(), QStringList{c.missatge});
        }
        QCOMPARE(e.instantania(), abans);

        // Another Sunday colour in the settings frees the default one.
        const qint32 diumengeVell = e.cfg().ColorDiumenge;
        e.cfg().ColorDiumenge = 0x0A0B0C;
        FitxaRecurs pere = recursNou(QStringLiteral("Pere"), diumengeVell);
        QCOMPARE(g.AfegirRecurs(pere), Resultat::Fet);
    }

    void membresDelGrup()
    {
        EntornMestres e;
        recurs(e.db(), QStringLiteral("Oriol"), 0x0000FF);
        recurs(e.db(), QStringLiteral("Marta"), 0x00FFFF);
        recurs(e.db(), QStringLiteral("Àngels"), 0x00FF00);
        grup(e.db(), QStringLiteral("Vell"), 0x111111, {QStringLiteral("Oriol")});
        GestioRecursos g(*e.sessio, e.io);

        // A new group lists every worker (never a group) but the name being edited, unmarked.
        FitxaRecurs f = recursNou(QStringLiteral(" marta "), 0x222222);
        g.marcaGrup(f, true);
        QVERIFY(!f.assignaTemps);
        QCOMPARE(f.components.size(), 2);
        QVERIFY(f.components.contains(QStringLiteral("   Oriol")));
        QVERIFY(f.components.contains(QStringLiteral("   Àngels")));

        // Before any name is typed, every worker is offered.
        FitxaRecurs senseNom;
        g.marcaGrup(senseNom, true);
        QCOMPARE(senseNom.components.size(), 3);

        f.nom = QStringLiteral("Equip");
        const int oriol = f.components.indexOf(QStringLiteral("   Oriol"));
        g.commuta(f, oriol);
        QCOMPARE(f.components[oriol], QStringLiteral("-> Oriol"));
        g.commuta(f, oriol);
        QCOMPARE(f.components[oriol], QStringLiteral("   Oriol"));
        g.commuta(f, oriol);
        g.commuta(f, 99); // outside the list: nothing
        QCOMPARE(g.membresMarcats(f), QStringList{QStringLiteral("Oriol")});

        // Clearing and ticking the box again keeps the marks.
        g.marcaGrup(f, false);
        g.marcaGrup(f, true);
        QCOMPARE(g.membresMarcats(f), QStringList{QStringLiteral("Oriol")});

        f.assignaTemps = true; // a group takes no share of its own whatever the form says
        QCOMPARE(g.AfegirRecurs(f), Resultat::Fet);
        QCOMPARE(e.compte("SELECT recursos_grup * 10 + recursos_assigna_temps FROM Recursos WHERE recursos_nom = 'Equip'"), 10);
        QCOMPARE(e.text("SELECT group_concat(recursos_component_nom) FROM Recursos_Components WHERE recursos_nom = 'Equip'"),
                 QStringLiteral("Oriol"));

        // Loading a group marks exactly its members, among every worker.
        FitxaRecurs carregat;
        QVERIFY(g.carrega(QStringLiteral("EQUIP"), carregat));
        QCOMPARE(carregat.nomAnt, QStringLiteral("Equip"));
        QCOMPARE(carregat.components.size(), 3);
        QCOMPARE(g.membresMarcats(carregat), QStringList{QStringLiteral("Oriol")});

        // Another marker from the settings is read back the same way.
        e.cfg().MarcaSeleccio = QStringLiteral("[x] ");
        QVERIFY(g.carrega(QStringLiteral("Equip"), carregat));
        QVERIFY(carregat.components.contains(QStringLiteral("[x] Oriol")));
        QVERIFY(carregat.components.contains(QStringLiteral("    Marta")));
        QCOMPARE(g.membresMarcats(carregat), QStringList{QStringLiteral("Oriol")});
    }

    void modificarRecurs()
    {
        EntornMestres e;
        recurs(e.db(), QStringLiteral("Oriol"), 0x0000FF);
        recurs(e.db(), QStringLiteral("Marta"), 0x00FFFF);
        grup(e.db(), QStringLiteral("Equip"), 0x00FF00, {QStringLiteral("Oriol")});
        GestioRecursos g(*e.sessio, e.io);

        FitxaRecurs f;
        QVERIFY(g.carrega(QStringLiteral("Equip"), f));
        // Its own colour is no conflict; the other worker is added to the group.
        g.commuta(f, f.components.indexOf(QStringLiteral("   Marta")));
        QCOMPARE(g.ModificarRecurs(f), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Recursos_Components WHERE recursos_nom = 'Equip'"), 2);
        QVERIFY(e.sessio->RefrescarAgenda && e.sessio->RefrescarFacturacio);

        const QString abans = e.instantania();
        f.color = 0x00FFFF;
        QCOMPARE(g.ModificarRecurs(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("Color ja en ús. Selecciona un altre color")});
        f.color = 0x00FF00;
        f.nom = QStringLiteral("oriol");
        QCOMPARE(g.ModificarRecurs(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El recurs ja existeix")});
        f.nom = QStringLiteral("Equip");
        for (int i = 0; i < f.components.size(); ++i)
            if (g.marcada(f.components[i]))
                g.commuta(f, i);
        QCOMPARE(g.ModificarRecurs(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("Falta marcar components del grup")});
        QCOMPARE(e.instantania(), abans);

        // Renamed and no longer a group: its memberships go, under the old name and the new.
        QVERIFY(g.carrega(QStringLiteral("Equip"), f));
        f.nom = QStringLiteral("L'Equip");
        g.marcaGrup(f, false);
        QCOMPARE(g.ModificarRecurs(f), Resultat::Fet);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Recursos_Components"), 0);

        e.db().exec(QStringLiteral("DELETE FROM Recursos WHERE recursos_nom = 'Marta'"));
        FitxaRecurs perdut = recursNou(QStringLiteral("Marta"), 0x00FFFF);
        perdut.nomAnt = QStringLiteral("Marta");
        QCOMPARE(g.ModificarRecurs(perdut), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El recurs no existeix")});
    }

    void eliminarRecurs()
    {
        EntornMestres e;
        recurs(e.db(), QStringLiteral("Oriol"), 0x0000FF);
        grup(e.db(), QStringLiteral("Equip"), 0x00FF00, {QStringLiteral("Oriol")});
        feina(e.db(), QStringLiteral("Casa"), QDate(2009, 3, 2), QStringLiteral("09:00"), QStringLiteral("10:00"), QStringLiteral("Oriol"));
        GestioRecursos g(*e.sessio, e.io);

        FitxaRecurs f = recursNou(QStringLiteral(" EQUIP "), 0);
        QCOMPARE(g.EliminarRecurs(f), Resultat::Fet);
        QCOMPARE(g.noms(), QStringList{QStringLiteral("Oriol")});
        // The group's own member list goes with it; its member's jobs stay.
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Feines WHERE recursos_nom = 'Oriol'"), 1);
        QCOMPARE(e.compte("SELECT COUNT(*) FROM Recursos_Components"), 0);

        f.nom = QStringLiteral("Equip");
        QCOMPARE(g.EliminarRecurs(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El recurs no existeix")});
    }

    void reparacioDeColors()
    {
        EntornMestres e;
        recurs(e.db(), QStringLiteral("Blanc"), 0xFFFFFF);
        recurs(e.db(), QStringLiteral("Diumenge"), e.cfg().ColorDiumenge);
        recurs(e.db(), QStringLiteral("Bo"), 0x336699);
        GestioRecursos g(*e.sessio, e.io);

        // The first colour this generator draws is given to another resource beforehand: the
        // repair must draw again rather than create a twin.
        QRandomGenerator copia(4242);
        const int r = static_cast<int>(copia.generateDouble() * 255);
        const int gr = static_cast<int>(copia.generateDouble() * 255);
        const int b = static_cast<int>(copia.generateDouble() * 255);
        const qint32 primer = r | (gr << 8) | (b << 16);
        recurs(e.db(), QStringLiteral("Ocupat"), primer);

        QRandomGenerator atzar(4242);
        QCOMPARE(g.reparaColors(atzar), 2);
        QCOMPARE(e.compte("SELECT recursos_color FROM Recursos WHERE recursos_nom = 'Bo'"), 0x336699);
        QCOMPARE(e.compte("SELECT recursos_color FROM Recursos WHERE recursos_nom = 'Ocupat'"), primer);
        QCOMPARE(e.compte("SELECT COUNT(DISTINCT recursos_color) FROM Recursos"), 4);
        const QList<qint32> reservats = GestioRecursos::coloursReservats(e.cfg());
        for (const FilaRecurs &fila : g.recursos()) {
            QVERIFY2(!reservats.contains(fila.color), qPrintable(fila.nom));
            // Each component is the integer part of a draw times 255: never 255 itself.
            QVERIFY((fila.color & 0xFF) < 255 && ((fila.color >> 8) & 0xFF) < 255 && ((fila.color >> 16) & 0xFF) < 255);
        }
        QVERIFY(e.sessio->RefrescarAgenda);

        // Nothing left to repair: nothing changes.
        e.sessio->RefrescarAgenda = false;
        const QString abans = e.instantania();
        QCOMPARE(reparaColorsRecursos(*e.sessio), 0);
        QCOMPARE(e.instantania(), abans);
        QVERIFY(!e.sessio->RefrescarAgenda);
    }

    // ------------------------------------------------------------------ services

    void campsDelServei()
    {
        EntornMestres e;
        GestioServeis g(*e.sessio, e.io);

        struct Cas {
            QString unitat, preu, minuts, missatge;
        };
        const QList<Cas> casos = {
            {QString(), QStringLiteral("0"), QStringLiteral("x"), QStringLiteral("Cal informar la unitat del servei")},
            {QStringLiteral("Hores"), QStringLiteral("0"), QStringLiteral("x"), QStringLiteral("Cal informar el preu unitari")},
            {QStringLiteral("Hores"), QStringLiteral("sis"), QStringLiteral("60"), QStringLiteral("Cal informar el preu unitari")},
            {QStringLiteral("Hores"), QStringLiteral("6,25"), QStringLiteral("x"), QStringLiteral("La equivalencia en minuts ha de ser numèrica")},
        };
        for (const Cas &c : casos) {
            FitxaServei f = serveiNou(QStringLiteral("Neteja"));
            f.unitat = c.unitat;
            f.preu = c.preu;
            f.minuts = c.minuts;
            QCOMPARE(g.AfegirServei(f), Resultat::Refusat);
            QCOMPARE(e.missatges(), QStringList{c.missatge});
        }
        QVERIFY(g.noms().isEmpty());

        // A discount service has a negative price; no minutes means 0 and says so.
        FitxaServei f = serveiNou(QStringLiteral(" Descompte "));
        f.preu = QStringLiteral("-2");
        f.minuts = QString();
        f.comu = true;
        f.descripcio = QStringLiteral("Descompte d'estiu");
        QCOMPARE(g.AfegirServei(f), Resultat::Fet);
        QCOMPARE(f.minuts, QStringLiteral("0"));
        FitxaServei llegit;
        QVERIFY(g.carrega(QStringLiteral("DESCOMPTE"), llegit));
        QCOMPARE(llegit.nom, QStringLiteral("Descompte"));
        QCOMPARE(llegit.preu, QStringLiteral("-2,00"));
        QCOMPARE(llegit.minuts, QStringLiteral("0"));
        QVERIFY(llegit.comu);
        QCOMPARE(llegit.descripcio, QStringLiteral("Descompte d'estiu"));

        FitxaServei repetit = serveiNou(QStringLiteral("descompte"));
        QCOMPARE(g.AfegirServei(repetit), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El servei ja existeix")});
    }

    void modificarIEliminarServei()
    {
        EntornMestres e;
        servei(e.db(), QStringLiteral("Neteja"), 60, false, 6.25, QStringLiteral("Hores"));
        servei(e.db(), QStringLiteral("Vidres"), 30, false, 9, QStringLiteral("Hores"));
        llocServei(e.db(), QStringLiteral("Oficina"), QStringLiteral("Vidres"), 1, 9);
        GestioServeis g(*e.sessio, e.io);

        FitxaServei f;
        QVERIFY(g.carrega(QStringLiteral("Vidres"), f));
        f.nom = QStringLiteral("NETEJA");
        const QString abans = e.instantania();
        QCOMPARE(g.ModificarServei(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El servei ja existeix")});
        QCOMPARE(e.instantania(), abans);

        f.nom = QStringLiteral("Finestres");
        f.preu = QStringLiteral("10,5");
        QCOMPARE(g.ModificarServei(f), Resultat::Fet);
        QCOMPARE(g.noms(), (QStringList{QStringLiteral("Finestres"), QStringLiteral("Neteja")}));

        // A service that places no longer use can go.
        e.db().exec(QStringLiteral("DELETE FROM Llocs_Serveis"));
        FitxaServei fora;
        fora.nom = QStringLiteral("finestres");
        QCOMPARE(g.EliminarServei(fora), Resultat::Fet);
        fora.nom = QStringLiteral("Finestres");
        QCOMPARE(g.EliminarServei(fora), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El servei no existeix")});
        f.nomAnt = QStringLiteral("Finestres");
        QCOMPARE(g.ModificarServei(f), Resultat::Refusat);
        QCOMPARE(e.missatges(), QStringList{QStringLiteral("El servei no existeix")});
    }

    void serveiDelsXecs()
    {
        EntornMestres e;
        servei(e.db(), QStringLiteral("Neteja"), 60, false, 6.25, QStringLiteral("Hores"));
        e.cfg().ServeiXecs = QStringLiteral("Neteja");
        GestioServeis g(*e.sessio, e.io);
        FitxaServei f;
        QVERIFY(g.carrega(QStringLiteral("Neteja"), f));

        // Its other fields may change.
        f.unitat = QStringLiteral("Hora");
        f.preu = QStringLiteral("7");
        f.minuts = QStringLiteral("50");
        QCOMPARE(g.ModificarServei(f), Resultat::Fet);
        QCOMPARE(e.text("SELECT serveis_unitat || serveis_preu_un || '/' || serveis_minuts_per_unitat FROM Serveis"),
                 QStringLiteral("Hora7.0/50"));

        // Its name may not, not even its case; and the name is checked before the fields.
        const QString abans = e.instantania();
        for (const QString &nom : {QStringLiteral("Neteja general"), QStringLiteral("NETEJA")}) {
            FitxaServei canvi = f;
            canvi.nom = nom;
            canvi.preu = QStringLiteral("0");
            QCOMPARE(g.ModificarServei(canvi), Resultat::Refusat);
            QCOMPARE(e.missatges(), QStringList{QStringLiteral("No es pot modificar el nom del servei dels xecs")});
        }
        // It cannot be deleted, however its name is typed.
        for (const QString &nom : {QStringLiteral("Neteja"), QStringLiteral(" neteja ")}) {
            FitxaServei fora;
            fora.nom = nom;
            QCOMPARE(g.EliminarServei(fora), Resultat::Refusat);
            QCOMPARE(e.missatges(), QStringList{QStringLiteral("No es pot eliminar el servei dels xecs")});
        }
        QCOMPARE(e.instantania(), abans);

        // With vouchers off, it is a service like any other.
        e.cfg().ServeiXecs.clear();
        FitxaServei fora;
        fora.nom = QStringLiteral("Neteja");
        QCOMPARE(g.EliminarServei(fora), Resultat::Fet);
    }
};

QTEST_GUILESS_MAIN(TestRecursosServeis)
#include "tst_recursos_serveis.moc"
