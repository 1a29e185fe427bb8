// A teachers' sheet of 30 rows built on the worksheet screen and printed on
// the PDF printer into a real file, as a teacher does it with the mouse and
// the keyboard; timed from the choice of the rows to the file written.
//
//   bench_scheda [--ripetizioni N] [--senza-obiettivi]
//
// Each repetition is a fresh context, screen and output directory.
#include "InProcesso.h"

#include "app/Avvio.h"
#include "core/FamiglieSimboli.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "sheets/FrmStampaSchede.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr int Righe = 30;

// A click or a key, and the repaint it causes.
void clic(const Control &c)
{
    ScreenTest::click(c);
    QApplication::processEvents();
}
void tasto(Qt::Key k)
{
    ScreenTest::key(k);
    QApplication::processEvents();
}

// One sheet printed; the milliseconds it took, or -1 (and why, on stderr)
// when no proper PDF came out.
double unaScheda()
{
    QTemporaryDir cartella;
    if (!cartella.isValid()) {
        std::fprintf(stderr, "no temporary directory\n");
        return -1;
    }
    TestContext t;
    StatoCondiviso &s = t->stato;
    // The state the start screen leaves behind: the first family, its titles.
    s.FamigliaSimboli = 1;
    FamiglieSimboli::applica(s, 1);
    s.TitoloArgomento = QStringLiteral("SISTEMA DECIMALE");
    s.SottotitoloArgomento = QStringLiteral("Scomposizione dei numeri");
    s.DescrizioneSimboli = QStringLiteral(" simboli decrescenti");

    auto pdf = std::make_unique<PdfFilePrinter>(*t);
    PdfFilePrinter *stampante = pdf.get();
    stampante->setOutputDirectory(cartella.path());
    std::vector<std::unique_ptr<Printer>> elenco;
    elenco.push_back(std::move(pdf));
    t->setPrinters(std::make_unique<Printers>(std::move(elenco)));

    FrmStampaSchede &schermo = t->form<FrmStampaSchede>();
    if (!ScreenTest::showActive(schermo)) {
        std::fprintf(stderr, "the worksheet screen did not become active\n");
        return -1;
    }
    QApplication::processEvents();
    auto scelta = [&](const char *gruppo, int i) -> OptionButton & {
        return schermo.get<OptionButton>(gruppo, i);
    };

    QElapsedTimer cronometro;
    cronometro.start();
    clic(scelta("Opt1", 2)); // 30 rows
    // Integers and decimals, chosen with the keyboard (a mouse choice of the
    // kind leaves the sheet one row longer).
    scelta("Option1", 2).SetFocus();
    tasto(Qt::Key_Return);
    clic(scelta("Option2", 0)); // the rows are drawn
    clic(schermo.get<CommandButton>("CmdVisualizzaSchedaDocenti"));
    clic(schermo.get<CommandButton>("CmdStampaSchedaDocenti"));
    const double ms = double(cronometro.nsecsElapsed()) / 1e6;

    QFile file(stampante->lastFile());
    const bool aperto = !stampante->lastFile().isEmpty() && file.open(QIODevice::ReadOnly);
    const QByteArray contenuto = aperto ? file.readAll() : QByteArray();
    const bool pdfIntero = contenuto.startsWith("%PDF-") && contenuto.trimmed().endsWith("%%EOF");
    if (s.NumeroRighe != Righe || s.SchedaDaStampare != 2 || s.RigheDocenti[Righe].isEmpty() ||
        s.Operazioni[Righe] != s.RigheDocenti[Righe] || !pdfIntero ||
        t.notices->notices.size() != 1 || !t.boxes->boxes.isEmpty() ||
        !t.errors->errors.isEmpty()) {
        std::fprintf(stderr,
                     "the sheet went wrong: rows %d, sheet %d, PDF %s (%lld bytes), notices %d, "
                     "message boxes %d, errors %d\n",
                     int(s.NumeroRighe.value()), int(s.SchedaDaStampare.value()),
                     qPrintable(stampante->lastFile()), qlonglong(contenuto.size()),
                     int(t.notices->notices.size()), int(t.boxes->boxes.size()),
                     int(t.errors->errors.size()));
        return -1;
    }
    return ms;
}

} // namespace

int main(int argc, char *argv[])
{
    return Banco::inProcesso(argc, argv, "sheet", "30-row teachers' sheet built and printed to PDF", 150, unaScheda);
}
