#include "frm_missatges.h"

#include "widgets/mnemonics.h"

#include "core/traduccio.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

frmMissatges::frmMissatges(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmMissatges"));
    setWindowTitle(Tradueix("Missatges"));
    setModal(false);

    Missatges = new QPlainTextEdit(this);
    Missatges->setObjectName(QStringLiteral("Missatges"));
    Missatges->setReadOnly(true);
    Missatges->setLineWrapMode(QPlainTextEdit::NoWrap);
    Missatges->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    Missatges->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    Tancar = new QPushButton(Tradueix("Tancar"), this);
    Tancar->setObjectName(QStringLiteral("Tancar"));
    Tancar->setDefault(true);
    connect(Tancar, &QPushButton::clicked, this, &frmMissatges::close);

    auto *botons = new QHBoxLayout;
    botons->addStretch();
    botons->addWidget(Tancar);
    auto *l = new QVBoxLayout(this);
    l->addWidget(Missatges);
    l->addLayout(botons);
    assignaMnemonics(this);
}

QSize frmMissatges::sizeHint() const
{
    const QFontMetrics fm(Missatges->font());
    return QSize(fm.horizontalAdvance(QLatin1Char('M')) * 90, fm.lineSpacing() * 24);
}

void frmMissatges::afegeix(const QString &text)
{
    QString t = text;
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    t.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QTextCursor c(Missatges->document());
    c.movePosition(QTextCursor::End);
    c.insertText(t);
    Missatges->verticalScrollBar()->setValue(Missatges->verticalScrollBar()->maximum());
    // The operation runs on this thread: let the window repaint between its steps. Input waits,
    // so nothing else can start meanwhile.
    if (isVisible())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void frmMissatges::titol(const QString &text)
{
    setWindowTitle(text);
}

void frmMissatges::ocupat(bool o)
{
    if (o == m_ocupat)
        return;
    m_ocupat = o;
    Tancar->setEnabled(!o);
    if (o) {
        if (!isVisible()) {
            resize(sizeHint());
            show();
        }
        raise();
        QApplication::setOverrideCursor(Qt::WaitCursor);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    } else {
        QApplication::restoreOverrideCursor();
        Tancar->setFocus();
    }
}

QString frmMissatges::text() const
{
    return Missatges->toPlainText();
}

void frmMissatges::buida()
{
    Missatges->clear();
}

void frmMissatges::closeEvent(QCloseEvent *e)
{
    if (m_ocupat) {
        e->ignore();
        return;
    }
    // A closed message window starts empty the next time, as a new one would.
    buida();
    QDialog::closeEvent(e);
}

void frmMissatges::reject()
{
    if (!m_ocupat)
        QDialog::reject();
}
