#pragma once
// The rules of the configuration dialog without the dialog: the time lists of a cell length, the
// check made when each field is left, the coherence of the stored jobs with a new time grid and
// the confirmed writes to the settings file, in their order. The dialog only shows and collects;
// tests drive these directly.

#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>

class Db;
class Interaccio;
class Sessio;

namespace edicio_configuracio {

// Start times (00:00 up to the last cell start) and end times (one cell after 00:00 up to
// 24:00, or the last whole cell before it) of a cell length.
struct LlistesHores {
    QStringList inicis;
    QStringList finals;
};
LlistesHores llistesHores(int minutsCella);

// The entry to select for a setting: the last one whose text is not greater than it, so that a
// time off the grid selects the grid time just before it (the first entry when none is).
int indexHora(const QStringList &llista, const QString &actual);

// The fields checked when the user leaves them.
enum class Camp { MinutsCella, HoresDia, ValorXec, CostHoraXec, MaxXecsMes, UltimDiaGen };

struct Comprovacio {
    QString missatge;                 // empty when the value is accepted
    QString text;                     // the accepted value as it goes back into the field
    bool canviaLlistesHores = false;  // a new cell length was accepted: rebuild the time lists
};

// Checks a field's text. `minutsAcceptats` is the cell length the dialog last accepted; it is
// updated when MinutsCella takes a new value.
Comprovacio comprova(Camp camp, const QString &text, int *minutsAcceptats);

// How a number goes back into a field and into the settings file: two decimals with a comma.
QString textDecimal(double valor);

// The first stored job (in table order) whose start is not a whole number of cells away from
// `horaInici`; 0 when every job fits the grid.
int feinaIncoherent(Db &db, const QString &horaInici, int minutsCella);

// The voucher-service list: an empty entry (no vouchers) and every service by name.
QStringList serveisXecs(Db &db);

// 31 December of the year before `avui`: the purge date offered when the dialog opens.
QDate dataPurgaInicial(const QDate &avui);

// What the dialog holds when it is confirmed, as shown in its fields.
struct Valors {
    QString BaseDades;
    QString MinutsCella;
    QString HoraInici;
    QString HoraFinal;
    QString HoresDia;
    bool DissabtesExtra = true;
    bool DiumengesExtra = true;
    bool CalculxHores = true;
    QString HoraIniciDinar;
    QString HoraFinalDinar;
    QString ServeiXecs;
    QString ValorXec;
    QString CostHoraXec;
    QString MaxXecsMes;
    bool PermetSolaparLlocs = true;
    QString Idioma; // the chosen entry of the language list, e.g. "(ES) Castellano"
    QString UltimDiaGen;
};

// The dialog's fields as they open: from the settings in effect.
Valors valorsInicials(const Sessio &sessio);

enum class Resultat {
    Incoherent,   // a stored job does not fit the new grid: the focus goes to the cell length
    DiaIncorrecte,    // the day ends before it starts: the focus goes to the end of the day
    DinarIncorrecte,  // the lunch break is not inside the day: the focus goes to its start
    BaseDadesRebutjada, // the database file does not exist and no new one was wanted there:
                        // the focus goes to the file
    NoConfirmat,  // the user answered No: the dialog stays open
    Gravat        // settings written (failed writes reported one by one), restart requested
};

// One settings write; false when it failed.
using Escriptor = std::function<bool(const QString &seccio, const QString &clau, const QString &valor)>;

// The database file a BaseDades text names (relative to the data directory; empty is the default).
QString fitxerBaseDades(const Sessio &sessio, const QString &text);

// Confirm: the day's end after its start and the lunch break inside the day; coherence of the
// stored jobs (the message names the first job that does not fit, its place and day); a database file that does not exist is only accepted
// when the user answers Yes (default No) to creating a new empty database there, created once
// the change is confirmed; the question, every write in order, UltimDiaGen in memory and the
// restart flag. `escriu` defaults to the session's settings file.
Resultat confirma(Sessio &sessio, const Valors &valors, Interaccio &ui, const Escriptor &escriu = {});

} // namespace edicio_configuracio
