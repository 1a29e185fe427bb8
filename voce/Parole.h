#pragma once

#include <QString>

// Numbers, place symbols and units as an Italian teacher reads them aloud:
// "quattrocentosettantatré decine", "quattro virgola zero cinque", "una
// decina", "un metro". No window: the voice turns the drill's texts into
// sentences with it.
namespace Parole {

// A whole number 0..999999 in words: elisions ("ventuno", "trentotto"), the
// accent on a final "tre" ("ventitré"), "mille" and "duemila".
QString intero(qint64 n);

// A number as the drill writes it: digits, perhaps a decimal comma and a
// thousands point ("4,05", "1.250"). The decimals are read as a number after
// "virgola", their leading zeros one by one ("quattro virgola zero cinque").
// An empty text when it is not such a number.
QString numero(const QString &testo);

// Whether the number written reads as one (singular: "una decina").
bool euno(const QString &testo);

// The name of a place symbol or a unit ("da", "uk", "m", "kg", "dal"), singular
// or plural; `misura` tells "m" the metre from "m" the thousandth.
// An empty text for a symbol it does not know.
QString nomeUnita(const QString &simbolo, bool misura, bool plurale);

// A number with its symbol: "quattrocentosettantatré decine", "un metro",
// "una decina", "un'unità", "zero virgola cinque metri".
QString quantita(const QString &numero, const QString &simbolo, bool misura);

// An answer as typed ("4 uk 7 h 3 da"): each digit with its symbol, joined by
// commas ("quattro migliaia, sette centinaia, tre decine"). Pieces it cannot
// read are left out.
QString scomposizione(const QString &risposta, bool misura);

// A letter or sign of the name screen as it is called in Italian ("effe",
// "acca", "virgola").
QString lettera(const QString &testo);

} // namespace Parole
