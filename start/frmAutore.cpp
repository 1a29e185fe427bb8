#include "start/frmAutore.h"

#include "core/AppContext.h"

namespace {
using K = ControlKind;
const QColor Fondo(255, 224, 192);
const QColor Blu(0, 0, 128);
} // namespace

frmAutore::frmAutore(AppContext &ctx) : Form(ctx, QStringLiteral("frmAutore"))
{
    setCaption(QStringLiteral("Autore"));
    setBackColor(Fondo);
    setDesignFont({"Arial", 11, true});
    // clang-format off
    design(5400, 3000, {
        {.kind = K::Label, .name = "Label1", .left = 360, .top = 300, .width = 4680, .height = 330, .caption = "Sito dell'autore:", .back = Fondo, .fore = Blu},
        {.kind = K::Label, .name = "Label2", .left = 600, .top = 660, .width = 4440, .height = 330, .caption = "https://quadrivo.example.org", .back = Fondo, .fore = QColor(160, 40, 0)},
        {.kind = K::Label, .name = "Label3", .left = 360, .top = 1140, .width = 4680, .height = 330, .caption = "Email:", .back = Fondo, .fore = Blu},
        {.kind = K::Label, .name = "Label4", .left = 600, .top = 1500, .width = 4440, .height = 330, .caption = "autore@quadrivo.example.org", .back = Fondo, .fore = QColor(160, 40, 0)},
        {.kind = K::CommandButton, .name = "Command1", .left = 1440, .top = 2100, .width = 2520, .height = 600, .caption = "C h i u d i", .back = QColor(255, 192, 128), .fore = Blu, .font = {"Arial", 12, true}},
    });
    // clang-format on
    get<Control>("Command1").Click = [this] { Command1_Click(); };
}

void frmAutore::Command1_Click()
{
    Unload();
}
