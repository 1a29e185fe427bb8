#include "platform/CaratteriLeggibili.h"

#include "platform/Twips.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QHash>

const QString CaratteriLeggibili::Famiglia = QStringLiteral("OpenDyslexic");
const QString CaratteriLeggibili::FamigliaMono = QStringLiteral("OpenDyslexicMono");

namespace {

bool monospaziato(const QFont &f)
{
    const QString famiglia = f.family().toLower();
    if (famiglia.contains(QStringLiteral("courier")) || famiglia.contains(QStringLiteral("mono")))
        return true;
    // Asking the font system is slow: once per family. The answer is the
    // same for the whole run.
    static QHash<QString, bool> fisso;
    auto it = fisso.constFind(famiglia);
    if (it == fisso.constEnd())
        it = fisso.insert(famiglia, QFontInfo(f).fixedPitch());
    return *it;
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
    const bool mono = monospaziato(progettato);
    f.setFamilies({mono ? FamigliaMono : Famiglia});
    if (!mono) {
        // The same size: OpenDyslexic's letters are then a little taller
        // than the designed ones, and its ink stays within the designed
        // line (its own line is taller only by the blank it keeps around).
        f.setLetterSpacing(QFont::PercentageSpacing, Spaziatura);
        return f;
    }
    // A monospaced font keeps its designed advance exactly, so columns and
    // numbers spread with blanks stand where they were designed and a row
    // is as wide as designed: the size comes down if the new letters are
    // wider, and any difference left becomes letter spacing.
    const double passo = QFontMetricsF(progettato, &Twips::device()).horizontalAdvance(QLatin1Char('0'));
    double proprio = QFontMetricsF(f, &Twips::device()).horizontalAdvance(QLatin1Char('0'));
    if (proprio > passo && proprio > 0) {
        if (f.pointSizeF() > 0)
            f.setPointSizeF(f.pointSizeF() * passo / proprio);
        else if (f.pixelSize() > 0)
            f.setPixelSize(std::max(1, int(f.pixelSize() * passo / proprio)));
        proprio = QFontMetricsF(f, &Twips::device()).horizontalAdvance(QLatin1Char('0'));
    }
    // As a share of the advance, so it holds on screen and paper alike.
    if (proprio > 0)
        f.setLetterSpacing(QFont::PercentageSpacing, 100 * passo / proprio);
    return f;
}
