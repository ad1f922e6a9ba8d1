#include "agenda_estat.h"

#include "core/configuracio.h"

QString nomVista(VistaAgenda v)
{
    switch (v) {
    case VistaAgenda::Dia:
        return QStringLiteral("dia");
    case VistaAgenda::Setmana:
        return QStringLiteral("setmana");
    case VistaAgenda::Mes:
        break;
    }
    return QStringLiteral("mes");
}

bool llegeixVista(const QString &text, VistaAgenda *v)
{
    const QString t = text.trimmed().toLower();
    if (t == QLatin1String("dia"))
        *v = VistaAgenda::Dia;
    else if (t == QLatin1String("setmana"))
        *v = VistaAgenda::Setmana;
    else if (t == QLatin1String("mes"))
        *v = VistaAgenda::Mes;
    else
        return false;
    return true;
}

EstatAgenda::EstatAgenda(VistaAgenda v, const QDate &dia, int primerDia)
    : vista(v), DiaActual(dia), DataCalendari(dia), PrimerDiaSetmana(primerDia)
{
    recalcula();
}

void EstatAgenda::recalcula()
{
    IniciSetmana = iniciSetmana(DiaActual, PrimerDiaSetmana);
    IniciMes = iniciMes(DiaActual, PrimerDiaSetmana);
}

QDate EstatAgenda::iniciSetmana(const QDate &d, int primerDia)
{
    return d.addDays(-Configuracio::diaSetmana(d, primerDia) + 1);
}

QDate EstatAgenda::iniciMes(const QDate &d, int primerDia)
{
    return iniciSetmana(QDate(d.year(), d.month(), 1), primerDia);
}
