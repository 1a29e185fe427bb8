// Start-up and memory of Quadrivo against a minimal Qt Widgets program.
//
//   bench_avvio [--ripetizioni N] [--senza-obiettivi] QUADRIVO MINIMO [PAVIMENTO]
//
// PAVIMENTO, when given, is a bare Qt window showing what the start screen's
// first frame shows (its size, its menu titles): timed in the same rounds,
// it says how much of the gap is the cost of those pixels alone.
// Runs `QUADRIVO --prova-avvio` and MINIMO in turn, N times each, each of
// them first in as many rounds, every run in a fresh temporary working
// directory (Quadrivo writes its settings there). Start-up is timed from
// fork to the moment the program says its first window is drawn and idle
// (app/SegnalePronto.h); the whole run, to the end of wait4 once the
// program has closed that window and ended, is shown beside it for
// reference. The peak resident memory is wait4's ru_maxrss. The display is
// whatever QT_QPA_PLATFORM and DISPLAY say; offscreen when neither is set.
#include "Banco.h"
#include "Processo.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Programma
{
    const char *nome;
    std::vector<std::string> argomenti; // argv, the program first
    std::vector<double> pronto;       // to the window drawn and idle
    std::vector<double> millisecondi; // to the end of the run
    std::vector<double> picchiKiB;
};

bool esegui(Programma &p)
{
    const Processo::Esito e = Processo::esegui(p.nome, p.argomenti, {}, {}, true);
    if (e.riuscito) {
        p.pronto.push_back(e.prontoMillisecondi);
        p.millisecondi.push_back(e.millisecondi);
        p.picchiKiB.push_back(e.piccoKiB);
    }
    return e.riuscito;
}

void descrivi(const Programma &p)
{
    std::fprintf(stderr, "%-9s ready min/median/max %.1f/%.1f/%.1f ms, ", p.nome,
                 Banco::minimo(p.pronto), Banco::mediana(p.pronto), Banco::massimo(p.pronto));
    std::fprintf(stderr, "ended %.1f/%.1f/%.1f ms, ", Banco::minimo(p.millisecondi),
                 Banco::mediana(p.millisecondi), Banco::massimo(p.millisecondi));
    std::fprintf(stderr, "peak RSS min/median/max %.1f/%.1f/%.1f MiB\n",
                 Banco::minimo(p.picchiKiB) / 1024, Banco::mediana(p.picchiKiB) / 1024,
                 Banco::massimo(p.picchiKiB) / 1024);
}

} // namespace

int main(int argc, char *argv[])
{
    const Banco::Opzioni o = Banco::leggiOpzioni(argc, argv, 21);
    if (o.altri.size() != 2 && o.altri.size() != 3) {
        std::fprintf(stderr,
                     "usage: %s [--ripetizioni N] [--senza-obiettivi] QUADRIVO MINIMO [PAVIMENTO]\n",
                     argv[0]);
        return Banco::Errore;
    }
    if (!std::getenv("QT_QPA_PLATFORM") && !std::getenv("DISPLAY"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    Processo::preparaAllarme();

    // Absolute: each run starts in a directory of its own.
    Programma quadrivo{"Quadrivo", {fs::absolute(o.altri[0]), "--prova-avvio"}, {}, {}, {}};
    Programma minimo{"minimal", {fs::absolute(o.altri[1])}, {}, {}, {}};
    const bool conPavimento = o.altri.size() == 3;
    Programma pavimento{
        "floor", {conPavimento ? fs::absolute(o.altri[2]) : fs::path()}, {}, {}, {}};
    // Alternating, so a slow spell of the machine weighs on all alike, and
    // each program first in turn, so the place in a round does too.
    std::vector<Programma *> giro{&quadrivo, &minimo};
    if (conPavimento)
        giro.push_back(&pavimento);
    for (int i = 0; i < o.ripetizioni; ++i)
        for (std::size_t k = 0; k < giro.size(); ++k)
            if (!esegui(*giro[(std::size_t(i) + k) % giro.size()]))
                return Banco::Errore;
    descrivi(quadrivo);
    descrivi(minimo);
    if (conPavimento)
        descrivi(pavimento);

    const double prontoQ = Banco::mediana(quadrivo.pronto);
    const double prontoM = Banco::mediana(minimo.pronto);
    const double rapporto = prontoQ / prontoM;
    const double tempoQ = Banco::mediana(quadrivo.millisecondi);
    const double tempoM = Banco::mediana(minimo.millisecondi);
    const double memoriaQ = Banco::mediana(quadrivo.picchiKiB) / 1024;
    const double memoriaM = Banco::mediana(minimo.picchiKiB) / 1024;
    const double differenza = memoriaQ - memoriaM;
    const std::string volte = " (median of " + std::to_string(o.ripetizioni) + " runs each)";

    bool tutti = true;
    tutti &= Banco::riga("start-up to the first window drawn and idle, Quadrivo / minimal" + volte,
                          Banco::formato("%.2f (%.1f / %.1f ms)", rapporto, prontoQ, prontoM),
                          "<= 1.15", rapporto <= 1.15);
    Banco::rigaDiRiferimento(
        "start-up to idle and quit (the whole run), Quadrivo / minimal" + volte,
        Banco::formato("%.2f (%.1f / %.1f ms)", tempoQ / tempoM, tempoQ, tempoM));
    tutti &=
        Banco::riga("peak RSS, Quadrivo - minimal" + volte,
                     Banco::formato("%+.1f MiB (%.1f / %.1f MiB)", differenza, memoriaQ, memoriaM),
                     "<= 4.0 MiB", differenza <= 4.0);
    if (conPavimento) {
        const double prontoP = Banco::mediana(pavimento.pronto);
        Banco::rigaDiRiferimento(
            "start-up to the first window drawn and idle, bare window with the start screen's "
            "size and menu titles / minimal" +
                volte,
            Banco::formato("%.2f (%.1f / %.1f ms)", prontoP / prontoM, prontoP, prontoM));
    }
    return Banco::esito(o, tutti);
}
