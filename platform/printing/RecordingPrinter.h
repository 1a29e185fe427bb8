#pragma once

#include "platform/printing/Printer.h"

#include <QList>
#include <QStringList>
#include <optional>

// A printer that prints nothing and writes down every call made on it, in
// order, as short texts ("FontSize 12", "CurrentX 1000", "Print 500,2000
// \"text\"", "PaintPicture 446x588 at 1000,100", "NewPage", "EndDoc",
// "KillDoc"), so tests compare
// a printout with a list of strings. It can be told to fail like a broken
// printer.
class RecordingPrinter final : public Printer
{
public:
    // One line as it went onto the page.
    struct Line
    {
        QString text;
        double x;
        double y;
        QString fontName;
        double fontSize;
        bool fontBold;
    };

    explicit RecordingPrinter(const QString &deviceName = QStringLiteral("Stampante di prova"));

    QString DeviceName() const override { return m_deviceName; }

    void setFontName(const QString &name) override;
    void setFontSize(double points) override;
    void setFontBold(bool bold) override;
    void setCurrentX(double twips) override;
    void setCurrentY(double twips) override;

    // Without a list set, the fonts are the system's.
    QStringList Fonts() const override;
    using Printer::Fonts;
    void setFonts(const QStringList &fonts) { m_fonts = fonts; }

    // Every call, in order.
    QStringList calls;
    // The lines printed and the pictures painted, in order.
    QList<Line> lines;
    QList<QImage> pictures;
    // Documents ended with something on them.
    int documents = 0;
    // While set, every output (Print, PaintPicture, NewPage, EndDoc) fails with a
    // printer error and records nothing.
    bool failing = false;

    // Forgets what was recorded; the font and position stay.
    void clear();

protected:
    void printLine(const QString &text, double x, double y) override;
    void paintPicture(const QImage &picture, double x, double y) override;
    void endDocument() override;
    void newPage() override;
    void killDocument() override;

private:
    void failIfAsked(const char *operation) const;

    QString m_deviceName;
    std::optional<QStringList> m_fonts;
    bool m_documentOpen = false;
};
