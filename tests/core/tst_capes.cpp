// The folders of src/ depend one way, so that a reader can learn them from the engine up:
// app → shell → feature folders → widgets → jobs → core. Feature folders may include each other
// as long as no circle forms, and engine files include no widget header.
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QStringList Funcionalitats = {"agenda", "masterdata", "billing", "reports", "config"};

int nivell(const QString &carpeta)
{
    static const QHash<QString, int> nivells = {
        {"core", 0}, {"jobs", 1}, {"widgets", 2}, {"shell", 4}, {"app", 5}};
    if (Funcionalitats.contains(carpeta))
        return 3;
    return nivells.value(carpeta, -1);
}

bool esWidget(const QString &fitxer)
{
    static const QRegularExpression re(QStringLiteral("_(page|dialog|window|widget)\\.(h|cpp)$"));
    return re.match(fitxer).hasMatch();
}

bool hiHaCercle(const QHash<QString, QSet<QString>> &graf)
{
    // Depth-first search with the folders on the current path marked.
    QHash<QString, int> estat; // 1 on the path, 2 finished
    std::function<bool(const QString &)> visita = [&](const QString &n) {
        estat[n] = 1;
        for (const QString &m : graf.value(n)) {
            if (estat.value(m) == 1 || (estat.value(m) == 0 && visita(m)))
                return true;
        }
        estat[n] = 2;
        return false;
    };
    for (auto it = graf.begin(); it != graf.end(); ++it)
        if (estat.value(it.key()) == 0 && visita(it.key()))
            return true;
    return false;
}

// Every include of src/ that breaks the order, as "file: include" lines.
QStringList violacions(const QString &src)
{
    static const QRegularExpression inclusio(QStringLiteral("^\\s*#\\s*include\\s+\"([^\"]+)\""));
    QStringList errors;
    QHash<QString, QSet<QString>> funcionalitats;
    QDirIterator it(src, {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString cami = it.next();
        const QString relatiu = QDir(src).relativeFilePath(cami);
        const QString carpeta = relatiu.section('/', 0, 0);
        const bool motor = !esWidget(relatiu) && carpeta != "widgets" && nivell(carpeta) >= 0 && nivell(carpeta) <= 3;
        QFile f(cami);
        if (!f.open(QIODevice::ReadOnly))
            continue;
        while (!f.atEnd()) {
            const auto m = inclusio.match(QString::fromUtf8(f.readLine()));
            if (!m.hasMatch())
                continue;
            const QString inclos = m.captured(1);
            const QString desti = inclos.contains('/') ? inclos.section('/', 0, 0) : carpeta;
            const QString linia = relatiu + ": " + inclos;
            if (motor && (esWidget(inclos) || desti == "widgets" || desti == "shell"))
                errors << linia + " (engine file includes widget code)";
            if (desti == carpeta || nivell(desti) < 0)
                continue;
            if (nivell(desti) > nivell(carpeta))
                errors << linia + " (includes a folder above its own)";
            else if (nivell(desti) == 3 && nivell(carpeta) == 3)
                funcionalitats[carpeta].insert(desti);
        }
    }
    if (hiHaCercle(funcionalitats))
        errors << QStringLiteral("feature folders include each other in a circle");
    errors.sort();
    return errors;
}

void escriu(const QString &cami, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(cami).path());
    QFile f(cami);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(text);
}

} // namespace

class TestCapes : public QObject {
    Q_OBJECT

private slots:
    void theTreeDependsOneWay()
    {
        const QStringList errors = violacions(QStringLiteral(QUADRELLA_SOURCE_DIR "/src"));
        QVERIFY2(errors.isEmpty(), qPrintable(errors.join('\n')));
    }

    // The checker itself: each kind of breach in a small tree of its own.
    void eachBreachIsReported_data()
    {
        QTest::addColumn<QString>("fitxer");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("esperat");
        QTest::newRow("helper includes a page") << "widgets/roda.cpp" << QByteArray("#include \"agenda/agenda_page.h\"\n")
                                                << "widgets/roda.cpp: agenda/agenda_page.h (includes a folder above its own)";
        QTest::newRow("page includes the shell") << "agenda/a_page.cpp" << QByteArray("#include \"shell/frm_main.h\"\n")
                                                 << "agenda/a_page.cpp: shell/frm_main.h (includes a folder above its own)";
        QTest::newRow("engine includes a widget") << "jobs/motor.cpp" << QByteArray("#include \"jobs/x_dialog.h\"\n")
                                                  << "jobs/motor.cpp: jobs/x_dialog.h (engine file includes widget code)";
        QTest::newRow("features in a circle") << "masterdata/b.cpp" << QByteArray("#include \"agenda/a.h\"\n")
                                              << "feature folders include each other in a circle";
    }

    void eachBreachIsReported()
    {
        QFETCH(QString, fitxer);
        QFETCH(QByteArray, text);
        QFETCH(QString, esperat);
        QTemporaryDir dir;
        escriu(dir.filePath("agenda/a.cpp"), "#include \"masterdata/b.h\"\n#include \"core/db.h\"\n");
        QVERIFY(violacions(dir.path()).isEmpty());
        escriu(dir.filePath(fitxer), text);
        QCOMPARE(violacions(dir.path()), QStringList{esperat});
    }
};

QTEST_GUILESS_MAIN(TestCapes)
#include "tst_capes.moc"
