#include "platform/KeyCodes.h"

#include <QKeyEvent>

namespace KeyCodes {

int fromEvent(const QKeyEvent *event)
{
    const int key = event->key();
    const bool keypad = event->modifiers() & Qt::KeypadModifier;
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return (keypad ? Numpad0 : Key0) + (key - Qt::Key_0);
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return A + (key - Qt::Key_A);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return F1 + (key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Backspace:
        return Back;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return Tab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Return;
    case Qt::Key_Shift:
        return Shift;
    case Qt::Key_Control:
        return Control;
    case Qt::Key_Alt:
        return Menu;
    case Qt::Key_Escape:
        return Escape;
    case Qt::Key_Space:
        return Space;
    case Qt::Key_Left:
        return Left;
    case Qt::Key_Up:
        return Up;
    case Qt::Key_Right:
        return Right;
    case Qt::Key_Down:
        return Down;
    case Qt::Key_Delete:
        return Delete;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Insert:
        return 45;
    default:
        return 255;
    }
}

int shiftState(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers m = event->modifiers();
    int state = (m & Qt::ShiftModifier ? ShiftMask : 0) | (m & Qt::ControlModifier ? CtrlMask : 0) |
                (m & Qt::AltModifier ? AltMask : 0);
    // Pressing a modifier key counts that modifier as down already; Qt leaves
    // it out of the press event.
    if (event->type() == QEvent::KeyPress) {
        if (event->key() == Qt::Key_Shift)
            state |= ShiftMask;
        else if (event->key() == Qt::Key_Control)
            state |= CtrlMask;
        else if (event->key() == Qt::Key_Alt)
            state |= AltMask;
    }
    return state;
}

int asciiFromEvent(const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Tab:
        return 0;
    default:
        break;
    }
    const QString text = event->text();
    if (text.isEmpty())
        return 0;
    const char16_t c = text.at(0).unicode();
    return c >= 32 ? int(c) : 0;
}

} // namespace KeyCodes
