#include "platform/HeldKeys.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

#include <xcb/xcb.h>

#include <memory>

namespace {

// What reaches the window after the held-key filter: each press, and whether
// it came marked as a repeat.
class Presses : public QObject
{
public:
    QList<bool> repeats;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress)
            repeats << static_cast<QKeyEvent *>(event)->isAutoRepeat();
        return false;
    }
};

constexpr quint32 ReturnKeycode = 36;

void press(QWindow &w)
{
    QKeyEvent e(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, ReturnKeycode, 0, 0,
                QStringLiteral("\r"));
    QCoreApplication::sendEvent(&w, &e);
}

// The X server's release of the key, as the program reads it, at `window`.
void releaseFromX(HeldKeys &keys, xcb_window_t window)
{
    xcb_key_release_event_t e{};
    e.response_type = XCB_KEY_RELEASE;
    e.detail = xcb_keycode_t(ReturnKeycode);
    e.event = window;
    QVERIFY(!keys.nativeEventFilter("xcb_generic_event_t", &e, nullptr));
}

} // namespace

// The held-key filter on its own, fed the events of X11 with detectable
// auto-repeat: the server sends one press at the start of a hold, repeats
// as presses, and a release at the end.
class TestHeldKeys : public QObject
{
    Q_OBJECT

    QWindow finestra;
    std::unique_ptr<HeldKeys> keys;
    Presses presses;

private slots:
    void init()
    {
        finestra.create();
        keys = std::make_unique<HeldKeys>(false);
        // The filter installed last sees the events first.
        finestra.installEventFilter(&presses);
        finestra.installEventFilter(keys.get());
        presses.repeats.clear();
    }

    void cleanup()
    {
        finestra.removeEventFilter(&presses);
        keys.reset();
    }

    void aSecondPressWithNoReleaseBetweenIsARepeat()
    {
        press(finestra);
        press(finestra);
        QCOMPARE(presses.repeats, (QList<bool>{false, true}));
    }

    // Enter on a button that closes its window: the release comes for a
    // window the program no longer has, which Qt drops. The key is up all
    // the same, and its next press is a press.
    void aReleaseAtAWindowThatIsGoneLetsTheKeyGo()
    {
        press(finestra);
        releaseFromX(*keys, 0x7ffffff0);
        press(finestra);
        QCOMPARE(presses.repeats, (QList<bool>{false, false}));
    }

    // A release at one of the program's windows comes through Qt, where the
    // filter pairs it with its press; the X event alone changes nothing.
    void aReleaseAtAKnownWindowIsLeftToQt()
    {
        press(finestra);
        releaseFromX(*keys, xcb_window_t(finestra.winId()));
        press(finestra);
        QCOMPARE(presses.repeats, (QList<bool>{false, true}));
    }
};

QTEST_MAIN(TestHeldKeys)
#include "tst_heldkeys.moc"
