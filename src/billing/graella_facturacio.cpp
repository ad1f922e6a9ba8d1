#include "graella_facturacio.h"

#include "core/traduccio.h"

GraellaFacturacio::GraellaFacturacio(const std::array<Columna, Columnes> &columnes, bool fusiona)
    : m_columnes(columnes), m_fusiona(fusiona)
{
    reinicia();
    calculaBlocs();
}

QString GraellaFacturacio::capcalera(int col) const
{
    return Tradueix(m_columnes[size_t(col)].capcalera);
}

void GraellaFacturacio::reinicia()
{
    if (m_files.empty())
        m_files.emplace_back();
    m_files[0] = Fila();
    m_n = 1;
    m_filaBuidaLliure = true;
}

int GraellaFacturacio::afegeixFila()
{
    if (m_filaBuidaLliure) {
        m_filaBuidaLliure = false;
        return 0;
    }
    // A row left from an earlier build is emptied and used again.
    if (size_t(m_n) < m_files.size())
        m_files[size_t(m_n)] = Fila();
    else
        m_files.emplace_back();
    return m_n++;
}

void GraellaFacturacio::setCellaActual(int fila, int col)
{
    m_filaActual = qBound(0, fila, files() - 1);
    m_columnaActual = qBound(0, col, Columnes - 1);
}

void GraellaFacturacio::calculaBlocs()
{
    m_blocs.assign(size_t(m_n) * Columnes, Bloc());
    setCellaActual(m_filaActual, m_columnaActual);
    if (!m_fusiona || m_filaBuidaLliure)
        return;
    const auto b = [this](size_t fila, int col) -> Bloc & { return m_blocs[fila * Columnes + size_t(col)]; };

    // Along each row first: a label spread over several columns stays one cell.
    const size_t n = size_t(m_n);
    for (size_t r = 0; r < n; ++r) {
        const Fila &fila = m_files[r];
        int c = 1;
        while (c < Columnes) {
            int s = c + 1;
            if (!fila[size_t(c)].text.isEmpty()) {
                while (s < Columnes && fila[size_t(s)].text == fila[size_t(c)].text)
                    ++s;
            }
            b(r, c).columnes = s - c;
            for (int k = c + 1; k < s; ++k)
                b(r, k) = Bloc{0, 0};
            c = s;
        }
    }
    // Then down columns 1 to 5, among the cells that no row block has taken.
    const auto lliure = [&](size_t r, int c) { return b(r, c).columnes == 1 && b(r, c).files == 1; };
    for (int c = 1; c <= 5; ++c) {
        size_t r = 0;
        while (r < n) {
            size_t s = r + 1;
            const QString &t = m_files[r][size_t(c)].text;
            if (!t.isEmpty() && lliure(r, c)) {
                while (s < n && lliure(s, c) && m_files[s][size_t(c)].text == t)
                    ++s;
            }
            if (s - r > 1) {
                b(r, c).files = int(s - r);
                for (size_t k = r + 1; k < s; ++k)
                    b(k, c) = Bloc{0, 0};
            }
            r = s;
        }
    }
}

void GraellaFacturacio::iniciBloc(int &fila, int &col) const
{
    if (!bloc(fila, col).cobert())
        return;
    // Covered from the left (a row block) or from above (a column block): blocks never cross.
    for (int c = col - 1; c >= 0; --c) {
        if (!bloc(fila, c).cobert()) {
            if (bloc(fila, c).columnes > col - c) {
                col = c;
                return;
            }
            break;
        }
    }
    for (int r = fila - 1; r >= 0; --r) {
        if (!bloc(r, col).cobert()) {
            if (bloc(r, col).files > fila - r)
                fila = r;
            return;
        }
    }
}
