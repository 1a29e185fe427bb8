#pragma once

// What every benchmark program shares: its command line, medians, and the
// rows of the table scripts/bench.sh prints. Plain C++, so the start-up
// runner needs no Qt.
//
// A program prints its rows on stdout (measure, value, target, met, separated
// by tabs), anything else on stderr, and ends with
//   0  every target met (or none checked),
//   1  a target missed,
//   2  the work itself went wrong: the figures mean nothing.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace Banco {

constexpr int ObiettiviRaggiunti = 0;
constexpr int ObiettivoMancato = 1;
constexpr int Errore = 2;

struct Opzioni
{
    int ripetizioni;
    // Off for the smoke tests: the work is still checked, the times are not.
    bool obiettivi = true;
    // What is left of the command line, in order.
    std::vector<std::string> altri;
};

// --ripetizioni N, --senza-obiettivi; anything else is kept in `altri`.
inline Opzioni leggiOpzioni(int argc, char **argv, int ripetizioniPredefinite)
{
    Opzioni o{ripetizioniPredefinite, true, {}};
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--ripetizioni") == 0 && i + 1 < argc) {
            o.ripetizioni = std::atoi(argv[++i]);
        } else if (std::strcmp(argv[i], "--senza-obiettivi") == 0) {
            o.obiettivi = false;
        } else {
            o.altri.emplace_back(argv[i]);
        }
    }
    if (o.ripetizioni < 1) {
        std::fprintf(stderr, "--ripetizioni: at least 1\n");
        std::exit(Errore);
    }
    return o;
}

inline double mediana(std::vector<double> valori)
{
    if (valori.empty())
        return 0;
    std::sort(valori.begin(), valori.end());
    const std::size_t n = valori.size();
    return n % 2 ? valori[n / 2] : (valori[n / 2 - 1] + valori[n / 2]) / 2;
}

inline double massimo(const std::vector<double> &valori)
{
    return valori.empty() ? 0 : *std::max_element(valori.begin(), valori.end());
}

inline double minimo(const std::vector<double> &valori)
{
    return valori.empty() ? 0 : *std::min_element(valori.begin(), valori.end());
}

inline std::string formato(const char *fmt, double a, double b = 0, double c = 0)
{
    char testo[200];
    std::snprintf(testo, sizeof testo, fmt, a, b, c);
    return testo;
}

// One row of the table; returns `raggiunto`.
inline bool riga(const std::string &misura, const std::string &valore, const std::string &obiettivo,
                 bool raggiunto)
{
    std::printf("%s\t%s\t%s\t%s\n", misura.c_str(), valore.c_str(), obiettivo.c_str(),
                raggiunto ? "yes" : "no");
    std::fflush(stdout);
    return raggiunto;
}

// A row with no target, to read the others by.
inline void rigaDiRiferimento(const std::string &misura, const std::string &valore)
{
    std::printf("%s\t%s\t(reference)\t-\n", misura.c_str(), valore.c_str());
    std::fflush(stdout);
}

// The exit status for targets met or not, given the options.
inline int esito(const Opzioni &o, bool tuttiRaggiunti)
{
    return !o.obiettivi || tuttiRaggiunti ? ObiettiviRaggiunti : ObiettivoMancato;
}

} // namespace Banco
