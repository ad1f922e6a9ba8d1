#include "calendari_ics.h"

#include "core/formats.h"
#include "core/traduccio.h"

#include <libical/ical.h>

#include <memory>

namespace {

// An event that claims to last longer than this is a mistake in the file, not a closure.
constexpr int kMaxDiesEsdeveniment = 366;

QDate dataIcal(const icaltimetype &t)
{
    return QDate(t.year, t.month, t.day);
}

QString nomEsdeveniment(icalcomponent *c)
{
    const char *s = icalcomponent_get_summary(c);
    return s ? QString::fromUtf8(s).trimmed() : QString();
}

// The day after the event's last day: DTEND, else DTSTART + DURATION, else the next day.
QDate fiExclusiu(icalcomponent *c, const QDate &inici)
{
    if (icalproperty *p = icalcomponent_get_first_property(c, ICAL_DTEND_PROPERTY)) {
        const icaltimetype fi = icalproperty_get_dtend(p);
        if (!icaltime_is_null_time(fi) && dataIcal(fi).isValid())
            return dataIcal(fi);
    }
    if (icalproperty *p = icalcomponent_get_first_property(c, ICAL_DURATION_PROPERTY)) {
        const icaldurationtype d = icalproperty_get_duration(p);
        const int dies = static_cast<int>(d.weeks * 7 + d.days);
        if (!d.is_neg && dies > 0)
            return inici.addDays(dies);
    }
    return inici.addDays(1);
}

void llegeixEsdeveniment(icalcomponent *c, LecturaIcs &r)
{
    const QString nom = nomEsdeveniment(c);
    const icaltimetype inici = icalcomponent_get_dtstart(c);
    const QDate dia = icaltime_is_null_time(inici) ? QDate() : dataIcal(inici);
    if (!dia.isValid()) {
        r.avisos << Tradueix("«%1»: no té data d'inici; no s'importa.").arg(nom);
        return;
    }
    if (!inici.is_date) {
        r.avisos << Tradueix("«%1» del %2: té hora, no és de dia sencer; no s'importa.").arg(nom, format::dataCurta(dia));
        return;
    }
    QDate fi = fiExclusiu(c, dia);
    if (fi <= dia)
        fi = dia.addDays(1);
    if (dia.daysTo(fi) > kMaxDiesEsdeveniment) {
        r.avisos << Tradueix("«%1» del %2: dura més d'un any; no s'importa.").arg(nom, format::dataCurta(dia));
        return;
    }
    if (icalcomponent_get_first_property(c, ICAL_RRULE_PROPERTY))
        r.avisos << Tradueix("«%1» es repeteix: només se n'importa el %2; els altres anys cal importar-los a part.")
                        .arg(nom, format::dataCurta(dia));
    for (QDate d = dia; d < fi; d = d.addDays(1))
        r.dies.append({d, nom});
}

void llegeixCalendari(icalcomponent *calendari, LecturaIcs &r)
{
    for (icalcomponent *c = icalcomponent_get_first_component(calendari, ICAL_VEVENT_COMPONENT); c;
         c = icalcomponent_get_next_component(calendari, ICAL_VEVENT_COMPONENT)) {
        if (icalcomponent_get_status(c) == ICAL_STATUS_CANCELLED) {
            r.avisos << Tradueix("«%1»: esdeveniment anul·lat; no s'importa.").arg(nomEsdeveniment(c));
            continue;
        }
        llegeixEsdeveniment(c, r);
    }
}

} // namespace

LecturaIcs llegeixCalendariIcs(const QByteArray &text)
{
    LecturaIcs r;
    // libical keeps its last error in a global; a failure of an earlier file must not count.
    icalerror_clear_errno();
    std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)> arrel(
        text.trimmed().isEmpty() ? nullptr : icalparser_parse_string(text.constData()), &icalcomponent_free);
    if (!arrel) {
        r.error = Tradueix("El fitxer no és un calendari iCalendar (.ics).");
        return r;
    }
    const icalcomponent_kind tipus = icalcomponent_isa(arrel.get());
    if (tipus == ICAL_VCALENDAR_COMPONENT) {
        llegeixCalendari(arrel.get(), r);
    } else if (tipus == ICAL_XROOT_COMPONENT) {
        // Several calendars in one file.
        for (icalcomponent *c = icalcomponent_get_first_component(arrel.get(), ICAL_VCALENDAR_COMPONENT); c;
             c = icalcomponent_get_next_component(arrel.get(), ICAL_VCALENDAR_COMPONENT))
            llegeixCalendari(c, r);
    } else {
        r.error = Tradueix("El fitxer no és un calendari iCalendar (.ics).");
    }
    return r;
}
