#pragma once
// Runs the quadrella executable as a user would from a terminal, on a given data directory, and
// keeps what it answered.

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QStringList>

struct SortidaCli {
    int codi = -1;
    QString out;
    QString err;
    QJsonDocument document() const { return QJsonDocument::fromJson(out.toUtf8()); }
    QJsonObject json() const { return document().object(); }
};

// Adds `--data-dir dir` unless the arguments name one; QUADRELLA_DIR is always left out of the
// environment, and standard input is empty (nobody at the terminal to answer).
SortidaCli executaCli(QStringList args, const QString &dir,
                      QProcessEnvironment entorn = QProcessEnvironment::systemEnvironment());

// The same environment without any display: what a headless server has.
QProcessEnvironment entornSensePantalla();
