#include "protegeix.h"

#include "core/configuracio.h"
#include "core/db.h"

QString descripcioError(const std::exception &e)
{
    if (auto *d = dynamic_cast<const DbError *>(&e))
        return d->text();
    if (auto *c = dynamic_cast<const ConfigError *>(&e))
        return c->text();
    return QString::fromUtf8(e.what());
}

bool protegeix(Interaccio &ui, const std::function<void()> &accio)
{
    try {
        accio();
        return true;
    } catch (const std::exception &e) {
        ui.error(QStringLiteral("ERROR"), QStringLiteral("Error:") + descripcioError(e));
    }
    return false;
}
