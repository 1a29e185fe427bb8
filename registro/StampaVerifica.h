#pragma once

#include "registro/TabellaVerifica.h"

#include <QStringList>

class Printer;

// A class's results on a verifica on paper: A4, thirty attempts a page, in
// a monospaced font; each exercise a column of letters, the right answers
// and the time of each pupil, the first-try totals and the hardest exercise
// marked under its column, and what the letters mean.
class StampaVerifica
{
public:
    static constexpr int AlunniPerPagina = 30;

    // The lines of the table: heading, one per attempt, totals, mark.
    static QStringList intestazione(const TabellaVerifica &t);
    static QString riga(const TabellaVerifica &t, const TabellaVerifica::Riga &r);
    static QStringList piede(const TabellaVerifica &t);

    static void stampa(Printer &stampante, const TabellaVerifica &t);
};
