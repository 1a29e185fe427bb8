#pragma once

#include <QAbstractNativeEventFilter>
#include <QBasicTimer>
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
class HeldKeys : public QObject, public QAbstractNativeEventFilter
{
public:
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
    static quint32 idOf(const QKeyEvent *event);
    void resend(QWindow *window, const QKeyEvent &event, bool autoRepeat);
    void deliverHeld();

    bool m_pairReleases;
    bool m_resending = false;
    QSet<quint32> m_down;
    std::optional<Held> m_held;
    QBasicTimer m_wait;
};
