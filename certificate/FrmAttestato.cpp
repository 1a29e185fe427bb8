#include "certificate/FrmAttestato.h"

#include "certificate/Valutazione.h"
#include "core/AppContext.h"
#include "platform/Suppressed.h"
#include "platform/Texts.h"
#include "platform/printing/Printer.h"
#include "services/GruppoScelte.h"

#include <QApplication>
#include <QPainter>

namespace {

using K = ControlKind;
const QColor Fondo(255, 192, 255);
const QColor Scritta(0, 0, 192);
const QColor Rosso(255, 0, 0);
const QColor Nero(0, 0, 0);
const FontDef Comandi{"Arial", 12, true};

} // namespace

FrmAttestato::FrmAttestato(AppContext &ctx) : Form(ctx, QStringLiteral("FrmAttestato")), m_ctx(ctx)
{
    setCaption(QStringLiteral("Form1"));
    setBackColor(Fondo);
    setDesignFont({"MS Sans Serif", 8.25, true});
    const QPalette finestra = QApplication::palette();
    // clang-format off
    design(11940, 8820, {
        {.kind = K::Frame, .name = "Frame4", .left = 6720, .top = 6615, .width = 5184, .height = 2070, .back = Fondo},
        {.kind = K::PictureBox, .name = "Picture1", .left = 0, .top = -45, .width = 6690, .height = 8820, .back = finestra.color(QPalette::Base), .fore = finestra.color(QPalette::Text)},
        {.kind = K::OptionButton, .name = "Option5", .index = 0, .in = "Frame4", .left = 96, .top = 84, .width = 5004, .height = 630, .caption = "STAMPA L'ATTESTATO", .back = GruppoScelte::ColoreRiposo(), .fore = Scritta, .font = Comandi},
        {.kind = K::OptionButton, .name = "Option5", .index = 1, .in = "Frame4", .left = 96, .top = 732, .width = 5004, .height = 630, .caption = "TORNA ALLA FINESTRA PRECEDENTE", .back = GruppoScelte::ColoreRiposo(), .fore = Scritta, .font = Comandi},
        {.kind = K::OptionButton, .name = "Option5", .index = 2, .in = "Frame4", .left = 96, .top = 1368, .width = 5004, .height = 630, .caption = "FINE SESSIONE", .back = GruppoScelte::ColoreRiposo(), .fore = Scritta, .font = Comandi},
    });
    // clang-format on
    Picture1 = &get<PictureBox>("Picture1");
    Option5 = array<OptionButton>("Option5");
    setTabOrder({Picture1, &Option5(2), &Option5(1), &Option5(0)});

    Option5.onGotFocus([this](int i) { Option5_GotFocus(i); });
    Option5.onLostFocus([this](int i) { Option5_LostFocus(i); });
    Option5.onKeyDown([this](int i, int &k, int s) { Option5_KeyDown(i, k, s); });
    Option5.onKeyPress([this](int i, int &k) { Option5_KeyPress(i, k); });
    Option5.onKeyUp([this](int i, int &k, int s) { Option5_KeyUp(i, k, s); });
    Option5.onMouseDown(
        [this](int i, int b, int s, double x, double y) { Option5_MouseDown(i, b, s, x, y); });
    Option5.onMouseUp(
        [this](int i, int b, int s, double x, double y) { Option5_MouseUp(i, b, s, x, y); });
}

void FrmAttestato::Form_Load()
{
    StatoCondiviso &s = m_ctx.stato;
    Resize::RegistraPosizioni(*this, Posizioni);
    runSuppressed({
        [&] {
            // "rOSSI mario" becomes "Rossi mario"; there is nothing to do this to
            // in an empty name.
            if (s.NomeAttestato.isEmpty())
                throw RuntimeError(RuntimeError::InvalidProcedureCall,
                                   QStringLiteral("NomeAttestato"));
            s.NomeAttestato = s.NomeAttestato.left(1).toUpper() + s.NomeAttestato.mid(1).toLower();
        },
        [&] {
            const Valutazione v = Valutazione::calcola(s.EsatteComplessive, s.NumeroEsercizio);
            s.Valutazione = v.parola;
        },
        [&] { m_ctx.registro().valutazione(s.NomeAlunno, s.Valutazione); },
        [&] {
            if (s.Valutazione == Valutazione::NonClassificato) {
                Option5(0).setCaption(QStringLiteral("ATTESTATO NON STAMPABILE"));
                Option5(0).setEnabled(false);
            }
        },
        [&] { DisegnaAttestato(); },
    });
}

void FrmAttestato::Form_Resize()
{
    // Only the box moves and grows: its drawing stays as it was made.
    Resize::Ridimensiona(*this, Posizioni, true);
}

// ---- The picture ----

void FrmAttestato::Carattere(double dimensione, bool grassetto, const QColor &colore)
{
    QFont f = Picture1->drawFont();
    f.setFamily(QStringLiteral("arial"));
    f.setPointSizeF(dimensione);
    f.setBold(grassetto);
    Picture1->setDrawFont(f);
    Picture1->setDrawColor(colore);
}

void FrmAttestato::RigaCentrata(const QString &testo)
{
    // The certificate grows line by line under the pupil's eyes.
    Show();
    QApplication::processEvents();
    Picture1->CurrentX = Picture1->ScaleWidth() / 2 - Picture1->TextWidth(testo) / 2;
    Picture1->Print(testo);
}

void FrmAttestato::RigaVuota()
{
    Picture1->CurrentX = Picture1->ScaleWidth() / 2;
    Picture1->Print();
}

void FrmAttestato::DisegnaAttestato()
{
    const StatoCondiviso &s = m_ctx.stato;
    Picture1->Cls();
    Picture1->CurrentX = 0;
    Picture1->CurrentY = 0;

    for (int i = 0; i < 5; ++i)
        RigaVuota();
    QFont base = Picture1->drawFont();
    Carattere(20, base.bold(), Rosso);
    Riga = QStringLiteral("DIPLOMA DI MERITO");
    RigaCentrata(Riga);
    Carattere(20, Picture1->drawFont().bold(), Nero);
    Riga = QStringLiteral("RILASCIATO A");
    RigaCentrata(Riga);
    RigaVuota();
    Carattere(20, true, Rosso);
    RigaCentrata(s.NomeAttestato);
    RigaVuota();
    Carattere(12, false, Nero);
    Riga = QStringLiteral("per aver eseguito");
    RigaCentrata(Riga);
    RigaVuota();
    Carattere(14, true, Nero);
    RigaCentrata(s.TitoloArgomento);
    RigaVuota();
    Carattere(14, false, Nero);
    RigaCentrata(s.SottotitoloArgomento);
    RigaVuota();
    RigaCentrata(s.RigaSimboli);
    RigaVuota();
    Carattere(12, false, Nero);
    Riga = QStringLiteral("con la valutazione di");
    RigaCentrata(Riga);
    RigaVuota();
    Carattere(14, true, Rosso);
    RigaCentrata(s.Valutazione);
    RigaVuota();
    Carattere(12, false, Nero);
    Riga = QStringLiteral("con ") + Texts::fromInt(s.EsatteComplessive) +
           QStringLiteral(" risposte esatte su ") + Texts::fromInt(s.NumeroEsercizio) +
           QStringLiteral(" richieste");
    RigaCentrata(Riga);
    RigaVuota();
    RigaVuota();
    RigaVuota();
    Riga = QStringLiteral("Data  ") + m_ctx.clock().dateText() + QStringLiteral("       ora ") +
           m_ctx.clock().timeText();
    RigaCentrata(Riga);
}

// ---- Commands ----

void FrmAttestato::EseguiScelta(int Index)
{
    if (Index == 0) {
        Printer &stampante = m_ctx.printer();
        stampante.Print();
        // The picture as drawn, at the printer's resolution.
        const PictureBox *box = Picture1;
        stampante.PaintPicture(
            box->widget()->size(), [box](QPainter &p, double scala) { box->drawPicture(p, scala); },
            1000, 100);
        stampante.EndDoc();
    } else if (Index == 1) {
        Unload();
    } else if (Index == 2) {
        ChiudiTutto();
    }
}

void FrmAttestato::ChiudiTutto()
{
    m_ctx.screens().unloadAll();
}

void FrmAttestato::Option5_GotFocus(int Index)
{
    Option5(Index).setValue(false);
    Option5(Index).setBackColor(GruppoScelte::ColoreFocus());
}

void FrmAttestato::Option5_LostFocus(int Index)
{
    Option5(Index).setBackColor(GruppoScelte::ColoreRiposo());
    Option5(Index).setValue(false);
}

void FrmAttestato::Option5_KeyDown(int Index, int &KeyCode, int)
{
    if (BloccoTasto)
        return;
    if (KeyCode >= 49 && KeyCode <= 51) {
        BloccoTasto = true;
        Option5(KeyCode - 49).SetFocus();
    } else if (KeyCode >= 97 && KeyCode <= 99) {
        BloccoTasto = true;
        Option5(KeyCode - 97).SetFocus();
    } else if (KeyCode == 13) {
        BloccoTasto = true;
        EseguiScelta(Index);
    } else {
        KeyCode = 0;
    }
}

void FrmAttestato::Option5_KeyPress(int Index, int &KeyAscii)
{
    GruppoScelte::NavigaConSpazio(Option5, BloccoSpazio, Index, KeyAscii);
}

void FrmAttestato::Option5_KeyUp(int, int &, int)
{
    BloccoTasto = false;
    BloccoSpazio = false;
}

void FrmAttestato::Option5_MouseDown(int Index, int, int, double, double)
{
    EseguiScelta(Index);
}

void FrmAttestato::Option5_MouseUp(int Index, int, int, double, double)
{
    Option5(Index).setValue(false);
}
