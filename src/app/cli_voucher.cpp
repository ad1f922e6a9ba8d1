// quadrella voucher list --client C [--json]
// quadrella voucher add --client C --id N --value V
// quadrella voucher modify --id N --value V
// quadrella voucher delete --id N [--yes]
#include "cli_facturacio.h"

#include "billing/xecs_facturacio.h"
#include "core/formats.h"
#include "core/sessio.h"
#include "masterdata/xecs_client.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

// The clients tab's voucher rules speak through message boxes; here their messages become the
// command's error, and the one question goes to the terminal (--yes answers it).
class InteraccioXecs : public Interaccio {
public:
    explicit InteraccioXecs(Interaccio &terminal) : m_terminal(terminal) {}
    void informa(const QString &, const QString &text) override { m_missatges << text; }
    bool pregunta(const QString &titol, const QString &text) override { return m_terminal.pregunta(titol, text); }
    void error(const QString &, const QString &text) override { m_missatges << text; }
    QString missatges() const { return m_missatges.join(QLatin1Char('\n')); }

private:
    Interaccio &m_terminal;
    QStringList m_missatges;
};

QString dataIso(const QDate &d)
{
    return d.isValid() ? d.toString(Qt::ISODate) : QString();
}

QJsonObject xecJson(const Xec &x)
{
    return QJsonObject{{QStringLiteral("xecs_id"), x.xecs_id},
                       {QStringLiteral("clients_nom"), x.clients_nom},
                       {QStringLiteral("xecs_valor"), x.xecs_valor},
                       {QStringLiteral("xecs_data_entrega"), dataIso(x.xecs_data_entrega)},
                       {QStringLiteral("xecs_data_liquidat"), dataIso(x.xecs_data_liquidat)},
                       {QStringLiteral("feines_id"), x.feines_id}};
}

void comprova(Resultat r, const InteraccioXecs &io, const QString &siRes)
{
    if (r == Resultat::Fet)
        return;
    const QString m = io.missatges();
    throw ErrorComanda(m.isEmpty() ? siRes : m);
}

int llista(ContextComanda &ctx, Arguments &args)
{
    const QString nomClient = args.required(QStringLiteral("--client"));
    args.finish();
    Sessio &s = ctx.sessio();
    const QList<Xec> xecs = Xecs_Client(s.db(), cli_facturacio::client(s.db(), nomClient));
    if (ctx.json()) {
        QJsonArray a;
        for (const Xec &x : xecs)
            a.append(xecJson(x));
        ctx.escriuJson(a);
        return 0;
    }
    QTextStream &o = ctx.out();
    const QStringList cap = {Tradueix("Nro. de Xec"), Tradueix("Valor"), Tradueix("Data entr."), Tradueix("Data liq."),
                             Tradueix("Feina")};
    o << cap[0].rightJustified(12) << "  " << cap[1].rightJustified(10) << "  " << cap[2].leftJustified(10) << "  "
      << cap[3].leftJustified(10) << "  " << cap[4] << '\n';
    for (const Xec &x : xecs) {
        o << QString::number(x.xecs_id).rightJustified(12) << "  " << format::import(x.xecs_valor).rightJustified(10) << "  "
          << format::dataCurta(x.xecs_data_entrega).leftJustified(10) << "  "
          << format::dataCurta(x.xecs_data_liquidat).leftJustified(10) << "  "
          << (x.feines_id ? QString::number(x.feines_id) : QString()) << '\n';
    }
    o.flush();
    return 0;
}

// The stored voucher after a change.
int mostra(ContextComanda &ctx, Db &db, qint64 id)
{
    Xec x;
    if (!Busca_Xec(db, id, x))
        throw ErrorComanda(Tradueix("El xec no existeix"));
    if (ctx.json())
        ctx.escriuJson(xecJson(x));
    else
        ctx.out() << Tradueix("Nro. de Xec") << ' ' << x.xecs_id << ": " << format::import(x.xecs_valor) << " € ("
                  << x.clients_nom << ')' << Qt::endl;
    return 0;
}

int afegeix(ContextComanda &ctx, Arguments &args)
{
    const QString nomClient = args.required(QStringLiteral("--client"));
    FitxaXec f;
    f.id = args.required(QStringLiteral("--id"));
    f.valor = args.required(QStringLiteral("--value"));
    args.finish();
    Sessio &s = ctx.sessio();
    const QString client = cli_facturacio::client(s.db(), nomClient);
    // The clients tab offers vouchers only to a client that pays with them.
    Query q = s.db().query(QStringLiteral("SELECT clients_xecs FROM Clients WHERE clients_nom = ?"));
    q.bind(client).exec();
    if (!q.next() || !q.boolean(0))
        throw ErrorComanda(Tradueix("El client no paga amb xecs") + QStringLiteral(": ") + client);
    InteraccioXecs io(ctx.interaccio());
    GestioXecs g(s, io);
    const Resultat r = g.AfegirXec(client, f);
    comprova(r, io, Tradueix("El Id. del xec ha de ser numèric"));
    return mostra(ctx, s.db(), f.id.toLongLong());
}

int modifica(ContextComanda &ctx, Arguments &args)
{
    FitxaXec f;
    f.id = args.required(QStringLiteral("--id"));
    f.valor = args.required(QStringLiteral("--value"));
    args.finish();
    Sessio &s = ctx.sessio();
    InteraccioXecs io(ctx.interaccio());
    GestioXecs g(s, io);
    double numero = 0.0;
    format::llegeixReal(f.id, &numero);
    const Resultat r = g.ModificarXec(f);
    comprova(r, io, Tradueix("El xec no existeix"));
    return mostra(ctx, s.db(), arrodoneix::enter(numero));
}

int esborra(ContextComanda &ctx, Arguments &args)
{
    FitxaXec f;
    f.id = args.required(QStringLiteral("--id"));
    const bool yes = args.flag(QStringLiteral("--yes"));
    args.finish();
    ctx.interaccio().setSiATot(yes);
    Sessio &s = ctx.sessio();
    InteraccioXecs io(ctx.interaccio());
    GestioXecs g(s, io);
    double numero = 0.0;
    format::llegeixReal(f.id, &numero);
    const Resultat r = g.EliminarXec(f);
    comprova(r, io, Tradueix("Xec no eliminat"));
    if (!ctx.json())
        ctx.out() << Tradueix("Xec eliminat") << Qt::endl;
    else
        ctx.escriuJson(QJsonObject{{QStringLiteral("xecs_id"), arrodoneix::enter(numero)}});
    return 0;
}

int voucherOrdre(ContextComanda &ctx, Arguments &args)
{
    return executaSubordre(ctx, args, {{"list", llista}, {"add", afegeix}, {"modify", modifica}, {"delete", esborra}});
}

REGISTRA_COMANDA(QStringLiteral("voucher"),
                 QStringLiteral("voucher list --client C [--json]\n"
                                "voucher add --client C --id N --value V\n"
                                "voucher modify --id N --value V\n"
                                "voucher delete --id N [--yes]"),
                 QStringLiteral("els xecs d'un client: llista, afegeix, canvia el valor o esborra"), voucherOrdre);

} // namespace
