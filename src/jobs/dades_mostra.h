#pragma once
// The sample data a new user starts with: two workers and their team, two services, two clients
// with three places, and a week of jobs up to the last planned day.

class Sessio;

// Whether the sample data can go in: Recursos, Serveis and Clients are all empty.
bool admetDadesMostra(Sessio &sessio);
// Adds the sample data when Recursos, Serveis and Clients are all empty; returns whether it did.
// Reads Idioma, MinutsCella, HoraInici and HoraFinal again from the settings file first.
bool afegeixDadesMostra(Sessio &sessio);
