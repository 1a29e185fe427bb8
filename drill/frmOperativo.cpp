#include "drill/frmOperativo.h"

#include "core/Algoritmi.h"
#include "core/AppContext.h"
#include "core/FonteEsercizi.h"
#include "drill/Faccina.h"
#include "drill/Migliaia.h"
#include "drill/RigaOperazione.h"
#include "drill/Tempi.h"
#include "platform/AlsaPlayer.h"
#include "platform/Suppressed.h"
#include "platform/Texts.h"
#include "platform/Twips.h"
#include "platform/controls/Image.h"
#include "report/FrmStampaEsercizio2.h"
#include "services/GruppoScelte.h"
#include "start/FrmInizio.h"
#include "start/frmIstruzioni.h"

#include <QAction>
#include <QFile>
#include <QKeySequence>
#include <QLabel>

namespace {

using K = ControlKind;

const QColor Fondo(255, 224, 192);
const QColor Pannello(255, 236, 214);
const QColor Bianco(255, 255, 255);
const QColor Blu(0, 0, 128);
const QColor Mattone(160, 40, 0);
const QColor Verde(0, 110, 40);
const QColor Viola(110, 0, 130);
const QColor Grigio(150, 120, 100);

const QColor TastoCifra(205, 228, 255);
const QColor TastoSimbolo(255, 244, 170);
const QColor TastoCancella(255, 205, 175);
const QColor TastoVerifica(195, 240, 195);
const QColor TastoAvanti(185, 215, 255);
const QColor TastoEsci(232, 214, 232);

const FontDef Cifra{"Arial", 26, true};
const FontDef Simbolo{"Arial", 22, true};
const FontDef Comando{"Arial", 14, true};
const FontDef Domanda{"Arial", 32, true};
const FontDef Risultato{"Arial", 26, true};
const FontDef Correzione{"Arial", 22, true};
const FontDef Esito{"Arial", 20, true};
const FontDef Statistica{"Arial", 12, true};
const FontDef Valore{"Arial", 18, true};
const FontDef Grande{"Arial", 30, true};
const FontDef Scelta{"Arial", 20, true};
const FontDef Descrizione{"Arial", 12, true};
const FontDef Piccolo{"Arial", 8, false};
const FontDef Valutazione{"Arial", 10, true};
// Monospaced, so the numbers 1..10 stand over the pictures' columns.
const FontDef Contatore{"Courier New", 12, true};

// Keypad geometry inside FraTastierino: digits in two rows of five
// (1..5, 6..9 0), then the four symbols, then the four commands.
constexpr double Margine = 120;
constexpr double LatoCifra = 1056;
constexpr double PassoCifra = 1176;
constexpr double LatoTasto = 1368;
constexpr double PassoTasto = 1464;

constexpr double xCifra(int cifra)
{
    return Margine + ((cifra + 9) % 10 % 5) * PassoCifra;
}
constexpr double yCifra(int cifra)
{
    return cifra >= 1 && cifra <= 5 ? 120 : 936;
}
constexpr double xTasto(int colonna)
{
    return Margine + colonna * PassoTasto;
}

// Evaluation panel: ten columns of 864 twips (six characters of the counter's
// font), a face centred under each number.
constexpr double xImmagine(int colonna)
{
    return 1680 + colonna * 864 + 150;
}

const QString Vuoto;
const QString Interrogativo = QStringLiteral("?");

} // namespace

frmOperativo::frmOperativo(AppContext &ctx)
    : Form(ctx, QStringLiteral("frmOperativo")), m_ctx(ctx), m_suono(std::make_unique<AlsaPlayer>())
{
    setCaption(QStringLiteral("SCOMPOSIZIONE"));
    setBackColor(Fondo);
    setDesignFont({"Arial", 10, true});

    // clang-format off
    design(10800, 7800, {
        {.kind = K::Label, .name = "Label1", .left = 240, .top = 120, .width = 5100, .height = 390, .font = Descrizione},
        {.kind = K::Label, .name = "Label2", .left = 5460, .top = 120, .width = 5100, .height = 390, .font = Descrizione},

        {.kind = K::Frame, .name = "frmElaborazione", .left = 240, .top = 2640, .width = 4080, .height = 3360, .back = Pannello, .border = true},
        {.kind = K::Label, .name = "Label4", .in = "frmElaborazione", .left = 180, .top = 240, .width = 2280, .height = 360, .caption = "Operazioni", .back = Pannello, .fore = Blu, .font = Statistica},
        {.kind = K::Label, .name = "LblOperazione", .in = "frmElaborazione", .left = 2520, .top = 180, .width = 1380, .height = 480, .back = Bianco, .fore = Blu, .font = Valore, .align = Align::Center, .border = true},
        {.kind = K::Label, .name = "Label8", .in = "frmElaborazione", .left = 180, .top = 840, .width = 2280, .height = 360, .caption = "Risposte esatte ", .back = Pannello, .fore = Blu, .font = Statistica},
        {.kind = K::Label, .name = "lblRisEsatte", .in = "frmElaborazione", .left = 2520, .top = 780, .width = 1380, .height = 480, .back = Bianco, .fore = Verde, .font = Valore, .align = Align::Center, .border = true},
        {.kind = K::Label, .name = "Label9", .in = "frmElaborazione", .left = 180, .top = 1440, .width = 2280, .height = 360, .caption = "Risposte errate", .back = Pannello, .fore = Blu, .font = Statistica},
        {.kind = K::Label, .name = "lblRisErrate", .in = "frmElaborazione", .left = 2520, .top = 1380, .width = 1380, .height = 480, .back = Bianco, .fore = Mattone, .font = Valore, .align = Align::Center, .border = true, .tip = "Secondi impiegati per ogni risposta"},
        {.kind = K::Label, .name = "Label10", .in = "frmElaborazione", .left = 180, .top = 2040, .width = 2280, .height = 360, .caption = "Tempo parziale", .back = Pannello, .fore = Blu, .font = Statistica},
        {.kind = K::Label, .name = "LblTempoParziale", .in = "frmElaborazione", .left = 2520, .top = 1980, .width = 1380, .height = 480, .back = Bianco, .fore = Blu, .font = Valore, .align = Align::Center, .border = true, .tip = "Secondi impiegati per ogni risposta"},
        {.kind = K::Label, .name = "Label11", .in = "frmElaborazione", .left = 180, .top = 2640, .width = 2280, .height = 360, .caption = "Tempo totale", .back = Pannello, .fore = Blu, .font = Statistica},
        {.kind = K::Label, .name = "LblTempoTotale", .in = "frmElaborazione", .left = 2520, .top = 2580, .width = 1380, .height = 480, .back = Bianco, .fore = Blu, .font = Valore, .align = Align::Center, .border = true, .tip = "Secondi impiegati per ogni esercizio"},
        {.kind = K::Label, .name = "lblCodice", .in = "frmElaborazione", .left = 3300, .top = 3090, .width = 600, .height = 210, .back = Pannello, .fore = Grigio, .font = Piccolo, .align = Align::Right},

        {.kind = K::Frame, .name = "fraNumero", .left = 240, .top = 600, .width = 10320, .height = 1920, .back = Pannello, .border = true},
        {.kind = K::Label, .name = "lblNumero", .in = "fraNumero", .left = 120, .top = 240, .width = 3540, .height = 900, .back = Pannello, .fore = Blu, .font = Domanda, .align = Align::Right},
        {.kind = K::Label, .name = "Label6", .in = "fraNumero", .left = 3660, .top = 240, .width = 720, .height = 900, .caption = "=", .back = Pannello, .fore = Blu, .font = Domanda, .align = Align::Center},
        {.kind = K::Label, .name = "LblRisultato", .in = "fraNumero", .left = 4380, .top = 240, .width = 5760, .height = 900, .caption = "?", .back = Bianco, .fore = QColor(20, 20, 20), .font = Risultato, .border = true},
        {.kind = K::Label, .name = "LblEsito1", .in = "fraNumero", .left = 120, .top = 1260, .width = 3720, .height = 540, .back = Pannello, .fore = Viola, .font = Esito, .align = Align::Right},
        {.kind = K::Label, .name = "lblCorrezione", .in = "fraNumero", .left = 4380, .top = 1260, .width = 5760, .height = 540, .back = Pannello, .fore = Verde, .font = Correzione},
        {.kind = K::Line, .name = "Line1", .in = "fraNumero", .left = 4380, .top = 240, .width = 10140, .height = 1140, .fore = QColor(220, 0, 0), .visible = false, .borderWidth = 4},
        {.kind = K::Line, .name = "Line2", .in = "fraNumero", .left = 4380, .top = 1140, .width = 10140, .height = 240, .fore = QColor(220, 0, 0), .visible = false, .borderWidth = 4},

        {.kind = K::Frame, .name = "fraValutazione", .left = 240, .top = 6120, .width = 10320, .height = 1560, .caption = "VALUTAZIONE", .back = Pannello, .fore = Blu, .font = Valutazione, .border = true},
        {.kind = K::Label, .name = "Label12", .in = "fraValutazione", .left = 180, .top = 300, .width = 1440, .height = 270, .caption = "Esercizio n.", .back = Pannello, .fore = Blu, .font = Valutazione},
        {.kind = K::Label, .name = "LblContatore", .in = "fraValutazione", .left = 1680, .top = 270, .width = 8520, .height = 300, .caption = "  1     2     3     4     5     6     7     8     9     10", .back = Pannello, .fore = Blu, .font = Contatore},
        {.kind = K::Label, .name = "Label5", .in = "fraValutazione", .left = 180, .top = 690, .width = 1440, .height = 270, .caption = "Risp. esatte", .back = Pannello, .fore = Verde, .font = Valutazione},
        {.kind = K::Label, .name = "Label3", .in = "fraValutazione", .left = 180, .top = 1170, .width = 1440, .height = 270, .caption = "Risp. errate", .back = Pannello, .fore = Mattone, .font = Valutazione},
        {.kind = K::Image, .name = "Image1", .in = "fraValutazione", .left = xImmagine(0), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image2", .in = "fraValutazione", .left = xImmagine(1), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image3", .in = "fraValutazione", .left = xImmagine(2), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image4", .in = "fraValutazione", .left = xImmagine(3), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image5", .in = "fraValutazione", .left = xImmagine(4), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image6", .in = "fraValutazione", .left = xImmagine(5), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image7", .in = "fraValutazione", .left = xImmagine(6), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image8", .in = "fraValutazione", .left = xImmagine(7), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image9", .in = "fraValutazione", .left = xImmagine(8), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image10", .in = "fraValutazione", .left = xImmagine(9), .top = 600, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image11", .in = "fraValutazione", .left = xImmagine(0), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image12", .in = "fraValutazione", .left = xImmagine(1), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image13", .in = "fraValutazione", .left = xImmagine(2), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image14", .in = "fraValutazione", .left = xImmagine(3), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image15", .in = "fraValutazione", .left = xImmagine(4), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image16", .in = "fraValutazione", .left = xImmagine(5), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image17", .in = "fraValutazione", .left = xImmagine(6), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image18", .in = "fraValutazione", .left = xImmagine(7), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image19", .in = "fraValutazione", .left = xImmagine(8), .top = 1080, .width = 420, .height = 420},
        {.kind = K::Image, .name = "Image20", .in = "fraValutazione", .left = xImmagine(9), .top = 1080, .width = 420, .height = 420},

        // Where the four overlay frames stand, whatever the window's size.
        {.kind = K::Label, .name = "lblRiferimento", .left = 4560, .top = 2640, .width = 240, .height = 240, .visible = false},

        {.kind = K::Frame, .name = "FraTastierino", .left = 4560, .top = 2640, .width = 6000, .height = 3360, .back = Pannello, .border = true},
        {.kind = K::CommandButton, .name = "Command1", .index = 0, .in = "FraTastierino", .left = xCifra(0), .top = yCifra(0), .width = LatoCifra, .height = 720, .caption = "0", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 1, .in = "FraTastierino", .left = xCifra(1), .top = yCifra(1), .width = LatoCifra, .height = 720, .caption = "1", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 2, .in = "FraTastierino", .left = xCifra(2), .top = yCifra(2), .width = LatoCifra, .height = 720, .caption = "2", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 3, .in = "FraTastierino", .left = xCifra(3), .top = yCifra(3), .width = LatoCifra, .height = 720, .caption = "3", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 4, .in = "FraTastierino", .left = xCifra(4), .top = yCifra(4), .width = LatoCifra, .height = 720, .caption = "4", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 5, .in = "FraTastierino", .left = xCifra(5), .top = yCifra(5), .width = LatoCifra, .height = 720, .caption = "5", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 6, .in = "FraTastierino", .left = xCifra(6), .top = yCifra(6), .width = LatoCifra, .height = 720, .caption = "6", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 7, .in = "FraTastierino", .left = xCifra(7), .top = yCifra(7), .width = LatoCifra, .height = 720, .caption = "7", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 8, .in = "FraTastierino", .left = xCifra(8), .top = yCifra(8), .width = LatoCifra, .height = 720, .caption = "8", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 9, .in = "FraTastierino", .left = xCifra(9), .top = yCifra(9), .width = LatoCifra, .height = 720, .caption = "9", .back = TastoCifra, .fore = Blu, .font = Cifra},
        {.kind = K::CommandButton, .name = "Command1", .index = 10, .in = "FraTastierino", .left = xTasto(0), .top = 1776, .width = LatoTasto, .height = 720, .caption = "", .back = TastoSimbolo, .fore = Mattone, .font = Simbolo},
        {.kind = K::CommandButton, .name = "Command1", .index = 11, .in = "FraTastierino", .left = xTasto(1), .top = 1776, .width = LatoTasto, .height = 720, .caption = "", .back = TastoSimbolo, .fore = Mattone, .font = Simbolo},
        {.kind = K::CommandButton, .name = "Command1", .index = 12, .in = "FraTastierino", .left = xTasto(2), .top = 1776, .width = LatoTasto, .height = 720, .caption = "da ", .back = TastoSimbolo, .fore = Mattone, .font = Simbolo},
        {.kind = K::CommandButton, .name = "Command1", .index = 13, .in = "FraTastierino", .left = xTasto(3), .top = 1776, .width = LatoTasto, .height = 720, .caption = " u ", .back = TastoSimbolo, .fore = Mattone, .font = Simbolo},
        {.kind = K::CommandButton, .name = "Command1", .index = 14, .in = "FraTastierino", .left = xTasto(0), .top = 2592, .width = LatoTasto, .height = 660, .caption = "Cancella", .back = TastoCancella, .fore = Blu, .font = Comando},
        {.kind = K::CommandButton, .name = "Command1", .index = 15, .in = "FraTastierino", .left = xTasto(1), .top = 2592, .width = LatoTasto, .height = 660, .caption = "Verifica ", .back = TastoVerifica, .fore = Blu, .font = Comando},
        {.kind = K::CommandButton, .name = "Command1", .index = 16, .in = "FraTastierino", .left = xTasto(2), .top = 2592, .width = LatoTasto, .height = 660, .caption = "Avanti", .back = TastoAvanti, .fore = Blu, .font = Comando},
        {.kind = K::CommandButton, .name = "Command1", .index = 17, .in = "FraTastierino", .left = xTasto(3), .top = 2592, .width = LatoTasto, .height = 660, .caption = "Esci", .back = TastoEsci, .fore = Blu, .font = Comando},

        {.kind = K::Frame, .name = "fraAiuto", .left = 4560, .top = 2640, .width = 6000, .height = 3360, .back = Pannello, .border = true},
        {.kind = K::Label, .name = "LblAiuto", .in = "fraAiuto", .left = 240, .top = 420, .width = 5520, .height = 780, .caption = "Ti aiuto ?", .back = Pannello, .fore = Blu, .font = Grande, .align = Align::Center},
        {.kind = K::CommandButton, .name = "Command3", .index = 1, .in = "fraAiuto", .left = 840, .top = 1560, .width = 1920, .height = 1200, .caption = "Si", .back = TastoVerifica, .fore = Blu, .font = Grande},
        {.kind = K::CommandButton, .name = "Command3", .index = 2, .in = "fraAiuto", .left = 3240, .top = 1560, .width = 1920, .height = 1200, .caption = "No", .back = TastoCancella, .fore = Blu, .font = Grande},

        {.kind = K::Frame, .name = "fraIntervento", .left = 4560, .top = 2640, .width = 6000, .height = 3360, .back = Pannello, .border = true},
        {.kind = K::Label, .name = "lblIntervento", .in = "fraIntervento", .left = 240, .top = 420, .width = 5520, .height = 780, .caption = "Intervengo io", .back = Pannello, .fore = Blu, .font = Grande, .align = Align::Center},
        {.kind = K::OptionButton, .name = "optOK", .in = "fraIntervento", .left = 2040, .top = 1560, .width = 1920, .height = 1200, .caption = "OK", .back = TastoVerifica, .fore = Blu, .font = Grande},

        {.kind = K::Frame, .name = "fraAvviso", .left = 4560, .top = 2640, .width = 6000, .height = 3360, .back = Pannello, .border = true},
        {.kind = K::Label, .name = "Label7", .in = "fraAvviso", .left = 240, .top = 420, .width = 5520, .height = 780, .caption = "Esercitazione terminata", .back = Pannello, .fore = Blu, .font = Scelta, .align = Align::Center},
        {.kind = K::OptionButton, .name = "optAvviso", .index = 0, .in = "fraAvviso", .left = 480, .top = 1560, .width = 2400, .height = 1200, .caption = "Stampa", .back = Fondo, .fore = Blu, .font = Scelta},
        {.kind = K::OptionButton, .name = "optAvviso", .index = 1, .in = "fraAvviso", .left = 3120, .top = 1560, .width = 2400, .height = 1200, .caption = "Ricomincia", .back = Fondo, .fore = Blu, .font = Scelta},

        {.kind = K::Menu, .name = "mnuVisualizza", .caption = "Visualizza operazioni"},
        {.kind = K::Menu, .name = "mnuIstruzioni", .caption = "Istruzioni"},
        {.kind = K::Menu, .name = "mnuAttestato", .caption = "Visualizza  attestato"},
        {.kind = K::Menu, .name = "mnuQuadro", .caption = "Il quadro"},
        // Only with the voice on: the question read again (also F2).
        {.kind = K::Menu, .name = "mnuAscolta", .caption = "Ascolta la domanda", .visible = false},
    });
    // clang-format on

    Label1 = &get<Label>("Label1");
    Label2 = &get<Label>("Label2");
    lblCodice = &get<Label>("lblCodice");
    lblRiferimento = &get<Label>("lblRiferimento");
    LblOperazione = &get<Label>("LblOperazione");
    lblRisEsatte = &get<Label>("lblRisEsatte");
    lblRisErrate = &get<Label>("lblRisErrate");
    LblTempoParziale = &get<Label>("LblTempoParziale");
    LblTempoTotale = &get<Label>("LblTempoTotale");
    lblNumero = &get<Label>("lblNumero");
    LblRisultato = &get<Label>("LblRisultato");
    lblCorrezione = &get<Label>("lblCorrezione");
    LblEsito1 = &get<Label>("LblEsito1");
    Label6 = &get<Label>("Label6");
    Line1 = &get<Line>("Line1");
    Line2 = &get<Line>("Line2");
    FraTastierino = &get<Frame>("FraTastierino");
    fraAiuto = &get<Frame>("fraAiuto");
    fraIntervento = &get<Frame>("fraIntervento");
    fraAvviso = &get<Frame>("fraAvviso");
    Command1 = array<CommandButton>("Command1");
    Command3 = array<CommandButton>("Command3");
    optOK = &get<OptionButton>("optOK");
    optAvviso = array<OptionButton>("optAvviso");
    mnuVisualizza = &get<Menu>("mnuVisualizza");
    mnuIstruzioni = &get<Menu>("mnuIstruzioni");
    mnuAscolta = &get<Menu>("mnuAscolta");
    mnuAscolta->action()->setShortcut(QKeySequence(Qt::Key_F2));

    // What assistive tools read: each value box by the caption beside it,
    // each overlay frame by its line of text.
    const std::pair<Label *, const char *> valori[] = {
        {LblOperazione, "Label4"},     {lblRisEsatte, "Label8"},    {lblRisErrate, "Label9"},
        {LblTempoParziale, "Label10"}, {LblTempoTotale, "Label11"},
    };
    for (const auto &[valore, didascalia] : valori)
        valore->setEtichetta(get<Label>(didascalia));
    fraAiuto->setEtichetta(get<Label>("LblAiuto"));
    fraIntervento->setEtichetta(get<Label>("lblIntervento"));
    fraAvviso->setEtichetta(get<Label>("Label7"));

    // The faces are drawn, not bitmaps: sharp at any scale factor.
    for (int n = 1; n <= Faccina::Quante; ++n)
        get<Image>(QStringLiteral("Image%1").arg(n).toLatin1().constData())
            .setDisegno(QSize(Faccina::Lato, Faccina::Lato),
                        [n](QPainter &p, const QRectF &box) { Faccina::disegna(p, n, box); });

    // The big texts stand in the middle of their boxes; the answer keeps a
    // little room from its border.
    for (Label *l : {lblNumero, Label6, LblEsito1, Label1, Label2}) {
        Qt::Alignment allineamento = l->label()->alignment();
        allineamento &= ~Qt::Alignment(Qt::AlignTop);
        l->label()->setAlignment(allineamento | Qt::AlignVCenter);
    }
    LblRisultato->label()->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    LblRisultato->label()->setIndent(10);
    LblRisultato->label()->setWordWrap(false);
    lblNumero->label()->setWordWrap(false);
    for (Label *l : {LblOperazione, lblRisEsatte, lblRisErrate, LblTempoParziale, LblTempoTotale})
        l->label()->setAlignment(Qt::AlignCenter);

    Command1.onClick([this](int i) { Command1_Click(i); });
    Command3.onClick([this](int i) { Command3_Click(i); });
    optOK->Click = [this] { optOK_Click(); };
    optAvviso.onGotFocus([this](int i) { optAvviso_GotFocus(i); });
    optAvviso.onLostFocus([this](int i) { optAvviso_LostFocus(i); });
    optAvviso.onMouseDown(
        [this](int i, int b, int s, double x, double y) { optAvviso_MouseDown(i, b, s, x, y); });
    optAvviso.onMouseUp(
        [this](int i, int b, int s, double x, double y) { optAvviso_MouseUp(i, b, s, x, y); });
    LblRisultato->Change = [this] { LblRisultato_Change(); };
    mnuVisualizza->Click = [this] { mnuVisualizza_Click(); };
    mnuIstruzioni->Click = [this] { mnuIstruzioni_Click(); };
    mnuAscolta->Click = [this] { mnuAscolta_Click(); };
    // mnuAttestato and mnuQuadro have no action on this screen.
}

frmOperativo::~frmOperativo() = default;

void frmOperativo::collegaTipoEsercizio(AppContext &ctx)
{
    // One connection per context, however often this is called.
    const QString nome = QStringLiteral("frmOperativo_tipoEsercizio");
    if (ctx.findChild<QObject *>(nome, Qt::FindDirectChildrenOnly))
        return;
    auto *collegamento = new QObject(&ctx);
    collegamento->setObjectName(nome);
    QObject::connect(&ctx, &AppContext::tipoEsercizioGenerato, collegamento, [&ctx](int) {
        frmOperativo &schermo = ctx.form<frmOperativo>();
        // Loading the screen draws its own first exercise: show the type
        // that stands now.
        schermo.lblCodice->setCaption(Texts::fromInt(ctx.stato.TipoEsercizio));
    });
}

// ---- Load, resize, unload ----

void frmOperativo::Form_Load()
{
    StatoCondiviso &s = m_ctx.stato;
    MostraCodiceSerie();
    Resize::RegistraPosizioni(*this, Posizioni);
    runSuppressed({
        [&] { Label1->setBackColor(QColor(255, 240, 150)); },
        [&] { Label1->setForeColor(QColor(250, 170, 110)); },
        [&] { Label2->setBackColor(QColor(250, 200, 110)); },
        // "&H00000080": red 128 in the stored colour value.
        [&] { Label2->setForeColor(Colori::daValore(0x00000080)); },
        [&] { Label1->setCaption(s.DescrizioneNumeri); },
        [&] { Label2->setCaption(s.DescrizioneSimboli); },
        [&] { s.RisposteErrate = 0; },
        [&] { s.RisposteEsatte = 0; },
        [&] { s.TempoParziale = 0; },
        [&] { s.TempoTotale = 0; },
        [&] { s.Tentativi = 0; },
        [&] { s.LivelloSerie = 9; },
        // NumeroEsercizio stays: a second opening continues the numbering.
        [&] { BloccaPannelli(); },
        [&] { MostraPannello(*FraTastierino); },
        [&] { Command1(10).setCaption(s.Simbolo1); },
        [&] { Command1(11).setCaption(s.Simbolo2); },
        [&] { Command1(12).setCaption(s.Simbolo3); },
        [&] { Command1(13).setCaption(s.Simbolo4); },
        [&] { m_ctx.registro().inizioSerie(s); },
        [&] { mnuAscolta->setVisible(m_ctx.voce().attiva()); },
        [&] { NuovoEsercizio(); },
    });
}

void frmOperativo::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, false);
    PosizionaPannelli();
    // Scaling leaves lines alone: the cross follows the answer it covers.
    BarraRisposta();
}

void frmOperativo::Form_Unload(int &)
{
    m_ctx.registro().serieLasciata(m_ctx.stato);
    // Given exercises are for this series only: the next one is drawn again.
    if (FonteEsercizi *fonte = m_ctx.fonteEsercizi()) {
        fonte->serieChiusa(m_ctx.stato);
        m_ctx.setFonteEsercizi(nullptr);
    }
    m_ctx.form<FrmInizio>().Show();
}

// ---- The series ----

void frmOperativo::NuovoEsercizio()
{
    StatoCondiviso &s = m_ctx.stato;
    Line2->setVisible(false);
    Line1->setVisible(false);
    s.Tentativi = 0;
    s.TastiPremuti = 0;
    LblEsito1->setCaption(Vuoto);
    lblCorrezione->setCaption(Vuoto);
    LblRisultato->setCaption(Interrogativo);
    s.NumeroEsercizio += 1;
    LblTempoParziale->setCaption(Vuoto);
    s.RispostaAlunno.clear();
    if (FonteEsercizi *fonte = m_ctx.fonteEsercizi())
        fonte->esercizio(s.NumeroEsercizio, s);
    else
        Algoritmi(m_ctx).GeneraEsercizio();
    PreparaDomanda();
    TastiNo();
}

void frmOperativo::PreparaDomanda()
{
    StatoCondiviso &s = m_ctx.stato;
    const QString domanda = RigaOperazione::domanda(s.Numero, s.SimboloRichiesto);
    s.Operazioni[s.NumeroEsercizio] = domanda;
    s.Spazi = RigaOperazione::spazi(domanda);
    lblNumero->setCaption(domanda);
    s.Operazioni[s.NumeroEsercizio] = RigaOperazione::inizio(s.Spazi, domanda);
    s.InizioEsercizio = m_ctx.clock().secondsSinceMidnight();
    m_ctx.voce().domanda(s, domanda);
}

void frmOperativo::ControllaFineSerie()
{
    if (m_ctx.stato.NumeroEsercizio == UltimoEsercizio(20)) {
        BloccaPannelli();
        MostraPannello(*fraAvviso);
        m_ctx.registro().fineSerie(m_ctx.stato);
    }
}

int frmOperativo::UltimoEsercizio(int perLaSerieNormale) const
{
    const FonteEsercizi *fonte = m_ctx.fonteEsercizi();
    return fonte ? fonte->quanti() : perLaSerieNormale;
}

void frmOperativo::MostraCodiceSerie()
{
    const FonteEsercizi *fonte = m_ctx.fonteEsercizi();
    if (!fonte)
        return;
    // Small, in the corner: the teacher passing by reads it, the pupil is not
    // distracted by it.
    lblCodice->Move(1500, lblCodice->Top(), 2400, lblCodice->Height());
    lblCodice->setCaption(QStringLiteral("Verifica ") + fonte->codice());
}

void frmOperativo::BloccaPannelli()
{
    FraTastierino->setEnabled(false);
    fraAiuto->setEnabled(false);
    fraAvviso->setEnabled(false);
    fraIntervento->setEnabled(false);
}

void frmOperativo::PosizionaPannelli()
{
    for (Frame *pannello : {fraAiuto, FraTastierino, fraAvviso, fraIntervento}) {
        pannello->setTop(lblRiferimento->Top());
        pannello->setLeft(lblRiferimento->Left());
    }
}

void frmOperativo::MostraPannello(Frame &pannello)
{
    pannello.setEnabled(true);
    pannello.ZOrder(0);
}

void frmOperativo::Ricomincia()
{
    StatoCondiviso &s = m_ctx.stato;
    s.NumeroEsercizio = 0;
    BloccaPannelli();
    MostraPannello(*FraTastierino);
    LblOperazione->setCaption(Vuoto);
    lblRisEsatte->setCaption(Vuoto);
    lblRisErrate->setCaption(Vuoto);
    LblTempoParziale->setCaption(Vuoto);
    LblTempoTotale->setCaption(Vuoto);
    s.TempoTotale = 0;
    // The right and wrong counts go on until the screen is loaded again.
    m_ctx.registro().inizioSerie(s);
    NuovoEsercizio();
}

void frmOperativo::ApriResoconto()
{
    // The report reads Operazioni and NumeroEsercizio itself when it loads.
    m_ctx.form<FrmStampaEsercizio2>().Show();
}

// ---- Keypad and checking ----

QList<int> frmOperativo::TastiPer(const QString &testo)
{
    QList<int> tasti;
    qsizetype i = 0;
    while (i < testo.size()) {
        if (testo[i].isDigit()) {
            tasti << testo[i].digitValue();
            ++i;
            continue;
        }
        int trovato = -1;
        for (int k = 10; k <= 13; ++k) {
            const QString c = Command1(k).Caption();
            if (!c.isEmpty() && testo.mid(i).startsWith(c) &&
                (trovato < 0 || c.size() > Command1(trovato).Caption().size()))
                trovato = k;
        }
        if (trovato < 0)
            break;
        tasti << trovato;
        i += Command1(trovato).Caption().size();
    }
    return tasti;
}

void frmOperativo::TastiNo()
{
    StatoCondiviso &s = m_ctx.stato;
    for (s.Contatore = 0; s.Contatore <= 9; s.Contatore += 1)
        Command1(s.Contatore).setEnabled(true);
    // Button 10 keeps whatever state the last key left it in.
    for (s.Contatore = 11; s.Contatore <= 13; s.Contatore += 1)
        Command1(s.Contatore).setEnabled(false);
    Command1(14).setEnabled(true);
    Command1(0).SetFocus();
    Command1(15).setEnabled(false);
    Command1(16).setEnabled(false);
    Command1(17).setEnabled(false);
}

void frmOperativo::AttesaAvanti()
{
    StatoCondiviso &s = m_ctx.stato;
    for (s.Contatore = 0; s.Contatore <= 15; s.Contatore += 1)
        Command1(s.Contatore).setEnabled(false);
    Command1(16).setEnabled(true);
    Command1(17).setEnabled(true);
    Command1(16).SetFocus();
}

void frmOperativo::Command1_Click(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    m_ctx.voce().tasto(s, Command1(Index).Caption());
    s.TastiPremuti += 1;
    if (Index >= 0 && Index <= 9) {
        // Eight inputs at most: the ninth press onwards is ignored.
        if (s.TastiPremuti >= 9)
            return;
        s.RispostaAlunno += Command1(Index).Caption();
        LblRisultato->setCaption(s.RispostaAlunno);
        for (s.Contatore = 0; s.Contatore <= 9; s.Contatore += 1)
            Command1(s.Contatore).setEnabled(false);
        for (s.Contatore = 10; s.Contatore <= 13; s.Contatore += 1)
            Command1(s.Contatore).setEnabled(true);
    } else if (Index >= 10 && Index <= 13) {
        if (s.TastiPremuti >= 9)
            return;
        s.RispostaAlunno += Command1(Index).Caption();
        LblRisultato->setCaption(s.RispostaAlunno);
        for (s.Contatore = 0; s.Contatore <= 9; s.Contatore += 1)
            Command1(s.Contatore).setEnabled(true);
        for (s.Contatore = 10; s.Contatore <= 13; s.Contatore += 1)
            Command1(s.Contatore).setEnabled(false);
    } else if (Index == 14) {
        s.RispostaAlunno.clear();
        LblRisultato->setCaption(Interrogativo);
        s.TastiPremuti = 0;
        TastiNo();
        Command1(15).setEnabled(false);
    } else if (Index == 15) {
        VerificaRisposta();
    } else if (Index == 16) {
        if (s.NumeroEsercizio < UltimoEsercizio(30)) {
            NuovoEsercizio();
        } else {
            BloccaPannelli();
            MostraPannello(*fraAvviso);
            m_ctx.registro().fineSerie(s);
        }
    } else if (Index == 17) {
        Unload();
    }
}

void frmOperativo::LblRisultato_Change()
{
    if (LblRisultato->Caption() != Interrogativo)
        Command1(15).setEnabled(true);
}

void frmOperativo::VerificaRisposta()
{
    StatoCondiviso &s = m_ctx.stato;
    if (Texts::trim(s.Risposta) == Texts::trim(s.RispostaAlunno)) {
        LblEsito1->setCaption(QStringLiteral("Esatto"));
        s.RisposteEsatte += 1;
        s.EsatteComplessive += 1;
        s.Segno = QStringLiteral("  ");
        AggiornaTempi();
        s.Operazioni[s.NumeroEsercizio] +=
            RigaOperazione::pezzoEsatto(s.RispostaAlunno, s.TempoParzialeTesto);
        LblOperazione->setCaption(Texts::fromInt(s.NumeroEsercizio));
        lblRisEsatte->setCaption(Texts::fromInt(s.RisposteEsatte));
        AttesaAvanti();
        m_ctx.voce().esatto(s);
        m_ctx.registro().esercizioChiuso(s);
        ControllaFineSerie();
    } else {
        s.Segno = QStringLiteral("* ");
        s.SpaziRisposta = RigaOperazione::spaziRisposta(s.RispostaAlunno);
        s.Operazioni[s.NumeroEsercizio] +=
            RigaOperazione::pezzoErrato(s.RispostaAlunno, s.Segno, s.SpaziRisposta);
        LblEsito1->setCaption(QStringLiteral("Errato"));
        BarraRisposta();
        Line1->setVisible(true);
        Line2->setVisible(true);
        // Every wrong check counts; the label follows when the exercise closes.
        s.RisposteErrate += 1;
        BloccaPannelli();
        MostraPannello(*fraAiuto);
        m_ctx.voce().errato(s);
    }
}

void frmOperativo::BarraRisposta()
{
    const double l = LblRisultato->Left();
    const double t = LblRisultato->Top();
    const double w = LblRisultato->Width();
    const double h = LblRisultato->Height();
    Line1->setPoints(l, t, l + w, t + h);
    Line2->setPoints(l, t + h, l + w, t);
}

void frmOperativo::Command3_Click(int Index)
{
    if (Index == 1)
        MostraSoluzione();
    else if (Index == 2)
        Riprova();
}

void frmOperativo::Riprova()
{
    StatoCondiviso &s = m_ctx.stato;
    s.RispostaAlunno.clear();
    LblEsito1->setCaption(Vuoto);
    s.SimboloRichiesto.clear();
    s.Tentativi += 1;
    if (s.Tentativi < 2) {
        s.TastiPremuti = 0;
        Line1->setVisible(false);
        Line2->setVisible(false);
        LblRisultato->setCaption(Interrogativo);
        BloccaPannelli();
        MostraPannello(*FraTastierino);
        TastiNo();
    } else {
        s.Operazioni[s.NumeroEsercizio] += s.RispostaAlunno;
        BloccaPannelli();
        MostraPannello(*fraIntervento);
        optOK->setValue(false);
        m_ctx.voce().intervento(s);
    }
}

void frmOperativo::optOK_Click()
{
    MostraSoluzione();
}

void frmOperativo::MostraSoluzione()
{
    StatoCondiviso &s = m_ctx.stato;
    AggiornaTempi();
    s.Operazioni[s.NumeroEsercizio] +=
        RigaOperazione::pezzoSoluzione(s.Risposta, s.TempoParzialeTesto);
    LblOperazione->setCaption(Texts::fromInt(s.NumeroEsercizio));
    LblEsito1->setCaption(Vuoto);
    LblOperazione->setCaption(Texts::fromInt(s.NumeroEsercizio));
    lblRisErrate->setCaption(Texts::fromInt(s.RisposteErrate));
    BloccaPannelli();
    MostraPannello(*FraTastierino);
    AttesaAvanti();
    lblCorrezione->setCaption(s.Risposta);
    m_ctx.voce().soluzione(s);
    m_ctx.registro().esercizioChiuso(s);
    ControllaFineSerie();
}

// ---- Timing ----

void frmOperativo::AggiornaTempi()
{
    StatoCondiviso &s = m_ctx.stato;
    s.FineEsercizio = m_ctx.clock().secondsSinceMidnight();
    s.TempoParziale = Tempi::secondiInteri(s.InizioEsercizio, s.FineEsercizio);
    s.TempoParzialeTesto = Texts::fromDouble(s.TempoParziale);
    s.TempoTotale = s.TempoParziale + s.TempoTotale;
    s.TempoTotaleTesto = Texts::fromDouble(s.TempoTotale);
    LblTempoParziale->setCaption(Texts::fromDouble(s.TempoParziale));
    LblTempoParziale->setCaption(Tempi::didascaliaParziale(LblTempoParziale->Caption()));
    LblTempoTotale->setCaption(Tempi::didascaliaTotale(s.TempoTotaleTesto, s.TempoTotale));
}

QString frmOperativo::FormattaConMigliaia(double X)
{
    return ::FormattaConMigliaia(X, m_ctx.messageBoxes());
}

// ---- End of the series ----

void frmOperativo::optAvviso_GotFocus(int Index)
{
    optAvviso(Index).setValue(false);
    optAvviso(Index).setBackColor(GruppoScelte::ColoreFocus());
}

void frmOperativo::optAvviso_LostFocus(int Index)
{
    optAvviso(Index).setBackColor(GruppoScelte::ColoreRiposo());
    optAvviso(Index).setValue(false);
}

void frmOperativo::optAvviso_MouseDown(int Index, int, int, double, double)
{
    if (Index == 0)
        ApriResoconto();
    else if (Index == 1)
        Ricomincia();
}

void frmOperativo::optAvviso_MouseUp(int Index, int, int, double, double)
{
    optAvviso(Index).setValue(false);
}

// ---- Menus and sound ----

void frmOperativo::mnuVisualizza_Click()
{
    ApriResoconto();
}

void frmOperativo::mnuIstruzioni_Click()
{
    m_ctx.form<frmIstruzioni>().ShowModal();
}

void frmOperativo::mnuAscolta_Click()
{
    m_ctx.voce().domanda(m_ctx.stato, lblNumero->Caption());
}

void frmOperativo::SuonaRisorsa()
{
    StatoCondiviso &s = m_ctx.stato;
    QFile risorsa(QStringLiteral(":/drill/campanella.wav"));
    if (!risorsa.open(QIODevice::ReadOnly))
        return;
    s.DatiSuono = risorsa.readAll();
    m_suono->play(s.DatiSuono);
}
