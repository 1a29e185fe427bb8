#pragma once

// How a program timed from outside says that its first window is drawn and
// idle: the runner hands it the write end of a pipe, its descriptor number
// in this environment variable, and reads one byte. Plain POSIX, so the
// runner (bench/Processo.h) needs no Qt.

#include <cstdlib>
#include <unistd.h>
#include <utility>

inline constexpr char VariabileSegnalePronto[] = "QUADRIVO_SEGNALE_PRONTO";

// Writes the byte and closes the descriptor, when a runner is waiting;
// otherwise does nothing. Once only: the number may name another file later.
inline void segnalaPronto()
{
    static bool detto = false;
    if (std::exchange(detto, true))
        return;
    const char *valore = std::getenv(VariabileSegnalePronto);
    if (!valore || !*valore)
        return;
    char *fine = nullptr;
    const long fd = std::strtol(valore, &fine, 10);
    if (*fine != '\0' || fd < 3)
        return;
    const char byte = '\n';
    (void)!::write(int(fd), &byte, 1);
    ::close(int(fd));
}
