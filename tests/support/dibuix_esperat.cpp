#include "dibuix_esperat.h"

#include <QDir>
#include <QFile>
#include <QtTest>

void comparaAmbDibuix(const QString &carpeta, const QString &cas, const QString &actual)
{
    const QString fitxer = QStringLiteral(QUADRELLA_SOURCE_DIR "/tests/") + carpeta + QStringLiteral("/dibuixos/") + cas
                           + QStringLiteral(".txt");
    QFile f(fitxer);
    if (qEnvironmentVariableIsSet("QUADRELLA_REGENERA_DIBUIXOS")) {
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(actual.toUtf8());
        qWarning("%s rewritten", qPrintable(fitxer));
        return;
    }
    QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(fitxer + QStringLiteral(" is missing")));
    const QString esperat = QString::fromUtf8(f.readAll());
    if (esperat == actual)
        return;
    const QString copia = QDir::temp().filePath(QStringLiteral("quadrella-") + cas + QStringLiteral(".txt"));
    QFile sortida(copia);
    if (sortida.open(QIODevice::WriteOnly | QIODevice::Truncate))
        sortida.write(actual.toUtf8());
    const QStringList a = esperat.split(QLatin1Char('\n')), b = actual.split(QLatin1Char('\n'));
    int i = 0;
    while (i < a.size() && i < b.size() && a[i] == b[i])
        ++i;
    QFAIL(qPrintable(QStringLiteral("%1: line %2 differs\n  expected: %3\n  actual:   %4\n  diff -u %5 %6")
                         .arg(cas).arg(i + 1).arg(a.value(i), b.value(i), fitxer, copia)));
}
