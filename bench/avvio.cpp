// Start-up and memory of Quadrivo against a minimal Qt Widgets program.
//
//   bench_avvio [--ripetizioni N] [--senza-obiettivi] QUADRIVO MINIMO
//
// Runs `QUADRIVO --prova-avvio` and MINIMO in turn, N times each, every run
// in a fresh temporary working directory (Quadrivo writes its settings
// there), and times each from fork to the end of wait4; the peak resident
// memory is wait4's ru_maxrss. Both programs end by themselves once their
// first window is drawn and idle. The display is whatever QT_QPA_PLATFORM
// and DISPLAY say; offscreen when neither is set.
#include "Misure.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fcntl.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

// A run that does not end in this time is stuck: the figures mean nothing.
constexpr unsigned LimiteSecondi = 60;

struct Programma
{
    const char *nome;
    std::vector<std::string> argomenti; // argv, the program first
    std::vector<double> millisecondi;
    std::vector<double> picchiKiB;
};

double adesso()
{
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

void nessunaAzione(int) {}

std::string leggi(const fs::path &file)
{
    std::string testo;
    if (FILE *f = std::fopen(file.c_str(), "r")) {
        char blocco[4096];
        std::size_t n;
        while ((n = std::fread(blocco, 1, sizeof blocco, f)) > 0)
            testo.append(blocco, n);
        std::fclose(f);
    }
    return testo;
}

// One run of `p` in a new directory; false (and why, on stderr) when it did
// not start, did not end in time or did not end with status 0.
bool esegui(Programma &p)
{
    const fs::path base = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp";
    std::string modello = (base / "quadrivo-avvio-XXXXXX").string();
    if (!mkdtemp(modello.data())) {
        std::perror("mkdtemp");
        return false;
    }
    const fs::path cartella = modello;
    // The program's own output goes to a file, shown only when the run fails.
    const fs::path uscita = base / (cartella.filename().string() + ".log");

    std::vector<char *> argv;
    for (std::string &a : p.argomenti)
        argv.push_back(a.data());
    argv.push_back(nullptr);

    const double inizio = adesso();
    const pid_t pid = fork();
    if (pid == 0) {
        const int fd = open(uscita.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (fd < 0 || chdir(cartella.c_str()) != 0)
            _exit(126);
        dup2(fd, STDOUT_FILENO);
        dup2(fd, STDERR_FILENO);
        close(fd);
        execv(argv[0], argv.data());
        _exit(127);
    }
    if (pid < 0) {
        std::perror("fork");
        return false;
    }

    int stato = 0;
    rusage uso{};
    alarm(LimiteSecondi);
    pid_t finito = wait4(pid, &stato, 0, &uso);
    const double fine = adesso();
    alarm(0);
    bool bloccato = false;
    if (finito < 0 && errno == EINTR) {
        bloccato = true;
        kill(pid, SIGKILL);
        finito = wait4(pid, &stato, 0, &uso);
    }

    bool riuscito = false;
    if (finito != pid)
        std::fprintf(stderr, "%s: wait4 failed\n", p.nome);
    else if (bloccato)
        std::fprintf(stderr, "%s: still running after %u s, killed\n", p.nome, LimiteSecondi);
    else if (!WIFEXITED(stato))
        std::fprintf(stderr, "%s: killed by signal %d\n", p.nome, WTERMSIG(stato));
    else if (WEXITSTATUS(stato) == 127)
        std::fprintf(stderr, "%s: could not be started\n", p.nome);
    else if (WEXITSTATUS(stato) != 0)
        std::fprintf(stderr, "%s: exit status %d\n", p.nome, WEXITSTATUS(stato));
    else
        riuscito = true;

    if (riuscito) {
        p.millisecondi.push_back(fine - inizio);
        p.picchiKiB.push_back(double(uso.ru_maxrss));
    } else {
        std::fputs(leggi(uscita).c_str(), stderr);
    }
    std::error_code ignorato;
    fs::remove_all(cartella, ignorato);
    fs::remove(uscita, ignorato);
    return riuscito;
}

void descrivi(const Programma &p)
{
    std::fprintf(stderr, "%-9s time min/median/max %.1f/%.1f/%.1f ms, ", p.nome,
                 Misure::minimo(p.millisecondi), Misure::mediana(p.millisecondi),
                 Misure::massimo(p.millisecondi));
    std::fprintf(stderr, "peak RSS min/median/max %.1f/%.1f/%.1f MiB\n",
                 Misure::minimo(p.picchiKiB) / 1024, Misure::mediana(p.picchiKiB) / 1024,
                 Misure::massimo(p.picchiKiB) / 1024);
}

} // namespace

int main(int argc, char *argv[])
{
    const Misure::Opzioni o = Misure::leggiOpzioni(argc, argv, 21);
    if (o.altri.size() != 2) {
        std::fprintf(stderr, "usage: %s [--ripetizioni N] [--senza-obiettivi] QUADRIVO MINIMO\n",
                     argv[0]);
        return Misure::Errore;
    }
    if (!std::getenv("QT_QPA_PLATFORM") && !std::getenv("DISPLAY"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // An interrupted wait4 is how a stuck run is noticed.
    struct sigaction allarme{};
    allarme.sa_handler = nessunaAzione;
    sigaction(SIGALRM, &allarme, nullptr);

    // Absolute: each run starts in a directory of its own.
    Programma quadrivo{"Quadrivo", {fs::absolute(o.altri[0]), "--prova-avvio"}, {}, {}};
    Programma minimo{"minimal", {fs::absolute(o.altri[1])}, {}, {}};
    // Alternating, so a slow spell of the machine weighs on both alike.
    for (int i = 0; i < o.ripetizioni; ++i)
        if (!esegui(quadrivo) || !esegui(minimo))
            return Misure::Errore;
    descrivi(quadrivo);
    descrivi(minimo);

    const double tempoQ = Misure::mediana(quadrivo.millisecondi);
    const double tempoM = Misure::mediana(minimo.millisecondi);
    const double rapporto = tempoQ / tempoM;
    const double memoriaQ = Misure::mediana(quadrivo.picchiKiB) / 1024;
    const double memoriaM = Misure::mediana(minimo.picchiKiB) / 1024;
    const double differenza = memoriaQ - memoriaM;
    const std::string volte = " (median of " + std::to_string(o.ripetizioni) + " runs each)";

    bool tutti = true;
    tutti &= Misure::riga("start-up to idle and quit, Quadrivo / minimal" + volte,
                          Misure::formato("%.2f (%.0f / %.0f ms)", rapporto, tempoQ, tempoM),
                          "<= 1.50", rapporto <= 1.5);
    tutti &= Misure::riga("peak RSS, Quadrivo - minimal" + volte,
                          Misure::formato("%+.1f MiB (%.1f / %.1f MiB)", differenza, memoriaQ,
                                          memoriaM),
                          "<= 10.0 MiB", differenza <= 10.0);
    return Misure::esito(o, tutti);
}
