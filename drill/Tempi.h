#pragma once

#include <QString>

// The drill's clock rules: whole seconds of an exercise and what the two
// time labels show.
namespace Tempi {

// Whole seconds between two clock readings, the fraction dropped downwards
// (a reading taken after midnight gives a negative time; nothing corrects it).
double secondiInteri(double inizio, double fine);

// The partial time as the label shows it: any text that sorts above "99"
// character by character becomes "99" ("150" stays, "995" does not).
QString didascaliaParziale(const QString &testo);

// The total as the label shows it: "999" from 999 seconds up.
QString didascaliaTotale(const QString &testo, double totale);

} // namespace Tempi
