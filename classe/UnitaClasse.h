#pragma once

#include <QString>

struct StatoCondiviso;

// The units a class set can use: a symbol family as the shared state holds
// it. Families 6 and 8 keep the first symbol the previous family left, so
// each of them comes once for every first symbol there can be.
class UnitaClasse
{
public:
    // How many there are; an index runs from 0 to Conteggio() - 1.
    static int Conteggio();

    // The index of the units the state holds now (family and symbols), or
    // -1 when they are none of the list (no family chosen yet).
    static int IndiceDi(const StatoCondiviso &stato);

    // Sets the family, its symbols and NumeroCifre as the index says.
    static void Applica(StatoCondiviso &stato, int indice);

    static int Famiglia(int indice);
    // The symbols in use, largest place first, blanks trimmed ("uk h da u").
    static QString Descrizione(int indice);
};
