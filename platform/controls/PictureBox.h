#pragma once

#include "platform/Control.h"

#include <QFont>
#include <QImage>

class QPainter;

// A picture box with a persistent image: what is printed on it stays drawn.
// Positions of its drawing are in pixels. It may hold other controls.
class PictureBox : public Control
{
public:
    PictureBox(Form &form, const ControlDef &def, Control *container);

    // Drawing, in pixels of the inner area.
    double CurrentX = 0;
    double CurrentY = 0;
    void Cls();
    // Prints one line at CurrentX/CurrentY in the current font and colour;
    // the next line starts at x 0, one line lower.
    void Print(const QString &text = {});
    double TextWidth(const QString &text) const;
    double TextHeight(const QString &text) const;
    double ScaleWidth() const;
    double ScaleHeight() const;

    // What Print wrote since the last Cls, in order (for reading the picture
    // back as text).
    struct PrintedLine
    {
        QString text;
        double x;
        double y;
        QFont font;
        QColor color;
    };
    const QList<PrintedLine> &printedLines() const { return m_printed; }

    QFont drawFont() const { return m_font; }
    void setDrawFont(const QFont &f) { m_font = f; }
    QColor drawColor() const { return m_ink; }
    void setDrawColor(const QColor &c) { m_ink = c; }

    // The persistent drawing as it stands, whatever the box's size now.
    const QImage &image() const { return m_image; }
    // The picture the box shows now: its current size, its background, the
    // drawing cut at its edges (what a print of the picture copies).
    QImage Image() const;
    void setPicture(const QImage &picture);
    // Draws what Image() shows, at any resolution: one pixel of the box is
    // `scale` units of the painter, whose origin is the box's upper left
    // corner. The text is drawn as text (for a printer), where it stands in
    // the box.
    void drawPicture(QPainter &painter, double scale) const;

    // A screen reader reads a drawn page by its first line of text; the
    // description holds every line.
    QString accessibleName() const override;

private:
    void applyAccessibleText();
    void ensureImage();
    friend class PictureWidget;
    QImage m_image;
    // The picture set, under what was printed on it.
    QImage m_base;
    QList<PrintedLine> m_printed;
    QFont m_font;
    QColor m_ink = Qt::black;
};
