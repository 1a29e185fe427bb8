#pragma once

#include "platform/Form.h"
#include "platform/controls/Frame.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/PictureBox.h"
#include "services/Resize.h"

class AppContext;

// The certificate of merit: composed once, when the screen loads, as a
// picture with the grade of the series; printed as that picture, redrawn at
// the printer's resolution.
class FrmAttestato : public Form
{
    Q_OBJECT

public:
    explicit FrmAttestato(AppContext &ctx);

    // 0 print, 1 back to the report, 2 end of the session.
    void EseguiScelta(int Index);

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void DisegnaAttestato();
    void RigaCentrata(const QString &testo);
    void RigaVuota();
    void Carattere(double dimensione, bool grassetto, const QColor &colore);
    void ChiudiTutto();

    void Option5_GotFocus(int Index);
    void Option5_LostFocus(int Index);
    void Option5_KeyDown(int Index, int &KeyCode, int Shift);
    void Option5_KeyPress(int Index, int &KeyAscii);
    void Option5_KeyUp(int Index, int &KeyCode, int Shift);
    void Option5_MouseDown(int Index, int Button, int Shift, double X, double Y);
    void Option5_MouseUp(int Index, int Button, int Shift, double X, double Y);

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;
    PictureBox *Picture1;
    ControlArray<OptionButton> Option5;
    QString Riga;
    bool BloccoTasto = false;
    bool BloccoSpazio = false;
};
