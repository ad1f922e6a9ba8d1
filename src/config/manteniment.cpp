#include "manteniment.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <stdexcept>

namespace manteniment {

QString fitxerCompactacio(const QString &baseDades)
{
    return QFileInfo(baseDades).absoluteDir().filePath(QStringLiteral("BDcompact.db"));
}

ResultatPurga Purga_BD(Sessio &sessio, const QString &dataText, Interaccio &ui, const QDateTime &ara)
{
    ResultatPurga r;
    const QDate fins = format::llegeixData(dataText.trimmed());
    if (!fins.isValid()) {
        ui.informa(QStringLiteral("Quadrella"), Tradueix("Data incorrecta"));
        return r;
    }
    if (!ui.pregunta(Tradueix("ESBORRAT DE FEINES"),
                     Tradueix("Vols esborrar les feines fins al") + QLatin1Char(' ') + dataText + QLatin1Char('?')))
        return r;

    Db &db = sessio.db();
    r.copia = nomCopiaDatada(db.path(), ara);
    copia_segura::copiaVerificada(db, r.copia + QStringLiteral(".part"), r.copia);

    // Vouchers first: they point at the jobs that go. A job's service lines go with it.
    Transaction t(db);
    Query xecs = db.query(QStringLiteral(
        "DELETE FROM Xecs WHERE feines_id IN (SELECT feines_id FROM Feines WHERE feines_data <= ?)"));
    xecs.bind(fins).exec();
    r.xecs = xecs.rowsAffected();
    Query feines = db.query(QStringLiteral("DELETE FROM Feines WHERE feines_data <= ?"));
    feines.bind(fins).exec();
    r.feines = feines.rowsAffected();
    t.commit();
    r.fet = true;

    ui.informa(QStringLiteral("Quadrella"), QString::number(r.feines) + Tradueix(" feines esborrades."));
    sessio.RefrescarAgenda = true;
    sessio.RefrescarFacturacio = true;
    sessio.CompactarBD = true;
    sessio.Desfer.neteja(Tradueix("depuració de feines"));
    return r;
}

ResultatCompactacio compactaBaseDades(const QString &fitxer, const copia_segura::Observador &observador)
{
    const QFileInfo fi(fitxer);
    if (!fi.isFile())
        throw std::runtime_error(QStringLiteral("No existeix la base de dades %1").arg(fitxer).toStdString());
    ResultatCompactacio r;
    r.midaAbans = fi.size();
    const QString temporal = fitxerCompactacio(fitxer);
    {
        Db db;
        db.open(fitxer);
        // Everything in the write-ahead log goes into the main file first, so that the snapshot
        // and the file it replaces agree.
        db.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
        copia_segura::escriuInstantania(db, temporal);
        try {
            if (observador)
                observador(copia_segura::Etapa::Escrita, temporal);
        } catch (...) {
            QFile::remove(temporal);
            throw;
        }
        db.close();
    }
    // The last connection to close removes the write-ahead log; one left behind means another
    // connection still has the file open, and replacing the file under it would lose its writes.
    if (QFileInfo::exists(fitxer + QStringLiteral("-wal"))) {
        QFile::remove(temporal);
        throw std::runtime_error(
            QStringLiteral("La base de dades %1 és oberta per un altre programa").arg(fitxer).toStdString());
    }
    copia_segura::instal_la(temporal, fitxer, observador);
    r.midaDespres = QFileInfo(fitxer).size();
    return r;
}

} // namespace manteniment
