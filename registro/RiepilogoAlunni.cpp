#include "registro/RiepilogoAlunni.h"

#include <QHash>
#include <algorithm>
#include <cmath>

int RiepilogoAlunni::percentuale(const SerieRegistrata &s)
{
    const int n = s.quantiEsercizi();
    return n ? int(std::lround(100.0 * s.esatte / n)) : 0;
}

QList<RiepilogoAlunni::Alunno> RiepilogoAlunni::calcola(const QList<SerieRegistrata> &serie)
{
    QHash<QString, Alunno> perNome;
    for (const SerieRegistrata &s : serie) {
        Alunno &a = perNome[s.nome];
        a.nome = s.nome;
        a.serie += 1;
        a.esercizi += s.quantiEsercizi();
        a.esatte += s.esatte;
        a.secondi += s.tempoTotale;
        // Newest first in, so the first ones met are the last ones done.
        if (a.ultime.size() < UltimeSerie)
            a.ultime.prepend(percentuale(s));
    }
    QList<Alunno> alunni = perNome.values();
    std::sort(alunni.begin(), alunni.end(), [](const Alunno &x, const Alunno &y) {
        return QString::localeAwareCompare(x.nome, y.nome) < 0;
    });
    return alunni;
}
