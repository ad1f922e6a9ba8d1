#pragma once
// The one place where the business pages are plugged into the main window's tabs.

class frmMain;

void creaPagines(frmMain &finestra);
