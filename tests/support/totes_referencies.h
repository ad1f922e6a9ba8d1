#pragma once
// Every kind of name reference, each held once or twice: client Can Pep with place Oficina
// (default worker Marta, a Neteja line); Marta in group Equip; jobs 1 (Marta) and 2 (Equip) at
// Oficina with a Neteja line each; voucher 7 spent on job 1; a payment and an overtime row.
inline const char *const totesLesReferencies =
    "INSERT INTO Clients (clients_nom) VALUES ('Can Pep');"
    "INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color) VALUES ('Marta', 0, 255), ('Equip', 1, 65280);"
    "INSERT INTO Recursos_Components VALUES ('Equip', 'Marta');"
    "INSERT INTO Serveis (serveis_nom, serveis_unitat, serveis_preu_un) VALUES ('Neteja', 'Hores', 10);"
    "INSERT INTO Llocs (llocs_nom, clients_nom, recursos_nom, llocs_minuts_previst) VALUES ('Oficina', 'Can Pep', 'Marta', 60);"
    "INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom, llocs_serveis_quantitat) VALUES ('Oficina', 'Neteja', 1);"
    "INSERT INTO Feines (feines_id, llocs_nom, feines_data, feines_hora_inici, feines_hora_fi, recursos_nom) VALUES"
    " (1, 'Oficina', '2026-11-23', '08:00', '09:00', 'Marta'), (2, 'Oficina', '2026-11-23', '10:00', '11:00', 'Equip');"
    "INSERT INTO Feines_Detall (feines_id, serveis_nom) VALUES (1, 'Neteja'), (2, 'Neteja');"
    "INSERT INTO Xecs (xecs_id, clients_nom, feines_id) VALUES (7, 'Can Pep', 1);"
    "INSERT INTO Pagaments (clients_nom, pagaments_mes) VALUES ('Can Pep', '11/2026');"
    "INSERT INTO Hores_Fetes (recursos_nom, hores_data) VALUES ('Marta', '2026-11-23');";
