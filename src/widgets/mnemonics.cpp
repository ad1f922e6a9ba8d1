#include "mnemonics.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QSet>
#include <QWidget>

namespace {

// The letter a caption already claims with "&x", or a null char.
QChar marcat(const QString &text)
{
    for (int i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == QLatin1Char('&')) {
            if (text[i + 1] == QLatin1Char('&')) {
                ++i;
                continue;
            }
            return text[i + 1].toLower();
        }
    }
    return QChar();
}

QString ambMnemonic(const QString &text, QSet<QChar> &usades)
{
    if (text.isEmpty())
        return text;
    const QChar ja = marcat(text);
    if (!ja.isNull()) {
        usades.insert(ja);
        return text;
    }
    // Prefer the first letter of a word, then any letter.
    for (int passada = 0; passada < 2; ++passada) {
        for (int i = 0; i < text.size(); ++i) {
            const QChar c = text[i];
            if (!c.isLetterOrNumber())
                continue;
            const bool iniciParaula = i == 0 || !text[i - 1].isLetterOrNumber();
            if (passada == 0 && !iniciParaula)
                continue;
            const QChar clau = c.toLower();
            // Accented letters are awkward to type with Alt on many layouts.
            if (clau.unicode() > 127 || usades.contains(clau))
                continue;
            usades.insert(clau);
            QString r = text;
            r.insert(i, QLatin1Char('&'));
            return r;
        }
    }
    return text;
}

} // namespace

void assignaMnemonics(QWidget *arrel)
{
    if (!arrel)
        return;
    QSet<QChar> usades;
    QList<QWidget *> candidats;
    const auto fills = arrel->findChildren<QWidget *>();
    // Captions that already carry a mnemonic are claimed first.
    for (QWidget *w : fills) {
        QString text;
        if (auto *l = qobject_cast<QLabel *>(w); l && l->buddy())
            text = l->text();
        else if (auto *b = qobject_cast<QAbstractButton *>(w))
            text = b->text();
        else if (auto *g = qobject_cast<QGroupBox *>(w); g && g->isCheckable())
            text = g->title();
        else
            continue;
        const QChar ja = marcat(text);
        if (!ja.isNull())
            usades.insert(ja);
        else
            candidats << w;
    }
    for (QWidget *w : std::as_const(candidats)) {
        if (auto *l = qobject_cast<QLabel *>(w))
            l->setText(ambMnemonic(l->text(), usades));
        else if (auto *b = qobject_cast<QAbstractButton *>(w))
            b->setText(ambMnemonic(b->text(), usades));
        else if (auto *g = qobject_cast<QGroupBox *>(w))
            g->setTitle(ambMnemonic(g->title(), usades));
    }
}
