#pragma once

#include "platform/RuntimeError.h"

#include <functional>
#include <initializer_list>

// Runs statements "with errors suppressed": each one runs in turn, and one
// that raises a run-time error is skipped while the next ones still run.
// Returns how many statements failed.
inline int runSuppressed(std::initializer_list<std::function<void()>> statements)
{
    int failed = 0;
    for (const auto &statement : statements) {
        try {
            statement();
        } catch (const RuntimeError &) {
            ++failed;
        }
    }
    return failed;
}

// One statement with errors suppressed; true when it ran to the end.
inline bool trySuppressed(const std::function<void()> &statement)
{
    return runSuppressed({statement}) == 0;
}
