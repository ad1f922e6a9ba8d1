#include "referencies.h"

#include "db.h"
#include "formats.h"
#include "traduccio.h"

namespace referencies {

namespace {

const Mestra mestres[] = {
    {Tipus::Client, "Clients", "clients_nom"},
    {Tipus::Lloc, "Llocs", "llocs_nom"},
    {Tipus::Recurs, "Recursos", "recursos_nom"},
    {Tipus::Servei, "Serveis", "serveis_nom"},
    {Tipus::Feina, "Feines", "feines_id"},
};

QString identificador(const char *nom)
{
    return QLatin1Char('"') + QString::fromUtf8(nom) + QLatin1Char('"');
}

// The columns that tell a row of `taula` apart, for the report: its primary key, else its rowid.
QString clauFila(Db &db, const QString &taula)
{
    Query q = db.query(QStringLiteral("SELECT name FROM pragma_table_info(?) WHERE pk > 0 ORDER BY pk"));
    q.bind(taula).exec();
    QStringList parts;
    for (const QString &c : q.columna())
        parts << QStringLiteral("'%1=' || COALESCE(t.\"%1\", '')").arg(c);
    return parts.isEmpty() ? QStringLiteral("'rowid=' || t.rowid") : parts.join(QStringLiteral(" || ', ' || "));
}

} // namespace

const Mestra &mestra(Tipus tipus)
{
    for (const Mestra &m : mestres) {
        if (m.tipus == tipus)
            return m;
    }
    return mestres[0];
}

const QList<Referencia> &totes()
{
    static const QList<Referencia> llista = {
        {Tipus::Client, "Llocs", "clients_nom", EnEsborrar::Refusa, PerTraduir("El client té llocs. No es pot eliminar"), "",
         PerTraduir("Llocs d'un client que no existeix")},
        {Tipus::Client, "Xecs", "clients_nom", EnEsborrar::Refusa, PerTraduir("El client té xecs. No es pot eliminar"), "",
         PerTraduir("Xecs d'un client que no existeix")},
        {Tipus::Client, "Pagaments", "clients_nom", EnEsborrar::Refusa,
         PerTraduir("El client té pagaments a compte. No es pot eliminar"), "",
         PerTraduir("Pagaments d'un client que no existeix")},

        {Tipus::Lloc, "Feines", "llocs_nom", EnEsborrar::Refusa, PerTraduir("El lloc té feines. No es pot eliminar"), "",
         PerTraduir("Feines d'un lloc que no existeix")},
        {Tipus::Lloc, "Llocs_Serveis", "llocs_nom", EnEsborrar::Esborra, "", "",
         PerTraduir("Serveis d'un lloc que no existeix")},

        {Tipus::Recurs, "Feines", "recursos_nom", EnEsborrar::Refusa, PerTraduir("El recurs té feines. No es pot eliminar"), "",
         PerTraduir("Feines d'un recurs que no existeix")},
        {Tipus::Recurs, "Recursos_Components", "recursos_component_nom", EnEsborrar::Refusa,
         PerTraduir("El recurs és membre d'un grup. No es pot eliminar"), "",
         PerTraduir("Membres d'un grup que no existeixen")},
        {Tipus::Recurs, "Llocs", "recursos_nom", EnEsborrar::Refusa,
         PerTraduir("El recurs és el recurs per defecte d'un lloc. No es pot eliminar"), "",
         PerTraduir("Llocs amb un recurs per defecte que no existeix")},
        {Tipus::Recurs, "Hores_Fetes", "recursos_nom", EnEsborrar::Refusa,
         PerTraduir("El recurs té hores extra. No es pot eliminar"), "",
         PerTraduir("Hores extra d'un recurs que no existeix")},
        // A group's own list of members goes with it.
        {Tipus::Recurs, "Recursos_Components", "recursos_nom", EnEsborrar::Esborra, "", "m.recursos_grup <> 0",
         PerTraduir("Membres d'un recurs que no és un grup")},

        {Tipus::Servei, "Llocs_Serveis", "serveis_nom", EnEsborrar::Refusa,
         PerTraduir("El servei és als serveis d'un lloc. No es pot eliminar"), "",
         PerTraduir("Serveis de lloc d'un servei que no existeix")},
        {Tipus::Servei, "Feines_Detall", "serveis_nom", EnEsborrar::Refusa,
         PerTraduir("El servei és a les línies d'una feina. No es pot eliminar"), "",
         PerTraduir("Línies de feina d'un servei que no existeix")},

        // Jobs are deleted by the job engine (their lines go by the foreign key, their vouchers
        // are freed); these two are here for the invariants.
        {Tipus::Feina, "Feines_Detall", "feines_id", EnEsborrar::Esborra, "", "",
         PerTraduir("Línies de servei sense la seva feina")},
        {Tipus::Feina, "Xecs", "feines_id", EnEsborrar::Esborra, "", "", PerTraduir("Xecs d'una feina que no existeix")},
    };
    return llista;
}

QList<Referencia> de(Tipus tipus)
{
    QList<Referencia> r;
    for (const Referencia &ref : totes()) {
        if (ref.tipus == tipus)
            r << ref;
    }
    return r;
}

void reanomena(Db &db, Tipus tipus, const QString &antic, const QString &nou)
{
    for (const Referencia &r : totes()) {
        if (r.tipus != tipus || !r.esReanomena())
            continue;
        db.prepared(QStringLiteral("UPDATE %1 SET %2 = ? WHERE %2 = ?").arg(identificador(r.taula), identificador(r.columna)))
            .bind(nou)
            .bind(antic)
            .exec();
    }
}

const Referencia *impedeixEsborrar(Db &db, Tipus tipus, const QString &nom)
{
    for (const Referencia &r : totes()) {
        if (r.tipus != tipus || r.enEsborrar != EnEsborrar::Refusa)
            continue;
        Query q = db.prepared(
            QStringLiteral("SELECT 1 FROM %1 WHERE %2 = ? LIMIT 1").arg(identificador(r.taula), identificador(r.columna)));
        q.bind(nom).exec();
        if (q.next())
            return &r;
    }
    return nullptr;
}

void esborraDependents(Db &db, Tipus tipus, const QString &nom)
{
    for (const Referencia &r : totes()) {
        if (r.tipus != tipus || r.enEsborrar != EnEsborrar::Esborra)
            continue;
        db.prepared(QStringLiteral("DELETE FROM %1 WHERE %2 = ?").arg(identificador(r.taula), identificador(r.columna)))
            .bind(nom)
            .exec();
    }
}

QList<Trencada> trencades(Db &db)
{
    QList<Trencada> r;
    for (const Referencia &ref : totes()) {
        const Mestra &m = mestra(ref.tipus);
        const QString condicio = *ref.condicio ? QStringLiteral(" AND ") + QString::fromUtf8(ref.condicio) : QString();
        // An empty name (or job 0) refers to nothing, which is allowed.
        const QString cap = ref.tipus == Tipus::Feina ? QStringLiteral("0") : QStringLiteral("''");
        Query q = db.query(QStringLiteral("SELECT %1, t.%2 FROM %3 t WHERE t.%2 IS NOT NULL AND t.%2 <> %7 "
                                          "AND NOT EXISTS (SELECT 1 FROM %4 m WHERE m.%5 = t.%2%6) ORDER BY 1")
                               .arg(clauFila(db, QString::fromUtf8(ref.taula)), identificador(ref.columna),
                                    identificador(ref.taula), identificador(m.taula), identificador(m.columna), condicio, cap));
        while (q.next())
            r.append({&ref, q.text(0), q.text(1)});
    }
    return r;
}

} // namespace referencies
