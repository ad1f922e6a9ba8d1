#include "clients.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/referencies.h"
#include "core/sessio.h"
#include "core/traduccio.h"

GestioClients::GestioClients(Sessio &sessio, Interaccio &io) : m_sessio(sessio), m_io(io) {}

QStringList GestioClients::noms()
{
    Query q = m_sessio.db().prepared(QStringLiteral("SELECT clients_nom FROM Clients ORDER BY clients_nom"));
    q.exec();
    return q.columna();
}

bool GestioClients::carrega(const QString &nom, FitxaClient &f)
{
    Query q = m_sessio.db().prepared(QStringLiteral(
        "SELECT clients_nom, clients_NIF, \"clients_adreça\", clients_poblacio, clients_codi_postal, "
        "clients_telefons, clients_ccc, clients_email, clients_data_alta, clients_xecs, clients_observacions "
        "FROM Clients WHERE clients_nom = ?"));
    q.bind(nom).exec();
    if (!q.next())
        return false;
    f.nom = f.nomAnt = q.text(0);
    f.nif = q.text(1);
    f.adreca = q.text(2);
    f.poblacio = q.text(3);
    f.codiPostal = q.text(4);
    f.telefons = q.text(5);
    f.ccc = q.text(6);
    f.email = q.text(7);
    f.dataAlta = format::dataCurta(q.date(8));
    f.xecs = q.boolean(9);
    f.observacions = q.text(10);
    return true;
}

bool GestioClients::teXecs(const QString &nom)
{
    Query q = m_sessio.db().prepared(QStringLiteral("SELECT clients_xecs FROM Clients WHERE clients_nom = ?"));
    q.bind(nom).exec();
    return q.next() && q.boolean(0);
}

bool GestioClients::existeix(const QString &nom)
{
    Query q = m_sessio.db().prepared(QStringLiteral("SELECT 1 FROM Clients WHERE clients_nom = ?"));
    q.bind(nom).exec();
    return q.next();
}

Resultat GestioClients::AfegirClient(FitxaClient &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        Db &db = m_sessio.db();
        Transaction t(db);
        if (existeix(f.nom))
            return mestres::refusa(m_io, Tradueix("El client ja existeix"));
        const QDate alta = avui();
        db.prepared(QStringLiteral(
                        "INSERT INTO Clients (clients_nom, clients_NIF, \"clients_adreça\", clients_poblacio, "
                        "clients_codi_postal, clients_telefons, clients_ccc, clients_email, clients_data_alta, "
                        "clients_xecs, clients_observacions) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"))
            .bind(f.nom).bind(f.nif).bind(f.adreca).bind(f.poblacio).bind(f.codiPostal).bind(f.telefons)
            .bind(f.ccc).bind(f.email).bind(alta).bind(f.xecs ? 1 : 0).bind(f.observacions)
            .exec();
        t.commit();
        f.nomAnt = f.nom;
        f.dataAlta = format::dataCurta(alta);
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioClients::ModificarClient(FitxaClient &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty() || f.nomAnt.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        Db &db = m_sessio.db();
        Transaction t(db);
        if (!existeix(f.nomAnt))
            return mestres::refusa(m_io, Tradueix("El client no existeix"));
        if (f.xecs) {
            Query q = db.prepared(QStringLiteral("SELECT 1 FROM Llocs WHERE clients_nom = ? AND llocs_quota <> 0"));
            q.bind(f.nomAnt).exec();
            if (q.next())
                return mestres::refusa(m_io, Tradueix("El client té llocs amb quota. No pot tenir xecs"));
        }
        // A different name that is already taken (a change of case alone finds the row itself).
        {
            Query q = db.prepared(QStringLiteral("SELECT 1 FROM Clients WHERE clients_nom = ? AND clients_nom <> ?"));
            q.bind(f.nom).bind(f.nomAnt).exec();
            if (q.next())
                return mestres::refusa(m_io, Tradueix("El client ja existeix"));
        }
        QVariant alta;
        if (!f.dataAlta.trimmed().isEmpty()) {
            const QDate d = format::llegeixData(f.dataAlta);
            if (!d.isValid())
                throw mestres::ErrorAccio(QStringLiteral("Data no vàlida: ") + f.dataAlta.trimmed());
            alta = d.toString(Qt::ISODate);
        }
        db.prepared(QStringLiteral(
                        "UPDATE Clients SET clients_nom = ?, clients_NIF = ?, \"clients_adreça\" = ?, clients_poblacio = ?, "
                        "clients_codi_postal = ?, clients_telefons = ?, clients_ccc = ?, clients_email = ?, "
                        "clients_data_alta = ?, clients_xecs = ?, clients_observacions = ? WHERE clients_nom = ?"))
            .bind(f.nom).bind(f.nif).bind(f.adreca).bind(f.poblacio).bind(f.codiPostal).bind(f.telefons)
            .bind(f.ccc).bind(f.email).bind(alta).bind(f.xecs ? 1 : 0).bind(f.observacions).bind(f.nomAnt)
            .exec();
        if (f.nom != f.nomAnt)
            referencies::reanomena(db, referencies::Tipus::Client, f.nomAnt, f.nom);
        t.commit();
        f.nomAnt = f.nom;
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}

Resultat GestioClients::EliminarClient(FitxaClient &f)
{
    f.nom = f.nom.trimmed();
    if (f.nom.isEmpty())
        return Resultat::Res;
    return mestres::protegeix(m_io, [&] {
        Db &db = m_sessio.db();
        Transaction t(db);
        if (!existeix(f.nom))
            return mestres::refusa(m_io, Tradueix("El client no existeix"));
        if (const referencies::Referencia *r = referencies::impedeixEsborrar(db, referencies::Tipus::Client, f.nom))
            return mestres::refusa(m_io, Tradueix(r->missatgeEsborrar));
        referencies::esborraDependents(db, referencies::Tipus::Client, f.nom);
        db.prepared(QStringLiteral("DELETE FROM Clients WHERE clients_nom = ?")).bind(f.nom).exec();
        t.commit();
        f = FitxaClient();
        m_sessio.RefrescarFacturacio = true;
        m_sessio.Desfer.netejaDadesMestres();
        return Resultat::Fet;
    });
}
