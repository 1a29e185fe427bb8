#include "platform/RuntimeError.h"
#include "platform/printing/PrinterFonts.h"
#include "platform/printing/RecordingPrinter.h"

#include <QTest>

class TestRecordingPrinter : public QObject
{
    Q_OBJECT

private slots:
    void recordsEveryCallInOrder()
    {
        RecordingPrinter p;
        p.setFontName(QStringLiteral("Courier New"));
        p.setFontSize(18);
        p.setCurrentX(1000);
        p.setCurrentY(1000);
        p.Print(QStringLiteral("SCUOLA ELEMENTARE DI "));
        const double next = 1000 + p.TextHeight();
        p.setFontSize(9.75);
        p.setFontBold(true);
        p.Print();
        p.PaintPicture(QImage(446, 588, QImage::Format_RGB32), 1000, 100);
        p.EndDoc();

        const QStringList expected = {
            QStringLiteral("FontName Courier New"),
            QStringLiteral("FontSize 18"),
            QStringLiteral("CurrentX 1000"),
            QStringLiteral("CurrentY 1000"),
            QStringLiteral("Print 1000,1000 \"SCUOLA ELEMENTARE DI \""),
            QStringLiteral("FontSize 9.75"),
            QStringLiteral("FontBold true"),
            QStringLiteral("Print 0,%1 \"\"").arg(QString::number(next, 'g', 15)),
            QStringLiteral("PaintPicture 446x588 at 1000,100"),
            QStringLiteral("EndDoc"),
        };
        QCOMPARE(p.calls, expected);
        QCOMPARE(p.documents, 1);
        QCOMPARE(p.pictures.size(), 1);
    }

    void linesKeepTheFontTheyWerePrintedIn()
    {
        RecordingPrinter p;
        p.setFontName(QStringLiteral("Courier New"));
        p.setFontSize(14);
        p.Print(QStringLiteral("Nome e cognome"));
        p.setFontSize(12);
        p.setFontBold(true);
        p.Print(QStringLiteral("riga"));

        QCOMPARE(p.lines.size(), 2);
        QCOMPARE(p.lines[0].text, QStringLiteral("Nome e cognome"));
        QCOMPARE(p.lines[0].fontSize, 14.0);
        QCOMPARE(p.lines[0].fontBold, false);
        QCOMPARE(p.lines[1].fontName, QStringLiteral("Courier New"));
        QCOMPARE(p.lines[1].fontSize, 12.0);
        QCOMPARE(p.lines[1].fontBold, true);
    }

    void printMovesToTheNextLineAtXZero_data()
    {
        QTest::addColumn<double>("size");
        QTest::addColumn<bool>("bold");
        QTest::newRow("8 points") << 8.0 << false;
        QTest::newRow("12 points") << 12.0 << false;
        QTest::newRow("14 points bold") << 14.0 << true;
        QTest::newRow("18 points") << 18.0 << false;
    }
    void printMovesToTheNextLineAtXZero()
    {
        QFETCH(double, size);
        QFETCH(bool, bold);
        RecordingPrinter p;
        p.setFontName(QStringLiteral("Courier New"));
        p.setFontSize(size);
        p.setFontBold(bold);
        p.setCurrentX(500);
        p.setCurrentY(2000);
        p.Print(QStringLiteral("primo"));

        const double height = p.TextHeight();
        // A line is a little more than the font's size (20 twips a point).
        QVERIFY2(height >= size * 20 && height <= size * 20 * 1.5,
                 qPrintable(QString::number(height)));
        QCOMPARE(p.CurrentX(), 0.0);
        QCOMPARE(p.CurrentY(), 2000 + height);

        p.Print(QStringLiteral("secondo"));
        QCOMPARE(p.lines[1].x, 0.0);
        QCOMPARE(p.lines[1].y, 2000 + height);
        QCOMPARE(p.CurrentY(), 2000 + 2 * height);
    }

    void largerFontsMakeTallerLines()
    {
        RecordingPrinter p;
        p.setFontName(QStringLiteral("Courier New"));
        p.setFontSize(8);
        const double small = p.TextHeight();
        p.setFontSize(18);
        QVERIFY(p.TextHeight() > small * 2);
    }

    void endDocStartsTheNextPageAtTheOrigin()
    {
        RecordingPrinter p;
        p.setCurrentX(700);
        p.setCurrentY(900);
        p.Print(QStringLiteral("x"));
        p.EndDoc();
        QCOMPARE(p.CurrentX(), 0.0);
        QCOMPARE(p.CurrentY(), 0.0);
    }

    void endDocWithNothingPrintedSendsNoDocument()
    {
        RecordingPrinter p;
        p.EndDoc();
        QCOMPARE(p.documents, 0);
        p.Print();
        p.EndDoc();
        p.EndDoc();
        QCOMPARE(p.documents, 1);
        QCOMPARE(p.calls, QStringList({"EndDoc", "Print 0,0 \"\"", "EndDoc", "EndDoc"}));
    }

    void aBrokenPrinterFailsWithPrinterError_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::newRow("Print") << "Print";
        QTest::newRow("PaintPicture") << "PaintPicture";
        QTest::newRow("EndDoc") << "EndDoc";
    }
    void aBrokenPrinterFailsWithPrinterError()
    {
        QFETCH(QString, operation);
        RecordingPrinter p;
        p.failing = true;
        p.setCurrentY(1000);
        try {
            if (operation == "Print")
                p.Print(QStringLiteral("x"));
            else if (operation == "PaintPicture")
                p.PaintPicture(QImage(10, 10, QImage::Format_RGB32), 0, 0);
            else
                p.EndDoc();
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::PrinterError);
        }
        QCOMPARE(p.calls, QStringList({"CurrentY 1000"}));
        QCOMPARE(p.CurrentY(), 1000.0);
    }

    void aNullPictureIsAnInvalidCall()
    {
        RecordingPrinter p;
        QVERIFY_THROWS_EXCEPTION(RuntimeError, p.PaintPicture(QImage(), 0, 0));
    }

    void fontsAreTheSystemsUnlessSet()
    {
        RecordingPrinter p;
        QCOMPARE(p.Fonts(), PrinterFonts::families());
        p.setFonts({QStringLiteral("Arial"), QStringLiteral("Courier")});
        QCOMPARE(p.FontCount(), 2);
        QCOMPARE(p.Fonts(1), QStringLiteral("Courier"));
        try {
            p.Fonts(2);
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::SubscriptOutOfRange);
        }
    }
};

QTEST_MAIN(TestRecordingPrinter)
#include "tst_recordingprinter.moc"
