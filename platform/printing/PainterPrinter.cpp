#include "platform/printing/PainterPrinter.h"

#include "platform/RuntimeError.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>

namespace {

constexpr double TwipsPerInch = 1440;
constexpr double PixelsPerInch = 96; // a picture's pixel is 15 twips

} // namespace

// Subclasses close the painter in their own destructors, while their device
// still exists.
PainterPrinter::~PainterPrinter() = default;

void PainterPrinter::printLine(const QString &text, double x, double y)
{
    QPainter &p = painter();
    const QFont f = font();
    p.setFont(f);
    // The position is the top of the line; QPainter wants the baseline.
    const double ascent = QFontMetricsF(f, m_device).ascent();
    p.drawText(toDevice(x, y) + QPointF(0, ascent), text);
}

void PainterPrinter::paintPicture(const QImage &picture, double x, double y)
{
    QPainter &p = painter();
    const QPointF topLeft = toDevice(x, y);
    const QSizeF size(picture.width() * m_device->logicalDpiX() / PixelsPerInch,
                      picture.height() * m_device->logicalDpiY() / PixelsPerInch);
    p.drawImage(QRectF(topLeft, size), picture);
}

void PainterPrinter::paintDrawing(const QSize &, const Drawing &drawing, double x, double y)
{
    QPainter &p = painter();
    p.save();
    p.translate(toDevice(x, y));
    drawing(p, m_device->logicalDpiX() / PixelsPerInch);
    p.restore();
}

void PainterPrinter::endDocument()
{
    if (!m_painter.isActive())
        return;
    m_device = nullptr;
    if (!m_painter.end()) {
        discardDocument();
        throw RuntimeError(
            RuntimeError::PrinterError,
            QStringLiteral("Impossibile completare il documento su %1").arg(DeviceName()));
    }
    deliverDocument();
}

void PainterPrinter::newPage()
{
    // A page break before any output still leaves an empty first page.
    painter();
    if (!m_device->newPage()) {
        closePainter();
        discardDocument();
        throw RuntimeError(
            RuntimeError::PrinterError,
            QStringLiteral("Impossibile iniziare una nuova pagina su %1").arg(DeviceName()));
    }
}

void PainterPrinter::killDocument()
{
    if (closePainter())
        discardDocument();
}

bool PainterPrinter::closePainter()
{
    m_device = nullptr;
    if (!m_painter.isActive())
        return false;
    m_painter.end();
    return true;
}

QPainter &PainterPrinter::painter()
{
    if (m_painter.isActive())
        return m_painter;
    QPagedPaintDevice &device = openDevice();
    if (!m_painter.begin(&device)) {
        discardDocument();
        throw RuntimeError(
            RuntimeError::PrinterError,
            QStringLiteral("Impossibile iniziare il documento su %1").arg(DeviceName()));
    }
    m_device = &device;
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    return m_painter;
}

QPointF PainterPrinter::toDevice(double x, double y) const
{
    return QPointF(x * m_device->logicalDpiX() / TwipsPerInch,
                   y * m_device->logicalDpiY() / TwipsPerInch);
}
