#include "report/frmNome.h"

#include "core/AppContext.h"
#include "platform/Texts.h"
#include "services/GruppoScelte.h"

namespace {

using K = ControlKind;
const QColor Fondo(255, 224, 192);
const QColor Blu(0, 0, 128);
const QColor Tasto(255, 244, 214);
const FontDef Lettera{"Arial", 18, true};

} // namespace

const char *const frmNome::Lettere[28] = {"A", "B", "C", "D", "E", "F", "G", "H", "I", "L",
                                          "M", "N", "O", "P", "Q", "R", "S", "T", "U", "V",
                                          "Z", "J", "K", "X", "Y", "W", ",", "."};

frmNome::frmNome(AppContext &ctx) : Form(ctx, QStringLiteral("frmNome")), m_ctx(ctx)
{
    setCaption(QStringLiteral("NOME"));
    setBackColor(Fondo);
    setDesignFont({"Arial", 12, true});

    // clang-format off
    std::vector<ControlDef> tabella = {
        {.kind = K::Frame, .name = "Frame1", .left = 240, .top = 120, .width = 9120, .height = 1860, .back = Fondo, .border = true},
        {.kind = K::Label, .name = "Label12", .in = "Frame1", .left = 240, .top = 180, .width = 8640, .height = 480, .caption = "   SCRIVI  IL  TUO  NOME", .back = Fondo, .fore = Blu, .font = {"Arial", 18, true}, .align = Align::Center},
        {.kind = K::Label, .name = "Label9", .in = "Frame1", .left = 240, .top = 660, .width = 8640, .height = 360, .caption = "Presta attenzione all'ortografia", .back = Fondo, .fore = QColor(160, 40, 0), .font = {"Arial", 11, true}, .align = Align::Center},
        {.kind = K::Label, .name = "lblNome", .in = "Frame1", .left = 1200, .top = 1080, .width = 6720, .height = 600, .caption = "?", .back = QColor(255, 255, 255), .fore = Blu, .font = {"Arial", 22, true}, .align = Align::Center, .border = true},
        {.kind = K::Frame, .name = "fraNome", .left = 240, .top = 2160, .width = 9120, .height = 3840, .back = Fondo, .border = true},
    };
    // The alphabet: eight keys a row, in index order; CANCELLA takes two places.
    for (int i = 0; i <= Cancella; ++i) {
        const int riga = i / 8;
        const int colonna = i % 8;
        ControlDef tasto{.kind = K::CommandButton, .name = "Command1", .index = i, .in = "fraNome",
                         .left = 180.0 + colonna * 1110, .top = 240.0 + riga * 870, .width = 1020,
                         .height = 780, .back = Tasto, .fore = Blu, .font = Lettera};
        if (i < Cancella) {
            tasto.caption = QString::fromLatin1(Lettere[i]);
        } else {
            tasto.caption = QStringLiteral("CANCELLA");
            tasto.width = 2130;
            tasto.font = {"Arial", 13, true};
            tasto.back = QColor(255, 205, 160);
        }
        tabella.push_back(tasto);
    }
    tabella.push_back({.kind = K::OptionButton, .name = "Option4", .left = 3240, .top = 6180, .width = 3120, .height = 780, .caption = "AVANTI", .back = Fondo, .fore = Blu, .font = {"Arial", 18, true}});
    tabella.push_back({.kind = K::Timer, .name = "Timer1", .interval = 500});
    // clang-format on
    design(9600, 7140, tabella);

    Command1 = array<CommandButton>("Command1");
    lblNome = &get<Label>("lblNome");
    Option4 = &get<OptionButton>("Option4");

    Command1.onClick([this](int i) { Command1_Click(i); });
    Option4->GotFocus = [this] { Option4_GotFocus(); };
    Option4->LostFocus = [this] { Option4_LostFocus(); };
    Option4->KeyDown = [this](int &k, int s) { Option4_KeyDown(k, s); };
    Option4->KeyUp = [this](int &k, int s) { Option4_KeyUp(k, s); };
    Option4->MouseDown = [this](int b, int s, double x, double y) {
        Option4_MouseDown(b, s, x, y);
    };
    Option4->MouseUp = [this](int b, int s, double x, double y) { Option4_MouseUp(b, s, x, y); };
    lblNome->Change = [this] { lblNome_Change(); };
    // Timer1 ticks without a task of its own.
}

void frmNome::Form_Load()
{
    Resize::RegistraPosizioni(*this, Posizioni);
    Option4->setValue(false);
    // AVANTI takes the keys: typing works at once, before any click.
    Option4->SetFocus();
}

void frmNome::Form_Activate()
{
    Option4->setValue(false);
}

void frmNome::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, true);
}

void frmNome::Form_Unload(int &)
{
    // The name typed goes with the pupil's series into the register.
    m_ctx.registro().nomeAlunno(m_ctx.stato.NomeAlunno);
}

void frmNome::Command1_Click(int Index)
{
    m_ctx.voce().lettera(Command1(Index).Caption());
    if (lblNome->Caption() == QStringLiteral("?"))
        lblNome->setCaption(QString());
    if (Index < Cancella)
        lblNome->setCaption(lblNome->Caption() + Command1(Index).Caption());
    else if (Index == Cancella)
        lblNome->setCaption(QString());
    Option4->setValue(false);
    m_ctx.stato.NomeAlunno = lblNome->Caption();
}

void frmNome::Option4_GotFocus()
{
    Option4->setValue(false);
    Option4->setBackColor(GruppoScelte::ColoreFocus());
}

void frmNome::Option4_LostFocus()
{
    Option4->setBackColor(Fondo);
    Option4->setValue(false);
}

void frmNome::Option4_KeyDown(int &KeyCode, int)
{
    if (TastoGestito)
        return;
    const bool lettera = KeyCode >= 65 && KeyCode <= 90;
    if (!lettera && KeyCode != 13 && KeyCode != 8 && KeyCode != 49 && KeyCode != 50)
        return;
    if (lettera) {
        m_ctx.voce().lettera(QString(QChar(KeyCode)));
        if (lblNome->Caption() == QStringLiteral("?"))
            lblNome->setCaption(QString());
        lblNome->setCaption(lblNome->Caption() + QChar(KeyCode));
    } else if (KeyCode == 8) {
        const QString testo = lblNome->Caption();
        // An empty name has no last letter to take away.
        if (testo.isEmpty())
            throw RuntimeError(RuntimeError::InvalidProcedureCall, QStringLiteral("lblNome"));
        lblNome->setCaption(testo.left(testo.size() - 1));
        if (lblNome->Caption().isEmpty())
            lblNome->setCaption(QStringLiteral("?"));
    } else if (KeyCode == 13) {
        m_ctx.stato.NomeAlunno = lblNome->Caption();
    }
    // "1" and "2" are taken and do nothing.
    TastoGestito = true;
}

void frmNome::Option4_KeyUp(int &, int)
{
    TastoGestito = false;
    Option4->setValue(false);
}

void frmNome::Option4_MouseDown(int, int, double, double)
{
    Unload();
}

void frmNome::Option4_MouseUp(int, int, double, double)
{
    Option4->setValue(false);
}

void frmNome::lblNome_Change()
{
    const QString testo = lblNome->Caption();
    if (!testo.isEmpty() && testo != QStringLiteral("?")) {
        m_ctx.stato.NomeAlunno = testo;
        Option4->SetFocus();
    }
}
