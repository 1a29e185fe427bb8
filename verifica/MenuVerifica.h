#pragma once

#include "core/Verifiche.h"

class AppContext;

// The verifiche as the start screen's menu reaches them. Installed in the
// context at start; made at first use.
class MenuVerifica final : public Verifiche
{
public:
    explicit MenuVerifica(AppContext &ctx) : m_ctx(ctx) {}

    // Makes the context build one of these when the menu is first used.
    static void Installa(AppContext &ctx);

    void VerificaConCodice() override;

private:
    AppContext &m_ctx;
};
