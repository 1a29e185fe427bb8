#pragma once

#include "classe/RigheClasse.h"

#include "platform/RandomSource.h"

#include <QSet>
#include <vector>

// The copies of one class set, added one at a time so the caller can show
// progress between them: all of one choice of numbers, units and rows, each
// with its own seed, and no two with the same row in the same place.
class SerieClasse
{
public:
    // `avvio` picks the seeds tried (the caller takes it from the clock);
    // the same start gives the same set.
    SerieClasse(int tipoNumeri, int unita, int righe, std::uint64_t avvio);

    static constexpr int MassimoCopie = 40;

    // Adds the next copy; its rows differ, place by place, from those of
    // every copy before it.
    const RigheClasse::Copia &Aggiungi();

    const std::vector<RigheClasse::Copia> &Copie() const { return m_copie; }

private:
    bool distinta(const RigheClasse::Copia &copia) const;

    CodiceScheda::Scelta m_scelta;
    MixingRandom m_semi;
    RigheClasse m_righe;
    std::vector<RigheClasse::Copia> m_copie;
    // The pupils' rows used so far, place by place.
    std::vector<QSet<QString>> m_usate;
};
