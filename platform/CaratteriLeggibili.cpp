#include "platform/CaratteriLeggibili.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>

const QString CaratteriLeggibili::Famiglia = QStringLiteral("OpenDyslexic");
const QString CaratteriLeggibili::FamigliaMono = QStringLiteral("OpenDyslexicMono");

namespace {

// Metrics at a fixed resolution, whatever the screen or printer.
const QPaintDevice &misura()
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

bool monospaziato(const QFont &f)
{
    const QString famiglia = f.family().toLower();
    return famiglia.contains(QStringLiteral("courier")) ||
           famiglia.contains(QStringLiteral("mono")) || QFontInfo(f).fixedPitch();
}

} // namespace

void CaratteriLeggibili::setAttivi(bool attivi)
{
    m_attivi = attivi;
    if (cambiati)
        cambiati(attivi);
}

QFont CaratteriLeggibili::adatta(const QFont &progettato) const
{
    return m_attivi ? leggibile(progettato) : progettato;
}

QFont CaratteriLeggibili::leggibile(const QFont &progettato)
{
    if (progettato.family() == Famiglia || progettato.family() == FamigliaMono)
        return progettato;
    QFont f = progettato;
    f.setFamilies({monospaziato(progettato) ? FamigliaMono : Famiglia});
    const double riga = QFontMetricsF(progettato, &misura()).lineSpacing();
    const double propria = QFontMetricsF(f, &misura()).lineSpacing();
    if (riga > 0 && propria > 0) {
        if (progettato.pointSizeF() > 0)
            f.setPointSizeF(progettato.pointSizeF() * riga / propria);
        else if (progettato.pixelSize() > 0)
            f.setPixelSize(std::max(1, qRound(progettato.pixelSize() * riga / propria)));
    }
    f.setLetterSpacing(QFont::PercentageSpacing, Spaziatura);
    return f;
}
