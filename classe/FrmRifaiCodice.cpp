#include "classe/FrmRifaiCodice.h"

#include "classe/StampaClasse.h"
#include "classe/UnitaClasse.h"
#include "core/AppContext.h"
#include "misure/Misure.h"
#include "platform/printing/Printer.h"

#include <QLabel>
#include <QShortcut>

namespace {

using K = ControlKind;

const QColor Fondo(255, 224, 192);
const QColor Foglio(255, 255, 255);
const QColor Nero(0, 0, 0);
const QColor Blu(0, 0, 128);
const QColor Rosso(192, 0, 0);
const FontDef Testo{"Arial", 11, true};
const FontDef Comandi{"Arial", 10, true};
const FontDef Righe{"Courier New", 9, false};

const QString Titolo = QStringLiteral("Rifai da codice");
constexpr int MassimoRighe = 30;

const QStringList Numeri = {QStringLiteral("Numeri interi"),
                            QStringLiteral("Numeri con la virgola"),
                            QStringLiteral("Numeri interi e con la virgola")};

std::vector<ControlDef> tabellaDiProgetto()
{
    // clang-format off
    std::vector<ControlDef> t = {
        {.kind = K::Label, .name = "lblCodice", .left = 240, .top = 240, .width = 2520, .height = 300, .caption = "&Codice della scheda", .back = Fondo, .fore = Blu, .font = Testo},
        {.kind = K::TextBox, .name = "txtCodice", .left = 2880, .top = 180, .width = 2160, .height = 400, .font = {"Courier New", 12, true}},
        {.kind = K::CommandButton, .name = "cmdMostra", .left = 5280, .top = 120, .width = 2640, .height = 540, .caption = "MOSTRA (Invio)", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::Label, .name = "lblDescrizione", .left = 240, .top = 780, .width = 11520, .height = 300, .back = Fondo, .fore = Rosso, .font = Comandi},
        {.kind = K::Frame, .name = "fraScheda", .left = 240, .top = 1200, .width = 8640, .height = 7860, .back = Foglio, .border = true},
        {.kind = K::CommandButton, .name = "cmdAlunni", .left = 9120, .top = 1200, .width = 2640, .height = 660, .caption = "SCHEDA ALUNNI", .back = Fondo, .fore = Blu, .font = Comandi, .enabled = false},
        {.kind = K::CommandButton, .name = "cmdDocenti", .left = 9120, .top = 2040, .width = 2640, .height = 660, .caption = "SCHEDA DOCENTI", .back = Fondo, .fore = Blu, .font = Comandi, .enabled = false},
        {.kind = K::CommandButton, .name = "cmdStampa", .left = 9120, .top = 2880, .width = 2640, .height = 660, .caption = "STAMPA SCHEDA", .back = Fondo, .fore = Blu, .font = Comandi, .enabled = false},
        {.kind = K::CommandButton, .name = "cmdEsci", .left = 9120, .top = 8340, .width = 2640, .height = 720, .caption = "ESCI (Esc)", .back = Fondo, .fore = Blu, .font = Testo},
    };
    // clang-format on
    // The sheet as on the worksheet screen: three blocks of ten rows.
    for (int riga = 1; riga <= MassimoRighe; ++riga) {
        const int r = riga - 1;
        t.push_back({.kind = K::Label,
                     .name = "LblRiga",
                     .index = riga,
                     .in = "fraScheda",
                     .left = 180,
                     .top = 180 + r * 240.0 + (r / 10) * 180.0,
                     .width = 8280,
                     .height = 240,
                     .back = Foglio,
                     .fore = Nero,
                     .font = Righe,
                     .wordWrap = false});
    }
    return t;
}

} // namespace

FrmRifaiCodice::FrmRifaiCodice(AppContext &ctx)
    : Form(ctx, QStringLiteral("FrmRifaiCodice")), m_ctx(ctx)
{
    setCaption(Titolo);
    setBackColor(Fondo);
    setDesignFont({"Arial", 10, true});
    design(12000, 9300, tabellaDiProgetto());
    txtCodice = &get<TextBox>("txtCodice");
    lblDescrizione = &get<Label>("lblDescrizione");
    LblRiga = array<Label>("LblRiga");
    cmdMostra = &get<CommandButton>("cmdMostra");
    cmdAlunni = &get<CommandButton>("cmdAlunni");
    cmdDocenti = &get<CommandButton>("cmdDocenti");
    cmdStampa = &get<CommandButton>("cmdStampa");
    cmdEsci = &get<CommandButton>("cmdEsci");

    get<Label>("lblCodice").label()->setBuddy(txtCodice->widget());
    setTabOrder({txtCodice, cmdMostra, cmdAlunni, cmdDocenti, cmdStampa, cmdEsci});
    auto *esc = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(esc, &QShortcut::activated, this,
            [this] { services().runHandler([this] { cmdEsci_Click(); }); });

    txtCodice->KeyDown = [this](int &k, int s) { txtCodice_KeyDown(k, s); };
    cmdMostra->Click = [this] { cmdMostra_Click(); };
    cmdAlunni->Click = [this] { cmdAlunni_Click(); };
    cmdDocenti->Click = [this] { cmdDocenti_Click(); };
    cmdStampa->Click = [this] { cmdStampa_Click(); };
    cmdEsci->Click = [this] { cmdEsci_Click(); };
}

void FrmRifaiCodice::Form_Load()
{
    Resize::RegistraPosizioni(*this, Posizioni);
    txtCodice->SetFocus();
}

void FrmRifaiCodice::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, false);
}

void FrmRifaiCodice::txtCodice_KeyDown(int &KeyCode, int)
{
    if (KeyCode == 13)
        cmdMostra_Click();
}

void FrmRifaiCodice::cmdMostra_Click()
{
    QString errore;
    const auto scelta = CodiceScheda::Leggi(txtCodice->Caption(), &errore);
    if (!scelta) {
        // What was on screen goes: it is not the sheet of this code.
        m_copia.reset();
        for (const auto &[i, riga] : LblRiga)
            riga->setCaption(QString());
        lblDescrizione->setCaption(QString());
        for (CommandButton *b : {cmdAlunni, cmdDocenti, cmdStampa})
            b->setEnabled(false);
        m_ctx.messageBoxes().show(errore, MessageBoxes::OkOnly, MessageBoxes::Exclamation, Titolo);
        txtCodice->SetFocus();
        return;
    }
    m_copia = RigheClasse().Costruisci(*scelta);
    txtCodice->setCaption(m_copia->codice);
    lblDescrizione->setCaption(QStringLiteral("Scheda %1: %2, simboli %3, %4 esercizi")
                                   .arg(m_copia->codice, Numeri.at(scelta->tipoNumeri - 1),
                                        UnitaClasse::Descrizione(scelta->unita))
                                   .arg(scelta->righe));
    for (CommandButton *b : {cmdAlunni, cmdDocenti, cmdStampa})
        b->setEnabled(true);
    MostraRighe(false);
}

void FrmRifaiCodice::MostraRighe(bool docenti)
{
    m_docenti = docenti;
    const QStringList &righe = docenti ? m_copia->docenti : m_copia->alunni;
    for (const auto &[i, riga] : LblRiga)
        riga->setCaption(i <= righe.size() ? righe.at(i - 1) : QString());
    cmdStampa->setCaption(docenti ? QStringLiteral("STAMPA SCHEDA DOCENTI")
                                  : QStringLiteral("STAMPA SCHEDA ALUNNI"));
}

void FrmRifaiCodice::cmdAlunni_Click()
{
    if (m_copia)
        MostraRighe(false);
}

void FrmRifaiCodice::cmdDocenti_Click()
{
    if (m_copia)
        MostraRighe(true);
}

void FrmRifaiCodice::cmdStampa_Click()
{
    if (!m_copia)
        return;
    Printer &stampante = m_ctx.printer();
    const QStringList caratteri = stampante.Fonts();
    if (!caratteri.contains(QStringLiteral("Courier New")) &&
        !caratteri.contains(QStringLiteral("Courier"))) {
        m_ctx.messageBoxes().show(
            QStringLiteral("Devi installare il font Courier o il font Courier New"));
        return;
    }
    QString piede = QStringLiteral("Codice ") + m_copia->codice;
    if (m_docenti)
        piede += QStringLiteral(" - soluzioni");
    // A copy in a measure says so, whatever the start screen holds now.
    const int famiglia = UnitaClasse::Famiglia(m_copia->scelta.unita);
    const QString sottotitolo =
        Misure::UnitaDiFamiglia(famiglia) == Misure::UnitaDiFamiglia(m_ctx.stato.FamigliaSimboli)
            ? m_ctx.stato.SottotitoloArgomento
            : Misure::SottotitoloArgomento(famiglia);
    try {
        StampaClasse(stampante, sottotitolo, Misure::TitoloScheda(famiglia))
            .Stampa({{m_docenti ? m_copia->docenti : m_copia->alunni, m_docenti, piede}});
    } catch (const RuntimeError &) {
        m_ctx.messageBoxes().show(QStringLiteral("Problema di stampa nella stampante utilizzata."),
                                  MessageBoxes::OkOnly);
    }
}

void FrmRifaiCodice::cmdEsci_Click()
{
    Unload();
}
