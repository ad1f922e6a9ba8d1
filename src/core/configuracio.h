#pragma once
// Every setting of Quadrella.ini with its type, default and conversion, plus the run state that
// start-up works out (PrimerDiaSetmana, CellesDia). Loaded once and passed to whoever needs it.

#include <QDate>
#include <QString>
#include <stdexcept>

class ConfigError : public std::runtime_error {
public:
    explicit ConfigError(const QString &text) : std::runtime_error(text.toStdString()), m_text(text) {}
    QString text() const { return m_text; }

private:
    QString m_text;
};

struct Configuracio {
    // [General]
    QString BaseDades;
    // [Parametres], in the order they are read
    QString TexteVaris = QStringLiteral("...");
    qint32 ColorFeina = 16768483;
    qint32 ColorQuota = 16764117;
    qint32 ColorDiumenge = 11513775;
    QString MarcaSeleccio = QStringLiteral("-> ");
    QString MarcaLlista = QStringLiteral(" * ");
    int PosicioSaltPagina = 14500;
    QString TexteNoAsignada = QStringLiteral("< >");
    int MinutsCella = 30;
    QString HoraInici = QStringLiteral("00:00");
    QString HoraFinal = QStringLiteral("24:00");
    double HoresDia = 8.0;
    bool CalculxHores = true;
    bool DissabtesExtra = true;
    bool DiumengesExtra = true;
    QString HoraIniciDinar = QStringLiteral("13:30");
    QString HoraFinalDinar = QStringLiteral("15:00");
    QString ServeiXecs;
    double ValorXec = 0.0;
    double CostHoraXec = 0.0;
    int MaxXecsMes = 0;
    bool PermetSolaparLlocs = true;
    bool PrimeraExecucio = true;
    QString Idioma = QStringLiteral("CT");
    // [Estat]
    QDate UltimDiaGen;

    // Run state
    int PrimerDiaSetmana = 2; // 1 = Sunday ... 7 = Saturday
    int CellesDia = 48;

    QString fitxerIni;  // the settings file this was loaded from
    QString dirDades;   // the data directory

    // Loads every key (missing file or key: its default). Throws ConfigError naming the key and
    // the value when a value does not convert to its type.
    static Configuracio carrega(const QString &dirDades, int primerDiaSetmana = primerDiaSistema(),
                                const QDate &avui = QDate::currentDate());

    // The system's first weekday in the numbering 1 = Sunday ... 7 = Saturday.
    static int primerDiaSistema();
    // Weekday of a date counted from a first day (1..7), like VB's Weekday(d, first).
    static int diaSetmana(const QDate &d, int primerDia);
    // The default of UltimDiaGen: the last day of the week of `avui`.
    static QDate ultimDiaSetmana(const QDate &avui, int primerDia);
    // Cells of one agenda day: whole cells between HoraInici and HoraFinal ("24:00" = midnight).
    static int cellesDia(const QString &horaInici, const QString &horaFinal, int minutsCella);

    static QString nomFitxerBaseDades(); // "QuadrellaV01.db"

    // Every key as (section, key, default text), in the order of the file.
    struct Clau {
        const char *seccio;
        const char *clau;
        QString perDefecte;
    };
    static QList<Clau> claus(const QString &dirDades, const QDate &avui = QDate::currentDate(),
                             int primerDia = primerDiaSistema());
};

// Conversions of settings texts, shared by the settings file and the configuration dialog.
namespace conversio {
bool aBoolea(const QString &text, bool *ok);
qint32 aLong(const QString &text, bool *ok);
int aEnter(const QString &text, bool *ok);   // 16-bit, rounding halves to even
double aReal(const QString &text, bool *ok); // decimal comma (or a dot when there is no comma)
QDate aData(const QString &text, bool *ok);  // as format::llegeixData reads it
QString aHora(const QString &text, bool *ok); // "hh:mm" (00:00 .. 24:00) of "8:00" or "08:00"
} // namespace conversio
