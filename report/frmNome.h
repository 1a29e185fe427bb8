#pragma once

#include "platform/Form.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Label.h"
#include "platform/controls/OptionButton.h"
#include "services/Resize.h"

class AppContext;

// The pupil writes a name, with the on-screen alphabet or with the keyboard;
// it is kept in NomeAlunno. "AVANTI" closes the screen.
class frmNome : public Form
{
    Q_OBJECT

public:
    explicit frmNome(AppContext &ctx);

    // The keys of the on-screen alphabet by index: the 21 letters of the
    // Italian alphabet, then J K X Y W, then the comma and the full stop; the
    // last key, CANCELLA, follows them.
    static const char *const Lettere[28];
    static constexpr int Cancella = 28;

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Resize() override;
    void Form_Unload(int &Cancel) override;

private:
    void Command1_Click(int Index);
    void Option4_GotFocus();
    void Option4_LostFocus();
    void Option4_KeyDown(int &KeyCode, int Shift);
    void Option4_KeyUp(int &KeyCode, int Shift);
    void Option4_MouseDown(int Button, int Shift, double X, double Y);
    void Option4_MouseUp(int Button, int Shift, double X, double Y);
    void lblNome_Change();

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;
    ControlArray<CommandButton> Command1;
    Label *lblNome;
    OptionButton *Option4;
    // True from a handled key's press until its release: a held key types once.
    bool TastoGestito = false;
};
