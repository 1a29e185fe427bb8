#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

// One series as the register keeps it: when, what was drilled, how it went,
// and its record lines. `codice` identifies it everywhere (the local file,
// the server, the queue of series waiting for the server).
struct SerieRegistrata
{
    // How an exercise of a verifica closed; kept for those series only (0
    // in the others). An exercise not reached has no line at all.
    enum Esito
    {
        Sconosciuto = 0,
        PrimoTentativo = 1,   // right at the first try
        SecondoTentativo = 2, // right after a wrong try
        SoluzioneChiesta = 3, // shown because the pupil said "Si"
        SoluzioneData = 4,    // shown by the program ("Intervengo io")
    };

    struct Esercizio
    {
        int numero = 0;
        QString riga;
        double secondi = 0;
        int esito = Sconosciuto;
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
    // The class set's code of a verifica; empty for a drawn series.
    QString verifica;
    QList<Esercizio> esercizi;
    // Only the count, where the lines were not read (the view's list).
    int numeroEsercizi = 0;

    int quantiEsercizi() const
    {
        return esercizi.isEmpty() ? numeroEsercizi : int(esercizi.size());
    }
};
