#pragma once

#include <vector>

class Form;

// Proportional layout: every control of a scaling screen keeps the fractions
// of the inner area it had in the design.
struct PosizioneControllo
{
    float Larghezza = 0; // width / inner width
    float Altezza = 0;   // height / inner height
    float Sopra = 0;     // top / inner height
    float Sinistra = 0;  // left / inner width
};

namespace Resize {

using Posizioni = std::vector<PosizioneControllo>;

// Records every control's fractions, in collection order, each statement with
// errors suppressed: controls without a position (timers, menus, lines) keep
// zeros.
void RegistraPosizioni(const Form &form, Posizioni &posizioni);

// Moves every control to its recorded fractions of the current inner area, as
// single-precision products. Timers, menus and lines are skipped, and combo
// boxes too when `saltaCombo` (their height cannot be set).
void Ridimensiona(Form &form, const Posizioni &posizioni, bool saltaCombo);

} // namespace Resize
