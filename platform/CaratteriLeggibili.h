#pragma once

#include <QFont>
#include <QString>
#include <functional>

// The high-readability font of every screen and printout: when on, each
// designed font becomes OpenDyslexic at the same size with wider letter
// spacing, or OpenDyslexicMono for a monospaced one, at the designed
// advance so columns and row widths stay as designed. Rows keep their
// designed places: OpenDyslexic's ink fits in the designed line, its own
// line is taller only by blank space. Off, fonts are as designed.
class CaratteriLeggibili
{
public:
    static const QString Famiglia;
    static const QString FamigliaMono;
    // Letter spacing, percent of the font's own.
    static constexpr double Spaziatura = 112;

    bool attivi() const { return m_attivi; }
    void setAttivi(bool attivi);

    // The font to draw with in place of `progettato`.
    QFont adatta(const QFont &progettato) const;
    // The same whatever the switch (what adatta gives when on).
    static QFont leggibile(const QFont &progettato);

    // Told after each change (the program keeps the choice for the next run).
    std::function<void(bool)> cambiati;

private:
    bool m_attivi = false;
};
