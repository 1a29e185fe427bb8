#pragma once

#include "registro/ArchivioRegistro.h"
#include "registro/SerieRegistrata.h"

#include <QTest>

// How two copies of a series must agree on their dates: to the second, as
// the register keeps them, or exactly, as a waiting file keeps them.
enum class DateSerie
{
    AlSecondo,
    Esatte
};

// One series against another: every field and every line.
inline void confrontaSerie(const SerieRegistrata &scritta, const SerieRegistrata &attesa,
                           DateSerie date = DateSerie::AlSecondo)
{
    QCOMPARE(scritta.codice, attesa.codice);
    if (date == DateSerie::Esatte) {
        QCOMPARE(scritta.inizio, attesa.inizio);
        QCOMPARE(scritta.fine, attesa.fine);
    } else {
        QCOMPARE(ArchivioRegistro::testoData(scritta.inizio),
                 ArchivioRegistro::testoData(attesa.inizio));
        QCOMPARE(ArchivioRegistro::testoData(scritta.fine),
                 ArchivioRegistro::testoData(attesa.fine));
    }
    QCOMPARE(scritta.nome, attesa.nome);
    QCOMPARE(scritta.tipoNumeri, attesa.tipoNumeri);
    QCOMPARE(scritta.numeri, attesa.numeri);
    QCOMPARE(scritta.famiglia, attesa.famiglia);
    QCOMPARE(scritta.simboli, attesa.simboli);
    QCOMPARE(scritta.ordine, attesa.ordine);
    QCOMPARE(scritta.esatte, attesa.esatte);
    QCOMPARE(scritta.errate, attesa.errate);
    QCOMPARE(scritta.tempoTotale, attesa.tempoTotale);
    QCOMPARE(scritta.terminata, attesa.terminata);
    QCOMPARE(scritta.valutazione, attesa.valutazione);
    QCOMPARE(scritta.postazione, attesa.postazione);
    QCOMPARE(scritta.esercizi.size(), attesa.esercizi.size());
    for (qsizetype n = 0; n < scritta.esercizi.size(); ++n) {
        QCOMPARE(scritta.esercizi[n].numero, attesa.esercizi[n].numero);
        QCOMPARE(scritta.esercizi[n].riga, attesa.esercizi[n].riga);
        QCOMPARE(scritta.esercizi[n].secondi, attesa.esercizi[n].secondi);
    }
}
