#pragma once

#include "classe/CodiceScheda.h"
#include "classe/RigheClasse.h"
#include "core/FonteEsercizi.h"
#include "core/StatoCondiviso.h"

#include <optional>

// A verifica: the series a pupil takes on screen from a class set's code.
// Its exercises are the rows of the sheet that code prints, in the sheet's
// order, so every pupil who types the code answers the same ones, and the
// paper sheet with its key is the same test. The drill's own generator, its
// draws and the start screen's choices are not touched: what the series
// changes in the state is put back when the drill closes.
class SerieDaCodice final : public FonteEsercizi
{
public:
    // Most rows a series on screen can have: the drill's evaluation panel
    // holds twenty.
    static constexpr int MassimoRighe = 20;

    // The code as typed, when it can be taken on screen; otherwise nothing,
    // with the reason in `errore` (a sentence a pupil can read).
    static std::optional<CodiceScheda::Scelta> Leggi(const QString &testo,
                                                     QString *errore = nullptr);

    // Builds the code's rows and sets the state for them (kind of numbers,
    // units, descriptions, numbering from 1, the pupil's name); `stato` is
    // remembered as it was, to be put back by serieChiusa.
    SerieDaCodice(const CodiceScheda::Scelta &scelta, const QString &alunno, StatoCondiviso &stato);

    QString codice() const override { return m_copia.codice; }
    QString alunno() const override { return m_alunno; }
    int quanti() const override { return int(m_copia.esercizi.size()); }
    void esercizio(int numero, StatoCondiviso &stato) override;
    void serieChiusa(StatoCondiviso &stato) override;

    const RigheClasse::Copia &copia() const { return m_copia; }

    // The drill's two description lines for a code.
    static QString DescrizioneNumeri(int tipoNumeri);
    static QString DescrizioneSimboli(int unita);

private:
    RigheClasse::Copia m_copia;
    QString m_alunno;
    StatoCondiviso m_prima;
};
