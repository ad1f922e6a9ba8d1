#include "producte.h"

#include <sqlite3.h>

namespace producte {

QString codiVersio()
{
    return QStringLiteral("%1 (Qt %2, SQLite %3)").arg(versio(), QString::fromLatin1(qVersion()),
                                                      QString::fromLatin1(sqlite3_libversion()));
}

} // namespace producte
