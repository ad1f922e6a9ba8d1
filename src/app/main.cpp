// Quadrella's entry point: a command runs headless; no command starts the desktop program.
#include "linia_comandes.h"

#include "shell/aplicacio_escriptori.h"
#include "widgets/interaccio_missatges.h"
#include "shell/logo_quadrella.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QTextStream>
#include <cstdio>
#include <memory>

namespace {

// True when the line names no command (only global options): the desktop program is wanted.
bool volEscriptori(const QStringList &args)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args[i];
        if (a == QLatin1String("--data-dir")) {
            ++i;
            continue;
        }
        if (a.startsWith(QLatin1String("--data-dir=")) || a == QLatin1String("--json"))
            continue;
        return false; // a command, --help or --version, or something to complain about
    }
    return true;
}

bool hiHaPantalla()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

void posaNoms()
{
    QCoreApplication::setApplicationName(QStringLiteral("Quadrella"));
    QCoreApplication::setOrganizationName(QStringLiteral("Quadrella"));
    QCoreApplication::setApplicationVersion(QStringLiteral("%1.%2").arg(QUADRELLA_VERSION_MAJOR).arg(QUADRELLA_VERSION_MINOR));
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    QTextStream out(stdout);
    QTextStream err(stderr);

    if (!volEscriptori(args) && comandaDibuixa(args)) {
        // Reports measure and draw texts, which takes a graphical application; the command line
        // shows no window, so it needs no display.
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        // The folder Qt falls back to anyway, named so that it does not warn about it on stderr.
        if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
            qputenv("XDG_RUNTIME_DIR", QStringLiteral("%1/runtime-%2").arg(QDir::tempPath(), qEnvironmentVariable("USER", QStringLiteral("quadrella"))).toLocal8Bit());
        QGuiApplication app(argc, argv);
        posaNoms();
        return executaLiniaComandes(args, out, err);
    }
    if (!volEscriptori(args)) {
        QCoreApplication app(argc, argv);
        posaNoms();
        return executaLiniaComandes(args, out, err);
    }

    if (!hiHaPantalla()) {
        err << "quadrella: no hi ha cap pantalla disponible per al programa d'escriptori "
               "(ni DISPLAY ni WAYLAND_DISPLAY ni QT_QPA_PLATFORM).\n"
               "Les ordres de la línia de comandes funcionen sense pantalla.\n\n"
            << textAjuda() << Qt::flush;
        return 1;
    }

    QApplication app(argc, argv);
    posaNoms();
    QApplication::setApplicationDisplayName(QStringLiteral("Quadrella"));
    QApplication::setDesktopFileName(QStringLiteral("quadrella"));
    QApplication::setWindowIcon(iconaQuadrella());
    // The program ends when the main window's unload work is done, not when a window closes.
    QApplication::setQuitOnLastWindowClosed(false);

    return executaLiniaComandes(args, out, err, [&](const QString &dirDades) {
        InteraccioMissatges ui;
        AplicacioEscriptori programa(dirDades, ui);
        QObject::connect(&programa, &AplicacioEscriptori::acabada, &app, [] { QCoreApplication::exit(0); },
                         Qt::QueuedConnection);
        if (!programa.inicia())
            return 1;
        return QApplication::exec();
    });
}
