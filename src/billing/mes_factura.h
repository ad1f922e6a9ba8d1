#pragma once
// The billing month: a text "mm/aaaa" as the month field holds it, and the period it covers, from
// the first day of the month (inclusive) to the first day of the next month (exclusive).

#include <QDate>
#include <QString>

struct MesFactura {
    QDate inici; // first day of the month
    QDate fi;    // first day of the next month (January of the next year after December)

    // The month field's check: seven characters, two digits, "/", four digits, the month "01" to
    // "12". The text is trimmed first; an empty text is not a month.
    static bool valid(const QString &text);
    // The period of a text that passes valid(); an invalid MesFactura otherwise.
    static MesFactura llegeix(const QString &text);
    bool esValid() const { return inici.isValid(); }

    // The current month as the field is filled on entry.
    static QString actual(const QDate &avui = QDate::currentDate());
};
