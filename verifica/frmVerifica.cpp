#include "verifica/frmVerifica.h"

#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "report/frmNome.h"
#include "services/GruppoScelte.h"
#include "verifica/SerieDaCodice.h"

#include <QShortcut>

namespace {

using K = ControlKind;
const QColor Fondo(255, 224, 192);
const QColor Blu(0, 0, 128);
const QColor Rosso(192, 0, 0);
const QColor Tasto(255, 244, 214);
const QColor TastoCifra(205, 228, 255);
const QColor TastoCancella(255, 205, 160);
const FontDef Lettera{"Arial", 18, true};
const FontDef Comando{"Arial", 13, true};

const QString Interrogativo = QStringLiteral("?");
const QString TitoloCodice = QStringLiteral("SCRIVI IL CODICE DELLA VERIFICA");
const QString GuidaCodice = QStringLiteral("Il codice te lo dà l'insegnante: per esempio K7Q-3PZ");
const QString TitoloNome = QStringLiteral("SCRIVI IL TUO NOME");
const QString GuidaNome = QStringLiteral("Presta attenzione all'ortografia");

// Ten keys a row, large enough for a finger or a pen.
constexpr int PerRiga = 10;
constexpr double LatoTasto = 840;
constexpr double PassoX = 888;
constexpr double PassoY = 840;

ControlDef tasto(const char *nome, int i, const char *in, const QString &caption, QColor fondo)
{
    return {.kind = K::CommandButton,
            .name = nome,
            .index = i,
            .in = in,
            .left = 120.0 + (i % PerRiga) * PassoX,
            .top = 150.0 + (i / PerRiga) * PassoY,
            .width = LatoTasto,
            .height = 780,
            .caption = caption,
            .back = fondo,
            .fore = Blu,
            .font = Lettera};
}

ControlDef cancella(const char *nome, int i, const char *in)
{
    ControlDef t = tasto(nome, i, in, QStringLiteral("CANCELLA"), TastoCancella);
    t.width = LatoTasto + PassoX;
    t.font = Comando;
    return t;
}

std::vector<ControlDef> tabellaDiProgetto()
{
    // clang-format off
    std::vector<ControlDef> t = {
        {.kind = K::Frame, .name = "Frame1", .left = 240, .top = 120, .width = 9120, .height = 1860, .back = Fondo, .border = true},
        {.kind = K::Label, .name = "Label12", .in = "Frame1", .left = 240, .top = 180, .width = 8640, .height = 480, .caption = TitoloCodice, .back = Fondo, .fore = Blu, .font = {"Arial", 18, true}, .align = Align::Center},
        {.kind = K::Label, .name = "Label9", .in = "Frame1", .left = 240, .top = 660, .width = 8640, .height = 360, .caption = GuidaCodice, .back = Fondo, .fore = QColor(160, 40, 0), .font = {"Arial", 11, true}, .align = Align::Center},
        {.kind = K::Label, .name = "lblTesto", .in = "Frame1", .left = 1200, .top = 1080, .width = 6720, .height = 600, .caption = Interrogativo, .back = QColor(255, 255, 255), .fore = Blu, .font = {"Arial", 22, true}, .align = Align::Center, .border = true},
        {.kind = K::Label, .name = "lblAvviso", .left = 240, .top = 2040, .width = 9120, .height = 600, .back = Fondo, .fore = Rosso, .font = {"Arial", 11, true}, .align = Align::Center},
        {.kind = K::Frame, .name = "fraCodice", .left = 240, .top = 2700, .width = 9120, .height = 3600, .back = Fondo, .border = true},
        {.kind = K::Frame, .name = "fraNome", .left = 240, .top = 2700, .width = 9120, .height = 3600, .back = Fondo, .visible = false, .border = true},
    };
    // clang-format on
    for (int i = 0; i < frmVerifica::CancellaCodice; ++i)
        t.push_back(tasto("Command1", i, "fraCodice", frmVerifica::CarattereCodice(i),
                          i < 10 ? TastoCifra : Tasto));
    t.push_back(cancella("Command1", frmVerifica::CancellaCodice, "fraCodice"));
    for (int i = 0; i < frmVerifica::CancellaNome; ++i)
        t.push_back(
            tasto("Command2", i, "fraNome", QString::fromLatin1(frmNome::Lettere[i]), Tasto));
    t.push_back(cancella("Command2", frmVerifica::CancellaNome, "fraNome"));
    // clang-format off
    t.push_back({.kind = K::OptionButton, .name = "Option4", .left = 3240, .top = 6420, .width = 3120, .height = 720, .caption = "AVANTI", .back = Fondo, .fore = Blu, .font = {"Arial", 18, true}});
    t.push_back({.kind = K::CommandButton, .name = "cmdEsci", .left = 7440, .top = 6420, .width = 1920, .height = 720, .caption = "ESCI (Esc)", .back = Fondo, .fore = Blu, .font = Comando});
    // clang-format on
    return t;
}

} // namespace

QString frmVerifica::CarattereCodice(int Index)
{
    return CodiceScheda::Alfabeto.mid(Index, 1);
}

frmVerifica::frmVerifica(AppContext &ctx) : Form(ctx, QStringLiteral("frmVerifica")), m_ctx(ctx)
{
    setCaption(QStringLiteral("VERIFICA CON CODICE"));
    setBackColor(Fondo);
    setDesignFont({"Arial", 12, true});
    design(9600, 7320, tabellaDiProgetto());

    Command1 = array<CommandButton>("Command1");
    Command2 = array<CommandButton>("Command2");
    fraCodice = &get<Frame>("fraCodice");
    fraNome = &get<Frame>("fraNome");
    Label12 = &get<Label>("Label12");
    Label9 = &get<Label>("Label9");
    lblTesto = &get<Label>("lblTesto");
    lblAvviso = &get<Label>("lblAvviso");
    Option4 = &get<OptionButton>("Option4");
    cmdEsci = &get<CommandButton>("cmdEsci");

    // What assistive tools read: the typed text is named by the title above it.
    lblTesto->setEtichetta(*Label12);

    auto *esc = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(esc, &QShortcut::activated, this,
            [this] { services().runHandler([this] { cmdEsci_Click(); }); });

    Command1.onClick([this](int i) { Command1_Click(i); });
    Command2.onClick([this](int i) { Command2_Click(i); });
    Option4->GotFocus = [this] { Option4_GotFocus(); };
    Option4->LostFocus = [this] { Option4_LostFocus(); };
    Option4->KeyDown = [this](int &k, int s) { Option4_KeyDown(k, s); };
    Option4->KeyUp = [this](int &k, int s) { Option4_KeyUp(k, s); };
    Option4->MouseDown = [this](int b, int s, double x, double y) {
        Option4_MouseDown(b, s, x, y);
    };
    Option4->MouseUp = [this](int b, int s, double x, double y) { Option4_MouseUp(b, s, x, y); };
    cmdEsci->Click = [this] { cmdEsci_Click(); };
}

void frmVerifica::Form_Load()
{
    Resize::RegistraPosizioni(*this, Posizioni);
    Option4->setValue(false);
    // AVANTI takes the keys: typing works at once, before any click.
    Option4->SetFocus();
}

void frmVerifica::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, true);
}

// ---- Typing ----

void frmVerifica::Command1_Click(int Index)
{
    if (Index == CancellaCodice)
        TogliUltimo();
    else
        Scrivi(CarattereCodice(Index));
    Option4->SetFocus();
}

void frmVerifica::Command2_Click(int Index)
{
    if (Index == CancellaNome)
        TogliUltimo();
    else
        Scrivi(QString::fromLatin1(frmNome::Lettere[Index]));
    Option4->SetFocus();
}

void frmVerifica::Scrivi(const QString &carattere)
{
    QString &testo = ChiedeNome() ? m_nome : m_codice;
    const int massimo = ChiedeNome() ? MassimoNome : CodiceScheda::Lunghezza;
    if (testo.size() >= massimo)
        return;
    testo += carattere;
    lblAvviso->setCaption(QString());
    MostraTesto();
}

void frmVerifica::TogliUltimo()
{
    QString &testo = ChiedeNome() ? m_nome : m_codice;
    testo.chop(1);
    lblAvviso->setCaption(QString());
    MostraTesto();
}

void frmVerifica::MostraTesto()
{
    QString mostrato = ChiedeNome() ? m_nome : m_codice;
    // As the code is printed: three characters, a hyphen, the rest.
    if (!ChiedeNome() && mostrato.size() > 3)
        mostrato.insert(3, QLatin1Char('-'));
    lblTesto->setCaption(mostrato.isEmpty() ? Interrogativo : mostrato);
}

void frmVerifica::Avvisa(const QString &testo)
{
    lblAvviso->setCaption(testo);
}

// ---- AVANTI and the keyboard ----

void frmVerifica::Option4_GotFocus()
{
    Option4->setValue(false);
    Option4->setBackColor(GruppoScelte::ColoreFocus());
}

void frmVerifica::Option4_LostFocus()
{
    Option4->setBackColor(Fondo);
    Option4->setValue(false);
}

void frmVerifica::Option4_KeyDown(int &KeyCode, int)
{
    if (TastoGestito)
        return;
    const bool lettera = KeyCode >= 65 && KeyCode <= 90;
    const bool cifra = (KeyCode >= 48 && KeyCode <= 57) || (KeyCode >= 96 && KeyCode <= 105);
    if (lettera) {
        QChar c(KeyCode);
        // Read as the printed code means them, as "Rifai da codice" does.
        if (!ChiedeNome() && c == QLatin1Char('O'))
            c = QLatin1Char('0');
        else if (!ChiedeNome() && (c == QLatin1Char('I') || c == QLatin1Char('L')))
            c = QLatin1Char('1');
        Scrivi(QString(c));
    } else if (cifra && !ChiedeNome()) {
        Scrivi(QString(QChar('0' + (KeyCode >= 96 ? KeyCode - 96 : KeyCode - 48))));
    } else if (KeyCode == 8) {
        TogliUltimo();
    } else if (KeyCode == 13) {
        TastoGestito = true;
        Avanti();
        return;
    } else {
        return;
    }
    TastoGestito = true;
}

void frmVerifica::Option4_KeyUp(int &, int)
{
    TastoGestito = false;
    Option4->setValue(false);
}

void frmVerifica::Option4_MouseDown(int, int, double, double)
{
    Avanti();
}

void frmVerifica::Option4_MouseUp(int, int, double, double)
{
    Option4->setValue(false);
}

void frmVerifica::Avanti()
{
    if (!ChiedeNome()) {
        QString errore;
        const auto scelta = SerieDaCodice::Leggi(m_codice, &errore);
        if (!scelta) {
            Avvisa(errore);
            return;
        }
        m_scelta = scelta;
        PassaAlNome();
        return;
    }
    if (m_nome.trimmed().isEmpty()) {
        Avvisa(QStringLiteral("Scrivi il tuo nome, poi premi AVANTI."));
        return;
    }
    AppContext &ctx = m_ctx;
    ctx.setFonteEsercizi(std::make_unique<SerieDaCodice>(*m_scelta, m_nome, ctx.stato));
    // This screen goes before the drill opens, as the name screen does.
    Unload();
    ctx.form<frmOperativo>().Show();
}

void frmVerifica::PassaAlNome()
{
    Label12->setCaption(TitoloNome);
    Label9->setCaption(GuidaNome);
    lblAvviso->setCaption(QString());
    fraCodice->setVisible(false);
    fraNome->setVisible(true);
    MostraTesto();
    Option4->SetFocus();
}

void frmVerifica::cmdEsci_Click()
{
    Unload();
}
