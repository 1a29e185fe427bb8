#include "voce/AvvioVoce.h"

#include "core/AppContext.h"
#include "voce/ImpostazioniUtente.h"
#include "voce/LetturaVoce.h"
#include "voce/SintesiEspeak.h"

namespace AvvioVoce {

void installa(AppContext &ctx, const ImpostazioniUtente &impostazioni)
{
    // Before any screen is made, so each is built in the font it wants.
    ctx.caratteriLeggibili().cambiati = nullptr;
    ctx.caratteriLeggibili().setAttivi(impostazioni.caratteriLeggibili());
    ctx.caratteriLeggibili().cambiati = [file = impostazioni.file()](bool attivi) {
        ImpostazioniUtente(file).setCaratteriLeggibili(attivi);
    };
    ctx.setVoce(
        std::make_unique<LetturaVoce>(ctx, std::make_unique<SintesiEspeak>(), impostazioni));
}

} // namespace AvvioVoce
