#include "start/frmIstruzioni.h"

#include "core/AppContext.h"

namespace {
using K = ControlKind;
const QColor Fondo(255, 224, 192);
const QColor Blu(0, 0, 128);
} // namespace

frmIstruzioni::frmIstruzioni(AppContext &ctx) : Form(ctx, QStringLiteral("frmIstruzioni"))
{
    setCaption(QStringLiteral("ISTRUZIONI"));
    setBackColor(Fondo);
    setDesignFont({"Arial", 14, true});
    // clang-format off
    design(6000, 2700, {
        {.kind = K::Label, .name = "Label5", .left = 360, .top = 360, .width = 5280, .height = 1080, .back = Fondo, .fore = Blu, .align = Align::Center},
        {.kind = K::CommandButton, .name = "Command1", .left = 1740, .top = 1800, .width = 2520, .height = 600, .caption = "C h i u d i", .back = QColor(255, 192, 128), .fore = Blu, .font = {"Arial", 12, true}},
    });
    // clang-format on
    get<Control>("Command1").Click = [this] { Command1_Click(); };
}

void frmIstruzioni::Form_Load()
{
    get<Control>("Label5").setCaption(QStringLiteral("Il programma prevede l'utilizzo del mouse"));
}

void frmIstruzioni::Command1_Click()
{
    Unload();
}
