#pragma once

#include "platform/Form.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "services/Resize.h"

class AppContext;

// The worksheet screen: the teacher chooses the kind of numbers and how many
// rows, and gets a pupils' sheet (questions with a dotted space) and a
// teachers' sheet (the same with the solutions), on screen and on paper.
class FrmStampaSchede : public Form
{
    Q_OBJECT

public:
    explicit FrmStampaSchede(AppContext &ctx);

    // A number with its thousands grouped (4700 -> "4.700"); a number too
    // big for it gets a message box and the empty text.
    QString FormattaNumero(double N);

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void CostruisciRighe();
    void SceltaNumeri(int Index);
    void MostraScheda(bool docenti);
    void StampaScheda();

    void Option1_GotFocus(int Index);
    void Option1_LostFocus(int Index);
    void Option1_KeyPress(int Index, int &KeyAscii);
    void Option1_KeyDown(int Index, int &KeyCode, int Shift);
    void Option1_KeyUp(int Index, int &KeyCode, int Shift);
    void Option1_MouseDown(int Index, int Button, int Shift, double X, double Y);
    void Option1_MouseUp(int Index, int Button, int Shift, double X, double Y);

    void Option2_GotFocus(int Index);
    void Option2_LostFocus(int Index);
    void Option2_Click(int Index);
    void Option2_MouseUp(int Index, int Button, int Shift, double X, double Y);

    void Opt1_Click(int Index);
    void Opt5_Click();
    void Opt10_Click();
    void CmdVisualizzaSchedaAlunni_Click();
    void CmdStampaSchedaAlunni_Click();
    void CmdVisualizzaSchedaDocenti_Click();
    void CmdStampaSchedaDocenti_Click();
    void CmdRicomincia_Click();
    void cmdEsci_Click();
    void mnuStampante_Click();
    void mnuCartellaPdf_Click();
    void mnuCopieClasse_Click();
    void mnuRifaiCodice_Click();

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;
    // The heading of the screen, also printed at the top of every sheet.
    QString Titolo;

    Label *lblTitolo, *Label1, *Label2;
    ControlArray<Label> Label3, LblOp;
    Frame *Frame11, *Frame22, *Frame1, *Frame2, *Frame3, *Frame4, *Frame5, *Frame6;
    ControlArray<OptionButton> Option1, Option2, Opt1;
    OptionButton *Opt5, *Opt10;
    CommandButton *CmdVisualizzaSchedaAlunni, *CmdStampaSchedaAlunni;
    CommandButton *CmdVisualizzaSchedaDocenti, *CmdStampaSchedaDocenti;
    CommandButton *CmdRicomincia, *cmdEsci;
    Menu *mnuStampante;

    bool BloccoSpazio = false, BloccoTasto = false;
};
