#include "arrencada.h"

#include "manteniment.h"

#include "core/configuracio.h"
#include "core/formats.h"
#include "core/ini.h"
#include "core/interaccio.h"
#include "core/sessio.h"
#include "core/traduccio.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace arrencada {

QString nomAjudaIdioma(const QString &idioma)
{
    return QStringLiteral("QuadrellaV%1%2.html").arg(QUADRELLA_VERSION_MAJOR, 2, 10, QLatin1Char('0')).arg(idioma);
}

QString nomAjudaGeneral()
{
    return QStringLiteral("Quadrella.html");
}

int instalaManual(const QString &dirRecursos, const QString &dirAjuda)
{
    const QDir origen(dirRecursos);
    if (!origen.exists())
        return 0;
    const QStringList pagines = origen.entryList(QDir::Files, QDir::Name);
    if (pagines.isEmpty() || !QDir().mkpath(dirAjuda))
        return 0;
    int copiades = 0;
    for (const QString &p : pagines) {
        const QString desti = QDir(dirAjuda).filePath(p);
        if (QFileInfo::exists(desti))
            continue;
        if (QFile::copy(origen.filePath(p), desti)) {
            // Files out of the resources come read-only; the user may want to edit their copy.
            QFile::setPermissions(desti, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup
                                             | QFileDevice::ReadOther);
            ++copiades;
        }
    }
    return copiades;
}

QString cercaAjuda(const QString &dirAjuda, const QString &idioma, Interaccio &ui)
{
    const QString propi = QDir(dirAjuda).filePath(nomAjudaIdioma(idioma));
    if (QFileInfo(propi).isFile())
        return propi;
    const QString general = QDir(dirAjuda).filePath(nomAjudaGeneral());
    if (QFileInfo(general).isFile())
        return general;
    ui.informa(Tradueix("AVÍS"), Tradueix("Fitxer d'ajuda '") + general + Tradueix("' no trobat"));
    return QString();
}

void tancaSessio(Sessio &sessio, Interaccio &ui, const copia_segura::Observador &observador)
{
    const Configuracio &cfg = sessio.cfg();
    if (!cfg.PrimeraExecucio) {
        if (!EscriureIni(cfg.fitxerIni, QStringLiteral("Estat"), QStringLiteral("UltimDiaGen"),
                         format::dataCurta(cfg.UltimDiaGen)))
            ui.error(QStringLiteral("ERROR"), Tradueix("Error al gravar .ini"));
    }
    sessio.db().close();
    sessio.dbTraduccio().close();
    if (sessio.CompactarBD) {
        // The file named in the settings now: the one this session used, unless the
        // configuration dialog pointed the next run elsewhere.
        const QString fitxer = LlegirIni(cfg.fitxerIni, QStringLiteral("General"), QStringLiteral("BaseDades"),
                                         QDir(cfg.dirDades).filePath(Configuracio::nomFitxerBaseDades()));
        const QString absolut = QDir::isRelativePath(fitxer) ? QDir(cfg.dirDades).filePath(fitxer) : fitxer;
        manteniment::compactaBaseDades(absolut, observador);
        sessio.CompactarBD = false;
    }
}

} // namespace arrencada
