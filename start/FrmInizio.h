#pragma once

#include "platform/Form.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/Timer.h"
#include "services/Resize.h"

class AppContext;

// The start screen, first and last of the program: the pupil chooses the kind
// of numbers, the order of the symbols and then starts the drill ("Vai"),
// resets the choices ("Riprisitina") or leaves ("Esci"). Closing it closes
// every screen and ends the program.
class FrmInizio : public Form
{
    Q_OBJECT

public:
    explicit FrmInizio(AppContext &ctx);

    // Applies the current FamigliaSimboli: symbols, counts, captions.
    void SceltaSimboli();
    // The levels file: an existence check that changes nothing, and a reader
    // of the symbol family that nothing calls.
    void VerificaEsistenzaFile(const QString &FileName);
    void LeggiLivelli(const QString &strNomefile);

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload(int &Cancel) override;

private:
    void RegistraPosizioni();
    void AperturaTendine();
    void timerTendine_Timer();
    void CambiaFamiglia();
    void SceltaNumeri(int Index);
    void SceltaOrdine(int Index);
    void EseguiAzione(int Index);
    void ChiudiTutto();
    void SalvaLivello();

    void Option1_GotFocus(int Index);
    void Option1_LostFocus(int Index);
    void Option1_KeyPress(int Index, int &KeyAscii);
    void Option1_KeyDown(int Index, int &KeyCode, int Shift);
    void Option1_KeyUp(int Index, int &KeyCode, int Shift);
    void Option1_MouseDown(int Index, int Button, int Shift, double X, double Y);
    void Option1_MouseUp(int Index, int Button, int Shift, double X, double Y);

    void Option2_GotFocus(int Index);
    void Option2_LostFocus(int Index);
    void Option2_KeyPress(int Index, int &KeyAscii);
    void Option2_KeyDown(int Index, int &KeyCode, int Shift);
    void Option2_KeyUp(int Index, int &KeyCode, int Shift);
    void Option2_MouseDown(int Index, int Button, int Shift, double X, double Y);
    void Option2_MouseUp(int Index, int Button, int Shift, double X, double Y);

    void Option3_GotFocus(int Index);
    void Option3_LostFocus(int Index);
    void Option3_KeyPress(int Index, int &KeyAscii);
    void Option3_KeyDown(int Index, int &KeyCode, int Shift);
    void Option3_KeyUp(int Index, int &KeyCode, int Shift);
    void Option3_MouseDown(int Index, int Button, int Shift, double X, double Y);
    void Option3_MouseUp(int Index, int Button, int Shift, double X, double Y);

    void Label5_MouseDown(int Button, int Shift, double X, double Y);
    void Label6_Click(int Index);
    void mnuStampa_Click();
    void mnuOpzioni_Click();
    void mnuAutore_Click();
    // The pupils' register, a teacher's view of the series kept.
    void mnuRegistro_Click();
    // The measures: lengths, masses, capacities, or back to numbers; the
    // entry in force stands checked.
    void mnuMisura_Click(int Index);
    void SegnaMisura();
    // The same exercises for the whole class, from a code.
    void mnuVerificaCodice_Click();
    // Reading aloud and the high-readability font, kept for the next run.
    void mnuLettura_Click();
    void mnuLeggibili_Click();

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;

    Frame *Frame1, *Frame2, *Frame3, *frmTitolo;
    ControlArray<OptionButton> Option1, Option2, Option3;
    ControlArray<Label> Label4, Label6;
    Label *Label1, *Label2, *Label3, *Label5, *Label8;
    PictureBox *Picture1, *Picture2;
    Timer *timerTendine;
    Menu *mnuStampa, *mnuAutore, *mnuOpzioni, *mnuAvvertenza, *mnuRegistro;
    ControlArray<Menu> mnuMisura;
    Menu *mnuLettura, *mnuLeggibili;

    bool BloccoSpazio1 = false, BloccoTasto1 = false;
    bool BloccoSpazio2 = false, BloccoTasto2 = false;
    bool BloccoSpazio3 = false, BloccoTasto3 = false;
};
