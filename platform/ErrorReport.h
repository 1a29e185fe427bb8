#pragma once

#include "platform/RuntimeError.h"

class Services;

// The general error report: where a run-time error that no handler traps
// ends up.
class ErrorReport
{
public:
    virtual ~ErrorReport() = default;
    virtual void report(const RuntimeError &error) = 0;
};

// The running program's report: a critical message box naming the error,
// then the process ends with a non-zero status, as an untrapped error must.
class FatalErrorReport final : public ErrorReport
{
public:
    explicit FatalErrorReport(Services &services) : m_services(services) {}
    void report(const RuntimeError &error) override;

private:
    Services &m_services;
};
