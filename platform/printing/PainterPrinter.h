#pragma once

#include "platform/printing/Printer.h"

#include <QPainter>

class QPagedPaintDevice;

// A printer whose pages are drawn with QPainter on a paged device (a CUPS
// queue's PDF, the PDF printer's file). It turns twips into device units and keeps
// the painter open from the first output to the end of the document;
// subclasses supply the device and deliver the finished document.
class PainterPrinter : public Printer
{
public:
    ~PainterPrinter() override;

protected:
    // A new document's device, ready to paint on; throws a printer error
    // when there is none.
    virtual QPagedPaintDevice &openDevice() = 0;
    // The painter has finished the document: send it on. Throws a printer
    // error when it cannot.
    virtual void deliverDocument() = 0;
    // Drops a document that cannot be finished.
    virtual void discardDocument() = 0;

    void printLine(const QString &text, double x, double y) override;
    void paintPicture(const QImage &picture, double x, double y) override;
    void paintDrawing(const QSize &pixels, const Drawing &drawing, double x, double y) override;
    void endDocument() override;
    void newPage() override;
    void killDocument() override;

    // Ends the painter of an open document without delivering it, true if
    // one was open. For the destructors of subclasses: their device must
    // outlive the painter.
    bool closePainter();

private:
    QPainter &painter();
    QPointF toDevice(double x, double y) const;

    QPainter m_painter;
    QPagedPaintDevice *m_device = nullptr;
};
