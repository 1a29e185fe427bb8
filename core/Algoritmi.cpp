#include "core/Algoritmi.h"

#include "core/AppContext.h"
#include "platform/Texts.h"

#include <array>
#include <cmath>

namespace {

// One exercise type: its digits (w, x, y, z or a literal 0, a leading 0 for
// numbers below 1), how many of them stand after the decimal comma, and the
// symbol (1..4) of the question. The answer follows from these: the units
// digit carries the question symbol, each place to its left the symbol before
// it, each place to its right the symbol after it.
struct TipoEsercizio
{
    const char *cifre;
    int decimali;
    int simbolo;
};

constexpr std::array<TipoEsercizio, 44> Tipi = {{
    {"wx", 0, 2},   {"wx", 0, 3},   {"xy", 0, 3},   {"wxy", 0, 4},  {"xy0", 0, 4},  {"x0z", 0, 4},
    {"wx0", 0, 3},  {"wx00", 0, 4}, {"w0y", 0, 3},  {"w0y0", 0, 4}, {"w00z", 0, 4}, {"wxy", 0, 3},
    {"wxy0", 0, 4}, {"w0yz", 0, 4}, {"wxyz", 0, 4}, {"wx0z", 0, 4}, {"x0z", 2, 2},  {"x0z", 1, 3},
    {"xy", 1, 2},   {"xyz", 2, 2},  {"xyz", 1, 3},  {"0yz", 2, 2},  {"yz", 1, 3},   {"w0y", 2, 1},
    {"w0y", 1, 2},  {"wx", 1, 1},   {"w00z", 3, 1}, {"w00z", 2, 2}, {"w00z", 1, 3}, {"wxy", 2, 1},
    {"wxy", 1, 2},  {"wx0z", 3, 1}, {"wx0z", 2, 2}, {"wx0z", 1, 3}, {"w0yz", 3, 1}, {"w0yz", 2, 2},
    {"w0yz", 1, 3}, {"0xy", 2, 1},  {"0x0z", 3, 1}, {"0xyz", 3, 1}, {"00yz", 3, 1}, {"wxyz", 3, 1},
    {"wxyz", 2, 2}, {"wxyz", 1, 3},
}};

} // namespace

int Algoritmi::intero(double r, int k, int base) const
{
    return Int16::checked(static_cast<long long>(std::floor(r * k)) + base);
}

void Algoritmi::GeneraEsercizio()
{
    StatoCondiviso &s = m_ctx.stato;
    RandomSource &rnd = m_ctx.random();

    rnd.reseed(static_cast<float>(m_ctx.clock().secondsSinceMidnight()));
    estraiTipo();

    s.Numero.clear();
    s.Risposta.clear();
    s.SimboloRichiesto.clear();

    rnd.reseed(static_cast<float>(m_ctx.clock().secondsSinceMidnight()));
    s.Cifra1 = static_cast<std::uint8_t>(intero(rnd.next(), 9, 1));
    s.Cifra2 = static_cast<std::uint8_t>(intero(rnd.next(), 9, 1));
    s.Cifra3 = static_cast<std::uint8_t>(intero(rnd.next(), 9, 1));
    s.Cifra4 = static_cast<std::uint8_t>(intero(rnd.next(), 9, 1));

    emit m_ctx.tipoEsercizioGenerato(s.TipoEsercizio);

    costruisciEsercizio();
}

void Algoritmi::estraiTipo()
{
    StatoCondiviso &s = m_ctx.stato;
    RandomSource &rnd = m_ctx.random();
    const bool treSimboli = s.NumeroCifre == 3;

    switch (s.TipoNumeri) {
    case 1:
        s.TipoEsercizio = treSimboli ? intero(rnd.next(), 6, 1) : intero(rnd.next(), 10, 7);
        break;
    case 2:
        s.TipoEsercizio = treSimboli ? intero(rnd.next(), 6, 17) : intero(rnd.next(), 22, 23);
        break;
    case 3:
        s.TipoEstratto = intero(rnd.next(), 2, 1);
        if (s.TipoEstratto == 1)
            s.TipoEsercizio = treSimboli ? intero(rnd.next(), 6, 1) : intero(rnd.next(), 10, 7);
        else
            // Base 16, one below the decimals-only draw: a mixed three-symbol
            // draw can give type 16 and never 22. That is how it has always been.
            s.TipoEsercizio = treSimboli ? intero(rnd.next(), 6, 16) : intero(rnd.next(), 22, 23);
        break;
    default:
        break; // no choice made: the previous type stays
    }
}

void Algoritmi::costruisciEsercizio()
{
    StatoCondiviso &s = m_ctx.stato;
    if (s.TipoEsercizio < PrimoTipo || s.TipoEsercizio > UltimoTipo)
        return;

    const TipoEsercizio &tipo = Tipi[static_cast<std::size_t>(s.TipoEsercizio - 1)];
    const std::array<const QString *, 4> simboli = {&s.Simbolo1, &s.Simbolo2, &s.Simbolo3,
                                                    &s.Simbolo4};
    const QString cifre = QString::fromLatin1(tipo.cifre);
    const int unita = int(cifre.size()) - 1 - tipo.decimali;

    Int16 valore = 0;
    QString risposta;
    for (int i = 0; i < cifre.size(); ++i) {
        int cifra = 0;
        switch (cifre[i].toLatin1()) {
        case 'w':
            cifra = s.Cifra1;
            break;
        case 'x':
            cifra = s.Cifra2;
            break;
        case 'y':
            cifra = s.Cifra3;
            break;
        case 'z':
            cifra = s.Cifra4;
            break;
        default:
            cifra = 0;
            break;
        }
        valore = valore * 10 + cifra;
        const int simbolo = tipo.simbolo - (unita - i);
        risposta += QString::number(cifra) + *simboli[static_cast<std::size_t>(simbolo - 1)];
    }

    if (tipo.decimali == 0)
        s.Numero = Texts::fromInt(valore);
    else
        s.Numero = Texts::fromDouble(valore / std::pow(10.0, tipo.decimali));
    s.SimboloRichiesto = *simboli[static_cast<std::size_t>(tipo.simbolo - 1)];
    s.Risposta = risposta;
}
