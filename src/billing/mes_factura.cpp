#include "mes_factura.h"

#include "core/formats.h"

namespace {

bool digits(const QString &t, int from, int n)
{
    for (int i = from; i < from + n; ++i) {
        if (t.at(i) < QLatin1Char('0') || t.at(i) > QLatin1Char('9'))
            return false;
    }
    return true;
}

} // namespace

bool MesFactura::valid(const QString &text)
{
    const QString t = text.trimmed();
    if (t.size() != 7 || t.at(2) != QLatin1Char('/') || !digits(t, 0, 2) || !digits(t, 3, 4))
        return false;
    const QString mes = t.left(2);
    return mes >= QLatin1String("01") && mes <= QLatin1String("12") && t.mid(3).toInt() >= 1;
}

MesFactura MesFactura::llegeix(const QString &text)
{
    MesFactura m;
    if (!valid(text))
        return m;
    const QString t = text.trimmed();
    const int mes = t.left(2).toInt();
    const int any = t.mid(3).toInt();
    m.inici = QDate(any, mes, 1);
    m.fi = mes == 12 ? QDate(any + 1, 1, 1) : QDate(any, mes + 1, 1);
    return m;
}

QString MesFactura::actual(const QDate &avui)
{
    return format::mesAny(avui);
}
