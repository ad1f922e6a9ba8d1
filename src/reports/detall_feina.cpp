#include "detall_feina.h"

#include "marc_informe.h"
#include "text_informe.h"

#include "agenda/editor_feina.h"
#include "core/formats.h"
#include "core/traduccio.h"

namespace {

constexpr int XValor = 1550;
constexpr int VoraQuantitat = 7350;
constexpr int XUnitat = 7600;
constexpr int VoraPreu = 9600;

// Label and value pairs along one line, each label 500 after the previous value and each value
// 200 after its label; the first value at XValor. Moves down a line.
void liniaCamps(MarcInforme &m, const QList<QPair<QString, QString>> &camps)
{
    Impressora &imp = m.imp();
    double x = XValor;
    for (int i = 0; i < camps.size(); ++i) {
        if (i == 0) {
            m.text(MarcInforme::MargeEsquerre, camps[i].first);
        } else {
            m.text(x, camps[i].first);
            x += imp.ampleText(camps[i].first) + 200;
        }
        m.text(x, camps[i].second);
        x += imp.ampleText(camps[i].second) + 500;
    }
    imp.imprimeix(QString());
}

} // namespace

void Imprimeix_Detall_Feina(Impressora &imp, const EditorFeina &ed, int posicioSaltPagina)
{
    MarcInforme marc(imp, posicioSaltPagina);
    MarcInforme::Capcalera cap;
    cap.titol = Tradueix("Detall de la feina nro.:") + QLatin1Char(' ') + QString::number(ed.id());
    cap.linies = [&ed](MarcInforme &m) {
        Impressora &i = m.imp();
        m.lletra(10, false);
        m.baixa(200);
        liniaCamps(m, {{Tradueix("Lloc:"), ed.lloc()}});
        m.baixa(50);
        liniaCamps(m, {{Tradueix("Data:"), ed.data()},
                       {Tradueix("Hora inici:"), ed.horaInici()},
                       {Tradueix("Hora final:"), ed.horaFi()}});
        m.baixa(50);
        liniaCamps(m, {{Tradueix("Recurs:"), ed.recurs()},
                       {Tradueix("Feta:"), ed.feta() ? Tradueix("Si") : Tradueix("No")}});
        m.baixa(50);
        i.setX(MarcInforme::MargeEsquerre);
        i.imprimeix(Tradueix("Observacions:"));
        m.baixa(50);
        for (const QString &l : text_informe::parteix(i, ed.observacions(), MarcInforme::VoraDreta - MarcInforme::MargeEsquerre)) {
            i.setX(MarcInforme::MargeEsquerre);
            i.imprimeix(l);
        }
        m.baixa(350);
        m.text(MarcInforme::MargeEsquerre, Tradueix("Servei"));
        m.textDreta(VoraQuantitat, Tradueix("Quantitat"));
        m.text(XUnitat, Tradueix("Unitat"));
        m.textDreta(VoraPreu, Tradueix("Preu"));
        m.textDreta(MarcInforme::VoraDreta, Tradueix("Import"));
    };
    cap.espaiAbansRegla = 300;
    cap.espaiDespresRegla = 150;
    marc.inicia(cap);

    for (const LiniaServei &l : ed.linies()) {
        marc.comprovaSalt();
        marc.lletra(10, false);
        const QString quantitat = EditorFeina::textNombre(l.quantitat);
        const double ampleServei = VoraQuantitat - imp.ampleText(quantitat) - 150 - MarcInforme::MargeEsquerre;
        marc.text(MarcInforme::MargeEsquerre,
                  text_informe::retalla(imp, l.serveis_nom + QStringLiteral(". ") + l.descripcio, ampleServei));
        marc.textDreta(VoraQuantitat, quantitat);
        marc.text(XUnitat, text_informe::retalla(imp, l.unitat, VoraPreu - 900 - XUnitat));
        marc.textDreta(VoraPreu, format::import(l.preu));
        marc.textDreta(MarcInforme::VoraDreta, format::import(l.quantitat * l.preu));
        imp.imprimeix(QString());
        marc.baixa(200);
    }

    marc.comprovaSalt();
    marc.baixa(400);
    marc.lletra(12, true);
    const double y = imp.y();
    imp.requadre(4300, y - 60, 11100, y + imp.altLinia() + 40);
    marc.textDreta(MarcInforme::VoraDreta, Tradueix("IMPORT FEINA:") + QLatin1Char(' ') + format::import(ed.total())
                                               + QStringLiteral(" €"));
    imp.imprimeix(QString());
    marc.lletra(10, false);
    marc.acaba();
}
