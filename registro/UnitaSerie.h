#pragma once

#include "registro/SerieRegistrata.h"

#include <QStringList>

// The kind of units a kept series was drilled in (numbers, lengths, masses,
// capacities), read from the family and symbols the register holds for it:
// what the teacher's view shows, filters by, exports and prints.
class UnitaSerie
{
public:
    // "numeri", "lunghezze", "masse", "capacità".
    static QString Nome(const SerieRegistrata &serie);

    // The filter's choices: "tutte" first, then each kind.
    static QStringList Scelte();
    // Whether the series passes choice `scelta` (an index of Scelte()).
    static bool Passa(const SerieRegistrata &serie, int scelta);
};
