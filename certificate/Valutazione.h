#pragma once

#include "platform/Int16.h"

#include <QString>

// The grade of a series: right answers x 10 / exercises asked, floored, and
// the grade word for that score. A certificate with "Non classificato" is not
// printed.
struct Valutazione
{
    int punteggio = 0;
    QString parola;

    bool stampabile() const;

    static const QString NonClassificato;

    // Every failing step (overflow of the 16-bit product, no exercise asked)
    // is skipped, so the score stays 0.
    static Valutazione calcola(Int16 EsatteComplessive, Int16 NumeroEsercizio);
    static QString parolaPer(int punteggio);
};
