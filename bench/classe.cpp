// A class set of 40 copies of 30 rows with their keys (80 pages) made and
// printed on the PDF printer into a real file; timed from the first copy to
// the file written. The file must be a whole PDF under 2 MB.
//
//   bench_classe [--ripetizioni N] [--senza-obiettivi]
#include "InProcesso.h"

#include "classe/SerieClasse.h"
#include "classe/StampaClasse.h"
#include "classe/UnitaClasse.h"
#include "core/FamiglieSimboli.h"
#include "platform/printing/PdfFilePrinter.h"
#include "support/TestDoubles.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr int Copie = 40;
constexpr qint64 MassimoByte = 2 * 1024 * 1024;

double unaSerie()
{
    QTemporaryDir cartella;
    if (!cartella.isValid()) {
        std::fprintf(stderr, "no temporary directory\n");
        return -1;
    }
    TestContext t;
    StatoCondiviso &s = t->stato;
    s.FamigliaSimboli = 3;
    FamiglieSimboli::applica(s, 3);
    PdfFilePrinter stampante(*t);
    stampante.setOutputDirectory(cartella.path());

    QElapsedTimer cronometro;
    cronometro.start();
    SerieClasse serie(3, UnitaClasse::IndiceDi(s), 30, 20261121);
    for (int k = 0; k < Copie; ++k)
        serie.Aggiungi();
    QList<StampaClasse::Foglio> fogli;
    for (bool docenti : {false, true}) {
        int n = 0;
        for (const auto &c : serie.Copie())
            fogli.append({docenti ? c.docenti : c.alunni, docenti,
                          QStringLiteral("Scheda %1 - codice %2").arg(++n).arg(c.codice)});
    }
    const bool stampata =
        StampaClasse(stampante, QStringLiteral("Scomposizione dei numeri")).Stampa(fogli);
    const double ms = double(cronometro.nsecsElapsed()) / 1e6;

    QFile file(stampante.lastFile());
    const bool aperto = file.open(QIODevice::ReadOnly);
    const QByteArray contenuto = aperto ? file.readAll() : QByteArray();
    if (!stampata || !contenuto.startsWith("%PDF-") || contenuto.size() > MassimoByte ||
        !contenuto.trimmed().endsWith("%%EOF")) {
        std::fprintf(stderr, "the set went wrong: printed %d, %lld bytes\n", int(stampata),
                     qlonglong(contenuto.size()));
        return -1;
    }
    std::fprintf(stderr, "PDF of %lld bytes\n", qlonglong(contenuto.size()));
    return ms;
}

} // namespace

int main(int argc, char *argv[])
{
    return Banco::inProcesso(argc, argv, "classe",
                              "40 copies with keys (80 pages) made and printed to PDF, < 2 MB",
                              1000, unaSerie);
}
