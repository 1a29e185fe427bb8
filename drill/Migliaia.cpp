#include "drill/Migliaia.h"

#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"
#include "platform/Texts.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

std::int32_t parteIntera(double x)
{
    const double intera = std::floor(x);
    if (!std::isfinite(intera) || intera < std::numeric_limits<std::int32_t>::min() ||
        intera > std::numeric_limits<std::int32_t>::max())
        throw RuntimeError(RuntimeError::Overflow);
    return static_cast<std::int32_t>(intera);
}

} // namespace

QString FormattaConMigliaia(double x, MessageBoxes &messageBoxes)
{
    QString risultato;
    try {
        const std::int32_t intera = parteIntera(x);
        const QString testo = Texts::fromDouble(x);
        const QString testoIntera = Texts::fromInt(intera);
        // "#,#" writes nothing for a zero integer part: keep the zero instead.
        risultato = intera == 0 ? QStringLiteral("0") : Texts::grouped(intera);
        risultato += testo.mid(testoIntera.size());
    } catch (const RuntimeError &) {
        messageBoxes.show(QStringLiteral("Numero troppo grande!"), MessageBoxes::OkOnly,
                          MessageBoxes::Critical, QStringLiteral("Errore di overflow"));
    }
    return risultato;
}
