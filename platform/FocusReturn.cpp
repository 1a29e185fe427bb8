#include "platform/FocusReturn.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

namespace {

FocusReturn *installed = nullptr;

bool isOwnWindow(const QWidget *w)
{
    const Qt::WindowType type = w->windowType();
    return w->isWindow() && (type == Qt::Window || type == Qt::Dialog);
}

bool canTakeFocus(const QWidget *w)
{
    return w && w->isVisible() && w->isEnabled() && w->focusPolicy() != Qt::NoFocus;
}

} // namespace

void FocusReturn::install()
{
    if (installed || !qApp)
        return;
    installed = new FocusReturn(qApp);
    qApp->installEventFilter(installed);
    QObject::connect(installed, &QObject::destroyed, [] { installed = nullptr; });
}

FocusReturn::FocusReturn(QObject *parent) : QObject(parent)
{
}

bool FocusReturn::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if ((type != QEvent::Show && type != QEvent::Hide && type != QEvent::WindowActivate) ||
        !watched->isWidgetType())
        return false;
    // A window is hidden before it is destroyed, so no entry outlives it.
    auto *w = static_cast<QWidget *>(watched);
    if (!isOwnWindow(w))
        return false;
    if (type == QEvent::WindowActivate) {
        m_lastActive = w;
        return false;
    }
    if (type == QEvent::Show) {
        // Shown while no window has the keyboard (one just closed, and X has
        // not given it to another): over the one that had it last.
        QWidget *active = QApplication::activeWindow();
        if (!active && m_lastActive && m_lastActive->isVisible())
            active = m_lastActive;
        if (active && active != w)
            m_openers.insert(w, {active, active->focusWidget()});
        else
            m_openers.remove(w);
        return false;
    }
    const auto it = m_openers.find(w);
    if (it == m_openers.end())
        return false;
    const Opener opener = it.value();
    m_openers.erase(it);
    if (m_lastActive == w)
        m_lastActive = opener.window;
    // After the window is gone, and after whatever the closing itself starts.
    QTimer::singleShot(0, this,
                       [this, opener, closed = QPointer<QWidget>(w)] { giveBack(opener, closed); });
    return false;
}

void FocusReturn::giveBack(const Opener &opener, const QPointer<QWidget> &closed)
{
    QWidget *window = opener.window;
    if (!window || !window->isVisible() || !window->isEnabled())
        return;
    if (closed && closed->isVisible())
        return; // shown again meanwhile
    // Another window the program or the user went on to keeps the keyboard.
    // The one that closed may still count as active for a moment: X has not
    // said yet where the keyboard went, and with no window manager it went
    // to no window of the program.
    QWidget *active = QApplication::activeWindow();
    if (active && active != window && active != closed && active->isVisible())
        return;
    // The control that has the focus in that window, unless it can no longer
    // take it: then the one that had it when the window opened.
    QWidget *focus = window->focusWidget();
    if (!canTakeFocus(focus) && canTakeFocus(opener.focus) && opener.focus->window() == window)
        opener.focus->setFocus(Qt::ActiveWindowFocusReason);
    // Asked even when Qt still counts it active: the keyboard may be
    // elsewhere already (a click on the closing window asked for it there).
    window->activateWindow();
}
