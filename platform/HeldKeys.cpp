#include "platform/HeldKeys.h"

#include "platform/LibreriaDinamica.h"

#include <QGuiApplication>
#include <QTimerEvent>

#include <algorithm>

#include <xcb/xcb.h>
// The XKB header names a field `explicit`, a C++ keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace {

// XCB's keyboard extension, opened only on X11, where Qt's own X11 support
// has it loaded already: elsewhere it would be start-up work for nothing.
struct Xkb
{
    decltype(&xcb_xkb_use_extension) use_extension = nullptr;
    decltype(&xcb_xkb_use_extension_reply) use_extension_reply = nullptr;
    decltype(&xcb_xkb_per_client_flags) per_client_flags = nullptr;
    decltype(&xcb_xkb_per_client_flags_reply) per_client_flags_reply = nullptr;
};

// Null without the library: held keys are then paired by their times.
const Xkb *xkb()
{
    static const Xkb *const funzioni = []() -> const Xkb * {
        LibreriaDinamica libreria("libxcb-xkb.so.1");
        static Xkb x;
        libreria.trova(x.use_extension, "xcb_xkb_use_extension");
        libreria.trova(x.use_extension_reply, "xcb_xkb_use_extension_reply");
        libreria.trova(x.per_client_flags, "xcb_xkb_per_client_flags");
        libreria.trova(x.per_client_flags_reply, "xcb_xkb_per_client_flags_reply");
        return libreria.tutte() ? &x : nullptr;
    }();
    return funzioni;
}

struct Xcb
{
    decltype(&xcb_query_keymap) query_keymap = nullptr;
    decltype(&xcb_query_keymap_reply) query_keymap_reply = nullptr;
};

// The X key map, asked of libxcb itself: loaded already by Qt on X11.
const Xcb *xcb()
{
    static const Xcb *const funzioni = []() -> const Xcb * {
        LibreriaDinamica libreria("libxcb.so.1");
        static Xcb x;
        libreria.trova(x.query_keymap, "xcb_query_keymap");
        libreria.trova(x.query_keymap_reply, "xcb_query_keymap_reply");
        return libreria.tutte() ? &x : nullptr;
    }();
    return funzioni;
}

bool askDetectableAutoRepeat()
{
    auto *x11 = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t *c = x11 ? x11->connection() : nullptr;
    const Xkb *x = c ? xkb() : nullptr;
    if (!x)
        return false;
    xcb_xkb_use_extension_reply_t *use = x->use_extension_reply(
        c, x->use_extension(c, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION), nullptr);
    const bool supported = use && use->supported;
    free(use);
    if (!supported)
        return false;
    const uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    xcb_xkb_per_client_flags_reply_t *r = x->per_client_flags_reply(
        c, x->per_client_flags(c, XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0), nullptr);
    const bool granted = r && (r->value & flag);
    free(r);
    return granted;
}

// The keys X holds down now, as keycodes; none where there is no X.
std::optional<QSet<quint32>> keysDownOnServer()
{
    auto *x11 = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t *c = x11 ? x11->connection() : nullptr;
    const Xcb *x = c ? xcb() : nullptr;
    if (!x)
        return std::nullopt;
    xcb_query_keymap_reply_t *r = x->query_keymap_reply(c, x->query_keymap(c), nullptr);
    if (!r)
        return std::nullopt;
    QSet<quint32> down;
    for (quint32 code = 8; code < 256; ++code)
        if (r->keys[code / 8] & (1u << (code % 8)))
            down.insert(code);
    free(r);
    return down;
}

HeldKeys *installed = nullptr;
bool serverDrops = false;

} // namespace

void HeldKeys::install()
{
    if (installed || !qApp)
        return;
    const bool x11 = QGuiApplication::platformName() == QLatin1String("xcb");
    serverDrops = x11 && askDetectableAutoRepeat();
    installed = new HeldKeys(x11 && !serverDrops, qApp);
    qApp->installEventFilter(installed);
    if (x11)
        qApp->installNativeEventFilter(installed);
    QObject::connect(installed, &QObject::destroyed, [] { installed = nullptr; });
}

bool HeldKeys::serverDropsRepeatReleases()
{
    return serverDrops;
}

HeldKeys::HeldKeys(bool pairReleases, QObject *parent)
    : QObject(parent), m_pairReleases(pairReleases)
{
}

HeldKeys::Handling::Handling(const QKeyEvent *press) : m_keys(installed), m_id(idOf(press))
{
    if (m_keys)
        m_keys->beginHandling(m_id);
}

HeldKeys::Handling::~Handling()
{
    if (m_keys)
        m_keys->endHandling(m_id);
}

void HeldKeys::beginHandling(quint32 id)
{
    ++m_handling[id];
}

void HeldKeys::endHandling(quint32 id)
{
    auto it = m_handling.find(id);
    if (it == m_handling.end() || --it.value() > 0)
        return;
    m_handling.erase(it);
    const auto parked = m_parked.find(id);
    if (parked == m_parked.end())
        return;
    const auto [press, timestamp] = parked.value();
    m_parked.erase(parked);
    releaseAt(press, timestamp);
}

void HeldKeys::released(quint32 id, const QWindow *at, quint64 timestamp)
{
    const auto it = m_pressedAt.find(id);
    if (it == m_pressedAt.end())
        return;
    const Press press = it.value();
    m_pressedAt.erase(it);
    if (!press.window || press.window == at)
        return;
    // The press opened the window the release reached (or one since gone):
    // the screen that heard the press hears the release too.
    if (m_handling.value(id) > 0)
        m_parked.insert(id, {press, timestamp});
    else
        releaseAt(press, timestamp);
}

void HeldKeys::releaseAt(const Press &press, quint64 timestamp)
{
    if (!press.window || !press.window->isVisible())
        return;
    QKeyEvent release(QEvent::KeyRelease, press.key, press.modifiers, press.scanCode,
                      press.virtualKey, press.nativeModifiers, press.text);
    release.setTimestamp(timestamp);
    m_resending = true;
    QCoreApplication::sendEvent(press.window, &release);
    m_resending = false;
}

quint32 HeldKeys::idOf(const QKeyEvent *event)
{
    // The physical key; Qt's key code where the platform gives none.
    return event->nativeScanCode() ? event->nativeScanCode() : 0x80000000u | quint32(event->key());
}

void HeldKeys::resend(QWindow *window, const QKeyEvent &e, bool autoRepeat)
{
    QKeyEvent copy(e.type(), e.key(), e.modifiers(), e.nativeScanCode(), e.nativeVirtualKey(),
                   e.nativeModifiers(), e.text(), autoRepeat, quint16(e.count()));
    copy.setTimestamp(e.timestamp());
    m_resending = true;
    QCoreApplication::sendEvent(window, &copy);
    m_resending = false;
}

void HeldKeys::deliverHeld()
{
    m_wait.stop();
    if (!m_held)
        return;
    const Held h = *m_held;
    m_held.reset();
    m_down.remove(h.id);
    if (!h.window) {
        released(h.id, nullptr, h.timestamp);
        return;
    }
    QKeyEvent release(QEvent::KeyRelease, h.key, h.modifiers, h.scanCode, h.virtualKey,
                      h.nativeModifiers, h.text);
    release.setTimestamp(h.timestamp);
    m_resending = true;
    QCoreApplication::sendEvent(h.window, &release);
    m_resending = false;
    released(h.id, h.window, h.timestamp);
}

bool HeldKeys::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *e = static_cast<const xcb_generic_event_t *>(message);
    if ((e->response_type & 0x7f) != XCB_KEY_RELEASE)
        return false;
    const auto *release = static_cast<const xcb_key_release_event_t *>(message);
    const auto windows = QGuiApplication::allWindows();
    const bool known = std::any_of(windows.cbegin(), windows.cend(), [&](const QWindow *w) {
        return w->handle() && w->winId() == release->event;
    });
    // Qt delivers the releases at its own windows; this one it would drop.
    if (!known) {
        if (m_held)
            deliverHeld();
        m_down.remove(release->detail);
        released(release->detail, nullptr, release->time);
    }
    return false;
}

void HeldKeys::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_wait.timerId())
        deliverHeld();
    else
        QObject::timerEvent(event);
}

bool HeldKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationStateChange &&
        QGuiApplication::applicationState() != Qt::ApplicationActive) {
        // Keys let go while another program had the keyboard never came here.
        deliverHeld();
        m_down.clear();
        return false;
    }
    if (m_resending || !watched->isWindowType())
        return false;
    switch (event->type()) {
    case QEvent::FocusIn:
        // Keys let go while no window of the program had the keyboard (one
        // closed, and X gave it to none) were released nowhere it could see.
        if (!m_down.isEmpty())
            if (const auto onServer = keysDownOnServer()) {
                if (m_held)
                    deliverHeld();
                const QSet<quint32> down = m_down;
                for (quint32 id : down)
                    if (!(id & 0x80000000u) && !onServer->contains(id)) {
                        m_down.remove(id);
                        released(id, nullptr, 0);
                    }
            }
        return false;
    case QEvent::KeyPress: {
        auto *ke = static_cast<QKeyEvent *>(event);
        const quint32 id = idOf(ke);
        if (m_held) {
            const bool pairs = m_held->window == watched && m_held->timestamp == ke->timestamp() &&
                               m_held->id == id;
            if (pairs) {
                // The server's own release and press of a repeat: neither is
                // the pupil's.
                m_held.reset();
                m_wait.stop();
            } else {
                deliverHeld();
            }
        }
        if (m_down.contains(id) || ke->isAutoRepeat()) {
            // A repeat of a key that went down at another window (its press
            // opened this one) is that window's, and it is not listening.
            const auto at = m_pressedAt.constFind(id);
            if (at != m_pressedAt.cend() && at->window && at->window != watched)
                return true;
        }
        if (m_down.contains(id) && !ke->isAutoRepeat()) {
            resend(static_cast<QWindow *>(watched), *ke, true);
            return true;
        }
        if (!m_down.contains(id) && !ke->isAutoRepeat())
            m_pressedAt.insert(id,
                               Press{static_cast<QWindow *>(watched), ke->key(), ke->modifiers(),
                                     ke->nativeScanCode(), ke->nativeVirtualKey(),
                                     ke->nativeModifiers(), ke->text()});
        m_down.insert(id);
        return false;
    }
    case QEvent::KeyRelease: {
        auto *ke = static_cast<QKeyEvent *>(event);
        if (m_held)
            deliverHeld();
        if (ke->isAutoRepeat())
            return false;
        const quint32 id = idOf(ke);
        if (m_pairReleases && m_down.contains(id)) {
            m_held = Held{static_cast<QWindow *>(watched),
                          id,
                          ke->key(),
                          ke->modifiers(),
                          ke->nativeScanCode(),
                          ke->nativeVirtualKey(),
                          ke->nativeModifiers(),
                          ke->text(),
                          ke->timestamp()};
            m_wait.start(PairingMs, this);
            return true;
        }
        m_down.remove(id);
        released(id, static_cast<QWindow *>(watched), ke->timestamp());
        return false;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::FocusOut:
        // Whatever comes after a release is seen after it.
        if (m_held)
            deliverHeld();
        return false;
    default:
        return false;
    }
}
