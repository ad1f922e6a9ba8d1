#include "carrega_feina.h"

#include "core/db.h"

const QString kColumnesFeina = QStringLiteral(
    "Feines.feines_id, Feines.llocs_nom, Feines.feines_data, Feines.feines_hora_inici, Feines.feines_hora_fi, "
    "Feines.recursos_nom, Feines.feines_feta, Feines.feines_data_factura, Feines.feines_observacions");

void llegeixFilaFeina(const Query &q, Feina &f)
{
    f.feines_id = static_cast<int>(q.integer(0));
    f.llocs_nom = q.text(1);
    f.feines_data = q.date(2);
    f.feines_hora_inici = q.text(3);
    f.feines_hora_fi = q.text(4);
    f.recursos_nom = q.text(5);
    f.feines_feta = q.boolean(6);
    f.feines_data_factura = q.date(7);
    f.feines_observacions = q.text(8);
}

bool carregaFeina(Db &db, int feinesId, Feina &f)
{
    Query q = db.prepared(QStringLiteral("SELECT ") + kColumnesFeina + QStringLiteral(" FROM Feines WHERE Feines.feines_id = ?"));
    q.bind(feinesId).exec();
    if (!q.next())
        return false;
    Feina r;
    llegeixFilaFeina(q, r);
    f = r;
    return true;
}
