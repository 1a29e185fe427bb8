#include "classe/CodiceScheda.h"

#include "classe/UnitaClasse.h"

// Crockford's letters less V: 31 of them, a prime, so a weighted sum catches
// every single change and every swap of two characters.
const QString CodiceScheda::Alfabeto = QStringLiteral("0123456789ABCDEFGHJKMNPQRSTWXYZ");

namespace {

constexpr std::uint32_t Base = 31;
constexpr int Dati = CodiceScheda::Lunghezza - 1;

std::uint32_t combinazioni()
{
    return 3u * 3u * std::uint32_t(UnitaClasse::Conteggio());
}

std::uint32_t capienza()
{
    std::uint32_t c = 1;
    for (int i = 0; i < Dati; ++i)
        c *= Base;
    return c;
}

// Position i (0-based) weighs i + 2, the check character 1: all different
// and none a multiple of 31.
std::uint32_t controllo(const std::uint32_t (&cifre)[Dati])
{
    std::uint32_t somma = 0;
    for (int i = 0; i < Dati; ++i)
        somma += std::uint32_t(i + 2) * cifre[i];
    return (Base - somma % Base) % Base;
}

int indiceRighe(int righe)
{
    return righe == 10 ? 0 : righe == 20 ? 1 : righe == 30 ? 2 : -1;
}

} // namespace

std::uint32_t CodiceScheda::Semi()
{
    return capienza() / combinazioni();
}

bool CodiceScheda::Valida(const Scelta &s)
{
    return s.tipoNumeri >= 1 && s.tipoNumeri <= 3 && s.unita >= 0 &&
           s.unita < UnitaClasse::Conteggio() && indiceRighe(s.righe) >= 0 && s.seme < Semi();
}

QString CodiceScheda::Componi(const Scelta &s)
{
    Q_ASSERT(Valida(s));
    std::uint32_t valore = ((s.seme * 3u + std::uint32_t(indiceRighe(s.righe))) * 3u +
                            std::uint32_t(s.tipoNumeri - 1)) *
                               std::uint32_t(UnitaClasse::Conteggio()) +
                           std::uint32_t(s.unita);
    std::uint32_t cifre[Dati];
    for (int i = Dati - 1; i >= 0; --i) {
        cifre[i] = valore % Base;
        valore /= Base;
    }
    QString codice;
    for (int i = 0; i < Dati; ++i) {
        codice += Alfabeto.at(cifre[i]);
        if (i == 2)
            codice += QLatin1Char('-');
    }
    codice += Alfabeto.at(controllo(cifre));
    return codice;
}

std::optional<CodiceScheda::Scelta> CodiceScheda::Leggi(const QString &testo, QString *errore)
{
    auto rifiuta = [errore](const QString &perche) -> std::optional<Scelta> {
        if (errore)
            *errore = perche;
        return std::nullopt;
    };
    QString pulito;
    for (QChar c : testo) {
        if (c.isSpace() || c == QLatin1Char('-'))
            continue;
        c = c.toUpper();
        if (c == QLatin1Char('O'))
            c = QLatin1Char('0');
        else if (c == QLatin1Char('I') || c == QLatin1Char('L'))
            c = QLatin1Char('1');
        if (!Alfabeto.contains(c))
            return rifiuta(QStringLiteral("Il carattere \"%1\" non compare nei codici delle "
                                          "schede: controlla il codice.")
                               .arg(c));
        pulito += c;
    }
    if (pulito.isEmpty())
        return rifiuta(QStringLiteral("Scrivi il codice stampato in fondo alla scheda "
                                      "(per esempio K7Q-3PZ)."));
    if (pulito.size() != Lunghezza)
        return rifiuta(QStringLiteral("Il codice ha %1 caratteri (per esempio K7Q-3PZ), "
                                      "ne sono stati scritti %2.")
                           .arg(Lunghezza)
                           .arg(pulito.size()));
    std::uint32_t cifre[Dati];
    std::uint32_t valore = 0;
    for (int i = 0; i < Dati; ++i) {
        cifre[i] = std::uint32_t(Alfabeto.indexOf(pulito.at(i)));
        valore = valore * Base + cifre[i];
    }
    const auto sbagliato = QStringLiteral("Il codice non è quello di una scheda: "
                                          "controlla di averlo copiato bene.");
    if (std::uint32_t(Alfabeto.indexOf(pulito.at(Dati))) != controllo(cifre))
        return rifiuta(sbagliato);
    const std::uint32_t unita = std::uint32_t(UnitaClasse::Conteggio());
    Scelta s;
    s.unita = int(valore % unita);
    valore /= unita;
    s.tipoNumeri = int(valore % 3) + 1;
    valore /= 3;
    s.righe = int(valore % 3 + 1) * 10;
    s.seme = valore / 3;
    if (!Valida(s))
        return rifiuta(sbagliato);
    return s;
}
