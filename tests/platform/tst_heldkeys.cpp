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
    int releases = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress)
            repeats << static_cast<QKeyEvent *>(event)->isAutoRepeat();
        else if (event->type() == QEvent::KeyRelease)
            ++releases;
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

void release(QWindow &w)
{
    QKeyEvent e(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier, ReturnKeycode, 0, 0,
                QStringLiteral("\r"));
    QCoreApplication::sendEvent(&w, &e);
}

void repeat(QWindow &w)
{
    QKeyEvent e(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, ReturnKeycode, 0, 0,
                QStringLiteral("\r"), true);
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
    QWindow avviso;
    Presses altrove;
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
        avviso.installEventFilter(&altrove);
        avviso.installEventFilter(keys.get());
        presses.repeats.clear();
        presses.releases = 0;
        altrove.repeats.clear();
        altrove.releases = 0;
    }

    void cleanup()
    {
        finestra.removeEventFilter(&presses);
        avviso.removeEventFilter(&altrove);
        keys.reset();
    }

    // Enter on a button that prints: the notice comes up and takes the
    // keyboard while the key is down, so X releases it at the notice. The
    // window where it went down hears the release as well, or a screen that
    // waits for it to let the key act again would wait for ever.
    void aReleaseAtTheWindowThePressOpenedReachesThePressWindowToo()
    {
        finestra.show();
        press(finestra);
        release(avviso);
        QCOMPARE(altrove.releases, 1);
        QCOMPARE(presses.releases, 1);
        // And the next press there is a press.
        press(finestra);
        QCOMPARE(presses.repeats, (QList<bool>{false, false}));
    }

    // A message box waits inside the handler of the press: the release it
    // took reaches the screen only once that handler has returned, so the
    // handler's own "key is down" comes before it.
    void aReleaseElsewhereWaitsForTheHandlersOfItsPress()
    {
        finestra.show();
        press(finestra);
        keys->beginHandling(ReturnKeycode);
        release(avviso);
        QCOMPARE(presses.releases, 0);
        keys->endHandling(ReturnKeycode);
        QCOMPARE(presses.releases, 1);
    }

    // Held on past the notice's coming up: the repeats are the key that went
    // down on the screen, not presses of the notice's button.
    void theRepeatsOfAKeyThatWentDownElsewhereDoNotReachTheNewWindow()
    {
        finestra.show();
        press(finestra);
        repeat(avviso);
        press(avviso);
        QCOMPARE(altrove.repeats, QList<bool>{});
    }

    // A release where the key went down is the usual one: nothing more.
    void aReleaseWhereTheKeyWentDownIsDeliveredOnce()
    {
        finestra.show();
        press(finestra);
        release(finestra);
        QCOMPARE(presses.releases, 1);
    }

    // A key let go at a window that is gone, after its press opened another
    // one over the screen: the screen hears it.
    void aReleaseAtAWindowThatIsGoneReachesThePressWindow()
    {
        finestra.show();
        press(finestra);
        releaseFromX(*keys, 0x7ffffff0);
        QCOMPARE(presses.releases, 1);
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
