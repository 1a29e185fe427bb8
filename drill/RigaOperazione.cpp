#include "drill/RigaOperazione.h"

#include "platform/Texts.h"

namespace RigaOperazione {

namespace {

constexpr int LarghezzaDomanda = 12;
constexpr int LarghezzaRisposta = 22;

QString secondi(const QString &tempoParzialeTesto)
{
    return QStringLiteral(" (Sec.") + Texts::trim(tempoParzialeTesto) + QStringLiteral(")");
}

} // namespace

QString domanda(const QString &numero, const QString &simboloRichiesto)
{
    return Texts::rtrim(numero) + Texts::rtrim(simboloRichiesto);
}

QString spazi(const QString &domanda)
{
    if (domanda.size() > LarghezzaDomanda)
        return {};
    return Texts::blanks(LarghezzaDomanda - int(domanda.size()));
}

QString inizio(const QString &spazi, const QString &domanda)
{
    return spazi + domanda + QStringLiteral(" = ");
}

QString pezzoEsatto(const QString &rispostaAlunno, const QString &tempoParzialeTesto)
{
    return QStringLiteral("R.") + Texts::trim(rispostaAlunno) + secondi(tempoParzialeTesto);
}

QString spaziRisposta(const QString &rispostaAlunno)
{
    return Texts::blanks(LarghezzaRisposta - int(Texts::trim(rispostaAlunno).size()));
}

QString pezzoErrato(const QString &rispostaAlunno, const QString &segno,
                    const QString &spaziRisposta)
{
    return QStringLiteral("R.") + Texts::rtrim(rispostaAlunno) + segno + spaziRisposta;
}

QString pezzoSoluzione(const QString &risposta, const QString &tempoParzialeTesto)
{
    return QStringLiteral("R.") + Texts::rtrim(risposta) + QStringLiteral("°") +
           secondi(tempoParzialeTesto);
}

} // namespace RigaOperazione
