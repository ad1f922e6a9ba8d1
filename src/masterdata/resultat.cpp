#include "resultat.h"

#include "core/db.h"
#include "core/formats.h"
#include "core/interaccio.h"

#include <limits>

namespace mestres {

Resultat protegeix(Interaccio &io, const std::function<Resultat()> &accio)
{
    try {
        return accio();
    } catch (const DbError &e) {
        io.error(QStringLiteral("ERROR"), QStringLiteral("Error:") + e.text());
    } catch (const ErrorAccio &e) {
        io.error(QStringLiteral("ERROR"), QStringLiteral("Error:") + e.text());
    } catch (const std::exception &e) {
        io.error(QStringLiteral("ERROR"), QStringLiteral("Error:") + QString::fromUtf8(e.what()));
    }
    return Resultat::Error;
}

Resultat refusa(Interaccio &io, const QString &text)
{
    io.informa(QString(), text);
    return Resultat::Refusat;
}

bool llegeixNombre(const QString &text, double *valor)
{
    return format::llegeixReal(text, valor);
}

bool llegeixEnter16(const QString &text, int *valor)
{
    double v = 0.0;
    if (!format::llegeixReal(text, &v))
        return false;
    if (v < std::numeric_limits<qint16>::min() - 0.5 || v > std::numeric_limits<qint16>::max() + 0.5)
        return false;
    const int n = arrodoneix::enter(v);
    if (n < std::numeric_limits<qint16>::min() || n > std::numeric_limits<qint16>::max())
        return false;
    *valor = n;
    return true;
}

QString textNombre(double valor)
{
    QString t = QString::number(valor, 'f', 6);
    while (t.endsWith(QLatin1Char('0')))
        t.chop(1);
    if (t.endsWith(QLatin1Char('.')))
        t.chop(1);
    if (t == QLatin1String("-0"))
        t = QStringLiteral("0");
    return t.replace(QLatin1Char('.'), QLatin1Char(','));
}

} // namespace mestres
