#pragma once

#include <QString>

struct StatoCondiviso;

// What the screens tell the pupils' register: a series begins, each exercise
// closes, the series ends or is left, a name and a grade are given. The
// screens know nothing else of it. This base records nothing, so a context
// without a register (most tests) runs the screens exactly as they are.
class RegistroSerie
{
public:
    virtual ~RegistroSerie() = default;

    // A new series starts: the drill screen loaded, or "Ricomincia".
    virtual void inizioSerie(const StatoCondiviso &) {}
    // The exercise NumeroEsercizio is closed: its record line is complete.
    virtual void esercizioChiuso(const StatoCondiviso &) {}
    // The end-of-series frame is shown.
    virtual void fineSerie(const StatoCondiviso &) {}
    // The drill screen closes; a series not ended is kept as unfinished.
    virtual void serieLasciata(const StatoCondiviso &) {}
    // The pupil's name (name screen) and the grade (certificate), for the
    // series in progress or else the last one of this run.
    virtual void nomeAlunno(const QString &) {}
    virtual void valutazione(const QString &, const QString &) {}

    // The teacher's view, from the start screen's menu.
    virtual void mostraRegistro() {}
};
