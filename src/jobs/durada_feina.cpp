#include "durada_feina.h"

#include "core/formats.h"

#include <algorithm>
#include <climits>
#include <stdexcept>

void SumaMinuts::afegeix(double quantitat, double minutsPerUnitat, bool comu)
{
    double linia = quantitat * minutsPerUnitat;
    if (!comu) {
        if (m_treballadors == 0)
            throw std::domain_error("divisió per zero");
        linia /= m_treballadors;
    }
    const double suma = m_total + linia;
    if (!(suma > -32768.5 && suma < 32767.5))
        m_desbordat = true;
    m_total = arrodoneix::enter(std::clamp(suma, double(INT_MIN), double(INT_MAX)));
}
