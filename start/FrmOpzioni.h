#pragma once

#include "platform/Form.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/OptionButton.h"
#include "services/Resize.h"

class AppContext;

// The teacher's options panel: colours of the page, of the text and of the
// scanning buttons, a few switches, a preview of the choices, and the
// commands that restore the defaults, store the settings in the levels file
// or close the panel. Opened modally from the start screen.
class FrmOpzioni : public Form
{
    Q_OBJECT

public:
    explicit FrmOpzioni(AppContext &ctx);

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Resize() override;

private:
    void Option1_Click(int Index);
    void Option27_Click(int Index);
    void Option17_Click(int Index);
    void Option3_Click(int Index);
    void Option9_Click(int Index);
    void Option6_Click(int Index);

    void Option5_GotFocus(int Index);
    void Option5_LostFocus(int Index);
    void Option5_KeyPress(int Index, int &KeyAscii);
    void Option5_KeyDown(int Index, int &KeyCode, int Shift);
    void Option5_KeyUp(int Index, int &KeyCode, int Shift);
    void Option5_MouseDown(int Index, int Button, int Shift, double X, double Y);
    void Option5_MouseUp(int Index, int Button, int Shift, double X, double Y);

    // 0 "Impostazioni predefinite", 1 "Memorizza nuove impostazioni", 2 "Esci".
    void EseguiComando(int Index);
    void ImpostazioniPredefinite();

    void AggiornaSfondoAnteprima();
    void AggiornaCaratteriAnteprima();
    void AggiornaScansioneAnteprima();
    void AggiornaComandi();

    // A chosen button of a group releases the others, as option buttons in
    // one frame do; buttons without a colour of their own show the choice.
    static void SceltaUnica(const ControlArray<OptionButton> &gruppo, int Index,
                            bool evidenzia = false);
    // A colour kept as the decimal text of its value. An empty or
    // non-numeric text is the type-mismatch error.
    static QColor Colore(const QString &testo);

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;

    Frame *Frame1;
    ControlArray<OptionButton> Option1, Option27, Option17, Option9, Option28, Option3, Option11,
        Option6, Option5;
    OptionButton *Option4, *Option2;
    Label *Label5, *Label4;

    // A held key acts once: set by a command key, cleared when it is released.
    bool BloccoTasto = false;
};
