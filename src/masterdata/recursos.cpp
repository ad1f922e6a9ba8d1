#include "recursos.h"

#include "core/db.h"
#include "core/interaccio.h"
#include "core/referencies.h"
#include "core/sessio.h"
#include "core/traduccio.h"
#include "jobs/feina.h"

#include <QDateTime>
#include <QRandomGenerator>

namespace {

// The agenda paints cells that show no single job in the window background, which is white on
// the desktops Quadrella runs on.
constexpr qint32 kFonsAgenda = 0xFFFFFF;

class InteraccioMuda : public Interaccio {
public:
    void informa(const QString &, const QString &) override {}
    bool pregunta(const QString &, const QString &) override { return false; }
    void error(const QString &, const QString &) override {}
};

} // namespace

FitxaRecurs::FitxaRecurs() : color(ColorFinestra) {}

GestioRecursos::GestioRecursos(Sessio &sessio, Interaccio &io) : m_sessio(sessio), m_io(io) {}

QList<qint32> GestioRecursos::coloursReservats(const Configuracio &cfg)
{
    return {ColorFinestra, kFonsAgenda, cfg.ColorDiumenge};
}

QList<FilaRecurs> GestioRecursos::recursos()
{
    QList<FilaRecurs> out;
    Query q = m_sessio.db().prepared(
        QStringLiteral("SELECT recursos_nom, recursos_grup, recursos_color FROM Recursos ORDER BY recursos_nom"));
    q.exec();
    while (q.next())
        out.append({q.text(0), q.boolean(1), static_cast<qint32>(q.integer(2))});
    return out;
}

QStringList GestioRecursos::noms()
{
    QStringList out;
    for (const FilaRecurs &r : recursos())
        out << r.nom;
    return out;
}

QStringList GestioRecursos::individus(const QString &excepte)
{
    Query q = m_sessio.db().prepared(QStringLiteral(
        "SELECT recursos_nom FROM Recursos WHERE recursos_grup = 0 AND recursos_nom <> COALESCE(?, '') "
        "ORDER BY recursos_nom"));
    q.bind(excepte).exec();
    return q.columna();
}

bool GestioRecursos::carrega(const QString &nom, FitxaRecurs &f)
{
    Db &db = m_sessio.db();
    Query q = db.prepared(QStringLiteral(
        "SELECT recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps FROM Recursos WHERE recursos_nom = ?"));
    q.bind(nom).exec();
    if (!q.next())
        return false;
    f.nom = f.nomAnt = q.text(0);
    f.grup = q.boolean(1);
    f.color = static_cast<qint32>(q.integer(2));
    f.assignaTemps = q.boolean(3);
    f.components.clear();
    if (f.grup) {
        const QString marca = m_sessio.cfg().MarcaSeleccio;
        const QString buit(marca.size(), QLatin1Char(' '));
        Query m = db.prepared(QStringLiteral(
            "SELECT r.recursos_nom, (SELECT COUNT(*) FROM Recursos_Components c WHERE c.recursos_nom = ? "
            "AND c.recursos_component_nom = r.recursos_nom) FROM Recursos r WHERE r.recursos_grup = 0 "
            "ORDER BY r.recursos_nom"));
        m.bind(f.nom).exec();
        while (m.next())
            f.components << (m.integer(1) > 0 ? marca : buit) + m.text(0);
    }
    return true;
}

void GestioRecursos::marcaGrup(FitxaRecurs &f, bool grup)
{
    f.grup = grup;
    if (!grup)
        return;
    f.assignaTemps = false;
    if (f.components.isEmpty()) {
        const QString buit(m_sessio.cfg().MarcaSeleccio.size(), QLatin1Char(' '));
        for (const QString &nom : individus(f.nom.trimmed()))
            f.components << buit + nom;
    }
}

bool GestioRecursos::marcada(const QString &entrada) const
{
    const QString &marca = m_sessio.cfg().MarcaSeleccio;
    return entrada.left(marca.size()) == marca;
}

QString GestioRecursos::nomEntrada(const QString &entrada) const
{
    return entrada.mid(m_sessio.cfg().MarcaSeleccio.size());
}

void GestioRecursos::commuta(FitxaRecurs &f, int fila) const
{
    if (fila < 0 || fila >= f.components.size())
        return;
    const QString &marca = m_sessio.cfg().MarcaSeleccio;
    const QString nom = nomEntrada(f.components[fila]);
    f.components[fila] = (marcada(f.components[fila]) ? QString(marca.size(), QLatin1Char(' ')) : marca) + nom;
}

QStringList GestioRecursos::membresMarcats(const FitxaRecurs &f) const
{
    QStringList out;
    for (const QString &e : f.components)
        if (marcada(e))
            out << nomEntrada(e);
    return out;
}

bool GestioRecursos::colorEnUs(qint32 color, const QString &excepte)
{
    if (coloursReservats(m_sessio.cfg()).contains(color))
        return true;
    Query q = m_sessio.db().prepared(
        QStringLiteral("SELECT 1 FROM Recursos WHERE recursos_color = ? AND recursos_nom <> COALESCE(?, '') LIMIT 1"));
    q.bind(color).bind(excepte).exec();
    return q.next();
}

void GestioRecursos::escriuMembres(const QString &grup, const FitxaRecurs &f)
{
    Db &db = m_sessio.db();
    db.prepared(QStringLiteral("DELETE FROM Recursos_Components WHERE recursos_nom = ?")).bind(grup).exec();
    if (!f.grup)
        return;
    Query ins = db.prepared(QStringLiteral(
        "INSERT OR IGNORE INTO Recursos_Components (recursos_nom, recursos_component_nom) VALUES (?, ?)"));
    for (const QString &membre : membresMarcats(f))
        ins.bind(grup).bind(membre).exec();
}

Resultat GestioRecursos::AfegirRecurs(FitxaRecurs &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        Db &db = m_sessio.db();
        Transaction t(db);
        Query q = db.prepared(QStringLiteral("SELECT 1 FROM Recursos WHERE recursos_nom = ?"));
        q.bind(f.nom).exec();
        if (q.next())
            return mestres::refusa(m_io, Tradueix("El recurs ja existeix"));
        // The window's colour is what a new form shows before any colour is chosen.
        if (f.color == ColorFinestra)
            return mestres::refusa(m_io, Tradueix("Tria un color per al recurs amb el botó \"Color...\""));
        if (colorEnUs(f.color, QString()))
            return mestres::refusa(m_io, Tradueix("Color ja en ús. Selecciona un altre color"));
        if (f.grup && membresMarcats(f).isEmpty())
            return mestres::refusa(m_io, Tradueix("Falta marcar components del grup"));
        if (f.grup)
            f.assignaTemps = false;
        db.prepared(QStringLiteral("INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, "
                                   "recursos_assigna_temps) VALUES (?, ?, ?, ?)"))
            .bind(f.nom).bind(f.grup ? 1 : 0).bind(f.color).bind(f.assignaTemps ? 1 : 0).exec();
        escriuMembres(f.nom, f);
        t.commit();
        f.nomAnt = f.nom;
        m_sessio.RefrescarAgenda = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioRecursos::ModificarRecurs(FitxaRecurs &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty() || f.nomAnt.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        Db &db = m_sessio.db();
        Transaction t(db);
        Query q = db.prepared(QStringLiteral("SELECT 1 FROM Recursos WHERE recursos_nom = ?"));
        q.bind(f.nomAnt).exec();
        if (!q.next())
            return mestres::refusa(m_io, Tradueix("El recurs no existeix"));
        Query altre = db.prepared(QStringLiteral("SELECT 1 FROM Recursos WHERE recursos_nom = ? AND recursos_nom <> ?"));
        altre.bind(f.nom).bind(f.nomAnt).exec();
        if (altre.next())
            return mestres::refusa(m_io, Tradueix("El recurs ja existeix"));
        if (colorEnUs(f.color, f.nomAnt))
            return mestres::refusa(m_io, Tradueix("Color ja en ús. Selecciona un altre color"));
        if (f.grup && membresMarcats(f).isEmpty())
            return mestres::refusa(m_io, Tradueix("Falta marcar components del grup"));
        if (f.grup)
            f.assignaTemps = false;
        db.prepared(QStringLiteral("UPDATE Recursos SET recursos_nom = ?, recursos_grup = ?, recursos_color = ?, "
                                   "recursos_assigna_temps = ? WHERE recursos_nom = ?"))
            .bind(f.nom).bind(f.grup ? 1 : 0).bind(f.color).bind(f.assignaTemps ? 1 : 0).bind(f.nomAnt).exec();
        // Jobs, places, overtime rows and memberships follow the new name; then the group's
        // members are rewritten from the form.
        if (f.nom != f.nomAnt)
            referencies::reanomena(db, referencies::Tipus::Recurs, f.nomAnt, f.nom);
        escriuMembres(f.nom, f);
        t.commit();
        f.nomAnt = f.nom;
        m_sessio.RefrescarAgenda = true;
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioRecursos::EliminarRecurs(FitxaRecurs &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        Db &db = m_sessio.db();
        Transaction t(db);
        Query q = db.prepared(QStringLiteral("SELECT 1 FROM Recursos WHERE recursos_nom = ?"));
        q.bind(f.nom).exec();
        if (!q.next())
            return mestres::refusa(m_io, Tradueix("El recurs no existeix"));
        if (const referencies::Referencia *r = referencies::impedeixEsborrar(db, referencies::Tipus::Recurs, f.nom))
            return mestres::refusa(m_io, Tradueix(r->missatgeEsborrar));
        referencies::esborraDependents(db, referencies::Tipus::Recurs, f.nom);
        db.prepared(QStringLiteral("DELETE FROM Recursos WHERE recursos_nom = ?")).bind(f.nom).exec();
        t.commit();
        f = FitxaRecurs();
        m_sessio.RefrescarAgenda = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

int GestioRecursos::reparaColors()
{
    QRandomGenerator atzar(static_cast<quint32>(QDateTime::currentMSecsSinceEpoch()));
    return reparaColors(atzar);
}

int GestioRecursos::reparaColors(QRandomGenerator &atzar)
{
    Db &db = m_sessio.db();
    const QList<qint32> reservats = coloursReservats(m_sessio.cfg());
    Transaction t(db);
    QList<QPair<QString, qint32>> files;
    {
        Query q = db.prepared(QStringLiteral("SELECT recursos_nom, recursos_color FROM Recursos ORDER BY rowid"));
        q.exec();
        while (q.next())
            files.append({q.text(0), static_cast<qint32>(q.integer(1))});
    }
    int canviats = 0;
    for (const auto &[nom, color] : files) {
        if (!reservats.contains(color))
            continue;
        qint32 nou = 0;
        do {
            const int r = static_cast<int>(atzar.generateDouble() * 255);
            const int g = static_cast<int>(atzar.generateDouble() * 255);
            const int b = static_cast<int>(atzar.generateDouble() * 255);
            nou = r | (g << 8) | (b << 16);
        } while (colorEnUs(nou, QString()));
        db.prepared(QStringLiteral("UPDATE Recursos SET recursos_color = ? WHERE recursos_nom = ?")).bind(nou).bind(nom).exec();
        ++canviats;
    }
    t.commit();
    if (canviats)
        m_sessio.RefrescarAgenda = true;
    return canviats;
}

int reparaColorsRecursos(Sessio &sessio)
{
    InteraccioMuda mut;
    return GestioRecursos(sessio, mut).reparaColors();
}
