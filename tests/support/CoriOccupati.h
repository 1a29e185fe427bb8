#pragma once

#include <QProcess>
#include <memory>
#include <vector>

// Both cores of the machine kept busy by two shell loops, as when other work
// runs beside the program: timing faults hide on an idle machine. The loops
// end when told, or with this object.
class CoriOccupati
{
public:
    CoriOccupati() = default;
    CoriOccupati(const CoriOccupati &) = delete;
    CoriOccupati &operator=(const CoriOccupati &) = delete;
    ~CoriOccupati() { imposta(false); }

    // Starts the loops that are missing, or ends them all; false when a
    // loop could not be started.
    bool imposta(bool occupati);

private:
    std::vector<std::unique_ptr<QProcess>> m_cicli;
};
