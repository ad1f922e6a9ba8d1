// quadrella(1): the manual page, written from the same options and commands as --help. The
// build runs `quadrella --man` to make the page it installs.
#include "linia_comandes.h"

#include <QRegularExpression>

namespace {

// Text as roff reads it: backslashes and hyphens escaped, no line starting with a control
// character.
QString roff(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\e"));
    text.replace(QLatin1Char('-'), QStringLiteral("\\-"));
    if (text.startsWith(QLatin1Char('.')) || text.startsWith(QLatin1Char('\'')))
        text.prepend(QStringLiteral("\\&"));
    return text;
}

// A usage line with its options in bold and its values in italics: "--place P" -> \fB--place\fR \fIP\fR.
QString us(const QString &linia)
{
    QString sortida;
    const QStringList paraules = linia.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    static const QRegularExpression valor(QStringLiteral("^[A-Z][A-Z:/.]*$"));
    for (const QString &p : paraules) {
        if (!sortida.isEmpty())
            sortida += QLatin1Char(' ');
        QString nucli = p;
        QString obre, tanca;
        while (!nucli.isEmpty() && (nucli.front() == QLatin1Char('[') || nucli.front() == QLatin1Char('(')))
            obre += nucli.front(), nucli.remove(0, 1);
        while (!nucli.isEmpty() && (nucli.back() == QLatin1Char(']') || nucli.back() == QLatin1Char(')')))
            tanca.prepend(nucli.back()), nucli.chop(1);
        const bool esValor = valor.match(nucli).hasMatch();
        sortida += roff(obre) + (esValor ? QStringLiteral("\\fI") : QStringLiteral("\\fB")) + roff(nucli)
            + QStringLiteral("\\fR") + roff(tanca);
    }
    return sortida;
}

} // namespace

QString paginaManual()
{
    const QString versio = QStringLiteral("%1.%2").arg(QUADRELLA_VERSION_MAJOR).arg(QUADRELLA_VERSION_MINOR);
    QString t;
    t += QStringLiteral(".TH QUADRELLA 1 \"\" \"Quadrella %1\" \"Ordres d'usuari\"\n").arg(versio);
    t += QStringLiteral(".SH NOM\nquadrella \\- planificador de feines\n");
    t += QStringLiteral(".SH SINOPSI\n.B quadrella\n[\\fIopcions\\fR] [\\fIordre\\fR [\\fIarguments\\fR]]\n");
    t += QStringLiteral(".SH DESCRIPCIÓ\n"
                        "Quadrella planifica, agenda i factura les feines d'una empresa de serveis que treballa a "
                        "casa dels seus clients. Sense ordre obre el programa d'escriptori; amb una ordre treballa "
                        "sense finestres sobre les mateixes dades.\n");
    t += QStringLiteral(".SH OPCIONS\nLes opcions poden anar a qualsevol lloc de la línia.\n");
    for (const OpcioGlobal &o : opcionsGlobals())
        t += QStringLiteral(".TP\n%1\n%2\n").arg(us(o.nom), roff(o.descripcio));
    t += QStringLiteral(".SH ORDRES\n");
    for (const Comanda &c : comandesOrdenades()) {
        t += QStringLiteral(".TP\n");
        const QStringList linies = c.us.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (int i = 0; i < linies.size(); ++i)
            t += (i == 0 ? QString() : QStringLiteral(".TQ\n")) + QStringLiteral("quadrella %1\n").arg(us(linies[i]));
        t += roff(c.resum.isEmpty() ? QStringLiteral(" ") : c.resum) + QLatin1Char('\n');
    }
    t += QStringLiteral(".SH CODIS DE SORTIDA\n"
                        ".TP\n0\ncorrecte\n"
                        ".TP\n1\nel sistema ho ha refusat o ha fallat (el missatge, a la sortida d'errors)\n"
                        ".TP\n2\nerror d'ús (l'ús de l'ordre, a la sortida d'errors)\n");
    t += QStringLiteral(".SH FITXERS\n"
                        ".TP\nQuadrella.ini\nla configuració, al directori de dades\n"
                        ".TP\nQuadrellaV01.db\nla base de dades per defecte\n"
                        ".TP\nQuadrellaTraduccio.db\nles traduccions\n"
                        ".SH ENTORN\n.TP\nQUADRELLA_DIR\nel directori de dades quan no es dona \\-\\-data\\-dir\n");
    return t;
}
