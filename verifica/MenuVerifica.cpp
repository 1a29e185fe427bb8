#include "verifica/MenuVerifica.h"

#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "verifica/frmVerifica.h"

void MenuVerifica::Installa(AppContext &ctx)
{
    ctx.setFabbricaVerifiche([](AppContext &c) -> std::unique_ptr<Verifiche> {
        return std::make_unique<MenuVerifica>(c);
    });
}

void MenuVerifica::VerificaConCodice()
{
    // A series already open is finished or left first: it is brought back,
    // not replaced.
    if (frmOperativo *esercizi = m_ctx.screens().find<frmOperativo>()) {
        esercizi->Show();
        esercizi->activateWindow();
        return;
    }
    frmVerifica &f = m_ctx.form<frmVerifica>();
    f.Show();
    f.activateWindow();
}
