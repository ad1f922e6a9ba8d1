// The configuration dialog's time lists: a cell length that is refused, or tried and changed
// back, leaves the times as the user had them; an inverted day keeps the dialog open on the end.
#include "config/configuracio_dialog.h"
#include "support/entorn_proves.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

class TestConfiguracioHoresDialog : public QObject {
    Q_OBJECT

    std::unique_ptr<DirectoriProva> m_dir;
    std::unique_ptr<Sessio> m_sessio;
    InteraccioGuio m_ui;

    std::unique_ptr<frmConfiguracio> obre()
    {
        m_dir = std::make_unique<DirectoriProva>();
        m_dir->posaParametre("PrimeraExecucio", "0");
        m_dir->posaParametre("MinutsCella", "30");
        m_dir->posaParametre("HoraInici", "08:00");
        m_dir->posaParametre("HoraFinal", "20:00");
        m_sessio = m_dir->obreSessio();
        m_ui = InteraccioGuio();
        auto d = std::make_unique<frmConfiguracio>(*m_sessio, m_ui);
        d->show();
        d->activateWindow();
        [&] { QVERIFY(QTest::qWaitForWindowActive(d.get())); }();
        return d;
    }

    static void escriuISurt(QLineEdit *camp, const QString &text)
    {
        camp->setFocus();
        QTRY_VERIFY(camp->hasFocus());
        camp->selectAll();
        QTest::keyClicks(camp, text);
        QTest::keyClick(camp, Qt::Key_Tab);
        QTest::qWait(30);
    }

    static QStringList hores(const frmConfiguracio &d)
    {
        return {d.ComboHoraInici->currentText(), d.ComboHoraFinal->currentText(), d.ComboHoraIniciDinar->currentText(),
                d.ComboHoraFinalDinar->currentText()};
    }

    static void tria(QComboBox *c, const QString &text)
    {
        c->setCurrentIndex(c->findText(text));
        emit c->activated(c->currentIndex());
    }

private slots:
    void cellLengthKeepsTheChosenTimes()
    {
        auto d = obre();
        tria(d->ComboHoraIniciDinar, "13:00");
        const QStringList abans{"08:00", "20:00", "13:00", "15:00"};
        QCOMPARE(hores(*d), abans);
        const QString horesDia = d->txtHoresDia->text();

        // Refused: nothing else moves.
        for (const char *refusat : {"5", "dos"}) {
            m_ui.crides.clear();
            escriuISurt(d->txtMinutsCella, refusat);
            QCOMPARE(m_ui.crides.size(), 1);
            QCOMPARE(hores(*d), abans);
            QCOMPARE(d->txtHoresDia->text(), horesDia);
        }
        // Tried: the grid of 45 minutes cannot hold 08:00; changed back: the user's times return.
        escriuISurt(d->txtMinutsCella, "45");
        QCOMPARE(d->ComboHoraInici->currentText(), QString("07:30"));
        escriuISurt(d->txtMinutsCella, "30");
        QCOMPARE(hores(*d), abans);
    }

    void anInvertedDayIsRefusedOnTheEndTime()
    {
        auto d = obre();
        tria(d->ComboHoraFinal, "07:00");
        const QByteArray ini = [&] {
            QFile f(m_dir->fitxerIni());
            return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
        }();
        QTest::mouseClick(d->OKButton, Qt::LeftButton);
        QVERIFY(d->isVisible());
        QCOMPARE(m_ui.crides.size(), 1);
        QCOMPARE(m_ui.crides.at(0).text, QString("L'hora final ha de ser posterior a l'hora d'inici"));
        QTRY_VERIFY(d->ComboHoraFinal->hasFocus());
        QCOMPARE(d->ComboHoraFinal->currentText(), QString("07:00"));
        QFile f(m_dir->fitxerIni());
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), ini);
        QVERIFY(!m_sessio->ReiniciarAplicacio);
    }
};

QTEST_MAIN(TestConfiguracioHoresDialog)
#include "tst_configuracio_hores_dialog.moc"
