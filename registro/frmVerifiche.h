#pragma once

#include "platform/Form.h"
#include "registro/ArchivioRegistro.h"
#include "registro/ImpostazioniRegistro.h"
#include "registro/TabellaVerifica.h"
#include "services/Resize.h"

class AppContext;
class Label;
class QStandardItemModel;
class QTableView;

// The verifiche in the teacher's view of the register: the codes taken, the
// most recent first (date, what they ask, how many pupils), and for the code
// chosen the class's table: a row per attempt, a column per exercise with
// the outcome as a colour and a letter (the seconds on hover), each pupil's
// right answers and time, how many got each exercise right at the first try,
// and the hardest exercise marked. Printed and exported as CSV.
class frmVerifiche : public Form
{
    Q_OBJECT

public:
    frmVerifiche(AppContext &ctx, const ImpostazioniRegistro &impostazioni);
    ~frmVerifiche() override;

    // Reads the codes again; false (and a word in the status line) when the
    // register cannot be read.
    bool Aggiorna();
    // Shows the class's table of the code in row `riga` of the list.
    bool MostraVerifica(int riga);

    QTableView *tabellaCodici() const { return m_tabellaCodici; }
    QTableView *tabellaClasse() const { return m_tabellaClasse; }
    const TabellaVerifica &tabella() const { return m_tabella; }

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void cmdEsporta_Click();
    void cmdStampa_Click();
    void cmdChiudi_Click();
    void riempiTabella();
    void stato(const QString &testo);

    AppContext &m_ctx;
    ImpostazioniRegistro m_impostazioni;
    ArchivioRegistro m_archivio;
    Resize::Posizioni Posizioni;
    Label *lblVerifica, *lblStato;
    QTableView *m_tabellaCodici = nullptr;
    QTableView *m_tabellaClasse = nullptr;
    QStandardItemModel *m_codici = nullptr;
    QStandardItemModel *m_classe = nullptr;
    QList<ArchivioRegistro::VoceVerifica> m_voci;
    TabellaVerifica m_tabella;
};
