#include "formats.h"

#include "traduccio.h"

#include <QRegularExpression>
#include <cmath>

namespace {

QString agrupa(qint64 whole)
{
    QString digits = QString::number(whole < 0 ? -whole : whole);
    for (int i = digits.size() - 3; i > 0; i -= 3)
        digits.insert(i, QLatin1Char('.'));
    return digits;
}

// Halves are decided on the decimal value the user sees, not on the binary one (0.125 is a half).
double arrodonirMultiple(double value, double scale)
{
    const double scaled = value * scale;
    const double floorPart = std::floor(scaled);
    const double diff = scaled - floorPart;
    double result;
    if (std::fabs(diff - 0.5) < 1e-7)
        result = std::fmod(floorPart, 2.0) == 0.0 ? floorPart : floorPart + 1.0;
    else
        result = std::round(scaled);
    return result / scale;
}

const char *const kDies[] = {PerTraduir("diumenge"), PerTraduir("dilluns"), PerTraduir("dimarts"),
                             PerTraduir("dimecres"), PerTraduir("dijous"), PerTraduir("divendres"),
                             PerTraduir("dissabte")};
const char *const kDiesCurts[] = {PerTraduir("dg."), PerTraduir("dl."), PerTraduir("dt."), PerTraduir("dc."),
                                  PerTraduir("dj."), PerTraduir("dv."), PerTraduir("ds.")};
const char *const kMesos[] = {PerTraduir("gener"), PerTraduir("febrer"), PerTraduir("març"),
                              PerTraduir("abril"), PerTraduir("maig"), PerTraduir("juny"),
                              PerTraduir("juliol"), PerTraduir("agost"), PerTraduir("setembre"),
                              PerTraduir("octubre"), PerTraduir("novembre"), PerTraduir("desembre")};
const char *const kMesosCurts[] = {PerTraduir("gen."), PerTraduir("febr."), PerTraduir("març"),
                                   PerTraduir("abr."), PerTraduir("maig"), PerTraduir("juny"),
                                   PerTraduir("jul."), PerTraduir("ag."), PerTraduir("set."),
                                   PerTraduir("oct."), PerTraduir("nov."), PerTraduir("des.")};

// A typed year: four digits as they stand, two digits within the hundred years that begin 80
// years before today's year.
int anyComplet(const QString &digits, const QDate &avui)
{
    const int any = digits.toInt();
    if (digits.size() != 2)
        return any;
    const int primer = (avui.isValid() ? avui.year() : QDate::currentDate().year()) - 80;
    int r = primer - primer % 100 + any;
    if (r < primer)
        r += 100;
    return r;
}

} // namespace

namespace format {

QString preu(double value)
{
    QString t = QString::number(value, 'f', 6);
    while (t.endsWith(QLatin1Char('0')) && t.indexOf(QLatin1Char('.')) < t.size() - 3)
        t.chop(1);
    if (t == QLatin1String("-0.00"))
        t = QStringLiteral("0.00");
    return t.replace(QLatin1Char('.'), QLatin1Char(','));
}

QString import(double value)
{
    const double r = arrodoneix::centims(value);
    const qint64 cents = std::llround(std::fabs(r) * 100.0);
    QString s = agrupa(cents / 100) + QLatin1Char(',') + QStringLiteral("%1").arg(cents % 100, 2, 10, QLatin1Char('0'));
    if (r < 0 && cents != 0)
        s.prepend(QLatin1Char('-'));
    return s;
}

QString enter(double value)
{
    const qint64 n = static_cast<qint64>(arrodoneix::enter(value));
    QString s = agrupa(n);
    if (n < 0)
        s.prepend(QLatin1Char('-'));
    return s;
}

QString dataCurta(const QDate &date)
{
    return date.isValid() ? date.toString(QStringLiteral("dd/MM/yyyy")) : QString();
}

QString mesAny(const QDate &date)
{
    return mesAny(date.month(), date.year());
}

QString mesAny(int month, int year)
{
    return QStringLiteral("%1/%2").arg(month, 2, 10, QLatin1Char('0')).arg(year, 4, 10, QLatin1Char('0'));
}

bool llegeixReal(const QString &text, double *value)
{
    QString t = text.trimmed();
    if (t.isEmpty())
        return false;
    if (t.contains(QLatin1Char(','))) {
        static const QRegularExpression withComma(QStringLiteral("^[-+]?(\\d{1,3}(\\.\\d{3})+|\\d*),\\d*$"));
        if (!withComma.match(t).hasMatch())
            return false;
        t.remove(QLatin1Char('.'));
        t.replace(QLatin1Char(','), QLatin1Char('.'));
    } else {
        static const QRegularExpression plain(QStringLiteral("^[-+]?(\\d+\\.?\\d*|\\.\\d+)$"));
        if (!plain.match(t).hasMatch())
            return false;
    }
    if (t == QLatin1String(".") || t == QLatin1String("-.") || t == QLatin1String("+."))
        return false;
    bool ok = false;
    const double v = t.toDouble(&ok);
    if (ok && value)
        *value = v;
    return ok;
}

QDate llegeixData(const QString &text, const QDate &avui)
{
    const QString t = text.trimmed();
    // The same separator twice: "30/11.26" is more likely a slip than a date. Dashes are kept for
    // the ISO form, so 04-03-2009 (April or March?) is refused rather than guessed.
    static const QRegularExpression dmy(QStringLiteral("^(\\d{1,2})([/.])(\\d{1,2})\\2(\\d{2}|\\d{4})$"));
    static const QRegularExpression iso(QStringLiteral("^(\\d{4})-(\\d{2})-(\\d{2})$"));
    auto m = iso.match(t);
    if (m.hasMatch())
        return QDate(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    m = dmy.match(t);
    if (m.hasMatch())
        return QDate(anyComplet(m.captured(4), avui), m.captured(3).toInt(), m.captured(1).toInt());
    return QDate();
}

QDate llegeixMes(const QString &text, const QDate &avui)
{
    static const QRegularExpression my(QStringLiteral("^(\\d{1,2})[/.](\\d{2}|\\d{4})$"));
    const auto m = my.match(text.trimmed());
    if (!m.hasMatch())
        return QDate();
    return QDate(anyComplet(m.captured(2), avui), m.captured(1).toInt(), 1);
}

int diaSetmana(const QDate &date)
{
    return date.dayOfWeek() % 7 + 1; // Qt: Monday = 1 ... Sunday = 7
}

QString nomDia(int weekday)
{
    return Tradueix(kDies[(weekday + 6) % 7]);
}

QString nomDiaCurt(int weekday)
{
    return Tradueix(kDiesCurts[(weekday + 6) % 7]);
}

QString nomMes(int month)
{
    return Tradueix(kMesos[(month + 11) % 12]);
}

QString nomMesCurt(int month)
{
    return Tradueix(kMesosCurts[(month + 11) % 12]);
}

} // namespace format

namespace hora {

int minuts(const QString &hhmm)
{
    if (hhmm.size() != 5 || hhmm.at(2) != QLatin1Char(':'))
        return -1;
    bool okH = false, okM = false;
    const int h = hhmm.left(2).toInt(&okH);
    const int m = hhmm.mid(3, 2).toInt(&okM);
    if (!okH || !okM || !hhmm.at(0).isDigit() || !hhmm.at(1).isDigit() || !hhmm.at(3).isDigit() || !hhmm.at(4).isDigit())
        return -1;
    if (m > 59 || h > 24 || (h == 24 && m != 0))
        return -1;
    return h * 60 + m;
}

bool valida(const QString &hhmm)
{
    return minuts(hhmm) >= 0;
}

QString llegeix(const QString &text)
{
    QString t = text.trimmed();
    // A single-digit hour is padded; the minutes always take two digits.
    if (t.size() == 4 && t.at(1) == QLatin1Char(':'))
        t.prepend(QLatin1Char('0'));
    return valida(t) ? t : QString();
}

QString text(int minutes)
{
    if (minutes < 0)
        minutes = 0;
    if (minutes > 1440)
        minutes = 1440;
    return QStringLiteral("%1:%2").arg(minutes / 60, 2, 10, QLatin1Char('0')).arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

QString suma(const QString &hhmm, int minutes)
{
    int start = minuts(hhmm);
    if (start < 0)
        start = 0;
    int total = (start + minutes) % 1440;
    if (total < 0)
        total += 1440;
    return text(total);
}

} // namespace hora

namespace arrodoneix {

double centims(double value)
{
    return arrodonirMultiple(value, 100.0);
}

int enter(double value)
{
    return static_cast<int>(arrodonirMultiple(value, 1.0));
}

} // namespace arrodoneix
