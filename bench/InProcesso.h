#pragma once

// main() of a benchmark that runs inside one program (a drill series, a
// printed sheet): the application prepared as Quadrivo prepares it, the
// repetitions, the summary on stderr and one row of the table.

#include "Banco.h"

#include "app/Avvio.h"
#include "support/ScreenTest.h"

#include <QApplication>
#include <functional>

namespace Banco {

// `una` runs one repetition and returns its milliseconds, or -1 (having said
// why on stderr) when the work went wrong. The row reads "<misura> (median
// of N)" against "< <obiettivoMs> ms".
inline int inProcesso(int argc, char *argv[], const char *nome, const std::string &misura,
                      double obiettivoMs, const std::function<double()> &una)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const Opzioni o = leggiOpzioni(argc, argv, 15);
    QApplication app(argc, argv);
    Avvio::preparaApplicazione();

    std::vector<double> tempi;
    for (int i = 0; i < o.ripetizioni; ++i) {
        const double ms = una();
        if (ms < 0)
            return Errore;
        tempi.push_back(ms);
        ScreenTest::settle();
    }
    std::fprintf(stderr, "%s: min/median/max %.1f/%.1f/%.1f ms, first %.1f ms\n", nome,
                 minimo(tempi), mediana(tempi), massimo(tempi), tempi.front());

    const double m = mediana(tempi);
    const bool raggiunto =
        riga(misura + " (median of " + std::to_string(o.ripetizioni) + ")",
             formato("%.0f ms", m), formato("< %.0f ms", obiettivoMs), m < obiettivoMs);
    return esito(o, raggiunto);
}

} // namespace Banco
