#include "start/FrmInizio.h"

#include "core/AppContext.h"
#include "core/FamiglieSimboli.h"
#include "core/Verifiche.h"
#include "drill/frmOperativo.h"
#include "misure/Misure.h"
#include "platform/Suppressed.h"
#include "platform/Texts.h"
#include "services/GruppoScelte.h"
#include "sheets/FrmStampaSchede.h"
#include "start/FileLivelli.h"
#include "start/FrmOpzioni.h"
#include "start/frmAutore.h"

#include <QAction>
#include <QMenu>

namespace {

using K = ControlKind;

const QColor Fondo(255, 224, 192);
const QColor Blu(0, 0, 128);
const QColor Rosso(192, 0, 0);
const FontDef Scelta{"Arial", 18, true};
const FontDef Titolo{"Arial", 22, true};
const FontDef Sottotitolo{"Arial", 15, true};
const FontDef Simboli{"Arial", 12, true};
const FontDef Guida{"Arial", 13, true};
const FontDef Piccolo{"Arial", 9, false};

// The curtain shrinks this much at every tick and stops once this narrow.
constexpr double PassoTendina = 75;
constexpr double TendinaAperta = 10;

} // namespace

FrmInizio::FrmInizio(AppContext &ctx) : Form(ctx, QStringLiteral("FrmInizio")), m_ctx(ctx)
{
    setCaption(QStringLiteral("SCOMPOSIZIONE"));
    setBackColor(Fondo);
    setDesignFont({"Arial", 10, true});

    // clang-format off
    design(10800, 7200, {
        {.kind = K::Frame, .name = "frmTitolo", .left = 240, .top = 120, .width = 10320, .height = 1500, .back = Fondo},
        {.kind = K::Label, .name = "Label6", .index = 0, .in = "frmTitolo", .left = 120, .top = 60, .width = 10080, .height = 600, .caption = "SISTEMA DECIMALE", .back = Fondo, .fore = Blu, .font = Titolo, .align = Align::Center},
        {.kind = K::Label, .name = "Label6", .index = 1, .in = "frmTitolo", .left = 120, .top = 640, .width = 10080, .height = 420, .caption = "Scomposizione", .back = Fondo, .fore = QColor(160, 40, 0), .font = Sottotitolo, .align = Align::Center},
        {.kind = K::Label, .name = "Label6", .index = 2, .in = "frmTitolo", .left = 120, .top = 1080, .width = 10080, .height = 360, .caption = " uk    -    h  da  u    -    d  c  m ", .back = Fondo, .fore = Blu, .font = Simboli, .align = Align::Center, .tip = "Clicca per cambiare i simboli"},
        {.kind = K::Label, .name = "Label8", .left = 240, .top = 1740, .width = 420, .height = 420, .caption = "", .back = Fondo, .fore = QColor(220, 0, 0), .font = {"DejaVu Sans", 18, true}},
        {.kind = K::Label, .name = "Label4", .index = 2, .left = 660, .top = 1800, .width = 2940, .height = 360, .caption = "Scomponi i ...", .back = Fondo, .fore = Blu, .font = Guida},
        {.kind = K::Label, .name = "Label4", .index = 3, .left = 3960, .top = 1800, .width = 3240, .height = 360, .caption = "Usa i ...", .back = Fondo, .fore = Blu, .font = Guida},
        {.kind = K::Frame, .name = "Frame1", .left = 240, .top = 2160, .width = 3360, .height = 3240, .back = Fondo, .border = true},
        {.kind = K::OptionButton, .name = "Option1", .index = 0, .in = "Frame1", .left = 180, .top = 180, .width = 3000, .height = 900, .caption = "numeri interi", .back = GruppoScelte::ColoreFocus(), .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "Option1", .index = 1, .in = "Frame1", .left = 180, .top = 1200, .width = 3000, .height = 900, .caption = "numeri con virgola", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "Option1", .index = 2, .in = "Frame1", .left = 180, .top = 2220, .width = 3000, .height = 900, .caption = "tutti", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::Frame, .name = "Frame2", .left = 3840, .top = 2160, .width = 3360, .height = 3240, .back = Fondo, .enabled = false, .border = true},
        {.kind = K::OptionButton, .name = "Option2", .index = 0, .in = "Frame2", .left = 180, .top = 180, .width = 3000, .height = 900, .caption = "sottomultipli", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "Option2", .index = 1, .in = "Frame2", .left = 180, .top = 1200, .width = 3000, .height = 900, .caption = "multipli", .back = Fondo, .fore = Blu, .font = Scelta, .enabled = false},
        {.kind = K::OptionButton, .name = "Option2", .index = 2, .in = "Frame2", .left = 180, .top = 2220, .width = 3000, .height = 900, .caption = "tutti", .back = Fondo, .fore = Blu, .font = Scelta, .enabled = false},
        {.kind = K::Frame, .name = "Frame3", .left = 7440, .top = 2160, .width = 3120, .height = 3240, .back = Fondo, .enabled = false, .border = true},
        {.kind = K::OptionButton, .name = "Option3", .index = 0, .in = "Frame3", .left = 180, .top = 180, .width = 2760, .height = 900, .caption = "Vai", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "Option3", .index = 1, .in = "Frame3", .left = 180, .top = 1200, .width = 2760, .height = 900, .caption = "Riprisitina", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "Option3", .index = 2, .in = "Frame3", .left = 180, .top = 2220, .width = 2760, .height = 900, .caption = "Esci", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::Label, .name = "Label1", .left = 240, .top = 5580, .width = 5160, .height = 420, .back = Fondo, .fore = Rosso, .font = Guida},
        {.kind = K::Label, .name = "Label2", .left = 5520, .top = 5580, .width = 5040, .height = 420, .back = Fondo, .fore = Rosso, .font = Guida},
        {.kind = K::Label, .name = "Label5", .left = 240, .top = 6660, .width = 5400, .height = 360, .caption = "Il nuovo software di N.N.", .back = Fondo, .fore = Blu, .font = Piccolo, .tip = "Clicca per cambiare i simboli"},
        {.kind = K::Label, .name = "Label4", .index = 0, .left = 7200, .top = 6660, .width = 1560, .height = 360, .caption = "Ver. n 1.2.0  -  Mouse ", .back = Fondo, .fore = Blu, .font = Piccolo, .align = Align::Right},
        {.kind = K::Label, .name = "Label4", .index = 1, .left = 8760, .top = 6660, .width = 1320, .height = 360, .caption = "Ver.1  -  Mouse ", .back = Fondo, .fore = Blu, .font = Piccolo},
        {.kind = K::Label, .name = "Label3", .left = 10080, .top = 6660, .width = 480, .height = 360, .back = Fondo, .fore = Blu, .font = Piccolo, .align = Align::Right},
        {.kind = K::PictureBox, .name = "Picture1", .width = 5400, .back = GruppoScelte::ColoreFocus(), .dock = Dock::Left},
        {.kind = K::PictureBox, .name = "Picture2", .width = 5400, .back = GruppoScelte::ColoreFocus(), .dock = Dock::Right},
        {.kind = K::Timer, .name = "timerTendine", .enabled = false, .interval = 5},
        {.kind = K::Menu, .name = "mnuStampa", .caption = "Stampa le schede"},
        {.kind = K::Menu, .name = "mnuAutore", .caption = "Autore"},
        {.kind = K::Menu, .name = "mnuOpzioni", .caption = "Opzioni"},
        {.kind = K::Menu, .name = "mnuAvvertenza", .caption = "Avvertenza"},
        {.kind = K::Menu, .name = "mnuRegistro", .caption = "Registro"},
        {.kind = K::Menu, .name = "mnuMisure", .caption = "&Misure"},
        {.kind = K::Menu, .name = "mnuMisura", .index = 0, .in = "mnuMisure", .caption = Misure::Voci()[0].caption, .value = true, .checkable = true},
        {.kind = K::Menu, .name = "mnuMisura", .index = 1, .in = "mnuMisure", .caption = Misure::Voci()[1].caption, .checkable = true},
        {.kind = K::Menu, .name = "mnuMisura", .index = 2, .in = "mnuMisure", .caption = Misure::Voci()[2].caption, .checkable = true},
        {.kind = K::Menu, .name = "mnuMisura", .index = 3, .in = "mnuMisure", .caption = Misure::Voci()[3].caption, .checkable = true},
        {.kind = K::Menu, .name = "mnuMisura", .index = 4, .in = "mnuMisure", .caption = Misure::Voci()[4].caption, .checkable = true},
        {.kind = K::Menu, .name = "mnuMisura", .index = 5, .in = "mnuMisure", .caption = Misure::Voci()[5].caption, .checkable = true},
        {.kind = K::Menu, .name = "mnuMisura", .index = 6, .in = "mnuMisure", .caption = Misure::Voci()[6].caption, .checkable = true},
        {.kind = K::Menu, .name = "mnuMisura", .index = 7, .in = "mnuMisure", .caption = Misure::Voci()[7].caption, .checkable = true},
        {.kind = K::Menu, .name = "mnuMisura", .index = 8, .in = "mnuMisure", .caption = Misure::Voci()[8].caption, .checkable = true},
        {.kind = K::Menu, .name = "mnuVerifica", .caption = "Ver&ifica"},
        {.kind = K::Menu, .name = "mnuVerificaCodice", .in = "mnuVerifica", .caption = "Verifica con codice"},
        {.kind = K::Menu, .name = "mnuVoce", .caption = "&Voce"},
        {.kind = K::Menu, .name = "mnuLettura", .in = "mnuVoce", .caption = "Leggi ad alta voce", .checkable = true},
        {.kind = K::Menu, .name = "mnuLeggibili", .in = "mnuVoce", .caption = "Caratteri ad alta leggibilità", .checkable = true},
    });
    // clang-format on

    frmTitolo = &get<Frame>("frmTitolo");
    Frame1 = &get<Frame>("Frame1");
    Frame2 = &get<Frame>("Frame2");
    Frame3 = &get<Frame>("Frame3");
    Option1 = array<OptionButton>("Option1");
    Option2 = array<OptionButton>("Option2");
    Option3 = array<OptionButton>("Option3");
    Label4 = array<Label>("Label4");
    Label6 = array<Label>("Label6");
    Label1 = &get<Label>("Label1");
    Label2 = &get<Label>("Label2");
    Label3 = &get<Label>("Label3");
    Label5 = &get<Label>("Label5");
    Label8 = &get<Label>("Label8");
    Picture1 = &get<PictureBox>("Picture1");
    Picture2 = &get<PictureBox>("Picture2");
    timerTendine = &get<Timer>("timerTendine");
    mnuStampa = &get<Menu>("mnuStampa");
    mnuAutore = &get<Menu>("mnuAutore");
    mnuOpzioni = &get<Menu>("mnuOpzioni");
    mnuAvvertenza = &get<Menu>("mnuAvvertenza");
    mnuRegistro = &get<Menu>("mnuRegistro");
    mnuMisura = array<Menu>("mnuMisura");
    // The drop-downs in the screen's letters, a size larger: read by pupils
    // as well. Set as each opens, so starting pays nothing and the letters
    // follow the high-readability switch.
    for (const char *voce : {"mnuMisure", "mnuVerifica", "mnuVoce"})
        if (QMenu *tendina = get<Menu>(voce).action()->menu())
            connect(tendina, &QMenu::aboutToShow, tendina, [this, tendina] {
                QFont lettere = font();
                lettere.setPointSizeF(12);
                tendina->setFont(lettere);
            });
    mnuLettura = &get<Menu>("mnuLettura");
    mnuLeggibili = &get<Menu>("mnuLeggibili");

    // The curtain covers everything while it opens.
    Picture1->ZOrder(0);
    Picture2->ZOrder(0);
    // What assistive tools read: the curtain is decoration, and the first two
    // frames are titled by the lines above them.
    Picture1->setDecorativo();
    Picture2->setDecorativo();
    Frame1->setEtichetta(Label4(2));
    Frame2->setEtichetta(Label4(3));
    Label6(2).widget()->setCursor(Qt::PointingHandCursor);
    Label5->widget()->setCursor(Qt::PointingHandCursor);

    Option1.onGotFocus([this](int i) { Option1_GotFocus(i); });
    Option1.onLostFocus([this](int i) { Option1_LostFocus(i); });
    Option1.onKeyPress([this](int i, int &k) { Option1_KeyPress(i, k); });
    Option1.onKeyDown([this](int i, int &k, int s) { Option1_KeyDown(i, k, s); });
    Option1.onKeyUp([this](int i, int &k, int s) { Option1_KeyUp(i, k, s); });
    Option1.onMouseDown(
        [this](int i, int b, int s, double x, double y) { Option1_MouseDown(i, b, s, x, y); });
    Option1.onMouseUp(
        [this](int i, int b, int s, double x, double y) { Option1_MouseUp(i, b, s, x, y); });
    Option2.onGotFocus([this](int i) { Option2_GotFocus(i); });
    Option2.onLostFocus([this](int i) { Option2_LostFocus(i); });
    Option2.onKeyPress([this](int i, int &k) { Option2_KeyPress(i, k); });
    Option2.onKeyDown([this](int i, int &k, int s) { Option2_KeyDown(i, k, s); });
    Option2.onKeyUp([this](int i, int &k, int s) { Option2_KeyUp(i, k, s); });
    Option2.onMouseDown(
        [this](int i, int b, int s, double x, double y) { Option2_MouseDown(i, b, s, x, y); });
    Option2.onMouseUp(
        [this](int i, int b, int s, double x, double y) { Option2_MouseUp(i, b, s, x, y); });
    Option3.onGotFocus([this](int i) { Option3_GotFocus(i); });
    Option3.onLostFocus([this](int i) { Option3_LostFocus(i); });
    Option3.onKeyPress([this](int i, int &k) { Option3_KeyPress(i, k); });
    Option3.onKeyDown([this](int i, int &k, int s) { Option3_KeyDown(i, k, s); });
    Option3.onKeyUp([this](int i, int &k, int s) { Option3_KeyUp(i, k, s); });
    Option3.onMouseDown(
        [this](int i, int b, int s, double x, double y) { Option3_MouseDown(i, b, s, x, y); });
    Option3.onMouseUp(
        [this](int i, int b, int s, double x, double y) { Option3_MouseUp(i, b, s, x, y); });
    Label5->MouseDown = [this](int b, int s, double x, double y) { Label5_MouseDown(b, s, x, y); };
    Label6.onClick([this](int i) { Label6_Click(i); });
    timerTendine->TimerEvent = [this] { timerTendine_Timer(); };
    mnuStampa->Click = [this] { mnuStampa_Click(); };
    mnuOpzioni->Click = [this] { mnuOpzioni_Click(); };
    mnuAutore->Click = [this] { mnuAutore_Click(); };
    // mnuAvvertenza has no action.
    mnuRegistro->Click = [this] { mnuRegistro_Click(); };
    mnuMisura.onClick([this](int i) { mnuMisura_Click(i); });
    get<Menu>("mnuVerificaCodice").Click = [this] { mnuVerificaCodice_Click(); };
    mnuLettura->Click = [this] { mnuLettura_Click(); };
    mnuLeggibili->Click = [this] { mnuLeggibili_Click(); };
}

// ---- Load, resize, unload ----

void FrmInizio::Form_Load()
{
    StatoCondiviso &s = m_ctx.stato;
    AperturaTendine();
    mnuLettura->setChecked(m_ctx.voce().attiva());
    mnuLeggibili->setChecked(m_ctx.caratteriLeggibili().attivi());
    s.FamigliaSimboli = 1;
    RegistraPosizioni();
    runSuppressed({
        // The symbol font's code 231 is a bold arrow.
        [&] { Label8->setCaption(QString(QChar(0x2794))); },
        [&] { Label4(0).setCaption(QStringLiteral("Ver.1 ")); },
        [&] { Label4(1).setCaption(QStringLiteral(" Mouse ")); },
        [&] { s.NomeEseguibile = m_ctx.executableName(); },
        [&] { Label3->setCaption(Texts::fromInt(s.FamigliaSimboli)); },
        [&] { SceltaSimboli(); },
        [&] { VerificaEsistenzaFile(s.NomeEseguibile); },
        [&] { s.TitoloArgomento = QStringLiteral("SISTEMA DECIMALE"); },
        [&] { s.SottotitoloArgomento = QStringLiteral("Scomposizione dei numeri"); },
        [&] { s.RigaSimboli = Label6(2).Caption(); },
    });
}

void FrmInizio::RegistraPosizioni()
{
    Resize::RegistraPosizioni(*this, Posizioni);
}

void FrmInizio::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, false);
    // An opened curtain stays open: only a curtain still opening follows the
    // window's size.
    if (!timerTendine->Enabled()) {
        Picture1->setWidth(std::min(Picture1->Width(), TendinaAperta));
        Picture2->setWidth(std::min(Picture2->Width(), TendinaAperta));
    }
}

void FrmInizio::Form_Unload(int &)
{
    ChiudiTutto();
}

void FrmInizio::ChiudiTutto()
{
    m_ctx.screens().unloadAll();
}

// ---- Curtain ----

void FrmInizio::AperturaTendine()
{
    Picture1->setWidth(ScaleWidth() / 2);
    Picture2->setWidth(ScaleWidth() / 2);
    timerTendine->setEnabled(true);
}

void FrmInizio::timerTendine_Timer()
{
    // A failing tick (a width below zero) just ends that tick.
    trySuppressed([this] {
        Picture1->setWidth(Picture1->Width() - PassoTendina);
        Picture2->setWidth(Picture2->Width() - PassoTendina);
        if (Picture1->Width() <= TendinaAperta)
            timerTendine->setEnabled(false);
    });
}

// ---- Symbol families and choices ----

void FrmInizio::SceltaSimboli()
{
    StatoCondiviso &s = m_ctx.stato;
    const FamigliaSimboli *famiglia = FamiglieSimboli::trova(s.FamigliaSimboli);
    if (!famiglia)
        return;
    FamiglieSimboli::applica(s, s.FamigliaSimboli);

    if (famiglia->metrica) {
        setCaption(QStringLiteral("SISTEMA METRICO: ") + QStringLiteral("scomposizione"));
        Label6(0).setCaption(QStringLiteral("SISTEMA METRICO"));
        Label6(1).setCaption(QStringLiteral("SCOMPOSIZIONE DELLE MISURE"));
    } else {
        setCaption(QStringLiteral("SISTEMA DECIMALE: ") + QStringLiteral("scomposizione"));
        Label6(0).setCaption(QStringLiteral("SISTEMA DECIMALE "));
        Label6(1).setCaption(QStringLiteral("SCOMPOSIZIONE DEI NUMERI"));
    }
    Label6(2).setCaption(famiglia->rigaSimboli);

    const QString sp = QStringLiteral(" ");
    if (s.NumeroSimboli == 4) {
        Option2(0).setCaption(s.Simbolo1 + sp + s.Simbolo2 + sp + s.Simbolo3 + sp + s.Simbolo4);
        Option2(1).setCaption(s.Simbolo4 + sp + s.Simbolo3 + sp + s.Simbolo2 + sp + s.Simbolo1);
    } else {
        Option2(0).setCaption(s.Simbolo2 + sp + s.Simbolo3 + sp + s.Simbolo4);
        Option2(1).setCaption(s.Simbolo4 + sp + s.Simbolo3 + sp + s.Simbolo2);
    }
    Option2(2).setCaption(QStringLiteral("Tutti"));
    SegnaMisura();
}

void FrmInizio::CambiaFamiglia()
{
    StatoCondiviso &s = m_ctx.stato;
    // From a measure the step goes back to numbers, as at start.
    if (Misure::MisuraInVigore(s)) {
        mnuMisura_Click(0);
        return;
    }
    s.FamigliaSimboli += 1;
    if (s.FamigliaSimboli == 4)
        s.FamigliaSimboli = 1;
    Label3->setCaption(Texts::fromInt(s.FamigliaSimboli));
    SceltaSimboli();
}

void FrmInizio::SceltaNumeri(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    if (Index == 0) {
        s.TipoNumeri = 1;
        s.DescrizioneNumeri = QStringLiteral(" Scomponi: numeri interi");
    } else if (Index == 1) {
        s.TipoNumeri = 2;
        s.DescrizioneNumeri = QStringLiteral(" Scomponi: numeri con la virgola");
    } else if (Index == 2) {
        s.TipoNumeri = 3;
        s.DescrizioneNumeri = QStringLiteral(" Scomponi: numeri interi e con la virgola");
    }
    Label1->setCaption(s.DescrizioneNumeri);
}

void FrmInizio::SceltaOrdine(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    if (Index == 0) {
        s.DescrizioneSimboli = QStringLiteral(" simboli decrescenti");
        s.SimboliScelti = 1;
    } else if (Index == 1) {
        s.DescrizioneSimboli = QStringLiteral(" Simboli crescenti");
        s.SimboliScelti = 1;
    } else if (Index == 2) {
        s.DescrizioneSimboli = QStringLiteral(" simboli crescenti e decrescenti");
        s.SimboliScelti = 1;
    }
    Label2->setCaption(s.DescrizioneSimboli);
}

void FrmInizio::EseguiAzione(int Index)
{
    if (Index == 0) {
        // The drill opens over this screen, which stays open below it.
        m_ctx.form<frmOperativo>().Show();
    } else if (Index == 1) {
        Frame1->setEnabled(true);
        Option1(0).SetFocus();
        Frame2->setEnabled(false);
        Frame3->setEnabled(false);
        Label1->setCaption(QString());
        Label2->setCaption(QString());
    } else if (Index == 2) {
        ChiudiTutto();
    }
}

// ---- Choice buttons ----

void FrmInizio::Option1_GotFocus(int Index)
{
    Option1(Index).setValue(false);
    Option1(Index).setBackColor(GruppoScelte::ColoreFocus());
}

void FrmInizio::Option1_LostFocus(int Index)
{
    Option1(Index).setBackColor(Fondo);
    Option1(Index).setValue(false);
}

void FrmInizio::Option1_KeyPress(int Index, int &KeyAscii)
{
    GruppoScelte::NavigaConSpazio(Option1, BloccoSpazio1, Index, KeyAscii);
}

void FrmInizio::Option1_KeyDown(int Index, int &KeyCode, int)
{
    if (BloccoTasto1)
        return;
    if (!GruppoScelte::TastoAccettato(KeyCode)) {
        KeyCode = 0;
        return;
    }
    const int indice = GruppoScelte::IndiceDaTasto(KeyCode);
    if (indice >= 0)
        Option1(indice).SetFocus();
    else if (KeyCode == 13)
        SceltaNumeri(Index);
    // Keypad 3 only moves on.
    Frame2->setEnabled(true);
    Option2(0).SetFocus();
    Label1->setCaption(m_ctx.stato.DescrizioneNumeri);
    BloccoTasto1 = true;
}

void FrmInizio::Option1_KeyUp(int Index, int &, int)
{
    BloccoSpazio1 = false;
    BloccoTasto1 = false;
    Option1(Index).setValue(false);
}

void FrmInizio::Option1_MouseDown(int Index, int, int, double, double)
{
    SceltaNumeri(Index);
    Frame2->setEnabled(true);
    Option2(0).SetFocus();
    // A mouse choice goes back to the first family, captions untouched; a
    // measure chosen in the menu stays.
    if (!Misure::MisuraInVigore(m_ctx.stato))
        m_ctx.stato.FamigliaSimboli = 1;
    BloccoTasto1 = true;
}

void FrmInizio::Option1_MouseUp(int Index, int, int, double, double)
{
    Option1(Index).setValue(false);
}

void FrmInizio::Option2_GotFocus(int Index)
{
    Option2(Index).setValue(false);
    Option2(Index).setBackColor(GruppoScelte::ColoreFocus());
}

void FrmInizio::Option2_LostFocus(int Index)
{
    Option2(Index).setBackColor(Fondo);
    Option2(Index).setValue(false);
}

void FrmInizio::Option2_KeyPress(int Index, int &KeyAscii)
{
    GruppoScelte::NavigaConSpazio(Option2, BloccoSpazio2, Index, KeyAscii);
}

void FrmInizio::Option2_KeyDown(int Index, int &, int)
{
    // Any key commits the order.
    SceltaOrdine(Index);
    Label2->setCaption(m_ctx.stato.DescrizioneSimboli);
    Frame3->setEnabled(true);
    Option3(0).SetFocus();
    SceltaSimboli();
}

void FrmInizio::Option2_KeyUp(int, int &, int)
{
    BloccoSpazio2 = false;
    BloccoTasto2 = false;
}

void FrmInizio::Option2_MouseDown(int Index, int, int, double, double)
{
    SceltaOrdine(Index);
    Label2->setCaption(m_ctx.stato.DescrizioneSimboli);
    Frame3->setEnabled(true);
    Option3(0).SetFocus();
}

void FrmInizio::Option2_MouseUp(int Index, int, int, double, double)
{
    Option2(Index).setValue(false);
}

void FrmInizio::Option3_GotFocus(int Index)
{
    Option3(Index).setValue(false);
    Option3(Index).setBackColor(GruppoScelte::ColoreFocus());
}

void FrmInizio::Option3_LostFocus(int Index)
{
    Option3(Index).setBackColor(Fondo);
    Option3(Index).setValue(false);
}

void FrmInizio::Option3_KeyPress(int Index, int &KeyAscii)
{
    GruppoScelte::NavigaConSpazio(Option3, BloccoSpazio3, Index, KeyAscii);
}

void FrmInizio::Option3_KeyDown(int Index, int &KeyCode, int)
{
    if (BloccoTasto3)
        return;
    if (!GruppoScelte::TastoAccettato(KeyCode)) {
        KeyCode = 0;
        return;
    }
    BloccoTasto3 = true;
    const int indice = GruppoScelte::IndiceDaTasto(KeyCode);
    if (indice >= 0)
        Option3(indice).SetFocus();
    else if (KeyCode == 13)
        EseguiAzione(Index);
}

void FrmInizio::Option3_KeyUp(int, int &, int)
{
    BloccoSpazio3 = false;
    BloccoTasto3 = false;
}

void FrmInizio::Option3_MouseDown(int Index, int, int, double, double)
{
    EseguiAzione(Index);
}

void FrmInizio::Option3_MouseUp(int Index, int, int, double, double)
{
    Option3(Index).setValue(false);
}

// ---- Title, credit line, menus ----

void FrmInizio::Label5_MouseDown(int, int, double, double)
{
    CambiaFamiglia();
}

void FrmInizio::Label6_Click(int Index)
{
    if (Index == 2)
        CambiaFamiglia();
}

void FrmInizio::mnuStampa_Click()
{
    m_ctx.form<FrmStampaSchede>().Show();
}

void FrmInizio::mnuOpzioni_Click()
{
    m_ctx.form<FrmOpzioni>().ShowModal();
}

void FrmInizio::mnuAutore_Click()
{
    m_ctx.form<frmAutore>().ShowModal();
}

void FrmInizio::mnuRegistro_Click()
{
    m_ctx.registro().mostraRegistro();
}

void FrmInizio::mnuMisura_Click(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    // A drill under way keeps its units to the end: its keypad and its
    // exercise were made with them.
    if (m_ctx.screens().find<frmOperativo>()) {
        m_ctx.messageBoxes().show(
            QStringLiteral("Per cambiare le misure chiudi prima l'esercitazione."),
            MessageBoxes::OkOnly, MessageBoxes::Exclamation, QStringLiteral("Misure"));
        return;
    }
    Misure::Applica(s, Index);
    Label3->setCaption(Texts::fromInt(s.FamigliaSimboli));
    SceltaSimboli();
}

void FrmInizio::SegnaMisura()
{
    const int inVigore = Misure::VoceInVigore(m_ctx.stato);
    for (const auto &[i, voce] : mnuMisura)
        voce->setChecked(i == inVigore);
}

void FrmInizio::mnuVerificaCodice_Click()
{
    if (Verifiche *verifiche = m_ctx.verifiche())
        verifiche->VerificaConCodice();
}

// ---- Levels file ----

void FrmInizio::VerificaEsistenzaFile(const QString &FileName)
{
    FileLivelli::VerificaEsistenzaFile(m_ctx, FileName);
}

void FrmInizio::LeggiLivelli(const QString &strNomefile)
{
    FileLivelli::LeggiLivelli(m_ctx, strNomefile);
}

void FrmInizio::SalvaLivello()
{
    FileLivelli::SalvaLivello(m_ctx);
}

// ---- Voce ----

void FrmInizio::mnuLettura_Click()
{
    m_ctx.voce().setAttiva(!mnuLettura->Checked());
    mnuLettura->setChecked(m_ctx.voce().attiva());
}

void FrmInizio::mnuLeggibili_Click()
{
    m_ctx.setCaratteriLeggibili(!mnuLeggibili->Checked());
    mnuLeggibili->setChecked(m_ctx.caratteriLeggibili().attivi());
}
