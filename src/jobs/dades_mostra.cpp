#include "dades_mostra.h"

#include <stdexcept>

bool afegeixDadesMostra(Sessio &)
{
    throw std::runtime_error("sample data not implemented yet");
}
