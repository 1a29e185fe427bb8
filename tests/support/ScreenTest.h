#pragma once

#include "platform/Control.h"
#include "platform/Form.h"

#include <QApplication>
#include <QTest>

// Helpers for screen tests that act as a pupil would: real key and mouse
// events on real, shown screens (offscreen platform).
namespace ScreenTest {

// Shows the screen modeless and waits until it is the active window, so
// focus and key events behave as on a desktop.
bool showActive(Form &screen);

// The widget that has the keyboard focus now (where a key would go).
QWidget *focused();
// The control of `screen` that has the focus, or nullptr.
Control *focusedControl(const Form &screen);

// One key pressed and released on the focused widget.
void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
// A keypad key (Qt::KeypadModifier), e.g. keypad 3.
void keypad(Qt::Key key);
// A key held down: `repeats` auto-repeated presses, then one release.
void holdKey(Qt::Key key, int repeats, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void keyDown(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void keyUp(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

// A left click on the control's widget (press and release at its centre).
void click(const Control &control);
void mouseDown(const Control &control);
void mouseUp(const Control &control);

// Lets deferred deletions and posted events run (an unloaded screen goes).
void settle();

} // namespace ScreenTest
