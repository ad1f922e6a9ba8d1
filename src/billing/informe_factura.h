#pragma once
// The invoice data of a client's month, for whoever issues the invoice: the client's details in
// grey, every priced line of the done jobs, the place fees, the table of totals with the vouchers
// taken off, "IMPORT FACTURA:", and with a payment on account "Pagaments a compte:" and "TOTAL A
// PAGAR:". It prints the sheets exactly as the last build left them (the end of a commit rebuilds
// them first), and reads the database only for the client's details and the list of services.

class Db;
class Facturacio;
class Impressora;

// Prints and ends the document. The sheets must hold a client's month; `db` is the database they
// were built from. Nothing is changed, so a preview may draw it again. Throws DbError.
void Imprimeix_Dades_Factura(Impressora &imp, Db &db, const Facturacio &facturacio);
