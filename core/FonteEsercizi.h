#pragma once

#include <QString>

struct StatoCondiviso;

// Where the drill takes its exercises from when they are given rather than
// drawn: a series whose exercises are fixed in advance (the rows of a class
// set's code). The normal series has none and draws from the generator.
class FonteEsercizi
{
public:
    virtual ~FonteEsercizi() = default;

    // What names the series (the code printed on the sheet); the drill shows
    // it and the register keeps it.
    virtual QString codice() const = 0;
    // The pupil who takes it.
    virtual QString alunno() const = 0;
    // How many exercises the series has: it ends after the last one.
    virtual int quanti() const = 0;
    // Leaves exercise `numero` (1 .. quanti()) in the state as the generator
    // would: Numero, SimboloRichiesto, Risposta and the exercise's type.
    virtual void esercizio(int numero, StatoCondiviso &stato) = 0;
    // The drill closes: whatever the series changed in the state is put back.
    virtual void serieChiusa(StatoCondiviso &stato) = 0;
};
