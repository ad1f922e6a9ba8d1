#pragma once
// The agenda's way into the planning: a click on a day after the last planned day offers to plan
// the days in between, and the last planned day moves forward to the clicked one.

#include <QDate>
#include <QString>
#include <functional>

class Interaccio;
class Planificador;
struct PrevisioPlanificacio;
struct Configuracio;

// For the clicked day `dia`: nothing when it is not after cfg.UltimDiaGen; otherwise asks
// (Yes/No) and on Yes plans UltimDiaGen + 1 .. dia, shows a failed run's result, sets
// cfg.UltimDiaGen = dia even after errors and writes it to [Estat] of the settings file.
// Returns whether the planning ran (the caller rebuilds the agenda and the status bar then);
// `resultat`, when given, receives the run's result ("" when it finished).
bool Genera_Feines_Planificades(Planificador &planificador, Configuracio &cfg, Interaccio &interaccio,
                                const QDate &dia, QString *resultat = nullptr);

// The same with the preview in place of the Yes/No question: `confirma` shows what the run would
// create and answers whether to create it; on yes exactly the jobs shown are stored. A preview
// that fails is shown as an error and nothing moves.
bool Genera_Feines_Planificades(Planificador &planificador, Configuracio &cfg, Interaccio &interaccio,
                                const QDate &dia, const std::function<bool(const PrevisioPlanificacio &)> &confirma,
                                QString *resultat = nullptr);
