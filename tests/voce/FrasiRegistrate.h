#pragma once

#include "voce/Sintetizzatore.h"

#include <QStringList>

// A speech engine that says nothing and writes down every sentence, in order,
// and every interruption.
class FrasiRegistrate final : public Sintetizzatore
{
public:
    void pronuncia(const QString &frase) override { frasi.append(frase); }
    void interrompi() override { ++interruzioni; }
    // The engine cannot speak: what a missing library or device reports.
    void fallisci(const QString &motivo)
    {
        if (nonDisponibile)
            nonDisponibile(motivo);
    }
    QStringList frasi;
    int interruzioni = 0;
};
