#pragma once

#include "platform/Form.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Label.h"

class AppContext;

// The printer screen: the user picks, among the installed printers, the one
// every later printout goes to. The choice lasts until the program ends; the
// screen only hides, so reopening it shows the list and the choice as they
// were.
class frmSceltaStampante : public Form
{
    Q_OBJECT

public:
    explicit frmSceltaStampante(AppContext &ctx);

    static QColor coloreSfondo() { return QColor(255, 255, 192); }
    static QColor coloreBottone() { return QColor(255, 224, 192); }

protected:
    void Form_Load() override;
    void showEvent(QShowEvent *event) override;

private:
    void ElencaStampanti();
    void AggiornaElenco();
    void MostraStampantePredefinita();
    void Combo1_Click();
    void Command2_Click();

    AppContext &m_ctx;
    Label *Label1 = nullptr, *Label2 = nullptr;
    ComboBox *Combo1 = nullptr;
    CommandButton *Command2 = nullptr;

    // The list's first Click comes from the program selecting the first
    // entry at load, and must not change the printer.
    bool PrimoClick = false;
    // Set once the screen has been shown: every later opening reads the
    // printers again, so a queue added meanwhile is there.
    bool GiaMostrata = false;
    // While the list is filled again, its Click events are the program's.
    bool Aggiornamento = false;
};
