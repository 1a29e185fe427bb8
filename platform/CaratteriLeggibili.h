#pragma once

#include <QFont>
#include <QString>
#include <functional>

// The high-readability font of every screen and printout: when on, each
// designed font becomes OpenDyslexic (OpenDyslexicMono for a monospaced
// one, so columns stay aligned) with wider letter spacing, at the size whose
// line is as tall as the designed font's. Rows drawn where the design puts
// them therefore never overlap, and the letters come out larger than the
// designed ones (OpenDyslexic's lower case is tall). Off, fonts are as
// designed.
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
