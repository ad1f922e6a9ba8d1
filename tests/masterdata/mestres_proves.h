#pragma once
// What the master-data tests share: a session on a throw-away data directory with a scripted
// user, a picture of every table to prove that a refused action wrote nothing, and short
// readers of what the user was told.

#include "core/db.h"
#include "core/sessio.h"
#include "support/entorn_proves.h"

#include <QStringList>
#include <QTest>
#include <memory>

// An action's result and the messages it showed, one per line ("" for none); forgets them.
#define ESPERA(e, accio, resultat, text)                                                        \
    do {                                                                                        \
        QCOMPARE(accio, resultat);                                                              \
        QCOMPARE((e).missatges().join(QLatin1Char('\n')), QString(text));                      \
    } while (false)

struct EntornMestres {
    DirectoriProva dir;
    std::unique_ptr<Sessio> sessio;
    InteraccioGuio io;

    EntornMestres() : sessio(dir.obreSessio()) {}
    Db &db() { return sessio->db(); }
    Configuracio &cfg() { return sessio->cfg(); }

    // Every row of every business table, so a test can compare before and after.
    QString instantania()
    {
        QString out;
        for (const char *taula : {"Clients", "Llocs", "Llocs_Serveis", "Recursos", "Recursos_Components", "Serveis",
                                  "Feines", "Feines_Detall", "Xecs", "Pagaments"})
            out += dades_prova::files(db(), QStringLiteral("SELECT '%1', * FROM %1 ORDER BY 2, 3").arg(QLatin1String(taula))).join('\n');
        return out;
    }

    // The texts of the messages shown since the last call, of one kind ("informa", "pregunta",
    // "error"; empty for all), and forget them.
    QStringList missatges(const QString &tipus = QString())
    {
        QStringList out;
        for (const auto &c : io.crides)
            if (tipus.isEmpty() || c.tipus == tipus)
                out << c.text;
        io.crides.clear();
        return out;
    }

    qint64 compte(const QString &sql, const QVariantList &valors = {}) { return dades_prova::valor(db(), sql, valors); }

    // The first column of the first row ("NULL" for none).
    QString text(const QString &sql, const QVariantList &valors = {}) { return dades_prova::files(db(), sql, valors).value(0); }
};
