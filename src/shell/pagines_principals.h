#pragma once
// The one place where the business pages are plugged into the main window's tabs and wired to
// each other. Pages know nothing of the main window; everything that links them lives here.

class frmMain;

void creaPagines(frmMain &finestra);
