#include "certificate/FrmAttestato.h"
#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/Twips.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "platform/printing/RecordingPrinter.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QFontMetricsF>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace ScreenTest;

namespace {

// A test context with the start screen's texts in the shared state; its only
// printer records what it is asked to do.
struct Contesto
{
    TestContext t;
    RecordingPrinter *stampante;

    Contesto() : stampante(t.printer)
    {
        t->stato.TitoloArgomento = QStringLiteral("SISTEMA DECIMALE");
        t->stato.SottotitoloArgomento = QStringLiteral("Scomposizione dei numeri");
        t->stato.RigaSimboli = QStringLiteral(" unità,    decimi, centesimi, millesimi");
    }
    AppContext &operator*() { return *t; }
    AppContext *operator->() { return t.ctx.get(); }
};

QStringList testi(const PictureBox &p)
{
    QStringList out;
    for (const auto &r : p.printedLines())
        out << r.text;
    return out;
}

} // namespace

class TestFrmAttestato : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void cleanup() { settle(); }

    void theCertificateHasItsTwentySevenLines()
    {
        Contesto c;
        c->stato.EsatteComplessive = 17;
        c->stato.NumeroEsercizio = 20;
        auto &f = c->form<FrmAttestato>();
        const auto &p = f.get<PictureBox>("Picture1");
        const QStringList atteso = {"",
                                    "",
                                    "",
                                    "",
                                    "",
                                    "DIPLOMA DI MERITO",
                                    "RILASCIATO A",
                                    "",
                                    "",
                                    "",
                                    "per aver eseguito",
                                    "",
                                    "SISTEMA DECIMALE",
                                    "",
                                    "Scomposizione dei numeri",
                                    "",
                                    " unità,    decimi, centesimi, millesimi",
                                    "",
                                    "con la valutazione di",
                                    "",
                                    "DISTINTO",
                                    "",
                                    "con 17 risposte esatte su 20 richieste",
                                    "",
                                    "",
                                    "",
                                    "Data  16/11/2026       ora 10:00:00"};
        QCOMPARE(testi(p), atteso);
        QCOMPARE(c->stato.Valutazione, QStringLiteral("DISTINTO"));
        QVERIFY(f.get<OptionButton>("Option5", 0).Enabled());
        QCOMPARE(f.Caption(), QStringLiteral("Form1"));
        QCOMPARE(f.ScaleWidth(), 11940.0);
        QCOMPARE(f.ScaleHeight(), 8820.0);

        const auto &righe = p.printedLines();
        struct Stile
        {
            int riga;
            double size;
            bool bold;
            QColor colore;
        };
        const QList<Stile> stili = {
            {6, 20, true, Qt::red},     {7, 20, true, Qt::black},   {9, 20, true, Qt::red},
            {11, 12, false, Qt::black}, {13, 14, true, Qt::black},  {15, 14, false, Qt::black},
            {17, 14, false, Qt::black}, {19, 12, false, Qt::black}, {21, 14, true, Qt::red},
            {23, 12, false, Qt::black}, {27, 12, false, Qt::black}};
        for (const Stile &s : stili) {
            const auto &r = righe[s.riga - 1];
            QCOMPARE(r.font.pointSizeF(), s.size);
            QCOMPARE(r.font.bold(), s.bold);
            QCOMPARE(r.color, s.colore);
            QCOMPARE(r.font.family().toLower(), QStringLiteral("arial"));
            if (!r.text.isEmpty())
                QVERIFY(qAbs(r.x + QFontMetricsF(r.font, p.widget()).horizontalAdvance(r.text) / 2 -
                             p.ScaleWidth() / 2) < 0.5);
        }
        // The first five lines are in the screen's own font.
        QCOMPARE(righe[0].font.pointSizeF(), 8.25);
        QVERIFY(righe[0].font.bold());
        // Lines follow one another downwards.
        for (int i = 1; i < righe.size(); ++i)
            QVERIFY(righe[i].y > righe[i - 1].y);
    }

    void noSeriesGivesZeroOfZeroAndNoPrinting()
    {
        Contesto c;
        auto &f = c->form<FrmAttestato>();
        const QStringList righe = testi(f.get<PictureBox>("Picture1"));
        QCOMPARE(righe[22], QStringLiteral("con 0 risposte esatte su 0 richieste"));
        QCOMPARE(righe[20], QStringLiteral("Non classificato"));
        auto &stampa = f.get<OptionButton>("Option5", 0);
        QCOMPARE(stampa.Caption(), QStringLiteral("ATTESTATO NON STAMPABILE"));
        QVERIFY(!stampa.Enabled());
        QVERIFY(f.get<OptionButton>("Option5", 1).Enabled());
    }

    void theNameLineIsEmptyUnlessANameWasSet()
    {
        Contesto c;
        auto &f = c->form<FrmAttestato>();
        QCOMPARE(testi(f.get<PictureBox>("Picture1"))[8], QString());
        f.Unload();
        settle();
        c->stato.NomeAttestato = QStringLiteral("rOSSI mario");
        auto &g = c->form<FrmAttestato>();
        QCOMPARE(c->stato.NomeAttestato, QStringLiteral("Rossi mario"));
        QCOMPARE(testi(g.get<PictureBox>("Picture1"))[8], QStringLiteral("Rossi mario"));
    }

    void aLineWiderThanTheBoxIsCutOnTheLeft()
    {
        Contesto c;
        c->stato.RigaSimboli = QString(200, QLatin1Char('m'));
        auto &f = c->form<FrmAttestato>();
        const auto &riga = f.get<PictureBox>("Picture1").printedLines()[16];
        QCOMPARE(riga.text, c->stato.RigaSimboli);
        QVERIFY(riga.x < 0);
    }

    void printingSendsABlankLineThenThePictureAndEndsThePage()
    {
        Contesto c;
        c->stato.EsatteComplessive = 19;
        c->stato.NumeroEsercizio = 20;
        auto &f = c->form<FrmAttestato>();
        QVERIFY(showActive(f));
        mouseDown(f.get<OptionButton>("Option5", 0));
        mouseUp(f.get<OptionButton>("Option5", 0));
        mouseDown(f.get<OptionButton>("Option5", 0));
        QCOMPARE(c.stampante->documents, 2);
        QCOMPARE(c.stampante->pictures.size(), 2);
        const auto &box = f.get<PictureBox>("Picture1");
        QCOMPARE(c.stampante->pictures[0].size(), box.widget()->size());
        QCOMPARE(c.stampante->lines.size(), 2);
        QCOMPARE(c.stampante->lines[0].text, QString());
        const int fine = int(c.stampante->calls.indexOf(QStringLiteral("EndDoc")));
        QVERIFY(fine > 0);
        const QStringList prima = c.stampante->calls.mid(0, fine + 1);
        QVERIFY(prima.first().startsWith(QStringLiteral("Print")));
        QVERIFY(prima.filter(QStringLiteral("PaintPicture"))
                    .value(0)
                    .endsWith(QStringLiteral("at 1000,100")));
        QCOMPARE(c.stampante->calls.count(QStringLiteral("EndDoc")), 2);
        QVERIFY(c.t.errors->errors.isEmpty());
    }

    void thePrintedPictureHasTheSizeOfTheBoxAtThatMoment()
    {
        Contesto c;
        c->stato.EsatteComplessive = 20;
        c->stato.NumeroEsercizio = 20;
        auto &f = c->form<FrmAttestato>();
        const QImage disegno = f.get<PictureBox>("Picture1").image();
        f.setInnerSize(11940 * 2, 8820 * 2);
        // The drawing is not made again at the new size.
        QCOMPARE(f.get<PictureBox>("Picture1").image().copy(QRect(QPoint(0, 0), disegno.size())),
                 disegno);
        f.EseguiScelta(0);
        QCOMPARE(c.stampante->pictures[0].size(), f.get<PictureBox>("Picture1").widget()->size());
        QCOMPARE(c.stampante->pictures[0].width(), Twips::toPixels(6690 * 2));
    }

    void keyThreeThenEnterEndsTheSession()
    {
        Contesto c;
        auto &f = c->form<FrmAttestato>();
        QVERIFY(showActive(f));
        f.get<OptionButton>("Option5", 1).SetFocus();
        QSignalSpy vuoto(&c->screens(), &ScreenRegistry::empty);
        key(Qt::Key_3);
        QCOMPARE(focusedControl(f), &f.get<OptionButton>("Option5", 2));
        key(Qt::Key_Return);
        QCOMPARE(vuoto.count(), 1);
    }

    void keysMoveTheFocusOncePerPressAndOthersAreSwallowed()
    {
        Contesto c;
        c->stato.EsatteComplessive = 20;
        c->stato.NumeroEsercizio = 20;
        auto &f = c->form<FrmAttestato>();
        QVERIFY(showActive(f));
        f.get<OptionButton>("Option5", 2).SetFocus();
        keypad(Qt::Key_1);
        QCOMPARE(focusedControl(f), &f.get<OptionButton>("Option5", 0));
        key(Qt::Key_2);
        QCOMPARE(focusedControl(f), &f.get<OptionButton>("Option5", 1));
        key(Qt::Key_A);
        key(Qt::Key_4);
        QCOMPARE(focusedControl(f), &f.get<OptionButton>("Option5", 1));
        holdKey(Qt::Key_Space, 4);
        QCOMPARE(focusedControl(f), &f.get<OptionButton>("Option5", 2));
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(f), &f.get<OptionButton>("Option5", 0));
        QCOMPARE(f.get<OptionButton>("Option5", 0).BackColor(), QColor(255, 192, 128));
        QCOMPARE(f.get<OptionButton>("Option5", 2).BackColor(), QColor(255, 224, 192));
        QVERIFY(c.t.errors->errors.isEmpty());
        QCOMPARE(c.stampante->documents, 0);
    }

    void backReturnsToThePreviousScreen()
    {
        Contesto c;
        auto &f = c->form<FrmAttestato>();
        QVERIFY(showActive(f));
        mouseDown(f.get<OptionButton>("Option5", 1));
        QVERIFY(!c->screens().isLoaded<FrmAttestato>());
    }

    void tabOrderStartsWithThePictureThenTheButtonsBackwards()
    {
        Contesto c;
        auto &f = c->form<FrmAttestato>();
        QWidget *w = f.get<PictureBox>("Picture1").widget();
        QCOMPARE(w->nextInFocusChain(), f.get<OptionButton>("Option5", 2).widget());
        QCOMPARE(f.get<OptionButton>("Option5", 2).widget()->nextInFocusChain(),
                 f.get<OptionButton>("Option5", 1).widget());
        QCOMPARE(f.get<OptionButton>("Option5", 1).widget()->nextInFocusChain(),
                 f.get<OptionButton>("Option5", 0).widget());
    }

    void printedOnThePdfPrinterThePictureStandsAtItsPlace()
    {
        QTemporaryDir cartella;
        TestContext t;
        t->setWorkingDirectory(cartella.path());
        auto pdf = std::make_unique<PdfFilePrinter>(*t);
        PdfFilePrinter *stampante = pdf.get();
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(pdf));
        t->setPrinters(std::make_unique<Printers>(std::move(elenco)));
        t->stato.EsatteComplessive = 18;
        t->stato.NumeroEsercizio = 20;
        auto &f = t->form<FrmAttestato>();
        f.EseguiScelta(0);
        QVERIFY(t.errors->errors.isEmpty());
        const QString file = stampante->lastFile();
        QVERIFY(QFile::exists(file));

        QProcess pdftoppm;
        pdftoppm.start(QStringLiteral("pdftoppm"),
                       {QStringLiteral("-r"), QStringLiteral("72"), QStringLiteral("-png"),
                        QStringLiteral("-singlefile"), file,
                        cartella.filePath(QStringLiteral("pagina"))});
        QVERIFY(pdftoppm.waitForFinished(30000));
        QCOMPARE(pdftoppm.exitCode(), 0);
        QImage pagina(cartella.filePath(QStringLiteral("pagina.png")));
        QVERIFY(!pagina.isNull());
        // A4 at 72 dpi: 595 x 842 points. The picture is 446 x 588 pixels of 15
        // twips, i.e. 334.5 x 441 points, from (50, 5) points past the margin.
        QCOMPARE(pagina.size(), QSize(595, 842));
        auto inchiostro = [&](QRect area) {
            int n = 0;
            for (int y = area.top(); y <= area.bottom(); ++y)
                for (int x = area.left(); x <= area.right(); ++x)
                    if (qGray(pagina.pixel(x, y)) < 200)
                        ++n;
            return n;
        };
        const QRect tuttaLaPagina = pagina.rect();
        int sinistra = pagina.width(), destra = 0, alto = pagina.height(), basso = 0;
        for (int y = 0; y < pagina.height(); ++y)
            for (int x = 0; x < pagina.width(); ++x)
                if (qGray(pagina.pixel(x, y)) < 200) {
                    sinistra = std::min(sinistra, x);
                    destra = std::max(destra, x);
                    alto = std::min(alto, y);
                    basso = std::max(basso, y);
                }
        QVERIFY(inchiostro(tuttaLaPagina) > 1000);
        // What is printed is the picture: about 334 x 441 points wide and tall.
        QVERIFY2(qAbs((destra - sinistra) - 334) < 20,
                 qPrintable(QString::number(destra - sinistra)));
        QVERIFY2(qAbs((basso - alto) - 441) < 20, qPrintable(QString::number(basso - alto)));
        // ... standing 1000 twips (50 points) right of the printable area's edge.
        QVERIFY(sinistra > 50 && sinistra < 120);
    }
};

QTEST_MAIN(TestFrmAttestato)
#include "tst_frmattestato.moc"
