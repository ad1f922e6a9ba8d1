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

QList<QDate> diesMensuals(const RitmeLloc &r, const QDate &F, const QDate &L)
{
    QList<QDate> dies;
    if (!F.isValid() || !L.isValid())
        return dies;
    const int W = r.dia_setmana;
    QDate D = F;
    for (;;) {
        const QDate R = Data_Planificacio(D, W, r.primer_dia_mes, r.ultim_dia_mes);
        D = R;
        if (D > L)
            break;
        if (format::diaSetmana(D) == kDissabte && W != kDissabte && !r.dissabte)
            D = D.addDays(r.primer_dia_mes ? 1 : -1);
        if (format::diaSetmana(D) == kDiumenge && W != kDiumenge && !r.diumenge) {
            if (r.primer_dia_mes)
                D = D.addDays(1);
            else
                D = D.addDays(r.dissabte ? -1 : -2);
        }
        if (F <= D && D <= L)
            dies.append(D);
        // A day moved back must not make the search find the same month again.
        D = std::max(D, R).addDays(1);
    }
    return dies;
}

QList<QDate> diesCadaN(const RitmeLloc &r, const QDate &F, const QDate &L, const QDate &darreraFeina,
                       int primerDia)
{
    QList<QDate> dies;
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
    while (D <= L) {
        if (W > 0 && setmanaAlineada < numeroSetmana(D, primerDia)) {
            setmanaAlineada = numeroSetmana(D, primerDia);
            D = D.addDays(W - format::diaSetmana(D));
            while (D < F)
                D = D.addDays(N);
        }
        if (format::diaSetmana(D) == kDissabte && W != kDissabte && !r.dissabte)
            D = D.addDays(1);
        if (format::diaSetmana(D) == kDiumenge && W != kDiumenge && !r.diumenge) {
            D = D.addDays(1);
            continue; // the new day may open a week that still has to be aligned
        }
        if (F <= D && D <= L) {
            dies.append(D);
            D = D.addDays(N);
        }
    }
    return dies;
}

QList<QDate> diesPlanificats(const RitmeLloc &r, const QDate &F, const QDate &L, const QDate &darreraFeina,
                             int primerDia)
{
    if (r.periodicitat_dies <= 0)
        return {};
    return r.mensual() ? diesMensuals(r, F, L) : diesCadaN(r, F, L, darreraFeina, primerDia);
}
