#pragma once
// The one fixed locale of Quadrella: numbers "#,##0.00" as 1.234,56, short dates dd/mm/yyyy,
// months mm/aaaa, Catalan day and month names (shown through Tradueix), "hh:mm" times with 24:00
// as the end of the day, and rounding of halves to the even value.

#include <QDate>
#include <QString>

// Marks a literal that is translated later (in a table); the translation check finds it.
constexpr const char *PerTraduir(const char *text) { return text; }

namespace format {

QString import(double value);  // "#,##0.00"
QString enter(double value);   // "#,##0"
// A price or an amount in a field the user edits: a decimal comma, no thousands, at least two
// decimals and more only when the value has them ("2,50", "12,00", "0,355"), so that showing
// it never rounds what is stored.
QString preu(double value);
QString dataCurta(const QDate &date);  // dd/mm/yyyy
QString mesAny(const QDate &date);     // mm/aaaa
QString mesAny(int month, int year);

// Number input: a decimal comma, or a dot when there is no comma; thousands dots are accepted
// alongside a comma ("1.234,5"). Returns false on anything else.
bool llegeixReal(const QString &text, double *value);
// Date input as people type it: day, month and year separated by '/' or '.' (30/11/2026, 1/2/26,
// 30.11.26) or yyyy-mm-dd. A two-digit year falls in the hundred years that begin 80
// years before `avui`'s year (seen from 2026: 1946 to 2045), so 30/11/26 is 30/11/2026.
// An invalid date when the text is not one.
QDate llegeixData(const QString &text, const QDate &avui = QDate::currentDate());
// A month as people type it, "mm/aaaa" (11/2026, 11/26, 1/2027): its first day, or an invalid
// date. Two-digit years as for llegeixData.
QDate llegeixMes(const QString &text, const QDate &avui = QDate::currentDate());

// Weekday 1 = Sunday ... 7 = Saturday, as the system numbers them.
int diaSetmana(const QDate &date);
QString nomDia(int weekday);        // translated full name ("dilluns")
QString nomDiaCurt(int weekday);    // translated abbreviation ("dl.")
QString nomMes(int month);          // translated full name ("gener")
QString nomMesCurt(int month);      // translated abbreviation ("gen.")

} // namespace format

namespace hora {

// Minutes since midnight of an "hh:mm" text (24:00 gives 1440); -1 when it is not a time.
int minuts(const QString &hhmm);
// "hh:mm" of a minute count from 0 to 1440 (1440 gives "24:00").
QString text(int minutes);
// Start plus a span of minutes as a time of day: wraps at midnight (23:30 + 60 = "00:30").
QString suma(const QString &hhmm, int minutes);
bool valida(const QString &hhmm);
// A time as people type it ("8:00", " 08:00 ", "8:5" is not one) in the stored form "hh:mm";
// a null string when it is not a time of day from 00:00 to 24:00.
QString llegeix(const QString &text);

} // namespace hora

namespace arrodoneix {

double centims(double value);   // to 2 decimals, halves to the even cent
int enter(double value);        // to a whole number, halves to even (2.5 -> 2, 3.5 -> 4)

} // namespace arrodoneix
