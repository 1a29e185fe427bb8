#include "platform/printing/Printer.h"

#include "platform/CaratteriLeggibili.h"
#include "platform/RuntimeError.h"
#include "platform/Twips.h"
#include "platform/printing/PrinterFonts.h"

#include <QFontMetricsF>
#include <QPageSize>
#include <QPainter>

Printer::Printer() = default;
Printer::~Printer() = default;

void Printer::setFontName(const QString &name)
{
    m_fontName = name;
}

void Printer::setFontSize(double points)
{
    if (!(points > 0))
        throw RuntimeError(RuntimeError::InvalidProcedureCall,
                           QStringLiteral("Dimensione del carattere non valida: %1").arg(points));
    m_fontSize = points;
}

void Printer::setFontBold(bool bold)
{
    m_fontBold = bold;
}

void Printer::setCurrentX(double twips)
{
    m_x = twips;
}

void Printer::setCurrentY(double twips)
{
    m_y = twips;
}

void Printer::Print(const QString &text)
{
    // In the high-readability font a row that would pass the printable
    // width is printed smaller, that row only; the next starts where the
    // designed font would have put it.
    if (m_caratteri && m_caratteri->attivi()) {
        // The next row goes where the design puts it.
        const double altezza = TextHeight();
        while (m_riduzione > 0.3 && m_x + TextWidth(text) > ScaleWidth())
            m_riduzione *= 0.95;
        printLine(text, m_x, m_y);
        m_riduzione = 1;
        m_x = 0;
        m_y += altezza;
        return;
    }
    printLine(text, m_x, m_y);
    m_x = 0;
    m_y += TextHeight();
}

void Printer::PaintPicture(const QImage &picture, double x, double y)
{
    if (picture.isNull())
        throw RuntimeError(RuntimeError::InvalidProcedureCall, QStringLiteral("Immagine vuota"));
    paintPicture(picture, x, y);
}

void Printer::PaintPicture(const QSize &pixels, const Drawing &drawing, double x, double y)
{
    if (pixels.isEmpty() || !drawing)
        throw RuntimeError(RuntimeError::InvalidProcedureCall, QStringLiteral("Immagine vuota"));
    paintDrawing(pixels, drawing, x, y);
}

void Printer::paintDrawing(const QSize &pixels, const Drawing &drawing, double x, double y)
{
    QImage picture(pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    {
        QPainter p(&picture);
        p.setRenderHint(QPainter::TextAntialiasing);
        drawing(p, 1.0);
    }
    paintPicture(picture, x, y);
}

void Printer::EndDoc()
{
    endDocument();
    m_x = 0;
    m_y = 0;
}

void Printer::NewPage()
{
    newPage();
    m_x = 0;
    m_y = 0;
}

void Printer::KillDoc()
{
    killDocument();
    m_x = 0;
    m_y = 0;
}

void Printer::newPage()
{
    throw RuntimeError(RuntimeError::PrinterError,
                       QStringLiteral("%1 non sa cambiare pagina").arg(DeviceName()));
}

void Printer::killDocument()
{
    throw RuntimeError(RuntimeError::PrinterError,
                       QStringLiteral("%1 non sa annullare un documento").arg(DeviceName()));
}

double Printer::ScaleWidth() const
{
    // An A4 page less the edges no office printer reaches (a quarter inch
    // on each side), for printers that do not know better. 20 twips a point.
    return QPageSize(QPageSize::A4).size(QPageSize::Point).width() * 20 - 2 * 360;
}

QStringList Printer::Fonts() const
{
    return PrinterFonts::families();
}

QString Printer::Fonts(int index) const
{
    const QStringList fonts = Fonts();
    if (index < 0 || index >= fonts.size())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return fonts.at(index);
}

double Printer::TextHeight() const
{
    // Rows are spaced as designed, in the high-readability font too.
    return QFontMetricsF(fontProgettato(), &Twips::device()).lineSpacing();
}

double Printer::TextWidth(const QString &text) const
{
    return QFontMetricsF(font(), &Twips::device()).horizontalAdvance(text);
}

QFont Printer::fontProgettato() const
{
    QFont f(m_fontName);
    f.setPointSizeF(m_fontSize);
    f.setBold(m_fontBold);
    return f;
}

QFont Printer::font() const
{
    QFont f = fontProgettato();
    if (m_caratteri && m_caratteri->attivi()) {
        f = m_caratteri->adatta(f);
        f.setPointSizeF(f.pointSizeF() * m_riduzione);
    }
    return f;
}
