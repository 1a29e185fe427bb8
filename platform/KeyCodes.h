#pragma once

class QKeyEvent;

// Key codes of the program's key handlers, whatever Qt calls the key.
namespace KeyCodes {

enum : int
{
    Back = 8,
    Tab = 9,
    Return = 13,
    Shift = 16,
    Control = 17,
    Menu = 18,
    Escape = 27,
    Space = 32,
    Left = 37,
    Up = 38,
    Right = 39,
    Down = 40,
    Delete = 46,
    Key0 = 48,    // main keyboard digits 48..57
    A = 65,       // letters 65..90, whatever the case
    Numpad0 = 96, // keypad digits 96..105
    F1 = 112,
};

// Shift state bits.
enum : int
{
    ShiftMask = 1,
    CtrlMask = 2,
    AltMask = 4
};

// The key code of a Qt key event; keypad digits are told apart from the main
// keyboard's. Keys without a code of their own get 255, so a handler still
// hears them.
int fromEvent(const QKeyEvent *event);
int shiftState(const QKeyEvent *event);
// The character code the key types (13 for Enter, 8 for Backspace), 0 if none.
int asciiFromEvent(const QKeyEvent *event);

} // namespace KeyCodes
