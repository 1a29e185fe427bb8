#pragma once

#include <QString>
#include <QStringList>

// The fonts printouts can use, as fontconfig sees them. Printed sheets need
// "Courier New" or "Courier"; on Linux these are usually supplied by a
// metric-compatible monospace font that fontconfig puts in their place.
namespace PrinterFonts {

// The family fontconfig actually gives for a requested family name.
QString resolvedFamily(const QString &family);

// Whether "Courier New" or "Courier" is installed, or resolves to one of the
// fonts with the same metrics (Liberation Mono, Cousine, Nimbus Mono PS,
// FreeMono).
bool courierAvailable();

// The installed families, plus "Courier New" when it is available in the
// sense above, so that callers can look it up by name.
QStringList families();

} // namespace PrinterFonts
