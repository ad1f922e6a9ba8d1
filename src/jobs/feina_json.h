#pragma once
// A job record as JSON, the shape every command prints with --json: the record's own field names
// as keys, dates ISO (an empty invoice date is ""), booleans true/false.

#include "feina.h"

#include <QJsonObject>

QJsonObject feinaAJson(const Feina &f);
