#include "sheets/RigheScheda.h"

#include "core/Algoritmi.h"
#include "core/AppContext.h"
#include "platform/Texts.h"

#include <cmath>
#include <cstdint>
#include <limits>

QString RigheScheda::SpazioRisposta()
{
    return QStringLiteral(" = .........................");
}

void RigheScheda::CostruisciRighe()
{
    StatoCondiviso &s = m_ctx.stato;
    m_ctx.random().reseed(static_cast<float>(m_ctx.clock().secondsSinceMidnight()));
    Algoritmi generatore(m_ctx);
    s.RigaScheda = 1;
    while (s.RigaScheda <= s.NumeroRighe) {
        generatore.GeneraEsercizio();
        s.SpaziNumero = Texts::blanks(LarghezzaNumero - int(s.Numero.size()));
        s.SpaziSimbolo = Texts::blanks(LarghezzaSimbolo - int(s.SimboloRichiesto.size()));
        s.RigheAlunni[s.RigaScheda] =
            s.SpaziNumero + s.Numero + s.SpaziSimbolo + s.SimboloRichiesto + SpazioRisposta();
        s.SpaziSoluzione = Texts::blanks(LarghezzaSoluzione - int(s.Risposta.size()));
        s.RigheDocenti[s.RigaScheda] = s.RigheAlunni[s.RigaScheda] + s.SpaziSoluzione +
                                       QStringLiteral("(R.") + s.Risposta + QStringLiteral(")");
        s.RigaScheda += 1;
    }
}

QString RigheScheda::RigaAlunni(const QString &Numero, const QString &SimboloRichiesto)
{
    return Texts::blanks(LarghezzaNumero - int(Numero.size())) + Numero +
           Texts::blanks(LarghezzaSimbolo - int(SimboloRichiesto.size())) + SimboloRichiesto +
           SpazioRisposta();
}

QString RigheScheda::RigaDocenti(const QString &rigaAlunni, const QString &Risposta)
{
    return rigaAlunni + Texts::blanks(LarghezzaSoluzione - int(Risposta.size())) +
           QStringLiteral("(R.") + Risposta + QStringLiteral(")");
}

QString RigheScheda::FormattaNumero(double N)
{
    const QString T = Texts::fromDouble(N);
    const double parteIntera = std::trunc(N);
    // NaN fails both comparisons as well.
    if (!(parteIntera >= double(std::numeric_limits<std::int32_t>::min()) &&
          parteIntera <= double(std::numeric_limits<std::int32_t>::max())))
        throw RuntimeError(RuntimeError::Overflow);
    const auto I = static_cast<std::int32_t>(parteIntera);
    const QString testoIntero = Texts::fromInt(I);
    // The decimal comma and the decimals, if any, as the plain text has them.
    const QString decimali = T.mid(testoIntero.size());
    // Grouping writes nothing for zero.
    if (testoIntero != QLatin1String("0"))
        return Texts::grouped(I) + decimali;
    return QStringLiteral("0") + decimali;
}

std::optional<double> RigheScheda::PosizioneStampa(int riga)
{
    // The blocks start 800 and 900 twips below the previous one's last row:
    // that is the sheet's layout, gaps included.
    if (riga >= 1 && riga <= 10)
        return (riga - 1) * 400 + 2000;
    if (riga >= 11 && riga <= 20)
        return (riga - 10) * 400 + 6000;
    if (riga >= 21 && riga <= 30)
        return (riga - 20) * 400 + 10500;
    return std::nullopt;
}
