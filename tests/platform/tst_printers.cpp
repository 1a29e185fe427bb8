#include "platform/RuntimeError.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "platform/printing/RecordingPrinter.h"
#include "support/TestDoubles.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

std::unique_ptr<Printers> collectionOf(const QStringList &names, int current = 0)
{
    std::vector<std::unique_ptr<Printer>> printers;
    for (const QString &name : names)
        printers.push_back(std::make_unique<RecordingPrinter>(name));
    return std::make_unique<Printers>(std::move(printers), current);
}

} // namespace

class TestPrinters : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // No printing system at all: a scheduler socket that nobody serves.
        QVERIFY(m_noCups.isValid());
        qputenv("CUPS_SERVER", QFile::encodeName(m_noCups.filePath("none.sock")));
        qputenv("CUPS_SERVERROOT", QFile::encodeName(m_noCups.path()));
        qunsetenv("LPDEST");
        qunsetenv("PRINTER");
    }

    void withoutQueuesThePdfPrinterIsTheOnlyAndCurrentOne()
    {
        TestContext t;
        auto printers = Printers::installed(*t.ctx);
        QCOMPARE(printers->deviceNames(), QStringList{PdfFilePrinter::deviceName()});
        QCOMPARE(printers->deviceNames().last(), QStringLiteral("Stampa su file PDF"));
        QCOMPARE(printers->currentIndex(), 0);
        QCOMPARE(printers->current().DeviceName(), PdfFilePrinter::deviceName());
    }

    void aPlainContextPrintsOnTheSystemsPrinters()
    {
        AppContext ctx;
        QCOMPARE(ctx.printer().DeviceName(), PdfFilePrinter::deviceName());
        QCOMPARE(&ctx.printers().current(), &ctx.printer());
    }

    void aTestContextPrintsOnItsRecordingPrinter()
    {
        TestContext t;
        QCOMPARE(&t->printer(), static_cast<Printer *>(t.printer));
        t->printer().Print(QStringLiteral("ciao"));
        QCOMPARE(t.printer->lines.size(), 1);
    }

    void settingTheCurrentPrinterByIndexOrObject()
    {
        auto printers = collectionOf({"Ufficio", "Aula", "Segreteria"});
        QCOMPARE(printers->current().DeviceName(), QStringLiteral("Ufficio"));
        printers->setCurrent(2);
        QCOMPARE(printers->current().DeviceName(), QStringLiteral("Segreteria"));
        printers->setCurrent(printers->at(1));
        QCOMPARE(printers->currentIndex(), 1);
        QCOMPARE(printers->current().DeviceName(), QStringLiteral("Aula"));
    }

    void theFirstOfTwoPrintersWithTheSameNameIsFound()
    {
        auto printers = collectionOf({"Aula", "Doppia", "Doppia"});
        QCOMPARE(printers->indexOf(QStringLiteral("Doppia")), 1);
        QCOMPARE(printers->indexOf(QStringLiteral("Nessuna")), -1);
    }

    void aPrinterOutsideTheCollectionIsRefused()
    {
        auto printers = collectionOf({"Aula"});
        RecordingPrinter stranger(QStringLiteral("Aula"));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, printers->setCurrent(stranger));
        QCOMPARE(&printers->current(), &printers->at(0));
    }

    void indexesOutsideTheCollectionAreOutOfRange_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("-1") << -1;
        QTest::newRow("count") << 2;
    }
    void indexesOutsideTheCollectionAreOutOfRange()
    {
        QFETCH(int, index);
        auto printers = collectionOf({"Aula", "Ufficio"});
        try {
            printers->setCurrent(index);
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::SubscriptOutOfRange);
        }
        QCOMPARE(printers->currentIndex(), 0);
    }

    void anEmptyCollectionHasNoCurrentPrinter()
    {
        Printers printers(std::vector<std::unique_ptr<Printer>>{});
        QCOMPARE(printers.count(), 0);
        try {
            printers.current();
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::PrinterError);
        }
    }

private:
    QTemporaryDir m_noCups;
};

QTEST_MAIN(TestPrinters)
#include "tst_printers.moc"
