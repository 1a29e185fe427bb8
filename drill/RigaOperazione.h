#pragma once

#include <QString>

// The pieces of an exercise's record line, as the report lists them: the
// question right-aligned in 12 characters, then one piece per attempt.
//   right:        P Q " = " "R." answer " (Sec." S ")"
//   wrong:        P Q " = " "R." answer "* " blanks ... (then the shown answer)
//   shown answer: "R." expected "°" " (Sec." S ")"
namespace RigaOperazione {

// The question: the number followed by its symbol, trailing blanks dropped.
QString domanda(const QString &numero, const QString &simboloRichiesto);

// Blanks that right-align the question in 12 characters; none when longer.
QString spazi(const QString &domanda);

// The start of the line: blanks, question and " = ".
QString inizio(const QString &spazi, const QString &domanda);

// A right answer with its seconds.
QString pezzoEsatto(const QString &rispostaAlunno, const QString &tempoParzialeTesto);

// Blanks after a wrong answer: 22 less its trimmed length, so the next "R."
// stays in one column of the report.
QString spaziRisposta(const QString &rispostaAlunno);

// A wrong answer: "R." + answer + mark + blanks (26 characters wide for an
// answer of up to 22).
QString pezzoErrato(const QString &rispostaAlunno, const QString &segno,
                    const QString &spaziRisposta);

// The answer the program supplied, marked with a degree sign, and the seconds.
QString pezzoSoluzione(const QString &risposta, const QString &tempoParzialeTesto);

} // namespace RigaOperazione
