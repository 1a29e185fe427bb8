#pragma once

#include <QString>
#include <array>

struct StatoCondiviso;

// The twelve families of place symbols (decimal system and metric measures).
// Each symbol carries its own blanks, exactly as the screens and the answers
// show it.
struct FamigliaSimboli
{
    int numero;          // 1..12
    bool cambiaSimbolo1; // families 6 and 8 leave Simbolo1 as it was
    std::array<QString, 4> simboli;
    int conteggio;       // symbols in use: 3 or 4
    bool metrica;        // families 4..12 are measures
    QString rigaSimboli; // the names line shown on the start screen
};

namespace FamiglieSimboli {

constexpr int Prima = 1;
constexpr int Ultima = 12;

// The family with that number; nullptr outside 1..12.
const FamigliaSimboli *trova(int numero);

// Sets Simbolo1..Simbolo4, NumeroSimboli, PrimoSimbolo and NumeroCifre from
// family `numero`; returns false (and changes nothing) outside 1..12.
bool applica(StatoCondiviso &stato, int numero);

} // namespace FamiglieSimboli
