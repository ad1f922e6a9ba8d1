#include "fitxers_instal_lats.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace fitxers_instal_lats {

QString dir(const QString &dirExecutable, const QString &sub)
{
    if (dirExecutable.isEmpty())
        return QString();
    const QString cami = QDir::cleanPath(dirExecutable + QStringLiteral("/../share/quadrella/") + sub);
    return QFileInfo(cami).isDir() ? cami : QString();
}

QString dir(const QString &sub)
{
    return dir(QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString(), sub);
}

} // namespace fitxers_instal_lats
