#pragma once

#include "core/SchedeClasse.h"

class AppContext;

// The class sets as the worksheet screen's menu reaches them: it opens their
// two windows. Installed in the context at start; made at first use.
class MenuClasse final : public SchedeClasse
{
public:
    explicit MenuClasse(AppContext &ctx) : m_ctx(ctx) {}

    // Makes the context build one of these when the menu is first used.
    static void Installa(AppContext &ctx);

    void CopiePerLaClasse() override;
    void RifaiDaCodice() override;

private:
    AppContext &m_ctx;
};
