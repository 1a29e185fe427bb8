#pragma once

#include <QString>
#include <QStringList>

// A tool of the printing system (lp, lpstat, ipptool) run to its end or to a
// deadline, whichever comes first, so a print server that hangs cannot freeze
// the program. While it runs, a local event loop keeps the windows repainting
// and the timers running; the user's clicks and keys are dropped (a wait
// cursor shows why), so a print button cannot start a second job meanwhile.
// Closing a window abandons the wait at once; the window closes as soon as
// the handler that was waiting has returned.
class BoundedProcess
{
public:
    enum class Outcome
    {
        Finished,
        FailedToStart,
        TimedOut,
        Cancelled
    };

    struct Result
    {
        Outcome outcome = Outcome::FailedToStart;
        int exitCode = -1;
        QString output;
        QString errors;

        // Ran to its end with exit status 0.
        bool succeeded() const { return outcome == Outcome::Finished && exitCode == 0; }
        // What went wrong, in a few words, for an error's detail.
        QString failure(const QString &program) const;
    };

    // Runs the program with the C locale (its messages are read back).
    static Result run(const QString &program, const QStringList &arguments, int timeoutMs);

    // True while a run waits.
    static bool isWaiting();
};
