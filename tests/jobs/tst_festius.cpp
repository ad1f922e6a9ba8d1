// Closed days: typed one by one and imported from iCalendar files as public calendars publish
// them (all-day events, several days, timed appointments, repeats, duplicates, broken files).
#include "jobs/festius.h"
#include "support/entorn_proves.h"

#include <QtTest>

namespace {

// The stored closed days as "yyyy-mm-dd description".
QStringList tancats(Db &db)
{
    QStringList out;
    for (const Festiu &f : Festius(db).llista())
        out << f.data.toString(Qt::ISODate) + QLatin1Char(' ') + f.descripcio;
    return out;
}

QByteArray calendari(const QByteArray &esdeveniments)
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Ajuntament//Festius//CA\r\n" + esdeveniments + "END:VCALENDAR\r\n";
}

QByteArray diaSencer(const char *inici, const char *resum, const QByteArray &mes = {})
{
    return QByteArray("BEGIN:VEVENT\r\nUID:") + inici + resum + "\r\nDTSTART;VALUE=DATE:" + inici + "\r\nSUMMARY:" + resum
           + "\r\n" + mes + "END:VEVENT\r\n";
}

} // namespace

class TestFestius : public QObject {
    Q_OBJECT

private slots:
    void import_data()
    {
        QTest::addColumn<QByteArray>("fitxer");
        QTest::addColumn<QStringList>("esperats");
        QTest::addColumn<int>("afegits");
        QTest::addColumn<QStringList>("avisos"); // a word each warning must hold, in order
        QTest::addColumn<bool>("error");

        const QStringList nadal{"2026-12-08 Prèvia", "2026-12-25 Nadal"}; // stored before each import
        QTest::newRow("all-day events, one with an end")
            << calendari(diaSencer("20260101", "Cap d'any", "DTEND;VALUE=DATE:20260102\r\n") + diaSencer("20260624", "Sant Joan"))
            << QStringList{"2026-01-01 Cap d'any", "2026-06-24 Sant Joan"} + nadal << 2 << QStringList{} << false;
        QTest::newRow("closing over several days, by end and by duration")
            << calendari(diaSencer("20260810", "Vacances", "DTEND;VALUE=DATE:20260813\r\n")
                         + diaSencer("20261130", "Inventari", "DURATION:P2D\r\n"))
            << QStringList{"2026-08-10 Vacances", "2026-08-11 Vacances", "2026-08-12 Vacances", "2026-11-30 Inventari",
                           "2026-12-01 Inventari"} + nadal
            << 5 << QStringList{} << false;
        QTest::newRow("a timed appointment is no closed day")
            << calendari("BEGIN:VEVENT\r\nUID:r\r\nDTSTART:20260310T090000Z\r\nDTEND:20260310T100000Z\r\nSUMMARY:Reunió\r\nEND:VEVENT\r\n"
                         + diaSencer("20260319", "Sant Josep"))
            << QStringList{"2026-03-19 Sant Josep"} + nadal << 1 << QStringList{"Reunió"} << false;
        QTest::newRow("a stored day keeps its text; a repeat in the file is skipped too")
            << calendari(diaSencer("20261225", "Natividad") + diaSencer("20261226", "Sant Esteve")
                         + diaSencer("20261226", "Segon dia"))
            << QStringList{"2026-12-08 Prèvia", "2026-12-25 Nadal", "2026-12-26 Sant Esteve"} << 1
            << QStringList{"Natividad", "Segon dia"} << false;
        QTest::newRow("escaped text, a cancelled and a repeating event")
            << calendari(diaSencer("20260911", "Diada\\, Catalunya") + diaSencer("20260501", "Treball", "STATUS:CANCELLED\r\n")
                         + diaSencer("20260101", "Any nou", "RRULE:FREQ=YEARLY\r\n"))
            << QStringList{"2026-01-01 Any nou", "2026-09-11 Diada, Catalunya"} + nadal << 2
            << QStringList{"Treball", "Any nou"} << false;
        QTest::newRow("not a calendar: nothing changes") << QByteArray("[General]\nBaseDades=x\n") << nadal << 0
                                                        << QStringList{} << true;
    }

    void import()
    {
        QFETCH(QByteArray, fitxer);
        QFETCH(QStringList, esperats);
        QFETCH(int, afegits);
        QFETCH(QStringList, avisos);
        QFETCH(bool, error);
        BaseProva b;
        Festius festius(b.db);
        QCOMPARE(festius.Afegeix_Festiu(QDate(2026, 12, 8), QStringLiteral("Prèvia")), QString());
        QCOMPARE(festius.Afegeix_Festiu(QDate(2026, 12, 25), QStringLiteral("Nadal")), QString());
        QTemporaryDir tmp;
        QFile f(tmp.filePath(QStringLiteral("festius.ics")));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(fitxer);
        f.close();

        const ResultatImportacio r = festius.Importa_Festius(f.fileName());
        QCOMPARE(r.error.isEmpty(), !error);
        QCOMPARE(r.afegits, afegits);
        QCOMPARE(tancats(b.db), esperats);
        QCOMPARE(r.avisos.size(), avisos.size());
        for (int i = 0; i < avisos.size(); ++i)
            QVERIFY2(r.avisos[i].contains(avisos[i]), qPrintable(r.avisos[i]));
    }

    // Typed closed days: a second one on a date is refused and the first kept; a year lists its
    // own days only; deleting a day that is not closed says so.
    void typedDays()
    {
        BaseProva b;
        Festius festius(b.db);
        QCOMPARE(festius.Afegeix_Festiu(QDate(2026, 12, 31), QStringLiteral("  Tancament  ")), QString());
        QCOMPARE(festius.Afegeix_Festiu(QDate(2027, 1, 1), QStringLiteral("Cap d'any")), QString());
        QVERIFY(festius.Afegeix_Festiu(QDate(2026, 12, 31), QStringLiteral("Un altre")).contains(QStringLiteral("Tancament")));
        QVERIFY(!festius.Afegeix_Festiu(QDate(), QStringLiteral("x")).isEmpty());
        QCOMPARE(tancats(b.db), QStringList({"2026-12-31 Tancament", "2027-01-01 Cap d'any"}));
        QCOMPARE(festius.llista(2027).size(), 1);

        QCOMPARE(festius.Esborra_Festiu(QDate(2026, 12, 31)), QString());
        QVERIFY(!festius.Esborra_Festiu(QDate(2026, 12, 31)).isEmpty());
        QCOMPARE(tancats(b.db), QStringList{"2027-01-01 Cap d'any"});
    }
};

QTEST_GUILESS_MAIN(TestFestius)
#include "tst_festius.moc"
