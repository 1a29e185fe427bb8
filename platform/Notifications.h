#pragma once

#include <QString>

// Notices for the user that ask for no answer, such as where a printed file
// went. The program shows them without stopping the work in progress; a
// service, so tests record them instead.
class Notifications
{
public:
    virtual ~Notifications() = default;
    virtual void notify(const QString &text) = 0;
};

// A non-modal information box over the active window, closed by the user
// whenever they like.
class QtNotifications final : public Notifications
{
public:
    void notify(const QString &text) override;
};
