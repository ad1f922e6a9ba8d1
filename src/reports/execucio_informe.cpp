#include "execucio_informe.h"

#include "impressora.h"

#include "core/db.h"

#include <exception>

QString executaInforme(Impressora &imp, const Informe &informe)
{
    QString error;
    try {
        informe(imp);
    } catch (const DbError &e) {
        error = QStringLiteral("Error:") + e.text();
    } catch (const std::exception &e) {
        error = QStringLiteral("Error:") + QString::fromUtf8(e.what());
    }
    try {
        imp.acabaDocument();
    } catch (const std::exception &e) {
        if (error.isEmpty())
            error = QStringLiteral("Error:") + QString::fromUtf8(e.what());
    }
    return error;
}
