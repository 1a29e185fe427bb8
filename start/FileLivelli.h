#pragma once

#include <QString>

class AppContext;
class SequentialFile;
struct StatoCondiviso;

// The levels file: the executable's name followed by ".dat", in the working
// directory. The options screen writes its eleven lines there; SalvaLivello
// writes the symbol family alone, and LeggiLivelli can read the family back.
// Every access goes through file 1 of the context's sequential files.
namespace FileLivelli {

// "Quadrivo.dat": NomeEseguibile followed by ".dat".
QString nome(const StatoCondiviso &stato);
// A bare file name as the program opens it: in the working directory.
QString percorso(AppContext &ctx, const QString &nomeFile);
// File 1 of the context.
SequentialFile &file1(AppContext &ctx);

// Opens FileName for input and closes it again; any failure is silent and
// nothing else changes.
void VerificaEsistenzaFile(AppContext &ctx, const QString &FileName);

// Reads the first item of strNomefile + ".dat" as a number into
// FamigliaSimboli. On any failure FamigliaSimboli stays as it was and nothing
// is reported; a failure after the file was opened leaves file 1 open.
void LeggiLivelli(AppContext &ctx, const QString &strNomefile);

// Writes FamigliaSimboli alone, as one printed integer. A file that cannot be
// written is a run-time error.
void SalvaLivello(AppContext &ctx);

// Writes the eleven option lines: background, text option, text colour, the
// three switches, the scanning colours and the three colour indices. A file
// that cannot be written is a run-time error.
void MemorizzaImpostazioni(AppContext &ctx);

} // namespace FileLivelli
