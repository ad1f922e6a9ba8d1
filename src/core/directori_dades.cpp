#include "directori_dades.h"

#include "configuracio.h"
#include "db.h"
#include "ini.h"
#include "traduccio.h"
#include "versions_esquema.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <stdexcept>

namespace directori_dades {

QString resol(const QString &opcio, const QString &variableEntorn, const QString &dirExecutable, const QString &dirInici)
{
    if (!opcio.isEmpty())
        return QDir(opcio).absolutePath();
    if (!variableEntorn.isEmpty())
        return QDir(variableEntorn).absolutePath();
    if (!dirExecutable.isEmpty() && QFileInfo::exists(QDir(dirExecutable).filePath(QStringLiteral("Quadrella.ini"))))
        return QDir(dirExecutable).absolutePath();
    return QDir(dirInici).filePath(QStringLiteral(".local/share/Quadrella"));
}

QString resol(const QString &opcio)
{
    const QString dirExe = QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    return resol(opcio, qEnvironmentVariable("QUADRELLA_DIR"), dirExe, QDir::homePath());
}

QString fitxerIni(const QString &dir)
{
    return QDir(dir).filePath(QStringLiteral("Quadrella.ini"));
}

QString fitxerTraduccio(const QString &dir)
{
    return QDir(dir).filePath(QStringLiteral("QuadrellaTraduccio.db"));
}

QString esquemaSql()
{
    QFile f(QStringLiteral(":/src/core/schema.sql"));
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error("schema.sql is not in the program's resources");
    return QString::fromUtf8(f.readAll());
}

void creaEsquema(Db &db)
{
    // Only a file without tables takes the current version: an older one is the migration's.
    const bool nova = versions_esquema::versio(db) == 0;
    Transaction t(db);
    db.execScript(esquemaSql());
    if (nova)
        db.exec(QStringLiteral("PRAGMA user_version=%1").arg(versions_esquema::Actual));
    t.commit();
}

namespace {

void escriuIniNou(const QString &path, const QString &dir)
{
    QString text;
    QString seccio;
    for (const Configuracio::Clau &c : Configuracio::claus(dir)) {
        const QString s = QString::fromLatin1(c.seccio);
        if (s != seccio) {
            if (!seccio.isEmpty())
                text += QLatin1Char('\n');
            text += QLatin1Char('[') + s + QLatin1String("]\n");
            seccio = s;
        }
        // A value with blanks at either end is quoted, or reading it back would trim them.
        const bool quote = c.perDefecte != c.perDefecte.trimmed();
        const QString value = quote ? QLatin1Char('"') + c.perDefecte + QLatin1Char('"') : c.perDefecte;
        text += QString::fromLatin1(c.clau) + QLatin1Char('=') + value + QLatin1Char('\n');
    }
    text += QStringLiteral("\n[Idiomes]\n(CT) Català\n(ES) Castellano\n(EN) English\n");
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        throw std::runtime_error(QStringLiteral("No es pot crear %1: %2").arg(path, f.errorString()).toStdString());
    f.write(text.toUtf8());
    if (!f.commit())
        throw std::runtime_error(QStringLiteral("No es pot crear %1: %2").arg(path, f.errorString()).toStdString());
}

} // namespace

QStringList inicialitza(const QString &dir, BaseNegoci base)
{
    QStringList creats;
    if (!QDir().mkpath(dir))
        throw std::runtime_error(QStringLiteral("No es pot crear el directori de dades %1").arg(dir).toStdString());

    const QString ini = fitxerIni(dir);
    if (!QFileInfo::exists(ini)) {
        escriuIniNou(ini, dir);
        creats << ini;
    }

    // The business database is new only at its default place, and (from the desktop program)
    // only on the first run. A BaseDades naming a missing file elsewhere is left for the session
    // to report: a new empty file there would let the office work on in the wrong database.
    const Configuracio cfg = Configuracio::carrega(dir);
    const bool alLlocPerDefecte = QFileInfo(cfg.BaseDades).absoluteFilePath()
        == QFileInfo(QDir(dir).filePath(Configuracio::nomFitxerBaseDades())).absoluteFilePath();
    if (!QFileInfo::exists(cfg.BaseDades) && alLlocPerDefecte && (base == BaseNegoci::Crea || cfg.PrimeraExecucio)) {
        QDir().mkpath(QFileInfo(cfg.BaseDades).absolutePath());
        Db db;
        db.open(cfg.BaseDades);
        creaEsquema(db);
        db.close();
        creats << cfg.BaseDades;
    }

    const QString trad = fitxerTraduccio(dir);
    if (!QFileInfo::exists(trad)) {
        Db db;
        db.open(trad);
        creaTaulaTraduccio(db);
        db.close();
        creats << trad;
    }
    return creats;
}

} // namespace directori_dades
