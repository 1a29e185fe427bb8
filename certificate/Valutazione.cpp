#include "certificate/Valutazione.h"

#include "platform/RuntimeError.h"
#include "platform/Suppressed.h"

#include <cmath>

const QString Valutazione::NonClassificato = QStringLiteral("Non classificato");

bool Valutazione::stampabile() const
{
    return parola != NonClassificato;
}

QString Valutazione::parolaPer(int punteggio)
{
    // One selection on the score minus 5 read as unsigned: negative scores
    // land among the large values and are not graded either.
    switch (static_cast<unsigned>(punteggio - 5)) {
    case 0:
        return QStringLiteral("SUFFICIENTE (!)");
    case 1:
        return QStringLiteral("SUFFICIENTE");
    case 2:
        return QStringLiteral("BUONO");
    case 3:
        return QStringLiteral("DISTINTO");
    case 4:
    case 5:
        return QStringLiteral("OTTIMO");
    default:
        return NonClassificato;
    }
}

Valutazione Valutazione::calcola(Int16 EsatteComplessive, Int16 NumeroEsercizio)
{
    Valutazione v;
    Int16 prodotto = 0;
    double quoziente = 0;
    Int16 punteggio = 0;
    runSuppressed({
        [&] { prodotto = EsatteComplessive * 10; },
        [&] {
            if (NumeroEsercizio == 0)
                throw RuntimeError(prodotto == 0 ? RuntimeError::Overflow
                                                 : RuntimeError::DivisionByZero);
            quoziente = double(prodotto) / double(NumeroEsercizio);
        },
        [&] { punteggio = Int16(static_cast<long long>(std::floor(quoziente))); },
    });
    v.punteggio = punteggio;
    v.parola = parolaPer(punteggio);
    return v;
}
