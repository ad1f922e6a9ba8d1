// The place form tells the shell when a stored place's rhythm changed (so its pending jobs can be
// re-planned), with the "works on closed days" box among the rhythm's fields; a change of
// anything else says nothing.
#include "masterdata/clients_page.h"
#include "masterdata/llocs_widget.h"
#include "mestres_proves.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

class TestLlocsRitmePage : public QObject {
    Q_OBJECT

private slots:
    void rhythmChangeIsAnnounced()
    {
        EntornMestres e;
        dades_prova::client(e.db(), QStringLiteral("Client"));
        dades_prova::lloc(e.db(), QStringLiteral("Casa"), 30, QString(), QStringLiteral("Client"));
        ClientsPage p(*e.sessio, e.io);
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        p.findChild<QListWidget *>(QStringLiteral("ClientsLlista"))->setCurrentRow(0);
        p.findChild<QListWidget *>(QStringLiteral("LlocsLlista"))->setCurrentRow(0);
        QSignalSpy spy(p.llocs(), &LlocsWidget::ritmeCanviat);
        auto *modificar = p.findChild<QPushButton *>(QStringLiteral("ModificarLloc"));

        p.findChild<QLineEdit *>(QStringLiteral("AdrecaLloc"))->setText(QStringLiteral("Carrer Major 1"));
        QTest::mouseClick(modificar, Qt::LeftButton);
        QCOMPARE(spy.count(), 0);

        p.findChild<QCheckBox *>(QStringLiteral("FestiusLloc"))->setChecked(true);
        QTest::mouseClick(modificar, Qt::LeftButton);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.first().first().toString(), QStringLiteral("Casa"));
        QCOMPARE(e.compte(QStringLiteral("SELECT llocs_festius FROM Llocs")), 1);
    }
};

QTEST_MAIN(TestLlocsRitmePage)
#include "tst_llocs_ritme_page.moc"
