// Quadrella's entry point: a command runs headless; no command starts the desktop program.
#include "linia_comandes.h"

#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

int main(int argc, char *argv[])
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);

    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Quadrella"));
    QCoreApplication::setOrganizationName(QStringLiteral("Quadrella"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    return executaLiniaComandes(args, out, err);
}
