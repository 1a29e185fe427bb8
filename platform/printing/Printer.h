#pragma once

#include <QFont>
#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>

class CaratteriLeggibili;
class QPainter;

// The printer object every printout draws on: a font (name, size in points,
// bold), a current position in twips from the printable area's origin, lines
// of text, pictures, and the end of the document that sends the page. The
// document begins with the first output. Backends supply the output; any
// failure there is a RuntimeError(PrinterError) from the call that failed.
class Printer
{
public:
    Printer();
    virtual ~Printer();
    Printer(const Printer &) = delete;
    Printer &operator=(const Printer &) = delete;

    // The name the system knows the printer by (a CUPS queue name).
    virtual QString DeviceName() const = 0;

    QString FontName() const { return m_fontName; }
    virtual void setFontName(const QString &name);
    double FontSize() const { return m_fontSize; }
    virtual void setFontSize(double points);
    bool FontBold() const { return m_fontBold; }
    virtual void setFontBold(bool bold);

    double CurrentX() const { return m_x; }
    virtual void setCurrentX(double twips);
    double CurrentY() const { return m_y; }
    virtual void setCurrentY(double twips);

    // Prints one line at the current position in the current font; the next
    // line starts at x 0, one line height lower.
    void Print(const QString &text = {});
    // Paints a picture with its upper left corner at x, y (twips), at its own
    // size: one pixel is 15 twips.
    void PaintPicture(const QImage &picture, double x, double y);
    // A picture given as the drawing that makes it, in pixels of 15 twips:
    // the painter's origin is the picture's upper left corner, and one pixel
    // is `scale` units of the painter. Painted at x, y (twips), cut to
    // `pixels`, at the printer's own resolution: sharp text and lines, where
    // a bitmap would be blurred.
    using Drawing = std::function<void(QPainter &painter, double scale)>;
    void PaintPicture(const QSize &pixels, const Drawing &drawing, double x, double y);
    // Ends the document: the page goes to the printer. Nothing happens when
    // nothing was printed since the last one.
    void EndDoc();
    // Ends the page and starts the next one of the same document; the
    // position goes back to the top left corner.
    void NewPage();
    // Drops the document begun: nothing of it reaches the printer.
    void KillDoc();

    // Width of the printable area, twips.
    virtual double ScaleWidth() const;

    // The font families the printer can use.
    virtual QStringList Fonts() const;
    int FontCount() const { return Fonts().size(); }
    QString Fonts(int index) const;

    // The high-readability switch the printer follows (the services' own);
    // none: the fonts as designed.
    void setCaratteri(const CaratteriLeggibili *caratteri) { m_caratteri = caratteri; }

    // Height of one line and width of a text in the current font, twips.
    double TextHeight() const;
    double TextWidth(const QString &text) const;

protected:
    // The current font, its size in points: the designed one, or its
    // high-readability form when that switch is on.
    QFont font() const;
    // The current font as the program set it, whatever the switch.
    QFont fontProgettato() const;

    virtual void printLine(const QString &text, double x, double y) = 0;
    virtual void paintPicture(const QImage &picture, double x, double y) = 0;
    // Unless a backend draws it itself, the drawing goes as a bitmap of one
    // dot per pixel.
    virtual void paintDrawing(const QSize &pixels, const Drawing &drawing, double x, double y);
    virtual void endDocument() = 0;
    // A printer that cannot do these says so with a printer error.
    virtual void newPage();
    virtual void killDocument();

private:
    QString m_fontName = QStringLiteral("Arial");
    double m_fontSize = 10;
    bool m_fontBold = false;
    double m_x = 0;
    double m_y = 0;
    const CaratteriLeggibili *m_caratteri = nullptr;
    // Below 1 while a row too wide for the page in the high-readability font
    // is printed smaller.
    double m_riduzione = 1;
};
