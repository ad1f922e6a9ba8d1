-- Quadrella business database, schema version 3 (PRAGMA user_version). Names are keys; name
-- columns compare without regard to case through QNOCASE, a collation every connection of the
-- program registers (another SQLite tool cannot write them in a different order).

CREATE TABLE IF NOT EXISTS Clients (
    clients_nom           TEXT NOT NULL COLLATE QNOCASE PRIMARY KEY,
    clients_NIF           TEXT,
    "clients_adreça"      TEXT,
    clients_codi_postal   TEXT,
    clients_poblacio      TEXT,
    clients_telefons      TEXT,
    clients_email         TEXT,
    clients_ccc           TEXT,
    clients_data_alta     TEXT,
    clients_xecs          INTEGER NOT NULL DEFAULT 0,
    clients_observacions  TEXT
);

CREATE TABLE IF NOT EXISTS Llocs (
    llocs_nom               TEXT NOT NULL COLLATE QNOCASE PRIMARY KEY,
    clients_nom             TEXT COLLATE QNOCASE,
    "llocs_adreça"          TEXT,
    llocs_poblacio          TEXT,
    llocs_telefon           TEXT,
    llocs_minuts_previst    INTEGER NOT NULL DEFAULT 0,
    recursos_nom            TEXT COLLATE QNOCASE,
    llocs_observacions      TEXT,
    llocs_periodicitat_dies INTEGER NOT NULL DEFAULT 0,
    llocs_primer_dia_mes    INTEGER NOT NULL DEFAULT 0,
    llocs_ultim_dia_mes     INTEGER NOT NULL DEFAULT 0,
    llocs_dia_setmana       INTEGER NOT NULL DEFAULT 0,
    llocs_dissabte          INTEGER NOT NULL DEFAULT 0,
    llocs_diumenge          INTEGER NOT NULL DEFAULT 0,
    llocs_hora              TEXT,
    llocs_quota             REAL NOT NULL DEFAULT 0,
    llocs_festius           INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX IF NOT EXISTS idx_llocs_client ON Llocs (clients_nom);
CREATE INDEX IF NOT EXISTS idx_llocs_recurs ON Llocs (recursos_nom);

CREATE TABLE IF NOT EXISTS Recursos (
    recursos_nom           TEXT NOT NULL COLLATE QNOCASE PRIMARY KEY,
    recursos_grup          INTEGER NOT NULL DEFAULT 0,
    recursos_color         INTEGER NOT NULL DEFAULT 0,
    recursos_assigna_temps INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX IF NOT EXISTS idx_recursos_color ON Recursos (recursos_color);

CREATE TABLE IF NOT EXISTS Recursos_Components (
    recursos_nom           TEXT NOT NULL COLLATE QNOCASE,
    recursos_component_nom TEXT NOT NULL COLLATE QNOCASE,
    PRIMARY KEY (recursos_nom, recursos_component_nom)
);
CREATE INDEX IF NOT EXISTS idx_components_membre ON Recursos_Components (recursos_component_nom);

CREATE TABLE IF NOT EXISTS Serveis (
    serveis_nom               TEXT NOT NULL COLLATE QNOCASE PRIMARY KEY,
    serveis_descripcio        TEXT,
    serveis_unitat            TEXT,
    serveis_preu_un           REAL NOT NULL DEFAULT 0,
    serveis_minuts_per_unitat INTEGER NOT NULL DEFAULT 0,
    serveis_comu_per_recursos INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE IF NOT EXISTS Llocs_Serveis (
    llocs_nom                TEXT NOT NULL COLLATE QNOCASE,
    serveis_nom              TEXT NOT NULL COLLATE QNOCASE,
    llocs_serveis_descripcio TEXT,
    llocs_serveis_quantitat  REAL NOT NULL DEFAULT 0,
    llocs_serveis_preu_un    REAL NOT NULL DEFAULT 0,
    PRIMARY KEY (llocs_nom, serveis_nom)
);
CREATE INDEX IF NOT EXISTS idx_llocs_serveis_servei ON Llocs_Serveis (serveis_nom);

CREATE TABLE IF NOT EXISTS Feines (
    feines_id           INTEGER PRIMARY KEY AUTOINCREMENT,
    llocs_nom           TEXT NOT NULL COLLATE QNOCASE,
    feines_data         TEXT NOT NULL,
    feines_hora_inici   TEXT NOT NULL,
    feines_hora_fi      TEXT NOT NULL,
    recursos_nom        TEXT COLLATE QNOCASE,
    feines_feta         INTEGER NOT NULL DEFAULT 0,
    feines_data_factura TEXT,
    feines_quota        REAL NOT NULL DEFAULT 0,
    feines_observacions TEXT
);
-- The place-overlap checks and the agenda's day ranges.
CREATE INDEX IF NOT EXISTS idx_feines_data_lloc ON Feines (feines_data, llocs_nom);
-- The resource-overlap checks.
CREATE INDEX IF NOT EXISTS idx_feines_data_recurs ON Feines (feines_data, recursos_nom);
-- A place's latest job (planning) and its jobs by month (billing).
CREATE INDEX IF NOT EXISTS idx_feines_lloc_data ON Feines (llocs_nom, feines_data);

CREATE TABLE IF NOT EXISTS Feines_Detall (
    feines_id                INTEGER NOT NULL REFERENCES Feines (feines_id) ON DELETE CASCADE,
    serveis_nom              TEXT NOT NULL COLLATE QNOCASE,
    feines_detall_descripcio TEXT,
    feines_detall_quantitat  REAL NOT NULL DEFAULT 0,
    feines_detall_unitat     TEXT,
    feines_detall_preu_un    REAL NOT NULL DEFAULT 0
);
CREATE INDEX IF NOT EXISTS idx_feines_detall_feina ON Feines_Detall (feines_id);

CREATE TABLE IF NOT EXISTS Xecs (
    xecs_id            INTEGER NOT NULL PRIMARY KEY,
    clients_nom        TEXT COLLATE QNOCASE,
    feines_id          INTEGER,
    xecs_data_entrega  TEXT NOT NULL DEFAULT (date('now', 'localtime')),
    xecs_data_liquidat TEXT,
    xecs_valor         REAL NOT NULL DEFAULT 0
);
CREATE INDEX IF NOT EXISTS idx_xecs_client ON Xecs (clients_nom, xecs_data_entrega);
CREATE INDEX IF NOT EXISTS idx_xecs_feina ON Xecs (feines_id);

CREATE TABLE IF NOT EXISTS Pagaments (
    clients_nom      TEXT NOT NULL COLLATE QNOCASE,
    pagaments_mes    TEXT NOT NULL,
    pagaments_import REAL NOT NULL DEFAULT 0,
    PRIMARY KEY (clients_nom, pagaments_mes)
);

CREATE TABLE IF NOT EXISTS Hores_Fetes (
    recursos_nom    TEXT NOT NULL COLLATE QNOCASE,
    hores_data      TEXT NOT NULL,
    hores_quantitat REAL NOT NULL DEFAULT 0,
    PRIMARY KEY (recursos_nom, hores_data)
);
CREATE INDEX IF NOT EXISTS idx_hores_data ON Hores_Fetes (hores_data);

-- Closed days (public holidays, the company's own closing days): the planning steps over them.
CREATE TABLE IF NOT EXISTS Festius (
    festius_data       TEXT NOT NULL PRIMARY KEY,
    festius_descripcio TEXT NOT NULL DEFAULT ''
);
