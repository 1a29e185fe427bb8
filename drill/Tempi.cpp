#include "drill/Tempi.h"

#include <cmath>

namespace Tempi {

double secondiInteri(double inizio, double fine)
{
    return std::floor(fine - inizio);
}

QString didascaliaParziale(const QString &testo)
{
    const QString limite = QStringLiteral("99");
    // Compared as text, on purpose: a narrow label shows two digits well.
    return QString::compare(testo, limite, Qt::CaseSensitive) > 0 ? limite : testo;
}

QString didascaliaTotale(const QString &testo, double totale)
{
    return totale >= 999 ? QStringLiteral("999") : testo;
}

} // namespace Tempi
