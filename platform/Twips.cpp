#include "platform/Twips.h"

#include <QImage>

const QPaintDevice &Twips::device()
{
    static const QImage device = [] {
        QImage image(1, 1, QImage::Format_Mono);
        const int dotsPerMeter = qRound(1440 / 0.0254);
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        return image;
    }();
    return device;
}
