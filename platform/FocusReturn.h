#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

// Gives the keyboard back where it was when a window the program opened over
// a screen (a notice, a message box, a dialog, another screen) closes: the
// screen it opened over is made active again, with the focus on the control
// that had it, as a pupil expects (the button that printed, not the first
// control of the screen, and not no window at all where no window manager
// chooses one). Not when another window has taken the keyboard since.
class FocusReturn : public QObject
{
public:
    // Watches the running application's windows; once, whatever the calls.
    static void install();

    explicit FocusReturn(QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Opener
    {
        QPointer<QWidget> window;
        QPointer<QWidget> focus;
    };
    void giveBack(const Opener &opener, const QPointer<QWidget> &closed);

    QHash<const QWidget *, Opener> m_openers;
    // The window that had the keyboard last, or the one it goes back to.
    QPointer<QWidget> m_lastActive;
};
