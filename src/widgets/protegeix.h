#pragma once
// Window handlers trap what escapes them: the error is shown as "Error:" and its description,
// titled "ERROR", and the handler is abandoned. One place, so every page says it the same way.

#include "core/interaccio.h"

#include <QString>
#include <exception>
#include <functional>

// The description of the error being handled (the database's own text for DbError).
QString descripcioError(const std::exception &e);

// Runs `accio`; returns false when it threw (after showing the message).
bool protegeix(Interaccio &ui, const std::function<void()> &accio);
