#pragma once
// The print-out of the job open in the job editor: its fields as the editor holds them (changes
// not yet stored included), its service lines with their amounts and the job's total.

class EditorFeina;
class Impressora;

// Prints the job and ends the document.
void Imprimeix_Detall_Feina(Impressora &imp, const EditorFeina &editor, int posicioSaltPagina);
