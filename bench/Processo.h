#pragma once

// One run of a program from outside, as the start-up benchmarks need it: in
// a fresh temporary working directory (Quadrivo writes its settings there),
// its output in a file shown only when the run fails, killed when it does not
// end in time. Plain C++ and POSIX, so the runners need no Qt.

#include "app/SegnalePronto.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace Processo {

namespace fs = std::filesystem;

// A run that does not end in this time is stuck: the figures mean nothing.
constexpr unsigned LimiteSecondi = 120;

struct Esito
{
    bool riuscito = false;   // ended by itself with status 0
    double millisecondi = 0; // from fork to the end of wait4
    double piccoKiB = 0;     // wait4's ru_maxrss
    // From fork to the program's signal that its window is drawn and idle
    // (asked for with `segnale`); negative when it gave none.
    double prontoMillisecondi = -1;
};

inline double adesso()
{
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

inline void nessunaAzione(int)
{
}

// An interrupted wait4 is how a stuck run is noticed: call once before the
// first run.
inline void preparaAllarme()
{
    struct sigaction allarme
    {
    };
    allarme.sa_handler = nessunaAzione;
    sigaction(SIGALRM, &allarme, nullptr);
}

inline std::string leggi(const fs::path &file)
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

// Runs `argomenti` (argv, the program first; looked up in PATH when it has
// no slash) in a new directory, with `ambiente` ("NAME=value") added to the
// environment; `$DIR` in an argument or a value stands for that directory.
// `dopo` is called with the directory once the run has ended well, before
// the directory is removed. With `segnale`, the program is handed a pipe to
// say when its window is ready, and a run that ends without saying so has
// failed. On failure, says why on stderr.
inline Esito esegui(const char *nome, const std::vector<std::string> &argomenti,
                    const std::vector<std::string> &ambiente = {},
                    const std::function<void(const fs::path &)> &dopo = {},
                    bool segnale = false)
{
    Esito esito;
    const fs::path base = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp";
    std::string modello = (base / "quadrivo-avvio-XXXXXX").string();
    if (!mkdtemp(modello.data())) {
        std::perror("mkdtemp");
        return esito;
    }
    const fs::path cartella = modello;
    const fs::path uscita = base / (cartella.filename().string() + ".log");

    auto sostituisci = [&cartella](std::string s) {
        for (std::size_t p; (p = s.find("$DIR")) != std::string::npos;)
            s.replace(p, 4, cartella.string());
        return s;
    };
    // The read end stays with the runner only; the write end goes to the
    // program alone, so the read sees the end of the pipe when it exits.
    int tubo[2] = {-1, -1};
    if (segnale && pipe2(tubo, O_CLOEXEC) != 0) {
        std::perror("pipe2");
        fs::remove_all(cartella);
        return esito;
    }
    std::vector<std::string> parole, variabili;
    for (const std::string &a : argomenti)
        parole.push_back(sostituisci(a));
    for (const std::string &v : ambiente)
        variabili.push_back(sostituisci(v));
    if (segnale)
        variabili.push_back(std::string(VariabileSegnalePronto) + "=" + std::to_string(tubo[1]));
    std::vector<char *> argv;
    for (std::string &a : parole)
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
        if (segnale && fcntl(tubo[1], F_SETFD, 0) != 0)
            _exit(126);
        for (std::string &v : variabili)
            putenv(v.data());
        execvp(argv[0], argv.data());
        _exit(127);
    }
    if (segnale)
        close(tubo[1]);
    if (pid < 0) {
        std::perror("fork");
        if (segnale)
            close(tubo[0]);
        return esito;
    }

    alarm(LimiteSecondi);
    // The byte comes when the window is ready; none (the end of the pipe)
    // when the program ended without one. The alarm interrupts either wait.
    bool bloccato = false;
    double pronto = -1;
    if (segnale) {
        char byte;
        const ssize_t letti = read(tubo[0], &byte, 1);
        if (letti == 1)
            pronto = adesso() - inizio;
        else if (letti < 0 && errno == EINTR)
            bloccato = true;
        close(tubo[0]);
    }
    int stato = 0;
    rusage uso{};
    pid_t finito = bloccato ? -1 : wait4(pid, &stato, 0, &uso);
    const double fine = adesso();
    alarm(0);
    if (bloccato || (finito < 0 && errno == EINTR)) {
        bloccato = true;
        kill(pid, SIGKILL);
        finito = wait4(pid, &stato, 0, &uso);
    }

    if (finito != pid)
        std::fprintf(stderr, "%s: wait4 failed\n", nome);
    else if (bloccato)
        std::fprintf(stderr, "%s: still running after %u s, killed\n", nome, LimiteSecondi);
    else if (!WIFEXITED(stato))
        std::fprintf(stderr, "%s: killed by signal %d\n", nome, WTERMSIG(stato));
    else if (WEXITSTATUS(stato) == 127)
        std::fprintf(stderr, "%s: could not be started\n", nome);
    else if (WEXITSTATUS(stato) != 0)
        std::fprintf(stderr, "%s: exit status %d\n", nome, WEXITSTATUS(stato));
    else if (segnale && pronto < 0)
        std::fprintf(stderr, "%s: ended without saying its window was ready\n", nome);
    else
        esito.riuscito = true;

    if (esito.riuscito) {
        esito.millisecondi = fine - inizio;
        esito.prontoMillisecondi = pronto;
        esito.piccoKiB = double(uso.ru_maxrss);
        if (dopo)
            dopo(cartella);
    } else {
        std::fputs(leggi(uscita).c_str(), stderr);
    }
    std::error_code ignorato;
    fs::remove_all(cartella, ignorato);
    fs::remove(uscita, ignorato);
    return esito;
}

} // namespace Processo
