#pragma once

#include "classe/RigheClasse.h"
#include "platform/Form.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Label.h"
#include "platform/controls/TextBox.h"
#include "services/Resize.h"

#include <optional>

class AppContext;

// "Rifai da codice": the code printed on a copy of a class set, typed or
// pasted, brings that copy back on screen, ready to print again as the
// pupils' or the teachers' sheet. A mistyped code is refused with the
// reason, never shown as another sheet.
class FrmRifaiCodice : public Form
{
    Q_OBJECT

public:
    explicit FrmRifaiCodice(AppContext &ctx);

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void cmdMostra_Click();
    void cmdAlunni_Click();
    void cmdDocenti_Click();
    void cmdStampa_Click();
    void cmdEsci_Click();
    void txtCodice_KeyDown(int &KeyCode, int Shift);

    void MostraRighe(bool docenti);

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;
    TextBox *txtCodice;
    Label *lblDescrizione;
    ControlArray<Label> LblRiga;
    CommandButton *cmdMostra, *cmdAlunni, *cmdDocenti, *cmdStampa, *cmdEsci;

    std::optional<RigheClasse::Copia> m_copia;
    bool m_docenti = false;
};
