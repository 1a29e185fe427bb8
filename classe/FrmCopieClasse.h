#pragma once

#include "platform/Form.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/TextBox.h"
#include "services/Resize.h"

class AppContext;

// "Copie per la classe": the teacher picks the numbers, the rows and how
// many copies (1 to 40), and gets one document with every pupils' copy, each
// different, then the teachers' copies in the same order, each with its code.
// The current choices of the worksheet screen come in preset; everything is
// reached from the keyboard. While the set is made and printed a bar shows
// how far it is, and "Annulla" stops it with nothing printed.
class FrmCopieClasse : public Form
{
    Q_OBJECT

public:
    explicit FrmCopieClasse(AppContext &ctx);

    // Whether a set is being made or printed now.
    bool InCorso() const { return m_inCorso; }

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload(int &Cancel) override;

private:
    void cmdStampa_Click();
    void cmdAnnulla_Click();
    void cboNumeri_KeyDown(int &KeyCode, int Shift);
    void cboRighe_KeyDown(int &KeyCode, int Shift);
    void txtCopie_KeyDown(int &KeyCode, int Shift);

    // The number of copies and the units, or a message and false.
    bool Prepara(int &copie, int &unita);
    // Shows how far the work is; false when the teacher stopped it.
    bool Avanza(int fatto, int totale, const QString &testo);
    void Abilita(bool abilitato);
    void Avvisa(const QString &testo);

    AppContext &m_ctx;
    Resize::Posizioni Posizioni;
    Label *lblSimboli, *lblStampante, *lblStato, *lblBarra;
    ComboBox *cboNumeri, *cboRighe;
    TextBox *txtCopie;
    CommandButton *cmdStampa, *cmdAnnulla;
    Frame *fraAvanzamento;

    bool m_inCorso = false;
    bool m_annulla = false;
    bool m_chiudi = false;
    unsigned m_serie = 0;
};
