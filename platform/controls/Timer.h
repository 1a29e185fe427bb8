#pragma once

#include "platform/Control.h"

class QTimer;

// A timer: while enabled, raises Timer every Interval milliseconds; on a
// screen being shown, from the screen's first frame on. Tests call tick() to
// raise it on their own schedule.
class Timer : public Control
{
public:
    Timer(Form &form, const ControlDef &def, Control *container);
    ~Timer() override;

    void setEnabled(bool enabled) override;
    int Interval() const { return m_interval; }
    void setInterval(int ms);
    // Raises the Timer event once, as a tick would.
    void tick();
    // Stops the real clock; tick() still works (for scripted tests).
    void setScripted(bool scripted);
    // Whether the real clock runs now: enabled, not scripted, and its screen
    // either on screen or never shown.
    bool running() const;

    std::function<void()> TimerEvent;

private:
    friend class Form; // starts and stops it as its screen comes on view
    void update();
    QTimer *m_timer;
    int m_interval;
    bool m_scripted = false;
};
