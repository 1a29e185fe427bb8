#pragma once

#include <QColor>
#include <cmath>

class QPaintDevice;

// Design units: twips (1440 per inch), 15 to a pixel at 96 logical DPI.
// Geometry is kept in (fractional) twips and turned into pixels only when it
// is applied, so scaling back to the design size gives the design back.
namespace Twips {

constexpr double PerPixel = 15.0;

inline int toPixels(double twips)
{
    return static_cast<int>(std::lround(twips / PerPixel));
}

inline double fromPixels(double pixels)
{
    return pixels * PerPixel;
}

// A device of 1440 dots per inch: font metrics taken on it come out in
// twips, whatever the screen or printer the text is finally drawn on.
const QPaintDevice &device();

} // namespace Twips

// Colours as the program stores them: red + 256 x green + 65536 x blue.
namespace Colori {

inline QColor RGB(int r, int g, int b)
{
    return QColor(r, g, b);
}

inline long valore(const QColor &c)
{
    return c.red() + 256L * c.green() + 65536L * c.blue();
}

inline QColor daValore(long v)
{
    return QColor(int(v & 0xFF), int((v >> 8) & 0xFF), int((v >> 16) & 0xFF));
}

} // namespace Colori
