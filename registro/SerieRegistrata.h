#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

// One series as the register keeps it: when, what was drilled, how it went,
// and its record lines. `codice` identifies it everywhere (the local file,
// the server, the queue of series waiting for the server).
struct SerieRegistrata
{
    struct Esercizio
    {
        int numero = 0;
        QString riga;
        double secondi = 0;
    };

    QString codice;
    QDateTime inizio;
    QDateTime fine;
    QString nome;
    int tipoNumeri = 0;
    QString numeri;
    int famiglia = 0;
    QString simboli;
    QString ordine;
    int esatte = 0;
    int errate = 0;
    double tempoTotale = 0;
    bool terminata = false;
    QString valutazione;
    QString postazione;
    QList<Esercizio> esercizi;
    // Only the count, where the lines were not read (the view's list).
    int numeroEsercizi = 0;

    int quantiEsercizi() const
    {
        return esercizi.isEmpty() ? numeroEsercizi : int(esercizi.size());
    }
};
