#pragma once
// Reading an iCalendar file (RFC 5545) with libical: the days its all-day events cover and what
// it holds that is not a closed day. Published public-holiday calendars are such files.

#include "festius.h"

#include <QByteArray>

struct LecturaIcs {
    QList<Festiu> dies;   // in file order; an event over several days gives one row per day
    QStringList avisos;   // events left out, one translated line each
    QString error;        // "" unless the text is not an iCalendar calendar
};

LecturaIcs llegeixCalendariIcs(const QByteArray &text);
