#pragma once

#include <QString>

class MessageBoxes;

// A number with its thousands grouped (1234,5 -> "1.234,5"): the integer part
// grouped with full stops, then the decimal part as the number's own text
// writes it. The integer part must fit 32 bits: otherwise the user is told
// "Numero troppo grande!" and what was built so far (nothing) is returned.
// A number below 1 keeps its leading zero ("0,5").
QString FormattaConMigliaia(double x, MessageBoxes &messageBoxes);
