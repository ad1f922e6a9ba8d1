#pragma once
// One row per wheel notch on the grids where the user reads line by line (the billing and
// voucher grids, the job editor's service lines). Only while the grid has the focus; otherwise the
// wheel keeps its usual behaviour.

class QAbstractItemView;

void instalaRodaUnaFila(QAbstractItemView *grid);
void treuRodaUnaFila(QAbstractItemView *grid);
