#include "sheets/FrmStampaSchede.h"

#include "core/Algoritmi.h"
#include "core/AppContext.h"
#include "core/SchedeClasse.h"
#include "misure/Misure.h"
#include "platform/Suppressed.h"
#include "platform/printing/Printer.h"
#include "services/CartellaPdf.h"
#include "services/GruppoScelte.h"
#include "services/frmSceltaStampante.h"
#include "sheets/RigheScheda.h"

namespace {

using K = ControlKind;

const QColor Fondo(255, 224, 192);
const QColor Foglio(255, 255, 255);
const QColor Nero(0, 0, 0);
const QColor Blu(0, 0, 128);
const QColor Rosso(192, 0, 0);
const FontDef Scelta{"Arial", 12, true};
const FontDef Comandi{"Arial", 10, true};
const FontDef Guida{"Arial", 11, true};
const FontDef Intestazione{"Arial", 16, true};
const FontDef Righe{"Courier New", 9, false};

const QString CourierNew = QStringLiteral("Courier New");

// The sheet on screen: 30 rows in three blocks of ten, as on paper.
constexpr int RigheVisibili = 30;
constexpr int UltimaRiga = 60;
constexpr double AltezzaRiga = 240;
constexpr double StaccoBlocchi = 180;

std::vector<ControlDef> tabellaDiProgetto()
{
    // clang-format off
    std::vector<ControlDef> t = {
        {.kind = K::Label, .name = "lblTitolo", .left = 120, .top = 60, .width = 14820, .height = 480, .back = Fondo, .fore = Blu, .font = Intestazione, .align = Align::Center},
        {.kind = K::Label, .name = "Label3", .index = 0, .left = 120, .top = 600, .width = 3360, .height = 300, .caption = "Scegli i numeri", .back = Fondo, .fore = Rosso, .font = Guida},
        {.kind = K::Frame, .name = "Frame11", .left = 120, .top = 900, .width = 3360, .height = 1920, .back = Fondo, .border = true},
        {.kind = K::OptionButton, .name = "Option1", .index = 0, .in = "Frame11", .left = 120, .top = 120, .width = 3120, .height = 540, .caption = "Numeri interi", .back = GruppoScelte::ColoreFocus(), .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "Option1", .index = 1, .in = "Frame11", .left = 120, .top = 720, .width = 3120, .height = 540, .caption = "Numeri con virgola", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "Option1", .index = 2, .in = "Frame11", .left = 120, .top = 1320, .width = 3120, .height = 540, .caption = "Tutti", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::Label, .name = "Label1", .left = 120, .top = 2880, .width = 3360, .height = 300, .back = Fondo, .fore = Rosso, .font = Guida},
        {.kind = K::Label, .name = "Label3", .index = 1, .left = 120, .top = 3240, .width = 3360, .height = 300, .caption = "Scegli le unità", .back = Fondo, .fore = Blu, .font = Guida},
        {.kind = K::Frame, .name = "Frame22", .left = 120, .top = 3540, .width = 3360, .height = 1920, .back = Fondo, .enabled = false, .border = true},
        {.kind = K::OptionButton, .name = "Option2", .index = 0, .in = "Frame22", .left = 120, .top = 120, .width = 3120, .height = 540, .caption = "Sottomultipli", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "Option2", .index = 1, .in = "Frame22", .left = 120, .top = 720, .width = 3120, .height = 540, .caption = "Multipli", .back = Fondo, .fore = Blu, .font = Scelta, .enabled = false},
        {.kind = K::OptionButton, .name = "Option2", .index = 2, .in = "Frame22", .left = 120, .top = 1320, .width = 3120, .height = 540, .caption = "Tutti", .back = Fondo, .fore = Blu, .font = Scelta, .enabled = false},
        {.kind = K::Label, .name = "Label2", .left = 120, .top = 5520, .width = 3360, .height = 300, .back = Fondo, .fore = Rosso, .font = Guida},
        {.kind = K::Frame, .name = "Frame5", .left = 120, .top = 5940, .width = 3360, .height = 1380, .caption = "Operazioni", .back = Fondo, .fore = Blu, .font = Comandi, .border = true},
        {.kind = K::OptionButton, .name = "Opt5", .in = "Frame5", .left = 120, .top = 300, .width = 3120, .height = 480, .caption = "5 operazioni per esercizio", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::OptionButton, .name = "Opt10", .in = "Frame5", .left = 120, .top = 840, .width = 3120, .height = 480, .caption = "10 operazioni per esercizio", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::Frame, .name = "Frame2", .left = 3600, .top = 600, .width = 3120, .height = 1980, .caption = "Esercizi", .back = Fondo, .fore = Blu, .font = Comandi, .border = true},
        {.kind = K::OptionButton, .name = "Opt1", .index = 0, .in = "Frame2", .left = 120, .top = 300, .width = 2880, .height = 480, .caption = "10  ooperazioni", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::OptionButton, .name = "Opt1", .index = 1, .in = "Frame2", .left = 120, .top = 840, .width = 2880, .height = 480, .caption = "20 operazioni", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::OptionButton, .name = "Opt1", .index = 2, .in = "Frame2", .left = 120, .top = 1380, .width = 2880, .height = 480, .caption = "30 operazioni ", .back = Fondo, .fore = Blu, .font = Comandi, .value = true},
        {.kind = K::Frame, .name = "Frame1", .left = 3600, .top = 2700, .width = 3120, .height = 4560, .caption = "Scheda", .back = Fondo, .fore = Blu, .font = Comandi, .enabled = false, .border = true},
        {.kind = K::Frame, .name = "Frame3", .in = "Frame1", .left = 120, .top = 300, .width = 2880, .height = 1680, .caption = "ALUNNI", .back = Fondo, .fore = Blu, .font = Comandi, .border = true},
        {.kind = K::CommandButton, .name = "CmdVisualizzaSchedaAlunni", .in = "Frame3", .left = 120, .top = 300, .width = 2640, .height = 660, .caption = "VISUALIZZA SCHEDA ALUNNI", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::CommandButton, .name = "CmdStampaSchedaAlunni", .in = "Frame3", .left = 120, .top = 1020, .width = 2640, .height = 540, .caption = "STAMPA SCHEDA ", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::Frame, .name = "Frame4", .in = "Frame1", .left = 120, .top = 2100, .width = 2880, .height = 1680, .caption = "DOCENTI", .back = Fondo, .fore = Blu, .font = Comandi, .border = true},
        {.kind = K::CommandButton, .name = "CmdVisualizzaSchedaDocenti", .in = "Frame4", .left = 120, .top = 300, .width = 2640, .height = 660, .caption = "VISUALIZZA SCHEDA DOCENTI", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::CommandButton, .name = "CmdStampaSchedaDocenti", .in = "Frame4", .left = 120, .top = 1020, .width = 2640, .height = 540, .caption = "STAMPA SCHEDA", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::CommandButton, .name = "CmdRicomincia", .in = "Frame1", .left = 120, .top = 3900, .width = 2880, .height = 540, .caption = "Cancella scheda", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::CommandButton, .name = "cmdEsci", .left = 3600, .top = 7440, .width = 3120, .height = 720, .caption = "ESCI", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::Frame, .name = "Frame6", .left = 6840, .top = 600, .width = 8100, .height = 7860, .back = Foglio, .border = true},
    };
    // clang-format on
    // Rows 31..60 have no place on the sheet: they exist, hidden, where the
    // first thirty stand.
    for (int riga = 1; riga <= UltimaRiga; ++riga) {
        const int r = (riga - 1) % RigheVisibili;
        t.push_back({.kind = K::Label,
                     .name = "LblOp",
                     .index = riga,
                     .in = "Frame6",
                     .left = 180,
                     .top = 180 + r * AltezzaRiga + (r / 10) * StaccoBlocchi,
                     .width = 7740,
                     .height = AltezzaRiga,
                     .back = Foglio,
                     .fore = Nero,
                     .font = Righe,
                     .visible = riga <= RigheVisibili});
    }
    t.push_back({.kind = K::Menu, .name = "mnuStampante", .caption = "Scegli stampante"});
    t.push_back({.kind = K::Menu, .name = "mnuCartellaPdf", .caption = "Cartella dei file PDF"});
    t.push_back({.kind = K::Menu, .name = "mnuClasse", .caption = "Schede per la &classe"});
    t.push_back({.kind = K::Menu,
                 .name = "mnuCopieClasse",
                 .in = "mnuClasse",
                 .caption = "&Copie per la classe..."});
    t.push_back({.kind = K::Menu,
                 .name = "mnuRifaiCodice",
                 .in = "mnuClasse",
                 .caption = "&Rifai da codice..."});
    return t;
}

} // namespace

FrmStampaSchede::FrmStampaSchede(AppContext &ctx)
    : Form(ctx, QStringLiteral("FrmStampaSchede")), m_ctx(ctx)
{
    setCaption(QStringLiteral("STAMPA SCHEDE: scomposizione"));
    setBackColor(Fondo);
    setDesignFont({"Arial", 10, true});
    design(15060, 8580, tabellaDiProgetto());

    lblTitolo = &get<Label>("lblTitolo");
    Label1 = &get<Label>("Label1");
    Label2 = &get<Label>("Label2");
    Label3 = array<Label>("Label3");
    LblOp = array<Label>("LblOp");
    Frame11 = &get<Frame>("Frame11");
    Frame22 = &get<Frame>("Frame22");
    Frame1 = &get<Frame>("Frame1");
    Frame2 = &get<Frame>("Frame2");
    Frame3 = &get<Frame>("Frame3");
    Frame4 = &get<Frame>("Frame4");
    Frame5 = &get<Frame>("Frame5");
    Frame6 = &get<Frame>("Frame6");
    Option1 = array<OptionButton>("Option1");
    Option2 = array<OptionButton>("Option2");
    Opt1 = array<OptionButton>("Opt1");
    Opt5 = &get<OptionButton>("Opt5");
    Opt10 = &get<OptionButton>("Opt10");
    CmdVisualizzaSchedaAlunni = &get<CommandButton>("CmdVisualizzaSchedaAlunni");
    CmdStampaSchedaAlunni = &get<CommandButton>("CmdStampaSchedaAlunni");
    CmdVisualizzaSchedaDocenti = &get<CommandButton>("CmdVisualizzaSchedaDocenti");
    CmdStampaSchedaDocenti = &get<CommandButton>("CmdStampaSchedaDocenti");
    CmdRicomincia = &get<CommandButton>("CmdRicomincia");
    cmdEsci = &get<CommandButton>("cmdEsci");
    mnuStampante = &get<Menu>("mnuStampante");

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
    Option2.onClick([this](int i) { Option2_Click(i); });
    Option2.onMouseUp(
        [this](int i, int b, int s, double x, double y) { Option2_MouseUp(i, b, s, x, y); });
    Opt1.onClick([this](int i) { Opt1_Click(i); });
    Opt5->Click = [this] { Opt5_Click(); };
    Opt10->Click = [this] { Opt10_Click(); };
    CmdVisualizzaSchedaAlunni->Click = [this] { CmdVisualizzaSchedaAlunni_Click(); };
    CmdStampaSchedaAlunni->Click = [this] { CmdStampaSchedaAlunni_Click(); };
    CmdVisualizzaSchedaDocenti->Click = [this] { CmdVisualizzaSchedaDocenti_Click(); };
    CmdStampaSchedaDocenti->Click = [this] { CmdStampaSchedaDocenti_Click(); };
    CmdRicomincia->Click = [this] { CmdRicomincia_Click(); };
    cmdEsci->Click = [this] { cmdEsci_Click(); };
    mnuStampante->Click = [this] { mnuStampante_Click(); };
    get<Menu>("mnuCartellaPdf").Click = [this] { mnuCartellaPdf_Click(); };
    get<Menu>("mnuCopieClasse").Click = [this] { mnuCopieClasse_Click(); };
    get<Menu>("mnuRifaiCodice").Click = [this] { mnuRifaiCodice_Click(); };
}

// ---- Load and resize ----

void FrmStampaSchede::Form_Load()
{
    Resize::RegistraPosizioni(*this, Posizioni);
    runSuppressed({
        [&] { Titolo = Misure::TitoloScheda(m_ctx.stato.FamigliaSimboli); },
        [&] { lblTitolo->setCaption(Titolo); },
    });
}

void FrmStampaSchede::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, false);
}

// ---- The sheet ----

void FrmStampaSchede::CostruisciRighe()
{
    RigheScheda(m_ctx).CostruisciRighe();
}

QString FrmStampaSchede::FormattaNumero(double N)
{
    try {
        return RigheScheda::FormattaNumero(N);
    } catch (const RuntimeError &) {
        m_ctx.messageBoxes().show(QStringLiteral("Numero troppo grande!"), MessageBoxes::OkOnly,
                                  MessageBoxes::Critical, QStringLiteral("Errore di overflow"));
        return {};
    }
}

void FrmStampaSchede::SceltaNumeri(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    if (Index == 0) {
        s.TipoNumeri = 1;
        s.DescrizioneNumeri = QStringLiteral(" Numeri interi");
    } else if (Index == 1) {
        s.TipoNumeri = 2;
        s.DescrizioneNumeri = QStringLiteral(" Numeri con la virgola");
    } else if (Index == 2) {
        s.TipoNumeri = 3;
        s.DescrizioneNumeri = QStringLiteral("  Numeri interi e con la virgola");
    }
    Label1->setCaption(s.DescrizioneNumeri);
}

void FrmStampaSchede::MostraScheda(bool docenti)
{
    StatoCondiviso &s = m_ctx.stato;
    Frame1->setEnabled(true);
    CmdStampaSchedaAlunni->setVisible(!docenti);
    CmdStampaSchedaDocenti->setVisible(docenti);
    s.SchedaDaStampare = docenti ? 2 : 1;
    for (int riga = 1; riga <= RigheVisibili; ++riga)
        LblOp(riga).setCaption(QString());
    // The sheet shown is the one printed.
    for (int riga = 1; riga <= s.NumeroRighe; ++riga) {
        const QString &testo = docenti ? s.RigheDocenti[riga] : s.RigheAlunni[riga];
        LblOp(riga).setCaption(testo);
        s.Operazioni[riga] = testo;
    }
}

void FrmStampaSchede::CmdVisualizzaSchedaAlunni_Click()
{
    MostraScheda(false);
}

void FrmStampaSchede::CmdVisualizzaSchedaDocenti_Click()
{
    MostraScheda(true);
}

void FrmStampaSchede::CmdRicomincia_Click()
{
    StatoCondiviso &s = m_ctx.stato;
    CmdStampaSchedaAlunni->setVisible(false);
    CmdStampaSchedaDocenti->setVisible(false);
    for (s.RigaScheda = 1; s.RigaScheda <= UltimaRiga; s.RigaScheda += 1)
        LblOp(s.RigaScheda).setCaption(QString());
    CostruisciRighe();
}

void FrmStampaSchede::Opt1_Click(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    if (Index == 0)
        s.NumeroRighe = 10;
    else if (Index == 1)
        s.NumeroRighe = 20;
    else if (Index == 2)
        s.NumeroRighe = 30;
    // One choice of the three stands pressed.
    for (const auto &[i, bottone] : Opt1)
        if (i != Index)
            bottone->setValue(false);
}

void FrmStampaSchede::Opt5_Click()
{
    // Shown only: the choice changes nothing but the buttons.
    Opt10->setValue(false);
}

void FrmStampaSchede::Opt10_Click()
{
    Opt5->setValue(false);
}

// ---- Printing ----

void FrmStampaSchede::CmdStampaSchedaAlunni_Click()
{
    m_ctx.stato.SchedaDaStampare = 1;
    StampaScheda();
}

void FrmStampaSchede::CmdStampaSchedaDocenti_Click()
{
    m_ctx.stato.SchedaDaStampare = 2;
    StampaScheda();
}

void FrmStampaSchede::StampaScheda()
{
    const StatoCondiviso &s = m_ctx.stato;
    Printer &stampante = m_ctx.printer();
    const QStringList caratteri = stampante.Fonts();
    if (!caratteri.contains(CourierNew) && !caratteri.contains(QStringLiteral("Courier"))) {
        m_ctx.messageBoxes().show(
            QStringLiteral("Devi installare il font Courier o il font Courier New"));
        return;
    }

    stampante.setFontName(CourierNew);
    // From here on a failing printer ends the printout with a message, and
    // the screen stays as it was.
    try {
        stampante.setCurrentX(1000);
        stampante.setCurrentY(1000);
        stampante.setFontSize(14);
        stampante.Print(QStringLiteral("Nome e cognome"));
        stampante.setCurrentX(1000);
        stampante.setCurrentY(1500);
        stampante.setFontSize(12);
        stampante.Print(Titolo);

        stampante.setFontName(CourierNew);
        if (s.SchedaDaStampare == 1)
            stampante.setFontSize(12);
        else if (s.SchedaDaStampare == 2)
            stampante.setFontSize(14);
        for (int riga = 1; riga <= s.NumeroRighe; ++riga) {
            stampante.setCurrentX(500);
            // A row beyond the three blocks follows the previous one.
            if (const auto y = RigheScheda::PosizioneStampa(riga))
                stampante.setCurrentY(*y);
            stampante.Print(s.Operazioni[riga]);
        }

        stampante.setFontName(CourierNew);
        stampante.setFontSize(8);
        stampante.setCurrentX(1000);
        stampante.setCurrentY(15100);
        stampante.Print(s.SottotitoloArgomento);
        stampante.setCurrentX(1000);
        stampante.setCurrentY(15300);
        stampante.Print(QStringLiteral("Livello di difficoltà: ") + s.SottotitoloArgomento);
        // The third footer line has never had a text.
        stampante.setCurrentX(1000);
        stampante.setCurrentY(15500);
        stampante.Print(QString());
        stampante.EndDoc();
    } catch (const RuntimeError &) {
        m_ctx.messageBoxes().show(QStringLiteral("Problema di stampa nella stampante utilizzata."),
                                  MessageBoxes::OkOnly);
    }
}

// ---- Choice buttons: kind of numbers ----

void FrmStampaSchede::Option1_GotFocus(int Index)
{
    Option1(Index).setValue(false);
    Option1(Index).setBackColor(GruppoScelte::ColoreFocus());
}

void FrmStampaSchede::Option1_LostFocus(int Index)
{
    Option1(Index).setBackColor(Fondo);
    Option1(Index).setValue(false);
}

void FrmStampaSchede::Option1_KeyPress(int Index, int &KeyAscii)
{
    GruppoScelte::NavigaConSpazio(Option1, BloccoSpazio, Index, KeyAscii);
}

void FrmStampaSchede::Option1_KeyDown(int Index, int &KeyCode, int)
{
    if (BloccoTasto)
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
    // Every accepted key moves on to the units, chosen or not.
    Frame22->setEnabled(true);
    Option2(0).SetFocus();
    Label1->setCaption(m_ctx.stato.DescrizioneNumeri);
    BloccoTasto = true;
}

void FrmStampaSchede::Option1_KeyUp(int Index, int &, int)
{
    BloccoSpazio = false;
    BloccoTasto = false;
    Option1(Index).setValue(false);
}

void FrmStampaSchede::Option1_MouseDown(int Index, int, int, double, double)
{
    StatoCondiviso &s = m_ctx.stato;
    // The step done goes quiet, the next one stands out.
    Label3(0).setForeColor(Blu);
    Label3(1).setForeColor(Rosso);
    // NumeroRighe is the loop counter here and is left at 31: a sheet built
    // before the next choice of rows has one row more. Kept on purpose.
    for (s.NumeroRighe = 1; s.NumeroRighe <= RigheVisibili; s.NumeroRighe += 1)
        LblOp(s.NumeroRighe).setCaption(QString());
    SceltaNumeri(Index);
    Frame22->setEnabled(true);
    Option2(0).SetFocus();
}

void FrmStampaSchede::Option1_MouseUp(int Index, int, int, double, double)
{
    Option1(Index).setValue(false);
}

// ---- Choice buttons: units ----

void FrmStampaSchede::Option2_GotFocus(int Index)
{
    Option2(Index).setValue(false);
    Option2(Index).setBackColor(GruppoScelte::ColoreFocus());
}

void FrmStampaSchede::Option2_LostFocus(int Index)
{
    Option2(Index).setBackColor(Fondo);
    Option2(Index).setValue(false);
}

void FrmStampaSchede::Option2_Click(int)
{
    StatoCondiviso &s = m_ctx.stato;
    // The sheet is titled by the units its rows are built in.
    Titolo = Misure::TitoloScheda(s.FamigliaSimboli);
    lblTitolo->setCaption(Titolo);
    Label2->setCaption(s.DescrizioneSimboli);
    Frame1->setEnabled(true);
    // CostruisciRighe leaves RigaScheda past the last row, so this loop runs
    // once: one exercise drawn on its own, then the whole sheet.
    for (s.RigaScheda = 1; s.RigaScheda <= s.NumeroRighe; s.RigaScheda += 1) {
        Algoritmi(m_ctx).GeneraEsercizio();
        CostruisciRighe();
    }
}

void FrmStampaSchede::Option2_MouseUp(int Index, int, int, double, double)
{
    Option2(Index).setValue(false);
}

// ---- Leaving, printer ----

void FrmStampaSchede::cmdEsci_Click()
{
    AppContext &ctx = m_ctx;
    Unload();
    if (auto *stampanti = ctx.screens().find<frmSceltaStampante>())
        stampanti->Unload();
}

void FrmStampaSchede::mnuCartellaPdf_Click()
{
    CartellaPdf::Scegli(m_ctx);
}

void FrmStampaSchede::mnuStampante_Click()
{
    m_ctx.form<frmSceltaStampante>().Show();
}

void FrmStampaSchede::mnuCopieClasse_Click()
{
    if (SchedeClasse *classe = m_ctx.schedeClasse())
        classe->CopiePerLaClasse();
}

void FrmStampaSchede::mnuRifaiCodice_Click()
{
    if (SchedeClasse *classe = m_ctx.schedeClasse())
        classe->RifaiDaCodice();
}
