#include "interaccio_missatges.h"


#include "core/traduccio.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace {

// A message box during a long operation shows the normal pointer, not the busy one.
class PunterNormal {
public:
    PunterNormal()
    {
        if (QApplication::overrideCursor()) {
            QApplication::setOverrideCursor(Qt::ArrowCursor);
            m_posat = true;
        }
    }
    ~PunterNormal()
    {
        if (m_posat)
            QApplication::restoreOverrideCursor();
    }

private:
    bool m_posat = false;
};

QString titolOPrograma(const QString &titol)
{
    return titol.isEmpty() ? QCoreApplication::applicationName() : titol;
}

} // namespace

QWidget *InteraccioMissatges::pareActual() const
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *activa = QApplication::activeWindow())
        return activa;
    return m_pare;
}

void InteraccioMissatges::informa(const QString &titol, const QString &text)
{
    PunterNormal punter;
    QMessageBox box(QMessageBox::Information, titolOPrograma(titol), text, QMessageBox::Ok, pareActual());
    box.button(QMessageBox::Ok)->setText(Tradueix("D'acord"));
    box.exec();
}

namespace {

bool preguntaAmb(const QString &titol, const QString &text, QMessageBox::StandardButton perDefecte, QWidget *pare)
{
    PunterNormal punter;
    QMessageBox box(QMessageBox::Question, titolOPrograma(titol), text, QMessageBox::Yes | QMessageBox::No, pare);
    box.button(QMessageBox::Yes)->setText(QLatin1Char('&') + Tradueix("Sí"));
    box.button(QMessageBox::No)->setText(QLatin1Char('&') + Tradueix("No"));
    box.setDefaultButton(perDefecte);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

} // namespace

bool InteraccioMissatges::pregunta(const QString &titol, const QString &text)
{
    return preguntaAmb(titol, text, QMessageBox::Yes, pareActual());
}

bool InteraccioMissatges::preguntaPerDefecteNo(const QString &titol, const QString &text)
{
    return preguntaAmb(titol, text, QMessageBox::No, pareActual());
}

void InteraccioMissatges::error(const QString &titol, const QString &text)
{
    PunterNormal punter;
    QMessageBox box(QMessageBox::Critical, titolOPrograma(titol), text, QMessageBox::Ok, pareActual());
    box.button(QMessageBox::Ok)->setText(Tradueix("D'acord"));
    box.exec();
}
