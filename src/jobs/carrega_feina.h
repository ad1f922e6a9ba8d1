#pragma once
// Reads stored jobs into records (the job a user picked, or one a command names by its id).

#include "feina.h"

#include <QString>

class Db;
class Query;

// The columns, in this order, that llegeixFilaFeina expects at the start of a row.
extern const QString kColumnesFeina;

// Fills `f` from the current row of a query that selects kColumnesFeina first: Null texts read
// as "", a Null invoice date as an invalid date. `missatge` is left alone.
void llegeixFilaFeina(const Query &q, Feina &f);

// Fills `f` from the row `feines_id` (missatge ""). Returns false, leaving `f` as it was, when
// there is no such row. Throws DbError.
bool carregaFeina(Db &db, int feinesId, Feina &f);
