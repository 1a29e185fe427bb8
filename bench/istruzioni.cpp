// Start-up work of Quadrivo against a minimal Qt Widgets program, counted in
// instructions: the same two runs as bench_avvio, each once under valgrind's
// callgrind. A count does not move with the machine's load, so it compares
// commits even on a busy machine, where times mean little.
//
//   bench_istruzioni [--senza-obiettivi] QUADRIVO MINIMO
//
// Each program runs in a fresh directory that is also its data and settings
// directory, so the register or settings of whoever runs it do not enter the
// count. Both are run once without valgrind first, so that a font cache
// being rebuilt is no one's start-up. Needs valgrind in PATH.
#include "Banco.h"
#include "Processo.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// The total of a callgrind output file ("summary:" or "totals:" line).
std::optional<double> totale(const fs::path &file)
{
    std::istringstream righe(Processo::leggi(file));
    std::string riga;
    std::optional<double> trovato;
    while (std::getline(righe, riga)) {
        for (const char *chiave : {"summary:", "totals:"}) {
            if (riga.rfind(chiave, 0) == 0) {
                trovato = std::strtod(riga.c_str() + std::strlen(chiave), nullptr);
                return trovato;
            }
        }
    }
    return trovato;
}

const std::vector<std::string> CartelleProprie = {"XDG_DATA_HOME=$DIR", "XDG_CONFIG_HOME=$DIR"};

// Instructions of one run of `argomenti` under callgrind; nothing (and why,
// on stderr) when it did not run to its end.
std::optional<double> istruzioni(const char *nome, const std::vector<std::string> &argomenti)
{
    std::vector<std::string> sotto = {"valgrind", "--tool=callgrind",
                                      "--callgrind-out-file=$DIR/callgrind.out"};
    sotto.insert(sotto.end(), argomenti.begin(), argomenti.end());
    std::optional<double> conto;
    const Processo::Esito e =
        Processo::esegui(nome, sotto, CartelleProprie, [&conto](const fs::path &cartella) {
            conto = totale(cartella / "callgrind.out");
        });
    if (e.riuscito && !conto)
        std::fprintf(stderr, "%s: no total in callgrind's output\n", nome);
    return e.riuscito ? conto : std::nullopt;
}

} // namespace

int main(int argc, char *argv[])
{
    const Banco::Opzioni o = Banco::leggiOpzioni(argc, argv, 1);
    if (o.altri.size() != 2) {
        std::fprintf(stderr, "usage: %s [--senza-obiettivi] QUADRIVO MINIMO\n", argv[0]);
        return Banco::Errore;
    }
    if (!std::getenv("QT_QPA_PLATFORM") && !std::getenv("DISPLAY"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    Processo::preparaAllarme();

    const std::vector<std::string> quadrivo = {fs::absolute(o.altri[0]), "--prova-avvio"};
    const std::vector<std::string> minimo = {fs::absolute(o.altri[1])};
    if (!Processo::esegui("Quadrivo", quadrivo, CartelleProprie).riuscito ||
        !Processo::esegui("minimal", minimo, CartelleProprie).riuscito)
        return Banco::Errore;
    const std::optional<double> q = istruzioni("Quadrivo", quadrivo);
    const std::optional<double> m = istruzioni("minimal", minimo);
    if (!q || !m || *m <= 0)
        return Banco::Errore;
    std::fprintf(stderr, "Quadrivo  %.0f instructions\nminimal   %.0f instructions\n", *q, *m);

    const double rapporto = *q / *m;
    const bool raggiunto =
        Banco::riga("start-up instructions, Quadrivo / minimal (callgrind, one run each)",
                     Banco::formato("%.2f (%.1f / %.1f M)", rapporto, *q / 1e6, *m / 1e6),
                     "<= 1.25", rapporto <= 1.25);
    return Banco::esito(o, raggiunto);
}
