#pragma once

#include "registro/RiepilogoAlunni.h"
#include "registro/SerieRegistrata.h"

class Printer;

// The register on paper: a heading, the per-pupil summary, then the series
// newest first, in a monospaced font, as many pages as they need.
class StampaRegistro
{
public:
    static QStringList righe(const QList<SerieRegistrata> &serie,
                             const QList<RiepilogoAlunni::Alunno> &alunni);
    static void stampa(Printer &stampante, const QString &titolo,
                       const QList<SerieRegistrata> &serie,
                       const QList<RiepilogoAlunni::Alunno> &alunni);
};
