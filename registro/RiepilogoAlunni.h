#pragma once

#include "registro/SerieRegistrata.h"

#include <QList>
#include <QString>

// Per pupil, over the series given (newest first): how many series, the
// right answers in percent of the exercises asked, the mean seconds per
// exercise, and the percent of each of the last series, oldest first, for
// the small chart. No window.
struct RiepilogoAlunni
{
    struct Alunno
    {
        QString nome;
        int serie = 0;
        int esercizi = 0;
        int esatte = 0;
        double secondi = 0;
        QList<int> ultime; // percent right of the last series, oldest first

        double percentuale() const { return esercizi ? 100.0 * esatte / esercizi : 0; }
        double tempoMedio() const { return esercizi ? secondi / esercizi : 0; }
    };

    static constexpr int UltimeSerie = 10;
    static int percentuale(const SerieRegistrata &s);
    // Pupils in alphabetical order; series without a name under "".
    static QList<Alunno> calcola(const QList<SerieRegistrata> &serie);
};
