#pragma once

#include <QAbstractNativeEventFilter>
#include <QBasicTimer>
#include <QHash>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QWindow>
#include <optional>

// Makes a held key one press: repeated KeyDown marked as auto-repeat and one
// KeyUp at release, whatever the load. On X11 the server is asked not to send
// the releases of auto-repeat at all (XKB detectable auto-repeat); where it
// cannot, a release is held back until the next events show whether a press
// of the same key at the same server time follows it, which makes it part of
// the repeat. It watches the events at the windows, before any widget.
// A key let go just as its window goes away (Enter on "Chiudi") is released
// at a window the program no longer has: that release is taken from the X
// events, or the next press of the key would look like a repeat.
// A key whose press opened another window (a notice, a message box, a
// dialog) is let go where it went down as well, wherever the release lands:
// the screen that heard the press hears the release, once the handlers of
// the press have returned. Until then its repeats are not the new window's.
class HeldKeys : public QObject, public QAbstractNativeEventFilter
{
public:
    // Marks the handlers of one key press at work (they may open a window
    // and wait in it): a release of the key elsewhere waits until they
    // return.
    class Handling
    {
    public:
        explicit Handling(const QKeyEvent *press);
        ~Handling();
        Handling(const Handling &) = delete;
        Handling &operator=(const Handling &) = delete;

    private:
        QPointer<HeldKeys> m_keys;
        quint32 m_id;
    };

    // Watches the running application's windows; once, whatever the calls.
    static void install();
    // Whether the X server drops the auto-repeat releases for this program.
    static bool serverDropsRepeatReleases();

    // pairReleases: releases may be a repeat's (X11 without detectable
    // auto-repeat), so each is held back to be paired; elsewhere the
    // platform tells repeats apart itself.
    explicit HeldKeys(bool pairReleases, QObject *parent = nullptr);

    // How long a release waits for the press that would pair with it.
    static constexpr int PairingMs = 60;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *) override;

    // The same marks for this filter (the installed one gets Handling's).
    void beginHandling(quint32 id);
    void endHandling(quint32 id);
    static quint32 idOf(const QKeyEvent *event);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    struct Held
    {
        QPointer<QWindow> window;
        quint32 id;
        int key;
        Qt::KeyboardModifiers modifiers;
        quint32 scanCode, virtualKey, nativeModifiers;
        QString text;
        quint64 timestamp;
    };
    // Where a key went down, and what it was.
    struct Press
    {
        QPointer<QWindow> window;
        int key;
        Qt::KeyboardModifiers modifiers;
        quint32 scanCode, virtualKey, nativeModifiers;
        QString text;
    };
    void resend(QWindow *window, const QKeyEvent &event, bool autoRepeat);
    void deliverHeld();
    // The key is up; `at` is the window its release reached (none: one the
    // program no longer has).
    void released(quint32 id, const QWindow *at, quint64 timestamp);
    void releaseAt(const Press &press, quint64 timestamp);

    bool m_pairReleases;
    bool m_resending = false;
    QSet<quint32> m_down;
    std::optional<Held> m_held;
    QBasicTimer m_wait;
    QHash<quint32, Press> m_pressedAt;
    QHash<quint32, int> m_handling;
    QHash<quint32, std::pair<Press, quint64>> m_parked;
};
