#include "copia_segura.h"

#include "db.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <stdexcept>
#include <unistd.h>

namespace copia_segura {

namespace {

[[noreturn]] void falla(const QString &text)
{
    throw std::runtime_error(text.toStdString());
}

QString errorSistema()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

void sincronitza(const QString &cami, bool directori)
{
    const QByteArray nom = QFile::encodeName(cami);
    const int fd = ::open(nom.constData(), directori ? (O_RDONLY | O_DIRECTORY) : O_RDWR);
    if (fd < 0)
        falla(QStringLiteral("No es pot obrir %1: %2").arg(cami, errorSistema()));
    const int r = ::fsync(fd);
    const QString error = r != 0 ? errorSistema() : QString();
    ::close(fd);
    if (r != 0)
        falla(QStringLiteral("No es pot desar a disc %1: %2").arg(cami, error));
}

void esborraTemporal(const QString &temporal)
{
    QFile::remove(temporal);
    QFile::remove(temporal + QStringLiteral("-journal"));
}

} // namespace

QString nomCopiaDatada(const QString &baseDades, const QDateTime &moment)
{
    const QFileInfo fi(baseDades);
    const QString suffix = fi.suffix();
    QString base = fi.absoluteFilePath();
    if (!suffix.isEmpty())
        base.chop(suffix.size() + 1);
    const QString segell = moment.toString(QStringLiteral("yyyyMMddHHmmss"));
    return suffix.isEmpty() ? base + segell : base + segell + QLatin1Char('.') + suffix;
}

void escriuInstantania(Db &db, const QString &temporal)
{
    esborraTemporal(temporal);
    try {
        // VACUUM INTO refuses an existing file, and takes the name as a bound value.
        db.query(QStringLiteral("VACUUM INTO ?")).bind(temporal).exec();
    } catch (...) {
        esborraTemporal(temporal);
        throw;
    }
}

QString integritat(const QString &fitxer)
{
    if (!QFileInfo(fitxer).isFile())
        return QStringLiteral("no existeix %1").arg(fitxer);
    sqlite3 *h = nullptr;
    // Read-write without creating: a copy made by VACUUM INTO is in rollback mode, so reading it
    // leaves no side files behind.
    int rc = sqlite3_open_v2(QFile::encodeName(fitxer).constData(), &h, SQLITE_OPEN_READWRITE, nullptr);
    QStringList resultat;
    if (rc == SQLITE_OK) {
        // The name indexes are in the program's own order; checking them needs its collation.
        registraColacio(h);
        sqlite3_stmt *st = nullptr;
        rc = sqlite3_prepare_v2(h, "PRAGMA integrity_check", -1, &st, nullptr);
        if (rc == SQLITE_OK) {
            while ((rc = sqlite3_step(st)) == SQLITE_ROW)
                resultat << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, 0)));
            if (rc != SQLITE_DONE)
                resultat << QString::fromUtf8(sqlite3_errmsg(h));
        } else {
            resultat << QString::fromUtf8(sqlite3_errmsg(h));
        }
        sqlite3_finalize(st);
    } else {
        resultat << QString::fromUtf8(h ? sqlite3_errmsg(h) : sqlite3_errstr(rc));
    }
    sqlite3_close_v2(h);
    if (resultat.isEmpty())
        return QStringLiteral("sense resposta");
    return resultat.join(QLatin1Char('\n'));
}

void instal_la(const QString &temporal, const QString &desti, const Observador &observador)
{
    try {
        sincronitza(temporal, false);
        if (observador)
            observador(Etapa::Sincronitzada, temporal);
        const QString estat = integritat(temporal);
        if (estat != QLatin1String("ok"))
            falla(QStringLiteral("La còpia %1 no és correcta: %2").arg(temporal, estat));
        if (observador)
            observador(Etapa::Comprovada, temporal);
        // rename() replaces the destination in one step: a reader sees the old file or the new one.
        if (::rename(QFile::encodeName(temporal).constData(), QFile::encodeName(desti).constData()) != 0)
            falla(QStringLiteral("No es pot reanomenar %1 com a %2: %3").arg(temporal, desti, errorSistema()));
    } catch (...) {
        esborraTemporal(temporal);
        throw;
    }
    sincronitza(QFileInfo(desti).absolutePath(), true);
    if (observador)
        observador(Etapa::Instal_lada, desti);
}

void copiaVerificada(Db &db, const QString &temporal, const QString &desti, const Observador &observador)
{
    escriuInstantania(db, temporal);
    if (observador) {
        try {
            observador(Etapa::Escrita, temporal);
        } catch (...) {
            esborraTemporal(temporal);
            throw;
        }
    }
    instal_la(temporal, desti, observador);
}

} // namespace copia_segura
