#pragma once

#include "classe/CodiceScheda.h"

#include <QList>
#include <QStringList>
#include <memory>

class AppContext;

// The rows of one copy of a class set, made from its code's choice by the
// program's exercise generator on a context of its own: the seed fixes the
// draws and the clock stands still, so a code gives the same rows every time,
// and the drill's generator, its state and the type shown on the drill
// screen are never touched.
class RigheClasse
{
public:
    RigheClasse();
    ~RigheClasse();

    // One row as the generator left it in the state: what the drill needs
    // to pose it on screen.
    struct Esercizio
    {
        QString numero;
        QString simboloRichiesto;
        QString risposta;
        int tipo = 0;
        int tipoEstratto = 0;
    };

    struct Copia
    {
        CodiceScheda::Scelta scelta;
        QString codice;
        QStringList alunni;  // the pupils' rows, as the worksheet builds them
        QStringList docenti; // the same with the solutions
        QList<int> tipi;     // the exercise type of each row
        QList<Esercizio> esercizi;
    };

    // The copy that choice makes; the choice must be valid.
    Copia Costruisci(const CodiceScheda::Scelta &scelta);

private:
    std::unique_ptr<AppContext> m_privato;
};
