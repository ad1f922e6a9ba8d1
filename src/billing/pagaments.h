#pragma once
// The payment on account of a client's month: one row per client and month while it is not 0,
// amounts rounded to the cent (a half to the even cent).

#include <QString>

class Db;

// The stored payment of the month, 0 when there is none.
double Pagament_Mes(Db &db, const QString &mes, const QString &client);

// Stores the amount typed in the payment field and returns what is stored now. An empty text is
// 0, which removes the month's row; a text that is not a number stores nothing and returns 0.
// Without a client nothing is stored.
double Grava_Pagament(Db &db, const QString &mes, const QString &client, const QString &import);

// A payment as the field shows it: "" for 0, else "#,##0.00".
QString textPagament(double import);
