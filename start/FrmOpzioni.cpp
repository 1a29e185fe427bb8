#include "start/FrmOpzioni.h"

#include "core/AppContext.h"
#include "platform/KeyCodes.h"
#include "platform/Texts.h"
#include "platform/Twips.h"
#include "start/FileLivelli.h"

#include <QLocale>
#include <array>
#include <cmath>

namespace {

using K = ControlKind;

struct Rgb
{
    int r, g, b;
};

// The colours of one button index in the four colour groups.
struct ColoriIndice
{
    Rgb sfondo;    // page background (Option1)
    Rgb caratteri; // text (Option27)
    Rgb chiaro;    // light end of the scanning colour (Option17)
    Rgb scuro;     // dark end of the scanning colour (Option17)
};

// clang-format off
constexpr std::array<ColoriIndice, 11> Tabella{{
    {{255, 255, 255}, {200, 200, 200}, {255, 255, 255}, {235, 235, 235}}, // Bianco
    {{220, 220, 220}, {150, 150, 150}, {190, 190, 190}, {150, 150, 150}}, // Grigio
    {{255, 255, 190}, {250, 255,  80}, {255, 255, 120}, {250, 255,  80}}, // Giallo
    {{250, 220, 160}, {255, 190, 110}, {250, 210, 140}, {255, 190, 110}}, // Arancio
    {{255, 200, 255}, {255, 130, 255}, {255, 200, 255}, {255,  50, 255}}, // Fucsia
    {{250, 210, 255}, {200, 150, 255}, {230, 180, 255}, {200, 150, 255}}, // Pervinca
    {{180, 255, 255}, {100, 255, 255}, {100, 255, 255}, {  0, 210, 255}}, // Azzurro
    {{100, 255, 190}, {100, 220, 150}, {100, 220, 150}, {100, 200, 150}}, // Verde
    {{255, 225, 120}, {255, 200,  90}, {255, 215,  10}, {255, 200,  90}}, // Nocciola
    {{  0,   0,   0}, {  0,   0,   0}, { 70,  70,  70}, {  0,   0,   0}}, // Nero
    {{255, 119, 136}, {255,   0,   0}, {255,  65,  83}, {255,   0,   0}}, // Rosso
}};
// clang-format on

// The defaults: a pink page, near-black text (5, 5, 5, not the pure black of
// the "Nero" button) and pink scanning.
const QString SfondoPredefinito = QStringLiteral("16763135");
const QString CaratteriPredefiniti = QStringLiteral("328965");
const QString ScansioneChiaraPredefinita = QStringLiteral("16763135");
const QString ScansioneScuraPredefinita = QStringLiteral("16724735");

QString valoreTesto(const Rgb &c)
{
    return Texts::fromInt(Colori::valore(QColor(c.r, c.g, c.b)));
}

const QColor Fondo(250, 240, 228);
const QColor Tasto(255, 250, 240);
// A chosen switch or family button stands out from the others.
const QColor Scelto(255, 208, 150);
const QColor Blu(0, 0, 128);
const QColor Chiaro(255, 255, 255);
const FontDef Anteprima{"Arial", 22, true};
const FontDef Esempio{"Arial", 24, true};
const FontDef Comando{"Arial", 13, true};

// Letters of the command keys.
constexpr int TastoE = 69;
constexpr int TastoI = 73;
constexpr int TastoM = 77;

} // namespace

FrmOpzioni::FrmOpzioni(AppContext &ctx) : Form(ctx, QStringLiteral("FrmOpzioni")), m_ctx(ctx)
{
    setCaption(QStringLiteral(" PANNELLO OPZIONI"));
    setBackColor(Fondo);
    setDesignFont({"Arial", 8, true});

    // The scanning colours come before the text colours in the collection:
    // choosing a text colour repaints the commands in the scanning colours,
    // and at load those must already be set.
    // clang-format off
    design(13200, 9000, {
        {.kind = K::Frame, .name = "Frame2", .left = 120, .top = 90, .width = 2430, .height = 4710, .caption = "COLORE SFONDO PAGINA", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option1", .index = 0, .in = "Frame2", .left = 120, .top = 330, .width = 2190, .height = 345, .caption = "Bianco", .back = QColor(255, 255, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option1", .index = 1, .in = "Frame2", .left = 120, .top = 720, .width = 2190, .height = 345, .caption = "Grigio", .back = QColor(220, 220, 220), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option1", .index = 2, .in = "Frame2", .left = 120, .top = 1110, .width = 2190, .height = 345, .caption = "Giallo", .back = QColor(255, 255, 190), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option1", .index = 3, .in = "Frame2", .left = 120, .top = 1500, .width = 2190, .height = 345, .caption = "Arancio", .back = QColor(250, 220, 160), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option1", .index = 4, .in = "Frame2", .left = 120, .top = 1890, .width = 2190, .height = 345, .caption = "Fucsia", .back = QColor(255, 200, 255), .fore = Blu, .value = true},
        {.kind = K::OptionButton, .name = "Option1", .index = 5, .in = "Frame2", .left = 120, .top = 2280, .width = 2190, .height = 345, .caption = "Pervinca", .back = QColor(250, 210, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option1", .index = 6, .in = "Frame2", .left = 120, .top = 2670, .width = 2190, .height = 345, .caption = "Azzurro", .back = QColor(180, 255, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option1", .index = 7, .in = "Frame2", .left = 120, .top = 3060, .width = 2190, .height = 345, .caption = "Verde", .back = QColor(100, 255, 190), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option1", .index = 8, .in = "Frame2", .left = 120, .top = 3450, .width = 2190, .height = 345, .caption = "Nocciola", .back = QColor(255, 225, 120), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option1", .index = 9, .in = "Frame2", .left = 120, .top = 3840, .width = 2190, .height = 345, .caption = "Nero", .back = QColor(0, 0, 0), .fore = Chiaro},
        {.kind = K::OptionButton, .name = "Option1", .index = 10, .in = "Frame2", .left = 120, .top = 4230, .width = 2190, .height = 345, .caption = "Rosso", .back = QColor(255, 119, 136), .fore = Blu},
        {.kind = K::Frame, .name = "Frame6", .left = 4740, .top = 90, .width = 2880, .height = 4710, .caption = "COLORE SCANSIONE", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option17", .index = 0, .in = "Frame6", .left = 120, .top = 330, .width = 2640, .height = 345, .caption = "Da bianco chiaro a scuro", .back = QColor(255, 255, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option17", .index = 1, .in = "Frame6", .left = 120, .top = 720, .width = 2640, .height = 345, .caption = "Da grigio chiaro a scuro", .back = QColor(190, 190, 190), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option17", .index = 2, .in = "Frame6", .left = 120, .top = 1110, .width = 2640, .height = 345, .caption = "Da giallo chiaro a scuro", .back = QColor(255, 255, 120), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option17", .index = 3, .in = "Frame6", .left = 120, .top = 1500, .width = 2640, .height = 345, .caption = "Da arancio chiaro a scuro", .back = QColor(250, 210, 140), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option17", .index = 4, .in = "Frame6", .left = 120, .top = 1890, .width = 2640, .height = 345, .caption = "Da fucsia chiaro a scuro", .back = QColor(255, 200, 255), .fore = Blu, .value = true},
        {.kind = K::OptionButton, .name = "Option17", .index = 5, .in = "Frame6", .left = 120, .top = 2280, .width = 2640, .height = 345, .caption = "Da pervinca chiaro a scuro", .back = QColor(230, 180, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option17", .index = 6, .in = "Frame6", .left = 120, .top = 2670, .width = 2640, .height = 345, .caption = "Da azzurro chiaro a scuro", .back = QColor(100, 255, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option17", .index = 7, .in = "Frame6", .left = 120, .top = 3060, .width = 2640, .height = 345, .caption = "Da verde chiaro a scuro", .back = QColor(100, 220, 150), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option17", .index = 8, .in = "Frame6", .left = 120, .top = 3450, .width = 2640, .height = 345, .caption = "Da nocciola chiaro a scuro", .back = QColor(255, 215, 10), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option17", .index = 9, .in = "Frame6", .left = 120, .top = 3840, .width = 2640, .height = 345, .caption = "Da nero chiaro a scuro", .back = QColor(70, 70, 70), .fore = Chiaro},
        {.kind = K::OptionButton, .name = "Option17", .index = 10, .in = "Frame6", .left = 120, .top = 4230, .width = 2640, .height = 345, .caption = "Da rosso chiaro a scuro", .back = QColor(255, 65, 83), .fore = Blu},
        {.kind = K::Frame, .name = "Frame5", .left = 2640, .top = 90, .width = 2010, .height = 4710, .caption = "COLORE CARATTERI", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option27", .index = 0, .in = "Frame5", .left = 120, .top = 330, .width = 1770, .height = 345, .caption = "Bianco", .back = QColor(200, 200, 200), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 1, .in = "Frame5", .left = 120, .top = 720, .width = 1770, .height = 345, .caption = "Grigio", .back = QColor(150, 150, 150), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 2, .in = "Frame5", .left = 120, .top = 1110, .width = 1770, .height = 345, .caption = "Giallo", .back = QColor(250, 255, 80), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 3, .in = "Frame5", .left = 120, .top = 1500, .width = 1770, .height = 345, .caption = "Arancio", .back = QColor(255, 190, 110), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 4, .in = "Frame5", .left = 120, .top = 1890, .width = 1770, .height = 345, .caption = "Fucsia", .back = QColor(255, 130, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 5, .in = "Frame5", .left = 120, .top = 2280, .width = 1770, .height = 345, .caption = "Pervinca", .back = QColor(200, 150, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 6, .in = "Frame5", .left = 120, .top = 2670, .width = 1770, .height = 345, .caption = "Azzurro", .back = QColor(100, 255, 255), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 7, .in = "Frame5", .left = 120, .top = 3060, .width = 1770, .height = 345, .caption = "Verde", .back = QColor(100, 220, 150), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 8, .in = "Frame5", .left = 120, .top = 3450, .width = 1770, .height = 345, .caption = "Nocciola", .back = QColor(255, 200, 90), .fore = Blu},
        {.kind = K::OptionButton, .name = "Option27", .index = 9, .in = "Frame5", .left = 120, .top = 3840, .width = 1770, .height = 345, .caption = "Nero", .back = QColor(0, 0, 0), .fore = Chiaro, .value = true},
        {.kind = K::OptionButton, .name = "Option27", .index = 10, .in = "Frame5", .left = 120, .top = 4230, .width = 1770, .height = 345, .caption = "Rosso", .back = QColor(255, 0, 0), .fore = Chiaro},
        {.kind = K::Frame, .name = "Frame3", .left = 7740, .top = 2370, .width = 2625, .height = 1170, .caption = "TIPO CARATTERI", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option9", .index = 0, .in = "Frame3", .left = 120, .top = 330, .width = 2385, .height = 345, .caption = "MAIUSCOLO", .back = Scelto, .fore = Blu, .value = true},
        {.kind = K::OptionButton, .name = "Option9", .index = 1, .in = "Frame3", .left = 120, .top = 720, .width = 2385, .height = 345, .caption = "Minuscolo", .back = Tasto, .fore = Blu},
        {.kind = K::Frame, .name = "Frame8", .left = 10455, .top = 2370, .width = 2625, .height = 1170, .caption = "RINFORZO SONORO", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option28", .index = 0, .in = "Frame8", .left = 120, .top = 330, .width = 2385, .height = 345, .caption = "Attivato", .back = Scelto, .fore = Blu, .value = true},
        {.kind = K::OptionButton, .name = "Option28", .index = 1, .in = "Frame8", .left = 120, .top = 720, .width = 2385, .height = 345, .caption = "Disattivato", .back = Tasto, .fore = Blu},
        {.kind = K::Frame, .name = "BEEP", .left = 7740, .top = 3630, .width = 2625, .height = 1170, .caption = "BEEP", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option3", .index = 0, .in = "BEEP", .left = 120, .top = 330, .width = 2385, .height = 345, .caption = "Attivato", .back = Scelto, .fore = Blu, .value = true},
        {.kind = K::OptionButton, .name = "Option3", .index = 1, .in = "BEEP", .left = 120, .top = 720, .width = 2385, .height = 345, .caption = "Disattivato", .back = Tasto, .fore = Blu},
        {.kind = K::Frame, .name = "Frame4", .left = 10455, .top = 3630, .width = 2625, .height = 1170, .caption = "SINTESI VOCALE", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option11", .index = 0, .in = "Frame4", .left = 120, .top = 330, .width = 2385, .height = 345, .caption = "Attivata", .back = Scelto, .fore = Blu, .value = true},
        {.kind = K::OptionButton, .name = "Option11", .index = 1, .in = "Frame4", .left = 120, .top = 720, .width = 2385, .height = 345, .caption = "Disattivata", .back = Tasto, .fore = Blu},
        {.kind = K::Frame, .name = "Frame9", .left = 120, .top = 4920, .width = 7500, .height = 3960, .caption = "QUADRO DELLE SCELTE", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option6", .index = 0, .in = "Frame9", .left = 120, .top = 330, .width = 7260, .height = 330, .caption = "u    d    c    m :       unità  decimi centesimi millesimi", .back = Tasto, .fore = Blu},
        {.kind = K::OptionButton, .name = "Option6", .index = 1, .in = "Frame9", .left = 120, .top = 705, .width = 7260, .height = 330, .caption = "uk    h    da    u :       migliaia  centinaia decine unità", .back = Tasto, .fore = Blu},
        {.kind = K::Frame, .name = "Frame10", .in = "Frame9", .left = 120, .top = 1140, .width = 7260, .height = 2700, .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option6", .index = 2, .in = "Frame10", .left = 120, .top = 120, .width = 7020, .height = 315, .caption = "m    dm    cm    mm :       metro  decimetro centimetro millimetro", .back = Tasto, .fore = Blu},
        {.kind = K::OptionButton, .name = "Option6", .index = 3, .in = "Frame10", .left = 120, .top = 480, .width = 7020, .height = 315, .caption = "km    hm    dam    m :       chilometro  ettometro decametro metro", .back = Tasto, .fore = Blu},
        {.kind = K::OptionButton, .name = "Option6", .index = 4, .in = "Frame10", .left = 120, .top = 840, .width = 7020, .height = 315, .caption = "g    dg    cg    mg :       grammo  decigrammo centigrammo milligrammo", .back = Tasto, .fore = Blu},
        {.kind = K::OptionButton, .name = "Option6", .index = 5, .in = "Frame10", .left = 120, .top = 1200, .width = 7020, .height = 315, .caption = "kg    hg    dag    g :       chilogrammo  ettogrammo decagrammo grammo", .back = Tasto, .fore = Blu},
        {.kind = K::OptionButton, .name = "Option6", .index = 6, .in = "Frame10", .left = 120, .top = 1560, .width = 7020, .height = 315, .caption = "t   q  Mg Kg :         tonnellata quintale miriagrammo chilogrammo", .back = Tasto, .fore = Blu},
        {.kind = K::OptionButton, .name = "Option6", .index = 7, .in = "Frame10", .left = 120, .top = 1920, .width = 7020, .height = 315, .caption = "l    dl    cl    ml :       litro  decilitro centilitro millilitro", .back = Tasto, .fore = Blu},
        {.kind = K::OptionButton, .name = "Option6", .index = 8, .in = "Frame10", .left = 120, .top = 2280, .width = 7020, .height = 315, .caption = "hl    dal    l :       ettolitro  decalitro litro", .back = Tasto, .fore = Blu},
        {.kind = K::Frame, .name = "Frame1", .left = 7740, .top = 90, .width = 5340, .height = 2190, .caption = "ANTEPRIMA DELLE TUE SCELTE", .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option4", .in = "Frame1", .left = 210, .top = 390, .width = 2340, .height = 900, .caption = "123", .back = QColor(255, 50, 255), .fore = Blu, .font = Anteprima},
        {.kind = K::OptionButton, .name = "Option2", .in = "Frame1", .left = 2790, .top = 390, .width = 2340, .height = 900, .caption = "AAAA", .back = QColor(255, 200, 255), .fore = Blu, .font = Anteprima},
        {.kind = K::Label, .name = "Label5", .in = "Frame1", .left = 210, .top = 1380, .width = 2340, .height = 690, .caption = "ADC", .fore = Blu, .font = Esempio, .align = Align::Center, .transparent = true},
        {.kind = K::Label, .name = "Label4", .in = "Frame1", .left = 2790, .top = 1380, .width = 2340, .height = 690, .caption = "123", .fore = Blu, .font = Esempio, .align = Align::Center, .transparent = true},
        {.kind = K::Frame, .name = "Frame7", .left = 7740, .top = 4920, .width = 5340, .height = 3960, .back = Fondo, .fore = Blu, .border = true},
        {.kind = K::OptionButton, .name = "Option5", .index = 0, .in = "Frame7", .left = 210, .top = 180, .width = 4920, .height = 1080, .caption = "Impostazioni predefinite", .back = QColor(255, 200, 255), .fore = Blu, .font = Comando},
        {.kind = K::OptionButton, .name = "Option5", .index = 1, .in = "Frame7", .left = 210, .top = 1440, .width = 4920, .height = 1080, .caption = "Memorizza nuove impostazioni", .back = QColor(255, 200, 255), .fore = Blu, .font = Comando},
        {.kind = K::OptionButton, .name = "Option5", .index = 2, .in = "Frame7", .left = 210, .top = 2700, .width = 4920, .height = 1080, .caption = "Esci", .back = QColor(255, 200, 255), .fore = Blu, .font = Comando},
    });
    // clang-format on

    Frame1 = &get<Frame>("Frame1");
    Option1 = array<OptionButton>("Option1");
    Option27 = array<OptionButton>("Option27");
    Option17 = array<OptionButton>("Option17");
    Option9 = array<OptionButton>("Option9");
    Option28 = array<OptionButton>("Option28");
    Option3 = array<OptionButton>("Option3");
    Option11 = array<OptionButton>("Option11");
    Option6 = array<OptionButton>("Option6");
    Option5 = array<OptionButton>("Option5");
    Option4 = &get<OptionButton>("Option4");
    Option2 = &get<OptionButton>("Option2");
    Label5 = &get<Label>("Label5");
    Label4 = &get<Label>("Label4");

    // Tab walks the panel as it reads, left to right.
    QWidget *precedente = nullptr;
    for (const ControlArray<OptionButton> *gruppo :
         {&Option1, &Option27, &Option17, &Option9, &Option28, &Option3, &Option11, &Option6}) {
        for (const auto &[indice, bottone] : *gruppo) {
            if (precedente)
                QWidget::setTabOrder(precedente, bottone->widget());
            precedente = bottone->widget();
        }
    }
    for (QWidget *w : {Option4->widget(), Option2->widget(), Option5(0).widget(),
                       Option5(1).widget(), Option5(2).widget()}) {
        QWidget::setTabOrder(precedente, w);
        precedente = w;
    }

    Option1.onClick([this](int i) {
        SceltaUnica(Option1, i);
        Option1_Click(i);
    });
    Option27.onClick([this](int i) {
        SceltaUnica(Option27, i);
        Option27_Click(i);
    });
    Option17.onClick([this](int i) {
        SceltaUnica(Option17, i);
        Option17_Click(i);
    });
    Option9.onClick([this](int i) {
        SceltaUnica(Option9, i, true);
        Option9_Click(i);
    });
    Option3.onClick([this](int i) {
        SceltaUnica(Option3, i, true);
        Option3_Click(i);
    });
    Option6.onClick([this](int i) {
        SceltaUnica(Option6, i, true);
        Option6_Click(i);
    });
    // The voice and sound-reward switches only show a choice.
    Option28.onClick([this](int i) { SceltaUnica(Option28, i, true); });
    Option11.onClick([this](int i) { SceltaUnica(Option11, i, true); });
    // The two sample buttons of the preview behave as one pair.
    Option4->Click = [this] { Option2->setValue(false); };
    Option2->Click = [this] { Option4->setValue(false); };

    Option5.onGotFocus([this](int i) { Option5_GotFocus(i); });
    Option5.onLostFocus([this](int i) { Option5_LostFocus(i); });
    Option5.onKeyPress([this](int i, int &k) { Option5_KeyPress(i, k); });
    Option5.onKeyDown([this](int i, int &k, int s) { Option5_KeyDown(i, k, s); });
    Option5.onKeyUp([this](int i, int &k, int s) { Option5_KeyUp(i, k, s); });
    Option5.onMouseDown(
        [this](int i, int b, int s, double x, double y) { Option5_MouseDown(i, b, s, x, y); });
    Option5.onMouseUp(
        [this](int i, int b, int s, double x, double y) { Option5_MouseUp(i, b, s, x, y); });
}

// ---- Load, activation, resize ----

void FrmOpzioni::Form_Load()
{
    // The buttons chosen in the design have already run their Click handlers,
    // so every colour field holds a value by now.
    Resize::RegistraPosizioni(*this, Posizioni);
}

void FrmOpzioni::Form_Activate()
{
    const QColor chiaro = Colore(m_ctx.stato.ColoreScansioneChiaro);
    for (const auto &[indice, comando] : Option5)
        comando->setBackColor(chiaro);
    Option5(1).SetFocus();
    AggiornaSfondoAnteprima();
    AggiornaCaratteriAnteprima();
    AggiornaScansioneAnteprima();
}

void FrmOpzioni::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, true);
}

// ---- Colours and switches ----

QColor FrmOpzioni::Colore(const QString &testo)
{
    const QString cifre = Texts::trim(testo);
    bool numero = false;
    const double valore = QLocale::c().toDouble(cifre, &numero);
    if (cifre.isEmpty() || !numero)
        throw RuntimeError(RuntimeError::TypeMismatch, testo);
    const double intero = std::nearbyint(valore);
    if (!(intero >= -2147483648.0 && intero <= 2147483647.0))
        throw RuntimeError(RuntimeError::Overflow, testo);
    // Only red, green and blue: no system colours here.
    if (intero < 0 || intero > 0xFFFFFF)
        throw RuntimeError(RuntimeError::InvalidProcedureCall, testo);
    return Colori::daValore(static_cast<long>(intero));
}

void FrmOpzioni::SceltaUnica(const ControlArray<OptionButton> &gruppo, int Index, bool evidenzia)
{
    for (const auto &[indice, bottone] : gruppo) {
        if (indice != Index)
            bottone->setValue(false);
        if (evidenzia)
            bottone->setBackColor(indice == Index ? Scelto : Tasto);
    }
}

void FrmOpzioni::AggiornaSfondoAnteprima()
{
    const QColor sfondo = Colore(m_ctx.stato.ColoreSfondo);
    Frame1->setBackColor(sfondo);
    // The frame's own title stays readable on a dark page.
    Frame1->setForeColor(sfondo.lightness() < 110 ? Chiaro : Blu);
}

void FrmOpzioni::AggiornaCaratteriAnteprima()
{
    const QColor caratteri = Colore(m_ctx.stato.ColoreCaratteri);
    Label5->setForeColor(caratteri);
    Option4->setForeColor(caratteri);
    Option2->setForeColor(caratteri);
}

void FrmOpzioni::AggiornaScansioneAnteprima()
{
    Option4->setBackColor(Colore(m_ctx.stato.ColoreScansioneScuro));
    Option2->setBackColor(Colore(m_ctx.stato.ColoreScansioneChiaro));
}

void FrmOpzioni::AggiornaComandi()
{
    const QColor chiaro = Colore(m_ctx.stato.ColoreScansioneChiaro);
    const QColor scuro = Colore(m_ctx.stato.ColoreScansioneScuro);
    for (const auto &[indice, comando] : Option5)
        comando->setBackColor(comando->hasFocus() ? scuro : chiaro);
}

void FrmOpzioni::Option1_Click(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    s.ColoreSfondo = valoreTesto(Tabella.at(std::size_t(Index)).sfondo);
    s.IndiceSfondo = Index;
    AggiornaSfondoAnteprima();
}

void FrmOpzioni::Option27_Click(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    s.ColoreCaratteri = valoreTesto(Tabella.at(std::size_t(Index)).caratteri);
    s.IndiceCaratteri = Index;
    AggiornaCaratteriAnteprima();
    AggiornaComandi();
}

void FrmOpzioni::Option17_Click(int Index)
{
    StatoCondiviso &s = m_ctx.stato;
    s.ColoreScansioneChiaro = valoreTesto(Tabella.at(std::size_t(Index)).chiaro);
    s.ColoreScansioneScuro = valoreTesto(Tabella.at(std::size_t(Index)).scuro);
    s.IndiceScansione = Index;
    AggiornaScansioneAnteprima();
}

void FrmOpzioni::Option3_Click(int Index)
{
    m_ctx.stato.SegnaleAcustico = Index;
}

void FrmOpzioni::Option9_Click(int Index)
{
    // Only the preview shows the case; nothing is kept.
    if (Index == 0)
        Option2->setCaption(QStringLiteral("AAAA"));
    else if (Index == 1)
        Option2->setCaption(QStringLiteral("aaaa"));
}

void FrmOpzioni::Option6_Click(int)
{
    // Any family button clears the symbols; the family itself stays.
    StatoCondiviso &s = m_ctx.stato;
    s.Simbolo1.clear();
    s.Simbolo2.clear();
    s.Simbolo3.clear();
    s.Simbolo4.clear();
}

// ---- Commands ----

void FrmOpzioni::EseguiComando(int Index)
{
    if (Index == 0) {
        ImpostazioniPredefinite();
        FileLivelli::MemorizzaImpostazioni(m_ctx);
    } else if (Index == 1) {
        FileLivelli::MemorizzaImpostazioni(m_ctx);
    } else if (Index == 2) {
        Unload();
    }
}

void FrmOpzioni::ImpostazioniPredefinite()
{
    // The buttons on screen keep the choice they show.
    StatoCondiviso &s = m_ctx.stato;
    s.ColoreSfondo = SfondoPredefinito;
    s.ColoreCaratteri = CaratteriPredefiniti;
    s.ColoreScansioneChiaro = ScansioneChiaraPredefinita;
    s.ColoreScansioneScuro = ScansioneScuraPredefinita;
    s.IndiceSfondo = 4;
    s.IndiceCaratteri = 9;
    s.IndiceScansione = 4;
    s.SegnaleAcustico = 0;
}

void FrmOpzioni::Option5_GotFocus(int Index)
{
    Option5(Index).setValue(false);
    Option5(Index).setBackColor(Colore(m_ctx.stato.ColoreScansioneScuro));
}

void FrmOpzioni::Option5_LostFocus(int Index)
{
    Option5(Index).setBackColor(Colore(m_ctx.stato.ColoreScansioneChiaro));
    Option5(Index).setValue(false);
}

void FrmOpzioni::Option5_KeyPress(int Index, int &KeyAscii)
{
    // The space bar moves on at every press, a held one at every repeat; no
    // button is skipped.
    if (KeyAscii != 32) {
        KeyAscii = 0;
        return;
    }
    int indice = Index + 1;
    if (indice == Option5.Count())
        indice = 0;
    Option5(indice).SetFocus();
}

void FrmOpzioni::Option5_KeyDown(int Index, int &KeyCode, int)
{
    if (BloccoTasto)
        return;
    const int conteggio = Option5.Count();
    int comando = -1;
    if (KeyCode >= 49 && KeyCode <= 51) {
        Option5(KeyCode - 49).SetFocus();
    } else if (KeyCode >= 97 && KeyCode <= 99) {
        Option5(KeyCode - 97).SetFocus();
    } else if (KeyCode == KeyCodes::Left || KeyCode == KeyCodes::Up) {
        Option5((Index + conteggio - 1) % conteggio).SetFocus();
    } else if (KeyCode == KeyCodes::Right || KeyCode == KeyCodes::Down) {
        Option5((Index + 1) % conteggio).SetFocus();
    } else if (KeyCode == KeyCodes::Return) {
        comando = Index;
    } else if (KeyCode == TastoI) {
        Option5(0).SetFocus();
        comando = 0;
    } else if (KeyCode == TastoM) {
        Option5(1).SetFocus();
        comando = 1;
    } else if (KeyCode == TastoE) {
        comando = 2;
    } else {
        KeyCode = 0;
        return;
    }
    BloccoTasto = true;
    // Last: "Esci" unloads the screen.
    if (comando >= 0)
        EseguiComando(comando);
}

void FrmOpzioni::Option5_KeyUp(int, int &, int)
{
    BloccoTasto = false;
}

void FrmOpzioni::Option5_MouseDown(int Index, int, int, double, double)
{
    EseguiComando(Index);
}

void FrmOpzioni::Option5_MouseUp(int Index, int, int, double, double)
{
    Option5(Index).setValue(false);
}
