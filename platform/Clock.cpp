#include "platform/Clock.h"

double Clock::secondsSinceMidnight() const
{
    return now().time().msecsSinceStartOfDay() / 1000.0;
}

QString Clock::dateText() const
{
    return now().date().toString(QStringLiteral("dd/MM/yyyy"));
}

QString Clock::timeText() const
{
    return now().time().toString(QStringLiteral("HH:mm:ss"));
}
