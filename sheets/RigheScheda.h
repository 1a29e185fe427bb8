#pragma once

#include <QString>
#include <optional>

class AppContext;

// The rows of the worksheets, built and laid out without any window: a
// pupils' row is the question with a dotted space for the answer, a teachers'
// row the same followed by the solution. Columns line up in a monospace font.
class RigheScheda
{
public:
    // The number is right-aligned in 10 places, the symbol in 5; the
    // teacher's solution starts after a blank fill of 17 less its length.
    static constexpr int LarghezzaNumero = 10;
    static constexpr int LarghezzaSimbolo = 5;
    static constexpr int LarghezzaSoluzione = 17;
    // What follows the question on both sheets.
    static QString SpazioRisposta();

    explicit RigheScheda(AppContext &ctx) : m_ctx(ctx) {}

    // Rows 1 .. NumeroRighe of both sheets into RigheAlunni and RigheDocenti,
    // one generator call per row. RigaScheda is the loop counter and is left
    // one past the last row.
    void CostruisciRighe();

    static QString RigaAlunni(const QString &Numero, const QString &SimboloRichiesto);
    static QString RigaDocenti(const QString &rigaAlunni, const QString &Risposta);

    // A number with its thousands grouped by full stops and its decimals as
    // they are (4700 -> "4.700", 1234,5 -> "1.234,5", 0,47 -> "0,47"). An
    // integer part beyond 32 bits is the overflow run-time error.
    static QString FormattaNumero(double N);

    // Where a printed row stands, twips from the top of the page: three
    // blocks of ten rows. Nothing for a row outside them.
    static std::optional<double> PosizioneStampa(int riga);

private:
    AppContext &m_ctx;
};
