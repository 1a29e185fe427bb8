#include "report/FrmStampaEsercizio2.h"

#include "certificate/FrmAttestato.h"
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/Suppressed.h"
#include "platform/printing/Printer.h"
#include "report/frmNome.h"
#include "services/CartellaPdf.h"
#include "services/frmSceltaStampante.h"

namespace {

using K = ControlKind;
const QColor Fondo(255, 240, 200);
const QColor Foglio(255, 255, 250);
const QColor Blu(0, 0, 128);
const QColor Bottone(255, 224, 192);
const FontDef Righe{"Courier New", 9.75, true};
const FontDef Comandi{"Arial", 11, true};

} // namespace

FrmStampaEsercizio2::FrmStampaEsercizio2(AppContext &ctx)
    : Form(ctx, QStringLiteral("FrmStampaEsercizio2")), m_ctx(ctx)
{
    setCaption(QStringLiteral("FINESTRA DI STAMPA "));
    setBackColor(Fondo);
    setDesignFont({"Arial", 10, true});

    // clang-format off
    std::vector<ControlDef> tabella = {
        {.kind = K::Label, .name = "Label5", .left = 240, .top = 120, .width = 11040, .height = 480, .caption = "E S E R C I Z I   E S E G U I T I ", .back = Fondo, .fore = Blu, .font = {"Arial", 16, true}, .align = Align::Center},
    };
    for (int k = 1; k <= 20; ++k)
        tabella.push_back({.kind = K::Label, .name = "LblOp", .index = k, .left = 240, .top = 720.0 + (k - 1) * 330, .width = 8160, .height = 330, .back = Foglio, .fore = Blu, .font = Righe, .wordWrap = false});
    const char *comandi[] = {"ESCI", "STAMPA L'ESERCIZIO", "NOME", "ATTESTATO"};
    for (int i = 0; i < 4; ++i)
        tabella.push_back({.kind = K::CommandButton, .name = "Command1", .index = i, .left = 8640, .top = 720.0 + i * 720, .width = 2640, .height = 600, .caption = QString::fromLatin1(comandi[i]), .back = Bottone, .fore = Blu, .font = Comandi});
    const std::vector<ControlDef> resto = {
        {.kind = K::Frame, .name = "fraNome", .left = 8520, .top = 3720, .width = 2880, .height = 3600, .back = Fondo, .border = true},
        {.kind = K::Label, .name = "Label4", .in = "fraNome", .left = 60, .top = 180, .width = 2760, .height = 330, .caption = "   IMMETTI   IL  TUO  NOME", .back = Fondo, .fore = Blu, .font = {"Arial", 10, true}},
        {.kind = K::Label, .name = "Label9", .in = "fraNome", .left = 120, .top = 600, .width = 2640, .height = 480, .caption = "Presta attenzione all'ortografia", .back = Fondo, .fore = QColor(160, 40, 0), .font = {"Arial", 9, true}},
        {.kind = K::Label, .name = "Label7", .in = "fraNome", .left = 120, .top = 1140, .width = 2640, .height = 720, .caption = "Il nome viene troncato automaticamente alla 15a lettera", .back = Fondo, .fore = Blu, .font = {"Arial", 8, false}},
        {.kind = K::TextBox, .name = "txtNome", .in = "fraNome", .left = 120, .top = 1980, .width = 2640, .height = 420, .back = QColor(255, 255, 255), .fore = Blu, .font = {"Arial", 11, true}},
        {.kind = K::CommandButton, .name = "cmdAvanti", .in = "fraNome", .left = 120, .top = 2640, .width = 1260, .height = 600, .caption = "AVANTI", .back = Bottone, .fore = Blu, .font = Comandi},
        {.kind = K::CommandButton, .name = "Command8", .in = "fraNome", .left = 1500, .top = 2640, .width = 1260, .height = 600, .caption = "E S C I", .back = Bottone, .fore = Blu, .font = Comandi},
        {.kind = K::Label, .name = "Label1", .left = 240, .top = 7440, .width = 4000, .height = 300, .back = Fondo, .transparent = true},
        {.kind = K::Label, .name = "Label2", .left = 4440, .top = 7440, .width = 4000, .height = 300, .back = Fondo, .transparent = true},
        {.kind = K::Menu, .name = "mnuStampante", .caption = "Scegli stampante"},
        {.kind = K::Menu, .name = "mnuStampaEsercizi", .caption = "Stampa gli esercizi"},
        {.kind = K::Menu, .name = "mnuCartellaPdf", .caption = "Cartella dei file PDF"},
    };
    tabella.insert(tabella.end(), resto.begin(), resto.end());
    // clang-format on
    design(11520, 7920, tabella);

    LblOp = array<Label>("LblOp");
    Command1 = array<CommandButton>("Command1");
    fraNome = &get<Frame>("fraNome");
    // The line over the name box titles the box and its frame.
    fraNome->setEtichetta(get<Label>("Label4"));
    get<Control>("txtNome").setEtichetta(get<Label>("Label4"));
    Command1.onClick([this](int i) { Command1_Click(i); });
    get<CommandButton>("cmdAvanti").Click = [this] { cmdAvanti_Click(); };
    get<Menu>("mnuStampante").Click = [this] { mnuStampante_Click(); };
    get<Menu>("mnuStampaEsercizi").Click = [this] { mnuStampaEsercizi_Click(); };
    get<Menu>("mnuCartellaPdf").Click = [this] { mnuCartellaPdf_Click(); };
    // txtNome and Command8 have no task on this screen.
}

void FrmStampaEsercizio2::Form_Load()
{
    StatoCondiviso &s = m_ctx.stato;
    Resize::RegistraPosizioni(*this, Posizioni);
    // Loading goes on past a failing line: there are twenty labels, and a
    // series numbered past 20 has lines with no label to go into.
    runSuppressed({[&] { s.Contatore = 1; }});
    while (s.Contatore <= s.NumeroEsercizio) {
        trySuppressed([&] {
            Label &riga = LblOp(s.Contatore);
            riga.setCaption(s.Operazioni[s.Contatore]);
            // A line with several wrong tries is longer than the list is wide.
            riga.setToolTipText(s.Operazioni[s.Contatore]);
        });
        s.Contatore += 1;
    }
}

void FrmStampaEsercizio2::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, false);
}

void FrmStampaEsercizio2::Command1_Click(int Index)
{
    switch (Index) {
    case 0:
        Unload();
        break;
    case 1:
        m_ctx.form<frmOperativo>().Show();
        Unload();
        break;
    case 2:
        m_ctx.form<frmNome>().Show();
        break;
    case 3:
        m_ctx.form<FrmAttestato>().Show();
        break;
    default:
        break;
    }
}

void FrmStampaEsercizio2::cmdAvanti_Click()
{
    fraNome->setVisible(false);
}

void FrmStampaEsercizio2::mnuStampante_Click()
{
    m_ctx.form<frmSceltaStampante>().Show();
}

void FrmStampaEsercizio2::mnuCartellaPdf_Click()
{
    CartellaPdf::Scegli(m_ctx);
}

void FrmStampaEsercizio2::mnuStampaEsercizi_Click()
{
    StampaEsercizi();
}

void FrmStampaEsercizio2::IntestazioneStampa()
{
    Printer &p = m_ctx.printer();
    p.setCurrentX(1000);
    p.setCurrentY(1000);
    p.setFontSize(18);
    p.Print(QStringLiteral("SCUOLA ELEMENTARE DI "));
}

void FrmStampaEsercizio2::StampaEsercizi()
{
    StatoCondiviso &s = m_ctx.stato;
    Printer &p = m_ctx.printer();

    QString trovato;
    for (int i = 0; i < p.FontCount(); ++i) {
        const QString nome = p.Fonts(i);
        if (nome == QStringLiteral("Courier") || nome == QStringLiteral("Courier New")) {
            trovato = nome;
            break;
        }
    }
    if (trovato.isEmpty()) {
        m_ctx.messageBoxes().show(
            QStringLiteral("Devi installare il font Courier o il font Courier New"));
        return;
    }
    p.setFontName(trovato);
    IntestazioneStampa();
    p.setFontSize(10);
    p.setFontBold(true);
    // Line 0, always empty, is printed too, 400 twips above line 1; lines
    // 11..20 leave an extra gap below the first ten.
    for (s.Contatore = 0; s.Contatore <= s.NumeroEsercizio; s.Contatore += 1) {
        const int k = s.Contatore;
        MargineSuperiore = 2000;
        p.setCurrentX(100);
        p.setCurrentY((k - 1) * 400 + MargineSuperiore);
        if (k > 10) {
            p.setCurrentX(100);
            p.setCurrentY((k - 10) * 400 + MargineSuperiore + 4500);
        }
        p.Print(s.Operazioni[k]);
    }
    p.EndDoc();
}
