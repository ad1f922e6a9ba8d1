#include "planificacio_regles.h"

#include "core/configuracio.h"
#include "core/formats.h"

namespace {

constexpr int kDiumenge = 1;
constexpr int kDissabte = 7;

bool mateixMes(const QDate &a, const QDate &b)
{
    return a.month() == b.month() && a.year() == b.year();
}

} // namespace

QDate Data_Planificacio(const QDate &D, int W, bool primer, bool ultim)
{
    QDate R = D;
    if (W > 0) {
        // The day numbered W of D's Sunday-to-Saturday week, pushed a week on when already past.
        R = D.addDays(W - format::diaSetmana(D));
        if (R < D)
            R = R.addDays(7);
    }
    if (primer) {
        if (W > 0) {
            while (mateixMes(R.addDays(-7), R))
                R = R.addDays(7);
        } else if (R.day() != 1) {
            const QDate seguent = R.addMonths(1);
            R = QDate(seguent.year(), seguent.month(), 1);
        }
    }
    if (ultim) {
        if (W > 0) {
            while (mateixMes(R.addDays(7), R))
                R = R.addDays(7);
        } else if (R.addDays(1).day() != 1) {
            R = QDate(R.year(), R.month(), R.daysInMonth());
        }
    }
    return R;
}

int numeroSetmana(const QDate &d, int primerDia)
{
    const QDate gener1(d.year(), 1, 1);
    const int desfase = Configuracio::diaSetmana(gener1, primerDia) - 1;
    return (d.dayOfYear() - 1 + desfase) / 7 + 1;
}

namespace {

// A day the place does not work: a weekend day it does not include (unless it is the place's own
// weekday) or a closed day it does not open on.
struct Calendari {
    const RitmeLloc &r;
    const DiesTancats &tancats;

    bool dissabteVetat(const QDate &d) const
    {
        return format::diaSetmana(d) == kDissabte && r.dia_setmana != kDissabte && !r.dissabte;
    }
    bool diumengeVetat(const QDate &d) const
    {
        return format::diaSetmana(d) == kDiumenge && r.dia_setmana != kDiumenge && !r.diumenge;
    }
    bool tancat(const QDate &d) const { return !r.festius && tancats.contains(d); }
};

QList<DiaPlanificat> mensuals(const Calendari &c, const QDate &F, const QDate &L)
{
    QList<DiaPlanificat> dies;
    if (!F.isValid() || !L.isValid())
        return dies;
    const RitmeLloc &r = c.r;
    // A first-of-month day looks forward for a working day, a last-of-month day back.
    const int pas = r.primer_dia_mes ? 1 : -1;
    QDate D = F;
    for (;;) {
        const QDate R = Data_Planificacio(D, r.dia_setmana, r.primer_dia_mes, r.ultim_dia_mes);
        D = R;
        if (D > L)
            break;
        DiaPlanificat dia;
        while (c.dissabteVetat(D) || c.diumengeVetat(D) || c.tancat(D)) {
            if (c.tancat(D))
                dia.festius.append(D);
            D = D.addDays(pas);
        }
        dia.dia = D;
        if (F <= D && D <= L)
            dies.append(dia);
        // A day moved back must not make the search find the same month again.
        D = std::max(D, R).addDays(1);
    }
    return dies;
}

QList<DiaPlanificat> cadaN(const Calendari &c, const QDate &F, const QDate &L, const QDate &darreraFeina,
                           int primerDia)
{
    QList<DiaPlanificat> dies;
    const RitmeLloc &r = c.r;
    const int N = r.periodicitat_dies;
    const int W = r.dia_setmana;
    if (N <= 0 || !F.isValid() || !L.isValid())
        return dies;
    QDate D = F;
    if (darreraFeina.isValid()) {
        D = darreraFeina.addDays(N);
        if (D < F)
            D = F;
    }
    // Week numbers start again at 1 in January, so across a new year the alignment waits until
    // the count passes the last aligned week: that is how the rhythm has always behaved.
    int setmanaAlineada = 0;
    QList<QDate> saltats; // closed days stepped over since the last job
    while (D <= L) {
        if (W > 0 && setmanaAlineada < numeroSetmana(D, primerDia)) {
            setmanaAlineada = numeroSetmana(D, primerDia);
            D = D.addDays(W - format::diaSetmana(D));
            while (D < F)
                D = D.addDays(N);
        }
        if (c.dissabteVetat(D))
            D = D.addDays(1);
        // A Sunday or a closed day: the next day, and the new day may open a week that still has
        // to be aligned.
        if (c.diumengeVetat(D)) {
            D = D.addDays(1);
            continue;
        }
        if (c.tancat(D)) {
            saltats.append(D);
            D = D.addDays(1);
            continue;
        }
        if (F <= D && D <= L) {
            dies.append({D, saltats});
            saltats.clear();
            D = D.addDays(N);
        }
    }
    return dies;
}

QList<QDate> nomesDates(const QList<DiaPlanificat> &dies)
{
    QList<QDate> out;
    out.reserve(dies.size());
    for (const DiaPlanificat &d : dies)
        out.append(d.dia);
    return out;
}

const DiesTancats kCapTancat;

} // namespace

QList<QDate> diesMensuals(const RitmeLloc &r, const QDate &F, const QDate &L)
{
    return nomesDates(mensuals({r, kCapTancat}, F, L));
}

QList<QDate> diesCadaN(const RitmeLloc &r, const QDate &F, const QDate &L, const QDate &darreraFeina,
                       int primerDia)
{
    return nomesDates(cadaN({r, kCapTancat}, F, L, darreraFeina, primerDia));
}

QList<QDate> diesPlanificats(const RitmeLloc &r, const QDate &F, const QDate &L, const QDate &darreraFeina,
                             int primerDia)
{
    return nomesDates(diesPlanificats(r, F, L, darreraFeina, primerDia, kCapTancat));
}

QList<DiaPlanificat> diesPlanificats(const RitmeLloc &r, const QDate &F, const QDate &L, const QDate &darreraFeina,
                                     int primerDia, const DiesTancats &tancats)
{
    if (r.periodicitat_dies <= 0)
        return {};
    const Calendari c{r, tancats};
    return r.mensual() ? mensuals(c, F, L) : cadaN(c, F, L, darreraFeina, primerDia);
}
