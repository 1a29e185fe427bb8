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
#include <QPainter>
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

    void thePreviewHoldsOnlyTheLinesOfTheCertificate()
    {
        Contesto c;
        c->stato.EsatteComplessive = 17;
        c->stato.NumeroEsercizio = 20;
        auto &f = c->form<FrmAttestato>();
        const auto &box = f.get<PictureBox>("Picture1");
        const QImage anteprima = box.Image();
        const QColor fondo = box.widget()->palette().color(QPalette::Window);
        // Every dot that is not background belongs to one of the texts: no
        // border, no ornament.
        QList<QRectF> righe;
        for (const auto &r : box.printedLines())
            if (!r.text.isEmpty())
                righe << QRectF(r.x, r.y,
                                QFontMetricsF(r.font, box.widget()).horizontalAdvance(r.text),
                                QFontMetricsF(r.font, box.widget()).height())
                             .adjusted(-2, -1, 2, 1);
        QCOMPARE(righe.size(), 10); // the name line is blank
        int inchiostro = 0;
        for (int y = 0; y < anteprima.height(); ++y)
            for (int x = 0; x < anteprima.width(); ++x) {
                if (anteprima.pixelColor(x, y) == fondo)
                    continue;
                ++inchiostro;
                const QPointF punto(x + 0.5, y + 0.5);
                QVERIFY2(
                    std::any_of(righe.begin(), righe.end(),
                                [&](const QRectF &r) { return r.contains(punto); }),
                    qPrintable(QStringLiteral("dot outside the texts at %1,%2").arg(x).arg(y)));
            }
        QVERIFY(inchiostro > 1000);
    }

    void printedOnThePdfPrinterThePictureIsThePreviewDrawnSharp()
    {
        QTemporaryDir cartella;
        TestContext t;
        t->setWorkingDirectory(cartella.path());
        auto pdf = std::make_unique<PdfFilePrinter>(*t);
        PdfFilePrinter *stampante = pdf.get();
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(pdf));
        t->setPrinters(std::make_unique<Printers>(std::move(elenco)));
        t->stato.TitoloArgomento = QStringLiteral("SISTEMA DECIMALE");
        t->stato.SottotitoloArgomento = QStringLiteral("Scomposizione dei numeri");
        t->stato.EsatteComplessive = 18;
        t->stato.NumeroEsercizio = 20;
        auto &f = t->form<FrmAttestato>();
        const QImage anteprima = f.get<PictureBox>("Picture1").Image();
        f.EseguiScelta(0);
        QVERIFY(t.errors->errors.isEmpty());
        const QString file = stampante->lastFile();
        QVERIFY(QFile::exists(file));

        auto esegui = [](const QString &programma, const QStringList &argomenti) {
            QProcess p;
            p.start(programma, argomenti);
            if (!p.waitForFinished(30000) || p.exitCode() != 0)
                return QStringLiteral("FAILED ") + programma;
            return QString::fromLocal8Bit(p.readAllStandardOutput());
        };
        // Text as text in real, embedded fonts, and no bitmap at all.
        const QString caratteri = esegui(QStringLiteral("pdffonts"), {file});
        QVERIFY2(caratteri.contains(QStringLiteral("LiberationSans-Bold")), qPrintable(caratteri));
        QVERIFY2(caratteri.contains(QStringLiteral("LiberationSans ")) ||
                     caratteri.contains(QStringLiteral("LiberationSans-Regular")),
                 qPrintable(caratteri));
        const QString immagini =
            esegui(QStringLiteral("pdfimages"), {QStringLiteral("-list"), file});
        QVERIFY2(!immagini.startsWith(QStringLiteral("FAILED")), qPrintable(immagini));
        QCOMPARE(immagini.trimmed().split(QLatin1Char('\n')).size(), 2); // the heading only
        const QString testo = esegui(QStringLiteral("pdftotext"), {file, QStringLiteral("-")});
        QVERIFY2(testo.contains(QStringLiteral("DIPLOMA DI MERITO")), qPrintable(testo));
        QVERIFY2(testo.contains(QStringLiteral("con 18 risposte esatte su 20 richieste")),
                 qPrintable(testo));

        // At 96 dots per inch a dot of the page is a pixel of the preview.
        QVERIFY(!esegui(QStringLiteral("pdftoppm"),
                        {QStringLiteral("-r"), QStringLiteral("96"), QStringLiteral("-png"),
                         QStringLiteral("-singlefile"), file,
                         cartella.filePath(QStringLiteral("pagina"))})
                     .startsWith(QStringLiteral("FAILED")));
        const QImage pagina(cartella.filePath(QStringLiteral("pagina.png")));
        QCOMPARE(pagina.size(), QSize(794, 1123));
        // 18 points of margin, then 1000 twips across and 100 down.
        const QPoint angolo(qRound(24 + 1000 / 15.0), qRound(24 + 100 / 15.0));
        const QImage stampata = pagina.copy(QRect(angolo, anteprima.size()));
        if (qEnvironmentVariableIsSet("QUADRIVO_ATTESTATO_PNG")) {
            // For a person to look at: the preview beside the printout.
            const QString dove = qEnvironmentVariable("QUADRIVO_ATTESTATO_PNG");
            anteprima.save(dove + QStringLiteral("-anteprima.png"));
            stampata.save(dove + QStringLiteral("-stampata.png"));
            pagina.save(dove + QStringLiteral("-pagina.png"));
            QFile::remove(dove + QStringLiteral(".pdf"));
            QFile::copy(file, dove + QStringLiteral(".pdf"));
        }
        auto inchiostro = [](const QImage &img, int x, int y) {
            return x >= 0 && y >= 0 && x < img.width() && y < img.height() &&
                   qGray(img.pixel(x, y)) < 128;
        };
        // Each dark dot of either has a dark dot of the other within two dots
        // (the screen's hinted letters are a little wider).
        auto coperti = [&](const QImage &da, const QImage &in) {
            int tutti = 0, trovati = 0;
            for (int y = 0; y < da.height(); ++y)
                for (int x = 0; x < da.width(); ++x) {
                    if (!inchiostro(da, x, y))
                        continue;
                    ++tutti;
                    bool vicino = false;
                    for (int dy = -2; dy <= 2 && !vicino; ++dy)
                        for (int dx = -2; dx <= 2 && !vicino; ++dx)
                            vicino = inchiostro(in, x + dx, y + dy);
                    trovati += vicino;
                }
            return tutti ? double(trovati) / tutti : 0.0;
        };
        const double anteprimaInStampa = coperti(anteprima, stampata);
        const double stampaInAnteprima = coperti(stampata, anteprima);
        QVERIFY2(anteprimaInStampa > 0.9, qPrintable(QString::number(anteprimaInStampa)));
        QVERIFY2(stampaInAnteprima > 0.9, qPrintable(QString::number(stampaInAnteprima)));
        // Nothing printed outside the picture.
        QImage fuori = pagina;
        {
            QPainter p(&fuori);
            p.fillRect(QRect(angolo, anteprima.size()), Qt::white);
        }
        for (int y = 0; y < fuori.height(); ++y)
            for (int x = 0; x < fuori.width(); ++x)
                QVERIFY2(!inchiostro(fuori, x, y),
                         qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
    }
};

QTEST_MAIN(TestFrmAttestato)
#include "tst_frmattestato.moc"
