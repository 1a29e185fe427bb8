#pragma once

#include <QDateTime>
#include <QString>

// The wall clock. Screens read it only through this service, so tests can pin
// or move it.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;

    // Seconds since midnight with their fraction (the drill's timer).
    double secondsSinceMidnight() const;
    // Today's date and the time as the program prints them: dd/MM/yyyy, HH:mm:ss.
    QString dateText() const;
    QString timeText() const;
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};
