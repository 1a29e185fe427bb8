#include "classe/FrmCopieClasse.h"

#include "classe/SerieClasse.h"
#include "classe/StampaClasse.h"
#include "classe/UnitaClasse.h"
#include "core/AppContext.h"
#include "misure/Misure.h"
#include "platform/Texts.h"
#include "platform/printing/Printer.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>

namespace {

using K = ControlKind;

const QColor Fondo(255, 224, 192);
const QColor Blu(0, 0, 128);
const QColor Rosso(192, 0, 0);
const FontDef Testo{"Arial", 11, true};
const FontDef Comandi{"Arial", 10, true};

const QString Titolo = QStringLiteral("Copie per la classe");

// Kind of numbers in the order of the list: 1 integers, 2 decimals, 3 both.
const QStringList Numeri = {QStringLiteral("Numeri interi"), QStringLiteral("Numeri con virgola"),
                            QStringLiteral("Tutti")};

} // namespace

FrmCopieClasse::FrmCopieClasse(AppContext &ctx)
    : Form(ctx, QStringLiteral("FrmCopieClasse")), m_ctx(ctx)
{
    setCaption(Titolo);
    setBackColor(Fondo);
    setDesignFont({"Arial", 10, true});
    // clang-format off
    design(6600, 5520, {
        {.kind = K::Label, .name = "lblNumeri", .left = 240, .top = 240, .width = 2520, .height = 300, .caption = "&Numeri", .back = Fondo, .fore = Blu, .font = Testo},
        {.kind = K::ComboBox, .name = "cboNumeri", .left = 2880, .top = 180, .width = 3480, .height = 360, .font = Testo},
        {.kind = K::Label, .name = "lblUnita", .left = 240, .top = 780, .width = 2520, .height = 300, .caption = "Unità", .back = Fondo, .fore = Blu, .font = Testo},
        {.kind = K::Label, .name = "lblSimboli", .left = 2880, .top = 780, .width = 3480, .height = 300, .back = Fondo, .fore = Blu, .font = Testo},
        {.kind = K::Label, .name = "lblRighe", .left = 240, .top = 1320, .width = 2520, .height = 300, .caption = "&Esercizi per scheda", .back = Fondo, .fore = Blu, .font = Testo},
        {.kind = K::ComboBox, .name = "cboRighe", .left = 2880, .top = 1260, .width = 3480, .height = 360, .font = Testo},
        {.kind = K::Label, .name = "lblCopie", .left = 240, .top = 1860, .width = 2520, .height = 300, .caption = "&Copie (da 1 a 40)", .back = Fondo, .fore = Blu, .font = Testo},
        {.kind = K::TextBox, .name = "txtCopie", .left = 2880, .top = 1800, .width = 1200, .height = 400, .caption = "25", .font = Testo},
        {.kind = K::Label, .name = "lblStampante", .left = 240, .top = 2460, .width = 6120, .height = 540, .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::CommandButton, .name = "cmdStampa", .left = 240, .top = 3120, .width = 2940, .height = 600, .caption = "STAMPA (Invio)", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::CommandButton, .name = "cmdAnnulla", .left = 3420, .top = 3120, .width = 2940, .height = 600, .caption = "ANNULLA (Esc)", .back = Fondo, .fore = Blu, .font = Comandi},
        {.kind = K::Frame, .name = "fraAvanzamento", .left = 240, .top = 3960, .width = 6120, .height = 360, .back = QColor(255, 255, 255), .border = true},
        {.kind = K::Label, .name = "lblBarra", .in = "fraAvanzamento", .left = 0, .top = 0, .width = 0, .height = 360, .back = Blu},
        {.kind = K::Label, .name = "lblStato", .left = 240, .top = 4440, .width = 6120, .height = 840, .back = Fondo, .fore = Rosso, .font = Comandi},
    });
    // clang-format on
    lblSimboli = &get<Label>("lblSimboli");
    lblStampante = &get<Label>("lblStampante");
    lblStato = &get<Label>("lblStato");
    lblBarra = &get<Label>("lblBarra");
    cboNumeri = &get<ComboBox>("cboNumeri");
    cboRighe = &get<ComboBox>("cboRighe");
    txtCopie = &get<TextBox>("txtCopie");
    cmdStampa = &get<CommandButton>("cmdStampa");
    cmdAnnulla = &get<CommandButton>("cmdAnnulla");
    fraAvanzamento = &get<Frame>("fraAvanzamento");

    // Alt and the underlined letter go to the field beside the label.
    get<Label>("lblNumeri").label()->setBuddy(cboNumeri->widget());
    get<Label>("lblRighe").label()->setBuddy(cboRighe->widget());
    get<Label>("lblCopie").label()->setBuddy(txtCopie->widget());
    setTabOrder({cboNumeri, cboRighe, txtCopie, cmdStampa, cmdAnnulla});
    auto *esc = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(esc, &QShortcut::activated, this,
            [this] { services().runHandler([this] { cmdAnnulla_Click(); }); });

    cmdStampa->Click = [this] { cmdStampa_Click(); };
    cmdAnnulla->Click = [this] { cmdAnnulla_Click(); };
    cboNumeri->KeyDown = [this](int &k, int s) { cboNumeri_KeyDown(k, s); };
    cboRighe->KeyDown = [this](int &k, int s) { cboRighe_KeyDown(k, s); };
    txtCopie->KeyDown = [this](int &k, int s) { txtCopie_KeyDown(k, s); };
}

void FrmCopieClasse::Form_Load()
{
    Resize::RegistraPosizioni(*this, Posizioni);
    const StatoCondiviso &s = m_ctx.stato;
    for (const QString &voce : Numeri)
        cboNumeri->AddItem(voce);
    for (const char *righe : {"10", "20", "30"})
        cboRighe->AddItem(QString::fromLatin1(righe));
    // The worksheet screen's choices, where it has made them.
    const int tipo = s.TipoNumeri.value();
    cboNumeri->setListIndex(tipo >= 1 && tipo <= 3 ? tipo - 1 : 0);
    const int righe = s.NumeroRighe.value();
    cboRighe->setListIndex(righe == 10 ? 0 : righe == 20 ? 1 : 2);
    const int unita = UnitaClasse::IndiceDi(s);
    lblSimboli->setCaption(unita >= 0 ? UnitaClasse::Descrizione(unita)
                                      : QStringLiteral("nessuna scelta"));
    lblStampante->setCaption(QStringLiteral("Stampante: ") + m_ctx.printer().DeviceName());
    cboNumeri->SetFocus();
}

void FrmCopieClasse::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, true);
}

void FrmCopieClasse::Form_Unload(int &Cancel)
{
    // Closing the window while the set is under way stops it first.
    if (m_inCorso) {
        Cancel = 1;
        m_annulla = true;
        m_chiudi = true;
    }
}

void FrmCopieClasse::cboNumeri_KeyDown(int &KeyCode, int)
{
    if (KeyCode == 13)
        cmdStampa_Click();
}

void FrmCopieClasse::cboRighe_KeyDown(int &KeyCode, int)
{
    if (KeyCode == 13)
        cmdStampa_Click();
}

void FrmCopieClasse::txtCopie_KeyDown(int &KeyCode, int)
{
    if (KeyCode == 13)
        cmdStampa_Click();
}

void FrmCopieClasse::cmdAnnulla_Click()
{
    if (m_inCorso)
        m_annulla = true;
    else
        Unload();
}

void FrmCopieClasse::Avvisa(const QString &testo)
{
    m_ctx.messageBoxes().show(testo, MessageBoxes::OkOnly, MessageBoxes::Exclamation, Titolo);
}

bool FrmCopieClasse::Prepara(int &copie, int &unita)
{
    bool numero = false;
    copie = Texts::trim(txtCopie->Caption()).toInt(&numero);
    if (!numero || copie < 1 || copie > SerieClasse::MassimoCopie) {
        Avvisa(QStringLiteral("Scrivi quante copie stampare: un numero da 1 a 40."));
        txtCopie->SetFocus();
        static_cast<QLineEdit *>(txtCopie->widget())->selectAll();
        return false;
    }
    unita = UnitaClasse::IndiceDi(m_ctx.stato);
    if (unita < 0) {
        Avvisa(QStringLiteral("Scegli prima i simboli sulla schermata iniziale."));
        return false;
    }
    const QStringList caratteri = m_ctx.printer().Fonts();
    if (!caratteri.contains(QStringLiteral("Courier New")) &&
        !caratteri.contains(QStringLiteral("Courier"))) {
        m_ctx.messageBoxes().show(
            QStringLiteral("Devi installare il font Courier o il font Courier New"));
        return false;
    }
    return true;
}

void FrmCopieClasse::Abilita(bool abilitato)
{
    for (Control *c : std::initializer_list<Control *>{cboNumeri, cboRighe, txtCopie, cmdStampa})
        c->setEnabled(abilitato);
}

bool FrmCopieClasse::Avanza(int fatto, int totale, const QString &testo)
{
    lblStato->setCaption(testo);
    lblBarra->Move(0, 0, fraAvanzamento->Width() * fatto / totale, fraAvanzamento->Height());
    // The bar is drawn, and Annulla heard, between one step and the next.
    QApplication::processEvents();
    return !m_annulla;
}

void FrmCopieClasse::cmdStampa_Click()
{
    if (m_inCorso)
        return;
    int copie = 0;
    int unita = -1;
    if (!Prepara(copie, unita))
        return;
    const int tipoNumeri = cboNumeri->ListIndex() + 1;
    const int righe = (cboRighe->ListIndex() + 1) * 10;

    m_inCorso = true;
    m_annulla = false;
    Abilita(false);
    cmdAnnulla->SetFocus();
    // Steps: each copy made, then each page printed.
    const int passi = copie + 2 * copie;
    bool finita = false;
    try {
        SerieClasse serie(tipoNumeri, unita, righe,
                          std::uint64_t(m_ctx.clock().now().toMSecsSinceEpoch()) * 31 + ++m_serie);
        bool avanti = Avanza(0, passi, QStringLiteral("Preparazione delle copie..."));
        for (int k = 1; avanti && k <= copie; ++k) {
            serie.Aggiungi();
            avanti = Avanza(k, passi, QStringLiteral("Copia %1 di %2 pronta").arg(k).arg(copie));
        }
        if (avanti) {
            QList<StampaClasse::Foglio> fogli;
            for (bool docenti : {false, true}) {
                int numero = 0;
                for (const RigheClasse::Copia &c : serie.Copie()) {
                    QString piede = QStringLiteral("Scheda %1 - codice %2")
                                        .arg(++numero, 2, 10, QLatin1Char('0'))
                                        .arg(c.codice);
                    if (docenti)
                        piede += QStringLiteral(" - soluzioni");
                    fogli.append({docenti ? c.docenti : c.alunni, docenti, piede});
                }
            }
            StampaClasse stampa(m_ctx.printer(), m_ctx.stato.SottotitoloArgomento,
                                Misure::TitoloScheda(UnitaClasse::Famiglia(unita)));
            finita = stampa.Stampa(fogli, [&](int fatti, int totale) {
                return Avanza(copie + fatti, passi,
                              QStringLiteral("Pagina %1 di %2").arg(fatti).arg(totale));
            });
        }
        lblStato->setCaption(finita ? QStringLiteral("Stampate %1 copie e le loro soluzioni "
                                                     "(%2 pagine).")
                                          .arg(copie)
                                          .arg(2 * copie)
                                    : QStringLiteral("Stampa annullata: non è stato stampato "
                                                     "nulla."));
    } catch (const RuntimeError &) {
        lblStato->setCaption(QStringLiteral("Non è stato stampato nulla."));
        m_ctx.messageBoxes().show(QStringLiteral("Problema di stampa nella stampante utilizzata."),
                                  MessageBoxes::OkOnly);
    }
    if (!finita)
        lblBarra->Move(0, 0, 0, fraAvanzamento->Height());
    m_inCorso = false;
    Abilita(true);
    if (m_chiudi) {
        Unload();
        return;
    }
    cmdStampa->SetFocus();
}
