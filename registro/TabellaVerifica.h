#pragma once

#include "registro/SerieRegistrata.h"

#include <QChar>
#include <QDateTime>
#include <QList>
#include <QString>

// A class's results on one verifica: a row per attempt (a pupil who took
// the code twice has two rows, first and second attempt), a cell per
// exercise with its outcome and seconds, per exercise how many got it right
// at the first try, and the exercise the class found hardest. Series from
// every computer that wrote to the register are merged by the code. No
// window, no database.
class TabellaVerifica
{
public:
    // An exercise the series never reached (left half way).
    static constexpr int NonRaggiunto = 5;

    struct Cella
    {
        int esito = NonRaggiunto;
        double secondi = 0;
    };

    struct Riga
    {
        QString alunno;
        int tentativo = 1; // 1 first attempt, 2 second, ...
        QString postazione;
        QDateTime inizio;
        bool terminata = false;
        QList<Cella> celle;
        int esatte = 0; // right at the first or second try
        double secondi = 0;
    };

    // `serie` are the series of that code, with their exercises.
    static TabellaVerifica Costruisci(const QString &codice, const QList<SerieRegistrata> &serie);

    QString codice;
    int esercizi = 0;
    QList<Riga> righe;
    QList<int> esattePrimoTentativo; // per exercise
    int piuDifficile = -1;           // index of the hardest exercise; -1 with no rows

    // The letter a cell shows, so the table reads in black and white too.
    static QChar Lettera(int esito);
    // What the outcome means, in words.
    static QString Spiegazione(int esito);
    // Every letter with its meaning, one line.
    static QString Legenda();
    // "ADA", "ADA (2° tentativo)", "(senza nome)".
    static QString NomeRiga(const Riga &riga);
    // "Numeri interi, simboli uk h da u, 10 esercizi" from the code itself.
    static QString Descrizione(const QString &codice);
};
