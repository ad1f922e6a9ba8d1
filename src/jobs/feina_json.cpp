#include "feina_json.h"

namespace {
QString dataIso(const QDate &d)
{
    return d.isValid() ? d.toString(Qt::ISODate) : QString(QLatin1String(""));
}
} // namespace

QJsonObject feinaAJson(const Feina &f)
{
    return QJsonObject{
        {QStringLiteral("missatge"), f.missatge},
        {QStringLiteral("feines_id"), f.feines_id},
        {QStringLiteral("llocs_nom"), f.llocs_nom},
        {QStringLiteral("feines_data"), dataIso(f.feines_data)},
        {QStringLiteral("feines_hora_inici"), f.feines_hora_inici},
        {QStringLiteral("feines_hora_fi"), f.feines_hora_fi},
        {QStringLiteral("recursos_nom"), f.recursos_nom},
        {QStringLiteral("feines_feta"), f.feines_feta},
        {QStringLiteral("feines_data_factura"), dataIso(f.feines_data_factura)},
        {QStringLiteral("feines_observacions"), f.feines_observacions},
    };
}
