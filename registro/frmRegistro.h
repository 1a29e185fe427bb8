#pragma once

#include "platform/Form.h"
#include "registro/ArchivioRegistro.h"
#include "registro/ImpostazioniRegistro.h"
#include "services/Resize.h"

#include <memory>

class AppContext;
class ComboBox;
class CommandButton;
class Label;
class ModelloSerie;
class QPlainTextEdit;
class QStandardItemModel;
class QTableView;
class TextBox;

// The teacher's view of the pupils' register: the series newest first,
// filtered by name and dates; per pupil the number of series, the right
// answers in percent, the mean time per exercise and a small chart of the
// last series; one series' record lines; export to CSV, print, and the
// deletion of a pupil's series.
class frmRegistro : public Form
{
    Q_OBJECT

public:
    frmRegistro(AppContext &ctx, const ImpostazioniRegistro &impostazioni);
    ~frmRegistro() override;

    // Reads the series again with the filter typed; false (and a word in the
    // status line) when the filter or the register cannot be read.
    bool Aggiorna();
    // Shows the record lines of the series in row `riga` of the list.
    void MostraRighe(int riga);
    // The pupil whose series would be deleted: the one chosen in the
    // summary, else the one of the chosen series.
    QString AlunnoScelto() const;

    QTableView *tabellaSerie() const { return m_tabellaSerie; }
    QTableView *tabellaAlunni() const { return m_tabellaAlunni; }
    QPlainTextEdit *righe() const { return m_righe; }
    const ModelloSerie &modello() const { return *m_modello; }

    // What the status line says when the register cannot be read.
    static QString testoEsito(ArchivioRegistro::Esito esito, const QString &dettaglio);

protected:
    void Form_Load() override;
    void Form_Resize() override;

private:
    void cmdCerca_Click();
    void cmdEsporta_Click();
    void cmdStampa_Click();
    void cmdElimina_Click();
    void cmdChiudi_Click();
    void mnuStampante_Click();
    void riempiAlunni();
    void stato(const QString &testo);
    // The class's results on each verifica.
    void mnuVerifiche_Click();

    AppContext &m_ctx;
    ImpostazioniRegistro m_impostazioni;
    ArchivioRegistro m_archivio;
    Resize::Posizioni Posizioni;
    TextBox *txtNome, *txtDal, *txtAl;
    Label *lblFile, *lblStato;
    ComboBox *cboUnita;
    QTableView *m_tabellaSerie = nullptr;
    QTableView *m_tabellaAlunni = nullptr;
    QPlainTextEdit *m_righe = nullptr;
    ModelloSerie *m_modello = nullptr;
    QStandardItemModel *m_alunni = nullptr;
};
