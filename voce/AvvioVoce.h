#pragma once

class AppContext;
class ImpostazioniUtente;

// The program's voice and high-readability font, as the user left them:
// both switches read from the user's settings and kept there at each change,
// the voice speaking through espeak-ng. Nothing of the speech engine is
// loaded here: only at the first sentence said with the voice on.
namespace AvvioVoce {
void installa(AppContext &ctx, const ImpostazioniUtente &impostazioni);
}
