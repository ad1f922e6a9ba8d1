#include "execucio_cli.h"

#include <QProcess>

SortidaCli executaCli(QStringList args, const QString &dir, QProcessEnvironment entorn)
{
    if (!args.contains(QStringLiteral("--data-dir")))
        args << QStringLiteral("--data-dir") << dir;
    entorn.remove(QStringLiteral("QUADRELLA_DIR"));
    QProcess p;
    p.setProcessEnvironment(entorn);
    p.setStandardInputFile(QProcess::nullDevice());
    p.start(QStringLiteral(QUADRELLA_EXECUTABLE), args);
    if (!p.waitForFinished(120000))
        qFatal("quadrella did not finish");
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

QProcessEnvironment entornSensePantalla()
{
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    for (const char *v : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        e.remove(QString::fromLatin1(v));
    return e;
}
