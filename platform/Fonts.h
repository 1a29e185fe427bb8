#pragma once

// The fonts the screens were designed with, mapped to installed ones:
// "MS Sans Serif" to a metric-close sans serif ("Arial" and "Courier New"
// come from fontconfig's metric-compatible Liberation fonts).
namespace Fonts {
void installSubstitutions();
}
