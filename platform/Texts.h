#pragma once

#include <QString>

// Text conversions of the program, always with Italian conventions whatever
// the system locale: decimal comma, full stop for thousands.
namespace Texts {

// A double as the program writes numbers: up to 15 significant digits, a
// comma, no trailing zeros, a leading zero below 1 (0,47; 4,07; 40,7).
QString fromDouble(double value);

// An integer as plain decimal text with no blanks ("17", "-3").
QString fromInt(long long value);

// The "#,#" pattern: thousands grouped with a full stop (4700 -> "4.700");
// zero has no digit to show, so it gives the empty text.
QString grouped(long long value);

// An integer as the print formatting writes it: a blank where a plus sign
// would stand (" 4", "-4").
QString printed(long long value);

// Blanks (code 32 only) removed at both ends / at the right end.
QString trim(const QString &text);
QString rtrim(const QString &text);

// n blanks; none when n is not positive.
QString blanks(int n);

} // namespace Texts
