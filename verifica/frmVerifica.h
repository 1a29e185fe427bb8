#pragma once

#include "classe/CodiceScheda.h"
#include "platform/Form.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/OptionButton.h"
#include "services/Resize.h"

#include <optional>

class AppContext;

// "Verifica con codice": the pupil types the code the teacher gave, then a
// name, with large on-screen keys (mouse or whiteboard pen) or with the
// keyboard, and the drill opens on that code's exercises. A mistyped code is
// refused with the reason, never taken as another series.
class frmVerifica : public Form
{
    Q_OBJECT

public:
    explicit frmVerifica(AppContext &ctx);

    // The keys of the code, by index: the characters codes are made of.
    static QString CarattereCodice(int Index);
    static constexpr int CancellaCodice = 31;
    static constexpr int CancellaNome = 28;
    // Longest code and name taken.
    static constexpr int MassimoNome = 30;

    // Which step the screen is at.
    bool ChiedeNome() const { return m_scelta.has_value(); }

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void Command1_Click(int Index);
    void Command2_Click(int Index);
    void Option4_GotFocus();
    void Option4_LostFocus();
    void Option4_KeyDown(int &KeyCode, int Shift);
    void Option4_KeyUp(int &KeyCode, int Shift);
    void Option4_MouseDown(int Button, int Shift, double X, double Y);
    void Option4_MouseUp(int Button, int Shift, double X, double Y);
    void cmdEsci_Click();

    void Scrivi(const QString &carattere);
    void TogliUltimo();
    void Avanti();
    void MostraTesto();
    void PassaAlNome();
    void Avvisa(const QString &testo);

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;
    ControlArray<CommandButton> Command1, Command2;
    Frame *fraCodice, *fraNome;
    Label *Label12, *Label9, *lblTesto, *lblAvviso;
    OptionButton *Option4;
    CommandButton *cmdEsci;

    QString m_codice; // the code's characters, without the hyphen
    QString m_nome;
    std::optional<CodiceScheda::Scelta> m_scelta;
    // A handled key types once until it is released, as on the name screen.
    bool TastoGestito = false;
};
