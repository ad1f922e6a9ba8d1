#pragma once
// The printer on a real page: a QPainter on any paged device (a QPdfWriter for the command line, a
// QPrinter for the print preview and the system printer), with twips mapped onto the device's
// resolution. The device should have an A4 portrait page without margins (preparaA4), so that twips
// count from the paper's corner as the reports' positions expect.

#include "impressora.h"

#include <QPainter>

class QPagedPaintDevice;

class ImpressoraPainter : public Impressora {
public:
    // Starts painting on the device; throws std::runtime_error when it cannot be painted on
    // (a PDF file that cannot be written, for example).
    explicit ImpressoraPainter(QPagedPaintDevice *device);
    ~ImpressoraPainter() override;

    // An A4 portrait page without margins.
    static void preparaA4(QPagedPaintDevice &device);

protected:
    void dibuixaText(double x, double y, const QString &text) override;
    void dibuixaLinia(double x1, double y1, double x2, double y2) override;
    void dibuixaRequadre(double x1, double y1, double x2, double y2, bool ple) override;
    void dibuixaImatge(const QImage &imatge, double x, double y, double ample, double alt) override;
    void novaPagina() override;
    void tanca() override;

private:
    void preparaPagina();
    QPen llapis() const;

    QPagedPaintDevice *m_device;
    QPainter m_painter;
};
