// Draws Quadrivo's application icon: place-value blocks (a hundred flat, two
// ten rods and a unit) on a pink tile. The same list of shapes is written as
// SVG text and painted into a PNG at each requested size, so the two can never
// drift apart. No text on purpose: it would render differently on each machine.
//
//   quadrivo_icon <output dir> <icon name> <size>...
//
// writes <dir>/scalable/apps/<name>.svg and <dir>/<N>x<N>/apps/<name>.png, the
// layout of an icon theme.

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QRectF>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

// Shapes are placed on a 16 x 16 grid, so that at 16 px and its multiples
// every edge falls on a pixel boundary and the small sizes stay sharp.
constexpr double Grid = 16;

const QColor Rosa(255, 200, 255);
const QColor Magenta(255, 50, 255);
const QColor Blu(0, 0, 128);

struct Shape
{
    QRectF rect;        // grid units
    double radius = 0;  // corner radius, grid units
    QColor colour;
    int minPixels = 0;  // a detail: painted from this size up (always in the SVG)
};

// A block of cols x rows unit squares: a dark body, and the lines between the
// squares, which only the larger sizes have room for.
void block(QList<Shape> &shapes, const QRectF &r, int cols, int rows)
{
    constexpr double line = 1.0 / 8;
    constexpr int detailFrom = 128;
    shapes.append({r, 0.25, Blu});
    for (int i = 1; i < cols; ++i) {
        const double x = r.left() + r.width() * i / cols;
        shapes.append({QRectF(x - line / 2, r.top(), line, r.height()), 0, Magenta, detailFrom});
    }
    for (int i = 1; i < rows; ++i) {
        const double y = r.top() + r.height() * i / rows;
        shapes.append({QRectF(r.left(), y - line / 2, r.width(), line), 0, Magenta, detailFrom});
    }
}

QList<Shape> shapes()
{
    QList<Shape> s;
    s.append({QRectF(0, 0, 16, 16), 3, Magenta}); // edge, so the tile shows on white
    s.append({QRectF(1, 1, 14, 14), 2, Rosa});
    block(s, QRectF(2, 2, 8, 8), 10, 10);  // hundred
    block(s, QRectF(12, 2, 2, 8), 1, 10);  // ten, standing
    block(s, QRectF(2, 12, 8, 2), 10, 1);  // ten, lying
    block(s, QRectF(12, 12, 2, 2), 1, 1);  // unit
    return s;
}

QString number(double v)
{
    return QString::number(v, 'g', 6);
}

QString svg(const QList<Shape> &list)
{
    QString out = QStringLiteral(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"256\" height=\"256\" "
        "viewBox=\"0 0 16 16\">\n");
    for (const Shape &s : list) {
        out += QStringLiteral("  <rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\"")
                   .arg(number(s.rect.x()), number(s.rect.y()), number(s.rect.width()),
                        number(s.rect.height()));
        if (s.radius > 0)
            out += QStringLiteral(" rx=\"%1\"").arg(number(s.radius));
        out += QStringLiteral(" fill=\"%1\"/>\n").arg(s.colour.name());
    }
    out += QStringLiteral("</svg>\n");
    return out;
}

// Edges are rounded to whole pixels (at least one pixel wide), which keeps
// sizes that are not multiples of 16 (22, 24) as sharp as the others.
QRectF onPixels(const QRectF &r, int size)
{
    const double k = size / Grid;
    const double x0 = std::round(r.left() * k), y0 = std::round(r.top() * k);
    const double x1 = std::max(x0 + 1, std::round(r.right() * k));
    const double y1 = std::max(y0 + 1, std::round(r.bottom() * k));
    return QRectF(QPointF(x0, y0), QPointF(x1, y1));
}

QImage png(const QList<Shape> &list, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    for (const Shape &s : list) {
        if (size < s.minPixels)
            continue;
        p.setBrush(s.colour);
        const double r = s.radius * size / Grid;
        p.drawRoundedRect(onPixels(s.rect, size), r, r);
    }
    p.end();
    return image;
}

bool writeText(const QString &path, const QString &text)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           f.write(text.toUtf8()) == text.toUtf8().size() && f.flush();
}

int fail(const QString &what)
{
    std::fprintf(stderr, "quadrivo_icon: %s\n", qPrintable(what));
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 4)
        return fail(QStringLiteral("usage: quadrivo_icon <output dir> <icon name> <size>..."));
    const QDir out(QString::fromLocal8Bit(argv[1]));
    const QString name = QString::fromLocal8Bit(argv[2]);
    QList<int> sizes;
    for (int i = 3; i < argc; ++i) {
        bool ok = false;
        const int size = QString::fromLocal8Bit(argv[i]).toInt(&ok);
        if (!ok || size < 1 || size > 1024)
            return fail(QStringLiteral("not a size: ") + QString::fromLocal8Bit(argv[i]));
        sizes.append(size);
    }
    const QList<Shape> list = shapes();

    const QString svgDir = out.filePath(QStringLiteral("scalable/apps"));
    const QString svgPath = svgDir + QLatin1Char('/') + name + QStringLiteral(".svg");
    if (!QDir().mkpath(svgDir) || !writeText(svgPath, svg(list)))
        return fail(QStringLiteral("cannot write ") + svgPath);

    for (const int size : sizes) {
        const QString dir = out.filePath(QStringLiteral("%1x%1/apps").arg(size));
        const QString path = dir + QLatin1Char('/') + name + QStringLiteral(".png");
        if (!QDir().mkpath(dir) || !png(list, size).save(path, "PNG"))
            return fail(QStringLiteral("cannot write ") + path);
    }
    return 0;
}
