#pragma once

#include "platform/ControlArray.h"
#include "platform/controls/OptionButton.h"

#include <QColor>

// What the groups of big choice buttons share on every screen: the space bar
// walking to the next usable button and the digit keys that name a button.
namespace GruppoScelte {

// The back colour of the button that has the focus (light orange) and of the
// others.
inline QColor ColoreFocus()
{
    return QColor(255, 192, 128);
}
inline QColor ColoreRiposo()
{
    return QColor(255, 224, 192);
}

// Space-bar navigation: with the flag clear, a blank moves the focus to the
// next enabled button (wrapping) and sets the flag until the key is released;
// any other character is swallowed.
void NavigaConSpazio(const ControlArray<OptionButton> &gruppo, bool &BloccoSpazio, int Index,
                     int &KeyAscii);

// Keys a group takes: 0, 1, 2 of the main keyboard, keypad 1, 2, 3, Enter.
bool TastoAccettato(int KeyCode);

// The button a digit key names (the main keyboard's 1, 2 and the keypad's
// 1, 2), -1 for the other accepted keys. The number is read from a
// one-character text, so key 0 (the text "/") is a type mismatch.
int IndiceDaTasto(int KeyCode);

} // namespace GruppoScelte
