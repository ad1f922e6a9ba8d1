#include "dades_mostra.h"

#include "motor_feines.h"

#include "core/configuracio.h"
#include "core/formats.h"
#include "core/ini.h"
#include "core/sessio.h"
#include "core/traduccio.h"

namespace {

bool buida(Db &db, const QString &taula)
{
    Query q = db.query(QStringLiteral("SELECT 1 FROM ") + taula + QStringLiteral(" LIMIT 1"));
    q.exec();
    return !q.next();
}

// The configuration dialog has just written these four; the session may still hold older ones.
void rellegeixParametres(Sessio &sessio)
{
    Configuracio &cfg = sessio.cfg();
    const QString ini = cfg.fitxerIni;
    const auto llegeix = [&](const char *clau, const QString &perDefecte) {
        return LlegirIni(ini, QStringLiteral("Parametres"), QString::fromLatin1(clau), perDefecte);
    };

    const QString idioma = llegeix("Idioma", QStringLiteral("CT"));
    bool ok = false;
    const QString textCella = llegeix("MinutsCella", QStringLiteral("30"));
    const int minutsCella = conversio::aEnter(textCella, &ok);
    if (!ok || minutsCella <= 0)
        throw ConfigError(QStringLiteral("Valor no vàlid per a MinutsCella: '%1'").arg(textCella));
    const QString textInici = llegeix("HoraInici", QStringLiteral("00:00"));
    const QString horaInici = conversio::aHora(textInici, &ok);
    if (!ok)
        throw ConfigError(QStringLiteral("Valor no vàlid per a HoraInici: '%1'").arg(textInici));
    const QString textFinal = llegeix("HoraFinal", QStringLiteral("24:00"));
    const QString horaFinal = conversio::aHora(textFinal, &ok);
    if (!ok)
        throw ConfigError(QStringLiteral("Valor no vàlid per a HoraFinal: '%1'").arg(textFinal));

    cfg.MinutsCella = minutsCella;
    cfg.HoraInici = horaInici;
    cfg.HoraFinal = horaFinal;
    if (idioma != cfg.Idioma || sessio.traductor().idioma() != idioma)
        sessio.canviaIdioma(idioma);
}

} // namespace

bool admetDadesMostra(Sessio &sessio)
{
    Db &db = sessio.db();
    return buida(db, QStringLiteral("Recursos")) && buida(db, QStringLiteral("Serveis")) && buida(db, QStringLiteral("Clients"));
}

bool afegeixDadesMostra(Sessio &sessio)
{
    Db &db = sessio.db();
    if (!admetDadesMostra(sessio))
        return false;

    rellegeixParametres(sessio);
    const Configuracio &cfg = sessio.cfg();
    const int m = cfg.MinutsCella;

    const QString oriol = Tradueix("Oriol");
    const QString marta = Tradueix("Marta");
    const QString equip = Tradueix("Marta i Oriol");
    const QString neteja = Tradueix("Neteja");
    const QString desplacaments = Tradueix("Desplaçaments");
    const QString descNeteja = Tradueix("Servei de neteja");
    const QString descDesplacaments = Tradueix("Distancia de desplaçaments");
    const QString comunitat = Tradueix("Comunitat Exemple");
    const QString particular = Tradueix("Client Particular");
    const QString oficina = Tradueix("Exemple oficina");
    const QString escala = Tradueix("Exemple escala");
    const QString casa = Tradueix("Particular casa");

    Transaction t(db);

    Query recurs = db.query(QStringLiteral(
        "INSERT INTO Recursos (recursos_nom, recursos_grup, recursos_color, recursos_assigna_temps) VALUES (?, ?, ?, ?)"));
    recurs.bind(oriol).bind(0).bind(16711680).bind(1).exec(); // blue
    recurs.bind(marta).bind(0).bind(65535).bind(1).exec();    // yellow
    recurs.bind(equip).bind(1).bind(65280).bind(0).exec();    // green

    Query membre = db.query(QStringLiteral("INSERT INTO Recursos_Components (recursos_nom, recursos_component_nom) VALUES (?, ?)"));
    membre.bind(equip).bind(marta).exec();
    membre.bind(equip).bind(oriol).exec();

    Query servei = db.query(QStringLiteral(
        "INSERT INTO Serveis (serveis_nom, serveis_descripcio, serveis_unitat, serveis_preu_un, serveis_minuts_per_unitat,"
        " serveis_comu_per_recursos) VALUES (?, ?, ?, ?, ?, ?)"));
    servei.bind(neteja).bind(descNeteja).bind(Tradueix("Hores")).bind(6.25).bind(60).bind(0).exec();
    servei.bind(desplacaments).bind(descDesplacaments).bind(Tradueix("Kms")).bind(0.19).bind(3).bind(1).exec();

    Query client = db.query(QStringLiteral("INSERT INTO Clients (clients_nom, clients_codi_postal) VALUES (?, ?)"));
    client.bind(comunitat).bind(QStringLiteral("")).exec();
    client.bind(particular).bind(QStringLiteral("")).exec();

    Query lloc = db.query(QStringLiteral(
        "INSERT INTO Llocs (llocs_nom, clients_nom, llocs_minuts_previst, recursos_nom, llocs_observacions) VALUES (?, ?, ?, ?, ?)"));
    lloc.bind(oficina).bind(comunitat).bind(4 * m).bind(equip).bind(QStringLiteral("")).exec();
    lloc.bind(escala).bind(comunitat).bind(m).bind(marta).bind(QStringLiteral("")).exec();
    lloc.bind(casa).bind(particular).bind(2 * m).bind(oriol).bind(QStringLiteral("")).exec();

    // The small subtractions keep the quantities just under a whole cell's worth before rounding.
    Query llocServei = db.query(QStringLiteral(
        "INSERT INTO Llocs_Serveis (llocs_nom, serveis_nom, llocs_serveis_descripcio, llocs_serveis_quantitat,"
        " llocs_serveis_preu_un) VALUES (?, ?, ?, ?, ?)"));
    llocServei.bind(oficina).bind(neteja).bind(descNeteja).bind(arrodoneix::centims(6.0 * m / 60.0 - 0.001)).bind(6.25).exec();
    llocServei.bind(oficina).bind(desplacaments).bind(descDesplacaments).bind(arrodoneix::centims(m / 3.0 - 0.005)).bind(0.19).exec();
    llocServei.bind(escala).bind(neteja).bind(descNeteja).bind(arrodoneix::centims(m / 60.0 - 0.005)).bind(6.25).exec();
    llocServei.bind(casa).bind(neteja).bind(descNeteja).bind(arrodoneix::centims(2.0 * m / 60.0 - 0.005)).bind(6.25).exec();

    // A week of jobs up to the last planned day. A job the engine refuses is simply left out.
    MotorFeines motor(db, cfg);
    const auto feina = [&](const QString &llocNom, const QString &recursNom, int cellesDesDeInici, const QDate &dia) {
        Feina f;
        f.llocs_nom = llocNom;
        f.recursos_nom = recursNom;
        f.feines_data = dia;
        f.feines_hora_inici = hora::suma(cfg.HoraInici, cellesDesDeInici * m);
        motor.Grava_Feina(f, false);
    };
    for (int d = 0; d <= 6; ++d) {
        const QDate dia = cfg.UltimDiaGen.addDays(-d);
        feina(oficina, equip, 1, dia);
        if (d % 2 == 0)
            feina(escala, marta, 5, dia);
        if (d == 3)
            feina(casa, oriol, 6, dia);
    }

    t.commit();
    return true;
}
