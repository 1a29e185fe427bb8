#pragma once

#include <QList>

#include "platform/Form.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Line.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "services/Resize.h"

#include <memory>

class AlsaPlayer;
class AppContext;

// The drill screen: a series of generated exercises, each answered on the
// keypad, checked, timed and written as one line of the series' record.
// After a wrong answer it offers help ("Ti aiuto ?"), one more try, and at a
// second refusal shows the answer itself; after the 20th exercise it offers
// the report and a new series.
class frmOperativo : public Form
{
    Q_OBJECT

public:
    explicit frmOperativo(AppContext &ctx);
    ~frmOperativo() override;

    // Shows each exercise type the generator draws in lblCodice, loading
    // (not showing) this screen when it is not loaded. Call once per context.
    static void collegaTipoEsercizio(AppContext &ctx);

    // Puts the keypad into its digit-expected state.
    void TastiNo();
    // The keypad keys (indexes of Command1) that type `testo`: each digit,
    // and the symbol key whose caption stands next (the longest, when two
    // fit). Stops before the first part no key types.
    QList<int> TastiPer(const QString &testo);
    // Plays the program's chime from its resources, without waiting for it.
    void SuonaRisorsa();
    QString FormattaConMigliaia(double X);

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload(int &Cancel) override;

private:
    void NuovoEsercizio();
    void PreparaDomanda();
    void VerificaRisposta();
    void AggiornaTempi();
    void ControllaFineSerie();
    // The number of the series' last exercise: the given exercises' count,
    // or `perLaSerieNormale` for a drawn series.
    int UltimoEsercizio(int perLaSerieNormale) const;
    // A series of given exercises shows their code where lblCodice stands.
    void MostraCodiceSerie();
    void BloccaPannelli();
    void PosizionaPannelli();
    void MostraPannello(Frame &pannello);
    void Ricomincia();
    void Riprova();
    void MostraSoluzione();
    void BarraRisposta();
    void AttesaAvanti();
    // Opens the exercise report screen (FrmStampaEsercizio2), which lists the
    // series' record lines.
    void ApriResoconto();

    void Command1_Click(int Index);
    void Command3_Click(int Index);
    void optOK_Click();
    void optAvviso_GotFocus(int Index);
    void optAvviso_LostFocus(int Index);
    void optAvviso_MouseDown(int Index, int Button, int Shift, double X, double Y);
    void optAvviso_MouseUp(int Index, int Button, int Shift, double X, double Y);
    void LblRisultato_Change();
    void mnuVisualizza_Click();
    void mnuIstruzioni_Click();
    // The question read aloud again (F2), when the voice is on.
    void mnuAscolta_Click();

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;
    std::unique_ptr<AlsaPlayer> m_suono;

    Label *Label1, *Label2, *lblCodice, *lblRiferimento;
    Label *LblOperazione, *lblRisEsatte, *lblRisErrate, *LblTempoParziale, *LblTempoTotale;
    Label *lblNumero, *LblRisultato, *lblCorrezione, *LblEsito1, *Label6;
    Line *Line1, *Line2;
    Frame *FraTastierino, *fraAiuto, *fraIntervento, *fraAvviso;
    ControlArray<CommandButton> Command1, Command3;
    OptionButton *optOK;
    ControlArray<OptionButton> optAvviso;
    Menu *mnuVisualizza, *mnuIstruzioni, *mnuAscolta;
};
