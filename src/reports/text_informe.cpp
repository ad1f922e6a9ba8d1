#include "text_informe.h"

#include "impressora.h"

#include <QRegularExpression>

namespace text_informe {

QString retalla(const Impressora &imp, const QString &text, double ample)
{
    if (imp.ampleText(text) <= ample)
        return text;
    const QString punts(QChar(0x2026));
    QString t = text;
    while (!t.isEmpty() && imp.ampleText(t + punts) > ample)
        t.chop(1);
    return t.isEmpty() ? QString() : t.trimmed() + punts;
}

QStringList parteix(const Impressora &imp, const QString &text, double ample)
{
    QStringList linies;
    static const QRegularExpression salts(QStringLiteral("\r\n|\r|\n"));
    for (const QString &paragraf : text.split(salts)) {
        QString actual;
        const qsizetype abans = linies.size();
        for (const QString &paraula : paragraf.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QString amb = actual.isEmpty() ? paraula : actual + QLatin1Char(' ') + paraula;
            if (imp.ampleText(amb) <= ample || actual.isEmpty()) {
                actual = amb;
            } else {
                linies << actual;
                actual = paraula;
            }
            if (imp.ampleText(actual) > ample) {
                linies << retalla(imp, actual, ample);
                actual.clear();
            }
        }
        if (!actual.isEmpty() || linies.size() == abans)
            linies << actual;
    }
    return linies;
}

} // namespace text_informe
