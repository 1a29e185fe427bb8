#pragma once

#include "platform/Form.h"
#include "platform/Int16.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "services/Resize.h"

class AppContext;

// The report of the series: one line per exercise as the drill recorded it.
// From here the pupil goes to the name screen, the certificate, the printer
// choice, or prints the list.
class FrmStampaEsercizio2 : public Form
{
    Q_OBJECT

public:
    explicit FrmStampaEsercizio2(AppContext &ctx);

    // Prints the list of exercises on the current printer.
    void StampaEsercizi();

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void IntestazioneStampa();
    void Command1_Click(int Index);
    void cmdAvanti_Click();
    void mnuStampante_Click();
    void mnuStampaEsercizi_Click();
    void mnuCartellaPdf_Click();

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;
    ControlArray<Label> LblOp;
    ControlArray<CommandButton> Command1;
    Frame *fraNome;
    // Top margin of the printed list, set again before each line.
    Int16 MargineSuperiore;
};
