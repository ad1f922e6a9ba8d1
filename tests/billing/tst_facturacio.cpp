// The billing sheets built from a real database: row kinds and codes, job and place breaks, the
// monthly fees, the voucher pass with its limit and surcharge, pending only, the month's bounds,
// the all-clients view, the totals, and the attributes and merges the tab draws.

#include "billing/facturacio.h"
#include "billing/graella_facturacio_taula.h"
#include "support/entorn_proves.h"

#include <QAbstractItemModelTester>
#include <QBrush>
#include <QtTest>
#include <functional>

namespace {

const QString kClient = QStringLiteral("L'Estel");

// Short writers: jobs with the ids the expectations name, their lines, places with a fee.
struct Dades {
    Db &db;
    Dades &lloc(const QString &nom, double quota = 0.0, const QString &client = kClient)
    {
        dades_prova::lloc(db, nom, 60, QString(), client);
        db.query(QStringLiteral("UPDATE Llocs SET llocs_quota = ? WHERE llocs_nom = ?")).bind(quota).bind(nom).exec();
        return *this;
    }
    // A job, whose service lines may follow: feina(...).linia(...).linia(...).
    struct Feina {
        Dades &d;
        int id;
        Feina &linia(const QString &servei, double quantitat, double preu, const QString &unitat = QStringLiteral("h"))
        {
            d.linia(id, servei, quantitat, preu, unitat);
            return *this;
        }
    };
    Feina feina(int id, const QString &lloc, const QString &dia, bool feta, const QString &recurs = QString(),
                const QString &facturada = QString(), double quota = 0.0)
    {
        db.query(QStringLiteral("INSERT INTO Feines (feines_id, llocs_nom, feines_data, feines_hora_inici, feines_hora_fi,"
                                " recursos_nom, feines_feta, feines_data_factura, feines_quota) VALUES (?, ?, ?, '09:00', '10:00', ?, ?, ?, ?)"))
            .bind(id).bind(lloc).bind(dia).bind(recurs.isEmpty() ? QVariant() : QVariant(recurs)).bind(feta ? 1 : 0)
            .bind(facturada.isEmpty() ? QVariant() : QVariant(facturada)).bind(quota).exec();
        return Feina{*this, id};
    }
    void linia(int feina, const QString &servei, double quantitat, double preu, const QString &unitat = QStringLiteral("h"))
    {
        dades_prova::linia(db, feina, servei, quantitat, preu, unitat);
    }
    Dades &xec(int id, const QString &entrega, double valor = 10.0, int feina = 0, const QString &liquidat = QString(),
             const QString &client = kClient)
    {
        db.query(QStringLiteral("INSERT INTO Xecs (xecs_id, clients_nom, feines_id, xecs_data_entrega, xecs_data_liquidat,"
                                " xecs_valor) VALUES (?, ?, ?, ?, ?, ?)"))
            .bind(id).bind(client).bind(feina ? QVariant(feina) : QVariant()).bind(entrega)
            .bind(liquidat.isEmpty() ? QVariant() : QVariant(liquidat)).bind(valor).exec();
        return *this;
    }
};

void vals(Configuracio &cfg)
{
    cfg.ServeiXecs = QStringLiteral("Neteja");
    cfg.ValorXec = 10;
    cfg.CostHoraXec = 2;
    cfg.MaxXecsMes = 4;
}

// A row as "code|cell 1|...|cell 9"; a hidden text shows in braces.
QStringList text(const GraellaFacturacio &g)
{
    QStringList out;
    if (g.buida())
        return out;
    for (int r = 0; r < g.files(); ++r) {
        QStringList cel;
        for (int c = 0; c < GraellaFacturacio::Columnes; ++c)
            cel << (g.cella(r, c).oculta ? QLatin1Char('{') + g.text(r, c) + QLatin1Char('}') : g.text(r, c));
        out << cel.join(QLatin1Char('|'));
    }
    return out;
}

QString totals(const Facturacio &f)
{
    const TotalsFacturacio &t = f.totals();
    return QStringList{t.TotalServeis, t.TotalNXecs, t.TotalXecs, t.TotalPagaments, t.TotalFacturar}.join(QLatin1Char(';'));
}

const QString T7 = QStringLiteral("Total feina:|Total feina:|Total feina:|Total feina:|Total feina:|Total feina:|Total feina:");

struct Cas {
    const char *nom;
    std::function<void(Dades &, Configuracio &)> prepara;
    QString mes;
    QString client;
    bool pendents;
    QString pagament;
    QStringList factura;
    QStringList xecs;
    QString totals; // TotalServeis;TotalNXecs;TotalXecs;TotalPagaments;TotalFacturar
};

const QList<Cas> &casos()
{
    static const QList<Cas> llista = {
        {"fee once instead of the lines, vouchers off",
         [](Dades &d, Configuracio &) {
             d.lloc("A").lloc("B", 45);
             d.feina(101, "A", "2009-03-05", true, "Marta").linia("Neteja", 2, 12);
             d.feina(102, "B", "2009-03-06", true).linia("Neteja", 3, 12);
         },
         "03/2009", kClient, false, QString(),
         {"101|05/03/2009|A|Marta|Si| |Neteja|2|h|24,00", "Si|" + T7 + "|101|24,00",
          "102|06/03/2009|B| |Si| |Neteja|3|h|", "Si|" + T7 + "|102|{QM45}", "SQ|   |B|B|B|B|B|   |Quota mes|45,00"},
         {}, "69,00;;;;69,00"},

        {"a fee place: one fee row for its one done job; none when no job is done",
         [](Dades &d, Configuracio &) {
             d.lloc("Bloc", 45.5).lloc("Casa", 30);
             d.feina(1, "Bloc", "2009-03-02", false).linia("Vidres", 1, 20);
             d.feina(2, "Bloc", "2009-03-09", true).linia("Vidres", 1, 20);
             d.feina(3, "Bloc", "2009-03-16", false);
             d.feina(4, "Casa", "2009-03-03", false);
         },
         "03/2009", kClient, false, "10",
         {"1|02/03/2009|Bloc| |No| |Vidres|1|h|", "No|" + T7 + "|1|{QM45,5}",
          "2|09/03/2009|Bloc| |Si| |Vidres|1|h|", "Si|" + T7 + "|2|{QM45,5}", "3|16/03/2009|Bloc| |No| ||||", "No|" + T7 + "|3|{QM45,5}",
          "SQ|   |Bloc|Bloc|Bloc|Bloc|Bloc|   |Quota mes|45,50", "4|03/03/2009|Casa| |No| ||||", "No|" + T7 + "|4|{QM30}"},
         {}, "45,50;;;10;35,50"},

        {"a billed job keeps the fee it was billed with",
         [](Dades &d, Configuracio &) {
             d.lloc("Bloc", 60).lloc("Pis", 50);
             d.feina(1, "Bloc", "2009-03-02", true, {}, "2009-04-01", 45);
             d.feina(2, "Pis", "2009-03-02", true, {}, "2009-04-01", 0).linia("Vidres", 1.5, 10);
         },
         "03/2009", kClient, false, QString(),
         {"1|02/03/2009|Bloc| |Si|01/04/2009||||", "Si|" + T7 + "|1|{QM45}", "SQ|   |Bloc|Bloc|Bloc|Bloc|Bloc|   |Quota mes|45,00",
          "2|02/03/2009|Pis| |Si|01/04/2009|Vidres|1,5|h|15,00", "Si|" + T7 + "|2|15,00"},
         {}, "60,00;;;;60,00"},

        {"a job not done: No in bold, no amounts; December ends before January",
         [](Dades &d, Configuracio &) {
             d.lloc("Casa");
             d.feina(1, "Casa", "2009-11-30", true).linia("Vidres", 1, 10);
             d.feina(2, "Casa", "2009-12-01", false).linia("Vidres", 2, 10).linia("Abrillantat", 1, 5, "m2");
             d.feina(3, "Casa", "2009-12-31", true).linia("Vidres", 0.333, 10);
             d.feina(4, "Casa", "2010-01-01", true).linia("Vidres", 1, 10);
         },
         "12/2009", kClient, false, QString(),
         {"2|01/12/2009|Casa| |No| |Abrillantat|1|m2|", "2|01/12/2009|Casa| |No| |Vidres|2|h|",
          "No|" + T7 + "|2|", "3|31/12/2009|Casa| |Si| |Vidres|0,333|h|3,33", "Si|" + T7 + "|3|3,33"},
         {}, "3,33;;;;3,33"},

        {"no jobs: one empty row, nothing but minus the payment to pay",
         [](Dades &d, Configuracio &) { d.lloc("Casa"); }, "03/2009", kClient, false,
         "150", {}, {}, "0,00;;;150;-150,00"},

        {"pending only: billed jobs, their fee and settled vouchers go",
         [](Dades &d, Configuracio &cfg) {
             vals(cfg);
             d.lloc("Bloc", 45).lloc("Casa");
             d.feina(1, "Bloc", "2009-03-02", true, {}, "2009-03-31", 45);
             d.feina(2, "Casa", "2009-03-03", true, {}, "2009-03-31").linia("Neteja", 2, 12);
             d.feina(3, "Casa", "2009-03-10", true).linia("Neteja", 1, 12);
             d.xec(7, "2009-02-01", 10, 2, "2009-03-31").xec(8, "2009-02-02");
         },
         "03/2009", kClient, true, QString(),
         {"3|10/03/2009|Casa| |Si| |Neteja|1|h|14,00", "Si|" + T7 + "|3|14,00"},
         {"XC|02/02/2009|8|L'Estel|3|   |Neteja|1|Hores|10,00"}, "14,00;1;10,00;;4,00"},

        {"vouchers settled earlier count towards the limit and keep their hours",
         [](Dades &d, Configuracio &cfg) {
             vals(cfg);
             d.lloc("Casa");
             d.feina(4, "Casa", "2009-03-02", true, {}, "2009-03-15").linia("Neteja", 2, 12);
             d.feina(5, "Casa", "2009-03-20", true).linia("Neteja", 3, 12);
             d.xec(1, "2009-01-01", 10, 4, "2009-03-15").xec(2, "2009-01-01", 12.5, 4, "2009-03-16").xec(3, "2009-01-02");
             d.xec(9, "2009-01-03").xec(6, "2009-01-04");
             d.feina(99, "Casa", "2009-02-10", true);
             d.xec(30, "2009-01-01", 10, 99, "2009-02-15"); // a job of another month
         },
         "03/2009", kClient, false, QString(),
         {"4|02/03/2009|Casa| |Si|15/03/2009|Neteja|2|h|28,00", "Si|" + T7 + "|4|28,00",
          "5|20/03/2009|Casa| |Si| |Neteja|3|h|40,00", "Si|" + T7 + "|5|40,00"},
         {"XC|01/01/2009|2|L'Estel|4|16/03/2009|Neteja|1|Hores|12,50", "XC|01/01/2009|1|L'Estel|4|15/03/2009|Neteja|1|Hores|10,00",
          "XC|02/01/2009|3|L'Estel|5|   |Neteja|1|Hores|10,00",
          "XC|03/01/2009|9|L'Estel|5|   |Neteja|1|Hores|10,00", "XC|04/01/2009|6|L'Estel| |   ||||0,00"}, "68,00;4;42,50;;25,50"},

        {"no candidate for half an hour, an amount under the voucher value or a fee place",
         [](Dades &d, Configuracio &cfg) {
             vals(cfg);
             d.lloc("Bloc", 40).lloc("Casa");
             d.feina(1, "Bloc", "2009-03-02", true).linia("Neteja", 2, 12);
             d.feina(2, "Casa", "2009-03-02", true).linia("Neteja", 0.5, 30);
             d.feina(3, "Casa", "2009-03-03", true).linia("neteja", 1, 9.99);
             d.feina(4, "Casa", "2009-03-04", false).linia("Neteja", 2, 12);
             d.xec(1, "2009-01-01");
         },
         "03/2009", kClient, false, QString(),
         {"1|02/03/2009|Bloc| |Si| |Neteja|2|h|", "Si|" + T7 + "|1|{QM40}", "SQ|   |Bloc|Bloc|Bloc|Bloc|Bloc|   |Quota mes|40,00",
          "2|02/03/2009|Casa| |Si| |Neteja|0,5|h|15,00", "Si|" + T7 + "|2|15,00",
          "3|03/03/2009|Casa| |Si| |neteja|1|h|9,99", "Si|" + T7 + "|3|9,99", "4|04/03/2009|Casa| |No| |Neteja|2|h|", "No|" + T7 + "|4|"},
         {"XC|01/01/2009|1|L'Estel| |   ||||0,00"}, "64,99;0;0,00;;64,99"},

        {"a limit of 0 assigns nothing; 1.5 hours would give one voucher",
         [](Dades &d, Configuracio &cfg) {
             vals(cfg);
             cfg.MaxXecsMes = 0;
             d.lloc("Casa");
             d.feina(1, "Casa", "2009-03-02", true).linia("Neteja", 1.5, 10);
             d.xec(1, "2009-01-01");
         },
         "03/2009", kClient, false, QString(),
         {"1|02/03/2009|Casa| |Si| |Neteja|1,5|h|15,00", "Si|" + T7 + "|1|15,00"},
         {"XC|01/01/2009|1|L'Estel| |   ||||0,00"}, "15,00;0;0,00;;15,00"},

        {"every client: the vouchers settled for jobs of the month",
         [](Dades &d, Configuracio &cfg) {
             vals(cfg);
             d.lloc("Casa").lloc("Altra", 0, "Bonet");
             d.feina(1, "Casa", "2009-03-02", true);
             d.feina(2, "Altra", "2009-03-31", true);
             d.feina(3, "Altra", "2009-04-01", true);
             d.xec(5, "2009-01-01", 10, 1, "2009-04-02").xec(4, "2009-01-01", 12, 2, "2009-04-02", "Bonet");
             d.xec(3, "2009-01-01", 10, 3, "2009-04-02", "Bonet").xec(2, "2009-01-01");
         },
         "03/2009", QString(), false, QString(), {},
         {"XC|01/01/2009|4|Bonet|2|02/04/2009|Neteja|1|Hores|12,00", "XC|01/01/2009|5|L'Estel|1|02/04/2009|Neteja|1|Hores|10,00"},
         ";2;22,00;;"},
    };
    return llista;
}

} // namespace

class TestFacturacio : public QObject {
    Q_OBJECT

private slots:
    void fulls_data()
    {
        QTest::addColumn<int>("cas");
        for (int i = 0; i < casos().size(); ++i)
            QTest::newRow(casos()[i].nom) << i;
    }

    // Each case: the two sheets row by row and the totals the tab shows.
    void fulls()
    {
        QFETCH(int, cas);
        const Cas &c = casos()[cas];
        BaseProva base;
        Dades d{base.db};
        c.prepara(d, base.cfg);
        Facturacio f(base.db, base.cfg);
        f.Carrega_Facturacio({c.mes, c.client, c.pendents, c.pagament});
        QCOMPARE(text(f.FacturaGrid()), c.factura);
        QCOMPARE(text(f.XecsGrid()), c.xecs);
        QCOMPARE(totals(f), c.totals);
        // An empty sheet still has its one row to stand on.
        QVERIFY(f.FacturaGrid().files() >= 1 && f.XecsGrid().files() >= 1);
    }

    // What the tab draws besides the texts, one of each kind: colours, bold, hidden, alignment,
    // the merged blocks; and the item model a table view draws from.
    void atributsIFusions()
    {
        BaseProva base;
        base.cfg.ColorFeina = 111;
        base.cfg.ColorQuota = 0x0000FF; // red in the low byte
        Dades d{base.db};
        casos()[0].prepara(d, base.cfg);
        d.linia(101, QStringLiteral("Vidres"), 1, 5);
        d.feina(103, QStringLiteral("A"), QStringLiteral("2009-03-07"), false);
        Facturacio f(base.db, base.cfg);
        ModelTaulaFacturacio m(f.FacturaGrid());
        QAbstractItemModelTester tester(&m, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(m.rowCount(), 1); // the empty row before any build
        f.Carrega_Facturacio({QStringLiteral("03/2009"), kClient, false, QString()});
        m.refresca();
        const GraellaFacturacio &g = f.FacturaGrid();
        // 0,1 lines of 101; 2 its total; 3 line of 103; 4 its total; 5 line of 102; 6 total; 7 fee
        QCOMPARE(m.rowCount(), 8);
        const auto fons = [&](int r) {
            QList<qint32> l;
            for (int c = 1; c < 10; ++c)
                l << g.cella(r, c).fons;
            return l;
        };
        const qint32 n = SenseFons, q = 0x0000FF;
        QCOMPARE(fons(2), (QList<qint32>{111, n, n, n, n, n, n, 111, 111}));
        QCOMPARE(fons(7), (QList<qint32>{q, q, q, n, n, n, q, q, q}));
        QVERIFY(g.cella(3, ColFeta).negreta && !g.cella(0, ColFeta).negreta);
        QVERIFY(g.cella(6, ColImport).oculta && !g.cella(2, ColImport).oculta);
        QCOMPARE(g.cella(0, ColLloc).alineacio, int(CellaFacturacio::Centre));

        const auto bloc = [&](int r, int c) { return QPair<int, int>(g.bloc(r, c).files, g.bloc(r, c).columnes); };
        using B = QPair<int, int>;
        // Job 101's two lines share their date but not their service; a total row spreads its
        // label over columns 1 to 7, a fee row its place over 2 to 6; 103's date differs.
        QVERIFY(bloc(0, ColData) == B(2, 1) && bloc(1, ColData) == B(0, 0) && bloc(0, ColServei) == B(1, 1));
        QCOMPARE(bloc(2, ColData), B(1, 7));
        QCOMPARE(bloc(7, ColLloc), B(1, 5));
        QCOMPARE(bloc(3, ColLloc), B(1, 1));
        int fila = 1, col = ColLloc;
        g.iniciBloc(fila, col);
        QCOMPARE(B(fila, col), B(0, ColLloc));

        // The model: the hidden fee code painted red on red.
        const QModelIndex quota = m.index(6, ColImport);
        QVERIFY(quota.data(ModelTaulaFacturacio::RolOculta).toBool());
        QCOMPARE(quota.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(255, 0, 0));
        QCOMPARE(quota.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(255, 0, 0));
        QCOMPARE(m.index(2, ColData).data(ModelTaulaFacturacio::RolColumnesBloc).toInt(), 7);
        // The voucher sheet never merges (two settled vouchers of one day and job).
        base.cfg.ServeiXecs = QStringLiteral("Neteja");
        d.xec(1, QStringLiteral("2009-01-01"), 10, 101, QStringLiteral("2009-04-01"));
        d.xec(2, QStringLiteral("2009-01-01"), 10, 101, QStringLiteral("2009-04-01"));
        f.Carrega_Facturacio({QStringLiteral("03/2009"), QString(), false, QString()});
        QCOMPARE(f.XecsGrid().bloc(0, 1).files, 1);
    }

    // The payment field left: the total to pay follows without a rebuild.
    void pagamentSenseReconstruir()
    {
        BaseProva base;
        Dades d{base.db};
        vals(base.cfg);
        d.lloc(QStringLiteral("Casa"));
        d.feina(1, QStringLiteral("Casa"), QStringLiteral("2009-03-02"), true);
        d.linia(1, QStringLiteral("Neteja"), 3, 200.0 / 3); // 200,00 with three vouchers of 10
        for (int i = 1; i <= 3; ++i)
            d.xec(i, QStringLiteral("2009-01-01"));
        base.cfg.CostHoraXec = 0;
        Facturacio f(base.db, base.cfg);
        f.Carrega_Facturacio({QStringLiteral("03/2009"), kClient, false, QString()});
        QCOMPARE(totals(f), QStringLiteral("200,00;3;30,00;;170,00"));
        base.db.exec(QStringLiteral("DELETE FROM Feines")); // nothing is read again
        for (const auto &[pagament, total] : {std::pair{"1.234,5", "-1.064,50"}, {"abc", "170,00"}}) {
            f.posaPagament(QString::fromUtf8(pagament));
            QCOMPARE(f.totals().TotalFacturar, QString::fromUtf8(total));
            QCOMPARE(f.totals().TotalPagaments, QString::fromUtf8(pagament));
        }
        QCOMPARE(f.feinaFila(0) * 10 + f.feinaFila(1), 10);
    }

    void mesos()
    {
        const struct {
            const char *text;
            QDate inici, fi;
        } casos[] = {{"12/2009", {2009, 12, 1}, {2010, 1, 1}}, {" 01/2010 ", {2010, 1, 1}, {2010, 2, 1}}};
        for (const auto &c : casos) {
            const MesFactura m = MesFactura::llegeix(c.text);
            QVERIFY2(MesFactura::valid(c.text) && m.inici == c.inici && m.fi == c.fi, c.text);
        }
        for (const char *dolent : {"3/2009", "13/2009", "00/2009", "03-2009", "03/20a9", "03/2009x"})
            QVERIFY2(!MesFactura::valid(dolent) && !MesFactura::llegeix(dolent).inici.isValid(), dolent);
    }
};

QTEST_GUILESS_MAIN(TestFacturacio)
#include "tst_facturacio.moc"
