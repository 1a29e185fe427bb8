#include "support/ScreenTest.h"

#include <QKeyEvent>

namespace ScreenTest {

bool showActive(Form &screen)
{
    screen.Show();
    QApplication::setActiveWindow(&screen);
    return QTest::qWaitForWindowActive(&screen, 2000);
}

QWidget *focused()
{
    return QApplication::focusWidget();
}

Control *focusedControl(const Form &screen)
{
    QWidget *w = focused();
    for (Control *c : screen.Controls())
        if (c->widget() && c->widget() == w)
            return c;
    return nullptr;
}

namespace {

QString textOf(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        const char c = char((modifiers & Qt::ShiftModifier ? 'A' : 'a') + (key - Qt::Key_A));
        return QString(QChar(c));
    }
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return QString(QChar(char('0' + (key - Qt::Key_0))));
    switch (key) {
    case Qt::Key_Space:
        return QStringLiteral(" ");
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return QStringLiteral("\r");
    case Qt::Key_Backspace:
        return QStringLiteral("\b");
    case Qt::Key_Comma:
        return QStringLiteral(",");
    case Qt::Key_Period:
        return QStringLiteral(".");
    default:
        return {};
    }
}

void send(QEvent::Type type, Qt::Key key, Qt::KeyboardModifiers modifiers, bool autoRepeat)
{
    QWidget *target = focused();
    if (!target)
        target = QApplication::activeWindow();
    if (!target)
        return;
    QKeyEvent event(type, key, modifiers, textOf(key, modifiers), autoRepeat);
    QApplication::sendEvent(target, &event);
}

} // namespace

void keyDown(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    send(QEvent::KeyPress, key, modifiers, false);
}

void keyUp(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    send(QEvent::KeyRelease, key, modifiers, false);
}

void key(Qt::Key k, Qt::KeyboardModifiers modifiers)
{
    keyDown(k, modifiers);
    keyUp(k, modifiers);
}

void keypad(Qt::Key k)
{
    key(k, Qt::KeypadModifier);
}

void holdKey(Qt::Key key, int repeats, Qt::KeyboardModifiers modifiers)
{
    send(QEvent::KeyPress, key, modifiers, false);
    for (int i = 0; i < repeats; ++i) {
        send(QEvent::KeyRelease, key, modifiers, true);
        send(QEvent::KeyPress, key, modifiers, true);
    }
    send(QEvent::KeyRelease, key, modifiers, false);
}

void click(const Control &control)
{
    QTest::mouseClick(control.widget(), Qt::LeftButton, Qt::NoModifier,
                      control.widget()->rect().center());
}

void mouseDown(const Control &control)
{
    QTest::mousePress(control.widget(), Qt::LeftButton, Qt::NoModifier,
                      control.widget()->rect().center());
}

void mouseUp(const Control &control)
{
    QTest::mouseRelease(control.widget(), Qt::LeftButton, Qt::NoModifier,
                        control.widget()->rect().center());
}

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace ScreenTest
