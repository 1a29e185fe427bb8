#include "start/FileLivelli.h"

#include "core/AppContext.h"
#include "platform/Suppressed.h"
#include "platform/Texts.h"
#include "start/SequentialFile.h"

#include <QDir>
#include <cmath>

namespace {

// A number read into a 16-bit integer: rounded half to even, and beyond
// -32768..32767 the overflow error.
Int16 intero(double valore)
{
    const double arrotondato = std::nearbyint(valore);
    if (!(arrotondato >= -32768 && arrotondato <= 32767))
        throw RuntimeError(RuntimeError::Overflow);
    return Int16(static_cast<int>(arrotondato));
}

// Booleans are printed as words.
QString stampato(bool valore)
{
    return valore ? QStringLiteral("True") : QStringLiteral("False");
}

} // namespace

namespace FileLivelli {

QString nome(const StatoCondiviso &stato)
{
    return stato.NomeEseguibile + QStringLiteral(".dat");
}

QString percorso(AppContext &ctx, const QString &nomeFile)
{
    // An empty name stays empty: it names no file at all.
    if (nomeFile.isEmpty())
        return {};
    return QDir(ctx.workingDirectory()).filePath(nomeFile);
}

SequentialFile &file1(AppContext &ctx)
{
    return SequentialFile::number(ctx, 1);
}

void VerificaEsistenzaFile(AppContext &ctx, const QString &FileName)
{
    SequentialFile &file = file1(ctx);
    if (trySuppressed([&] { file.openForInput(percorso(ctx, FileName)); }))
        file.close();
}

void LeggiLivelli(AppContext &ctx, const QString &strNomefile)
{
    SequentialFile &file = file1(ctx);
    try {
        file.openForInput(percorso(ctx, strNomefile + QStringLiteral(".dat")));
        ctx.stato.FamigliaSimboli = intero(file.inputNumber());
        file.close();
    } catch (const RuntimeError &) {
        // The family stays as it was; a file opened before the failure stays
        // open until the next writer closes it.
    }
}

void SalvaLivello(AppContext &ctx)
{
    SequentialFile &file = file1(ctx);
    file.close();
    file.openForOutput(percorso(ctx, nome(ctx.stato)));
    file.printLine(Texts::printed(ctx.stato.FamigliaSimboli));
    file.close();
}

void MemorizzaImpostazioni(AppContext &ctx)
{
    const StatoCondiviso &s = ctx.stato;
    SequentialFile &file = file1(ctx);
    file.close();
    file.openForOutput(percorso(ctx, nome(s)));
    file.printLine(s.ColoreSfondo);
    file.printLine(s.OpzioneTesto);
    file.printLine(s.ColoreCaratteri);
    file.printLine(stampato(s.OpzioneA));
    file.printLine(stampato(s.OpzioneB));
    file.printLine(stampato(s.OpzioneC));
    file.printLine(s.ColoreScansioneChiaro);
    file.printLine(s.ColoreScansioneScuro);
    file.printLine(Texts::printed(s.IndiceSfondo));
    file.printLine(Texts::printed(s.IndiceScansione));
    file.printLine(Texts::printed(s.IndiceCaratteri));
    file.close();
}

} // namespace FileLivelli
