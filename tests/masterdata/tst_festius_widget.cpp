// The closed days' box on the resources tab: what it lists after each action, the message of a
// refused one with nothing changed, and the agenda told to rebuild its headers.
#include "masterdata/festius_widget.h"
#include "support/entorn_proves.h"
#include "support/formulari_proves.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

namespace {

QStringList files(QTableWidget *t)
{
    QStringList out;
    for (int r = 0; r < t->rowCount(); ++r)
        out << t->item(r, 0)->text() + QLatin1Char(' ') + t->item(r, 1)->text();
    return out;
}

} // namespace

class TestFestiusWidget : public QObject {
    Q_OBJECT

private slots:
    void addDeleteImport()
    {
        DirectoriProva dir;
        auto s = dir.obreSessio();
        InteraccioGuio ui;
        FestiusWidget w(*s, ui);
        auto *llista = formulari::fill<QTableWidget>(w, "LlistaFestius");

        // The last: a day already closed: its message, the typing kept.
        const QList<QPair<QString, QString>> dies = {{"25/12/26", "Nadal"}, {"8/12/2026", "Immaculada"}, {"25/12/2026", "Segon"}};
        for (const auto &[text, nom] : dies) {
            formulari::escriu(w, "DataFestiu", text);
            formulari::escriu(w, "DescripcioFestiu", nom);
            formulari::prem(w, "AfegirFestiu");
        }
        QCOMPARE(files(llista), QStringList({"08/12/2026 Immaculada", "25/12/2026 Nadal"}));
        QCOMPARE(formulari::fill<QLineEdit>(w, "DataFestiu")->text(), QStringLiteral("25/12/2026"));
        QCOMPARE(ui.crides.size(), 1);
        QVERIFY(s->RefrescarAgenda);

        llista->setCurrentCell(0, 0);
        formulari::prem(w, "EliminarFestiu");
        QCOMPARE(files(llista), QStringList{"25/12/2026 Nadal"});

        QTemporaryDir tmp;
        QFile ics(tmp.filePath(QStringLiteral("f.ics")));
        QVERIFY(ics.open(QIODevice::WriteOnly) && ics.write("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//x//y//CA\r\nBEGIN:VEVENT\r\nUID:a\r\n"
                  "DTSTART;VALUE=DATE:20270101\r\nSUMMARY:Cap d'any\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n") > 0);
        ics.close();
        w.triaFitxer = [&] { return ics.fileName(); };
        ui.crides.clear();
        formulari::prem(w, "ImportarFestius");
        QCOMPARE(files(llista), QStringList({"25/12/2026 Nadal", "01/01/2027 Cap d'any"}));
        QVERIFY(ui.crides.size() == 1 && ui.crides[0].text.startsWith(QStringLiteral("1 ")));
    }
};

QTEST_MAIN(TestFestiusWidget)
#include "tst_festius_widget.moc"
