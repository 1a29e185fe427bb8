#include "services/Resize.h"

#include "platform/Form.h"
#include "platform/Suppressed.h"

namespace Resize {

void RegistraPosizioni(const Form &form, Posizioni &posizioni)
{
    const auto &controlli = form.Controls();
    posizioni.assign(controlli.size(), PosizioneControllo{});
    const double larghezza = form.ScaleWidth();
    const double altezza = form.ScaleHeight();
    for (std::size_t i = 0; i < controlli.size(); ++i) {
        const Control *c = controlli[i];
        PosizioneControllo &p = posizioni[i];
        // Timers, menu entries and lines keep an empty position: each
        // question would only raise the error that is suppressed here.
        if (!c->hasPosition())
            continue;
        runSuppressed({
            [&] { p.Larghezza = static_cast<float>(c->Width() / larghezza); },
            [&] { p.Altezza = static_cast<float>(c->Height() / altezza); },
            [&] { p.Sinistra = static_cast<float>(c->Left() / larghezza); },
            [&] { p.Sopra = static_cast<float>(c->Top() / altezza); },
        });
    }
}

void Ridimensiona(Form &form, const Posizioni &posizioni, bool saltaCombo)
{
    const auto &controlli = form.Controls();
    const float larghezza = static_cast<float>(form.ScaleWidth());
    const float altezza = static_cast<float>(form.ScaleHeight());
    const std::size_t n = std::min(controlli.size(), posizioni.size());
    for (std::size_t i = 0; i < n; ++i) {
        Control *c = controlli[i];
        switch (c->kind()) {
        case ControlKind::Timer:
        case ControlKind::Menu:
        case ControlKind::Line:
            continue;
        case ControlKind::ComboBox:
            if (saltaCombo)
                continue;
            break;
        default:
            break;
        }
        const PosizioneControllo &p = posizioni[i];
        const float left = larghezza * p.Sinistra;
        const float top = altezza * p.Sopra;
        const float width = larghezza * p.Larghezza;
        const float height = altezza * p.Altezza;
        c->Move(left, top, width, height);
    }
}

} // namespace Resize
