#include "services/frmSceltaStampante.h"

#include "core/AppContext.h"
#include "platform/printing/Printers.h"

#include <QScopeGuard>
#include <QShowEvent>
#include <QTimer>

namespace {

using K = ControlKind;

const FontDef Testo{"MS Sans Serif", 9.75, true};
const FontDef Bottone{"MS Sans Serif", 13.5, true};
const QString AcapoCrLf = QStringLiteral("\r\n");

} // namespace

frmSceltaStampante::frmSceltaStampante(AppContext &ctx)
    : Form(ctx, QStringLiteral("frmSceltaStampante")), m_ctx(ctx)
{
    setCaption(QStringLiteral("Form1"));
    setBackColor(coloreSfondo());
    setDesignFont(Testo);

    // clang-format off
    design(6060, 5460, {
        {.kind = K::Label, .name = "Label1", .left = 432, .top = 168, .width = 1716, .height = 1524, .back = coloreSfondo(), .font = Testo},
        {.kind = K::Label, .name = "Label2", .left = 3276, .top = 120, .width = 1704, .height = 1452, .back = coloreSfondo(), .font = Testo},
        {.kind = K::ComboBox, .name = "Combo1", .left = 612, .top = 2400, .width = 4632, .height = 336, .font = Testo},
        {.kind = K::CommandButton, .name = "Command2", .left = 1128, .top = 4188, .width = 3168, .height = 648, .caption = "C H I U D I", .back = coloreBottone(), .font = Bottone},
    });
    // clang-format on

    Label1 = &get<Label>("Label1");
    Label2 = &get<Label>("Label2");
    Combo1 = &get<ComboBox>("Combo1");
    Command2 = &get<CommandButton>("Command2");

    Combo1->Click = [this] { Combo1_Click(); };
    Command2->Click = [this] { Command2_Click(); };
}

void frmSceltaStampante::Form_Load()
{
    ElencaStampanti();
    MostraStampantePredefinita();
}

void frmSceltaStampante::ElencaStampanti()
{
    const Printers &stampanti = m_ctx.printers();
    for (int i = 0; i < stampanti.count(); ++i)
        Combo1->AddItem(stampanti.at(i).DeviceName());
    Combo1->setListIndex(0);
}

void frmSceltaStampante::showEvent(QShowEvent *event)
{
    Form::showEvent(event);
    if (event->spontaneous())
        return;
    if (!GiaMostrata) {
        GiaMostrata = true; // listed by the load handler just now
        return;
    }
    // Once the screen is up: the server may take a moment to answer.
    QTimer::singleShot(0, this, [this] { m_ctx.runHandler([this] { AggiornaElenco(); }); });
}

void frmSceltaStampante::AggiornaElenco()
{
    if (isUnloaded())
        return;
    Printers &stampanti = m_ctx.printers();
    stampanti.refresh();
    QStringList voci;
    for (int i = 0; i < Combo1->ListCount(); ++i)
        voci << Combo1->List(i);
    if (voci == stampanti.deviceNames())
        return;
    // The entry shown stays the one shown, if it is still there; the choice
    // made is not changed by a new list.
    const QString mostrata = Combo1->Text();
    Aggiornamento = true;
    const auto fine = qScopeGuard([this] { Aggiornamento = false; });
    Combo1->Clear();
    for (int i = 0; i < stampanti.count(); ++i)
        Combo1->AddItem(stampanti.at(i).DeviceName());
    Combo1->setListIndex(stampanti.indexOf(mostrata));
}

void frmSceltaStampante::MostraStampantePredefinita()
{
    Label1->setCaption(QStringLiteral("La stampante predefinita è ") + AcapoCrLf +
                       m_ctx.printer().DeviceName());
}

void frmSceltaStampante::Combo1_Click()
{
    if (Aggiornamento)
        return;
    if (!PrimoClick) {
        PrimoClick = true;
        return;
    }
    Printers &stampanti = m_ctx.printers();
    for (int i = 0; i < stampanti.count(); ++i) {
        if (stampanti.at(i).DeviceName() == Combo1->Text()) {
            stampanti.setCurrent(i);
            break;
        }
    }
    Label2->setCaption(QStringLiteral("La stampante scelta è ") + AcapoCrLf +
                       m_ctx.printer().DeviceName());
}

void frmSceltaStampante::Command2_Click()
{
    Hide();
}
