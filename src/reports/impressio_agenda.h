#pragma once
// The agenda grid on paper, as the screen shows it: the same cells with their texts, colours, bold
// and underlined jobs, a job's merged block drawn once, the month cells with their day number.
// The grid is fitted to the page's width and runs over as many pages as it needs, each page with
// the header line and the grid's header row; a block cut by a page break is drawn on both pages.

#include <QDate>
#include <QString>

class ModelAgenda;
class Impressora;

// The line above the grid: the program's title, the view and its period, and today's date.
QString capcaleraAgenda(const ModelAgenda &model, const QString &titolPrograma, const QDate &avui);

// Prints the model's grid and ends the document.
void Imprimeix_Agenda(Impressora &imp, const ModelAgenda &model, int posicioSaltPagina,
                      const QString &titolPrograma, const QDate &avui);
