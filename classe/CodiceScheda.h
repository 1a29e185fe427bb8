#pragma once

#include <QString>
#include <cstdint>
#include <optional>

// The short code printed on every copy of a class set ("K7Q-3PZ"): the kind
// of numbers, the units, the rows and the seed of the copy's generator, in
// five characters of a 31-letter alphabet, and a check character that
// catches one wrong character and any two swapped.
class CodiceScheda
{
public:
    struct Scelta
    {
        int tipoNumeri = 1; // 1 integers, 2 decimals, 3 both
        int unita = 0;      // index of UnitaClasse
        int righe = 30;     // 10, 20 or 30
        std::uint32_t seme = 0;
        bool operator==(const Scelta &) const = default;
    };

    // How many seeds a code can hold: 0 .. Semi() - 1.
    static std::uint32_t Semi();
    // Whether a choice fits a code.
    static bool Valida(const Scelta &scelta);

    // "K7Q-3PZ"; the choice must be valid.
    static QString Componi(const Scelta &scelta);

    // A code as typed or pasted: case, blanks and hyphens do not matter, and
    // O is read as zero, I and L as one. Nothing when it is not a code, with
    // the reason in `errore` (a sentence for the teacher).
    static std::optional<Scelta> Leggi(const QString &testo, QString *errore = nullptr);

    static constexpr int Lunghezza = 6;
    static const QString Alfabeto;
};
