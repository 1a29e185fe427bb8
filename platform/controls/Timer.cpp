#include "platform/controls/Timer.h"

#include "platform/Form.h"
#include "platform/Services.h"

#include <QTimer>

Timer::Timer(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container), m_timer(new QTimer(&form)), m_interval(def.interval)
{
    QObject::connect(m_timer, &QTimer::timeout, m_timer,
                     [this] { m_form.services().runHandler([this] { tick(); }); });
    update();
}

Timer::~Timer()
{
    m_timer->stop();
}

void Timer::setEnabled(bool enabled)
{
    Control::setEnabled(enabled);
    update();
}

void Timer::setInterval(int ms)
{
    m_interval = ms;
    update();
}

void Timer::setScripted(bool scripted)
{
    m_scripted = scripted;
    update();
}

bool Timer::running() const
{
    return m_timer->isActive();
}

void Timer::update()
{
    if (Enabled() && m_interval > 0 && !m_scripted && !m_form.isUnloaded() &&
        !m_form.awaitingFirstFrame())
        m_timer->start(m_interval);
    else
        m_timer->stop();
}

void Timer::tick()
{
    if (TimerEvent)
        TimerEvent();
}
