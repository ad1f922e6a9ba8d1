#include "serveis.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/referencies.h"
#include "core/sessio.h"
#include "core/traduccio.h"

GestioServeis::GestioServeis(Sessio &sessio, Interaccio &io) : m_sessio(sessio), m_io(io) {}

QStringList GestioServeis::noms()
{
    Query q = m_sessio.db().prepared(QStringLiteral("SELECT serveis_nom FROM Serveis ORDER BY serveis_nom"));
    q.exec();
    return q.columna();
}

bool GestioServeis::carrega(const QString &nom, FitxaServei &f)
{
    Query q = m_sessio.db().prepared(QStringLiteral(
        "SELECT serveis_nom, serveis_unitat, serveis_preu_un, serveis_minuts_per_unitat, serveis_comu_per_recursos, "
        "serveis_descripcio FROM Serveis WHERE serveis_nom = ?"));
    q.bind(nom).exec();
    if (!q.next())
        return false;
    f.nom = f.nomAnt = q.text(0);
    f.unitat = q.text(1);
    f.preu = format::preu(q.real(2));
    f.minuts = QString::number(q.integer(3));
    f.comu = q.boolean(4);
    f.descripcio = q.text(5);
    return true;
}

bool GestioServeis::campsAcceptats(FitxaServei &f, double *preu, int *minuts)
{
    if (f.unitat.isEmpty()) {
        mestres::refusa(m_io, Tradueix("Cal informar la unitat del servei"));
        return false;
    }
    if (!mestres::llegeixNombre(f.preu, preu) || *preu == 0.0) {
        mestres::refusa(m_io, Tradueix("Cal informar el preu unitari"));
        return false;
    }
    if (f.minuts.trimmed().isEmpty())
        f.minuts = QStringLiteral("0");
    if (!mestres::llegeixEnter16(f.minuts, minuts)) {
        mestres::refusa(m_io, Tradueix("La equivalencia en minuts ha de ser numèrica"));
        return false;
    }
    return true;
}

Resultat GestioServeis::AfegirServei(FitxaServei &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        double preu = 0.0;
        int minuts = 0;
        if (!campsAcceptats(f, &preu, &minuts))
            return Resultat::Refusat;
        Db &db = m_sessio.db();
        Transaction t(db);
        Query q = db.prepared(QStringLiteral("SELECT 1 FROM Serveis WHERE serveis_nom = ?"));
        q.bind(f.nom).exec();
        if (q.next())
            return mestres::refusa(m_io, Tradueix("El servei ja existeix"));
        db.prepared(QStringLiteral("INSERT INTO Serveis (serveis_nom, serveis_unitat, serveis_preu_un, "
                                   "serveis_minuts_per_unitat, serveis_comu_per_recursos, serveis_descripcio) "
                                   "VALUES (?, ?, ?, ?, ?, ?)"))
            .bind(f.nom).bind(f.unitat).bind(preu).bind(minuts).bind(f.comu ? 1 : 0).bind(f.descripcio).exec();
        t.commit();
        f.nomAnt = f.nom;
        return Resultat::Fet;
    });
}

Resultat GestioServeis::ModificarServei(FitxaServei &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty() || f.nomAnt.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        const QString &xecs = m_sessio.cfg().ServeiXecs;
        if (!xecs.isEmpty() && f.nomAnt == xecs && f.nom != xecs)
            return mestres::refusa(m_io, Tradueix("No es pot modificar el nom del servei dels xecs"));
        double preu = 0.0;
        int minuts = 0;
        if (!campsAcceptats(f, &preu, &minuts))
            return Resultat::Refusat;
        Db &db = m_sessio.db();
        Transaction t(db);
        Query q = db.prepared(QStringLiteral("SELECT 1 FROM Serveis WHERE serveis_nom = ?"));
        q.bind(f.nomAnt).exec();
        if (!q.next())
            return mestres::refusa(m_io, Tradueix("El servei no existeix"));
        Query altre = db.prepared(QStringLiteral("SELECT 1 FROM Serveis WHERE serveis_nom = ? AND serveis_nom <> ?"));
        altre.bind(f.nom).bind(f.nomAnt).exec();
        if (altre.next())
            return mestres::refusa(m_io, Tradueix("El servei ja existeix"));
        db.prepared(QStringLiteral("UPDATE Serveis SET serveis_nom = ?, serveis_unitat = ?, serveis_preu_un = ?, "
                                   "serveis_minuts_per_unitat = ?, serveis_comu_per_recursos = ?, "
                                   "serveis_descripcio = ? WHERE serveis_nom = ?"))
            .bind(f.nom).bind(f.unitat).bind(preu).bind(minuts).bind(f.comu ? 1 : 0).bind(f.descripcio).bind(f.nomAnt)
            .exec();
        if (f.nom != f.nomAnt)
            referencies::reanomena(db, referencies::Tipus::Servei, f.nomAnt, f.nom);
        t.commit();
        f.nomAnt = f.nom;
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioServeis::EliminarServei(FitxaServei &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        const QString &xecs = m_sessio.cfg().ServeiXecs;
        Db &db = m_sessio.db();
        Transaction t(db);
        Query q = db.prepared(QStringLiteral("SELECT serveis_nom FROM Serveis WHERE serveis_nom = ?"));
        q.bind(f.nom).exec();
        const bool trobat = q.next();
        // The name typed may differ in case from the stored one; the stored row is what matters.
        if (!xecs.isEmpty() && (f.nom == xecs || (trobat && q.text(0) == xecs)))
            return mestres::refusa(m_io, Tradueix("No es pot eliminar el servei dels xecs"));
        if (!trobat)
            return mestres::refusa(m_io, Tradueix("El servei no existeix"));
        if (const referencies::Referencia *r = referencies::impedeixEsborrar(db, referencies::Tipus::Servei, f.nom))
            return mestres::refusa(m_io, Tradueix(r->missatgeEsborrar));
        referencies::esborraDependents(db, referencies::Tipus::Servei, f.nom);
        db.prepared(QStringLiteral("DELETE FROM Serveis WHERE serveis_nom = ?")).bind(f.nom).exec();
        t.commit();
        f = FitxaServei();
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}
