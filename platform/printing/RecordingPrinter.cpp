#include "platform/printing/RecordingPrinter.h"

#include "platform/RuntimeError.h"

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 15);
}

} // namespace

RecordingPrinter::RecordingPrinter(const QString &deviceName) : m_deviceName(deviceName)
{
}

void RecordingPrinter::setFontName(const QString &name)
{
    Printer::setFontName(name);
    calls << QStringLiteral("FontName ") + name;
}

void RecordingPrinter::setFontSize(double points)
{
    Printer::setFontSize(points);
    calls << QStringLiteral("FontSize ") + number(points);
}

void RecordingPrinter::setFontBold(bool bold)
{
    Printer::setFontBold(bold);
    calls << (bold ? QStringLiteral("FontBold true") : QStringLiteral("FontBold false"));
}

void RecordingPrinter::setCurrentX(double twips)
{
    Printer::setCurrentX(twips);
    calls << QStringLiteral("CurrentX ") + number(twips);
}

void RecordingPrinter::setCurrentY(double twips)
{
    Printer::setCurrentY(twips);
    calls << QStringLiteral("CurrentY ") + number(twips);
}

QStringList RecordingPrinter::Fonts() const
{
    return m_fonts ? *m_fonts : Printer::Fonts();
}

void RecordingPrinter::clear()
{
    calls.clear();
    lines.clear();
    pictures.clear();
    documents = 0;
}

void RecordingPrinter::printLine(const QString &text, double x, double y)
{
    failIfAsked("Print");
    m_documentOpen = true;
    lines.append({text, x, y, FontName(), FontSize(), FontBold()});
    calls << QStringLiteral("Print %1,%2 \"%3\"").arg(number(x), number(y), text);
}

void RecordingPrinter::paintPicture(const QImage &picture, double x, double y)
{
    failIfAsked("PaintPicture");
    m_documentOpen = true;
    pictures.append(picture);
    calls << QStringLiteral("PaintPicture %1x%2 at %3,%4")
                 .arg(picture.width())
                 .arg(picture.height())
                 .arg(number(x), number(y));
}

void RecordingPrinter::endDocument()
{
    failIfAsked("EndDoc");
    calls << QStringLiteral("EndDoc");
    if (m_documentOpen)
        ++documents;
    m_documentOpen = false;
}

void RecordingPrinter::newPage()
{
    failIfAsked("NewPage");
    m_documentOpen = true;
    calls << QStringLiteral("NewPage");
}

void RecordingPrinter::killDocument()
{
    calls << QStringLiteral("KillDoc");
    m_documentOpen = false;
}

void RecordingPrinter::failIfAsked(const char *operation) const
{
    if (failing)
        throw RuntimeError(
            RuntimeError::PrinterError,
            QStringLiteral("%1 non riuscito su %2").arg(QLatin1String(operation), m_deviceName));
}
