#pragma once

#include <functional>

// Deadlines of the end-to-end tests, from one place. Every wait is written
// for an idle machine and stretched by one factor: QUADRIVO_TEST_TIMEOUT_FACTOR
// when set, raised further while the load average is above the core count,
// so a busy machine gives the tests more time instead of a false failure.
namespace Scadenze {

// The factor (>= 1) in force now.
double fattore();

// `baseMs` stretched by the factor.
int ms(int baseMs);

// Spins the event loop (when there is one) until `condizione` holds, or the
// stretched deadline passes; whether it held. Polls every `passoMs`.
bool finche(const std::function<bool()> &condizione, int baseMs, int passoMs = 50);

} // namespace Scadenze
