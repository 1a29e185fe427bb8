#pragma once

#include <QString>

// The program's message boxes: text, buttons, icon and title. A service, so
// tests record the boxes instead of blocking on them.
class MessageBoxes
{
public:
    enum Buttons
    {
        OkOnly = 0,
        OkCancel = 1,
        AbortRetryIgnore = 2,
        YesNoCancel = 3,
        YesNo = 4,
        RetryCancel = 5
    };
    enum Icon
    {
        NoIcon = 0,
        Critical = 16,
        Question = 32,
        Exclamation = 48,
        Information = 64
    };
    enum Answer
    {
        Ok = 1,
        Cancel = 2,
        Abort = 3,
        Retry = 4,
        Ignore = 5,
        Yes = 6,
        No = 7
    };

    // The application's default title, used when a box names none.
    static QString defaultTitle() { return QStringLiteral("Quadrivo"); }

    virtual ~MessageBoxes() = default;
    virtual Answer show(const QString &text, Buttons buttons = OkOnly, Icon icon = NoIcon,
                        const QString &title = {}) = 0;
};

// Real, modal message boxes over the active window.
class QtMessageBoxes final : public MessageBoxes
{
public:
    Answer show(const QString &text, Buttons buttons, Icon icon, const QString &title) override;
};
