#pragma once
// Resources (workers and groups of workers) and the rules on their colours. The agenda tells a
// job's resource by the colour of its cell, so every resource keeps a colour of its own that is
// none of the colours the agenda itself paints cells with. A rename travels to every row that
// holds the name (core/referencies); a resource still named by a job, a group, a place or an
// overtime row is not deleted, and a group's own member list goes with it.

#include "resultat.h"

#include <QList>
#include <QString>
#include <QStringList>

class Sessio;
class Interaccio;
class QRandomGenerator;
struct Configuracio;

// The values of the resource form. `components` are the entries of the member list as shown:
// a member is prefixed by MarcaSeleccio, any other worker by as many blanks.
struct FitxaRecurs {
    QString nom;    // NomRecurs
    QString nomAnt; // NomRecursANT
    bool grup = false;
    bool assignaTemps = false;
    qint32 color;   // 0x00BBGGRR, or ColorFinestra while none was chosen
    QStringList components;
    FitxaRecurs();
};

struct FilaRecurs {
    QString nom;
    bool grup = false;
    qint32 color = 0;
};

class GestioRecursos {
public:
    GestioRecursos(Sessio &sessio, Interaccio &io);

    QList<FilaRecurs> recursos(); // every resource, by name
    QStringList noms();
    // Loads a stored resource (a group with its member list); false when there is none.
    bool carrega(const QString &nom, FitxaRecurs &f);
    // Ticking or clearing the group box: a group takes no time share of its own, and a new
    // group starts from every worker except the one being edited, none marked.
    void marcaGrup(FitxaRecurs &f, bool grup);
    // Clicking a member entry marks or unmarks it; the name part stays.
    void commuta(FitxaRecurs &f, int fila) const;
    bool marcada(const QString &entrada) const;
    QString nomEntrada(const QString &entrada) const;
    QStringList membresMarcats(const FitxaRecurs &f) const;

    Resultat AfegirRecurs(FitxaRecurs &f);
    Resultat ModificarRecurs(FitxaRecurs &f);
    Resultat EliminarRecurs(FitxaRecurs &f);

    // Colours no resource may take: the "no colour" value, the agenda's plain cell background
    // and its fixed cells' colour (Sundays and the lunch break).
    static QList<qint32> coloursReservats(const Configuracio &cfg);

    // Start-up repair: a resource painted in a reserved colour gets a new random one that no
    // other resource has. Returns how many were changed.
    int reparaColors();
    int reparaColors(QRandomGenerator &atzar);

private:
    QStringList individus(const QString &excepte);
    bool colorEnUs(qint32 color, const QString &excepte);
    void escriuMembres(const QString &grup, const FitxaRecurs &f);

    Sessio &m_sessio;
    Interaccio &m_io;
};

// The resources' colour repair as the shell runs it once after loading its pages.
int reparaColorsRecursos(Sessio &sessio);
