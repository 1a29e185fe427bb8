#include "platform/ErrorReport.h"

#include "platform/Services.h"

#include <cstdio>
#include <cstdlib>

void FatalErrorReport::report(const RuntimeError &error)
{
    std::fprintf(stderr, "Quadrivo: %s\n", error.what());
    m_services.messageBoxes().show(error.message(), MessageBoxes::OkOnly, MessageBoxes::Critical);
    std::fflush(nullptr);
    // The program stops where it stands, like a run-time error always did:
    // no handler code runs after the report.
    std::_Exit(1);
}
