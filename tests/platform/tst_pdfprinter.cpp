#include "platform/RuntimeError.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/PrinterFonts.h"
#include "support/PrintedPdf.h"
#include "support/TestDoubles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

namespace {

// Page edges the built-in printer leaves blank, points.
constexpr double Margin = 18;

double twipsToPoints(double twips)
{
    return twips / 20;
}

QByteArray contentsOf(const QString &file)
{
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Prints a few sheet rows in Courier New 12, as the worksheets do.
void printRows(Printer &p, const QStringList &rows)
{
    p.setFontName(QStringLiteral("Courier New"));
    p.setFontSize(12);
    for (int i = 0; i < rows.size(); ++i) {
        p.setCurrentX(500);
        p.setCurrentY(i * 400 + 2000);
        p.Print(rows[i]);
    }
}

} // namespace

class TestPdfPrinter : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_t = std::make_unique<TestContext>();
        (*m_t)->setWorkingDirectory(m_dir->path());
    }

    void printsTheLinesInOrderOnOneA4Page()
    {
        PdfFilePrinter pdf(**m_t);
        pdf.setFontName(QStringLiteral("Courier New"));
        pdf.setFontSize(14);
        pdf.setCurrentX(1000);
        pdf.setCurrentY(1000);
        pdf.Print(QStringLiteral("Nome e cognome"));
        const QStringList rows = {
            QStringLiteral("      4730 da = ........................."),
            QStringLiteral("     0,047 uk = ........................."),
            QStringLiteral("       903  h = ........................."),
        };
        printRows(pdf, rows);
        pdf.EndDoc();

        const PrintedPdf printed(pdf.lastFile());
        QVERIFY2(printed.error().isEmpty(), qPrintable(printed.error()));
        QCOMPARE(printed.pages(), 1);
        QVERIFY(qAbs(printed.pageSize().width() - 595.28) < 0.5);
        QVERIFY(qAbs(printed.pageSize().height() - 841.89) < 0.5);
        // pdftotext guesses the blanks between words from their positions;
        // the words and their order are what the page really says.
        const QStringList expected = QStringList{QStringLiteral("Nome e cognome")} + rows;
        QStringList printedLines, expectedLines;
        for (const QString &line : printed.lines())
            printedLines << line.simplified();
        for (const QString &line : expected)
            expectedLines << line.simplified();
        QCOMPARE(printedLines, expectedLines);
    }

    void linesStandWhereCurrentXAndCurrentYPutThem()
    {
        PdfFilePrinter pdf(**m_t);
        pdf.setFontName(QStringLiteral("Courier New"));
        pdf.setFontSize(12);
        pdf.setCurrentX(1000);
        pdf.setCurrentY(1000);
        pdf.Print(QStringLiteral("Primo"));
        pdf.Print(QStringLiteral("Secondo"));
        const double lineHeight = pdf.TextHeight();
        pdf.setCurrentX(3000);
        pdf.setCurrentY(6000);
        pdf.Print(QStringLiteral("Terzo"));
        pdf.EndDoc();

        const PrintedPdf printed(pdf.lastFile());
        QVERIFY2(printed.error().isEmpty(), qPrintable(printed.error()));
        const QRectF first = printed.boxOf(QStringLiteral("Primo"));
        const QRectF second = printed.boxOf(QStringLiteral("Secondo"));
        const QRectF third = printed.boxOf(QStringLiteral("Terzo"));
        QVERIFY(!first.isNull() && !second.isNull() && !third.isNull());
        // The position is the top left corner of the line, from the printable area.
        QVERIFY2(qAbs(first.left() - (Margin + twipsToPoints(1000))) < 1,
                 qPrintable(QString::number(first.left())));
        QVERIFY2(qAbs(first.top() - (Margin + twipsToPoints(1000))) < 2,
                 qPrintable(QString::number(first.top())));
        // The next line starts at x 0, one line lower.
        QVERIFY2(qAbs(second.left() - Margin) < 1, qPrintable(QString::number(second.left())));
        QVERIFY2(qAbs(second.top() - first.top() - twipsToPoints(lineHeight)) < 0.5,
                 qPrintable(QString::number(second.top() - first.top())));
        QVERIFY(qAbs(third.left() - (Margin + twipsToPoints(3000))) < 1);
        QVERIFY(qAbs(third.top() - (Margin + twipsToPoints(6000))) < 2);
    }

    void courierNewIsPrintedInItsMetricCompatibleFont()
    {
        PdfFilePrinter pdf(**m_t);
        printRows(pdf, {QStringLiteral("12345")});
        pdf.EndDoc();
        QProcess fonts;
        fonts.start(QStringLiteral("pdffonts"), {pdf.lastFile()});
        QVERIFY(fonts.waitForFinished());
        const QString list = QString::fromUtf8(fonts.readAllStandardOutput());
        const QString family = PrinterFonts::resolvedFamily(QStringLiteral("Courier New"));
        QVERIFY2(list.contains(QString(family).remove(QLatin1Char(' '))), qPrintable(list));
    }

    void aPictureIsPaintedAtItsPositionAndOwnSize()
    {
        QImage picture(60, 40, QImage::Format_RGB32);
        picture.fill(Qt::red);
        PdfFilePrinter pdf(**m_t);
        pdf.Print();
        pdf.PaintPicture(picture, 1000, 100);
        pdf.EndDoc();

        // One point per pixel.
        const QString prefix = m_dir->filePath(QStringLiteral("page"));
        QProcess render;
        render.start(QStringLiteral("pdftoppm"),
                     {QStringLiteral("-r"), QStringLiteral("72"), QStringLiteral("-png"),
                      QStringLiteral("-singlefile"), pdf.lastFile(), prefix});
        QVERIFY(render.waitForFinished());
        QCOMPARE(render.exitCode(), 0);
        const QImage page(prefix + QStringLiteral(".png"));
        QVERIFY(!page.isNull());
        QRect red;
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x) {
                const QColor c = page.pixelColor(x, y);
                if (c.red() > 200 && c.green() < 60 && c.blue() < 60)
                    red |= QRect(x, y, 1, 1);
            }
        // 15 twips a pixel: 60 x 40 pixels are 45 x 30 points.
        QVERIFY2(qAbs(red.left() - (Margin + 50)) <= 1, qPrintable(QString::number(red.left())));
        QVERIFY2(qAbs(red.top() - (Margin + 5)) <= 1, qPrintable(QString::number(red.top())));
        QVERIFY2(qAbs(red.width() - 45) <= 1, qPrintable(QString::number(red.width())));
        QVERIFY2(qAbs(red.height() - 30) <= 1, qPrintable(QString::number(red.height())));
    }

    void eachDocumentIsANewFileAndNoneIsOverwritten()
    {
        // The pinned clock says 16/11/2026; a file of that day is there already.
        const QString earlier = m_dir->filePath(QStringLiteral("Quadrivo-2026-11-16-001.pdf"));
        {
            QFile f(earlier);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write("stampato prima");
        }
        PdfFilePrinter pdf(**m_t);
        printRows(pdf, {QStringLiteral("primo documento")});
        pdf.EndDoc();
        const QString first = pdf.lastFile();
        printRows(pdf, {QStringLiteral("secondo documento")});
        pdf.EndDoc();
        const QString second = pdf.lastFile();

        QCOMPARE(QFileInfo(first).fileName(), QStringLiteral("Quadrivo-2026-11-16-002.pdf"));
        QCOMPARE(QFileInfo(second).fileName(), QStringLiteral("Quadrivo-2026-11-16-003.pdf"));
        QCOMPARE(QFileInfo(first).absolutePath(), QFileInfo(m_dir->path()).absoluteFilePath());
        QCOMPARE(contentsOf(earlier), QByteArray("stampato prima"));
        QCOMPARE(PrintedPdf(first).lines(), QStringList{"primo documento"});
        QCOMPARE(PrintedPdf(second).lines(), QStringList{"secondo documento"});
    }

    void theFileNameFollowsTheProgramAndTheDay()
    {
        m_t->clock->set(QDateTime(QDate(2027, 1, 5), QTime(8, 30)));
        (*m_t)->setExecutableName(QStringLiteral("Scomposizione"));
        PdfFilePrinter pdf(**m_t);
        pdf.Print(QStringLiteral("x"));
        pdf.EndDoc();
        QCOMPARE(QFileInfo(pdf.lastFile()).fileName(),
                 QStringLiteral("Scomposizione-2027-01-05-001.pdf"));
    }

    void aChosenDirectoryIsUsedInsteadOfTheWorkingDirectory()
    {
        QTemporaryDir other;
        PdfFilePrinter pdf(**m_t);
        pdf.setOutputDirectory(other.path());
        pdf.Print(QStringLiteral("altrove"));
        pdf.EndDoc();
        QCOMPARE(QFileInfo(pdf.lastFile()).absolutePath(),
                 QFileInfo(other.path()).absoluteFilePath());
        QVERIFY(QDir(m_dir->path()).entryList(QDir::Files).isEmpty());
    }

    void theUserIsToldWhereTheFileWent()
    {
        PdfFilePrinter pdf(**m_t);
        pdf.Print(QStringLiteral("x"));
        QVERIFY(m_t->notices->notices.isEmpty());
        pdf.EndDoc();
        QCOMPARE(m_t->notices->notices.size(), 1);
        QVERIFY(QFileInfo::exists(pdf.lastFile()));
        QVERIFY2(m_t->notices->notices[0].contains(QDir::toNativeSeparators(pdf.lastFile())),
                 qPrintable(m_t->notices->notices[0]));
        QVERIFY(m_t->boxes->boxes.isEmpty());
    }

    void endDocWithNothingPrintedWritesNoFile()
    {
        PdfFilePrinter pdf(**m_t);
        pdf.EndDoc();
        QVERIFY(QDir(m_dir->path()).entryList(QDir::Files).isEmpty());
        QVERIFY(m_t->notices->notices.isEmpty());
        QVERIFY(pdf.lastFile().isEmpty());
    }

    void anUnwritableDirectoryIsAPrinterError_data()
    {
        QTest::addColumn<QString>("directory");
        QTest::addColumn<bool>("readOnly");
        QTest::newRow("missing directory") << "mancante/sotto" << false;
        QTest::newRow("a file in the directory's place") << "file" << false;
        // Root writes anywhere; the permission case means something only for others.
        if (geteuid() != 0)
            QTest::newRow("read-only directory") << "solalettura" << true;
    }
    void anUnwritableDirectoryIsAPrinterError()
    {
        QFETCH(QString, directory);
        QFETCH(bool, readOnly);
        const QString target = m_dir->filePath(directory);
        if (directory == QLatin1String("file")) {
            QFile f(target);
            QVERIFY(f.open(QIODevice::WriteOnly));
        }
        if (readOnly) {
            QVERIFY(QDir().mkpath(target));
            QFile::setPermissions(target, QFile::ReadOwner | QFile::ExeOwner);
        }
        PdfFilePrinter pdf(**m_t);
        pdf.setOutputDirectory(target);
        pdf.setCurrentX(100);
        try {
            pdf.Print(QStringLiteral("non stampato"));
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::PrinterError);
            QVERIFY2(e.detail().contains(QDir::toNativeSeparators(target)), qPrintable(e.detail()));
        }
        QCOMPARE(pdf.CurrentX(), 100.0);
        QVERIFY(m_t->notices->notices.isEmpty());

        // Once the directory is there the printer works again.
        pdf.setOutputDirectory(m_dir->path());
        pdf.Print(QStringLiteral("stampato"));
        pdf.EndDoc();
        QCOMPARE(PrintedPdf(pdf.lastFile()).lines(), QStringList{"stampato"});
        if (readOnly)
            QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void aDocumentLeftOpenIsKeptWhenThePrinterGoes()
    {
        QString file;
        {
            PdfFilePrinter pdf(**m_t);
            pdf.Print(QStringLiteral("lasciato aperto"));
            const QStringList files = QDir(m_dir->path()).entryList(QDir::Files);
            QCOMPARE(files.size(), 1);
            file = m_dir->filePath(files.first());
        }
        QCOMPARE(PrintedPdf(file).lines(), QStringList{"lasciato aperto"});
    }

    void cleanup()
    {
        m_t.reset();
        m_dir.reset();
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<TestContext> m_t;
};

QTEST_MAIN(TestPdfPrinter)
#include "tst_pdfprinter.moc"
